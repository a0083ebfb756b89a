"""Machines as objects: fields, files, copies, what they own."""

import copy
import errno
import math
import pickle

import numpy as np
import pytest

import k5ax
from k5ax import AngledHead, Axis, AxisLocation, AxisMode, AxisType, Machine, MachineType


def some_axis(letter=AxisType.C, **fields):
    return Axis(letter, AxisLocation.TABLE, **fields)


# ---- axes ----


def test_an_axis_is_made_of_its_fields():
    lines = {"base": (1, 2, 3), "vector": (0, 3, 4)}
    axis = Axis(AxisType.B, AxisLocation.HEAD, **lines, min=-1, max=2, mode=AxisMode.LINEAR)
    assert (axis.type, axis.location, axis.mode) == (AxisType.B, AxisLocation.HEAD, AxisMode.LINEAR)
    assert axis.base.tolist() == [1, 2, 3]
    np.testing.assert_allclose(axis.vector, (0, 0.6, 0.8), rtol=0, atol=2e-16)
    assert (axis.min, axis.max) == (-1, 2)


@pytest.mark.parametrize(
    "letter, direction, mode",
    [
        (AxisType.A, (1, 0, 0), AxisMode.ROTARY),
        (AxisType.B, (0, 1, 0), AxisMode.ROTARY),
        (AxisType.C, (0, 0, 1), AxisMode.ROTARY),
        (AxisType.X, (1, 0, 0), AxisMode.LINEAR),
        (AxisType.Y, (0, 1, 0), AxisMode.LINEAR),
        (AxisType.Z, (0, 0, 1), AxisMode.LINEAR),
    ],
)
def test_the_letter_says_direction_and_mode_where_nothing_else_does(letter, direction, mode):
    axis = some_axis(letter)
    assert tuple(axis.vector) == direction and axis.mode == mode
    assert axis.is_valid() and axis.is_orthogonal()


def test_every_field_of_an_axis_can_be_set():
    axis = some_axis()
    axis.type, axis.location, axis.mode = AxisType.X, AxisLocation.HEAD, AxisMode.LINEAR
    axis.base, axis.vector = (1, 2, 3), (0, 0, 9)
    axis.min, axis.max = 5, 4
    assert (axis.type, axis.location, axis.mode) == (AxisType.X, AxisLocation.HEAD, AxisMode.LINEAR)
    assert axis.base.tolist() == [1, 2, 3] and axis.vector.tolist() == [0, 0, 9]
    assert not axis.is_valid()  # the limits are the wrong way round
    axis.max = 6
    assert axis.is_valid() and not axis.is_orthogonal()
    axis.scale(2)
    assert axis.base.tolist() == [2, 4, 6] and (axis.min, axis.max) == (10, 12)


def test_what_is_no_axis_or_no_enumerator_is_a_type_error(c_table):
    for give in (
        lambda: Axis("C", AxisLocation.TABLE),
        lambda: some_axis(mode=1),
        lambda: setattr(c_table, "primary", AngledHead()),
        lambda: setattr(c_table, "type", 1),
        lambda: setattr(c_table, "head", None),
        lambda: k5ax.AxisNode(None),
    ):
        with pytest.raises(TypeError):
            give()


def test_an_axis_reads_and_writes_the_component_of_its_letter():
    axis = some_axis(AxisType.B)
    assert axis.get_value((7, 8, 9)) == 8
    assert axis.set_value(5, (7, 8, 9)).tolist() == [7, 5, 9]
    assert some_axis(AxisType.DUMMY).set_value(5, (7, 8, 9)).tolist() == [7, 8, 9]


def test_what_is_read_cannot_be_written_to_by_mistake(trunnion):
    for array in (trunnion.primary.base, trunnion.primary.vector, trunnion.head.tip, trunnion.work_zero,
                  trunnion.tool_dir, trunnion.loading_vector, trunnion.tool_node.transform):
        with pytest.raises(ValueError, match="read-only"):
            array[0] = 1


def test_a_point_of_another_shape_is_a_value_error(trunnion):
    for give in (
        lambda: setattr(trunnion.primary, "base", (1, 2)),
        lambda: setattr(trunnion.primary, "vector", [(1, 2, 3)]),
        lambda: setattr(trunnion.head, "tip", 5),
        lambda: setattr(trunnion, "work_zero", ()),
        lambda: trunnion.pose((1, 2), (0, 0, 0)),
        lambda: Axis(AxisType.A, AxisLocation.TABLE, base=(1, 2)),
    ):
        with pytest.raises(ValueError, match=r"shape .*expected \(3,\)"):
            give()


