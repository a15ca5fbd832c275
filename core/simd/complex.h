// SPDX-License-Identifier: Apache-2.0
// Complex numbers: arrays of them as plain arrays of their parts, and arithmetic on packs that hold real and imaginary
// parts alternately or apart.
#ifndef VEK_CORE_SIMD_COMPLEX_H
#define VEK_CORE_SIMD_COMPLEX_H

#include "core/simd/interleave.h"
#include "vek/types.h"

namespace vek::VEK_SLOT {
namespace {

// ---- memory ---------------------------------------------------------------------------------------------------------

// The parts of complex elements as a plain array of twice the length.
VEK_INLINE const float* parts(const Vek32fc* p) { return &p->re; }
VEK_INLINE float* parts(Vek32fc* p) { return &p->re; }
VEK_INLINE const int32_t* parts(const Vek32sc* p) { return &p->re; }
VEK_INLINE int32_t* parts(Vek32sc* p) { return &p->re; }

// Eight elements with their real and their imaginary parts in a pack each, and back.
VEK_INLINE Two<float> loadSplit(const Vek32fc* p) {
  return deinterleave(load(parts(p)), load(parts(p) + Pack<float>::lanes));
}
VEK_INLINE void storeJoined(Vek32fc* p, Pack<float> re, Pack<float> im) {
  const Two<float> x = interleave(re, im);
  store(parts(p), x.a);
  store(parts(p) + Pack<float>::lanes, x.b);
}

// ---- arithmetic -----------------------------------------------------------------------------------------------------

// Even lanes a - b, odd lanes a + b. Nothing is negated: a NaN in b would change its sign.
template <class T>
VEK_INLINE Pack<T> addSubtract(Pack<T> a, Pack<T> b) {
  static_assert(kFloat<T>);
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (kSame<T, float>) {
      if constexpr (sizeof(Reg) == 32) {
        return regCast<Reg>(_mm256_addsub_ps((__m256)a.r[i], (__m256)b.r[i]));
      } else if constexpr (kSse3) {
        return regCast<Reg>(_mm_addsub_ps((__m128)a.r[i], (__m128)b.r[i]));
      } else {
        const __m128 odd = (__m128)_mm_setr_epi32(0, -1, 0, -1);
        const __m128 sum = (__m128)(a.r[i] + b.r[i]), difference = (__m128)(a.r[i] - b.r[i]);
        return regCast<Reg>(_mm_or_ps(_mm_andnot_ps(odd, difference), _mm_and_ps(odd, sum)));
      }
    } else {
      if constexpr (sizeof(Reg) == 32) {
        return regCast<Reg>(_mm256_addsub_pd((__m256d)a.r[i], (__m256d)b.r[i]));
      } else if constexpr (kSse3) {
        return regCast<Reg>(_mm_addsub_pd((__m128d)a.r[i], (__m128d)b.r[i]));
      } else {
        return regCast<Reg>(_mm_move_sd((__m128d)(a.r[i] + b.r[i]), (__m128d)(a.r[i] - b.r[i])));
      }
    }
  });
}

// The product of interleaved complex numbers, every operation rounded:
// (a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re).
template <class T>
VEK_INLINE Pack<T> complexMul(Pack<T> a, Pack<T> b) {
  return addSubtract(dupEven(a) * b, dupOdd(a) * swapPairs(b));
}

// re * re + im * im, every operation rounded: of parts that lie apart, and in both lanes of each interleaved element.
template <class V>
VEK_INLINE V squaredMagnitude(V re, V im) {
  return re * re + im * im;
}
template <class T>
VEK_INLINE Pack<T> squaredMagnitude(Pack<T> x) {
  const Pack<T> squares = x * x;
  return squares + swapPairs(squares);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
