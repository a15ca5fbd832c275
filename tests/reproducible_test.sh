#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The same sources give the same bytes wherever they lie: the shared library with one slot, in haste, and a kernel as it
# is released, built in two directories of different names. Arguments: C compiler, C++ compiler.
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
kernel=CMakeFiles/vek_slot_l9.dir/vector/addc.cpp.o
trap 'rm -rf "$work"' EXIT
for place in one another/place; do
  mkdir -p "$work/$place"
  tar -c -C "$here" --exclude=./build* --exclude=./out --exclude=./.git . | tar -x -C "$work/$place"
  common="-G Ninja -DCMAKE_C_COMPILER=$1 -DCMAKE_CXX_COMPILER=$2 -DVEK_TESTS=OFF -DVEK_TOOLS=OFF -DVEK_EXAMPLES=OFF -DVEK_SLOTS=mx;l9"
  cmake -S "$work/$place" -B "$work/$place/full" $common -DCMAKE_BUILD_TYPE=Release > "$work/log"
  cmake --build "$work/$place/full" --target "$kernel" > "$work/log" || { cat "$work/log"; exit 1; }
  cmake -S "$work/$place" -B "$work/$place/out" $common -DCMAKE_BUILD_TYPE=None -DCMAKE_CXX_FLAGS=-O1 -DVEK_SLOTS=mx > "$work/log"
  cmake --build "$work/$place/out" --target vek_shared > "$work/log" || { cat "$work/log"; exit 1; }
done
for file in out/libvek.so.8.0.1 "full/$kernel"; do
  cmp "$work/one/$file" "$work/another/place/$file"
  sha256sum "$work/one/$file"
done
