// SPDX-License-Identifier: Apache-2.0
// The partition step of the sorts: elements below a pivot to the front of a range, the others behind them. Elements are
// taken a register at a time; a shuffle from a table moves those below the pivot to its low lanes, and the register is
// stored whole at both write positions, each of which then moves by the number of elements that belong to it. How wide
// a step is, and its tables, go by the byte shuffle of the level: that is written on intrinsics, here alone.
#ifndef VEK_STATS_SORT_PARTITION_H
#define VEK_STATS_SORT_PARTITION_H

#include "stats/sort_ranges.h"
#include "stats/split_orders.h"

namespace vek::VEK_SLOT {
namespace {

VEK_INLINE __m256i order8(uint32_t m) {
  return _mm256_cvtepu8_epi32(_mm_loadl_epi64((const __m128i_u*)&splitOrders8.lanes[m]));
}
template <int N>
VEK_INLINE __m128i order16(uint32_t m) {
  if constexpr (N == 4) return _mm_load_si128((const __m128i*)splitShuffles4.bytes[m]);
  if constexpr (N == 8) return _mm_load_si128((const __m128i*)splitShuffles8.bytes[m]);
}

// ---- one register to both sides -------------------------------------------------------------------------------------

// Where the next elements go: upward from low, downward from high.
template <class T>
struct Sides {
  T *low, *high;
};

// Elements that splitStep() takes at once; single ones where the level has no byte shuffle.
template <class T>
constexpr int kSplitStep = kAvx2    ? 32 / int(sizeof(T))
                           : kSsse3 ? 16 / int(sizeof(T))
                                    : 1;

// Each of these returns the number of elements that went to the low side.
VEK_INLINE ptrdiff_t splitHalf(__m128i x, uint32_t below, int16_t* low, int16_t* high) {
  x = _mm_shuffle_epi8(x, order16<8>(below));
  _mm_storeu_si128((__m128i_u*)low, x);
  _mm_storeu_si128((__m128i_u*)(high - 8), x);
  return splitOrders8.count[below];
}

template <class T>
VEK_INLINE ptrdiff_t splitOne(T x, T pivot, T* low, T* high) {
  *low = x;
  high[-1] = x;
  return x < pivot;
}

template <class T>
VEK_INLINE ptrdiff_t splitStep(const T* from, T pivot, T* low, T* high) {
  if constexpr (!kSsse3) {
    return splitOne(*from, pivot, low, high);
  } else if constexpr (sizeof(T) == 2) {
    if constexpr (kAvx2) {
      const __m256i x = _mm256_loadu_si256((const __m256i_u*)from);
      const __m256i m = _mm256_cmpgt_epi16(_mm256_set1_epi16(pivot), x);
      const uint32_t below = uint32_t(_mm256_movemask_epi8(_mm256_packs_epi16(m, m)));
      const ptrdiff_t first = splitHalf(lowHalf(x), below & 0xFF, low, high);
      return first + splitHalf(highHalf(x), below >> 24, low + first, high - 8 + first);
    } else {
      const __m128i x = _mm_loadu_si128((const __m128i_u*)from);
      const __m128i m = _mm_cmpgt_epi16(_mm_set1_epi16(pivot), x);
      return splitHalf(x, uint32_t(_mm_movemask_epi8(_mm_packs_epi16(m, _mm_setzero_si128()))), low, high);
    }
  } else if constexpr (kAvx2) {
    __m256i x = _mm256_loadu_si256((const __m256i_u*)from);
    const uint32_t below = uint32_t(_mm256_movemask_ps((__m256)_mm256_cmpgt_epi32(_mm256_set1_epi32(pivot), x)));
    x = _mm256_permutevar8x32_epi32(x, order8(below));
    _mm256_storeu_si256((__m256i_u*)low, x);
    _mm256_storeu_si256((__m256i_u*)(high - 8), x);
    return splitOrders8.count[below];
  } else {
    __m128i x = _mm_loadu_si128((const __m128i_u*)from);
    const uint32_t below = uint32_t(_mm_movemask_ps((__m128)_mm_cmpgt_epi32(_mm_set1_epi32(pivot), x)));
    x = _mm_shuffle_epi8(x, order16<4>(below));
    _mm_storeu_si128((__m128i_u*)low, x);
    _mm_storeu_si128((__m128i_u*)(high - 4), x);
    return splitOrders8.count[below];
  }
}

// ---- keys and their positions to both sides -------------------------------------------------------------------------

// Where the next pairs go: at `low` upward, below `high` downward, each side with its own arrays.
template <class T>
struct PairSides {
  T* lowKeys;
  int* lowIndex;
  ptrdiff_t low;
  T* highKeys;
  int* highIndex;
  ptrdiff_t high;
};

constexpr int kPairStep = kAvx2 ? 8 : kSsse3 ? 4 : 1;

// Four keys in 32-bit lanes; four or eight of them back to their own width.
template <class T>
VEK_INLINE __m128i loadKeys4(const T* p) {
  if constexpr (sizeof(T) == 4) {
    return loadBytes<16>(p);
  } else {
    return regCast<__m128i>(widenReg<int32_t, T>(loadBytes<4 * int(sizeof(T))>(p)));
  }
}
template <class T>
VEK_INLINE void storeKeys4(T* p, __m128i x) {
  if constexpr (sizeof(T) == 4) {
    _mm_storeu_si128((__m128i_u*)p, x);
  } else {
    x = _mm_packs_epi32(x, x);
    if constexpr (sizeof(T) == 1) x = _mm_packus_epi16(x, x);
    copyFew(p, &x, 4 * sizeof(T));
  }
}
template <class T>
VEK_INLINE void storeKeys8(T* p, __m256i x) {
  if constexpr (sizeof(T) == 4) {
    _mm256_storeu_si256((__m256i_u*)p, x);
  } else {
    __m128i y = _mm_packs_epi32(lowHalf(x), highHalf(x));
    if constexpr (sizeof(T) == 1) y = _mm_packus_epi16(y, y);
    copyFew(p, &y, 8 * sizeof(T));
  }
}

// Each of these returns the number of pairs that went to the low side.
template <class T>
VEK_INLINE ptrdiff_t splitPair(T key, int at, int32_t pivot, const PairSides<T>& to, ptrdiff_t low, ptrdiff_t high) {
  to.lowKeys[low] = to.highKeys[high - 1] = key;
  to.lowIndex[low] = to.highIndex[high - 1] = at;
  return key < pivot;
}

template <class T>
VEK_INLINE ptrdiff_t splitPairs(const T* keys, const int* index, int32_t pivot, const PairSides<T>& to, ptrdiff_t low,
                                ptrdiff_t high) {
  if constexpr (kAvx2) {
    const __m256i x = whole(loadKeys(keys)), at = _mm256_loadu_si256((const __m256i_u*)index);
    const uint32_t below = uint32_t(_mm256_movemask_ps((__m256)_mm256_cmpgt_epi32(_mm256_set1_epi32(pivot), x)));
    const __m256i order = order8(below);
    const __m256i k = _mm256_permutevar8x32_epi32(x, order), i = _mm256_permutevar8x32_epi32(at, order);
    storeKeys8(to.lowKeys + low, k);
    _mm256_storeu_si256((__m256i_u*)(to.lowIndex + low), i);
    storeKeys8(to.highKeys + high - 8, k);
    _mm256_storeu_si256((__m256i_u*)(to.highIndex + high - 8), i);
    return splitOrders8.count[below];
  } else if constexpr (kSsse3) {
    const __m128i x = loadKeys4(keys), at = loadBytes<16>(index);
    const uint32_t below = uint32_t(_mm_movemask_ps((__m128)_mm_cmpgt_epi32(_mm_set1_epi32(pivot), x)));
    const __m128i order = order16<4>(below);
    const __m128i k = _mm_shuffle_epi8(x, order), i = _mm_shuffle_epi8(at, order);
    storeKeys4(to.lowKeys + low, k);
    _mm_storeu_si128((__m128i_u*)(to.lowIndex + low), i);
    storeKeys4(to.highKeys + high - 4, k);
    _mm_storeu_si128((__m128i_u*)(to.highIndex + high - 4), i);
    return splitOrders8.count[below];
  } else {
    return splitPair(*keys, *index, pivot, to, low, high);
  }
}

// ---- a run of registers ---------------------------------------------------------------------------------------------

// n elements, a multiple of the step, from the front or (Back) from the back. Only the number below the pivot depends
// on the data: the other write position follows from it.
template <bool Back, class T>
VEK_INLINE void splitRun(const T* from, ptrdiff_t n, T pivot, Sides<T>& to) {
  constexpr int step = kSplitStep<T>;
  T *const low = to.low, *const high = to.high;
  ptrdiff_t below = 0;
#pragma GCC unroll 4
  for (ptrdiff_t i = 0; i < n; i += step)
    below += splitStep(Back ? from + (n - step - i) : from + i, pivot, low + below, high - i + below);
  to = {low + below, high - (n - below)};
}

// The same, one by one, upward.
template <class T>
VEK_INLINE void splitRest(const T* from, ptrdiff_t n, T pivot, Sides<T>& to) {
  T *const low = to.low, *const high = to.high;
  ptrdiff_t below = 0;
  for (ptrdiff_t i = 0; i < n; ++i) below += splitOne(from[i], pivot, low + below, high - i + below);
  to = {low + below, high - (n - below)};
}

// ---- a range --------------------------------------------------------------------------------------------------------

// Bytes of stack for one partition.
constexpr int kSplitBytes = 16384;

// Ranges that fit the buffer: elements below the pivot move down in place (their write position never passes the read
// position), the others go to the buffer and come back behind them.
template <class T>
VEK_NOINLINE ptrdiff_t partitionBuffered(T* v, ptrdiff_t n, T pivot) {
  constexpr int room = kSplitBytes / int(sizeof(T));
  alignas(64) T buffer[room + 32];  // a step's stores may reach below the elements that count
  T* const end = buffer + room + 32;
  Sides<T> to = {v, end};
  const ptrdiff_t whole = n & -ptrdiff_t(kSplitStep<T>);
  splitRun<false>(v, whole, pivot, to);
  splitRest(v + whole, n - whole, pivot, to);
  __builtin_memcpy(to.low, to.high, size_t(end - to.high) * sizeof(T));
  return to.low - v;
}

// N elements, whole packs: compilers turn a memcpy of this size into a string instruction, which starts slowly.
template <ptrdiff_t N, class T>
VEK_INLINE void copyPacks(T* to, const T* from) {
#pragma GCC unroll 4
  for (ptrdiff_t i = 0; i < N; i += Pack<T>::lanes) store(to + i, load(from + i));
}

// Longer ranges: a chunk from each end is set aside; then chunks are read from the end with less room between its write
// and its read position. There are two chunks of room in all, so the other end has one at least, and a chunk's elements
// fit wherever they belong.
template <class T>
VEK_NOINLINE ptrdiff_t partitionChunks(T* v, ptrdiff_t n, T pivot) {
  constexpr ptrdiff_t chunk = kSplitBytes / 4 / ptrdiff_t(sizeof(T));
  alignas(64) T aside[3 * chunk];
  copyPacks<chunk>(aside, v);
  copyPacks<chunk>(aside + chunk, v + n - chunk);
  Sides<T> to = {v, v + n};
  T *first = v + chunk, *last = v + n - chunk;
  while (last - first >= chunk) {
    if (first - to.low <= to.high - last) {
      splitRun<false>(first, chunk, pivot, to);
      first += chunk;
    } else {
      last -= chunk;
      splitRun<true>(last, chunk, pivot, to);
    }
  }
  const ptrdiff_t rest = 2 * chunk + (last - first);
  __builtin_memcpy(aside + 2 * chunk, first, size_t(last - first) * sizeof(T));
  // Near the end the two stores of a step would overlap: the last elements go one by one.
  const ptrdiff_t whole = (rest - 32) & -ptrdiff_t(kSplitStep<T>);
  splitRun<false>(aside, whole, pivot, to);
  splitRest(aside + whole, rest - whole, pivot, to);
  return to.low - v;
}

// The number of elements below the pivot, which come first afterwards.
template <class T>
VEK_INLINE ptrdiff_t partition(T* v, ptrdiff_t n, T pivot) {
  return n <= kSplitBytes / ptrdiff_t(sizeof(T)) ? partitionBuffered(v, n, pivot) : partitionChunks(v, n, pivot);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
