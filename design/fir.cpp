// SPDX-License-Identifier: Apache-2.0
// Finite filters by windows, by least squares, and for smoothing.
#include <math.h>

#include "core/memory.h"
#include "design/bands.h"

namespace vek {
namespace {

// sin(pi x) / (pi x), times the width: the ideal low-pass with its edge at f, m samples from its middle.
double idealLowPass(double f, double m) { return m == 0 ? 2 * f : sin(2 * kPi * f * m) / (kPi * m); }

double idealTap(VekxBand band, double f1, double f2, double m) {
  switch (band) {
    case vekxLowPass:
      return idealLowPass(f1, m);
    case vekxHighPass:
      return idealLowPass(0.5, m) - idealLowPass(f1, m);
    case vekxBandPass:
      return idealLowPass(f2, m) - idealLowPass(f1, m);
    default:
      return idealLowPass(f1, m) + (idealLowPass(0.5, m) - idealLowPass(f2, m));
  }
}

// ---- least squares
// ------------------------------------------------------------------------------------------------------

// The integral of cos(2 pi k f) up to f; and of f cos(2 pi k f).
double cosineTo(double f, double k) { return k == 0 ? f : sin(2 * kPi * k * f) / (2 * kPi * k); }
double rampTo(double f, double k) {
  if (k == 0) return f * f / 2;
  const double w = 2 * kPi * k;
  return f * sin(w * f) / w + cos(w * f) / (w * w);
}

// a x = b for a symmetric positive definite matrix of n rows, which is spent; false if it is not definite.
bool solve(double* a, double* b, int64_t n) {
  for (int64_t i = 0; i < n; ++i) {
    for (int64_t k = 0; k <= i; ++k) {
      double sum = a[i * n + k];
      for (int64_t j = 0; j < k; ++j) sum -= a[i * n + j] * a[k * n + j];
      if (k < i) {
        a[i * n + k] = sum / a[k * n + k];
      } else if (sum > 0) {
        a[i * n + i] = sqrt(sum);
      } else {
        return false;
      }
    }
    for (int64_t j = 0; j < i; ++j) b[i] -= a[i * n + j] * b[j];
    b[i] /= a[i * n + i];
  }
  for (int64_t i = n - 1; i >= 0; --i) {
    for (int64_t j = i + 1; j < n; ++j) b[i] -= a[j * n + i] * b[j];
    b[i] /= a[i * n + i];
  }
  return true;
}

}  // namespace
}  // namespace vek

using namespace vek;

VekStatus vekxDesignKaiser(Vek64f attenuation, Vek64f width, int* pLen, Vek64f* pBeta) {
  if (!pLen || !pBeta) return vekStsNullPtrErr;
  if (!(attenuation >= 8 && attenuation <= 400)) return vekStsIIRPassbandRippleErr;
  if (!(width > 0 && width < 0.5)) return vekStsFilterFrequencyErr;
  const double len = ceil((attenuation - 7.95) / (2.285 * 2 * kPi * width) + 1);
  if (len > INT32_MAX) return vekStsSizeErr;
  *pLen = int(len);
  const double a = attenuation;
  *pBeta = a > 50 ? 0.1102 * (a - 8.7) : a > 21 ? 0.5842 * pow(a - 21, 0.4) + 0.07886 * (a - 21) : 0;
  return vekStsNoErr;
}

VekStatus vekxDesignFirWindow(Vek64f* pTaps, int tapsLen, VekxBand band, Vek64f freq1, Vek64f freq2,
                              const Vek64f* pWindow) {
  if (!pTaps) return vekStsNullPtrErr;
  if (band < vekxLowPass || band > vekxBandStop) return vekStsBadArgErr;
  const bool two = band == vekxBandPass || band == vekxBandStop, open = band == vekxHighPass || band == vekxBandStop;
  if (tapsLen < 1 || (open && tapsLen % 2 == 0)) return vekStsFIRGenOrderErr;
  if (!isEdge(freq1) || (two && (!isEdge(freq2) || !(freq1 < freq2)))) return vekStsFilterFrequencyErr;
  const double at = band == vekxHighPass ? 0.5 : band == vekxBandPass ? (freq1 + freq2) / 2 : 0;
  const auto tap = [=](int n) {
    const double w = pWindow ? pWindow[n] : tapsLen == 1 ? 1 : 0.54 - 0.46 * cos(2 * kPi * n / (tapsLen - 1));
    return w * idealTap(band, freq1, freq2, n - (tapsLen - 1) / 2.0);
  };
  double gain = 0, size = 0;
  for (int n = 0; n < tapsLen; ++n) {
    const double term = tap(n) * cos(2 * kPi * at * (n - (tapsLen - 1) / 2.0));
    gain += term;
    size += fabs(term);
  }
  if (!(fabs(gain) > 1e-12 * size)) return vekStsWeightErr;
  for (int n = 0; n < tapsLen; ++n) pTaps[n] = tap(n) / gain;
  return vekStsNoErr;
}

