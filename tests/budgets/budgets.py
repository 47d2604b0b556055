"""Compares instructions and cache misses with their budgets (budgets.txt).

Usage: budgets.py FOLDER            of bench-stack in FOLDER, a release build for x86-64
       budgets.py FOLDER PLUGIN     of bench-stack in FOLDER, built for ARM, counted by the emulator's PLUGIN
       budgets.py FOLDER --growth   instructions of an object among 10 and among 10,000, which must be the same
       budgets.py PAGE --page       of the measured figures that PAGE has in a table with the lines of budgets.txt

Exit code 1: a budget is exceeded or far from used up, or nothing could be counted. 3: this emulator cannot load the PLUGIN.
"""

import pathlib
import sys

HERE = pathlib.Path(__file__).resolve().parent
sys.path.insert(0, str(HERE.parent.parent / "bench"))
import measure  # noqa: E402

LEAST_USE = 0.75  # of a budget; a lower figure is a budget that no longer protects anything
FLAT = 1.10
LOOSEST = 1.25  # the most that a budget may exceed the figure on the page
CANNOT_COUNT = 3


def rows():
    """The name, the workload and the figures of every line: instructions, those of ARM, ..., cache misses."""
    for line in (HERE / "budgets.txt").read_text().splitlines():
        if line and not line.startswith("#"):
            subject, workload, *figures = line.split()
            yield subject, workload, [None if figure == "-" else float(figure) for figure in figures]


def instructions(folder, subject, workload, counter):
    if subject == "load":
        return measure.loading(folder, workload, counter=counter)
    return measure.instructions(folder, workload, hosted=subject == "block", counter=counter)


def is_kept(name, taken, what, most, least=0):
    verdict = ": TOO MANY" if taken > most else ": lower the budget to a tenth above it" if taken < least else ""
    print(f"{name}: {taken:,.1f} {what}, {most:,.1f} allowed{verdict}", flush=True)
    return least <= taken <= most


def is_budgeted(name, taken, what, budget):
    return is_kept(name, taken, what, budget, LEAST_USE * budget)


def check(folder, counter):
    results = []
    for subject, workload, (x86, arm, *_, misses) in rows():
        name = f"{subject} {workload}"
        most = arm if counter else x86
        if most is not None:
            results.append(is_budgeted(name, instructions(folder, subject, workload, counter), "instructions", most))
        if misses is not None and not counter:
            taken = measure.cache_misses(folder, workload, hosted=subject == "block")
            results.append(is_budgeted(name, taken, "cache misses", misses))
    return results


def check_growth(folder):
    results = []
    for subject in ("client", "block"):
        few, many = (measure.instructions(folder, "properties-3", objects, hosted=subject == "block")
                     for objects in (10, 10000))
        results.append(is_kept(f"{subject} of 10,000 objects", many, "instructions an object", FLAT * few))
    return results


def check_page(page):
    lines = [line.strip("|").split("|") for line in pathlib.Path(page).read_text().splitlines() if line.startswith("|")]
    measured = {cells[0].strip(): [cell.strip().replace(",", "") for cell in cells[1:]] for cells in lines}
    results = []
    for subject, workload, budgets in rows():
        name = f"{subject} {workload}"
        figures = [float(cell) if cell else None for cell in measured.get(f"`{name}`", [])]
        agrees = len(figures) == len(budgets) and all(
            most is None if figure is None else most is not None and figure <= most <= LOOSEST * figure + 1
            for figure, most in zip(figures, budgets))
        results.append(agrees)
        if not agrees:
            print(f"{page}: {name}: the page has {figures}, the budgets are {budgets}: measure again")
    return results


def main():
    folder, mode = sys.argv[1], sys.argv[2] if len(sys.argv) > 2 else None
    if mode == "--growth":
        results = check_growth(folder)
    elif mode == "--page":
        results = check_page(folder)
    else:
        results = check(folder, mode and measure.target_counter(mode))
    return 0 if results and all(results) else 1


if __name__ == "__main__":
    try:
        sys.exit(main())
    except measure.Failure as failure:
        print(f"budgets.py: {failure}", file=sys.stderr)
        sys.exit(CANNOT_COUNT if "API version" in str(failure) else 1)
