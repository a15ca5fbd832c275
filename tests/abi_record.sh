#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compares the interface with its record, docs/libvek.abi: every exported function, its types and their layout. What is
# compared is a library of empty functions derived from the prototypes, since the real one carries no debug information.
#
#   abi_record.sh compare|write CC HEADER...
set -eu
what=$1 cc=$2
shift 2
root=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
python3 "$root/tools/derive.py" stubs --headers "$@" --out "$work/stubs.c"
"$cc" -w -g -shared -fPIC -I"$root/include" -Wl,-soname,libvek.so.8 "$work/stubs.c" -o "$work/libvek.so"
abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names --headers-dir "$root/include" \
  --drop-private-types "$work/libvek.so" >"$work/now.abi"
if [ "$what" = write ]; then
  cp "$work/now.abi" "$root/docs/libvek.abi"
  exit
fi
# A record with one size changed must not pass, or the comparison proves nothing.
sed "/<class-decl.*Vek32fc/s/size-in-bits='64'/size-in-bits='96'/" "$root/docs/libvek.abi" >"$work/spoilt.abi"
! abidiff "$work/spoilt.abi" "$work/now.abi" >"$work/found" || { echo "a spoilt record went unnoticed"; exit 1; }
abidiff "$root/docs/libvek.abi" "$work/now.abi"
