#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Derives everything repetitive from the prototypes of the public header.

A library is a directory of headers: include/vek, include/vekx. A function of it exists because one of them declares it
with VEK_API. Functions named veks..., and those named vekx... that name element types behind an underscore, are
dispatched: each has an implementation per slot in namespace vek::<slot>, a table of seven of them, an exported entry
that jumps through the table, and an index-offset twin. Others are exported as they are.

In-place forms (..._I of ..., ..._ISfs of ..._Sfs) are derived too: where no kernel file defines one, each slot that has
the other form gets a jump to it, with pSrcDst as its destination and as the last of its sources that have the type of
the destination, or the first where the comment above the prototypes says "In place pSrcDst is pSrc1".

  derive.py idx-header  --out idx.h        declarations of the twins
  derive.py idx-source  --out idx.cpp      their definitions
  derive.py entries     --out entries.S    the forwarding entries
  derive.py tables      --out tables.cpp --objects @list   dispatch tables and in-place forms, from what the objects define
  derive.py exports     --out exports.map  linker version script
  derive.py spans       --out spans.hpp    overloads on std::span for C++
  derive.py names       --out names.txt    the dispatched names, one a line
  derive.py plain       --out plain.txt    the others
  derive.py functions   --out functions.inc   VEK_FUNCTION(name) rows with argument kinds, for the tests
  derive.py stubs       --out stubs.c      empty definitions, which carry the interface's types into debug information
"""
import argparse
import pathlib
import re
import subprocess
import sys

sys.dont_write_bytecode = True  # the tree may be read-only, or somebody else's
import slots

# Which pointers are arrays is said by their names.
ARRAY = re.compile(r"^(pSrc\w*|pDst\w*|pTaps|pDlyLine|p\w*Buffer)$")
SINGLE = {"pDstVal", "pDstLen"}
DISPATCHED = re.compile(r"veks|vekx[A-Za-z0-9]+_")
OPTIONAL = {"pDlyLine"}
# A comment that says this says it of the prototypes down to the next comment.
FIRST_IN_PLACE = "In place pSrcDst is pSrc1"


class Parameter:
    def __init__(self, text):
        m = re.match(r"^(.*?)\s*(\w+)$", text.strip())
        self.type, self.name = m.group(1).strip(), m.group(2)

    @property
    def is_array(self):
        return self.type.endswith("*") and bool(ARRAY.match(self.name)) and self.name not in SINGLE

    @property
    def is_optional(self):
        return self.is_array and self.name in OPTIONAL

    @property
    def index_name(self):
        stem = self.name[1:]
        return stem[0].lower() + stem[1:] + ("Index" if stem.endswith("Idx") else "Idx")


class Function:
    def __init__(self, result, name, parameters, first_in_place=False):
        self.result, self.name, self.first_in_place = result, name, first_in_place
        self.parameters = [Parameter(p) for p in parameters]

    @property
    def dispatched(self):
        return bool(DISPATCHED.match(self.name))

    @property
    def two_array_name(self):
        """The form with a destination of its own, for the name of an in-place form; else None."""
        name = re.sub(r"_I(Sfs)?$", lambda m: "_Sfs" if m[1] else "", self.name)
        return name if name != self.name else None

    def in_place_arguments(self, other):
        """What the in-place form passes to `other`, its form with a destination of its own."""
        element = lambda p: p.type.replace("const ", "")
        sources = [p for p in other.parameters if p.is_array and p.name.startswith("pSrc")]
        fitting = [p for p in sources if element(p) == element(next(q for q in self.parameters if q.name == "pSrcDst"))]
        shared = fitting[0 if self.first_in_place else -1]
        given = lambda p: "pSrcDst" if p is shared or p.name == "pDst" else "pSrc" if p in sources else p.name
        arguments = [given(p) for p in other.parameters]
        if set(arguments) != {p.name for p in self.parameters}:
            sys.exit(f"{self.name} is no in-place form of {other.name}")
        return ", ".join(arguments)

    def twin_parameters(self):
        out = []
        for p in self.parameters:
            out.append(f"{p.type} {p.name}")
            if p.is_array:
                out.append(f"int {p.index_name}")
        return ", ".join(out) or "void"

    def twin_arguments(self):
        def one(p):
            if p.is_optional:
                return f"atIfAny({p.name}, {p.index_name})"
            return f"at({p.name}, {p.index_name})" if p.is_array else p.name

        return ", ".join(one(p) for p in self.parameters)


def parse(headers):
    functions = []
    for header in headers:
        text = pathlib.Path(header).read_text()
        text = re.sub(r"/\*.*?\*/", lambda m: FIRST_IN_PLACE if FIRST_IN_PLACE in m[0] else "/**/", text, flags=re.S)
        text = re.sub(r"//[^\n]*", " ", text)
        text = re.sub(r"^\s*#[^\n]*", " ", text, flags=re.M)
        for m in re.finditer(r"\bVEK_API\s+([\w\s*]+?)\s*\b(vek\w+)\s*\(([^)]*)\)\s*;", text):
            result = re.sub(r"\s+\*", "*", " ".join(m.group(1).split()))
            raw = [] if m.group(3).strip() in ("", "void") else m.group(3).split(",")
            parameters = [re.sub(r"\s*\*\s*", "* ", " ".join(p.split())) for p in raw]
            above = text[:m.start()]
            functions.append(Function(result, m.group(2), parameters, above.rfind(FIRST_IN_PLACE) > above.rfind("/**/")))
            functions[-1].chapter = pathlib.Path(header).stem
    names = [f.name for f in functions]
    twice = sorted({n for n in names if names.count(n) > 1})
    if twice:
        sys.exit("declared twice: " + ", ".join(twice))
    return functions


class Library:
    def __init__(self, headers):
        self.name = pathlib.Path(headers[0]).parent.name
        self.prefix = "veks" if self.name == "vek" else self.name
        self.chapters = [pathlib.Path(h).stem for h in headers]
        self.functions = parse(headers)
        self.dispatched = [f for f in self.functions if f.dispatched]


def implementations(objects):
    """{name: set of slots} from the symbols that the objects define, those of other libraries included."""
    listing = subprocess.run(["nm", "-C", "--defined-only", *objects], check=True, capture_output=True, text=True).stdout
    found = {}
    for slot, name in re.findall(r" [TtWw] vek::(\w\w)::(vek[sx]\w+)\(", listing):
        found.setdefault(name, set()).add(slot)
    return found


def in_place_forms(functions, found):
    """{function: form with a destination of its own} of those that no object defines. `found` gets their slots."""
    named = {f.name: f for f in functions}
    forms = {f: named[f.two_array_name] for f in functions if f.name not in found and f.two_array_name in named}
    for f, other in forms.items():
        found[f.name] = found.get(other.name, set())
    return forms


def serving_slot(slot, compiled):
    return next((name for name in slots.serving(slot) if name in compiled), None)


HEAD = "// SPDX-License-Identifier: Apache-2.0\n// Derived from the public prototypes by tools/derive.py; edits are lost.\n"


def idx_header(library):
    lines = [HEAD.rstrip() + f"""
