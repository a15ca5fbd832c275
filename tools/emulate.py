#!/usr/bin/env python3
# SPDX-License-Identifier: Apache-2.0
"""Runs programs as whole processes on emulated processors of each level: detection has to choose the slot by itself, and
an instruction above the model's level ends the run.

  emulate.py --native vek-info --info vek-info-static --stray PROGRAM PROGRAM...
"""
# Known faults of the emulator, which bind what may be run here:
# - qemu 7.2 (Debian 12) reads 32 bytes where vcvtdq2pd ymm, m128 reads 16. Right results, but a fault where the 16 bytes
#   end at an inaccessible page: programs that put arrays flush against such pages are not given to it.
import argparse
import json
import os
import subprocess
import sys

import slots

MODELS = [(model, slot.name) for slot in slots.ROWS for model in slot.models]


def emulated(model, command):
    env = dict(os.environ, VEK_TEST_CHOSEN_SLOT="1")
    return subprocess.run(["qemu-x86_64", "-cpu", model, *command], capture_output=True, text=True, env=env)


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("--native", required=True, help="vek-info, run on this processor")
    ap.add_argument("--info", required=True, help="vek-info, run on every model")
    ap.add_argument("--stray", required=True, help="a program that uses AVX2 unasked")
    ap.add_argument("programs", nargs="*")
    args = ap.parse_args()
    # A stray instruction has to be fatal here, or the runs below prove nothing.
    failed = emulated(MODELS[0][0], [args.stray]).returncode == 0
    if failed:
        print("a stray AVX2 instruction went unnoticed")
    native = json.loads(subprocess.run([args.native, "--json"], check=True, capture_output=True, text=True).stdout)
    left = set(slots.NAMES)
    for model, slot in MODELS:
        run = emulated(model, [args.info, "--json"])
        if run.returncode != 0:
            print(f"{model}: vek-info ended with {run.returncode}\n{run.stderr}")
            failed = True
            continue
        info = json.loads(run.stdout)
        ok = info["slot"] == slot and info["digest"] == native["digest"]
        line = f"{model}: slot {info['slot']}, digest {info['digest']}"
        if slot in left:
            left.discard(slot)
            for program in args.programs:
                result = emulated(model, [program, "--gtest_brief=1"])
                ok &= result.returncode == 0
                line += f", {os.path.basename(program)} {'passed' if result.returncode == 0 else 'FAILED'}"
                if result.returncode != 0:
                    line += f" ({result.returncode})\n" + (result.stdout + result.stderr)[-3000:]
        print(line + ("" if ok else f"  <- expected slot {slot} and digest {native['digest']}"), flush=True)
        failed |= not ok
    sys.exit(1 if failed else 0)


if __name__ == "__main__":
    main()
