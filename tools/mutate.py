#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Whether the tests notice wrong code: makes one mistake at a time in the sources and runs the tests.

  mutate.py [--seed N] [--count N] [--only FILE]...   draws mutants and tries those not tried yet
  mutate.py --again                                   tries the survivors once more, after tests were sharpened
  mutate.py --report                                  the score so far
  mutate.py --list                                    the mutants that would be drawn first

Mistakes are made by rules on tokens (mutants.py); which sites are drawn depends on the seed and on the text around a site, not
on line numbers, and every file gets a share by its size. mutations.toml names what is not worth a draw, and why, and explains
survivors. A draw that does not compile, or that leaves every object byte for byte as it was, is replaced by the next of its
file.

Work is done in a copy of the tree under build-mutate/: two slots (mx and l9), optimised little, without sanitizers. Only what
includes the changed file is compiled, and linked with all tests to one program. Of these only those run that reach a changed
object by the linker's symbols, those of its own family first; the first failure, crash or excess of time catches the mutant.
Results are appended to results-SEED.jsonl, so that a run can be interrupted. One core is kept busy for half an hour.
"""
import argparse
import collections
import hashlib
import json
import os
import pathlib
import re
import resource
import shlex
import shutil
import subprocess
import sys
import time
import tomllib

import mutants

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build-mutate"
TREE = WORK / "tree"
BUILD = TREE / "build" / "mutants"
FAMILIES = "vector stats gen filter transform core".split()
SHARED_HEADERS = 12  # mutants of core/simd, which everything includes
RARE = 0.2  # of the waiting time of other kinds
SKIPPED_PROGRAMS = {
    "abi_test": "its bound on the stack is that of the optimised build",
    "fuzz_test": "half a minute for every mutant, and each family's own tests are what is tried here",
}
SKIPPED_TESTS = {"SortSpeed.*": "compares times, which a busy machine upsets"}


def run(command, **options):
    return subprocess.run(command, capture_output=True, text=True, errors="replace", **options)


# ---- what to draw ----------------------------------------------------------------------------------------------------


def shares(count, only):
    """How many mutants each file is to give: one, and the rest by size, core/simd together no more than SHARED_HEADERS."""
    files = [f for d in FAMILIES for f in sorted((ROOT / d).rglob("*")) if f.suffix in (".cpp", ".h")]
    names = [str(f.relative_to(ROOT)) for f in files]
    table = tomllib.loads((ROOT / "tools/mutations.toml").read_text())
    sites = {n: ordered for n in names if (not only or n in only) and (ordered := mutants.sites(ROOT, n, table["skip"]))}
    groups = [[n for n in sites if n.startswith("core/simd/")], [n for n in sites if not n.startswith("core/simd/")]]
    room = [SHARED_HEADERS if not only and groups[1] else count, count]
    quota = {}
    for group, most in zip(groups, room):
        most -= len(quota) and sum(quota.values())
        size = {n: len({s.line for s in sites[n]}) for n in group}
        while group and sum(quota.get(n, 0) for n in group) < most:
            # the file that is furthest behind its share
            n = min(group, key=lambda n: (quota.get(n, 0) / size[n] ** 0.75 if quota.get(n) else -1, n))
            if quota.get(n, 0) >= len(sites[n]):
                group.remove(n)
                continue
            quota[n] = quota.get(n, 0) + 1
    return sites, quota, table


def draw_order(sites, seed):
    """The sites of one file, kinds taking turns, rare ones sooner; each kind's by the hash of seed and surroundings."""
    key = lambda *parts: int(hashlib.sha256(repr((seed,) + parts).encode()).hexdigest()[:12], 16)
    kinds = collections.defaultdict(list)
    for s in sites:
        kinds[s.kind].append(s)
    turns = sorted(kinds, key=lambda k: key(sites[0].file, k) * (RARE if k in mutants.RARE_KINDS else 1))
    queues = [sorted(kinds[k], key=lambda s: key(s.id)) for k in turns]
    while queues:
        for q in queues:
            yield q.pop(0)
        queues = [q for q in queues if q]


