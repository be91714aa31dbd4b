"""What the site shows otherwise than a code host does; mkdocs.yml names this file."""

import pathlib
import re

from mkdocs.structure.files import File
from mkdocs.structure.nav import Link
from pygments.formatters import HtmlFormatter

ROOT = pathlib.Path(__file__).resolve().parent.parent
# A block whose fence names its file: mkdocs knows a fence with a language only.
FENCE = re.compile(r"^```(\w+) +(\S[^\n]*)\n", re.MULTILINE)
# A bar in a code span of a table: code hosts want it escaped, mkdocs shows the escape.
ROW = re.compile(r"^\|.*$", re.MULTILINE)
CODE = re.compile(r"`[^`]*`")
LINK = re.compile(r"\[([^\]]*)\]\(([^)\s]+)\)")
BUILD_INPUTS = ("Doxyfile",)
SECTION = "Programs"
REFERENCE = Link("API reference", "api/index.html")
# Pages that stand elsewhere in the repository, by their name in the site.
ELSEWHERE = {"samples.md": "samples/README.md"}


def on_files(files, config):
    """Leaves out what only builds the site, and takes in pages from other folders."""
    for file in [file for file in files if file.src_path in BUILD_INPUTS]:
        files.remove(file)
    for name, source in ELSEWHERE.items():
        page = File(name, config["docs_dir"], config["site_dir"], config["use_directory_urls"])
        page.abs_src_path = str(ROOT / source)
        files.append(page)
    return files


def on_nav(nav, **_):
    """Adds the reference, which Doxygen writes later: mkdocs.yml may not name it."""
    next(item for item in nav.items if item.title == SECTION).children.append(REFERENCE)
    return nav


def bare_bars(row):
    return CODE.sub(lambda code: code.group().replace("\\|", "|"), row.group())


def link_in_site(page):
    """Links of the repository as links of the site; one to a file outside becomes its text."""
    source = ROOT / ELSEWHERE.get(page.file.src_path, f"docs/{page.file.src_path}")
    names = {(ROOT / other).resolve(): name for name, other in ELSEWHERE.items()}

    def link(match):
        text, (path, hash_sign, anchor) = match.group(1), match.group(2).partition("#")
        target = (source.parent / path).resolve()
        if not path or re.match(r"[a-z]+:", path):
            return match.group()
        if target in names:
            return f"[{text}]({names[target]}{hash_sign}{anchor})"
        if not target.is_relative_to(ROOT / "docs"):
            return f"`{text}`"
        return f"[{text}]({target.relative_to(ROOT / 'docs')}{hash_sign}{anchor})"

    return link


def on_page_markdown(markdown, page, **_):
    """Puts the name of the file above the block, bars into code spans, and turns links."""
    parts = re.split(r"(^```.*?^```$)", markdown, flags=re.MULTILINE | re.DOTALL)
    parts[::2] = [LINK.sub(link_in_site(page), part) for part in parts[::2]]
    return ROW.sub(bare_bars, FENCE.sub(r"`\2`:\n\n```\1\n", "".join(parts)))


def on_post_build(config, **_):
    """The colours of code, which is marked up when the pages are made."""
    colours = HtmlFormatter(style="default").get_style_defs(".highlight")
    (pathlib.Path(config["site_dir"]) / "look/code.css").write_text(colours, encoding="utf-8")
