// SPDX-License-Identifier: Apache-2.0
// Medians of long windows. A stretch of the signal is sorted once, which gives each of its elements a rank of its own.
// The window is then a set of ranks, kept as bits: when it slides on by one element, one bit goes and one comes, and
// the median moves by one set bit at most. Bytes are so few that counting them is enough.
#ifndef VEK_FILTER_MEDIAN_RANKS_H
#define VEK_FILTER_MEDIAN_RANKS_H

#include "core/simd/driver.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- ranks ----------------------------------------------------------------------------------------------------------

// Outputs for which a stretch is ranked at a time: enough to share the sort of the mask's width between them.
VEK_INLINE int64_t rankPiece(int64_t len, int64_t mask) {
  const int64_t piece = mask > 1024 ? 4 * mask : 4096;
  return piece < len ? piece : len;
}

VEK_INLINE VekStatus sortRanks(int16_t* keys, int* from, int n) { return ::veksSortIndexAscend_16s_I(keys, from, n); }
VEK_INLINE VekStatus sortRanks(int32_t* keys, int* from, int n) { return ::veksSortIndexAscend_32s_I(keys, from, n); }

template <class K>
struct RankSpace {
  K* keys;        // sorted: the key of each rank
  int* from;      // the position of each rank
  int* rank;      // the rank of each position
  uint64_t* set;  // the ranks in the window, with a spare word
};

VEK_INLINE int64_t cacheLines(int64_t bytes) { return (bytes + 63) & -64; }

// Working memory for stretches of n elements.
template <class K>
VEK_INLINE int64_t slideBytes(int64_t n) {
  if constexpr (sizeof(K) == 1) return 64;
  return cacheLines(n * int64_t(sizeof(K))) + 2 * cacheLines(n * 4) + cacheLines(n / 8 + 16);
}
template <class K>
VEK_INLINE RankSpace<K> rankSpace(char* p, int64_t n) {
  char* const from = p + cacheLines(n * int64_t(sizeof(K)));
  char* const rank = from + cacheLines(n * 4);
  char* const set = rank + cacheLines(n * 4);
  return {reinterpret_cast<K*>(p), reinterpret_cast<int*>(from), reinterpret_cast<int*>(rank),
          reinterpret_cast<uint64_t*>(set)};
}

// The nearest set bit above or below one; there is one.
VEK_INLINE int nextBit(const uint64_t* set, int at) {
  int word = ++at >> 6;
  uint64_t x = set[word] & (~uint64_t(0) << (at & 63));
  while (x == 0) x = set[++word];
  return word * 64 + __builtin_ctzll(x);
}
VEK_INLINE int previousBit(const uint64_t* set, int at) {
  int word = at >> 6;
  uint64_t x = set[word] & ((uint64_t(1) << (at & 63)) - 1);
  while (x == 0) x = set[--word];
  return word * 64 + 63 - __builtin_clzll(x);
}

// One set bit up or down, or neither. Which is as good as random and must not become a branch; that the bit lies in the
// same word is likely.
VEK_INLINE int slideMedian(const uint64_t* set, int at, bool up, bool down) {
  constexpr uint64_t top = uint64_t(1) << 63;
  const uint64_t word = set[at >> 6], above = word >> (at & 63) >> 1, below = word << (~at & 63) << 1;
  if (__builtin_expect((up & (above == 0)) | (down & (below == 0)), 0))
    return up ? nextBit(set, at) : previousBit(set, at);
  const int next = 1 + __builtin_ctzll(above | top), previous = -1 - __builtin_clzll(below | 1);
  return at + (next & -int(up)) + (previous & -int(down));
}

// `count` outputs from count + 2 * half elements.
template <class K>
VEK_INLINE void slideRanks(const K* window, K* dst, int count, int half, const RankSpace<K>& space) {
  const int n = count + 2 * half, mask = 2 * half + 1;
  __builtin_memcpy(space.keys, window, size_t(n) * sizeof(K));
  sortRanks(space.keys, space.from, n);
  for (int r = 0; r < n; ++r) space.rank[space.from[r]] = r;
  uint64_t* const set = space.set;
  __builtin_memset(set, 0, (size_t(n) / 64 + 1) * 8);
  const auto flip = [set](int r) VEK_LAMBDA { set[r >> 6] ^= uint64_t(1) << (r & 63); };
  for (int i = 0; i < mask; ++i) flip(space.rank[i]);
  int median = -1;
  for (int i = 0; i <= half; ++i) median = nextBit(set, median);
  dst[0] = space.keys[median];
  for (int i = 1; i < count; ++i) {
    const int out = space.rank[i - 1], in = space.rank[i + mask - 1];
    flip(out);
    flip(in);
    median = slideMedian(set, median, (in > median) & (out <= median), (in < median) & (out >= median));
    dst[i] = space.keys[median];
  }
}

template <class K>
VEK_NOINLINE void slideLong(const K* window, K* dst, int64_t len, int64_t half, int64_t piece, char* memory) {
  const RankSpace<K> space = rankSpace<K>(memory, piece + 2 * half);
  for (int64_t i = 0; i < len; i += piece)
    slideRanks(window + i, dst + i, int(len - i < piece ? len - i : piece), int(half), space);
}

// ---- bytes ----------------------------------------------------------------------------------------------------------

// How often each value is in the window, and each run of 16 values.
struct Histogram {
  uint32_t fine[256], coarse[16];
  VEK_INLINE void add(uint8_t x) { ++fine[x], ++coarse[x >> 4]; }
  VEK_INLINE void remove(uint8_t x) { --fine[x], --coarse[x >> 4]; }
};

// Moves `value` to where at most `half` elements are below it and more than `half` are not above it; `below` counts the
// elements below it.
VEK_INLINE void settle(const Histogram& h, int64_t half, int& value, int64_t& below) {
  while (below > half) {
    if ((value & 15) == 0 && below - h.coarse[value / 16 - 1] > half) {
      below -= h.coarse[value / 16 - 1];
      value -= 16;
    } else {
      below -= h.fine[--value];
    }
  }
  while (below + h.fine[value] <= half) {
    if ((value & 15) == 0 && below + h.coarse[value / 16] <= half) {
      below += h.coarse[value / 16];
      value += 16;
    } else {
      below += h.fine[value++];
    }
  }
}

VEK_NOINLINE void slideLong(const uint8_t* window, uint8_t* dst, int64_t len, int64_t half, int64_t, char*) {
  Histogram h = {};
  for (int64_t i = 0; i <= 2 * half; ++i) h.add(window[i]);
  int value = 0;
  int64_t below = 0;
  settle(h, half, value, below);
  dst[0] = uint8_t(value);
  for (int64_t i = 1; i < len; ++i) {
    const uint8_t out = window[i - 1], in = window[i + 2 * half];
    h.remove(out);
    h.add(in);
    below += (in < value) - (out < value);
    settle(h, half, value, below);
    dst[i] = uint8_t(value);
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
