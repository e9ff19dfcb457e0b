#!/usr/bin/env bash
# The launcher in homes as they come. The game is replaced by a program that tells where it runs
# and what it was given: $launcher is the built launcher, $program_from_launcher where it looks.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"

install_stand_in() {
  mkdir -p "$1/bin" "$(dirname "$1/bin/$program_from_launcher")"
  cp "$launcher" "$1/bin/kavo"
  printf '#!/bin/sh\npwd\nprintf "<%%s>\\n" "$@" ${QORRT_CALM+"calm: $QORRT_CALM"}\nexit "${STATUS-0}"\n' >"$1/bin/$program_from_launcher"
  chmod 755 "$1/bin/kavo" "$1/bin/$program_from_launcher"
}

# start <assignment or env option…> -- <argument…>: starts the launcher in a bare environment.
start() {
  local settings=()
  while [ "$1" != -- ]; do
    settings+=("$1")
    shift
  done
  shift
  [ -x tree/bin/kavo ] || install_stand_in tree
  env -i PATH="$PATH" TMPDIR="$work" "${settings[@]}" "$PWD/tree/bin/kavo" "$@"
}

# Folders without write permission stop everybody but root.
start_as_ordinary_user() {
  if [ "$(id -u)" -ne 0 ]; then
    start "$@"
  else
    chown -R 65534 "$work"
    settings_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
    [ -x tree/bin/kavo ] || install_stand_in tree
    env -i PATH="$PATH" TMPDIR="$work" "${@:1:$#-1}" "${settings_user[@]}" "$PWD/tree/bin/kavo"
  fi
}

MakesTheDataFolderForThePlayerAlone() {
  mkdir home
  expect_equal "folder" "$work/home/.local/share/kavo" "$(start HOME="$work/home" -- x | sed -n 1p)"
  expect_equal "mode" 700 "$(stat -c %a home/.local/share/kavo)"
}

UsesTheDataFolderThatIsSet() {
  expect_equal "folder" "$work/data/kavo" \
    "$(start HOME="$work/home" XDG_DATA_HOME="$work/data" -- x | sed -n 1p)"
  [ ! -e home ] || fail "it also made a folder in the home"
}

IgnoresARelativeDataFolder() {
  expect_equal "folder" "$work/home/.local/share/kavo" \
    "$(start HOME="$work/home" XDG_DATA_HOME=data -- x | sed -n 1p)"
}

AsksTheUserTableWhenHomeIsUnset() {
  mkdir tools
  printf '#!/bin/sh\necho "player:x:1:1::%s:/bin/sh"\n' "$work/from table" >tools/getent
  chmod 755 tools/getent
  expect_equal "folder" "$work/from table/.local/share/kavo" \
    "$(PATH=$work/tools:$PATH start LANG=C -- x | sed -n 1p)"
}

TakesBlanksAndUmlautsInTheHome() {
  expect_equal "folder" "$work/Jürgen der Große/.local/share/kavo" \
    "$(start HOME="$work/Jürgen der Große" -- x | sed -n 1p)"
}

KeepsTheScoresThatAreThere() {
  mkdir -p home/.local/share/kavo/tmp
  echo "JON;1200" >home/.local/share/kavo/tmp/kavo_high.txt
  start HOME="$work/home" -- >/dev/null
  expect_equal "scores" "JON;1200" "$(cat home/.local/share/kavo/tmp/kavo_high.txt)"
  expect_equal "what else lies there" kavo_high.txt "$(ls -A home/.local/share/kavo/tmp)"
}

KeepsPlayersApart() {
  local first second
  first=$(start HOME="$work/first" -- x | sed -n 1p)
  second=$(start HOME="$work/second" -- x | sed -n 1p)
  [ "$first" != "$second" ] || fail "both play in $first"
}

