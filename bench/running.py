"""Running a process and what it took."""

import os
import statistics
import subprocess
import time

COLLECTIONS = ["folder", "querySubject", "queryItemFolder", "queryItem", "filter", "calculation"]


def request_text(depth=0, start="[Model]"):
    names = [f"*/@{name}" for name in ("name", "_path", "_ref")]
    names += [f"*/{name}" for name in COLLECTIONS]
    return (f'<Metadata Depth="{depth}" start_at="{start}">'
            + "".join(f'<Property name="{name}"/>' for name in names) + "</Metadata>\n")


class Failure(Exception):
    """A process failed; what it said."""


def run(command, output=None):
    """Runs a process and gives its times; raises `Failure` when it fails."""
    start = time.monotonic()
    with open(output or os.devnull, "wb") as out:
        process = subprocess.Popen([str(word) for word in command], stdout=out,
                                   stderr=subprocess.PIPE)
        complaint = process.stderr.read().decode(errors="replace")
        process.stderr.close()
        _, status, usage = os.wait4(process.pid, 0)
        process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise Failure(f"{command[0]} failed: {complaint}")
    return {"wall": time.monotonic() - start, "cpu": usage.ru_utime + usage.ru_stime,
            "resident": usage.ru_maxrss * 1024}


def median_of(runs):
    """The median of each figure."""
    return {key: statistics.median(each[key] for each in runs) for key in runs[0]}
