#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Measures what the library weighs and holds it to the bounds below.

  sizes.py library --library libvek.so --objects kernel_objects.txt [--write docs/size.md]
  sizes.py programs --empty PROGRAM NAME=PROGRAM...

The first takes the shared library's code and constants, and writes how they spread over sources and slots; the second
static programs, stripped, against one that calls nothing.
"""
import argparse
import collections
import os
import pathlib
import re
import subprocess
import sys
import tempfile

LIBRARY_BOUND = 4_500_000
PROGRAM_BOUNDS = {"status": 40 << 10, "add": 32 << 10, "sort": 200 << 10, "fir": 1 << 20, "dct": 1 << 20}


def sizes(*files):
    """Code and constants of each file, as size(1) counts them."""
    out = subprocess.run(["size", *files], check=True, capture_output=True, text=True).stdout.splitlines()[1:]
    return [int(row.split()[0]) + int(row.split()[1]) for row in out]


def table(library, objects):
    """A Markdown table of the sources by slot, in KiB."""
    cells, slots = collections.defaultdict(int), []
    for path, size in zip(objects, sizes(*objects)):
        slot, source = re.search(r"_slot_(\w\w)\w*\.dir/(?:\./)?(.*)\.cpp\.o$", path).groups()
        cells[source, slot] += size
        cells[source.split("/")[0] + "/", slot] += size
        if slot not in slots:
            slots.append(slot)
    slots = [s for s in slots if sum(v for (_, at), v in cells.items() if at == s) > 4096]
    sources = sorted({source for source, _ in cells} - {"core/", "core/version", "core/memory_entries"})
    lines = ["| source | " + " | ".join(slots) + " |", "|---" * (len(slots) + 1) + "|"]
    for source in sources:
        whole = source.endswith("/")
        row = [f"{cells[source, slot] / 1024:.0f}" if (source, slot) in cells else "" for slot in slots]
        lines.append("| " + " | ".join(f"**{cell}**" if whole and cell else cell for cell in [source, *row]) + " |")
    kernels = sum(sizes(*objects))
    total, = sizes(library)
    return "\n".join(lines), f"Kernels {kernels / 1000:,.0f} kB, the whole library {total / 1000:,.0f} kB."


def check_library(args):
    total, = sizes(args.library)
    print(f"{total} bytes of code and constants, bound {LIBRARY_BOUND}")
    if args.write:
        objects = pathlib.Path(args.objects).read_text().split()
        rows, summary = table(args.library, objects)
        document = pathlib.Path(args.write)
        head = document.read_text().split("<!-- table -->")[0]
        document.write_text(f"{head}<!-- table -->\n{summary}\n\n{rows}\n")
    return total > LIBRARY_BOUND


def stripped(program):
    with tempfile.TemporaryDirectory() as work:
        bare = pathlib.Path(work) / "bare"
        subprocess.run(["strip", "-o", bare, program], check=True)
        return os.path.getsize(bare)


def check_programs(args):
    empty, failed = stripped(args.empty), False
    for name, _, program in (p.partition("=") for p in args.programs):
        size, bound = stripped(program) - empty, PROGRAM_BOUNDS[name]
        failed |= size > bound
        print(f"{name}: {size} bytes more than an empty program, bound {bound}{', exceeded' if size > bound else ''}")
    return failed


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    commands = ap.add_subparsers(required=True)
    library = commands.add_parser("library")
    library.add_argument("--library", required=True)
    library.add_argument("--objects", required=True)
    library.add_argument("--write")
    library.set_defaults(run=check_library)
    programs = commands.add_parser("programs")
    programs.add_argument("--empty", required=True)
    programs.add_argument("programs", nargs="+")
    programs.set_defaults(run=check_programs)
    args = ap.parse_args()
    sys.exit(1 if args.run(args) else 0)


if __name__ == "__main__":
    main()
