#!/usr/bin/env bash
# Compiles each of the program's sources with an independent implementation of the platform's headers. Of our own headers
# it sees only those that the other one lacks.
# Usage: check-seam.sh BUILD_FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."

compiler=x86_64-w64-mingw32-g++-posix
headers=$1/include
mkdir -p "$headers"
cp platform/include/{aygshell,imaging,regext}.h "$headers"

compile() {
  "$compiler" -std=c++20 -fno-exceptions -DUNICODE -D_UNICODE -Wall -Wextra -Werror -fsyntax-only \
    -include scripts/seam-prelude.h -I . -isystem "$headers" "$1"
}
export -f compile
export compiler headers

git ls-files -z -- 'app/*.cpp' 'screens/*.cpp' 'themes/*.cpp' 'animation/*.cpp' 'visuals/*.cpp' 'base/*.cpp' |
  xargs -0 -n 1 -P "$(nproc)" bash -c 'compile "$1"' _
