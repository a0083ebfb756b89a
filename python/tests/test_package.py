"""The package as such: everything is named and described, and the samples run."""

import inspect
import subprocess
import sys

import pytest

import k5ax
from conftest import SOURCES

CLASSES = [value for value in vars(k5ax).values() if inspect.isclass(value)]
FUNCTIONS = [value for value in vars(k5ax).values() if inspect.isroutine(value)]
GIVEN_BY_PYBIND = {"__doc__", "__module__", "__getstate__", "__setstate__", "__hash__"}


def own_members(cls):
    return {name: member for name, member in vars(cls).items() if name not in GIVEN_BY_PYBIND}


def is_enum(cls):
    return hasattr(cls, "__members__")


def test_everything_is_named():
    assert sorted(k5ax.__all__) == sorted(value.__name__ for value in CLASSES + FUNCTIONS)
    assert all(value.__module__ == "k5ax" for value in CLASSES + FUNCTIONS)
    assert len(CLASSES) == 11 and len(FUNCTIONS) == 4


def test_everything_is_described():
    described = 0
    for thing in CLASSES + FUNCTIONS + [k5ax]:
        assert inspect.getdoc(thing), thing
    for cls in CLASSES:
        if is_enum(cls):
            assert all(f"\n  {name} : " in cls.__doc__ for name in cls.__members__), cls
            continue
        for name, member in own_members(cls).items():
            text = inspect.getdoc(member.__func__ if isinstance(member, staticmethod) else member)
            assert text and text.strip().endswith((".", ")")), f"{cls.__name__}.{name}"
            described += 1
    assert described > 100


def test_every_function_shows_its_arguments():
    shown = 0
    for cls in CLASSES:
        for name, member in own_members(cls).items():
            if is_enum(cls) or isinstance(member, property):
                continue
            if (cls, name) == (k5ax.Machine, "__init__"):
                continue  # a default that is an enumerator cannot be written there
            signature = inspect.signature(getattr(cls, name))
            assert next(iter(signature.parameters), "self") in ("self", "path", "data"), name
            assert "--" not in inspect.getdoc(getattr(cls, name)), name
            shown += 1
    assert shown > 50
    assert str(inspect.signature(k5ax.Machine.pose)) == "(self, xyz, abc)"


def test_every_argument_can_be_named(c_table, trunnion):
    abc = (0, 0, 0)
    for answer in (
        trunnion.part_to_machine(xyz=abc, abc=abc),
        trunnion.tool_to_control_point(tool_point=abc),
        trunnion.cartesian_to_axial_rotary(points=abc, rotary=abc, ref_axis=1, ref_sign=1),
        trunnion.axis_values(xyz=abc, abc=abc),
        trunnion.read_back(values=[0] * 5),
        k5ax.normalise_angle(angle=1, signed=True),
    ):
        assert answer is not None


def test_the_version_is_the_librarys():
    text = (SOURCES / "CMakeLists.txt").read_text()
    assert f"project(k5ax VERSION {k5ax.__version__} " in text


def test_things_say_what_they_are(trunnion):
    assert repr(trunnion) == "<k5ax.Machine TT, mm, primary A on TABLE, secondary C on TABLE, 12 nodes>"
    assert repr(trunnion.secondary) == "<k5ax.Axis C on the TABLE, ROTARY, -62.8319 to 62.8319>"
    assert repr(trunnion.head) == "<k5ax.AngledHead turned by 0, tilted by 0 radians>"
    assert repr(trunnion.trees[0]) == "<k5ax node of kind plain, id 10, value 0, 1 children>"


@pytest.mark.parametrize(
    "arguments, expected",
    [
        (["first_program.py", "M"], "X 20.000  Y -14.953  Z 33.621\n"),
        (["scene.py", "M"], "X stands at 20.0\n"),
        (["tool_path.py", "M", "P"], "2423 positions"),
        (["tool_path.py", "M", "P"], "2423 reached"),
    ],
)
def test_the_samples_run(arguments, expected, trunnion_file):
    files = {"M": trunnion_file, "P": SOURCES / "examples" / "toolpaths" / "table_table_trunnion.csv"}
    program, *rest = arguments
    command = [sys.executable, SOURCES / "python" / "samples" / program, *(files[name] for name in rest)]
    done = subprocess.run(command, capture_output=True, text=True, check=False)
    assert done.returncode == 0, done.stderr
    assert expected in done.stdout


def test_a_callback_that_stays_does_not_break_the_end():
    program = "import k5ax; k5ax.set_feedback(print); m = k5ax.Machine(); n = k5ax.Node(); print('done')"
    done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, check=False)
    assert (done.returncode, done.stdout, done.stderr) == (0, "done\n", "")
