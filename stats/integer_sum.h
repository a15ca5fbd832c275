// SPDX-License-Identifier: Apache-2.0
// Exact sums of integer vectors, in blocks whose sums fit 32 bits, and the roundings of the scaled results.
#ifndef VEK_STATS_INTEGER_SUM_H
#define VEK_STATS_INTEGER_SUM_H

#include "stats/reduce.h"

namespace vek::VEK_SLOT {
namespace {

// The sum of the lanes modulo 2^32.
VEK_INLINE uint32_t lanesAdded(Pack<int32_t> a) {
  __m128i x = _mm_add_epi32(half(a, 0), half(a, 1));
  x = _mm_add_epi32(x, _mm_shuffle_epi32(x, 0x4E));
  x = _mm_add_epi32(x, _mm_shuffle_epi32(x, 0xB1));
  return uint32_t(_mm_cvtsi128_si32(x));
}

// A sum of this many elements of 16 bits fits 32.
constexpr ptrdiff_t kSumBlock = 65536;

VEK_INLINE int64_t blockSum(const int16_t* p, ptrdiff_t n) {
  const Pack<int16_t> ones = broadcast(int16_t(1));
  Pack<int32_t> sum[4] = {zeros<int32_t>(), zeros<int32_t>(), zeros<int32_t>(), zeros<int32_t>()};
  ptrdiff_t i = 0;
  for (; i + 64 <= n; i += 64) {
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) sum[k] = sum[k] + mulAddPairs(load(p + i + 16 * k), ones);
  }
  for (; i + 16 <= n; i += 16) sum[0] = sum[0] + mulAddPairs(load(p + i), ones);
  int64_t all = int32_t(lanesAdded((sum[0] + sum[1]) + (sum[2] + sum[3])));
  for (; i < n; ++i) all += read(p + i);
  return all;
}

// Every x is 65536 * high + low with 0 <= low < 65536. The block's highs sum up in 32 bits, and so do its lows; the
// sum of the lows is had from the sum of x modulo 2^32, which saves taking x apart.
VEK_INLINE int64_t blockSum(const int32_t* p, ptrdiff_t n) {
  Pack<int32_t> sum[4], high[4];
#pragma GCC unroll 4
  for (int k = 0; k < 4; ++k) sum[k] = high[k] = zeros<int32_t>();
  ptrdiff_t i = 0;
  const auto add = [&](int k, const int32_t* at) VEK_LAMBDA {
    const Pack<int32_t> x = loadOnce(at);
    sum[k] = sum[k] + x;
    high[k] = high[k] + (x >> 16);
  };
  constexpr int K = Pack<int32_t>::regs == 1 ? 4 : 2;
  for (; i + 8 * K <= n; i += 8 * K) {
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) add(k, p + i + 8 * k);
  }
  for (; i + 8 <= n; i += 8) add(0, p + i);
  const int32_t highs = int32_t(lanesAdded((high[0] + high[1]) + (high[2] + high[3])));
  const uint32_t lows = lanesAdded((sum[0] + sum[1]) + (sum[2] + sum[3])) - (uint32_t(highs) << 16);
  int64_t all = int64_t(highs) * 65536 + lows;
  for (; i < n; ++i) all += read(p + i);
  return all;
}

template <class T>
VEK_INLINE int64_t exactSum(const T* src, ptrdiff_t n) {
  int64_t all = 0;
  for (ptrdiff_t i = 0; i < n; i += kSumBlock) all += blockSum(src + i, n - i < kSumBlock ? n - i : kSumBlock);
  return all;
}

// ---- results -------------------------------------------------------------------------------------------------------

VEK_INLINE int32_t saturate32(int64_t x) { return x > INT32_MAX ? INT32_MAX : x < INT32_MIN ? INT32_MIN : int32_t(x); }

// x / 2^shift to the nearest integer, ties to even; 1 <= shift <= 63, |x| at most 2^62.
VEK_INLINE int64_t shiftNearest(int64_t x, int shift) {
  const int64_t odd = int64_t(uint64_t(x) >> shift & 1);
  return (x + ((int64_t(1) << (shift - 1)) - 1 + odd)) >> shift;
}

// x * 2^shift clamped to 32 bits, for any shift >= 0.
VEK_INLINE int32_t shiftUpSaturated(int64_t x, int64_t shift) {
  if (x == 0) return 0;
  if (shift > 31 || x > INT32_MAX || x < INT32_MIN) return x > 0 ? INT32_MAX : INT32_MIN;
  return saturate32(x * (int64_t(1) << shift));
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
