"""Compares the documentation with the programs."""

import os
import re
import subprocess

from programs import LONGEST, ROOT, SIMULATOR, WORKBENCH, EndToEnd


def document(name):
    with open(os.path.join(ROOT, name), encoding="utf-8") as stream:
        return stream.read()


def documents():
    """The paths of all documents of the repository."""
    for folder, folders, files in os.walk(ROOT):
        folders[:] = [name for name in folders if not name.startswith(".") and name not in ("build", "node_modules")]
        yield from (os.path.relpath(os.path.join(folder, name), ROOT) for name in files if name.endswith(".md"))


def blocks(text):
    """The blocks of lines without a blank line between them, except code."""
    text = re.sub(r"^```.*?^```$", "", text, flags=re.MULTILINE | re.DOTALL)
    for run in re.split(r"\n\s*\n", text):
        if not run.startswith("    "):
            yield run.strip("\n").split("\n")


def anchors(text):
    """The anchors by which links name the headings of a document."""
    return {re.sub(r"[^\w -]", "", title.lower()).replace(" ", "-") for title in re.findall(r"^#+ (.+)", text, re.MULTILINE)}


def cells(row):
    return len(re.split(r"(?<!\\)\|", row.strip())) - 2


def table_mistake(lines):
    """Why a block of lines with rows of a table is not shown as a table; None if it is, or has no such rows."""
    rows = [line.startswith("|") for line in lines]
    if not any(rows):
        return None
    if not all(rows):
        return "a blank line is missing between the table and other text"
    if len(lines) < 2 or not re.fullmatch(r"\|( *:?-+:? *\|)+", lines[1]):
        return "a heading is missing, or a blank line splits the table"
    return None if len({cells(line) for line in lines}) == 1 else "rows of different lengths"


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, timeout=LONGEST, check=True).stdout


def plain(name):
    return re.sub("[^a-z0-9]", "", name.lower())


# By field, a value that the workbench refuses.
REFUSED = {
    "fields": {
        "Name": "7", "Task": '"nowhere"', "Address": '"192.0.2.1:0"', "MAC": '"0A.:14:1E"', "Timeout": "1.5",
        "CountRepeat": "0", "AddressNumber": '"1"', "NetworkNumber": "65536", "Priority": "17", "WriteCondition": "3",
        "ExecuteOnSlave": "1", "WriteOnSlave": "0", "FaultItemId": "1", "ErrorTextItemId": "1", "ConnectItemId": "1",
        "ExecuteItemId": "1", "WriteItemId": "1", "DeviceInstance": "4194303",
        "Vars": "{}",
    },
    "variable": {
        "Name": "7", "Type": "14", "ElementType": '"Float"', "ObjectType": "1000", "ObjectProperties": "1000",
        "ObjectNumber": "4194303", "ReadId": "1", "ReadField": '"x"', "WriteId": "1", "WriteField": '"x"', "Write": "1",
        "Unit": "62", "StateTexts": '"off"', "Description": "1", "Point": "1",
    },
}


