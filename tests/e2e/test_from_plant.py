"""Runs the commands of docs/from-plant-to-project.md and compares what they print with the page.

With DORVEL_WRITE_PAGE=1 the page gets the new screens instead.
"""

import os
import re
import subprocess

from namespaces import PlantNetwork
from programs import LONGEST, PLANT, ROOT, WORKBENCH

PAGE = os.path.join(ROOT, "docs", "from-plant-to-project.md")
INDENT = "    "
PROMPT = INDENT + "$ "
# What these commands print has values and times of the moment.
MOVING = ("browse", "run", "verify", "release")
# Other commands print a table only in a terminal.
TABLES = ("discover", "browse")


class Screen:
    """A command of the page and the lines below it, by the numbers of these lines."""

    def __init__(self, command, begin):
        self.command, self.begin, self.end = command, begin, begin

    def text(self, lines):
        return "".join(line[len(INDENT):].rstrip("\n") + "\n" for line in lines[self.begin:self.end])


def screens(lines):
    """The commands of the page with their output: indented lines, up to the next command or other text."""
    found = []
    inside = False
    for number, line in enumerate(lines):
        if line.startswith(PROMPT):
            found.append(Screen(line[len(PROMPT):].strip(), number + 1))
            inside = True
        elif inside and line.startswith(INDENT):
            found[-1].end = number + 1
        elif line.strip():
            inside = False
    return found


def steady(command, text):
    """The text without what varies: dates and times, and for some commands numbers with the texts of states."""
    text = re.sub(r"\d{4}-\d\d-\d\d[ T]\d\d:\d\d:\d\d(\.\d+)?|\d{4}-\d\d-\d\d", "TIME", text)
    if any(f"dorvel-workbench {word} " in command for word in MOVING):
        text = re.sub(r"\d[\d.:]*( \([\w ]+\))?", "0", text)
    return re.sub(r"[ \t]+", " ", text)


class FromPlantToProject(PlantNetwork):
    def setUp(self):
        super().setUp()
        self.folder = subprocess.run(["mktemp", "-d"], stdout=subprocess.PIPE, text=True, check=True).stdout.strip()
        self.addCleanup(subprocess.run, ["rm", "-r", self.folder], check=True)
        self.home = os.path.join(self.folder, "home")
        os.mkdir(self.home)
        program = os.path.join(self.folder, "dorvel-workbench")
        with open(program, "w", encoding="utf-8") as stream:
            stream.write("#!/bin/sh\n" + "".join(f'[ "$1" != {word} ] || set -- "$@" --format table\n' for word in TABLES)
                         + f'exec ip netns exec {self.desk} {WORKBENCH} "$@"\n')
        os.chmod(program, 0o755)
        for number, device in enumerate(PLANT.values()):
            self.simulator(number, os.path.join(ROOT, "examples", "devices", device + ".lua"))

    def output_of(self, command):
        environment = dict(os.environ, PATH=self.folder + ":" + os.environ["PATH"], LC_ALL="C.UTF-8")
        result = subprocess.run(["bash", "-o", "pipefail", "-c", command], cwd=self.home, env=environment,
                                stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                                timeout=LONGEST, check=False)
        self.assertEqual(result.returncode, 0, f"{command}\n{result.stdout}")
        return result.stdout

    def test_every_screen_of_the_page_is_what_the_programs_print(self):
        with open(PAGE, encoding="utf-8") as stream:
            lines = stream.readlines()
        written, position = [], 0
        for screen in screens(lines):
            output = self.output_of(screen.command)
            written += lines[position:screen.begin] + [(INDENT + line).rstrip() + "\n" for line in output.splitlines()]
            position = screen.end
            if "DORVEL_WRITE_PAGE" not in os.environ:
                self.assertEqual(steady(screen.command, screen.text(lines)), steady(screen.command, output), screen.command)
        if "DORVEL_WRITE_PAGE" in os.environ:
            with open(PAGE, "w", encoding="utf-8") as stream:
                stream.writelines(written + lines[position:])
        for word in ("discover", "browse", "new", "check", "run", "verify", "ede", "compare", "release"):
            self.assertTrue(any(f"dorvel-workbench {word} " in screen.command + " " for screen in screens(lines)), word)
