# SPDX-License-Identifier: MIT
"""Adds up what the last test runs found.

Usage: count_tests.py BUILD_FOLDER...

Reads each folder's ctest.xml, which lists the test programs that ran, and test-results/NAME.xml,
which GoogleTest writes for those that test-programs.txt names. Prints every failed test, and
"N passed, N failed" in the end.
A program that crashed, hung or wrote no results counts as one failed test, so does a folder
without results. A test that was skipped or disabled did not pass either: it counts as failed.
Exit code 1 when anything failed or nothing ran.
"""
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path


# Preparation, not tests; they count only when they fail.
FIXTURES = ("wine_prefix", "wine_prefix_C")


class Count:
    def __init__(self):
        self.passed = 0
        self.failed = 0

    def fail(self, name, reason):
        self.failed += 1
        print(f"failed: {name}: {reason}")


def count_cases(results, prefix, count):
    """Counts the tests of one GoogleTest program."""
    for case in ElementTree.parse(results).getroot().iter("testcase"):
        name = f"{prefix}: {case.get('classname')}.{case.get('name')}"
        failure = case.find("failure")
        if failure is not None:
            count.fail(name, (failure.get("message") or "").strip().splitlines()[0])
        elif case.get("status") == "notrun":
            count.fail(name, "disabled")
        elif case.get("result") != "completed":
            count.fail(name, case.get("result"))
        else:
            count.passed += 1


def count_program(program, folder, with_results, count):
    """Counts one test of ctest: a GoogleTest program, or a step without inner tests."""
    name = f"{folder.name}: {program.get('name')}"
    succeeded = program.get("status") == "run"
    results = folder / "test-results" / f"{program.get('name')}.xml"
    failed_before = count.failed
    if results.exists():
        try:
            count_cases(results, name, count)
        except ElementTree.ParseError as error:
            count.fail(name, f"unreadable results: {error}")
    elif program.get("name") in with_results:
        count.fail(name, "ended without results (crash, time limit or not built)")
    elif succeeded and program.get("name") not in FIXTURES:
        count.passed += 1
    if not succeeded and count.failed == failed_before:
        count.fail(name, "ended with an error")


def main():
    count = Count()
    for folder in map(Path, sys.argv[1:]):
        try:
            programs = ElementTree.parse(folder / "ctest.xml").getroot()
        except (FileNotFoundError, ElementTree.ParseError):
            count.fail(folder.name, "ctest did not run, or came to no end (see above)")
            continue
        with_results = (folder / "test-programs.txt").read_text().split()
        for program in programs.iter("testcase"):
            count_program(program, folder, with_results, count)
    print(f"{count.passed} passed, {count.failed} failed")
    return 1 if count.failed or not count.passed else 0


if __name__ == "__main__":
    if len(sys.argv) < 2 or sys.argv[1] in ("-h", "--help"):
        print(__doc__)
        sys.exit(2 if len(sys.argv) < 2 else 0)
    sys.exit(main())
