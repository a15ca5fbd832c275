// SPDX-License-Identifier: Apache-2.0
// The complex transform of n = 2^m >= 64 points by decimation in time, in place. One sweep permutes to bit-reversed
// order and does the first three levels, which need no twiddles: it reads 8 x 8 tiles (eight rows n/8 apart, eight
// columns), transforms the columns and stores each as eight neighbours. Every later pass joins 4 or 8 finished
// transforms into one of four or eight times the length, whole blocks at a time; only the last one stores interleaved
// data. Lengths beyond the cache finish one part after the other.
#ifndef VEK_TRANSFORM_FFT_COMPLEX_H
#define VEK_TRANSFORM_FFT_COMPLEX_H

#include "transform/fft_constants.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
constexpr T kSqrtHalf = T(0.707106781186547524400844362104849);

// The passes behind the first sweep, innermost first: log2 of the radix of each.
struct Passes {
  int count;
  int8_t bits[12];
};
VEK_INLINE Passes passesFor(int m) {
  Passes p{};
  int left = m - 3;
  while (left % 3 != 0) p.bits[p.count++] = 2, left -= 2;
  while (left > 0) p.bits[p.count++] = 3, left -= 3;
  return p;
}

// ---- butterflies ----------------------------------------------------------------------------------------------------

enum Difference { kAsIs, kConjugated };

// (a + w b, a - w b), the latter conjugated if asked for. Fused, the difference is 2 a - (a + w b): one operation
// instead of a product and a difference.
template <Difference C = kAsIs, class T>
VEK_INLINE void butterfly(Complex<T>& a, Complex<T>& b, Complex<T> w) {
  if constexpr (kFma) {
    const Reg<T> two = broadcastReg(T(2));
    const Complex<T> u = {negMulAdd<T>(w.im, b.im, mulAdd<T>(w.re, b.re, a.re)),
                          mulAdd<T>(w.im, b.re, mulAdd<T>(w.re, b.im, a.im))};
    b = {mulAdd<T>(two, a.re, -u.re), C == kAsIs ? mulAdd<T>(two, a.im, -u.im) : negMulAdd<T>(two, a.im, u.im)};
    a = u;
  } else {
    const Complex<T> t = times(b, w), u = a + t;
    b = {a.re - t.re, C == kAsIs ? a.im - t.im : t.im - a.im};
    a = u;
  }
}

// The same for -i w.
template <Difference C = kAsIs, class T>
VEK_INLINE void butterflyMinusI(Complex<T>& a, Complex<T>& b, Complex<T> w) {
  if constexpr (kFma) {
    const Reg<T> two = broadcastReg(T(2));
    const Complex<T> u = {mulAdd<T>(w.re, b.im, mulAdd<T>(w.im, b.re, a.re)),
                          negMulAdd<T>(w.re, b.re, mulAdd<T>(w.im, b.im, a.im))};
    b = {mulAdd<T>(two, a.re, -u.re), C == kAsIs ? mulAdd<T>(two, a.im, -u.im) : negMulAdd<T>(two, a.im, u.im)};
    a = u;
  } else {
    const Complex<T> t = times(b, w), u = {a.re + t.im, a.im - t.re};
    b = {a.re - t.im, C == kAsIs ? a.im + t.re : -t.re - a.im};
    a = u;
  }
}

template <class T>
VEK_INLINE void plain(Complex<T>& a, Complex<T>& b) {
  const Complex<T> d = a - b;
  a = a + b;
  b = d;
}
template <class T>
VEK_INLINE void plainMinusI(Complex<T>& a, Complex<T>& b) {
  const Complex<T> u = {a.re + b.im, a.im - b.re};
  b = {a.re - b.im, a.im + b.re};
  a = u;
}

// How much of the data a transform reads; zeros follow.
enum Extent { kWhole, kFirstHalf };

