"""Poses a machine and says where its nodes are: scene.py MACHINE"""

import sys

import numpy as np

import k5ax

machine = k5ax.Machine.load(sys.argv[1])
p_part, abc = (30, 20, 50), np.radians((-40, 0, 90))

# [snippet pose]
p_mach = machine.part_to_machine(p_part, abc)
if not machine.pose(p_mach, abc):
    sys.exit("the slides cannot bring the tool there")
# [end]

# [snippet walk]
machine_frame, part_frame = machine.trees
if machine_frame is None or part_frame is None:
    sys.exit("a machine without trees")
for node in machine_frame.walk() + part_frame.walk():
    origin = node.node_to_root()[3, :3]
    print(f"{node.kind:5} {node.id:5} {node.value:9.3f}  {np.round(origin, 3)}")
# [end]

# [snippet tool_on_part]
tool = machine.tool_node
leaf = next(node for node in part_frame.walk() if not node.children)
if tool is not None:
    p_tool = np.array((0, 0, 0, 1)) @ tool.node_to_root() @ leaf.node_to_root()
    print("tool point on the part", np.round(p_tool[:3], 3))
# [end]

# [snippet states]
states = machine.axis_states()
machine.pose((0, 0, 0), (0, 0, 0))
machine.set_axis_states(states)
# [end]
print("X stands at", machine.axis_position(1))
