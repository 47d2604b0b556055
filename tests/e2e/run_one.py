#!/usr/bin/env python3
"""Runs one test: run_one.py MODULE.CLASS.METHOD, in the folder of the module.

Exit code 0 passed, 1 failed, 77 skipped; a skipped test prints "SKIPPED: REASON".
"""

import os
import sys
import unittest

sys.path[:0] = [os.getcwd(), os.path.dirname(os.path.abspath(__file__))]


def main():
    suite = unittest.defaultTestLoader.loadTestsFromName(sys.argv[1])
    result = unittest.TextTestRunner(verbosity=2, stream=sys.stdout).run(suite)
    if not result.wasSuccessful() or not result.testsRun:
        return 1
    for _, reason in result.skipped:
        print(f"SKIPPED: {reason}")
    return 77 if result.skipped else 0


if __name__ == "__main__":
    sys.exit(main())
