// SPDX-License-Identifier: Apache-2.0
// Filter designers: against another library's designs of the same requests (tools/design_golden.py), properties of what
// they promise, and requests that make no sense.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <fstream>
#include <functional>
#include <limits>
#include <map>
#include <sstream>
#include <vector>

#include "tests/support/guarded.h"
#include "vekx.h"

namespace vektest {
namespace {

using Numbers = std::vector<double>;
using Design = std::function<VekStatus(const Numbers& request, double* to)>;

// By the names in the file.
const std::map<std::string, Design>& designs() {
  const auto recursive = [](auto f) {
    return [f](const Numbers& r, double* to) { return f(to, int(r[0]), int(r[1]), r[2], r[3], r); };
  };
  const auto bessel = [&](int norm) {
    return recursive([norm](double* to, int n, int band, double f1, double f2, const Numbers&) {
      return vekxDesignBessel(to, n, band, f1, f2, norm);
    });
  };
  const auto bands = [](const Numbers& r, size_t head, size_t gainsOfBand, auto f) {
    const size_t n = size_t(r[1]);
    const double *edges = r.data() + head, *gains = edges + 2 * n, *weights = gains + gainsOfBand * n;
    return f(edges, gains, weights, int(n));
  };
  static const std::map<std::string, Design> all = {
      {"Butterworth", recursive([](double* to, int n, int band, double f1, double f2, const Numbers&) {
         return vekxDesignButterworth(to, n, band, f1, f2);
       })},
      {"Chebyshev1", recursive([](double* to, int n, int band, double f1, double f2, const Numbers& r) {
         return vekxDesignChebyshev1(to, n, band, f1, f2, r[4]);
       })},
      {"Chebyshev2", recursive([](double* to, int n, int band, double f1, double f2, const Numbers& r) {
         return vekxDesignChebyshev2(to, n, band, f1, f2, r[4]);
       })},
      {"Elliptic", recursive([](double* to, int n, int band, double f1, double f2, const Numbers& r) {
         return vekxDesignElliptic(to, n, band, f1, f2, r[4], r[5]);
       })},
      {"Bessel 0", bessel(vekxBesselPhase)},
      {"Bessel 1", bessel(vekxBesselDelay)},
      {"Bessel 2", bessel(vekxBesselMagnitude)},
      {"Window",
       [](const Numbers& r, double* to) { return vekxDesignWindow(to, int(r[0]), int(r[1]), r[2], int(r[3])); }},
      {"FirWindow",
       [](const Numbers& r, double* to) { return vekxDesignFirWindow(to, int(r[0]), int(r[1]), r[2], r[3], nullptr); }},
      {"Kaiser",
       [](const Numbers& r, double* to) {
         int len = 0;
         const VekStatus s = vekxDesignKaiser(r[0], r[1], &len, to + 1);
         return to[0] = len, s;
       }},
      {"LeastSquares",
       [=](const Numbers& r, double* to) {
         return bands(r, 2, 2, [&](const double* e, const double* g, const double* w, int n) {
           return vekxDesignLeastSquares(to, int(r[0]), e, g, w, n);
         });
       }},
      {"Equiripple",
       [=](const Numbers& r, double* to) {
         return bands(r, 3, 1, [&](const double* e, const double* g, const double* w, int n) {
           return vekxDesignEquiripple(to, int(r[0]), e, g, w, n, int(r[2]), 16);
         });
       }},
      {"SavitzkyGolay",
       [](const Numbers& r, double* to) { return vekxDesignSavitzkyGolay(to, int(r[0]), int(r[1]), int(r[2]), 1); }},
      {"Section", [](const Numbers& r, double* to) { return vekxDesignSection(to, int(r[0]), r[1], r[2], r[3]); }},
  };
  return all;
}

Numbers numbersIn(const std::string& text) {
  std::istringstream in(text);
  Numbers out;
  for (double x; in >> x;) out.push_back(x);
  return out;
}

TEST(Design, AgreesWithAnotherLibrary) {
  std::ifstream file(VEK_DESIGN_GOLDEN);
  size_t rows = 0;
  for (std::string line; std::getline(file, line); ++rows) {
    const size_t first = line.find(';'), second = line.find(';', first + 1);
    const std::string name = line.substr(0, first);
    const Numbers request = numbersIn(line.substr(first + 1, second - first - 1)),
                  want = numbersIn(line.substr(second + 1));
    Guarded<double> got(want.size());
    ASSERT_EQ(designs().at(name)(request, got.data()), vekStsNoErr) << line.substr(0, second);
    ASSERT_TRUE(got.intact());
    double largest = 0;
    for (double x : want) largest = std::max(largest, std::fabs(x));
    for (size_t i = 0; i < want.size(); ++i)
      ASSERT_NEAR(got.data()[i], want[i], 1e-10 * (name == "FirWindow" ? largest : std::max(std::fabs(want[i]), 1e-3)))
          << line.substr(0, second) << ", number " << i;
  }
  EXPECT_GT(rows, 300u);
}

std::complex<double> at(const Numbers& sections, double freq) {
  const std::complex<double> z = std::polar(1.0, -2 * M_PI * freq);
  std::complex<double> r = 1;
  for (size_t i = 0; i < sections.size(); i += 6) {
    const double* s = &sections[i];
    r *= (s[0] + z * (s[1] + z * s[2])) / (s[3] + z * (s[4] + z * s[5]));
  }
  return r;
}

// Whatever the order: stable, the ripple where it belongs, the edges where they were asked for.
TEST(Design, RecursiveFiltersKeepTheirPromises) {
  const double half = std::sqrt(0.5), low = std::pow(10, -1 / 20.0), stop = std::pow(10, -50 / 20.0);
  for (int order : {1, 2, 3, 4, 5, 6, 7, 10, 15, 32}) {
    for (double edge : {0.01, 0.2, 0.45}) {
      Numbers s(size_t(order + 1) / 2 * 6);
      const auto promise = [&](VekStatus status, double atEdge, double least, double most) {
        ASSERT_EQ(status, vekStsNoErr);
        for (size_t i = 0; i < s.size(); i += 6) {  // the triangle of stable sections
          ASSERT_LT(std::fabs(s[i + 5]), 1);
          ASSERT_LT(std::fabs(s[i + 4]), 1 + s[i + 5]);
        }
        EXPECT_NEAR(std::abs(at(s, edge)), atEdge, 1e-5);
        for (int i = 0; i <= 50; ++i) {
          const double inside = std::abs(at(s, edge * i / 50)), outside = std::abs(at(s, edge + (0.5 - edge) * i / 50));
          EXPECT_TRUE(inside > least - 1e-5 && inside < 1 + 1e-5) << order << " " << edge << " " << i << ": " << inside;
          EXPECT_LT(outside, most + 1e-5) << order << " " << edge << " " << i;
        }
      };
      promise(vekxDesignButterworth(s.data(), order, vekxLowPass, edge, 0), half, half, half);
      promise(vekxDesignChebyshev1(s.data(), order, vekxLowPass, edge, 0, 1), low, low, low);
      promise(vekxDesignChebyshev2(s.data(), order, vekxLowPass, edge, 0, 50), stop, stop, stop);
      promise(vekxDesignElliptic(s.data(), order, vekxLowPass, edge, 0, 1, 50), low, low, low);
      promise(vekxDesignBessel(s.data(), order, vekxLowPass, edge, 0, vekxBesselMagnitude), half, half, half);
    }
  }
}

TEST(Design, SectionsOfEqualisers) {
  for (double gain : {-12.0, 6.0}) {
    const double a = std::pow(10, gain / 20);
    Numbers s(6);
    const auto expect = [&](VekxSection kind, double atZero, double atFreq, double atHalf) {
      ASSERT_EQ(vekxDesignSection(s.data(), kind, 0.1, 0.9, gain), vekStsNoErr);
      EXPECT_NEAR(std::abs(at(s, 0)), atZero, 1e-12) << kind;
      EXPECT_NEAR(std::abs(at(s, 0.1)), atFreq, 1e-12) << kind;
      EXPECT_NEAR(std::abs(at(s, 0.5)), atHalf, 1e-12) << kind;
    };
    expect(vekxSectionLowPass, 1, 0.9, 0);
    expect(vekxSectionHighPass, 0, 0.9, 1);
    expect(vekxSectionBandPass, 0, 1, 0);
    expect(vekxSectionNotch, 1, 0, 1);
    expect(vekxSectionAllPass, 1, 1, 1);
    expect(vekxSectionPeaking, 1, a, 1);
    expect(vekxSectionLowShelf, a, std::sqrt(a), 1);
    expect(vekxSectionHighShelf, 1, std::sqrt(a), a);
  }
}

TEST(Design, Responses) {
  Numbers s(30), taps(21), freqs = {0, 0.013, 0.1, 0.31, 0.5, -0.1, 1.1}, delay(freqs.size());
  std::vector<Vek64fc> response(freqs.size());
  const int n = int(freqs.size());
  ASSERT_EQ(vekxDesignElliptic(s.data(), 5, vekxBandPass, 0.05, 0.2, 1, 40), vekStsNoErr);
  ASSERT_EQ(vekxSectionsResponse(s.data(), 5, freqs.data(), response.data(), n), vekStsNoErr);
  ASSERT_EQ(vekxSectionsDelay(s.data(), 5, freqs.data(), delay.data(), n), vekStsNoErr);
  for (size_t i = 0; i < freqs.size(); ++i) {
    EXPECT_NEAR(std::abs(std::complex(response[i].re, response[i].im) - at(s, freqs[i])), 0, 1e-12);
    if (freqs[i] == 0 || freqs[i] == 0.5) continue;  // a zero there turns the phase
    const double step = 1e-6;
    const double turned = std::arg(at(s, freqs[i] - step) / at(s, freqs[i] + step));
    EXPECT_NEAR(delay[i], turned / (4 * M_PI * step), 1e-4) << freqs[i];
  }
  // A symmetric finite filter delays by half its length, also where it lets nothing pass.
  ASSERT_EQ(vekxDesignFirWindow(taps.data(), 21, vekxLowPass, 0.1, 0, nullptr), vekStsNoErr);
  ASSERT_EQ(vekxFilterDelay(taps.data(), 21, nullptr, 0, freqs.data(), delay.data(), n), vekStsNoErr);
  for (double d : delay) EXPECT_NEAR(d, 10, 1e-6);
  const double pole[2] = {1, -0.5}, one = 1;
  ASSERT_EQ(vekxFilterResponse(&one, 1, pole, 2, freqs.data(), response.data(), 1), vekStsNoErr);
  EXPECT_NEAR(response[0].re, 2, 1e-15);
}

TEST(Design, RefusesWhatMakesNoSense) {
  const double nan = std::numeric_limits<double>::quiet_NaN(), inf = std::numeric_limits<double>::infinity();
  Guarded<double> to(64);
  double* const t = to.data();
  const auto refused = [&](VekStatus want, VekStatus got, int line = __builtin_LINE()) {
    EXPECT_EQ(got, want) << "line " << line;
    EXPECT_TRUE(to.untouched()) << "line " << line;
  };
  for (double f : {0.0, -0.1, 0.5, nan, inf}) {
    refused(vekStsFilterFrequencyErr, vekxDesignButterworth(t, 4, vekxLowPass, f, 0));
    refused(vekStsFilterFrequencyErr, vekxDesignBessel(t, 4, vekxBandStop, 0.1, f, 0));
    refused(vekStsFilterFrequencyErr, vekxDesignSection(t, vekxSectionLowPass, f, 1, 0));
    refused(vekStsFilterFrequencyErr, vekxDesignFirWindow(t, 5, vekxHighPass, f, 0, nullptr));
  }
  refused(vekStsFilterFrequencyErr, vekxDesignButterworth(t, 4, vekxBandPass, 0.2, 0.2));
  refused(vekStsFilterFrequencyErr, vekxDesignFirWindow(t, 5, vekxBandPass, 0.2, 0.1, nullptr));
  for (int order : {0, -1, 33}) {
    refused(vekStsNullPtrErr, vekxDesignElliptic(nullptr, order, 9, nan, nan, nan, nan));
    refused(vekStsIIRGenOrderErr, vekxDesignElliptic(t, order, 9, nan, nan, nan, nan));
  }
  refused(vekStsBadArgErr, vekxDesignElliptic(t, 4, 9, nan, nan, nan, nan));
  for (double ripple : {0.0, -1.0, nan, inf, 401.0}) {
    refused(vekStsIIRPassbandRippleErr, vekxDesignChebyshev1(t, 4, vekxLowPass, 0.1, 0, ripple));
    refused(vekStsIIRPassbandRippleErr, vekxDesignChebyshev2(t, 4, vekxLowPass, 0.1, 0, ripple));
    refused(vekStsIIRPassbandRippleErr, vekxDesignElliptic(t, 4, vekxLowPass, 0.1, 0, 1, ripple));
  }
  refused(vekStsIIRPassbandRippleErr, vekxDesignElliptic(t, 4, vekxLowPass, 0.1, 0, 40, 40));
  refused(vekStsBadArgErr, vekxDesignBessel(t, 4, vekxLowPass, 0.1, 0, 3));
  refused(vekStsBadArgErr, vekxDesignSection(t, 10, 0.1, 1, 0));
  refused(vekStsOutOfRangeErr, vekxDesignSection(t, vekxSectionLowPass, 0.1, 0, 0));
  refused(vekStsOutOfRangeErr, vekxDesignSection(t, vekxSectionNotch, 0.2, 0.4, 0));
  refused(vekStsOutOfRangeErr, vekxDesignSection(t, vekxSectionPeaking, 0.1, 1, nan));

  refused(vekStsSizeErr, vekxDesignWindow(t, 0, vekxWindowHann, 0, vekxSymmetric));
  refused(vekStsBadArgErr, vekxDesignWindow(t, 4, 16, 0, vekxSymmetric));
  refused(vekStsBadArgErr, vekxDesignWindow(t, 4, vekxWindowHann, 0, 2));
  for (auto [window, parameter] : {std::pair(vekxWindowTukey, 1.1),
                                   {vekxWindowTukey, nan},
                                   {vekxWindowGaussian, 0.0},
                                   {vekxWindowKaiser, -1.0},
                                   {vekxWindowKaiser, 701.0},
                                   {vekxWindowDpss, 2.0}})
    refused(vekStsOutOfRangeErr, vekxDesignWindow(t, 4, window, parameter, vekxSymmetric));
  int len = 7;
  refused(vekStsIIRPassbandRippleErr, vekxDesignKaiser(7, 0.1, &len, t));
  refused(vekStsFilterFrequencyErr, vekxDesignKaiser(40, 0.5, &len, t));
  refused(vekStsSizeErr, vekxDesignKaiser(40, 1e-12, &len, t));
  EXPECT_EQ(len, 7);

  refused(vekStsFIRGenOrderErr, vekxDesignFirWindow(t, 6, vekxHighPass, 0.1, 0, nullptr));
  refused(vekStsFIRGenOrderErr, vekxDesignFirWindow(t, 0, vekxLowPass, 0.1, 0, nullptr));
  const double nothing[5] = {};
  refused(vekStsWeightErr, vekxDesignFirWindow(t, 5, vekxLowPass, 0.1, 0, nothing));
  const double edges[4] = {0, 0.1, 0.2, 0.5}, touching[4] = {0, 0.2, 0.2, 0.5}, gains[4] = {1, 1, 0, 0},
               weights[2] = {1, 0};
  refused(vekStsFIRGenOrderErr, vekxDesignLeastSquares(t, 6, edges, gains, nullptr, 2));
  refused(vekStsFilterFrequencyErr, vekxDesignLeastSquares(t, 7, touching, gains, nullptr, 2));
  refused(vekStsWeightErr, vekxDesignLeastSquares(t, 7, edges, gains, weights, 2));
  refused(vekStsNullPtrErr, vekxDesignEquiripple(t, 7, edges, nullptr, nullptr, 0, 9, 0));
  refused(vekStsSizeErr, vekxDesignEquiripple(t, 7, edges, gains, nullptr, 0, 9, 0));
  refused(vekStsBadArgErr, vekxDesignEquiripple(t, 1, touching, gains, weights, 2, 9, 0));
  refused(vekStsFIRGenOrderErr, vekxDesignEquiripple(t, 1, touching, gains, weights, 2, 0, 0));
  refused(vekStsFilterFrequencyErr, vekxDesignEquiripple(t, 7, touching, gains, weights, 2, 0, 0));
  refused(vekStsWeightErr, vekxDesignEquiripple(t, 7, edges, gains, weights, 2, 0, 0));
  refused(vekStsOutOfRangeErr, vekxDesignEquiripple(t, 7, edges, gains, nullptr, 2, 0, 0));
  refused(vekStsFIRGenOrderErr, vekxDesignSavitzkyGolay(t, 4, 2, 0, 1));
  refused(vekStsFIRGenOrderErr, vekxDesignSavitzkyGolay(t, 5, 5, 0, 1));
  refused(vekStsOutOfRangeErr, vekxDesignSavitzkyGolay(t, 5, 2, 3, 1));
  refused(vekStsOutOfRangeErr, vekxDesignSavitzkyGolay(t, 5, 2, 1, 0));
  refused(vekStsNullPtrErr, vekxSectionsDelay(nullptr, 1, t, t, 0));
  refused(vekStsSizeErr, vekxFilterDelay(edges, 4, edges, 0, edges, t, 4));
}

}  // namespace
}  // namespace vektest