expect_a_start_elsewhere() {
  local output=$1 folder=$2 reason=$3
  expect_contains "message" "kavo: scores cannot be kept" "$output"
  expect_contains "message" "$reason" "$output"
  expect_contains "message" "this game's are in $work/kavo." "$output"
  expect_contains "start" "$work/kavo." "$(tail -2 <<<"$output" | sed -n 1p)"
  [ ! -e "$folder/tmp/kavo_high.txt" ] || fail "something was written to $folder"
}

StartsElsewhereWhenTheHomeIsReadOnly() {
  mkdir home
  chmod 555 home
  expect_a_start_elsewhere "$(start_as_ordinary_user HOME="$work/home" -- 2>&1)" \
    home/.local/share/kavo "Permission denied"
}

StartsElsewhereWhenAFileIsInTheWay() {
  touch home
  expect_a_start_elsewhere "$(start HOME="$work/home" -- 2>&1)" home "Not a directory"
}

StartsElsewhereWhenNothingCanBeWritten() {
  install_stand_in tree
  expect_a_start_elsewhere "$(
    ulimit -f 0
    trap '' XFSZ
    start HOME="$work/home" -- 2>&1
  )" home/.local/share/kavo "File too large"
}

StartsElsewhereWhenTheDiskIsFull() {
  unshare -rm true 2>/dev/null || skip "no mount namespaces here"
  mkdir home
  install_stand_in tree
  expect_a_start_elsewhere "$(
    export -f start install_stand_in
    export work launcher program_from_launcher
    unshare -rm bash -c 'mount -t tmpfs -o size=16k tmpfs home &&
      mkdir -p home/.local/share/kavo/tmp && { cat /dev/zero >home/filler 2>/dev/null || true; } &&
      start HOME="$work/home" -- 2>&1'
  )" home "No space left on device"
}

StillStartsWhenThereIsNowhereToGo() {
  touch home
  local output
  output=$(start HOME="$work/home" TMPDIR="$work/nowhere" -- 2>&1)
  expect_contains "message" "kavo: scores cannot be kept" "$output"
  expect_equal "folder" "$work" "$(tail -2 <<<"$output" | sed -n 1p)"
}

PassesArgumentsOnAsTheyAre() {
  expect_equal "arguments" "<shot>
<a  b>
<*>" "$(start HOME="$work/home" -- shot 'a  b' '*' | tail -n +2)"
}

AsksForACalmDisplayAndPassesTheRestOn() {
  expect_equal "arguments" "<shot>
<*>
<calm: 1>" "$(start HOME="$work/home" -- --calm shot '*' | tail -n +2)"
  expect_equal "arguments" "<shot>
<--calm>" "$(start HOME="$work/home" -- shot --calm | tail -n +2)"
  expect_equal "what was set" "<x>
<calm: 0>" "$(start HOME="$work/home" QORRT_CALM=0 -- x | tail -n +2)"
}

PassesTheExitStatusOn() {
  local status=0
  start HOME="$work/home" STATUS=7 -- >/dev/null || status=$?
  expect_equal "status" 7 "$status"
}

AnswersHelpAndVersionAndLeavesNothingBehind() {
  expect_equal "help" "usage: kavo [--calm]         play; --calm fades whatever flashes, for those who are sensitive" "$(start HOME="$work/home" -- --help | sed -n 1p)"
  local version
  version=$(start HOME="$work/home" -- --version)
  [[ $version =~ ^kavo\ [0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "version: $version"
  [ ! -e home ] || fail "it made a folder"
}

FindsTheProgramWhenTheTreeWasMoved() {
  install_stand_in first
  mv first "second place"
  expect_equal "folder" "$work/home/.local/share/kavo" \
    "$(env -i PATH="$PATH" HOME="$work/home" "$work/second place/bin/kavo" | sed -n 1p)"
}

FindsTheProgramThroughASymbolicLink() {
  install_stand_in tree
  ln -s "$work/tree/bin/kavo" link
  expect_equal "folder" "$work/home/.local/share/kavo" \
    "$(env -i PATH="$PATH" HOME="$work/home" ./link | sed -n 1p)"
}

run_case "$@"
