#!/bin/sh
# Runs the benchmarks one after the other and makes one table of their ratios.
# Usage: scripts/bench.sh BUILD-FOLDER
# The table is left in ratios.json of that folder, the benchmarks' own results beside it.
set -eu

cd "$1"
results=
for name in frames lists drawing files growth rest start; do
  echo "== $name"
  bench/bench_$name --benchmark_color=false --benchmark_out=$name.json --benchmark_out_format=json
  results="$results $name.json"
done
# shellcheck disable=SC2086  # one file a word
bench/bench_table ratios.json $results
