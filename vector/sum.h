// SPDX-License-Identifier: Apache-2.0
// Sums and differences under the scaled-result rule, in lanes no wider than the data: the half sum floor(r / 2) fits
// where r itself does not, and r's low bit is the exclusive-or of the operands'.
#ifndef VEK_VECTOR_SUM_H
#define VEK_VECTOR_SUM_H

#include "vector/scaled.h"

namespace vek::VEK_SLOT {
namespace {

// Constants of a factor s >= 2 that rounds a half sum by the remaining s - 1 bits.
template <class T>
struct HalfShift {
  using U = UnsignedOf<T>;
  ShiftCount<T> count;
  ShiftCount<U> unsignedCount;
  Pack<T> mask, belowHalf, one;

  VEK_INLINE explicit HalfShift(int s) : count(s - 1), unsignedCount(s - 1) {
    mask = broadcast(T((UnsignedOf<T>(1) << (s - 1)) - 1));
    belowHalf = broadcast(T((UnsignedOf<T>(1) << (s - 2)) - 1));
    one = broadcast(T(1));
  }

  // Quotient and remainder apart, so that nothing overflows. The bit that the half sum has lost (the low one of
  // `parity`) lifts a tie just as an odd quotient does.
  VEK_INLINE Pack<T> operator()(Pack<T> half, Pack<T> parity) const {
    const Pack<T> q = half >> count;
    const Pack<T> rest = (half & mask) + ((parity | q) & one) + belowHalf;
    return q + bits<T>(bits<U>(rest) >> unsignedCount);
  }
};

// What sum and difference of signed elements share; Op gives clamped() and half().
template <class Op, class T>
struct HalfScaled {
  using Element = T;
  using Scale = HalfShift<T>;
  static constexpr int kShort = 1, kZeroFrom = 8 * int(sizeof(T)) + 1, kDeepFrom = kZeroFrom;
  static constexpr Weight kClamping = sizeof(T) == 2 ? kLight : kHeavy;

  static VEK_INLINE Pack<T> shortened(Pack<T> a, Pack<T> b) {
    const Pack<T> h = Op::half(a, b);
    const Pack<T> up = h & (a ^ b) & broadcast(T(1));
    if constexpr (sizeof(T) == 2) {
      return addSaturated(h, up);
    } else {
      const Pack<T> sum = h + up;
      return sum + bits<T>(h > sum);  // 2^31, from the greatest difference alone, goes back to 2^31 - 1
    }
  }
  template <bool Deep>
  static VEK_INLINE Pack<T> rounded(Pack<T> a, Pack<T> b, const Scale& s) {
    return s(Op::half(a, b), a ^ b);
  }
};

template <class T>
struct Sum : HalfScaled<Sum<T>, T> {
  static VEK_INLINE Pack<T> half(Pack<T> a, Pack<T> b) { return (a & b) + ((a ^ b) >> 1); }
  static VEK_INLINE Pack<T> clamped(Pack<T> a, Pack<T> b) {
    if constexpr (sizeof(T) == 2) {
      return addSaturated(a, b);
    } else {
      const Pack<T> sum = a + b;
      return selectNegative((sum ^ a) & (sum ^ b), LeftShift<T>::saturation(a), sum);
    }
  }
};

template <class T>
struct Difference : HalfScaled<Difference<T>, T> {
  static VEK_INLINE Pack<T> half(Pack<T> a, Pack<T> b) { return ((a ^ b) >> 1) - (~a & b); }
  static VEK_INLINE Pack<T> clamped(Pack<T> a, Pack<T> b) {
    if constexpr (sizeof(T) == 2) {
      return subSaturated(a, b);
    } else {
      const Pack<T> difference = a - b;
      return selectNegative((a ^ b) & (a ^ difference), LeftShift<T>::saturation(a), difference);
    }
  }
};

template <>
struct Sum<uint8_t> : ByteScaled<1, 10> {
  using P = Pack<uint8_t>;
  static VEK_INLINE P clamped(P a, P b) { return addSaturated(a, b); }
  static VEK_INLINE P shortened(P a, P b) {
    const P up = averageUp(a, b);  // one too many where a tie was lifted to an odd value
    return up - ((a ^ b) & up & broadcast(uint8_t(1)));
  }
  template <bool Deep>
  static VEK_INLINE P rounded(P a, P b, const Scale& s) {
    const Two<uint16_t> x = widenBytes(a), y = widenBytes(b);
    return narrowBytes(roundShift(x.a + y.a, s), roundShift(x.b + y.b, s));
  }
};

// Negative differences give 0 at every factor: clamp first, then round what is left.
template <>
struct Difference<uint8_t> : ByteScaled<1, 10> {
  using P = Pack<uint8_t>;
  static VEK_INLINE P clamped(P a, P b) { return subSaturated(a, b); }
  static VEK_INLINE P shortened(P a, P b) { return Sum<uint8_t>::shortened(clamped(a, b), zeros<uint8_t>()); }
  template <bool Deep>
  static VEK_INLINE P rounded(P a, P b, const Scale& s) {
    const Two<uint16_t> r = widenBytes(clamped(a, b));
    return narrowBytes(roundShift(r.a, s), roundShift(r.b, s));
  }
};

// The difference with its operands exchanged.
template <class T>
struct DifferenceReversed : Difference<T> {
  using D = Difference<T>;
  static VEK_INLINE Pack<T> clamped(Pack<T> a, Pack<T> b) { return D::clamped(b, a); }
  static VEK_INLINE Pack<T> shortened(Pack<T> a, Pack<T> b) { return D::shortened(b, a); }
  template <bool Deep>
  static VEK_INLINE Pack<T> rounded(Pack<T> a, Pack<T> b, const typename D::Scale& s) {
    return D::template rounded<Deep>(b, a, s);
  }
};

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
