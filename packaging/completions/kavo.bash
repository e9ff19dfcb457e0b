# Completion of the game's arguments in bash: options come first, scene words follow "shot".
_kavo() {
  local word=${COMP_WORDS[COMP_CWORD]} words="" first=1
  while [ $first -lt "$COMP_CWORD" ] && [[ ${COMP_WORDS[first]} == -* ]]; do
    case ${COMP_WORDS[first]} in
      --music | --effects | --scale | --lang) first=$((first + 1)) ;; # and its value
    esac
    first=$((first + 1))
  done
  case $((COMP_CWORD - first)) in
    -1) [ "${COMP_WORDS[COMP_CWORD - 1]}" != --lang ] || words="de en" ;;
    0) words="shot --calm --music --effects --fullscreen --scale --lang --help --version" ;;
    1) [ "${COMP_WORDS[first]}" != shot ] || words="kavo pop pu storm qbomb title opts enter" ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _kavo kavo
