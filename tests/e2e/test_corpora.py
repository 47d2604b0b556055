"""The bundles of fuzz/corpus, and what scripts/fuzz and fuzz/make-seeds read and write them with."""

import importlib.machinery
import importlib.util
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
sys.path.insert(0, str(ROOT / "fuzz"))

import corpora  # noqa: E402

INPUTS = {"b": b"\x00\xff", "a": b"", "a-2": b"\x09"}
BUNDLE = b"a:\na-2: 09\nb: 00ff\n"


class Corpora(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def read(self, bundle):
        file = self.folder / "tags.txt"
        file.write_bytes(bundle)
        return corpora.read_bundle(file)

    def test_a_bundle_is_written_sorted_and_read_as_it_was(self):
        corpus = corpora.Corpus("tags", self.folder)
        self.assertEqual(corpus.read(), {})
        corpus.write(INPUTS)
        self.assertEqual((self.folder / "tags.txt").read_bytes(), BUNDLE)
        self.assertEqual(corpus.read(), INPUTS)

    def test_malformed_lines_are_refused_with_their_place(self):
        for line in (b"c: 0", b"c: 0g", b"c: 0A", b"c 00", b"c:00", b"c: ", b": 00", b"c d: 00", b"../c: 00", b"c: 00\r", b""):
            with self.subTest(line=line), self.assertRaisesRegex(corpora.CorpusError, r"tags\.txt:2: .* is not an input; a line is"):
                self.read(b"a: 01\n" + line + b"\nz: 02\n")

    def test_a_name_that_is_used_twice_is_refused(self):
        with self.assertRaisesRegex(corpora.CorpusError, r'tags\.txt:3: the name "a" is used in another line'):
            self.read(b"a: 01\nb: 02\na: 03\n")

    def test_a_name_that_is_not_allowed_is_not_written(self):
        corpus = corpora.Corpus("tags", self.folder)
        with self.assertRaisesRegex(corpora.CorpusError, 'the name "a b" is not allowed'):
            corpus.write({"a b": b""})
        self.assertFalse(corpus.path.exists())

    def test_an_input_is_added_to_the_others_or_replaces_that_of_its_name(self):
        corpus = corpora.Corpus("tags", self.folder)
        corpus.write(INPUTS)
        corpus.add({"c": b"\x01", "b": b"\x02"})
        self.assertEqual(corpus.read(), {**INPUTS, "c": b"\x01", "b": b"\x02"})

    def test_a_corpus_in_a_folder_has_a_file_for_each_input(self):
        folder = self.folder / "lua/project"
        folder.mkdir(parents=True)
        (folder / "old").write_bytes(b"x")
        corpus = corpora.Corpus("project", self.folder)
        corpus.write(INPUTS)
        self.assertEqual({file.name: file.read_bytes() for file in folder.iterdir()}, INPUTS)
        self.assertEqual(corpus.read(), INPUTS)

    def test_a_bundle_is_unpacked_into_a_folder_that_has_nothing_else(self):
        corpus = corpora.Corpus("tags", self.folder)
        corpus.write(INPUTS)
        seeds = self.folder / "seeds"
        seeds.mkdir()
        (seeds / "old").write_bytes(b"x")
        corpus.unpack(seeds)
        self.assertEqual({file.name: file.read_bytes() for file in seeds.iterdir()}, INPUTS)

    def test_all_bundles_are_in_the_form_in_which_they_are_written(self):
        bundles = sorted(corpora.CORPORA.glob("*.txt"))
        self.assertGreater(len(bundles), 5)
        for file in bundles:
            with self.subTest(file=file.name):
                written = self.folder / file.name
                corpora.write_bundle(written, corpora.read_bundle(file))
                self.assertEqual(written.read_bytes(), file.read_bytes())

    def test_make_seeds_has_seeds_for_each_of_its_targets(self):
        loader = importlib.machinery.SourceFileLoader("make_seeds", str(ROOT / "fuzz/make-seeds"))
        make_seeds = importlib.util.module_from_spec(importlib.util.spec_from_loader("make_seeds", loader))
        loader.exec_module(make_seeds)
        fewest = {"device_client": 100, "lua_binding": 50, "simulator": 30, "faulty_station": 40, "standard_client": 30, "discovery": 50, "observer": 20,
                  "project": 8, "device_file": 20, "publish": 20, "sparkplug": 20}
        self.assertEqual(set(make_seeds.TARGETS), set(fewest))
        for target, count in fewest.items():
            with self.subTest(target=target):
                seeds = dict(make_seeds.TARGETS[target]())
                self.assertGreaterEqual(len(seeds), count)
                for name in seeds:
                    self.assertRegex(name, f"^{corpora.INPUT_NAME.pattern}$")

    def test_a_finding_of_no_target_is_not_added(self):
        added = subprocess.run([ROOT / "scripts/fuzz", "add", "FILE", "words", "--target", "nowhere"], stderr=subprocess.PIPE, text=True, check=False)
        self.assertEqual(added.returncode, 2)
        self.assertRegex(added.stderr, r"^fuzz: add needs one --target NAME of bvlc_npdu, tags, ")
