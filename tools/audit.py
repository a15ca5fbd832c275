#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Reads the built objects and the linked library and fails on what no test of results can see.

  audit.py --library libvek.so --derived build/derived/vek

  entries    every dispatched entry is exactly mark, load, address, jump
  exports    the dynamic symbols are the dispatched functions, their twins and the plain functions, nothing else
  imports    the library needs libc and libm only, and of them only what is listed here
  hardening  full RELRO, immediate binding, no executable stack, no text relocations; control flow protected (IBT, SHSTK);
             no address of code where the loaded file stays writable
  in place   every function of a slot that no slot object defines moves registers and jumps to its form with a
             destination of its own, in the same slot
  symbols    slot code defines no weak symbol, no load-time initialiser, no name outside its slot's namespace
  constants  no table of a kilobyte is there twice: what slots share has one home
  levels     no instruction above the level that the slot's processors promise, none of the x87
  intrinsics kernels are written on the operations of core/simd; only the files listed here call the compiler's own

Before each check judges the build it is shown a fault of its kind and has to find it.
"""
import argparse
import pathlib
import re
import subprocess
import sys

import slots

NEEDED = {"libc.so.6", "libm.so.6"}
IMPORTS = set("""malloc free memcpy memmove memset memcmp clock_gettime gettimeofday __cxa_finalize __gmon_start__
    _ITM_deregisterTMCloneTable _ITM_registerTMCloneTable __stack_chk_fail abort
    sin cos sincos sincosl tan atan atan2 exp log sqrt floor ceil fabs fmod ldexp pow rint nearbyint sqrtf sinf cosf sinh cosh asinh expm1 hypot fmax fmin frexp""".split())

SSE3 = "addsub[ps][sd] h(add|sub)p[sd] lddqu movddup movs[hl]dup fisttp\\w*"
SSSE3 = "pshufb ph(add|sub)\\w* pmaddubsw psign[bwd] pmulhrsw pabs[bwd] palignr"
SSE41 = """p?blendv?(b|p[sd]|w) dpp[sd] extractps insertps movntdqa mpsadbw packusdw pcmpeqq pextr[bdq] phminposuw
    pinsr[bdq] p(max|min)(s[bd]|u[wd]) pmov[sz]x\\w+ pmuldq pmulld ptest round[ps][sd]"""
NEVER = "pcmpgtq pcmp[ei]str\\w crc32\\w* popcnt\\w* lzcnt\\w*"  # asked for at run time if ever, never assumed
BMI = "andnl? andnq bextr\\w* bls\\w+ bzhi\\w* mulx\\w* pdep\\w* pext[lq]? rorx\\w* sarx\\w* shlx\\w* shrx\\w*"
MOVBE = "movbe\\w*"
AVX2_ONLY = """v(insert|extract)i128 vperm2i128 vperm([dq]|ps|pd) vpbroadcast\\w vpblendd vps[rl][la]v\\w vpmaskmov\\w
    vp?gather\\w+ vbroadcasti128"""


# Kernel files that may call intrinsics, and why their work is no pack operation.
INTRINSICS = {
    "stats/sort_partition.h": "a step is as wide as the level's byte shuffle, and its tables go by that width",
    "transform/fft_vector.h": "transforms work on single registers with a lane order of their own",
    "vector/convert_half_f16c.cpp": "instructions of a feature that no slot promises",
}


def words(text):
    return re.compile("^(" + "|".join(text.split()) + ")$")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def forbidden(slot, mnemonic, operands):
    """The reason why the slot may not use the instruction, or None."""
    flags = slots.flags(slot)
    if "%zmm" in operands or re.search(r"%[xy]mm(1[6-9]|2\d|3[01])|%k[0-7]\b", operands):
        return "AVX-512"
    if re.match(r"f(?!xsave|xrstor)|emms", mnemonic) or re.search(r"%st\b|%mm[0-7]", operands):
        return "x87, whose precision is the caller's"
    if words(NEVER).match(mnemonic) or mnemonic == "vpcmpgtq" and "-mavx" not in flags:
        return "not promised to any slot"
    if words(MOVBE).match(mnemonic):
        return None if "-mmovbe" in flags else "MOVBE"
    if words(BMI).match(mnemonic) and "-mbmi2" not in flags:
        return "BMI"
    if re.match(r"v(fn?m(add|sub))", mnemonic) and "-mfma" not in flags:
        return "FMA"
    if mnemonic.startswith("v") and mnemonic not in ("verr", "verw"):
        if "-mavx" not in flags:
            return "AVX"
        if "-mavx2" not in flags:
            if words(AVX2_ONLY).match(mnemonic):
                return "AVX2"
            if mnemonic.startswith("vp") and "%ymm" in operands and not re.match(r"vptest|vpermilp[sd]|vperm2f128", mnemonic):
                return "AVX2"
            if mnemonic in ("vmovntdqa", "vmpsadbw") and "%ymm" in operands:
                return "AVX2"
            if re.match(r"vbroadcasts[sd]", mnemonic) and "(" not in operands:
                return "AVX2"
        return None
    for name, table, flag in (("SSE3", SSE3, "-msse3"), ("SSSE3", SSSE3, "-mssse3"), ("SSE4.1", SSE41, "-msse4.1")):
        if flag not in flags and words(table).match(mnemonic):
            return name
    return None


def instructions(listing):
    for line in listing.splitlines():
        m = re.match(r"^\s*[0-9a-f]+:\t(?:rep\w* |lock |data16 |notrack |bnd )*(\S+)\s*(.*)$", line)
        if m:
            yield m.group(1), m.group(2)


def check_levels(objects):
    for slot, planted in (("mx", "pshufb"), ("y8", "vaddps"), ("e9", "vpermd"), ("l9", "popcnt"), ("n8", "pmulld")):
        assert forbidden(slot, planted, "%xmm0,%xmm1"), planted
    assert forbidden("mx", "fldt", "(%rax)") and forbidden("l9", "movq", "%mm0,%rax")
    faults, count = [], 0
    for slot, path in objects:
        for mnemonic, operands in instructions(run("objdump", "-d", "--no-show-raw-insn", path)):
            count += 1
            why = forbidden(slot, mnemonic, operands)
            if why:
                faults.append(f"{path}: {mnemonic} {operands}: {why} in slot {slot}")
    return faults, f"{count} instructions"


def symbol_faults(slot, path, listing, sections):
    faults = [f"{path}: weak symbol {n}" for t, n in listing if t in "WwVu"]
    faults += [f"{path}: {n} lacks the slot's namespace" for t, n in listing
               if t in "TDBR" and not re.match(rf"vek::{slot}::", n)]
    if re.search(r"\.(init_array|ctors)\b", sections):
        faults.append(f"{path}: load-time initialiser")
    return faults


def check_symbols(objects):
    assert symbol_faults("l9", "planted", [("W", "f()")], "") and symbol_faults("l9", "planted", [("T", "g()")], "")
    assert symbol_faults("l9", "planted", [], " .init_array ")
    faults, count = [], 0
    for slot, path in objects:
        listing = re.findall(r"^[0-9a-f]+ (\S) (.*)$", run("nm", "-C", "--defined-only", path), re.M)
        count += len(listing)
        faults += symbol_faults(slot, path, listing, run("objdump", "-h", path))
    return faults, f"{count} symbols"


def check_constants(library):
    def repeated(tables):
        homes = {}
        for name, content in tables:
            if len(content) >= 1024 and any(content):
                homes.setdefault(content, []).append(name)
        return [f"{len(c)} bytes are {' and '.join(n)}" for c, n in homes.items() if len(n) > 1]

    assert repeated([("a", b"1" * 1024), ("b", b"1" * 1024)]) and not repeated([("a", b"1" * 1024), ("b", b"2" * 1024)])
    image, tables = pathlib.Path(library).read_bytes(), []
    m = re.search(r"\] \.rodata\s+PROGBITS\s+([0-9a-f]+) ([0-9a-f]+) ([0-9a-f]+)", run("readelf", "-SW", library))
    address, offset, size = (int(g, 16) for g in m.groups())
    for at, length, name in re.findall(r"^([0-9a-f]+) ([0-9a-f]+) [rR] (.*)$", run("nm", "-CS", library), re.M):
        start = int(at, 16) - address
        if 0 <= start < size:
            tables.append((name, image[offset + start:offset + start + int(length, 16)]))
    return repeated(tables), f"{len(tables)} constants"


ENTRY = re.compile(r"endbr64;movslq\s+0x[0-9a-f]+\(%rip\),%rax [^;]*vek_variant_index[^;]*;"
                   r"lea\s+0x[0-9a-f]+\(%rip\),%r11 [^;]*vek_table_(\w+)[^;]*;jmp\s+\*\(%r11,%rax,8\);$")


def entry_fault(name, body):
    m = ENTRY.match(body)
    return None if m and m.group(1) == name else f"{name} is not mark, load, address, jump: {body}"


def check_entries(bodies, names):
    good = ("endbr64;movslq 0x1(%rip),%rax # 2 <vek_variant_index>;lea 0x1(%rip),%r11 # 3 <vek_table_f>;jmp *(%r11,%rax,8);")
    assert not entry_fault("f", good) and entry_fault("f", "push %rbp;" + good) and entry_fault("f", good[8:]) and entry_fault("g", good)
    return [f for f in (entry_fault(n, bodies.get(n, "(absent)")) for n in names) if f], f"{len(names)} entries"


def function_bodies(library):
    """{demangled name: instructions, each ended by a semicolon, padding left out}"""
    bodies, current = {}, None
    for line in run("objdump", "-dC", "--no-show-raw-insn", "--section=.text", library).splitlines():
        m = re.match(r"^[0-9a-f]+ <([\w:]*).*>:$", line)
        if m:
            current = m.group(1)
            bodies[current] = ""
            continue
        m = re.match(r"^\s*[0-9a-f]+:\t(.*)$", line)
        if m and current and not re.match(r"nop|cs nop|data16|xchg\s+%ax,%ax", m.group(1)):
            bodies[current] += " ".join(m.group(1).split()) + ";"
    return bodies


MOVES_AND_JUMP = re.compile(r"endbr64;((mov\w*|xchg|movap[sd]) %\w+,%\w+;)*jmp \w+ <([\w:]+)\(.*\)>;$")


def in_place_fault(name, body):
    m = MOVES_AND_JUMP.match(body)
    wanted = re.sub(r"_I(Sfs)?$", lambda m: "_Sfs" if m[1] else "", name)
    return None if m and m.group(3) == wanted != name else f"{name} is not a jump to {wanted}: {body}"


def check_in_place(bodies, objects):
    good, name = "endbr64;mov %rdi,%rsi;jmp 10 <vek::l9::veksAbs_32f(float const*, float*, int)>;", "vek::l9::veksAbs_32f_I"
    assert not in_place_fault(name, good) and in_place_fault("vek::mx::veksAbs_32f_I", good)
    assert in_place_fault(name, "push %rbp;" + good) and in_place_fault("vek::l9::veksAbs_32f", good)
    own = set(re.findall(r" T (vek::\w+::vek[sx]\w+)\(", run("nm", "-C", "--defined-only", *(p for _, p in objects))))
    derived = [n for n in bodies if re.match(r"vek::\w+::vek[sx]", n) and n not in own]
    return [f for f in (in_place_fault(n, bodies[n]) for n in derived) if f], f"{len(derived)} forwards"


def check_exports(library, names, plain):
    wanted = set(names) | {n + "_Idx" for n in names} | set(plain)

    def difference(found):
        return sorted(wanted ^ found)

    assert difference(wanted | {"leak"}) and difference(wanted - {min(wanted)})
    found = {line.split()[-1] for line in run("nm", "-D", "--defined-only", library).splitlines()}
    return [f"exported set differs at {n}" for n in difference(found)], f"{len(found)} exports"


def check_imports(library):
    def faults(needed, undefined):
        return [f"needs {n}" for n in sorted(needed - NEEDED)] + [f"imports {n}" for n in sorted(undefined - IMPORTS)]

    assert faults({"libstdc++.so.6"}, set()) and faults(set(), {"printf"})
    needed = set(re.findall(r"NEEDED.*\[(.*)\]", run("readelf", "-dW", library)))
    undefined = {line.split()[-1].split("@")[0] for line in run("nm", "-D", "--undefined-only", library).splitlines()}
    return faults(needed, undefined), f"{len(undefined)} imports"


def writable_code_addresses(segments, relocations):
    """Where a relocation puts an address of code, or one that another file may define, outside what becomes read-only."""
    ranges = [(kind, int(at, 16), int(at, 16) + int(size, 16), flags) for kind, at, size, flags in
              re.findall(r"^\s*(LOAD|GNU_RELRO)\s+0x\w+\s+(0x\w+)\s+0x\w+\s+0x\w+\s+(0x\w+)\s+(.*?)\s+0x", segments, re.M)]

    def inside(address, kind, flag):
        return any(k == kind and low <= address < high and flag in flags for k, low, high, flags in ranges)

    found = re.findall(r"^(\w{16})\s+\w+\s+R_X86_64_(\w+)\s+(.*)$", relocations, re.M)
    return [f"writable address of code at {where}" for where, kind, rest in found
            if not inside(int(where, 16), "GNU_RELRO", "R")
            and (kind != "RELATIVE" or inside(int(rest.split()[-1], 16), "LOAD", "E"))]


def check_hardening(library):
    def faults(segments, dynamic, notes):
        out = []
        if not re.search(r"GNU_STACK.*\sRW\s", segments):
            out.append("executable stack")
        if "GNU_RELRO" not in segments:
            out.append("no RELRO")
        if re.search(r"LOAD.*\sRWE\s", segments):
            out.append("writable and executable segment")
        if not re.search(r"BIND_NOW|FLAGS_1.*NOW", dynamic):
            out.append("lazy binding")
        if "TEXTREL" in dynamic:
            out.append("text relocations")
        if f"[{soname}]" not in dynamic:
            out.append("soname")
        if not re.search(r"x86 feature:.*IBT.*SHSTK", notes):
            out.append("control flow unprotected")
        return out

    # The file has the whole version in its name, the library asks for what comes before its first point.
    soname = re.match(r"\w+\.so\.\d+", pathlib.Path(library).resolve().name)[0]
    assert len(faults("GNU_STACK 0 RWE 0", "TEXTREL", "x86 feature: SHSTK")) == 6
    planted = ("LOAD 0x0 0x1000 0x1000 0x100 0x100 R E 0x1000\nLOAD 0x0 0x2000 0x2000 0x200 0x200 RW  0x1000\n"
               "GNU_RELRO 0x0 0x2000 0x2000 0x100 0x100 R   0x1\n")
    row = "%016x  000000000008 R_X86_64_RELATIVE  %x\n"
    assert not writable_code_addresses(planted, row % (0x2010, 0x1010) + row % (0x2110, 0x2120))
    assert writable_code_addresses(planted, row % (0x2110, 0x1010))
    segments, relocations = run("readelf", "-lW", library), run("readelf", "-rW", library)
    found = faults(segments, run("readelf", "-dW", library), run("readelf", "-nW", library))
    return found + writable_code_addresses(segments, relocations), "ELF flags, relocations"


def intrinsic_faults(name, text):
    count = len(re.findall(r"\b_mm\d*_\w+", text))
    return [f"{name}: {count} intrinsics in a kernel file"] if count and name not in INTRINSICS else []


def check_intrinsics():
    assert intrinsic_faults("vector/add.cpp", "x = _mm_add_ps(a, b);") and not intrinsic_faults("vector/add.cpp", "a + b")
    root = pathlib.Path(__file__).resolve().parent.parent
    sources = {str(p.relative_to(root)): p.read_text() for family in ("vector", "stats", "gen", "filter", "transform", "idx")
               for p in sorted((root / family).iterdir()) if p.suffix in (".h", ".cpp")}
    faults = [f for name, text in sources.items() for f in intrinsic_faults(name, text)]
    faults += [f"{name} is listed and calls none" for name in INTRINSICS if not re.search(r"\b_mm\d*_", sources.get(name, ""))]
    return faults, f"{len(sources)} kernel sources"


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("--library", required=True)
    ap.add_argument("--derived", type=pathlib.Path, required=True, help="directory of the files derived for the library")
    args = ap.parse_args()
    names, plain, paths = ((args.derived / file).read_text().split() for file in ("names.txt", "plain.txt", "kernel_objects.txt"))
    objects = [(re.search(r"_slot_(\w\w)", p).group(1), p) for p in paths]
    bodies = function_bodies(args.library)
    failed = False
    for name, (faults, what) in {
        "entries": check_entries(bodies, names),
        "in place": check_in_place(bodies, objects),
        "exports": check_exports(args.library, names, plain),
        "imports": check_imports(args.library),
        "hardening": check_hardening(args.library),
        "symbols": check_symbols(objects),
        "constants": check_constants(args.library),
        "levels": check_levels(objects),
        "intrinsics": check_intrinsics(),
    }.items():
        print(f"{name}: {what}, {len(faults)} faults")
        for fault in faults[:20]:
            print("  " + fault)
        failed |= bool(faults)
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
