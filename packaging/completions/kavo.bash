# Completion of the game's arguments in bash: the scene words follow "shot".
_kavo() {
  local word=${COMP_WORDS[COMP_CWORD]} words=""
  case $COMP_CWORD in
    1) words="shot --calm --help --version" ;;
    2) [ "${COMP_WORDS[1]}" != shot ] || words="kavo pop pu storm qbomb title opts enter" ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$words" -- "$word")
}
complete -F _kavo kavo
