// SPDX-License-Identifier: Apache-2.0
// The scaled-result rule on packs: an exact result r, times 2^(-scaleFactor), rounded to nearest with ties to even,
// clamped to the type. An operation is a functor on packs with
//
//   clamped(x...)              r clamped to the type: the whole work at scale factor 0. A negative factor shifts the
//                              clamped value on, which clamps to the same end as shifting r itself would.
//   rounded<Deep>(x..., s)     the rule for a positive factor, whose constants s holds
//   shortened(x...)            the same for the one factor kShort that has a shorter way; kShort is 0 if there is none
//   kZeroFrom                  the least factor that makes every result 0
//   kDeepFrom                  the least factor that needs Deep, a slower way around an overflow; kZeroFrom if none
//   kClamping                  what clamped() weighs; rounding is heavy, negative factors and Deep are rare
//
// mapScaled chooses the case once; the loops are straight code.
#ifndef VEK_VECTOR_SCALED_H
#define VEK_VECTOR_SCALED_H

#include "core/simd/checks.h"
#include "core/simd/convert.h"
#include "core/simd/driver.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

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

// ---- rounding shifts to the right -----------------------------------------------------------------------------------

// Constants of a positive scale factor, at most the width of a lane.
template <class T>
struct RightShift {
  ShiftCount<T> count;
  Pack<T> belowHalf;  // 2^(factor-1) - 1
  Pack<T> one;

  VEK_INLINE explicit RightShift(int s) : count(s) {
    belowHalf = broadcast(T((UnsignedOf<T>(1) << (s - 1)) - 1));
    one = broadcast(T(1));
  }
};

// Rounding where r + 2^(s-1) cannot overflow: adding just less than a half rounds ties down, so that the quotient's own
// low bit, added before the shift is repeated, lifts the odd ones. Where the first addition carried into that bit, the
// rest is too small for the second to carry again.
template <class T>
VEK_INLINE Pack<T> roundShift(Pack<T> r, const RightShift<T>& s) {
  const Pack<T> u = r + s.belowHalf;
  return (u + ((u >> s.count) & s.one)) >> s.count;
}

// ---- bytes in 16-bit lanes -----------------------------------------------------------------------------------------

template <int Short, int ZeroFrom, int DeepFrom = ZeroFrom>
struct ByteScaled {
  using Element = uint8_t;
  using Scale = RightShift<uint16_t>;
  static constexpr int kShort = Short, kZeroFrom = ZeroFrom, kDeepFrom = DeepFrom;
  static constexpr Weight kClamping = kLight;
};

VEK_INLINE Two<uint16_t> widenBytes(Pack<uint8_t> a) {
  const Two<uint8_t> w = interleaveInHalves(a, zeros<uint8_t>());
  return {bits<uint16_t>(w.a), bits<uint16_t>(w.b)};
}
// Values below 2^15, clamped to bytes.
VEK_INLINE Pack<uint8_t> narrowBytes(Pack<uint16_t> a, Pack<uint16_t> b) {
  return narrowInHalves<uint8_t>(bits<int16_t>(a), bits<int16_t>(b));
}

// ---- 64-bit results ------------------------------------------------------------------------------------------------

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

// ---- the choice of the case ----------------------------------------------------------------------------------------

// `map` runs a functor on packs over the vectors of the call, of which dst is the destination; Op::Scale holds the
// constants of a positive factor.
// A rare case, out of line. It has copies of what it needs: nothing that a loop holds in registers may escape.
template <class F>
VEK_NOINLINE void outOfLine(const F& rare) {
  const F copy = rare;
  copy();
}

