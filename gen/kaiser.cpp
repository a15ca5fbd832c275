// SPDX-License-Identifier: Apache-2.0
// The Kaiser window.
#include <math.h>

#include "core/simd/elementary.h"
#include "gen/taper.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

template <int N>
VEK_INLINE Pack<double> polynomial(const double (&c)[N], Pack<double> x) {
  Pack<double> p = broadcast(c[N - 1]);
#pragma GCC unroll 9
  for (int i = N - 2; i >= 0; --i) p = broadcast(c[i]) + x * p;
  return p;
}

// The modified Bessel function I0(x), x >= 0, by Abramowitz and Stegun 9.8.1 below 3.75 and 9.8.2 above.
VEK_INLINE Pack<double> besselI0(Pack<double> x) {
  constexpr double below[] = {1.0, 3.5156229, 3.0899424, 1.2067492, 0.2659732, 0.0360768, 0.0045813};
  constexpr double above[] = {0.39894228,  0.01328592, 0.00225319,  -0.00157565, 0.00916281,
                              -0.02057706, 0.02635537, -0.01647633, 0.00392377};
  const Mask<double> small = x < broadcast(3.75);
  const Pack<double> t = broadcast(0.26666666666666666) * x, nearZero = polynomial(below, t * t);
  if (all(small)) return nearZero;
  // Lanes of the other kind get an argument that raises no flag.
  const Pack<double> y = select(small, broadcast(3.75), x);
  const Pack<double> far = exponential(y) / squareRoot(y) * polynomial(above, broadcast(3.75) / y);
  return select(small, nearZero, far);
}

struct Kaiser {
  double last, alpha, scale;

  // The weights k .. k+3. Behind the end of the window, in lanes that no element uses, they are those of its end.
  VEK_INLINE Pack<double> operator()(int k) const {
    const Pack<double> n = int32sToDouble(half(iota<int32_t>() + broadcast(int32_t(k)), 0));
    const Pack<double> square = n * (broadcast(last) - n), none = zeros<double>();
    const Pack<double> x = magnitude(squareRoot(select(square < none, none, square)) * broadcast(alpha));
    return besselI0(x) * broadcast(scale);
  }
};

template <class T>
VEK_INLINE VekStatus kaiser(const T* src, T* dst, int len, float alpha) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if ((len - 1) * 0.5 * fabs(double(alpha)) > 38.0) return vekStsHugeWinErr;
  const double middle = 0.5 * double(float(len - 1) * alpha);
  alignas(32) double peak[4];
  store(peak, besselI0(broadcast(fabs(middle))));
  const Kaiser weight = {double(len - 1), alpha, 1.0 / peak[0]};
  taper(src, dst, len, [&](int k) VEK_LAMBDA { return Group<double, 2>{{weight(k), weight(k + 4)}}; });
  return vekStsNoErr;
}

}  // namespace

VekStatus veksWinKaiser_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f alpha) {
  return kaiser(pSrc, pDst, len, alpha);
}
VekStatus veksWinKaiser_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f alpha) {
  return kaiser(pSrc, pDst, len, alpha);
}

}  // namespace vek::VEK_SLOT
