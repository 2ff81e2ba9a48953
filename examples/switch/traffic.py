"""Traffic of flows whose every packet is known: through the loopback device, or as a capture file
where this machine gives no right to capture."""

import random
import socket
import time

from packets import Flow, write_capture

FLOWS = 20  # of each version of IP
PACKETS = 8000
HEADERS = {4: 28, 6: 48}  # IP and UDP
LOOPBACK = {4: "127.0.0.1", 6: "::1"}
FAMILY = {4: socket.AF_INET, 6: socket.AF_INET6}


def may_capture():
    """Whether this process may read the packets of a device."""
    try:
        socket.socket(socket.AF_PACKET, socket.SOCK_RAW).close()
        return True
    except (OSError, AttributeError):
        return False


class Traffic:
    """Datagrams between sockets of the loopback addresses, to ports that nobody else has."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.sinks = {version: self.open(version) for version in (4, 6)}
        self.senders = {}
        for version in (4, 6):
            host, port = self.sinks[version].getsockname()[:2]
            for _ in range(FLOWS):
                one = self.open(version)
                one.connect((host, port))
                flow = Flow(version, host, host, 17, one.getsockname()[1], port)
                self.senders[flow] = one
        flows = list(self.senders)
        start = int(time.time() * 1000)
        self.packets = []
        for number in range(PACKETS):
            flow = flows[self.random.randrange(len(flows))]
            self.packets.append((start + number, flow, self.random.randrange(60, 1400)))

    @staticmethod
    def open(version):
        one = socket.socket(FAMILY[version], socket.SOCK_DGRAM)
        one.bind((LOOPBACK[version], 0))
        return one

    def choice(self):
        """What nfdump is to choose of all that it has."""
        ports = " or ".join(f"dst port {one.getsockname()[1]}" for one in self.sinks.values())
        return f"proto udp and ( {ports} )"

    def send(self):
        """Sends all packets, slowly enough for any machine to capture them."""
        for number, (_, flow, size) in enumerate(self.packets):
            self.senders[flow].send(bytes(size - HEADERS[flow.version]))
            if number % 40 == 39:
                time.sleep(0.005)

    def write(self, path):
        """Writes what send() would send as a capture file."""
        write_capture(path, self.packets)
