// SPDX-License-Identifier: Apache-2.0
// Single sections, and the responses of sections and of rational filters.
#include "design/complex.h"
#include "vekx/design.h"

namespace vek {
namespace {

constexpr double kPi = 3.14159265358979323846;

// The value of a polynomial in z^-1 at the frequency, and that of the same with each coefficient times its delay.
struct Moments {
  Complex value, delayed;
};
Moments momentsAt(const Vek64f* c, int n, double freq) {
  const Complex step = unit(-2 * kPi * (freq - floor(freq)));
  Complex value = {0, 0}, delayed = {0, 0};
  for (int i = n - 1; i >= 0; --i) {
    value = value * step + real(c[i]);
    delayed = delayed * step + real(i * c[i]);
  }
  return {value, delayed};
}

// The delay of a polynomial. A zero on the unit circle takes the value away, and with it the delay that the others
// have: what is left is that of the limit, half of the zero's own.
double delayOf(const Vek64f* c, int n, double freq) {
  const Moments m = momentsAt(c, n, freq);
  double size = 0;
  for (int i = 0; i < n; ++i) size += fabs(c[i]);
  if (magnitude(m.value) > 1e-14 * size) return (m.delayed / m.value).re;
  const double aside = 1e-6;
  const Moments low = momentsAt(c, n, freq - aside), high = momentsAt(c, n, freq + aside);
  return ((low.delayed / low.value).re + (high.delayed / high.value).re) / 2;
}

template <class D, class At>
VekStatus atFrequencies(const Vek64f* freqs, D* dst, int n, At at) {
  for (int i = 0; i < n; ++i) dst[i] = at(freqs[i]);
  return vekStsNoErr;
}

bool isFreq(double f) { return f > 0 && f < 0.5; }

}  // namespace
}  // namespace vek

using namespace vek;

VekStatus vekxDesignSection(Vek64f* pSection, VekxSection kind, Vek64f freq, Vek64f quality, Vek64f gain) {
  if (!pSection) return vekStsNullPtrErr;
  if (kind < vekxSectionLowPass || kind > vekxSectionPeak) return vekStsBadArgErr;
  if (!isFreq(freq)) return vekStsFilterFrequencyErr;
  const bool hasQuality = kind != vekxSectionDcBlocker, hasWidth = kind == vekxSectionNotch || kind == vekxSectionPeak;
  const bool hasGain = kind == vekxSectionPeaking || kind == vekxSectionLowShelf || kind == vekxSectionHighShelf;
  if (hasQuality && !(quality > (hasWidth ? 2 * freq : 0) && quality <= 1e9)) return vekStsOutOfRangeErr;
  if (hasGain && !(fabs(gain) <= 400)) return vekStsOutOfRangeErr;
  double b0, b1, b2, a0, a1, a2;
  if (!hasQuality) {
    const double t = tan(kPi * freq);
    a0 = 1 + t, a1 = t - 1, a2 = 0;
    b0 = 1, b1 = -1, b2 = 0;
  } else {
    const double c = cos(2 * kPi * freq);
    const double alpha = hasWidth ? tan(kPi * freq / quality) : sin(2 * kPi * freq) / (2 * quality);
    const double a = hasGain ? pow(10, gain / 40) : 1, shelf = 2 * sqrt(a) * alpha;
    a0 = 1 + alpha, a1 = -2 * c, a2 = 1 - alpha;
    switch (kind) {
      case vekxSectionLowPass:
        b1 = 1 - c, b0 = b2 = b1 / 2;
        break;
      case vekxSectionHighPass:
        b1 = -1 - c, b0 = b2 = -b1 / 2;
        break;
      case vekxSectionBandPass:
      case vekxSectionPeak:
        b0 = alpha, b1 = 0, b2 = -alpha;
        break;
      case vekxSectionNotch:
        b0 = b2 = 1, b1 = -2 * c;
        break;
      case vekxSectionAllPass:
        b0 = a2, b1 = a1, b2 = a0;
        break;
      case vekxSectionPeaking:
        b0 = 1 + alpha * a, b1 = a1, b2 = 1 - alpha * a;
        a0 = 1 + alpha / a, a2 = 1 - alpha / a;
        break;
      default: {
        // The high shelf is the low one with frequencies the other way round.
        const double way = kind == vekxSectionLowShelf ? 1 : -1, d = way * c;
        b0 = a * (a + 1 - (a - 1) * d + shelf);
        b1 = way * 2 * a * (a - 1 - (a + 1) * d);
        b2 = a * (a + 1 - (a - 1) * d - shelf);
        a0 = a + 1 + (a - 1) * d + shelf;
        a1 = -way * 2 * (a - 1 + (a + 1) * d);
        a2 = a + 1 + (a - 1) * d - shelf;
      }
    }
  }
  const double section[6] = {b0 / a0, b1 / a0, b2 / a0, 1, a1 / a0, a2 / a0};
  for (int i = 0; i < 6; ++i) pSection[i] = section[i];
  return vekStsNoErr;
}

VekStatus vekxSectionsResponse(const Vek64f* pSections, int numSections, const Vek64f* pFreqs, Vek64fc* pDst,
                               int numFreqs) {
  if (!pSections || !pFreqs || !pDst) return vekStsNullPtrErr;
  if (numSections < 1 || numFreqs < 1) return vekStsSizeErr;
  return atFrequencies(pFreqs, pDst, numFreqs, [=](double freq) {
    Complex r = real(1);
    for (const Vek64f *s = pSections, *end = s + ptrdiff_t(6) * numSections; s != end; s += 6)
      r = r * (momentsAt(s, 3, freq).value / momentsAt(s + 3, 3, freq).value);
    return Vek64fc{r.re, r.im};
  });
}

VekStatus vekxSectionsDelay(const Vek64f* pSections, int numSections, const Vek64f* pFreqs, Vek64f* pDst,
                            int numFreqs) {
  if (!pSections || !pFreqs || !pDst) return vekStsNullPtrErr;
  if (numSections < 1 || numFreqs < 1) return vekStsSizeErr;
  return atFrequencies(pFreqs, pDst, numFreqs, [=](double freq) {
    double delay = 0;
    for (const Vek64f *s = pSections, *end = s + ptrdiff_t(6) * numSections; s != end; s += 6)
      delay += delayOf(s, 3, freq) - delayOf(s + 3, 3, freq);
    return delay;
  });
}

VekStatus vekxFilterResponse(const Vek64f* pB, int bLen, const Vek64f* pA, int aLen, const Vek64f* pFreqs,
                             Vek64fc* pDst, int numFreqs) {
  if (!pB || !pFreqs || !pDst) return vekStsNullPtrErr;
  if (bLen < 1 || (pA && aLen < 1) || numFreqs < 1) return vekStsSizeErr;
  return atFrequencies(pFreqs, pDst, numFreqs, [=](double freq) {
    const Complex b = momentsAt(pB, bLen, freq).value, r = pA ? b / momentsAt(pA, aLen, freq).value : b;
    return Vek64fc{r.re, r.im};
  });
}

VekStatus vekxFilterDelay(const Vek64f* pB, int bLen, const Vek64f* pA, int aLen, const Vek64f* pFreqs, Vek64f* pDst,
                          int numFreqs) {
  if (!pB || !pFreqs || !pDst) return vekStsNullPtrErr;
  if (bLen < 1 || (pA && aLen < 1) || numFreqs < 1) return vekStsSizeErr;
  return atFrequencies(pFreqs, pDst, numFreqs,
                       [=](double freq) { return delayOf(pB, bLen, freq) - (pA ? delayOf(pA, aLen, freq) : 0); });
}
