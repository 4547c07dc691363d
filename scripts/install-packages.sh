#!/usr/bin/env bash
# Installs what the build, the tests and the program need on Debian 12, and nothing when all is there.
# scripts/install-packages.sh build | test | pictures
set -euo pipefail

build=(g++ cmake ninja-build pkg-config ccache qtbase5-dev libqt5opengl5-dev libqt5svg5-dev libsoqt520-dev
  libcoin-dev libfcl-dev libassimp-dev libtbb-dev zlib1g-dev libgtest-dev libbenchmark-dev
  libgl1-mesa-dri libglx-mesa0 libegl1 qttranslations5-l10n fonts-noto-cjk fontconfig pandoc)
test=(xvfb xauth xdotool openbox clang-14 libclang-rt-14-dev clang-format-14)
pictures=(xvfb openbox xdotool imagemagick)

wanted=("${build[@]}")
if [ "${1:-build}" = test ]; then
  wanted+=("${test[@]}")
elif [ "${1:-build}" = pictures ]; then
  wanted+=("${pictures[@]}")
fi

missing=()
for package in "${wanted[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed'; then
    missing+=("$package")
  fi
done
if [ "${#missing[@]}" -eq 0 ]; then
  exit 0
fi

echo "Installing: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "Please install as root: ${missing[*]}" >&2; exit 1; }
  as_root=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
