// SPDX-License-Identifier: Apache-2.0
// Index sorts: keys and their positions travel together. Where key and position fit one 32-bit word the words are
// sorted as plain values; other ranges are partitioned as two streams, down to ranges short enough for a network.
#include "core/simd/checks.h"
#include "stats/sort_keys.h"
#include "stats/sort_values.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- partition of two streams ---------------------------------------------------------------------------------------

template <bool Back, class T>
VEK_INLINE void splitPairRun(const T* keys, const int* index, ptrdiff_t n, int32_t pivot, PairSides<T>& sides) {
  const PairSides<T> to = sides;  // apart from what the stores may change
  ptrdiff_t below = 0;
  for (ptrdiff_t i = 0; i < n; i += kPairStep) {
    const ptrdiff_t k = Back ? n - kPairStep - i : i;
    below += splitPairs(keys + k, index + k, pivot, to, to.low + below, to.high - i + below);
  }
  sides.low += below;
  sides.high -= n - below;
}

template <class T>
VEK_INLINE void splitPairRest(const T* keys, const int* index, ptrdiff_t n, int32_t pivot, PairSides<T>& sides) {
  const PairSides<T> to = sides;
  ptrdiff_t below = 0;
  for (ptrdiff_t i = 0; i < n; ++i)
    below += splitPair(keys[i], index[i], pivot, to, to.low + below, to.high - i + below);
  sides.low += below;
  sides.high -= n - below;
}

constexpr ptrdiff_t kPairRoom = kSplitBytes / 8;

// The counterparts of partitionBuffered() and partitionChunks().
template <class T>
VEK_NOINLINE ptrdiff_t partitionPairsBuffered(T* v, int* index, ptrdiff_t n, int32_t pivot) {
  alignas(64) T keys[kPairRoom + 32];
  alignas(64) int places[kPairRoom + 32];
  constexpr ptrdiff_t end = kPairRoom + 32;
  PairSides<T> to = {v, index, 0, keys, places, end};
  const ptrdiff_t whole = n & -ptrdiff_t(kPairStep);
  splitPairRun<false>(v, index, whole, pivot, to);
  splitPairRest(v + whole, index + whole, n - whole, pivot, to);
  __builtin_memcpy(v + to.low, keys + to.high, size_t(end - to.high) * sizeof(T));
  __builtin_memcpy(index + to.low, places + to.high, size_t(end - to.high) * sizeof(int));
  return to.low;
}

template <class T>
VEK_NOINLINE ptrdiff_t partitionPairsChunks(T* v, int* index, ptrdiff_t n, int32_t pivot) {
  constexpr ptrdiff_t chunk = kPairRoom / 4;
  alignas(64) T keys[3 * chunk];
  alignas(64) int places[3 * chunk];
  const auto setAside = [&](ptrdiff_t to, ptrdiff_t from, ptrdiff_t count) VEK_LAMBDA {
    __builtin_memcpy(keys + to, v + from, size_t(count) * sizeof(T));
    __builtin_memcpy(places + to, index + from, size_t(count) * sizeof(int));
  };
  setAside(0, 0, chunk);
  setAside(chunk, n - chunk, chunk);
  PairSides<T> to = {v, index, 0, v, index, n};
  ptrdiff_t first = chunk, last = n - chunk;
  while (last - first >= chunk) {
    if (first - to.low <= to.high - last) {
      splitPairRun<false>(v + first, index + first, chunk, pivot, to);
      first += chunk;
    } else {
      last -= chunk;
      splitPairRun<true>(v + last, index + last, chunk, pivot, to);
    }
  }
  setAside(2 * chunk, first, last - first);
  const ptrdiff_t rest = 2 * chunk + (last - first), whole = (rest - 32) & -ptrdiff_t(kPairStep);
  splitPairRun<false>(keys, places, whole, pivot, to);
  splitPairRest(keys + whole, places + whole, rest - whole, pivot, to);
  return to.low;
}

