"""Whole processes on a model image: what a user waits for once a model was compiled, each
beside the least that it can cost."""

import ctypes
import json
import mmap
import os
import pathlib
import re
import statistics
import subprocess
import time

from running import Failure, median_of, request_text, run

EVICTION_SECONDS = 10


def is_known(bin_folder):
    """Whether this build makes images."""
    try:
        run([bin_folder / "vexma", "compile", "--help"])
    except Failure:
        return False
    return True


def evict(file):
    """Has the system forget what it keeps of a file, which needs no rights."""
    descriptor = os.open(file, os.O_RDONLY)
    try:
        os.fsync(descriptor)
        end = time.monotonic() + EVICTION_SECONDS
        while time.monotonic() < end:
            os.posix_fadvise(descriptor, 0, 0, os.POSIX_FADV_DONTNEED)
            if kept_bytes(file) == 0:
                return True
            time.sleep(0.1)
    finally:
        os.close(descriptor)
    return False


def kept_bytes(file):
    """How much of a file the system keeps in memory: after it was evicted, what was read since."""
    library = ctypes.CDLL(None, use_errno=True)
    library.mmap.restype = ctypes.c_void_p
    size = os.path.getsize(file)
    pages = (size + mmap.PAGESIZE - 1) // mmap.PAGESIZE
    descriptor = os.open(file, os.O_RDONLY)
    address = library.mmap(None, ctypes.c_size_t(size), mmap.PROT_READ, mmap.MAP_SHARED,
                           descriptor, ctypes.c_long(0))
    os.close(descriptor)
    if address == ctypes.c_void_p(-1).value:
        raise OSError(ctypes.get_errno(), "cannot map", str(file))
    states = (ctypes.c_ubyte * pages)()
    failed = library.mincore(ctypes.c_void_p(address), ctypes.c_size_t(size), states)
    library.munmap(ctypes.c_void_p(address), ctypes.c_size_t(size))
    if failed:
        raise OSError(ctypes.get_errno(), "cannot tell what is in memory of", str(file))
    return sum(state & 1 for state in states) * mmap.PAGESIZE


def cold(command, image, repetitions):
    """The process on a file that lies on the disk alone, and what it read; none where the
    system does not forget it."""
    runs = []
    for _ in range(repetitions):
        if not evict(image):
            print("cold rows are left out: the system keeps the image in memory")
            return None
        runs.append({**run(command), "read": kept_bytes(image)})
    return median_of(runs)


def private_bytes(process):
    text = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text()
    return sum(int(size) for size in re.findall(r"^Private_\w+: +(\d+) kB", text, re.M)) * 1024


def private_of_each(command, line, count):
    """What each of so many processes on one image holds for itself alone, each after one
    answer, with all of them there."""
    processes = []
    try:
        for _ in range(count):
            process = subprocess.Popen([str(word) for word in command], stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE)
            processes.append(process)
            process.stdin.write(line)
            process.stdin.flush()
            if b'"code"' not in process.stdout.readline():
                raise Failure("a session on an image did not answer")
        return statistics.mean(private_bytes(process) for process in processes)
    finally:
        for process in processes:
            process.stdin.close()
            process.stdout.close()
            process.wait()


def measure(bin_folder, folder, files, repetitions):
    """Medians on the model of these files; none in a build without images."""
    if not is_known(bin_folder):
        print("rows of images are left out: this build makes none")
        return None
    program = bin_folder / "vexma"
    image, catalog, answer = folder / "model.vexm", folder / "image.xml", folder / "image-answer.xml"
    compiling = [program, "compile", files.model, "-o", image]
    run(compiling)
    catalog.write_text(files.catalog.read_text().replace(str(files.model), str(image)))
    source = ["--catalog", catalog, "--model", "/content/generated", "--user", "half"]
    tree = [program, "metadata", *source, "--request", files.request]
    shallow = ["--start", files.place, "--depth", "1"]
    depth1 = [program, "metadata", image, *shallow]
    loading = [program, "metadata", "--no-cache", files.model, *shallow]

    runs = {name: [] for name in ("tree", "compile", "load", "depth1", "version")}
    for _ in range(repetitions):
        runs["compile"].append(run(compiling))
        runs["load"].append(run(loading))
        runs["tree"].append(run(tree, answer))
    if answer.read_bytes() != files.answer.read_bytes():
        raise SystemExit("an image gives another answer than its document")
    for _ in range(4 * repetitions):
        runs["depth1"].append(run(depth1))
        runs["version"].append(run([program, "--version"]))
    measured = {name: median_of(each) for name, each in runs.items()}
    measured["cold"] = cold(depth1, image, repetitions)
    measured["cat"] = cold(["cat", image], image, repetitions)
    measured["image"] = image.stat().st_size
    measured["document"] = files.model.stat().st_size
    line = {"action": 31000, "in": [{"long": 0}, {"string": "file:" + image.name},
                                    {"node": request_text(1, files.place)}]}
    measured["private"] = private_of_each([program, "session", image],
                                          json.dumps(line).encode() + b"\n", 8)
    return measured
