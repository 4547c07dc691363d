#!/usr/bin/env bash
# Plays a program of many lines in the real window, at top speed, on a screen of its own: how soon the play
# button stops it, and how the memory grows. Needs Xvfb and xdotool, and the target tornvale_playback_probe.
# scripts/measure-playback.sh BUILD_FOLDER LINES
set -euo pipefail
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT
cp -r "$1/Tornvale/." "$folder"
xvfb-run -a -s "-screen 0 1280x800x24 +extension GLX" \
  "$1/tests/endtoend/tornvale_playback_probe" "$folder" "$2" 2>"$folder/log"
