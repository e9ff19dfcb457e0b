#!/usr/bin/env bash
# scripts/play in a tree where nothing is built, nor could be.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"

# play <argument…>
play() {
  mkdir -p tree/scripts
  cp "${repository:?}/scripts/play" tree/scripts/play
  tree/scripts/play "$@"
}

TellsWhatItIsForWithoutABuild() {
  expect_contains "help" "usage: scripts/play" "$(play --help)"
  expect_contains "help" "any other word" "$(play --help)"
  expect_equal "short and long help" "$(play --help)" "$(play --calm -h)"
  [ ! -e tree/build ] || fail "it began to build"
}

NamesAnOptionThatItDoesNotKnow() {
  local status=0 output
  output=$(play --clam 2>&1) || status=$?
  expect_equal "message" "scripts/play: unknown option --clam; scripts/play --help lists them" "$output"
  expect_equal "status" 2 "$status"
}

run_case "$@"
