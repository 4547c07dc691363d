#!/usr/bin/env bash
# clang-tidy over all sources of the libraries and programs: scripts/lint.sh [file...]
set -euo pipefail
cd "$(dirname "$0")/.."

tidy=clang-tidy-14
command -v "$tidy" >/dev/null || tidy=clang-tidy
build=build/dev
[ -f "$build/compile_commands.json" ] || cmake --preset dev >/dev/null

if [ "$#" -gt 0 ]; then
  files=("$@")
else
  mapfile -t files < <(git ls-files -- 'SourceCode/*.cpp' 'TrajectoryArt/src/*.cpp')
fi
printf '%s\0' "${files[@]}" | xargs -0 -n 1 -P "$(nproc)" "$tidy" -p "$build" --quiet 2>/dev/null
