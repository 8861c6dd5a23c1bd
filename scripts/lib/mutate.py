# SPDX-License-Identifier: MIT
"""Makes single changes to the product and reports those that no test notices; scripts/mutate is how
a person calls it.

Usage: mutate.py REPOSITORY [--jobs N] [--named] [--list] [--count N] [--seed N] [--rule NAME]
                 [--native | --windows] [FOLDER|FILE...]
"""
import argparse
import fcntl
import queue
import random
import re
import signal
import sys
import threading
import time
from pathlib import Path

import mutations
from mutation_lane import MEMORY, NATIVE, THREADS, WINDOWS, Command, Lane, LaneError

PLACES = ["library/engine", "core"]
UNBUILT, SURVIVED = "does not compile", "SURVIVED"
# A change to these may show under a sanitizer only.
ABOUT_THREADS = re.compile(r"Lock\b|lock_guard|unique_lock|std::atomic|memory_order")
ABOUT_MEMORY = re.compile(r"free\(|alloc\(|\bdelete\b|\bnew\b|\.reset\(|\bmem(move|cpy|chr)\b")
# What runs under the thread sanitizer: see scripts/test.
THREADED_PROGRAMS = ("engine_tests", "framework_tests", "log_tests", "mount_tests",
                     "net_tests", "platform_tests",
                     "simulator_tests")


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("repository", type=Path)
    parser.add_argument("places", nargs="*")
    for flag in ("--named", "--list", "--native", "--windows"):
        parser.add_argument(flag, action="store_true")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--count", type=int)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--rule", action="append", default=[])
    arguments = parser.parse_intermixed_args()
    arguments.repository = arguments.repository.resolve()
    return arguments


class Coverage:
    """Which tests cover which file; scripts/mutate.d/programs.txt."""

    def __init__(self, path, presets):
        self.rows = {}
        self.presets = presets
        for _, line in mutations.content_lines(path):
            folder, native, windows = (cell.strip() for cell in line.split("|"))
            split = lambda cell: [] if cell == "-" else cell.split()
            self.rows[folder] = {NATIVE: split(native), WINDOWS: split(windows)}

    def of(self, change):
        """@return the (preset, pattern) to try, in this order"""
        rows = [folder for folder in self.rows if change.file.startswith(folder + "/")]
        row = dict(self.rows[max(rows, key=len)]) if rows else {}
        lines = "\n".join(change.before)
        if ABOUT_MEMORY.search(lines):
            row[MEMORY] = row.get(NATIVE, [])
        if ABOUT_THREADS.search(lines):
            row[THREADS] = [name for name in row.get(NATIVE, []) if name in THREADED_PROGRAMS]
        return [(preset, pattern) for preset in self.presets for pattern in row.get(preset, [])]


def choose_changes(root, arguments):
    lists = root / "scripts" / "mutate.d"
    places = arguments.places or (list(mutations.FOLDERS) if arguments.named else PLACES)
    files = mutations.files_of(root, places)
    if arguments.named:
        changes = mutations.listed_changes(root, lists / "named.txt")
        changes, left_out = [change for change in changes if change.file in files], 0
    else:
        rules = mutations.read_rules(lists / "rules.txt")
        unknown = set(arguments.rule) - {rule.name for rule in rules}
        if unknown:
            raise mutations.ListError("no such rule: " + ", ".join(sorted(unknown)))
        if arguments.rule:
            rules = [rule for rule in rules if rule.name in arguments.rule]
        changes = mutations.rule_changes(root, rules, files)
        changes, left_out = mutations.without_equivalent(root, changes, lists / "equivalent.txt")
    if arguments.count is not None and arguments.count < len(changes):
        chosen = random.Random(arguments.seed).sample(range(len(changes)), arguments.count)
        changes = [changes[index] for index in sorted(chosen)]
    return changes, left_out


