#!/usr/bin/env python3
"""Checks that the library for hosts exports nothing of the host's rooms.

    check_host_exports.py libVexHost.so

What it exports of its own bears the product's prefix; the rest that the dynamic
table lists are instances of templates of other libraries, marked weak.
"""

import subprocess
import sys


def main():
    table = subprocess.run(
        ["nm", "-DC", "--defined-only", sys.argv[1]], check=True, capture_output=True, text=True
    ).stdout.splitlines()
    strong = [line.split(maxsplit=2)[2] for line in table if line.split()[1] in "TDBR"]
    inside = [name for name in strong if not name.startswith("Vex")]
    inside += [line for line in table if " vex::" in line]
    if inside or not any(name.startswith("VexModel::readFile") for name in strong):
        sys.exit("exported, but of the host's rooms:\n" + "\n".join(inside))


if __name__ == "__main__":
    main()
