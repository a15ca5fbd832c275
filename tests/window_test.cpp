// SPDX-License-Identifier: Apache-2.0
// Windows against the recurrences that define their weights.
#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "tests/support/shapes.h"

namespace {

using namespace vektest;

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
      w.push_back(std::cyl_bessel_i(0.0, std::fabs(std::sqrt(double(k) * (n - 1 - k)) * alpha)) /
                  std::cyl_bessel_i(0.0, std::fabs(0.5 * double(float(n - 1) * alpha))));
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

// As parts; those of the Kaiser window within the error of the Bessel function.
template <class T>
auto meaning(const Window& w) {
  return [&](int, const std::vector<T>& x) {
    const std::vector<T> y = reference(w.kind, x, w.alpha);
    std::vector<Near<float>> parts(y.size() * (kComplex<T> ? 2 : 1));
    for (size_t i = 0; i < parts.size(); ++i) {
      const float v = reinterpret_cast<const float*>(y.data())[i];
      parts[i] = {v, w.kind == kKaiser ? 6e-7 * std::fabs(v) + 1e-44 : 0};
    }
    return parts;
  };
}

TEST(Window, EveryLengthInEveryForm) {
  for (const Window& w : windows()) {
    std::vector<int> lengths;
    for (int n : sweepLengths(100, 1030))
      if (n >= w.least && !(w.kind == kKaiser && (n - 1) * 0.5 * std::fabs(w.alpha) > 38)) lengths.push_back(n);
    const auto most = size_t(lengths.back());
    Shapes(mixedVector<float>(most)).lengths(lengths).check(w.real, meaning<float>(w), w.realI);
    Shapes(mixedVector<Vek32fc>(most))
        .lengths(lengths)
        .check([&](auto* s, float* d, int n) { return w.complex(s, reinterpret_cast<Vek32fc*>(d), n); },
               meaning<Vek32fc>(w), w.complexI);
  }
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
