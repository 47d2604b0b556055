"""scripts/words reports the phrases of its list, except in exempt lines."""

import os
import subprocess
import sys
import tempfile
import unittest

from programs import ROOT

SCRIPT = os.path.join(ROOT, "scripts", "words")

LIST = """\
# A comment
\\bolde\\b => old
exempt docs/*.md => "olde"
"""


class Words(unittest.TestCase):
    def check(self, code, message, files, phrases=LIST):
        with tempfile.TemporaryDirectory() as folder:
            for name, text in {"tests/words.txt": phrases, **files}.items():
                path = os.path.join(folder, name)
                os.makedirs(os.path.dirname(path), exist_ok=True)
                with open(path, "w", encoding="utf-8") as stream:
                    stream.write(text)
            result = subprocess.run([sys.executable, SCRIPT, "--root", folder], capture_output=True, text=True, check=False)
        self.assertEqual(result.returncode, code, result.stdout + result.stderr)
        self.assertIn(message, result.stdout + result.stderr)

    def test_a_phrase_is_reported_with_its_line_and_its_replacement(self):
        self.check(1, "src/Main.cpp:2: 'olde': write instead: old\n", {"src/Main.cpp": "// older\n// an olde way\n"})

    def test_a_file_without_a_phrase_is_not_reported(self):
        self.check(0, "1 files, 0 phrases to replace\n", {"src/Main.cpp": "// older\n"})

    def test_an_exempt_text_is_allowed_in_its_files_only(self):
        self.check(0, " 0 phrases to replace\n", {"docs/text.md": 'The field "olde"\n'})
        self.check(1, "src/Main.cpp:1: ", {"src/Main.cpp": 'The field "olde"\n'})

    def test_a_mistake_in_the_list_is_reported_with_its_line(self):
        self.check(2, "words.txt:1: 'olde': 'PATTERN => REPLACEMENT' is allowed\n", {}, "olde\n")
        self.check(2, "words.txt:1: '(': ", {}, "( => old\n")
        self.check(2, "words.txt:1: 'x*': a pattern must not match an empty line\n", {}, "x* => old\n")

    def test_seeds_and_lock_files_are_not_checked(self):
        self.check(0, "1 files, 0 phrases to replace\n",
                   {"fuzz/corpus/text/a": "olde", "bench/peer/package-lock.json": "olde", "a/Main.cpp": ""})
