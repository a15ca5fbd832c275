// SPDX-License-Identifier: Apache-2.0
// Thresholds of complex elements, which compare the squared magnitude and keep the phase.
#include "core/simd/checks.h"
#include "core/simd/convert.h"
#include "core/simd/driver.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

using Complex = Pack<float>;   // four interleaved elements
using Factors = Pack<double>;  // one value for each of them

VEK_INLINE VekStatus check(const Vek32fc* src, const Vek32fc* dst, int len, float level) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  return level < 0 ? vekStsThreshNegLevelErr : vekStsNoErr;
}

VEK_INLINE Mask<float> isZero(Complex x) {
  const Mask<float> zero = x == zeros<float>();
  return zero & asMask<float>(swapPairs(bits<float>(zero)));
}

// The range in which a square formed in single precision keeps its 24 bits.
constexpr float kLeastNormal = 1.17549435e-38f, kGreatest = 3.40282347e38f;

template <class T>
VEK_INLINE Mask<T> inNormalRange(Pack<T> m) {
  return (m >= broadcast(T(kLeastNormal))) & (m <= broadcast(T(kGreatest)));
}

VEK_INLINE double squaredLevel(float level) {
  const float square = level * level;
  return square >= kLeastNormal && square <= kGreatest ? double(square) : double(level) * double(level);
}

// The squared magnitudes as divisors: those of single precision, m, as long as they are normal numbers; formed anew in
// double precision where they underflowed or overflowed, lest the factor become 0, infinity or NaN.
VEK_INLINE Factors divisors(Complex x, Pack<float> m) {
  const __m128i once = unpackLow<8>(half(shuffle32<0x88>(m), 0), half(shuffle32<0x88>(m), 1));
  const Factors single = floatsToDouble(once);
  const Group<double, 2> wide = toDouble(x);
  const Two<double> z = deinterleave(wide.p[0], wide.p[1]);
  return select(inNormalRange(single), single, squaredMagnitude(z.a, z.b));
}

// Both parts of each element times its factor, in double precision with one rounding.
VEK_INLINE Complex timesFactor(Complex x, Factors f) {
  const Group<double, 2> wide = toDouble(x);
  const Two<double> twice = interleave(f, f);
  return toFloat(Group<double, 2>{{wide.p[0] * twice.a, wide.p[1] * twice.b}});
}

VEK_INLINE Complex conjugate(Complex x) { return x ^ broadcastPair(0.0f, -0.0f); }

// Elements whose square is on the replaced side get magnitude `level`. Square root and division take far longer than
// all else: packs without such an element go without.
template <bool Less>
VEK_INLINE VekStatus limit(const Vek32fc* src, Vek32fc* dst, int len, float level) {
  if (const VekStatus s = check(src, dst, len, level)) return s;
  const Pack<float> l2 = broadcast(level * level), atZero = broadcastPair(level, 0.0f);
  const Factors target = broadcast(squaredLevel(level));
  mapComplex(
      [=](Complex x) VEK_LAMBDA {
        const Pack<float> m = squaredMagnitude(x);
        const Mask<float> kept = Less ? m >= l2 : m <= l2;
        if (all(kept)) return x;
        Complex moved = timesFactor(x, squareRoot(target / divisors(x, m)));
        if constexpr (Less) moved = select(isZero(x), atZero, moved);
        return select(kept, x, moved);
      },
      dst, len, src);
  return vekStsNoErr;
}

VEK_INLINE VekStatus below(const Vek32fc* src, Vek32fc* dst, int len, float level) {
  return limit<true>(src, dst, len, level);
}
VEK_INLINE VekStatus above(const Vek32fc* src, Vek32fc* dst, int len, float level) {
  return limit<false>(src, dst, len, level);
}
VEK_INLINE VekStatus either(const Vek32fc* src, Vek32fc* dst, int len, float level, VekCompareOp relOp) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (relOp == vekCompareLess) return ::veksThreshold_LT_32fc(src, dst, len, level);
  if (relOp == vekCompareGreater) return ::veksThreshold_GT_32fc(src, dst, len, level);
  return vekStsBadArgErr;
}

