// SPDX-License-Identifier: Apache-2.0
// What the lanes of packs come down to: sums in a fixed order, the smallest and the largest.
#ifndef VEK_CORE_SIMD_TOTALS_H
#define VEK_CORE_SIMD_TOTALS_H

#include "core/simd/shuffle.h"

namespace vek::VEK_SLOT {
namespace {

// ---- sums -----------------------------------------------------------------------------------------------------------

VEK_INLINE __m128d halvesAdded(Pack<double> a) { return _mm_add_pd((__m128d)half(a, 0), (__m128d)half(a, 1)); }
VEK_INLINE __m128 halvesAdded(Pack<float> a) { return _mm_add_ps((__m128)half(a, 0), (__m128)half(a, 1)); }

// Neighbours first, then neighbours of those: ((A0+A1)+(A2+A3)) + ((A4+A5)+(A6+A7)) in registers of 16 bytes, which
// are the halves of the packs. Recursive, as the compiler keeps the packs in registers only if no index is a variable.
template <int K, class T>
VEK_INLINE auto tree(const Pack<T>* p) {
  if constexpr (K == 1) {
    return halvesAdded(*p);
  } else {
    return tree<K / 2>(p) + tree<K / 2>(p + K / 2);
  }
}
template <int K, class T>
VEK_INLINE auto tree(const Pack<T> (&p)[K]) {
  return tree<K, T>(&p[0]);
}

VEK_INLINE double total(__m128d a) { return a[0] + a[1]; }
VEK_INLINE float total(__m128 a) {
  const __m128 two = _mm_add_ps(a, _mm_movehl_ps(a, a));
  return two[0] + two[1];
}

// Regrouped: whole packs are added first.
template <int K, class T>
VEK_INLINE Pack<T> packTree(const Pack<T>* p) {
  if constexpr (K == 1) {
    return *p;
  } else {
    return packTree<K / 2>(p) + packTree<K / 2>(p + K / 2);
  }
}
template <int K, class T>
VEK_INLINE Pack<T> packTree(const Pack<T> (&p)[K]) {
  return packTree<K, T>(&p[0]);
}

// The sum of the lanes modulo 2^32.
VEK_INLINE uint32_t lanesAdded(Pack<int32_t> a) {
  __m128i x = _mm_add_epi32(half(a, 0), half(a, 1));
  x = _mm_add_epi32(x, _mm_shuffle_epi32(x, 0x4E));
  x = _mm_add_epi32(x, _mm_shuffle_epi32(x, 0xB1));
  return uint32_t(_mm_cvtsi128_si32(x));
}

// ---- extremes -------------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE T firstLane(Pack<T> a) {
  const int32_t low = _mm_cvtsi128_si32(half(a, 0));
  T x;
  __builtin_memcpy(&x, &low, sizeof(T));
  return x;
}

// The one value that the lanes come down to.
template <bool kHigh, class T>
VEK_INLINE T outermost(Pack<T> a) {
  const auto narrow = [](Pack<T> x, Pack<T> y) VEK_LAMBDA {
    if constexpr (kHigh) return maxOf(x, y);
    if constexpr (!kHigh) return minOf(x, y);
  };
  a = narrow(swapHalves(a), a);
  a = narrow(bits<T>(shuffle32<0x4E>(bits<int32_t>(a))), a);
  a = narrow(bits<T>(shuffle32<0xB1>(bits<int32_t>(a))), a);
  if constexpr (sizeof(T) == 2) a = narrow(bits<T>(bits<int32_t>(a) >> 16), a);
  return firstLane(a);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
