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
on_fedora() { grep -Eqs '^ID(_LIKE)?=.*\<fedora\>' /etc/os-release; }

processors() {
  if on_macos; then sysctl -n hw.ncpu; else nproc; fi
}

# The number of parallel jobs; CMake's own variable overrides it.
jobs_at_once() { printf '%s\n' "${CMAKE_BUILD_PARALLEL_LEVEL:-$(processors)}"; }

# installed_version PACKAGE: on a Debian system; empty if it is not installed.
installed_version() {
  local answer
  answer=$(dpkg-query -W -f '${db:Status-Status} ${Version}' "$1" 2>/dev/null) || true
  [[ $answer != "installed "* ]] || printf '%s\n' "${answer#* }"
}

# need LIST...: installs the missing packages of packages_LIST. If all are installed, it
# only runs dpkg-query.
need() {
  local list name wanted=() missing=()
  if on_fedora; then
    need_on_fedora "$@"
    return
  fi
  for list in "$@"; do
    local -n packages="packages_$list"
    wanted+=("${packages[@]}")
  done
  [[ ${CXX:-} != clang* ]] || wanted+=("${packages_clang[@]}")
  if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    say "not a Debian system: these packages' counterparts must be there: ${wanted[*]}"
    return
  fi
  for name in "${wanted[@]}"; do
    [[ -n $(installed_version "$name") ]] || missing+=("$name")
  done
  ((${#missing[@]} == 0)) || install_packages "${missing[@]}"
}

# The same with the packages of packages_fedora_LIST, which the user is asked to
# install. Lists without one are for developers, who must find out Fedora's names of the
# packages.
need_on_fedora() {
  local list name missing=()
  for list in "$@"; do
    if ! declare -p "packages_fedora_$list" >/dev/null 2>&1; then
      local -n packages="packages_$list"
      say "the counterparts of these packages of Debian must be there: ${packages[*]}"
      continue
    fi
    local -n packages="packages_fedora_$list"
    for name in "${packages[@]}"; do
      rpm --query --whatprovides "$name" >/dev/null 2>&1 || missing+=("$name")
    done
  done
  ((${#missing[@]} == 0)) || die "please install what is missing: sudo dnf install ${missing[*]}"
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

# need_cmake: the same on macOS, where Apple's command line tools bring the compiler
# and git, but no CMake.
need_cmake() {
  xcode-select -p >/dev/null 2>&1 ||
    die "please install Apple's command line tools: xcode-select --install"
  local folder
  for folder in /Applications "$HOME/Applications"; do
    # cmake.org offers an application, which is not on the PATH.
    command -v cmake >/dev/null || PATH=$PATH:$folder/CMake.app/Contents/bin
  done
  command -v cmake >/dev/null || install_by_brew cmake "3.25 or newer; cmake.org/download has it"
}

# An older one does not read presets and reports that unclearly.
require_new_cmake() {
  local version
  version=$(cmake --version | sed -n '1s/[^0-9]*\([0-9]*\.[0-9]*\).*/\1/p')
  ((${version%.*} * 1000 + ${version#*.} >= 3025)) ||
    die "CMake $version is too old: 3.25 or newer is needed (cmake.org/download has it)"
}

# install_by_brew FORMULA OTHERWISE: installs with Homebrew if it is there.
install_by_brew() {
  command -v brew >/dev/null || die "please install $1: $2"
  say "installing $1"
  brew install --quiet "$1"
}

# own_fonts: everything drawn from now on uses the fonts of the packages, whatever else
# is installed.
own_fonts() {
  need fonts
  cmake -D FONTS_FOLDER="$root/build/fonts" -D ONLY_INSTALLED=ON -P "$root/tests/fonts/write-fonts.cmake"
  export FONTCONFIG_FILE=$root/build/fonts/installed.conf
}

# build_preset PRESET [TARGET...] [-- CONFIGURE_OPTION...]
# By Ninja where there is one and nothing else is asked for. A folder that is
# configured already stays with what it was configured for.
build_preset() {
  local preset=$1 targets=()
  shift
  while (($# > 0)) && [[ $1 != -- ]]; do
    targets+=(--target "$1")
    shift
  done
  [[ ${1:-} != -- ]] || shift
  require_new_cmake
  (
    cd "$root" || exit
    if [[ -z ${CMAKE_GENERATOR:-} ]] && command -v ninja >/dev/null; then
      export CMAKE_GENERATOR=Ninja
    fi
    cmake --preset "$preset" "$@" >/dev/null
    cmake --build --preset "$preset" --parallel "$(jobs_at_once)" "${targets[@]+"${targets[@]}"}"
  )
}
