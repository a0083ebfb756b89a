"""A public header as doxygen reads it: a page of the guide that a comment names is a link to it."""
import re
import sys

with open(sys.argv[1], encoding="utf-8") as header:
    sys.stdout.write(re.sub(r"docs/([a-z-]+)\.md", r'@ref \1 "docs/\1.md"', header.read()))
