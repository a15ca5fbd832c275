// SPDX-License-Identifier: Apache-2.0
// Horner's rule at one point of the unit circle. The recurrence is a chain of dependent operations, so above the
// generic slot the samples are dealt to K interleaved recurrences of step w^K, which run side by side in the lanes of
// packs and are joined by one more Horner scheme in w at the end.
#include "core/simd/checks.h"
#include "core/simd/convert.h"
#include "core/simd/double_double.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

constexpr bool kStatedOrder = VEK_SLOT_INDEX == 0;

// exp(-j * theta): multiplying by it turns (re, im) into (re * c + im * s, im * c - re * s).
struct Rotation {
  double c, s;
};
VEK_INLINE Rotation rotation(Vek32f rFreq) {
  const SineAndCosine<double> w = sineCosine(double(rFreq) * 6.283185307179586);
  return {w.cosine, w.sine};
}

// The rotation repeated 2^Doublings times. The product of the rounded values is wanted, as the recurrence forms it, so
// it is kept to more than double precision until the end.
template <int Doublings>
VEK_INLINE Rotation repeated(Rotation w) {
  DoubleDouble<double> c = {w.c, 0}, s = {w.s, 0};
#pragma GCC unroll 4
  for (int i = 0; i < Doublings; ++i) {
    const DoubleDouble<double> next = c * c + -(s * s);
    s = (c + c) * s;
    c = next;
  }
  return {c.hi, s.hi};
}

struct Complex {
  double re, im;
};
VEK_INLINE Complex hornerStep(Complex z, Rotation w, double xRe, double xIm) {
  return {z.re * w.c + z.im * w.s + xRe, z.im * w.c - z.re * w.s + xIm};
}

template <class T>
constexpr bool kReal = kSame<T, Vek32f>;

template <class T>
VEK_INLINE Complex recurrence(const T* src, ptrdiff_t n, Rotation w) {
  Complex z = {0, 0};
  for (ptrdiff_t i = n; i-- > 0;) {
    if constexpr (kReal<T>) {
      // Nothing is added to the imaginary part, not even a zero.
      z = {z.re * w.c + z.im * w.s + double(src[i]), z.im * w.c - z.re * w.s};
    } else {
      z = hornerStep(z, w, src[i].re, src[i].im);
    }
  }
  return z;
}

// ---- real samples: N packs of real parts and N of imaginary parts, one recurrence a lane ----------------------------

template <int N>
struct RealLanes {
  Pack<double> re[N], im[N];
};

template <int N>
VEK_INLINE void step(RealLanes<N>& z, Pack<double> c, Pack<double> s, const Pack<double> (&x)[N]) {
#pragma GCC unroll 4
  for (int k = 0; k < N; ++k) {
    const Pack<double> re = z.re[k];
    z.re[k] = fusedMulAdd(re, c, fusedMulAdd(z.im[k], s, x[k]));
    z.im[k] = fusedNegMulAdd(re, s, z.im[k] * c);
  }
}

template <int N>
VEK_INLINE void loadSamples(const float* p, Pack<double> (&x)[N]) {
#pragma GCC unroll 8
  for (int k = 0; k < N; ++k) x[k] = loadDouble(p + 4 * k);
}
// 4 * N recurrences; packs first (step w^4), then the four lanes (step w).
template <int N>
VEK_INLINE Complex join(const RealLanes<N>& z, Rotation w, Rotation w4) {
  const Pack<double> c = broadcast(w4.c), s = broadcast(w4.s);
  Pack<double> re = z.re[N - 1], im = z.im[N - 1];
#pragma GCC unroll 4
  for (int k = N - 2; k >= 0; --k) {
    const Pack<double> next = re * c + im * s + z.re[k];
    im = im * c - re * s + z.im[k];
    re = next;
  }
  const Lanes<double> a = lanesOf(re), b = lanesOf(im);
  Complex sum = {a[3], b[3]};
  for (int k = 2; k >= 0; --k) sum = hornerStep(sum, w, a[k], b[k]);
  return sum;
}

// F frequencies at once, with N packs of recurrences each: N * 4 = 2^Log samples a step.
template <int F, int N, int Log>
VEK_INLINE void evaluate(const float* src, ptrdiff_t n, const Rotation (&w)[F], Complex (&out)[F]) {
  constexpr ptrdiff_t block = 4 * N;
  RealLanes<N> z[F];
  Pack<double> c[F], s[F], x[N];
  Rotation w4[F];
  const ptrdiff_t whole = n & -block;
  alignas(32) float last[block] = {};
  __builtin_memcpy(last, src + whole, size_t(n - whole) * sizeof(float));
  loadSamples(last, x);
#pragma GCC unroll 2
  for (int f = 0; f < F; ++f) {
    w4[f] = repeated<2>(w[f]);
    const Rotation all = repeated<Log>(w[f]);
    c[f] = broadcast(all.c);
    s[f] = broadcast(all.s);
#pragma GCC unroll 4
    for (int k = 0; k < N; ++k) z[f].re[k] = x[k], z[f].im[k] = zeros<double>();
  }
  for (ptrdiff_t i = whole - block; i >= 0; i -= block) {
    loadSamples(src + i, x);
#pragma GCC unroll 2
    for (int f = 0; f < F; ++f) step(z[f], c[f], s[f], x);
  }
#pragma GCC unroll 2
  for (int f = 0; f < F; ++f) out[f] = join(z[f], w[f], w4[f]);
}

