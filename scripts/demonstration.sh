#!/usr/bin/env bash
# The demonstration job without a window: a sample program becomes a dense machine program, is measured,
# simulated with the collision pass, and drawn. scripts/demonstration.sh APPLICATION_FOLDER OUTPUT_FOLDER
set -euo pipefail
app="$1"
out="$2"
batch="$app/tornvale-batch"
program="$app/programs/FiveAxisContour.nc"

{
  echo "M6 T1" # the tool of the program, from the library
  "$batch" --quiet convert "$program" --tool 0 --section LeadIn
  "$batch" --quiet convert "$program" --tool 0 --section IsoCode | tee "$out/FiveAxisContour.body.anc"
  "$batch" --quiet convert "$program" --tool 0 --section LeadOut
} >"$out/FiveAxisContour.anc"
echo "Machine program: $out/FiveAxisContour.anc, $(wc -l <"$out/FiveAxisContour.anc") lines"
echo "Travel:    $("$batch" --quiet check "$out/FiveAxisContour.anc" | tr -d ' \n' | cut -c1-60)..."
echo "Measured (the timed body; the lead moves are rapid ones of a line each):"
"$batch" --quiet audit "$out/FiveAxisContour.body.anc"
echo "Simulated:"
"$batch" --quiet simulate "$out/FiveAxisContour.anc"
"$batch" --quiet picture "$out/FiveAxisContour.anc" --line 9000 --size 1600x1000 -o "$out/tornvale.png"
echo "Picture:   $out/tornvale.png"