# ---- the copy and its build ------------------------------------------------------------------------------------------


class Bench:
    """The copy of the tree, built once without a mistake, and what is needed to build it again with one."""

    def __init__(self):
        self.sync()
        if not (BUILD / "build.ninja").exists():
            self.must(["cmake", "-S", TREE, "-B", BUILD, "-G", "Ninja", "-DVEK_SLOTS=mx;l9", "-DVEK_TOOLS=OFF",
                       "-DVEK_EXAMPLES=OFF", "-DCMAKE_BUILD_TYPE=RelWithDebInfo", "-DCMAKE_CXX_FLAGS_RELWITHDEBINFO=-O1"])
        self.must(["ninja", "-C", BUILD, "-j1"])
        self.commands = {}
        for c in json.loads((BUILD / "compile_commands.json").read_text()):
            words = shlex.split(c["command"])
            self.commands[words[words.index("-o") + 1]] = [w for w in words if w != "-Werror"] + ["-w"]
        self.objects = [o for o in self.commands if o.startswith("CMakeFiles/vek_")] + [
            str(o.relative_to(BUILD)) for o in BUILD.glob("CMakeFiles/vek_*.dir/**/*.o")]
        self.objects = sorted(set(self.objects))
        self.tests = sorted(o for o in self.commands if re.search(r"_test\.cpp\.o$", o) and pathlib.Path(o).name[:-6]
                            not in SKIPPED_PROGRAMS)
        self.support = [str(o.relative_to(BUILD)) for kind in ("generic_rows", "fuzz_driver", "test_heap")
                        for o in BUILD.glob(f"tests/CMakeFiles/vek_{kind}.dir/**/*.o")]
        self.dependents = collections.defaultdict(set)
        for block in run(["ninja", "-C", BUILD, "-t", "deps"]).stdout.split("\n\n"):
            head, *files = block.strip().split("\n")
            for f in files:
                path = os.path.normpath(BUILD / f.strip())
                if path.startswith(str(TREE)):
                    self.dependents[os.path.relpath(path, TREE)].add(head.split(":")[0])
        self.symbols()
        self.precompile()
        self.launcher = [os.environ["CMAKE_CXX_COMPILER_LAUNCHER"]] if "CMAKE_CXX_COMPILER_LAUNCHER" in os.environ else []
        self.fast = ["-fuse-ld=lld"] if shutil.which("ld.lld") else []
        self.baseline()

    def precompile(self):
        """The instruction headers of each slot, which are most of a small file's time and no part of its code."""
        self.heads = {}
        for o in self.objects:
            words = self.commands.get(o, [])
            slot = next((w for w in words if w.startswith("-DVEK_SLOT=")), None)
            if slot and slot not in self.heads and "-mf16c" not in words:
                head = WORK / f"head-{slot[-2:]}.h"
                head.write_text('#include "core/simd/level.h"\n')
                self.heads[slot] = ["-include", str(head)]
                options = words[: words.index("-o")]
                self.must(options + ["-w", "-x", "c++-header", str(head), "-o", f"{head}.gch"], cwd=BUILD)

    @staticmethod
    def must(command, **options):
        r = run(command, **options)
        if r.returncode:
            sys.exit(f"{shlex.join(map(str, command))}\n{r.stdout[-4000:]}{r.stderr[-2000:]}")

    @staticmethod
    def sync():
        """Files that differ are copied, which also undoes what a run that was cut short has left, and others removed."""
        listed = run(["git", "-C", ROOT, "ls-files", "-co", "--exclude-standard"]).stdout.split("\n")
        listed = [name for name in listed if (ROOT / name).is_file()]
        for copy in list(TREE.rglob("*")):
            name = copy.relative_to(TREE)
            if copy.is_file() and name.parts[0] != "build" and str(name) not in listed:
                copy.unlink()
        for name in listed:
            source, copy = ROOT / name, TREE / name
            data = source.read_bytes()
            if not copy.exists() or copy.read_bytes() != data:
                copy.parent.mkdir(parents=True, exist_ok=True)
                copy.write_bytes(data)
                shutil.copymode(source, copy)

    def symbols(self):
        """Which objects each test program's file can reach, entries leading to every slot's function of their name."""
        defined, needs = collections.defaultdict(set), {}
        for o in self.objects + self.tests + self.support:
            needs[o] = set()
            for line in run(["nm", BUILD / o]).stdout.split("\n"):
                words = line.split()
                if len(words) >= 2 and words[-2] in "UTRDBWVi":
                    name = words[-1]
                    slot = re.match(r"_ZN3vek2\w\w(\d+)(vek\w+)", name)
                    if slot:
                        name = slot[2][: int(slot[1])]
                    if words[-2] == "U":
                        needs[o].add(name)
                    else:
                        defined[name].add(o)
        frame = {o for o in self.objects if "_slot_" not in o}
        self.reach = {}
        for t in self.tests:
            todo = needs[t].union(*(needs[s] for s in self.support if "generic_test" in t or "lengths_test" in t))
            seen, found, direct = set(), set(), None
            while todo:
                new = set().union(*(defined[n] for n in todo if n in defined)) - found
                direct = new if direct is None else direct
                found |= new
                seen |= todo
                # what everything uses leads nowhere: the frame's objects are reached, not passed
                todo = set().union(*(needs[o] for o in new - frame), ()) - seen
            self.reach[t] = (direct, found)

    def baseline(self):
        """Links without a mistake and notes what each test program costs, unless it is known for these objects."""
        linked = self.link(WORK / "plain", {})
        if linked is not True:
            sys.exit(linked)
        record = WORK / "costs.json"
        known = json.loads(record.read_text()) if record.exists() else {}
        library = hashlib.sha256(b"".join((BUILD / o).read_bytes() for o in self.objects))
        self.suites, self.cost = {}, {}
        for t in self.tests:
            text = (TREE / "tests" / pathlib.Path(t).name[:-2]).read_text()
            self.suites[t] = sorted(set(re.findall(r"^(?:TYPED_)?TEST(?:_F|_P)?\((\w+)", text, re.M)))
            objects = library.copy()
            objects.update((BUILD / t).read_bytes())
            key = objects.hexdigest()
            if key not in known:
                before = resource.getrusage(resource.RUSAGE_CHILDREN)
                outcome = self.test(WORK / "plain", t, 600)
                if outcome:
                    sys.exit(f"{t} fails without a mistake: {outcome}")
                after = resource.getrusage(resource.RUSAGE_CHILDREN)
                known[key] = round(after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, 2)
                record.write_text(json.dumps(known))
            self.cost[t] = known[key]

    def link(self, program, changed):
        objects = [changed.get(o, BUILD / o) for o in self.objects + self.tests + self.support]
        r = run(["g++", *self.fast, "-o", program, *objects, "-lgtest_main", "-lgtest", "-lm", "-Wl,-z,now",
                 "-Wl,--wrap=malloc", "-Wl,--wrap=free"], cwd=BUILD)
        return r.returncode == 0 or r.stderr[-2000:]

    def test(self, program, t, cpu_seconds):
        """What caught the mutant, or nothing."""

        def limits():
            resource.setrlimit(resource.RLIMIT_CPU, (cpu_seconds, cpu_seconds + 1))
            resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
            resource.setrlimit(resource.RLIMIT_AS, (16 << 30, 16 << 30))

        names = ":".join(f"{s}.*:{s}/*" for s in self.suites[t]) + "-" + ":".join(SKIPPED_TESTS)
        try:
            r = run([program, f"--gtest_filter={names}", "--gtest_break_on_failure", "--gtest_brief=1"], cwd=WORK,
                    preexec_fn=limits, timeout=60 + 30 * cpu_seconds)
        except subprocess.TimeoutExpired:
            return "time"
        if r.returncode == 0:
            return None
        if -r.returncode in (24, 9):  # SIGXCPU, SIGKILL
            return "time"
        failed = re.search(r"([^/\s]+:\d+): Failure", r.stdout)
        return failed[1] if failed else f"signal {-r.returncode}"

    # -- one mutant

    def batches(self, site):
        """Sources that include the file, those that name the function at the site first, few at a time."""
        by_source = collections.defaultdict(list)
        for o in sorted(self.dependents[site.file]):
            words = self.commands.get(o)
            if words and o in self.objects:  # the tests stay as they are
                by_source[words[words.index("-c") + 1]].append(o)
        name = re.compile(rf"\b{re.escape(site.function)}\b") if site.function else None

        def rank(source):
            text = pathlib.Path(source).read_text()
            near = [text] + [(TREE / h).read_text() for h in re.findall(r'#include "((?:%s)/[^"]+)"' % "|".join(FAMILIES), text)
                             if "simd" not in h]
            kin = len(os.path.commonprefix([os.path.relpath(source, TREE), site.file]))
            return (0 if not name or any(name.search(x) for x in near) else 1, -kin, len(text))

        ordered, result = sorted(by_source, key=rank), []
        for n in [4, 12, len(ordered)] if site.file.startswith("core/simd/") else [2, len(ordered)]:
            if ordered:
                result.append([o for s in ordered[:n] for o in by_source[s]])
                ordered = ordered[n:]
        return result

    def compiles(self, words):
        try:
            return run(self.launcher + words, cwd=BUILD, timeout=300).returncode == 0
        except subprocess.TimeoutExpired:
            return False

    def attempt(self, site):
        path = TREE / site.file
        original = path.read_text()
        out = WORK / "mutant"
        shutil.rmtree(out, ignore_errors=True)
        try:
            path.write_text(site.apply(original))
            changed = {}
            for batch in self.batches(site):
                new = False
                for o in batch:
                    target = out / o
                    target.parent.mkdir(parents=True, exist_ok=True)
                    words = list(self.commands[o])
                    words[words.index("-o") + 1] = str(target)
                    if site.file != "core/simd/level.h":
                        words[1:1] = next((self.heads[w] for w in words if w in self.heads), [])
                    if not self.compiles(words):
                        return "does not compile", None
                    if target.read_bytes() != (BUILD / o).read_bytes():
                        changed[o] = target
                        new = True
                if not new:
                    continue
                linked = self.link(WORK / "mutated", changed)
                if linked is not True:
                    return "does not compile", None
                for t in self.relevant(set(changed)):
                    how = self.test(WORK / "mutated", t, int(3 * self.cost[t]) + 5)
                    if how:
                        return "caught", f"{pathlib.Path(t).name[:-6]}: {how}"
            return ("survived", None) if changed else ("same objects", None)
        finally:
            path.write_text(original)

    def relevant(self, changed):
        """Tests that reach what changed: those of the family first, those of every function last."""
        tests = []
        core = all("_slot_" not in o for o in changed)
        for t in self.tests:
            direct, found = self.reach[t]
            general = any(g in t for g in ("digest_test", "generic_test", "lengths_test", "cpp_test", "large_test", "allocation_test"))
            if changed & (direct if core else found) or t in changed:
                tests.append((general, not changed & direct, self.cost[t], t))
        return [t[-1] for t in sorted(tests)]


