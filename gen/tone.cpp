// SPDX-License-Identifier: Apache-2.0
// Cosine tones by a recurrence, real and complex.
#include "core/simd/convert.h"
#include "core/simd/double_double.h"
#include "gen/phase.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// The first two angles and the step from one to the next, all at once. The recurrence multiplies what is wrong in their
// cosines by the length, so these have to be the same with every C library.
struct Starts {
  Lanes<double> sine, cosine;
  VEK_INLINE Starts(double phase, double omega) {
    alignas(32) const double angle[4] = {phase, phase + omega, omega, omega};
    const SineCosine y = sineCosine(DoubleDouble<Pack<double>>{load(angle), zeros<double>()});
    sine = lanesOf(y.sine.hi), cosine = lanesOf(y.cosine.hi);
  }
};

// Each element depends on the one before the last: two chains, side by side in one register. Their latency, one
// product and one difference for two elements, is what a sample costs.
VEK_INLINE void fillTone(float* dst, int len, double magn, double freq, double phase) {
  const double omega = kTwoPi * freq;
  const Starts starts(phase, omega);
  const double c = 2 * starts.cosine[2];
  const double x0 = magn * starts.cosine[0], x1 = magn * starts.cosine[1], x2 = c * x1 - x0, x3 = c * x2 - x1;
  const double start[4] = {x0, x1, x2, x3};
  for (int i = 0; i < 4 && i < len; ++i) dst[i] = float(start[i]);
  const double k = c * c - 2;
  const __m128d d = {k, k};
  __m128d before = {x0, x1}, last = {x2, x3};
  ptrdiff_t n = 4;
  for (; n + 4 <= len; n += 4) {
    before = d * last - before;
    storePair(dst + n, before);
    last = d * before - last;
    storePair(dst + n + 2, last);
  }
  const auto step = [&]() VEK_LAMBDA {
    const __m128d next = d * last - before;
    before = last;
    last = next;
  };
  if (n + 2 <= len) {
    step();
    storePair(dst + n, last);
    n += 2;
  }
  if (n < len) {
    step();
    dst[n] = float(last[0]);
  }
}

VEK_INLINE void fillTone(Vek32fc* dst, int len, double magn, double freq, double phase) {
  const double omega = kTwoPi * freq;
  const Starts starts(phase, omega);
  const double k = 2 * starts.cosine[2];
  const __m128d c = {k, k};
  __m128d before = {magn * starts.cosine[0], magn * starts.sine[0]};
  __m128d last = {magn * starts.cosine[1], magn * starts.sine[1]};
  storePair(&dst[0].re, before);
  if (len > 1) storePair(&dst[1].re, last);
  ptrdiff_t n = 2;
  for (; n + 2 <= len; n += 2) {
    before = c * last - before;
    storePair(&dst[n].re, before);
    last = c * before - last;
    storePair(&dst[n + 1].re, last);
  }
  if (n < len) storePair(&dst[n].re, c * last - before);
}

template <class D>
VEK_INLINE VekStatus tone(D* dst, int len, float magn, float freq, float* phase) {
  if (!phase) return vekStsNullPtrErr;
  if (magn <= 0) return vekStsToneMagnErr;
  if (freq < 0 || freq >= 0.5f) return vekStsToneFreqErr;
  const float start = *phase;
  if (outsidePeriod(start)) return vekStsTonePhaseErr;
  if (!dst) return vekStsNullPtrErr;
  if (len < 1) return vekStsSizeErr;
  *phase = advancedPhase(start, freq, len);
  fillTone(dst, len, magn, freq, start);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksTone_Direct_32f(Vek32f* pDst, int len, Vek32f magn, Vek32f rFreq, Vek32f* pPhase, VekHintAlgorithm) {
  return tone(pDst, len, magn, rFreq, pPhase);
}
VekStatus veksTone_Direct_32fc(Vek32fc* pDst, int len, Vek32f magn, Vek32f rFreq, Vek32f* pPhase, VekHintAlgorithm) {
  return tone(pDst, len, magn, rFreq, pPhase);
}

}  // namespace vek::VEK_SLOT
