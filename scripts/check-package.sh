#!/bin/sh
# Looks at the Debian package in FOLDER as its validators do: the package, its desktop entry, metadata and manual pages.
# Usage: scripts/check-package.sh FOLDER
set -eu

package=$(ls "$1"/*.deb)
content=$(mktemp -d)
trap 'rm -rf "$content"' EXIT
dpkg-deb --extract "$package" "$content"

lintian --fail-on error "$package"
desktop-file-validate "$content"/usr/share/applications/*.desktop
appstreamcli validate --no-net "$content"/usr/share/metainfo/*.metainfo.xml
for page in "$content"/usr/share/man/man1/*.gz; do
  complaints=$(man --warnings --encoding=UTF-8 --local-file "$page" 2>&1 > /dev/null)
  [ -z "$complaints" ] || { echo "$complaints" >&2; exit 1; }
done
echo "The package is $package"
