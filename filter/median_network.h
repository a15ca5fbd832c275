// SPDX-License-Identifier: Apache-2.0
// Medians of short windows: each lane of a pack is one output, the window's elements are packs loaded at shifted
// addresses, and a network of minima and maxima brings the median to its place. What a network computes beyond that is
// dropped by the compiler.
#ifndef VEK_FILTER_MEDIAN_NETWORK_H
#define VEK_FILTER_MEDIAN_NETWORK_H

#include "core/simd/driver.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
VEK_INLINE void sortTwo(Pack<T>& a, Pack<T>& b) {
  const Pack<T> low = minOf(a, b);
  b = maxOf(a, b);
  a = low;
}

template <class T>
VEK_INLINE Pack<T> medianOf3(Pack<T> a, Pack<T> b, Pack<T> c) {
  sortTwo(a, b);
  return maxOf(a, minOf(b, c));
}

// Batcher's odd-even merge sort of N values.
template <int N, class T>
VEK_INLINE void batcherSort(Pack<T> (&v)[N]) {
#pragma GCC unroll 8
  for (int p = 1; p < N; p *= 2) {
#pragma GCC unroll 8
    for (int k = p; k >= 1; k /= 2) {
#pragma GCC unroll 32
      for (int j = k % p; j + k < N; j += 2 * k) {
#pragma GCC unroll 32
        for (int i = 0; i < k; ++i)
          if (i + j + k < N && (i + j) / (2 * p) == (i + j + k) / (2 * p)) sortTwo(v[i + j], v[i + j + k]);
      }
    }
  }
}

// The median of M values.
template <int M, class T>
VEK_INLINE Pack<T> medianOf(Pack<T> (&v)[M]) {
  if constexpr (M == 3) {
    return medianOf3(v[0], v[1], v[2]);
  } else if constexpr (M == 5) {
    sortTwo(v[0], v[1]);
    sortTwo(v[3], v[4]);
    return medianOf3(maxOf(v[0], v[3]), minOf(v[1], v[4]), v[2]);
  } else if constexpr (M == 9) {
    // Three sorted triples: the median is that of the largest minimum, the median median and the smallest maximum.
#pragma GCC unroll 3
    for (int i = 0; i < 9; i += 3) {
      sortTwo(v[i + 1], v[i + 2]);
      sortTwo(v[i], v[i + 1]);
      sortTwo(v[i + 1], v[i + 2]);
    }
    return medianOf3(maxOf(maxOf(v[0], v[3]), v[6]), medianOf3(v[1], v[4], v[7]), minOf(minOf(v[2], v[5]), v[8]));
  } else {
    batcherSort(v);
    return v[M / 2];
  }
}

// dst[i] = median of window[i] .. window[i + mask - 1], i < n; the arrays do not overlap. A network of more than `mask`
// values is filled up with as many values below all others as above them, which leaves the median where it is.
template <int M, class T>
VEK_NOINLINE void slideNetwork(const T* window, T* dst, ptrdiff_t n, int mask) {
  constexpr int lanes = Pack<T>::lanes, fewest = M <= 9 ? M : (M + 1) / 2 + 1;
  constexpr T least = kSigned<T> ? T(UnsignedOf<T>(1) << (8 * sizeof(T) - 1)) : T(0);
  const auto block = [mask](T* d, const T* s) VEK_LAMBDA {
    Pack<T> v[M];
#pragma GCC unroll 32
    for (int k = 0; k < M; ++k) v[k] = k < fewest || k < mask ? load(s + k) : broadcast(k % 2 == 0 ? T(~least) : least);
    store(d, medianOf<M>(v));
  };
  if (n >= lanes) {
    ptrdiff_t i = 0;
    for (; i + lanes <= n; i += lanes) block(dst + i, window + i);
    if (i < n) block(dst + n - lanes, window + n - lanes);
    return;
  }
  alignas(32) T in[lanes + M] = {}, out[lanes];
  copyShort(in, window, (n + mask - 1) * ptrdiff_t(sizeof(T)));
  block(out, in);
  copyShort(dst, out, n * ptrdiff_t(sizeof(T)));
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
