// SPDX-License-Identifier: Apache-2.0
// Scale factors and rounding: powers of two as multipliers, shifts that clamp or round, floats rounded to integers by
// each mode, on packs and for the single results of reductions.
#ifndef VEK_CORE_SIMD_SCALE_H
#define VEK_CORE_SIMD_SCALE_H

#include "core/simd/convert.h"
#include "vek/types.h"

namespace vek::VEK_SLOT {
namespace {

// ---- the multiplier -------------------------------------------------------------------------------------------------

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

// ---- shifts to the left ---------------------------------------------------------------------------------------------

// x * 2^n clamped to the type, for any n from 1 up.
template <class T>
struct LeftShift {
  ShiftCount<T> count;

  VEK_INLINE explicit LeftShift(int64_t n) : count(n < int(8 * sizeof(T)) ? int(n) : int(8 * sizeof(T))) {}

  // What shifts back to itself kept every bit; the rest goes to the end that x's sign names.
  VEK_INLINE Pack<T> operator()(Pack<T> x) const {
    const Pack<T> y = x << count;
    return select((y >> count) == x, y, saturation(x));
  }
  // The largest value for x >= 0, the smallest for x < 0.
  static VEK_INLINE Pack<T> saturation(Pack<T> x) { return signOf(x) ^ broadcast(T(UnsignedOf<T>(-1) >> 1)); }
};

template <>
struct LeftShift<uint8_t> {
  int count;
  Pack<uint8_t> over;  // the least value that overflows

  VEK_INLINE explicit LeftShift(int64_t n) : count(n < 8 ? int(n) : 8) {
    over = broadcast(uint8_t((255 >> count) + 1));
  }
  VEK_INLINE Pack<uint8_t> operator()(Pack<uint8_t> x) const {
    return (x << count) | bits<uint8_t>(maxOf(x, over) == x);
  }
};

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

// ---- rounding shifts to the right -----------------------------------------------------------------------------------

// Constants of a positive scale factor, at most the width of a lane.
template <class T>
struct RightShift {
  ShiftCount<T> count;
  Pack<T> belowHalf;    // 2^(factor-1) - 1
  Pack<T> lowest, odd;  // 2^factor, the quotient's lowest bit in place; no value has it where the lane ends below it

  VEK_INLINE explicit RightShift(int s) : count(s) {
    using U = UnsignedOf<T>;
    const U bit = s < int(8 * sizeof(T)) ? U(U(1) << s) : U(0);
    belowHalf = broadcast(T((U(1) << (s - 1)) - 1));
    lowest = broadcast(T(bit));
    odd = broadcast(T(bit != 0 ? bit : 1));
  }
};

// Rounding where r + 2^(s-1) cannot overflow: just less than a half is added, which rounds ties down, and one more
// where the quotient is odd. A comparison finds that out for less than a second shift would.
template <class T>
VEK_INLINE Pack<T> roundShift(Pack<T> r, const RightShift<T>& s) {
  return (r + s.belowHalf - bits<T>((r & s.lowest) == s.odd)) >> s.count;
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

// ---- 64-bit results -------------------------------------------------------------------------------------------------

// Eight 64-bit values: those of the even and of the odd 32-bit lanes.
struct Wide {
  Pack<int64_t> even, odd;
};

VEK_INLINE Pack<int32_t> oddLanes(Pack<int32_t> a) { return bits<int32_t>(bits<uint64_t>(a) >> 32); }

VEK_INLINE Wide product(Pack<int32_t> a, Pack<int32_t> b) { return {mulEven(a, b), mulEven(oddLanes(a), oddLanes(b))}; }

VEK_INLINE Pack<int32_t> lowParts(Wide w) {
  return blendOdd(bits<int32_t>(w.even), bits<int32_t>(bits<uint64_t>(w.odd) << 32));
}
VEK_INLINE Pack<int32_t> highParts(Wide w) {
  return blendOdd(bits<int32_t>(bits<uint64_t>(w.even) >> 32), bits<int32_t>(w.odd));
}

VEK_INLINE Pack<int32_t> clampWide(Wide w) {
  const Pack<int32_t> low = lowParts(w), high = highParts(w);
  return select(high == signOf(low), low, LeftShift<int32_t>::saturation(high));
}

// Constants of a positive scale factor 1..63 for 64-bit lanes. There is no arithmetic shift of these: values are moved
// up by 2^63 to be unsigned, shifted, and moved back by what the shift has left of the bias.
struct WideShift {
  ShiftCount<uint64_t> count;
  Pack<uint64_t> one, mask, belowHalf, bias, biasedBelowHalf, rest;

  VEK_INLINE explicit WideShift(int s) : count(s) {
    const uint64_t top = uint64_t(1) << 63;
    one = broadcast(uint64_t(1));
    mask = broadcast((uint64_t(1) << s) - 1);
    belowHalf = broadcast((uint64_t(1) << (s - 1)) - 1);
    bias = broadcast(top);
    biasedBelowHalf = bias + belowHalf;
    rest = broadcast(top >> s);
  }

  // |r| <= 2^62 + 2^32 and factor <= 62: the bias leaves room for the half, and disappears from the quotient's low bit.
  VEK_INLINE Pack<int64_t> roundRoomy(Pack<int64_t> r) const {
    const Pack<uint64_t> u = bits<uint64_t>(r) + biasedBelowHalf;
    return bits<int64_t>(((u + ((u >> count) & one)) >> count) - rest);
  }
  // Any r: the quotient and the remainder apart.
  VEK_INLINE Pack<int64_t> roundFull(Pack<int64_t> r) const {
    const Pack<uint64_t> u = bits<uint64_t>(r) ^ bias;
    const Pack<uint64_t> q = (u >> count) - rest;
    return bits<int64_t>(q + (((u & mask) + (q & one) + belowHalf) >> count));
  }
  VEK_INLINE Wide roundRoomy(Wide w) const { return {roundRoomy(w.even), roundRoomy(w.odd)}; }
  VEK_INLINE Wide roundFull(Wide w) const { return {roundFull(w.even), roundFull(w.odd)}; }
};

// ---- floats to integers ---------------------------------------------------------------------------------------------

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

// ---- single values --------------------------------------------------------------------------------------------------

VEK_INLINE int32_t saturate32(int64_t x) { return x > INT32_MAX ? INT32_MAX : x < INT32_MIN ? INT32_MIN : int32_t(x); }

// x / 2^shift to the nearest integer, ties to even; 1 <= shift <= 63, |x| at most 2^62.
VEK_INLINE int64_t shiftNearest(int64_t x, int shift) {
  const int64_t odd = int64_t(uint64_t(x) >> shift & 1);
  return (x + ((int64_t(1) << (shift - 1)) - 1 + odd)) >> shift;
}

// x * 2^shift clamped to 32 bits, for any shift >= 0.
VEK_INLINE int32_t shiftUpSaturated(int64_t x, int64_t shift) {
  if (x == 0) return 0;
  if (shift > 31 || x > INT32_MAX || x < INT32_MIN) return x > 0 ? INT32_MAX : INT32_MIN;
  return saturate32(x * (int64_t(1) << shift));
}

// Clamped to 32 bits and rounded to nearest, ties to even.
VEK_INLINE int32_t roundedResult(double x) {
  if (x >= 2147483647.0) return INT32_MAX;
  if (x <= -2147483648.0) return INT32_MIN;
  const double shifted = x + (x < 0 ? -0.5 : 0.5);
  int64_t whole = int64_t(shifted);
  if (whole % 2 != 0 && double(whole) == shifted) whole += x < 0 ? 1 : -1;
  return int32_t(whole);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
