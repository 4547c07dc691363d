#!/usr/bin/env bash
# Plays a program of many lines with the collision pass and says how long it took and how its memory grew.
# The sample program runs forth and back until it has the lines.
# scripts/measure-simulation.sh APPLICATION_FOLDER LINES
set -euo pipefail
batch="$1/tornvale-batch"
lines="$2"
folder="$(mktemp -d)"
trap 'rm -rf "$folder"' EXIT

{
  echo "M6 T1"
  for section in LeadIn IsoCode LeadOut; do
    "$batch" --quiet convert "$1/programs/FiveAxisContour.nc" --tool 0 --section "$section"
  done
} >"$folder/one.anc"
tac "$folder/one.anc" | head -n -1 >"$folder/back.anc"
awk -v lines="$lines" '{ text[NR] = $0 } END { for (i = 0; i < lines; ++i) print text[i % NR + 1] }' \
  "$folder/one.anc" "$folder/back.anc" >"$folder/long.anc"

resident() { awk '/VmRSS/ { print $2 }' "/proc/$1/status" 2>/dev/null || true; }

start=$(date +%s%N)
"$batch" --quiet simulate "$folder/long.anc" >"$folder/result.json" &
process=$!
first=""
last=""
while kill -0 "$process" 2>/dev/null; do
  now="$(resident "$process")"
  # The machine and the program are read within the first second.
  if [ -n "$now" ] && [ $(($(date +%s%N) - start)) -gt 1000000000 ]; then
    first="${first:-$now}"
    last="$now"
  fi
  sleep 0.2
done
status=0
wait "$process" || status=$?
echo "$lines lines in $((($(date +%s%N) - start) / 1000000)) ms, exit status $status"
echo "resident after the first second ${first:-?} kB, at the end ${last:-?} kB"
