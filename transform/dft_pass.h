// SPDX-License-Identifier: Apache-2.0
// The passes of a transform of mixed radix that sorts itself. Before a pass of radix R the data are R s transforms of m
// points each, of the elements that lie R s apart; element [p, q] is bin p of the q-th. The pass joins them R at a
// time:
//   y[p + m k, q] = sum over j of exp(-2 pi i j (p + m k) / (R m)) x[p, q + s j],   q < s, p < m, k < R.
// The first pass (m = 1) needs no roots and reads the caller's data, vectors over q; the last one (s = 1) writes the
// caller's, vectors over p, which it finds in columns. Between them real and imaginary parts lie in planes of their
// own, the latter `im` elements behind the former, so that a vector may begin at any element. A row that is no multiple
// of the vector is finished by one that overlaps its neighbour; rows shorter than a vector lie a vector apart.
#ifndef VEK_TRANSFORM_DFT_PASS_H
#define VEK_TRANSFORM_DFT_PASS_H

#include "transform/dft_butterfly.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kMaxRadix = 15;

template <class T>
VEK_INLINE Complex<T> exchanged(Complex<T> a) {
  return {a.im, a.re};
}

// Vectors of a row, and the first element of one.
template <class T>
VEK_INLINE int64_t vectorsOf(int64_t count) {
  return (count + kLanes<T> - 1) / kLanes<T>;
}
template <class T>
VEK_INLINE int64_t vectorStart(int64_t i, int64_t count) {
  const int64_t at = i * kLanes<T>, last = count - kLanes<T>;
  return at <= last || last < 0 ? at : last;
}
// Distance of rows.
template <class T>
VEK_INLINE int64_t pitchOf(int64_t row) {
  return row < kLanes<T> ? kLanes<T> : row;
}

// 16 bytes from each place, where the register has two such parts.
template <class T>
VEK_INLINE Reg<T> loadParts(const T* first, [[maybe_unused]] const T* second) {
  if constexpr (sizeof(Reg<T>) == 32) {
    return (Reg<T>)joinHalves(loadBytes<16>(first), loadBytes<16>(second));
  } else {
    return loadV(first);
  }
}
// L interleaved complex numbers with the lanes in their own order.
template <class T>
VEK_INLINE Complex<T> loadNatural(const T* p) {
  constexpr int part = 16 / int(sizeof(T));
  if constexpr (sizeof(Reg<T>) == 32) {
    return split<T>(loadParts(p, p + 2 * part), loadParts(p + part, p + 3 * part));
  } else {
    return loadInterleaved(p);
  }
}

template <class T>
VEK_INLINE void storeNatural(T* p, Complex<T> x) {
  const Reg<T> a = unpackLowV(x.re, x.im, T()), b = unpackHighV(x.re, x.im, T());
  if constexpr (sizeof(Reg<T>) == 32) {
    storeV(p, lowHalves(a, b));
    storeV(p + kLanes<T>, highHalves(a, b));
  } else {
    storeV(p, a), storeV(p + kLanes<T>, b);
  }
}

// x[j] gets element `from + pitch kLaneOrder[p] + j` in lane p. Reads 16 bytes where fewer are used.
template <int R, class T>
VEK_INLINE void loadColumns(const T* from, int64_t pitch, Reg<T> (&x)[R]) {
  constexpr int C = 16 / int(sizeof(T)), rows = R < C ? R : C, groups = (R + C - 1) / C;
  constexpr int second = kLanes < T >> C ? C : 0;
#pragma GCC unroll 8
  for (int g = 0; g < groups; ++g) {
    const int k = g * C + rows <= R ? g * C : R - rows;
    Reg<T> t[C];
#pragma GCC unroll 4
    for (int i = 0; i < C; ++i) {
      t[i] = loadParts(from + k + pitch * kLaneOrder<T>[i], from + k + pitch * kLaneOrder<T>[i + second]);
    }
    const Reg<T> low = unpackLowV(t[0], t[1], T()), high = unpackHighV(t[0], t[1], T());
    if constexpr (C == 2) {
      x[k] = low, x[k + 1] = high;
    } else {
      const Reg<T> low2 = unpackLowV(t[2], t[3], T()), high2 = unpackHighV(t[2], t[3], T());
      x[k] = unpackLowV(low, low2, double()), x[k + 1] = unpackHighV(low, low2, double());
      if constexpr (R > 2) x[k + 2] = unpackLowV(high, high2, double());
      if constexpr (R > 3) x[k + 3] = unpackHighV(high, high2, double());
    }
  }
}

