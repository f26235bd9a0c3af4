#!/usr/bin/env bash
# Installs what is missing, checks the format, builds everything and runs every test.
#   scripts/test.sh            what CI runs: the format check, then the release build with every
#                              test, then the ASan+UBSan build with every test
#   scripts/test.sh release    the release build (build/release) with every test
#   scripts/test.sh asan       AddressSanitizer + UndefinedBehaviorSanitizer (build/asan)
#   scripts/test.sh tsan       ThreadSanitizer (build/tsan)
set -euo pipefail
cd "$(dirname "$0")/.."

flavour=${1:-all}
case "$flavour" in
  all | release | asan | tsan) ;;
  *) echo "usage: $0 [release|asan|tsan]" >&2; exit 2 ;;
esac

bash scripts/setup.sh
jobs=$(nproc)

export TSAN_OPTIONS="suppressions=$PWD/tests/tsan.supp halt_on_error=1 ${TSAN_OPTIONS:-}"
export ASAN_OPTIONS="detect_leaks=1 ${ASAN_OPTIONS:-}"
export UBSAN_OPTIONS="print_stacktrace=1 halt_on_error=1 ${UBSAN_OPTIONS:-}"

# build_and_test NAME [cmake options...]
build_and_test() {
  local name=$1; shift
  local build="build/$name" started=$SECONDS
  echo "== $name build"
  cmake -S . -B "$build" -G Ninja -DTOVI_WERROR=ON "$@"
  cmake --build "$build" -j "$jobs"
  echo "== $name tests"
  ctest --test-dir "$build" --output-on-failure -j "$jobs" --timeout 300
  echo "== $name: $((SECONDS - started)) s"
}

# Sanitizer builds keep asserts and line tables for readable reports; -O1 keeps them fast to
# build and to run. Benchmarks are left out of them: their numbers mean nothing there.
sanitizer_flags=(-DCMAKE_BUILD_TYPE=Release "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -g1" -DTOVI_BUILD_BENCH=OFF)

case "$flavour" in
  all)
    bash scripts/check_format.sh
    build_and_test release -DCMAKE_BUILD_TYPE=Release
    build_and_test asan -DTOVI_SANITIZE=ON "${sanitizer_flags[@]}"
    ;;
  release) build_and_test release -DCMAKE_BUILD_TYPE=Release ;;
  asan) build_and_test asan -DTOVI_SANITIZE=ON "${sanitizer_flags[@]}" ;;
  tsan) build_and_test tsan -DTOVI_TSAN=ON "${sanitizer_flags[@]}" ;;
esac
