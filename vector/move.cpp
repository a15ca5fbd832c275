// SPDX-License-Identifier: Apache-2.0
#include "core/simd/checks.h"
#include "core/simd/convert.h"
#include "core/simd/driver.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

VEK_INLINE VekStatus swapBytes16(const Vek16u* src, Vek16u* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  mapPacks([](auto x) VEK_LAMBDA { return (x << 8) | (x >> 8); }, dst, len, src);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksSwapBytes_16u(const Vek16u* pSrc, Vek16u* pDst, int len) { return swapBytes16(pSrc, pDst, len); }

}  // namespace vek::VEK_SLOT