// ---- complex samples: pairs (re, im), two recurrences a pack --------------------------------------------------------

template <int F, int N, int Log>
VEK_INLINE void evaluate(const Vek32fc* samples, ptrdiff_t n, const Rotation (&w)[F], Complex (&out)[F]) {
  constexpr ptrdiff_t block = 2 * N;
  const float* src = &samples->re;
  Pack<double> z[F][N], c[F], s[F], x[N];
  const ptrdiff_t whole = n & -block;
  alignas(32) float last[2 * block] = {};
  __builtin_memcpy(last, src + 2 * whole, size_t(n - whole) * 2 * sizeof(float));
  loadSamples(last, x);
#pragma GCC unroll 2
  for (int f = 0; f < F; ++f) {
    const Rotation all = repeated<Log>(w[f]);
    c[f] = broadcast(all.c);
    s[f] = broadcastPair(all.s, -all.s);
#pragma GCC unroll 8
    for (int k = 0; k < N; ++k) z[f][k] = x[k];
  }
  for (ptrdiff_t i = whole - block; i >= 0; i -= block) {
    loadSamples(src + 2 * i, x);
#pragma GCC unroll 2
    for (int f = 0; f < F; ++f) {
#pragma GCC unroll 8
      for (int k = 0; k < N; ++k) z[f][k] = fusedMulAdd(z[f][k], c[f], fusedMulAdd(swapPairs(z[f][k]), s[f], x[k]));
    }
  }
#pragma GCC unroll 2
  for (int f = 0; f < F; ++f) {
    out[f] = {0, 0};
#pragma GCC unroll 8
    for (int k = N - 1; k >= 0; --k) {
      const Lanes<double> a = lanesOf(z[f][k]);
      out[f] = hornerStep(out[f], w[f], a[2], a[3]);
      out[f] = hornerStep(out[f], w[f], a[0], a[1]);
    }
  }
}

// ---- entries --------------------------------------------------------------------------------------------------------

// A lane of a real form's pack is a whole recurrence, of a complex form's pack half of one.
template <int F, class T>
VEK_NOINLINE void transform(const T* src, ptrdiff_t n, const Vek32f* freq, Vek32fc* val) {
  Rotation w[F];
  Complex z[F];
  for (int f = 0; f < F; ++f) w[f] = rotation(freq[f]);
  if constexpr (kStatedOrder) {
    for (int f = 0; f < F; ++f) z[f] = recurrence(src, n, w[f]);
  } else if constexpr (kReal<T>) {
    evaluate<F, 4 / F, F == 1 ? 4 : 3>(src, n, w, z);
  } else {
    evaluate<F, 8 / F, F == 1 ? 4 : 3>(src, n, w, z);
  }
  if constexpr (!kStatedOrder) {
    // An infinity among the samples turns into infinities and NaNs by the order of the operations.
    for (int f = 0; f < F; ++f) {
      if (!__builtin_isfinite(z[f].re) || !__builtin_isfinite(z[f].im)) z[f] = recurrence(src, n, w[f]);
    }
  }
  for (int f = 0; f < F; ++f) val[f] = {float(z[f].re), float(z[f].im)};
}

VEK_INLINE bool validFrequency(Vek32f f) { return !(f < 0 || f >= 1); }

template <class T>
VEK_INLINE VekStatus goertzel(const T* src, int len, Vek32fc* val, Vek32f rFreq) {
  if (const VekStatus s = checkVectors(len, src, val)) return s;
  if (!validFrequency(rFreq)) return vekStsRelFreqErr;
  transform<1>(src, len, &rFreq, val);
  return vekStsNoErr;
}

template <class T>
VEK_INLINE VekStatus goertzelTwo(const T* src, int len, Vek32fc* val, const Vek32f* rFreq) {
  if (const VekStatus s = checkVectors(len, src, val, rFreq)) return s;
  if (!validFrequency(rFreq[0]) || !validFrequency(rFreq[1])) return vekStsRelFreqErr;
  transform<2>(src, len, rFreq, val);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksGoertz_32f(const Vek32f* pSrc, int len, Vek32fc* pVal, Vek32f rFreq) {
  return goertzel(pSrc, len, pVal, rFreq);
}
VekStatus veksGoertz_32fc(const Vek32fc* pSrc, int len, Vek32fc* pVal, Vek32f rFreq) {
  return goertzel(pSrc, len, pVal, rFreq);
}
VekStatus veksGoertzTwo_32f(const Vek32f* pSrc, int len, Vek32fc* pVal, const Vek32f* rFreq) {
  return goertzelTwo(pSrc, len, pVal, rFreq);
}
VekStatus veksGoertzTwo_32fc(const Vek32fc* pSrc, int len, Vek32fc* pVal, const Vek32f* rFreq) {
  return goertzelTwo(pSrc, len, pVal, rFreq);
}

}  // namespace vek::VEK_SLOT
