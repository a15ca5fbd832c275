// SPDX-License-Identifier: Apache-2.0
// The smallest and largest of the values that an operation forms from packs of the sources. Both do not depend on the
// order of visiting, so blocks and tails may overlap; NaN loses against the value the fold starts from.
#ifndef VEK_STATS_FOLD_H
#define VEK_STATS_FOLD_H

#include "stats/reduce.h"

namespace vek::VEK_SLOT {
namespace {

enum class Want { kLow, kHigh, kBoth };
constexpr Want oneEnd(bool high) { return high ? Want::kHigh : Want::kLow; }
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
template <Want W, int K, class T>
VEK_INLINE Bounds<T> merged(const Bounds<T>* b) {
  if constexpr (K == 1) {
    return *b;
  } else {
    Bounds<T> all = merged<W, K / 2>(b);
    const Bounds<T> other = merged<W, K / 2>(b + K / 2);
    if constexpr (wantsLow(W)) all.low = minOf(other.low, all.low);
    if constexpr (wantsHigh(W)) all.high = maxOf(other.high, all.high);
    return all;
  }
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
  Bounds<T> all = merged<W, K>(b);
  for (; i + L <= n; i += L) include<W>(all, op(load(src + i)...));
  if (i < n) include<W>(all, op(load(src + n - L)...));
  return all;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