template <class T>
VEK_INLINE ptrdiff_t partitionPairs(T* v, int* index, ptrdiff_t n, int32_t pivot) {
  return n <= kPairRoom ? partitionPairsBuffered(v, index, n, pivot) : partitionPairsChunks(v, index, n, pivot);
}

// ---- short ranges ---------------------------------------------------------------------------------------------------

// Key and place within the range share the fraction of a double near 2^52, key first: exact, all different, ordered by
// the single-instruction minimum and maximum of doubles, and normal numbers, which no denormal mode touches. The
// network takes 142 cycles of the time-stamp counter for 64 of them in slot l9, and 366 for 64-bit integers; 252 and
// 1068 in y8.
constexpr int kPlaceBits = 20;
constexpr uint64_t kExponent = uint64_t(0x433) << 52;

template <class T>
VEK_NOINLINE void sortPairsShort(T* v, int* index, ptrdiff_t n) {
  constexpr int most = kNetworkSize<double>;
  alignas(64) double block[most];
  alignas(64) int before[most];
  __builtin_memcpy(before, index, size_t(n) * sizeof(int));
  const int packs = networkPacks<double>(int(n));
  for (ptrdiff_t i = 0; i < n; ++i) {
    const uint64_t x = kExponent | uint64_t(uint32_t(int32_t(v[i])) ^ 0x80000000u) << kPlaceBits | uint64_t(i);
    __builtin_memcpy(block + i, &x, 8);
  }
  const uint64_t unused = kExponent | ((uint64_t(1) << 52) - 1);
  for (ptrdiff_t i = n; i < packs * 4; ++i) __builtin_memcpy(block + i, &unused, 8);
  sortNetwork(block, packs);
  for (ptrdiff_t i = 0; i < n; ++i) {
    uint64_t x;
    __builtin_memcpy(&x, block + i, 8);
    v[i] = T(int32_t(uint32_t(x >> kPlaceBits) ^ 0x80000000u));
    index[i] = before[x & (most - 1)];
  }
}

// ---- narrow ranges --------------------------------------------------------------------------------------------------

// Key minus `least`, then position, in one word; the top bit is inverted because words are sorted as signed.
constexpr uint32_t kTop = 0x80000000u;

template <class T>
VEK_INLINE void joinWords(const T* v, int* index, ptrdiff_t n, int32_t least, int places) {
  const Pack<int32_t> base = broadcast(least), top = broadcast(int32_t(kTop));
  ptrdiff_t i = 0;
  for (; i + 8 <= n; i += 8) store(index + i, (((loadKeys(v + i) - base) << places) | load(index + i)) ^ top);
  for (; i < n; ++i) index[i] = int((uint32_t(int32_t(v[i]) - least) << places | uint32_t(index[i])) ^ kTop);
}
template <class T>
VEK_INLINE void splitWords(T* v, int* index, ptrdiff_t n, int32_t least, int places) {
  const uint32_t mask = (uint32_t(1) << places) - 1;
  for (ptrdiff_t i = 0; i < n; ++i) {
    const uint32_t x = uint32_t(index[i]) ^ kTop;
    v[i] = T(int32_t((x >> places) + uint32_t(least)));
    index[i] = int(x & mask);
  }
}

template <class T>
VEK_INLINE void sortWords(T* v, int* index, const Range& r, int places) {
  joinWords(v + r.first, index + r.first, r.size, r.least, places);
  sortKeys(index + r.first, r.size);
  splitWords(v + r.first, index + r.first, r.size, r.least, places);
}

// ---- the sort -------------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE bool sortAtOnce(T* v, int* index, const Range& r, int places) {
  if (uint64_t(uint32_t(r.most) - uint32_t(r.least)) >> (32 - places) == 0) {
    sortWords(v, index, r, places);
    return true;
  }
  if (r.size > kNetworkSize<double>) return false;
  sortPairsShort(v + r.first, index + r.first, r.size);
  return true;
}

