"""The figures that have a target as bars, each as a share of its target."""

from xml.sax.saxutils import escape

LINE = 22
LABEL = 470
SCALE = 260  # the length of a bar that just meets its target
WIDTH = LABEL + 2 * SCALE + 110
LONGEST = 2.0  # bars of more are cut


def share(row):
    """How much of what the target allows is used; 1 just meets it."""
    return row["target"] / row["value"] if row["at_least"] else row["value"] / row["target"]


def bar(row, top):
    used = share(row)
    length = max(1.0, min(used, LONGEST) * SCALE)
    color = "#2e7d5b" if used <= 1 else "#b3452c"
    middle = top + LINE * 0.68
    return [
        f'<text x="{LABEL - 8}" y="{middle:.0f}" text-anchor="end">{escape(row["what"])}</text>',
        f'<rect x="{LABEL}" y="{top + 4}" width="{length:.1f}" height="{LINE - 8}" '
        f'fill="{color}"/>',
        f'<text x="{LABEL + length + 6:.1f}" y="{middle:.0f}">{escape(row["shown"])}</text>',
    ]


def draw(results):
    rows = [row for row in results if row["target"] is not None]
    height = LINE * (len(rows) + 2)
    target = LABEL + SCALE
    lines = [
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" '
        'font-family="sans-serif" font-size="12">',
        f'<rect width="{WIDTH}" height="{height}" fill="white"/>',
        f'<text x="{target}" y="16" text-anchor="middle">target (shorter is better)</text>',
    ]
    for number, row in enumerate(rows):
        lines += bar(row, LINE * (number + 1))
    lines += [
        f'<line x1="{target}" x2="{target}" y1="{LINE}" y2="{height - LINE + 4}" '
        'stroke="black" stroke-dasharray="4 3"/>',
        "</svg>",
    ]
    return "\n".join(lines) + "\n"
