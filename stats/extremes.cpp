// SPDX-License-Identifier: Apache-2.0
// Minima and maxima, with and without their positions.
#include "stats/fold.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- what is compared ----------------------------------------------------------------------------------------------

struct Itself {
  template <class V>
  VEK_INLINE V operator()(V x) const {
    return x;
  }
};

// The magnitude with 2^31 clamped to 2^31 - 1, which leaves the order of all others as it is.
struct ClampedMagnitude {
  VEK_INLINE Pack<int32_t> operator()(Pack<int32_t> x) const {
    const Pack<int32_t> m = magnitude(x);
    return m + signOf(m);
  }
  VEK_INLINE int32_t operator()(int32_t x) const { return x == INT32_MIN ? INT32_MAX : x < 0 ? -x : x; }
};

// The magnitude as it is, which takes all 32 bits.
struct FullMagnitude {
  VEK_INLINE Pack<uint32_t> operator()(Pack<uint32_t> x) const { return bits<uint32_t>(magnitude(bits<int32_t>(x))); }
  VEK_INLINE uint32_t operator()(uint32_t x) const { return int32_t(x) < 0 ? -x : x; }
};

template <bool kHigh, class T>
VEK_INLINE bool beats(T a, T b) {
  return kHigh ? a > b : a < b;
}
template <bool kHigh, class T>
VEK_INLINE bool anyBeats(Pack<T> a, T b) {
  return any(kHigh ? a > broadcast(b) : a < broadcast(b));
}

template <class T>
struct Extremes {
  T low, high;
};

// ---- values --------------------------------------------------------------------------------------------------------

template <Want W, class Key, class T>
VEK_INLINE Extremes<T> scan(Extremes<T> best, Key key, const T* src, ptrdiff_t n) {
  for (ptrdiff_t i = 0; i < n; ++i) {
    const T x = key(read(src + i));
    if (wantsLow(W) && beats<false>(x, best.low)) best.low = x;
    if (wantsHigh(W) && beats<true>(x, best.high)) best.high = x;
  }
  return best;
}

template <Want W, class Key, class T>
VEK_INLINE Extremes<T> extremesOf(Key key, const T* src, ptrdiff_t n) {
  const T first = key(read(src));
  if (n < Pack<T>::lanes) return scan<W>({first, first}, key, src, n);
  const Bounds<T> b = fold<W, T>({broadcast(first), broadcast(first)}, key, n, src);
  Extremes<T> e = {first, first};
  if constexpr (wantsLow(W)) e.low = outermost<false>(b.low);
  if constexpr (wantsHigh(W)) e.high = outermost<true>(b.high);
  return e;
}

// ---- positions -----------------------------------------------------------------------------------------------------

// The first position whose key equals the value; there is one among the n.
template <class Key, class T>
VEK_INLINE ptrdiff_t locate(Key key, const T* src, ptrdiff_t n, T value) {
  constexpr int L = Pack<T>::lanes;
  const Pack<T> wanted = broadcast(value);
  ptrdiff_t i = 0;
  for (; i + 4 * L <= n; i += 4 * L) {
    Mask<T> hit[4];
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) hit[k] = key(load(src + i + k * L)) == wanted;
    if (any((hit[0] | hit[1]) | (hit[2] | hit[3]))) break;
  }
  for (; i + L <= n; i += L) {
    const uint32_t hits = byteBits(key(load(src + i)) == wanted);
    if (hits != 0) return i + __builtin_ctz(hits) / int(sizeof(T));
  }
  while (i < n - 1 && key(read(src + i)) != value) ++i;
  return i;
}

// Among equal zeros of either sign the first one counts.
template <class T>
VEK_INLINE T firstOfEqual(const T* src, ptrdiff_t n, T value) {
  if constexpr (kFloat<T>) {
    if (value == T(0)) return read(src + locate(Itself(), src, n, value));
  }
  return value;
}

// Blocks of this many bytes are folded at full speed; only the block that holds the extreme is searched for it.
constexpr ptrdiff_t kSearchBytes = 4096;

