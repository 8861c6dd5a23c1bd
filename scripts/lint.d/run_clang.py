# SPDX-License-Identifier: MIT
"""Runs clang over every file of compile databases, as many at once as there are processors.

Usage: run_clang.py warnings|tidy REPOSITORY DATABASE_FOLDER...

  warnings  clang's own warnings and its thread-safety analysis
  tidy      clang-tidy with the repository's .clang-tidy, but not over the tests: for each of them
            it would read all of GoogleTest, which takes it about five seconds a file. A file that
            was found clean is not looked at again until its preprocessed text or the settings
            change; the databases' parent folder remembers.

Prints what is found, a line of figures last, and exits with 1 when there was anything.
"""
import hashlib
import json
import os
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

WARNINGS = ["-fsyntax-only", "-Wthread-safety", "-Werror"]


def run(command, folder):
    return subprocess.run(command, cwd=folder, capture_output=True, text=True)


def check_warnings(entry):
    result = run(shlex.split(entry["command"]) + WARNINGS, entry["directory"])
    return "" if result.returncode == 0 else result.stderr


class Tidy:
    def __init__(self, repository, memory):
        self.repository = repository
        self.memory = memory
        self.memory.mkdir(parents=True, exist_ok=True)
        settings = run(["clang-tidy", "--version"], repository).stdout
        self.settings = (settings + (repository / ".clang-tidy").read_text()).encode()
        self.seen = set()

    def key(self, entry):
        # -C: comments count, they may silence a finding.
        text = run(shlex.split(entry["command"]) + ["-E", "-C"], entry["directory"])
        if text.returncode != 0:
            return None
        return hashlib.sha256(self.settings + text.stdout.encode()).hexdigest()

    def check(self, entry, database):
        key = self.key(entry)
        self.seen.add(key)
        if key and (self.memory / key).exists():
            return ""
        headers = f"--header-filter=^{self.repository}/"
        result = run(
            ["clang-tidy", "--quiet", f"-p={database}", headers, entry["file"]], self.repository
        )
        if result.returncode != 0:
            # Standard error only counts what was kept to itself, unless the tool itself failed.
            return result.stdout or result.stderr
        if key:
            (self.memory / key).touch()
        return ""

    def forget_the_rest(self):
        for path in self.memory.iterdir():
            if path.name not in self.seen:
                path.unlink()


def main():
    mode, repository = sys.argv[1], Path(sys.argv[2]).resolve()
    folders = [Path(folder).resolve() for folder in sys.argv[3:]]
    tidy = Tidy(repository, folders[0].parent / "tidy-clean") if mode == "tidy" else None
    jobs = []
    for folder in folders:
        for entry in json.loads((folder / "compile_commands.json").read_text()):
            if tidy is not None and Path(entry["file"]).is_relative_to(repository / "tests"):
                continue
            jobs.append((check_warnings, entry) if tidy is None else (tidy.check, entry, folder))
    with ThreadPoolExecutor(int(os.environ.get("JOBS", os.cpu_count()))) as pool:
        findings = [text for text in pool.map(lambda job: job[0](*job[1:]), jobs) if text]
    for text in findings:
        print(text)
    if tidy is not None:
        tidy.forget_the_rest()
    print(f"{len(jobs)} files, {len(findings)} with findings")
    return 1 if findings or not jobs else 0


if __name__ == "__main__":
    if len(sys.argv) < 4 or sys.argv[1] not in ("warnings", "tidy"):
        sys.exit(__doc__)
    sys.exit(main())
