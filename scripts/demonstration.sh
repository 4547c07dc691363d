#!/usr/bin/env bash
# The demonstration job without a window. scripts/demonstration.sh APPLICATION_FOLDER OUTPUT_FOLDER STEP...
#   write    its programs with their times, and the NC file for both tables
#   measure  the NC file against the limits of the axes, played with the collision pass, and a picture
set -euo pipefail
app="$1"
out="$2"
shift 2
batch="$app/tornvale-batch"
job="$app/jobs/Demonstration.tornvale"
nc="$out/Demonstration.nc"

write_program() {
  mkdir -p "$out"
  echo "Programs of $job:"
  "$batch" --quiet items "$job" >"$out/Demonstration.items.json"
  awk -F': ' '/^ *"(Time|checked|group|name|type)":/ {
      key = $1; value = $2
      gsub(/[ ",]/, "", key); gsub(/[",]/, "", value)
      item[key] = value
    }
    /^ *"type":/ {
      printf "  %s %-14s %8.1f s%s\n", item["group"], item["name"], item["Time"],
        item["checked"] == "true" ? "" : "  (not checked: left out)"
    }' "$out/Demonstration.items.json"
  echo "NC file: $nc"
  # The summary names lines and run time.
  "$batch" --quiet generate "$job" --pattern consecutive -o "$nc"
}

measure() {
  # Both tables; the axes of the other one stand still.
  for chain in "X->Z->C->A;Y" "X->Z->C->A;V"; do
    "$batch" --quiet audit "$nc" --chain "$chain" >"$out/Demonstration.audit.json"
    echo "Axes $chain: within their limits of speed and acceleration"
  done
  echo "Playing the NC file with the collision pass:"
  "$batch" --quiet simulate "$nc"
  "$batch" --quiet picture "$job" --line 60000 --size 1600x1000 -o "$out/tornvale.png"
  echo "Picture: $out/tornvale.png"
}

for step in "$@"; do
  case "$step" in
    write) write_program ;;
    measure) measure ;;
    *)
      echo "demonstration.sh: $step is no step, expected write or measure" >&2
      exit 2
      ;;
  esac
done
