"""Includes point one way: scripts/rooms compares the tree with tests/structure/rooms.txt."""

import os
import subprocess
import sys
import tempfile
import unittest

from programs import ROOT

SCRIPT = os.path.join(ROOT, "scripts", "rooms")

ROOMS = """\
house contract include
.

house program program contract
low
left right
.
"""


def rooms(*arguments):
    return subprocess.run([sys.executable, SCRIPT, *arguments], capture_output=True, text=True, check=False)


class Rooms(unittest.TestCase):
    def tree(self, files):
        """A folder with these files, and rooms.txt."""
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        plain = {f"program/{room}/{room}.h": "" for room in ("low", "left", "right")}
        for name, text in {"tests/structure/rooms.txt": ROOMS, "include/host/Api.h": "", **plain, **files}.items():
            path = os.path.join(folder.name, name)
            os.makedirs(os.path.dirname(path), exist_ok=True)
            with open(path, "w", encoding="utf-8") as stream:
                stream.write(text)
        return folder.name

    def expect(self, code, message, files):
        result = rooms("--root", self.tree(files))
        self.assertEqual(result.returncode, code, result.stderr)
        self.assertIn(message, result.stdout + result.stderr)

    def test_every_include_of_the_tree_points_downwards(self):
        result = rooms()
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_the_picture_shows_the_tree_as_it_is(self):
        with tempfile.TemporaryDirectory() as folder:
            drawn = os.path.join(folder, "rooms.svg")
            rooms("--draw", drawn)
            with open(drawn, encoding="utf-8") as new, open(os.path.join(ROOT, "docs", "rooms.svg"), encoding="utf-8") as old:
                self.assertEqual(new.read(), old.read(), "draw it again: scripts/rooms --draw docs/rooms.svg")

    def test_includes_of_lower_rooms_and_of_the_contract_are_right(self):
        self.expect(0, " 0 wrong includes", {"program/Main.cpp": '#include "left.h"\n#include "host/Api.h"\n',
                                             "program/left/left.h": '#include "low.h"\n'})

    def test_an_include_of_a_higher_room_is_reported_with_its_line(self):
        self.expect(1, "program/low/low.h:2: includes program/left/left.h: room left is not below low",
                    {"program/low/low.h": '#pragma once\n#include "left.h"\n'})

    def test_rooms_of_one_storey_do_not_include_one_another(self):
        self.expect(1, "program/left/left.h:1: includes program/right/right.h: room right is not below left",
                    {"program/left/left.h": '#include "right.h"\n'})

    def test_a_house_that_may_not_be_included_is_reported(self):
        self.expect(1, "house contract may not include program; allowed: none",
                    {"include/host/Api.h": '#include "low.h"\n'})

    def test_one_room_may_include_a_house_that_the_others_may_not(self):
        rooms = "house other other\n.\n" + ROOMS.replace("left right", "left+other right")
        files = {"tests/structure/rooms.txt": rooms, "other/Other.h": ""}
        self.expect(0, " 0 wrong includes", {**files, "program/left/left.h": '#include "Other.h"\n'})
        self.expect(1, "house program may not include other; allowed: contract",
                    {**files, "program/right/right.h": '#include "Other.h"\n'})
        self.expect(2, 'no house "nowhere" above this line',
                    {"tests/structure/rooms.txt": ROOMS.replace("left right", "left+nowhere right")})

    def test_two_headers_with_one_name_on_one_include_path_are_reported(self):
        self.expect(1, "program/left/Same.h: program/right/Same.h has the same name, on the same include path; rename one",
                    {"program/left/Same.h": "", "program/right/Same.h": ""})
        rooms = "house other other\n.\n" + ROOMS
        self.expect(0, " 0 wrong includes", {"tests/structure/rooms.txt": rooms, "other/Same.h": "", "program/left/Same.h": ""})
        self.expect(0, " 0 wrong includes", {"program/left/Same.h": "", "program/right/Same.h": "",
                                             "program/Main.cpp": '#include "right/Same.h"\n'})

    def test_a_folder_that_is_not_a_room_is_reported(self):
        self.expect(2, "program/attic/Old.cpp: its folder is not a room of house program", {"program/attic/Old.cpp": ""})


if __name__ == "__main__":
    unittest.main()
