#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Sizes of libvek.so, stripped, for some values of VEK_SLOTS, each built on what the one before has left.
#
#   slot_sizes.sh [values]      default: "mx" "mx;l9" "mx;y8;l9"
set -eu
cd "$(dirname "$0")/.."
[ $# -gt 0 ] || set -- "mx" "mx;l9" "mx;y8;l9"
build=build-sizes
for slots in "$@"; do
  cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DVEK_SLOTS="$slots" -DVEK_TESTS=OFF -DVEK_TOOLS=OFF \
    -DVEK_EXAMPLES=OFF >/dev/null
  cmake --build "$build" --target vek_shared >"$build/log" || { tail -20 "$build/log"; exit 1; }
  strip -o "$build/stripped" "$build/libvek.so.8"
  printf '%-12s %5.2f MB\n' "$slots" "$(echo "$(stat -c %s "$build/stripped") / 1000000" | awk '{ print $1 / $3 }')"
done
