#!/bin/sh
# Renders the pictures of the program that the pages and the README show, by playing the tour.
# Usage: scripts/render-pictures.sh QUILLMARK-HEADLESS
# Needs rsvg-convert (librsvg2-bin). What it makes is committed: run it when what the program draws has changed.
set -eu

here=$(cd "$(dirname "$0")/.." && pwd)
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
"$here/scripts/tour.sh" "$1" "$scratch/tour" > "$scratch/tour.txt"

pages=$here/pages/pictures
rm -rf "$pages"
mkdir -p "$pages"
for name in 01-layouts 03-menu 04-editor 05-move-mode 06-carrying 08-favourite-form 09-favourites 11-save-form \
  12-apply-question 13-about 20-landscape-layouts; do
  cp "$scratch/tour/$name.png" "$pages/${name#[0-9][0-9]-}.png"
done
rsvg-convert --width 256 --height 256 "$here/GFX/icon.svg" --output "$pages/icon.png"

# phone X PICTURE: one of the README's phones.
phone() {
  cat << END
  <g transform="translate($1 0)">
    <rect x="3.5" y="3.5" width="261" height="341" rx="15" fill="#0a1a25" stroke="#4c838f"/>
    <image x="14" y="14" width="240" height="320" href="$2"/>
  </g>
END
}
overview=$scratch/tour/overview.svg
{
  echo '<svg xmlns="http://www.w3.org/2000/svg" width="836" height="348" viewBox="0 0 836 348">'
  phone 0 01-layouts.png
  phone 284 05-move-mode.png
  phone 568 11-save-form.png
  echo '</svg>'
} > "$overview"
rsvg-convert "$overview" --output "$here/docs/pictures/overview.png"
