// SPDX-License-Identifier: Apache-2.0
// Recursive filters from analogue prototypes: poles and zeros of a low-pass with its edge at 1, moved to the band asked
// for, to the z-plane, and paired into sections of second order.
#include <string.h>

#include "design/complex.h"
#include "vekx/design.h"

namespace vek {
namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kMaxOrder = 32;

struct ZeroPole {
  int zeros = 0, poles = 0;
  Complex z[2 * kMaxOrder + 1], p[2 * kMaxOrder + 1];
  double gain = 1;

  int degree() const { return poles - zeros; }
  void zero(Complex x) { z[zeros++] = x; }
  void pole(Complex x) { p[poles++] = x; }
};

// The product of (at - root) over zeros divided by that over poles.
Complex response(const ZeroPole& f, Complex at) {
  Complex r = real(1);
  const int both = f.zeros < f.poles ? f.zeros : f.poles;  // side by side, so that neither product runs away
  for (int i = 0; i < both; ++i) r = r * ((at - f.z[i]) / (at - f.p[i]));
  for (int i = both; i < f.zeros; ++i) r = r * (at - f.z[i]);
  for (int i = both; i < f.poles; ++i) r = r / (at - f.p[i]);
  return r;
}

// ---- prototypes -----------------------------------------------------------------------------------------------------

// The angles of the poles of order N against the negative real axis, in units of pi / (2 N): from 1 - N by steps of 2.
double angle(int order, int k) { return kPi * (2 * k + 1 - order) / (2 * order); }

ZeroPole butterworth(int order) {
  ZeroPole f;
  for (int k = 0; k < order; ++k) f.pole(-unit(angle(order, k)));
  return f;
}

// sinh(mu + j t) and the like: an ellipse instead of the circle.
Complex onEllipse(double mu, double t) { return {-sinh(mu) * cos(t), -cosh(mu) * sin(t)}; }

// The ripple of a band: its extremes are 1 and 1 / sqrt(1 + epsilon^2).
double epsilonOf(double decibels) { return sqrt(expm1(decibels * (log(10.0) / 10))); }

// The gain at 0 is 1, or where the pass-band's ripple starts at its lower extreme that.
void settle(ZeroPole& f, double atZero) { f.gain = atZero / response(f, {0, 0}).re; }

ZeroPole chebyshev1(int order, double ripple) {
  ZeroPole f;
  const double epsilon = epsilonOf(ripple), mu = asinh(1 / epsilon) / order;
  for (int k = 0; k < order; ++k) f.pole(onEllipse(mu, angle(order, k)));
  settle(f, order % 2 ? 1 : 1 / sqrt(1 + epsilon * epsilon));
  return f;
}

ZeroPole chebyshev2(int order, double attenuation) {
  ZeroPole f;
  const double mu = asinh(epsilonOf(attenuation)) / order;
  for (int k = 0; k < order; ++k) {
    const double t = angle(order, k);
    f.pole(real(1) / onEllipse(mu, t));
    if (2 * k + 1 != order) f.zero({0, 1 / sin(t)});
  }
  settle(f, 1);
  return f;
}

// Moduli of the descending Landen transformation; S. J. Orfanidis, "Lecture notes on elliptic filter design", 2006.
struct Landen {
  static constexpr int kSteps = 8;
  double k[kSteps];

