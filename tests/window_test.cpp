// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/slots.h"

namespace {

using namespace vektest;

double besselI0(double x) {
  if (x < 3.75) {
    const double t = 0.26666666666666666 * x, q = t * t;
    return 1 + q * (3.5156229 + q * (3.0899424 + q * (1.2067492 + q * (0.2659732 + q * (0.0360768 + q * 0.0045813)))));
  }
  const double u = 3.75 / x;
  const double c[] = {0.39894228,  0.01328592, 0.00225319,  -0.00157565, 0.00916281,
                      -0.02057706, 0.02635537, -0.01647633, 0.00392377};
  double p = c[8];
  for (int i = 7; i >= 0; --i) p = c[i] + u * p;
  return std::exp(x) / std::sqrt(x) * p;
}

enum Kind { kBartlett, kHann, kHamming, kBlackman, kStd, kOpt, kKaiser };

// The weights of the first half, by the recurrences that define them.
std::vector<double> weights(Kind kind, int n, float alpha) {
  std::vector<double> w;
  const double cosT = double(cosl(6.283185307179586 / (n - 1))), sinT = std::sqrt(1 - cosT * cosT);
  const double ratio = 0.5 / double(cosl(3.141592653589793 / (n - 1)));
  const double a = kind == kStd ? -0.16f : kind == kOpt ? float(-(ratio * ratio)) : alpha;
  double c = 1, s = 0, line = 0;
  for (int k = 0; k < n / 2; ++k) {
    if (kind == kBartlett) w.push_back(line);
    if (kind == kHann) w.push_back(0.5 * (1 - c));
    if (kind == kHamming) w.push_back(0.54 - 0.46 * c);
    if (kind == kBlackman || kind == kStd || kind == kOpt) w.push_back((a + 1) / 2 - 0.5 * c - a / 2 * (2 * c * c - 1));
    if (kind == kKaiser)
      w.push_back(besselI0(std::fabs(std::sqrt(double(k) * (n - 1 - k)) * alpha)) *
                  (1 / besselI0(std::fabs(0.5 * double(float(n - 1) * alpha)))));
    const double next = c * cosT - s * sinT;
    s = s * cosT + c * sinT;
    c = next;
    line += 2.0 / (n - 1);
  }
  return w;
}

float times(float x, double w) { return float(x * w); }
Vek32fc times(Vek32fc x, double w) { return {float(x.re * w), float(x.im * w)}; }

template <class T>
std::vector<T> reference(Kind kind, std::vector<T> x, float alpha) {
  const int n = int(x.size());
  const std::vector<double> w = weights(kind, n, alpha);
  for (int k = 0; k < n / 2; ++k) {
    x[k] = times(x[k], w[k]);
    x[n - 1 - k] = times(x[n - 1 - k], w[k]);
  }
  if (kind == kBartlett || (n == 3 && kind != kHamming && kind != kKaiser)) x[0] = x[n - 1] = T{};
  return x;
}

struct Window {
  const char* name;
  Kind kind;
  int least;
  float alpha;
  std::function<VekStatus(const Vek32f*, Vek32f*, int)> real;
  std::function<VekStatus(const Vek32fc*, Vek32fc*, int)> complex;
  std::function<VekStatus(Vek32f*, int)> realI;
  std::function<VekStatus(Vek32fc*, int)> complexI;
};

#define WINDOW(KIND, NAME, LEAST)                                                                                   \
  Window {                                                                                                          \
#NAME, KIND, LEAST, 0, veksWin##NAME##_32f, veksWin##NAME##_32fc, veksWin##NAME##_32f_I, veksWin##NAME##_32fc_I \
  }
#define WINDOW_ALPHA(KIND, NAME, LEAST, A)                                                              \
  Window {                                                                                              \
#NAME, KIND, LEAST, A, [](auto* s, auto* d, int n) { return veksWin##NAME##_32f(s, d, n, A); },       \
        [](auto* s, auto* d, int n) { return veksWin##NAME##_32fc(s, d, n, A); },                         \
        [](auto* d, int n) { return veksWin##NAME##_32f_I(d, n, A); },                                    \
        [](auto* d, int n) { return veksWin##NAME##_32fc_I(d, n, A); } \
  }

const std::vector<Window>& windows() {
  static const std::vector<Window> all = {WINDOW(kBartlett, Bartlett, 3),
                                          WINDOW(kHann, Hann, 3),
                                          WINDOW(kHamming, Hamming, 3),
                                          WINDOW(kStd, BlackmanStd, 3),
                                          WINDOW(kOpt, BlackmanOpt, 4),
                                          WINDOW_ALPHA(kBlackman, Blackman, 3, 0.3f),
                                          WINDOW_ALPHA(kBlackman, Blackman, 3, 1e-20f),
                                          WINDOW_ALPHA(kKaiser, Kaiser, 1, 0.05f),
                                          WINDOW_ALPHA(kKaiser, Kaiser, 1, -0.07f),
                                          WINDOW_ALPHA(kKaiser, Kaiser, 1, 0.0f),
                                          WINDOW_ALPHA(kKaiser, Kaiser, 1, NAN)};
  return all;
}

template <class T, class F, class G>
void check(const Window& w, int n, const std::vector<T>& x, F outOfPlace, G inPlace) {
  const std::vector<T> want = reference(w.kind, x, w.alpha);
  for (size_t shift : {size_t(0), sizeof(T)})
    for (Flush flush : {Flush::kBack, Flush::kFront}) {
      Guarded<T> s(x, flush, shift), d(n, flush, sizeof(T) - shift);
      ASSERT_EQ(outOfPlace(s, d, n), vekStsNoErr);
      ASSERT_TRUE(sameVectors(d.values(), want)) << w.name << " length " << n;
      ASSERT_TRUE(d.intact());
      ASSERT_EQ(inPlace(s, n), vekStsNoErr);
      ASSERT_TRUE(sameVectors(s.values(), want)) << w.name << " in place, length " << n;
      ASSERT_TRUE(s.intact());
    }
}

TEST(Window, EveryLengthInEveryForm) {
  inEverySlot([](int) {
    for (const Window& w : windows())
      for (int n : sweepLengths(100, 1030)) {
        if (n < w.least || (w.kind == kKaiser && (n - 1) * 0.5 * std::fabs(w.alpha) > 38)) continue;
        check<float>(w, n, mixedVector<float>(n), w.real, w.realI);
        check<Vek32fc>(w, n, randomVector<Vek32fc>(n), w.complex, w.complexI);
      }
  });
}

// The recurrence may drift, but not far from the window itself.
TEST(Window, LongWindowsStayCloseToTheFormula) {
  const int n = 200001;
  std::vector<float> x(n, 1.0f);
  ASSERT_EQ(veksWinHann_32f_I(x.data(), n), vekStsNoErr);
  for (int k = 0; k < n; k += 97) ASSERT_NEAR(x[k], 0.5 - 0.5 * std::cos(6.283185307179586 * k / (n - 1)), 1e-6);
}

TEST(Window, EndsOfSpecialValue) {
  inEverySlot([](int) {
    const float nan = NAN, inf = HUGE_VALF;
    for (const Window& w : windows()) {
      if (w.kind != kBartlett && w.kind != kHann && w.kind != kStd) continue;
      for (int n : {3, 5, 40}) {
        std::vector<float> x(n, 2.0f);
        x[0] = nan;
        x[n - 1] = inf;
        ASSERT_EQ(w.realI(x.data(), n), vekStsNoErr);
        const bool zero = w.kind == kBartlett || n == 3;
        EXPECT_TRUE(zero ? x[0] == 0 && x[n - 1] == 0 && !std::signbit(x[0]) : std::isnan(x[0]) && std::isnan(x[n - 1]))
            << w.name << n;
        EXPECT_EQ(x[n / 2], n % 2 ? 2.0f : x[n / 2]);
      }
    }
    float five[5] = {1, 1, 1, 1, 1};
    EXPECT_EQ(veksWinHamming_32f_I(five, 5), vekStsNoErr);
    EXPECT_TRUE(sameVectors(std::vector<float>(five, five + 5), {0.08f, 0.54f, 1, 0.54f, 0.08f}));
  });
}

TEST(Window, RefusesInOrder) {
  inEverySlot([](int) {
    for (const Window& w : windows()) {
      if (w.kind == kKaiser) continue;
      std::vector<float> x(8, 1.0f);
      const int below = w.least - 1;
      EXPECT_EQ(w.realI(nullptr, below), w.kind == kOpt ? vekStsSizeErr : vekStsNullPtrErr) << w.name;
      EXPECT_EQ(w.real(x.data(), nullptr, 8), vekStsNullPtrErr);
      for (int n : {below, 0, -1, INT32_MIN, INT32_MIN + 1}) EXPECT_EQ(w.realI(x.data(), n), vekStsSizeErr) << w.name;
      EXPECT_EQ(x, std::vector<float>(8, 1.0f));
    }
    std::vector<float> x(101, 1.0f);
    EXPECT_EQ(veksWinKaiser_32f_I(x.data(), 0, 99), vekStsSizeErr);
    EXPECT_EQ(veksWinKaiser_32f_I(nullptr, 0, 99), vekStsNullPtrErr);
    EXPECT_EQ(veksWinKaiser_32f_I(x.data(), 101, -0.77f), vekStsHugeWinErr);
    EXPECT_EQ(x, std::vector<float>(101, 1.0f));
    EXPECT_EQ(veksWinKaiser_32f_I(x.data(), 101, 0.76f), vekStsNoErr);
  });
}

}  // namespace
