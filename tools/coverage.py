#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Which lines of the library the tests run.

Builds the library with counters, runs the test programs and merges the counts of all objects: a line is covered if the
copy of any slot, and any instance of a template, ran it. An argument check is complete if
some object ran every branch of its line. Prints the share of each directory, lines that nothing ran and checks that are
not complete; exits with 1 where the share of all is below --least. On demand: it compiles everything and takes some minutes.
"""
import argparse
import collections
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SHIPPED = ["core", "vector", "stats", "gen", "filter", "transform", "idx", "include"]
# What measures stacks, sizes or installed trees, and what runs no code of this build.
SKIPPED = "abi|large|audit|emulated|docs|reference|install|reproducible|package|digest_without"


def run(*command, **options):
    subprocess.run([str(c) for c in command], check=True, **options)


def build_and_test(build, slots, jobs):
    flags = "-O1 --coverage -fprofile-update=single"
    run("cmake", "-S", ROOT, "-B", build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Coverage", f"-DVEK_SLOTS={slots}",
        "-DVEK_TOOLS=OFF", "-DVEK_EXAMPLES=OFF", f"-DCMAKE_C_FLAGS_COVERAGE={flags}",
        f"-DCMAKE_CXX_FLAGS_COVERAGE={flags}", stdout=subprocess.DEVNULL)
    run("cmake", "--build", build, "-j", jobs, stdout=subprocess.DEVNULL)
    for counts in build.rglob("*.gcda"):
        counts.unlink()
    run("ctest", "--test-dir", build, "-j", jobs, "-E", SKIPPED, "--output-on-failure")


CHECK = re.compile(r"\bif \(.*return .*vekSts|\? vekSts|if \(const VekStatus")


def lines_of(build):
    """{file: {line: (times run, share of its branches taken)}} over all objects, the best of them."""
    files = collections.defaultdict(dict)
    for notes in sorted(build.rglob("*.gcno")):
        out = subprocess.run(["gcov", "--json-format", "--stdout", "--branch-probabilities", notes], cwd=build, capture_output=True, check=True)
        for document in out.stdout.splitlines():
            for entry in json.loads(document)["files"]:
                name = os.path.relpath(os.path.join(build, entry["file"]), ROOT)
                if name.split("/")[0] in SHIPPED:
                    for line in entry["lines"]:
                        branches = line["branches"]
                        share = sum(b["count"] > 0 for b in branches) / len(branches) if branches else 0
                        count, most = files[name].get(line["line_number"], (0, -1))
                        files[name][line["line_number"]] = count + line["count"], max(most, share if branches else -1)
    return files


def report(files):
    shares = collections.defaultdict(lambda: [0, 0])
    checks = complete = 0
    for name, lines in sorted(files.items()):
        missed = [n for n, count in sorted(lines.items()) if count[0] == 0]
        for key in (name.split("/")[0], "all"):
            shares[key][0] += len(lines) - len(missed)
            shares[key][1] += len(lines)
        text = (ROOT / name).read_text().splitlines()
        for n in missed:
            print(f"{name}:{n}: not run: {text[n - 1].strip()}")
        for n, (_, share) in sorted(lines.items()):
            if share < 0 or not CHECK.search(text[n - 1]):
                continue
            checks += 1
            complete += share == 1
            if share < 1:
                print(f"{name}:{n}: {100 * share:.0f} % of the branches: {text[n - 1].strip()}")
    for directory, (ran, total) in shares.items():
        print(f"{directory:10} {100 * ran / total:6.2f} %  {ran} of {total} lines")
    print(f"{complete} of {checks} lines with argument checks complete")
    return 100 * shares["all"][0] / max(1, shares["all"][1])


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, default=ROOT / "build-coverage")
    parser.add_argument("--slots", default="mx;m7;u8;n8;y8;e9;l9")
    parser.add_argument("--jobs", default=str(os.cpu_count()))
    parser.add_argument("--least", type=float, default=95)
    parser.add_argument("--report-only", action="store_true", help="merge the counts of the last run again")
    args = parser.parse_args()
    build = args.build.resolve()
    if not args.report_only:
        build_and_test(build, args.slots, args.jobs)
    share = report(lines_of(build))
    return 0 if share >= args.least else 1


if __name__ == "__main__":
    sys.exit(main())
