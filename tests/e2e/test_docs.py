"""What the documentation says is held against the programs."""

import os
import re
import subprocess

from programs import LONGEST, ROOT, SIMULATOR, WORKBENCH, EndToEnd


def document(name):
    with open(os.path.join(ROOT, name), encoding="utf-8") as stream:
        return stream.read()


def documents():
    """The names of all documents of the repository."""
    for folder, folders, files in os.walk(ROOT):
        folders[:] = [name for name in folders if not name.startswith(".") and name not in ("build", "node_modules")]
        yield from (os.path.relpath(os.path.join(folder, name), ROOT) for name in files if name.endswith(".md"))


def blocks(text):
    """The runs of lines without a blank one between them, code aside."""
    text = re.sub(r"^```.*?^```$", "", text, flags=re.MULTILINE | re.DOTALL)
    for run in re.split(r"\n\s*\n", text):
        if not run.startswith("    "):
            yield run.strip("\n").split("\n")


def cells(row):
    return len(re.split(r"(?<!\\)\|", row.strip())) - 2


def table_mistake(lines):
    """Why a run of lines that has rows of a table is not shown as one; None if it is."""
    rows = [line.startswith("|") for line in lines]
    if not any(rows):
        return None
    if not all(rows):
        return "other text without a blank line beside it"
    if len(lines) < 2 or not re.fullmatch(r"\|( *:?-+:? *\|)+", lines[1]):
        return "no heading: a blank line splits a table"
    return None if len({cells(line) for line in lines}) == 1 else "rows of different lengths"


def told(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, timeout=LONGEST, check=True).stdout


def plain(name):
    return re.sub("[^a-z0-9]", "", name.lower())


class Docs(EndToEnd):
    def names(self, heading):
        """The rows that the workbench lists under a heading: (code, BACnet number, name)."""
        part = re.split(r"^(\S+)$", told(WORKBENCH, "names"), flags=re.MULTILINE)
        rows = part[part.index(heading) + 1]
        return [(int(code), int(number), plain(name)) for code, number, name in re.findall(r"^ +(\d+) +(\d+) +(\S+)", rows, re.MULTILINE)]

    def refusal(self, fields="", variable=""):
        """What the workbench says of a good project of one block and one variable, with these fields besides."""
        project = ('BACnet.new{ Name = "B", Address = "192.0.2.1:47808", Vars = {{ Name = "V", Type = "Float",\n'
                   f'ObjectType = 1, ObjectProperties = 0, ObjectNumber = 1, {variable} }}}}, {fields} }}\n')
        check = subprocess.run([WORKBENCH, "check", self.file("project.lua", project)], stdout=subprocess.DEVNULL,
                               stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False)
        self.assertEqual(check.returncode, 2 if check.stderr else 0)
        return check.stderr

    def test_the_largest_object_number_is_that_of_the_workbench(self):
        for name in ("docs/configure-a-block.md", "docs/workbench.md"):
            largest = int(re.search(r"^\| `ObjectNumber` \|[^|]* 0 to (\d+)", document(name), re.MULTILINE).group(1))
            self.assertEqual(self.refusal(variable=f"ObjectNumber = {largest}"), "", name)
            self.assertIn(f" is not within 0..{largest}\n", self.refusal(variable=f"ObjectNumber = {largest + 1}"), name)

    def test_the_object_types_are_those_of_the_driver(self):
        text = document("docs/configure-a-block.md").split("### Object types")[1].split("### Properties")[0]
        rows = re.findall(r"\| (\d+) \| (\d+) \| ([^|]+?) \|", text.replace("| |", "|\n|"))
        self.assertEqual(sorted((int(code), int(number), plain(name)) for code, number, name in rows), self.names("ObjectType"))

    def test_the_properties_are_those_of_the_driver(self):
        text = document("docs/configure-a-block.md").split("### Properties")[1]
        rows = [(int(code), int(number), plain(name)) for code, number, name in
                re.findall(r"^\| (\d+) \| (\d+) \| ([^|]*) \|", text, re.MULTILINE)]
        self.assertEqual([row[:2] for row in rows], [row[:2] for row in self.names("ObjectProperties")])
        for row, meant in zip(rows, self.names("ObjectProperties")):
            self.assertIn(row[2], (meant[2], ""))

    def test_every_option_is_told(self):
        for text, usage in ((document("docs/workbench.md"), told(WORKBENCH, "run", "--help") + told(WORKBENCH, "--help")),
                            (document("docs/simulator.md"), told(SIMULATOR, "--help"))):
            options = set(re.findall(r"(?<![\w-])--[a-z-]+", usage)) - {"--help", "--version"}
            self.assertTrue(options)
            self.assertEqual({option for option in options if f"`{option}" not in text}, set())

    def test_links_lead_somewhere(self):
        for name in documents():
            for link in re.findall(r"\]\(([^)#:]+)\)", document(name)):
                path = os.path.join(ROOT, os.path.dirname(name), link)
                self.assertTrue(os.path.exists(path), f"{name}: {link}")

    def test_every_table_is_shown_as_one(self):
        mistakes = [f"{name}: {mistake}: {lines[0]}" for name in documents() for lines in blocks(document(name))
                    if (mistake := table_mistake(lines))]
        self.assertEqual(mistakes, [])
