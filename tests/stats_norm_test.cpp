// SPDX-License-Identifier: Apache-2.0
// Norms, distances, counts and dot products to the bit where that is promised; those with a bound are held to it by
// tests/lengths_test.cpp.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

constexpr int kFirstRegroupingSlot = 4;  // the slots below share the generic code

// Sixteen double sums by the index, added as neighbours, then the rest.
float orderedL1(const std::vector<float>& x) {
  double lane[16] = {};
  const size_t whole = x.size() / 16 * 16;
  for (size_t i = 0; i < whole; ++i) lane[i % 16] += std::fabs(double(x[i]));
  for (int step = 2; step < 16; step *= 2)
    for (int k = 0; k < 16; k += 2 * step) lane[k] += lane[k + step], lane[k + 1] += lane[k + 1 + step];
  double sum = lane[0] + lane[1];
  for (size_t i = whole; i < x.size(); ++i) sum += std::fabs(double(x[i]));
  return float(sum);
}

TEST(Norm, RealLargestAndSumInTheStatedOrder) {
  const auto x = Shapes(randomVector<float>(2200)).apart();
  x.check([](auto* s, float* d, int n) { return veksNorm_Inf_32f(s, n, d); },
          [](int, const std::vector<float>& v) {
            float most = 0;
            for (float e : v) most = std::max(most, std::fabs(e));
            return std::vector{most};
          });
  x.check([](auto* s, float* d, int n) { return veksNorm_L1_32f(s, n, d); },
          [](int, const std::vector<float>& v) { return std::vector{orderedL1(v)}; });
}

// Every bit of the largest complex magnitude: double and one rounding in groups of four, single in the rest.
float largestMagnitude(const std::vector<Vek32fc>& z) {
  float high = 0;
  for (size_t i = 0; i < z.size(); ++i) {
    const float re = z[i].re, im = z[i].im;
    const float power = i < z.size() / 4 * 4 ? float(double(re) * re + double(im) * im) : re * re + im * im;
    if (power > high) high = power;
  }
  return std::sqrt(high);
}

TEST(Norm, LargestComplexMagnitudeToTheBit) {
  for (double size : {1.0, 1e-20, 1e-22, 1e17, 3e35})
    for (int n : {1, 3, 4, 5, 31, 64, 500, 1027, 2500})
      for (bool ring : {false, true}) {
        auto z = randomVector<Vek32fc>(n);
        for (Vek32fc& v : z) {
          const double scale = ring ? 1000 * size / std::hypot(double(v.re), double(v.im)) : size;
          v = {float(v.re * scale), float(v.im * scale)};
        }
        inEverySlot([&](int) {
          for (size_t from = 0; from < std::min(z.size(), size_t(9)); ++from) {
            const std::vector<Vek32fc> part(z.begin() + from, z.end());
            float got = -1;
            veksNorm_Inf_32fc32f(part.data(), int(part.size()), &got);
            ASSERT_EQ(got, largestMagnitude(part)) << n << " size " << size;
          }
        });
      }
}

TEST(NormDiff, LargestDifference) {
  Shapes(randomVector<float>(1100), randomVector<float>(1100))
      .apart()
      .check([](auto* a, auto* b, float* d, int n) { return veksNormDiff_Inf_32f(a, b, n, d); },
             [](int n, const std::vector<float>& a, const std::vector<float>& b) {
               double most = 0;
               for (int i = 0; i < n; ++i) most = std::max(most, std::fabs(double(a[i]) - b[i]));
               return std::vector{float(most)};
             });
  Shapes(randomVector<Vek32fc>(1100), randomVector<Vek32fc>(1100))
      .check([](auto* a, auto* b, float* d, int n) { return veksNormDiff_Inf_32fc32f(a, b, n, d); },
             [](int n, const std::vector<Vek32fc>& a, const std::vector<Vek32fc>& b) {
               float most = 0;
               for (int i = 0; i < n; ++i) {
                 const float re = a[i].re - b[i].re, im = a[i].im - b[i].im;
                 most = std::max(most, re * re + im * im);
               }
               return std::vector{std::sqrt(most)};
             });
}

// The difference need not pass through double precision: the largest rounds to the same single.
TEST(NormDiff, LargestDifferenceRoundsOnce) {
  for (int round = 0; round < 20000; ++round) {
    const float x = std::ldexp(randomValue<float>(), int(rng()() % 80) - 40), y = std::ldexp(randomValue<float>(), -20);
    const std::vector<float> a = {x, 0}, b = {round % 2 ? std::nextafter(x, y) : y, 0};
    float got;
    veksNormDiff_Inf_32f(a.data(), b.data(), 2, &got);
    ASSERT_EQ(got, float(std::fabs(double(a[0]) - double(b[0]))));
  }
}

