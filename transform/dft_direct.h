// SPDX-License-Identifier: Apache-2.0
// Transforms as sums: with the sums s and differences d of elements j and n-j, bins k and n-k are a -+ i b, where
//   a = sum over j of cos(2 pi jk/n) s[j],   b = sum over j of sin(2 pi jk/n) d[j].
// Vectors go over k. The fastest way for lengths that are short or prime.
#ifndef VEK_TRANSFORM_DFT_DIRECT_H
#define VEK_TRANSFORM_DFT_DIRECT_H

#include "transform/dft_pass.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kMostSums = 256;  // the longest transform

// Bins 0 .. n/2 in whole vectors; for every j a row of cosines and one of sines, in the lane order of blocks.
template <class T>
VEK_INLINE int64_t sumColumns(int64_t n) {
  return vectorsOf<T>(n / 2 + 1) * kLanes<T>;
}
template <class T>
int64_t sumTableSize(int64_t n) {
  return 2 * (n / 2 + 1) * sumColumns<T>(n);
}
template <class T, class F>
void fillSums(T* table, int64_t n, const F& root) {
  const int64_t columns = sumColumns<T>(n);
  for (int64_t j = 0; j <= n / 2; ++j, table += 2 * columns) {
    for (int64_t k = 0; k < columns; ++k) {
      const Root w = root(j * (k / kLanes<T> * kLanes<T> + kLaneOrder<T>[k % kLanes<T>]) % n);
      table[k] = T(w.re);
      table[k + columns] = T(-w.im);
    }
  }
}

template <class T>
struct SumTerms {
  T sum[kMostSums + 2], difference[kMostSums + 2];  // pairs
};

// V vectors of bins; `out` has room for the vectors that are not full.
template <Direction D, int V, class T>
VEK_INLINE void sumVectors(const SumTerms<T>& x, int64_t n, const T* table, int64_t columns, T* low, T* high, T scale) {
  constexpr int L = kLanes<T>;
  Complex<T> a[V], b[V];
#pragma GCC unroll 2
  for (int v = 0; v < V; ++v) a[v] = {broadcastReg(x.sum[0]), broadcastReg(x.sum[1])}, b[v] = Complex<T>{};
  const int64_t pairs = (n - 1) / 2;
  for (int64_t j = 1; j <= pairs; ++j) {
    const T* row = table + 2 * columns * j;
    const Reg<T> sr = broadcastReg(x.sum[2 * j]), si = broadcastReg(x.sum[2 * j + 1]);
    const Reg<T> dr = broadcastReg(x.difference[2 * j]), di = broadcastReg(x.difference[2 * j + 1]);
#pragma GCC unroll 2
    for (int v = 0; v < V; ++v) {
      const Reg<T> c = loadV(row + v * L), s = loadV(row + columns + v * L);
      a[v] = {mulAdd<T>(c, sr, a[v].re), mulAdd<T>(c, si, a[v].im)};
      b[v] = {mulAdd<T>(s, dr, b[v].re), mulAdd<T>(s, di, b[v].im)};
    }
  }
  const Reg<T> factor = broadcastReg(scale);
#pragma GCC unroll 2
  for (int v = 0; v < V; ++v) {
    if (n % 2 == 0) {
      const Reg<T> c = loadV(table + n * columns + v * L);
      a[v] = {mulAdd<T>(c, broadcastReg(x.sum[n]), a[v].re), mulAdd<T>(c, broadcastReg(x.sum[n + 1]), a[v].im)};
    }
    const Complex<T> p = {(a[v].re + b[v].im) * factor, (a[v].im - b[v].re) * factor};
    const Complex<T> q = {(a[v].re - b[v].im) * factor, (a[v].im + b[v].re) * factor};
    storeInterleaved<T>(low + 2 * v * L, D == kForward ? p : exchanged(p));
    storeReversed<T>(high - 2 * v * L, D == kForward ? q : exchanged(q));
  }
}

template <Direction D, class T>
VEK_NOINLINE void sumTransform(const T* src, T* dst, int64_t n, const T* table, T scale) {
  constexpr int L = kLanes<T>, swap = D == kForward ? 0 : 1;
  SumTerms<T> x;
  x.sum[0] = src[swap], x.sum[1] = src[1 - swap];
  for (int64_t j = 1; 2 * j < n; ++j) {
    const T ar = src[2 * j + swap], ai = src[2 * j + 1 - swap];
    const T br = src[2 * (n - j) + swap], bi = src[2 * (n - j) + 1 - swap];
    x.sum[2 * j] = ar + br, x.sum[2 * j + 1] = ai + bi;
    x.difference[2 * j] = ar - br, x.difference[2 * j + 1] = ai - bi;
  }
  if (n % 2 == 0) x.sum[n] = src[n + swap], x.sum[n + 1] = src[n + 1 - swap];
  // Every lane holds a true bin: those behind the last one and before the first fall into the room on both sides.
  T out[2 * (kMostSums + 4 * L)];
  T* const first = out + 4 * L;
  const int64_t columns = sumColumns<T>(n);
  int64_t k = 0;
  for (; k + 2 * L <= columns; k += 2 * L) {
    sumVectors<D, 2>(x, n, table + k, columns, first + 2 * k, first + 2 * (n - k), scale);
  }
  if (k < columns) sumVectors<D, 1>(x, n, table + k, columns, first + 2 * k, first + 2 * (n - k), scale);
  __builtin_memcpy(dst, first, size_t(2 * n) * sizeof(T));
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
