"""The two trees of a shipped machine, read from its file."""
import os

from machine_file import AXIS_NODE, PLAIN, read_machine
from picture import Picture

MACHINES = ("table_table_trunnion", "head_table_swivel", "head_table_inch", "head_head_fork")
FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "../../examples/machines")

WIDTH, HEIGHT, STEP, COLUMN = 350, 44, 66, 390


def length(value):
    text = ("%.4f" % value).rstrip("0").rstrip(".")
    return "0" if text == "-0" else text


def shift_text(shift):
    return " ".join(length(v) for v in shift)


def names(machine, index, is_leaf):
    """A node's name and what its transform is."""
    node = machine.nodes[index]
    shift = shift_text(node.shift)
    if node.kind == AXIS_NODE:
        role = {machine.rotary[0]: " (primary)", machine.rotary[1]: " (secondary)"}.get(index, "")
        if node.letter in "XYZ":
            return "%s slide" % node.letter, "shift along %s by its value" % node.letter
        return ("%s axis%s" % (node.letter, role),
                "%sturn by its value" % ("" if shift == "0 0 0" else "shift %s, then " % shift))
    if node.kind != PLAIN:
        return "tool", "head and tool, shift %s" % shift
    if node.parent < 0:
        if index == machine.roots[0]:
            return "machine frame", "root of tree 0"
        return "part", "root of tree 1"
    if is_leaf and shift == "0 0 0":
        return "machine frame", "first leaf of tree 1"
    return "fixed", "shift %s" % shift


def css_of(machine, index):
    node = machine.nodes[index]
    if node.kind == AXIS_NODE:
        return "z" if node.letter in "XYZ" else "axis"
    return "faint" if node.id == -999 else "tool" if index == machine.tool else "part"


def tree(name):
    machine = read_machine(os.path.join(FOLDER, name + ".k5m"))
    picture = Picture("The trees of %s" % name,
                      "Two trees side by side, each from its root at the top down to its leaf. The tool "
                      "point goes up the left one to the machine frame, and from the foot of the right one "
                      "up to the part.")
    for column, root in enumerate(machine.roots):
        x = column * COLUMN
        words = "machine frame down to the tool" if column == 0 else "part down to the machine frame"
        picture.text((x, 0), "tree %d: %s" % (column, words))
        draw_below(picture, machine, root, x, 18)
    return picture


def draw_below(picture, machine, index, x, y):
    """Draws a node and what is below it; the shipped machines' trees are chains."""
    children = [i for i, node in enumerate(machine.nodes) if node.parent == index]
    title, transform = names(machine, index, not children)
    css = css_of(machine, index)
    picture.box(x, y, WIDTH, HEIGHT, css + " washed")
    picture.text((x + 10, y + 18), title, css)
    picture.text((x + WIDTH - 10, y + 18), "id %d" % machine.nodes[index].id, css, "end")
    picture.text((x + 10, y + 36), transform, css)
    if children:
        assert len(children) == 1, "a tree with branches needs room beside it"
        # Points go up: from the child's frame to this one's.
        picture.arrow([(x + 24, y + STEP), (x + 24, y + HEIGHT)])
        draw_below(picture, machine, children[0], x, y + STEP)


def facts():
    for name in MACHINES:
        machine = read_machine(os.path.join(FOLDER, name + ".k5m"))
        answer = []
        for node in machine.nodes:
            answer += [node.kind, node.id, node.parent] + list(node.shift)
        yield "tree", (name,), tuple(answer)
