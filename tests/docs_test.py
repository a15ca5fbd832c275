#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Holds the documents to the library: README.md, CONTRIBUTING.md and docs/*.md.

Code blocks marked c or cpp are compiled, with warnings as errors, as what the word after the language says:

  (nothing)  a program: linked with the library and run, has to end with 0
  fragment   statements: checked inside a function, <vek.h> or <vek/vek.hpp> included
  unit       a source file of the library or its tests: checked as it stands, slot mx

Names in the text have to exist: functions (veksSum_32f; veksSum_* stands for some function), tests (Suite.Name),
files of the tree and the targets of links.
"""
import argparse
import os
import pathlib
import re
import subprocess
import sys
import tempfile

FENCE = re.compile(r"^```(\w*)[ \t]*(\w*)[ \t]*\n(.*?)^```[ \t]*$", re.M | re.S)
TOP = "include core idx vector stats gen filter transform tests tools examples bench docs debian cmake".split()


def programs(args, document, work):
    """One line of complaint for each block that does not hold."""
    text = document.read_text()
    for number, block in enumerate(FENCE.finditer(text)):
        language, kind, body = block.groups()
        if language not in ("c", "cpp"):
            continue
        line = text.count("\n", 0, block.start(3)) + 1
        cpp = language == "cpp"
        if kind == "fragment":
            head = "#include <vek/vek.hpp>\n" if cpp else "#include <vek.h>\n"
            body = f"{head}void fragment(void);\nvoid fragment(void) {{\n#line {line} \"{document}\"\n{body}\n}}\n"
        else:
            body = f'#line {line} "{document}"\n{body}'
        if not kind and "int main" not in body:
            yield f"{document}:{line}: neither a program nor marked as a fragment or a unit"
            continue
        source = work / f"{document.stem}-{number}.{language}"
        program = source.with_suffix("")
        source.write_text(body)
        command = [args.cxx, "-std=c++20"] if cpp else [args.cc, "-std=c99"]
        command += ["-O1", "-Wall", "-Wextra", "-Werror", f"-I{args.root}/include", str(source)]
        if kind == "unit":
            command += [f"-I{args.root}", "-DVEK_SLOT=mx", "-DVEK_SLOT_INDEX=0", "-Wno-psabi"]
        if kind:
            command += ["-fsyntax-only", "-Wno-unused"]
        else:
            command += [args.library, "-lm", "-o", str(program)]
        built = subprocess.run(command, capture_output=True, text=True)
        if built.returncode != 0:
            yield f"{document}:{line}: does not compile\n{built.stderr}"
        elif not kind:
            env = dict(os.environ, LD_LIBRARY_PATH=str(pathlib.Path(args.library).parent))
            ran = subprocess.run([program], capture_output=True, text=True, env=env, timeout=60)
            if ran.returncode != 0:
                yield f"{document}:{line}: ended with {ran.returncode}\n{ran.stdout}{ran.stderr}"
        args.count += 1


def names(args, document, functions, tests):
    text = document.read_text()
    prose = FENCE.sub("", text)
    for name, star in sorted(set(re.findall(r"\b(vek[sx]?[A-Z]\w*)(\*?)", prose))):
        known = any(f.startswith(name) for f in functions) if star else name in functions
        if not known:
            yield f"{document}: there is no {name}{star}"
    for name in sorted(set(re.findall(r"`([A-Z]\w+\.(?!(?:txt|hpp|cpp|md)\b)\w+)`", prose)) - tests):
        yield f"{document}: there is no test {name}"
    for target in sorted(set(re.findall(r"\]\(([^)#\s]+)[^)]*\)", prose))):
        if "://" not in target and not (document.parent / target).exists():
            yield f"{document}: link to {target}, which is not there"
    for path in sorted(set(re.findall(rf"`((?:{'|'.join(TOP)})/[\w./*-]*)`", prose))):
        if not list(args.root.glob(path.rstrip("/"))):
            yield f"{document}: {path} is not there"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--library", required=True)
    parser.add_argument("--cc", default="cc")
    parser.add_argument("--cxx", default="c++")
    parser.add_argument("documents", nargs="*", type=pathlib.Path, help="instead of README.md, CONTRIBUTING.md and docs/*.md")
    args = parser.parse_args()
    args.count = 0
    documents = args.documents or [args.root / "README.md", args.root / "CONTRIBUTING.md", *sorted((args.root / "docs").glob("*.md"))]
    headers = "".join(h.read_text() for h in (args.root / "include").glob("vek*/*.h"))
    functions = set(re.findall(r"\bvek[sx]?[A-Z]\w*", headers))
    sources = "".join(t.read_text() for t in (args.root / "tests").glob("*.cpp"))
    tests = {f"{suite}.{name}" for suite, name in re.findall(r"\b(?:TYPED_)?TEST(?:_F|_P)?\((\w+),\s*(\w+)\)", sources)}
    wrong = []
    with tempfile.TemporaryDirectory() as directory:
        for document in documents:
            wrong += programs(args, document, pathlib.Path(directory))
            wrong += names(args, document, functions, tests)
    print("\n".join(wrong) or f"{len(documents)} documents, {args.count} code blocks")
    sys.exit(1 if wrong or not args.count else 0)


if __name__ == "__main__":
    main()
