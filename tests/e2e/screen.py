"""Reads a screen as a terminal shows it, from what a program sends to it."""

import re

TOKEN = re.compile(r"\x1b\[([0-9;?]*)([A-Za-z])|\r|\n|[^\x1b\r\n]|\x1b")


class ScreenReader:
    """A terminal of that size: the control sequences of ECMA-48 that the workbench sends, and the alternate screen."""

    def __init__(self, columns, rows):
        self.resize(columns, rows)
        self.modes = set()
        self._rest = b""

    def resize(self, columns, rows):
        self.columns, self.rows = columns, rows
        self._cells = [[" "] * columns for _ in range(rows)]
        self._line = self._column = 0

    @property
    def lines(self):
        return ["".join(line).rstrip() for line in self._cells]

    @property
    def text(self):
        return "\n".join(self.lines)

    def feed(self, octets):
        text = (self._rest + octets).decode(errors="ignore")
        # What is not complete comes with the next octets.
        cut = re.search(r"\x1b(\[[0-9;?]*)?$", text)
        whole = text[:cut.start()] if cut else text
        self._rest = text[len(whole):].encode()
        for match in TOKEN.finditer(whole):
            if match.group(2):
                self._sequence(match.group(1), match.group(2))
            elif match.group() == "\r":
                self._column = 0
            elif match.group() == "\n":
                self._line += 1
                if self._line >= self.rows:
                    self._cells = self._cells[1:] + [[" "] * self.columns]
                    self._line = self.rows - 1
            elif match.group() != "\x1b":
                self._put(match.group())

    def _put(self, character):
        if self._column >= self.columns and 1049 not in self.modes:
            return  # text after the run, which a terminal wraps
        if self._column >= self.columns:
            raise AssertionError(f"a line is longer than {self.columns} columns: {''.join(self._cells[self._line])}")
        if self._line < self.rows:
            self._cells[self._line][self._column] = character
        self._column += 1

    def _sequence(self, parameters, final):
        if final in "hl" and parameters.startswith("?"):
            (self.modes.add if final == "h" else self.modes.discard)(int(parameters[1:]))
            if parameters == "?1049":
                self.resize(self.columns, self.rows)
        elif final == "H":
            line, column = (int(number) for number in parameters.split(";")) if parameters else (1, 1)
            self._line, self._column = line - 1, column - 1
        elif final == "K" and self._line < self.rows:
            self._cells[self._line][self._column:] = [" "] * (self.columns - self._column)
        elif final == "J":
            self._cells = [[" "] * self.columns for _ in range(self.rows)]
