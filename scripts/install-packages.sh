#!/bin/sh
# Installs the Debian packages that are named and missing, as root or through sudo. Needs no network when all are there.
set -eu

missing=
for package in "$@"; do
  status=$(dpkg-query -W -f='${Status}' "$package" 2>/dev/null || true)
  [ "$status" = "install ok installed" ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "Missing packages, and no sudo to install them:$missing" >&2; exit 1; }
  as_root="sudo"
fi
echo "Installing:$missing"
$as_root apt-get update -qq
# shellcheck disable=SC2086  # one word a package
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing
