"""Builds the wheel and the source archive of k5ax, as pip asks for it (PEP 517).

CMake builds the library and the module in a folder of its own outside of the
sources, and the wheel is what CMake installs for it: the package, with the
library beside the module. Nothing but Python's standard library is used here.
"""

import base64
import hashlib
import io
import os
import re
import shutil
import subprocess
import sys
import sysconfig
import tarfile
import tempfile
import zipfile
from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]

# What is no source, where no git says what is: the folders of builds, and what Python leaves behind.
NOT_SOURCES = {"build", "out", "__pycache__"}


# ---- what pip calls ----


def get_requires_for_build_wheel(config_settings=None):
    return []


def get_requires_for_build_sdist(config_settings=None):
    return []


def prepare_metadata_for_build_wheel(metadata_directory, config_settings=None):
    folder = Path(metadata_directory) / dist_info()
    folder.mkdir(parents=True)
    for name, text in metadata_files().items():
        (folder / name).write_text(text)
    return folder.name


def build_wheel(wheel_directory, config_settings=None, metadata_directory=None):
    with tempfile.TemporaryDirectory(prefix="k5ax-wheel-") as scratch:
        staged = Path(scratch) / "staged"
        build_package(Path(scratch) / "build", staged)
        files = {path.relative_to(staged).as_posix(): path.read_bytes() for path in files_below(staged)}
    files.update((f"{dist_info()}/{name}", text.encode()) for name, text in metadata_files().items())

    name = f"k5ax-{version()}-{tag()}.whl"
    write_wheel(Path(wheel_directory) / name, files)
    return name


def build_sdist(sdist_directory, config_settings=None):
    base = f"k5ax-{version()}"
    with tarfile.open(Path(sdist_directory) / f"{base}.tar.gz", "w:gz") as archive:
        for source in sources():
            archive.add(ROOT / source, f"{base}/{source}")
        info = tarfile.TarInfo(f"{base}/PKG-INFO")
        text = metadata_files()["METADATA"].encode()
        info.size = len(text)
        archive.addfile(info, io.BytesIO(text))
    return f"{base}.tar.gz"


# ---- the build ----


def build_package(build_dir, staged):
    cmake = shutil.which("cmake")
    if cmake is None:
        sys.exit("k5ax: no cmake; install CMake 3.23 or later, a C++17 compiler, Boost, Eigen and pybind11")
    options = {
        "CMAKE_BUILD_TYPE": "Release",
        "K5AX_BUILD_PYTHON": "ON",
        "K5AX_BUILD_BENCHMARKS": "OFF",
        "K5AX_BUILD_EXAMPLES": "OFF",
        "K5AX_BUILD_TESTS": "OFF",
        "K5AX_BUILD_TOOL": "OFF",
        "Python_EXECUTABLE": sys.executable,
    }
    configure = [cmake, "-S", str(ROOT), "-B", str(build_dir)]
    configure += [f"-D{name}={value}" for name, value in options.items()]
    if "CMAKE_GENERATOR" not in os.environ and shutil.which("ninja"):
        configure += ["-G", "Ninja"]
    run(configure)
    jobs = os.environ.get("CMAKE_BUILD_PARALLEL_LEVEL", str(os.cpu_count() or 1))
    run([cmake, "--build", str(build_dir), "--target", "k5ax_python", "--parallel", jobs])
    run([cmake, "--install", str(build_dir), "--prefix", str(staged), "--component", "wheel", "--strip"])


def run(command):
    # What the commands print belongs to pip's log, not to what the hook answers.
    done = subprocess.run(command, stdout=sys.stderr, check=False)
    if done.returncode != 0:
        sys.exit(f"k5ax: ended with {done.returncode}: {' '.join(command)}")


# ---- the files of the wheel ----


def version():
    text = (ROOT / "CMakeLists.txt").read_text()
    return re.search(r"project\(k5ax VERSION ([0-9.]+)", text).group(1)


def dist_info():
    return f"k5ax-{version()}.dist-info"


def tag():
    python = f"cp{sys.version_info.major}{sys.version_info.minor}"
    platform = re.sub(r"[^A-Za-z0-9]", "_", sysconfig.get_platform())
    return f"{python}-{python}{sys.abiflags}-{platform}"


def metadata_files():
    metadata = [
        "Metadata-Version: 2.1",
        "Name: k5ax",
        f"Version: {version()}",
        "Summary: Kinematics of five-axis machine tools",
        "Requires-Python: >=3.9",
        "Requires-Dist: numpy>=1.20",
        "Description-Content-Type: text/markdown",
        "",
        (ROOT / "docs" / "python.md").read_text(),
    ]
    wheel = ["Wheel-Version: 1.0", "Generator: k5ax_backend", "Root-Is-Purelib: false", f"Tag: {tag()}", ""]
    return {"METADATA": "\n".join(metadata), "WHEEL": "\n".join(wheel)}


def write_wheel(path, files):
    record_name = f"{dist_info()}/RECORD"
    record = [f"{name},sha256={digest(content)},{len(content)}" for name, content in files.items()]
    files[record_name] = "\n".join(record + [f"{record_name},,", ""]).encode()
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as archive:
        for name, content in files.items():
            info = zipfile.ZipInfo(name)
            info.compress_type = zipfile.ZIP_DEFLATED
            info.external_attr = (0o755 if ".so" in name else 0o644) << 16
            archive.writestr(info, content)


def digest(content):
    return base64.urlsafe_b64encode(hashlib.sha256(content).digest()).rstrip(b"=").decode()


def files_below(folder):
    return sorted(path for path in folder.rglob("*") if path.is_file())


def sources():
    if (ROOT / ".git").exists():
        command = ["git", "-C", str(ROOT), "ls-files", "-z"]
        listed = os.fsdecode(subprocess.run(command, stdout=subprocess.PIPE, check=True).stdout)
        return [name for name in listed.split("\0") if name and (ROOT / name).exists()]
    paths = [path.relative_to(ROOT) for path in files_below(ROOT)]
    return [path.as_posix() for path in paths if not any(is_litter(part) for part in path.parts)]


def is_litter(name):
    return name in NOT_SOURCES or (name.startswith(".") and not name.startswith(".clang"))