// Eight points in bit-reversed order, the odd ones zero if only the first half is given, to their transform in natural
// order.
template <Extent X, class T>
VEK_INLINE void transform8(Complex<T> (&y)[8]) {
  const Reg<T> h = broadcastReg(kSqrtHalf<T>);
#pragma GCC unroll 4
  for (int i = 0; i < 8; i += 2) {
    if constexpr (X == kWhole) plain(y[i], y[i + 1]);
    if constexpr (X == kFirstHalf) y[i + 1] = y[i];
  }
#pragma GCC unroll 2
  for (int i = 0; i < 8; i += 4) plain(y[i], y[i + 2]), plainMinusI(y[i + 1], y[i + 3]);
  plain(y[0], y[4]);
  plainMinusI(y[2], y[6]);
  // times exp(-i pi/4) and exp(-3 i pi/4), but for the factor h
  const Complex<T> b = {y[5].re + y[5].im, y[5].im - y[5].re}, c = {y[7].im - y[7].re, y[7].re + y[7].im};
  const Complex<T> a1 = y[1], a3 = y[3];
  y[1] = {mulAdd<T>(h, b.re, a1.re), mulAdd<T>(h, b.im, a1.im)};
  y[5] = {negMulAdd<T>(h, b.re, a1.re), negMulAdd<T>(h, b.im, a1.im)};
  y[3] = {mulAdd<T>(h, c.re, a3.re), negMulAdd<T>(h, c.im, a3.im)};
  y[7] = {negMulAdd<T>(h, c.re, a3.re), mulAdd<T>(h, c.im, a3.im)};
}

// The roots of a join: one of each lane's own, or the same for all lanes.
template <class T>
struct BlockRoots {
  const T* at;
  VEK_INLINE Complex<T> operator()(int i) const { return loadBlock(at + i * 2 * kLanes<T>); }
};
template <class T>
struct SpreadRoots {
  const T* at;
  VEK_INLINE Complex<T> operator()(int i) const { return {broadcastReg(at[2 * i]), broadcastReg(at[2 * i + 1])}; }
};

// The first two levels of a join, on four of its operands.
template <class T, class Roots>
VEK_INLINE void joinFour(Complex<T>& a, Complex<T>& b, Complex<T>& c, Complex<T>& d, Roots root) {
  const Complex<T> first = root(0), second = root(1);
  butterfly(a, b, first);
  butterfly(c, d, first);
  butterfly(a, c, second);
  butterflyMinusI(b, d, second);
}

// Joins 2^Bits transforms by the roots, for Bits = 2 w^2k, w^k; for Bits = 3 w^4k, w^2k, w^k and
// w^(k + M), where w = exp(-2 pi i / (2^Bits M)).
// load(i) gives an operand and store(i, y) takes a result: few of them are alive at any time.
template <int Bits, Difference C = kAsIs, class T, template <class> class Roots, class Load, class Store>
VEK_INLINE void join(Roots<T> root, Load load, Store store) {
  Complex<T> a = load(0), b = load(1), c = load(2), d = load(3);
  if constexpr (Bits == 2) {
    const Complex<T> first = root(0), second = root(1);
    butterfly(a, b, first);
    butterfly(c, d, first);
    butterfly<C>(a, c, second);
    store(0, a), store(2, c);
    butterflyMinusI<C>(b, d, second);
    store(1, b), store(3, d);
  } else {
    joinFour(a, b, c, d, root);
    Complex<T> e = load(4), f = load(5), g = load(6), h = load(7);
    joinFour(e, f, g, h, root);
    const Complex<T> third = root(2);
    butterfly<C>(a, e, third);
    store(0, a), store(4, e);
    butterflyMinusI<C>(c, g, third);
    store(2, c), store(6, g);
    const Complex<T> turned = root(3);
    butterfly<C>(b, f, turned);
    store(1, b), store(5, f);
    butterflyMinusI<C>(d, h, turned);
    store(3, d), store(7, h);
  }
}

// ---- passes ---------------------------------------------------------------------------------------------------------

VEK_INLINE int reverse3(int i) { return (i & 1) << 2 | (i & 2) | i >> 2; }

