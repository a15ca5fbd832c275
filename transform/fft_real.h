// SPDX-License-Identifier: Apache-2.0
// Real transforms of N >= 128 points, on the nonredundant halves of spectra all the way: the leaves are transforms of
// 16 samples, and each pass joins 4 or 8 spectra of `length` real points into one, by the butterflies of the complex
// transform over half as many columns. For row r of R and column k < length/2 they give
//   X[r length + k]                    for r < R/2, and
//   conj X[(R-r) length - k]           for the others,
// so that column k fills column k of the direct rows and column length/2 - k of the mirrored ones. The columns 0 and
// length/2 are real: the former has a real transform of its own, the latter takes its place in the first block. A
// spectrum at an odd place has its blocks in the opposite order (see the leaves), and the pass works in place. The
// inverse takes the same steps backwards.
#ifndef VEK_TRANSFORM_FFT_REAL_H
#define VEK_TRANSFORM_FFT_REAL_H

#include "transform/fft_leaf.h"

namespace vek::VEK_SLOT {
namespace {

// ---- the column of the elements 0 -----------------------------------------------------------------------------------

// Real parts d in bit-reversed order to elements 0 and R/2 (the parts of x[0]) and 1 .. R/2-1 of their spectrum.
template <class T>
struct Pair {
  T re, im;
};
template <class T>
VEK_INLINE void joinFirst(const T (&d)[4], Pair<T> (&x)[2]) {
  const T even = d[0] + d[1], odd = d[2] + d[3];
  x[0] = {even + odd, even - odd};
  x[1] = {d[0] - d[1], d[3] - d[2]};
}
template <class T>
VEK_INLINE void joinFirst(const T (&d)[8], Pair<T> (&x)[4]) {
  constexpr T h = kSqrtHalf<T>;
  const T a = d[0] + d[1], b = d[0] - d[1], c = d[2] + d[3], e = d[2] - d[3];
  const T a1 = d[4] + d[5], b1 = d[4] - d[5], c1 = d[6] + d[7], e1 = d[6] - d[7];
  const T even = a + c, odd = a1 + c1, f = (b1 - e1) * h, g = (b1 + e1) * h;
  x[0] = {even + odd, even - odd};
  x[1] = {b + f, -e - g};
  x[2] = {a - c, c1 - a1};
  x[3] = {b - f, e - g};
}
// And back, R times as large.
template <class T>
VEK_INLINE void partFirst(const Pair<T> (&x)[2], T (&d)[4]) {
  const T even = x[0].re + x[0].im, odd = x[0].re - x[0].im, re = x[1].re + x[1].re, im = x[1].im + x[1].im;
  d[0] = even + re, d[1] = even - re, d[2] = odd - im, d[3] = odd + im;
}
template <class T>
VEK_INLINE void partFirst(const Pair<T> (&x)[4], T (&d)[8]) {
  constexpr T root = 2 * kSqrtHalf<T>;
  const T even = x[0].re + x[0].im, odd = x[0].re - x[0].im, re = x[2].re + x[2].re, im = x[2].im + x[2].im;
  const T a = even + re, c = even - re, a1 = odd - im, c1 = odd + im;
  const T b = 2 * (x[1].re + x[3].re), e = 2 * (x[3].im - x[1].im), f = x[1].re - x[3].re, g = x[1].im + x[3].im;
  const T b1 = (f - g) * root, e1 = (f + g) * root;
  d[0] = a + b, d[1] = a - b, d[2] = c + e, d[3] = c - e;
  d[4] = a1 + b1, d[5] = a1 - b1, d[6] = c1 - e1, d[7] = c1 + e1;
}

// ---- columns --------------------------------------------------------------------------------------------------------

// Column block at float offset k of the spectra that a pass joins, and where it goes. Down: the joined spectrum is at
// an odd place.
template <bool Down, int Bits, class T>
struct Columns {
  static constexpr int R = 1 << Bits, L = kLanes<T>;
  T* data;
  int64_t length;
  VEK_INLINE T* of(int i, int64_t k) const { return data + i * length + ((i & 1) != 0 ? length - 2 * L - k : k); }
  VEK_INLINE T* direct(int r, int64_t k) const { return of(Down ? R - 1 - 2 * r : 2 * r, k); }
  VEK_INLINE T* mirrored(int r, int64_t k) const { return of(Down ? 2 * r - R : 2 * (R - 1 - r) + 1, k); }
};

template <class T>
VEK_INLINE Complex<T> mirror(Complex<T> x) {
  return {mirrorLanes<T>(x.re), mirrorLanes<T>(x.im)};
}
template <class T>
VEK_INLINE Complex<T> withFirst(Complex<T> x, Pair<T> first) {
  return {withFirst(x.re, Reg<T>{first.re}, T()), withFirst(x.im, Reg<T>{first.im}, T())};
}
template <Output O, class T>
VEK_INLINE void storeColumns(T* p, Complex<T> x) {
  if constexpr (O == kBlocks) {
    storeBlock(p, x);
  } else {
    storeInterleaved(p, x);
  }
}
template <Output O, class T>
VEK_INLINE Complex<T> loadColumns(const T* p) {
  return O == kBlocks ? loadBlock(p) : loadInterleaved(p);
}
// Element 0 of a block.
template <Output O, class T>
VEK_INLINE void storeFirst(T* p, T re, T im) {
  p[0] = re;
  p[O == kBlocks ? kLanes<T> : 1] = im;
}
template <Output O, class T>
VEK_INLINE Pair<T> loadFirst(const T* p) {
  return {p[0], p[O == kBlocks ? kLanes<T> : 1]};
}

// The roots of the first block; in the first lane those of column length/2.
template <int Bits, class T>
struct FirstRoots {
  static constexpr int L = kLanes<T>;
  alignas(32) T at[(Bits == 3 ? 4 : 2) * 2 * L];
  VEK_INLINE explicit FirstRoots(const T* roots) {
    __builtin_memcpy(at, roots, sizeof at);
    constexpr Root turns[] = {root1024(256), root1024(128), root1024(64), root1024(192)};
    for (int i = 0; i < (Bits == 3 ? 4 : 2); ++i) storeRoot(at + 2 * L * i, 0, turns[i]);
  }
};

// ---- forward --------------------------------------------------------------------------------------------------------

// The first block; `half` takes column length/2 of the direct rows.
template <Output O, bool Down, int Bits, class T>
VEK_INLINE void joinFirstBlock(const Columns<Down, Bits, T>& at, const T* roots, Pair<T> (&half)[1 << (Bits - 1)]) {
  constexpr int R = 1 << Bits;
  constexpr int L = kLanes<T>;
  T d[R];
  Pair<T> x[R / 2];
#pragma GCC unroll 8
  for (int i = 0; i < R; ++i) d[i] = *at.of(i, 0);
  join<Bits, kConjugated>(
      BlockRoots<T>{roots},
      [&](int i) VEK_LAMBDA {
        const Reg<T> re = loadV(at.of(i, 0)), im = loadV(at.of(i, 0) + L);
        return Complex<T>{withFirst(re, im, T()), withFirst(im, Reg<T>{}, T())};
      },
      [&](int r, Complex<T> y) VEK_LAMBDA {
        if (r < R / 2) {
          storeColumns<O>(at.direct(r, 0), y);
          half[r] = {y.re[0], y.im[0]};
        } else {
          storeColumns<O>(at.mirrored(r, 0), mirror(y));
        }
      });
  joinFirst(d, x);
#pragma GCC unroll 4
  for (int r = 0; r < R / 2; ++r) storeFirst<O>(at.direct(r, 0), x[r].re, x[r].im);
}

template <bool Down, Output O, int Bits, class T>
VEK_NOINLINE void joinSpectra(T* data, int64_t length, const T* firstRoots, const T* roots) {
  constexpr int R = 1 << Bits, L = kLanes<T>, step = (Bits == 3 ? 4 : 2) * 2 * L;
  const Columns<Down, Bits, T> at{data, length};
  Pair<T> half[R / 2];
  joinFirstBlock<O>(at, firstRoots, half);
#pragma GCC unroll 1
  for (int64_t k = 2 * L; k < length; k += 2 * L) {
    roots += step;
    join<Bits, kConjugated>(
        BlockRoots<T>{roots}, [&](int i) VEK_LAMBDA { return loadBlock(at.of(i, k)); },
        [&](int r, Complex<T> y) VEK_LAMBDA {
          if (r < R / 2) {
            storeColumns<O>(at.direct(r, k), y);
          } else {
            storeFirst<O>(at.mirrored(r, k - 2 * L), y.re[0], y.im[0]);
            storeColumns<O>(at.mirrored(r, k), mirror(y));
          }
        });
  }
#pragma GCC unroll 4
  for (int r = 0; r < R / 2; ++r) storeFirst<O>(at.mirrored(R - 1 - r, length - 2 * L), half[r].re, half[r].im);
}

// ---- inverse --------------------------------------------------------------------------------------------------------

// From one place to another, or in place: the last block first, because a mirrored one needs an element of the block
// before.
template <bool Down, Output O, int Bits, class T>
VEK_NOINLINE void partSpectrum(const T* src, T* dst, int64_t length, const T* firstRoots, const T* roots) {
  constexpr int R = 1 << Bits, L = kLanes<T>, step = (Bits == 3 ? 4 : 2) * 2 * L;
  const Columns<Down, Bits, T> from{const_cast<T*>(src), length}, to{dst, length};
  Pair<T> x[R / 2], half[R / 2];
#pragma GCC unroll 4
  for (int r = 0; r < R / 2; ++r) {
    x[r] = loadFirst<O>(from.direct(r, 0));
    half[r] = loadFirst<O>(from.mirrored(R - 1 - r, length - 2 * L));
  }
  roots += step * (length / (2 * L));
#pragma GCC unroll 1
  for (int64_t k = length - 2 * L; k > 0; k -= 2 * L) {
    roots -= step;
    part<Bits>(
        roots,
        [&](int r) VEK_LAMBDA {
          if (r < R / 2) return loadColumns<O>(from.direct(r, k));
          const Complex<T> own = loadColumns<O>(from.mirrored(r, k));
          const T* const next = from.mirrored(r, k - 2 * L);
          if constexpr (O == kInterleaved) return mirror(withFirst(own, loadFirst<O>(next)));
          return mirror(Complex<T>{withFirst(own.re, loadV(next), T()), withFirst(own.im, loadV(next + L), T())});
        },
        [&](int i, Complex<T> y) VEK_LAMBDA { storeBlock(to.of(i, k), y); });
  }
  T d[R];
  partFirst(x, d);
  part<Bits>(
      firstRoots,
      [&](int r) VEK_LAMBDA {
        if (r < R / 2) return withFirst(loadColumns<O>(from.direct(r, 0)), half[r]);
        return withFirst(mirror(loadColumns<O>(from.mirrored(r, 0))), half[R - 1 - r]);
      },
      [&](int i, Complex<T> y) VEK_LAMBDA {
        storeBlock<T>(to.of(i, 0), {withFirst(y.re, Reg<T>{d[i]}, T()), withFirst(y.im, y.re, T())});
      });
}

// ---- passes ---------------------------------------------------------------------------------------------------------

// Over `total` real points, from src to dst; `odd` tells the place of a single spectrum.
template <Direction D, Output O, int Bits, class T>
VEK_NOINLINE void realPass(const T* src, T* dst, int64_t total, int64_t length, bool odd, const T* roots) {
  const FirstRoots<Bits, T> first(roots);
  const int64_t joined = length << Bits;
  for (int64_t g = 0; g < total; g += joined, odd = !odd) {
    if constexpr (D == kForward) {
      if (odd) {
        joinSpectra<true, O, Bits>(dst + g, length, first.at, roots);
      } else {
        joinSpectra<false, O, Bits>(dst + g, length, first.at, roots);
      }
    } else {
      if (odd) {
        partSpectrum<true, O, Bits>(src + g, dst + g, length, first.at, roots);
      } else {
        partSpectrum<false, O, Bits>(src + g, dst + g, length, first.at, roots);
      }
    }
  }
}

// Log2 of the radix of each pass, innermost first. On the shortest spectra, of single blocks, radix 8 does not pay.
VEK_INLINE Passes realPassesFor(int order) {
  Passes p{};
  int left = order - kLeafBits;
  while (left != 3 && (left % 3 != 0 || p.count == 0)) p.bits[p.count++] = 2, left -= 2;
  while (left > 0) p.bits[p.count++] = 3, left -= 3;
  return p;
}

// All passes; `output` is how the spectrum of all points lies: as its user wants it or in blocks.
template <Direction D, Output O, class T>
struct RealJoiner {
  Passes passes;
  const T* roots[12];
  int64_t length[12];
  static constexpr int64_t kInCache = 24576 / int64_t(sizeof(T));

