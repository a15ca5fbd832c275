#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# vek in other people's projects: as a sub-directory and by FetchContent, from a tree that must not change; as a package
# installed and in the build directory; by pkg-config. Shared and static, C and C++ each time. Arguments: the source tree,
# a build of it with tools, whose objects serve again where compiling would tell nothing.
set -eu
tree=$1 build=$2
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'chmod -R u+w "$work"; rm -rf "$work"' EXIT

# consume NAME DEFINITION...: configures and builds the project in tests/consumer once for each kind of library.
consume() {
  local name=$1 shared
  shift
  for shared in ON OFF; do
    { cmake -S "$here/consumer" -B "$work/$name" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DBUILD_SHARED_LIBS=$shared "$@" &&
      cmake --build "$work/$name"; } >"$work/log" 2>&1 || { tail -40 "$work/log"; echo "failed: $name, shared $shared"; exit 1; }
    kind=$(grep -q "NEEDED.*libvek\.so\.8" "$work/$name/needed.txt" && echo ON || echo OFF)
    if [ $kind != $shared ]; then
      echo "$name: vek::vek is not what BUILD_SHARED_LIBS=$shared asks for"
      exit 1
    fi
    echo "$name, shared $shared: all clients ran"
  done
}

# A part of another project. Nothing may be written to its sources, by whoever runs this.
mkdir "$work/vek"
tar -c -C "$tree" --exclude=./build* --exclude=./out --exclude=./.git --exclude=__pycache__ . | tar -x -C "$work/vek"
chmod -R a-w "$work/vek"
touch "$work/start"
# What the compiler makes of a source is known from the build; one kernel shows what it makes of the flags here.
cat >"$work/reuse" <<SCRIPT
#!/usr/bin/env bash
for ((i = 1; i <= \$#; ++i)); do
  next=\$((i + 1))
  [ "\${!i}" != -o ] || out=\${!next}
  [ "\${!i}" != -MF ] || dependencies=\${!next}
done
known=$build/CMakeFiles/vek\${out##*CMakeFiles/vek}
if [ -f "\$known" ] && [[ \$out != *vector/addc.cpp.o && \$out != */derived/* ]]; then
  : >"\$dependencies"
  exec cp "\$known" "\$out"
fi
exec "\$@"
SCRIPT
chmod +x "$work/reuse"
part="-DVEK_TREE=$work/vek -DVEK_SLOTS=mx -DCMAKE_CXX_COMPILER_LAUNCHER=$work/reuse"
consume part $part -DVEK_FROM=subdirectory
consume part $part -DVEK_FROM=fetch
"$tree/tools/audit.py" --library "$work/part/_deps/vek-build/libvek.so.8" --derived "$work/part/_deps/vek-build/derived/vek"
cmake -S "$here/consumer" -B "$work/part" -DVEK_TESTS=ON -DVEK_TOOLS=ON -DVEK_EXAMPLES=ON -DVEK_DOCS=ON -DVEK_INSTALL=ON \
  >"$work/log" 2>&1 || { tail -40 "$work/log"; echo "failed: everything switched on"; exit 1; }
written=$(find "$work/vek" -newer "$work/start")
[ -z "$written" ] || { echo "written to the sources: $written"; exit 1; }

# A package.
cmake --install "$build" --prefix "$work/usr" >"$work/log"
consume installed -DCMAKE_PREFIX_PATH="$work/usr"
consume built -Dvek_DIR="$build"
libdir=$(dirname "$(find "$work/usr" -name libvek.a)")
flags=$(PKG_CONFIG_PATH=$libdir/pkgconfig pkg-config --cflags --libs vek vekx)
cc -std=c99 "$here/consumer/client.c" -o "$work/client" $flags
LD_LIBRARY_PATH=$libdir "$work/client"
# Statically linked, a program takes along what it calls and no more.
cc -static -std=c99 "$here/consumer/client.c" -o "$work/client_alone" \
  $(PKG_CONFIG_PATH=$libdir/pkgconfig pkg-config --static --cflags --libs vek vekx)
"$work/client_alone"
[ "$(stat -c %s "$work/client_alone")" -lt 1500000 ] || { echo "pkg-config --static brings the whole library"; exit 1; }
mv "$work/usr" "$work/moved"
"$work/moved/bin/vek-info"
"$work/moved/bin/vek-selftest"
# The headers alone, in the languages they promise.
for language in "c c99" "c c11" "c++ c++17" "c++ c++20"; do
  set -- $language
  printf '#include <vekx.h>\n#include <vek.h>\n' |
    cc -x "$1" -std="$2" -Wall -Wextra -Wpedantic -Werror -fsyntax-only -I"$work/moved/include" -
done
