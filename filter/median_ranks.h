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
  uint64_t* set;  // the ranks in the window
};

// Words of the set, and of all its levels: a bit of a level tells whether the word below holds any.
VEK_INLINE int64_t setWords(int64_t n) { return n / 64 + 1; }
constexpr int kMostLevels = 6;
VEK_INLINE int64_t levelWords(int64_t n) { return setWords(n) + setWords(n) / 63 + kMostLevels; }

VEK_INLINE int64_t cacheLines(int64_t bytes) { return (bytes + 63) & -64; }

// Working memory for stretches of n elements.
template <class K>
VEK_INLINE int64_t slideBytes(int64_t n) {
  if constexpr (sizeof(K) == 1) return 64;
  return cacheLines(n * int64_t(sizeof(K))) + 2 * cacheLines(n * 4) + cacheLines(8 * levelWords(n));
}
template <class K>
VEK_INLINE RankSpace<K> rankSpace(char* p, int64_t n) {
  char* const from = p + cacheLines(n * int64_t(sizeof(K)));
  char* const rank = from + cacheLines(n * 4);
  char* const set = rank + cacheLines(n * 4);
  return {reinterpret_cast<K*>(p), reinterpret_cast<int*>(from), reinterpret_cast<int*>(rank),
          reinterpret_cast<uint64_t*>(set)};
}

VEK_INLINE uint64_t bitsAbove(uint64_t word, int at) { return word >> (at & 63) >> 1 << (at & 63) << 1; }
VEK_INLINE uint64_t bitsBelow(uint64_t word, int at) { return word & ((uint64_t(1) << (at & 63)) - 1); }
VEK_INLINE int lowest(uint64_t x) { return __builtin_ctzll(x); }
VEK_INLINE int highest(uint64_t x) { return 63 - __builtin_clzll(x); }

// A set of few words, searched word by word. A search is for the nearest member above or below a number; there is one.
struct FlatSet {
  uint64_t* words;
  VEK_INLINE FlatSet(uint64_t* memory, int64_t n) : words(memory) {
    __builtin_memset(words, 0, size_t(setWords(n)) * 8);
  }
  VEK_INLINE void flip(int r) const { words[r >> 6] ^= uint64_t(1) << (r & 63); }
  VEK_INLINE int next(int at) const {
    int word = at >> 6;
    uint64_t x = bitsAbove(words[word], at);
    while (x == 0) x = words[++word];
    return word * 64 + lowest(x);
  }
  VEK_INLINE int previous(int at) const {
    int word = at >> 6;
    uint64_t x = bitsBelow(words[word], at);
    while (x == 0) x = words[--word];
    return word * 64 + highest(x);
  }
};

constexpr int64_t kFlatSet = 8192;

// A larger one. However far apart its members lie, a search goes up the levels as far as needed, and down again.
struct LevelSet {
  uint64_t* words;
  uint64_t* level[kMostLevels];
  VEK_INLINE LevelSet(uint64_t* memory, int64_t n) : words(memory) {
    __builtin_memset(memory, 0, size_t(levelWords(n)) * 8);
    for (int k = 0; k < kMostLevels; ++k) {
      level[k] = memory;
      n /= 64;
      memory += n + 1;
    }
  }
  VEK_INLINE void flip(int r) const {
    const uint64_t bit = uint64_t(1) << (r & 63), old = words[r >> 6];
    words[r >> 6] = old ^ bit;
    if (__builtin_expect((old & ~bit) == 0, 0)) tell(r >> 6);
  }
  VEK_NOINLINE int next(int at) const {
    int k = 0;
    uint64_t x;
    while ((x = bitsAbove(level[k][at >> 6], at)) == 0) ++k, at >>= 6;
    for (at = (at & ~63) + lowest(x); k > 0; at = at * 64 + lowest(level[k][at])) --k;
    return at;
  }
  VEK_NOINLINE int previous(int at) const {
    int k = 0;
    uint64_t x;
    while ((x = bitsBelow(level[k][at >> 6], at)) == 0) ++k, at >>= 6;
    for (at = (at & ~63) + highest(x); k > 0; at = at * 64 + highest(level[k][at])) --k;
    return at;
  }

