# shellcheck shell=bash
# What tests in shell share. A test script defines one function per case, named for what it
# shows, and ends with: run_case "$@". Each case runs in a fresh folder, $work, that others may
# enter, since some cases run as another user.
set -euo pipefail

skipped=77

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

expect_equal() {
  local what=$1 expected=$2 found=$3
  [ "$expected" = "$found" ] || fail "$what: expected '$expected', found '$found'"
}

expect_contains() {
  local what=$1 part=$2 text=$3
  [[ $text == *"$part"* ]] || fail "$what: '$part' is not in '$text'"
}

skip() {
  echo "skipped: $*"
  exit $skipped
}

run_case() {
  [ "$(type -t "${1:-}")" = function ] || fail "there is no case '${1:-}'"
  work=$(mktemp -d)
  trap 'chmod -R u+w "$work" && rm -rf "$work"' EXIT
  chmod 755 "$work"
  cd "$work"
  "$1"
}
