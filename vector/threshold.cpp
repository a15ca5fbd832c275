// SPDX-License-Identifier: Apache-2.0
// Thresholds of real elements.
#include "core/simd/map.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// The operand order of the maximum and the minimum matters: the second is the result for NaN and between zeros.
template <class T>
VEK_INLINE VekStatus below(const T* src, T* dst, int len, T level) {
  const Pack<T> l = broadcast(level);
  return mapChecked([l](Pack<T> x) VEK_LAMBDA { return maxOf(x, l); }, dst, len, src);
}

template <class T>
VEK_INLINE VekStatus above(const T* src, T* dst, int len, T level) {
  const Pack<T> l = broadcast(level);
  return mapChecked([l](Pack<T> x) VEK_LAMBDA { return minOf(x, l); }, dst, len, src);
}

VEK_INLINE VekStatus either(const float* src, float* dst, int len, float level, VekCompareOp relOp) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (relOp == vekCompareLess) return ::veksThreshold_LT_32f(src, dst, len, level);
  if (relOp == vekCompareGreater) return ::veksThreshold_GT_32f(src, dst, len, level);
  return vekStsBadArgErr;
}

VEK_INLINE VekStatus belowByValue(const float* src, float* dst, int len, float level, float value) {
  const Pack<float> l = broadcast(level), v = broadcast(value);
  return mapChecked([=](Pack<float> x) VEK_LAMBDA { return select(x >= l, x, v); }, dst, len, src);
}

VEK_INLINE VekStatus aboveByValue(const float* src, float* dst, int len, float level, float value) {
  const Pack<float> l = broadcast(level), v = broadcast(value);
  return mapChecked([=](Pack<float> x) VEK_LAMBDA { return select(l >= x, x, v); }, dst, len, src);
}

template <class T>
VEK_INLINE VekStatus outsideByValues(const T* src, T* dst, int len, T levelLT, T valueLT, T levelGT, T valueGT) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (levelLT > levelGT) return vekStsThresholdErr;
  const Pack<T> low = broadcast(levelLT), lowValue = broadcast(valueLT);
  const Pack<T> high = broadcast(levelGT), highValue = broadcast(valueGT);
  mapPacks([=](Pack<T> x) VEK_LAMBDA { return select(x < low, lowValue, select(x <= high, x, highValue)); }, dst, len,
           src);
  return vekStsNoErr;
}

// The larger magnitude with the sign of x; x + 0 turns -0 into +0, whose replacement is +level. Nothing is below a
// level of 0 (or NaN), and there -0 must stay.
VEK_INLINE VekStatus belowMagnitude(const float* src, float* dst, int len, float level) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (level < 0) return vekStsThreshNegLevelErr;
  if (!(level > 0)) {
    __builtin_memmove(dst, src, size_t(len) * sizeof *dst);
    return vekStsNoErr;
  }
  const Pack<float> l = broadcast(level);
  mapPacks([l](Pack<float> x) VEK_LAMBDA { return maxOf(l, magnitude(x)) | signOf(x + zeros<float>()); }, dst, len,
           src);
  return vekStsNoErr;
}
VEK_INLINE VekStatus belowMagnitude(const int32_t* src, int32_t* dst, int len, int32_t level) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (level < 0) return vekStsThreshNegLevelErr;
  const Pack<int32_t> l = broadcast(level), minusL = broadcast(-level);
  mapPacks([=](Pack<int32_t> x)
               VEK_LAMBDA { return select(asMask<int32_t>(signOf(x)), minOf(x, minusL), maxOf(x, l)); },
           dst, len, src);
  return vekStsNoErr;
}

template <class T>
VEK_INLINE VekStatus aboveMagnitude(const T* src, T* dst, int len, T level) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (level < 0) return vekStsThreshNegLevelErr;
  const Pack<T> l = broadcast(level), minusL = broadcast(-level);
  mapPacks([=](Pack<T> x) VEK_LAMBDA { return maxOf(minusL, minOf(x, l)); }, dst, len, src);
  return vekStsNoErr;
}

