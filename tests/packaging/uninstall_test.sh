#!/usr/bin/env bash
# The ways to install without a package manager, and away again. The tree that CMake installed lies in
# $tree, the archive's own install command in $repository.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"
: "${tree:?}" "${repository:?}"

# The files of an archive, as scripts/package --tarball puts them together.
unpack_archive() {
  mkdir -p "$1"
  cp -R "$tree"/{bin,libexec,share} "$1"
  rm "$1/libexec/kavo/files"
  cp "$repository/packaging/tarball/install.sh" "$1/install"
}

expect_only() {
  expect_equal "what lies in $1" "$2" "$(cd "$1" && find . -mindepth 1 | LC_ALL=C sort | xargs)"
}

WhatCMakeInstalledGoesWhereverItWasMoved() {
  cp -R "$tree" moved
  rm -rf moved/home
  moved/libexec/kavo/uninstall
  [ ! -e moved ] || expect_only moved ""
}

FilesOfOthersStay() {
  cp -R "$tree" prefix
  rm -rf prefix/home
  mkdir -p prefix/share/icons/other
  touch prefix/bin/other prefix/share/icons/other/icon.png
  prefix/libexec/kavo/uninstall
  expect_only prefix "./bin ./bin/other ./share ./share/icons ./share/icons/other ./share/icons/other/icon.png"
}

TheArchiveInstallsPlaysAndUninstalls() {
  unpack_archive "an archive"
  HOME=$work/home "an archive/install" "$work/a prefix" >said
  expect_contains "what it says" "to uninstall: $work/a prefix/libexec/kavo/uninstall" "$(cat said)"
  (cd / && HOME=$work/home SDL_AUDIODRIVER=dummy "$work/a prefix/bin/kavo" shot title)
  [ -s home/.local/share/kavo/tmp/kavo_title.png ] || fail "there is no picture"
  "a prefix/libexec/kavo/uninstall"
  [ ! -e "a prefix" ] || expect_only "a prefix" ""
  [ -s home/.local/share/kavo/tmp/kavo_title.png ] || fail "the player's picture is gone"
}

TheArchiveGoesIntoTheHomeByItself() {
  unpack_archive archive
  HOME=$work/home archive/install >/dev/null
  [ -x home/.local/bin/kavo ] || fail "there is no command"
  HOME=$work/home archive/install --help | grep -q '^usage: ' || fail "it does not help"
}

ANewVersionTakesTheOldOneWithIt() {
  unpack_archive archive
  touch archive/share/kavo-of-yesterday
  archive/install "$work/prefix" >/dev/null
  rm archive/share/kavo-of-yesterday
  archive/install "$work/prefix" >/dev/null
  [ ! -e prefix/share/kavo-of-yesterday ] || fail "a file of the old version is left"
  [ -x prefix/bin/kavo ] || fail "there is no command"
}

WithoutAListNothingIsRemoved() {
  local status=0
  cp -R "$tree" prefix
  rm prefix/libexec/kavo/files
  prefix/libexec/kavo/uninstall 2>errors || status=$?
  expect_equal "status" 1 "$status"
  expect_contains "what it says" "there is no list" "$(cat errors)"
  [ -x prefix/bin/kavo ] || fail "the command is gone"
}

run_case "$@"
