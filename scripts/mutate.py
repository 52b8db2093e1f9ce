#!/usr/bin/env python3
"""Makes small changes to the plug-in's code, one at a time, and tells which of them no test notices.

Everything happens in a copy of the repository, in a build folder of its own: your files and your builds stay as they
are. Which changes are tried follows from the seed alone, for one and the same code. A test that fails is run once
more by itself, so that a test that only suffers from a busy machine doesn't count.

  scripts/mutate.py --count 300 --seed 1 --exclude '*/dsp/*'
"""

import argparse
import collections
import dataclasses
import difflib
import fnmatch
import json
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "scripts/lib"))

from mutations import Mutation, find_mutations  # noqa: E402
from test_program import CAUGHT, NOT_COMPILED, SURVIVED, TIMED_OUT, Displays, Failure, Tests  # noqa: E402

LAYERS = ("pluginCore", "varlo")
TARGETS = ("cv_plugin_core_tests", "varlo_tests")

# JUCE is built as for a release, so that ccache has it already. Our own code is built quickly: JUCE's headers are
# parsed once instead of for each change, and a change may leave a variable that nobody uses.
FAST_BUILD = """
function(build_fast)
    foreach(layer IN ITEMS cv_pluginCore cv_varlo)
        target_precompile_headers(${layer} PRIVATE
            <juce_audio_processors/juce_audio_processors.h> <juce_dsp/juce_dsp.h>)
        target_compile_options(${layer} PRIVATE -O1 -w)
    endforeach()

    foreach(target IN ITEMS cv_test_main cv_test_support varlo_test_support cv_plugin_core_tests varlo_tests)
        target_compile_options(${target} PRIVATE -O0)
    endforeach()
endfunction()

cmake_language(DEFER CALL build_fast)
"""


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1, help="which changes are drawn, and in which order (1)")
    parser.add_argument("--count", type=int, default=300, help="how many changes are tried (300)")
    parser.add_argument("--skip", type=int, default=0, help="leave out the first so many of them")
    parser.add_argument("--minutes", type=float, help="stop after this time, with what has been tried by then")
    parser.add_argument("--files", action="append", metavar="GLOB", help="only in these files (*.cpp)")
    parser.add_argument("--exclude", action="append", default=[], metavar="GLOB", help="not in these files")
    parser.add_argument("--kinds", action="append", metavar="WORD", help="only kinds of changes whose name holds WORD")
    parser.add_argument("--filter", default="*", metavar="GTEST", help="suites, as for --gtest_filter (all)")
    parser.add_argument("--shards", type=int, default=1, help="run the tests in so many processes at a time (1)")
    parser.add_argument("--time-limit", type=float, metavar="SECONDS", help="for the tests of one change (by measure)")
    parser.add_argument("--jobs", type=int, default=os.cpu_count(), help="compile in so many processes at a time")
    parser.add_argument("--folder", type=pathlib.Path, default=ROOT / "build/mutate", help="where it works")
    parser.add_argument("--build-only", action="store_true", help="only get ready: build the tests without a change")
    parser.add_argument("--list", action="store_true", help="print the changes and try none")
    return parser.parse_args()


def draw_mutations(arguments, root):
    """The changes to try, in the order of the seed, and the number there is to draw from."""
    patterns = arguments.files or ["*.cpp"]
    sources = [
        path.relative_to(root).as_posix()
        for layer in LAYERS
        for path in sorted((root / layer).rglob("*"))
        if path.suffix in (".cpp", ".h")
    ]
    candidates = [
        mutation
        for source in sources
        if any(fnmatch.fnmatch(source, pattern) for pattern in patterns)
        and not any(fnmatch.fnmatch(source, pattern) for pattern in arguments.exclude)
        for mutation in find_mutations(source, (root / source).read_text())
        if not arguments.kinds or any(word in mutation.kind for word in arguments.kinds)
    ]
    drawn = random.Random(arguments.seed).sample(candidates, min(arguments.count, len(candidates)))
    return drawn[arguments.skip :], len(candidates)


def show(mutation, text):
    """The change as the lines of a diff."""
    before, after = text.splitlines(), mutation.apply(text).splitlines()
    lines = list(difflib.unified_diff(before, after, lineterm="", n=0))[2:]
    return "\n".join(f"    {line}" for line in lines)