  // k1 is the complementary modulus, given beside k so that neither is formed as a small difference.
  Landen(double modulus, double complementary) {
    double m = modulus, c = complementary;
    for (double& next : k) {
      next = (m / (1 + c)) * (m / (1 + c));
      c = 2 * sqrt(c) / (1 + c);
      m = next;
    }
  }
  // cd of argument * K, or sn, from the cosine or sine of argument * pi / 2.
  Complex up(Complex w) const {
    for (int i = kSteps - 1; i >= 0; --i) w = ((1 + k[i]) * w) / (real(1) + k[i] * (w * w));
    return w;
  }
};

ZeroPole elliptic(int order, double ripple, double attenuation) {
  ZeroPole f;
  const double epsilon = epsilonOf(ripple), k1 = epsilon / epsilonOf(attenuation), c1 = sqrt((1 - k1) * (1 + k1));
  // The degree equation gives the complementary modulus of the filter.
  const Landen side(c1, k1);
  double c = pow(c1, order);
  for (int i = 1; i < order; i += 2) {
    const double s = side.up(real(sin(kPi * i / (2 * order)))).re;
    c *= s * s * s * s;
  }
  const double k = sqrt((1 - c) * (1 + c));
  // j v0 = sn^-1(j / epsilon, k1) / (N K1), on the imaginary axis all the way.
  double y = 1 / epsilon, m = k1;
  const Landen down(k1, c1);
  for (double next : down.k) {
    y = 2 * y / ((1 + next) * (1 + sqrt(1 + m * m * y * y)));
    m = next;
  }
  const double v = asinh(y) / order;
  const Landen main(k, c);
  for (int i = 0; i < order; ++i) {
    // cos(u + j v) for u from the angles of the poles; the odd one has u = pi/2.
    const double u = kPi / 2 - angle(order, i);
    const Complex cd = main.up({cos(u) * cosh(v), sin(u) * sinh(v)});
    f.pole({-cd.im, cd.re});
    if (2 * i + 1 != order) f.zero({0, -1 / (k * main.up(real(cos(u))).re)});
  }
  settle(f, order % 2 ? 1 : 1 / sqrt(1 + epsilon * epsilon));
  return f;
}

__extension__ typedef __float128 Quad;
using QuadComplex = ComplexOf<Quad>;

// The reverse Bessel polynomial over its derivative, by the recurrence t(n) = (2n - 1) t(n-1) + s^2 t(n-2), and the
// derivative t(n) - s t(n-1). Roots are badly conditioned in what the recurrence cancels, hence the precision.
QuadComplex newtonStep(int order, QuadComplex s) {
  QuadComplex before = {1, 0}, now = {1 + s.re, s.im};
  for (int n = 2; n <= order; ++n) {
    const QuadComplex next = Quad(2 * n - 1) * now + s * s * before;
    before = now;
    now = next;
  }
  return now / (now - s * before);
}

// All roots at once: O. Aberth, "Iteration methods for finding all zeros of a polynomial simultaneously", 1973.
ZeroPole bessel(int order, VekxBesselNorm norm) {
  QuadComplex s[kMaxOrder];
  for (int i = 0; i < order; ++i) {
    const Complex start = (0.8 * order + 0.3) * -unit(0.95 * angle(order, i) + 0.01);
    s[i] = {start.re, start.im};
  }
  for (int round = 0; round < 100; ++round) {
    Quad moved = 0;
    for (int i = 0; i < order; ++i) {
      const QuadComplex step = newtonStep(order, s[i]);
      QuadComplex others = {0, 0};
      for (int k = 0; k < order; ++k)
        if (k != i) others = others + QuadComplex{1, 0} / (s[i] - s[k]);
      const QuadComplex by = step / (QuadComplex{1, 0} - step * others);
      s[i] = s[i] - by;
      moved += (by.re * by.re + by.im * by.im) / (s[i].re * s[i].re + s[i].im * s[i].im);
    }
    if (moved < Quad(1e-50)) break;
  }
  ZeroPole f;
  double scale = 0;  // logarithm of the product of the roots, (2N)! / (2^N N!)
  for (int n = 1; n <= order; ++n) scale += log(2.0 * n - 1);
  scale = norm == vekxBesselDelay ? 1 : exp(-scale / order);
  for (int i = 0; i < order; ++i) {
    const double im = double(s[i].im);
    f.pole(scale * Complex{double(s[i].re), 2 * i + 1 == order ? 0 : im});
  }
  settle(f, 1);
  if (norm == vekxBesselMagnitude) {
    // The frequency where the magnitude is sqrt(1/2), between what no filter goes below and above.
    double low = 0, high = 1;
    const auto falls = [&](double w) { return f.gain * magnitude(response(f, {0, w})) < sqrt(0.5); };
    while (!falls(high)) high *= 2;
    for (int i = 0; i < 200 && low < high; ++i) {
      const double middle = (low + high) / 2;
      if (middle <= low || middle >= high) break;
      (falls(middle) ? high : low) = middle;
    }
    for (int i = 0; i < order; ++i) f.p[i] = (1 / high) * f.p[i];
    settle(f, 1);
  }
  return f;
}

// ---- bands
// ------------------------------------------------------------------------------------------------------------

// Where a complex frequency of the prototype goes: one place for low and high, two for a band.
int placesOf(Complex s, VekxBand band, double centre, double width, Complex to[2]) {
  if (band == vekxLowPass) return to[0] = width * s, 1;
  if (band == vekxHighPass) return to[0] = real(width) / s, 1;
  const Complex half = band == vekxBandPass ? (width / 2) * s : real(width / 2) / s;
  const Complex root = squareRoot((half - real(centre)) * (half + real(centre)));
  // One of the two sums may cancel: it follows from the other, as their product is the square of the centre.
  const bool plus = half.re * root.re + half.im * root.im >= 0;
  to[0] = plus ? half + root : half - root;
  to[1] = real(centre * centre) / to[0];
  return 2;
}

// To the z-plane by the bilinear transformation, with the edges where they were asked for.
ZeroPole digital(const ZeroPole& prototype, VekxBand band, double f1, double f2) {
  const double w1 = tan(kPi * f1), w2 = tan(kPi * f2);
  const bool two = band == vekxBandPass || band == vekxBandStop;
  const double centre = sqrt(w1 * w2), width = two ? w2 - w1 : w1;
  const auto bilinear = [](Complex s) { return (real(1) + s) / (real(1) - s); };
  ZeroPole f;
  Complex to[2];
  const auto move = [&](const Complex* roots, int count, void (ZeroPole::*add)(Complex)) {
    for (int i = 0; i < count; ++i)
      for (int k = 0, n = placesOf(roots[i], band, centre, width, to); k < n; ++k) (f.*add)(bilinear(to[k]));
  };
  move(prototype.p, prototype.poles, &ZeroPole::pole);
  move(prototype.z, prototype.zeros, &ZeroPole::zero);
  // Zeros at infinity of the prototype go to where the band is stopped.
  for (int i = prototype.degree(); i > 0; --i) {
    if (band == vekxHighPass || band == vekxBandPass) f.zero(real(1));
    if (band == vekxLowPass || band == vekxBandPass) f.zero(real(-1));
    if (band == vekxBandStop) f.zero(bilinear({0, centre})), f.zero(bilinear({0, -centre}));
  }
  // The gain at a frequency of the pass-band that comes from frequency 0 of the prototype.
  const Complex at = band == vekxHighPass ? real(-1) : band == vekxBandPass ? bilinear({0, centre}) : real(1);
  const double wanted = prototype.gain * response(prototype, {0, 0}).re;
  const Complex r = response(f, at);
  f.gain = copysign(wanted / magnitude(r), r.re);
  return f;
}

// ---- sections
// -----------------------------------------------------------------------------------------------------------

bool isReal(Complex x) { return fabs(x.im) <= 1e-12 * (1 + fabs(x.re)); }

// The roots that remain to be put into sections.
struct Roots {
  Complex* x;
  int count;

