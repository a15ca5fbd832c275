// SPDX-License-Identifier: Apache-2.0
// Convolution of real data between the complex transforms of their pairs of samples. With A = Z[k] and A' = conj Z[n-k]
// of one, B and B' of the other, and w = exp(-2 pi i k / N), the pairs of the convolution have
//   Z[k] = A B - (1 + w^2) / 4 (A - A') (B - B'),
// the last product being the same for n-k but conjugated, and 1 + w^2 = 2 Re(w) w.
#ifndef VEK_TRANSFORM_FFT_CONV_H
#define VEK_TRANSFORM_FFT_CONV_H

#include "transform/fft_real.h"

namespace vek::VEK_SLOT {
namespace {

// A whole block of k and its partners n-k. Element 0 is its own partner, so the first block's come by way of a copy.
template <class T>
struct MirroredBlocks {
  static constexpr int L = kLanes<T>;
  alignas(32) T first[2 * L];
  T* data;
  int64_t n;

  VEK_INLINE MirroredBlocks(T* p, int64_t points) : data(p), n(points) {
    copyPartners(first, p + 2 * (n - L + 1));
    first[2 * L - 2] = p[0], first[2 * L - 1] = p[1];
  }
  VEK_INLINE Complex<T> own(int64_t k) const { return loadInterleaved(data + 2 * k); }
  VEK_INLINE Complex<T> partner(int64_t k) const {
    return loadReversed(k == 0 ? first + 2 * (L - 1) : data + 2 * (n - k));
  }
  VEK_INLINE void replace(int64_t k, Complex<T> a, Complex<T> b) {
    if (k == 0) {
      storeReversed(first + 2 * (L - 1), b);
      copyPartners(data + 2 * (n - L + 1), first);
    } else {
      storeReversed(data + 2 * (n - k), b);
    }
    storeInterleaved(data + 2 * k, a);
  }
};

// (a, b) and (c, d) are elements k and n-k of the two.
template <class T>
VEK_INLINE void multiplyBlocks(Complex<T> a, Complex<T> b, Complex<T>& c, Complex<T>& d, Complex<T> w) {
  const Reg<T> half = splat(T(0.5)) * w.re;
  const Complex<T> factor = {half * w.re, half * w.im};
  const Complex<T> e = times(times(Complex<T>{a.re - b.re, a.im + b.im}, Complex<T>{c.re - d.re, c.im + d.im}), factor);
  c = times(a, c) - e;
  d = times(b, d);
  d = {d.re - e.re, d.im + e.im};
}

template <class T>
VEK_NOINLINE void multiplyPairs(const T* src, T* srcDst, int order, const T* table) {
  constexpr int L = kLanes<T>;
  const int64_t n = int64_t(1) << (order - 1);
  const RealRoots<T> roots(table, order);
  const MirroredBlocks<T> x(const_cast<T*>(src), n);
  MirroredBlocks<T> y(srcDst, n);
  const auto block = [&](int64_t k) VEK_LAMBDA {
    Complex<T> c = y.own(k), d = y.partner(k);
    multiplyBlocks(x.own(k), x.partner(k), c, d, roots.block(k));
    y.replace(k, c, d);
  };
  block(0);
  for (int64_t k = L; k < n / 2; k += L) block(k);
  const T re = src[n] * srcDst[n] - src[n + 1] * srcDst[n + 1];
  srcDst[n + 1] = src[n] * srcDst[n + 1] + src[n + 1] * srcDst[n];
  srcDst[n] = re;
}

// With B = conj(A) of the reversed elements everything but two real numbers falls away: the mean e of |A|^2 and |A'|^2
// and s = Re(w) Im(A conj A') + Im(w) (|A|^2 - |A'|^2) / 2; Z[k] = e + s Im(w) + i s Re(w).
template <class T>
VEK_NOINLINE void powerOfPairs(T* srcDst, int order, const T* table) {
  constexpr int L = kLanes<T>;
  const int64_t n = int64_t(1) << (order - 1);
  const RealRoots<T> roots(table, order);
  const Reg<T> half = splat(T(0.5));
  MirroredBlocks<T> y(srcDst, n);
  const auto block = [&](int64_t k) VEK_LAMBDA {
    const Complex<T> a = y.own(k), b = y.partner(k), w = roots.block(k);
    const Reg<T> pa = mulAdd<T>(a.re, a.re, a.im * a.im), pb = mulAdd<T>(b.re, b.re, b.im * b.im);
    const Reg<T> e = (pa + pb) * half, cross = mulAdd<T>(a.im, b.re, a.re * b.im);
    const Reg<T> s = mulAdd<T>(cross, w.re, (pa - pb) * half * w.im), im = s * w.re;
    y.replace(k, {mulAdd<T>(s, w.im, e), im}, {negMulAdd<T>(s, w.im, e), im});
  };
  block(0);
  for (int64_t k = L; k < n / 2; k += L) block(k);
  srcDst[n] = srcDst[n] * srcDst[n] + srcDst[n + 1] * srcDst[n + 1];
  srcDst[n + 1] = 0;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
