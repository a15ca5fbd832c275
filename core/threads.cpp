// SPDX-License-Identifier: Apache-2.0
// Thread-count controls of a library that runs on its caller's thread.
#include "vek/core.h"

VekStatus vekGetNumThreads(int* pNumThr) {
  if (!pNumThr) return vekStsNullPtrErr;
  *pNumThr = 1;
  return vekStsNoOperation;
}

VekStatus vekSetNumThreads(int) { return vekStsNoOperation; }
