#!/usr/bin/env bash
# Line coverage of the calculation libraries and TrajectoryArt (needs gcovr): scripts/coverage.sh
set -euo pipefail
cd "$(dirname "$0")/.."
command -v gcovr >/dev/null || { echo "gcovr is missing: apt-get install gcovr" >&2; exit 1; }

cmake --preset coverage >/dev/null
cmake --build --preset coverage
find build/coverage -name '*.gcda' -delete
ctest --preset coverage >/dev/null || ctest --preset coverage --rerun-failed
gcovr --root . --object-directory build/coverage --exclude-throw-branches \
  --filter 'SourceCode/[a-z]+/calc/' --filter 'TrajectoryArt/src/' --sort-percentage "$@"
