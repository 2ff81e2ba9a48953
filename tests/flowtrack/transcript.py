"""Transcripts: what is typed, and what stands below it.

A transcript is a block of a page, between ```console and ```, or a whole file of another ending:

    $ flowtrack get a/b size        a line for the shell, lines ending in \\ go on
    5                               its output
    ! flowtrack: what is wrong      its errors
    = 4                             its exit status, where it is not 0

Times of the clock count as equal. Lines that begin with # are for readers."""

import os
import re

from world import COLOURS, TIMES, same


class Step:
    """A line for the shell, and what is expected of it."""

    def __init__(self, source):
        self.source = source  # as it stands in the file
        self.line = re.sub(r"\\\n\s*", "", source.removeprefix("$ "))
        self.out = self.err = ""
        self.status = 0

    def text(self):
        """As it stands in a file."""
        errors = "".join(f"! {line}\n" for line in self.err.splitlines())
        status = f"= {self.status}\n" if self.status else ""
        return f"{self.source}\n{self.out}{errors}{status}"


def parts(path):
    """A file as texts and steps, in order."""
    with open(path, encoding="utf-8") as file:
        lines = iter(file.read().splitlines())
    page = path.endswith(".md")
    inside = not page
    found = []
    for line in lines:
        if page and line.startswith("```"):
            inside = line == "```console"
            found.append(line + "\n")
        elif not inside or line.startswith("#"):
            found.append(line + "\n")
        elif line.startswith("$ "):
            while line.endswith("\\"):
                line += "\n" + next(lines)
            found.append(Step(line))
        elif line.startswith("! "):
            found[-1].err += line[2:] + "\n"
        elif re.fullmatch(r"= \d+", line):
            found[-1].status = int(line[2:])
        else:
            found[-1].out += line + "\n"
    return found


def plain(text):
    return TIMES.sub("TIME", COLOURS.sub("", text))


def check(path, step, found):
    """`found` is output, errors and exit status."""
    same(
        f"{plain(found[0])}errors:\n{plain(found[1])}status {found[2]}",
        f"{plain(step.out)}errors:\n{plain(step.err)}status {step.status}",
        f"{os.path.basename(path)}: $ {step.line}",
    )


def accept(run, path):
    """Writes what run() finds into the file: for who then reads what has changed."""
    text = ""
    for part in parts(path):
        if isinstance(part, Step):
            part.out, part.err, part.status = run(part.line)
            part = part.text()
        text += part
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
