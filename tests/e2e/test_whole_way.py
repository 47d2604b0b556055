"""From an unknown network to a running project and to a clone of the plant, with broadcasts and a router."""

import filecmp
import json
import os
import shutil
import tempfile

from namespaces import PlantNetwork
from programs import PLANT, ROOT

DEVICES = {1001: "AHU-1", 2001: "Chiller", 3001: "Rooms", 4001: "Energy meter"}


class WholeWay(PlantNetwork):
    def setUp(self):
        super().setUp()
        self.folder = tempfile.mkdtemp(prefix="dorvel-e2e-")
        self.addCleanup(shutil.rmtree, self.folder)

    def start(self, files):
        return [self.simulator(number, file) for number, file in enumerate(files)]

    def succeed(self, *words):
        run = self.workbench(*words, cwd=self.folder)
        self.assertEqual(run.code, 0, f"{words}: {run.output}{run.errors}")
        return run

    def json_lines(self, *words):
        return [json.loads(line) for line in self.succeed(*words, "--format", "json").output.splitlines()]

    def create(self, name):
        """A project and the device files of what is found, as NAME.lua and in the folder NAME."""
        self.succeed("new", f"{name}.lua", "--devices", name, "--from", "discover")
        return os.path.join(self.folder, name)

    def test_a_network_becomes_a_project_that_runs_and_a_clone_that_gives_the_same(self):
        plant = self.start([os.path.join(ROOT, "examples", "devices", device + ".lua") for device in PLANT.values()])

        found = [line for line in self.json_lines("discover") if line["kind"] == "device"]
        self.assertEqual({line["instance"]: line["name"] for line in found}, DEVICES)
        self.assertEqual([line["network"] for line in found], [None, 5, None, None])
        for device in found:
            self.assertEqual(device["marks"], [], device)
            whole, *objects = self.json_lines("browse", device["address"])
            self.assertEqual((whole["name"], whole["complete"]), (device["name"], True), whole)
            self.assertEqual(whole["objects"], len(objects))

        first = self.create("first")
        self.succeed("check", "--strict", "first.lua")
        self.succeed("run", "first.lua", "--cycles", "10", "--format", "json", "--fail-on", "fault,suspect")
        points = [line for line in self.json_lines("verify", "first.lua") if "verdict" in line]
        self.assertGreater(len(points), 90)
        self.assertLessEqual({point["verdict"] for point in points}, {"agrees", "moving"})

        for device in plant:
            device.stop()
        files = sorted(os.listdir(first), key=lambda name: int(name.rsplit("-", 1)[1].split(".")[0]))
        self.assertEqual(len(files), len(DEVICES))
        self.start([os.path.join(first, name) for name in files])
        second = self.create("second")
        self.assertEqual(sorted(os.listdir(second)), sorted(files))
        for name in files:
            with self.subTest(name):
                self.assertTrue(filecmp.cmp(os.path.join(first, name), os.path.join(second, name), shallow=False))
        self.assertTrue(filecmp.cmp(first + ".lua", second + ".lua", shallow=False))
