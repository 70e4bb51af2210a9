#!/bin/sh
# Renders every SVG of the artwork: a PNG beside each picture the program loads, and the icon group of the program.
# Needs rsvg-convert (librsvg2-bin), netpbm, icotool (icoutils) and the DejaVu fonts. What it makes is committed.
set -eu

cd "$(dirname "$0")/../GFX"
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

# Pictures that cover what is under them carry no alpha channel, so that the phone copies them instead of blending.
for picture in bg pBottom about aboutL; do
  rsvg-convert "$picture.svg" | pngtopam -quiet | pnmtopng -quiet -force -compression 9 > "$picture.png"
done
for picture in pTop pItem pItemSelect pScroll; do
  rsvg-convert "$picture.svg" --output "$picture.png"
done

for size in 16 24 32; do
  rsvg-convert --width "$size" --height "$size" icon-small.svg --output "$scratch/$size.png"
done
for size in 48 64 96 128 256; do
  rsvg-convert --width "$size" --height "$size" icon.svg --output "$scratch/$size.png"
done
cd "$scratch"
icotool --create --output icon.ico 16.png 24.png 32.png 48.png 64.png 96.png 128.png --raw=256.png
cd - > /dev/null
cp "$scratch/icon.ico" ../screens/quillmark.ico
