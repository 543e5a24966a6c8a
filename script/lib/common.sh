# shellcheck shell=bash
# What the scripts share. Sourced after `set -euo pipefail`.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
# shellcheck source=script/lib/packages.sh
source "$root/script/lib/packages.sh"

say() { printf '%s\n' "${0##*/}: $*" >&2; }
die() {
  say "$@"
  exit 1
}

on_macos() { [[ $(uname -s) == Darwin ]]; }

processors() {
  if on_macos; then sysctl -n hw.ncpu; else nproc; fi
}

# How many jobs run at once; CMake's own variable has the last word.
jobs_at_once() { printf '%s\n' "${CMAKE_BUILD_PARALLEL_LEVEL:-$(processors)}"; }

# need LIST...: sees to it that the packages of packages_LIST are installed. A
# machine that has them makes no call but dpkg-query.
need() {
  local list name wanted=() missing=()
  for list in "$@"; do
    local -n packages="packages_$list"
    wanted+=("${packages[@]}")
  done
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "not a Debian system: these packages' counterparts must be there: ${wanted[*]}"
    return
  fi
  for name in "${wanted[@]}"; do
    [[ $(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null) == installed ]] ||
      missing+=("$name")
  done
  ((${#missing[@]} == 0)) || install_packages "${missing[@]}"
}

install_packages() {
  local as_root=()
  if (($(id -u) != 0)); then
    command -v sudo >/dev/null || die "as root, please: apt-get install $*"
    as_root=(sudo)
  fi
  say "installing $*"
  local apt=("${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -qq)
  local log
  log=$(mktemp)
  if ! {
    "${apt[@]}" update && "${apt[@]}" install -y --no-install-recommends "$@"
  } </dev/null >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    die "the installation failed"
  fi
  rm -f "$log"
}

# need_brew COMMAND=FORMULA...: the same on macOS, by the commands or, for a
# library, the formula alone.
need_brew() {
  local entry missing=()
  for entry in "$@"; do
    command -v "${entry%%=*}" >/dev/null || brew_has "${entry#*=}" || missing+=("${entry#*=}")
  done
  ((${#missing[@]} > 0)) || return 0
  command -v brew >/dev/null || die "please install ${missing[*]} (brew.sh has them)"
  say "installing ${missing[*]}"
  brew install --quiet "${missing[@]}"
}

brew_has() { command -v brew >/dev/null && brew list --versions "$1" >/dev/null; }

# build_preset PRESET [TARGET...] [-- CONFIGURE_OPTION...]
build_preset() {
  local preset=$1 targets=()
  shift
  while (($# > 0)) && [[ $1 != -- ]]; do
    targets+=(--target "$1")
    shift
  done
  [[ ${1:-} != -- ]] || shift
  (
    cd "$root" || exit
    cmake --preset "$preset" "$@" >/dev/null
    cmake --build --preset "$preset" --parallel "$(jobs_at_once)" "${targets[@]+"${targets[@]}"}"
  )
}
