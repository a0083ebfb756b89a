#!/usr/bin/env python3
"""mutate.py ROOT TREE: runs the unit tests against mutants.

ROOT is the source tree, TREE a build of it with tests, whose test programs run against each mutated library.
Every mutant has to be killed (a test fails, crashes or takes too long) or stand in survivors.txt beside this
file with the reason why it changes nothing that can be seen. Mutants that do not compile do not count.
"""

import argparse
import fnmatch
import os
import pathlib
import queue
import random
import resource
import shutil
import subprocess
import sys
import threading
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from mutants import mutants_of  # noqa: E402

ROOMS = ("foundation", "axes", "scenegraph", "machdef", "kinematics", "platform/builtin")
# Which test programs see a fault of a room soonest; the others follow.
FIRST = {
    "foundation": ["foundation_tests"],
    "axes": ["axes_tests"],
    "scenegraph": ["scenegraph_tests"],
    "machdef": ["machdef_tests", "machdef_file_tests"],
    "kinematics": ["kinematics_tests"],
    "platform/builtin": ["platform_tests"],
}
KEPT_PER_CENT = 95.0
MOST_BYTES = 6 << 30


def room_of(file):
    return next(room for room in ROOMS if file.startswith(room + "/"))


def all_mutants(root):
    for room in ROOMS:
        for path in sorted((root / room).iterdir()):
            if path.suffix in (".cpp", ".h"):
                file = str(path.relative_to(root))
                yield from mutants_of(file, path.read_text())


def read_survivors(path):
    survivors = {}
    for number, text in enumerate(path.read_text().splitlines(), 1):
        if not text.strip() or text.startswith("#"):
            continue
        key, separator, reason = text.rpartition(" | ")
        if not separator or key.count(" | ") < 2 or not reason.strip():
            sys.exit(f"{path}:{number}: not FILE | LINE | MUTATED LINE | REASON")
        survivors[key.strip()] = reason
    return survivors


def limit():
    resource.setrlimit(resource.RLIMIT_AS, (MOST_BYTES, MOST_BYTES))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


class Worker:
    """A copy of the sources and a build of the library alone, unoptimised: it compiles in half the time."""

    def __init__(self, root, base, folder):
        self.root = root
        self.base = base
        self.source = folder / "source"
        self.build = folder / "build"
        self.scratch = folder / "scratch"
        shutil.rmtree(self.source, ignore_errors=True)
        self.source.mkdir(parents=True)
        self.scratch.mkdir(parents=True, exist_ok=True)
        for name in ("CMakeLists.txt", "cmake", "include", "platform", *(r for r in ROOMS if "/" not in r)):
            source = root / name
            if source.is_dir():
                shutil.copytree(source, self.source / name)
            else:
                shutil.copy2(source, self.source / name)
        self.run(["cmake", "-G", "Ninja", "-S", self.source, "-B", self.build, "-D", "CMAKE_BUILD_TYPE=None",
                  "-D", "CMAKE_CXX_COMPILER=g++", "-D", "CMAKE_CXX_FLAGS=-O0", "-D", "K5AX_WARNINGS=OFF",
                  *(f"-DK5AX_BUILD_{part}=OFF" for part in ("TESTS", "EXAMPLES", "BENCHMARKS", "TOOL"))])
        self.run(["cmake", "--build", self.build, "--target", "k5ax", "--parallel", "2"])

    def run(self, command):
        done = subprocess.run(command, stdin=subprocess.DEVNULL, capture_output=True, text=True)
        if done.returncode != 0:
            sys.exit(f"{command}:\n{done.stdout}\n{done.stderr}")

    def try_mutant(self, mutant, programs):
        """One of 'killed', 'survived', 'does not compile', and what killed it."""
        path = self.source / mutant.file
        original = path.read_text()
        lines = original.split("\n")
        assert lines[mutant.line - 1] == mutant.before
        lines[mutant.line - 1] = mutant.after
        try:
            path.write_text("\n".join(lines))
            built = subprocess.run(["ninja", "-C", self.build, "k5ax"], stdin=subprocess.DEVNULL,
                                   capture_output=True, text=True)
            if built.returncode != 0:
                return "does not compile", ""
            for program, seconds in programs:
                if self.fails(program, 10 + 10 * seconds):
                    return "killed", program.name
            return "survived", ""
        finally:
            path.write_text(original)

    def fails(self, program, seconds):
        environment = dict(os.environ, LD_PRELOAD=str(self.build / "libk5ax.so.1"), TMPDIR=str(self.scratch),
                           TEST_TMPDIR=f"{self.scratch}/")
        try:
            done = subprocess.run([program, "--gtest_fail_fast", "--gtest_brief=1"], cwd=self.scratch,
                                  env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                  stderr=subprocess.DEVNULL, timeout=seconds, preexec_fn=limit)
        except subprocess.TimeoutExpired:
            return True
        return done.returncode != 0