TEST(Norm, NanIsPassedOverByMaximaAndKeptBySums) {
  inEverySlot([&](int) {
    for (int n : {1, 3, 8, 9, 50, 1030}) {
      std::vector<float> x(n, NAN);
      std::vector<Vek32fc> z(n, Vek32fc{NAN, 1});
      float f[4] = {-1, -1, -1, -1};
      double d = 0;
      veksNorm_Inf_32f(x.data(), n, &f[0]);
      veksNorm_Inf_32fc32f(z.data(), n, &f[1]);
      veksNormDiff_Inf_32f(x.data(), x.data(), n, &f[2]);
      veksNormDiff_Inf_32fc32f(z.data(), z.data(), n, &f[3]);
      for (float v : f) ASSERT_TRUE(sameBits(v, 0.0f)) << n;
      veksNorm_L1_32f(x.data(), n, &f[0]);
      veksNorm_L2_32f(x.data(), n, &f[1]);
      veksNorm_L1_32fc64f(z.data(), n, &d);
      ASSERT_TRUE(std::isnan(f[0]) && std::isnan(f[1]) && std::isnan(d));
      x[n / 2] = -2, z[n / 2] = {3, 4};
      veksNorm_Inf_32f(x.data(), n, &f[0]);
      veksNorm_Inf_32fc32f(z.data(), n, &f[1]);
      ASSERT_EQ(f[0], 2) << n;
      ASSERT_EQ(f[1], 5) << n;
    }
  });
}

TEST(CountInRange, BothBoundsExcluded) {
  const std::vector<std::pair<int32_t, int32_t>> bounds = {{1, 3},
                                                           {0, 4},
                                                           {3, 1},
                                                           {2, 2},
                                                           {1, 2},
                                                           {INT32_MIN, INT32_MAX},
                                                           {INT32_MAX, INT32_MIN},
                                                           {-1, INT32_MAX},
                                                           {INT32_MIN, 0},
                                                           {INT32_MIN, INT32_MIN + 2},
                                                           {INT32_MAX - 2, INT32_MAX},
                                                           {-1000000000, 1000000000}};
  const auto x = Shapes(mixedVector<int32_t>(700)).apart();
  for (const auto& range : bounds) {
    const int32_t low = range.first, high = range.second;
    x.check(
        [=](auto* s, int* d, int n) { return veksCountInRange_32s(s, n, d, low, high); },
        [=](int, const std::vector<int32_t>& v) {
          return std::vector{int(std::count_if(v.begin(), v.end(), [=](int32_t e) { return low < e && e < high; }))};
        });
  }
  int count = 5;
  const int32_t one = 1;
  EXPECT_EQ(veksCountInRange_32s(&one, 0, &count, 0, 2), vekStsSizeErr);
  EXPECT_EQ(count, 0);
}

// ---- dot products --------------------------------------------------------------------------------------------------

float orderedDot(const std::vector<float>& x, const std::vector<float>& y, uintptr_t address) {
  const int n = int(x.size());
  const int lead = address % 4 ? n : std::min(n, int((16 - address % 16) % 16 / 4));
  float sum = 0;
  int i = 0;
  for (; i < lead; ++i) sum += x[i] * y[i];
  float lane[8] = {sum};
  for (; i + 8 <= n; i += 8)
    for (int k = 0; k < 8; ++k) lane[k] += x[i + k] * y[i + k];
  for (int k = 0; k < 4; ++k) lane[k] += lane[k + 4];
  sum = (lane[0] + lane[2]) + (lane[1] + lane[3]);
  for (; i < n; ++i) sum += x[i] * y[i];
  return sum;
}

TEST(DotProd, SingleInTheStatedOrder) {
  for (int n : sweepLengths(100, 2100)) {
    const auto x = randomVector<float>(n), y = randomVector<float>(n);
    inEverySlot([&](int slot) {
      if (slot >= kFirstRegroupingSlot) return;
      atEveryPlace(
          16,
          [&](const float* q, const float* p) {
            float got = -1;
            ASSERT_EQ(veksDotProd_32f(p, q, n, &got), vekStsNoErr);
            ASSERT_EQ(got, orderedDot(x, y, reinterpret_cast<uintptr_t>(q))) << n;
          },
          y, x);
    });
  }
}

struct Wide {
  long double re, im;
};
template <class T>
Wide wide(T x) {
  if constexpr (kComplex<T>) return {(long double)x.re, (long double)x.im};
  if constexpr (!kComplex<T>) return {(long double)x, 0};
}

template <class A, class B>
Wide product(const std::vector<A>& a, const std::vector<B>& b) {
  Wide sum = {0, 0};
  for (size_t i = 0; i < a.size(); ++i) {
    const Wide x = wide(a[i]), y = wide(b[i]);
    sum.re += x.re * y.re - x.im * y.im;
    sum.im += x.re * y.im + x.im * y.re;
  }
  return sum;
}

