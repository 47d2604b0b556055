"""Help, manual pages and the completion of shells name the same commands and options."""

import os
import re
import shutil
import subprocess
import tempfile
import unittest

from programs import BIN, LONGEST
from shells import BASH_COMPLETION, Shell

MANUAL = os.path.join(BIN, "..", "manual")
PROGRAMS = {"workbench": "dorvel-workbench", "simulator": "bacnet-simulator"}
SHELLS = {"bash": BASH_COMPLETION, "zsh": shutil.which("zsh") or ""}

# Words that an option takes, where they can be listed.
CHOICES = {
    "dorvel-workbench run --format ": {"auto", "table", "lines", "json", "csv", "none"},
    "dorvel-workbench discover --format ": {"auto", "table", "lines", "json"},
    "dorvel-workbench check --format=": {"text", "json"},
    "dorvel-workbench run --log-format ": {"text", "json"},
    "dorvel-workbench run --fail-on fault,sus": {"fault,suspect"},
    "dorvel-workbench ver": {"verify"},
}

# Files that are offered where these are: a.lua b.sqlite c_EDE.csv d.so e.html f.txt folder/
FILES = {
    "dorvel-workbench run ": {"a.lua", "folder"},
    "dorvel-workbench run a.lua --addin ": {"d.so", "folder"},
    "dorvel-workbench verify a.lua --report ": {"e.html", "folder"},
    "dorvel-workbench run a.lua --page-token-file f": {"f.txt", "folder"},
    "dorvel-workbench new --devices ": {"folder"},
    "dorvel-workbench new x.lua --from ": {"c_EDE.csv", "discover", "folder"},
    "dorvel-workbench compare c_EDE.csv ": {"a.lua", "c_EDE.csv", "folder"},
    "bacnet-simulator ": {"a.lua", "folder"},
}


def text_of(*path):
    with open(os.path.join(MANUAL, *path), encoding="utf-8") as stream:
        return stream.read()


def help_of(program, *command):
    return subprocess.run([os.path.join(BIN, program), *command, "--help"], stdout=subprocess.PIPE, text=True,
                          timeout=LONGEST, check=True).stdout


def commands():
    """The commands that the help of the workbench lists."""
    listed = help_of("dorvel-workbench").split("Subcommands:\n")[1].split("\n\n")[0]
    return re.findall(r"^  ([a-z]+)", listed, re.MULTILINE)


def pages():
    """Each program with each command, and its page: (program, [command], page)."""
    yield "bacnet-simulator", [], text_of("simulator", "man", "man1", "bacnet-simulator.1")
    yield "dorvel-workbench", [], text_of("workbench", "man", "man1", "dorvel-workbench.1")
    for command in commands():
        yield "dorvel-workbench", [command], text_of("workbench", "man", "man1", f"dorvel-workbench-{command}.1")


def options_of_help(program, command):
    lines = re.findall(r"^  (-\S+)", help_of(program, *command), re.MULTILINE)
    return {name for line in lines for name in line.split(",")}


def options_of_page(page):
    if ".SH OPTIONS\n" not in page:
        return set()
    part = page.split(".SH OPTIONS\n")[1].split("\n.SH")[0]
    tags = re.findall(r"^\.TP\n(.*)$", part, re.MULTILINE)
    return {name.replace("\\-", "-") for tag in tags for name in re.findall(r"\\fB(\\-.*?)\\fR", tag)}


class Manual(unittest.TestCase):
    maxDiff = None

    def test_every_page_has_the_options_of_the_help_and_no_others(self):
        for program, command, page in pages():
            with self.subTest(command=[program, *command]):
                options = options_of_help(program, command)
                self.assertIn("--help", options)
                self.assertEqual(options_of_page(page), options)

    def test_every_command_has_a_page_and_no_other_name_has_one(self):
        names = {f"dorvel-workbench-{command}.1" for command in commands()} | {"dorvel-workbench.1"}
        self.assertGreater(len(names), 8)
        self.assertEqual(set(os.listdir(os.path.join(MANUAL, "workbench", "man", "man1"))), names)
        page = text_of("workbench", "man", "man1", "dorvel-workbench.1")
        listed = page.split(".SH COMMANDS\n")[1].split("\n.SH")[0]
        self.assertEqual(re.findall(r"^\.TP\n\\fB(.*?)\\fR$", listed, re.MULTILINE), commands())

    def test_every_page_is_shown_without_a_warning(self):
        checks = [command for command in (["mandoc", "-Tlint", "-W", "warning"], ["man", "--warnings", "-l"])
                  if shutil.which(command[0])]
        if not checks:
            self.skipTest("mandoc and man are missing")
        files = [os.path.join(folder, name) for folder, _, names in os.walk(MANUAL) for name in names
                 if re.search(r"\.\d$", name)]
        self.assertGreater(len(files), 10)
        for file in files:
            for check in checks:
                result = subprocess.run([*check, file], capture_output=True, text=True, timeout=LONGEST, check=False,
                                        env={**os.environ, "LC_ALL": "C.UTF-8", "MANWIDTH": "80", "MANPAGER": "cat"})
                self.assertEqual(result.stderr + (result.stdout if check[0] == "mandoc" else ""), "", file)

    def test_the_pages_of_files_have_the_fields_of_the_documents(self):
        project = text_of("workbench", "man", "man5", "dorvel-project.5")
        for field in ("CountRepeat", "ObjectProperties", "StateTexts", "WriteCondition"):
            self.assertIn(f".TP\n\\fB{field}\\fR", project.replace("\\fBUnit\\fR, ", ""))
        device = text_of("simulator", "man", "man5", "dorvel-device.5")
        for field in ("objects", "proposed_window_size", "own_network"):
            self.assertIn(f".TP\n\\fB{field}\\fR", device)

    def shell(self, name, part):
        if not os.path.exists(SHELLS[name]):
            self.skipTest(f"{name} or its completion is missing")
        shell = Shell(name, os.path.join(MANUAL, part), PROGRAMS[part], self.folder())
        self.addCleanup(shell.close)
        return shell

    def folder(self):
        folder = tempfile.mkdtemp(prefix="dorvel-files-")
        self.addCleanup(shutil.rmtree, folder)
        os.mkdir(os.path.join(folder, "folder"))
        for name in ("a.lua", "b.sqlite", "c_EDE.csv", "d.so", "e.html", "f.txt"):
            with open(os.path.join(folder, name), "w", encoding="utf-8"):
                pass
        return folder

    def check_shell(self, name):
        shells = {PROGRAMS[part]: self.shell(name, part) for part in PROGRAMS}
        workbench = shells["dorvel-workbench"]
        self.assertEqual({word for word in workbench.offered("dorvel-workbench ") if not word.startswith("-")}, set(commands()))
        for program, command, _ in pages():
            line = " ".join([program, *command, "-"])
            offered = shells[program].offered(line)
            self.assertEqual(offered, options_of_help(program, command), line)
        for line, words in CHOICES.items():
            self.assertEqual({word.split("=")[-1] for word in workbench.offered(line)}, words, line)
        for line, files in FILES.items():
            self.assertEqual(shells[line.split()[0]].offered(line), files, line)

    def test_bash_completes_commands_options_values_and_files(self):
        self.check_shell("bash")

    def test_zsh_completes_commands_options_values_and_files(self):
        self.check_shell("zsh")


if __name__ == "__main__":
    unittest.main()
