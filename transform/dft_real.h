// SPDX-License-Identifier: Apache-2.0
// Between the spectrum X of N = 2h real samples and the one of their pairs, Z. With E = Z[k] + conj Z[h-k],
// O = (Z[k] - conj Z[h-k]) / i and w = exp(-2 pi i / N), 2 X[k] = E + w^k O and 2 X[h-k] = conj(E - w^k O).
#ifndef VEK_TRANSFORM_DFT_REAL_H
#define VEK_TRANSFORM_DFT_REAL_H

#include "transform/dft_pass.h"

namespace vek::VEK_SLOT {
namespace {

// The table: w^k from k = 1 to h/2, block by block for the vectors of pairs k, h-k that there are, then as pairs.
template <class T>
constexpr int64_t pairVectors(int64_t h) {
  return h < 1 ? 0 : (h - 1) / 2 / kLanes<T>;
}
template <class T, class F>
void fillPairRoots(T* table, int64_t h, const F& root) {
  constexpr int L = kLanes<T>;
  int64_t k = 1;
  for (; k <= pairVectors<T>(h) * L; k += L, table += 2 * L) {
    for (int lane = 0; lane < L; ++lane) storeRoot(table, lane, root(k + kLaneOrder<T>[lane]));
  }
  for (; 2 * k <= h; ++k, table += 2) {
    const Root w = root(k);
    table[0] = T(w.re), table[1] = T(w.im);
  }
}

template <class T>
struct HalfPair {
  T re, im;
};
template <class T>
VEK_INLINE HalfPair<T> pairAt(const T* p, int64_t k) {
  return {p[2 * k], p[2 * k + 1]};
}

// z holds Z / 2 and gets X, one element more.
template <class T>
VEK_NOINLINE void spectrumFromPairs(T* z, int64_t h, const T* roots) {
  constexpr int L = kLanes<T>;
  const T re = z[0], im = z[1];
  const int64_t vectors = pairVectors<T>(h) * L;
  int64_t k = 1;
  for (; k <= vectors; k += L, roots += 2 * L) {
    T *const low = z + 2 * k, *const high = z + 2 * (h - k);
    const Complex<T> a = loadInterleaved(low), b = loadReversed(high), w = loadBlock(roots);
    const Complex<T> e = {a.re + b.re, a.im - b.im}, o = {a.im + b.im, b.re - a.re}, t = times(o, w);
    storeInterleaved<T>(low, e + t);
    storeReversed<T>(high, {e.re - t.re, t.im - e.im});
  }
  for (; 2 * k <= h; ++k, roots += 2) {
    const HalfPair<T> a = pairAt(z, k), b = pairAt(z, h - k), w = pairAt(roots, 0);
    const T er = a.re + b.re, ei = a.im - b.im, pr = a.im + b.im, pi = b.re - a.re;
    const T tr = pr * w.re - pi * w.im, ti = pr * w.im + pi * w.re;
    z[2 * k] = er + tr, z[2 * k + 1] = ei + ti;
    if (2 * k != h) z[2 * (h - k)] = er - tr, z[2 * (h - k) + 1] = ti - ei;
  }
  z[0] = 2 * (re + im), z[1] = 0;
  z[2 * h] = 2 * (re - im), z[2 * h + 1] = 0;
}

// z gets 2 Z from X; they may be the same.
template <class T>
VEK_NOINLINE void pairsFromSpectrum(const T* x, T* z, int64_t h, const T* roots) {
  constexpr int L = kLanes<T>;
  const T first = x[0], last = x[2 * h];
  const int64_t vectors = pairVectors<T>(h) * L;
  int64_t k = 1;
  for (; k <= vectors; k += L, roots += 2 * L) {
    const Complex<T> a = loadInterleaved(x + 2 * k), b = loadReversed(x + 2 * (h - k));
    const Complex<T> w = loadBlock(roots);
    const Complex<T> e = {a.re + b.re, a.im - b.im}, d = {a.re - b.re, a.im + b.im}, o = timesConj(d, w);
    storeInterleaved<T>(z + 2 * k, {e.re - o.im, e.im + o.re});
    storeReversed<T>(z + 2 * (h - k), {e.re + o.im, o.re - e.im});
  }
  for (; 2 * k <= h; ++k, roots += 2) {
    const HalfPair<T> a = pairAt(x, k), b = pairAt(x, h - k), w = pairAt(roots, 0);
    const T er = a.re + b.re, ei = a.im - b.im, dr = a.re - b.re, di = a.im + b.im;
    const T pr = dr * w.re + di * w.im, pi = di * w.re - dr * w.im;
    z[2 * k] = er - pi, z[2 * k + 1] = ei + pr;
    if (2 * k != h) z[2 * (h - k)] = er + pi, z[2 * (h - k) + 1] = pr - ei;
  }
  z[0] = first + last, z[1] = first - last;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
