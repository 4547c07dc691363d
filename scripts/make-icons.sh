#!/usr/bin/env bash
# Makes the PNG icons of the programs from their SVG sources, and lists them in the resource file; the pictures
# of the post-processors' patterns go to the installation.
set -euo pipefail
cd "$(dirname "$0")/../resources"

for source in icons/*.svg; do
  name="$(basename "$source" .svg)"
  case "$name" in
    Logo) size=256 ;;
    limited) size=128 ;;
    *) size=64 ;;
  esac
  rsvg-convert -w "$size" -h "$size" "$source" -o "Icon/$name.png"
done
for source in postprocessor/*.svg; do
  rsvg-convert -w 64 -h 64 "$source" -o "../installation/UserPostProcessor/$(basename "$source" .svg).png"
done
{
  printf '<RCC>\n    <qresource prefix="/">\n'
  for picture in Icon/*.png; do
    printf '        <file>%s</file>\n' "$picture"
  done
  printf '    </qresource>\n</RCC>\n'
} >resources.qrc
