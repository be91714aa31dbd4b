#!/usr/bin/env python3
"""The plug-in exports what its list names, and nothing else.

    check_exports.py PLUGIN.vpl
"""

import pathlib
import re
import subprocess
import sys

LIST = pathlib.Path(__file__).resolve().parent.parent.parent / "plugin" / "exports.map"


def main():
    listed = set(re.findall(r"^\s*(\w+);", LIST.read_text(encoding="utf-8"), re.MULTILINE))
    names = subprocess.run(
        ["nm", "--dynamic", "--defined-only", "--format=posix", sys.argv[1]],
        capture_output=True,
        text=True,
        check=True,
    ).stdout.splitlines()
    exported = {line.split()[0] for line in names}
    if not listed or exported != listed:
        sys.exit(
            f"listed, not exported: {sorted(listed - exported)}\n"
            f"exported, not listed: {sorted(exported - listed)}"
        )


if __name__ == "__main__":
    main()
