#!/usr/bin/env bash
# Draws the PNG images of assets/ and the executable's icon from the SVG files beside this script.
set -euo pipefail
cd "$(dirname "$0")"
source ../../cmake/packages.sh
install_packages "${zel_drawing_packages[@]}"

# The program scales icons to 18, 24 and 28 pixels with nearest-neighbour sampling: 72 divides by the first two.
readonly icon_pixels=72
readonly exe_icon=../../src/platform/windows/resources/zelengine.ico

for source in *.svg; do
    rsvg-convert --width "$icon_pixels" --height "$icon_pixels" --output "../${source%.svg}.png" "$source"
done

sizes=$(mktemp -d)
trap 'rm -rf "$sizes"' EXIT
for pixels in 16 20 24 32 40 48 64; do
    rsvg-convert --width "$pixels" --height "$pixels" --output "$sizes/$pixels.png" pe.svg
done
rsvg-convert --width 256 --height 256 --output "$sizes/256.png" pe.svg
icotool --create --output "$exe_icon" "$sizes"/{16,20,24,32,40,48,64}.png --raw "$sizes/256.png"
