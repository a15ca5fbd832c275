#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Builds the Debian packages from a clean copy of the tree, unpacks them into a root of their own and builds and runs
# clients there. Slots and optimisation make no difference to packaging: one slot is compiled, in haste.
set -eu
here=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/vek"
# What is committed, or the files themselves where there is no repository.
if git -C "$here" rev-parse >/dev/null 2>&1; then
  git -C "$here" archive HEAD | tar -x -C "$work/vek"
else
  tar -c -C "$here" --exclude=./build* --exclude=./out . | tar -x -C "$work/vek"
fi
cd "$work/vek"
export VEK_CONFIGURE="-DVEK_SLOTS=mx -DCMAKE_BUILD_TYPE=None" DEB_CXXFLAGS_APPEND="-O1 -g0"
DEB_BUILD_OPTIONS="nocheck noautodbgsym parallel=2" dpkg-buildpackage -us -uc -b > "$work/log" 2>&1 ||
  { tail -40 "$work/log"; exit 1; }
for package in libvek8 libvek-dev libvekx1 libvekx-dev vek-tools; do dpkg -x "$work/$package"_*.deb "$work/root"; done

usr=$work/root/usr
libdir=$(dirname "$(find "$usr" -name libvek.a)")
export LD_LIBRARY_PATH=$libdir
"$usr/bin/vek-info"
"$usr/bin/vek-selftest"
export PKG_CONFIG_PATH=$libdir/pkgconfig
cc -std=c99 tests/consumer/client.c -o "$work/client" $(pkg-config --cflags --libs vek vekx)
"$work/client"
cmake -S tests/consumer -B "$work/build" -DCMAKE_PREFIX_PATH="$usr" > "$work/log"
cmake --build "$work/build" > "$work/log" || { cat "$work/log"; exit 1; }

# Packages hold what they say: the library, the pages, and dependencies that were found.
for page in man1/vek-info.1 man3/vek_fir.3 man3/veksAdd_32f.3; do [ -s "$usr/share/man/$page.gz" ]; done
[ "$(readlink "$libdir/libvek.so.8")" = libvek.so.8.0.1 ] && [ ! -e "$usr/share/doc/libvek8/html" ]
[ -s "$usr/share/doc/libvek-dev/html/index.html" ]
dpkg-deb -f "$work"/vek-tools_*.deb Depends | grep -q libvek8