template <class Op, class D, class Map>
VEK_INLINE void mapScaled(Op op, int scaleFactor, D* dst, ptrdiff_t n, Map map) {
  using T = typename Op::Element;
  if (scaleFactor == 0) {
    map(weighted<Op::kClamping>([op](auto... x) VEK_LAMBDA { return op.clamped(x...); }));
  } else if (scaleFactor < 0) {
    outOfLine([op, scaleFactor, map]() VEK_LAMBDA {
      const LeftShift<T> shift(-int64_t(scaleFactor));
      map(weighted<kRare>([&](auto... x) VEK_LAMBDA { return shift(op.clamped(x...)); }));
    });
  } else if (scaleFactor >= Op::kZeroFrom) {
    __builtin_memset(dst, 0, size_t(n) * sizeof(D));
  } else if (Op::kShort != 0 && scaleFactor == Op::kShort) {
    if constexpr (Op::kShort != 0) map([op](auto... x) VEK_LAMBDA { return op.shortened(x...); });
  } else if (Op::kDeepFrom < Op::kZeroFrom && scaleFactor >= Op::kDeepFrom) {
    if constexpr (Op::kDeepFrom < Op::kZeroFrom) {
      outOfLine([op, scaleFactor, map]() VEK_LAMBDA {
        const typename Op::Scale s(scaleFactor);
        map(weighted<kRare>([&](auto... x) VEK_LAMBDA { return op.template rounded<true>(x..., s); }));
      });
    }
  } else {
    const typename Op::Scale s(scaleFactor);
    map(weighted<kHeavy>([&](auto... x) VEK_LAMBDA { return op.template rounded<false>(x..., s); }));
  }
}

// The vectors of a call, complex ones by whole elements.
template <class F, class D, class... S>
VEK_INLINE void mapElements(F f, D* dst, ptrdiff_t n, const S*... src) {
  const auto held = weighted<kWeightOf<F>>([f](auto... x) VEK_LAMBDA { return f(inRegister(x)...); });
  if constexpr (kSame<D, Vek32fc> || kSame<D, Vek32sc>) {
    mapComplex(held, dst, n, src...);
  } else {
    mapPacks(held, dst, n, src...);
  }
}

template <class T>
VEK_INLINE Pack<T> broadcastElement(T x) {
  return broadcast(x);
}
VEK_INLINE Pack<float> broadcastElement(Vek32fc x) { return broadcastPair(x.re, x.im); }
VEK_INLINE Pack<int32_t> broadcastElement(Vek32sc x) { return broadcastPair(x.re, x.im); }

// An operation with its second operand the same everywhere.
template <class Op>
struct WithConstant : Op {
  using T = typename Op::Element;
  Pack<T> c;

  VEK_INLINE explicit WithConstant(Pack<T> value) : c(value) {}
  VEK_INLINE Pack<T> clamped(Pack<T> x) const { return Op::clamped(x, c); }
  VEK_INLINE Pack<T> shortened(Pack<T> x) const { return Op::shortened(x, c); }
  template <bool Deep, class S>
  VEK_INLINE Pack<T> rounded(Pack<T> x, const S& s) const {
    return Op::template rounded<Deep>(x, c, s);
  }
};

// ---- whole functions ------------------------------------------------------------------------------------------------

template <class Op, class E>
VEK_INLINE VekStatus scaledTwo(const E* a, const E* b, E* dst, int len, int scaleFactor) {
  if (const VekStatus status = checkVectors(len, a, b, dst)) return status;
  mapScaled(Op(), scaleFactor, dst, len, [=](auto f) VEK_LAMBDA { mapElements(f, dst, len, a, b); });
  return vekStsNoErr;
}

template <class Op, class E>
VEK_INLINE VekStatus scaledConstant(const E* src, E val, E* dst, int len, int scaleFactor) {
  if (const VekStatus status = checkVectors(len, src, dst)) return status;
  const WithConstant<Op> op(broadcastElement(val));
  mapScaled(op, scaleFactor, dst, len, [=](auto f) VEK_LAMBDA { mapElements(f, dst, len, src); });
  return vekStsNoErr;
}

template <class F, class E, class... S>
VEK_INLINE VekStatus mapChecked(F f, E* dst, int len, const S*... src) {
  if (const VekStatus status = checkVectors(len, src..., dst)) return status;
  mapElements(f, dst, len, src...);
  return vekStsNoErr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
