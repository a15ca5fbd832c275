#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Runs every benchmark program once and writes docs/performance.md and docs/performance.svg from what it measured.

  performance.py BUILD_DIRECTORY             run the programs in BUILD_DIRECTORY/bench, then write both files
  performance.py BUILD_DIRECTORY --reuse     write both files from the last run's records

Rows are workload/contender/size in nanoseconds per element. Nobody types a number into either file by hand.
"""
import argparse
import json
import math
import pathlib
import subprocess
import sys

OURS = ("vek-l9", "vek-y8")


def run(build):
    for program in sorted((build / "bench").glob("*_bench")):
        print(program.name, flush=True)
        record = build / "bench" / (program.name + ".json")
        subprocess.run([program, f"--benchmark_out={record}", "--benchmark_out_format=json"], check=True,
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def load(build):
    """{family: {(workload, size): {contender: ns}}} and the machine's description."""
    families, machine = {}, ""
    for record in sorted((build / "bench").glob("*_bench.json")):
        data = json.loads(record.read_text())
        context = data["context"]
        machine = f"{context['num_cpus']} cores at {context['mhz_per_cpu']} MHz nominal"
        rows = families.setdefault(record.stem.removesuffix("_bench"), {})
        for b in data["benchmarks"]:
            if "ns_per_element" in b:
                workload, who, size = b["name"].split("/")[:3]
                rows.setdefault((workload, int(size)), {})[who] = b["ns_per_element"]
    return families, machine


def others(contenders):
    return {k: v for k, v in contenders.items() if not k.startswith("vek")}


def table(rows):
    out = ["| workload | n | l9 | y8 | best other | ratio |", "|---|---|---|---|---|---|"]
    for (workload, n), c in rows.items():
        rest = others(c)
        name, best = min(rest.items(), key=lambda kv: kv[1]) if rest else ("", None)
        l9, y8 = c.get("vek-l9"), c.get("vek-y8")
        cell = lambda x: f"{x:.3g}" if x is not None else ""
        ratio = f"{best / l9:.2f}" if best and l9 else ""
        out.append(f"| {workload} | {n} | {cell(l9)} | {cell(y8)} | {cell(best)} {name} | {ratio} |")
    return "\n".join(out)


def geometric_mean(values):
    return math.exp(sum(map(math.log, values)) / len(values)) if values else float("nan")


def summary(families):
    out = ["| family | rows | geometric mean of best other / l9 | rows below 0.95 |", "|---|---|---|---|"]
    for family, rows in families.items():
        ratios = [min(others(c).values()) / c["vek-l9"] for c in rows.values() if others(c) and "vek-l9" in c]
        if ratios:
            slow = sum(r < 0.95 for r in ratios)
            out.append(f"| {family} | {len(ratios)} | {geometric_mean(ratios):.2f} | {slow} |")
    return "\n".join(out)


def chart(families):
    """One bar a workload at 1024 elements (or its only size): how many times the best other contender's speed."""
    bars = []
    for rows in families.values():
        seen = {}
        for (workload, n), c in rows.items():
            if others(c) and "vek-l9" in c and (n == 1024 or workload not in seen):
                seen[workload] = min(others(c).values()) / c["vek-l9"]
        bars += seen.items()
    height = 30 + 14 * len(bars)
    x = lambda ratio: 200 + 180 * (math.log2(max(0.25, min(64, ratio))) + 2) / 2
    parts = [f"<svg xmlns='http://www.w3.org/2000/svg' width='960' height='{height}' font-family='sans-serif' "
             f"font-size='11'><rect width='960' height='{height}' fill='white'/>"]
    for ratio in (0.25, 0.5, 1, 2, 4, 8, 16, 32, 64):
        parts.append(f"<line x1='{x(ratio):.0f}' x2='{x(ratio):.0f}' y1='18' y2='{height}' "
                     f"stroke='{'#333' if ratio == 1 else '#ddd'}'/><text x='{x(ratio) - 8:.0f}' y='12'>{ratio:g}x</text>")
    for i, (workload, ratio) in enumerate(bars):
        y = 22 + 14 * i
        left, right = sorted((x(1), x(ratio)))
        colour = "#2a7" if ratio >= 1 else "#c63"
        parts.append(f"<text x='8' y='{y + 9}'>{workload}</text><rect x='{left:.1f}' y='{y}' "
                     f"width='{max(right - left, 1):.1f}' height='10' fill='{colour}'/>")
    return "\n".join(parts) + "\n</svg>\n"


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("build", type=pathlib.Path)
    ap.add_argument("--reuse", action="store_true")
    args = ap.parse_args()
    if not args.reuse:
        run(args.build)
    families, machine = load(args.build)
    if not families:
        sys.exit("no records")
    docs = pathlib.Path(__file__).resolve().parent.parent / "docs"
    programs = {p.stem.removesuffix("_bench") for p in (docs.parent / "bench").glob("*_bench.cpp")}
    absent = sorted(programs - set(families))
    text = ["# Performance", "",
            "Written by `tools/performance.py` from one run of the benchmark programs; nothing here is typed by hand."
            + (f" Not in this run: {', '.join(absent)}." if absent else ""),
            f"Machine: {machine}. Times are nanoseconds per element, the call through the exported entry included. *l9* and",
            "*y8* are the library in its AVX2 and SSE4.1 slots; *best other* is the fastest of the open peers installed and of",
            "the plain loop that a user would write, compiled for AVX2; *ratio* is its time over that of l9: above 1 the",
            "library is faster. One run, each row once: a row that departs from its neighbours may be the machine's doing.", "", "![ratio to the best other contender](performance.svg)", "", summary(families), ""]
    for family, rows in families.items():
        text += [f"## {family}", "", table(rows), ""]
    (docs / "performance.md").write_text("\n".join(text))
    (docs / "performance.svg").write_text(chart(families))


if __name__ == "__main__":
    main()
