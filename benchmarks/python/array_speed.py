"""array_speed.py LOOPS MACHINE [--points=N] [--rounds=N]: the package beside the same loops in C++.

LOOPS is the library of array_loops.cpp. Both sides work on the same arrays in the same
process, in turn, round after round; a ratio of processor times is formed within each
round, and the median of the rounds counts. The C++ loops write to arrays that are there
already, the package makes its answers anew. Ends with 1 when a ratio is not allowed.
"""

import argparse
import ctypes
import statistics
import sys
import time

import numpy as np

import k5ax

ALLOWED = 3.0


def address(array):
    return ctypes.c_void_p(array.ctypes.data)


class Sides:
    """Each operation twice: as a call of the package, and as a loop in C++ that writes to arrays."""

    def __init__(self, loops_file, machine_file, points):
        self.loops = ctypes.CDLL(loops_file)
        self.loops.k5axCMachDef_create.restype = ctypes.c_void_p
        self.plain = ctypes.c_void_p(self.loops.k5axCMachDef_create())
        if self.loops.MachdefLoad(self.plain, machine_file.encode()) != 1:
            sys.exit(f"{machine_file} cannot be loaded")
        self.machine = k5ax.Machine.load(machine_file)

        generator = np.random.default_rng(2026)
        self.xyz = generator.uniform(-100, 100, (points, 3))
        self.abc = generator.uniform(-1, 1, (points, 3))

    def operations(self):
        """The name, the package's call, the name of the loop, what it is given, and its answers."""
        count = len(self.xyz)
        m, xyz, abc = self.machine, self.xyz, self.abc
        return [
            ("part_to_machine", lambda: [m.part_to_machine(xyz, abc)],
             "loop_part_to_machine", [xyz, abc], [np.empty((count, 3))]),
            ("machine_to_part", lambda: m.machine_to_part(xyz, abc),
             "loop_machine_to_part", [xyz, abc], [np.empty((count, 3)), np.empty((count, 3))]),
            ("is_tool_axial", lambda: [m.is_tool_axial(abc)],
             "loop_is_tool_axial", [abc], [np.empty(count, bool)]),
            ("cartesian_to_axial_rotary", lambda: m.cartesian_to_axial_rotary(xyz, abc),
             "loop_wrap", [xyz, abc], [np.empty((count, 3)), np.empty((count, 3)), np.empty(count)]),
            ("axis_values", lambda: m.axis_values(xyz, abc),
             "loop_update", [xyz, abc], [np.empty((count, 5)), np.empty(count, bool)]),
        ]

    def run_loop(self, name, given, answers):
        count = ctypes.c_size_t(len(self.xyz))
        arguments = [address(array) for array in given] + [count] + [address(array) for array in answers]
        getattr(self.loops, name)(self.plain, *arguments)


def timed(work):
    begin = time.process_time()
    answer = work()
    return time.process_time() - begin, answer


def measure(sides, rounds):
    allowed = True
    print(f"{'operation':<26} {'C++':>8} {'Python':>9} {'ratio':>7} {'quartiles':>13}")
    for name, call, loop, given, answers in sides.operations():
        ratios, times, loop_times = [], [], []
        for number in range(rounds + 1):
            loop_time, _ = timed(lambda: sides.run_loop(loop, given, answers))
            call_time, result = timed(call)
            if number == 0:  # the first round warms up, and shows that both say the same
                for wanted, actual in zip(answers, result):
                    if not np.array_equal(wanted, actual):
                        sys.exit(f"{name}: the two sides differ")
                continue
            del result
            loop_times.append(loop_time)
            times.append(call_time)
            ratios.append(call_time / loop_time)
        ratio = statistics.median(ratios)
        low, _, high = statistics.quantiles(ratios, n=4)
        nanoseconds = 1e9 / len(sides.xyz)
        print(
            f"{name:<26} {statistics.median(loop_times) * nanoseconds:5.0f} ns"
            f" {statistics.median(times) * nanoseconds:6.0f} ns {ratio:7.2f} {low:6.2f}-{high:.2f}",
            flush=True,
        )
        allowed = allowed and ratio <= ALLOWED
    return allowed


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("loops")
    parser.add_argument("machine")
    parser.add_argument("--points", type=int, default=1_000_000)
    parser.add_argument("--rounds", type=int, default=15)
    options = parser.parse_args()
    print(f"{options.points} points, {options.rounds} rounds, at most {ALLOWED} times the loop in C++")
    if not measure(Sides(options.loops, options.machine, options.points), options.rounds):
        print("slower than allowed")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
