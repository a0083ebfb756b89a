"""What the tests share: machines whose answers can be worked out by hand."""

import math
import os
from pathlib import Path

import pytest

import k5ax
from k5ax import Axis, AxisLocation, AxisNode, AxisType, Machine, MachineType, Node, ToolNode

SOURCES = Path(os.environ["K5AX_SOURCES"])
QUARTER = math.pi / 2


@pytest.fixture
def trunnion_file():
    return SOURCES / "examples" / "machines" / "table_table_trunnion.k5m"


@pytest.fixture
def trunnion(trunnion_file):
    return Machine.load(trunnion_file)


@pytest.fixture
def c_table():
    """One rotary axis C on the table, about Z through (10, 0, 0)."""
    axis = Axis(AxisType.C, AxisLocation.TABLE, base=(10, 0, 0), min=-math.pi, max=math.pi)
    return Machine(MachineType.TT, primary=axis)


@pytest.fixture
def b_on_c():
    """C on the table through the origin, B on the head through (0, 0, 5)."""
    return Machine(
        MachineType.HT,
        primary=Axis(AxisType.C, AxisLocation.TABLE, min=-math.pi, max=math.pi),
        secondary=Axis(AxisType.B, AxisLocation.HEAD, base=(0, 0, 5), min=-2, max=2),
    )


def three_slides():
    """X, Y and Z one on the other, all of the head; the part lies on the machine frame."""
    frame = Node(10)
    x = frame.add_child(AxisNode(Axis(AxisType.X, AxisLocation.HEAD, min=-100, max=100), 1))
    y = x.add_child(AxisNode(Axis(AxisType.Y, AxisLocation.HEAD, min=-100, max=100), 2))
    z = y.add_child(AxisNode(Axis(AxisType.Z, AxisLocation.HEAD, min=-100, max=100), 3))
    tool = z.add_child(ToolNode(id=6))
    part = Node(11)
    part.add_child(Node(12))
    return frame, part, tool


@pytest.fixture
def slides():
    machine = Machine(MachineType.TT)
    frame, part, tool = three_slides()
    machine.set_trees(frame, part, tool=tool)
    return machine


@pytest.fixture
def feedback():
    """The texts that the library has said; the switch and the callback are put back."""
    said = []
    k5ax.set_feedback(said.append)
    k5ax.set_developer(True)
    yield said
    k5ax.set_feedback(None)
    k5ax.set_developer(False)
