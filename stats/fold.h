// SPDX-License-Identifier: Apache-2.0
// The smallest and largest of the values that an operation forms from packs of the sources. Both do not depend on the
// order of visiting, so blocks and tails may overlap; NaN loses against the value the fold starts from.
#ifndef VEK_STATS_FOLD_H
#define VEK_STATS_FOLD_H

#include "stats/reduce.h"

namespace vek::VEK_SLOT {
namespace {

enum class Want { kLow, kHigh, kBoth };
constexpr bool wantsLow(Want w) { return w != Want::kHigh; }
constexpr bool wantsHigh(Want w) { return w != Want::kLow; }

// Lane-wise bounds; only what is wanted is kept up.
template <class T>
struct Bounds {
  Pack<T> low, high;
};

template <Want W, class T>
VEK_INLINE void include(Bounds<T>& b, Pack<T> x) {
  if constexpr (wantsLow(W)) b.low = minOf(x, b.low);
  if constexpr (wantsHigh(W)) b.high = maxOf(x, b.high);
}
template <Want W, class T>
VEK_INLINE void merge(Bounds<T>& b, Bounds<T> other) {
  if constexpr (wantsLow(W)) b.low = minOf(other.low, b.low);
  if constexpr (wantsHigh(W)) b.high = maxOf(other.high, b.high);
}

// The bounds of `start` and of op(sources...) over n elements; n is at least one pack.
template <Want W, class T, class Op, class... S>
VEK_INLINE Bounds<T> fold(Bounds<T> start, Op op, ptrdiff_t n, const S*... src) {
  constexpr int L = Pack<T>::lanes;
  constexpr int K = W == Want::kBoth ? kChains<T> / 2 : kChains<T>;
  Bounds<T> b[K];
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) b[k] = start;
  ptrdiff_t i = 0;
  for (; i + K * L <= n; i += K * L) {
#pragma GCC unroll 8
    for (int k = 0; k < K; ++k) include<W>(b[k], op(load(src + i + k * L)...));
  }
#pragma GCC unroll 3
  for (int step = 1; step < K; step *= 2)
#pragma GCC unroll 4
    for (int k = 0; k < K; k += 2 * step) merge<W>(b[k], b[k + step]);
  for (; i + L <= n; i += L) include<W>(b[0], op(load(src + i)...));
  if (i < n) include<W>(b[0], op(load(src + n - L)...));
  return b[0];
}

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
