"""Compares the instructions of a poll with their budgets.

Usage: instructions.py FOLDER

FOLDER has the bench-stack of a release build. Exit code 1: a budget is exceeded, or nothing could be counted.
"""

import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent / "bench"))
import measure  # noqa: E402


def budgets():
    for line in (HERE / "budgets.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            workload, most, _ = line.split()
            yield workload, int(most)


def main():
    failed = checked = 0
    for workload, most in budgets():
        taken = measure.instructions(sys.argv[1], workload)
        failed += taken > most
        checked += 1
        print(f"{workload}: {taken:,.0f} instructions an object, {most:,} allowed{'' if taken <= most else ': TOO MANY'}")
    return 0 if checked and not failed else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except measure.Failure as failure:
        sys.exit(f"instructions.py: {failure}")
