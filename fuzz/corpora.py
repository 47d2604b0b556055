"""The corpora of the fuzz targets.

A corpus is a set of named inputs. It is the bundle fuzz/corpus/NAME.txt, with an input on each line:

    name: 00ff12        the octets in hexadecimal
    name:               the empty input

Where the folder fuzz/corpus/lua/NAME exists, it is the corpus instead, with a file for each input.
"""

import pathlib
import re
import shutil

CORPORA = pathlib.Path(__file__).resolve().parent / "corpus"
INPUT_NAME = re.compile(r"[A-Za-z0-9][A-Za-z0-9._-]*")
LINE = re.compile(rf"({INPUT_NAME.pattern}):(?: ((?:[0-9a-f]{{2}})+))?")


class CorpusError(Exception):
    """A malformed bundle, or a name that no input may have."""


def read_bundle(file):
    """The octets of the inputs by name."""
    inputs = {}
    lines = file.read_bytes().decode("ascii", "backslashreplace").split("\n")
    if not lines[-1]:
        lines.pop()  # what follows the last line end
    for number, line in enumerate(lines, 1):
        match = LINE.fullmatch(line)
        if not match:
            raise CorpusError(f'{file}:{number}: "{line[:40]}" is not an input; a line is NAME: OCTETS with two '
                              "hexadecimal digits (0 to 9, a to f) an octet, or NAME: alone")
        if match[1] in inputs:
            raise CorpusError(f'{file}:{number}: the name "{match[1]}" is used in another line; each name is used once')
        inputs[match[1]] = bytes.fromhex(match[2] or "")
    return inputs


def write_bundle(file, inputs):
    """The same inputs always give the same file: it is sorted by name."""
    lines = (f"{name}: {octets.hex()}".rstrip() + "\n" for name, octets in sorted(inputs.items()))
    file.parent.mkdir(parents=True, exist_ok=True)
    file.write_bytes("".join(lines).encode("ascii"))


def read_folder(folder):
    return {file.name: file.read_bytes() for file in sorted(folder.iterdir())}


def write_folder(folder, inputs):
    """Afterwards the folder has these inputs and nothing else."""
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    for name, octets in inputs.items():
        (folder / name).write_bytes(octets)


class Corpus:
    def __init__(self, target, corpora=CORPORA):
        folder = corpora / "lua" / target
        self.is_bundle = not folder.is_dir()
        self.path = corpora / f"{target}.txt" if self.is_bundle else folder

    def read(self):
        """The octets of the inputs by name; none where there is no corpus yet."""
        if not self.path.exists():
            return {}
        return read_bundle(self.path) if self.is_bundle else read_folder(self.path)

    def write(self, inputs):
        """Replaces the corpus."""
        for name in inputs:
            if not INPUT_NAME.fullmatch(name):
                raise CorpusError(f'{self.path}: the name "{name}" is not allowed; a name consists of letters, digits, '
                                  "'.', '_' and '-' and begins with a letter or digit")
        (write_bundle if self.is_bundle else write_folder)(self.path, inputs)

    def add(self, inputs):
        """Adds to the corpus; an input of the same name is replaced."""
        self.write({**self.read(), **inputs})

    def unpack(self, folder):
        """Makes the folder the corpus as libFuzzer reads it, a file for each input."""
        write_folder(folder, self.read())
