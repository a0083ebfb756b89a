"""A page of the guide as doxygen reads it.

The pages are written to be read as they stand. Doxygen asks for more: a name for every heading, links by
those names, and the names of the languages of code in its own form.
"""
import os
import re
import sys

from site_pages import MAIN_PAGE, Anchors, heading_label, page_label, pages

# The navigation: the manual's index holds the pages that it links to, in its order; the architecture holds
# the rooms.
HOLDS = {"docs/README.md": lambda page: True, "ARCHITECTURE.md": lambda page: page.endswith("/README.md")}

# Doxygen colours these; everything else is shown as it is.
COLOURED = {"c": ".c", "cpp": ".cpp", "python": ".py", "csharp": ".cs"}

LINK = re.compile(r"(!?)\[([^]]*)\]\(([^) ]+)\)")


class Page:
    def __init__(self, path):
        self.path = path
        self.known = set(pages())
        self.listed = set()  # what this page has already put into the navigation
        self.anchors = Anchors()

    def heading(self, line):
        marks, text = re.match(r"(#+) (.*)", line).groups()
        anchor = self.anchors.of(text)
        if marks != "#":
            label = heading_label(self.path, anchor)
        else:
            label = "mainpage" if self.path == MAIN_PAGE else page_label(self.path)
        return "%s %s {#%s}" % (marks, text, label)

    def link(self, match):
        is_picture, text, target = match.groups()
        if re.match(r"(https?|mailto):", target):
            return match.group()
        file, _, anchor = target.partition("#")
        file = os.path.normpath(os.path.join(os.path.dirname(self.path), file)) if file else self.path
        if is_picture:
            return '<img src="%s" alt="%s"/>' % (os.path.basename(file), text)
        if file not in self.known:
            return text  # a source or a folder, which the site does not hold
        label = heading_label(file, anchor) if anchor else page_label(file)
        holds = HOLDS.get(self.path, lambda page: False)
        if holds(file) and not anchor and file != self.path and file not in self.listed:
            self.listed.add(file)
            return '@subpage %s "%s"' % (label, text.replace("\n", " ").strip("*`"))
        return "[%s](@ref %s)" % (text.replace("\n", " "), label)

    def prose(self, text):
        """A paragraph; what stands between backticks is left alone, but in the text of a link."""
        spans = re.split(r"(`[^`]*`)", text)
        hidden = {}
        for i in range(1, len(spans), 2):
            key = "\x00%d\x00" % i
            hidden[key] = spans[i]
            spans[i] = key
        text = LINK.sub(self.link, re.sub(r"<!--.*?-->", "", "".join(spans), flags=re.S))
        # Doxygen leaves the asterisks standing where what is bold begins or ends with code.
        text = re.sub(r"\*\*(.+?)\*\*", r"<b>\1</b>", text, flags=re.S)
        return re.sub("\x00\\d+\x00", lambda key: hidden[key.group()], text)

    def filtered(self, lines):
        paragraph = []
        in_code = False

        def flush():
            text = self.prose("\n".join(paragraph))
            paragraph.clear()
            return [text] if text else []

        for line in lines:
            if line.startswith("```"):
                yield from flush()
                language = line[3:].strip()
                in_code = not in_code
                yield "```{%s}" % COLOURED.get(language, ".unparsed") if in_code else "```"
            elif in_code:
                yield line
            elif re.match(r"#+ ", line):
                yield from flush()
                yield self.heading(line)
            elif not line.strip() or line.startswith("    "):
                yield from flush()
                yield line
            else:
                paragraph.append(line)
        yield from flush()


def main(path):
    page = Page(os.path.relpath(path))
    with open(path, encoding="utf-8") as file:
        print("\n".join(page.filtered(file.read().splitlines())))


main(sys.argv[1])
