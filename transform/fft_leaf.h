// SPDX-License-Identifier: Apache-2.0
// Where a real transform begins and where its inverse ends: the transforms of 16 samples that lie N/16 apart. A sweep
// over the data visits tiles of sixteen rows N/16 apart and sixteen columns; each column's spectrum becomes 16
// neighbours at the bit-reversed place of the column, so that a tile goes to the place of a tile.
//
// A spectrum of 2n real points is n complex numbers in blocks, elements 0 .. n-1, the (real) elements 0 and n as the
// parts of the first. One at an odd place, counted in spectra of its length, has its blocks in the opposite order.
#ifndef VEK_TRANSFORM_FFT_LEAF_H
#define VEK_TRANSFORM_FFT_LEAF_H

#include "transform/fft_complex.h"

namespace vek::VEK_SLOT {
namespace {

// The steps of join backwards; the second half of y comes conjugated.
template <class T>
VEK_INLINE void separate(Complex<T>& a, Complex<T>& b, Complex<T> w) {
  const Complex<T> d = a - b;
  a = a + b;
  b = timesConj(d, w);
}
template <class T>
VEK_INLINE void separateMinusI(Complex<T>& a, Complex<T>& b, Complex<T> w) {
  const Complex<T> d = a - b;
  a = a + b;
  b = timesConjI(d, w);
}
template <class T>
VEK_INLINE void separateConj(Complex<T>& a, Complex<T>& b, Complex<T> w) {
  const Complex<T> d = {a.re - b.re, a.im + b.im};
  a = {a.re + b.re, a.im - b.im};
  b = timesConj(d, w);
}
template <class T>
VEK_INLINE void separateConjMinusI(Complex<T>& a, Complex<T>& b, Complex<T> w) {
  const Complex<T> d = {a.re - b.re, a.im + b.im};
  a = {a.re + b.re, a.im - b.im};
  b = timesConjI(d, w);
}
template <class T>
VEK_INLINE void partFour(Complex<T>& a, Complex<T>& b, Complex<T>& c, Complex<T>& d, const T* w) {
  const Complex<T> second = loadBlock(w + 2 * kLanes<T>), first = loadBlock(w);
  separate(a, c, second);
  separateMinusI(b, d, second);
  separate(a, b, first);
  separate(c, d, first);
}
template <int Bits, class T, class Load, class Store>
VEK_INLINE void part(const T* w, Load load, Store store) {
  constexpr int size = 2 * kLanes<T>;
  if constexpr (Bits == 2) {
    const Complex<T> second = loadBlock(w + size), first = loadBlock(w);
    Complex<T> a = load(0), c = load(2);
    separateConj(a, c, second);
    Complex<T> b = load(1), d = load(3);
    separateConjMinusI(b, d, second);
    separate(a, b, first);
    store(0, a), store(1, b);
    separate(c, d, first);
    store(2, c), store(3, d);
  } else {
    const Complex<T> third = loadBlock(w + 2 * size);
    Complex<T> a = load(0), e = load(4);
    separateConj(a, e, third);
    Complex<T> c = load(2), g = load(6);
    separateConjMinusI(c, g, third);
    const Complex<T> turned = loadBlock(w + 3 * size);
    Complex<T> b = load(1), f = load(5);
    separateConj(b, f, turned);
    Complex<T> d = load(3), h = load(7);
    separateConjMinusI(d, h, turned);
    partFour(a, b, c, d, w);
    store(0, a), store(1, b), store(2, c), store(3, d);
    partFour(e, f, g, h, w);
    store(4, e), store(5, f), store(6, g), store(7, h);
  }
}

constexpr int kLeafBits = 4, kLeaf = 1 << kLeafBits;

// The roots of a pass of radix four over one column: exp(-i pi/4) and exp(-i pi/8) in all lanes.
template <class T>
struct LeafRoots {
  alignas(32) T at[4 * kLanes<T>];
};
template <class T>
constexpr LeafRoots<T> makeLeafRoots() {
  LeafRoots<T> r{};
  for (int lane = 0; lane < kLanes<T>; ++lane) {
    storeRoot(r.at, lane, root1024(128));
    storeRoot(r.at + 2 * kLanes<T>, lane, root1024(64));
  }
  return r;
}
template <class T>
constexpr LeafRoots<T> kLeafRoots = makeLeafRoots<T>();

// Parts of the elements 0 .. 8 of a spectrum of 16 points; im[0] is element 8.
template <class T>
struct LeafSpectrum {
  Reg<T> re[8], im[8];
};

// Eight real points, the even elements of a spectrum of sixteen.
template <class T>
VEK_INLINE void evenElements(const Reg<T> (&s)[8], LeafSpectrum<T>& x) {
  const Reg<T> h = broadcastReg(kSqrtHalf<T>);
  const Reg<T> a = s[0] + s[4], b = s[0] - s[4], c = s[2] + s[6], e = s[2] - s[6];
  const Reg<T> a1 = s[1] + s[5], b1 = s[1] - s[5], c1 = s[3] + s[7], e1 = s[3] - s[7];
  const Reg<T> even = a + c, odd = a1 + c1, f = b1 - e1, g = b1 + e1;
  x.re[0] = even + odd, x.im[0] = even - odd;
  x.re[4] = a - c, x.im[4] = c1 - a1;
  x.re[2] = mulAdd<T>(h, f, b), x.im[2] = negMulAdd<T>(h, g, -e);
  x.re[6] = negMulAdd<T>(h, f, b), x.im[6] = negMulAdd<T>(h, g, e);
}

template <Extent X, class T>
VEK_INLINE void leafForward(const Reg<T> (&x)[kLeaf], LeafSpectrum<T>& to) {
  Reg<T> s[8];
  Complex<T> y[4];
#pragma GCC unroll 8
  for (int i = 0; i < 8; ++i) s[i] = X == kWhole ? x[i] + x[i + 8] : x[i];
#pragma GCC unroll 4
  for (int i = 0; i < 4; ++i) {
    const int p = (i & 1) << 1 | i >> 1;
    y[p] = X == kWhole ? Complex<T>{x[i] - x[i + 8], x[i + 12] - x[i + 4]} : Complex<T>{x[i], -x[i + 4]};
  }
  evenElements<T>(s, to);
  constexpr int element[] = {1, 5, 7, 3};
  join<2, kConjugated>(
      BlockRoots<T>{kLeafRoots<T>.at}, [&](int i) VEK_LAMBDA { return y[i]; },
      [&](int i, Complex<T> z) VEK_LAMBDA { to.re[element[i]] = z.re, to.im[element[i]] = z.im; });
}

// 16 times the samples, and times `scale`.
template <class T>
VEK_INLINE void leafInverse(const LeafSpectrum<T>& from, Reg<T> scale, Reg<T> (&x)[kLeaf]) {
  const Reg<T> twice = scale + scale, root = broadcastReg(2 * kSqrtHalf<T>) * scale;
  const auto& re = from.re;
  const auto& im = from.im;
  Complex<T> y[4];
  constexpr int element[] = {1, 5, 7, 3};
  part<2>(
      kLeafRoots<T>.at,
      [&](int i) VEK_LAMBDA {
        return Complex<T>{re[element[i]], im[element[i]]};
      },
      [&](int i, Complex<T> z) VEK_LAMBDA { y[i] = z; });
  const Reg<T> even = (re[0] + im[0]) * scale, odd = (re[0] - im[0]) * scale;
  const Reg<T> a = mulAdd<T>(twice, re[4], even), c = negMulAdd<T>(twice, re[4], even);
  const Reg<T> a1 = negMulAdd<T>(twice, im[4], odd), c1 = mulAdd<T>(twice, im[4], odd);
  const Reg<T> b = (re[2] + re[6]) * twice, e = (im[6] - im[2]) * twice;
  const Reg<T> f = re[2] - re[6], g = im[2] + im[6];
  const Reg<T> b1 = (f - g) * root, e1 = (f + g) * root;
  const Reg<T> s[8] = {a + b, a1 + b1, c + e, c1 - e1, a - b, a1 - b1, c - e, c1 + e1};
#pragma GCC unroll 4
  for (int i = 0; i < 4; ++i) {
    const Complex<T> z = y[(i & 1) << 1 | i >> 1];
    x[i] = mulAdd<T>(twice, z.re, s[i]);
    x[i + 8] = negMulAdd<T>(twice, z.re, s[i]);
    x[i + 4] = negMulAdd<T>(twice, z.im, s[i + 4]);
    x[i + 12] = mulAdd<T>(twice, z.im, s[i + 4]);
  }
}

VEK_INLINE int reverse4(int i) { return reverse3(i >> 1) | (i & 1) << 3; }

// Samples and spectra of sixteen columns (or eight, if there are no more) that lie side by side.
template <class T>
struct Tile {
  const T* from;
  int64_t fromStep;
  T* to;
  int64_t toStep;
  bool second;  // in the second half of all columns: their spectra are at odd places
};

template <int Width>
VEK_INLINE int placeOf(int column) {
  return Width == 16 ? reverse4(column) : reverse3(column);
}
// Block b of the spectrum of a column; a single tile has even and odd places.
template <int Width, bool Single, class T>
VEK_INLINE T* leafBlock(T* tile, int64_t step, bool second, int column, int b) {
  constexpr int L = kLanes<T>, blocks = 8 / L;
  const bool opposite = Single ? 2 * column >= Width : second;
  return tile + placeOf<Width>(column) * step + 2 * L * (opposite ? blocks - 1 - b : b);
}

template <Extent X, int Width, bool Single, class T>
VEK_NOINLINE void samplesToSpectra(Tile<T> t) {
  constexpr int L = kLanes<T>;
#pragma GCC unroll 8
  for (int c = 0; c < Width; c += L) {
    Reg<T> x[kLeaf];
#pragma GCC unroll 16
    for (int r = 0; r < (X == kWhole ? 16 : 8); ++r) x[r] = loadV(t.from + c + r * t.fromStep);
    LeafSpectrum<T> y;
    leafForward<X, T>(x, y);
#pragma GCC unroll 4
    for (int b = 0; b < 8 / L; ++b) {
      Reg<T> re[L], im[L];
#pragma GCC unroll 8
      for (int p = 0; p < L; ++p) re[p] = y.re[b * L + kLaneOrder<T>[p]], im[p] = y.im[b * L + kLaneOrder<T>[p]];
      transpose<T>(re);
      transpose<T>(im);
#pragma GCC unroll 8
      for (int p = 0; p < L; ++p) {
        storeBlock<T>(leafBlock<Width, Single>(t.to, t.toStep, t.second, c + p, b), {re[p], im[p]});
      }
    }
  }
}

template <int Width, bool Single, class T>
VEK_NOINLINE void spectraToSamples(Tile<T> t, T scale) {
  constexpr int L = kLanes<T>;
#pragma GCC unroll 8
  for (int c = 0; c < Width; c += L) {
    LeafSpectrum<T> y;
#pragma GCC unroll 4
    for (int b = 0; b < 8 / L; ++b) {
      Reg<T> re[L], im[L];
#pragma GCC unroll 8
      for (int p = 0; p < L; ++p) {
        const Complex<T> z =
            loadBlock<T>(leafBlock<Width, Single>(const_cast<T*>(t.from), t.fromStep, t.second, c + p, b));
        re[p] = z.re, im[p] = z.im;
      }
      transpose<T>(re);
      transpose<T>(im);
#pragma GCC unroll 8
      for (int p = 0; p < L; ++p) y.re[b * L + kLaneOrder<T>[p]] = re[p], y.im[b * L + kLaneOrder<T>[p]] = im[p];
    }
    Reg<T> x[kLeaf];
    leafInverse<T>(y, broadcastReg(scale), x);
#pragma GCC unroll 16
    for (int r = 0; r < kLeaf; ++r) storeV(t.to + c + r * t.toStep, x[r]);
  }
}

// A tile in a buffer of its own: before it is overwritten, or because its rows fall on the same lines of a cache.
template <class T>
struct TileCopy {
  alignas(64) T at[16 * kLeaf];
  VEK_INLINE void take(const T* from, int64_t step, int rows) { copy(from, step, at, kLeaf, rows); }
  VEK_INLINE void give(T* to, int64_t step) const { copy(at, kLeaf, to, step, kLeaf); }

