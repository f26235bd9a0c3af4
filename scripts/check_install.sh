#!/usr/bin/env bash
# Installs a build into a scratch prefix and uses it the two ways a host would: builds and runs
# examples/host through find_package(Tovi), and links the same program through pkg-config after
# compiling every installed header with pkg-config's flags. Fails when a header is missing or
# private, a dependency is not found or not linked, or the example does not run to its token.
# Run from CTest (test `install`):
#
#   scripts/check_install.sh BUILD_DIR VERSION CXX "EXTRA_FLAGS" [LAUNCHER]
#
# EXTRA_FLAGS are the build's sanitizer flags: instrumented archives need them on the host too.
# The prefix and the host build live at fixed places under BUILD_DIR/install-check (wiped first)
# so that the compiler cache recognises an unchanged example.
set -euo pipefail
build=$(cd "$1" && pwd)
version=$2
cxx=$3
read -r -a flags <<<"$4"
launcher=${5:-}
source=$(cd "$(dirname "$0")/.." && pwd)
work=$build/install-check
prefix=$work/prefix
components=(tovi-ui tovi-sandbox)

fail() { echo "install check: $*" >&2; exit 1; }

rm -rf "$work"
mkdir -p "$work"
cmake --install "$build" --prefix "$prefix" >"$work/install.log"

# Only the product's public headers ship: no test doubles, no internals of the platform layer
# and no third-party header a host would then need.
leaks=$(cd "$prefix" && find . -path '*testing*' -o -path './include/platform/internal*' | sort)
[[ -z $leaks ]] || fail "private files installed: $leaks"
if grep -rlE '#[[:space:]]*include[[:space:]]*[<"](curl/|unicode/|httplib|nlohmann/)' "$prefix/include"; then
    fail "installed headers include a third-party header"
fi

# check_run LOG PROGRAM: the example writes its page to standard output and the version it
# linked and the token id to standard error.
check_run() {
    local log=$1
    "$2" >"$log.html" 2>"$log.err" || { cat "$log.err" >&2; fail "$2 failed"; }
    grep -q '^<!DOCTYPE html>' "$log.html" || fail "$2 wrote no page"
    grep -qx "ToviUI $version" "$log.err" || fail "$2 linked another version than $version: $(head -1 "$log.err")"
    grep -qE '^token [0-9A-F-]{36}$' "$log.err" || fail "$2 got no token: $(cat "$log.err")"
}

echo "== find_package"
cmake -S "$source/examples/host" -B "$work/host" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_CXX_COMPILER="$cxx" ${launcher:+-DCMAKE_CXX_COMPILER_LAUNCHER="$launcher"} \
    -DCMAKE_CXX_FLAGS="${flags[*]}" >"$work/host-configure.log" || { cat "$work/host-configure.log"; exit 1; }
cmake --build "$work/host"
check_run "$work/cmake-run" "$work/host/tovi_host_example"

echo "== pkg-config"
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
read -r -a cflags <<<"$(pkg-config --cflags "${components[@]}")"
read -r -a libs <<<"$(pkg-config --static --libs "${components[@]}")"
# One translation unit: every installed header, then the example.
{
    (cd "$prefix/include" && find . -name '*.hpp' | sort | sed 's|^\./\(.*\)|#include "\1"|')
    echo "#include \"$source/examples/host/main.cpp\""
} >"$work/host.cpp"
$launcher "$cxx" -std=c++23 "${flags[@]}" "${cflags[@]}" -c "$work/host.cpp" -o "$work/host.o"
"$cxx" "${flags[@]}" "$work/host.o" -o "$work/host-pkg-config" "${libs[@]}"
check_run "$work/pkg-config-run" "$work/host-pkg-config"
echo "install check: the installed package builds and runs the example both ways"
