#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Compares the interface of a library with its record, docs/libNAME.abi: every exported function, its types and their
# layout. What is compared is a library of empty functions derived from the prototypes in include/NAME, since the real one
# carries no debug information.
#
#   abi_record.sh compare|write CC SONAME HEADER...
set -eu
what=$1 cc=$2 soname=$3
shift 3
name=$(basename "$(dirname "$1")")
root=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
record=$root/docs/lib$name.abi
trap 'rm -rf "$work"' EXIT
python3 "$root/tools/derive.py" stubs --headers "$@" --out "$work/stubs.c"
"$cc" -w -g -shared -fPIC -I"$root/include" -Wl,-soname,"$soname" "$work/stubs.c" -o "$work/lib$name.so"
abidw --no-corpus-path --no-comp-dir-path --no-show-locs --no-parameter-names --headers-dir "$root/include" \
  --drop-private-types "$work/lib$name.so" >"$work/now.abi"
if [ "$what" = write ]; then
  cp "$work/now.abi" "$record"
  exit
fi
# A record with one size changed must not pass, or the comparison proves nothing.
sed "0,/\(<class-decl.*size-in-bits='\)/s//\11/" "$record" >"$work/spoilt.abi"
! abidiff "$work/spoilt.abi" "$work/now.abi" >"$work/found" || { echo "a spoilt record went unnoticed"; exit 1; }
abidiff "$record" "$work/now.abi"
