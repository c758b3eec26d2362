# What the scripts of this folder share; sourced by them.
# shellcheck shell=bash

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
logs=$root/build/logs

# step NAME COMMAND...: runs a command with one line of progress, and shows its output if it fails.
step() {
  local name=$1 log started=$SECONDS
  shift
  mkdir -p "$logs"
  log=$logs/${name//[^A-Za-z0-9]/-}.log
  printf '%s ... ' "$name" >&2
  if "$@" >"$log" 2>&1; then
    printf 'done (%d s)\n' $((SECONDS - started)) >&2
  else
    printf 'FAILED\n' >&2
    cat "$log" >&2
    return 1
  fi
}

# packages GROUP...: the lines of packages.txt that belong to the groups.
packages() {
  awk -v groups=" $* " '
    { sub(/#.*/, "") }
    /^\[/ { wanted = index(groups, " " substr($1, 2, length($1) - 2) " "); next }
    wanted && NF { gsub(/ *\| */, "|"); print $1 }' "$root/scripts/packages.txt"
}

is_installed() {
  # shellcheck disable=SC2016 # the format is dpkg's
  case " $(dpkg-query -W -f='${db:Status-Status} ' "$1" 2>/dev/null)" in
    *' installed '*) ;;
    *) return 1 ;;
  esac
}

# missing_packages GROUP...: the lines of which nothing is installed.
missing_packages() {
  local line name
  for line in $(packages "$@"); do
    for name in ${line//|/ }; do
      is_installed "$name" && continue 2
    done
    printf '%s\n' "$line"
  done
}

# available LINE: the first package of a line that the system has; an empty text where none is needed.
available() {
  local name
  for name in ${1//|/ }; do
    [ "$name" = nothing ] && return
    if [[ $(apt-cache policy "$name" 2>/dev/null) == *'Candidate: '[!\(]* ]]; then
      printf '%s\n' "$name"
      return
    fi
  done
  echo "${0##*/}: this system has no package ${1//|/ or }" >&2
  return 1
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "${0##*/}: neither root nor sudo, to run: $*" >&2
    return 1
  fi
}

apt_install() {
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends "$@"
}

# Several builds compile the same sources with the same options: release, static and packages, and those of
# other checkouts. To be called once the packages are there.
share_objects() {
  if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    # Paths count from the checkout, wherever it lies; debug information may then name another one.
    export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root} CCACHE_NOHASHDIR=${CCACHE_NOHASHDIR:-1}
    # Objects that are compiled with a precompiled header can be kept too, and are the same in any locale.
    export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime,locale}
  fi
}

# Where packages are installed by hand: one line that says what is not there.
require_tools() {
  local name missing=()
  for name in cmake g++ ninja pkg-config; do
    command -v "$name" >/dev/null || missing+=("$name")
  done
  for name in libxml-2.0 icu-uc glib-2.0 zlib; do
    pkg-config --exists "$name" 2>/dev/null || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] ||
    { echo "${0##*/}: no apt-get here, and missing: ${missing[*]}" >&2 && return 1; }
}

# install_packages GROUP...: installs what is missing of packages.txt; touches neither network nor root
# when nothing is.
install_packages() {
  local missing line wanted=() name version
  if ! command -v apt-get >/dev/null; then
    require_tools || return
  else
    missing=$(missing_packages "$@")
    if grep -qv 'nothing$' <<<"$missing" && [ -n "$missing" ]; then
      step "update the list of packages" as_root apt-get update -q || return
    fi
    for line in $missing; do
      name=$(available "$line") || return
      [ -n "$name" ] && wanted+=("$name")
    done
    if [ ${#wanted[@]} -gt 0 ]; then
      step "install ${#wanted[@]} packages" apt_install "${wanted[@]}" || return
    fi
  fi
  version=$(cmake --version | sed -n '1s/.* //p')
  if [ "$(printf '3.22\n%s\n' "$version" | sort -V | head -n 1)" != 3.22 ]; then
    echo "${0##*/}: CMake 3.22 or newer is needed; this system has $version" >&2
    return 1
  fi
  share_objects
}

# build PRESET [TARGET]: builds what is not up to date, by CMakePresets.json.
build() {
  local preset=$1
  shift
  configure "$preset" &&
    step "build $preset${1:+ ($1)}" cmake --build "$root/build/$preset" ${1:+--target "$1"}
}

# run_tests PRESET [ARGUMENT...]: the test suite as it was built; the arguments are ctest's.
run_tests() {
  local preset=$1
  shift
  ctest --test-dir "$root/build/$preset" --output-on-failure --no-tests=error \
    --parallel "$(nproc)" --progress "$@"
}

# configure PRESET [TESTS]: TESTS (ON or OFF) says whether a new build has the tests; ON adds them to one
# that has not.
configure() {
  local folder=$root/build/$1 tests=${2:+-DNIMBREL_BUILD_TESTS=$2}
  if ! [ "$folder/build.ninja" -nt "$root/CMakePresets.json" ] ||
      { [ "${2:-}" = ON ] && grep -q '^NIMBREL_BUILD_TESTS:BOOL=OFF' "$folder/CMakeCache.txt"; }; then
    step "configure $1" env -C "$root" cmake --preset "$1" ${tests:+"$tests"}
  fi  # else the build does it when it has to
}
