// SPDX-License-Identifier: Apache-2.0
// The phase that tone and triangle carry from call to call.
#ifndef VEK_GEN_PHASE_H
#define VEK_GEN_PHASE_H

#include <math.h>

#include "core/simd/level.h"

namespace vek::VEK_SLOT {
namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kTwoPi = 6.283185307179586;
constexpr double kPerTwoPi = 0.15915494309189535;

VEK_INLINE bool outsidePeriod(float phase) { return phase < 0 || double(phase) >= kTwoPi; }

// The phase after len samples. What rounds to the end of the period, or is no number, becomes 0: the next call would
// refuse it.
VEK_INLINE float advancedPhase(double phase, double freq, int len) {
  const double p = len * kTwoPi * freq + phase;
  const float next = float(p - floor(p * kPerTwoPi) * kTwoPi);
  return next >= 0 && double(next) < kTwoPi ? next : 0.0f;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
