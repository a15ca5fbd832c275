// SPDX-License-Identifier: Apache-2.0
// Finite filters whose largest weighted error is least, by the exchange of Remez on a grid of frequencies.
#include <float.h>
#include <string.h>

#include "core/memory.h"
#include "design/bands.h"

namespace vek {
namespace {

// The four symmetries: the response is a sum of cosines times a factor that depends on the frequency.
struct Shape {
  bool odd, antisymmetric;

  int coefficients(int taps) const { return taps / 2 + (odd && !antisymmetric); }
  double factor(double f) const {
    if (antisymmetric) return odd ? sin(2 * kPi * f) : sin(kPi * f);
    return odd ? 1 : cos(kPi * f);
  }
  // The tap at distance k from the middle (for an even number from half a tap beside it, k from 1), twice, from the
  // coefficients a of the cosines.
  double tap(const double* a, int n, int k) const {
    const auto at = [=](int i) { return i < n ? a[i] : 0; };
    if (odd && !antisymmetric) return at(k);
    const double inner = k == 1 ? 2 * at(0) : at(k - 1), outer = antisymmetric && odd ? at(k + 1) : at(k);
    return (inner + (antisymmetric ? -outer : outer)) / 2;
  }
};

// A weighted approximation problem on the grid, and its exchange.
struct Exchange {
  int points, n;  // of the grid; coefficients
  double *x, *wanted, *weight, *error;
  int *extreme, *found;  // n + 1 indices into the grid, and as many candidates as the grid has points
  double *bary, *value;  // of the interpolation through the extremes

  // Interpolates values that err by the same weighted amount with alternating signs, and returns that amount.
  double interpolate() {
    int most = INT32_MIN;
    int* const exponent = found;
    for (int i = 0; i <= n; ++i) {
      double product = 1;
      int power = 0;
      for (int k = 0; k <= n; ++k) {
        if (k == i) continue;
        int e;
        product = frexp(product * (x[extreme[i]] - x[extreme[k]]), &e);
        power -= e;
      }
      bary[i] = 1 / product;
      exponent[i] = power;
      if (power > most) most = power;
    }
    double above = 0, below = 0;
    for (int i = 0; i <= n; ++i) {
      bary[i] = ldexp(bary[i], exponent[i] - most);
      above += bary[i] * wanted[extreme[i]];
      below += bary[i] * (i % 2 ? -1 : 1) / weight[extreme[i]];
    }
    const double ripple = above / below;
    for (int i = 0; i <= n; ++i) value[i] = wanted[extreme[i]] - (i % 2 ? -1 : 1) * ripple / weight[extreme[i]];
    return ripple;
  }
  double at(double cosine) const {
    double above = 0, below = 0;
    for (int i = 0; i <= n; ++i) {
      const double d = cosine - x[extreme[i]];
      if (d == 0) return value[i];
      above += bary[i] / d * value[i];
      below += bary[i] / d;
    }
    return above / below;
  }

  // New extremes: the largest errors of alternating sign, n + 1 of them. True if there is nothing to gain any more:
  // none moved, no error is larger than the ripple, or all are rounding.
  bool exchange(double ripple) {
    double largest = 0, rounding = 0;
    for (int i = 0; i < points; ++i) {
      error[i] = weight[i] * (wanted[i] - at(x[i]));
      largest = fmax(largest, fabs(error[i]));
      rounding = fmax(rounding, fabs(weight[i] * wanted[i]));
    }
    if (largest <= fmax(1e-13 * rounding, (1 + 1e-12) * fabs(ripple))) return true;
    // Known to alternate, also where the ripple of symmetric extremes is nothing but rounding.
    for (int i = 0; i <= n; ++i) error[extreme[i]] = (i % 2 ? -1 : 1) * (ripple == 0 ? DBL_MIN : ripple);
    int count = 0;
    for (int i = 0; i < points; ++i) {
      // Of neighbours of one sign the larger stays.
      if (count > 0 && (error[found[count - 1]] > 0) == (error[i] > 0)) {
        if (fabs(error[i]) > fabs(error[found[count - 1]])) found[count - 1] = i;
      } else {
        found[count++] = i;
      }
    }
    int first = 0;
    while (count - first > n + 1) {
      // One too many goes from an end. More go in pairs, since signs have to alternate, the least of them with the
      // smaller of its neighbours.
      const auto size = [&](int i) { return fabs(error[found[i]]); };
      if (count - first == n + 2) {
        size(first) < size(count - 1) ? ++first : --count;
        continue;
      }
      int least = first;
      for (int i = first; i < count; ++i)
        if (size(i) < size(least)) least = i;
      if (least == first) {
        ++first;
      } else if (least == count - 1) {
        --count;
      } else {
        const int from = size(least - 1) < size(least + 1) ? least - 1 : least;
        memmove(found + from, found + from + 2, sizeof(int) * size_t(count - from - 2));
        count -= 2;
      }
    }
    const size_t bytes = sizeof(int) * size_t(n + 1);
    const bool same = memcmp(extreme, found + first, bytes) == 0;
    memcpy(extreme, found + first, bytes);
    return same;
  }
};

// One block of memory, handed out in pieces.
struct Pieces {
  char* next;
  template <class T>
  T* take(int64_t n) {
    T* const p = reinterpret_cast<T*>(next);
    next += (n * int64_t(sizeof(T)) + 7) / 8 * 8;
    return p;
  }
};

}  // namespace
}  // namespace vek

