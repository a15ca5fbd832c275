// SPDX-License-Identifier: Apache-2.0
// Complex numbers of the filter designers: std::complex would leave weak symbols in the library.
#ifndef VEK_DESIGN_COMPLEX_H
#define VEK_DESIGN_COMPLEX_H

#include <math.h>

namespace vek {
namespace {

template <class R>
struct ComplexOf {
  R re, im;
};
using Complex = ComplexOf<double>;

template <class R>
inline ComplexOf<R> operator+(ComplexOf<R> a, ComplexOf<R> b) {
  return {a.re + b.re, a.im + b.im};
}
template <class R>
inline ComplexOf<R> operator-(ComplexOf<R> a, ComplexOf<R> b) {
  return {a.re - b.re, a.im - b.im};
}
template <class R>
inline ComplexOf<R> operator-(ComplexOf<R> a) {
  return {-a.re, -a.im};
}
template <class R>
inline ComplexOf<R> operator*(ComplexOf<R> a, ComplexOf<R> b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}
template <class R>
inline ComplexOf<R> operator*(R a, ComplexOf<R> b) {
  return {a * b.re, a * b.im};
}
// R. L. Smith, "Algorithm 116: complex division", 1962: neither overflows nor underflows on the way.
template <class R>
inline ComplexOf<R> operator/(ComplexOf<R> a, ComplexOf<R> b) {
  if ((b.re < 0 ? -b.re : b.re) >= (b.im < 0 ? -b.im : b.im)) {
    const R q = b.im / b.re, d = b.re + b.im * q;
    return {(a.re + a.im * q) / d, (a.im - a.re * q) / d};
  }
  const R q = b.re / b.im, d = b.re * q + b.im;
  return {(a.re * q + a.im) / d, (a.im * q - a.re) / d};
}
inline Complex real(double x) { return {x, 0}; }
inline Complex conj(Complex a) { return {a.re, -a.im}; }
inline double magnitude(Complex a) { return hypot(a.re, a.im); }
inline Complex unit(double phase) { return {cos(phase), sin(phase)}; }

// The root with a real part that is not negative.
inline Complex squareRoot(Complex a) {
  const double m = sqrt((magnitude(a) + fabs(a.re)) / 2);
  if (m == 0) return {0, 0};
  if (a.re >= 0) return {m, a.im / (2 * m)};
  return {fabs(a.im) / (2 * m), copysign(m, a.im)};
}

}  // namespace
}  // namespace vek

#endif
