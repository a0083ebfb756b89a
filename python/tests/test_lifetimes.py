"""What Python holds stays what it is, whatever becomes of where it came from."""

import gc

import numpy as np

from conftest import three_slides
from k5ax import Axis, AxisLocation, AxisType, Machine, MachineType


def churn(trunnion_file):
    """Takes whatever the library has to give out again, and writes over it."""
    machines = [Machine.load(trunnion_file) for _ in range(20)]
    for machine in machines:
        machine.primary.base = (666, 666, 666)
        for node in machine.trees[0].walk() + machine.trees[1].walk():
            node.id, node.value = 666, 666
    return machines


def test_a_node_outlives_the_name_of_its_machine(trunnion_file):
    machine = Machine.load(trunnion_file)
    node = machine.axis_nodes[0]
    del machine
    gc.collect()
    kept = churn(trunnion_file)
    assert node.id == 2 and node.axis.type == AxisType.Y and node.parent.id == 10
    assert len(node.walk()) == 4 and kept


def test_an_axis_and_a_head_outlive_the_name_of_their_machine(trunnion_file):
    machine = Machine.load(trunnion_file)
    axis, head, node_axis, node_head = (
        machine.primary, machine.head, machine.axis_nodes[0].axis, machine.tool_node.head)
    head.length1 = 5
    del machine
    gc.collect()
    kept = churn(trunnion_file)
    assert axis.base.tolist() == [-310, 0.024, 62.481] and head.length1 == 5
    assert node_axis.type == AxisType.Y and node_head.offset.tolist() == [0, 0, 160] and kept


def test_nodes_of_trees_that_were_replaced_stay_what_they_were(trunnion_file):
    machine = Machine.load(trunnion_file)
    root, node = machine.trees[0], machine.axis_nodes[0]
    frame, part, tool = three_slides()
    machine.set_trees(frame, part, tool=tool)
    kept = churn(trunnion_file)
    assert [n.id for n in root.walk()] == [10, 2, 3, -999, 6] and node.parent == root
    assert [n.id for n in machine.trees[0].walk()] == [10, 1, 2, 3, 6] and kept


def test_an_axis_that_was_replaced_stays_what_it_was(trunnion_file):
    machine = Machine.load(trunnion_file)
    old = machine.primary
    machine.primary = Axis(AxisType.B, AxisLocation.TABLE)
    kept = churn(trunnion_file)
    assert old.type == AxisType.A and machine.primary.type == AxisType.B and kept


def test_what_one_machine_gives_back_is_nobody_elses(trunnion_file):
    for _ in range(50):
        one = Machine.load(trunnion_file)
        two = Machine(MachineType.TT, primary=one.primary)
        two.set_trees(*one.trees)
        del one
        three = Machine.load(trunnion_file)
        three.primary.base = (1, 1, 1)
        assert two.primary.base.tolist() == [-310, 0.024, 62.481]
        assert [n.id for n in two.trees[0].walk()] == [10, 2, 3, -999, 6]


def test_an_answer_outlives_everything(trunnion_file):
    machine = Machine.load(trunnion_file)
    answers = machine.part_to_machine(np.zeros((1000, 3)), (0, 0, 0))
    transform = machine.tool_node.transform
    del machine
    gc.collect()
    churn(trunnion_file)
    assert (answers == 0).all() and transform[3].tolist() == [0, 0, -160, 1]
