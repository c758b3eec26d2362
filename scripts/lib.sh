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

packages() {
  sed 's/#.*//' "$root/scripts/packages.txt"
}

missing_packages() {
  local package
  for package in $(packages); do
    # shellcheck disable=SC2016 # the format is dpkg's
    case " $(dpkg-query -W -f='${db:Status-Status} ' "$package" 2>/dev/null)" in
      *' installed '*) ;;
      *) printf '%s\n' "$package" ;;
    esac
  done
}

as_root() {
  if [ "$(id -u)" -eq 0 ]; then
    "$@"
  else
    sudo "$@"
  fi
}

apt_install() {
  as_root apt-get update -q &&
    as_root env DEBIAN_FRONTEND=noninteractive \
      apt-get install -q -y --no-install-recommends "$@"
}

# Several builds compile the same sources with the same options: release, static and packages. To be
# called once the packages are there.
share_objects() {
  if command -v ccache >/dev/null; then
    export CMAKE_CXX_COMPILER_LAUNCHER=ccache
  fi
}

# Installs what is missing of packages.txt; touches neither network nor root when nothing is.
install_packages() {
  local missing
  if ! command -v dpkg-query >/dev/null; then
    echo "no Debian system: install what scripts/packages.txt names yourself" >&2
    return
  fi
  missing=$(missing_packages)
  if [ -n "$missing" ]; then
    # shellcheck disable=SC2086 # one word a package
    step "install packages" apt_install $missing
  fi
  share_objects
}

# build PRESET [TARGET]: configures and builds what is not up to date, by CMakePresets.json.
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

configure() {
  local made=$root/build/$1/build.ninja
  if ! [ "$made" -nt "$root/CMakePresets.json" ]; then  # else the build does it when it has to
    step "configure $1" env -C "$root" cmake --preset "$1"
  fi
}
