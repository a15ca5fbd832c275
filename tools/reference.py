#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Builds the reference from the headers with Doxygen: HTML and manual pages.

Manual pages are one for each chapter, LIBRARY_CHAPTER(3), and for each function one that leads there. Fails where Doxygen
has anything to complain of, and where a function of the list given with --names has no page.
"""
import argparse
import os
import pathlib
import re
import subprocess
import sys


def link_functions(man):
    """Pages of chapters stay; each function that one documents gets a page that includes it."""
    for page in man.iterdir():
        if not page.name.startswith(("vek_", "vekx_")):
            page.unlink()
    names = set()
    for page in sorted(man.glob("vek*_*.3")):
        for name in set(re.findall(r"\\fB(vek[sx]?[A-Z]\w*)\\fP \(", page.read_text())):
            (man / f"{name}.3").write_text(f".so man3/{page.name}\n")
            names.add(name)
    return names


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--out", type=pathlib.Path, required=True)
    parser.add_argument("--version", required=True)
    parser.add_argument("--names", type=pathlib.Path, nargs="+", required=True)
    args = parser.parse_args()
    args.out.mkdir(parents=True, exist_ok=True)
    env = dict(os.environ, VEK_DOCS=str(args.out.resolve()), VEK_VERSION=args.version)
    if subprocess.run(["doxygen", "docs/Doxyfile"], cwd=args.root, env=env).returncode != 0:
        sys.exit("the reference is not clean")
    documented = link_functions(args.out / "man/man3")
    names = [name for file in args.names for name in file.read_text().split()]
    missing = [n for n in names + [n + "_Idx" for n in names] if n not in documented]
    if missing:
        sys.exit("without documentation: " + ", ".join(missing))
    print(f"{len(documented)} functions in {args.out}/html and {args.out}/man")


if __name__ == "__main__":
    main()