  template <class Better>
  Complex take(Better better) {
    int best = 0;
    for (int i = 1; i < count; ++i)
      if (better(x[i], x[best])) best = i;
    const Complex found = x[best];
    x[best] = x[--count];
    return found;
  }
  // Another one to go with `first`: its conjugate, or the best other real one.
  template <class Better>
  Complex partner(Complex first, Better better) {
    const bool lone = isReal(first);
    return take([&](Complex a, Complex b) {
      if (!lone) return magnitude(a - conj(first)) < magnitude(b - conj(first));
      return isReal(a) != isReal(b) ? isReal(a) : better(a, b);
    });
  }
};

void quadratic(Complex a, Complex b, double to[3]) {
  to[0] = 1;
  to[1] = -(a.re + b.re);
  to[2] = a.re * b.re - a.im * b.im;
}

// Poles nearest the unit circle get the zeros nearest them, and their sections come last: what they amplify most has
// been attenuated before.
void writeSections(ZeroPole& f, Vek64f* to) {
  if (f.poles % 2) f.pole({0, 0}), f.zero({0, 0});
  Roots poles = {f.p, f.poles}, zeros = {f.z, f.zeros};
  const auto nearCircle = [](Complex a, Complex b) { return fabs(1 - magnitude(a)) < fabs(1 - magnitude(b)); };
  for (int i = f.poles / 2 - 1; i >= 0; --i) {
    double* const section = to + 6 * i;
    const Complex p = poles.take(nearCircle), p2 = poles.partner(p, nearCircle);
    const auto nearPole = [p](Complex a, Complex b) {
      // Of a pair both are as near: the distance from the half-plane of the pole counts.
      const Complex up = {p.re, fabs(p.im)};
      return magnitude(Complex{a.re, fabs(a.im)} - up) < magnitude(Complex{b.re, fabs(b.im)} - up);
    };
    const Complex z = zeros.take(nearPole), z2 = zeros.partner(z, nearPole);
    quadratic(z, z2, section);
    quadratic(p, p2, section + 3);
  }
  for (int i = 0; i < 3; ++i) to[i] *= f.gain;
}

bool inBand(double f) { return f > 0 && f < 0.5; }

VekStatus checked(const void* pointer, int order, VekxBand band, double f1, double f2) {
  if (!pointer) return vekStsNullPtrErr;
  if (order < 1 || order > kMaxOrder) return vekStsIIRGenOrderErr;
  if (band < vekxLowPass || band > vekxBandStop) return vekStsBadArgErr;
  const bool two = band == vekxBandPass || band == vekxBandStop;
  return inBand(f1) && (!two || (inBand(f2) && f1 < f2)) ? vekStsNoErr : vekStsFilterFrequencyErr;
}

template <class Prototype>
VekStatus design(Vek64f* to, VekxBand band, double f1, double f2, Prototype prototype) {
  ZeroPole f = digital(prototype, band, f1, f2);
  writeSections(f, to);
  return vekStsNoErr;
}

bool isDecibels(double x) { return x > 0 && x <= 400; }

}  // namespace
}  // namespace vek

