// SPDX-License-Identifier: Apache-2.0
// Complex transforms of up to 32 points, straight-line: lengths, loops and roots are constants.
#ifndef VEK_TRANSFORM_FFT_SMALL_H
#define VEK_TRANSFORM_FFT_SMALL_H

#include "transform/fft_tables.h"

namespace vek::VEK_SLOT {
namespace {

// exp(-2 pi i k / 64), k < 64.
template <class T>
struct SmallRoots {
  T re[64], im[64];
};
template <class T>
constexpr SmallRoots<T> makeSmallRoots() {
  SmallRoots<T> w{};
  for (int k = 0; k < 64; ++k) {
    const int j = 16 * (k & 15);
    const double s = kQuarterSine.at[j], c = kQuarterSine.at[256 - j];
    const double re = k < 16 ? c : k < 32 ? -s : k < 48 ? -c : s;
    const double im = k < 16 ? -s : k < 32 ? -c : k < 48 ? s : c;
    w.re[k] = T(re);
    w.im[k] = T(im);
  }
  return w;
}
template <class T>
constexpr SmallRoots<T> kSmallRoots = makeSmallRoots<T>();

// 2^M points from interleaved src into re, im. Exchanging the parts on both sides gives the inverse.
template <int M, class T>
VEK_INLINE void smallComplex(const T* src, T* re, T* im) {
  constexpr int n = 1 << M;
#pragma GCC unroll 32
  for (int j = 0; j < n; ++j) {
    int r = 0;
#pragma GCC unroll 8
    for (int b = 0; b < M; ++b) r |= (j >> b & 1) << (M - 1 - b);
    re[r] = src[2 * j];
    im[r] = src[2 * j + 1];
  }
#pragma GCC unroll 8
  for (int half = 1; half < n; half *= 2) {
#pragma GCC unroll 32
    for (int i = 0; i < n; ++i) {
      if (i & half) continue;
      const int k = i & (half - 1);
      const T wr = kSmallRoots<T>.re[k * 32 / half], wi = kSmallRoots<T>.im[k * 32 / half];
      const T br = re[i + half], bi = im[i + half];
      const T tr = k == 0 ? br : 2 * k == half ? bi : br * wr - bi * wi;
      const T ti = k == 0 ? bi : 2 * k == half ? -br : br * wi + bi * wr;
      re[i + half] = re[i] - tr;
      im[i + half] = im[i] - ti;
      re[i] += tr;
      im[i] += ti;
    }
  }
}

// Calls f with log2 of the length as a constant: f.template operator()<M>().
template <class F>
VEK_INLINE void withSmall(int m, F f) {
  switch (m) {
    case 0:
      return f.template operator()<0>();
    case 1:
      return f.template operator()<1>();
    case 2:
      return f.template operator()<2>();
    case 3:
      return f.template operator()<3>();
    case 4:
      return f.template operator()<4>();
    default:
      return f.template operator()<5>();
  }
}

template <int M, class T>
VEK_NOINLINE void smallForward(const T* src, T* dst, T scale) {
  T re[1 << M], im[1 << M];
  smallComplex<M>(src, re, im);
#pragma GCC unroll 32
  for (int k = 0; k < 1 << M; ++k) dst[2 * k] = re[k] * scale, dst[2 * k + 1] = im[k] * scale;
}

// Swapped in, swapped out.
template <int M, class T>
VEK_NOINLINE void smallInverse(const T* src, T* dst, T scale) {
  constexpr int n = 1 << M;
  T re[n], im[n];
  smallComplex<M>(src, re, im);
  dst[0] = re[0] * scale, dst[1] = im[0] * scale;
#pragma GCC unroll 32
  for (int k = 1; k < n; ++k) dst[2 * k] = re[n - k] * scale, dst[2 * k + 1] = im[n - k] * scale;
}

// Real data of 2^(M+1) points.
template <int M, class T>
VEK_NOINLINE void smallRealForward(const T* src, T* dst, T scale) {
  constexpr int n = 1 << M;
  T re[n], im[n];
  smallComplex<M>(src, re, im);
  dst[0] = (re[0] + im[0]) * scale;
  dst[1] = (re[0] - im[0]) * scale;
  const T half = T(0.5) * scale;
#pragma GCC unroll 32
  for (int k = 1; k <= n / 2; ++k) {
    const T wr = kSmallRoots<T>.re[k * 32 / n], wi = kSmallRoots<T>.im[k * 32 / n];
    const T er = re[k] + re[n - k], ei = im[k] - im[n - k];
    const T odr = im[k] + im[n - k], odi = re[n - k] - re[k];
    const T tr = odr * wr - odi * wi, ti = odr * wi + odi * wr;
    dst[2 * (n - k)] = (er - tr) * half;
    dst[2 * (n - k) + 1] = (ti - ei) * half;
    dst[2 * k] = (er + tr) * half;
    dst[2 * k + 1] = (ei + ti) * half;
  }
}

template <int M, class T>
VEK_NOINLINE void smallRealInverse(const T* src, T* dst, T scale) {
  constexpr int n = 1 << M;
  T z[2 * n];
  z[0] = src[0] + src[1];
  z[1] = src[0] - src[1];
#pragma GCC unroll 32
  for (int k = 1; k <= n / 2; ++k) {
    const T wr = kSmallRoots<T>.re[k * 32 / n], wi = kSmallRoots<T>.im[k * 32 / n];
    const T ar = src[2 * k], ai = src[2 * k + 1], br = src[2 * (n - k)], bi = src[2 * (n - k) + 1];
    const T er = ar + br, ei = ai - bi, dr = ar - br, di = ai + bi;
    const T odr = dr * wr + di * wi, odi = di * wr - dr * wi;  // times the conjugate root
    z[2 * (n - k)] = er + odi;
    z[2 * (n - k) + 1] = odr - ei;
    z[2 * k] = er - odi;
    z[2 * k + 1] = ei + odr;
  }
  T re[n], im[n];
  smallComplex<M>(z, re, im);
  dst[0] = re[0] * scale, dst[1] = im[0] * scale;
#pragma GCC unroll 32
  for (int k = 1; k < n; ++k) dst[2 * k] = re[n - k] * scale, dst[2 * k + 1] = im[n - k] * scale;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
