"""Whole processes: the command line program, the least a process with the same
answer must do, and other programs that can give the same answer."""

import os
import pathlib
import platform
import shutil
import statistics
import subprocess
import time
import xml.etree.ElementTree as ElementTree

BENCH = pathlib.Path(__file__).resolve().parent
SAXON_JAR = pathlib.Path("/usr/share/java/Saxon-HE.jar")
COLLECTIONS = ["folder", "querySubject", "queryItemFolder", "queryItem", "filter", "calculation"]


def request_text():
    names = [f"*/@{name}" for name in ("name", "_path", "_ref")]
    names += [f"*/{name}" for name in COLLECTIONS]
    return ('<Metadata Depth="0" start_at="[Model]">'
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


def same_answer(one, other):
    texts = [ElementTree.canonicalize(from_file=str(file), strip_text=True)
             for file in (one, other)]
    return texts[0] == texts[1]


def peer_commands(model, answer):
    """The other programs that are installed, by name."""
    sheet = BENCH / "peers" / "tree.xsl"
    commands = {}
    if shutil.which("xsltproc"):
        commands["xsltproc"] = ["xsltproc", "-o", answer, sheet, model]
    if shutil.which("java") and SAXON_JAR.exists():
        commands["Saxon-HE"] = ["java", "-cp", SAXON_JAR, "net.sf.saxon.Transform",
                                f"-s:{model}", f"-xsl:{sheet}", f"-o:{answer}"]
    return commands


def measure(bin_folder, out, objects, quick):
    """Medians of the processes on a model of that size."""
    folder = out / "scratch"
    folder.mkdir(exist_ok=True)
    model, catalog, request = folder / "model.xml", folder / "catalog.xml", folder / "request.xml"
    answer, recorded, other = folder / "answer.xml", folder / "recorded", folder / "other.xml"
    run([bin_folder / "vex_generate", "--objects", str(objects), "--model", model,
         "--catalog", catalog])
    request.write_text(request_text())
    ours = [bin_folder / "vexma", "metadata", "--catalog", catalog, "--model",
            "/content/generated", "--user", "half", "--request", request]
    run(ours, answer)
    run([bin_folder / "vex_floor", "record", answer, recorded])
    floor = [bin_folder / "vex_floor", "answer", model, recorded, other]

    # One after the other, so that whatever else the machine does hits both.
    repetitions = 1 if quick else 5
    times = {"vexma": [], "floor": []}
    for _ in range(repetitions):
        times["vexma"].append(run(ours, answer))
        times["floor"].append(run(floor))
    for name, command in peer_commands(model, other).items():
        try:
            times[name] = [run(command) for _ in range(1 if quick or objects > 200_000 else 3)]
        except Failure as failure:
            print(f"{name} is left out at {objects} objects: {failure}")
            continue
        if objects <= 200_000 and not same_answer(answer, other):
            raise SystemExit(f"{name} gives another answer than vexma")
    shutil.rmtree(folder)
    return {"objects": objects,
            "runs": {name: {key: statistics.median(each[key] for each in runs)
                            for key in ("wall", "cpu", "resident")}
                     for name, runs in times.items()}}


def conditions():
    """Where and when the figures were measured."""
    processor = next((line.split(":")[1].strip() for line in
                      pathlib.Path("/proc/cpuinfo").read_text().splitlines()
                      if line.startswith("model name")), platform.machine())
    return (f"Measured on {time.strftime('%Y-%m-%d')}, {os.cpu_count()} cores ({processor}), "
            f"{platform.freedesktop_os_release().get('PRETTY_NAME', platform.system())}.")
