// SPDX-License-Identifier: Apache-2.0
// Sums.
#include "stats/float_sum.h"
#include "stats/integer_sum.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

VEK_INLINE VekStatus sum(const Vek32f* src, int len, Vek32f* result, VekHintAlgorithm hint) {
  if (const VekStatus s = checkVectors(len, src, result)) return s;
  *result = float(hint == vekAlgHintFast ? fastSum(src, len) : accurateSum(src, len));
  return vekStsNoErr;
}

VEK_INLINE VekStatus sum(const Vek32fc* src, int len, Vek32fc* result) {
  if (const VekStatus s = checkVectors(len, src, result)) return s;
  const __m128d all = complexSum(parts(src), len);
  *result = {float(all[0]), float(all[1])};
  return vekStsNoErr;
}

// No sum reaches 2^62 in magnitude: from scale factor 63 up every result is 0.
template <class T>
VEK_INLINE VekStatus scaledSum(const T* src, int len, Vek32s* result, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, result)) return s;
  const int64_t all = exactSum(src, len);
  if (scaleFactor <= 0) {
    *result = shiftUpSaturated(all, -int64_t(scaleFactor));
  } else {
    *result = saturate32(shiftNearest(all, scaleFactor < 63 ? scaleFactor : 63));
  }
  return vekStsNoErr;
}

}  // namespace

VekStatus veksSum_32f(const Vek32f* pSrc, int len, Vek32f* pSum, VekHintAlgorithm hint) {
  return sum(pSrc, len, pSum, hint);
}
VekStatus veksSum_32fc(const Vek32fc* pSrc, int len, Vek32fc* pSum, VekHintAlgorithm) { return sum(pSrc, len, pSum); }
VekStatus veksSum_16s32s_Sfs(const Vek16s* pSrc, int len, Vek32s* pSum, int scaleFactor) {
  return scaledSum(pSrc, len, pSum, scaleFactor);
}
VekStatus veksSum_32s_Sfs(const Vek32s* pSrc, int len, Vek32s* pSum, int scaleFactor) {
  return scaledSum(pSrc, len, pSum, scaleFactor);
}

}  // namespace vek::VEK_SLOT