# ---- the run ---------------------------------------------------------------------------------------------------------


def explained(site, table):
    for e in table.get("survivor", []):
        if e["file"] == site["file"] and e["before"] == site["before"] and e["after"] == site["after"]:
            return e["why"]
    return None


def report(results, table, seed):
    tried = [r for r in results if r["outcome"] in ("caught", "survived")]
    survivors = [r for r in tried if r["outcome"] == "survived"]
    known = [r for r in survivors if explained(r, table)]
    caught = len(tried) - len(survivors)
    for kind in sorted({r["kind"] for r in tried}):
        of = [r for r in tried if r["kind"] == kind]
        print(f"{kind:28} {sum(r['outcome'] == 'caught' for r in of):4} of {len(of)}")
    for r in survivors:
        print(f"\n{r['file']}:{r['line']}: {r['kind']}\n  - {r['before']}\n  + {r['after']}\n    "
              f"{explained(r, table) or 'NOT EXPLAINED'}")
    redrawn = collections.Counter(r["outcome"] for r in results if r not in tried)
    if tried:
        again = ", ".join(f"{n} {k}" for k, n in sorted(redrawn.items()))
        print(f"\n{len(tried)} mutants, seed {seed}: {caught} caught ({100 * caught / len(tried):.1f} %; of those that are no "
              f"equivalents {100 * caught / (len(tried) - len(known)):.1f} %), {len(known)} survivors explained, "
              f"{len(survivors) - len(known)} not; drawn again: {again}")
    return len(survivors) - len(known)


