#!/usr/bin/env bash
# no_locks_test.sh <libkavo_sound.a>: nothing in the synthesizer's library calls a lock, or C's
# memory. A lock that nobody else holds makes no system call, so that only its name gives it away.
set -euo pipefail
imported=$(nm -u "$1" | awk '/ [Uw] / {print $2}' | sort -u)
[ "$(wc -l <<<"$imported")" -gt 20 ] || { echo "hardly a symbol: is this the library?"; exit 1; }
if grep -E '^(pthread_(mutex|cond|rwlock|spin)_|sem_|mtx_|malloc$|calloc$|realloc$|free$|aligned_alloc$|posix_memalign$)' <<<"$imported"; then
  echo "the synthesizer's library calls these"
  exit 1
fi
