"""Other threads run while arrays are worked on, and may do as they like meanwhile."""

import sys
import threading
import time

import numpy as np
import pytest

from k5ax import Axis, AxisLocation, AxisType, Machine

MANY = 400_000  # some hundredths of a second at the least


@pytest.fixture
def patient():
    """Python itself takes the lock from nobody for a whole minute: who goes on has been let."""
    before = sys.getswitchinterval()
    sys.setswitchinterval(60)
    yield
    sys.setswitchinterval(before)


def some(count, seed=3):
    generator = np.random.default_rng(seed)
    return generator.uniform(-50, 50, (count, 3)), generator.uniform(-2, 2, (count, 3))


def calls(machine):
    xyz, abc = some(MANY)
    few = xyz[: MANY // 4], abc[: MANY // 4]
    values = np.zeros((MANY // 4, len(machine.axis_nodes)))
    return {
        "part_to_machine": lambda: machine.part_to_machine(xyz, abc),
        "machine_to_part": lambda: machine.machine_to_part(xyz, abc),
        "part_to_machine_transform": lambda: machine.part_to_machine_transform(abc),
        "machine_to_part_transform": lambda: machine.machine_to_part_transform(abc),
        "rotary_transforms": lambda: machine.rotary_transforms(abc),
        "is_tool_axial": lambda: machine.is_tool_axial(abc),
        "is_tool_radial": lambda: machine.is_tool_radial(abc),
        "cartesian_to_axial_rotary": lambda: machine.cartesian_to_axial_rotary(*few),
        "axis_values": lambda: machine.axis_values(*few),
        "read_back": lambda: machine.read_back(values),
    }


@pytest.mark.parametrize("name", list(calls(Machine())))
def test_another_thread_runs_meanwhile(trunnion, patient, name):
    call = calls(trunnion)[name]
    stamps = []
    started, stop = threading.Event(), threading.Event()

    def tick():
        started.set()
        while not stop.is_set():
            stamps.append(time.perf_counter())
            time.sleep(0.001)

    thread = threading.Thread(target=tick)
    thread.start()
    started.wait()
    ticks = 0
    for _ in range(20):  # once is enough, and the machine may be busy with something else
        begin = time.perf_counter()
        call()
        end = time.perf_counter()
        # With the lock held, no tick could have been between the two.
        ticks = sum(begin < stamp < end for stamp in stamps)
        if ticks >= 2:
            break
    stop.set()
    thread.join()
    assert ticks >= 2


def run(*works):
    """Runs each in a thread; what one raises is raised here."""
    failures = []

    def guarded(work):
        try:
            work()
        except BaseException as failure:  # noqa: B036  (raised again below)
            failures.append(failure)

    threads = [threading.Thread(target=guarded, args=(work,)) for work in works]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if failures:
        raise failures[0]


def test_eight_threads_get_the_answers_of_one(trunnion):
    xyz, abc = some(20_000)
    expected = trunnion.part_to_machine(xyz, abc), trunnion.cartesian_to_axial_rotary(xyz, abc)
    values = trunnion.axis_values(xyz, abc)[0]

    def work():
        for _ in range(3):
            assert (trunnion.part_to_machine(xyz, abc) == expected[0]).all()
            for actual, wanted in zip(trunnion.cartesian_to_axial_rotary(xyz, abc), expected[1]):
                assert (actual == wanted).all()
            assert (trunnion.axis_values(xyz, abc)[0] == values).all()

    run(*[work] * 8)


def test_a_machine_may_change_while_it_is_asked(trunnion):
    xyz, abc = some(50_000)
    base = trunnion.primary.base
    done = threading.Event()
    expected = trunnion.part_to_machine(xyz, abc)
    trunnion.primary.base = (0, 0, 0)
    expected_elsewhere = trunnion.part_to_machine(xyz, abc)
    seen = []

    def ask():
        while not done.is_set():
            answers = trunnion.part_to_machine(xyz, abc)
            seen.append(True)
            # As it stood at the call, one way or the other, from the first row to the last.
            assert (answers == expected).all() or (answers == expected_elsewhere).all()

    def change():
        try:
            for i in range(400):
                axis = Axis(AxisType.A, AxisLocation.TABLE, base=base if i % 2 else (0, 0, 0))
                trunnion.primary = axis
                if i % 10 == 0:
                    time.sleep(0.001)
        finally:
            done.set()

    run(ask, ask, change)
    assert seen


def test_machines_come_and_go_while_points_are_wrapped(trunnion, trunnion_file):
    # Both take from what the library keeps for reuse, and give back to it.
    xyz, abc = some(20_000)
    expected = trunnion.cartesian_to_axial_rotary(xyz, abc)
    record = trunnion_file.read_bytes()
    done = threading.Event()
    made = []

    def wrap():
        try:
            for _ in range(5):
                for actual, wanted in zip(trunnion.cartesian_to_axial_rotary(xyz, abc), expected):
                    assert (actual == wanted).all()
        finally:
            done.set()

    def come_and_go():
        while not done.is_set():
            machine = Machine.from_bytes(record)
            made.append(machine.copy().to_bytes() == record)
            machine.trees[0].copy()

    run(wrap, wrap, come_and_go, come_and_go)
    assert made and all(made)


def test_who_waits_for_the_pools_gets_its_turn(trunnion, trunnion_file):
    # Wrapping a million points takes seconds in all; a machine must not wait for their end.
    xyz, abc = some(300_000)
    running, done = threading.Event(), threading.Event()
    waited = []

    def wrap():
        running.set()
        trunnion.cartesian_to_axial_rotary(xyz, abc)
        done.set()

    def load():
        running.wait()
        while not done.is_set():
            begin = time.perf_counter()
            Machine.load(trunnion_file)
            waited.append(time.perf_counter() - begin)

    begin = time.perf_counter()
    run(wrap, load)
    whole = time.perf_counter() - begin
    assert len(waited) > 10
    assert np.median(waited) < whole / 10
