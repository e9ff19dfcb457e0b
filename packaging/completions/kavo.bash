# Completion of the game's arguments in bash: options come first, scene words follow "shot", a file
# follows "--replay".
_kavo() {
  local word=${COMP_WORDS[COMP_CWORD]} words="" first=1 is_replay=
  while [ $first -lt "$COMP_CWORD" ] && [[ ${COMP_WORDS[first]} == -* ]]; do
    case ${COMP_WORDS[first]} in
      --music | --effects | --scale | --lang) first=$((first + 1)) ;; # and its value
      --replay) is_replay=yes ;;
    esac
    first=$((first + 1))
  done
  case $((COMP_CWORD - first)) in
    -1) [ "${COMP_WORDS[COMP_CWORD - 1]}" != --lang ] || words="de en" ;;
    0)
      if [ -n "$is_replay" ]; then
        words="--verify $(compgen -f -X '!*.kavo' -- "$word")"
      else
        words="shot --replay --no-record --calm --music --effects --fullscreen --scale --lang --help --version"
      fi
      ;;
    1) [ "${COMP_WORDS[first]}" != shot ] || words="kavo pop pu storm qbomb title opts enter" ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _kavo kavo
