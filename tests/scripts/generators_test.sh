#!/usr/bin/env bash
# What the building machine makes when the game is built for another one. $repository's build asks
# for nothing of the other machine but its name, so this one plays its part.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"
: "${repository:?}" "${generated:?}"

TheTablesAreTheSame() {
  local header
  cmake -S "$repository" -B other -G Ninja -DCMAKE_SYSTEM_NAME=Linux \
    -DCMAKE_SYSTEM_PROCESSOR="$(uname -m)" >configured
  ninja -C other run_fontgen run_icongen >built || fail "$(cat built)"
  for header in screen/font_data.h desktop/icon_data.h; do
    cmp "$generated/host/$header" "other/host/generated/host/$header" || fail "$header differs"
  done
  expect_equal "programs that the other machine's compiler made" "" "$(grep -o '[a-z]*gen\.cpp\.o' built || true)"
}

run_case "$@"
