#!/usr/bin/env python3
"""tools/coverage.py BUILD [--uncovered]: which lines and branches of the core the tests of BUILD have run.

BUILD is a folder of the preset asan after its tests; what they ran stands in BUILD/coverage. Prints a line a storey.
With --uncovered, every line of the core that no test ran, as file:line ranges.
"""

import collections
import json
import pathlib
import shutil
import subprocess
import sys

STOREYS = ["frame", "records", "editor", "items", "server", "window"]


def tool(name):
    """LLVM's tool of that name: the profiles are read by the version that belongs to the compiler."""
    version = subprocess.run(["clang++", "-dumpversion"], capture_output=True, text=True, check=True)
    major = version.stdout.split(".")[0]
    found = shutil.which(f"{name}-{major}") or shutil.which(name)
    if not found:
        sys.exit(f"coverage: {name} is not there")
    return found


def coverage_of(build, summary_only):
    profiles = sorted((build / "coverage").glob("*.profraw"))
    if not profiles:
        sys.exit(f"coverage: no profile in {build / 'coverage'}: its tests have not run")
    merged = build / "coverage" / "all.profdata"
    subprocess.run([tool("llvm-profdata"), "merge", "-sparse", "-o", merged, *profiles], check=True)

    programs = [*sorted((build / "tests").glob("*_tests")), build / "kvdesign"]
    programs = [program for program in programs if program.is_file()]
    if not programs:
        sys.exit(f"coverage: no program in {build}")
    sources = pathlib.Path(__file__).resolve().parent.parent
    command = [tool("llvm-cov"), "export", f"-instr-profile={merged}", "-skip-expansions", "-skip-functions"]
    if summary_only:
        command.append("-summary-only")
    command.append(programs[0])
    command += [f"-object={program}" for program in programs[1:]]
    command += [sources / storey for storey in STOREYS]
    exported = subprocess.run(command, capture_output=True, text=True, check=True)
    return sources, json.loads(exported.stdout)["data"][0]["files"]


def storey_of(sources, name):
    """The storey of a source; each is compiled through a link below BUILD/storeys."""
    path = pathlib.Path(name).resolve()
    if not path.is_relative_to(sources):
        return None
    return path.relative_to(sources).parts[0]


def table(sources, files):
    counts = collections.defaultdict(lambda: collections.Counter())
    for file in files:
        storey = storey_of(sources, file["filename"])
        if storey not in STOREYS:
            continue
        for of in (storey, "core"):
            for kind in ("lines", "branches"):
                counts[of][kind, "count"] += file["summary"][kind]["count"]
                counts[of][kind, "covered"] += file["summary"][kind]["covered"]
    if not counts:
        sys.exit("coverage: no source of the core in the profiles")
    print(f"{'':10}{'lines':>8}{'run':>8}{'':>9}{'branches':>10}{'run':>8}")
    for of in [*STOREYS, "core"]:
        row = f"{of:10}"
        for kind, width in (("lines", 8), ("branches", 10)):
            count, covered = counts[of][kind, "count"], counts[of][kind, "covered"]
            share = 100 * covered / count if count else 100
            row += f"{count:>{width}}{covered:>8}{share:>8.2f}%"
        print(row)


def uncovered(sources, files):
    for file in files:
        if storey_of(sources, file["filename"]) not in STOREYS:
            continue
        path = pathlib.Path(file["filename"]).resolve().relative_to(sources)
        for line, *_ in ranges(file["segments"]):
            print(f"{path}:{line}")


def ranges(segments):
    """First and last line of each piece that was never run, as "first-last"."""
    for here, after in zip(segments, segments[1:]):
        line, _, count, counted, *_ = here
        if counted and count == 0:
            yield (f"{line}-{after[0]}" if after[0] != line else str(line),)


def main():
    arguments = sys.argv[1:]
    wanted = "--uncovered" in arguments
    if wanted:
        arguments.remove("--uncovered")
    if len(arguments) != 1:
        sys.exit("usage: tools/coverage.py BUILD [--uncovered]")
    sources, files = coverage_of(pathlib.Path(arguments[0]), not wanted)
    (uncovered if wanted else table)(sources, files)


if __name__ == "__main__":
    main()
