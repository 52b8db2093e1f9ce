"""Runs GoogleTest programs so that they tell soon, and reliably, whether a test notices something."""

import json
import os
import pathlib
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import time

# A test program that a change sends into an endless allocation must not take the machine with it.
TEST_MEMORY_BYTES = 8 * 1024**3

# What suites may take beyond three times their usual length: a machine can be busy for a while.
SPARE_SECONDS = 30

# How long a test program may say nothing. It tells of the start and the end of each test, the longest of which takes
# a quarter of this.
SILENT_SECONDS = 60

FAILED_CASE = re.compile(r"^\[  FAILED  \] (\w\S*\.\w\S*?)[, ]", re.MULTILINE)

CAUGHT, TIMED_OUT, NOT_COMPILED, SURVIVED = "caught", "timed out", "does not compile", "survived"


class Failure(Exception):
    """Something that ends the whole run, told to the user without a stack trace."""


class Displays:
    """Displays of the tests' own, one for each process, since windows take the focus from one another. None where this
    machine can't make any: tests use the user's then."""

    def __init__(self, count):
        self.count, self.servers, self.names = count, [], []

    def __enter__(self):
        for _ in range(self.count if shutil.which("Xvfb") else 0):
            reader, writer = os.pipe()
            self.servers.append(subprocess.Popen(
                ["Xvfb", "-displayfd", str(writer), "-screen", "0", "1600x1200x24", "-noreset"],
                pass_fds=[writer], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
            ))
            os.close(writer)

            with os.fdopen(reader) as pipe:
                self.names.append(":" + pipe.readline().strip())

        return self.names

    def __exit__(self, *_):
        for server in self.servers:
            server.terminate()
            server.wait()


class Tests:
    """The test programs' cases, in suites, nearest to a source first."""

    def __init__(self, programs, copy, arguments, displays):
        self.arguments, self.displays = arguments, displays
        self.folders = find_suite_files(copy)
        self.programs = {suite: program for program in programs for suite in self.list_suites(program)}
        self.seconds = {}

    def list_suites(self, program):
        listed = subprocess.run(
            [program, "--gtest_list_tests", f"--gtest_filter={self.arguments.filter}"], capture_output=True, text=True,
        ).stdout
        return re.findall(r"^(\S+)\.(?:\s|$)", listed, re.MULTILINE)

    def by_program(self, suites):
        """The programs that these suites are in, each with its own."""
        own = {}

        for suite in suites:
            own.setdefault(self.programs[suite], []).append(suite)

        return own.items()

    def measure(self, folder):
        """Runs everything once, which has to pass, and notes how long the suites take. Returns the sum in seconds."""
        times = folder / "times.json"

        for program, suites in self.by_program(self.programs):
            outcome, failed = self.run_suites(program, suites, None, [f"--gtest_output=json:{times}"])

            if outcome != SURVIVED:
                raise Failure(f"without any change, the tests end with: {outcome} {' '.join(failed)}")

            for suite in json.loads(times.read_text())["testsuites"]:
                self.seconds[suite["name"]] = float(suite["time"].rstrip("s"))

        return sum(self.seconds.values())

    def get_limit(self, suites):
        usual = sum(self.seconds.get(suite, 0.0) for suite in suites)
        return self.arguments.time_limit or 3 * usual + SPARE_SECONDS

    def try_all(self, source):
        """Whether a test notices what has been done to a source, and which did."""
        for group in self.in_order_for(source):
            for program, suites in self.by_program(group):
                outcome, failed = self.run_suites(program, suites, self.get_limit(suites))

                if outcome != SURVIVED:
                    return outcome, failed

        return SURVIVED, []

    def in_order_for(self, source):
        # Tests are in the same folder layout, but for the outer folder of a layer.
        source = pathlib.PurePosixPath(*pathlib.PurePosixPath(source).parts[1:])
        same_name, same_folder, others = [], [], []

        for suite in self.programs:
            file = self.folders.get(suite.split("/")[0])
            is_near = file is not None and file.parent == source.parent
            near = same_name if is_near and file.name.startswith(source.stem) else same_folder
            (near if is_near else others).append(suite)

        return [group for group in (same_name, same_folder, others) if group]

    def run_suites(self, program, suites, limit, options=()):
        shards = 1 if options else self.arguments.shards
        ignored = self.arguments.filter.partition("-")[2].split(":")

        while True:
            chosen = ":".join(f"{suite}.*" for suite in suites)
            cases = f"{chosen}-{':'.join(filter(None, ignored))}"
            outcome, failed = self.run_once(program, cases, limit, shards, options)

            # A crash or a standstill counts, a failure that doesn't come again doesn't.
            if outcome != CAUGHT or not failed or self.run_once(program, ":".join(failed), limit)[0] != SURVIVED:
                return outcome, failed

            ignored += failed

    def run_once(self, program, chosen, limit, shards=1, options=()):
        # A home for each, which also keeps the settings of one run from the next. What a test leaves running may still
        # write there.
        with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as home:
            outputs = [pathlib.Path(home, f"output {shard}") for shard in range(shards)]
            processes = [
                self.start([program, f"--gtest_filter={chosen}", *options], home, shard, shards, outputs[shard])
                for shard in range(shards)
            ]

            try:
                outcome = wait_for(processes, outputs, limit)
            finally:
                for process in processes:
                    if process.poll() is None:
                        os.killpg(process.pid, signal.SIGKILL)
                        process.wait()

            said = "\n".join(output.read_text(errors="replace") for output in outputs)

        return outcome, sorted(set(FAILED_CASE.findall(said)))

    def start(self, command, home, shard, shards, output):
        environment = dict(os.environ, HOME=home, GTEST_TOTAL_SHARDS=str(shards), GTEST_SHARD_INDEX=str(shard))

        if self.displays:
            environment["DISPLAY"] = self.displays[shard]

        with output.open("wb") as file:
            return subprocess.Popen(
                [*command, "--gtest_fail_fast"],
                stdout=file, stderr=subprocess.STDOUT, env=environment, start_new_session=True,
                preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_AS, (TEST_MEMORY_BYTES, TEST_MEMORY_BYTES)),
            )


def wait_for(processes, outputs, limit):
    """How a run ends: with all tests passed, with a failure of one process, or with too long a time or silence."""
    start = last_said = time.monotonic()
    said = 0

    while any(process.poll() is None for process in processes):
        time.sleep(0.05)
        now, size = time.monotonic(), sum(output.stat().st_size for output in outputs)

        if size != said:
            said, last_said = size, now

        if now - last_said > SILENT_SECONDS or (limit and now - start > limit):
            return TIMED_OUT

        if any(process.poll() not in (None, 0) for process in processes):
            return CAUGHT

    return SURVIVED if all(process.returncode == 0 for process in processes) else CAUGHT


def find_suite_files(copy):
    """The test file of each suite, as the path that a source beside it would have."""
    files = {}

    for path in (copy / "tests").rglob("*.cpp"):
        for suite in re.findall(r"^TEST(?:_[FP])?\s*\((\w+),", path.read_text(), re.MULTILINE):
            files[suite] = pathlib.PurePosixPath(path.relative_to(copy / "tests").as_posix())

    return files
