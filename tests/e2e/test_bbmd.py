"""The command discover as a foreign device of a BBMD."""

import unittest

from bbmd import DISTRIBUTE, REGISTER, REGISTER_NAK, Bbmd
from exploring import AHU, Exploring, run


def discover(bbmd, *words):
    return run("discover", "--bbmd", bbmd.address, "--timeout", "300", *words)


class ForeignDevice(Exploring):
    def test_devices_are_found_through_a_bbmd(self):
        devices = [self.device(AHU.replace("instance = 1001", f"instance = {instance}")) for instance in (1001, 1002)]
        with Bbmd(device.address for device in devices) as bbmd:
            result = discover(bbmd)
            self.assertEqual(result.code, 0, result.errors)
            self.assertEqual([(row["instance"], row["address"], row["name"], row["marks"]) for row in result.rows],
                             [("1001", devices[0].address, "AHU-1", ""), ("1002", devices[1].address, "AHU-1", "")])
            functions = [datagram[1] for datagram in bbmd.received]
        self.assertEqual(functions[0], REGISTER)
        self.assertEqual(functions.count(REGISTER), 1)
        self.assertEqual(set(functions[1:]), {DISTRIBUTE})
        self.assertLess(0, bbmd.time_to_live)

    def test_a_bbmd_that_does_not_register_is_a_failure_in_words(self):
        device = self.device(AHU)
        with Bbmd([device.address], registered=REGISTER_NAK) as bbmd:
            result = discover(bbmd)
            self.assertEqual((result.code, result.output), (4, ""))
            self.assertIn(bbmd.address, result.errors)
            self.assertRegex(result.errors, "(?i)register-foreign-device")
            self.assertNotIn(DISTRIBUTE, [datagram[1] for datagram in bbmd.received])

    def test_a_bbmd_that_does_not_distribute_is_a_failure_in_words(self):
        device = self.device(AHU)
        with Bbmd([device.address], distributes=False) as bbmd:
            result = discover(bbmd)
            self.assertEqual((result.code, result.output), (4, ""))
            self.assertRegex(result.errors, "(?i)distribute-broadcast-to-network")

    def test_no_bbmd_is_there(self):
        result = run("discover", "--bbmd", "127.0.0.1:9", "--timeout", "100")
        self.assertEqual((result.code, result.output), (4, ""))
        self.assertIn("127.0.0.1:9 does not answer", result.errors)


if __name__ == "__main__":
    unittest.main()
