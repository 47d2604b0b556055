"""The command discover on loopback: one address, a range, marks, networks behind routers."""

import unittest

from exploring import AHU, Exploring, run


class Discover(Exploring):
    def test_one_address(self):
        device = self.device(AHU)
        result = run("discover", device.address, "--timeout", "1000")
        self.assertEqual(result.code, 0, result.errors)
        (row,) = result.rows
        self.assertEqual((row["instance"], row["address"], row["name"], row["vendor"], row["model"], row["max apdu"],
                          row["segmentation"], row["marks"]),
                         ("1001", device.address, "AHU-1", "Example", "X1", "1476", "segmented-transmit", ""))

    def test_the_forms_say_the_same(self):
        device = self.device(AHU)
        table = run("discover", device.address, "--timeout", "1000", "--format", "table").output
        # Between them is a line if another test holds the BACnet port at the moment.
        self.assertRegex(table, r"1001  " + device.address + r"  AHU-1  Example \(\d+\)  X1 +1476  transmit\n(  Another .*\n)?"
                                r"1 device\n")
        found, summary = (o for o in run("discover", device.address, "--timeout", "1000", "--format", "json").objects
                          if o["kind"] in ("device", "summary"))
        self.assertEqual((found["instance"], found["name"], found["marks"]), (1001, "AHU-1", []))
        self.assertEqual(summary, {"kind": "summary", "devices": 1, "complete": True})

    def test_a_range_leaves_others_out(self):
        device = self.device(AHU)
        self.assertEqual(run("discover", device.address, "--timeout", "1000", "--range", "1-1000").code, 1)
        self.assertEqual(run("discover", device.address, "--timeout", "1000", "--range", "1001").code, 0)

    def test_devices_with_the_same_instance_are_marked(self):
        devices = [self.device(AHU) for _ in range(2)]
        result = run("discover", *(device.address for device in devices), "--timeout", "1000")
        self.assertEqual(result.code, 1)
        self.assertEqual([row["marks"] for row in result.rows], ["same-instance"] * 2)

    def test_a_device_whose_address_does_not_work_is_marked(self):
        device = self.device(AHU.replace("instance = 1001,", 'instance = 1001, faults = {fault{"silence"}},'))
        result = run("discover", device.address, "--timeout", "1000")
        self.assertEqual(result.code, 1)
        self.assertEqual([row["marks"] for row in result.rows], ["not-readable"])

    def assert_marked(self, fault, mark, words):
        device = self.device(AHU.replace("instance = 1001,", f"instance = 1001, faults = {{ {fault} }},"))
        found = next(o for o in run("discover", device.address, "--timeout", "1000", "--format", "json").objects
                     if o["kind"] == "device")
        self.assertEqual([m["mark"] for m in found["marks"]], [mark])
        self.assertRegex(found["marks"][0]["text"], words)
        result = run("discover", device.address, "--timeout", "1000", "--format", "table")
        self.assertEqual(result.code, 1)
        self.assertRegex(result.output, words)

    def test_a_device_that_answers_twice_is_marked(self):
        self.assert_marked('fault{"duplicate", on = "who_is"}', "answers-twice", r"it answered \d+ times to \d+ questions")

    def test_a_device_that_announces_another_instance_is_marked(self):
        self.assert_marked('fault{"other_instance", code = 7}', "other-instance",
                           "it announces the instance 7, and its Device object has 1001")

    def test_an_answer_from_an_address_that_does_not_work_is_marked(self):
        self.assert_marked('fault{"other_address", on = "who_is"}', "not-readable",
                           "it cannot be read at this address: it does not answer")

    def test_an_answer_that_cannot_be_read_is_a_note(self):
        device = self.device(AHU.replace("instance = 1001,",
                                         'instance = 1001, faults = {fault{"truncate", on = "who_is", octet = 12}},'))
        result = run("discover", device.address, "--timeout", "1000")
        self.assertEqual((result.code, result.rows), (1, []))
        self.assertIn("cannot be read", result.errors)

    def test_nobody_is_there(self):
        result = run("discover", "127.0.0.1:9", "--timeout", "200")
        self.assertEqual((result.code, result.rows), (1, []))

    def test_mistakes_and_failures_have_their_codes(self):
        self.assertEqual(run("discover", "--range", "9-1").code, 2)
        self.assertEqual(run("discover", "--range", "4194304").code, 2)
        self.assertEqual(run("discover", "10.0.0").code, 2)
        result = run("discover", "--interface", "nosuch0")
        self.assertEqual(result.code, 4)
        self.assertIn("lo (127.0.0.1)", result.errors)


if __name__ == "__main__":
    unittest.main()