// Tile column group: L columns of eight rows, transformed and stored as eight neighbours each at to + column * step.
template <Direction D, Extent X, class T>
VEK_INLINE void tileColumns(const T* from, int64_t rowStep, T* to, int64_t columnStep, int firstColumn) {
  constexpr int L = kLanes<T>;
  Complex<T> y[8];
#pragma GCC unroll 8
  for (int p = 0; p < 8; p += X == kWhole ? 1 : 2) {
    const Complex<T> x = loadInterleaved(from + reverse3(p) * rowStep);
    y[p] = D == kForward ? x : Complex<T>{x.im, x.re};
  }
  transform8<X>(y);
#pragma GCC unroll 4
  for (int b = 0; b < 8 / L; ++b) {
    Reg<T> re[L], im[L];
#pragma GCC unroll 8
    for (int p = 0; p < L; ++p) {
      re[p] = y[b * L + kLaneOrder<T>[p]].re;
      im[p] = y[b * L + kLaneOrder<T>[p]].im;
    }
    transpose<T>(re);
    transpose<T>(im);
#pragma GCC unroll 8
    for (int p = 0; p < L; ++p) {
      T* block = to + reverse3(firstColumn + kLaneOrder<T>[p]) * columnStep + b * 2 * L;
      storeBlock<T>(block, {re[p], im[p]});
    }
  }
}

template <Direction D, Extent X, class T>
VEK_INLINE void tile(const T* from, int64_t rowStep, T* to, int64_t columnStep) {
#pragma GCC unroll 4
  for (int c = 0; c < 8; c += kLanes<T>) tileColumns<D, X>(from + 2 * c, rowStep, to, columnStep, c);
}

VEK_INLINE int64_t reverseBits(int64_t x, int bits) {
  uint64_t v = __builtin_bswap64(uint64_t(x));
  v = (v >> 4 & 0x0F0F0F0F0F0F0F0F) | (v & 0x0F0F0F0F0F0F0F0F) << 4;
  v = (v >> 2 & 0x3333333333333333) | (v & 0x3333333333333333) << 2;
  v = (v >> 1 & 0x5555555555555555) | (v & 0x5555555555555555) << 1;
  return bits == 0 ? 0 : int64_t(v >> (64 - bits));
}

// Tile q goes to the place of tile `reversed`. In place the two trade places, at the visit to the smaller.
template <Direction D, Extent X, class T>
VEK_INLINE void placeTile(const T* src, T* dst, int64_t row, int64_t q, int64_t reversed) {
  if (src != dst) {
    tile<D, X>(src + 16 * q, row, dst + 16 * reversed, row);
  } else if (q <= reversed) {
    alignas(64) T kept[128];
    tile<D, X>(src + 16 * q, row, kept, 16);
    if (q != reversed) tile<D, X>(src + 16 * reversed, row, dst + 16 * q, row);
#pragma GCC unroll 1
    for (int c = 0; c < 8; ++c) {
      for (int i = 0; i < 16; i += kLanes<T>) storeV(dst + 16 * reversed + c * row + i, loadV(kept + 16 * c + i));
    }
  }
}

constexpr int kSquareBits = 2, kSquaresFrom = 10;

// The first sweep: calls f(tile, its place) for all tiles. Neighbouring tiles go to places far apart; where that costs
// cache and page misses, tiles are visited in squares of four sources by four destinations that lie side by side.
template <class F>
VEK_INLINE void forTiles(int bits, F f) {
  const int corner = bits >= kSquaresFrom ? kSquareBits : 0;
  const int64_t side = int64_t(1) << corner, far = (int64_t(1) << bits) >> corner;
  for (int64_t middle = 0; middle < far; middle += side) {
    for (int64_t h = 0; h < side; ++h) {
      for (int64_t l = 0; l < side; ++l) {
        const int64_t q = h * far + middle + l;
        f(q, reverseBits(q, bits));
      }
    }
  }
}

template <Direction D, Extent X, class T>
VEK_NOINLINE void firstSweep(const T* src, T* dst, int m) {
  const int64_t row = int64_t(2) << (m - 3);
  forTiles(m - 6, [=](int64_t q, int64_t reversed) VEK_LAMBDA { placeTile<D, X>(src, dst, row, q, reversed); });
}

enum Output { kBlocks, kInterleaved };

template <Direction D, Output O, class T>
VEK_INLINE void storePoint(T* p, Complex<T> x, [[maybe_unused]] Reg<T> scale) {
  if constexpr (O == kBlocks) {
    storeBlock(p, x);
  } else if constexpr (D == kForward) {
    storeInterleaved<T>(p, {x.re * scale, x.im * scale});
  } else {
    storeInterleaved<T>(p, {x.im * scale, x.re * scale});
  }
}

