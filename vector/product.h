// SPDX-License-Identifier: Apache-2.0
// Products under the scaled-result rule.
#ifndef VEK_VECTOR_PRODUCT_H
#define VEK_VECTOR_PRODUCT_H

#include "vector/scaled.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
struct Product;

// 8 bits: r fills 16 bits without a sign. Up to factor 8 they have room for half of 2^factor; from 9 on r gives up its
// lowest bit first, keeping it as a sticky one.
template <>
struct Product<uint8_t> : ByteScaled<0, 17, 9> {
  static constexpr Weight kClamping = kHeavy;
  using P = Pack<uint8_t>;
  using W = Pack<uint16_t>;

  static VEK_INLINE P clamped(P a, P b) {
    const Two<uint16_t> x = widenBytes(a), y = widenBytes(b);
    const W top = broadcast(uint16_t(255));
    return narrowBytes(minOf(x.a * y.a, top), minOf(x.b * y.b, top));
  }
  template <bool Deep>
  static VEK_INLINE P rounded(P a, P b, const Scale& s) {
    const Two<uint16_t> x = widenBytes(a), y = widenBytes(b);
    return narrowBytes(roundLanes<Deep>(x.a * y.a, s), roundLanes<Deep>(x.b * y.b, s));
  }

 private:
  template <bool Deep>
  static VEK_INLINE W roundLanes(W r, const Scale& s) {
    if constexpr (Deep) {
      const RightShift<uint16_t> less(s.count.n - 1);
      return roundShift((r >> 1) | (r & broadcast(uint16_t(1))), less);
    } else {
      return roundShift(r, s);
    }
  }
};

// 16 bits: 32-bit products from their two halves.
template <>
struct Product<int16_t> {
  using Element = int16_t;
  using Scale = RightShift<int32_t>;
  using P = Pack<int16_t>;
  // Fractions of 15 bits have a rounding multiplication.
  static constexpr int kShort = 15, kZeroFrom = 31, kDeepFrom = kZeroFrom;
  static constexpr Weight kClamping = kHeavy;

  static VEK_INLINE Two<int32_t> exact(P a, P b) {
    const Two<int16_t> r = interleaveInHalves(a * b, mulHigh(a, b));
    return {bits<int32_t>(r.a), bits<int32_t>(r.b)};
  }
  static VEK_INLINE P clamped(P a, P b) {
    const Two<int32_t> r = exact(a, b);
    return narrowInHalves<int16_t>(r.a, r.b);
  }
  // It rounds ties up: their low bit is cleared again. Its one overflow, the square of -2^15, gives -2^15, which
  // nothing else does.
  static VEK_INLINE P shortened(P a, P b) {
    const P low = a * b, up = mulRound15(a, b), least = broadcast(int16_t(-32768));
    const P tie = bits<int16_t>(low + low == least) & broadcast(int16_t(1));
    return (~tie & up) ^ bits<int16_t>(up == least);
  }
  template <bool Deep>
  static VEK_INLINE P rounded(P a, P b, const Scale& s) {
    const Two<int32_t> r = exact(a, b);
    return narrowInHalves<int16_t>(roundShift(r.a, s), roundShift(r.b, s));
  }
};

// 32 bits and wider results: Op gives exact(x...) in 64 bits, no more than a little over 2^62 in magnitude.
template <class Op>
struct WideScaled {
  using Element = int32_t;
  using Scale = WideShift;
  static constexpr int kShort = 0, kZeroFrom = 63, kDeepFrom = kZeroFrom;
  static constexpr Weight kClamping = kHeavy;

  template <class... P>
  static VEK_INLINE Pack<int32_t> clamped(P... x) {
    return clampWide(Op::exact(x...));
  }
  template <bool Deep, class A, class B>
  static VEK_INLINE Pack<int32_t> rounded(A a, B b, const Scale& s) {
    return clampWide(s.roundRoomy(Op::exact(a, b)));
  }
  template <bool Deep, class A, class B, class C>
  static VEK_INLINE Pack<int32_t> rounded(A a, B b, C c, const Scale& s) {
    return clampWide(s.roundRoomy(Op::exact(a, b, c)));
  }
};

VEK_INLINE Wide wideProduct(Pack<int32_t> a, Pack<int32_t> b) {
  return {mulEven(a, b), mulEven(oddLanes(a), oddLanes(b))};
}

template <>
struct Product<int32_t> : WideScaled<Product<int32_t>> {
  static VEK_INLINE Wide exact(Pack<int32_t> a, Pack<int32_t> b) { return wideProduct(a, b); }
};

struct ProductSum : WideScaled<ProductSum> {
  static VEK_INLINE Wide exact(Pack<int32_t> a, Pack<int32_t> b, Pack<int32_t> sum) {
    // A product with 1 is the short way to 64 bits.
    const Wide p = wideProduct(a, b), w = wideProduct(sum, broadcast(int32_t(1)));
    return {p.even + w.even, p.odd + w.odd};
  }
};

// A real element, twice in `a`, times both parts of a complex one.
struct RealTimesComplex : WideScaled<RealTimesComplex> {
  static VEK_INLINE Wide exact(Pack<int32_t> a, Pack<int32_t> b) { return {mulEven(a, b), mulEven(a, oddLanes(b))}; }
};

// Interleaved complex elements: the real part in the even lanes, the imaginary part in the odd ones. The sums take the
// whole of 64 bits, and one of them a little more: 2^63, where all four parts are -2^31. No other sum wraps to -2^63,
// and 2^63 - 1 gives the same result at every factor.
struct ComplexProduct {
  using Element = int32_t;
  using Scale = WideShift;
  using P = Pack<int32_t>;
  static constexpr int kShort = 0, kZeroFrom = 64, kDeepFrom = kZeroFrom;
  static constexpr Weight kClamping = kHeavy;

  static VEK_INLINE Wide exact(P a, P b) {
    const P aIm = oddLanes(a), bIm = oddLanes(b);
    const Pack<int64_t> im = mulEven(a, bIm) + mulEven(aIm, b);
    const Pack<int64_t> wrapped = bits<int64_t>(im == broadcast(INT64_MIN));
    return {mulEven(a, b) - mulEven(aIm, bIm), im + wrapped};
  }
  static VEK_INLINE P clamped(P a, P b) { return clampWide(exact(a, b)); }
  template <bool Deep>
  static VEK_INLINE P rounded(P a, P b, const Scale& s) {
    return clampWide(s.roundFull(exact(a, b)));
  }
};

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