def test_programs(tree):
    """The test programs that load the shared library, with the seconds that each takes, quick ones first."""
    found = []
    scratch = tree / "mutation-scratch"
    scratch.mkdir(exist_ok=True)
    environment = dict(os.environ, TMPDIR=str(scratch), TEST_TMPDIR=f"{scratch}/")
    for path in sorted((tree / "tests").rglob("*_tests")):
        if not path.is_file() or not os.access(path, os.X_OK) or "tool" in path.parts:
            continue
        needed = subprocess.run(["ldd", path], capture_output=True, text=True).stdout
        if "libk5ax" not in needed:
            continue
        start = time.monotonic()
        done = subprocess.run([path, "--gtest_brief=1"], cwd=scratch, env=environment,
                              stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        if done.returncode != 0:
            sys.exit(f"{path} fails without any mutant")
        found.append((path, time.monotonic() - start))
    if not found:
        sys.exit(f"no test program below {tree}/tests")
    return sorted(found, key=lambda item: item[1])


def in_order_for(file, programs):
    first = FIRST[room_of(file)]
    return sorted(programs, key=lambda item: (item[0].name not in first, item[1]))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("tree", type=pathlib.Path)
    parser.add_argument("--sample", type=int, help="so many mutants, chosen at random")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--files", default="*", help="only files of this pattern")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--list", action="store_true", help="print the mutants and stop")
    given = parser.parse_args()
    root = given.root.resolve()

    survivors_path = pathlib.Path(__file__).resolve().parent / "survivors.txt"
    survivors = read_survivors(survivors_path)
    mutants = [m for m in all_mutants(root) if fnmatch.fnmatch(m.file, given.files)]
    known = {m.key() for m in mutants}
    stale = [key for key in survivors if given.files == "*" and key not in known]
    for key in stale:
        print(f"{survivors_path.name}: no such mutant any more: {key}")
    if given.sample is not None:
        mutants = random.Random(given.seed).sample(mutants, min(given.sample, len(mutants)))
    if given.list:
        for mutant in mutants:
            print(f"{mutant.file}:{mutant.line}: {mutant.what}: {mutant.after.strip()}")
        print(f"{len(mutants)} mutants")
        return 0
    if not mutants:
        sys.exit("no mutant")

    programs = test_programs(given.tree.resolve())
    waiting = queue.Queue()
    for mutant in mutants:
        waiting.put(mutant)
    results = []
    lock = threading.Lock()
    start = time.monotonic()

    def work(number):
        worker = Worker(root, given.tree, given.tree.resolve() / f"mutation-{number}")
        while True:
            try:
                mutant = waiting.get_nowait()
            except queue.Empty:
                return
            outcome, by = worker.try_mutant(mutant, in_order_for(mutant.file, programs))
            with lock:
                results.append((mutant, outcome))
                if outcome == "survived" and mutant.key() not in survivors:
                    print(f"SURVIVED {mutant.file}:{mutant.line}: {mutant.what}", flush=True)
                    print(f"    {mutant.key()}", flush=True)
                elif len(results) % 100 == 0:
                    print(f"{len(results)} of {len(mutants)} in {time.monotonic() - start:.0f} s", flush=True)

    threads = [threading.Thread(target=work, args=(number,)) for number in range(given.jobs)]
    for thread in threads:
        thread.start()
    for thread in threads:
        thread.join()
    if len(results) != len(mutants):
        sys.exit("a worker ended early")

    compiled = [(m, outcome) for m, outcome in results if outcome != "does not compile"]
    killed = [m for m, outcome in compiled if outcome == "killed"]
    lived = [m for m, outcome in compiled if outcome == "survived"]
    explained = [m for m in lived if m.key() in survivors]
    unexplained = len(lived) - len(explained)
    percent = 100 * len(killed) / max(1, len(compiled))
    print(f"mutants: {len(compiled)} ({len(results) - len(compiled)} more do not compile), "
          f"killed {len(killed)} ({percent:.1f} %), survived {len(lived)}, of which listed {len(explained)}, "
          f"in {time.monotonic() - start:.0f} s")
    return 1 if unexplained or stale or (given.sample is None and percent < KEPT_PER_CENT) else 0


if __name__ == "__main__":
    sys.exit(main())