using namespace vek;

VekStatus vekxDesignButterworth(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2) {
  if (const VekStatus s = checked(pSections, order, band, freq1, freq2)) return s;
  return design(pSections, band, freq1, freq2, butterworth(order));
}

VekStatus vekxDesignChebyshev1(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2, Vek64f ripple) {
  if (const VekStatus s = checked(pSections, order, band, freq1, freq2)) return s;
  if (!isDecibels(ripple)) return vekStsIIRPassbandRippleErr;
  return design(pSections, band, freq1, freq2, chebyshev1(order, ripple));
}

VekStatus vekxDesignChebyshev2(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2,
                               Vek64f attenuation) {
  if (const VekStatus s = checked(pSections, order, band, freq1, freq2)) return s;
  if (!isDecibels(attenuation)) return vekStsIIRPassbandRippleErr;
  return design(pSections, band, freq1, freq2, chebyshev2(order, attenuation));
}

VekStatus vekxDesignElliptic(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2, Vek64f ripple,
                             Vek64f attenuation) {
  if (const VekStatus s = checked(pSections, order, band, freq1, freq2)) return s;
  if (!isDecibels(ripple) || !isDecibels(attenuation) || attenuation <= ripple) return vekStsIIRPassbandRippleErr;
  return design(pSections, band, freq1, freq2, elliptic(order, ripple, attenuation));
}

VekStatus vekxDesignBessel(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2,
                           VekxBesselNorm norm) {
  if (const VekStatus s = checked(pSections, order, band, freq1, freq2)) return s;
  if (norm < vekxBesselPhase || norm > vekxBesselMagnitude) return vekStsBadArgErr;
  return design(pSections, band, freq1, freq2, bessel(order, norm));
}
