#!/usr/bin/env bash
# What the shells make of the installed completions below $tree.
# shellcheck source=tests/support/cases.sh
. "$(dirname "${BASH_SOURCE[0]}")/../support/cases.sh"

share=${tree:?}/share
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
scenes="kavo pop pu storm qbomb title opts enter"
first_words="shot --replay --no-record --calm --music --effects --fullscreen --scale --lang --help --version"

# The words that bash offers after: kavo <word…>
offered() {
  # shellcheck disable=SC1091 # the completion is the installed one
  . "$share/bash-completion/completions/kavo"
  # shellcheck disable=SC2034 # bash's own names: what was typed, and which word is completed
  COMP_WORDS=(kavo "$@") COMP_CWORD=$#
  _kavo
  echo "${COMPREPLY[*]}"
}

BashCompletesTheScenesAfterShot() {
  expect_equal "after shot" "$scenes" "$(offered shot '')"
  expect_equal "after shot p" "pop pu" "$(offered shot p)"
  expect_equal "first word" "$first_words" "$(offered '')"
  expect_equal "after another word" "" "$(offered play '')"
  expect_equal "after an option" "$first_words" "$(offered --calm '')"
  expect_equal "after an option and shot" "$scenes" "$(offered --calm shot '')"
  expect_equal "after an option and its value" "$first_words" "$(offered --music 50 '')"
  expect_equal "after values and shot" "$scenes" "$(offered --music 50 --calm --lang de shot '')"
  expect_equal "languages" "de en" "$(offered --lang '')"
  expect_equal "volumes are the player's own" "" "$(offered --music '')"
  touch one.kavo two.png
  expect_equal "after --replay" "--verify one.kavo" "$(offered --replay '')"
}

# in_zsh <what is typed>: what it lists, and what stands on its command line then.
in_zsh() {
  python3 "$here/typed_in_zsh.py" "$share/zsh/site-functions" "$1"
}

ZshOffersEveryOptionBesideShotAndJumpsToNone() {
  local typed offered option
  for typed in 'kavo ' 'kavo --calm ' 'kavo --music 50 '; do
    offered=$(in_zsh "${typed}TAB")
    expect_contains "the line after $typed" "COMMAND LINE:$typed:" "$offered"
    expect_contains "after $typed" $'\nshot ' "$offered"
    for option in replay no-record calm music effects fullscreen scale lang help version; do
      expect_contains "after $typed" $'\n'"--$option " "$offered"
    done
  done
}

ZshCompletesWhatIsBegun() {
  expect_contains "shot" "COMMAND LINE:kavo --calm shot :" "$(in_zsh 'kavo --calm sTAB')"
  expect_contains "an option" "COMMAND LINE:kavo --music :" "$(in_zsh 'kavo --mTAB')"
  expect_contains "a scene" "COMMAND LINE:kavo --calm shot storm :" "$(in_zsh 'kavo --calm shot stTAB')"
  expect_contains "languages" $'\nde  en\n' "$(in_zsh 'kavo --lang TAB')"
  expect_contains "scenes" $'\nenter  kavo   opts   pop    pu     qbomb  storm  title\n' "$(in_zsh 'kavo shot TAB')"
  expect_contains "after another word" "COMMAND LINE:kavo play :" "$(in_zsh 'kavo play TAB')"
  expect_contains "options after shot" "COMMAND LINE:kavo shot --:" "$(in_zsh 'kavo shot --TAB')"
}

# in_fish <what is typed>: the words that it offers.
in_fish() {
  HOME=$work fish --no-config -c \
    'source $argv[1]; complete -C $argv[2]' "$share/fish/vendor_completions.d/kavo.fish" "$1" | cut -f 1 | xargs
}

FishCompletesOptionsAndScenes() {
  local sorted
  sorted=$(xargs -n 1 <<<"$scenes" | LC_ALL=C sort | xargs)
  expect_equal "first word" "shot" "$(in_fish 'kavo ')"
  expect_equal "options" "-h --calm --effects --fullscreen --help --lang --music --no-record --replay --scale --version" \
    "$(in_fish 'kavo --calm -')"
  expect_equal "scenes" "$sorted" "$(in_fish 'kavo --calm shot ')"
  expect_equal "after shot p" "pop pu" "$(in_fish 'kavo shot p')"
  expect_equal "languages" "de en" "$(in_fish 'kavo --lang ')"
  expect_equal "volumes are the player's own" "" "$(in_fish 'kavo --music ')"
  expect_contains "what goes with a replay" "--verify" "$(in_fish 'kavo --replay -')"
}

run_case "$@"
