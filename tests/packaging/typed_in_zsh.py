"""What zsh makes of keys: typed_in_zsh.py <folder of the completion> <keys…>.

Prints what it lists and, behind COMMAND LINE:, what then stands there. Of the keys, TAB is a tab.
"""
import os
import pty
import sys

SET_UP = """
PS1= RPS1= PS2= fpath=({} $fpath)
autoload -Uz compinit && compinit -u -D
unset zle_bracketed_paste
show() {{ zle -I; print -r -- "COMMAND LINE:$BUFFER:"; exit }}
zle -N show; bindkey '^X' show
bindkey '^I' complete-word
print set up | tr a-z A-Z
"""


def read_to(terminal, mark):
    text = b""
    while mark not in text:
        try:
            text += os.read(terminal, 4096)
        except OSError:
            break
    return text


def main():
    folder, *keys = sys.argv[1:]
    child, terminal = pty.fork()
    if child == 0:
        environment = {"PATH": os.environ["PATH"], "TERM": "dumb", "LC_ALL": "C.UTF-8", "HOME": "/nonexistent"}
        os.execvpe("zsh", ["zsh", "-f", "-i"], environment)
    os.write(terminal, b"stty -echo rows 100 columns 200\n")
    os.write(terminal, SET_UP.format(folder).encode())
    read_to(terminal, b"SET UP")
    os.write(terminal, " ".join(keys).replace("TAB", "\t").encode() + b"\x18")
    print(read_to(terminal, b":\r\n").decode(errors="replace").replace("\r", ""))
    os.close(terminal)


main()