def copy_repository(copy):
    """Brings the copy up to date, and leaves alone what is the same, so that little is built again."""
    listed = subprocess.run(
        ["git", "-C", ROOT, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        check=True, capture_output=True, text=True,
    ).stdout
    wanted = {name for name in listed.split("\0") if name and (ROOT / name).is_file()}

    for name in wanted:
        source, target = ROOT / name, copy / name

        if not target.is_file() or source.read_bytes() != target.read_bytes():
            target.parent.mkdir(parents=True, exist_ok=True)
            shutil.copy(source, target)

    for layer in (*LAYERS, "tests"):
        for path in (copy / layer).rglob("*"):
            if path.is_file() and path.relative_to(copy).as_posix() not in wanted:
                path.unlink()


class Builder:
    def __init__(self, folder, jobs):
        # Where a build has its sources is the same as for the presets, which makes ccache's results fit.
        self.copy, self.build_folder, self.jobs = folder, folder / "build/release", jobs
        self.build_folder.mkdir(parents=True, exist_ok=True)
        self.include = self.build_folder / "fast-build.cmake"

    def configure(self):
        copy_repository(self.copy)
        self.include.write_text(FAST_BUILD)
        linker = [f"-fuse-ld={name}" for name in ("lld", "gold") if shutil.which(f"ld.{name}")][:1]
        run_or_fail(
            ["cmake", "-S", self.copy, "-B", self.build_folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
             f"-DCMAKE_EXE_LINKER_FLAGS={' '.join(linker)}", f"-DCMAKE_PROJECT_Varlo_INCLUDE={self.include}",
             "-DVARLO_BUILD_TESTS=ON", "-DVARLO_BUILD_BENCHMARKS=OFF"],
            "configuring",
        )
        run_or_fail(self.build_command(), "building without any change")

    def build_command(self):
        return ["cmake", "--build", self.build_folder, "--target", *TARGETS, "-j", str(self.jobs)]

    def build(self):
        # Each change is built once: nothing to keep.
        environment = dict(os.environ, CCACHE_DISABLE="1")
        return subprocess.run(self.build_command(), capture_output=True, env=environment).returncode == 0

    @property
    def programs(self):
        return [self.build_folder / "tests" / target for target in TARGETS]


def run_or_fail(command, purpose):
    result = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)

    if result.returncode != 0:
        raise Failure(f"{purpose} failed:\n{result.stdout[-4000:]}")


@dataclasses.dataclass
class Result:
    mutation: Mutation
    outcome: str
    tests: list
    diff: str


def try_mutation(mutation, builder, tests):
    """Applies a change to the copy, asks the tests, and puts the copy back whatever happens."""
    path = builder.copy / mutation.path
    original = path.read_bytes()
    text = original.decode()

    try:
        path.write_text(mutation.apply(text))
        outcome, noticed_by = tests.try_all(mutation.path) if builder.build() else (NOT_COMPILED, [])
    finally:
        path.write_bytes(original)

    return Result(mutation, outcome, noticed_by, show(mutation, text))


def report(results, seed, available):
    counts = collections.defaultdict(collections.Counter)

    for result in results:
        counts[result.mutation.kind][result.outcome] += 1
        counts["all"][result.outcome] += 1

    outcomes = (CAUGHT, TIMED_OUT, NOT_COMPILED, SURVIVED)
    print(f"\n{len(results)} changes tried, of {available}; seed {seed}\n")
    print(f"{'':24}" + "".join(f"{outcome:>18}" for outcome in outcomes))

    for kind in sorted(counts, key=lambda kind: (kind == "all", kind)):
        print(f"{kind:24}" + "".join(f"{counts[kind][outcome]:>18}" for outcome in outcomes))

    noticed, missed = counts["all"][CAUGHT] + counts["all"][TIMED_OUT], counts["all"][SURVIVED]

    if noticed + missed:
        print(f"\nNoticed: {100.0 * noticed / (noticed + missed):.1f} % of those that compile")

    for result in results:
        if result.outcome == SURVIVED:
            print(f"\nsurvived: {result.mutation.path} ({result.mutation.kind})\n{result.diff}")


def run(arguments):
    if arguments.list:
        drawn, available = draw_mutations(arguments, ROOT)

        for mutation in drawn:
            print(f"{mutation.path} ({mutation.kind})\n{show(mutation, (ROOT / mutation.path).read_text())}")

        print(f"{len(drawn)} of {available}")
        return

    builder = Builder(arguments.folder.resolve(), arguments.jobs)
    builder.configure()

    if arguments.build_only:
        return

    drawn, available = draw_mutations(arguments, builder.copy)
    stop_at = time.monotonic() + 60 * arguments.minutes if arguments.minutes else None
    results = []

    # What goes on behind the first so many goes on in their file.
    log_path, mode = builder.build_folder / "mutations.jsonl", "a" if arguments.skip else "w"

    with Displays(arguments.shards) as displays, open(log_path, mode) as log:
        tests = Tests(builder.programs, builder.copy, arguments, displays)
        print(f"all tests pass without a change, in {tests.measure(builder.build_folder):.0f} s", flush=True)

        try:
            for number, mutation in enumerate(drawn, start=1 + arguments.skip):
                if stop_at and time.monotonic() > stop_at:
                    break

                start = time.monotonic()
                result = try_mutation(mutation, builder, tests)
                results.append(result)
                seconds = time.monotonic() - start
                print(f"{number:4} {result.outcome:17} {seconds:5.0f} s  {mutation.path} ({mutation.kind})"
                      f" {' '.join(result.tests)[:100]}\n{result.diff}", flush=True)
                log.write(json.dumps(dataclasses.asdict(result)) + "\n")
                log.flush()
        except KeyboardInterrupt:
            print("\nstopped", file=sys.stderr)
        finally:
            report(results, arguments.seed, available)


def main():
    # Whatever asks this to end gets the copy put back and a report.
    signal.signal(signal.SIGTERM, signal.default_int_handler)

    try:
        run(parse_arguments())
    except Failure as failure:
        sys.exit(f"mutate.py: {failure}")
    except KeyboardInterrupt:
        sys.exit(130)


if __name__ == "__main__":
    main()
