"""Positions and directions between part and machine coordinates, one and many."""

import math

import numpy as np
import pytest

from conftest import QUARTER
from k5ax import AngledHead, Axis, AxisLocation, AxisType, Machine, MachineType

# A quarter turn leaves sines and cosines that are off by half of an epsilon, times points of some 60.
TOLERANCE = 5e-14


def close(actual, expected):
    np.testing.assert_allclose(actual, expected, rtol=0, atol=TOLERANCE)


def turned_about_z(points, base, angle):
    """The same as the library's, but as complex numbers: (p - b) e^(i t) + b."""
    points, base = np.asarray(points, float), np.asarray(base, float)
    turned = ((points - base) @ (1, 1j, 0)) * np.exp(1j * np.asarray(angle)) + base @ (1, 1j, 0)
    return np.stack([turned.real, turned.imag, points[..., 2]], axis=-1)


def test_a_table_at_plus_90_shows_the_part_turned_by_minus_90(c_table):
    # (30, 20) is (20, 20) from the axis; turned by -90 degrees that is (20, -20).
    close(c_table.part_to_machine((30, 20, 50), (0, 0, QUARTER)), (30, -20, 50))


def test_machine_to_part_is_the_way_back(c_table):
    p_part, tool_dir = c_table.machine_to_part((30, -20, 50), (0, 0, QUARTER))
    close(p_part, (30, 20, 50))
    close(tool_dir, (0, 0, 1))


def test_a_head_axis_turns_the_tool_and_not_the_point(b_on_c):
    # B by +90 takes +Z to +X; C by +90 then takes +X to +Y.
    p_part, tool_dir = b_on_c.machine_to_part((1, 2, 3), (0, QUARTER, QUARTER))
    close(p_part, (-2, 1, 3))
    close(tool_dir, (0, 1, 0))
    close(b_on_c.part_to_machine((-2, 1, 3), (0, QUARTER, QUARTER)), (1, 2, 3))


def test_an_axis_takes_the_angle_of_its_letter(c_table):
    close(c_table.part_to_machine((30, 20, 50), (QUARTER, QUARTER, 0)), (30, 20, 50))


def test_many_points_with_an_angle_each(c_table):
    generator = np.random.default_rng(7)
    points = generator.uniform(-50, 50, (1000, 3))
    angles = generator.uniform(-4, 4, (1000, 3))
    close(c_table.part_to_machine(points, angles), turned_about_z(points, (10, 0, 0), -angles[:, 2]))
    close(c_table.machine_to_part(points, angles)[0], turned_about_z(points, (10, 0, 0), angles[:, 2]))


def test_many_points_at_one_pose_and_one_point_at_many(c_table):
    points = np.array([(30, 20, 50), (10, 0, 1), (10, 10, 0)])
    close(c_table.part_to_machine(points, (0, 0, QUARTER)), [(30, -20, 50), (10, 0, 1), (20, 0, 0)])
    angles = [(0, 0, 0), (0, 0, QUARTER), (0, 0, math.pi)]
    close(c_table.part_to_machine((30, 20, 50), angles), [(30, 20, 50), (30, -20, 50), (-10, -20, 50)])
    close(c_table.part_to_machine([(30, 20, 50)], angles), [(30, 20, 50), (30, -20, 50), (-10, -20, 50)])


def test_many_are_the_same_as_one_after_the_other(trunnion):
    generator = np.random.default_rng(11)
    points = generator.uniform(-50, 50, (300, 3))
    angles = generator.uniform(-2, 2, (300, 3))
    one_by_one = np.array([trunnion.part_to_machine(p, a) for p, a in zip(points, angles)])
    assert (trunnion.part_to_machine(points, angles) == one_by_one).all()
    one_by_one = [trunnion.machine_to_part(p, a) for p, a in zip(points, angles)]
    for many, one in zip(trunnion.machine_to_part(points, angles), zip(*one_by_one)):
        assert (many == np.array(one)).all()
    one_by_one = [trunnion.cartesian_to_axial_rotary(p, a, 1, -1) for p, a in zip(points, angles)]
    for many, one in zip(trunnion.cartesian_to_axial_rotary(points, angles, 1, -1), zip(*one_by_one)):
        assert (many == np.array(one)).all()


def test_an_array_turns_by_a_direction_that_is_no_unit_vector_as_a_point_does(c_table):
    # Stored as it is; shorter than 5e-9 it turns nothing. A copy that normalised it would turn about it.
    c_table.primary.vector = (0, 0, 1e-9)
    close(c_table.part_to_machine((30, 20, 50), (0, 0, QUARTER)), (30, 20, 50))
    close(c_table.part_to_machine([(30, 20, 50)], (0, 0, QUARTER)), [(30, 20, 50)])


def test_matrices_do_what_the_transforms_do(trunnion):
    generator = np.random.default_rng(13)
    points = generator.uniform(-50, 50, (50, 3))
    angles = generator.uniform(-2, 2, (50, 3))
    rows = np.column_stack([points, np.ones(50)])

    part_to_mach = trunnion.part_to_machine_transform(angles)
    assert part_to_mach.shape == (50, 4, 4)
    assert (part_to_mach[:, :, 3] == (0, 0, 0, 1)).all()
    # A lever arm of 310 on both axes, some ten roundings.
    moved = np.einsum("ni,nij->nj", rows, part_to_mach)[:, :3]
    np.testing.assert_allclose(moved, trunnion.part_to_machine(points, angles), rtol=0, atol=1e-12)

    primary, secondary = trunnion.rotary_transforms(angles)
    moved = np.einsum("ni,nij,njk->nk", rows, primary, secondary)[:, :3]
    np.testing.assert_allclose(moved, trunnion.machine_to_part(points, angles)[0], rtol=0, atol=1e-12)
    product = trunnion.machine_to_part_transform(angles)
    np.testing.assert_allclose(secondary @ primary, product, rtol=0, atol=1e-12)


