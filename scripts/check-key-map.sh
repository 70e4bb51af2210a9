#!/bin/sh
# Checks that the key map which the program tells stands, line by line, in each of the documents.
# Usage: scripts/check-key-map.sh QUILLMARK DOCUMENT...
set -eu

program=$1
shift
keys=$("$program" --help | sed -n '/^Keys:/,$p' | sed -n 's/^  *//p')
[ -n "$keys" ] || { echo "$program --help tells no keys" >&2; exit 1; }

for document in "$@"; do
  # Manual pages spell a hyphen with a backslash.
  plain=$(sed 's/\\-/-/g' "$document")
  echo "$keys" | while IFS= read -r line; do
    case $plain in *"$line"*) ;; *) echo "$document does not have: $line" >&2; exit 1 ;; esac
  done
done
