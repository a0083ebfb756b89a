"""Are the pictures those that their script draws, and does the library say what they say?

check_figures.py SOURCES PROGRAM SCRATCH, where PROGRAM answers the pictures' questions through the library.
"""
import os
import subprocess
import sys
import xml.etree.ElementTree as xml

# The pictures' lengths are up to 1,000: 1e-9 is 1e-12 of them, some thousand roundings.
TOLERANCE = 1e-9
WANTED = {"rotate": 6, "part_to_machine": 3, "tool_on_part": 3, "head": 1, "wrap": 1, "tree": 4}


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def check_drawn(figures, draw, scratch):
    """Problems with the pictures themselves."""
    os.makedirs(scratch, exist_ok=True)
    for name in os.listdir(scratch):
        os.remove(os.path.join(scratch, name))
    subprocess.run([draw, scratch], check=True)

    committed = {name for name in os.listdir(figures) if name.endswith(".svg")}
    drawn = set(os.listdir(scratch))
    for name in sorted(committed ^ drawn):
        yield "%s: not both kept and drawn by draw_figures" % name
    for name in sorted(committed & drawn):
        if read(os.path.join(figures, name)) != read(os.path.join(scratch, name)):
            yield "%s: not as it is drawn; run docs/figures/draw_figures" % name
        root = xml.parse(os.path.join(figures, name)).getroot()
        parts = {child.tag.rpartition("}")[2]: (child.text or "").strip() for child in root}
        if not parts.get("title") or not parts.get("desc"):
            yield "%s: without a title or a description" % name


def lines_of(command, given=""):
    run = subprocess.run(command, input=given, check=True, capture_output=True, text=True)
    return run.stdout.splitlines()


def check_facts(draw, program):
    """What the library answers otherwise than the pictures."""
    facts = [line.split(" = ") for line in lines_of([draw, "--facts"])]
    answers = lines_of([program], "".join(question + "\n" for question, _ in facts))
    count = {}
    for (question, drawn), answer in zip(facts, answers):
        kind = question.split()[0]
        count[kind] = count.get(kind, 0) + 1
        ours, theirs = ([float(word) for word in words.split()] for words in (drawn, answer))
        if len(ours) != len(theirs) or any(not abs(a - b) <= TOLERANCE for a, b in zip(ours, theirs)):
            yield "%s:\n  drawn   %s\n  library %s" % (question, drawn, answer)
    if count != WANTED:
        yield "asked %s and not %s" % (count, WANTED)


def main(sources, program, scratch):
    figures = os.path.join(sources, "docs/figures")
    draw = os.path.join(figures, "draw_figures")
    problems = list(check_drawn(figures, draw, scratch)) + list(check_facts(draw, program))
    print("\n".join(problems or ["the pictures are as they are drawn, and say what the library says"]))
    return 1 if problems else 0


sys.exit(main(*sys.argv[1:]))
