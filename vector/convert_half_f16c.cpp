// SPDX-License-Identifier: Apache-2.0
// Half precision by the conversion instructions (F16C), compiled for the AVX slots with that feature added. The callers
// have asked whether the processor has it; nothing else of the library may live in this file.
#include "vector/convert_half.h"

namespace vek::VEK_SLOT {
namespace {

VEK_INLINE Pack<float> convertHalf(const Vek16f* p) {
  return {{regCast<Pack<float>::Reg>(_mm256_cvtph_ps(loadBytes<16>(p)))}};
}

template <int Mode>
VEK_INLINE void storeHalf(Vek16f* d, Pack<float> x) {
  constexpr int rounding =
      (Mode == vekRoundNearestEven ? _MM_FROUND_TO_NEAREST_INT : _MM_FROUND_TO_ZERO) | _MM_FROUND_NO_EXC;
  _mm_storeu_si128((__m128i_u*)d, _mm256_cvtps_ph((__m256)x.r[0], rounding));
}

// NaN in either pack. The instructions quiet a NaN where the library keeps its fraction, and keep its fraction where
// the library has one pattern: blocks with a NaN go through the integer arithmetic.
VEK_INLINE bool anyNan(Pack<float> a, Pack<float> b) {
  return __builtin_expect(_mm256_movemask_ps(_mm256_cmp_ps((__m256)a.r[0], (__m256)b.r[0], _CMP_UNORD_Q)), 0);
}

template <int Mode>
VEK_INLINE void floatsToHalf(const float* src, Vek16f* dst, int len) {
  sweep<16>(
      [](Vek16f* d, const float* x) VEK_LAMBDA {
        const Pack<float> a = load(x), b = load(x + 8);
        if (anyNan(a, b)) {
          store(d, floatToHalf<Mode>(a, b));
        } else {
          storeHalf<Mode>(d, a), storeHalf<Mode>(d + 8, b);
        }
      },
      dst, len, src);
}

template <int Mode>
VEK_INLINE void int16sToHalf(const int16_t* src, Vek16f* dst, int len) {
  sweep<8>([](Vek16f* d, const int16_t* x) VEK_LAMBDA { storeHalf<Mode>(d, toFloat(loadWiden<int32_t>(x))); }, dst, len,
           src);
}

}  // namespace

void halfToFloatF16c(const Vek16f* src, Vek32f* dst, int len) {
  sweep<16>(
      [](float* d, const Vek16f* x) VEK_LAMBDA {
        Pack<float> a = convertHalf(x), b = convertHalf(x + 8);
        if (anyNan(a, b)) a = halfToFloat(x), b = halfToFloat(x + 8);
        store(d, a), store(d + 8, b);
      },
      dst, len, src);
}

void halfTo16sF16c(const Vek16f* src, Vek16s* dst, int len, VekRoundMode mode, float multiplier) {
  const auto load8 = [](const Vek16f* x) VEK_LAMBDA { return convertHalf(x); };
  VEK_BY_HALF_MODE(mode, halvesTo16, load8, src, dst, len, multiplier);
}

void floatToHalfF16c(const Vek32f* src, Vek16f* dst, int len, VekRoundMode mode) {
  VEK_BY_HALF_MODE(mode, floatsToHalf, src, dst, len);
}

void int16ToHalfF16c(const Vek16s* src, Vek16f* dst, int len, VekRoundMode mode) {
  VEK_BY_HALF_MODE(mode, int16sToHalf, src, dst, len);
}

}  // namespace vek::VEK_SLOT
