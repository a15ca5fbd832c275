// SPDX-License-Identifier: Apache-2.0
// Real transforms of N = 2n points through a complex one of n: pairs of samples are its elements, and one sweep turns
// its result Z into the spectrum X: with E = (Z[k] + conj Z[n-k]) / 2, O = (Z[k] - conj Z[n-k]) / 2i and
// w = exp(-2 pi i / N), X[k] = E + w^k O and X[n-k] = conj(E - w^k O). The inverse sweep goes back.
#ifndef VEK_TRANSFORM_FFT_REAL_H
#define VEK_TRANSFORM_FFT_REAL_H

#include "transform/fft_complex.h"

namespace vek::VEK_SLOT {
namespace {

// w^k for k < n/2. From this order up the table has two levels: w^k = fine[k mod 1024] * coarse[k / 1024].
constexpr int kTwoLevelOrder = 19;
constexpr int64_t kFineRoots = 1024;

template <class T>
struct RealRoots {
  const T *fine, *coarse;
  bool twoLevel;
  VEK_INLINE RealRoots(const T* table, int order)
      : fine(table), coarse(table + 2 * kFineRoots), twoLevel(order >= kTwoLevelOrder) {}
  VEK_INLINE Complex<T> block(int64_t k) const {
    if (!twoLevel) return loadBlock(fine + 2 * k);
    const T* c = coarse + 2 * (k / kFineRoots);
    return times(loadBlock(fine + 2 * (k % kFineRoots)), Complex<T>{splat(c[0]), splat(c[1])});
  }
};

VEK_INLINE int64_t realTableSize(int order) {
  return order >= kTwoLevelOrder ? 2 * (kFineRoots + (int64_t(1) << (order - 12))) : int64_t(1) << (order - 1);
}
template <class T>
VEK_NOINLINE void makeRealTable(T* table, int order, const Roots& roots) {
  const bool twoLevel = order >= kTwoLevelOrder;
  const int64_t count = twoLevel ? kFineRoots : int64_t(1) << (order - 2);
  fillBlocks(table, count, [&](int64_t k) VEK_LAMBDA { return roots(k); });
  if (!twoLevel) return;
  T* coarse = table + 2 * kFineRoots;
  for (int64_t k = 0; k < int64_t(1) << (order - 12); ++k) {
    const Root w = roots(k * kFineRoots);
    coarse[2 * k] = T(w.re), coarse[2 * k + 1] = T(w.im);
  }
}

// Z to X: a at k, b at n - k.
template <class T>
VEK_INLINE void toSpectrum(Complex<T>& a, Complex<T>& b, Complex<T> w, Reg<T> half) {
  const Complex<T> e = {(a.re + b.re) * half, (a.im - b.im) * half};
  const Complex<T> o = {(a.im + b.im) * half, (b.re - a.re) * half};
  a = {negMulAdd<T>(o.im, w.im, mulAdd<T>(o.re, w.re, e.re)), mulAdd<T>(o.im, w.re, mulAdd<T>(o.re, w.im, e.im))};
  b = {mulAdd<T>(o.im, w.im, negMulAdd<T>(o.re, w.re, e.re)), mulAdd<T>(o.im, w.re, mulAdd<T>(o.re, w.im, -e.im))};
}
// X to 2 Z.
template <class T>
VEK_INLINE void fromSpectrum(Complex<T>& a, Complex<T>& b, Complex<T> w) {
  const Complex<T> e = {a.re + b.re, a.im - b.im};
  const Complex<T> d = {a.re - b.re, a.im + b.im};
  const Complex<T> o = {mulAdd<T>(d.im, w.im, d.re * w.re), negMulAdd<T>(d.re, w.im, d.im * w.re)};
  a = {e.re - o.im, e.im + o.re};
  b = {e.re + o.im, o.re - e.im};
}

template <Direction D, class T>
VEK_INLINE void recombineBlocks(Complex<T>& a, Complex<T>& b, Complex<T> w, Reg<T> half) {
  if constexpr (D == kForward) {
    toSpectrum(a, b, w, half);
  } else {
    fromSpectrum(a, b, w);
  }
}

// 2L - 2 elements: the partners of the first block without the one that is no partner.
template <class T>
VEK_INLINE void copyPartners(T* to, const T* from) {
  constexpr int L = kLanes<T>;
  const Reg<T> a = loadV(from), b = loadV(from + L - 2);
  storeV(to, a);
  storeV(to + L - 2, b);
}

template <Direction D, class T>
VEK_NOINLINE void recombine(const T* src, T* dst, int order, const T* table, T scale) {
  constexpr int L = kLanes<T>;
  const int64_t n = int64_t(1) << (order - 1);
  const RealRoots<T> roots(table, order);
  const T first = src[0], second = src[1], mr = src[n], mi = src[n + 1];
  const T one = D == kForward ? scale : T(1), middle = D == kForward ? scale : T(2);
  const Reg<T> half = splat(T(0.5) * scale);
  // The first block: element 0 stands alone, so its partners come and go by way of a copy that holds one more.
  alignas(32) T partners[2 * L];
  copyPartners(partners, src + 2 * (n - L + 1));
  partners[2 * L - 2] = partners[2 * L - 1] = 0;
  Complex<T> a = loadInterleaved(src), b = loadReversed(partners + 2 * (L - 1));
  recombineBlocks<D>(a, b, roots.block(0), half);
  storeReversed(partners + 2 * (L - 1), b);
  storeInterleaved(dst, a);
  copyPartners(dst + 2 * (n - L + 1), partners);
  for (int64_t k = L; k < n / 2; k += L) {
    a = loadInterleaved(src + 2 * k), b = loadReversed(src + 2 * (n - k));
    recombineBlocks<D>(a, b, roots.block(k), half);
    storeInterleaved(dst + 2 * k, a);
    storeReversed(dst + 2 * (n - k), b);
  }
  dst[0] = (first + second) * one;
  dst[1] = (first - second) * one;
  dst[n] = mr * middle;
  dst[n + 1] = -mi * middle;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