 private:
  static VEK_INLINE void copy(const T* from, int64_t fromStep, T* to, int64_t toStep, int rows) {
#pragma GCC unroll 1
    for (int r = 0; r < rows; ++r) {
      for (int i = 0; i < kLeaf; i += kLanes<T>) storeV(to + toStep * r + i, loadV(from + fromStep * r + i));
    }
  }
};
constexpr int64_t kFarRows = 4096;  // bytes

// order > 8: many tiles of sixteen columns.
template <Extent X, class T>
VEK_NOINLINE void sweepToSpectra(const T* src, T* dst, int order) {
  const int bits = order - 8;
  const int64_t row = int64_t(1) << (order - kLeafBits), half = int64_t(1) << (bits - 1);
  TileCopy<T> copy;
  forTiles(bits, [&](int64_t q, int64_t reversed) VEK_LAMBDA {
    Tile<T> t{src + kLeaf * q, row, dst + kLeaf * reversed, row, q >= half};
    if (src == dst && q > reversed) return;
    if (src == dst) {
      copy.take(t.from, row, X == kWhole ? kLeaf : kLeaf / 2);
      t.from = copy.at, t.fromStep = kLeaf;
      if (q != reversed) {
        samplesToSpectra<X, 16, false, T>({dst + kLeaf * reversed, row, dst + kLeaf * q, row, reversed >= half});
      }
    }
    samplesToSpectra<X, 16, false, T>(t);
  });
}
template <class T>
VEK_NOINLINE void sweepToSamples(const T* src, T* dst, int order, T scale) {
  const int bits = order - 8;
  const int64_t row = int64_t(1) << (order - kLeafBits), half = int64_t(1) << (bits - 1);
  const bool far = row * int64_t(sizeof(T)) >= kFarRows;
  TileCopy<T> first, second;
  forTiles(bits, [&](int64_t q, int64_t reversed) VEK_LAMBDA {
    const T *const a = src + kLeaf * q, *const b = src + kLeaf * reversed;
    T* const to = dst + kLeaf * q;
    if (src != dst) return spectraToSamples<16, false, T>({b, row, to, row, q >= half}, scale);
    if (q > reversed) return;
    spectraToSamples<16, false, T>({a, row, first.at, kLeaf, reversed >= half}, scale);
    if (a != b) {
      spectraToSamples<16, false, T>({b, row, far ? second.at : to, far ? kLeaf : row, q >= half}, scale);
      if (far) second.give(to, row);
    }
    first.give(dst + kLeaf * reversed, row);
  });
}

// order 7 or 8: one tile.
template <Extent X, int Width, class T>
VEK_NOINLINE void singleToSpectra(const T* src, T* dst) {
  TileCopy<T> copy;
  if (src == dst) copy.take(src, kLeaf, X == kWhole ? Width : Width / 2);
  samplesToSpectra<X, Width, true, T>({src == dst ? copy.at : src, Width, dst, kLeaf, false});
}
template <int Width, class T>
VEK_NOINLINE void singleToSamples(const T* src, T* dst, T scale) {
  spectraToSamples<Width, true, T>({src, kLeaf, dst, Width, false}, scale);
}

template <Extent X, class T>
VEK_INLINE void toLeaves(const T* src, T* dst, int order) {
  if (order == 7) return singleToSpectra<X, 8>(src, dst);
  if (order == 8) return singleToSpectra<X, 16>(src, dst);
  sweepToSpectra<X>(src, dst, order);
}
// In place only from order 9 on.
template <class T>
VEK_INLINE void fromLeaves(const T* src, T* dst, int order, T scale) {
  if (order == 7) return singleToSamples<8>(src, dst, scale);
  if (order == 8) return singleToSamples<16>(src, dst, scale);
  sweepToSamples(src, dst, order, scale);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
