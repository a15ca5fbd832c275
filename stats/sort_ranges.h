// SPDX-License-Identifier: Apache-2.0
// What value and index sorts share: the ranges still to be sorted, and the choice of pivots.
#ifndef VEK_STATS_SORT_RANGES_H
#define VEK_STATS_SORT_RANGES_H

#include "stats/sort_network.h"

namespace vek::VEK_SLOT {
namespace {

// A range of positions whose keys are known to lie in [least, most].
struct Range {
  ptrdiff_t first, size;
  int32_t least, most;
  int poor;  // how many partitions on the way to it were lopsided
};

// The ranges set aside. The larger part is always the one that waits, so there are never more than log2(len) of them.
struct RangeStack {
  Range waiting[64];
  int count = 0;
  VEK_INLINE void push(const Range& r) { waiting[count++] = r; }
  VEK_INLINE Range pop() { return waiting[--count]; }
};

// Eight keys as 32-bit integers, in whose order all types are sorted.
VEK_INLINE Pack<int32_t> loadKeys(const int32_t* p) { return load(p); }
template <class T>
VEK_INLINE Pack<int32_t> loadKeys(const T* p) {
  return loadWiden<int32_t>(p);
}

// Lane by lane the median of five packs, one from somewhere in each fifth of v. The places depend on the size alone.
template <class T>
VEK_INLINE Pack<int32_t> samplePack(const T* v, ptrdiff_t n, uint64_t& seed) {
  const ptrdiff_t fifth = n / 5, room = fifth - 8;
  Pack<int32_t> s[5];
#pragma GCC unroll 5
  for (int i = 0; i < 5; ++i) {
    seed = seed * 6364136223846793005u + 1442695040888963407u;
    s[i] = loadKeys(v + i * fifth + ptrdiff_t((seed >> 33) * uint64_t(room) >> 31));
  }
  return medianOf5(s[0], s[1], s[2], s[3], s[4]);
}

// Eight medians of a sample, in order: of 40 keys, or of 200 from long ranges. n is at least 64.
template <class T>
VEK_INLINE Lanes<int32_t> sampleMedians(const T* v, ptrdiff_t n) {
  uint64_t seed = uint64_t(n);
  Pack<int32_t> s[1] = {samplePack(v, n, seed)};
  if (n >= 8192) {
    const Pack<int32_t> b = samplePack(v, n, seed), c = samplePack(v, n, seed);
    const Pack<int32_t> d = samplePack(v, n, seed), e = samplePack(v, n, seed);
    s[0] = medianOf5(s[0], b, c, d, e);
  }
  mergeColumns<2>(s);
  mergeColumns<4>(s);
  mergeColumns<8>(s);
  return lanesOf(s[0]);
}

template <class T>
VEK_INLINE bool allEqual(const T* v, ptrdiff_t n, int32_t key) {
  const Pack<int32_t> x = broadcast(key);
  for (ptrdiff_t i = 0; i + 16 <= n; i += 16)
    if (!all((loadKeys(v + i) == x) & (loadKeys(v + i + 8) == x))) return false;
  return all((loadKeys(v + n - 16) == x) & (loadKeys(v + n - 8) == x));
}

// From here on samples are not trusted any more: the middle of the values' range halves it, whatever their
// distribution.
constexpr int kPoorLimit = 4;

// Chooses the pivot, least < pivot <= most: keys below it are to go to the front. A sampled pivot equal to the least
// key moves up by one, so that the keys equal to it are split off and need no more work. False if all keys are equal,
// which is looked into where the sample suggests it.
template <class T>
VEK_INLINE bool choosePivot(const T* v, const Range& r, int32_t& pivot) {
  if (r.poor >= kPoorLimit) {
    pivot = int32_t(uint32_t(r.least) + (uint32_t(r.most) - uint32_t(r.least)) / 2 + 1);
    return true;
  }
  const Lanes<int32_t> s = sampleMedians(v + r.first, r.size);
  if (s[0] == s[7] && allEqual(v + r.first, r.size, s[0])) return false;
  pivot = s[4] > r.least ? s[4] : r.least + 1;
  return true;
}

// Continues with the smaller part and sets the larger one aside; false if nothing is left of the range.
VEK_INLINE bool continueWith(Range& r, ptrdiff_t below, int32_t pivot, RangeStack& stack) {
  const ptrdiff_t above = r.size - below;
  const int poor = r.poor + (below < r.size / 8 || above < r.size / 8);
  Range low = {r.first, below, r.least, pivot - 1, poor}, high = {r.first + below, above, pivot, r.most, poor};
  if (low.least >= low.most) low.size = 0;
  if (high.least >= high.most) high.size = 0;
  const bool lowFirst = low.size < high.size;
  const Range &small = lowFirst ? low : high, &large = lowFirst ? high : low;
  if (small.size > 1) {
    stack.push(large);
    r = small;
    return true;
  }
  r = large;
  return large.size > 1;
}

// All n keys, with their true bounds.
template <class T>
VEK_INLINE Range wholeRange(const T* v, ptrdiff_t n) {
  int32_t least = int32_t(v[0]), most = least;
  ptrdiff_t i = 0;
  if (n >= 8) {
    Pack<int32_t> low = loadKeys(v), high = low;
    for (i = 8; i + 8 <= n; i += 8) {
      const Pack<int32_t> x = loadKeys(v + i);
      low = minOf(low, x);
      high = maxOf(high, x);
    }
    const Lanes<int32_t> a = lanesOf(low), b = lanesOf(high);
    for (int k = 0; k < 8; ++k) {
      least = a[k] < least ? a[k] : least;
      most = b[k] > most ? b[k] : most;
    }
  }
  for (; i < n; ++i) {
    least = v[i] < least ? v[i] : least;
    most = v[i] > most ? v[i] : most;
  }
  return {0, n, least, most, 0};
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
