#!/usr/bin/env python3
"""Compares the schemas in schema/ with what the program reads.

    check_schemas.py VEXMA

- Every model document and catalogue of the repository that the program reads
  without an error is valid, those in accepted/ among them.
- Every document in refused/ is refused by the program, for the rule that it is named
  after (the last word of the name), and is not valid.

A model document that cannot be read is no error of the catalogue that names it.
"""

import json
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
WHERE = ("samples", "docs/examples", "examples", "tests/fixtures", "tests/schema/accepted")
MODEL, CATALOGUE = (ROOT / "schema" / name for name in ("model.rng", "catalogue.rng"))


def schema_of(path):
    """The schema that is for the document; none for requests, answers and what is no XML."""
    try:
        root = ElementTree.parse(path).getroot().tag.rpartition("}")[2]
    except ElementTree.ParseError:
        return None
    return {"model": MODEL, "catalog": CATALOGUE}.get(root)


def broken_rules(vexma, path):
    """The rules whose errors the program finds in the document."""
    run = subprocess.run([vexma, "validate", "--format", "json", path],
                         capture_output=True, text=True, check=False)
    findings = json.loads(run.stdout)["findings"]
    return {each["rule"] for each in findings
            if each["severity"] == "error" and pathlib.Path(each["file"]) == path}


def complaints(schema, paths):
    """What xmllint finds, by the document."""
    if not paths:
        return {}
    run = subprocess.run(["xmllint", "--noout", "--relaxng", schema, *paths],
                         capture_output=True, text=True, check=False)
    found = {path: run.stderr for path in paths if f"{path} fails to validate" in run.stderr}
    silent = [path for path in paths
              if path not in found and f"{path} validates" not in run.stderr]
    if silent:
        sys.exit(f"check_schemas: xmllint says nothing of {silent}\n{run.stderr}")
    return found


def check_accepted(vexma, problems):
    documents = sorted(path for folder in WHERE for path in (ROOT / folder).rglob("*.xml"))
    read = {MODEL: [], CATALOGUE: []}
    for path in documents:
        schema = schema_of(path)
        broken = broken_rules(vexma, path) if schema else set()
        if schema and not broken:
            read[schema].append(path)
        elif path.parent == HERE / "accepted":
            problems.append(f"{path}: the program refuses it, {broken}")
    for schema, paths in read.items():
        for path, text in complaints(schema, paths).items():
            own = [line for line in text.splitlines() if line.startswith(str(path))]
            problems.append("\n".join([f"{path} is read, but is not valid:", *own]))
    return sum(map(len, read.values()))


def check_refused(vexma, problems):
    documents = sorted((HERE / "refused").glob("*.xml"))
    for path in documents:
        rule = path.stem.rpartition(".")[2]
        schema = CATALOGUE if re.match("catalogue-", rule) else MODEL
        broken = broken_rules(vexma, path)
        if broken != {rule}:
            problems.append(f"{path}: the program finds {broken or 'no error'}")
        if path not in complaints(schema, [path]):
            problems.append(f"{path} is valid")
    return len(documents)


def main():
    vexma = pathlib.Path(sys.argv[1]).resolve()
    problems = []
    accepted, refused = check_accepted(vexma, problems), check_refused(vexma, problems)
    print(*problems, sep="\n")
    print(f"{accepted} documents valid and {refused} not; {len(problems)} problems")
    sys.exit(1 if problems or not accepted or not refused else 0)


if __name__ == "__main__":
    main()
