// SPDX-License-Identifier: Apache-2.0
// What designs of finite filters say of their bands.
#ifndef VEK_DESIGN_BANDS_H
#define VEK_DESIGN_BANDS_H

#include <math.h>
#include <stdint.h>

#include "vekx/design.h"

namespace vek {
namespace {

constexpr double kPi = 3.14159265358979323846;

inline bool isEdge(double f) { return f > 0 && f < 0.5; }

// Edges that rise from 0 to 0.5, finite gains, weights above 0.
inline VekStatus checkBands(const Vek64f* edges, const Vek64f* gains, int64_t gainCount, const Vek64f* weights,
                            int64_t bands) {
  for (int64_t i = 0; i < 2 * bands; ++i)
    if (!(edges[i] >= 0 && edges[i] <= 0.5) || (i > 0 && !(edges[i - 1] < edges[i]))) return vekStsFilterFrequencyErr;
  for (int64_t i = 0; i < gainCount; ++i)
    if (!isfinite(gains[i])) return vekStsWeightErr;
  for (int64_t i = 0; weights && i < bands; ++i)
    if (!(weights[i] > 0 && isfinite(weights[i]))) return vekStsWeightErr;
  return vekStsNoErr;
}

}  // namespace
}  // namespace vek

#endif