// One pass over `total` elements: transforms of `length` points are joined 2^Bits at a time.
template <Direction D, Output O, int Bits, class T>
VEK_NOINLINE void joinPass(T* data, int64_t total, int64_t length, const T* roots, T scale) {
  constexpr int radix = 1 << Bits, block = 2 * kLanes<T>, step = Bits == 3 ? 4 * block : 2 * block;
  const Reg<T> s = broadcastReg(scale);
  for (T* end = data + 2 * total; data < end; data += 2 * length * radix) {
    const T* w = roots;
    for (int64_t k = 0; k < 2 * length; k += block, w += step) {
      join<Bits>(
          BlockRoots<T>{w}, [&](int r) VEK_LAMBDA { return loadBlock(data + k + r * 2 * length); },
          [&](int r, Complex<T> y) VEK_LAMBDA { storePoint<D, O>(data + k + r * 2 * length, y, s); });
    }
  }
}

template <Direction D, Output O, class T>
VEK_INLINE void anyPass(int bits, T* data, int64_t total, int64_t length, const T* roots, T scale) {
  if (bits == 3) {
    joinPass<D, O, 3>(data, total, length, roots, scale);
  } else {
    joinPass<D, O, 2>(data, total, length, roots, scale);
  }
}

// Everything behind the first sweep, on 2^bits(m) elements from `data`, up to pass `last`.
template <Direction D, class T>
struct Joiner {
  Passes passes;
  const T* roots[12];
  int64_t length[12];
  T scale;
  static constexpr int64_t kInCache = 24576 / (2 * int64_t(sizeof(T)));

  VEK_INLINE void prepare(int m, const T* table, T s) {
    passes = passesFor(m);
    scale = s;
    int64_t len = 8;
    for (int i = 0; i < passes.count; ++i) {
      roots[i] = constantRoots<T>(passes.bits[i], len);
      if (!roots[i]) roots[i] = table, table += rootsOfPass(passes.bits[i], len);
      length[i] = len;
      len <<= passes.bits[i];
    }
  }

  VEK_INLINE void pass(int i, T* data, int64_t total) const {
    if (i + 1 == passes.count) {
      anyPass<D, kInterleaved>(passes.bits[i], data, total, length[i], roots[i], scale);
    } else {
      anyPass<D, kBlocks>(passes.bits[i], data, total, length[i], roots[i], scale);
    }
  }

  // Passes 0 .. i on the 2^bits[i] * length[i] elements at data.
  void run(int i, T* data) const {
    const int64_t total = length[i] << passes.bits[i];
    if (total <= kInCache) {
      for (int k = 0; k <= i; ++k) pass(k, data, total);
      return;
    }
    for (int r = 0; r < 1 << passes.bits[i]; ++r) {
      if (i > 0) run(i - 1, data + 2 * r * length[i]);
    }
    pass(i, data, total);
  }
};

// n = 2^m points, m >= 6.
template <Direction D, Extent X = kWhole, class T>
VEK_NOINLINE void complexTransform(const T* src, T* dst, int m, const T* table, T scale) {
  firstSweep<D, X>(src, dst, m);
  Joiner<D, T> joiner;
  joiner.prepare(m, table, scale);
  joiner.run(joiner.passes.count - 1, dst);
}

// The roots that the spec holds: those of the passes that have no constants, in the order of their use.
template <class T>
VEK_INLINE int64_t complexTableSize(int m) {
  const Passes p = passesFor(m);
  int64_t size = 0, length = 8;
  for (int i = 0; i < p.count; length <<= p.bits[i++]) {
    if (!constantRoots<T>(p.bits[i], length)) size += rootsOfPass(p.bits[i], length);
  }
  return size;
}
template <class T>
VEK_NOINLINE void makeComplexTable(T* table, int m, const Roots& roots, int order) {
  const Passes p = passesFor(m);
  int lengthBits = 3;
  for (int i = 0; i < p.count; lengthBits += p.bits[i++]) {
    const int bits = p.bits[i], shift = order - lengthBits - bits;
    const int64_t length = int64_t(1) << lengthBits;
    if (constantRoots<T>(bits, length)) continue;
    fillPass<kLanes<T>>(table, bits, length, length, [&](int64_t k) VEK_LAMBDA { return roots(k << shift); });
    table += rootsOfPass(bits, length);
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
