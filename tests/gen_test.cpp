// SPDX-License-Identifier: Apache-2.0
// Signals by their definitions: tones, triangles, random numbers, chirps, ramps and slopes.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;
constexpr double kPi = 3.141592653589793, kTwoPi = 6.283185307179586;

// ---- the signals by their definitions, one sample after the other -------------------------------------------------

float phaseAfter(float phase, float freq, int len) {
  const double p = len * kTwoPi * freq + phase;
  const float f = float(p - std::floor(p * 0.15915494309189535) * kTwoPi);
  return f < 0 || !(f < kTwoPi) ? 0 : f;
}

// Rounded to nearest, as the library's own is; the C library's may be the neighbour.
double cosine(double x) { return double(cosl(x)); }

std::vector<float> toneReference(int len, float magn, float freq, float phase) {
  std::vector<double> x(size_t(len) + 4);
  const double w = kTwoPi * freq, c = 2 * cosine(w), d = c * c - 2;
  for (int n = 0; n < len; ++n)
    x[n] = n < 2 ? magn * cosine(n ? phase + w : phase) : n < 4 ? c * x[n - 1] - x[n - 2] : d * x[n - 2] - x[n - 4];
  return std::vector<float>(x.begin(), x.begin() + len);
}

std::vector<Vek32fc> toneReferenceComplex(int len, float magn, float freq, float phase) {
  std::vector<Vek64fc> x(size_t(len) + 2);
  std::vector<Vek32fc> y;
  const double w = kTwoPi * freq, c = 2 * cosine(w);
  for (int n = 0; n < len; ++n) {
    const double angle = n ? phase + w : phase;
    if (n < 2) x[n] = {magn * cosine(angle), magn * double(sinl(angle))};
    if (n >= 2) x[n] = {c * x[n - 1].re - x[n - 2].re, c * x[n - 1].im - x[n - 2].im};
    y.push_back({float(x[n].re), float(x[n].im)});
  }
  return y;
}

std::vector<float> triangleReference(int len, double A, double f, double a, double phase) {
  std::vector<float> y;
  const double fall = kPi + a, rise = kPi - a, up = 4 * kPi * A * f / rise, down = -4 * kPi * A * f / fall;
  const double r1 = -(kPi - a) / (kPi + a), r2 = -(kPi + a) / (kPi - a);
  bool rising = !(phase < fall);
  double v = rising ? A * (2 * (phase - fall) / rise - 1) : A * (1 - 2 * phase / fall);
  for (int n = 0; n < len; ++n) {
    y.push_back(float(v));
    v += rising ? up : down;
    if (rising && v > A) {
      const double t = v * r1 + (A - A * r1);
      if (t < -A) {
        v = v - 4 * kPi * A / rise;
      } else {
        v = t;
        rising = false;
      }
    } else if (!rising && v < -A) {
      const double t = v * r2 + (A * r2 - A);
      if (t > A) {
        v = v + 4 * kPi * A / fall;
      } else {
        v = t;
        rising = true;
      }
    }
  }
  return y;
}

struct Combined {
  uint32_t A, B, C, L = 1131199209, k = ~0u;
  explicit Combined(uint32_t seed) : A(seed), B(69069 * A + 1013904243), C(69069 * B + 1013904243) {}
  uint32_t borrowed(uint32_t x, uint32_t y) {
    const uint32_t d = x - y + k;
    k = d >> 31 ? ~0u : 0;
    return k ? d - 18 : d;
  }
  int32_t out(uint32_t e) { return int32_t(e + (L = 69069 * L + 1013904243)); }
  void step(int32_t r[2], bool both) {
    const uint32_t e1 = borrowed(B, C);
    r[0] = out(e1);
    if (!both) return void(A = e1);
    const uint32_t e2 = borrowed(A, B);
    r[1] = out(e2);
    C = A, B = e1, A = e2;
  }
};

std::vector<float> uniformReference(int len, float low, float high, uint32_t& seed) {
  Combined g(seed);
  std::vector<float> y;
  const double scale = double(high - low) * 2.3283064365387e-10, centre = double(low + high) * 0.5;
  for (int n = 0; n < len; n += 2) {
    int32_t r[2];
    g.step(r, n + 1 < len);
    for (int i = 0; i < 2 && n + i < len; ++i) y.push_back(float(r[i] * scale + centre));
  }
  seed = g.A;
  return y;
}

