#!/usr/bin/env bash
# install_and_move.sh <cmake> <build folder> <first folder> <second folder>: installs into the first
# and moves the tree to the second, which replaces what an earlier run has left there.
set -euo pipefail
cmake=$1 build=$2 first=$3 second=$4

rm -rf "$first" "$second"
"$cmake" --install "$build" --prefix "$first" >/dev/null
mv "$first" "$second"
HOME=$second/home "$second/bin/kavo" shot opts
