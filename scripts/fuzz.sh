#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs each for the given number of seconds (default 10), starting
# from the corpus in fuzz/corpus/<target>. A finding stops the script and leaves the input beside it.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-10}"
shift || true

cmake --preset fuzz >/dev/null
cmake --build --preset fuzz --target tornvale_fuzzers

export QT_QPA_PLATFORM=offscreen
export ASAN_OPTIONS=detect_leaks=0
targets=("$@")
[ "${#targets[@]}" -gt 0 ] || mapfile -t targets < build/fuzz/fuzz/targets.txt
findings=build/fuzz/findings
mkdir -p "$findings"
for target in "${targets[@]}"; do
  work="build/fuzz/corpus/$target"
  mkdir -p "$work"
  echo "== $target: $seconds s"
  "build/fuzz/fuzz/$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=3000 \
    -print_final_stats=1 -artifact_prefix="$findings/$target-" \
    "$work" "fuzz/corpus/$target" 2>"$work.log" || { tail -n 40 "$work.log"; exit 1; }
  grep -E 'stat::number_of_executed_units|Done' "$work.log" || true
done
