# SPDX-License-Identifier: MIT
"""A private copy of the checkout, in which changes are built and tested one after the other."""
import os
import re
import resource
import shutil
import signal
import subprocess
import time

NATIVE, MEMORY, THREADS, WINDOWS = "native", "native-asan", "native-tsan", "windows-x64"
SHARDS = 3  # of a native test program: its tests wait most of their time
MEMORY_LIMIT = 4 << 30  # bytes, of a native program that a change has made greedy
FILE_LIMIT = 2 << 30
CONFIRMATIONS = 2
BUILD_LIMIT = 900  # seconds, and of a first run
PATIENCE = 5  # a test may take so many times what it takes without a change
SHORTEST_LIMIT = 30


def deadline(seconds=BUILD_LIMIT):
    return time.monotonic() + seconds


class LaneError(Exception):
    """The unchanged sources do not build, or their tests fail."""


def limited(native):
    def limit():
        resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_LIMIT, FILE_LIMIT))
        if native:
            resource.setrlimit(resource.RLIMIT_AS, (MEMORY_LIMIT, MEMORY_LIMIT))
    return limit


class Command:
    """A process group with its output in a file; ended as a whole when its time is over."""
    running = set()

    def __init__(self, arguments, log, folder, environment=None, native=False):
        self.log = open(log, "w+", errors="replace")
        self.process = subprocess.Popen(
            [str(argument) for argument in arguments], cwd=folder, stdin=subprocess.DEVNULL,
            stdout=self.log, stderr=subprocess.STDOUT, start_new_session=True,
            env=dict(os.environ, **(environment or {})), preexec_fn=limited(native))
        Command.running.add(self)

    def wait(self, deadline):
        """@return (whether it ended with 0, its output); None for the first when it had to be ended"""
        try:
            code = self.process.wait(max(0.1, deadline - time.monotonic()))
        except subprocess.TimeoutExpired:
            code = None
        self.end()
        self.log.seek(0)
        output = self.log.read()
        self.log.close()
        return (None if code is None else code == 0), output

    def end(self):
        try:
            os.killpg(self.process.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        self.process.wait()
        Command.running.discard(self)

    @staticmethod
    def end_all():
        """Of all lanes."""
        for command in list(Command.running):
            try:
                os.killpg(command.process.pid, signal.SIGKILL)
            except ProcessLookupError:
                pass


def failed_tests(output):
    """@return the names of GoogleTest's tests that failed, in their order"""
    return list(dict.fromkeys(re.findall(r"^\[  FAILED  \] (\w\S*\.[^\s,]+)", output, re.MULTILINE)))


def first_failure(commands, pattern, until):
    """Waits for all of them, or until one fails. @return None when none does, else what failed"""
    waiting, failure = list(commands), None
    while waiting and not failure and time.monotonic() < until:
        time.sleep(0.02)
        for command in [one for one in waiting if one.process.poll() is not None]:
            waiting.remove(command)
            good, output = command.wait(until)
            if not good:
                failure = (failed_tests(output) or [f"{pattern} (crashed)"])[0]
    for command in waiting:
        command.end()
        command.log.close()
    if waiting and not failure:
        failure = f"{pattern} (hangs)"
    return failure


class Lane:
    def __init__(self, root, number):
        self.root = root
        self.name = "mutate" + chr(ord("a") + number)
        self.folder = root / "build" / "mutate" / self.name
        self.limits = {}  # of a preset and tests: seconds
        self.tests = {}  # of a preset: all of ctest's names there

    # --- The copy --------------------------------------------------------------------------------

    def refresh(self):
        """Makes the copy like the checkout. A file that has not changed keeps its time."""
        listed = subprocess.run(["git", "-C", self.root, "ls-files", "-z", "-co", "--exclude-standard"],
                                check=True, capture_output=True, text=True).stdout
        files = {file for file in listed.split("\0") if file and (self.root / file).is_file()}
        for file in files:
            origin, copy = self.root / file, self.folder / file
            if copy.is_file() and copy.read_bytes() == origin.read_bytes():
                continue
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(origin, copy)  # with a new time, so that it is built
        for copy in self.folder.rglob("*"):
            file = copy.relative_to(self.folder).as_posix()
            if copy.is_file() and not file.startswith("build/") and file not in files:
                copy.unlink()

    def write(self, file, text):
        copy = self.folder / file
        if copy.read_text() != text:  # else it would be built for nothing
            copy.write_text(text)

    # --- Building and testing --------------------------------------------------------------------

    def build_folder(self, preset):
        return self.folder / "build" / preset

    def configure(self, preset):
        build = self.build_folder(preset)
        build.mkdir(parents=True, exist_ok=True)
        # A change may leave a variable unused, which is no reason not to build it.
        quiet = "-w -g1" if preset in (MEMORY, THREADS) else "-w"
        arguments = ["cmake", "--preset", preset, f"-DCMAKE_CXX_FLAGS={quiet}",
                     "-DVELQUIN_BUILD_BENCH=OFF"]
        good, output = Command(arguments, build / "configure.log", self.folder).wait(deadline())
        if not good:
            raise LaneError(f"{preset} cannot be configured:\n{output}")
        listed = subprocess.run(["ctest", "--test-dir", build, "-N"], check=True, capture_output=True,
                                text=True).stdout
        self.tests[preset] = re.findall(r"^ *Test *#\d+: (\S+)$", listed, re.MULTILINE)

    def names(self, preset, pattern):
        return [name for name in self.tests[preset] if re.fullmatch(pattern, name)]

    def build(self, preset, pattern):
        """@return (whether it was built, the compilers' output)"""
        # A test is named after its target, and has a dot and a name of its own where one has several.
        targets = sorted({name.split(".")[0] for name in self.names(preset, pattern)})
        build = self.build_folder(preset)
        arguments = ["cmake", "--build", build, "-j1", "--target", *targets]
        return Command(arguments, build / "build.log", self.folder).wait(deadline())

    def run(self, preset, pattern, only=None):
        """@param only a test of GoogleTest's. @return None when the tests pass, else what failed"""
        build = self.build_folder(preset)
        environment = {"GTEST_FAIL_FAST": "1"}
        if only:
            environment["GTEST_FILTER"] = only
        program = build / "bin" / pattern
        if preset != WINDOWS and program.is_file() and pattern.endswith("_tests"):
            count = 1 if only else SHARDS
            commands = [
                Command([program], build / f"shard{index}.log", build / "test-work",
                        dict(environment, GTEST_TOTAL_SHARDS=str(count), GTEST_SHARD_INDEX=str(index)),
                        preset == NATIVE) for index in range(count)]
        else:
            arguments = ["ctest", "--test-dir", build, "-R", f"^({pattern})$", "--stop-on-failure",
                         "--output-on-failure"]
            if preset == WINDOWS:
                arguments = [self.folder / "scripts" / "wine-lane", self.name, *arguments]
            commands = [Command(arguments, build / "test.log", self.folder, environment, preset == NATIVE)]
        limit = self.limits.get((preset, pattern), BUILD_LIMIT)
        return first_failure(commands, pattern, deadline(limit))

    def is_ready(self, preset, pattern):
        return (preset, pattern) in self.limits

    def make_ready(self, preset, pattern):
        """Builds the tests of the unchanged sources, which have to pass, and takes their time."""
        if preset not in self.tests:
            self.configure(preset)
        good, output = self.build(preset, pattern)
        if not good:
            raise LaneError(f"{preset} cannot be built:\n{output}")
        began = time.monotonic()
        failure = self.run(preset, pattern) and self.run(preset, pattern)
        if failure:
            raise LaneError(f"{preset}: {failure} fails without any change")
        took = time.monotonic() - began
        self.limits[preset, pattern] = max(SHORTEST_LIMIT, PATIENCE * took)

    def noticed(self, preset, pattern):
        """Builds and runs tests. @return what failed, "" for nothing, None when it does not compile.
        A test that fails must do so again: on a busy machine one of the rhythm may fail by itself."""
        good, _ = self.build(preset, pattern)
        if not good:
            return None
        for _ in range(CONFIRMATIONS):
            failure = self.run(preset, pattern)
            if not failure:
                return ""
            if failure.endswith(")") or self.run(preset, pattern, failure):
                return failure
        return ""
