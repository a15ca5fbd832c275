// SPDX-License-Identifier: Apache-2.0
// Transforms of up to 32 complex or 64 real points, straight-line: lengths, loops and roots are constants. From eight
// points on everything happens in vectors of four; vector b of a sequence holds its elements 4b .. 4b+3.
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

template <class T>
struct Quad {
  V4<T> re, im;
};
template <class T>
VEK_INLINE Quad<T> operator+(Quad<T> a, Quad<T> b) {
  return {a.re + b.re, a.im + b.im};
}
template <class T>
VEK_INLINE Quad<T> operator-(Quad<T> a, Quad<T> b) {
  return {a.re - b.re, a.im - b.im};
}
template <class T>
VEK_INLINE Quad<T> operator*(Quad<T> a, Quad<T> w) {
  return {negMulAddFour<T>(a.im, w.im, a.re * w.re), mulAddFour<T>(a.im, w.re, a.re * w.im)};
}
template <class T>
VEK_INLINE Quad<T> minusI(Quad<T> a) {
  return {a.im, -a.re};
}
template <class T>
VEK_INLINE Quad<T> swapped(Quad<T> a) {
  return {a.im, a.re};
}

// Lanes A, B, C, D of the eight of a and b.
template <int A, int B, int C, int D, class V>
VEK_INLINE V pick(V a, V b) {
  return __builtin_shufflevector(a, b, A, B, C, D);
}
template <int A, int B, int C, int D, class T>
VEK_INLINE Quad<T> pick(Quad<T> a, Quad<T> b) {
  return {pick<A, B, C, D>(a.re, b.re), pick<A, B, C, D>(a.im, b.im)};
}

template <class T>
VEK_INLINE V4<T> loadFour(const T* p) {
  V4<T> v;
  __builtin_memcpy(&v, p, sizeof v);
  return v;
}
template <class T>
VEK_INLINE void storeFour(T* p, V4<T> v) {
  __builtin_memcpy(p, &v, sizeof v);
}
template <class T>
VEK_INLINE Quad<T> loadQuad(const T* p) {
  const V4<T> a = loadFour(p), b = loadFour(p + 4);
  return {pick<0, 2, 4, 6>(a, b), pick<1, 3, 5, 7>(a, b)};
}
template <class T>
VEK_INLINE void storeQuad(T* p, Quad<T> x) {
  storeFour<T>(p, pick<0, 4, 1, 5>(x.re, x.im));
  storeFour<T>(p + 4, pick<2, 6, 3, 7>(x.re, x.im));
}

// exp(-2 pi i step * c / 64) in lane c.
template <class T>
VEK_INLINE Quad<T> lanesOfRoot(int first, int step) {
  constexpr auto& w = kSmallRoots<T>;
  const int a = first, b = first + step, c = first + 2 * step, d = first + 3 * step;
  return {V4<T>{w.re[a], w.re[b], w.re[c], w.re[d]}, V4<T>{w.im[a], w.im[b], w.im[c], w.im[d]}};
}

template <class T>
VEK_INLINE void transposeQuads(Quad<T>& a, Quad<T>& b, Quad<T>& c, Quad<T>& d) {
  const Quad<T> ab = pick<0, 4, 1, 5>(a, b), AB = pick<2, 6, 3, 7>(a, b);
  const Quad<T> cd = pick<0, 4, 1, 5>(c, d), CD = pick<2, 6, 3, 7>(c, d);
  a = pick<0, 1, 4, 5>(ab, cd), b = pick<2, 3, 6, 7>(ab, cd);
  c = pick<0, 1, 4, 5>(AB, CD), d = pick<2, 3, 6, 7>(AB, CD);
}

// Four points, one in each argument.
template <class T>
VEK_INLINE void dft4(Quad<T>& a, Quad<T>& b, Quad<T>& c, Quad<T>& d) {
  const Quad<T> t0 = a + c, t1 = a - c, t2 = b + d, t3 = minusI(b - d);
  a = t0 + t2, b = t1 + t3, c = t0 - t2, d = t1 - t3;
}

