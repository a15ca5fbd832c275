// SPDX-License-Identifier: Apache-2.0
// Sine and cosine, and the angle of a point, in single precision within 2 ulp for every finite argument. Polynomials of
// our own in plain operations, each rounded: every slot and every position of a vector gives the same bits.
#ifndef VEK_CORE_SIMD_TRIG_H
#define VEK_CORE_SIMD_TRIG_H

#include "core/simd/compare.h"
#include "core/simd/convert.h"

namespace vek::VEK_SLOT {
namespace {

// c[0] + c[1] z + c[2] z^2 + ... The terms from z^2 up go by even and odd powers apart: two chains, each half as long,
// keep the units busy, and what they round weighs little in the sum.
template <int N>
VEK_INLINE Pack<float> polynomial(Pack<float> z, const float (&c)[N]) {
  static_assert(N == 3 || N > 4);
  Pack<float> tail = broadcast(c[N - 1]);
  if constexpr (N > 4) {
    const Pack<float> z2 = z * z;
    Pack<float> p[2] = {broadcast(c[(N - 1) & ~1]), broadcast(c[((N - 2) & ~1) + 1])};
#pragma GCC unroll 16
    for (int i = N - 3; i >= 2; --i) p[i & 1] = p[i & 1] * z2 + broadcast(c[i]);
    tail = p[0] + p[1] * z;
  }
  return (tail * z + broadcast(c[1])) * z + broadcast(c[0]);
}

// ---- the angle of a point ------------------------------------------------------------------------------------------

// Minimax in relative error: arctan t = t - t * z * P(z), z = t^2, for t in [0, 1].
constexpr float kArctan[] = {0x1.5554dcp-2f, -0x1.9978ecp-3f, 0x1.230a96p-3f, -0x1.b4def2p-4f,
                             0x1.355226p-4f, -0x1.61f40ep-5f, 0x1.0c2192p-6f, -0x1.7ec05ep-9f};
constexpr float kHalfPi = 0x1.921fb6p+0f;
constexpr float kHalfPiRest = -0x1.de12cap-26f;  // (pi/2 - kHalfPi) / kHalfPi

// atan2(y, x) with the C library's results for zeros, infinities and NaN.
//
// The quotient t of the smaller magnitude by the larger gives an angle in the first octant; the others are 0, pi/2 or
// pi plus or minus that. The sum is ordered so that only its last addition rounds in the digits that count.
VEK_INLINE Pack<float> angleOf(Pack<float> y, Pack<float> x) {
  const Pack<float> one = broadcast(1.0f), halfPi = broadcast(kHalfPi);
  const Pack<float> ax = magnitude(x), ay = magnitude(y), sum = ax + ay;
  // 0/0 counts as 0 and inf/inf as 1: where the quotient is NaN the minimum is its second operand, 1 unless the sum has
  // a NaN of x or y.
  const Pack<float> quotient = minOf(minOf(ax, ay) / maxOf(ax, ay), minOf(one, maxOf(one, sum)));
  const Mask<float> steep = ay > ax;
  const Pack<float> side = signOf(x);
  const Pack<float> t = keep(sum != zeros<float>(), quotient) ^ signOf(bits<float>(steep)) ^ side;
  const Pack<float> z = t * t;
  const Pack<float> rest = t * z * polynomial(z, kArctan);

  // pi/2 where y is the larger, else 0 or pi by the sign of x.
  const Pack<float> base = halfPi - keep(~steep, halfPi ^ side);
  return ((base + t) + (base * broadcast(kHalfPiRest) - rest)) ^ signOf(y);
}

// ---- sine and cosine -----------------------------------------------------------------------------------------------

// An angle as quarter * pi/2 + high - excess, |high| within a little of pi/4; quarter counts modulo 4.
struct Reduced {
  Pack<float> high, excess;
  Pack<int32_t> quarter;
};

// sin r = r - r * z * S(z) and cos r = 1 - z * (1/2 - z * C(z)), z = r^2, for |r| up to pi/4.
constexpr float kSine[] = {0x1.555546p-3f, -0x1.110776p-7f, 0x1.9952fap-13f};
constexpr float kCosine[] = {0x1.55554ap-5f, -0x1.6c0c28p-10f, 0x1.99e80cp-16f};

// Up to here the products with the first two parts of pi/2 are exact: quarter has 7 bits, the parts 17.
constexpr float kMostInSingle = 200.0f;
constexpr float kHalfPiParts[] = {0x1.921fp+0f, 0x1.6a88p-17f, 0x1.0b4612p-34f};

VEK_INLINE Reduced reduceModerate(Pack<float> x) {
  // The sum's own low bits become the quarter, rounded to nearest.
  const Pack<float> magic = broadcast(0x1.8p+23f);
  const Pack<float> sum = x * broadcast(0x1.45f306p-1f) + magic;
  const Pack<float> k = sum - magic;
  const Pack<float> first = x - k * broadcast(kHalfPiParts[0]);
  const Pack<float> second = k * broadcast(kHalfPiParts[1]);
  const Pack<float> high = first - second;
  // The third part, less what the last difference lost.
  const Pack<float> excess = k * broadcast(kHalfPiParts[2]) - ((first - high) - second);
  return {high, excess, bits<int32_t>(sum)};
}

// Below this the quarter has 22 bits and its product with the first part of pi/2, of 30 bits, is exact.
constexpr float kMostInDouble = 6.0e6f;

VEK_INLINE Reduced reduceInDouble(Pack<float> x) {
  const Group<double, 2> wide = toDouble(x);
  Group<double, 2> k, r, rest;
#pragma GCC unroll 2
  for (int i = 0; i < 2; ++i) {
    k.p[i] = roundEven(wide.p[i] * broadcast(0x1.45f306dc9c883p-1));
    r.p[i] = (wide.p[i] - k.p[i] * broadcast(0x1.921fb54p+0)) - k.p[i] * broadcast(0x1.10b4611a62633p-30);
  }
  const Pack<float> high = toFloat(r);
  const Group<double, 2> back = toDouble(high);
#pragma GCC unroll 2
  for (int i = 0; i < 2; ++i) rest.p[i] = back.p[i] - r.p[i];
  return {high, toFloat(rest), toInt32Nearest(k)};
}

struct ReducedScalar {
  float high, excess;
  int32_t quarter;
};

// A finite |x| >= 2^-38, x = m * 2^e, times just those bits of 2/pi whose product with m * 2^e is worth less than 4
// quarters and not less than 2^-62 of one (Payne and Hanek, 1983). Infinities and NaN give NaN.
VEK_INLINE ReducedScalar reduceHuge(float x) {
  // 64 zeros, then the fraction of 2/pi.
  constexpr uint64_t twoOverPi[] = {0, 0xa2f9836e4e441529, 0xfc2757d1f534ddc0, 0xdb6295993c439041, 0xfe5163abdebbc561};
  uint32_t pattern;
  __builtin_memcpy(&pattern, &x, sizeof x);
  const unsigned exponent = pattern >> 23 & 0xFF;
  if (exponent == 0xFF) return {x - x, 0, 0};
  const uint64_t m = (pattern & 0x7FFFFF) | 0x800000;
  // The first bit that counts is the one that 2^e, e = exponent - 150, makes worth two quarters.
  const unsigned at = exponent - 150 + 62, shift = at % 64;
  const uint64_t* w = twoOverPi + at / 64;
  const uint64_t upper = shift == 0 ? w[0] : w[0] << shift | w[1] >> (64 - shift);
  const uint64_t lower = shift == 0 ? w[1] : w[1] << shift | w[2] >> (64 - shift);
  // The upper half of the product modulo 2^128, its top two bits the quarter.
  const uint64_t product = m * upper + (m * (lower >> 32) >> 32);
  const uint64_t quarter = (product + (uint64_t(1) << 61)) >> 62;
  const double magnitude = double(int64_t(product - (quarter << 62))) * 0x1.921fb54442d18p-62;
  const double r = pattern >> 31 ? -magnitude : magnitude;
  const float high = float(r);
  return {high, float(double(high) - r), pattern >> 31 ? -int32_t(quarter) : int32_t(quarter)};
}

// The rare packs that hold a large angle: out of line, by pointers.
VEK_NOINLINE void reduceLarge(const Pack<float>* angle, Reduced* r) {
  const Pack<float> x = *angle, m = magnitude(x);
  const Mask<float> large = ~(m <= broadcast(kMostInSingle));
  const Mask<float> huge = ~(m <= broadcast(kMostInDouble));
  const Reduced d = reduceInDouble(keep(~huge, x));
  r->high = select(large, d.high, r->high);
  r->excess = select(large, d.excess, r->excess);
  r->quarter = select(maskCast<int32_t>(large), d.quarter, r->quarter);
  if (!any(huge)) return;

  Lanes<float> high = lanesOf(r->high), excess = lanesOf(r->excess);
  Lanes<int32_t> quarter = lanesOf(r->quarter);
  const Lanes<float> xs = lanesOf(x);
  const uint32_t which = laneBits(huge);
  for (int i = 0; i < Pack<float>::lanes; ++i) {
    if ((which >> i & 1) == 0) continue;
    const ReducedScalar s = reduceHuge(xs[i]);
    high.x[i] = s.high;
    excess.x[i] = s.excess;
    quarter.x[i] = s.quarter;
  }
  *r = {load(high.x), load(excess.x), load(quarter.x)};
}

struct SineCosine {
  Pack<float> sine, cosine;
};

VEK_INLINE SineCosine sineCosineOf(Pack<float> angle) {
  Reduced r = reduceModerate(angle);
  if (!all(magnitude(angle) <= broadcast(kMostInSingle))) [[unlikely]] {
    Pack<float> x = angle;
    Reduced exact = r;
    reduceLarge(&x, &exact);
    r = exact;
  }
  const Pack<float> z = r.high * r.high;
  // What is taken from high is +0 where high is -0: a phase of -0 keeps its sign.
  const Pack<float> s = r.high - (r.high * z * polynomial(z, kSine) + r.excess);
  // The excess, at most half an ulp of high, moves the cosine by less than a third of an ulp and is left out.
  const Pack<float> c = broadcast(1.0f) - z * (broadcast(0.5f) - z * polynomial(z, kCosine));

  // Odd quarters exchange the two; the quarter's bit 1 is the sign of the sine, bits 0 and 1 make that of the cosine.
  const Pack<float> odd = bits<float>(r.quarter << 31);
  const Pack<float> change = bits<float>(signOf(bits<int32_t>(odd))) & (s ^ c);
  const Pack<float> sign = signOf(bits<float>(r.quarter << 30));
  return {s ^ change ^ sign, c ^ change ^ (sign ^ odd)};
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