template <bool Less>
VEK_INLINE VekStatus byValue(const Vek32fc* src, Vek32fc* dst, int len, float level, Vek32fc value) {
  if (const VekStatus s = check(src, dst, len, level)) return s;
  const Pack<float> l2 = broadcast(level * level), v = broadcastPair(value.re, value.im);
  mapComplex(
      [=](Complex x) VEK_LAMBDA {
        const Pack<float> m = squaredMagnitude(x);
        return select(Less ? m >= l2 : m <= l2, x, v);
      },
      dst, len, src);
  return vekStsNoErr;
}
VEK_INLINE VekStatus belowByValue(const Vek32fc* src, Vek32fc* dst, int len, float level, Vek32fc value) {
  return byValue<true>(src, dst, len, level, value);
}
VEK_INLINE VekStatus aboveByValue(const Vek32fc* src, Vek32fc* dst, int len, float level, Vek32fc value) {
  return byValue<false>(src, dst, len, level, value);
}

// (re / m, -im / m), in single precision while m is a normal number of it.
VEK_INLINE Complex reciprocal(Complex x, Pack<float> m) {
  const Complex c = conjugate(x);
  const Mask<float> normal = inNormalRange(m);
  if (all(normal)) return c / m;
  const Factors d = divisors(x, m);
  const Two<double> twice = interleave(d, d);
  const Group<double, 2> wide = toDouble(c);
  return select(normal, c / m, toFloat(Group<double, 2>{{wide.p[0] / twice.a, wide.p[1] / twice.b}}));
}

VEK_INLINE VekStatus invertAll(const Vek32fc* src, Vek32fc* dst, int len) {
  const Pack<float> atZero = broadcastPair(__builtin_inff(), 0.0f);
  Pack<int32_t> anyZero = zeros<int32_t>();
  mapComplex(
      [&anyZero, atZero](Complex x) VEK_LAMBDA {
        const Mask<float> zero = isZero(x);
        anyZero = anyZero | bits<int32_t>(zero);
        return select(zero, atZero, reciprocal(x, squaredMagnitude(x)));
      },
      dst, len, src);
  return any(asMask<int32_t>(anyZero)) ? vekStsInvZero : vekStsNoErr;
}

VEK_INLINE VekStatus invert(const Vek32fc* src, Vek32fc* dst, int len, float level) {
  if (const VekStatus s = check(src, dst, len, level)) return s;
  if (level == 0) return invertAll(src, dst, len);
  const Pack<float> l2 = broadcast(level * level), atZero = broadcastPair(1.0f / level, 0.0f);
  const Factors wideLevel = broadcast(double(level)), one = broadcast(1.0);
  mapComplex(
      [=](Complex x) VEK_LAMBDA {
        const Pack<float> m = squaredMagnitude(x);
        const Mask<float> beyond = m > l2;
        const Complex inverse = reciprocal(x, m);
        if (all(beyond)) return inverse;
        const Complex limited = timesFactor(conjugate(x), one / (wideLevel * squareRoot(divisors(x, m))));
        return select(beyond, inverse, select(isZero(x), atZero, limited));
      },
      dst, len, src);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksThreshold_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level, VekCompareOp relOp) {
  return either(pSrc, pDst, len, level, relOp);
}
VekStatus veksThreshold_LT_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level) {
  return below(pSrc, pDst, len, level);
}
VekStatus veksThreshold_GT_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level) {
  return above(pSrc, pDst, len, level);
}
VekStatus veksThreshold_LTVal_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level, Vek32fc value) {
  return belowByValue(pSrc, pDst, len, level, value);
}
VekStatus veksThreshold_GTVal_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level, Vek32fc value) {
  return aboveByValue(pSrc, pDst, len, level, value);
}
VekStatus veksThreshold_LTInv_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level) {
  return invert(pSrc, pDst, len, level);
}

}  // namespace vek::VEK_SLOT