std::vector<float> gaussReference(int len, float mean, float sd, uint32_t& seed) {
  Combined g(seed);
  std::vector<float> y;
  for (;;) {
    int32_t r[2];
    double u, v, s;
    do {
      g.step(r, true);
      u = r[0] * 4.656612873077e-10, v = r[1] * 4.656612873077e-10, s = u * u + v * v;
    } while (s >= 1 || s == 0);
    if (int(y.size()) == len) break;
    const double f = std::sqrt(-2 * std::log(s) / s);
    y.push_back(float(v * sd * f) + mean);
    if (int(y.size()) == len) break;
    y.push_back(float(u * sd * f) + mean);
  }
  seed = g.A;
  return y;
}

double halfAway(double x, double low, double high) {
  return std::isnan(x) ? 0 : std::fmin(std::fmax(std::round(x), low), high);
}

template <class D, class P>
std::vector<D> slopeReference(int len, P offset, P slope, double low, double high) {
  std::vector<D> y(len);
  // A line that is nowhere a number passes no bound.
  const auto index = [&](double bound, int never) {
    const P at = P((P(bound) - offset) * (1 / slope) + 1);
    return std::isnan(at) ? never : at < 0 ? 0 : at >= P(2147483648.0) ? 2147483647 : int(at);
  };
  for (int n = 0; n < len; ++n) {
    const P x = P(offset + P(slope * P(n)));
    const double rounded = sizeof(D) == 4 && std::isnan(x) ? low : halfAway(x, low, high);
    y[n] = slope == 0 ? D(halfAway(offset, low, high)) : D(rounded);
    if (slope > 0) y[n] = n >= index(high, INT32_MAX) ? D(high) : n < index(low, 0) ? D(low) : y[n];
    if (slope < 0) y[n] = n >= index(low, INT32_MAX) ? D(low) : n < index(high, 0) ? D(high) : y[n];
  }
  return y;
}

struct PhaseCase {
  float magn, freq, phase, asym;
};
const PhaseCase kPhaseCases[] = {{1, 0.25f, 0, 0},        {1, 0, 1, 0},
                                 {2.5f, 0.0123f, 3, 1},   {1e-3f, 0.4999f, 6.28318f, -2},
                                 {1e30f, 0.13f, 2, 3.1f}, {7, 0.37f, 0.1f, -3.1f},
                                 {1, 1e-5f, 5, -1},       {HUGE_VALF, 0.1f, 4, 2},
                                 {1, NAN, 1, 1}};

// A signal and what a call leaves behind for the next, of type A: call(pDst, len, &a) with a at the start.
template <class A, class Call, class Meaning>
void checkContinued(std::vector<int> lengths, A start, Call call, Meaning meaning) {
  Shapes<>().lengths(lengths).check(
      [=](auto* d, A* left, int n) {
        A a = start;
        const VekStatus status = call(d, n, &a);
        memcpy(left, &a, sizeof a);
        return status;
      },
      meaning);
}

TEST(Gen, TonesFollowTheRecurrence) {
  for (const PhaseCase& c : kPhaseCases) {
    const auto after = [=](int n) { return std::vector{phaseAfter(c.phase, c.freq, n)}; };
    checkContinued(
        sweepLengths(40, 777), c.phase,
        [=](float* d, int n, float* p) { return veksTone_Direct_32f(d, n, c.magn, c.freq, p, vekAlgHintFast); },
        [=](int n) {
          return std::tuple{toneReference(n, c.magn, c.freq, c.phase), after(n)};
        });
    checkContinued(
        sweepLengths(40, 777), c.phase,
        [=](Vek32fc* d, int n, float* p) { return veksTone_Direct_32fc(d, n, c.magn, c.freq, p, vekAlgHintNone); },
        [=](int n) {
          return std::tuple{toneReferenceComplex(n, c.magn, c.freq, c.phase), after(n)};
        });
  }
}

