// SPDX-License-Identifier: Apache-2.0
// Tapering windows.
#include <float.h>
#include <math.h>

#include "core/memory.h"
#include "vekx/design.h"

namespace vek {
namespace {

constexpr double kPi = 3.14159265358979323846;

// The modified Bessel function of order zero, by its series: all terms are positive.
double bessel0(double x) {
  double sum = 1, term = 1;
  for (double k = 1; term > sum * (DBL_EPSILON / 4); ++k) {
    const double f = x / (2 * k);
    term *= f * f;
    sum += term;
  }
  return sum;
}

struct CosineSum {
  int terms;
  double a[5];  // the signs alternate
};
constexpr CosineSum kCosineSums[] = {
    {2, {0.5, 0.5}},
    {2, {0.54, 0.46}},
    {3, {0.42, 0.5, 0.08}},
    {4, {0.3635819, 0.4891775, 0.1365995, 0.0106411}},
    {4, {0.35875, 0.48829, 0.14128, 0.01168}},
    {5, {0.21557895, 0.41663158, 0.277263158, 0.083578947, 0.006947368}},
};

// The weight at n of a symmetric window of m > 1 elements, 0 <= n <= (m - 1) / 2.
double weight(VekxWindow window, double parameter, double m, double n) {
  const double fromMiddle = fabs(n - (m - 1) / 2), x = 2 * fromMiddle / (m - 1);
  switch (window) {
    case vekxWindowRectangular:
      return 1;
    case vekxWindowTriangular: {
      const bool odd = fmod(m, 2) == 1;
      return odd ? 2 * (n + 1) / (m + 1) : (2 * n + 1) / m;
    }
    case vekxWindowBartlett:
      return 2 * n / (m - 1);
    case vekxWindowCosine:
      return sin(kPi * (n + 0.5) / m);
    case vekxWindowBohman:
      return n == 0 ? 0 : (1 - x) * cos(kPi * x) + sin(kPi * x) / kPi;
    case vekxWindowParzen: {
      const double r = 2 * fromMiddle / m;
      return r <= 0.5 * (m - 1) / m ? 1 - 6 * r * r * (1 - r) : 2 * (1 - r) * (1 - r) * (1 - r);
    }
    case vekxWindowTukey: {
      const double taper = parameter * (m - 1) / 2;
      return n < taper ? 0.5 * (1 - cos(kPi * n / taper)) : 1;
    }
    case vekxWindowGaussian:
      return exp(-(fromMiddle / parameter) * (fromMiddle / parameter) / 2);
    case vekxWindowKaiser:
      return bessel0(parameter * sqrt((1 - x) * (1 + x))) / bessel0(parameter);
    default: {
      const CosineSum& sum = kCosineSums[window - vekxWindowHann];
      double w = 0, sign = 1;
      for (int k = 0; k < sum.terms; ++k, sign = -sign) w += sign * sum.a[k] * cos(2 * kPi * k * n / (m - 1));
      return w;
    }
  }
}

// The sequence is the eigenvector of a symmetric tridiagonal matrix for its largest eigenvalue: D. Slepian, "Prolate
// spheroidal wave functions, Fourier analysis, and uncertainty V: the discrete case", 1978.
struct Tridiagonal {
  double m, c;
  double diagonal(double n) const { return ((m - 1) / 2 - n) * ((m - 1) / 2 - n) * c; }
  double beside(double n) const { return n * (m - n) / 2; }  // of n - 1 and n

  // Whether all eigenvalues are below x: by the signs of the pivots.
  bool above(double x) const {
    double pivot = diagonal(0) - x;
    for (double n = 1; pivot < 0 && n < m; ++n) pivot = diagonal(n) - x - beside(n) / pivot * beside(n);
    return pivot < 0;
  }
};

VekStatus prolate(Vek64f* w, int stored, int m, double halfBandwidth) {
  const Tridiagonal t = {double(m), cos(2 * kPi * halfBandwidth / m)};
  const auto memory = static_cast<double*>(allocate(int64_t(2 * sizeof(double)) * m));
  if (!memory) return vekStsMemAllocErr;
  double low = -double(m) * m, high = double(m) * m;
  for (;;) {
    const double middle = low + (high - low) / 2;
    if (middle <= low || middle >= high) break;
    (t.above(middle) ? high : low) = middle;
  }
  // Inverse iteration beside the eigenvalue; the matrix is definite there and needs no exchanges.
  double *v = memory, *pivot = memory + m;
  pivot[0] = t.diagonal(0) - high;
  for (int n = 1; n < m; ++n) pivot[n] = t.diagonal(n) - high - t.beside(n) / pivot[n - 1] * t.beside(n);
  for (int n = 0; n < m; ++n) v[n] = sin(kPi * (n + 0.5) / m);
  for (int round = 0; round < 4; ++round) {
    for (int n = 1; n < m; ++n) v[n] -= t.beside(n) / pivot[n - 1] * v[n - 1];
    v[m - 1] /= pivot[m - 1];
    for (int n = m - 2; n >= 0; --n) v[n] = (v[n] - t.beside(n + 1) * v[n + 1]) / pivot[n];
    double most = 0;
    for (int n = 0; n < m; ++n) most = fmax(most, fabs(v[n]));
    const double scale = copysign(1 / most, v[m / 2]);
    for (int n = 0; n < m; ++n) v[n] *= scale;
  }
  // Of an even number the largest value lies between two elements.
  const double between = m % 2 ? 1 : double(m) * m / (double(m) * m + halfBandwidth);
  for (int n = 0; n < stored; ++n) w[n] = between * (v[n] + v[m - 1 - n]) / 2;
  release(memory);
  return vekStsNoErr;
}

bool parameterFits(VekxWindow window, double parameter, int len) {
  switch (window) {
    case vekxWindowTukey:
      return parameter >= 0 && parameter <= 1;
    case vekxWindowGaussian:
      return parameter > 0 && parameter <= DBL_MAX;
    case vekxWindowKaiser:
      return parameter >= 0 && parameter <= 700;
    case vekxWindowDpss:
      return parameter > 0 && parameter < 0.5 * len;
    default:
      return true;
  }
}

}  // namespace
}  // namespace vek

using namespace vek;

VekStatus vekxDesignWindow(Vek64f* pWindow, int len, VekxWindow window, Vek64f parameter, VekxSymmetry symmetry) {
  if (!pWindow) return vekStsNullPtrErr;
  if (len < 1) return vekStsSizeErr;
  if (window < vekxWindowRectangular || window > vekxWindowDpss) return vekStsBadArgErr;
  if (symmetry != vekxSymmetric && symmetry != vekxPeriodic) return vekStsBadArgErr;
  if (!parameterFits(window, parameter, len)) return vekStsOutOfRangeErr;
  if (len == 1) return pWindow[0] = 1, vekStsNoErr;
  const int64_t whole = int64_t(len) + (symmetry == vekxPeriodic);
  if (window == vekxWindowDpss)
    return whole > INT32_MAX ? vekStsMemAllocErr : prolate(pWindow, len, int(whole), parameter);
  for (int64_t n = 0; n < len; ++n) {
    const int64_t mirrored = whole - 1 - n;
    pWindow[n] = mirrored < n ? pWindow[mirrored] : weight(window, parameter, double(whole), double(n));
  }
  return vekStsNoErr;
}
