# shellcheck shell=bash
# Shared by the scripts, which source it. Changes to the project's folder.

# E: the trap below reaches into functions.
set -Eeuo pipefail
started_in=$PWD
script=$(realpath -- "$0")
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Every unexpected failure prints its place.
trap 'echo "$0: line $LINENO failed: $BASH_COMMAND" >&2' ERR

fail() {
  echo "$0: $*" >&2
  trap - ERR
  exit 1
}

# wrong_arguments WORDS: prints the usage and ends with status 2.
wrong_arguments() {
  echo "usage: $0${1:+ $1}" >&2
  trap - ERR
  exit 2
}

# arguments WORDS LEAST MOST "$@": with --help prints the usage and the script's first comment, and ends. Ends with
# status 2 if there are fewer or more arguments, or an option.
arguments() {
  local words=$1 least=$2 most=$3
  shift 3
  if [[ ${1:-} == --help ]]; then
    echo "usage: $0${words:+ $words}"
    sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$script" || true
    exit 0
  fi
  if (($# < least || $# > most)) || [[ ${1:-} == -* ]]; then wrong_arguments "$words"; fi
}

# scratch_folder: creates the folder $scratch, which is deleted when the script ends, also by a signal.
scratch_folder() {
  scratch=$(mktemp -d) || fail "no scratch folder"
  trap 'rm -rf -- "$scratch"' EXIT
  trap 'trap - ERR; exit 130' HUP INT TERM
}

# path NAME: prints the absolute name of a file, relative to the caller's folder.
path() { (cd "$started_in" && realpath -- "$1"); }

# What the program and the simulator are built with.
build_packages=(g++ cmake ninja-build libboost-dev nlohmann-json3-dev)
# What the tests need too: the shells are for completions; gnuplot, jq and locales are for examples.
test_packages=(libgtest-dev binutils mandoc zsh fish bash-completion gnuplot-nox jq locales)
# What only contributors and CI need.
check_packages=(clang clang-format clang-tidy libclang-rt-dev cppcheck shellcheck valgrind lintian dpkg-dev git)

# The prefix of a command that only root may run.
as_root=()
((EUID == 0)) || as_root=(sudo)

# install_packages NAME...: installs the Debian packages that are missing; uses the network only then. With
# ORSKAPP_INSTALL=no, as in a test, missing packages are an error.
install_packages() {
  local name missing=()
  command -v dpkg-query >/dev/null || fail "dpkg-query not found: this script sets up Debian machines"
  for name in "$@"; do
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null || true) == installed ]] || missing+=("$name")
  done
  ((${#missing[@]})) || return 0
  [[ ${ORSKAPP_INSTALL:-} != no ]] || fail "packages are missing: ${missing[*]}"
  ((EUID == 0)) || command -v sudo >/dev/null ||
    fail "run as root or install sudo: packages are missing: ${missing[*]}"
  echo "Installing: ${missing[*]}"
  # Another apt may be running, as on a machine that has just started.
  local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=600)
  quietly "${apt[@]}" update -o APT::Update::Error-Mode=any
  quietly "${apt[@]}" install --no-install-recommends "${missing[@]}"
}

# quietly COMMAND...: runs a command. If it fails, prints its output and ends the script.
quietly() {
  local output
  output=$("$@" 2>&1 </dev/null) || { echo "$output"; fail "failed: $*"; }
}

# build PRESET [OPTION...]: configures and builds everything.
build() {
  echo "Building: $1"
  quietly cmake --preset "$1" -Wno-dev "${@:2}"
  quietly cmake --build --preset "$1"
}

# install_build BUILD PREFIX: installs without writing into the build: its parts' own scripts write no manifest.
install_build() {
  local part
  for part in source simulator packaging; do
    quietly cmake -DCMAKE_INSTALL_PREFIX="$2" -P "$1/$part/cmake_install.cmake"
  done
}

# test_preset PRESET [OPTION...]: runs the preset's tests, and prints which fail, how many pass, and which are skipped.
test_preset() {
  local output
  echo "Testing: $1"
  output=$(ctest --preset "$1" --no-tests=error "${@:2}" 2>&1) ||
    { grep -v ' Passed \|^ *Start ' <<<"$output"; fail "tests failed; to repeat them: ctest --preset $1"; }
  sed -n '/tests passed/p; /did not run/,/^$/{/./p}' <<<"$output"
  grep -hE '^skipped: ' "build/$1/Testing/Temporary/LastTest.log" | sort -u || true
}
