#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# vek-selftest, linked and loaded in the ways that users link and load. Arguments: the source tree, a build of it.
set -eu
tree=$1 build=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
flags="-std=c99 -I$tree -I$tree/include"

# linked NAME FLAG...: builds the self-test with these flags and runs it.
linked() {
  local name=$1
  shift
  ${CC:-cc} $flags "$tree/tools/vek-selftest.c" "$@" -o "$work/$name" -lm
  "$work/$name" >"$work/log" || { cat "$work/log"; echo "$name fails"; exit 1; }
  echo "$name: $(grep -c checked "$work/log") slots"
}

linked static -O1 -static "$build/libvek.a"
linked gc-sections -O1 -ffunction-sections -Wl,--gc-sections "$build/libvek.a"
linked lto-native -O2 -flto -march=native -static "$build/libvek.a"
linked shared-native -O3 -march=native -Wl,-rpath,"$build" "$build/libvek.so"
# The user's flags reach no slot's code: nothing below AVX has wide registers.
objdump -dC --no-show-raw-insn "$work/lto-native" | awk '/^[0-9a-f]+ <vek::/ { low = /<vek::(mx|m7|u8|n8|y8)::/; seen += low } /^$/ { low = 0 }
  low && /%[yz]mm/ { print; wide = 1 } END { exit wide || !seen }' || { echo "a slot below AVX has wide registers"; exit 1; }

# Another C library: the archive needs nothing that is glibc's own.
if command -v musl-gcc >/dev/null; then
  CC=musl-gcc linked musl -O1 -static "$build/libvek.a"
else
  echo "musl: not here (package musl-tools)"
fi

# Loaded at run time beside a second copy, neither lending its symbols.
cat >"$work/load.c" <<'SOURCE'
#include <dlfcn.h>
#include <stdio.h>
int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    void* library = dlopen(argv[i], RTLD_NOW | RTLD_LOCAL);
    int (*sum)(const float*, int, float*, int) = library ? (int (*)(const float*, int, float*, int))dlsym(library, "veksSum_32f") : NULL;
    const float x[3] = {1, 2, 4};
    float y = 0;
    if (!sum || sum(x, 3, &y, 0) != 0 || y != 7 || dlsym(RTLD_DEFAULT, "veksSum_32f")) return printf("%s fails\n", argv[i]), 1;
  }
  return 0;
}
SOURCE
cp "$build/libvek.so" "$work/second.so"
cc -O1 "$work/load.c" -o "$work/load" -ldl
"$work/load" "$build/libvek.so" "$work/second.so"
echo "dlopen: two copies"
