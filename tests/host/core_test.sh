#!/usr/bin/env bash
# The host's core knows no desktop: core_test.sh <repository> <compile_commands.json>. Its sources
# name nothing of SDL's or of a window system's, and they compile without SDL's headers on the
# include path, as the commands that made this build show.
set -euo pipefail
repository=$1
commands=$2
cd "$repository"

if grep -rnE --exclude-dir=desktop --include='*.cpp' --include='*.h' \
  'SDL|X11|Xlib|XOpen|WAYLAND|Wayland|ALSA|asound|"DISPLAY"' host; then
  echo "the core names a desktop"
  exit 1
fi
if grep -rn --exclude-dir=desktop --include='*.cpp' --include='*.h' '#include "host/desktop' host; then
  echo "the core includes what is the desktop's"
  exit 1
fi

core=$(grep '"command":' "$commands" | grep -E 'host/CMakeFiles/kavo_(host_core|host_data|command|bridge)\.dir|host/sound/CMakeFiles/kavo_sound\.dir')
[ "$(wc -l <<<"$core")" -gt 40 ] || { echo "hardly a source of the core is compiled"; exit 1; }
if grep -i 'sdl' <<<"$core"; then
  echo "the core is compiled with SDL's headers on its path"
  exit 1
fi
# Without that path there is no way to them.
if echo '#include <SDL.h>' | "${CXX:-c++}" -x c++ -fsyntax-only - 2>/dev/null; then
  echo "SDL's headers are found without their path: this machine shows nothing"
  exit 1
fi
