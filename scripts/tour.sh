#!/bin/sh
# Plays the tour: drives the program through its main job on a copy of the sample phone.
# Usage: scripts/tour.sh QUILLMARK-HEADLESS FOLDER
# The pictures, the replies and the saved layout are left in FOLDER.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
program=$(realpath "$1")
rm -rf "$2"
mkdir -p "$2"
cd "$2"
cp -R "$here/../phone" phone

play() {
  "$program" --phone phone --screen "$1" < "$here/tour-$1.qm" > "replies-$1.json"
  if grep -n '^{"ok":false' "replies-$1.json"; then
    echo "The tour met something unexpected: see $PWD/replies-$1.json" >&2
    exit 1
  fi
}

play portrait
cp "phone/Application Data/Home/Slow evening.home.xml" .
play landscape

echo "The tour's pictures and the layout it saved are in $PWD:"
ls -- *.png *.xml
