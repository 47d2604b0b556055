"""The metrics of a run, as Prometheus reads and judges them."""

import os
import subprocess
import tempfile
import time
import unittest

from metrics import MetricsRun, promtool, promtool_is_missing
from programs import LONGEST, PLANT_PROJECT, ROOT, WORKBENCH, ExamplePlant

DOCUMENT = os.path.join(ROOT, "docs", "publish.md")


def block_of_document(first):
    """The indented text of the document that begins with this line."""
    with open(DOCUMENT, encoding="utf-8") as document:
        lines = document.read().splitlines()
    block = []
    for line in lines[lines.index("    " + first):]:
        if not line.startswith("    "):
            break
        block.append(line[4:])
    return "\n".join(block) + "\n"


def until(condition):
    end = time.monotonic() + LONGEST
    while not (result := condition()):
        if time.monotonic() > end:
            raise AssertionError("it has not come true")
        time.sleep(0.05)
    return result


class Metrics(unittest.TestCase):
    def setUp(self):
        self.plant = self.enterContext(ExamplePlant())

    def run_plant(self, *options, **named):
        return self.enterContext(MetricsRun(*self.plant.defines, *options, **named))

    def test_promtool_finds_nothing_in_a_scrape(self):
        if reason := promtool_is_missing():
            self.skipTest(reason)
        run = self.run_plant("--set", "AHU.Supply air setpoint=21.5")
        until(lambda: any(series.startswith("dorvel_variable_value") for series in run.samples()))
        status, kind, text = run.scrape()
        self.assertEqual((status, kind), (200, "text/plain; version=0.0.4; charset=utf-8"))
        self.assertEqual(promtool("check", "metrics", text=text), (0, ""))
        self.assertNotEqual(promtool("check", "metrics", text=text.replace("_total{", "_count{")), (0, ""))

    def test_values_figures_and_faults_are_those_of_the_run(self):
        run = self.run_plant()
        up = 'dorvel_block_up{block="Chiller"}'
        samples = until(lambda: (now := run.samples()) and now[up] == 1 and now)
        self.assertTrue(any(series.startswith('dorvel_variable_value{block="Chiller",') for series in samples))
        self.assertGreater(samples["dorvel_datagrams_received_total"], 0)
        self.assertGreater(samples["dorvel_round_trip_median_seconds"], 0)
        self.assertEqual(samples['dorvel_outlet_up{outlet="metrics"}'], 1)

        self.plant.devices["chiller"].stop()
        samples = until(lambda: (now := run.samples()) and now[up] == 0 and now)
        self.assertEqual(samples['dorvel_block_fault{block="Chiller"}'], 1)
        self.assertGreater(samples['dorvel_block_fault_cycles_total{block="Chiller"}'], 0)
        self.assertFalse(any(series.startswith('dorvel_variable_value{block="Chiller",') for series in samples))
        self.assertEqual(run.stop(), 0)

    def test_other_paths_and_names_are_refused(self):
        run = self.run_plant()
        self.assertEqual(run.scrape("/nothing")[0], 404)
        status, _, text = run.scrape(Host="evil.example")
        self.assertEqual(status, 403)
        self.assertIn("evil.example", text)

    def test_an_address_for_all_is_a_warning(self):
        run = self.run_plant(address="0.0.0.0:0")
        run.stop()
        self.assertTrue(any("everybody who reaches" in line for line in run.lines), run.lines)

    def test_a_port_that_is_in_use_ends_the_run_before_it_begins(self):
        first = self.run_plant()
        address = first.link.split("/")[2]
        second = subprocess.run(
            [WORKBENCH, "run", PLANT_PROJECT, *self.plant.defines, "--metrics", address, "--format", "lines", "--cycles", "1"],
            stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=LONGEST, check=False)
        self.assertEqual(second.returncode, 4)
        self.assertIn(f"--metrics: cannot listen at {address}: Address already in use", second.stderr)

    def test_the_examples_of_the_document_are_those_of_prometheus(self):
        if reason := promtool_is_missing():
            self.skipTest(reason)
        with tempfile.TemporaryDirectory() as folder:
            for check, first in (("rules", "groups:"), ("config", "scrape_configs:")):
                path = os.path.join(folder, check + ".yml")
                with open(path, "w", encoding="utf-8") as file:
                    file.write(block_of_document(first))
                code, text = promtool("check", check, path)
                self.assertEqual(code, 0, text)
                self.assertIn("SUCCESS", text)


if __name__ == "__main__":
    unittest.main()
