#!/usr/bin/env bash
# Reads from the programs' own files that they were built to defend themselves, and that they can start nothing but the
# viewer of pages. Usage: hardening.sh PROGRAM...
set -euo pipefail

failures=0
require() { # WHAT COMMAND...
  local what=$1
  shift
  if "$@"; then return; fi
  echo "$program: $what"
  failures=$((failures + 1))
}
has() { grep -qE "$1" <<<"$2"; }
lacks() { ! has "$1" "$2"; }

for program in "$@"; do
  header=$(readelf --file-header --wide "$program")
  segments=$(readelf --program-headers --wide "$program")
  dynamic=$(readelf --dynamic --wide "$program")
  imports=$(readelf --dyn-syms --wide "$program" | awk '$7 == "UND" { sub(/@.*/, "", $8); print $8 }')
  require "is not position-independent" has 'Type:[[:space:]]*DYN' "$header"
  require "has no tables that become read-only" has 'GNU_RELRO' "$segments"
  require "resolves its tables late" has 'BIND_NOW|FLAGS.*NOW' "$dynamic"
  require "has an executable stack" has 'GNU_STACK.* RW ' "$segments"
  require "has memory that is both written and executed" lacks 'LOAD.* RWE ' "$segments"
  require "looks for libraries beside itself" lacks 'RPATH|RUNPATH' "$dynamic"
  require "does not guard its stack" has '^__stack_chk_fail$' "$imports"
  require "does not check its copies" has '^__[a-z0-9]+_chk$' "$imports"
  require "can start other programs" lacks '^(system|popen|fork|vfork|execl|execlp|execle|execv|execvp|execvpe|execve|fexecve|dlopen)$' "$imports"
  if has '^posix_spawn' "$imports"; then
    require "starts programs in more than one way" [ "$(grep -cE "^posix_spawnp?\$" <<<"$imports")" = 1 ]
    require "is not the one with pages to show" [ "$(basename "$program")" = quillmark ]
  fi
done
[ "$failures" = 0 ]
echo "$# programs are hardened"
