#!/usr/bin/env bash
# Installs what is missing, builds, and opens Tornvale on the demonstration job, whose NC file is written into
# out/ first. Without a display there is no window: the NC file is measured and simulated, and a picture of the
# machine at work is left beside it.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-packages.sh build
cmake --preset dev >/dev/null
cmake --build --preset dev --target Tornvale tornvale-batch tornvale_installation

app="$PWD/build/dev/Tornvale"
hasDisplay="${DISPLAY:-}${WAYLAND_DISPLAY:-}"
# A project of one's own as argument takes the place of the demonstration.
if [ -n "$hasDisplay" ] && [ $# -gt 0 ]; then
  exec "$app/Tornvale" "$@"
fi

mkdir -p out
if [ -n "$hasDisplay" ]; then
  scripts/demonstration.sh "$app" out write
  export TORNVALE_DEMONSTRATION=jobs/Demonstration.tornvale
  exec "$app/Tornvale"
fi
echo "No display: the demonstration job runs without a window."
scripts/demonstration.sh "$app" out write measure
