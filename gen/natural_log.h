// SPDX-License-Identifier: Apache-2.0
// The natural logarithm of packs of doubles: the same bits in every slot, within one unit in the last place.
#ifndef VEK_GEN_NATURAL_LOG_H
#define VEK_GEN_NATURAL_LOG_H

#include "core/simd/convert.h"

namespace vek::VEK_SLOT {
namespace {

// ln x for normal x in (2^-64, 2^64). With x = 2^k (1 + f), 1 + f in [0.707, 1.414], and t = f/(2 + f), ln(1 + f) =
// 2 artanh t = f - (f^2/2 - t*(f^2/2 + R)), where R = 2/3 t^2 + 2/5 t^4 + ...: all but f, which is exact, is small.
VEK_INLINE Pack<double> naturalLog(Pack<double> x) {
  const auto constant = [](double c) VEK_LAMBDA { return broadcast(c); };
  constexpr uint64_t low = 0x3FE6A09E00000000, exponentUnit = uint64_t(1) << 52;
  // The exponent is counted from 2^-64, so that it is never negative while it is an integer.
  const Pack<uint64_t> shifted = bits<uint64_t>(x) - broadcast(low - 64 * exponentUnit);
  const Pack<uint64_t> count = shifted >> 52;
  const Pack<uint64_t> fraction = bits<uint64_t>(x) - (count << 52) + broadcast(64 * exponentUnit);
  const Pack<double> k = bits<double>(count | broadcast(uint64_t(0x4330000000000000))) - constant(0x1p52 + 64);
  const Pack<double> f = bits<double>(fraction) - constant(1.0), t = f / (constant(2.0) + f), s = t * t;
  Pack<double> p = constant(2.0 / 23);
#pragma GCC unroll 10
  for (int n = 21; n >= 3; n -= 2) p = p * s + constant(2.0 / n);
  const Pack<double> half = constant(0.5) * f * f;
  const Pack<double> small = t * (half + s * p) + k * constant(0x1.EF35793C76730p-45);
  return k * constant(0x1.62E42FEFA3800p-1) - ((half - small) - f);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