class Docs(EndToEnd):
    def names(self, heading):
        """The rows that the workbench lists under a heading: (code, BACnet number, name)."""
        part = re.split(r"^(\S+)$", output_of(WORKBENCH, "names"), flags=re.MULTILINE)
        rows = part[part.index(heading) + 1]
        return [(int(code), int(number), plain(name)) for code, number, name in re.findall(r"^ +(\d+) +(\d+) +(\S+)", rows, re.MULTILINE)]

    def refusal(self, fields="", variable=""):
        """The workbench's message about a valid project of one block and one variable with these additional fields."""
        project = ('BACnet.new{ Name = "B", Address = "192.0.2.1:47808", Vars = {{ Name = "V", Type = "Float",\n'
                   f'ObjectType = 1, ObjectProperties = 0, ObjectNumber = 1, {variable} }}}}, {fields} }}\n')
        check = subprocess.run([WORKBENCH, "check", self.file("project.lua", project)], stdout=subprocess.PIPE,
                               text=True, timeout=LONGEST, check=False)
        errors = re.findall(r'^\S+: error: .*?(field ".*) \[[a-z-]+\]$', check.stdout, re.MULTILINE)
        self.assertEqual(check.returncode, 2 if errors else 0)
        return "".join(error + "\n" for error in errors)

    def test_the_workbench_refuses_exactly_what_the_document_says(self):
        refused = document("docs/workbench.md").split("### Of a block\n")[1].split("### Of a project\n")[0]
        tables = {}
        for kind, part in zip(("fields", "variable"), refused.split("### Of a variable\n")):
            tables[kind] = {field: accepted for names, accepted in re.findall(r"^\| (`.*?) \| (.*?) \|", part, re.MULTILINE)
                            for field in re.findall(r"`(\w+)`", names)}
            self.assertEqual(set(tables[kind]), set(REFUSED[kind]))
            for field, accepted in tables[kind].items():
                self.assertIn(f'field "{field}": ', self.refusal(**{kind: f"{field} = {REFUSED[kind][field]}"}))
                if accepted.startswith("needed; "):
                    self.assertIn(f'field "{field}": missing\n', self.refusal(**{kind: f"{field} = nil"}))
                limits = re.match(r"(?:needed; )?(-?\d+) to (-?\d+)", accepted)
                if limits:
                    self.assert_limits(kind, field, *map(int, limits.groups()))
        configured = re.split("^## ", document("docs/configure-a-block.md"), flags=re.MULTILINE)
        for title, kind in (("Fields of a block", "fields"), ("Fields of a variable", "variable")):
            part = next(part for part in configured if part.startswith(title)).split("\n### ")[0]
            rows = re.findall(r"^\| (`\w+`(?:, `\w+`)*) \|", part, re.MULTILINE)
            self.assertEqual(set(re.findall(r"\w+", " ".join(rows))) - set(tables[kind]), set())
            self.assertGreater(len(rows), 5)

    def assert_limits(self, kind, field, low, high):
        for value in (low, high):
            self.assertEqual(self.refusal(**{kind: f"{field} = {value}"}), "")
        for value in (low - 1, high + 1):
            self.assertIn(f'field "{field}": {value} is out of range; allowed is {low} to {high}\n',
                          self.refusal(**{kind: f"{field} = {value}"}))

    def test_the_largest_object_number_is_that_of_the_workbench(self):
        for name in ("docs/configure-a-block.md", "docs/workbench.md"):
            largest = int(re.search(r"^\| `ObjectNumber` \|[^|]* 0 to (\d+)", document(name), re.MULTILINE).group(1))
            self.assertEqual(self.refusal(variable=f"ObjectNumber = {largest}"), "", name)
            self.assertIn(f" is out of range; allowed is 0 to {largest}\n", self.refusal(variable=f"ObjectNumber = {largest + 1}"), name)

    def test_the_object_types_are_those_of_the_driver(self):
        text = document("docs/configure-a-block.md").split("### Object types")[1].split("### Properties")[0]
        rows = re.findall(r"\| (\d+) \| (\d+) \| ([^|]+?) \|", text.replace("| |", "|\n|"))
        self.assertEqual(sorted((int(code), int(number), plain(name)) for code, number, name in rows), self.names("ObjectType"))

    def test_the_properties_are_those_of_the_driver(self):
        text = document("docs/configure-a-block.md").split("### Properties")[1]
        rows = [(int(code), int(number), plain(name)) for code, number, name in
                re.findall(r"^\| (\d+) \| (\d+) \| ([^|]*) \|", text, re.MULTILINE)]
        self.assertEqual([row[:2] for row in rows], [row[:2] for row in self.names("ObjectProperties")])
        for row, expected in zip(rows, self.names("ObjectProperties")):
            self.assertIn(row[2], (expected[2], ""))

    def test_every_option_is_documented(self):
        for text, usage in ((document("docs/workbench.md"),
                             output_of(WORKBENCH, "run", "--help") + output_of(WORKBENCH, "--help")),
                            (document("docs/simulator.md"), output_of(SIMULATOR, "--help"))):
            options = set(re.findall(r"(?<![\w-])--[a-z-]+", usage)) - {"--help", "--version"}
            self.assertTrue(options)
            self.assertEqual({option for option in options if f"`{option}" not in text}, set())

    def test_every_link_has_a_target(self):
        for name in documents():
            for link, heading in re.findall(r"\]\(([^)#:]*)(?:#([^)]+))?\)", document(name)):
                target = os.path.normpath(os.path.join(os.path.dirname(name), link)) if link else name
                self.assertTrue(os.path.exists(os.path.join(ROOT, target)), f"{name}: {link}")
                if heading:
                    self.assertIn(heading, anchors(document(target)), f"{name}: {link}")

    def test_every_table_is_shown_as_a_table(self):
        mistakes = [f"{name}: {mistake}: {lines[0]}" for name in documents() for lines in blocks(document(name))
                    if (mistake := table_mistake(lines))]
        self.assertEqual(mistakes, [])
