#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The demonstration finds the beats that are there, and draws a picture that a browser opens.
set -eu
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$1" "$(dirname "$0")/data/ecg-360hz.s16le" "$work/ecg.svg" | tee "$work/found"
beats=$(sed -n 's/^beats found *//p' "$work/found")
[ "$beats" -ge 475 ] && [ "$beats" -le 525 ]
python3 -c 'import sys, xml.dom.minidom as x; assert len(x.parse(sys.argv[1]).getElementsByTagName("polyline")) == 3' "$work/ecg.svg"
! "$1" /dev/null "$work/none.svg" 2> "$work/error" && grep -q "less than ten seconds" "$work/error"
