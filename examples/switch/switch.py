"""The processes of a switch: the store, the agent and the platforms, and an operator's shell."""

import json
import os
import pathlib
import re
import signal
import subprocess

from checks import Failure, until

ROOT = pathlib.Path(__file__).resolve().parents[2]
HERE = pathlib.Path(__file__).resolve().parent
CAPABILITIES = ROOT / "tools" / "flowtrack-platform" / "capabilities"
PROGRAMS = ("flowtrackd", "flowtrack-agent", "flowtrack-platform", "flowtrack")
KINDS = {"sampled": "software.json", "hardware": "modular.json"}  # and what each platform can
REAL = {"sampled": "Ethernet1", "hardware": "Ethernet48"}  # the interface that has packets


def mount(kind, name):
    """The path of a mount of a kind of flow tracking."""
    return {
        "config": f"flowtracking/input/config/{kind}/cli",
        "interfaces": f"flowtracking/input/config/{kind}/interfaces",
        "status": f"flowtracking/status/{kind}",
        "ids": f"flowtracking/ids/{kind}",
        "hardware": f"flowtracking/hardware/{kind}/config",
        "platform": f"flowtracking/hardware/{kind}/status",
    }[name]


class Switch:
    """Runs in `folder`; the programs are in the folder `tools`. Collectors have the ports of the
    files in config/, and `further`."""

    def __init__(self, tools, folder, further, captures):
        self.folder, self.captures = folder, captures
        self.config = HERE / "config"
        if further:
            self.config = self.folder / "config"
            self.config.mkdir()
            for file in (HERE / "config").iterdir():
                moved = re.sub(r'(?<="port": )\d+', lambda one: str(int(one[0]) + further),
                               file.read_text())
                (self.config / file.name).write_text(moved)
        self.address = f"unix:{folder}/store.sock"
        self.programs = {name: tools / name / name for name in PROGRAMS}
        for program in self.programs.values():
            if not program.exists():
                raise Failure(f"{program} is not there; scripts/build makes it")
        path = ":".join(str(tools / name) for name in PROGRAMS)
        self.environment = os.environ | {
            "PATH": f"{path}:{os.environ['PATH']}",
            "FLOWTRACK_STORE": self.address,
        }
        self.running = {}

    # ---- Processes

    def start(self, name, *command):
        print(f"starts {name}: {' '.join(self.shown(one) for one in command)}", flush=True)
        with open(self.folder / f"{name}.log", "ab") as log:
            self.running[name] = subprocess.Popen(
                [self.programs[command[0]], *command[1:]], stdout=log, stderr=log,
                env=self.environment, cwd=self.folder)

    @staticmethod
    def shown(word):
        return str(word).removeprefix(f"{ROOT}/")

    def start_store(self):
        config = self.config / "flowtrackd.toml"
        self.start("store", "flowtrackd", "--config", config, "--listen", self.address)
        until(lambda: self.quiet("flowtrack mounts")[1] in (0, 1), "the store answers")

    def start_agent(self):
        self.start("agent", "flowtrack-agent", "--type", *KINDS)

    def start_platform(self, kind, *options):
        device = ["--interface", f"{REAL[kind]}=lo"] if self.captures else []
        self.start(f"platform of {kind}", "flowtrack-platform", "--type", kind, "--capabilities",
                   CAPABILITIES / KINDS[kind], *(options or device))

    def kill(self, name):
        """As a crash would, at once."""
        print(f"kill -9 the {name}", flush=True)
        self.running[name].kill()
        self.running[name].wait()

    def check_running(self):
        for name, process in self.running.items():
            if process.poll() is not None:
                raise Failure(f"the {name} ended with {process.returncode}; see {name}.log")

    def stop(self):
        for process in reversed(self.running.values()):
            if process.poll() is None:
                process.send_signal(signal.SIGTERM)
        for process in self.running.values():
            process.wait()

    # ---- The operator

    def quiet(self, line):
        """A line of the shell: its output and errors, and its exit status."""
        done = subprocess.run(["bash", "-c", line], cwd=self.config, env=self.environment,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        return done.stdout, done.returncode

    def shell(self, line, status=0):
        """Shows a line and what it prints; it has to end with `status`."""
        print(f"$ {line}", flush=True)
        out, found = self.quiet(line)
        print("".join(f"  {one}\n" for one in out.splitlines()), end="", flush=True)
        if found != status:
            raise Failure(f"exit status {found} of: {line}")
        return out

    def tree(self, path):
        """The tree at a path, without what is as in a new one; {} where there is none."""
        out, status = self.quiet(f"flowtrack show --json {path}")
        return json.loads(out) if status == 0 else {}
