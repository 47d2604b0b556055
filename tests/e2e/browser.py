"""Plays the scenarios of tests/page in a browser: the simulators, the workbench with its page, and the script that drives it."""

import json
import os
import re
import shutil
import signal
import subprocess
import threading

from programs import LONGEST, ROOT, SIMULATOR, WORKBENCH, EndToEnd, Server
from reading import read_device

FOLDER = os.path.join(ROOT, "tests", "page")

# Ends a run of the workbench that a test, killed by its time-out, could not end.
MOST_CYCLES = "3000"


def node_is_missing():
    """The reason why scripts cannot run here; empty when they can."""
    node = shutil.which("node")
    if not node:
        return "Node.js 18 or newer is missing"
    version = subprocess.run([node, "--version"], stdout=subprocess.PIPE, text=True, check=False).stdout.strip()
    if not version.startswith("v") or int(version[1:].split(".")[0]) < 18:
        return f"Node.js 18 or newer is missing (found {version})"
    return ""


def browser_is_missing():
    """The reason why no scenario can be played here; empty when they can."""
    if not shutil.which("chromium"):
        return "Chromium is missing (scripts/setup test installs it)"
    if not all(os.path.isdir(os.path.join(FOLDER, "node_modules", name)) for name in ("playwright-core", "axe-core")):
        return "the npm packages of tests/page are missing (scripts/setup test installs them)"
    return node_is_missing()


class Workbench:
    """A run with the page; link is what it printed."""

    def __init__(self, *arguments):
        self._process = subprocess.Popen(
            [WORKBENCH, "run", *arguments, "--format", "lines", "--cycles", MOST_CYCLES, "--page"],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self._lines, self._isReady = [], threading.Event()
        self.link = None
        self._reader = threading.Thread(target=self._read, daemon=True)
        self._reader.start()
        if not self._isReady.wait(LONGEST) or self.link is None:
            self.stop()
            raise AssertionError("the workbench printed no link: " + "".join(self._lines))

    def _read(self):
        for line in self._process.stdout:
            self._lines = self._lines[-50:] + [line]
            found = self.link is None and re.search(r"http://\S+\?token=\S+", line)
            if found:
                self.link = found[0]
                self._isReady.set()
        self._isReady.set()

    def stop(self):
        self._process.send_signal(signal.SIGINT)
        code = self._process.wait(timeout=LONGEST)
        self._reader.join()
        self._process.stdout.close()
        return code


class Scenarios(EndToEnd):
    """Plays scenarios against a plant; each asks this side for what a browser cannot do (the methods named do_...)."""

    def setUp(self):
        super().setUp()
        reason = browser_is_missing()
        if reason:
            self.skipTest(reason)
        self.devices, self.workbench_with_page = {}, None

    def start(self, project, *options, devices=(), writes=True):
        """Starts the devices (pairs of a name and the path of a file) and the workbench."""
        defines = []
        for name, path in devices:
            self.devices[name] = Server(SIMULATOR, path, "--port", "0", "--bind", "127.0.0.1", "--exit-with-stdin")
            self.addCleanup(self.devices[name].stop)
            defines += ["--define", f"{name}={self.devices[name].address}"]
        self.project, self.defines = project, defines
        self.workbench_with_page = Workbench(project, *defines, *options, *(["--page-writes"] if writes else []))
        self.addCleanup(self.workbench_with_page.stop)

    def do_read(self, device, *references):
        """What the device answers by the standard; a reference is TYPE,INSTANCE,PROPERTY in numbers."""
        rows, _ = read_device(self.devices[device].address, *references)
        return [row[2] for row in rows]

    def do_command(self, device, line):
        self.devices[device].command(line)

    def do_set(self, assignment):
        """Another client of the device writes a value."""
        subprocess.run([WORKBENCH, "run", self.project, *self.defines, "--cycles", "2", "--set", assignment, "--fail-on", "refused"],
                       stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, timeout=LONGEST, check=True)

    def do_stop_device(self, device):
        self.devices[device].stop()

    def do_stop_workbench(self):
        return self.workbench_with_page.stop()

    def play(self, scenario, longest=LONGEST, **settings):
        """Plays FILE.NAME of tests/page/scenarios; settings are further variables of its environment."""
        environment = dict(os.environ, HOME=self.folder, TMPDIR=self.folder, PAGE_LINK=self.workbench_with_page.link,
                           PAGE_BROWSER=shutil.which("chromium"), **settings)
        with subprocess.Popen(["node", "play.mjs", scenario], cwd=FOLDER, env=environment, stdin=subprocess.PIPE,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, bufsize=1) as script:
            clock = threading.Timer(longest, script.kill)
            clock.start()
            try:
                output = "".join(line for line in script.stdout if not self._answered(line, script))
            finally:
                clock.cancel()
                script.kill()
        self.assertEqual(script.returncode, 0, "\n" + output)

    def _answered(self, line, script):
        if not line.startswith("ask "):
            return False
        name, *arguments = json.loads(line[4:])
        try:
            answer = {"result": getattr(self, "do_" + name)(*arguments)}
        except Exception as mistake:  # the scenario fails with it
            answer = {"mistake": f"{name}: {mistake}"}
        script.stdin.write(json.dumps(answer) + "\n")
        return True
