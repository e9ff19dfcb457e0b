#!/bin/sh
# Installs the game of this archive: ./install [folder], by default into ~/.local. It also plays where it
# lies: bin/kavo.
set -eu
case ${1-} in
  -*)
    echo "usage: ./install [folder]   (by default ~/.local; it then holds libexec/kavo/uninstall)"
    [ "$1" = --help ] || [ "$1" = -h ] || exit 2
    exit
    ;;
esac
to=${1:-${HOME:?names no folder to install into}/.local}
mkdir -p -- "$to"
to=$(cd -- "$to" && pwd)
cd -- "$(dirname -- "$(readlink -f -- "$0")")"

# What an older version had and this one has not would stay for good.
if [ -f "$to/libexec/kavo/files" ]; then "$to/libexec/kavo/uninstall" >/dev/null; fi

tar -cf - bin libexec share | tar -xf - --no-same-owner -C "$to"
find bin libexec share -type f >"$to/libexec/kavo/files"
echo "installed: $to/bin/kavo"
echo "to uninstall: $to/libexec/kavo/uninstall"

case :${PATH-}: in
  *:"$to/bin":*) ;;
  *) echo "$to/bin is not in PATH; a new session may find it there" ;;
esac
