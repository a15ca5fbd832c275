#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The same sources give the same bytes wherever they lie: the shared library, with one slot, built in two directories of
# different names. Arguments: C compiler, C++ compiler.
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for place in one another/place; do
  mkdir -p "$work/$place"
  tar -c -C "$here" CMakeLists.txt cmake core docs filter gen idx include stats tools transform vector | tar -x -C "$work/$place"
  cmake -S "$work/$place" -B "$work/$place/out" -G Ninja -DCMAKE_C_COMPILER="$1" -DCMAKE_CXX_COMPILER="$2" \
    -DCMAKE_BUILD_TYPE=Release -DVEK_TESTS=OFF -DVEK_EXAMPLES=OFF -DVEK_SLOTS=mx > "$work/log"
  cmake --build "$work/$place/out" --target vek_shared > "$work/log" || { cat "$work/log"; exit 1; }
done
cmp "$work/one/out/libvek.so.8.0.1" "$work/another/place/out/libvek.so.8.0.1"
sha256sum "$work/one/out/libvek.so.8.0.1"