 private:
  // A word has got its first member or lost its last.
  VEK_NOINLINE void tell(int word) const {
    for (int k = 1; k < kMostLevels; ++k, word >>= 6) {
      uint64_t& above = level[k][word >> 6];
      const uint64_t bit = uint64_t(1) << (word & 63), old = above;
      above = old ^ bit;
      if ((old & ~bit) != 0) return;
    }
  }
};

// One set bit up or down, or neither. Which is as good as random and must not become a branch; that the bit lies in the
// same word is likely.
template <class Set>
VEK_INLINE int slideMedian(const Set& set, int at, bool up, bool down) {
  constexpr uint64_t top = uint64_t(1) << 63;
  const uint64_t word = set.words[at >> 6], above = word >> (at & 63) >> 1, below = word << (~at & 63) << 1;
  if (__builtin_expect((up & (above == 0)) | (down & (below == 0)), 0)) return up ? set.next(at) : set.previous(at);
  const int next = 1 + __builtin_ctzll(above | top), previous = -1 - __builtin_clzll(below | 1);
  return at + (next & -int(up)) + (previous & -int(down));
}

// `count` outputs from count + 2 * half elements.
template <class Set, class K>
VEK_INLINE void slideRanks(const K* window, K* dst, int count, int half, const RankSpace<K>& space) {
  const int n = count + 2 * half, mask = 2 * half + 1;
  __builtin_memcpy(space.keys, window, size_t(n) * sizeof(K));
  sortRanks(space.keys, space.from, n);
  for (int r = 0; r < n; ++r) space.rank[space.from[r]] = r;
  const Set set(space.set, n);
  for (int i = 0; i < mask; ++i) set.flip(space.rank[i]);
  int median = set.words[0] & 1 ? 0 : set.next(0);
  for (int i = 0; i < half; ++i) median = set.next(median);
  dst[0] = space.keys[median];
  for (int i = 1; i < count; ++i) {
    const int out = space.rank[i - 1], in = space.rank[i + mask - 1];
    set.flip(out);
    set.flip(in);
    median = slideMedian(set, median, (in > median) & (out <= median), (in < median) & (out >= median));
    dst[i] = space.keys[median];
  }
}

template <class K>
VEK_NOINLINE void slideLong(const K* window, K* dst, int64_t len, int64_t half, int64_t piece, char* memory) {
  const RankSpace<K> space = rankSpace<K>(memory, piece + 2 * half);
  const auto slide = [&](auto run) VEK_LAMBDA {
    for (int64_t i = 0; i < len; i += piece)
      run(window + i, dst + i, int(len - i < piece ? len - i : piece), int(half), space);
  };
  if (piece + 2 * half <= kFlatSet) {
    slide([](auto... arguments) VEK_LAMBDA { slideRanks<FlatSet>(arguments...); });
  } else {
    slide([](auto... arguments) VEK_LAMBDA { slideRanks<LevelSet>(arguments...); });
  }
}

// ---- bytes ----------------------------------------------------------------------------------------------------------

// How often each value is in the window, and which values are.
struct Histogram {
  uint32_t count[256];
  uint64_t there[4];
  VEK_INLINE void add(uint8_t x) { ++count[x], there[x >> 6] |= uint64_t(1) << (x & 63); }
  VEK_INLINE void remove(uint8_t x) { there[x >> 6] ^= uint64_t(--count[x] == 0) << (x & 63); }
  VEK_INLINE int next(int x) const {
    int word = x >> 6;
    uint64_t above = bitsAbove(there[word], x);
    while (above == 0) above = there[++word];
    return word * 64 + lowest(above);
  }
  VEK_INLINE int previous(int x) const {
    int word = x >> 6;
    uint64_t below = bitsBelow(there[word], x);
    while (below == 0) below = there[--word];
    return word * 64 + highest(below);
  }
};

// Moves `value` to where at most `half` elements are below it and more than `half` are not above it; `below` counts the
// elements below it. After one element has left and one has come, that is one value up or down at most.
VEK_INLINE void settle(const Histogram& h, int64_t half, int& value, int64_t& below) {
  while (below > half) value = h.previous(value), below -= h.count[value];
  while (below + h.count[value] <= half) below += h.count[value], value = h.next(value);
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
