#!/bin/sh
# Checks that every source file is formatted as .clang-format says.
set -eu
cd "$(dirname "$0")/.."
git ls-files -z -- '*.cpp' '*.h' | xargs -0 clang-format --dry-run --Werror