TEST(Gen, TrianglesFollowTheirSlopes) {
  for (const PhaseCase& c : kPhaseCases) {
    const auto after = [=](int n) { return std::vector{phaseAfter(c.phase, c.freq, n)}; };
    const auto real = [=](int n, double phase) { return triangleReference(n, c.magn, c.freq, c.asym, phase); };
    const double shifted = c.phase + (kTwoPi + kPi + c.asym) / 2;
    checkContinued(
        sweepLengths(40, 600), c.phase,
        [=](float* d, int n, float* p) { return veksTriangle_Direct_32f(d, n, c.magn, c.freq, c.asym, p); },
        [=](int n) {
          return std::tuple{real(n, c.phase), after(n)};
        });
    checkContinued(
        sweepLengths(40, 600), c.phase,
        [=](Vek32fc* d, int n, float* p) { return veksTriangle_Direct_32fc(d, n, c.magn, c.freq, c.asym, p); },
        [=](int n) {
          const std::vector<float> re = real(n, c.phase), im = real(n, shifted >= kTwoPi ? shifted - kTwoPi : shifted);
          return std::tuple{each([](float a, float b) { return Vek32fc{a, b}; })(n, re, im), after(n)};
        });
  }
}

TEST(Gen, StoredPhasesAreAcceptedAgainAndContinueTheSignal) {
  inEverySlot([](int) {
    for (int i = 0; i < 3000; ++i) {
      float phase = float(std::uniform_real_distribution<double>(0, 6.2831)(rng())), tri = phase, x[16];
      const float freq = float(std::uniform_real_distribution<double>(0, 0.4999)(rng()));
      const int n = 1 + int(rng()() % 16);
      for (int k = 0; k < 5; ++k) {
        const double expected = cosine(phase);
        ASSERT_EQ(veksTone_Direct_32f(x, n, 1, freq, &phase, 0), vekStsNoErr) << phase;
        ASSERT_NEAR(x[0], expected, 1e-6);
        ASSERT_EQ(veksTriangle_Direct_32f(x, n, 1, freq, 0.5f, &tri), vekStsNoErr) << tri;
        ASSERT_EQ(phase, tri);
      }
    }
    // A step that lands on the end of the period to within single precision.
    float phase = 6.283185f, x[1];
    EXPECT_EQ(veksTone_Direct_32f(x, 1, 1, 4.3e-8f, &phase, 0), vekStsNoErr);
    EXPECT_EQ(phase, 0);
  });
}

