"""Kinematics of five-axis machine tools.

Machine.load reads a machine from a file; its methods carry positions and tool
directions between part and machine coordinates, wrap points about the rotary
axis, and pose the two trees that show the machine moving. Lengths are in the
machine's unit, angles in radians, points are rows: p @ M.
"""

from k5ax import _core
from k5ax._core import (
    AngledHead,
    Axis,
    AxisLocation,
    AxisMode,
    AxisNode,
    AxisType,
    Machine,
    MachineType,
    Node,
    NodeState,
    ToolNode,
    developer,
    normalise_angle,
    set_developer,
    set_feedback,
)

__version__: str = _core.__version__

__all__ = [
    "AngledHead",
    "Axis",
    "AxisLocation",
    "AxisMode",
    "AxisNode",
    "AxisType",
    "Machine",
    "MachineType",
    "Node",
    "NodeState",
    "ToolNode",
    "developer",
    "normalise_angle",
    "set_developer",
    "set_feedback",
]

# They are known by the package's name, in messages and in pickles.
for _name in __all__:
    globals()[_name].__module__ = __name__
del _name
