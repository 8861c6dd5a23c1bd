# SPDX-License-Identifier: MIT
"""Runs the fuzzers of build/native-fuzz; scripts/fuzz is how a person calls it.

Usage: run_fuzzers.py REPOSITORY [--jobs N] [--runs N] [--seed N] [--keep] [TARGET...]

Prints a line of a Markdown table for each target as it ends, and exits with 1 when one found
something or did not make its executions.
"""
import argparse
import json
import os
import re
import shutil
import subprocess
import sys
import time
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

import fuzz_corpus

# Small texts on the heap are most of what happens: short memories of who asked for them.
ASAN_OPTIONS = "malloc_context_size=4:quarantine_size_mb=16:detect_leaks=1"
CODE_REGION = 0  # llvm-cov's number for it
HEADINGS = ("target", "executions", "findings", "per second", "regions reached", "branches reached")


class Target:
    def __init__(self, build, line):
        self.name, self.length, covers, *functions = line.split()
        self.program = build / "bin" / f"fuzz_{self.name}"
        self.covers = covers.split(",")
        self.functions = functions[0].split(",") if functions else []

    def counts(self, mangled):
        return not self.functions or any(name in mangled for name in self.functions)


class Runner:
    def __init__(self, repository, arguments):
        self.repository = repository
        self.build = repository / "build" / "native-fuzz"
        self.work = self.build / "fuzz-work"
        self.findings = self.build / "findings"
        self.arguments = arguments

    def targets(self):
        lines = (self.build / "fuzzers.txt").read_text().splitlines()
        targets = [Target(self.build, line) for line in lines]
        wanted = self.arguments.targets
        return [target for target in targets if not wanted or target.name in wanted]

    def kept(self, target):
        return self.repository / "tests" / "fuzz" / "corpus" / f"{target.name}.txt"

    def run_program(self, target, options, folders):
        environment = dict(os.environ, ASAN_OPTIONS=ASAN_OPTIONS)
        environment["LLVM_PROFILE_FILE"] = str(self.work / f"{target.name}.profraw")
        command = [target.program, f"-max_len={target.length}", "-timeout=20", *options, *folders]
        return subprocess.run(
            command, env=environment, capture_output=True, text=True, errors="replace",
            cwd=self.work,
        )

    def fuzz(self, target):
        """Returns a row of the table, and whether all went well."""
        corpus = self.work / target.name
        shutil.rmtree(corpus, ignore_errors=True)
        fuzz_corpus.unpack(self.kept(target), corpus)
        words = self.repository / "tests" / "fuzz" / "words.dict"
        start = time.monotonic()
        result = self.run_program(
            target,
            [f"-runs={self.arguments.runs}", f"-seed={self.arguments.seed}", f"-dict={words}",
             f"-artifact_prefix={self.findings}/{target.name}-", "-print_final_stats=1"],
            [corpus],
        )
        seconds = time.monotonic() - start
        made = re.search(r"stat::number_of_executed_units: *(\d+)", result.stderr)
        executions = int(made.group(1)) if made else 0
        good = result.returncode == 0 and executions >= self.arguments.runs
        if not good:
            print(self.explained(target, result), flush=True)
        regions, branches = self.coverage(target) if good else ("", "")
        row = (target.name, f"{executions:,}", "0" if good else "1",
               f"{executions / seconds:,.0f}", regions, branches)
        return row, good

    def explained(self, target, result):
        """What a person needs of a fuzzer's talk: from the first sign of a finding on."""
        lines = result.stderr.splitlines()
        signs = re.compile(r"broken property|runtime error|==ERROR|== ERROR|terminate called")
        first = next((i for i, line in enumerate(lines) if signs.search(line)), len(lines) - 15)
        shown = "\n".join(lines[max(first, 0):][:40])
        return f"{target.name}: exit code {result.returncode}\n{shown}"

    def coverage(self, target):
        """Returns how many of the regions (stretches of code that run as a whole) and of the
        branches were reached; writes down where the others are."""
        raw = self.work / f"{target.name}.profraw"
        data = self.work / f"{target.name}.profdata"
        subprocess.run(["llvm-profdata", "merge", "-sparse", raw, "-o", data], check=True)
        exported = subprocess.run(
            ["llvm-cov", "export", target.program, f"-instr-profile={data}"],
            capture_output=True, text=True, check=True,
        ).stdout
        regions, branches = {}, {}
        for function in json.loads(exported)["data"][0]["functions"]:
            source = next((name for name in target.covers
                           if function["filenames"][0].endswith("/" + name)), None)
            if source is None or not target.counts(function["name"]):
                continue
            for line, column, _, _, count, file, _, kind in function["regions"]:
                if kind == CODE_REGION and file == 0:
                    key = (source, line, column)
                    regions[key] = regions.get(key, 0) + count
            for line, column, _, _, taken, passed, file, _, _ in function["branches"]:
                for outcome, count in (("true", taken), ("false", passed)):
                    key = (source, line, column, outcome)
                    branches[key] = branches.get(key, 0) + count
        missed = [key for found in (regions, branches) for key, count in found.items() if count == 0]
        (self.work / f"{target.name}.missed.txt").write_text(
            "".join(":".join(map(str, key)) + "\n" for key in sorted(missed)))
        return self.share(regions), self.share(branches)

    @staticmethod
    def share(counts):
        reached = sum(1 for count in counts.values() if count > 0)
        return f"{reached} of {len(counts)}"

    def keep(self, target):
        """Replaces the kept inputs by the smallest set that reaches as much as all of them."""
        smallest = self.work / f"{target.name}-smallest"
        shutil.rmtree(smallest, ignore_errors=True)
        smallest.mkdir()
        # Whether an edge was ever passed counts here, not how often.
        result = self.run_program(
            target, ["-merge=1", "-use_counters=0", "-use_value_profile=0"],
            [smallest, self.work / target.name],
        )
        if result.returncode != 0:
            sys.exit(self.explained(target, result))
        count = fuzz_corpus.pack(smallest, self.kept(target))
        print(f"{self.kept(target).relative_to(self.repository)}: {count} inputs")

    def run(self):
        self.work.mkdir(exist_ok=True)
        self.findings.mkdir(exist_ok=True)
        print("| " + " | ".join(HEADINGS) + " |")
        print("|---" + "|--:" * (len(HEADINGS) - 1) + "|", flush=True)
        targets = self.targets()

        def one(target):
            row, good = self.fuzz(target)
            print("| " + " | ".join(row) + " |", flush=True)
            return good

        with ThreadPoolExecutor(self.arguments.jobs) as pool:
            all_good = all(list(pool.map(one, targets)))
        if all_good and self.arguments.keep:
            for target in targets:
                self.keep(target)
        return 0 if all_good and targets else 1


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("repository", type=Path)
    parser.add_argument("--jobs", type=int, default=1)
    parser.add_argument("--runs", type=int, default=1000000)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--keep", action="store_true")
    parser.add_argument("targets", nargs="*")
    arguments = parser.parse_intermixed_args()
    return Runner(arguments.repository.resolve(), arguments).run()


if __name__ == "__main__":
    sys.exit(main())