// n = 2^M points in natural order on both sides: rows of four are combined, turned by their roots, and transposed.
template <int M, class T>
VEK_INLINE void dft(Quad<T> (&z)[1 << (M - 2)]) {
  if constexpr (M == 3) {
    const Quad<T> even = z[0] + z[1], odd = (z[0] - z[1]) * lanesOfRoot<T>(0, 8);
    const Quad<T> front = pick<0, 1, 4, 5>(even, odd), back = pick<2, 3, 6, 7>(even, odd);
    const Quad<T> s = front + back, d = front - back;
    const Quad<T> p = pick<0, 2, 4, 6>(s, d), q0 = pick<1, 3, 5, 7>(s, d);
    const V4<T> sign = {1, 1, -1, -1};
    const Quad<T> q = {pick<0, 1, 6, 7>(q0.re, q0.im), pick<0, 1, 6, 7>(q0.im, q0.re) * sign};
    z[0] = p + q, z[1] = p - q;
  } else if constexpr (M == 4) {
    dft4(z[0], z[1], z[2], z[3]);
#pragma GCC unroll 4
    for (int s = 1; s < 4; ++s) z[s] = z[s] * lanesOfRoot<T>(0, 4 * s);
    transposeQuads(z[0], z[1], z[2], z[3]);
    dft4(z[0], z[1], z[2], z[3]);
  } else {
    static_assert(M == 5);
    // eight rows: two transforms of four, and the step that joins them
    dft4(z[0], z[2], z[4], z[6]);
    dft4(z[1], z[3], z[5], z[7]);
    const T h = T(kQuarterSine.at[128]);
    z[3] = {(z[3].re + z[3].im) * h, (z[3].im - z[3].re) * h};
    z[5] = minusI(z[5]);
    z[7] = {(z[7].im - z[7].re) * h, (z[7].re + z[7].im) * -h};
    Quad<T> y[8];
#pragma GCC unroll 4
    for (int s = 0; s < 4; ++s) y[s] = z[2 * s] + z[2 * s + 1], y[s + 4] = z[2 * s] - z[2 * s + 1];
#pragma GCC unroll 8
    for (int s = 1; s < 8; ++s) y[s] = y[s] * lanesOfRoot<T>(0, 2 * s);
#pragma GCC unroll 2
    for (int g = 0; g < 2; ++g) {
      Quad<T>* r = y + 4 * g;
      transposeQuads(r[0], r[1], r[2], r[3]);
      dft4(r[0], r[1], r[2], r[3]);
      for (int t = 0; t < 4; ++t) z[2 * t + g] = r[t];
    }
  }
}

