#!/usr/bin/env bash
# Installs what is missing, configures, builds everything and runs every test.
#   scripts/test.sh            the normal build (build/release)
#   scripts/test.sh asan       AddressSanitizer + UndefinedBehaviorSanitizer (build/asan)
#   scripts/test.sh tsan       ThreadSanitizer (build/tsan)
set -euo pipefail
cd "$(dirname "$0")/.."

flavour=${1:-release}
case "$flavour" in
  release) flags=() ;;
  asan) flags=(-DTOVI_SANITIZE=ON -DTOVI_BUILD_BENCH=OFF) ;;
  tsan) flags=(-DTOVI_TSAN=ON -DTOVI_BUILD_BENCH=OFF) ;;
  *) echo "usage: $0 [release|asan|tsan]" >&2; exit 2 ;;
esac

bash scripts/setup.sh

jobs=$(nproc)
build="build/$flavour"
cmake -S . -B "$build" -G Ninja -DTOVI_WERROR=ON "${flags[@]}"
cmake --build "$build" -j "$jobs"

export TSAN_OPTIONS="suppressions=$PWD/tests/tsan.supp halt_on_error=1 ${TSAN_OPTIONS:-}"
export ASAN_OPTIONS="detect_leaks=1 ${ASAN_OPTIONS:-}"
export UBSAN_OPTIONS="print_stacktrace=1 halt_on_error=1 ${UBSAN_OPTIONS:-}"
ctest --test-dir "$build" --output-on-failure -j "$jobs" --timeout 300
