"""nfcapd as a collector, and what nfdump says of what it received."""

import collections
import json
import pathlib
import subprocess

from checks import Failure, until
from packets import Flow


def by_flow(records):
    """Packets and bytes by flow of nfdump's records."""
    sums = collections.defaultdict(lambda: [0, 0])
    for one in records:
        four = "src4_addr" in one
        source, destination = one[f"src{4 if four else 6}_addr"], one[f"dst{4 if four else 6}_addr"]
        ports = one.get("src_port", 0), one.get("dst_port", 0)
        flow = Flow(4 if four else 6, source, destination, one["proto"], *ports)
        sums[flow][0] += one["in_packets"]
        sums[flow][1] += one["in_bytes"]
    return {flow: tuple(sum_) for flow, sum_ in sums.items()}


class Collector:
    """A collector at the loopback address of a version of IP; its files are in `folder`."""

    def __init__(self, folder, version, port, *options):
        self.host, self.port = ("127.0.0.1" if version == 4 else "::1"), port
        self.folder = folder / f"nfcapd-{version}-{port}"
        self.folder.mkdir()
        self.log = folder / f"nfcapd-{version}-{port}.log"
        with open(self.log, "wb") as log:
            self.process = subprocess.Popen(
                ("nfcapd", f"-{version}", "-b", self.host, "-p", str(port), "-w", self.folder,
                 "-B", "4000000", *options),
                stdout=log, stderr=subprocess.STDOUT)
        until(self.listens, f"nfcapd listens at {self.host}, port {port}")

    def listens(self):
        if self.process.poll() is not None:
            raise Failure(f"nfcapd does not listen at {self.host}, port {self.port}; "
                          f"{self.log} says why")
        table = "/proc/net/udp" + ("6" if ":" in self.host else "")
        return f":{self.port:04X} " in pathlib.Path(table).read_text(encoding="ascii")

    def records(self, *choice):
        """The flow records of closed files, as nfdump's JSON has them."""
        done = subprocess.run(("nfdump", "-R", self.folder, "-o", "json", *choice), check=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
        none = not done.stdout.strip() or "No matching flows" in done.stdout
        return [] if none else json.loads(done.stdout)
