// SPDX-License-Identifier: Apache-2.0
// Exact sums of integer vectors, in blocks whose sums fit 32 bits, and the roundings of the scaled results.
#ifndef VEK_STATS_INTEGER_SUM_H
#define VEK_STATS_INTEGER_SUM_H

#include "core/simd/scale.h"
#include "stats/reduce.h"

namespace vek::VEK_SLOT {
namespace {

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

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
