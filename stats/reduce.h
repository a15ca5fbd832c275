// SPDX-License-Identifier: Apache-2.0
// What the reductions share: sums over independent partial sums, their totals, and elements read at any address.
#ifndef VEK_STATS_REDUCE_H
#define VEK_STATS_REDUCE_H

#include "core/simd/checks.h"
#include "core/simd/complex.h"
#include "core/simd/convert.h"
#include "core/simd/short.h"
#include "core/simd/totals.h"
#include "vek/types.h"

namespace vek::VEK_SLOT {
namespace {

// The generic slot adds in the order that defines the results. Higher slots regroup the partial sums of the functions
// that promise a precision and no order.
constexpr bool kRegroups = kSse41;

// Partial sums in packs that fill about half of the registers: enough additions in flight to hide their latency.
template <class T>
constexpr int kChains = Pack<T>::regs == 1 ? 8 : 4;

// One element at an address that may be misaligned even for its type.
template <class T>
VEK_INLINE T read(const T* p) {
  T x;
  __builtin_memcpy(&x, p, sizeof(T));
  return x;
}

// ---- the same terms on packs and on single elements -----------------------------------------------------------------

VEK_INLINE double magnitude(double x) { return __builtin_fabs(x); }
VEK_INLINE double fusedMulAdd(double a, double b, double c) { return a * b + c; }

struct Plain {
  template <class V>
  VEK_INLINE V operator()(V sum, V x) const {
    return sum + x;
  }
};
struct Magnitude {
  template <class V>
  VEK_INLINE V operator()(V sum, V x) const {
    return sum + magnitude(x);
  }
};
struct Square {
  template <class V>
  VEK_INLINE V operator()(V sum, V x) const {
    return fusedMulAdd(x, x, sum);
  }
};
struct DiffMagnitude {
  template <class V>
  VEK_INLINE V operator()(V sum, V x, V y) const {
    return sum + magnitude(x - y);
  }
};
struct DiffSquare {
  template <class V>
  VEK_INLINE V operator()(V sum, V x, V y) const {
    return fusedMulAdd(x - y, x - y, sum);
  }
};

// ---- sums in double precision --------------------------------------------------------------------------------------

enum class Rest { kOneByOne, kPacks };

// 4K double partial sums, element i of the sources in number i mod 4K, formed as sum = op(sum, elements...). The rest
// is added one by one to the total, or by packs while it fills them.
template <int K, Rest kRest, class Op, class... S>
VEK_INLINE double doubleSum(Op op, ptrdiff_t n, const S*... src) {
  Pack<double> sum[K];
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) sum[k] = zeros<double>();
  ptrdiff_t i = 0;
  for (; i + 4 * K <= n; i += 4 * K) {
#pragma GCC unroll 8
    for (int k = 0; k < K; ++k) sum[k] = op(sum[k], loadDouble(src + i + 4 * k)...);
  }
  if constexpr (kRest == Rest::kPacks) {
    for (; i + 4 <= n; i += 4) sum[0] = op(sum[0], loadDouble(src + i)...);
  }
  double all = total(tree(sum));
  for (; i < n; ++i) all = op(all, double(read(src + i))...);
  return all;
}

// For functions that promise the precision alone: K packs of partial sums in the generic slot, as many as pay above.
template <int K, class Op, class... S>
VEK_INLINE double regroupedSum(Op op, ptrdiff_t n, const S*... src) {
  if constexpr (kRegroups) {
    return doubleSum<kChains<double>, Rest::kPacks>(op, n, src...);
  } else {
    return doubleSum<K, Rest::kOneByOne>(op, n, src...);
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
