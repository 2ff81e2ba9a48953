#!/usr/bin/env python3
"""ndpiReader -h | applications.py: the applications that it lists, as a document of
FlowTracking::ApplicationIdMap."""

import json
import sys


def rows(lines):
    """Columns at fixed positions, below a heading, until an empty line."""
    lines = iter(lines)
    heading = next(line for line in lines if "Id Protocol " in line and "Breed" in line)
    at = [heading.index(name) for name in ("Protocol", "Layer_4", "Breed", "Category")]
    for line in lines:
        if not line.strip():
            return
        yield [line[a:b].strip() for a, b in zip((0, *at), (*at, None))]


def document(lines):
    table = {}
    for number, name, _, breed, category in rows(lines):
        application = {"appName": name, "category": category, "subCategory": breed}
        table[str(int(number))] = {"appId": int(number), **application}
    return {"application": table}


if __name__ == "__main__":
    json.dump(document(sys.stdin), sys.stdout, indent=2)