  VEK_INLINE RealJoiner(int order, const T* table) : passes(realPassesFor(order)) {
    int64_t len = kLeaf;
    for (int i = 0; i < passes.count; len <<= passes.bits[i++]) {
      roots[i] = constantHalfRoots<T>(passes.bits[i], len);
      if (!roots[i]) roots[i] = table, table += rootsOfPass(passes.bits[i], len) / 2;
      length[i] = len;
    }
  }

  template <Output P>
  VEK_INLINE void passAs(int i, const T* src, T* dst, int64_t total, bool odd) const {
    if (passes.bits[i] == 3) {
      realPass<D, P, 3>(src, dst, total, length[i], odd, roots[i]);
    } else {
      realPass<D, P, 2>(src, dst, total, length[i], odd, roots[i]);
    }
  }
  VEK_INLINE void pass(int i, const T* src, T* dst, int64_t total, bool odd) const {
    const bool single = total == length[i] << passes.bits[i];
    if (O == kInterleaved && i + 1 == passes.count) {
      passAs<O>(i, src, dst, total, single && odd);
    } else {
      passAs<kBlocks>(i, src, dst, total, single && odd);
    }
  }

  // Passes 0 .. i, or back, on the 2^bits[i] * length[i] points of a spectrum.
  void run(int i, const T* src, T* dst, bool odd) const {
    const int64_t total = length[i] << passes.bits[i];
    if (total <= kInCache) {
      for (int k = 0; k <= i; ++k) {
        const int p = D == kForward ? k : i - k;
        pass(p, p == i ? src : dst, dst, total, odd);
      }
      return;
    }
    if constexpr (D == kInverse) pass(i, src, dst, total, odd);
    for (int r = 0; i > 0 && r < 1 << passes.bits[i]; ++r) {
      run(i - 1, dst + r * length[i], dst + r * length[i], (r & 1) != 0);
    }
    if constexpr (D == kForward) pass(i, src, dst, total, odd);
  }
};

template <class T>
VEK_NOINLINE void scaleAll(T* data, int64_t count, T scale) {
  const Reg<T> s = broadcastReg(scale);
  for (int64_t i = 0; i < count; i += kLanes<T>) storeV<T>(data + i, loadV(data + i) * s);
}

template <Output O, Extent X = kWhole, class T>
VEK_NOINLINE void realForward(const T* src, T* dst, int order, const T* table) {
  toLeaves<X>(src, dst, order);
  const RealJoiner<kForward, O, T> joiner(order, table);
  joiner.run(joiner.passes.count - 1, dst, dst, false);
}
// Short transforms have room for the leaves beside the destination, which spares the exchange of tiles.
constexpr int64_t kApartBytes = 16384;

template <Output O, class T>
VEK_NOINLINE void realInverseApart(const T* src, T* dst, int order, const T* table, T scale) {
  alignas(64) T leaves[kApartBytes / sizeof(T)];
  const RealJoiner<kInverse, O, T> joiner(order, table);
  joiner.run(joiner.passes.count - 1, src, leaves, false);
  fromLeaves(leaves, dst, order, scale);
}
template <Output O, class T>
VEK_NOINLINE void realInverse(const T* src, T* dst, int order, const T* table, T scale) {
  if (int64_t(sizeof(T)) << order <= kApartBytes) return realInverseApart<O>(src, dst, order, table, scale);
  const RealJoiner<kInverse, O, T> joiner(order, table);
  joiner.run(joiner.passes.count - 1, src, dst, false);
  fromLeaves(dst, dst, order, scale);
}

// The roots that the spec holds.
template <class T>
VEK_INLINE int64_t realTableSize(int order) {
  const Passes p = realPassesFor(order);
  int64_t size = 0, length = kLeaf;
  for (int i = 0; i < p.count; length <<= p.bits[i++]) {
    if (!constantHalfRoots<T>(p.bits[i], length)) size += rootsOfPass(p.bits[i], length) / 2;
  }
  return size;
}
template <class T>
VEK_NOINLINE void makeRealTable(T* table, int order, const Roots& roots) {
  const Passes p = realPassesFor(order);
  int lengthBits = kLeafBits;
  for (int i = 0; i < p.count; lengthBits += p.bits[i++]) {
    const int bits = p.bits[i], shift = order - lengthBits - bits;
    const int64_t length = int64_t(1) << lengthBits;
    if (constantHalfRoots<T>(bits, length)) continue;
    fillPass<kLanes<T>>(table, bits, length, length / 2, [&](int64_t k) VEK_LAMBDA { return roots(k << shift); });
    table += rootsOfPass(bits, length) / 2;
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