// Roots that a pass takes for one p, and their exponents in R m-th roots.
constexpr int rootsOfRadix(int radix) { return radix == 2 ? 1 : radix == 4 ? 2 : radix == 8 ? 4 : radix - 1; }
inline int64_t rootExponent(int radix, int i, int64_t p, int64_t m) {
  if (radix == 4) return (2 - i) * p;
  if (radix == 8) return i == 3 ? p + m : (4 >> i) * p;
  return (i + 1) * p;
}

// The butterfly of one vector; load(j) gives an operand, store(k, y) takes a result.
template <int R, class T, template <class> class Roots, class Load, class Store>
VEK_INLINE void turnAndJoin(Roots<T> root, Load load, Store store) {
  if constexpr (R == 2) {
    Complex<T> a = load(0), b = load(1);
    butterfly(a, b, root(0));
    store(0, a), store(1, b);
  } else if constexpr (R == 4) {
    join<2>(
        root, [&](int i) VEK_LAMBDA { return load((i & 1) << 1 | i >> 1); }, store);
  } else if constexpr (R == 8) {
    join<3>(
        root, [&](int i) VEK_LAMBDA { return load(reverse3(i)); }, store);
  } else {
    Complex<T> x[R];
    x[0] = load(0);
    if constexpr (R == 6 || R == 9 || R == 15) {
#pragma GCC unroll 16
      for (int j = 1; j < R; ++j) x[j] = times(load(j), root(j - 1));
      dftOf<R>(x);
    } else {
#pragma GCC unroll 8
      for (int j = 1; j <= R / 2; ++j) {
        x[j] = times(load(j), root(j - 1));
        x[R - j] = load(R - j);
        butterfly(x[j], x[R - j], root(R - j - 1));
      }
      oddButterfly(x);
    }
#pragma GCC unroll 16
    for (int k = 0; k < R; ++k) store(k, x[k]);
  }
}

template <Direction D, int R, class T>
VEK_NOINLINE void firstPass(const T* src, T* dst, int64_t im, int64_t s) {
  const int64_t count = vectorsOf<T>(s), pitch = pitchOf<T>(s);
  for (int64_t i = 0; i < count; ++i) {
    const int64_t q = vectorStart<T>(i, s);
    const T* from = src + 2 * q;
    T* to = dst + q;
    Complex<T> x[R];
#pragma GCC unroll 16
    for (int j = 0; j < R; ++j) {
      const Complex<T> z = loadNatural(from + 2 * s * j);
      x[j] = D == kForward ? z : exchanged(z);
    }
    dftOf<R>(x);
#pragma GCC unroll 16
    for (int k = 0; k < R; ++k) storeV(to + pitch * k, x[k].re), storeV(to + pitch * k + im, x[k].im);
  }
}

template <int R, class T>
VEK_NOINLINE void middlePass(const T* src, int64_t srcIm, T* dst, int64_t dstIm, int64_t s, int64_t m, const T* roots) {
  const int64_t count = vectorsOf<T>(s), from = pitchOf<T>(R * s), to = pitchOf<T>(s);
  for (int64_t p = 0; p < m; ++p, roots += 2 * rootsOfRadix(R), src += from, dst += to) {
    for (int64_t i = 0; i < count; ++i) {
      const int64_t q = vectorStart<T>(i, s);
      turnAndJoin<R>(
          SpreadRoots<T>{roots},
          [&](int j) VEK_LAMBDA {
            const T* at = src + q + s * j;
            return Complex<T>{loadV(at), loadV(at + srcIm)};
          },
          [&](int k, Complex<T> y) VEK_LAMBDA {
            T* at = dst + q + to * m * k;
            storeV(at, y.re), storeV(at + dstIm, y.im);
          });
    }
  }
}

// Rows shorter than a vector come a vector apart.
template <Direction D, int R, class T>
VEK_NOINLINE void lastPass(const T* src, T* dst, int64_t im, int64_t m, const T* roots, T scale) {
  const int64_t count = vectorsOf<T>(m), pitch = pitchOf<T>(R), row = pitchOf<T>(m);
  const Reg<T> factor = broadcastReg(scale);
  for (int64_t i = 0; i < count; ++i, roots += 2 * rootsOfRadix(R) * kLanes<T>) {
    const int64_t p = vectorStart<T>(i, m);
    Reg<T> re[R], im_[R];
    loadColumns<R>(src + pitch * p, pitch, re);
    loadColumns<R>(src + im + pitch * p, pitch, im_);
    turnAndJoin<R>(
        BlockRoots<T>{roots},
        [&](int j) VEK_LAMBDA {
          return Complex<T>{re[j], im_[j]};
        },
        [&](int k, Complex<T> x) VEK_LAMBDA {
          const Complex<T> y = {x.re * factor, x.im * factor};
          storeInterleaved<T>(dst + 2 * (p + row * k), D == kForward ? y : exchanged(y));
        });
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
