"""Runs all measurements and shows each beside its target."""

import argparse
import json
import os
import pathlib
import subprocess
import sys

import picture
import processes
import rows

BENCH = pathlib.Path(__file__).resolve().parent
DOCS = BENCH.parent / "docs"
MARKS = ("<!-- measured: begin -->\n", "<!-- measured: end -->\n")


def run_inside(bin_folder, out, quick):
    """Runs the benchmarks inside one process; the median of each by its name."""
    measured = {}
    # Memory is measured in a process of its own, which has not used any yet.
    for part, chosen in (("time", "-^memory/"), ("memory", "^memory/")):
        file = out / f"{part}.json"
        command = [bin_folder / "vex_bench"]
        if quick:
            command += ["--small", "--benchmark_min_time=0.001"]
        elif part == "time":
            command += ["--benchmark_min_time=0.2", "--benchmark_repetitions=7",
                        "--benchmark_enable_random_interleaving=true"]
        # A filter that begins with "-" leaves out what matches.
        command += [f"--benchmark_filter={chosen}", f"--benchmark_out={file}",
                    "--benchmark_out_format=json"]
        subprocess.run(command, check=True, stdout=subprocess.DEVNULL,
                       stderr=None if os.environ.get("VEX_BENCH_VERBOSE") else subprocess.DEVNULL)
        for run in json.loads(file.read_text())["benchmarks"]:
            if run["run_type"] == "iteration":
                measured.setdefault(run["run_name"], []).append(run)
    return measured


def table(results):
    """The results as lines of a Markdown table."""
    lines = ["| what | measured | target | |", "|---|---:|---:|---|"]
    for row in results:
        met = "" if row["met"] is None else "met" if row["met"] else "**missed**"
        lines.append(f"| {row['what']} | {row['shown']} | {row['target_shown']} | {met} |")
    return lines


def print_table(results):
    width = max(len(row["what"]) for row in results)
    for row in results:
        mark = {True: "met", False: "MISSED", None: ""}[row["met"]]
        print(f"{row['what']:{width}}  {row['shown']:>14}  {row['target_shown']:>16}  {mark}")


def publish(results, conditions):
    DOCS.mkdir(exist_ok=True)
    page = DOCS / "performance.md"
    text = page.read_text()
    before, rest = text.split(MARKS[0])
    after = rest.split(MARKS[1])[1]
    body = "\n".join([conditions, "", *table(results)]) + "\n"
    page.write_text(before + MARKS[0] + body + MARKS[1] + after)
    (DOCS / "performance.svg").write_text(picture.draw(results))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--bin", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    parser.add_argument("--quick", action="store_true", help="everything once, on small models")
    parser.add_argument("--publish", action="store_true", help="put the results into docs/")
    arguments = parser.parse_args()
    if arguments.quick and arguments.publish:
        parser.error("--quick gives no figures to publish")
    bin_folder = arguments.bin.resolve()
    out = arguments.out.resolve()
    out.mkdir(parents=True, exist_ok=True)

    inside = run_inside(bin_folder, out, arguments.quick)
    sizes = [2_000] if arguments.quick else [100_000, 1_000_000]
    whole = [processes.measure(bin_folder, out, size, arguments.quick) for size in sizes]
    results = rows.evaluate(inside, whole)
    if arguments.quick:
        for row in results:
            row["met"] = None  # on small models, ran once, no figure means anything
    (out / "results.json").write_text(json.dumps(results, indent=1) + "\n")
    (out / "results.svg").write_text(picture.draw(results))
    print_table(results)
    print(f"\nwritten to {out}: results.json, results.svg")
    if arguments.publish:
        publish(results, processes.conditions())
    return 1 if any(row["met"] is False for row in results) else 0


if __name__ == "__main__":
    sys.exit(main())
