"""Mends two kinds of links of doxygen's own that lead nowhere: mend_links.py SITE.

- The navigation leads from a header to names of a namespace, on the header's page; the namespace's has them.
- A page's summary names sections that hold nothing public, and so are left out.
"""
import glob
import os
import re
import sys

ANCHOR = re.compile(r'(?:id|name)="([^"]+)"')
SUMMARY = re.compile(r'<a href="#([a-z-]+)">[^<]*</a>( &#124;)?\n')


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def write(path, text):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)


def main(site):
    os.chdir(site)
    texts = {page: read(page) for page in sorted(glob.glob("*.html"))}
    anchors = {page: set(ANCHOR.findall(text)) for page, text in texts.items()}
    namespaces = [page for page in anchors if page.startswith("namespace")]
    namespace_of = {anchor: page for page in namespaces for anchor in anchors[page]}

    for page, text in texts.items():
        mended = SUMMARY.sub(lambda link: link.group() if link[1] in anchors[page] else "", text)
        if mended != text:
            write(page, mended)

    def on_its_page(link):
        page, anchor = link[1], link[2]
        if anchor not in anchors[page]:
            page = namespace_of.get(anchor, page)
        return '"%s#%s"' % (page, anchor)

    for path in glob.glob("*_8h.js") + ["navtreedata.js"]:
        write(path, re.sub(r'"(\w+_8h\.html)#(\w+)"', on_its_page, read(path)))


main(sys.argv[1])
