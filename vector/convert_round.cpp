// SPDX-License-Identifier: Apache-2.0
// Conversions from floating point to integers with a scale factor and a rounding mode.
#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "core/simd/scale.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// Calls f.run<Mode, Scaled>() with the mode and the presence of a scale factor as constants.
template <class F>
VEK_INLINE void byMode(int mode, int scaleFactor, F f) {
  const auto scaled = [&](auto isScaled) VEK_LAMBDA {
    constexpr bool s = sizeof(isScaled) != 1;
    if (mode == vekRoundTowardZero) {
      f.template run<vekRoundTowardZero, s>();
    } else if (mode == vekRoundNearestEven) {
      f.template run<vekRoundNearestEven, s>();
    } else {
      f.template run<vekRoundHalfAway, s>();
    }
  };
  if (scaleFactor == 0) {
    scaled(char());
  } else {
    scaled(int());
  }
}

// Eight elements as 32-bit integers to be saturated to D.
template <class D, int Mode, bool Scaled>
VEK_INLINE Pack<int32_t> roundFor(const float* x, Pack<float> m) {
  Pack<float> y = load(x);
  if constexpr (Scaled) y = y * m;
  return roundToInt32<Mode>(limitFor<D>(y));
}

// Half away from zero, and truncation of multiples, are asked for now and then.
template <int Mode, bool Scaled>
constexpr Weight kRoundWeight = Mode == vekRoundNearestEven || (Mode == vekRoundTowardZero && !Scaled) ? kHeavy : kRare;

template <class D>
struct ToNarrow {
  const float* src;
  D* dst;
  int len, scaleFactor;

  template <int Mode, bool Scaled>
  VEK_INLINE void run() const {
    const Pack<float> m = broadcast(scaleMultiplier<float>(scaleFactor));
    if constexpr (sizeof(D) == 2) {
      sweep<16>(weighted<kRoundWeight<Mode, Scaled>>([m](D* d, const float* x) VEK_LAMBDA {
                  store(d, narrowSaturated<D>(roundFor<D, Mode, Scaled>(x, m), roundFor<D, Mode, Scaled>(x + 8, m)));
                }),
                dst, len, src);
    } else {
      sweep<32>(weighted<kRoundWeight<Mode, Scaled>>([m](D* d, const float* x) VEK_LAMBDA {
                  store(d, narrowQuarter<D>(Group<int32_t, 4>{
                               {roundFor<D, Mode, Scaled>(x, m), roundFor<D, Mode, Scaled>(x + 8, m),
                                roundFor<D, Mode, Scaled>(x + 16, m), roundFor<D, Mode, Scaled>(x + 24, m)}}));
                }),
                dst, len, src);
    }
  }
};

template <class D>
VEK_INLINE VekStatus toNarrow(const float* src, D* dst, int len, int mode, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  byMode(mode, scaleFactor, ToNarrow<D>{src, dst, len, scaleFactor});
  return vekStsNoErr;
}

// From 2^31 on the conversion gives the most negative integer, whose complement is the most positive.
struct FloatToInt32 {
  const float* src;
  int32_t* dst;
  int len, scaleFactor;

  template <int Mode, bool Scaled>
  VEK_INLINE void run() const {
    const Pack<float> m = broadcast(scaleMultiplier<float>(scaleFactor)), limit = broadcast(2147483648.0f);
    sweep<8>(weighted<kRoundWeight<Mode, Scaled>>([=](int32_t* d, const float* x) VEK_LAMBDA {
               Pack<float> y = load(x);
               if constexpr (Scaled) y = y * m;
               store(d, roundToInt32<Mode>(y) ^ bits<int32_t>(y >= limit));
             }),
             dst, len, src);
  }
};

struct DoubleToInt32 {
  const double* src;
  int32_t* dst;
  int len, scaleFactor;

  template <int Mode, bool Scaled>
  VEK_INLINE void run() const {
    const Pack<double> m = broadcast(scaleMultiplier<double>(scaleFactor)), high = broadcast(2147483647.0);
    sweep<4>(weighted<kRoundWeight<Mode, Scaled>>([=](int32_t* d, const double* x) VEK_LAMBDA {
               Pack<double> y = load(x);
               if constexpr (Scaled) y = y * m;
               storeBytes<16>(d, roundToInt32<Mode>(minOf(high, y)));
             }),
             dst, len, src);
  }
};

template <class Kernel, class S>
VEK_INLINE VekStatus toInt32(const S* src, int32_t* dst, int len, int mode, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  byMode(mode, scaleFactor, Kernel{src, dst, len, scaleFactor});
  return vekStsNoErr;
}

}  // namespace

VekStatus veksConvert_32f8s_Sfs(const Vek32f* pSrc, Vek8s* pDst, int len, VekRoundMode rndMode, int scaleFactor) {
  return toNarrow(pSrc, pDst, len, rndMode, scaleFactor);
}
VekStatus veksConvert_32f8u_Sfs(const Vek32f* pSrc, Vek8u* pDst, int len, VekRoundMode rndMode, int scaleFactor) {
  return toNarrow(pSrc, pDst, len, rndMode, scaleFactor);
}
VekStatus veksConvert_32f16s_Sfs(const Vek32f* pSrc, Vek16s* pDst, int len, VekRoundMode rndMode, int scaleFactor) {
  return toNarrow(pSrc, pDst, len, rndMode, scaleFactor);
}
VekStatus veksConvert_32f16u_Sfs(const Vek32f* pSrc, Vek16u* pDst, int len, VekRoundMode rndMode, int scaleFactor) {
  return toNarrow(pSrc, pDst, len, rndMode, scaleFactor);
}
VekStatus veksConvert_32f32s_Sfs(const Vek32f* pSrc, Vek32s* pDst, int len, VekRoundMode rndMode, int scaleFactor) {
  return toInt32<FloatToInt32>(pSrc, pDst, len, rndMode, scaleFactor);
}
VekStatus veksConvert_64f32s_Sfs(const Vek64f* pSrc, Vek32s* pDst, int len, VekRoundMode rndMode, int scaleFactor) {
  return toInt32<DoubleToInt32>(pSrc, pDst, len, rndMode, scaleFactor);
}

}  // namespace vek::VEK_SLOT
