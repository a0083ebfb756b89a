"""Builds the trunnion of examples/machines and saves it: build_machine.py FILE

docs/scene-graph.md has a drawing of it, and says how the two trees hang together.
"""

import math
import sys

import numpy as np
from numpy.typing import ArrayLike

from k5ax import Axis, AxisLocation, AxisNode, AxisType, Machine, MachineType, Node, ToolNode


# [snippet axes]
def rotary_axis(letter: AxisType, base: ArrayLike, min_deg: float, max_deg: float) -> Axis:
    low, high = math.radians(min_deg), math.radians(max_deg)
    return Axis(letter, AxisLocation.TABLE, base, min=low, max=high)


def make_axes() -> Machine:
    table, head = AxisLocation.TABLE, AxisLocation.HEAD
    machine = Machine(
        MachineType.TT,
        x_axis=Axis(AxisType.X, table, min=-250, max=250),
        y_axis=Axis(AxisType.Y, head, min=-225, max=225),
        z_axis=Axis(AxisType.Z, head, min=-400, max=0),
        primary=rotary_axis(AxisType.A, (-310, 0.024, 62.481), -120, 30),
        secondary=rotary_axis(AxisType.C, (0, 0, -85), -3600, 3600),
    )
    machine.work_zero = (0, 0, 40)  # the top of the fixture
    machine.loading_vector = (0, 0, 150)  # how far the spindle draws back for a new part
    return machine
# [end]


# [snippet nodes]
FIXED = -999  # the id of every fixed offset


def fixed(offset: ArrayLike) -> Node:
    node_to_parent = np.identity(4)
    node_to_parent[3, :3] = offset  # points are rows, so the last row translates
    return Node(FIXED, node_to_parent)


def add_rotary(parent: Node, id: int, axis: Axis) -> AxisNode:
    # The node itself goes to the axis line and turns; the way back is its parent's.
    return parent.add_child(fixed(axis.base)).add_child(AxisNode(axis, id))
# [end]


# [snippet trees]
def add_trees(machine: Machine) -> None:
    x_axis, y_axis, z_axis = machine.x_axis, machine.y_axis, machine.z_axis
    assert x_axis and y_axis and z_axis and machine.primary and machine.secondary

    # From the machine frame down to the tool. With the slides at 0 the spindle's nose
    # stands 520 over the table; the tool is 160 long.
    machine_frame = Node(10)
    y_node = machine_frame.add_child(AxisNode(y_axis, 2))
    z_node = y_node.add_child(AxisNode(z_axis, 3))
    nose = z_node.add_child(fixed((0, 0, 520)))
    tool = nose.add_child(ToolNode(id=6, tool_point=(0, 0, 160)))

    # From the part to the machine frame: the axis next to the part comes first.
    part_frame = Node(11)
    secondary = add_rotary(part_frame, 5, machine.secondary)
    primary = add_rotary(secondary, 4, machine.primary)
    x_node = primary.add_child(AxisNode(x_axis, 1))
    x_node.add_child(Node(12))

    machine.set_trees(machine_frame, part_frame, primary=primary, secondary=secondary, tool=tool)
# [end]


if __name__ == "__main__":
    # [snippet build]
    trunnion = make_axes()
    add_trees(trunnion)
    trunnion.save(sys.argv[1])
    # [end]
