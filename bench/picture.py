"""The figures that a user feels as bars, each as a share of what its target allows."""

from xml.sax.saxutils import escape

# Which rows, and what they are to somebody who asks. Rows that were not measured are
# left out.
FELT = {
    "path of five levels, depth 1, 1,000,000 objects": "One object of a million, by its path",
    "path of five levels, depth 2, 1,000,000 objects": "One of a million with its members, by path",
    "reference, direct, 1,000,000 objects": "One object of a million, by its reference",
    "access check": "Is this object accessible?",
    "load 1,000,000 objects, against a bare parse": "Load a million objects, against a bare parse",
    "resident memory of 1,000,000 objects, against the file": "Memory of a million objects, against the file",
    "process on 1,000,000 objects, against parse, build and write": "Whole tree of a million, against the least",
    "process on an image of 1,000,000 objects, against pugixml":
        "The same from an image, against pugixml",
    "depth 1 from an image of 1,000,000 objects, more than vexma --version":
        "Open an image of a million and ask",
    "two threads on one model, against one": "Two users at once, against one",
}
# As wide as a telephone shows it, so that it need not be shrunk there.
WIDTH = 380
EDGE = 10
HEAD = 56
LINE = 56
BAR = 10
SCALE = 210  # the length of a bar that just meets its target
LONGEST = 1.35  # bars of more are cut
MET, MISSED, GREY = "#2e7d5b", "#b3452c", "#5c5c5c"


def share(row):
    """How much of what the target allows is used; 1 just meets it."""
    return row["target"] / row["value"] if row["at_least"] else row["value"] / row["target"]


def is_met(row):
    return share(row) <= 1 if row["met"] is None else row["met"]


def text(x, y, words, more=""):
    return f'<text x="{x}" y="{y}" {more}>{escape(words)}</text>'


def bar(row, top):
    color, word = (MET, "met") if is_met(row) else (MISSED, "missed")
    length = max(2.0, min(share(row), LONGEST) * SCALE)
    right = f'text-anchor="end" fill="{color}" font-weight="bold"'
    return [
        text(EDGE, top, FELT[row["what"]]),
        f'<rect x="{EDGE}" y="{top + 8}" width="{length:.1f}" height="{BAR}" fill="{color}"/>',
        text(WIDTH - EDGE, top + 17, word, right),
        text(EDGE, top + 33, row["shown"], f'font-size="12" font-weight="bold" fill="{color}"'),
        text(EDGE + SCALE, top + 33, row["target_shown"],
             f'font-size="12" text-anchor="end" fill="{GREY}"'),
    ]


def draw(results):
    known = {row["what"]: row for row in results if row["target"] is not None}
    rows = [known[what] for what in FELT if what in known]
    met = sum(map(is_met, rows))
    height = HEAD + LINE * len(rows)
    line = EDGE + SCALE
    lines = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" '
        f'width="{WIDTH}" height="{height}" font-family="sans-serif" font-size="14" role="img">',
        f"<title>{met} of these {len(rows)} targets met</title>",
        f'<rect width="{WIDTH}" height="{height}" fill="white"/>',
        text(EDGE, 22, f"{met} of these {len(rows)} targets met", 'font-size="16" font-weight="bold"'),
        text(line, 38, "target", f'font-size="12" text-anchor="middle" fill="{GREY}"'),
    ]
    for number, row in enumerate(rows):
        top = HEAD + 2 + LINE * number
        lines += bar(row, top)
        lines.append(f'<line x1="{line}" x2="{line}" y1="{top + 4}" y2="{top + 22}" '
                     f'stroke="black" stroke-width="2"/>')
    return "\n".join([*lines, "</svg>"]) + "\n"
