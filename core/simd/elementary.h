// SPDX-License-Identifier: Apache-2.0
// Sine and cosine, and the angle of a point, in single precision within 2 ulp for every finite argument; exponential
// and logarithm in double within one. Polynomials of our own in plain operations, each rounded: every slot and every
// position of a vector gives the same bits.
#ifndef VEK_CORE_SIMD_ELEMENTARY_H
#define VEK_CORE_SIMD_ELEMENTARY_H

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

// ---- sine in double -------------------------------------------------------------------------------------------------

// 1/n! with the sign of x^n in the series. A constant of its own for each n: left to itself the compiler multiplies the
// factorials out in the loop.
constexpr double reciprocalFactorial(int n) {
  double f = 1;
  for (int k = 2; k <= n; ++k) f *= k;
  return n / 2 % 2 == 0 ? 1 / f : -1 / f;
}
template <int N>
constexpr double kCoefficient = reciprocalFactorial(N);

// The rest of the series, from x^N down, in s = x^2.
template <int N>
VEK_INLINE Pack<double> sineSeries(Pack<double> s) {
  if constexpr (N == 21) {
    return broadcast(kCoefficient<21>);
  } else {
    return sineSeries<N + 2>(s) * s + broadcast(kCoefficient<N>);
  }
}

// sin(x) for 0 <= x < 2^32. The multiple of pi nearest to x is taken off in three parts: products of the multiple,
// below 2^31, with the first two, of 22 bits each, are exact, and so are the differences. The sine of the rest is its
// Taylor series, whose remainder at pi/2 is below 2^-59.
VEK_INLINE Pack<double> sineOf(Pack<double> x) {
  const auto constant = [](double c) VEK_LAMBDA { return broadcast(c); };
  // Adding 1.5 * 2^52 rounds to an integer and leaves its parity in the lowest bit.
  const Pack<double> big = constant(6755399441055744.0);
  const Pack<double> shifted = x * constant(0.3183098861837907) + big, q = shifted - big;
  const Pack<double> near = x - q * constant(0x3243F6p-20) - q * constant(0x2A2216p-42);
  const Pack<double> r = near - q * constant(0x1.18469898CC517p-43);
  const Pack<double> s = r * r;
  const Pack<double> y = r + r * (s * sineSeries<3>(s));
  return bits<double>(bits<uint64_t>(y) ^ (bits<uint64_t>(shifted) << 63));
}

// ---- exponential and logarithm --------------------------------------------------------------------------------------

// e^x for 0 <= x < 700, within one unit in the last place and alike in every slot: 2^k times the Taylor series of e^r,
// |r| <= ln(2)/2, whose remainder is below 2^-57.
VEK_INLINE Pack<double> exponential(Pack<double> x) {
  const auto constant = [](double c) VEK_LAMBDA { return broadcast(c); };
  // Adding 1.5 * 2^52 rounds to an integer and leaves it in the lowest bits.
  const Pack<double> big = constant(6755399441055744.0);
  const Pack<double> shifted = x * constant(1.4426950408889634) + big, k = shifted - big;
  const Pack<double> r = x - k * constant(0x1.62E42FEFA3800p-1) - k * constant(0x1.EF35793C76730p-45);
  constexpr auto perFactorial = [](int n) {
    double f = 1;
    for (int i = 2; i <= n; ++i) f *= i;
    return 1 / f;
  };
  Pack<double> p = constant(perFactorial(13));
#pragma GCC unroll 11
  for (int n = 12; n >= 2; --n) p = p * r + constant(perFactorial(n));
  const Pack<double> e = constant(1.0) + (r + r * r * p);
  return e * bits<double>((bits<uint64_t>(shifted) << 52) + broadcast(uint64_t(1023) << 52));
}

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
