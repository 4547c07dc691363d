#!/usr/bin/env bash
# Installs what is missing, builds, and opens Tornvale on the demonstration job. Without a display the same
# job runs without a window: it prints what it made and leaves a picture in out/.
set -euo pipefail
cd "$(dirname "$0")"

scripts/install-packages.sh build
cmake --preset dev >/dev/null
cmake --build --preset dev --target Tornvale tornvale-batch tornvale_installation

app="$PWD/build/dev/Tornvale"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  export TORNVALE_DEMONSTRATION=programs/FiveAxisContour.nc
  exec "$app/Tornvale" "$@"
fi

mkdir -p out
echo "No display: the demonstration job runs without a window."
scripts/demonstration.sh "$app" out
