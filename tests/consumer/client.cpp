// SPDX-License-Identifier: Apache-2.0
#include <vek.h>

#include <cstdio>

int main() {
  Vek32f* x = veksMalloc_32f(100);
  const VekStatus s = x ? veksSet_32f(2.5f, x, 100) : vekStsMemAllocErr;
  const bool ok = s == vekStsNoErr && x[99] == 2.5f;
  veksFree(x);
  std::puts(vekGetStatusString(s));
  return ok ? 0 : 1;
}