def load(path):
    latest = {}
    if path.exists():
        for line in path.read_text().split("\n"):
            if line:
                r = json.loads(line)
                latest[r["id"]] = r
    return latest


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=220)
    parser.add_argument("--only", action="append", default=[], metavar="FILE")
    parser.add_argument("--again", action="store_true")
    parser.add_argument("--report", action="store_true")
    parser.add_argument("--list", action="store_true")
    args = parser.parse_args()
    sites, quota, table = shares(args.count, args.only)
    orders = {n: list(draw_order(sites[n], args.seed)) for n in quota}
    WORK.mkdir(exist_ok=True)
    path = WORK / f"results-{args.seed}.jsonl"
    done = load(path)
    if args.list:
        for n in quota:
            for s in orders[n][: quota[n]]:
                print(f"{s.file}:{s.line}: {s.kind}\n  - {s.before}\n  + {s.after}")
        return 0

    def drawn():
        """Of what was tried, the share of each file: earlier rules or counts may have tried others too."""
        chosen = []
        for n in quota:
            tried = 0
            for s in orders[n]:
                if s.id in done and tried < quota[n]:
                    chosen.append(done[s.id] | {"line": s.line})
                    tried += done[s.id]["outcome"] in ("caught", "survived")
        return chosen

    if args.report:
        return 1 if report(drawn(), table, args.seed) else 0

    bench = Bench()

    def attempt(s):
        start = time.monotonic()
        outcome, by = bench.attempt(s)
        r = {k: getattr(s, k) for k in ("id", "file", "line", "kind", "before", "after")}
        r |= {"outcome": outcome, "by": by, "seconds": round(time.monotonic() - start, 1)}
        done[s.id] = r
        with path.open("a") as f:
            f.write(json.dumps(r) + "\n")
        print(f"{outcome:16} {s.file}:{s.line} {s.kind}: {by or s.after} ({r['seconds']} s)", flush=True)

    if args.again:
        for s in (s for n in sites for s in sites[n]):
            if done.get(s.id, {}).get("outcome") == "survived" and not explained(done[s.id], table):
                attempt(s)
        return 1 if report(drawn(), table, args.seed) else 0
    # Files take turns, so that a run cut short has seen something of each.
    for turn in range(max(quota.values(), default=0)):
        for n in sorted(quota, key=lambda n: hashlib.sha256(f"{args.seed} {n}".encode()).hexdigest()):
            if turn >= quota[n]:
                continue
            tried = 0
            for s in orders[n]:
                if s.id not in done:
                    attempt(s)
                tried += done[s.id]["outcome"] in ("caught", "survived")
                if tried > turn:
                    break
    return 1 if report(drawn(), table, args.seed) else 0


if __name__ == "__main__":
    sys.exit(main())
