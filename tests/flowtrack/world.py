"""What the tests of flowtrack stand on: a store in a folder of its own, and the programs."""

import os
import pathlib
import pty
import re
import select
import shutil
import subprocess
import tempfile
import time

PATIENCE = 60  # seconds until what has to happen has happened, on any machine

TIMES = re.compile(r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}Z")
COLOURS = re.compile(r"\x1b\[[0-9;]*[A-Za-z]")


class Failure(Exception):
    """A test has failed."""


def same(got, wanted, what):
    if got != wanted:
        raise Failure(f"{what}\n--- expected\n{wanted}\n--- found\n{got}")


def until(holds, what):
    """Waits until holds() gives something, and gives that."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        if found := holds():
            return found
        time.sleep(0.02)
    raise Failure(f"waited in vain: {what}")


class World:
    """A scratch folder with a store, and an environment in which flowtrack finds it."""

    def __init__(self, flowtrackd, flowtrack):
        self.folder = tempfile.mkdtemp(prefix="flowtrack-test-")
        self.address = f"unix:{self.folder}/store.sock"
        self.flowtrackd = flowtrackd
        self.programs = []
        self.environment = {
            "PATH": f"{pathlib.Path(flowtrack).resolve().parent}:/usr/bin:/bin",
            "FLOWTRACK_STORE": self.address,
            "HOME": self.folder,
            "LC_ALL": "C.UTF-8",
            "TERM": "xterm",
        }
        for name, value in os.environ.items():
            if "SAN_OPTIONS" in name:
                self.environment[name] = value

    def __enter__(self):
        self.store = self.start([self.flowtrackd, "--listen", self.address])
        until(lambda: os.path.exists(f"{self.folder}/store.sock"), "the store listens")
        return self

    def __exit__(self, *_):
        for program in self.programs:
            program.kill()
            program.communicate()
        shutil.rmtree(self.folder)

    def start(self, command, **options):
        """A program that runs until the end of the test at the latest."""
        program = subprocess.Popen(
            command, stderr=subprocess.DEVNULL, env=self.environment, cwd=self.folder, **options
        )
        self.programs.append(program)
        return program

    def run(self, line, **environment):
        """A line as a shell takes it: its output, its errors, its exit status."""
        done = subprocess.run(
            ["bash", "-c", line],
            capture_output=True,
            cwd=self.folder,
            encoding="utf-8",
            env=self.environment | environment,
            timeout=PATIENCE,
        )
        return done.stdout, done.stderr, done.returncode

    def ok(self, line):
        """The output of a line that has to succeed."""
        out, err, status = self.run(line)
        same((err, status), ("", 0), line)
        return out


class Terminal:
    """A line that runs at a terminal of its own."""

    def __init__(self, world, line, **environment):
        self.master, slave = pty.openpty()
        self.errors = open(f"{world.folder}/errors", "w+", encoding="utf-8")
        self.program = subprocess.Popen(
            ["bash", "-c", line],
            stdin=slave,
            stdout=slave,
            stderr=self.errors,
            cwd=world.folder,
            env=world.environment | environment,
        )
        world.programs.append(self.program)
        os.close(slave)
        self.text = ""

    def read(self):
        """What has come until now; nothing more comes where it is None."""
        ready, _, _ = select.select([self.master], [], [], 0.02)
        try:
            if ready:
                self.text += os.read(self.master, 65536).decode().replace("\r\n", "\n")
        except OSError:
            return None
        return self.text

    def end(self):
        """Waits for the end: output, errors, exit status."""
        stop = time.monotonic() + PATIENCE
        while self.read() is not None:
            if time.monotonic() > stop:
                raise Failure(f"does not end: {self.text}")
        status = self.program.wait(PATIENCE)
        os.close(self.master)
        self.errors.seek(0)
        return self.text, self.errors.read(), status
