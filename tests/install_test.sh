#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Installs the build given as the first argument and builds clients against it, by CMake package and by pkg-config.
set -eu
build=$1
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install "$build" --prefix "$work/usr" > "$work/log"
cmake -S "$here/consumer" -B "$work/build" -DCMAKE_PREFIX_PATH="$work/usr" >> "$work/log"
cmake --build "$work/build" >> "$work/log" || { cat "$work/log"; exit 1; }
for client in client_c client_cpp client_static; do "$work/build/$client"; done
libdir=$(dirname "$(find "$work/usr" -name vek.pc)")
flags=$(PKG_CONFIG_PATH=$libdir pkg-config --cflags --libs vek vekx)
cc -std=c99 "$here/consumer/client.c" -o "$work/client" $flags
LD_LIBRARY_PATH=$(dirname "$libdir") "$work/client"
LD_LIBRARY_PATH=$(dirname "$libdir") "$work/usr/bin/vek-info"
# The headers alone, in the languages they promise.
for language in "c c99" "c c11" "c++ c++17" "c++ c++20"; do
  set -- $language
  printf '#include <vekx.h>\n#include <vek.h>\n' | cc -x "$1" -std="$2" -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I"$work/usr/include" -
done
