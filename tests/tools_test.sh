#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# vek-info's options, that vek-selftest finds what is wrong, and what both say of libraries with one slot. Argument: the
# build directory.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
info=$1/tools/vek-info selftest=$1/tools/vek-selftest

slot=$("$info" --slot)
"$info" | grep -q "^slot  *$slot: "
"$info" --json | python3 -c 'import json, sys; sys.exit(json.load(sys.stdin)["slot"] != sys.argv[1])' "$slot"
"$info" --version | grep -q '8\.0\.1'
"$info" --help | grep -q '^usage: '
for wrong in --what "--slot --json" ""; do
  status=0
  if [ -n "$wrong" ]; then "$info" $wrong 2>"$work/error" || status=$?; else "$info" "" 2>"$work/error" || status=$?; fi
  [ $status = 2 ] && grep -q '^usage: ' "$work/error" || { echo "vek-info $wrong ended with $status"; exit 1; }
done

digest() { "$info" --json | sed 's/.*"digest": "\([0-9a-f]*\)".*/\1/'; }
"$selftest" >"$work/checked"
for library in "$1"/slots/*/libvek.so.8; do
  [ -e "$library" ] || break
  only=$(basename "$(dirname "$library")")
  grep -q "^slot $only checked$" "$work/checked" || continue
  export LD_LIBRARY_PATH=$1/slots/$only
  [ "$("$info" --slot)" = "$only" ] || { echo "the library with slot $only runs in $("$info" --slot)"; exit 1; }
  of_slot=$(digest) found=$("$selftest")
  unset LD_LIBRARY_PATH
  [ "$of_slot" = "$(digest)" ] && [ "$found" = "slot $only checked" ] || { echo "slot $only by itself: $found"; exit 1; }
done

grep -q "^slot $slot checked$" "$work/checked"
# A function of either kind that does nothing has to be noticed in every slot.
for planted in "Not_8u the exact families" "Mean_32f veksMean_32f"; do
  echo "int veks${planted%% *}(void) { return 0; }" | cc -shared -fPIC -x c - -o "$work/wrong.so"
  status=0
  LD_PRELOAD=$work/wrong.so "$selftest" >"$work/found" || status=$?
  slots=$(grep -c ' checked$' "$work/found")
  [ $status = 1 ] && [ "$(grep -c ": ${planted#* } " "$work/found")" -ge "$slots" ] ||
    { cat "$work/found"; echo "veks${planted%% *} that does nothing went unnoticed"; exit 1; }
done
