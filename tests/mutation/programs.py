"""The test programs, cut into pieces: what is quick of each program, and its slow tests, which come last."""

import dataclasses
import json
import os
import pathlib
import resource
import subprocess
import sys

SLOW = 0.05  # seconds that a test may take and be among the quick ones
MOST_BYTES = 6 << 30
# Seconds of processor time beyond those of the library without a fault: a fault may make a test run for ever.
SPARE_SECONDS = 2
TIMES_LONGER = 5
# The library of the mutants is optimised less. What waits for something that never comes uses no processor.
LONGEST_WAIT = 120

# Takes as long as all others together.
LEFT_OUT = ("allocation_fault_tests",)

# Which program sees a fault of a room soonest; the others follow.
FIRST = {
    "foundation": ["foundation_tests"],
    "axes": ["axes_tests"],
    "scenegraph": ["scenegraph_tests"],
    "machdef": ["machdef_tests", "machdef_file_tests"],
    "kinematics": ["kinematics_tests"],
    "platform": ["platform_tests", "io_fault_tests"],
}


@dataclasses.dataclass
class Piece:
    program: pathlib.Path
    filter: str
    seconds: float
    is_quick: bool


def environment_in(scratch, **more):
    return dict(os.environ, TMPDIR=str(scratch), TEST_TMPDIR=f"{scratch}/", **more)


def run_tests(program, test_filter, scratch, cpu_seconds, library=None, output=None):
    """True when every test passes within the processor time."""
    def limit():
        resource.setrlimit(resource.RLIMIT_AS, (MOST_BYTES, MOST_BYTES))
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_CPU, (cpu_seconds, cpu_seconds))

    command = [str(program), "--gtest_brief=1", "--gtest_fail_fast", f"--gtest_filter={test_filter}"]
    if output is not None:
        command.append(f"--gtest_output=json:{output}")
    preloaded = {} if library is None else {"LD_PRELOAD": str(library)}
    try:
        done = subprocess.run(command, cwd=scratch, env=environment_in(scratch, **preloaded),
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=LONGEST_WAIT, preexec_fn=limit)
    except subprocess.TimeoutExpired:
        return False
    return done.returncode == 0


def _pieces_of(program, scratch, library):
    output = scratch / "times.json"
    if not run_tests(program, "*", scratch, 1000, library, output):
        sys.exit(f"{program} fails without any mutant")
    tests = []
    for suite in json.loads(output.read_text())["testsuites"]:
        for test in suite["testsuite"]:
            tests.append((f"{suite['name']}.{test['name']}", float(test["time"].rstrip("s"))))
    slow = [(name, seconds) for name, seconds in tests if seconds > SLOW]
    quick_seconds = sum(seconds for _, seconds in tests) - sum(seconds for _, seconds in slow)
    quick = "*-" + ":".join(name for name, _ in slow) if slow else "*"
    return ([Piece(program, quick, quick_seconds, True)] if len(slow) < len(tests) else []) + [
        Piece(program, name, seconds, False) for name, seconds in slow]


def all_pieces(tree, scratch, library):
    """Of the test programs that load the shared library, timed with the library without a fault."""
    pieces = []
    for program in sorted((tree / "tests").rglob("*_tests")):
        if not program.is_file() or not os.access(program, os.X_OK) or "tool" in program.parts:
            continue
        if program.name in LEFT_OUT:
            continue
        needed = subprocess.run(["ldd", program], capture_output=True, text=True).stdout
        if "libk5ax" in needed:
            pieces += _pieces_of(program, scratch, library)
    if not pieces:
        sys.exit(f"no test program below {tree}/tests")
    return pieces


def whole(program):
    """All tests of a program that takes no time."""
    return Piece(program, "*", 0, True)


def in_order_for(file, pieces):
    """The quick ones of the room first, then its slow ones, those of the others, and what takes longest."""
    room = file.split("/")[0]
    first = FIRST.get(room, [])

    def rank(piece):
        is_of_room = piece.program.name in first
        if piece.is_quick:
            return (0 if is_of_room else 1, piece.seconds)
        return (1 if is_of_room and piece.seconds < 1 else 2, piece.seconds)

    return sorted(pieces, key=rank)


def finds(piece, library, scratch):
    """Does a test of this piece fail with this library?"""
    cpu_seconds = int(SPARE_SECONDS + TIMES_LONGER * piece.seconds + 1)
    return not run_tests(piece.program, piece.filter, scratch, cpu_seconds, library)
