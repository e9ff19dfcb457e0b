#!/usr/bin/env bash
# The launcher in homes as they come. The game is replaced by a program that tells where it runs
# and what it was given: $launcher is the built launcher, $program_from_launcher where it looks.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"

install_stand_in() {
  mkdir -p "$1/bin" "$(dirname "$1/bin/${program_from_launcher:?}")"
  cp "${launcher:?}" "$1/bin/kavo"
  cat >"$1/bin/$program_from_launcher" <<'STAND_IN'
#!/bin/sh
pwd
printf '<%s>\n' "$@" ${QORRT_CALM+"calm: $QORRT_CALM"}
env | sed -n 's/^QORRT_\(MUSIC\|EFFECTS\|FULLSCREEN\|SCALE\|LANG\)=/set: \1 /p' | sort
[ -z "${QORRT_RECORD+x}" ] || echo "recording: $QORRT_RECORD"
[ -z "${QORRT_NO_SCORES+x}" ] || echo "no scores: $QORRT_NO_SCORES"
[ -z "${QORRT_MESSAGES+x}" ] || echo "messages: $QORRT_MESSAGES" >&2
exit "${STATUS-0}"
STAND_IN
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

# The game is told why scores cannot be kept, in a folder that is gone, and nothing stays anywhere.
expect_a_start_without_scores() {
  local output=$1 reason=$2
  expect_contains "what the game is told" "no scores: " "$output"
  expect_contains "what the game is told" "$reason" "$output"
  expect_equal "what is left behind" "" "$(find "$work" -name 'kavo.*')"
  expect_equal "what lies where it was started" "" "$(find "$work" -name tmp)"
}

StartsWithoutScoresWhenTheHomeIsReadOnly() {
  mkdir home
  chmod 555 home
  expect_a_start_without_scores "$(start_as_ordinary_user HOME="$work/home" -- 2>&1)" "Permission denied"
}

StartsWithoutScoresWhenAFileIsInTheWay() {
  touch home
  expect_a_start_without_scores "$(start HOME="$work/home" -- 2>&1)" "Not a directory"
}

StartsWithoutScoresWhenTheDataFolderMayNotBeEntered() {
  mkdir -p home/.local/share/kavo
  chmod 0 home/.local/share/kavo
  expect_a_start_without_scores "$(start_as_ordinary_user HOME="$work/home" -- 2>&1)" \
    "cannot go to $work/home/.local/share/kavo"
}

StartsWithoutScoresWhenNoHomeIsKnown() {
  mkdir tools
  printf '#!/bin/sh\nexit 2\n' >tools/getent
  chmod 755 tools/getent
  expect_a_start_without_scores "$(PATH=$work/tools:$PATH start_as_ordinary_user LANG=C -- 2>&1)" \
    "/nonexistent"
}

StillStartsWhenThereIsNowhereToGo() {
  touch home
  local output
  output=$(start HOME="$work/home" TMPDIR="$work/nowhere" -- 2>&1)
  expect_contains "what the game is told" "no scores: " "$output"
  expect_equal "folder" "$work" "$(sed -n 1p <<<"$output")"
}

DrawsNoSceneWhenItsPictureHasNoFolder() {
  touch home
  local status=0 output
  output=$(start HOME="$work/home" -- shot storm 2>&1) || status=$?
  expect_equal "status" 1 "$status"
  expect_contains "message" "kavo: there is no folder for the picture: " "$output"
  expect_equal "what is left behind" "" "$(find "$work" -name 'kavo.*')"
}

TakesALineFeedAtTheEndOfAName() {
  local name=$work/data$'\n'
  start HOME="$work/home" XDG_DATA_HOME="$name" -- x >/dev/null
  [ -d "$name/kavo" ] || fail "there is no folder $name/kavo"
  [ ! -e data ] || fail "it made a folder of another name"
  start HOME="$name" -- x >/dev/null
  [ -d "$name/.local/share/kavo" ] || fail "there is no folder in the home"
}

IgnoresARelativeHome() {
  mkdir tools
  printf '#!/bin/sh\necho "player:x:1:1::%s:/bin/sh"\n' "$work/from table" >tools/getent
  chmod 755 tools/getent
  expect_equal "folder" "$work/from table/.local/share/kavo" \
    "$(PATH=$work/tools:$PATH start HOME=home -- x | sed -n 1p)"
}

MakesAFolderThatThePlayerCanUseWhateverTheMask() {
  mkdir home
  (
    umask 0777
    start HOME="$work/home" -- x >/dev/null
  )
  expect_equal "mode" 700 "$(stat -c %a home/.local/share/kavo)"
}

# Runs the launcher in a session of its own, which has no terminal.
start_from_a_menu() {
  local output=$work/output
  [ -x tree/bin/kavo ] || install_stand_in tree
  setsid --wait env -i PATH="$PATH" HOME="$work/home" "$PWD/tree/bin/kavo" "$@" \
    </dev/null >"$output" 2>&1
  cat "$output"
}

AsksForMessagesInAWindowWhereThereIsNoTerminal() {
  expect_contains "from a menu" "messages: window" "$(start_from_a_menu)"
  expect_contains "from a menu" "messages: window" "$(start_from_a_menu --calm x)"
  [[ $(start_from_a_menu shot storm) != *messages* ]] || fail "a scene shows messages in a window"
  local at_a_terminal
  at_a_terminal=$(script -qec "env -i PATH=$PATH HOME=$work/home $PWD/tree/bin/kavo </dev/null 2>&1 | cat" /dev/null)
  expect_contains "in a terminal" "$work/home" "$at_a_terminal"
  [[ $at_a_terminal != *messages* ]] || fail "a terminal's game shows messages in a window"
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

PassesOnWhatGoesBeforeTheSettings() {
  expect_equal "what was set" "<x>
set: EFFECTS 0
set: FULLSCREEN 1
set: LANG de
set: MUSIC 100
set: SCALE 16" "$(start HOME="$work/home" -- --music 100 --effects 0 --lang de --fullscreen --scale 16 x | tail -n +2)"
}

NamesTheValueOfAnOptionThatCannotBe() {
  local option value status
  for option in '--music 101' '--music -1' '--music loud' '--effects 5.5' '--effects 007' '--scale 0' \
    '--scale 17' '--lang fr' '--music' '--lang'; do
    value=${option#* }
    [ "$value" != "$option" ] || value=""
    status=0
    # shellcheck disable=SC2086 # an option and its value
    expect_contains "$option" "got \"$value\"; kavo --help lists the options" \
      "$(start HOME="$work/home" -- $option 2>&1)"
    # shellcheck disable=SC2086
    start HOME="$work/home" -- $option >/dev/null 2>&1 || status=$?
    expect_equal "status of $option" 2 "$status"
  done
  [ ! -e home ] || fail "it made a folder"
}

PlaysAKeptGameAgainWhereverThatIs() {
  expect_equal "the last one" "$PWD
<--replay>" "$(start HOME="$work/home" -- --replay)"
  expect_equal "a file below this folder" "$PWD
<--replay>
<--verify>
<some games/one.kavo>" "$(start HOME="$work/home" -- --replay --verify 'some games/one.kavo')"
  expect_contains "alone" "--verify goes with --replay" "$(start HOME="$work/home" -- --verify 2>&1)"
  [ ! -e home ] || fail "it made a folder"
}

KeepsNoRecordingWhenThatIsAskedFor() {
  expect_equal "what was set" "recording: 0" "$(start HOME="$work/home" -- --no-record x | sed -n '$p')"
}

PassesTheExitStatusOn() {
  local status=0
  start HOME="$work/home" STATUS=7 -- >/dev/null || status=$?
  expect_equal "status" 7 "$status"
}

NamesAnOptionThatItDoesNotKnow() {
  local option status
  for option in --clam -x --calm=1 --helpp; do
    status=0
    expect_equal "$option" "kavo: unknown option $option; kavo --help lists them" \
      "$(start HOME="$work/home" -- "$option" 2>&1)"
    start HOME="$work/home" -- --calm "$option" >/dev/null 2>&1 || status=$?
    expect_equal "status of $option" 2 "$status"
  done
  [ ! -e home ] || fail "it made a folder"
}

TakesOptionsInAnyOrder() {
  expect_contains "version" "kavo 0." "$(start HOME="$work/home" -- --calm --version)"
  expect_contains "help" "usage: kavo" "$(start HOME="$work/home" -- --calm -h)"
  expect_equal "short and long help" "$(start HOME="$work/home" -- --help)" "$(start HOME="$work/home" -- -h)"
  [ ! -e home ] || fail "it made a folder"
}

StartsTheGameWithAWordThatIsNoOption() {
  expect_equal "a word" "<clam>" "$(start HOME="$work/home" -- clam | tail -n +2)"
  expect_equal "a dash" "<->" "$(start HOME="$work/home" -- - | tail -n +2)"
  expect_equal "behind the end of options" "<--clam>" "$(start HOME="$work/home" -- -- --clam | tail -n +2)"
}

AnswersHelpAndVersionAndLeavesNothingBehind() {
  expect_equal "help" "usage: kavo [options]        play" "$(start HOME="$work/home" -- --help | sed -n 1p)"
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