TEST(Gen, RefusesInOrderAndWritesNothing) {
  inEverySlot([](int) {
    float d[4] = {9, 9, 9, 9}, phase = 1, past = float(kTwoPi);
    const auto tone = [&](float* p, int n, float m, float f, float* ph) {
      return veksTone_Direct_32f(p, n, m, f, ph, 0);
    };
    EXPECT_EQ(tone(nullptr, 0, 0, 1, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(tone(nullptr, 0, 0, 1, &past), vekStsToneMagnErr);
    EXPECT_EQ(tone(nullptr, 0, 1, 0.5f, &past), vekStsToneFreqErr);
    EXPECT_EQ(tone(nullptr, 0, 1, -1e-9f, &past), vekStsToneFreqErr);
    EXPECT_EQ(tone(nullptr, 0, 1, 0, &past), vekStsTonePhaseErr);
    EXPECT_EQ(tone(nullptr, 0, 1, 0, &phase), vekStsNullPtrErr);
    EXPECT_EQ(tone(d, 0, 1, 0.1f, &phase), vekStsSizeErr);
    const auto tri = [&](float* p, int n, float m, float f, float a, float* ph) {
      return veksTriangle_Direct_32f(p, n, m, f, a, ph);
    };
    EXPECT_EQ(tri(nullptr, 0, -1, 1, 9, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(tri(nullptr, 0, -1, 1, 9, &past), vekStsTrnglMagnErr);
    EXPECT_EQ(tri(nullptr, 0, 1, 0.5f, 9, &past), vekStsTrnglFreqErr);
    EXPECT_EQ(tri(nullptr, 0, 1, 0.1f, float(kPi), &past), vekStsTrnglAsymErr);
    EXPECT_EQ(tri(nullptr, 0, 1, 0.1f, -float(kPi), &past), vekStsTrnglAsymErr);
    EXPECT_EQ(tri(nullptr, 0, 1, 0.1f, 0, &past), vekStsTrnglPhaseErr);
    EXPECT_EQ(tri(nullptr, 0, 1, 0.1f, 0, &phase), vekStsNullPtrErr);
    EXPECT_EQ(tri(d, -1, 1, 0.1f, 0, &phase), vekStsSizeErr);
    Vek32u seed = 5;
    EXPECT_EQ(veksRandUniform_Direct_32f(d, 0, 0, 1, &seed), vekStsSizeErr);
    EXPECT_EQ(veksRandGauss_Direct_32f(nullptr, 1, 0, 1, &seed), vekStsNullPtrErr);
    EXPECT_EQ(veksVectorJaehne_32f(d, 0, -1), vekStsSizeErr);
    EXPECT_EQ(veksVectorJaehne_32f(d, 4, -1), vekStsJaehneErr);
    Vek32s i[1] = {7};
    EXPECT_EQ(veksVectorJaehne_32s(i, 1, -1), vekStsJaehneErr);
    EXPECT_EQ(phase, 1);
    EXPECT_EQ(seed, 5u);
    EXPECT_EQ(i[0], 7);
    for (float x : d) EXPECT_EQ(x, 9);
  });
}

TEST(Gen, Jaehne) {
  const auto sine = [](int n, int len) { return len == 1 ? 0 : std::sin(kPi / 2 / len * n * n); };
  Shapes<>()
      .lengths({1, 2, 3, 7, 8, 9, 15, 16, 17, 100, 1023, 65537})
      .check([](float* d, int n) { return veksVectorJaehne_32f(d, n, 3.7f); },
             [=](int len) {
               std::vector<float> y;
               for (int n = 0; n < len; ++n) y.push_back(float(3.7f * sine(n, len)));
               return y;
             });
  Shapes<>()
      .lengths({1, 2, 5, 8, 13, 1000, 4097})
      .check([](Vek32s* d, int n) { return veksVectorJaehne_32s(d, n, 100000); },
             [=](int len) {
               std::vector<Vek32s> y;
               for (int n = 0; n < len; ++n) y.push_back(Vek32s(std::round(100000 * sine(n, len))));
               return y;
             });
}

// The sine of the chirp over its whole range, seen through the 31 bits of the largest integer magnitude.
TEST(Gen, JaehneSineStaysAccurateAtTheEndOfLongSignals) {
  const int len = 40000000, magn = 2147483647;
  std::vector<Vek32s> d(len);
  ASSERT_EQ(veksVectorJaehne_32s(d.data(), len, magn), vekStsNoErr);
  for (int n = len - 20000; n < len; ++n)
    ASSERT_LE(std::fabs(d[n] - double(magn) * std::sin(kPi / 2 / len * n * n)), 0.5001) << n;
}

TEST(Gen, RampsAndSlopes) {
  struct {
    float offset, slope;
  } const cases[] = {{0, 1},          {-0.5f, 0},      {-40000.3f, 613.7f}, {1e9f, -1e6f},    {70000, -33.33f},
                     {12.5f, -0.25f}, {-5e9f, 2.5e7f}, {300, -0.0f},        {0.49999997f, 1}, {255.5f, 1e-9f},
                     {-32768, -1},    {0, HUGE_VALF},  {HUGE_VALF, -3},     {NAN, 1},         {1, NAN},
                     {-1e-30f, 0},    {1e20f, 1e18f}};
  const auto shapes = Shapes<>().lengths(sweepLengths(70, 300));
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.offset << " + n*" << c.slope);
    const float a = c.offset, b = c.slope;
    shapes.check([=](float* d, int n) { return veksVectorRamp_32f(d, n, a, b); },
                 [=](int n) {
                   std::vector<float> y;
                   for (int i = 0; i < n; ++i) y.push_back(float(i) * b + a);
                   return y;
                 });
    shapes.check([=](Vek32s* d, int n) { return veksVectorRamp_32s(d, n, a, b); },
                 [=](int n) {
                   std::vector<Vek32s> y;
                   for (int i = 0; i < n; ++i) {
                     double x = float(i) * b + a;
                     x += x > 0 ? 0.5 : -0.5;
                     y.push_back(x >= 2147483647.0 ? INT32_MAX : x > -2147483648.0 ? int(x) : INT32_MIN);
                   }
                   return y;
                 });
    shapes.check([=](Vek8u* d, int n) { return veksVectorSlope_8u(d, n, a, b); },
                 [=](int n) { return slopeReference<Vek8u>(n, a, b, 0, 255); });
    shapes.check([=](Vek16s* d, int n) { return veksVectorSlope_16s(d, n, a, b); },
                 [=](int n) { return slopeReference<Vek16s>(n, a, b, -32768, 32767); });
    shapes.check([=](Vek32s* d, int n) { return veksVectorSlope_32s(d, n, a, b); },
                 [=](int n) { return slopeReference<Vek32s>(n, double(a), double(b), -2147483648.0, 2147483647.0); });
  }
  inEverySlot([&](int) {
    const int len = (1 << 24) + 1000;  // beyond the integers that single precision holds
    std::vector<float> d(len);
    veksVectorSlope_32f(d.data(), len, 0.5f, 3.0f);
    for (int i = len - 1000; i < len; ++i) ASSERT_EQ(d[i], 0.5f + 3.0f * float(i));
  });
}

TEST(Gen, RandomNumbersAreTheStatedSequence) {
  for (uint32_t seed : {0u, 1u, 0xDEADBEEFu, 0xFFFFFFFFu}) {
    const auto with = [=](auto reference, float a, float b) {
      return [=](int n) {
        uint32_t left = seed;
        const std::vector<float> y = reference(n, a, b, left);
        return std::tuple{y, std::vector{left}};
      };
    };
    checkContinued(
        sweepLengths(140, 2100), seed,
        [](float* d, int n, uint32_t* s) { return veksRandUniform_Direct_32f(d, n, -3, 8.5f, s); },
        with(uniformReference, -3, 8.5f));
    checkContinued(
        sweepLengths(140, 2100), seed,
        [](float* d, int n, uint32_t* s) { return veksRandGauss_Direct_32f(d, n, 2, -1.5f, s); },
        with(gaussReference, 2, -1.5f));
  }
  inEverySlot([](int) {
    float x[33];
    Vek32u seed = 3;
    veksRandGauss_Direct_32f(x, 33, 1.25f, 0, &seed);
    for (float v : x) EXPECT_EQ(v, 1.25f);
    veksRandUniform_Direct_32f(x, 33, -4, -4, &seed);
    for (float v : x) EXPECT_EQ(v, -4);
    EXPECT_NE(seed, 3u);
  });
}

// Mean, deviation, equal bins and the correlation of neighbours, each within five standard errors.
TEST(Gen, RandomNumbersAreDistributedAsTheyShould) {
  const int n = 1 << 20, bins = 64;
  std::vector<float> x(n);
  for (bool gauss : {false, true}) {
    Vek32u seed = 12345;
    gauss ? veksRandGauss_Direct_32f(x.data(), n, 0, 1, &seed) : veksRandUniform_Direct_32f(x.data(), n, 0, 1, &seed);
    std::vector<double> count(bins);
    double sum = 0, square = 0, lag[3] = {};
    const double mean = gauss ? 0 : 0.5, variance = gauss ? 1 : 1 / 12.0;
    for (int i = 0; i < n; ++i) {
      const double p = gauss ? 0.5 * std::erfc(-x[i] / std::sqrt(2.0)) : x[i], e = x[i] - mean;
      count[std::min(bins - 1, std::max(0, int(p * bins)))] += 1;
      sum += e;
      square += e * e;
      for (int k = 0; k < 3; ++k)
        if (i > k) lag[k] += e * (x[i - k - 1] - mean);
    }
    double chi = 0;
    for (double c : count) chi += (c - n / bins) * (c - n / bins) / (n / bins);
    EXPECT_LT(std::fabs(sum / n), 5 * std::sqrt(variance / n));
    EXPECT_LT(std::fabs(square / n - variance), 5 * variance * std::sqrt(2.0 / n));
    EXPECT_LT(std::fabs(chi - (bins - 1)), 5 * std::sqrt(2.0 * (bins - 1)));
    for (double l : lag) EXPECT_LT(std::fabs(l / n), 5 * variance / std::sqrt(double(n)));
  }
}

}  // namespace