// clang-format off
#ifndef {library.name.upper()}_IDX_H
#define {library.name.upper()}_IDX_H

#include "vek/api.h"
"""]
    lines += [f'#include "{library.name}/{c}.h"' for c in library.chapters]
    lines.append("""
#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup LIBRARY_idx Index-offset twins
 *
 * Every dispatched function again, each array given as a base and a signed element index, for callers that cannot form
 * interior pointers. An index counts elements of its own array (bytes where the array is given by a byte pointer), may
 * be negative, and is added to its base before the function sees it; an absent delay line stays absent whatever its
 * index. Everything else, the returned status included, is that of the function itself.
 * @{
 */

/**
 * @name Twins
 * In the order of the chapters.
 * @{
 */""".replace("LIBRARY", library.name))
    for f in library.dispatched:
        lines.append(f"VEK_API {f.result} {f.name}_Idx({f.twin_parameters()});")
    lines.append("/** @} */\n\n/** @} */\n\n#ifdef __cplusplus\n}\n#endif\n\n#endif\n")
    return "\n".join(lines)


def idx_source(library):
    used = "using vek::at;\nusing vek::atIfAny;\n"
    lines = [HEAD + f'#include "{library.name}.h"\n#include "idx/at.h"\n\n{used}\nextern "C" {{\n']
    for f in library.dispatched:
        lines.append(f"{f.result} {f.name}_Idx({f.twin_parameters()}) {{ return {f.name}({f.twin_arguments()}); }}")
    return "\n".join(lines) + "\n\n}\n"


def entries(library):
    lines = [HEAD + "// Each entry loads the slot, takes its table and jumps, with the caller's arguments and stack untouched.",
             "#include <cet.h>", "\t.hidden vek_variant_index"]
    for f in library.dispatched:
        lines.append(f"""
	.section .text.{f.name},"ax",@progbits
	.p2align 4
	.globl {f.name}
	.type {f.name}, @function
	.hidden vek_table_{f.name}
{f.name}:
	.cfi_startproc
	_CET_ENDBR
	movslq vek_variant_index(%rip), %rax
	leaq vek_table_{f.name}(%rip), %r11
	jmpq *(%r11,%rax,8)
	.cfi_endproc
	.size {f.name}, .-{f.name}""")
    lines.append('\n\t.section .note.GNU-stack,"",@progbits')
    return "\n".join(lines) + "\n"


def tables(library, objects, only):
    """The tables; with `only` those of a library that has just that slot."""
    chosen = [only or slot for slot in slots.NAMES]
    functions = library.dispatched
    found = {n: s for n, s in implementations(objects).items() if n.startswith(library.prefix)}
    forms = in_place_forms(functions, found)
    missing = [f.name for f in functions if serving_slot("mx", found.get(f.name, ())) is None]
    if missing:
        sys.exit("declared without an implementation in slot mx: " + ", ".join(missing))
    unknown = sorted(set(found) - {f.name for f in functions})
    if unknown:
        sys.exit("implemented but not declared: " + ", ".join(unknown))
    lines = [HEAD + f'#include "{library.name}.h"\n']
    for slot in slots.NAMES:
        lines.append(f"namespace vek::{slot} {{")
        for f in functions:
            if slot not in {serving_slot(each, found[f.name]) for each in chosen}:
                continue
            lines.append(f"decltype(::{f.name}) {f.name};")
            if f in forms:  # registers move, then a jump: the slot's name keeps the call from being the global entry's
                shown = ", ".join(f"{p.type} {p.name}" for p in f.parameters)
                call = f"{slot}::{forms[f].name}({f.in_place_arguments(forms[f])})"
                lines.append(f"{f.result} {f.name}({shown}) {{ return {call}; }}")
        lines.append("}\n")
    lines.append('#define VEK_TABLE(NAME) extern "C" __attribute__((visibility("hidden"))) decltype(&::NAME) const '
                 f"vek_table_##NAME[{len(slots.NAMES) + 1}]\n")
    lines.append('extern "C" __attribute__((visibility("hidden"))) void vek_first_call();\n')
    for f in functions:
        cells = ", ".join(f"&vek::{serving_slot(s, found[f.name])}::{f.name}" for s in chosen)
        lines.append(f"VEK_TABLE({f.name});\nVEK_TABLE({f.name}) = {{{cells}, "
                     f"reinterpret_cast<decltype(&::{f.name})>(&vek_first_call)}};")
    return "\n".join(lines) + "\n"


def exports(library):
    rows = []
    for f in library.functions:
        rows.append(f"    {f.name};")
        if f.dispatched:
            rows.append(f"    {f.name}_Idx;")
    return "{\n  global:\n" + "\n".join(rows) + "\n  local:\n    *;\n};\n"


OPERATOR_WORDS = {"and", "or", "xor", "not"}  # taken by the language
MODIFIERS = {"I": "", "Sfs": "", "ISfs": "", "Direct": "Direct", "BiQuad": "BiQuad"}
TYPE_TOKENS = re.compile(r"^(?:64f|64fc)?(?:(?:1u|8u|8s|16u|16s|16f|16sc|24u|24s|32u|32s|32sc|32f|32fc|64u|64s|64sc|64f|64fc))+$")


def span_name(f):
    """veksThreshold_LTVal_32f_I is thresholdLTVal: the types and whether it works in place are in the arguments."""
    words = [w for w in f.name[4:].split("_") if not TYPE_TOKENS.match(w)]
    name = "".join(MODIFIERS.get(w, re.sub(r"64fc?$", "", w)) for w in words)
    head = re.match(r"^[A-Z]+(?=[A-Z][a-z]|$)|^[A-Z]", name).group(0)
    name = head.lower() + name[len(head):]
    return "bit" + name[0].upper() + name[1:] if name in OPERATOR_WORDS else name


COMPLEX = {"Vek32fc", "Vek64fc"}  # arrays of std::complex are taken as well
BITS = {"veksCopy_1u"}  # whose length counts parts of an element
HALVES = {"Low": "({0} + 1) / 2", "High": "{0} / 2"}  # the bands of the Haar step, by the length of the whole
SAME_TYPE = {"Vek16f": "Vek16u", "VekRoundMode": "int", "VekCompareOp": "int", "VekHintAlgorithm": "int"}


def span_length(f, arrays, span):
    whole = [a for a in arrays if not a.name.endswith(tuple(HALVES))]
    if len(whole) == len(arrays):
        return f"detail::len({', '.join(map(span, arrays))})"
    size = f"{span(whole[0])}.size()"
    fits = [f"{span(a)}.size() == {half.format(size)}" for a in arrays for end, half in HALVES.items() if a.name.endswith(end)]
    return f"{' && '.join(fits)} ? detail::len({span(whole[0])}) : 0"


def span_overload(f):
    """The overload of one function, or None where a span says nothing that the prototype does not."""
    arrays = [p for p in f.parameters if p.is_array]
    if f.name in BITS or not arrays or f.result != "VekStatus" or [p.name for p in f.parameters].count("len") != 1:
        return None
    if any(p.name.startswith("pp") or p.is_optional or p.name.endswith("Buffer") for p in f.parameters):
        return None
    packed = re.findall(r"24[us]", f.name)
    shown, passed = [], []
    span = lambda p: p.name[1].lower() + p.name[2:]
    for p in f.parameters:
        if p.name == "len":
            passed.append(span_length(f, arrays, span))
        elif p.is_array:
            element = p.type.rstrip("* ").replace("const ", "")
            pointer = f"{span(p)}.data()"
            if packed and element == "Vek8u":
                element = "Vek" + packed[0]
                pointer = f"detail::bytes({pointer})"
            kind = "ComplexSpan" if element in COMPLEX else "std::span"
            shown.append(f"{kind}<{'const ' if 'const' in p.type else ''}{element}> {span(p)}")
            passed.append(pointer)
        else:
            shown.append(f"{p.type} {p.name}")
            passed.append(p.name)
    return ", ".join(shown), ", ".join(passed)


def spans(library):
    rows, seen = [], {}
    for f in library.dispatched:
        overload = span_overload(f)
        if overload:
            shown, passed = overload
            types = re.sub(r" \w+(, |$)", r"\1", shown)
            key = (span_name(f), re.sub(r"\w+", lambda m: SAME_TYPE.get(m[0], m[0]), types))
            seen.setdefault(key, []).append(f)
            rows.append((f, key, shown, passed))
    lines = [HEAD.rstrip() + """
//
// One overload a function on std::span: the arrays carry their own lengths, which have to agree, and the element types
// choose the function. Where two functions take the same types the type tokens stay in the name. Arrays that do not
// fit each other, empty ones and those of more than INT_MAX elements are refused, with vekStsSizeErr unless the
// function finds another fault first.
// clang-format off
#ifndef LIBRARY_SPANS_HPP
#define LIBRARY_SPANS_HPP

#include <span>

#include "vek/complex.hpp"
#include "vek/lengths.hpp"
#include "vek/result.hpp"
""".replace("LIBRARY", library.name.upper()) + f"""#include "{library.name}.h"

namespace vek {{
"""]
    for f, key, shown, passed in rows:
        name = key[0]
        if len(seen[key]) > 1:
            name += "_" + "".join(w for w in f.name.split("_") if TYPE_TOKENS.match(w))
        lines.append(f"inline Result {name}({shown}) {{ return {f.name}({passed}); }}")
    lines.append("\n}  // namespace vek\n\n#endif\n")
    return "\n".join(lines)


def function_rows(library):
    """One row a function for generic tests: VEK_FUNCTION(name, result, "kind name; ..."); VEK_CHAPTER(name) if wanted."""
    lines, chapter = [HEAD], None
    for f in library.dispatched:
        if f.chapter != chapter:
            chapter = f.chapter
            lines.append(f"#ifdef VEK_CHAPTER\nVEK_CHAPTER({chapter})\n#endif")
        args = "; ".join(f"{'array' if p.is_array else 'plain'} {p.type} {p.name}" for p in f.parameters)
        lines.append(f'VEK_FUNCTION({f.name}, "{f.result}", "{args}")')
    return "\n".join(lines) + "\n"


def lines_of(functions):
    return "".join(sorted(f.name + "\n" for f in functions))


def stubs(library):
    lines = [HEAD + f'#include "{library.name}.h"\n']
    for f in library.functions:
        shown = ", ".join(f"{p.type} {p.name}" for p in f.parameters) or "void"
        lines.append(f"{f.result} {f.name}({shown}) {{" + (" }" if f.result == "void" else " return 0; }"))
    return "\n".join(lines) + "\n"


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("what")
    ap.add_argument("--headers", nargs="+", required=True)
    ap.add_argument("--out", required=True)
    ap.add_argument("--objects", nargs="*", default=[])
    ap.add_argument("--slot", help="tables of a library that has only this slot")
    ap.add_argument("--compare", action="store_true", help="fail where the file is not what would be written")
    args = ap.parse_args()
    library = Library(args.headers)
    objects = []
    for o in args.objects:
        objects += pathlib.Path(o[1:]).read_text().split() if o.startswith("@") else [o]
    text = {
        "idx-header": lambda: idx_header(library),
        "idx-source": lambda: idx_source(library),
        "entries": lambda: entries(library),
        "tables": lambda: tables(library, objects, args.slot),
        "exports": lambda: exports(library),
        "spans": lambda: spans(library),
        "names": lambda: lines_of(library.dispatched),
        "plain": lambda: lines_of(f for f in library.functions if not f.dispatched),
        "functions": lambda: function_rows(library),
        "stubs": lambda: stubs(library),
    }[args.what]()
    out = pathlib.Path(args.out)
    if not out.exists() or out.read_text() != text:
        if args.compare:
            sys.exit(f"{out} is not what the prototypes imply; building vek by itself renews it")
        out.write_text(text)


if __name__ == "__main__":
    main()
