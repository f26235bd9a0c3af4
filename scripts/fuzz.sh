#!/usr/bin/env bash
# Coverage-guided fuzzing with clang 19 and libFuzzer over instrumented libraries.
#   scripts/fuzz.sh [SECONDS] [TARGET...]   each target (default: all) for SECONDS (default 60)
# Configures and builds build/fuzz (TOVI_FUZZ=ON), then runs the targets one after the other.
# Each starts from its checked-in seeds in fuzz/corpus/<Target>/ plus a working corpus in
# build/fuzz/corpus/<Target>/, where new interesting inputs go (the checked-in corpus stays
# small). A crash, sanitizer report, leak or time-out is saved into fuzz/corpus/<Target>/ as
# crash-*, leak-* or timeout-*, so the normal test suite replays it from then on.
# Exits non-zero when any target found something.
set -euo pipefail
cd "$(dirname "$0")/.."

seconds=${1:-60}
shift || true
build=build/fuzz

bash scripts/setup.sh
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
CXX=clang++-19 cmake -S . -B "$build" -G Ninja -DTOVI_FUZZ=ON -DCMAKE_BUILD_TYPE=Release \
  "-DCMAKE_CXX_FLAGS_RELEASE=-O1 -g1" "${launcher[@]}" >/dev/null

targets=("$@")
if ((${#targets[@]} == 0)); then
  for dir in fuzz/corpus/*/; do targets+=("$(basename "$dir")"); done
fi
cmake --build "$build" -j "$(nproc)" --target "${targets[@]/%/Fuzz}"

# Stack traces with file and line when a symbolizer is installed (Debian's llvm package).
symbolizer=$(command -v llvm-symbolizer || true)
export ASAN_OPTIONS="detect_leaks=1 ${symbolizer:+external_symbolizer_path=$symbolizer} ${ASAN_OPTIONS:-}"
export UBSAN_OPTIONS="print_stacktrace=1 halt_on_error=1 ${UBSAN_OPTIONS:-}"

summary=()
found_any=0
for target in "${targets[@]}"; do
  seeds=fuzz/corpus/$target
  work=$build/corpus/$target
  log=$build/logs/$target.log
  mkdir -p "$work" "$(dirname "$log")"
  before=$(find "$seeds" -maxdepth 1 -type f \( -name 'crash-*' -o -name 'leak-*' -o -name 'timeout-*' \) | wc -l)
  echo "== $target: $seconds s (log: $log)"
  status=0
  "$build/fuzz/${target}Fuzz" "$work" "$seeds" -max_total_time="$seconds" -timeout=10 \
    -artifact_prefix="$seeds/" -print_final_stats=1 >"$log" 2>&1 || status=$?
  after=$(find "$seeds" -maxdepth 1 -type f \( -name 'crash-*' -o -name 'leak-*' -o -name 'timeout-*' \) | wc -l)
  execs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -1)
  progress=$(grep -E '^#[0-9]+' "$log" | tail -1 || true)
  cov=$(sed -n 's/.* cov: \([0-9]*\).*/\1/p' <<<"$progress")
  ft=$(sed -n 's/.* ft: \([0-9]*\).*/\1/p' <<<"$progress")
  corpus=$(find "$work" "$seeds" -maxdepth 1 -type f | wc -l)
  if ((status != 0 || after > before)); then
    found_any=1
    verdict="FOUND (exit $status): $(grep -m1 -E 'ERROR: |runtime error|deadly signal' "$log" || echo 'see log')"
  else
    verdict="nothing found"
  fi
  summary+=("$(printf '%-12s execs %-9s cov %-6s ft %-7s corpus %-6s %s' "$target" "${execs:-?}" \
    "${cov:-?}" "${ft:-?}" "$corpus" "$verdict")")
done

echo "== summary ($seconds s per target)"
printf '%s\n' "${summary[@]}"
exit "$found_any"
