"""What shells offer when a line is completed: real ones, each on a terminal of its own."""

import os
import pty
import shutil
import signal
import subprocess
import tempfile
import threading
import time

LONGEST = 30
BASH_COMPLETION = "/usr/share/bash-completion/bash_completion"

BASH = """\
PS1= PS2=
. {completion}
. '{folder}/bash/{program}'
bind 'set bell-style none'
bind '"\\C-xa": insert-completions'
show() {{ printf '%s' "$READLINE_LINE" >'{out}.new' && mv '{out}.new' '{out}'; READLINE_LINE= READLINE_POINT=0; }}
bind -x '"\\C-xs": show'
"""

ZSH = """\
PS1= PS2=
fpath=('{folder}/zsh' $fpath)
autoload -Uz compinit && compinit -u -D
setopt no_beep
zstyle ':completion:*' completer _complete
all() {{ _main_complete; compstate[insert]=all; compstate[list]= }}
zle -C all complete-word all
show() {{ printf '%s' "$BUFFER" >'{out}.new' && mv '{out}.new' '{out}'; BUFFER= }}
zle -N show
bindkey -e
bindkey '^xa' all
bindkey '^xs' show
"""


class Shell:
    """An interactive shell that has loaded the completion of a program."""

    def __init__(self, name, folder, program, current):
        self._place = tempfile.mkdtemp(prefix="dorvel-shell-")
        self._out = os.path.join(self._place, "line")
        text = {"bash": BASH, "zsh": ZSH}[name].format(completion=BASH_COMPLETION, folder=folder, program=program, out=self._out)
        start = os.path.join(self._place, ".zshrc")
        with open(start, "w", encoding="utf-8") as stream:
            stream.write(text)
        command = ["bash", "--noprofile", "--rcfile", start, "-i"] if name == "bash" else ["zsh", "-o", "no_global_rcs", "-i"]
        self._master, slave = pty.openpty()
        self._process = subprocess.Popen(
            command, cwd=current, stdin=slave, stdout=slave, stderr=slave, start_new_session=True,
            env={**os.environ, "ZDOTDIR": self._place, "TERM": "xterm", "HISTFILE": "", "LC_ALL": "C.UTF-8"})
        os.close(slave)
        threading.Thread(target=self._drain, daemon=True).start()

    def _drain(self):
        try:
            while os.read(self._master, 65536):
                pass
        except OSError:
            pass

    def offered(self, line):
        """The words that the shell puts in place of the last one of the line; none if it leaves the line as it is."""
        os.write(self._master, line.encode() + b"\x18a\x18s")
        end = time.monotonic() + LONGEST
        while not os.path.exists(self._out):
            if time.monotonic() > end:
                raise AssertionError(f"the shell does not complete: {line}")
            time.sleep(0.01)
        with open(self._out, encoding="utf-8") as stream:
            completed = stream.read()
        os.remove(self._out)
        if completed == line:
            return set()
        begin = line.rfind(" ") + 1
        return {word.rstrip("=/,") for word in completed[begin:].split()}

    def close(self):
        os.killpg(self._process.pid, signal.SIGKILL)
        self._process.wait()
        os.close(self._master)
        shutil.rmtree(self._place)