def test_a_matrix_translates_in_its_last_row(c_table):
    # About Z through (10, 0, 0) by -90 degrees: X to -Y, Y to +X, the origin to (10, 10, 0).
    expected = [(0, -1, 0, 0), (1, 0, 0, 0), (0, 0, 1, 0), (10, 10, 0, 1)]
    close(c_table.part_to_machine_transform((0, 0, QUARTER)), expected)


def test_the_control_point_adds_the_tip_and_the_base_points_of_the_head(b_on_c):
    b_on_c.head.tip = (1, 2, 3)
    close(b_on_c.tool_to_control_point((10, 20, 30)), (11, 22, 38))
    close(b_on_c.tool_to_control_point([(10, 20, 30), (0, 0, 0)]), [(11, 22, 38), (1, 2, 8)])


def test_the_tool_is_axial_upright_and_radial_tilted_by_90(b_on_c):
    upright, tilted, between = (0, 0, 1), (0, QUARTER, 1), (0, 1, 1)
    assert b_on_c.is_tool_axial(upright) is True
    assert b_on_c.is_tool_radial(upright) is False
    assert b_on_c.is_tool_axial([upright, tilted, between]).tolist() == [True, False, False]
    assert b_on_c.is_tool_radial([upright, tilted, between]).tolist() == [False, True, False]


def test_wrapping_brings_a_point_into_the_half_plane():
    # A about X through the origin. (5, 0, 3) is 3 from it, along +Z. To +Y it goes by -90 degrees about X.
    machine = Machine(MachineType.TT, primary=Axis(AxisType.A, AxisLocation.TABLE))
    p, angles, radius = machine.cartesian_to_axial_rotary((5, 0, 3), (0.5, 0.25, 0.125), ref_axis=1)
    close(p, (5, 3, 0))
    close(angles, (QUARTER, 0.25, 0.125))
    assert radius == 3
    p, angles, radius = machine.cartesian_to_axial_rotary([(5, 0, 3)] * 2, (0, 0, 0), ref_axis=1, ref_sign=-1)
    close(p, [(5, -3, 0)] * 2)
    close(angles, [(-QUARTER, 0, 0)] * 2)
    assert radius.tolist() == [3, 3]


def test_wrapping_leaves_a_point_on_the_axis():
    machine = Machine(MachineType.TT, primary=Axis(AxisType.A, AxisLocation.TABLE))
    p, angles, radius = machine.cartesian_to_axial_rotary((5, 0, 0), (1, 2, 3))
    assert p.tolist() == [5, 0, 0] and angles.tolist() == [1, 2, 3] and radius == 0


def test_wrapping_more_points_than_a_block_holds(c_table):
    # About Z through the origin, into the half-plane of +X: all points of a circle come to (2, 0, z).
    angle = np.linspace(-3, 3, 1001)
    points = np.column_stack([2 * np.cos(angle), 2 * np.sin(angle), angle])
    p, angles, radius = c_table.cartesian_to_axial_rotary(points, (0, 0, 0))
    close(p, np.column_stack([np.full(1001, 2), np.zeros(1001), angle]))
    # acos loses up to the root of an epsilon near 0, where a step of the angle is 0.006.
    np.testing.assert_allclose(angles[:, 2], angle, rtol=0, atol=3e-8)
    close(radius, np.full(1001, 2))


def test_the_flags_of_the_head_make_the_tool_vertical(b_on_c):
    b_on_c.tool_dir = (1, 0, 0)
    close(b_on_c.machine_to_part([(0, 0, 0)], (0, 0, 0))[1], [(1, 0, 0)])
    b_on_c.flags = 1
    close(b_on_c.machine_to_part([(0, 0, 0)], (0, 0, 0))[1], [(0, 0, 1)])
    b_on_c.flags = 3
    close(b_on_c.machine_to_part([(0, 0, 0)], (0, 0, 0))[1], [(1, 0, 0)])


def test_orientate_turns_the_machine_itself():
    machine = Machine(
        MachineType.TT,
        primary=Axis(AxisType.A, AxisLocation.TABLE),
        secondary=Axis(AxisType.C, AxisLocation.TABLE),
    )
    # By -90 degrees about +X: +Z to +Y.
    machine.orientate(QUARTER, 0)
    close(machine.secondary.vector, (0, 1, 0))
    machine.type = MachineType.UNDEFINED
    with pytest.raises(ValueError, match="type"):
        machine.orientate(1, 1)


def test_an_angled_head_is_set_in_degrees():
    head = AngledHead()
    assert not head.is_angled()
    # Tilted +Z to +X, then turned +X to +Y; the first length stays upright.
    head.set(c_degrees=90, b_degrees=90, lengths=(10, 4))
    close(head.tool_dir, (0, 1, 0))
    close(head.tip, (0, 4, 10))
    close(head.b_angle, QUARTER)
    assert head.is_angled()
    head.scale(2)
    close(head.tip, (0, 8, 20))
    assert (head.length1, head.length2) == (20, 8)