template <class T>
struct Position {
  T value;
  ptrdiff_t block;
};

template <bool kHigh, class T>
VEK_INLINE void improve(Position<T>& best, Pack<T> lanes, ptrdiff_t block) {
  if (anyBeats<kHigh>(lanes, best.value)) best = {outermost<kHigh>(lanes), block};
}

template <class T>
struct Positions {
  Position<T> low, high;
};

// The extremes and the start of the block that held each first. A later block must be strictly better.
template <Want W, class Key, class T>
VEK_INLINE Positions<T> searchBlocks(Key key, const T* src, ptrdiff_t n) {
  constexpr ptrdiff_t block = kSearchBytes / ptrdiff_t(sizeof(T));
  const T first = key(read(src));
  Positions<T> best = {{first, 0}, {first, 0}};
  for (ptrdiff_t i = 0; i < n; i += block) {
    const ptrdiff_t count = n - i < block ? n - i : block;
    if (count < Pack<T>::lanes) {
      const Extremes<T> e = scan<W>({best.low.value, best.high.value}, key, src + i, count);
      if (beats<false>(e.low, best.low.value)) best.low = {e.low, i};
      if (beats<true>(e.high, best.high.value)) best.high = {e.high, i};
      break;
    }
    const Bounds<T> b = fold<W, T>({broadcast(best.low.value), broadcast(best.high.value)}, key, count, src + i);
    if constexpr (wantsLow(W)) improve<false>(best.low, b.low, i);
    if constexpr (wantsHigh(W)) improve<true>(best.high, b.high, i);
  }
  return best;
}

template <class T>
struct Found {
  T value;
  int index;
};
template <class Key, class T>
VEK_INLINE Found<T> settle(Key key, const T* src, ptrdiff_t n, Position<T> best) {
  const ptrdiff_t at = best.block + locate(key, src + best.block, n - best.block, best.value);
  return {key(read(src + at)), int(at)};
}

// ---- arguments and results -----------------------------------------------------------------------------------------

// Nothing compares greater or less than a NaN in front.
template <class T>
VEK_INLINE bool startsWithNan(const T* src) {
  return read(src) != read(src);
}

template <bool kHigh, class T>
VEK_INLINE VekStatus extreme(const T* src, int len, T* value) {
  if (const VekStatus s = checkVectors(len, src, value)) return s;
  if (startsWithNan(src)) {
    *value = read(src);
    return vekStsNoErr;
  }
  const Extremes<T> e = extremesOf<oneEnd(kHigh)>(Itself(), src, len);
  *value = firstOfEqual(src, len, kHigh ? e.high : e.low);
  return vekStsNoErr;
}

// Clamping once at the end comes to the same as clamping every magnitude.
template <bool kHigh>
VEK_INLINE VekStatus extremeMagnitude(const int32_t* src, int len, int32_t* value) {
  if (const VekStatus s = checkVectors(len, src, value)) return s;
  const uint32_t* bitsOfSrc = reinterpret_cast<const uint32_t*>(src);
  const Extremes<uint32_t> e = extremesOf<oneEnd(kHigh)>(FullMagnitude(), bitsOfSrc, len);
  const uint32_t m = kHigh ? e.high : e.low;
  *value = m > uint32_t(INT32_MAX) ? INT32_MAX : int32_t(m);
  return vekStsNoErr;
}

template <class T>
VEK_INLINE VekStatus extremes(const T* src, int len, T* low, T* high) {
  if (const VekStatus s = checkVectors(len, src, low, high)) return s;
  if (startsWithNan(src)) {
    *low = *high = read(src);
    return vekStsNoErr;
  }
  const Extremes<T> e = extremesOf<Want::kBoth>(Itself(), src, len);
  const T smallest = firstOfEqual(src, len, e.low), largest = firstOfEqual(src, len, e.high);
  *low = smallest;
  *high = largest;
  return vekStsNoErr;
}