// Keys in v, positions below 2^places in index.
template <class T>
VEK_NOINLINE void sortPairs(T* v, int* index, ptrdiff_t n, int places) {
  RangeStack stack;
  Range r = wholeRange(v, n);
  if (r.least == r.most) return;
  for (;;) {
    bool more = false;
    int32_t pivot;
    if (!sortAtOnce(v, index, r, places) && choosePivot(v, r, pivot))
      more = continueWith(r, partitionPairs(v + r.first, index + r.first, r.size, pivot), pivot, stack);
    if (more) continue;
    do {
      if (stack.count == 0) return;
      r = stack.pop();
    } while (r.size < 2);
  }
}

VEK_INLINE void fillPositions(int* index, ptrdiff_t n) {
  Pack<int32_t> x = iota<int32_t>();
  ptrdiff_t i = 0;
  for (; i + 8 <= n; i += 8, x = x + broadcast(int32_t(8))) store(index + i, x);
  for (; i < n; ++i) index[i] = int(i);
}

VEK_INLINE int placeBits(ptrdiff_t n) { return n < 2 ? 1 : 32 - __builtin_clz(unsigned(n - 1)); }

template <class T>
VEK_INLINE VekStatus sortIndex(T* v, int* index, int len, bool descending) {
  if (const VekStatus s = checkVectors(len, v, index)) return s;
  fillPositions(index, len);
  if (descending) complement(v, len);
  sortPairs(v, index, len, placeBits(len));
  if (descending) complement(v, len);
  return vekStsNoErr;
}

VEK_NOINLINE void sortIndexBits(int32_t* v, int* index, ptrdiff_t n, int32_t flip) {
  fillPositions(index, n);
  const bool nans = floatsToKeys(v, n, flip);
  const ptrdiff_t numbers = nans ? gatherNans(v, index, n, flip) : n;
  if (numbers > 0) sortPairs(v, index, numbers, placeBits(n));
  keysToFloats(v, n, flip);
}

VEK_INLINE VekStatus sortIndexFloats(Vek32f* v, int* index, int len, bool descending) {
  if (const VekStatus s = checkVectors(len, v, index)) return s;
  sortIndexBits(reinterpret_cast<int32_t*>(v), index, len, descending ? -1 : 0);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksSortIndexAscend_8u_I(Vek8u* pSrcDst, int* pDstIdx, int len) {
  return sortIndex(pSrcDst, pDstIdx, len, false);
}
VekStatus veksSortIndexAscend_16s_I(Vek16s* pSrcDst, int* pDstIdx, int len) {
  return sortIndex(pSrcDst, pDstIdx, len, false);
}
VekStatus veksSortIndexAscend_32s_I(Vek32s* pSrcDst, int* pDstIdx, int len) {
  return sortIndex(pSrcDst, pDstIdx, len, false);
}
VekStatus veksSortIndexAscend_32f_I(Vek32f* pSrcDst, int* pDstIdx, int len) {
  return sortIndexFloats(pSrcDst, pDstIdx, len, false);
}
VekStatus veksSortIndexDescend_8u_I(Vek8u* pSrcDst, int* pDstIdx, int len) {
  return sortIndex(pSrcDst, pDstIdx, len, true);
}
VekStatus veksSortIndexDescend_16s_I(Vek16s* pSrcDst, int* pDstIdx, int len) {
  return sortIndex(pSrcDst, pDstIdx, len, true);
}
VekStatus veksSortIndexDescend_32s_I(Vek32s* pSrcDst, int* pDstIdx, int len) {
  return sortIndex(pSrcDst, pDstIdx, len, true);
}
VekStatus veksSortIndexDescend_32f_I(Vek32f* pSrcDst, int* pDstIdx, int len) {
  return sortIndexFloats(pSrcDst, pDstIdx, len, true);
}

}  // namespace vek::VEK_SLOT
