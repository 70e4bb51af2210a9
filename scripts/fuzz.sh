#!/usr/bin/env bash
# Runs the fuzzers of a fuzz build, as many at once as there are processors, and tells for each what was reached.
#
#   scripts/fuzz.sh BUILD [--until-quiet] [FUZZER...]
#
# Each runs for a minute; with --until-quiet until ten minutes of its processor time have brought no new edge, thirty at
# the most. New inputs are gathered in BUILD/gathered, and where something is found the input is kept in BUILD/found.
set -euo pipefail
cd "$(dirname "$0")/.."

build=$1
shift
most=0 quiet=0 # seconds of processor time; 0: one slice
slice=60       # seconds
if [ "${1:-}" = --until-quiet ]; then
  # Every slice begins with all that was gathered; longer ones spend less of their time on that.
  most=1800 quiet=600 slice=300
  shift
fi

# Folders in memory: the phone flushes what it writes.
scratch=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
trap 'rm -rf "$scratch"' EXIT
# The fuzzers go with the script, before their folder does.
trap 'trap - TERM; kill 0' TERM
export TMPDIR=$scratch
export UBSAN_OPTIONS=print_stacktrace=1 ASAN_OPTIONS=quarantine_size_mb=32

# One slice. Adds its processor time in seconds, runs, edges and all edges to the fuzzer's history.
run_slice() {
  local name=$1 log=$build/logs/$1.log found=$build/found/$1 dictionary=fuzz/$1.dict
  [ -f "$dictionary" ] && dictionary=-dict=$dictionary || dictionary=
  local inputs=(fuzz/corpus/"$name")
  [ -d fuzz/regressions/"$name" ] && inputs+=(fuzz/regressions/"$name")
  local status=0 TIMEFORMAT='processor %U %S'
  # shellcheck disable=SC2086  # nothing where there is no dictionary
  time "$build/replay/fuzz_$name" -max_total_time=$slice -timeout=120 -report_slow_units=120 -print_final_stats=1 -artifact_prefix="$found-" \
    $dictionary "$build/gathered/$name" "${inputs[@]}" >"$log" 2>&1 || status=$?
  return $status
}

fuzz() {
  local name=$1 log=$build/logs/$1.log status=0 used=0 runs=0 edges=0 last=0 all=0
  mkdir -p "$build/logs" "$build/gathered/$name" "$build/found"
  while :; do
    local spent
    { spent=$( { run_slice "$name"; } 2>&1); } || status=$?
    spent=$(awk '/^processor/ { print int($2 + $3) }' <<<"$spent")
    used=$((used + spent))
    runs=$((runs + $(awk '/^stat::number_of_executed_units/ { print $2 }' "$log" | grep . || echo 0)))
    all=$(awk '/PC tables/ { print $8; exit }' "$log" | tr -dc 0-9)
    local now
    now=$(grep -o 'cov: [0-9]*' "$log" | tail -1 | tr -dc 0-9)
    if [ "${now:-0}" -gt "$edges" ]; then edges=$now last=$used; fi
    [ "$status" -eq 0 ] && [ "$used" -lt "$most" ] && [ $((used - last)) -lt "$quiet" ] || break
  done
  printf '%-13s %9d runs %5d of %d edges %5d inputs %5d s of processor time' "$name" "$runs" "$edges" "${all:-0}" \
    "$(find "$build/gathered/$name" -type f | wc -l)" "$used"
  [ "$most" -eq 0 ] || printf ', the last new edge within %d s' "$last"
  printf '\n'
  [ "$status" -eq 0 ] && return 0
  if ! grep -q 'Test unit written to' "$log"; then
    echo "$name has ended with status $status. The end of $log:"
    tail -n 20 "$log"
    return 1
  fi
  echo "$name has found something. The end of $log:"
  grep -aE 'does not hold|ERROR:|runtime error|SUMMARY' "$log" || tail -n 20 "$log"
  sed -n 's/.*Test unit written to \(.*\)/To see it again: '"${build//\//\\/}\/replay\/fuzz_$name"' \1/p' "$log"
  echo "Once it is mended, keep the input in fuzz/regressions/$name; the tests read it then."
  return 1
}

export build most quiet slice
export -f run_slice fuzz
[ $# -gt 0 ] || set -- $(find "$build/replay" -maxdepth 1 -name 'fuzz_*' -type f -executable -printf '%f\n' |
  sed s/fuzz_// | sort)
printf '%s\n' "$@" | xargs -P "$(nproc)" -I NAME bash -c 'set -uo pipefail; fuzz NAME' &
wait $!
