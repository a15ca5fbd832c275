// SPDX-License-Identifier: Apache-2.0
// Scale factors and rounding modes of the conversions, on packs.
#ifndef VEK_VECTOR_CONVERT_SCALE_H
#define VEK_VECTOR_CONVERT_SCALE_H

#include "core/simd/convert.h"
#include "vek/types.h"

namespace vek::VEK_SLOT {
namespace {

// 2^-scaleFactor as halving or doubling 1.0 step by step gives it: denormal, then 0 (the last halving is a tie with 0),
// infinity. Built from its bits, because forming a denormal would depend on the modes of the processor.
VEK_INLINE float scaleMultiplierFloat(int scaleFactor) {
  uint32_t pattern = 0;
  if (scaleFactor < -127) {
    pattern = 0x7F800000;
  } else if (scaleFactor < 127) {
    pattern = uint32_t(127 - scaleFactor) << 23;
  } else if (scaleFactor < 150) {
    pattern = uint32_t(1) << (149 - scaleFactor);
  }
  float m;
  __builtin_memcpy(&m, &pattern, sizeof m);
  return m;
}
VEK_INLINE double scaleMultiplierDouble(int scaleFactor) {
  uint64_t pattern = 0;
  if (scaleFactor < -1023) {
    pattern = uint64_t(0x7FF) << 52;
  } else if (scaleFactor < 1023) {
    pattern = uint64_t(1023 - scaleFactor) << 52;
  } else if (scaleFactor < 1075) {
    pattern = uint64_t(1) << (1074 - scaleFactor);
  }
  double m;
  __builtin_memcpy(&m, &pattern, sizeof m);
  return m;
}
template <class T>
VEK_INLINE T scaleMultiplier(int scaleFactor) {
  if constexpr (kSame<T, float>) {
    return scaleMultiplierFloat(scaleFactor);
  } else {
    return scaleMultiplierDouble(scaleFactor);
  }
}

// The largest value below one half: added to a magnitude before truncation it rounds ties away from zero, where one
// half itself would carry the largest value below 0.5 up to 1.
template <class T>
constexpr T kBelowHalf = kSame<T, float> ? T(0.49999997f) : T(0.49999999999999994);

template <class T>
VEK_INLINE Pack<T> awayFromZero(Pack<T> y) {
  return y + (signOf(y) | broadcast(kBelowHalf<T>));
}

// To 32-bit integers; NaN and what is out of their range give the most negative one.
template <int Mode>
VEK_INLINE Pack<int32_t> roundToInt32(Pack<float> y) {
  if constexpr (Mode == vekRoundTowardZero) {
    return toInt32Truncated(y);
  } else if constexpr (Mode == vekRoundNearestEven) {
    return toInt32Nearest(y);
  } else {
    return toInt32Truncated(awayFromZero(y));
  }
}
// Four integers in 16 bytes.
template <int Mode>
VEK_INLINE __m128i roundToInt32(Pack<double> y) {
  if constexpr (Mode == vekRoundTowardZero) {
    return doubleToInt32Truncated(y);
  } else if constexpr (Mode == vekRoundNearestEven) {
    return doubleToInt32Nearest(y);
  } else {
    return doubleToInt32Truncated(awayFromZero(y));
  }
}

// Prepares y for conversion to 32-bit integers that are then saturated to D. The minimum keeps values past the 32-bit
// range away, and its operands are ordered so that a NaN stays one: it converts to the most negative integer, which
// saturation to an unsigned type makes 0; signed destinations need a mask.
template <class D>
VEK_INLINE Pack<float> limitFor(Pack<float> y) {
  constexpr float high = sizeof(D) == 1 ? (kSigned<D> ? 127 : 255) : (kSigned<D> ? 32767 : 65535);
  const Pack<float> limited = minOf(broadcast(high), y);
  if constexpr (kSigned<D>) {
    return keep(y == y, limited);
  } else {
    return limited;
  }
}

// x * 2^-s for 1 <= s <= width of T, rounded by the mode: the quotient rounded down, plus one where the fraction passes
// the threshold of the mode. The fraction is moved to the top of the lane, where nothing can overflow.
template <int Mode, class T>
VEK_INLINE Pack<T> shiftRounded(Pack<T> x, int s) {
  using S = SignedOf<T>;
  constexpr int width = 8 * int(sizeof(T));
  constexpr UnsignedOf<T> half = UnsignedOf<T>(1) << (width - 1);
  const Pack<T> q = x >> s;
  const Pack<S> fraction = bits<S>(x << (width - s)) ^ broadcast(S(half));  // minus one half, in units of 2^-width
  const Pack<S> sign = kSigned<T> ? bits<S>(signOf(x)) : zeros<S>();
  Pack<S> threshold;
  if constexpr (Mode == vekRoundTowardZero) {
    threshold = sign ^ broadcast(S(half - 1));  // a negative quotient goes up for any fraction
  } else if constexpr (Mode == vekRoundNearestEven) {
    threshold = zeros<S>() - bits<S>(q & broadcast(T(1)));  // a tie goes up from an odd quotient
  } else {
    threshold = ~sign;  // a tie goes up for x >= 0
  }
  return q - bits<T>(fraction > threshold);
}

// x * 2^k for k >= 0, with values that leave [low, high] still outside it, so that a saturation can follow. k is at
// most the number of bits in the range, and the lane has room for one bit more.
template <class T>
struct ShiftUp {
  Pack<T> low, high;
  int k;
  VEK_INLINE ShiftUp(T rangeLow, T rangeHigh, int count)
      : low(broadcast(T(rangeLow >> count))), high(broadcast(T((rangeHigh >> count) + 1))), k(count) {}
  VEK_INLINE Pack<T> operator()(Pack<T> x) const { return minOf(maxOf(x, low), high) << k; }
};

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
