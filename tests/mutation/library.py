"""Builds the library with one fault in it: compiles only what the changed file is part of, and links that with
the other objects as they were."""

import json
import pathlib
import shlex
import subprocess

LIBRARY_FOLDERS = ("foundation", "axes", "scenegraph", "machdef", "kinematics", "platform")
LEFT_OUT = ("-O3", "-O0", "-DNDEBUG", "-flto=auto", "-fno-fat-lto-objects", "-Werror")


def run(command, directory):
    return subprocess.run(command, cwd=directory, stdin=subprocess.DEVNULL, capture_output=True, text=True)


class Unit:
    """A source and how the build tree compiles it; here without warnings and with little optimisation."""

    def __init__(self, entry, root, objects):
        words = shlex.split(entry["command"])
        at = words.index("-o")
        self.directory = entry["directory"]
        self.source = pathlib.Path(entry["file"])
        self.object = objects / (str(self.source.relative_to(root)).replace("/", "-") + ".o")
        kept = [w for w in words[:at] if w not in LEFT_OUT and not w.startswith("-W")]
        # The assertions end a program that reads behind an array, as those of the test builds do.
        self.base = kept + ["-O1", "-w", "-D_GLIBCXX_ASSERTIONS"]
        self.uses = set()

    def compile_as_it_is(self, root):
        listed = self.object.with_suffix(".d")
        command = self.base + ["-MMD", "-MF", str(listed), "-o", str(self.object), "-c", str(self.source)]
        done = run(command, self.directory)
        if done.returncode != 0:
            raise SystemExit(f"{self.source}:\n{done.stderr}")
        words = listed.read_text().replace("\\\n", " ").split(":", 1)[1].split()
        paths = (pathlib.Path(self.directory, word).resolve() for word in words)
        self.uses = {str(path.relative_to(root)) for path in paths if path.is_relative_to(root)}

    def compile_shadowed(self, root, shadow, target):
        """With the files below `shadow` in place of those of the same names below `root`."""
        relative = self.source.relative_to(root)
        stand_in = shadow / relative
        if not stand_in.exists():
            stand_in.parent.mkdir(parents=True, exist_ok=True)
            stand_in.symlink_to(self.source)
        folders = ["."] + [f for f in ("include", "platform/include") if (shadow / f).exists()]
        first = [word for folder in folders for word in ("-I", str(shadow / folder))]
        command = [self.base[0], *first, "-iquote", str(self.source.parent), *self.base[1:],
                   "-o", str(target), "-c", str(stand_in)]
        return run(command, self.directory).returncode == 0


class Library:
    """The library of the source tree `root`, with the commands of the build tree `tree`."""

    def __init__(self, root, tree, folder, in_parallel):
        self.root = root
        objects = folder / "objects"
        objects.mkdir(parents=True, exist_ok=True)
        self.units = []
        self.internal_tests = []  # of what the shared library hides; linked with the library's objects
        for entry in json.loads((tree / "compile_commands.json").read_text()):
            source = pathlib.Path(entry["file"])
            if not source.is_relative_to(root):
                continue
            if source.relative_to(root).parts[0] in LIBRARY_FOLDERS:
                self.units.append(Unit(entry, root, objects))
            elif "internal_tests.dir" in entry["command"]:
                self.internal_tests.append(Unit(entry, root, objects))
        in_parallel(lambda unit: unit.compile_as_it_is(root), self.units + self.internal_tests)

    def build_as_it_is(self, folder):
        return self._link({}, folder)

    def link_internal_tests(self, folder):
        """The program of the internal tests, with the objects that `build` left in `folder`."""
        program = folder / "internal_tests"
        objects = [unit.object for unit in self.internal_tests]
        for unit in self.units:
            changed = folder / unit.object.name
            objects.append(changed if changed.exists() else unit.object)
        self._run_linker(["-o", str(program), *map(str, objects), "-lgmock", "-lgtest_main", "-lgtest"], folder)
        return program

    def build(self, mutant, folder):
        """The mutated library in `folder`; None when it does not compile."""
        shadow = folder / "shadow"
        write_mutant(self.root, mutant, shadow)
        changed = {}
        for unit in self.units:
            if mutant.file in unit.uses:
                changed[unit] = folder / unit.object.name
                if not unit.compile_shadowed(self.root, shadow, changed[unit]):
                    return None
        assert changed, f"nothing is made of {mutant.file}"
        return self._link(changed, folder)

    def _link(self, changed, folder):
        library = folder / "libk5ax.so.1"
        objects = [str(changed.get(unit, unit.object)) for unit in self.units]
        self._run_linker(["-shared", "-Wl,-soname,libk5ax.so.1",
                          f"-Wl,--version-script={self.root}/cmake/k5ax.map", "-o", str(library), *objects],
                         folder)
        return library

    @staticmethod
    def _run_linker(words, folder):
        done = run(["g++", *words], folder)
        if done.returncode != 0:
            raise SystemExit(f"linking failed:\n{done.stderr}")


def write_mutant(root, mutant, shadow):
    lines = (root / mutant.file).read_text().split("\n")
    assert lines[mutant.line - 1] == mutant.before
    lines[mutant.line - 1] = mutant.after
    path = shadow / mutant.file
    path.parent.mkdir(parents=True)
    path.write_text("\n".join(lines))
