"""The trees: nodes, matrices, building, posing, reading back."""

import copy
import math
import runpy

import numpy as np
import pytest

from conftest import QUARTER, SOURCES, three_slides
from k5ax import AngledHead, Axis, AxisLocation, AxisNode, AxisType, Machine, Node, NodeState, ToolNode

X_AXIS = Axis(AxisType.X, AxisLocation.HEAD)


def close(actual, expected):
    # A few roundings of lengths below 1000.
    np.testing.assert_allclose(actual, expected, rtol=0, atol=1e-12)


def translation(x, y, z):
    matrix = np.identity(4)
    matrix[3, :3] = x, y, z
    return matrix


# ---- nodes ----


def test_a_node_is_fresh():
    node = Node()
    assert (node.id, node.flags, node.value, node.kind) == (0, 0, 0, "plain")
    assert node.parent is None and node.children == []
    assert (node.transform == np.identity(4)).all()


def test_a_node_keeps_what_it_is_given():
    node = Node(5, translation(1, 2, 3))
    node.flags, node.value, node.id = 6, 7.5, 8
    assert node.state == NodeState(8, 6, 7.5)
    assert (node.transform == translation(1, 2, 3)).all()
    node.transform = translation(4, 5, 6)[:, :3]
    assert (node.transform == translation(4, 5, 6)).all()


def test_a_matrix_with_another_last_column_is_refused():
    for row in range(4):
        matrix = np.identity(4)
        matrix[row, 3] = 0.5
        with pytest.raises(ValueError, match="last column"):
            Node(0, matrix)
    for shape in ((3, 3), (3, 4), (4,), (2, 4, 4)):
        with pytest.raises(ValueError, match="transform: shape"):
            Node(0, np.zeros(shape))


def test_children_come_in_order_and_know_their_parent():
    root, first, second = Node(1), Node(2), Node(3)
    assert root.add_child(first) is first
    root.add_child(second)
    below = first.add_child(Node(4))
    assert root.children == [first, second] and below.parent == first and first.parent == root
    assert [node.id for node in root.walk()] == [1, 2, 4, 3]
    second.add_child(below)
    assert first.children == [] and below.parent == second
    root.remove_child(second)
    assert second.parent is None and root.children == [first]
    with pytest.raises(ValueError, match="not a child"):
        root.remove_child(second)


def test_a_node_below_itself_is_a_value_error():
    root, below = Node(1), Node(2)
    root.add_child(below)
    for parent, child in ((root, root), (below, root)):
        with pytest.raises(ValueError):
            parent.add_child(child)


def test_only_a_node_is_a_child():
    for wrong in (None, 3, X_AXIS):
        with pytest.raises(TypeError):
            Node().add_child(wrong)
        with pytest.raises(TypeError):
            Node().remove_child(wrong)
        with pytest.raises(TypeError):
            Machine().set_trees(wrong, 5)


def test_the_way_to_the_root_is_the_nodes_own_transform_first():
    # A quarter turn about Z takes +X to +Y; the child's 1 along X is then 1 along Y, from (10, 0, 0).
    turn = np.array([(0, 1, 0, 0), (-1, 0, 0, 0), (0, 0, 1, 0), (10, 0, 0, 1)])
    root = Node(1, turn)
    child = root.add_child(Node(2, translation(1, 0, 0)))
    assert (child.transform_stack() == [translation(1, 0, 0), turn]).all()
    assert (np.array((0, 0, 0, 1)) @ child.node_to_root() == (10, 1, 0, 1)).all()


def test_an_axis_node_turns_about_its_line_after_going_there():
    node = AxisNode(Axis(AxisType.C, AxisLocation.TABLE, base=(10, 0, 0)), 4)
    assert node.flags == 1 and node.kind == "axis" and node.axis.type == AxisType.C
    # (30, 20) is (20, 20) from the base, and that turned by +90 degrees is (-20, 20).
    close(np.array((30, 20, 0, 1)) @ node.transform_at(QUARTER), (-20, 20, 0, 1))
    assert (node.transform == translation(-10, 0, 0)).all()
    node.value = QUARTER
    assert (node.transform == translation(-10, 0, 0)).all()  # stored alone
    node.set_value(QUARTER)
    close(np.array((30, 20, 0, 1)) @ node.transform, (-20, 20, 0, 1))
    node.initialise()
    assert node.value == 0 and (node.transform == np.identity(4)).all()


def test_flags_say_driven_and_wins():
    flags = {(driven, wins): AxisNode(X_AXIS, 1, driven, wins).flags for driven in (0, 1) for wins in (0, 1)}
    assert flags == {(0, 0): 0, (1, 0): 1, (0, 1): 2, (1, 1): 3}


def test_a_node_takes_a_state_of_its_own_id():
    node = AxisNode(X_AXIS, 4)
    node.set_state(NodeState(4, 3, 25))
    assert node.flags == 3 and (node.transform == translation(25, 0, 0)).all()
    with pytest.raises(ValueError, match="id 5; the node's is 4"):
        node.set_state(NodeState(5, 0, 1))
    assert node.value == 25


