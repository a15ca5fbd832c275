// SPDX-License-Identifier: Apache-2.0
// Triangle waves, real and complex.
#include "gen/phase.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// What the wave's two slopes need: the step a sample, the reflection into the other slope, and the way back of an
// overshoot that a reflection would carry past the other peak.
struct Shape {
  double top;
  double step[2], turn[2], shift[2], back[2];  // of the falling slope, of the rising slope
};

struct Wave {
  double value;
  bool rising;
};

VEK_INLINE Shape shapeOf(double magn, double freq, double asym) {
  const double fall = kPi + asym, rise = kPi - asym, span = 4 * kPi * magn;
  Shape s;
  s.top = magn;
  s.step[0] = -(span * freq / fall);
  s.step[1] = span * freq / rise;
  s.turn[0] = -fall / rise;
  s.turn[1] = -rise / fall;
  s.shift[0] = magn * s.turn[0] - magn;
  s.shift[1] = magn - magn * s.turn[1];
  s.back[0] = span / fall;
  s.back[1] = -(span / rise);
  return s;
}

VEK_INLINE Wave startAt(double phase, double magn, double asym) {
  const double fall = kPi + asym;
  if (phase < fall) return {magn * (1 - 2 * phase / fall), false};
  return {magn * (2 * (phase - fall) / (kPi - asym) - 1), true};
}

VEK_INLINE bool beyondPeak(double value, bool rising, double top) { return rising ? value > top : value < -top; }

VEK_INLINE void advance(Wave& w, const Shape& s) {
  w.value += s.step[w.rising];
  if (!beyondPeak(w.value, w.rising, s.top)) return;
  const double reflected = w.value * s.turn[w.rising] + s.shift[w.rising];
  if (beyondPeak(reflected, !w.rising, s.top)) {
    w.value += s.back[w.rising];
  } else {
    w.value = reflected;
    w.rising = !w.rising;
  }
}

// Until the peak a slope is a chain of additions, and if its last value has not passed the peak none before has: kRun
// values are formed at once and one comparison accepts them.
constexpr int kRun = 8;

struct Run {
  double x[kRun + 1];
};
VEK_INLINE Run runFrom(Wave w, const Shape& s) {
  Run r;
  r.x[0] = w.value;
  const double step = s.step[w.rising];
#pragma GCC unroll 8
  for (int k = 0; k < kRun; ++k) r.x[k + 1] = r.x[k] + step;
  return r;
}
VEK_INLINE bool staysOnSlope(const Run& r, Wave w, double top) { return !beyondPeak(r.x[kRun], w.rising, top); }

VEK_INLINE void fillTriangle(float* dst, int len, const Shape& s, double phase, double asym) {
  Wave w = startAt(phase, s.top, asym);
  for (ptrdiff_t n = 0; n < len;) {
    if (n + kRun <= len) {
      const Run r = runFrom(w, s);
      if (staysOnSlope(r, w, s.top)) {
#pragma GCC unroll 8
        for (int k = 0; k < kRun; ++k) dst[n + k] = float(r.x[k]);
        w.value = r.x[kRun];
        n += kRun;
        continue;
      }
    }
    const ptrdiff_t end = n + kRun < len ? n + kRun : len;
    for (; n < end; ++n) {
      dst[n] = float(w.value);
      advance(w, s);
    }
  }
}

VEK_INLINE void fillTriangle(Vek32fc* dst, int len, const Shape& s, double phase, double asym) {
  double quarter = phase + (kTwoPi + kPi + asym) / 2;
  if (quarter >= kTwoPi) quarter -= kTwoPi;
  Wave re = startAt(phase, s.top, asym), im = startAt(quarter, s.top, asym);
  for (ptrdiff_t n = 0; n < len;) {
    if (n + kRun <= len) {
      const Run r = runFrom(re, s), q = runFrom(im, s);
      if (staysOnSlope(r, re, s.top) && staysOnSlope(q, im, s.top)) {
#pragma GCC unroll 8
        for (int k = 0; k < kRun; ++k) dst[n + k] = {float(r.x[k]), float(q.x[k])};
        re.value = r.x[kRun];
        im.value = q.x[kRun];
        n += kRun;
        continue;
      }
    }
    const ptrdiff_t end = n + kRun < len ? n + kRun : len;
    for (; n < end; ++n) {
      dst[n] = {float(re.value), float(im.value)};
      advance(re, s);
      advance(im, s);
    }
  }
}

template <class D>
VEK_INLINE VekStatus triangle(D* dst, int len, float magn, float freq, float asym, float* phase) {
  if (!phase) return vekStsNullPtrErr;
  if (magn <= 0) return vekStsTrnglMagnErr;
  if (freq < 0 || freq >= 0.5f) return vekStsTrnglFreqErr;
  if (double(asym) < -kPi || double(asym) >= kPi) return vekStsTrnglAsymErr;
  const float start = *phase;
  if (outsidePeriod(start)) return vekStsTrnglPhaseErr;
  if (!dst) return vekStsNullPtrErr;
  if (len < 1) return vekStsSizeErr;
  *phase = advancedPhase(start, freq, len);
  fillTriangle(dst, len, shapeOf(magn, freq, asym), start, asym);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksTriangle_Direct_32f(Vek32f* pDst, int len, Vek32f magn, Vek32f rFreq, Vek32f asym, Vek32f* pPhase) {
  return triangle(pDst, len, magn, rFreq, asym, pPhase);
}
VekStatus veksTriangle_Direct_32fc(Vek32fc* pDst, int len, Vek32f magn, Vek32f rFreq, Vek32f asym, Vek32f* pPhase) {
  return triangle(pDst, len, magn, rFreq, asym, pPhase);
}

}  // namespace vek::VEK_SLOT