template <bool kHigh, class Key, class T>
VEK_INLINE VekStatus extremeAndIndex(Key key, const T* src, int len, T* value, int* index) {
  if (const VekStatus s = checkVectors(len, src, value)) return s;
  if (startsWithNan(src)) {
    *value = read(src);
    *index = 0;
    return vekStsNoErr;
  }
  const Positions<T> best = searchBlocks<oneEnd(kHigh)>(key, src, len);
  const Found<T> found = settle(key, src, len, kHigh ? best.high : best.low);
  *value = found.value;
  *index = found.index;
  return vekStsNoErr;
}

template <class T>
VEK_INLINE VekStatus extremesAndIndices(const T* src, int len, T* low, int* lowIndex, T* high, int* highIndex) {
  if (const VekStatus s = checkVectors(len, src, low, lowIndex, high, highIndex)) return s;
  if (startsWithNan(src)) {
    *low = *high = read(src);
    *lowIndex = *highIndex = 0;
    return vekStsNoErr;
  }
  const Positions<T> best = searchBlocks<Want::kBoth>(Itself(), src, len);
  const Found<T> smallest = settle(Itself(), src, len, best.low), largest = settle(Itself(), src, len, best.high);
  *low = smallest.value;
  *lowIndex = smallest.index;
  *high = largest.value;
  *highIndex = largest.index;
  return vekStsNoErr;
}

}  // namespace

#define VEK_EXTREMES(T, S)                                                                                       \
  VekStatus veksMax_##S(const T* pSrc, int len, T* pMax) { return extreme<true>(pSrc, len, pMax); }              \
  VekStatus veksMin_##S(const T* pSrc, int len, T* pMin) { return extreme<false>(pSrc, len, pMin); }             \
  VekStatus veksMinMax_##S(const T* pSrc, int len, T* pMin, T* pMax) { return extremes(pSrc, len, pMin, pMax); } \
  VekStatus veksMaxIndx_##S(const T* pSrc, int len, T* pMax, int* pIndx) {                                       \
    if (pIndx == nullptr) return ::veksMax_##S(pSrc, len, pMax);                                                 \
    return extremeAndIndex<true>(Itself(), pSrc, len, pMax, pIndx);                                              \
  }                                                                                                              \
  VekStatus veksMinIndx_##S(const T* pSrc, int len, T* pMin, int* pIndx) {                                       \
    if (pIndx == nullptr) return ::veksMin_##S(pSrc, len, pMin);                                                 \
    return extremeAndIndex<false>(Itself(), pSrc, len, pMin, pIndx);                                             \
  }                                                                                                              \
  VekStatus veksMinMaxIndx_##S(const T* pSrc, int len, T* pMin, int* pMinIndx, T* pMax, int* pMaxIndx) {         \
    return extremesAndIndices(pSrc, len, pMin, pMinIndx, pMax, pMaxIndx);                                        \
  }
VEK_EXTREMES(Vek16s, 16s)
VEK_EXTREMES(Vek32s, 32s)
VEK_EXTREMES(Vek32f, 32f)
#undef VEK_EXTREMES

VekStatus veksMaxAbs_32s(const Vek32s* pSrc, int len, Vek32s* pMaxAbs) {
  return extremeMagnitude<true>(pSrc, len, pMaxAbs);
}
VekStatus veksMinAbs_32s(const Vek32s* pSrc, int len, Vek32s* pMinAbs) {
  return extremeMagnitude<false>(pSrc, len, pMinAbs);
}
VekStatus veksMaxAbsIndx_32s(const Vek32s* pSrc, int len, Vek32s* pMaxAbs, int* pIndx) {
  if (pIndx == nullptr) return ::veksMaxAbs_32s(pSrc, len, pMaxAbs);
  return extremeAndIndex<true>(ClampedMagnitude(), pSrc, len, pMaxAbs, pIndx);
}
VekStatus veksMinAbsIndx_32s(const Vek32s* pSrc, int len, Vek32s* pMinAbs, int* pIndx) {
  if (pIndx == nullptr) return ::veksMinAbs_32s(pSrc, len, pMinAbs);
  return extremeAndIndex<false>(ClampedMagnitude(), pSrc, len, pMinAbs, pIndx);
}

}  // namespace vek::VEK_SLOT