def test_the_axis_of_a_node_is_the_nodes_own():
    axis = Axis(AxisType.X, AxisLocation.HEAD, max=5)
    node = AxisNode(axis, 1)
    axis.max = 6
    assert node.axis.max == 5
    node.axis.max = 7
    assert node.axis.max == 7 and axis.max == 6


def test_a_tool_node_stands_at_minus_its_lengths_and_its_tool_point():
    head = AngledHead()
    head.set(0, 90, (10, 4))
    node = ToolNode(head, 6, (1, 2, 3))
    # 4 down the tilted spindle, which points along +X: (-4, 0, 0); then 10 down, and the tool point off.
    close(node.transform[3, :3], (-5, -2, -13))
    assert node.head.offset.tolist() == [1, 2, 3]
    node.set_tool_point((0, 0, 0))
    close(node.transform[3, :3], (-4, 0, -10))


def test_scaling_goes_down_the_tree_when_asked():
    root = Node(1)
    node = root.add_child(AxisNode(X_AXIS, 2, value=3))
    root.scale_node(2)
    assert node.value == 3
    root.scale_node(2, recursive=True)
    assert node.value == 6 and (node.transform == translation(6, 0, 0)).all()


def test_a_copy_of_a_node_hangs_nowhere():
    root = Node(1)
    node = root.add_child(AxisNode(X_AXIS, 2, value=3))
    node.add_child(ToolNode(id=6))
    for other in (node.copy(), copy.deepcopy(node)):
        assert other != node and other.parent is None and len(root.children) == 1
        assert [(below.id, below.kind) for below in other.walk()] == [(2, "axis"), (6, "tool")]
        assert (other.transform == node.transform).all()


def test_the_same_node_is_equal_and_counts_once():
    root = Node(1)
    child = root.add_child(Node(2))
    assert root.children[0] == child and root.children[0] is not child and root != child
    assert len({child, root.children[0], root}) == 2


def test_a_tree_lives_as_long_as_its_root():
    root = Node(1)
    child = root.add_child(Node(2))
    del root
    assert child.parent is None and child.id == 2


def test_a_deep_tree_is_walked_copied_and_dropped():
    root = Node(0)
    last = root
    for i in range(1, 50_000):
        last = last.add_child(Node(i))
    other = root.copy()
    del root, last
    assert [node.id for node in other.walk()] == list(range(50_000))


# ---- a machine's trees ----


def test_a_machine_gets_copies_of_the_trees(slides):
    frame, part, tool = three_slides()
    slides.set_trees(frame, part, tool=tool)
    roots = slides.trees
    assert roots[0] != frame and [node.id for node in roots[0].walk()] == [10, 1, 2, 3, 6]
    assert [node.id for node in roots[1].walk()] == [11, 12]
    assert slides.tool_node.id == 6 and slides.rotary_nodes == (None, None)
    frame.children[0].set_value(5)
    assert slides.axis_position(1) == 0


def test_setting_trees_leaves_everything_else(trunnion):
    before = trunnion.copy()
    held, head = trunnion.primary, trunnion.head
    held.base = (1, 2, 3)
    trunnion.set_trees(None, None)
    assert trunnion.trees == (None, None) and trunnion.tool_node is None
    assert trunnion.primary is held and held.base.tolist() == [1, 2, 3]
    head.tip = (4, 4, 4)
    assert trunnion.head.tip.tolist() == [4, 4, 4]
    assert trunnion.work_zero.tolist() == before.work_zero.tolist() and trunnion.type == before.type


def test_a_node_that_stands_in_neither_tree_is_refused(slides):
    frame, part, tool = three_slides()
    stranger = AxisNode(X_AXIS, 9)
    before = slides.to_bytes()
    for given in ({"primary": stranger}, {"secondary": stranger}, {"tool": ToolNode()}):
        with pytest.raises(ValueError, match="stands in neither tree"):
            slides.set_trees(frame, part, **given)
    assert slides.to_bytes() == before


def test_the_tree_of_a_machine_cannot_be_changed(slides):
    root = slides.trees[0]
    for change in (
        lambda: root.add_child(Node()),
        lambda: Node().add_child(root),
        lambda: root.remove_child(root.children[0]),
    ):
        with pytest.raises(ValueError, match="belongs to a machine"):
            change()
    assert len(root.walk()) == 5
    root.copy().add_child(Node())


def test_a_machine_built_here_is_the_shipped_one(trunnion_file, tmp_path, monkeypatch):
    monkeypatch.setattr("sys.argv", ["build_machine.py", str(tmp_path / "built.k5m")])
    runpy.run_path(str(SOURCES / "python" / "samples" / "build_machine.py"), run_name="__main__")
    assert (tmp_path / "built.k5m").read_bytes() == trunnion_file.read_bytes()


# ---- posing ----


def test_slides_go_where_they_are_sent(slides):
    assert slides.pose((1, 2, 3), (0, 0, 0)) is True
    assert [node.value for node in slides.axis_nodes] == [1, 2, 3]
    close(slides.tool_node.node_to_root()[3, :3], (1, 2, 3))
    xyz, abc = slides.read_back()
    assert xyz.tolist() == [1, 2, 3] and abc.tolist() == [0, 0, 0]


