#!/bin/sh
# Removes the installed game that this lies beside: what the list names, and folders that are empty then.
# What players have, scores and settings, stays theirs.
set -eu
here=$(dirname -- "$(readlink -f -- "$0")")
list=$here/files
[ -f "$list" ] || { echo "uninstall: there is no list of what was installed: $list" >&2; exit 1; }
cd -- "$here/../.."

files=$(cat -- "$list")
printf '%s\nlibexec/kavo/files\n' "$files" | while IFS= read -r file; do rm -f -- "$file"; done
printf '%s\n' "$files" | sed 's|/[^/]*$||' | sort -ru | while IFS= read -r folder; do
  rmdir -p -- "$folder" 2>/dev/null || :
done
echo "uninstalled from $PWD"
