# Completion of the game's arguments in bash: options come first, scene words follow "shot".
_kavo() {
  local word=${COMP_WORDS[COMP_CWORD]} words="" first=1
  while [ $first -lt "$COMP_CWORD" ] && [[ ${COMP_WORDS[first]} == -* ]]; do
    first=$((first + 1))
  done
  case $((COMP_CWORD - first)) in
    0) words="shot --calm --help --version" ;;
    1) [ "${COMP_WORDS[first]}" != shot ] || words="kavo pop pu storm qbomb title opts enter" ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _kavo kavo
