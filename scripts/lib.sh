# What the scripts of this folder share: messages, installing what is missing, building a preset. Sourced, not
# run.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
# What the Python package is built and tested with, for `need`.
python_packages=(python3=/usr/bin/python3 python3-dev=/usr/bin/python3-config
  pybind11-dev=/usr/include/pybind11/pybind11.h
  python3-numpy=/usr/lib/python3/dist-packages/numpy/__init__.py)
jobs=${CMAKE_BUILD_PARALLEL_LEVEL:-$(nproc)}

say() { printf '== %s\n' "$*"; }

die() {
  printf '%s: %s\n' "$(basename "$0")" "$*" >&2
  exit 1
}

# Is it here? A command's name, a header with its folder, as in eigen3/Eigen/Core, or the whole path of a file.
_is_here() {
  case $1 in
    /*) [ -e "$1" ] ;;
    */*) g++ -x c++ -fsyntax-only -include "$1" /dev/null 2>/dev/null ;;
    *) command -v "$1" >/dev/null ;;
  esac
}

# need PACKAGE=PROBE...: installs, through apt-get, the packages whose command or header is not here. Without
# g++ no header is found, so on a bare machine the list is simply all of it.
need() {
  local item missing=()
  for item in "$@"; do
    _is_here "${item#*=}" || missing+=("${item%%=*}")
  done
  [ ${#missing[@]} -gt 0 ] || return 0

  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  if ! command -v apt-get >/dev/null; then
    die "missing here: ${missing[*]} (Debian's names); install them and run this again"
  fi
  if [ ${#as_root[@]} -gt 0 ] && ! command -v sudo >/dev/null; then
    die "not root and no sudo; as root run: apt-get install ${missing[*]}"
  fi

  say "installing ${missing[*]}"
  quietly "installing failed" "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c '
    apt-get -q update && apt-get -q -y --no-install-recommends -o DPkg::Lock::Timeout=300 install "$@"' \
    sh "${missing[@]}"
  for item in "$@"; do
    _is_here "${item#*=}" || die "${item%%=*} is installed, and still ${item#*=} is not found"
  done
}

# quietly MESSAGE COMMAND...: runs the command with its output kept back, and shows that only when it fails,
# without the lines of progress.
quietly() {
  local message=$1 log
  shift
  log=$(mktemp)
  if ! "$@" >"$log" 2>&1; then
    grep -vE '^\[[0-9]+/[0-9]+\] ' "$log" || true
    rm -f "$log"
    die "$message"
  fi
  rm -f "$log"
}

# build PRESET TARGET...: configures build/PRESET and builds the targets.
build() {
  local preset=$1 start=$SECONDS
  shift
  say "building $preset in build/$preset"
  quietly "configuring $preset failed" cmake --preset "$preset"
  quietly "building $preset failed" cmake --build "build/$preset" --parallel "$jobs" --target "$@"
  say "built $preset in $((SECONDS - start)) s"
}
