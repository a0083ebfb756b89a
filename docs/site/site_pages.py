"""The names that pages and headings have in the site."""
import glob
import os
import re

MAIN_PAGE = "README.md"

_NAMED = {MAIN_PAGE: "index", "docs/README.md": "manual"}


def pages():
    """Every page of the site, seen from the root of the sources, where doxygen is run."""
    return sorted(glob.glob("*.md") + glob.glob("docs/*.md") + glob.glob("*/README.md"))


def page_label(page):
    """docs/errors.md is `errors`, axes/README.md is `room-axes`."""
    if page in _NAMED:
        return _NAMED[page]
    folder, name = os.path.split(page)
    return "room-" + folder if name == "README.md" else name[: -len(".md")].lower()


class Anchors:
    """The anchors of a page's headings as they are written in links: small letters, hyphens, no other signs;
    a number after those that the page has had before."""

    def __init__(self):
        self._seen = {}

    def of(self, heading):
        anchor = re.sub(r"[^a-z0-9 _-]", "", heading.lower()).replace(" ", "-")
        before = self._seen.get(anchor, 0)
        self._seen[anchor] = before + 1
        return "%s-%d" % (anchor, before) if before else anchor


def heading_label(page, anchor):
    return page_label(page) + "-" + anchor