VekStatus vekxDesignLeastSquares(Vek64f* pTaps, int tapsLen, const Vek64f* pEdges, const Vek64f* pGains,
                                 const Vek64f* pWeights, int bands) {
  if (!pTaps || !pEdges || !pGains) return vekStsNullPtrErr;
  if (bands < 1) return vekStsSizeErr;
  if (tapsLen < 1 || tapsLen % 2 == 0) return vekStsFIRGenOrderErr;
  if (const VekStatus s = checkBands(pEdges, pGains, 2 * int64_t(bands), pWeights, bands)) return s;
  // The response is the sum of c[k] cos(2 pi k f).
  const int64_t n = tapsLen / 2 + 1;
  double* const a = static_cast<double*>(allocate(int64_t(sizeof(double)) * n * (n + 3)));
  if (!a) return vekStsMemAllocErr;
  double *const c = a + n * n, *const power = c + n;
  const auto sum = [=](auto term) {
    double s = 0;
    for (int64_t i = 0; i < bands; ++i) s += (pWeights ? pWeights[i] : 1) * term(i);
    return s;
  };
  for (int64_t k = 0; k < 2 * n; ++k)
    power[k] =
        sum([=](int64_t i) { return cosineTo(pEdges[2 * i + 1], double(k)) - cosineTo(pEdges[2 * i], double(k)); });
  for (int64_t i = 0; i < n; ++i)
    for (int64_t k = 0; k <= i; ++k) a[i * n + k] = (power[i - k] + power[i + k]) / 2;
  for (int64_t k = 0; k < n; ++k) {
    c[k] = sum([=](int64_t i) {
      const double f0 = pEdges[2 * i], f1 = pEdges[2 * i + 1], g0 = pGains[2 * i];
      const double slope = (pGains[2 * i + 1] - g0) / (f1 - f0);
      return (g0 - slope * f0) * (cosineTo(f1, double(k)) - cosineTo(f0, double(k))) +
             slope * (rampTo(f1, double(k)) - rampTo(f0, double(k)));
    });
  }
  const bool solved = solve(a, c, n);
  if (solved)
    for (int64_t k = 0; k < n; ++k) pTaps[n - 1 - k] = pTaps[n - 1 + k] = k == 0 ? c[0] : c[k] / 2;
  release(a);
  return solved ? vekStsNoErr : vekStsConvergeErr;
}

VekStatus vekxDesignSavitzkyGolay(Vek64f* pTaps, int tapsLen, int order, int derivative, Vek64f step) {
  if (!pTaps) return vekStsNullPtrErr;
  constexpr int kMost = 30;
  if (tapsLen < 1 || tapsLen % 2 == 0 || order < 0 || order > kMost || order >= tapsLen) return vekStsFIRGenOrderErr;
  if (derivative < 0 || derivative > order || !(step > 0 && step <= 1e300)) return vekStsOutOfRangeErr;
  // Polynomials that are orthonormal over the samples: p(k+1) = (x p(k) - beta(k) p(k-1)) / beta(k+1). Their derivative
  // at the middle follows from the same recurrence.
  double beta[kMost + 2], middle[kMost + 1][kMost + 1];
  const double m = tapsLen;
  beta[0] = 0;
  for (int k = 1; k <= order; ++k) beta[k] = k / 2.0 * sqrt((m - k) * (m + k) / (4.0 * k * k - 1));
  middle[0][0] = 1 / sqrt(m);
  for (int k = 0; k <= order; ++k) {
    for (int d = k == 0 ? 1 : 0; d <= derivative; ++d) {
      const double raised = k > 0 && d > 0 ? d * middle[k - 1][d - 1] : 0, before = k > 1 ? middle[k - 2][d] : 0;
      middle[k][d] = k == 0 ? 0 : (raised - beta[k - 1] * before) / beta[k];
    }
  }
  const double unit = pow(step, derivative);
  for (int n = 0; n < tapsLen; ++n) {
    const double x = (tapsLen - 1) / 2 - n;
    double before = 0, now = 1 / sqrt(m), sum = now * middle[0][derivative];
    for (int k = 1; k <= order; ++k) {
      const double next = (x * now - beta[k - 1] * before) / beta[k];
      before = now;
      now = next;
      sum += now * middle[k][derivative];
    }
    pTaps[n] = sum / unit;
  }
  return vekStsNoErr;
}
