"""Packets of flows: as a capture file has them, and what a collector has to count of them."""

import collections
import socket
import struct

Flow = collections.namedtuple("Flow", "version source destination protocol sport dport")


def transport(flow, payload):
    if flow.protocol == 6:
        return struct.pack("!HHIIBBHHH", flow.sport, flow.dport, 1, 0, 0x50, 16, 0, 0, 0) + payload
    return struct.pack("!HHHH", flow.sport, flow.dport, 8 + len(payload), 0) + payload


def ip_packet(flow, size):
    """A packet whose IP length is `size`."""
    family = socket.AF_INET if flow.version == 4 else socket.AF_INET6
    source = socket.inet_pton(family, flow.source)
    destination = socket.inet_pton(family, flow.destination)
    head = (20 if flow.version == 4 else 40) + (20 if flow.protocol == 6 else 8)
    inner = transport(flow, bytes(size - head))
    if flow.version == 4:
        fixed = struct.pack("!BBHHHBBH", 0x45, 0, size, 1, 0, 64, flow.protocol, 0)
    else:
        fixed = struct.pack("!IHBB", 6 << 28, len(inner), flow.protocol, 64)
    return fixed + source + destination + inner


def write_capture(path, packets):
    """`packets` are (milliseconds, flow, IP length)."""
    with open(path, "wb") as out:
        out.write(struct.pack("<IHHiIII", 0xA1B2C3D4, 2, 4, 0, 0, 262144, 1))
        for when, flow, size in packets:
            ethernet = b"\x02\0\0\0\0\x01\x02\0\0\0\0\x02"
            ethernet += b"\x08\x00" if flow.version == 4 else b"\x86\xdd"
            frame = ethernet + ip_packet(flow, size)
            kept = frame[:128]
            out.write(struct.pack("<IIII", when // 1000, when % 1000 * 1000, len(kept), len(frame)))
            out.write(kept)


def counted(packets, rate=1):
    """Packets and bytes by flow: one of `rate` packets, which stands for so many."""
    sums = collections.defaultdict(lambda: [0, 0])
    for _, flow, size in packets[::rate]:
        sums[flow][0] += rate
        sums[flow][1] += rate * size
    return {flow: tuple(sum_) for flow, sum_ in sums.items()}


def total(flows):
    """The packets of all flows."""
    return sum(packets for packets, _ in flows.values())
