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

#include "core/simd/map.h"
#include "core/simd/scale.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

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

// ---- the choice of the case ----------------------------------------------------------------------------------------

// A rare case, out of line. It has copies of what it needs: nothing that a loop holds in registers may escape.
template <class F>
VEK_NOINLINE void outOfLine(const F& rare) {
  const F copy = rare;
  copy();
}

// `map` runs a functor on packs over the vectors of the call, of which dst is the destination; Op::Scale holds the
// constants of a positive factor.
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
  mapScaled(Op(), scaleFactor, dst, len, [=](auto f) VEK_LAMBDA { mapElements(held(f), dst, len, a, b); });
  return vekStsNoErr;
}

template <class Op, class E>
VEK_INLINE VekStatus scaledConstant(const E* src, E val, E* dst, int len, int scaleFactor) {
  if (const VekStatus status = checkVectors(len, src, dst)) return status;
  const WithConstant<Op> op(broadcastElement(val));
  mapScaled(op, scaleFactor, dst, len, [=](auto f) VEK_LAMBDA { mapElements(held(f), dst, len, src); });
  return vekStsNoErr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
