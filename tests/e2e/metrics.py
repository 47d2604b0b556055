"""A run with its metrics, and Prometheus' own tool."""

import re
import shutil
import signal
import subprocess
import urllib.error
import urllib.request

from programs import LONGEST, PLANT_PROJECT, WORKBENCH


def promtool_is_missing():
    """The reason why nothing can be checked by it; empty when it can."""
    return "" if shutil.which("promtool") else "promtool is missing (scripts/setup test installs it)"


def promtool(*arguments, text=None):
    """Its exit code and its output."""
    run = subprocess.run(["promtool", *arguments], input=text, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                         timeout=LONGEST, check=False)
    return run.returncode, run.stdout


class MetricsRun:
    """dorvel-workbench run --metrics, until the end of its scope."""

    def __init__(self, *options, address="127.0.0.1:0", project=PLANT_PROJECT):
        self._process = subprocess.Popen(
            [WORKBENCH, "run", project, *options, "--metrics", address, "--format", "lines"], stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True)
        self.lines, self.link = [], None
        for line in self._process.stderr:
            self.lines.append(line.strip())
            found = re.search(r"metrics: (http://\S+)", line)
            if found:
                self.link = found[1]
                break
        else:
            raise AssertionError(f"the program has printed no address: {self.lines}")

    def scrape(self, path="", **headers):
        """Status, type and text of an answer."""
        request = urllib.request.Request(self.link + path, headers=headers)
        try:
            with urllib.request.urlopen(request, timeout=LONGEST) as response:
                return response.status, response.headers["Content-Type"], response.read().decode()
        except urllib.error.HTTPError as error:
            with error:
                return error.code, error.headers["Content-Type"], error.read().decode()

    def samples(self):
        """Numbers by their series, as they are written."""
        lines = [line for line in self.scrape()[2].splitlines() if not line.startswith("#")]
        return {series: float(number) for series, _, number in (line.rpartition(" ") for line in lines)}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.stop()

    def stop(self):
        """Ends it as Ctrl-C does; its exit code. Its last lines are in `lines`."""
        if self._process.poll() is None:
            self._process.send_signal(signal.SIGINT)
            self.lines += [line.strip() for line in self._process.stderr]
        code = self._process.wait(timeout=LONGEST)
        self._process.stderr.close()
        return code
