"""Whole processes: the command line program, the least a process with the same
answer must do, and other programs that can give the same answer."""

import os
import pathlib
import platform
import shutil
import subprocess
import time
import xml.etree.ElementTree as ElementTree

import images
from running import Failure, median_of, request_text, run

BENCH = pathlib.Path(__file__).resolve().parent
SAXON_JAR = pathlib.Path("/usr/share/java/Saxon-HE.jar")


def same_answer(one, other):
    texts = [ElementTree.canonicalize(from_file=str(file), strip_text=True)
             for file in (one, other)]
    return texts[0] == texts[1]


def peer_commands(bin_folder, model, answer):
    """The other programs that are installed, by name."""
    sheet = BENCH / "peers" / "tree.xsl"
    commands = {}
    if (bin_folder / "vex_pugixml").exists():
        commands["pugixml"] = [bin_folder / "vex_pugixml", "tree", model, answer]
    if shutil.which("xsltproc"):
        commands["xsltproc"] = ["xsltproc", "-o", answer, sheet, model]
    if shutil.which("java") and SAXON_JAR.exists():
        commands["Saxon-HE"] = ["java", "-cp", SAXON_JAR, "net.sf.saxon.Transform",
                                f"-s:{model}", f"-xsl:{sheet}", f"-o:{answer}"]
    return commands


class Files:
    """A generated model and what is asked of it."""

    def __init__(self, bin_folder, folder, objects):
        self.model, self.catalog = folder / "model.xml", folder / "catalog.xml"
        self.request, self.answer = folder / "request.xml", folder / "answer.xml"
        place = subprocess.run([bin_folder / "vex_generate", "--objects", str(objects), "--model",
                                self.model, "--catalog", self.catalog], check=True,
                               stdout=subprocess.PIPE, text=True)
        self.place = place.stdout.rstrip("\n")  # the path of an object in the middle
        self.request.write_text(request_text())


def measure(bin_folder, out, objects, quick):
    """Medians of the processes on a model of that size."""
    folder = out / "scratch"
    folder.mkdir(exist_ok=True)
    files = Files(bin_folder, folder, objects)
    recorded, other = folder / "recorded", folder / "other.xml"
    ours = [bin_folder / "vexma", "metadata", "--no-cache", "--catalog", files.catalog, "--model",
            "/content/generated", "--user", "half", "--request", files.request]
    run(ours, files.answer)
    run([bin_folder / "vex_floor", "record", files.answer, recorded])
    floor = [bin_folder / "vex_floor", "answer", files.model, recorded, other]

    # One after the other, so that whatever else the machine does hits both.
    repetitions = 1 if quick else 5
    times = {"vexma": [], "floor": []}
    for _ in range(repetitions):
        times["vexma"].append(run(ours, files.answer))
        times["floor"].append(run(floor))
    for name, command in peer_commands(bin_folder, files.model, other).items():
        try:
            times[name] = [run(command) for _ in range(1 if quick or objects > 200_000 else 3)]
        except Failure as failure:
            print(f"{name} is left out at {objects} objects: {failure}")
            continue
        if objects <= 200_000 and not same_answer(files.answer, other):
            raise SystemExit(f"{name} gives another answer than vexma")
    image = images.measure(bin_folder, folder, files, repetitions)
    shutil.rmtree(folder)
    return {"objects": objects, "runs": {name: median_of(runs) for name, runs in times.items()},
            "image": image}


def conditions():
    """Where and when the figures were measured."""
    processor = next((line.split(":")[1].strip() for line in
                      pathlib.Path("/proc/cpuinfo").read_text().splitlines()
                      if line.startswith("model name")), platform.machine())
    return (f"Measured on {time.strftime('%Y-%m-%d')}, {os.cpu_count()} cores ({processor}), "
            f"{platform.freedesktop_os_release().get('PRETTY_NAME', platform.system())}.")