// One, two or four points.
template <int M, class T>
VEK_INLINE void tinyDft(T (&x)[2 << M]) {
  if constexpr (M == 1) {
    const T re = x[0] - x[2], im = x[1] - x[3];
    x[0] += x[2], x[1] += x[3], x[2] = re, x[3] = im;
  } else if constexpr (M == 2) {
    const T ar = x[0] + x[4], ai = x[1] + x[5], br = x[0] - x[4], bi = x[1] - x[5];
    const T cr = x[2] + x[6], ci = x[3] + x[7], dr = x[3] - x[7], di = x[6] - x[2];
    x[0] = ar + cr, x[1] = ai + ci, x[4] = ar - cr, x[5] = ai - ci;
    x[2] = br + dr, x[3] = bi + di, x[6] = br - dr, x[7] = bi - di;
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

// Complex data. The inverse exchanges the parts on both sides.
template <Direction D, int M, class T>
VEK_NOINLINE void smallTransform(const T* src, T* dst, T scale) {
  constexpr int p = D == kForward ? 0 : 1;
  if constexpr (M < 3) {
    T x[2 << M];
    for (int j = 0; j < 2 << M; ++j) x[j] = src[j ^ p];
    tinyDft<M>(x);
    for (int j = 0; j < 2 << M; ++j) dst[j] = x[j ^ p] * scale;
  } else {
    constexpr int quads = 1 << (M - 2);
    const V4<T> s = V4<T>{} + scale;
    Quad<T> z[quads];
#pragma GCC unroll 8
    for (int b = 0; b < quads; ++b) z[b] = p ? swapped(loadQuad(src + 8 * b)) : loadQuad(src + 8 * b);
    dft<M>(z);
#pragma GCC unroll 8
    for (int b = 0; b < quads; ++b) {
      const Quad<T> x = {z[b].re * s, z[b].im * s};
      storeQuad(dst + 8 * b, p ? swapped(x) : x);
    }
  }
}

// ---- real data of 2n points, n = 2^M --------------------------------------------------------------------------------

// Pairs of samples are the elements of a complex transform Z. With E = (Z[k] + conj Z[n-k]) / 2,
// O = (Z[k] - conj Z[n-k]) / 2i and w = exp(-2 pi i / 2n) the spectrum is X[k] = E + w^k O, X[n-k] = conj(E - w^k O).

// The lanes of element n-k for k in vector a.
template <int Quads, class T>
VEK_INLINE Quad<T> mirrored(const Quad<T> (&z)[Quads], int a) {
  return pick<4, 3, 2, 1>(z[Quads - 1 - a], z[a == 0 ? 0 : Quads - a]);
}
// Puts the results for k and n-k back; `middle` is element n/2.
template <int Quads, class T>
VEK_INLINE void replaceMirrored(Quad<T> (&z)[Quads], const Quad<T> (&m)[Quads / 2 + 1]) {
#pragma GCC unroll 4
  for (int a = 0; a < Quads / 2; ++a) z[Quads - 1 - a] = pick<4, 3, 2, 1>(m[a], m[a + 1]);
}

template <int M, class T>
VEK_INLINE void spectrumOfPairs(Quad<T> (&z)[1 << (M - 2)], T scale) {
  constexpr int quads = 1 << (M - 2);
  const V4<T> half = V4<T>{} + T(0.5) * scale;
  Quad<T> low[quads / 2 + 1], high[quads / 2 + 1];
#pragma GCC unroll 4
  for (int a = 0; a < quads / 2; ++a) {
    const Quad<T> x = z[a], y = mirrored(z, a);
    const Quad<T> e = {(x.re + y.re) * half, (x.im - y.im) * half};
    const Quad<T> o = {(x.im + y.im) * half, (y.re - x.re) * half};
    const Quad<T> t = o * lanesOfRoot<T>(4 * a * 32 / (4 * quads), 32 / (4 * quads));
    low[a] = e + t;
    high[a] = {e.re - t.re, t.im - e.im};
  }
  const V4<T> s = V4<T>{} + scale;
  high[quads / 2] = {z[quads / 2].re * s, -z[quads / 2].im * s};
  replaceMirrored(z, high);
#pragma GCC unroll 4
  for (int a = 0; a < quads / 2; ++a) z[a] = low[a];
  z[0].im[0] = high[0].re[0];  // bin n beside bin 0
}

template <int M, class T>
VEK_INLINE void pairsOfSpectrum(Quad<T> (&z)[1 << (M - 2)]) {
  constexpr int quads = 1 << (M - 2);
  Quad<T> low[quads / 2 + 1], high[quads / 2 + 1];
  const T last = z[0].im[0];
  z[0].im[0] = 0;
#pragma GCC unroll 4
  for (int a = 0; a < quads / 2; ++a) {
    const Quad<T> x = z[a];
    Quad<T> y = mirrored(z, a);
    if (a == 0) y.re[0] = last;
    const Quad<T> w = lanesOfRoot<T>(4 * a * 32 / (4 * quads), 32 / (4 * quads));
    const Quad<T> e = {x.re + y.re, x.im - y.im}, d = {x.re - y.re, x.im + y.im};
    const Quad<T> o = d * Quad<T>{w.re, -w.im};
    low[a] = {e.re - o.im, e.im + o.re};
    high[a] = {e.re + o.im, o.re - e.im};
  }
  high[quads / 2] = {z[quads / 2].re + z[quads / 2].re, -(z[quads / 2].im + z[quads / 2].im)};
  replaceMirrored(z, high);
#pragma GCC unroll 4
  for (int a = 0; a < quads / 2; ++a) z[a] = low[a];
}

template <Direction D, int M, class T>
VEK_INLINE void tinyReal(const T* src, T* dst, T scale) {
  constexpr int n = 1 << M;
  T z[2 * n];
  for (int j = 0; j < 2 * n; ++j) z[j] = src[j];
  if constexpr (D == kForward) tinyDft<M>(z);
  const T first = z[0] + z[1], last = z[0] - z[1];
  z[0] = first, z[1] = last;
  if constexpr (M == 1) z[3] = -z[3];
  if constexpr (M == 2) {
    const T c = T(kQuarterSine.at[128]), two = D == kForward ? T(1) : T(2), half = D == kForward ? T(0.5) : T(1);
    const T er = (z[2] + z[6]) * half, ei = (z[3] - z[7]) * half;
    const T pr = (z[3] + z[7]) * half, pi = (z[6] - z[2]) * half;  // O, or i times the difference
    // w = exp(-i pi/4) forward, its conjugate on the way back
    const T tr = D == kForward ? (pr + pi) * c : (pi - pr) * c, ti = D == kForward ? (pi - pr) * c : (-pr - pi) * c;
    z[2] = er + tr, z[3] = ei + ti, z[6] = er - tr, z[7] = ti - ei;
    z[4] *= two, z[5] *= -two;
  }
  if constexpr (D == kInverse && M == 1) z[2] += z[2], z[3] += z[3];
  if constexpr (D == kInverse) {
    T x[2 * n];
    for (int j = 0; j < 2 * n; ++j) x[j] = z[j ^ 1];
    tinyDft<M>(x);
    for (int j = 0; j < 2 * n; ++j) z[j] = x[j ^ 1];
  }
  for (int j = 0; j < 2 * n; ++j) dst[j] = z[j] * scale;
}

template <Direction D, int M, class T>
VEK_NOINLINE void smallReal(const T* src, T* dst, T scale) {
  if constexpr (M < 3) {
    tinyReal<D, M>(src, dst, scale);
  } else {
    constexpr int quads = 1 << (M - 2);
    Quad<T> z[quads];
#pragma GCC unroll 8
    for (int b = 0; b < quads; ++b) z[b] = loadQuad(src + 8 * b);
    if constexpr (D == kForward) {
      dft<M>(z);
      spectrumOfPairs<M>(z, scale);
    } else {
      pairsOfSpectrum<M>(z);
      const V4<T> s = V4<T>{} + scale;
#pragma GCC unroll 8
      for (int b = 0; b < quads; ++b) z[b] = {z[b].im * s, z[b].re * s};
      dft<M>(z);
#pragma GCC unroll 8
      for (int b = 0; b < quads; ++b) z[b] = swapped(z[b]);
    }
#pragma GCC unroll 8
    for (int b = 0; b < quads; ++b) storeQuad(dst + 8 * b, z[b]);
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