# ---- machines ----


def test_every_field_of_a_machine_can_be_set():
    machine = Machine()
    assert (machine.type, machine.mode) == (MachineType.UNDEFINED, -1)
    assert machine.discipline == 0 and machine.metric
    assert machine.primary is machine.secondary is machine.x_axis is machine.y_axis is machine.z_axis is None
    machine.type, machine.mode, machine.discipline, machine.metric = MachineType.HH, 7, 8, False
    machine.work_zero, machine.loading_vector, machine.tool_dir = (1, 2, 3), (4, 5, 6), (0, 1, 0)
    machine.flags = 4
    machine.primary, machine.secondary = some_axis(AxisType.C), some_axis(AxisType.A)
    for place, letter in (("x_axis", AxisType.X), ("y_axis", AxisType.Y), ("z_axis", AxisType.Z)):
        setattr(machine, place, some_axis(letter))

    kept = Machine.from_bytes(machine.to_bytes())
    assert (kept.type, kept.mode, kept.discipline, kept.metric) == (MachineType.HH, 7, 8, False)
    assert kept.work_zero.tolist() == [1, 2, 3] and kept.loading_vector.tolist() == [4, 5, 6]
    assert kept.tool_dir.tolist() == [0, 1, 0] and kept.flags == kept.head.flags == 4
    axes = (kept.primary, kept.secondary, kept.x_axis, kept.y_axis, kept.z_axis)
    assert [axis.type.name for axis in axes] == ["C", "A", "X", "Y", "Z"]

    machine.primary = None
    assert machine.primary is None


def test_an_axis_of_a_machine_is_the_machines_own(c_table):
    given = some_axis(base=(1, 2, 3))
    c_table.primary = given
    given.base = (9, 9, 9)
    assert c_table.primary.base.tolist() == [1, 2, 3]
    c_table.primary.base = (4, 5, 6)
    assert c_table.primary.base.tolist() == [4, 5, 6]
    c_table.head.tip = (1, 1, 1)
    assert c_table.head.tip.tolist() == [1, 1, 1]


def test_a_head_is_copied_into_a_machine(c_table):
    head = AngledHead()
    head.tip, head.flags = (1, 2, 3), 8
    c_table.head = head
    head.tip = (0, 0, 0)
    assert c_table.head.tip.tolist() == [1, 2, 3] and c_table.flags == 8
    c_table.initialise_head()
    assert c_table.head.tip.tolist() == [0, 0, 0] and c_table.flags == 0


def test_the_part_axis_of_table_table_is_the_secondary(trunnion):
    assert trunnion.rotary_axis is trunnion.secondary
    assert [axis.type for axis in trunnion.mw_rotary_axes()] == [AxisType.C, AxisType.A]
    trunnion.type = MachineType.HT
    assert trunnion.rotary_axis.type == AxisType.A
    assert [axis.type for axis in trunnion.mw_rotary_axes()] == [AxisType.A, AxisType.C]
    trunnion.type = MachineType.UNDEFINED
    assert trunnion.rotary_axis is None and trunnion.mw_rotary_axes() == (None, None)


def test_validity_is_judged(trunnion):
    assert trunnion.is_valid() and trunnion.mw_valid() and trunnion.is_orthogonal()
    trunnion.secondary.max = trunnion.secondary.min
    assert trunnion.is_valid() and not trunnion.mw_valid()
    trunnion.type = MachineType.UNDEFINED
    assert not trunnion.is_valid()


def test_scaling_goes_to_inches_and_names_them(trunnion):
    trunnion.scale(False)
    assert not trunnion.metric
    np.testing.assert_allclose(trunnion.secondary.base, (0, 0, -85 / 25.4), rtol=1e-15)
    assert trunnion.work_zero.tolist() == [0, 0, 40]


def test_an_enumerator_that_nobody_named_is_kept():
    machine = Machine(MachineType(17))
    assert int(machine.type) == 17 and "???" in repr(machine)


def test_copy_from_keeps_the_axes_that_are_held(c_table):
    held = c_table.primary
    other = c_table.copy()
    other.primary.base = (7, 7, 7)
    c_table.copy_from(other)
    assert held.base.tolist() == [7, 7, 7] and c_table.primary is held


# ---- copies, pickles ----


