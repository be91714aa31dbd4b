"""What the site shows otherwise than a code host does; mkdocs.yml names this file."""

import re

from mkdocs.structure.nav import Link

# A block whose fence names its file: mkdocs knows a fence with a language only.
FENCE = re.compile(r"^```(\w+) +(\S[^\n]*)\n", re.MULTILINE)
# A bar in a code span of a table: code hosts want it escaped, mkdocs shows the escape.
ROW = re.compile(r"^\|.*$", re.MULTILINE)
CODE = re.compile(r"`[^`]*`")
BUILD_INPUTS = ("Doxyfile",)
SECTION = "Programs"
REFERENCE = Link("API reference", "api/index.html")


def on_files(files, **_):
    """Leaves out of the site what only builds it."""
    for file in [file for file in files if file.src_path in BUILD_INPUTS]:
        files.remove(file)
    return files


def on_nav(nav, **_):
    """Adds the reference, which Doxygen writes later: mkdocs.yml may not name it."""
    next(item for item in nav.items if item.title == SECTION).children.append(REFERENCE)
    return nav


def bare_bars(row):
    return CODE.sub(lambda code: code.group().replace("\\|", "|"), row.group())


def on_page_markdown(markdown, **_):
    """Puts the name of the file above the block, and bars into code spans."""
    return ROW.sub(bare_bars, FENCE.sub(r"`\2`:\n\n```\1\n", markdown))