// One division gives either reciprocal: 1 / -level is -(1 / level).
VEK_INLINE VekStatus invert(const float* src, float* dst, int len, float level) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (level < 0) return vekStsThreshNegLevelErr;
  const Pack<float> one = broadcast(1.0f);
  if (level == 0) {
    Pack<int32_t> anyZero = zeros<int32_t>();
    mapPacks(
        [&anyZero, one](Pack<float> x) VEK_LAMBDA {
          const Mask<float> zero = x == zeros<float>();
          anyZero = anyZero | bits<int32_t>(zero);
          return one / keep(~zero, x);  // of either sign, a zero gives +infinity
        },
        dst, len, src);
    return any(asMask<int32_t>(anyZero)) ? vekStsInvZero : vekStsNoErr;
  }
  const Pack<float> l = broadcast(level), minusL = broadcast(-level);
  mapPacks([=](Pack<float> x)
               VEK_LAMBDA { return one / select(magnitude(x) > l, x, select(x >= zeros<float>(), l, minusL)); },
           dst, len, src);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksThreshold_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level, VekCompareOp relOp) {
  return either(pSrc, pDst, len, level, relOp);
}
VekStatus veksThreshold_LT_16s(const Vek16s* pSrc, Vek16s* pDst, int len, Vek16s level) {
  return below(pSrc, pDst, len, level);
}
VekStatus veksThreshold_LT_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s level) {
  return below(pSrc, pDst, len, level);
}
VekStatus veksThreshold_LT_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level) {
  return below(pSrc, pDst, len, level);
}
VekStatus veksThreshold_GT_16s(const Vek16s* pSrc, Vek16s* pDst, int len, Vek16s level) {
  return above(pSrc, pDst, len, level);
}
VekStatus veksThreshold_GT_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s level) {
  return above(pSrc, pDst, len, level);
}
VekStatus veksThreshold_GT_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level) {
  return above(pSrc, pDst, len, level);
}
VekStatus veksThreshold_LTVal_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level, Vek32f value) {
  return belowByValue(pSrc, pDst, len, level, value);
}
VekStatus veksThreshold_GTVal_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level, Vek32f value) {
  return aboveByValue(pSrc, pDst, len, level, value);
}
VekStatus veksThreshold_LTValGTVal_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s levelLT, Vek32s valueLT,
                                       Vek32s levelGT, Vek32s valueGT) {
  return outsideByValues(pSrc, pDst, len, levelLT, valueLT, levelGT, valueGT);
}
// Not derived: the other form takes a seventh argument, on the stack, where a jump cannot put it.
VekStatus veksThreshold_LTValGTVal_32s_I(Vek32s* pSrcDst, int len, Vek32s levelLT, Vek32s valueLT, Vek32s levelGT,
                                         Vek32s valueGT) {
  return outsideByValues(pSrcDst, pSrcDst, len, levelLT, valueLT, levelGT, valueGT);
}
VekStatus veksThreshold_LTValGTVal_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f levelLT, Vek32f valueLT,
                                       Vek32f levelGT, Vek32f valueGT) {
  return outsideByValues(pSrc, pDst, len, levelLT, valueLT, levelGT, valueGT);
}
VekStatus veksThreshold_LTAbs_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s level) {
  return belowMagnitude(pSrc, pDst, len, level);
}
VekStatus veksThreshold_LTAbs_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level) {
  return belowMagnitude(pSrc, pDst, len, level);
}
VekStatus veksThreshold_GTAbs_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s level) {
  return aboveMagnitude(pSrc, pDst, len, level);
}
VekStatus veksThreshold_GTAbs_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level) {
  return aboveMagnitude(pSrc, pDst, len, level);
}
VekStatus veksThreshold_LTInv_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level) {
  return invert(pSrc, pDst, len, level);
}

}  // namespace vek::VEK_SLOT
