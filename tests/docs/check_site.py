"""Does every link in the site of the manual lead somewhere, and is every page and picture there?

check_site.py SITE SOURCES. A site is a folder of HTML; what is looked at is every link, picture, script and
style that a page names, its anchor too, and the entries of the navigation.
"""
import glob
import os
import re
import sys
from html.parser import HTMLParser
from urllib.parse import unquote, urlsplit


# What the text of a page shows only where doxygen has not understood it.
LEFT_OVER = re.compile(r"\*\*|\]\(|```|@(?:ref|subpage|section|subsection|code|endcode)\b")


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.anchors = set()
        self.links = []
        self.pictures = []
        self.prose = []
        self._in_code = 0
        with open(path, encoding="utf-8") as file:
            self.feed(file.read())

    def handle_starttag(self, tag, attrs):
        named = dict(attrs)
        for name in ("id", "name"):
            if named.get(name):
                self.anchors.add(named[name])
        for name in ("href", "src", "data"):
            if named.get(name):
                self.links.append(named[name])
        if tag == "img":
            self.pictures.append((named.get("src", ""), named.get("alt")))
        if self._is_code(tag) and (self._in_code or tag != "div" or named.get("class") == "fragment"):
            self._in_code += 1

    def handle_endtag(self, tag):
        if self._is_code(tag) and self._in_code:
            self._in_code -= 1

    def handle_data(self, data):
        if not self._in_code:
            self.prose.append(data)

    def _is_code(self, tag):
        return tag in ("code", "pre", "script", "div")


def navigation_links(site):
    """The links in the scripts that make the tree of pages."""
    for path in glob.glob(os.path.join(site, "navtreedata.js")) + glob.glob(os.path.join(site, "*_8h.js")):
        with open(path, encoding="utf-8") as file:
            for link in re.findall(r'"([A-Za-z0-9_.-]+\.html(?:#[^"]*)?)"', file.read()):
                yield os.path.basename(path), link


def check_links(site, pages):
    """A line for each link that leads nowhere."""
    links = [(name, link) for name, page in pages.items() for link in page.links]
    links += navigation_links(site)
    looked_at = 0
    for name, link in links:
        parts = urlsplit(link)
        if parts.scheme or parts.netloc:
            continue
        looked_at += 1
        target = unquote(parts.path) or name
        if not os.path.exists(os.path.join(site, target)):
            yield "%s: the link to %s leads nowhere" % (name, link)
        elif parts.fragment and target in pages and unquote(parts.fragment) not in pages[target].anchors:
            yield "%s: no anchor for the link to %s" % (name, link)
    if looked_at < 1000:
        yield "only %d links in the site" % looked_at


def check_pages(site, sources, pages):
    """Is every page of the guide there, with its pictures?"""
    sys.path.insert(0, os.path.join(sources, "docs/site"))
    from site_pages import page_label
    os.chdir(sources)
    for path in sorted(glob.glob("*.md") + glob.glob("docs/*.md") + glob.glob("*/README.md")):
        name = page_label(path) + ".html"
        if name not in pages:
            yield "%s: no page %s" % (path, name)
            continue
        with open(path, encoding="utf-8") as file:
            shown = re.findall(r"!\[[^]]*\]\(([^)]+)\)", file.read())
        for left in LEFT_OVER.findall("".join(pages[name].prose)):
            yield "%s: '%s' stands in the text of %s" % (path, left, name)
        there = dict(pages[name].pictures)
        for picture in shown:
            if not there.get(os.path.basename(picture)):
                yield "%s: the picture %s is not in %s, or has no text in its place" % (path, picture, name)


def main(site, sources):
    site = os.path.abspath(site)
    pages = {os.path.basename(path): Page(path) for path in glob.glob(os.path.join(site, "*.html"))}
    problems = list(check_links(site, pages)) + list(check_pages(site, sources, pages))
    print("\n".join(problems) if problems else "%d pages, every link leads somewhere" % len(pages))
    return 1 if problems else 0


sys.exit(main(*sys.argv[1:]))
