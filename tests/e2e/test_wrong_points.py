"""Each way in which a point can be wrong is found by name, and nothing is reported of its correct twin."""

import collections
import contextlib
import json
import os
import re
import subprocess
import unittest

from programs import LONGEST, SIMULATOR, WORKBENCH

FOLDER = os.path.join(os.path.dirname(os.path.abspath(__file__)), "wrong_points")

# What a line of a project has at its end, after "-- ": a code of check, or a verdict or a [remark] of verify.
EXPECTATION = re.compile(r"^(?!\s*--).*\s-- (\[?[a-z][a-z -]*\]?)$")

FEWEST_WAYS = 40


def path(name):
    return os.path.join(FOLDER, name)


def expectations(name):
    """The expectations of a project by the number of the line."""
    with open(path(name), encoding="utf-8") as stream:
        matches = ((number, EXPECTATION.match(line.rstrip())) for number, line in enumerate(stream, 1))
        return {number: match.group(1) for number, match in matches if match}


def names(project):
    """The names of its points and blocks, without differences of case and blanks."""
    with open(path(project), encoding="utf-8") as stream:
        found = re.findall(r'(?:value|written|block)\("([^"]+)"|Name = "([^"]+)", Task', stream.read())
    return {(point or block).strip().lower() for point, block in found}


def workbench(*words):
    """Runs the workbench with JSON lines as its output. Returns the exit code and the objects."""
    process = subprocess.run([WORKBENCH, *words, "--format", "json"], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                             stderr=subprocess.PIPE, text=True, timeout=LONGEST, check=False)
    return process.returncode, [json.loads(line) for line in process.stdout.splitlines()]


@contextlib.contextmanager
def devices(healthy):
    """Runs the devices, healthy ones without their faults; gives the options with their addresses."""
    process = subprocess.Popen(
        [SIMULATOR, path("device.lua"), "--port", "0", "--bind", "127.0.0.1", "--exit-with-stdin"],
        stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    try:
        with open(path("device.lua"), encoding="utf-8") as stream:
            count = len(re.findall(r"^device\{", stream.read(), re.MULTILINE))
        ready = [process.stdout.readline().split() for _ in range(count)]
        if healthy:
            process.stdin.write("clear *\n")
            process.stdin.flush()
            for _ in range(count):
                process.stdout.readline()
        yield [word for _, name, address in ready for word in ("--define", f"{name.lower()}={address}")]
    finally:
        process.stdin.close()
        process.stdout.close()
        process.wait(timeout=LONGEST)


class WrongPoints(unittest.TestCase):
    maxDiff = None

    def verdicts(self, project, healthy):
        """The exit code of verify, and its result for each variable by "Block.Variable"."""
        with devices(healthy) as defines:
            code, lines = workbench("verify", path(project), "--timeout", "2500", "--retries", "0", *defines)
        variables = [line for line in lines if line["kind"] == "variable"]
        return code, {f'{line["block"]}.{line["name"]}': line for line in variables}

    def test_check_names_each_wrong_point_of_a_project(self):
        code, findings = workbench("check", path("checked-wrong.lua"))
        found = collections.defaultdict(set)
        for finding in findings:
            found[finding["line"]].add(finding["code"])
        expected = {line: set(words.split()) for line, words in expectations("checked-wrong.lua").items()}
        self.assertEqual(dict(found), expected)
        self.assertEqual(code, 2)

    def test_check_finds_nothing_in_the_correct_twins(self):
        self.assertEqual(workbench("check", "--strict", path("checked-right.lua")), (0, []))

    def test_verify_names_each_wrong_point_of_a_device(self):
        code, results = self.verdicts("verified-wrong.lua", healthy=False)
        found = {name: result["verdict"] for name, result in results.items()}
        remarks = {name: result["remarks"] for name, result in results.items()}
        with open(path("verified-wrong.lua"), encoding="utf-8") as stream:
            lines = stream.read().splitlines()
        for number, expected in expectations("verified-wrong.lua").items():
            names = [name for name in results if f'"{name.split(".", 1)[1]}"' in lines[number - 1]
                     and (f'"{name.split(".", 1)[0]}"' in lines[number - 1] or name.startswith("Bench."))]
            self.assertEqual(len(names), 1, lines[number - 1])
            with self.subTest(point=names[0]):
                if expected.startswith("["):
                    self.assertIn(expected.strip("[]"), remarks[names[0]])
                else:
                    self.assertEqual(found[names[0]], expected, results[names[0]])
        self.assertEqual(code, 1)

    def test_verify_finds_nothing_in_the_correct_twins(self):
        code, results = self.verdicts("verified-right.lua", healthy=True)
        self.assertEqual({result["verdict"] for result in results.values()}, {"agrees"}, results)
        self.assertEqual([result["remarks"] for result in results.values() if result["remarks"]], [])
        self.assertEqual(code, 0)

    def test_the_ways_are_many_and_each_has_a_twin(self):
        ways = 0
        for tool in ("checked", "verified"):
            ways += len(expectations(f"{tool}-wrong.lua"))
            wrong, right = (names(f"{tool}-{kind}.lua") for kind in ("wrong", "right"))
            self.assertEqual(wrong - right, set())
        self.assertGreaterEqual(ways, FEWEST_WAYS)


if __name__ == "__main__":
    unittest.main()
