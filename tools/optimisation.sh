#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Shows that results depend on neither the compiler nor its optimisation: builds the library with each compiler at each
# level and runs the test that pins the digest of the exact families, in every slot that was built. On demand, since it
# compiles the library six times; built directories are kept and brought up to date by the next run.
#
#   optimisation.sh [compilers] [levels] [slots]      default: "g++ clang++" "1 2 3" "mx;l9"
set -eu
cd "$(dirname "$0")/.."
compilers=${1:-g++ clang++} levels=${2:-1 2 3} slots=${3:-mx;l9}
failed=0
for compiler in $compilers; do
  for level in $levels; do
    build=build-optimisation/$compiler-O$level
    cmake -S . -B "$build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Level -DVEK_SLOTS="$slots" \
      -DCMAKE_C_FLAGS_LEVEL=-O2 -DCMAKE_CXX_FLAGS_LEVEL="-O$level" >/dev/null
    cmake --build "$build" --target vek_digest_test >"$build/log" || { tail -20 "$build/log"; exit 1; }
    if "$build/tests/digest_test" --gtest_brief=1; then
      echo "$compiler -O$level: the same"
    else
      echo "$compiler -O$level: DIFFERENT"
      failed=1
    fi
  done
done
exit $failed
