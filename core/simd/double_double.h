// SPDX-License-Identifier: Apache-2.0
// Numbers of twice a double's precision, each the sum of two doubles, and the sine and cosine formed of them: the same
// bits in every slot and with every C library. Recurrences that start from a single angle begin here.
#ifndef VEK_CORE_SIMD_DOUBLE_DOUBLE_H
#define VEK_CORE_SIMD_DOUBLE_DOUBLE_H

#include "core/simd/arithmetic.h"
#include "core/simd/compare.h"

namespace vek::VEK_SLOT {
namespace {

struct DoubleDouble {
  Pack<double> hi, lo;  // hi is the sum rounded
};

// The sum of two doubles; the first form for |a| >= |b|.
VEK_INLINE DoubleDouble sumOfOrdered(Pack<double> a, Pack<double> b) {
  const Pack<double> s = a + b;
  return {s, b - (s - a)};
}
VEK_INLINE DoubleDouble sumOf(Pack<double> a, Pack<double> b) {
  const Pack<double> s = a + b, t = s - a;
  return {s, (a - (s - t)) + (b - t)};
}

// Their product. Both ways are exact, so slots may differ in it.
VEK_INLINE DoubleDouble productOf(Pack<double> a, Pack<double> b) {
  const Pack<double> p = a * b;
  if constexpr (kFma) {
    return {p, zeros<double>() - fusedNegMulAdd(a, b, p)};
  } else {
    const Pack<double> split = broadcast(134217729.0);  // 2^27 + 1: leaves halves of 26 bits
    const Pack<double> ta = split * a, ah = ta - (ta - a), al = a - ah;
    const Pack<double> tb = split * b, bh = tb - (tb - b), bl = b - bh;
    return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
  }
}

VEK_INLINE DoubleDouble operator*(DoubleDouble a, DoubleDouble b) {
  const DoubleDouble p = productOf(a.hi, b.hi);
  return sumOfOrdered(p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi));
}
VEK_INLINE DoubleDouble operator+(DoubleDouble a, DoubleDouble b) {
  const DoubleDouble s = sumOf(a.hi, b.hi);
  return sumOfOrdered(s.hi, s.lo + (a.lo + b.lo));
}
VEK_INLINE DoubleDouble operator-(DoubleDouble a) { return {zeros<double>() - a.hi, zeros<double>() - a.lo}; }

// The series of cosine (First = 0) and of sine over x (First = 1) in s = x^2, x below 0.8. The four largest terms need
// both halves; the others, below 2^-17 of the first, the upper one.
template <int First>
VEK_INLINE DoubleDouble circularSeries(DoubleDouble s) {
  constexpr auto inverse = [](int n) {
    double f = 1;
    for (int k = 2; k <= n; ++k) f *= k;
    return n / 2 % 2 == 0 ? 1 / f : -1 / f;
  };
  const auto both = [](double hi, double lo) VEK_LAMBDA { return DoubleDouble{broadcast(hi), broadcast(lo)}; };
  Pack<double> rest = broadcast(inverse(20 + First));
#pragma GCC unroll 6
  for (int n = 18; n >= 8; n -= 2) rest = rest * s.hi + broadcast(inverse(n + First));
  // 1/6! and 1/7!, 1/4! and 1/5!, 1/2! and 1/3!
  constexpr double six = First ? -0x1.a01a01a01a01ap-13 : -0x1.6c16c16c16c17p-10;
  constexpr double sixLow = First ? -0x1.a01a01a01a01ap-73 : 0x1.f49f49f49f49fp-65;
  constexpr double four = First ? 0x1.1111111111111p-7 : 0x1.5555555555555p-5;
  constexpr double fourLow = First ? 0x1.1111111111111p-63 : 0x1.5555555555555p-59;
  constexpr double two = First ? -0x1.5555555555555p-3 : -0.5, twoLow = First ? -0x1.5555555555555p-57 : 0;
  DoubleDouble sum = productOf(rest, s.hi) + both(six, sixLow);
  sum = s * sum + both(four, fourLow);
  sum = s * sum + both(two, twoLow);
  return s * sum + both(1, 0);
}

struct SineCosine {
  Pack<double> sine, cosine;
};

// sin(x) and cos(x) for 0 <= x < 11, rounded to nearest but for one argument in ten thousand or fewer, which gets the
// neighbour. The multiple of pi/2 nearest to x is taken off in three parts; products with the first two are exact.
VEK_INLINE SineCosine sineCosine(Pack<double> x) {
  const auto constant = [](double c) VEK_LAMBDA { return broadcast(c); };
  // Adding 1.5 * 2^52 rounds to an integer and leaves it in the lowest bits.
  const Pack<double> big = constant(0x1.8p52), shifted = x * constant(0.6366197723675814) + big, k = shifted - big;
  const DoubleDouble near =
      sumOf(x - k * constant(0x1.921FB54442D00p0), zeros<double>() - k * constant(0x1.8469898CC5140p-48));
  const DoubleDouble r = sumOfOrdered(near.hi, near.lo - k * constant(0x1.80DC1CD129025p-95));
  const DoubleDouble s = r * r;
  const Pack<double> c = circularSeries<0>(s).hi, q = (circularSeries<1>(s) * r).hi;
  const Pack<double> pairs = k * constant(0.5);
  const Mask<double> even = (pairs + big) - big == pairs;
  const Pack<uint64_t> quarter = bits<uint64_t>(shifted), sign = broadcast(uint64_t(1) << 63);
  const auto withSign = [&](Pack<double> y, Pack<uint64_t> turn)
                            VEK_LAMBDA { return bits<double>(bits<uint64_t>(y) ^ ((turn << 62) & sign)); };
  return {withSign(select(even, q, c), quarter), withSign(select(even, c, q), quarter + broadcast(uint64_t(1)))};
}

// The same of a single angle.
struct Direction {
  double sine, cosine;
};
VEK_NOINLINE Direction sineCosine(double x) {
  const SineCosine y = sineCosine(broadcast(x));
  return {lanesOf(y.sine)[0], lanesOf(y.cosine)[0]};
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
