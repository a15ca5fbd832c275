// SPDX-License-Identifier: Apache-2.0
#include "core/simd/checks.h"
#include "gen/indexed.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

constexpr double kHalfPi = 1.5707963267948966;

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
VEK_INLINE Pack<double> sine(Pack<double> x) {
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

// The angle (pi/2 / len) * n * n of four indices and its sine.
VEK_INLINE Pack<double> chirp(__m128i index, double magn, double rate) {
  const Pack<double> n = int32sToDouble(index);
  return broadcast(magn) * sine(broadcast(rate) * n * n);
}
VEK_INLINE Group<double, 2> chirp(Pack<int32_t> index, double magn, double rate) {
  return {{chirp(half(index, 0), magn, rate), chirp(half(index, 1), magn, rate)}};
}

VEK_INLINE void storeAs(float* dst, Group<double, 2> x) { store(dst, toFloat(x)); }
VEK_INLINE void storeAs(int32_t* dst, Group<double, 2> x) {
  const Pack<double> h = broadcast(0.5);
  store(dst, toInt32Truncated(Group<double, 2>{{x.p[0] + (h | signOf(x.p[0])), x.p[1] + (h | signOf(x.p[1]))}}));
}

template <class D>
VEK_INLINE VekStatus jaehne(D* dst, int len, D magn) {
  if (const VekStatus s = checkVectors(len, dst)) return s;
  if (magn < 0) return vekStsJaehneErr;
  const double size = len == 1 ? 0 : double(magn), rate = kHalfPi / len;
  fillIndexed<8>(dst, len, 0, [=](D* out, Pack<int32_t> index) VEK_LAMBDA { storeAs(out, chirp(index, size, rate)); });
  return vekStsNoErr;
}

}  // namespace

VekStatus veksVectorJaehne_32f(Vek32f* pDst, int len, Vek32f magn) { return jaehne(pDst, len, magn); }
VekStatus veksVectorJaehne_32s(Vek32s* pDst, int len, Vek32s magn) { return jaehne(pDst, len, magn); }

}  // namespace vek::VEK_SLOT
