#!/usr/bin/env python3
"""mutate.py ROOT TREE: runs the tests against mutants.

ROOT is the source tree, TREE a build of it with tests, whose test programs run against each mutated library.
Every mutant has to be killed (a test fails, crashes or takes too long) or stand in survivors.txt beside this
file with the reason why it changes nothing that can be seen. Mutants that do not compile do not count.
"""

import argparse
import concurrent.futures
import fnmatch
import itertools
import os
import pathlib
import random
import shutil
import sys
import tempfile
import threading
import time

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent))
from library import Library  # noqa: E402
from mutants import mutants_of  # noqa: E402
from programs import all_pieces, finds, in_order_for, whole  # noqa: E402

ROOMS = ("foundation", "axes", "scenegraph", "machdef", "kinematics", "platform/builtin")
KEPT_PER_CENT = 95.0
SURVIVORS = pathlib.Path(__file__).resolve().parent / "survivors.txt"


def all_mutants(root):
    for room in ROOMS:
        for path in sorted((root / room).iterdir()):
            if path.suffix in (".cpp", ".h") and not path.stem.endswith("_windows"):
                yield from mutants_of(str(path.relative_to(root)), path.read_text())


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


class Trial:
    """Tries mutants, several at a time, and says what becomes of them as it goes."""

    def __init__(self, root, tree, jobs, survivors, log):
        self.folder = tree / "mutation"
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir()
        self.pool = concurrent.futures.ThreadPoolExecutor(jobs)
        self.library = Library(root, tree, self.folder, lambda work, items: list(self.pool.map(work, items)))
        unchanged = self.folder / "unchanged"
        unchanged.mkdir()
        self.pieces = all_pieces(tree, unchanged, self.library.build_as_it_is(unchanged))
        if finds(whole(self.library.link_internal_tests(unchanged)), None, unchanged):
            sys.exit("the internal tests fail without any mutant")
        self.survivors = survivors
        self.log = log
        self.lock = threading.Lock()
        self.start = time.monotonic()
        self.results = []

    def outcome(self, mutant):
        """One of 'killed', 'survived', 'does not compile', and what killed it."""
        folder = pathlib.Path(tempfile.mkdtemp(dir=self.folder))
        try:
            library = self.library.build(mutant, folder)
            if library is None:
                return "does not compile", ""
            for piece in in_order_for(mutant.file, self.pieces):
                if finds(piece, library, folder):
                    return "killed", piece.program.name + ("" if piece.is_quick else f" {piece.filter}")
            internal_tests = whole(self.library.link_internal_tests(folder))
            if finds(internal_tests, None, folder):
                return "killed", internal_tests.program.name
            return "survived", ""
        finally:
            shutil.rmtree(folder, ignore_errors=True)

    def try_one(self, mutant, count):
        outcome, by = self.outcome(mutant)
        with self.lock:
            self.results.append((mutant, outcome))
            print(f"{outcome} | {mutant.line} | {by} | {mutant.key()}", file=self.log, flush=True)
            if outcome == "survived" and mutant.key() not in self.survivors:
                print(f"SURVIVED {mutant.file}:{mutant.line}: {mutant.what}\n    {mutant.key()}", flush=True)
            elif len(self.results) % 100 == 0:
                seconds = time.monotonic() - self.start
                print(f"{len(self.results)} of {count} in {seconds:.0f} s", flush=True)

    def run(self, mutants):
        list(self.pool.map(self.try_one, mutants, itertools.repeat(len(mutants))))


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("root", type=pathlib.Path)
    parser.add_argument("tree", type=pathlib.Path)
    parser.add_argument("--sample", type=int, help="so many mutants, chosen at random")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--again", type=pathlib.Path, help="only those that survived according to this log")
    parser.add_argument("--files", default="*", help="only files of this pattern")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--list", action="store_true", help="print the mutants and stop")
    parser.add_argument("--log", default=os.devnull, help="a file for the outcome of every mutant")
    given = parser.parse_args()
    root = given.root.resolve()

    survivors = read_survivors(SURVIVORS)
    mutants = [m for m in all_mutants(root) if fnmatch.fnmatch(m.file, given.files)]
    known = {m.key() for m in mutants}
    stale = [key for key in survivors if given.files == "*" and key not in known]
    for key in stale:
        print(f"{SURVIVORS.name}: no such mutant any more: {key}")
    if given.again is not None:
        lines = given.again.read_text().splitlines()
        survived = {line.split(" | ", 3)[3] for line in lines if line.startswith("survived | ")}
        mutants = [m for m in mutants if m.key() in survived and m.key() not in survivors]
    if given.sample is not None:
        mutants = random.Random(given.seed).sample(mutants, min(given.sample, len(mutants)))
    if given.list:
        for mutant in mutants:
            print(f"{mutant.file}:{mutant.line}: {mutant.what}: {mutant.after.strip()}")
        print(f"{len(mutants)} mutants")
        return 0
    if not mutants:
        sys.exit("no mutant")

    with open(given.log, "w") as log:
        trial = Trial(root, given.tree.resolve(), given.jobs, survivors, log)
        trial.run(mutants)

    compiled = [(m, outcome) for m, outcome in trial.results if outcome != "does not compile"]
    killed = [m for m, outcome in compiled if outcome == "killed"]
    lived = [m for m, outcome in compiled if outcome == "survived"]
    explained = [m for m in lived if m.key() in survivors]
    unexplained = len(lived) - len(explained)
    percent = 100 * len(killed) / max(1, len(compiled) - len(explained))
    print(f"mutants: {len(compiled)} ({len(trial.results) - len(compiled)} more do not compile), "
          f"killed {len(killed)}, listed as no fault {len(explained)}, not found {unexplained}: "
          f"{percent:.1f} % of the faults found, in {time.monotonic() - trial.start:.0f} s")
    return 1 if unexplained or stale or percent < KEPT_PER_CENT else 0


if __name__ == "__main__":
    sys.exit(main())
