// SPDX-License-Identifier: Apache-2.0
// Sums of single-precision vectors: by sixteen double partial sums, and the fast form in single precision by blocks.
#ifndef VEK_STATS_FLOAT_SUM_H
#define VEK_STATS_FLOAT_SUM_H

#include "stats/reduce.h"

namespace vek::VEK_SLOT {
namespace {

// Sixteen double partial sums and the rest one by one: the same bits in every slot.
VEK_INLINE double accurateSum(const float* src, ptrdiff_t n) { return doubleSum<4, Rest::kOneByOne>(Plain(), n, src); }

VEK_INLINE Pack<float> onlyFirst(float x) {
  alignas(32) const float lanes[8] = {x};
  return load(lanes);
}

// At most 1024 elements in the defining order. A prologue brings the data to 16 bytes, every stage takes the running
// sum over into its first lane; data off 4-byte alignment never gets there and is added one by one.
VEK_INLINE float orderedBlock(const float* p, ptrdiff_t n) {
  const uintptr_t address = reinterpret_cast<uintptr_t>(p);
  ptrdiff_t scalar = ptrdiff_t(-address & 15) / 4;
  if (address % 4 != 0 || scalar > n) scalar = n;
  float sum = 0;
  ptrdiff_t i = 0;
  for (; i < scalar; ++i) sum += read(p + i);
  if (i + 32 <= n) {
    Pack<float> part[4] = {onlyFirst(sum), zeros<float>(), zeros<float>(), zeros<float>()};
    for (; i + 32 <= n; i += 32) {
#pragma GCC unroll 4
      for (int k = 0; k < 4; ++k) part[k] = part[k] + load(p + i + 8 * k);
    }
    sum = total(tree(part));
  }
  if (i + 4 <= n) {
    __m128 four = {sum};
    for (; i + 4 <= n; i += 4) four += (__m128)loadBytes<16>(p + i);
    sum = total(four);
  }
  for (; i < n; ++i) sum += read(p + i);
  return sum;
}

// A block regrouped: eight packs or four, whatever the alignment.
VEK_INLINE Pack<float> regroupedBlock(const float* p, ptrdiff_t n) {
  constexpr int K = kChains<float>;
  Pack<float> part[K];
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) part[k] = zeros<float>();
  ptrdiff_t i = 0;
  for (; i + 8 * K <= n; i += 8 * K) {
#pragma GCC unroll 8
    for (int k = 0; k < K; ++k) part[k] = part[k] + load(p + i + 8 * k);
  }
  for (; i + 8 <= n; i += 8) part[0] = part[0] + load(p + i);
  if (i < n) part[1] = part[1] + loadPart(p + i, n - i);
  return packTree(part);
}

// Single precision within blocks, double precision over them.
VEK_INLINE double fastSum(const float* src, ptrdiff_t n) {
  constexpr ptrdiff_t block = kRegroups ? 2048 : 1024;
  double sum = 0;
  Pack<double> sums = zeros<double>();
  for (ptrdiff_t i = 0; i < n; i += block) {
    const ptrdiff_t count = n - i < block ? n - i : block;
    if constexpr (kRegroups) {
      const Group<double, 2> wide = toDouble(regroupedBlock(src + i, count));
      sums = sums + (wide.p[0] + wide.p[1]);
    } else {
      sum += double(orderedBlock(src + i, count));
    }
  }
  if constexpr (kRegroups) sum = total(halvesAdded(sums));
  return sum;
}

// Real and imaginary parts in double: eight complex partial sums, the rest one by one; the same bits in every slot.
VEK_INLINE __m128d complexSum(const float* src, ptrdiff_t n) {
  Pack<double> sum[4] = {zeros<double>(), zeros<double>(), zeros<double>(), zeros<double>()};
  ptrdiff_t i = 0;
  for (; i + 8 <= n; i += 8) {
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) sum[k] = sum[k] + loadDouble(src + 2 * i + 4 * k);
  }
  __m128d all = tree(sum);
  for (; i < n; ++i) all += readPair(src + 2 * i);
  return all;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
