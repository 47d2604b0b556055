"""What the documentation says is held against the programs."""

import os
import re
import subprocess

from programs import LONGEST, ROOT, SIMULATOR, WORKBENCH, EndToEnd


def document(name):
    with open(os.path.join(ROOT, name), encoding="utf-8") as stream:
        return stream.read()


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
        for name in ["README.md", "tests/interop/README.md"] + ["docs/" + file for file in os.listdir(os.path.join(ROOT, "docs"))]:
            if name.endswith(".md"):
                for link in re.findall(r"\]\(([^)#:]+)\)", document(name)):
                    path = os.path.join(ROOT, os.path.dirname(name), link)
                    self.assertTrue(os.path.exists(path), f"{name}: {link}")
