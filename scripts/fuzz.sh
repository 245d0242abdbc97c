#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ with clang (address and undefined-behaviour sanitizers) in
# build-fuzz/ and runs them.
#   scripts/fuzz.sh                 every target for 30 seconds each
#   scripts/fuzz.sh zip 300         one target (fuzz/fuzz_zip.cpp) for five minutes
#   scripts/fuzz.sh all 60          every target for a minute each
# The corpus grows in build-fuzz/corpus/<name>/ (seeded from fuzz/corpus/<name>/); a crash, leak or
# timeout is written to build-fuzz/findings/<name>/ and fails the run. Keep each finding as a test.
set -euo pipefail
source "$(dirname "${BASH_SOURCE[0]}")/common.sh"

target="${1:-all}"
seconds="${2:-30}"
LX_PACKAGES+=(clang libclang-rt-14-dev)
lx_install_missing

dir="${LX_FUZZ_BUILD_DIR:-$LX_ROOT/build-fuzz}"
if [ ! -f "$dir/build.ninja" ]; then
  CC=clang CXX=clang++ LX_BUILD_TYPE=RelWithDebInfo lx_build "$dir" -DLX_FUZZ=ON -DLX_BUILD_TESTS=OFF \
    -DLX_BUILD_GALLERY=OFF -DLX_BUILD_BENCH=OFF
else
  lx_build "$dir"
fi

names=()
if [ "$target" = "all" ]; then
  for f in "$LX_ROOT"/fuzz/fuzz_*.cpp; do
    [ -e "$f" ] || continue
    n=$(basename "$f" .cpp); names+=("${n#fuzz_}")
  done
else
  names=("${target#fuzz_}")
fi
[ ${#names[@]} -gt 0 ] || { echo "no fuzz targets in fuzz/"; exit 0; }

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS="detect_leaks=0:abort_on_error=1:allocator_may_return_null=1"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export LX_PRODUCT_ROOT="$dir/product"
failed=()
for n in "${names[@]}"; do
  exe="$dir/fuzz/fuzz_$n"
  [ -x "$exe" ] || { echo "no such fuzz target: $n" >&2; exit 2; }
  corpus="$dir/corpus/$n"; findings="$dir/findings/$n"
  mkdir -p "$corpus" "$findings"
  [ -d "$LX_ROOT/fuzz/corpus/$n" ] && cp -rn "$LX_ROOT/fuzz/corpus/$n/." "$corpus/"
  args=(-max_total_time="$seconds" -timeout=10 -rss_limit_mb=2560 -print_final_stats=1
        -artifact_prefix="$findings/")
  [ -f "$LX_ROOT/fuzz/$n.dict" ] && args+=(-dict="$LX_ROOT/fuzz/$n.dict")
  lx_log "Fuzzing $n for ${seconds} s"
  log="$dir/fuzz-$n.log"
  if "$exe" "${args[@]}" "$corpus" >"$log" 2>&1; then
    runs=$(grep -o 'stat::number_of_executed_units: *[0-9]*' "$log" | grep -o '[0-9]*$' || echo "?")
    cov=$(grep -E '^#[0-9]+.*cov: ' "$log" | tail -1 | grep -o 'cov: [0-9]*' || echo "cov: ?")
    lx_log "$n: $runs runs, $((${runs:-0} / (seconds > 0 ? seconds : 1))) execs/s, $cov, corpus $(ls "$corpus" | wc -l) files"
  else
    tail -40 "$log"
    lx_log "$n FAILED: see $log and $findings/"
    failed+=("$n")
  fi
done
[ ${#failed[@]} -eq 0 ] || { echo "fuzz targets with findings: ${failed[*]}" >&2; exit 1; }