def test_a_pose_stands_for_itself_and_an_update_goes_on(trunnion):
    xyz, abc = (30, 20, 50), np.radians((-40, 0, 90))
    assert trunnion.pose(xyz, abc)
    first = trunnion.axis_states()
    assert trunnion.pose((0, 0, 0), (0.5, 0, 0.5)) and trunnion.pose(xyz, abc)
    assert trunnion.axis_states() == first
    trunnion.update_node_axes(xyz, abc)
    assert trunnion.axis_states() != first  # measured with the table turned


def test_the_pose_puts_the_tool_on_the_part_where_it_was_asked_for(trunnion):
    p_part, abc = np.array((30, 20, 50)), np.radians((-40, 0, 90))
    assert trunnion.pose(trunnion.part_to_machine(p_part, abc), abc)
    leaf = [node for node in trunnion.trees[1].walk() if not node.children][0]
    p = np.array((0, 0, 0, 1)) @ trunnion.tool_node.node_to_root() @ leaf.node_to_root()
    close(p[:3], p_part)


def test_a_point_out_of_reach_is_not_reached():
    frame = Node(10)
    x = frame.add_child(AxisNode(X_AXIS, 1))
    tool = x.add_child(ToolNode(id=6))
    part = Node(11)
    machine = Machine()
    machine.set_trees(frame, part, tool=tool)
    assert machine.pose((5, 0, 0), (0, 0, 0)) is True
    assert machine.pose((5, 0, 1), (0, 0, 0)) is False  # there is no Z
    values, reached = machine.axis_values([(5, 0, 0), (5, 0, 1), (6, 0, 0)], (0, 0, 0))
    assert values.tolist() == [[5], [0], [6]] and reached.tolist() == [True, False, True]


def test_values_of_many_poses_are_those_of_one_after_the_other(trunnion):
    generator = np.random.default_rng(17)
    xyz, abc = generator.uniform(-50, 50, (200, 3)), generator.uniform(-2, 2, (200, 3))
    trunnion.pose((1, 2, 3), (0, 0, 0))
    before = trunnion.to_bytes()
    values, reached = trunnion.axis_values(xyz, abc)
    assert reached.all() and trunnion.to_bytes() == before
    one_by_one = trunnion.copy()
    for row in range(200):
        assert one_by_one.pose(xyz[row], abc[row])
        assert [node.value for node in one_by_one.axis_nodes] == values[row].tolist()
        back = one_by_one.read_back()
        close(back[0], xyz[row])
        assert back[1].tolist() == [abc[row, 0], 0, abc[row, 2]]
    single, is_reached = trunnion.axis_values(xyz[0], abc[0])
    assert single.tolist() == values[0].tolist() and is_reached is True


def test_values_are_read_back_as_coordinates(slides):
    xyz, abc = slides.read_back([(1, 2, 3), (4, 5, 6)])
    assert xyz.tolist() == [[1, 2, 3], [4, 5, 6]] and abc.tolist() == [[0, 0, 0]] * 2
    assert slides.read_back((7, 8, 9))[0].tolist() == [7, 8, 9]
    assert slides.read_back()[0].tolist() == [0, 0, 0]  # its own pose stays
    for wrong in ((1, 2), np.zeros((2, 4)), np.zeros((1, 1, 3)), 5):
        with pytest.raises(ValueError, match="3 axis nodes"):
            slides.read_back(wrong)


def test_states_are_taken_and_given_by_id(slides):
    slides.pose((1, 2, 3), (0, 0, 0))
    states = slides.axis_states()
    assert states == {1: NodeState(1, 1, 1), 2: NodeState(2, 1, 2), 3: NodeState(3, 1, 3)}
    slides.set_axis_states({2: NodeState(2, 1, 20), 99: NodeState(99)})
    assert [node.value for node in slides.axis_nodes] == [1, 20, 3]
    close(slides.tool_node.node_to_root()[3, :3], (1, 20, 3))
    with pytest.raises(ValueError, match="id 3 under the key 1"):
        slides.set_axis_states({2: NodeState(2, 1, 5), 1: NodeState(3)})
    for wrong in ({"2": NodeState(2)}, {2: 5}):
        with pytest.raises(TypeError, match="by id"):
            slides.set_axis_states(wrong)
    assert slides.axis_position(2) == 20
    with pytest.raises(KeyError, match="99"):
        slides.axis_position(99)


def test_the_tool_point_of_a_machine_moves_its_tool_node(slides):
    slides.set_tool_point((0, 0, 40))
    close(slides.tool_node.transform[3, :3], (0, 0, -40))
    slides.set_trees(None, None)
    with pytest.raises(ValueError, match="no tool node"):
        slides.set_tool_point((0, 0, 0))


def test_a_machine_without_trees_is_not_posed():
    for ask in (Machine().pose, Machine().update_node_axes, Machine().axis_values):
        with pytest.raises(ValueError, match="no trees"):
            ask((0, 0, 0), (0, 0, 0))
