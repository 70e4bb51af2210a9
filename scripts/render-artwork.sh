#!/bin/sh
# Renders every SVG of the artwork: a PNG beside each picture the program loads, the icon group of the program, and the
# desktop's icons in GFX/icons. Needs rsvg-convert (librsvg2-bin), netpbm, icotool (icoutils) and the DejaVu fonts
# (`make artwork` brings them). What it makes is committed.
set -eu

cd "$(dirname "$0")/../GFX"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Pictures that cover what is under them carry no alpha channel, so that the phone copies them instead of blending.
for picture in bg about aboutL; do
  rsvg-convert "$picture.svg" | pngtopam -quiet | pnmtopng -quiet -force -compression 9 > "$picture.png"
done
for picture in pTop pBottom pItem pItemSelect pScroll; do
  rsvg-convert "$picture.svg" --output "$picture.png"
done

# render_icon SIZE FILE: below 48 pixels from the drawing with fewer strokes.
render_icon() {
  source=icon.svg
  if [ "$1" -lt 48 ]; then source=icon-small.svg; fi
  rsvg-convert --width "$1" --height "$1" "$source" --output "$2"
}

mkdir -p icons
for size in 16 22 24 32 48 64 128 256 512; do
  render_icon "$size" "icons/$size.png"
done

for size in 16 24 32 48 64 96 128 256; do
  render_icon "$size" "$scratch/$size.png"
done
icon=$PWD/../screens/quillmark.ico
cd "$scratch"
icotool --create --output "$icon" 16.png 24.png 32.png 48.png 64.png 96.png 128.png --raw=256.png
