"""No call of SDL's is younger than the oldest SDL that the game is to play with: sdl_calls_test.py <library>.

SDL's headers tell since when there is a function.
"""
import pathlib
import re
import subprocess
import sys

OLDEST = (2, 0, 14)
HEADERS = pathlib.Path("/usr/include/SDL2")


def versions():
    """The version that each function came with."""
    told = {}
    for header in HEADERS.glob("*.h"):
        text = header.read_text()
        for comment in re.finditer(r"/\*\*(.*?)\*/\s*extern DECLSPEC\s+[^;]*?SDLCALL\s+(SDL_\w+)", text, re.S):
            since = re.findall(r"since SDL (\d+)\.(\d+)\.(\d+)", comment.group(1))
            if since:
                told[comment.group(2)] = tuple(map(int, since[-1]))
    return told


def main():
    symbols = subprocess.run(["nm", "-D", "--undefined-only", sys.argv[1]], capture_output=True, text=True, check=True)
    called = sorted(set(re.findall(r"\bSDL_\w+", symbols.stdout)))
    told = versions()
    young = [name for name in called if told.get(name, OLDEST) > OLDEST]
    known = [name for name in called if name in told]
    for name in young:
        print(f"FAILED: {name} came with SDL {'.'.join(map(str, told[name]))}", file=sys.stderr)
    if len(known) < 20:
        print(f"FAILED: the headers tell of {len(known)} of {len(called)} calls only", file=sys.stderr)
    return 1 if young or len(known) < 20 else 0


sys.exit(main())