// Elements small enough for exact sums: the result is known to the last integer, ties included.
int32_t scaledDot(long double sum, int scaleFactor) {
  const long double x = std::ldexp(sum, -std::max(-31, std::min(93, scaleFactor)));
  return int32_t(std::nearbyint(std::max(-2147483648.0L, std::min(2147483647.0L, x))));
}

TEST(DotProd, ScaledIntegers) {
  for (int n : sweepLengths(60, 300))
    for (int bits : {3, 12, 22}) {
      std::vector<int32_t> x = randomVector<int32_t>(n), y = randomVector<int32_t>(n);
      std::vector<Vek32sc> a = randomVector<Vek32sc>(n), b = randomVector<Vek32sc>(n);
      for (int i = 0; i < n; ++i)
        for (int32_t* v : {&x[i], &y[i], &a[i].re, &a[i].im, &b[i].re, &b[i].im}) *v >>= 32 - bits;
      const Wide real = product(x, y), complex = product(a, b), mixed = product(x, b);
      inEverySlot([&](int) {
        for (int scaleFactor : {0, 1, 2, 3, 9, 20, 31, 60, 93, 1000, INT32_MAX, -1, -5, -31, -32, INT32_MIN}) {
          int32_t r;
          Vek32sc c, m;
          ASSERT_EQ(veksDotProd_32s_Sfs(x.data(), y.data(), n, &r, scaleFactor), vekStsNoErr);
          ASSERT_EQ(veksDotProd_32sc_Sfs(a.data(), b.data(), n, &c, scaleFactor), vekStsNoErr);
          ASSERT_EQ(veksDotProd_32s32sc_Sfs(x.data(), b.data(), n, &m, scaleFactor), vekStsNoErr);
          ASSERT_EQ(r, scaledDot(real.re, scaleFactor)) << n << " sf " << scaleFactor;
          ASSERT_TRUE(sameBits(c, Vek32sc{scaledDot(complex.re, scaleFactor), scaledDot(complex.im, scaleFactor)}));
          ASSERT_TRUE(sameBits(m, Vek32sc{scaledDot(mixed.re, scaleFactor), scaledDot(mixed.im, scaleFactor)}));
        }
      });
    }
  const int32_t top = INT32_MAX, bottom = INT32_MIN;
  int32_t r = 0;
  veksDotProd_32s_Sfs(&top, &top, 1, &r, 0);
  EXPECT_EQ(r, INT32_MAX);
  veksDotProd_32s_Sfs(&top, &bottom, 1, &r, 0);
  EXPECT_EQ(r, INT32_MIN);
  veksDotProd_32s_Sfs(&bottom, &bottom, 1, &r, 32);
  EXPECT_EQ(r, 1 << 30);
}

// A number times its conjugate is real: both products of the imaginary part are rounded, or neither is.
TEST(DotProd, ConjugatesGiveNoImaginaryPart) {
  for (int n = 1; n <= 9; ++n) {
    std::vector<Vek32sc> x = randomVector<Vek32sc>(n), y = x;
    for (int i = 0; i < n; ++i) y[i] = {x[i].re, -(x[i].im |= 1)};
    inEverySlot([&](int) {
      Vek32sc r;
      ASSERT_EQ(veksDotProd_32sc_Sfs(x.data(), y.data(), n, &r, 0), vekStsNoErr);
      ASSERT_EQ(r.im, 0) << n;
    });
  }
}

// Products above 2^53, rounded alike before they are added, cancel.
TEST(DotProd, OppositeProductsCancel) {
  const std::vector<int32_t> x(8, INT32_MAX),
      y = {INT32_MAX, INT32_MAX, INT32_MAX, INT32_MAX, -INT32_MAX, -INT32_MAX, -INT32_MAX, -INT32_MAX};
  std::vector<Vek32sc> a(8), b(8);
  for (int i = 0; i < 8; ++i) a[i] = {x[i], x[i] - 2}, b[i] = {y[i], y[i]};
  inEverySlot([&](int) {
    int32_t r;
    Vek32sc c, m;
    ASSERT_EQ(veksDotProd_32s_Sfs(x.data(), y.data(), 8, &r, 0), vekStsNoErr);
    ASSERT_EQ(veksDotProd_32sc_Sfs(a.data(), b.data(), 8, &c, 0), vekStsNoErr);
    ASSERT_EQ(veksDotProd_32s32sc_Sfs(x.data(), b.data(), 8, &m, 0), vekStsNoErr);
    ASSERT_EQ(r, 0);
    ASSERT_TRUE(sameBits(c, Vek32sc{0, 0}));
    ASSERT_TRUE(sameBits(m, Vek32sc{0, 0}));
  });
}

}  // namespace
