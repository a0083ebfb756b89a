"""What counts as an array of points, and what is refused."""

import math

import numpy as np
import pytest

import k5ax
from conftest import QUARTER

P, ABC = (30.0, 20.0, 50.0), (0.0, 0.0, math.pi)
EXPECTED = (-10, -20, 50)  # turned by 180 degrees about (10, 0)


@pytest.mark.parametrize(
    "point",
    [
        [30, 20, 50],
        np.array(P, np.float32),
        np.array(P, int),
        np.array(P, ">f8"),
        np.array([50.0, 20.0, 30.0])[::-1],
        np.array([(30.0, 0.0), (20.0, 0.0), (50.0, 0.0)])[:, 0],
        np.frombuffer(b"x" + np.array(P).tobytes(), offset=1),
    ],
    ids=["list", "float32", "int", "other byte order", "reversed", "strided", "unaligned"],
)
def test_whatever_numpy_makes_doubles_of_is_a_point(c_table, point):
    np.testing.assert_allclose(c_table.part_to_machine(point, ABC), EXPECTED, rtol=0, atol=1e-13)


def test_rows_may_stand_anywhere_in_memory(c_table):
    points = np.asfortranarray([P, (10.0, 0.0, 0.0), P])
    answers = c_table.part_to_machine(points[::2], ABC)
    np.testing.assert_allclose(answers, [EXPECTED] * 2, rtol=0, atol=1e-13)


def test_the_shape_of_the_answer_is_that_of_the_question(c_table):
    assert c_table.part_to_machine(P, ABC).shape == (3,)
    assert c_table.part_to_machine([P], ABC).shape == (1, 3)
    assert c_table.part_to_machine(P, [ABC]).shape == (1, 3)
    assert c_table.part_to_machine([P] * 4, ABC).shape == (4, 3)
    assert c_table.part_to_machine(np.empty((0, 3)), ABC).shape == (0, 3)
    assert c_table.part_to_machine_transform(ABC).shape == (4, 4)
    assert c_table.part_to_machine_transform([ABC]).shape == (1, 4, 4)
    assert c_table.is_tool_axial(np.empty((0, 3))).shape == (0,)
    p, abc, radius = c_table.cartesian_to_axial_rotary(np.empty((0, 3)), ABC)
    assert p.shape == abc.shape == (0, 3) and radius.shape == (0,)


@pytest.mark.parametrize("shape", [(), (2,), (4,), (3, 2), (1, 3, 3), (0,)])
def test_another_shape_is_a_value_error_that_names_the_argument(c_table, slides, shape):
    wrong = np.zeros(shape)
    for ask in (
        lambda: c_table.part_to_machine(wrong, ABC),
        lambda: c_table.machine_to_part(wrong, ABC),
        lambda: slides.axis_values(wrong, ABC),
    ):
        with pytest.raises(ValueError, match=r"^xyz: shape .*expected \(3,\) or \(N, 3\)"):
            ask()
    for ask in (
        lambda: c_table.part_to_machine(P, wrong),
        lambda: c_table.machine_to_part(P, wrong),
        lambda: c_table.part_to_machine_transform(wrong),
        lambda: c_table.machine_to_part_transform(wrong),
        lambda: c_table.rotary_transforms(wrong),
        lambda: c_table.is_tool_axial(wrong),
        lambda: c_table.is_tool_radial(wrong),
    ):
        with pytest.raises(ValueError, match="^abc: shape"):
            ask()
    with pytest.raises(ValueError, match="^tool_point: shape"):
        c_table.tool_to_control_point(wrong)
    with pytest.raises(ValueError, match="^points: shape"):
        c_table.cartesian_to_axial_rotary(wrong, ABC)
    with pytest.raises(ValueError, match="^rotary: shape"):
        c_table.cartesian_to_axial_rotary(P, wrong)


def test_numbers_of_rows_that_differ_are_a_value_error(c_table):
    with pytest.raises(ValueError, match="xyz has 4 rows, and abc has 2"):
        c_table.part_to_machine(np.zeros((4, 3)), np.zeros((2, 3)))
    with pytest.raises(ValueError, match="xyz has 0 rows, and abc has 2"):
        c_table.part_to_machine(np.zeros((0, 3)), np.zeros((2, 3)))


@pytest.mark.parametrize("wrong", ["abc", ["a", "b", "c"], (1j, 0, 0), np.zeros(3, complex), object(), {}])
def test_what_is_no_number_is_a_type_or_value_error(c_table, wrong):
    with pytest.raises((TypeError, ValueError)):
        c_table.part_to_machine(wrong, ABC)


def test_what_is_no_finite_number_goes_through(c_table):
    answers = c_table.part_to_machine([P, (math.nan, 0, 0), (math.inf, 0, 0)], (0, 0, QUARTER))
    assert np.isfinite(answers[0]).all()
    assert np.isnan(answers[1, 0]) and not np.isfinite(answers[2]).all()


def test_the_arguments_stay_as_they_are(c_table):
    points, angles = np.array([P]), np.array([ABC])
    answers = c_table.part_to_machine(points, angles)
    assert points.tolist() == [list(P)] and angles.tolist() == [list(ABC)]
    assert not np.shares_memory(answers, points) and answers.flags.writeable


def test_another_reference_axis_is_a_value_error(c_table):
    for ref_axis in (-1, 3):
        with pytest.raises(ValueError, match="ref_axis"):
            c_table.cartesian_to_axial_rotary(P, ABC, ref_axis)


def test_angles_come_into_their_range():
    turn = 2 * math.pi
    assert k5ax.normalise_angle(-1.0) == pytest.approx(turn - 1, abs=1e-15)
    assert isinstance(k5ax.normalise_angle(7), float)
    np.testing.assert_allclose(k5ax.normalise_angle([[-1.0, 1.0], [7.0, 0.0]]),
                               [[turn - 1, 1], [7 - turn, 0]], rtol=0, atol=1e-15)
    np.testing.assert_allclose(k5ax.normalise_angle([4.0, -4.0], signed=True), [4 - turn, turn - 4],
                               rtol=0, atol=1e-15)
