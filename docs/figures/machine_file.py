"""What the pictures of the trees need of a machine definition file; docs/file-format.md has the layout."""
import struct
from collections import namedtuple

LETTERS = "ABCXYZ"
AXIS = struct.Struct("<i3d3d2d3i")
NODE = struct.Struct("<4id12d")
HEAD_SIZE = 136

Node = namedtuple("Node", "kind parent id flags value shift letter")
Machine = namedtuple("Machine", "nodes roots rotary tool")
PLAIN, AXIS_NODE, TOOL_NODE = range(3)


def read_machine(path):
    with open(path, "rb") as file:
        record = file.read()
    at = 200
    for _ in range(5):  # the axes in their slots
        present, = struct.unpack_from("<i", record, at)
        at += 4 + (AXIS.size if present else 0)

    count, = struct.unpack_from("<i", record, at)
    at += 4
    nodes = []
    for _ in range(count):
        fields = NODE.unpack_from(record, at)
        at += NODE.size
        letter = ""
        if fields[0] == AXIS_NODE:
            letter = LETTERS[AXIS.unpack_from(record, at)[9]]
            at += AXIS.size
        elif fields[0] == TOOL_NODE:
            at += HEAD_SIZE
        nodes.append(Node(*fields[:5], shift=fields[14:17], letter=letter))
    tool_root, part_root, primary, secondary, tool = struct.unpack_from("<5i", record, at)
    return Machine(nodes, (tool_root, part_root), (primary, secondary), tool)
