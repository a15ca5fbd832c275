// SPDX-License-Identifier: Apache-2.0
// Numbers of twice a double's precision, each the sum of two doubles, and the sine and cosine formed of them: the same
// bits in every slot and with every C library. Recurrences that start from a single angle, and tables of roots, begin
// here.
#ifndef VEK_CORE_SIMD_DOUBLE_DOUBLE_H
#define VEK_CORE_SIMD_DOUBLE_DOUBLE_H

#include "core/simd/arithmetic.h"
#include "core/simd/compare.h"

namespace vek::VEK_SLOT {
namespace {

// D is double, or a pack of them.
template <class D>
struct DoubleDouble {
  D hi, lo;  // hi is the sum rounded
};

// The sum of two doubles; the first form for |a| >= |b|.
template <class D>
VEK_INLINE DoubleDouble<D> sumOfOrdered(D a, D b) {
  const D s = a + b;
  return {s, b - (s - a)};
}
template <class D>
VEK_INLINE DoubleDouble<D> sumOf(D a, D b) {
  const D s = a + b, t = s - a;
  return {s, (a - (s - t)) + (b - t)};
}

// Their product. Both ways are exact, so slots may differ in it.
VEK_INLINE Pack<double> allOf(Pack<double>, double c) { return broadcast(c); }
VEK_INLINE double allOf(double, double c) { return c; }
VEK_INLINE Pack<double> fusedRest(Pack<double> a, Pack<double> b, Pack<double> p) {
  return zeros<double>() - fusedNegMulAdd(a, b, p);
}
VEK_INLINE double fusedRest(double a, double b, double p) { return __builtin_fma(a, b, -p); }
template <class D>
VEK_INLINE DoubleDouble<D> productOf(D a, D b) {
  const D p = a * b;
  if constexpr (kFma) {
    return {p, fusedRest(a, b, p)};
  } else {
    const D split = allOf(a, 134217729.0);  // 2^27 + 1: leaves halves of 26 bits
    const D ta = split * a, ah = ta - (ta - a), al = a - ah;
    const D tb = split * b, bh = tb - (tb - b), bl = b - bh;
    return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
  }
}

template <class D>
VEK_INLINE DoubleDouble<D> operator*(DoubleDouble<D> a, DoubleDouble<D> b) {
  const DoubleDouble<D> p = productOf(a.hi, b.hi);
  return sumOfOrdered(p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi));
}
template <class D>
VEK_INLINE DoubleDouble<D> operator+(DoubleDouble<D> a, DoubleDouble<D> b) {
  const DoubleDouble<D> s = sumOf(a.hi, b.hi);
  return sumOfOrdered(s.hi, s.lo + (a.lo + b.lo));
}
template <class D>
VEK_INLINE DoubleDouble<D> operator-(DoubleDouble<D> a) {
  return {allOf(a.hi, 0) - a.hi, allOf(a.hi, 0) - a.lo};
}

// The series of cosine (First = 0) and of sine over x (First = 1) in s = x^2, x below 0.8. The four largest terms need
// both halves; the others, below 2^-17 of the first, the upper one.
template <int First>
VEK_INLINE DoubleDouble<Pack<double>> circularSeries(DoubleDouble<Pack<double>> s) {
  constexpr auto inverse = [](int n) {
    double f = 1;
    for (int k = 2; k <= n; ++k) f *= k;
    return n / 2 % 2 == 0 ? 1 / f : -1 / f;
  };
  const auto both = [](double hi, double lo) VEK_LAMBDA {
    return DoubleDouble<Pack<double>>{broadcast(hi), broadcast(lo)};
  };
  Pack<double> rest = broadcast(inverse(20 + First));
#pragma GCC unroll 6
  for (int n = 18; n >= 8; n -= 2) rest = rest * s.hi + broadcast(inverse(n + First));
  // 1/6! and 1/7!, 1/4! and 1/5!, 1/2! and 1/3!
  constexpr double six = First ? -0x1.a01a01a01a01ap-13 : -0x1.6c16c16c16c17p-10;
  constexpr double sixLow = First ? -0x1.a01a01a01a01ap-73 : 0x1.f49f49f49f49fp-65;
  constexpr double four = First ? 0x1.1111111111111p-7 : 0x1.5555555555555p-5;
  constexpr double fourLow = First ? 0x1.1111111111111p-63 : 0x1.5555555555555p-59;
  constexpr double two = First ? -0x1.5555555555555p-3 : -0.5, twoLow = First ? -0x1.5555555555555p-57 : 0;
  DoubleDouble<Pack<double>> sum = productOf(rest, s.hi) + both(six, sixLow);
  sum = s * sum + both(four, fourLow);
  sum = s * sum + both(two, twoLow);
  return s * sum + both(1, 0);
}

struct SineCosine {
  DoubleDouble<Pack<double>> sine, cosine;
};

// sin(x) and cos(x) for 0 <= x < 11, to about 70 bits: their upper halves are rounded to nearest but for one argument
// in ten thousand or fewer, which gets the neighbour. The multiple of pi/2 nearest to x is taken off in three parts;
// products with the first two are exact.
VEK_INLINE SineCosine sineCosine(DoubleDouble<Pack<double>> x) {
  const auto constant = [](double c) VEK_LAMBDA { return broadcast(c); };
  // Adding 1.5 * 2^52 rounds to an integer and leaves it in the lowest bits.
  const Pack<double> big = constant(0x1.8p52), shifted = x.hi * constant(0.6366197723675814) + big, k = shifted - big;
  const auto near =
      sumOf(x.hi - k * constant(0x1.921FB54442D00p0), zeros<double>() - k * constant(0x1.8469898CC5140p-48));
  const auto r = sumOfOrdered(near.hi, near.lo + (x.lo - k * constant(0x1.80DC1CD129025p-95)));
  const auto s = r * r, c = circularSeries<0>(s), q = circularSeries<1>(s) * r;
  const Pack<double> pairs = k * constant(0.5);
  const Mask<double> even = (pairs + big) - big == pairs;
  const Pack<uint64_t> quarter = bits<uint64_t>(shifted), sign = broadcast(uint64_t(1) << 63);
  const auto turned = [&](auto a, auto b, Pack<uint64_t> turn) VEK_LAMBDA {
    const Pack<uint64_t> flip = (turn << 62) & sign;
    return DoubleDouble<Pack<double>>{bits<double>(bits<uint64_t>(select(even, a.hi, b.hi)) ^ flip),
                                      bits<double>(bits<uint64_t>(select(even, a.lo, b.lo)) ^ flip)};
  };
  return {turned(q, c, quarter), turned(c, q, quarter + broadcast(uint64_t(1)))};
}

// The same of a single angle.
template <class D>
struct SineAndCosine {
  D sine, cosine;
};
VEK_NOINLINE SineAndCosine<DoubleDouble<double>> sineCosine(DoubleDouble<double> x) {
  const SineCosine y = sineCosine(DoubleDouble<Pack<double>>{broadcast(x.hi), broadcast(x.lo)});
  return {{lanesOf(y.sine.hi)[0], lanesOf(y.sine.lo)[0]}, {lanesOf(y.cosine.hi)[0], lanesOf(y.cosine.lo)[0]}};
}
VEK_INLINE SineAndCosine<double> sineCosine(double x) {
  const SineAndCosine<DoubleDouble<double>> y = sineCosine(DoubleDouble<double>{x, 0});
  return {y.sine.hi, y.cosine.hi};
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
