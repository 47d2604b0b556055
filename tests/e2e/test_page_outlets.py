"""What the page shows of the systems that a run feeds besides it, in a real browser."""

import os
import sqlite3

from browser import Scenarios
from programs import LONGEST, PLANT, ROOT


class PageOutlets(Scenarios):
    # A recording whose name would be markup, if the page took it for that.
    NAME = "<img src=x onerror=alert(1)><b id=injected>.sqlite"

    def setUp(self):
        super().setUp()
        self.other = None
        self.start(os.path.join(ROOT, "examples", "plant.lua"), "--record", self.file(self.NAME), devices=[
            (name, os.path.join(ROOT, "examples", "devices", f"{device}.lua")) for name, device in PLANT.items()])

    def do_lock_recording(self):
        """Another program writes into the recording, until do_unlock_recording()."""
        self.other = sqlite3.connect(self.file(self.NAME), timeout=LONGEST, isolation_level=None, check_same_thread=False)
        self.addCleanup(self.other.close)
        self.other.execute("BEGIN IMMEDIATE")

    def do_unlock_recording(self):
        self.other.execute("ROLLBACK")

    def test_an_outlet_that_waits_is_a_notice_with_the_reason(self):
        self.play("outlets.one_that_waits_is_a_notice_with_the_reason")

    def test_axe_finds_nothing_while_an_outlet_waits(self):
        self.play("outlets.axe_finds_nothing_while_one_waits")

    def test_a_phone_shows_an_outlet_that_waits_without_scrolling_sideways(self):
        self.play("outlets.a_phone_shows_one_that_waits")