using namespace vek;

VekStatus vekxDesignEquiripple(Vek64f* pTaps, int tapsLen, const Vek64f* pEdges, const Vek64f* pGains,
                               const Vek64f* pWeights, int bands, VekxFirKind kind, int density) {
  if (!pTaps || !pEdges || !pGains) return vekStsNullPtrErr;
  if (bands < 1) return vekStsSizeErr;
  if (kind < vekxFirBands || kind > vekxFirHilbert) return vekStsBadArgErr;
  if (tapsLen < 2) return vekStsFIRGenOrderErr;
  if (const VekStatus s = checkBands(pEdges, pGains, bands, pWeights, bands)) return s;
  if (density < 4) return vekStsOutOfRangeErr;

  const Shape shape = {tapsLen % 2 == 1, kind != vekxFirBands};
  const int n = shape.coefficients(tapsLen);
  if (n < 1) return vekStsFIRGenOrderErr;
  const double step = 0.5 / (double(density) * n);
  const int64_t most = int64_t(density) * n + 2 * int64_t(bands) + 2, ripples = int64_t(n) + 1;
  if (most > (INT64_C(1) << 30)) return vekStsMemAllocErr;
  const int64_t bytes = most * int64_t(4 * sizeof(double) + sizeof(int)) + ripples * int64_t(3 * sizeof(double)) +
                        (2 * ripples) * int64_t(sizeof(double)) + 64;
  char* const memory = static_cast<char*>(allocate(bytes));
  if (!memory) return vekStsMemAllocErr;
  Pieces pieces = {memory};
  Exchange e;
  e.n = n;
  e.x = pieces.take<double>(most);
  e.wanted = pieces.take<double>(most);
  e.weight = pieces.take<double>(most);
  e.error = pieces.take<double>(most);
  e.bary = pieces.take<double>(ripples);
  e.value = pieces.take<double>(ripples);
  e.extreme = pieces.take<int>(ripples);
  e.found = pieces.take<int>(most);
  double* const cosines = pieces.take<double>(2 * ripples);

  // Every band from its lower edge in steps, the last of which gives way to the upper edge. Frequencies where the
  // factor vanishes stay out.
  e.points = 0;
  const auto add = [&](int64_t band, double f) {
    const double gain = kind == vekxFirDifferentiator ? pGains[band] * f : pGains[band], factor = shape.factor(f);
    const double w = pWeights ? pWeights[band] : 1;
    const bool relative = kind == vekxFirDifferentiator && pGains[band] >= 0.0001;
    e.x[e.points] = cos(2 * kPi * f);
    e.wanted[e.points] = gain / factor;
    e.weight[e.points++] = factor * (relative ? w / f : w);
  };
  const bool openBelow = shape.antisymmetric, openAbove = shape.antisymmetric == shape.odd;
  for (int64_t band = 0; band < bands; ++band) {
    double f = pEdges[2 * band];
    const double upper = pEdges[2 * band + 1];
    if (openBelow && band == 0 && f < step) f = step;
    for (; f + step <= upper; f += step) add(band, f);
    if (band < bands - 1 || !openAbove || upper <= 0.5 - step) add(band, upper);
  }
  VekStatus status = vekStsConvergeErr;
  if (e.points > n) {
    for (int i = 0; i <= n; ++i) e.extreme[i] = int(int64_t(i) * (e.points - 1) / n);
    bool settled = false;
    for (int round = 0; round < 200 && !settled; ++round) {
      const double ripple = e.interpolate();
      if (!isfinite(ripple)) break;
      settled = e.exchange(ripple);
    }
    if (settled) {
      // The coefficients of the cosines, from the response at as many frequencies as it takes.
      const int turn = 2 * n - 1;
      double *const response = e.error, *const a = e.bary;
      for (int k = 0; k < turn; ++k) cosines[k] = cos(2 * kPi * k / turn);
      for (int k = 0; k < n; ++k) response[k] = e.at(cosines[k]);
      for (int i = 0; i < n; ++i) {
        double sum = response[0] / 2;
        for (int k = 1; k < n; ++k) sum += response[k] * cosines[int64_t(i) * k % turn];
        a[i] = (i == 0 ? 2 : 4) * sum / turn;
      }
      const double sign = shape.antisymmetric ? -1 : 1;
      const int half = tapsLen / 2;
      if (shape.odd) pTaps[half] = shape.antisymmetric ? 0 : a[0];
      for (int k = 1; k <= half; ++k) {
        const double tap = shape.tap(a, n, k) / 2;
        pTaps[half - k] = tap;
        pTaps[tapsLen - 1 - half + k] = sign * tap;
      }
      status = vekStsNoErr;
    }
  }
  release(memory);
  return status;
}
