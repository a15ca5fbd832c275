// SPDX-License-Identifier: Apache-2.0
// What the reductions share: sums over independent partial sums, their totals, and elements read at any address.
#ifndef VEK_STATS_REDUCE_H
#define VEK_STATS_REDUCE_H

#include "core/simd/checks.h"
#include "core/simd/convert.h"
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

// A load that stays one. Of a plain load with two users the compiler makes an operand in memory for each, and loads
// are what limits the loops that use this.
template <class T>
VEK_INLINE Pack<T> loadOnce(const T* p) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    const T* at = p + i * Pack<T>::regLanes;
    if constexpr (sizeof(Reg) == 32) {
      return regCast<Reg>(*reinterpret_cast<const volatile __m256i_u*>(at));
    } else {
      return regCast<Reg>(*reinterpret_cast<const volatile __m128i_u*>(at));
    }
  });
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

// ---- totals --------------------------------------------------------------------------------------------------------

VEK_INLINE __m128d halvesAdded(Pack<double> a) { return _mm_add_pd((__m128d)half(a, 0), (__m128d)half(a, 1)); }
VEK_INLINE __m128 halvesAdded(Pack<float> a) { return _mm_add_ps((__m128)half(a, 0), (__m128)half(a, 1)); }

// Neighbours first, then neighbours of those: ((A0+A1)+(A2+A3)) + ((A4+A5)+(A6+A7)) in registers of 16 bytes, which
// are the halves of the packs. Recursive, as the compiler keeps the packs in registers only if no index is a variable.
template <int K, class T>
VEK_INLINE auto tree(const Pack<T>* p) {
  if constexpr (K == 1) {
    return halvesAdded(*p);
  } else {
    return tree<K / 2>(p) + tree<K / 2>(p + K / 2);
  }
}
template <int K, class T>
VEK_INLINE auto tree(const Pack<T> (&p)[K]) {
  return tree<K, T>(&p[0]);
}

VEK_INLINE double total(__m128d a) { return a[0] + a[1]; }
VEK_INLINE float total(__m128 a) {
  const __m128 two = _mm_add_ps(a, _mm_movehl_ps(a, a));
  return two[0] + two[1];
}

// Regrouped: whole packs are added first.
template <int K, class T>
VEK_INLINE Pack<T> packTree(const Pack<T>* p) {
  if constexpr (K == 1) {
    return *p;
  } else {
    return packTree<K / 2>(p) + packTree<K / 2>(p + K / 2);
  }
}
template <int K, class T>
VEK_INLINE Pack<T> packTree(const Pack<T> (&p)[K]) {
  return packTree<K, T>(&p[0]);
}

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

// ---- complex -------------------------------------------------------------------------------------------------------

VEK_INLINE const float* partsOf(const Vek32fc* p) { return reinterpret_cast<const float*>(p); }
VEK_INLINE const int32_t* partsOf(const Vek32sc* p) { return reinterpret_cast<const int32_t*>(p); }

// One complex element in double precision.
VEK_INLINE __m128d readComplex(const float* p) { return _mm_cvtps_pd((__m128)loadBytes<8>(p)); }
VEK_INLINE __m128d readComplex(const int32_t* p) { return _mm_cvtepi32_pd(loadBytes<8>(p)); }

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
