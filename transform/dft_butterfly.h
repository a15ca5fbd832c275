// SPDX-License-Identifier: Apache-2.0
// Transforms of R values in registers, L of them side by side: the steps of transforms of mixed radix. All are forward;
// who wants the inverse exchanges real and imaginary parts on both sides.
#ifndef VEK_TRANSFORM_DFT_BUTTERFLY_H
#define VEK_TRANSFORM_DFT_BUTTERFLY_H

#include "transform/fft_complex.h"

namespace vek::VEK_SLOT {
namespace {

// exp(-2 pi i k / n) for 0 <= k < n, by symmetry from the first eighth of the circle.
constexpr Root rootOf(int64_t k, int64_t n) {
  if (2 * k > n) {
    const Root r = rootOf(n - k, n);
    return {r.re, -r.im};
  }
  if (4 * k > n) {
    const Root r = rootOf(n - 2 * k, 2 * n);
    return {-r.re, r.im};
  }
  if (8 * k > n) {
    const double angle = kTwoPi * double(n - 4 * k) / double(4 * n);
    return {seriesSin(angle), -seriesCos(angle)};
  }
  const double angle = kTwoPi * double(k) / double(n);
  return {seriesCos(angle), -seriesSin(angle)};
}
template <int N>
struct RootTable {
  Root at[N];
};
template <int N>
constexpr RootTable<N> makeRootTable() {
  RootTable<N> t{};
  for (int k = 0; k < N; ++k) t.at[k] = rootOf(k, N);
  return t;
}
template <int N>
constexpr RootTable<N> kRootTable = makeRootTable<N>();

template <class T>
VEK_INLINE Complex<T> minusI(Complex<T> a) {
  return {a.im, -a.re};
}
// a exp(-2 pi i K / N), with fewer operations where the root is simple.
template <int K, int N, class T>
VEK_INLINE Complex<T> turned(Complex<T> a) {
  if constexpr (K % N == 0) {
    return a;
  } else if constexpr (4 * K % N == 0) {
    if constexpr (4 * K / N % 4 == 1) return minusI(a);
    if constexpr (4 * K / N % 4 == 2) return {-a.re, -a.im};
    return {-a.im, a.re};
  } else if constexpr (8 * K % N == 0) {
    const Reg<T> h = broadcastReg(kSqrtHalf<T>);
    if constexpr (8 * K / N % 8 == 1) return {(a.re + a.im) * h, (a.im - a.re) * h};
    if constexpr (8 * K / N % 8 == 3) return {(a.im - a.re) * h, -(a.re + a.im) * h};
    if constexpr (8 * K / N % 8 == 5) return {-(a.re + a.im) * h, (a.re - a.im) * h};
    return {(a.re - a.im) * h, (a.re + a.im) * h};
  } else {
    constexpr Root w = kRootTable<N>.at[K % N];
    return times(a, Complex<T>{broadcastReg(T(w.re)), broadcastReg(T(w.im))});
  }
}

// Calls f.template operator()<0>() .. <N-1>().
template <int N, int I = 0, class F>
VEK_INLINE void forEach(F f) {
  if constexpr (I < N) {
    f.template operator()<I>();
    forEach<N, I + 1>(f);
  }
}

// Odd prime R: with the sums and differences of x[j] and x[R-j], bins k and R-k are a -+ i b of one pair of sums. x[j]
// holds the sum and x[R-j] the difference for j <= R/2. Fused, the second of the two bins comes from the first.
template <int R, class T>
VEK_INLINE void oddButterfly(Complex<T> (&x)[R]) {
  constexpr int h = R / 2;
  Complex<T> s[h], d[h];
#pragma GCC unroll 8
  for (int j = 0; j < h; ++j) s[j] = x[j + 1], d[j] = x[R - 1 - j];
  const Complex<T> first = x[0];
#pragma GCC unroll 8
  for (int j = 0; j < h; ++j) x[0] = x[0] + s[j];
#pragma GCC unroll 8
  for (int k = 1; k <= h; ++k) {
    Complex<T> a = first, u, b;
#pragma GCC unroll 8
    for (int j = 0; j < h; ++j) {
      const Reg<T> c = broadcastReg(T(kRootTable<R>.at[(j + 1) * k % R].re));
      a = {mulAdd<T>(c, s[j].re, a.re), mulAdd<T>(c, s[j].im, a.im)};
    }
    u = a;
#pragma GCC unroll 8
    for (int j = 0; j < h; ++j) {
      const Reg<T> n = broadcastReg(T(-kRootTable<R>.at[(j + 1) * k % R].im));
      if constexpr (kFma) {
        u = {mulAdd<T>(n, d[j].im, u.re), negMulAdd<T>(n, d[j].re, u.im)};
        if constexpr (h == 1) x[R - k] = {negMulAdd<T>(n, d[j].im, a.re), mulAdd<T>(n, d[j].re, a.im)};
      } else {
        b = j == 0 ? Complex<T>{n * d[j].re, n * d[j].im} : Complex<T>{b.re + n * d[j].re, b.im + n * d[j].im};
      }
    }
    if constexpr (!kFma) {
      x[k] = {a.re + b.im, a.im - b.re};
      x[R - k] = {a.re - b.im, a.im + b.re};
    } else {
      const Reg<T> two = broadcastReg(T(2));
      x[k] = u;
      if constexpr (h > 1) x[R - k] = {mulAdd<T>(two, a.re, -u.re), mulAdd<T>(two, a.im, -u.im)};
    }
  }
}

template <int R, class T>
VEK_INLINE void dftOf(Complex<T> (&x)[R]);

// R = A B without a common factor: no roots between the two.
template <int A, int B, class T>
VEK_INLINE void coprimeButterfly(Complex<T> (&x)[A * B]) {
  constexpr int R = A * B;
  Complex<T> y[R];
  forEach<B>([&]<int J>() VEK_LAMBDA {
    Complex<T> z[A];
#pragma GCC unroll 16
    for (int i = 0; i < A; ++i) z[i] = x[(B * i + A * J) % R];
    dftOf<A>(z);
#pragma GCC unroll 16
    for (int i = 0; i < A; ++i) y[i * B + J] = z[i];
  });
  forEach<A>([&]<int K>() VEK_LAMBDA {
    Complex<T> z[B];
#pragma GCC unroll 16
    for (int i = 0; i < B; ++i) z[i] = y[K * B + i];
    dftOf<B>(z);
#pragma GCC unroll 16
    for (int k = 0; k < R; ++k) {
      if (k % A == K) x[k] = z[k % B];
    }
  });
}

// R = A B in general.
template <int A, int B, class T>
VEK_INLINE void squareButterfly(Complex<T> (&x)[A * B]) {
  Complex<T> y[A * B];
  forEach<B>([&]<int J>() VEK_LAMBDA {
    Complex<T> z[A];
#pragma GCC unroll 16
    for (int i = 0; i < A; ++i) z[i] = x[B * i + J];
    dftOf<A>(z);
    forEach<A>([&]<int K>() VEK_LAMBDA { y[K * B + J] = turned<J * K, A * B>(z[K]); });
  });
  forEach<A>([&]<int K>() VEK_LAMBDA {
    Complex<T> z[B];
#pragma GCC unroll 16
    for (int i = 0; i < B; ++i) z[i] = y[K * B + i];
    dftOf<B>(z);
#pragma GCC unroll 16
    for (int i = 0; i < B; ++i) x[K + A * i] = z[i];
  });
}

template <int R, class T>
VEK_INLINE void dftOf(Complex<T> (&x)[R]) {
  if constexpr (R == 2) {
    plain(x[0], x[1]);
  } else if constexpr (R == 4) {
    plain(x[0], x[2]);
    plain(x[1], x[3]);
    plain(x[0], x[1]);
    plainMinusI(x[2], x[3]);
    const Complex<T> t = x[1];
    x[1] = x[2], x[2] = t;
  } else if constexpr (R == 8) {
    Complex<T> y[8] = {x[0], x[4], x[2], x[6], x[1], x[5], x[3], x[7]};
    transform8<kWhole>(y);
#pragma GCC unroll 8
    for (int k = 0; k < 8; ++k) x[k] = y[k];
  } else if constexpr (R == 9) {
    squareButterfly<3, 3>(x);
  } else if constexpr (R == 6) {
    coprimeButterfly<3, 2>(x);
  } else if constexpr (R == 15) {
    coprimeButterfly<5, 3>(x);
  } else {
#pragma GCC unroll 8
    for (int j = 1; j <= R / 2; ++j) plain(x[j], x[R - j]);
    oddButterfly(x);
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