class Run:
    def __init__(self, root, coverage, changes, report):
        self.root = root
        self.coverage = coverage
        self.report_file = report
        self.changes = queue.Queue()
        for change in changes:
            self.changes.put(change)
        self.total = len(changes)
        self.lock = threading.Lock()
        self.results = []  # (change, result, by what)
        self.error = None

    def say(self, text):
        with self.lock:
            print(text, flush=True)
            print(text, file=self.report_file, flush=True)

    def try_change(self, lane, change):
        source = (lane.folder / change.file).read_text()
        try:
            for preset, pattern in self.coverage.of(change):
                if not lane.is_ready(preset, pattern):
                    lane.write(change.file, source)
                    lane.make_ready(preset, pattern)
                lane.write(change.file, change.applied(source))
                failure = lane.noticed(preset, pattern)
                if failure is None:
                    return UNBUILT, ""
                if failure:
                    return "noticed", failure if preset == NATIVE else f"{failure} in {preset}"
            return SURVIVED, ""
        finally:
            lane.write(change.file, source)

    def work(self, lane):
        try:
            lane.refresh()
            while self.error is None:
                change = self.changes.get_nowait()
                began = time.monotonic()
                result, by = self.try_change(lane, change)
                if self.error is not None:
                    break
                with self.lock:
                    self.results.append((change, result, by))
                    done = len(self.results)
                took = time.monotonic() - began
                text = change.shown() if result == SURVIVED else str(change)
                self.say(f"[{done}/{self.total}] {result} {by} ({took:.0f} s): {text}")
        except queue.Empty:
            pass
        except Exception as error:  # the other lanes end, too
            self.error = error

    def run(self, jobs):
        threads = [threading.Thread(target=self.work, args=(Lane(self.root, index),))
                   for index in range(min(jobs, self.total))]
        for thread in threads:
            thread.start()
        try:
            for thread in threads:
                thread.join()
        except KeyboardInterrupt:
            self.error = LaneError("interrupted")
            Command.end_all()
            for thread in threads:
                thread.join()
        if self.error is not None:
            raise self.error

    def print_summary(self, left_out):
        survivors = [change for change, result, _ in self.results if result == SURVIVED]
        unbuilt = sum(result == UNBUILT for _, result, _ in self.results)
        self.say("")
        for change in sorted(survivors, key=lambda change: (change.file, change.begin)):
            self.say(change.shown())
        self.say(f"{len(self.results)} changes: {len(self.results) - unbuilt - len(survivors)} noticed, "
                 f"{unbuilt} did not compile, {len(survivors)} survived; {left_out} known to make no "
                 "difference were left out")
        return len(survivors)


def only_one(lock):
    try:
        fcntl.flock(lock, fcntl.LOCK_EX | fcntl.LOCK_NB)
    except BlockingIOError:
        raise LaneError("another scripts/mutate is at work in this checkout") from None


def main():
    for number in (signal.SIGINT, signal.SIGTERM):  # in the background, too
        signal.signal(number, signal.default_int_handler)
    arguments = parse_arguments()
    root = arguments.repository
    presets = [NATIVE, MEMORY, THREADS, WINDOWS]
    if arguments.native or arguments.windows:
        presets = presets[:-1] * arguments.native + [WINDOWS] * arguments.windows
    coverage = Coverage(root / "scripts" / "mutate.d" / "programs.txt", presets)
    try:
        changes, left_out = choose_changes(root, arguments)
        changes = [change for change in changes if coverage.of(change)]
        if arguments.list:
            for change in changes:
                print(change.shown())
            print(f"{len(changes)} changes")
            return 0
        work = root / "build" / "mutate"
        work.mkdir(parents=True, exist_ok=True)
        with open(work / "lock", "w") as lock, open(work / "report.txt", "a") as report:
            only_one(lock)
            report.truncate(0)
            run = Run(root, coverage, changes, report)
            try:
                run.run(arguments.jobs)
            finally:
                survivors = run.print_summary(left_out)
            return 1 if survivors else 0
    except (mutations.ListError, LaneError) as error:
        print(f"mutate: {error}", file=sys.stderr)
        return 2


if __name__ == "__main__":
    sys.exit(main())