@pytest.mark.parametrize(
    "copied",
    [Machine.copy, copy.copy, copy.deepcopy, lambda m: pickle.loads(pickle.dumps(m)),
     lambda m: Machine.from_bytes(m.to_bytes())],
    ids=["copy", "copy.copy", "deepcopy", "pickle", "bytes"],
)
def test_a_copy_is_equal_and_independent(trunnion, copied):
    trunnion.primary.vector = (2, 0, 0)  # not normalised on the way
    other = copied(trunnion)
    assert other.to_bytes() == trunnion.to_bytes()
    other.primary.base = (1, 1, 1)
    other.trees[0].id = 77
    assert trunnion.primary.base.tolist() == [-310, 0.024, 62.481] and trunnion.trees[0].id == 10
    assert other.pose((30, 20, 50), (0, 0, 0))


@pytest.mark.parametrize("copied", [copy.copy, copy.deepcopy, lambda o: pickle.loads(pickle.dumps(o))])
def test_axes_heads_and_states_are_copied_too(copied):
    axis = some_axis(base=(1, 2, 3), min=-1, max=2)
    axis.vector = (0, 0, 5)
    other = copied(axis)
    axis.base = (0, 0, 0)
    assert other.base.tolist() == [1, 2, 3] and other.vector.tolist() == [0, 0, 5] and other.max == 2
    head = AngledHead()
    head.set(30, 40, (5, 6))
    other = copied(head)
    head.length1 = 0
    assert other.length1 == 5 and other.b_angle == pytest.approx(math.radians(40), abs=1e-15)
    state = k5ax.NodeState(3, 1, 0.5)
    assert copied(state) == state and repr(state) == "NodeState(id=3, flags=1, value=0.5)"


# ---- files ----


def test_what_is_loaded_and_saved_is_the_file_byte_for_byte(trunnion_file, tmp_path):
    strange = tmp_path / "ä\udcff.k5m"  # a byte that is no text
    for path in (tmp_path / "a.k5m", str(tmp_path / "b.k5m"), bytes(tmp_path / "c.k5m"), strange):
        Machine.load(trunnion_file).save(path)
        assert Machine.load(path).to_bytes() == trunnion_file.read_bytes()
        with open(path, "rb") as saved:
            assert saved.read() == trunnion_file.read_bytes()


def test_a_file_that_is_not_there_is_an_os_error_with_the_path(tmp_path):
    path = str(tmp_path / "none.k5m")
    with pytest.raises(FileNotFoundError) as caught:
        Machine.load(path)
    assert caught.value.filename == path and caught.value.errno == errno.ENOENT
    with pytest.raises(IsADirectoryError):
        Machine.load(tmp_path)


def test_a_damaged_file_is_an_os_error_with_the_path(trunnion_file, tmp_path):
    path = tmp_path / "short.k5m"
    whole = trunnion_file.read_bytes()
    for length in (0, 3, 100, len(whole) - 1):
        path.write_bytes(whole[:length])
        with pytest.raises(OSError, match="unexpected end of file") as caught:
            Machine.load(path)
        assert caught.value.filename == path and caught.value.errno == errno.EINVAL
        with pytest.raises(ValueError, match="unexpected end"):
            Machine.from_bytes(whole[:length])


def test_a_file_that_cannot_be_saved_is_an_os_error_and_the_old_one_stays(trunnion, tmp_path):
    with pytest.raises(FileNotFoundError) as caught:
        trunnion.save(tmp_path / "none" / "a.k5m")
    assert caught.value.filename == tmp_path / "none" / "a.k5m"
    with pytest.raises(IsADirectoryError):
        trunnion.save(tmp_path)
    assert list(tmp_path.iterdir()) == []


def test_a_path_with_a_null_byte_is_a_value_error(trunnion):
    for use in (Machine.load, trunnion.save):
        with pytest.raises(ValueError, match="null byte"):
            use("a\0b")
        with pytest.raises(TypeError):
            use(3.5)


# ---- the feedback channel ----


def test_the_library_says_why_a_machine_is_not_valid(c_table, feedback):
    assert k5ax.developer()
    assert not c_table.is_valid()  # C passes the origin at 10
    assert feedback == ["MC_TT secondary axis location not valid"]
    k5ax.set_developer(False)
    assert not c_table.is_valid() and len(feedback) == 1


def test_what_a_callback_raises_comes_out(c_table, feedback):
    def fail(text):
        raise LookupError(text)

    k5ax.set_feedback(fail)
    with pytest.raises(LookupError, match="not valid"):
        c_table.is_valid()


def test_a_callback_may_take_itself_away(c_table, feedback):
    k5ax.set_feedback(lambda text: k5ax.set_feedback(None))
    assert not c_table.is_valid() and not c_table.is_valid()
    with pytest.raises(TypeError):
        k5ax.set_feedback(3)
