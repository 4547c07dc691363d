#!/usr/bin/env bash
# Installs what is missing, builds, and runs every test. Works from a fresh clone and any number of times.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-packages.sh test
scripts/check-format.sh

cmake --preset dev
cmake --build --preset dev

run=()
if [ -z "${DISPLAY:-}" ]; then
  run=(xvfb-run -a -s "-screen 0 1600x1000x24 +extension GLX")
fi
"${run[@]}" ctest --preset dev

if command -v clang++-14 >/dev/null; then
  scripts/fuzz.sh 10
fi
