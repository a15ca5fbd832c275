// SPDX-License-Identifier: Apache-2.0
// Conversions from and to half precision.
#include "vector/convert_half.h"

#include "core/dispatch.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// Only the AVX slots have kernels with the conversion instructions, and those are not promised there.
VEK_INLINE bool haveF16c() {
  if constexpr (kAvx) {
    return featuresEnabled(VEK_FEATURE_F16C);
  } else {
    return false;
  }
}

VEK_INLINE VekStatus checkMode(VekStatus before, VekRoundMode mode) {
  if (before != vekStsNoErr) return before;
  return mode == vekRoundHalfAway ? vekStsRoundModeNotSupportedErr : vekStsNoErr;
}

VEK_INLINE VekStatus halfToFloatVector(const Vek16f* src, float* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (haveF16c()) {
    if constexpr (kAvx) halfToFloatF16c(src, dst, len);
  } else {
    sweep<8>([](float* d, const Vek16f* x) VEK_LAMBDA { store(d, halfToFloat(x)); }, dst, len, src);
  }
  return vekStsNoErr;
}

VEK_INLINE VekStatus halfTo16Vector(const Vek16f* src, int16_t* dst, int len, VekRoundMode mode, int scaleFactor) {
  if (const VekStatus s = checkMode(checkVectors(len, src, dst), mode)) return s;
  const float m = scaleMultiplier<float>(scaleFactor);
  const auto load8 = [](const Vek16f* x) VEK_LAMBDA { return halfToFloat(x); };
  if (haveF16c()) {
    if constexpr (kAvx) halfTo16sF16c(src, dst, len, mode, m);
  } else {
    VEK_BY_HALF_MODE(mode, halvesTo16, load8, src, dst, len, m);
  }
  return vekStsNoErr;
}

template <int Mode, class S>
VEK_INLINE void toHalf(const S* src, Vek16f* dst, int len) {
  const auto load8 = [](const S* x) VEK_LAMBDA {
    if constexpr (kSame<S, float>) {
      return load(x);
    } else {
      return toFloat(loadWiden<int32_t>(x));
    }
  };
  sweep<16>([=](Vek16f* d, const S* x) VEK_LAMBDA { store(d, floatToHalf<Mode>(load8(x), load8(x + 8))); }, dst, len,
            src);
}

VEK_INLINE void toHalfF16c(const float* src, Vek16f* dst, int len, VekRoundMode mode) {
  floatToHalfF16c(src, dst, len, mode);
}
VEK_INLINE void toHalfF16c(const int16_t* src, Vek16f* dst, int len, VekRoundMode mode) {
  int16ToHalfF16c(src, dst, len, mode);
}

template <class S>
VEK_INLINE VekStatus toHalfVector(const S* src, Vek16f* dst, int len, VekRoundMode mode) {
  if (const VekStatus s = checkMode(checkVectors(len, src, dst), mode)) return s;
  if (haveF16c()) {
    if constexpr (kAvx) toHalfF16c(src, dst, len, mode);
  } else {
    VEK_BY_HALF_MODE(mode, toHalf, src, dst, len);
  }
  return vekStsNoErr;
}

}  // namespace

VekStatus veksConvert_16f32f(const Vek16f* pSrc, Vek32f* pDst, int len) { return halfToFloatVector(pSrc, pDst, len); }
VekStatus veksConvert_16f16s_Sfs(const Vek16f* pSrc, Vek16s* pDst, int len, VekRoundMode rndMode, int scaleFactor) {
  return halfTo16Vector(pSrc, pDst, len, rndMode, scaleFactor);
}
VekStatus veksConvert_32f16f(const Vek32f* pSrc, Vek16f* pDst, int len, VekRoundMode rndMode) {
  return toHalfVector(pSrc, pDst, len, rndMode);
}
VekStatus veksConvert_16s16f(const Vek16s* pSrc, Vek16f* pDst, int len, VekRoundMode rndMode) {
  return toHalfVector(pSrc, pDst, len, rndMode);
}

}  // namespace vek::VEK_SLOT
