# Shared by ./run and ./test: installs what is missing, by Debian package name. Sourced, not run.

say() { printf '== %s\n' "$*"; }

# ensure_packages NAME... : installs the missing ones; a machine that is not Debian has to bring the tools itself.
ensure_packages() {
  command -v dpkg-query >/dev/null 2>&1 || return 0
  local missing=() name
  for name in "$@"; do
    dpkg-query -W -f='${Status}' "$name" 2>/dev/null | grep -q 'ok installed' || missing+=("$name")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  say "installing ${missing[*]}"
  local elevated=()
  [ "$(id -u)" -eq 0 ] || elevated=(sudo)
  "${elevated[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${elevated[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" \
    >/dev/null
}

build_packages=(g++ cmake ninja-build python3 nlohmann-json3-dev libcli11-dev libboost-dev
  libgtest-dev libgmock-dev libbenchmark-dev libeigen3-dev libspdlog-dev libinih-dev libdxflib-dev
  mono-mcs mono-runtime libmono-system4.0-cil libmono-system-core4.0-cil libmono-system-xml4.0-cil
  libmono-i18n-west4.0-cil libmono-i18n-cjk4.0-cil mono-utils)
# They bundle the pages. A machine that has them from elsewhere keeps its own, which Debian's would not go with.
command -v node >/dev/null 2>&1 && command -v npm >/dev/null 2>&1 || build_packages+=(nodejs npm)

# build PRESET [TARGET...] : configures once, builds what changed. Prints only when something goes wrong.
build() {
  local preset=$1 log=build/$1.log
  shift
  mkdir -p build
  say "building $preset"
  # The build itself notices all changes but those of the presets.
  if [ ! "build/$preset/build.ninja" -nt CMakePresets.json ] && ! cmake --preset "$preset" >"$log" 2>&1; then
    cat "$log"
    return 1
  fi
  cmake --build "build/$preset" ${1:+--target "$@"} >"$log" 2>&1 || {
    tail -n 60 "$log"
    return 1
  }
}

windows_packages=(g++-mingw-w64-x86-64-posix clang-14 lld-14 llvm-14 libc++-14-dev libwine-dev wine wine64 xvfb googletest)
# For ./run package, and the tests of what it makes.
package_packages=(wixl msitools osslsigncode cmark-gfm libxml2-utils openssl)
# clang's syntax trees, for ./test --mutation and the test of it.
mutation_packages=(python3-clang-14)
