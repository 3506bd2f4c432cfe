# Shared by the scripts beside it: sourced, never run. Changes to the project's folder.

# E: the trap below reaches into functions.
set -Eeuo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

# Every unexpected failure names its place, so that no script ends without a word.
trap 'echo "$0: line $LINENO failed: $BASH_COMMAND" >&2' ERR

fail() {
  echo "$0: $*" >&2
  trap - ERR
  exit 1
}

# What the program and the stand-in library are built with.
build_packages=(g++ cmake ninja-build libboost-dev nlohmann-json3-dev)
# What the tests and checks need besides.
test_packages=(libgtest-dev clang-14 clang-format-14 libclang-rt-14-dev binutils valgrind mandoc zsh fish)

# What goes before a command that only root may run.
as_root=()
((EUID == 0)) || as_root=(sudo)

# install_packages NAME...: installs the Debian packages that are missing; touches the network only then.
install_packages() {
  local name missing=()
  command -v dpkg-query >/dev/null || fail "dpkg-query not found: this script sets up Debian 12 machines"
  for name in "$@"; do
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null || true) == installed ]] || missing+=("$name")
  done
  ((${#missing[@]})) || return 0
  ((EUID == 0)) || command -v sudo >/dev/null ||
    fail "run as root or install sudo: packages are missing: ${missing[*]}"
  echo "Installing: ${missing[*]}"
  "${as_root[@]}" apt-get update -q
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "${missing[@]}"
}

# build PRESET: configures and builds everything.
build() {
  cmake --preset "$1" -Wno-dev >/dev/null
  cmake --build --preset "$1"
}

# build_program PRESET: what is installed and no more, for which the tests' packages are not needed.
build_program() {
  cmake --preset "$1" -DBUILD_TESTING=OFF -Wno-dev >/dev/null
  cmake --build --preset "$1" --target orskapp orsksapi packaged_files
}
