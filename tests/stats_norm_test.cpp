// SPDX-License-Identifier: Apache-2.0
// Norms, distances, counts and dot products against sums in extended precision, and to the bit where that is promised.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

constexpr int kFirstRegroupingSlot = 4;  // the slots below share the generic code
constexpr double kDouble = 1e-13;        // precision classes, relative to the sum of the magnitudes of the terms
constexpr double kSingle = 80 * 0x1p-24;

struct Norm {
  long double inf = 0, l1 = 0, l2 = 0;
  void add(long double m) { inf = std::max(inf, m), l1 += m, l2 += m * m; }
};

void expectNear(double got, long double want, double relative, int n) {
  ASSERT_LE(std::fabs(got - want), relative * std::fabs(want)) << got << " for " << double(want) << ", n " << n;
}

long double magnitudeOf(long double re, long double im) { return std::sqrt(re * re + im * im); }

TEST(Norm, RealAndComplex) {
  for (int n : sweepLengths(100, 2100)) {
    const auto x = randomVector<float>(n);
    const auto z = randomVector<Vek32fc>(n);
    Norm real, complex, throughSingle;
    double lane[16] = {}, l1 = 0;  // the exact order of L1_32f
    for (int i = 0; i < n; ++i) {
      real.add(std::fabs(x[i]));
      complex.add(magnitudeOf(z[i].re, z[i].im));
      throughSingle.add(float(std::sqrt(double(z[i].re) * z[i].re + double(z[i].im) * z[i].im)));
    }
    const int whole = n / 16 * 16;
    for (int i = 0; i < whole; ++i) lane[i % 16] += std::fabs(double(x[i]));
    for (int step = 2; step < 16; step *= 2)
      for (int k = 0; k < 16; k += 2 * step) lane[k] += lane[k + step], lane[k + 1] += lane[k + 1 + step];
    l1 = lane[0] + lane[1];
    for (int i = whole; i < n; ++i) l1 += std::fabs(double(x[i]));
    inEverySlot([&](int) {
      atEveryPlace(
          5,
          [&](const float* p) {
            float got = -1;
            ASSERT_EQ(veksNorm_Inf_32f(p, n, &got), vekStsNoErr);
            ASSERT_EQ(got, float(real.inf)) << n;
            ASSERT_EQ(veksNorm_L1_32f(p, n, &got), vekStsNoErr);
            ASSERT_EQ(got, float(l1)) << n;
            ASSERT_EQ(veksNorm_L2_32f(p, n, &got), vekStsNoErr);
            expectNear(got, std::sqrt(real.l2), 6e-8, n);
          },
          x);
      atEveryPlace(
          5,
          [&](const Vek32fc* p) {
            float got = -1;
            double wide = -1;
            ASSERT_EQ(veksNorm_Inf_32fc32f(p, n, &got), vekStsNoErr);
            expectNear(got, complex.inf, 1.3e-7, n);
            ASSERT_EQ(veksNorm_L1_32fc64f(p, n, &wide), vekStsNoErr);
            expectNear(wide, throughSingle.l1, kDouble, n);
            ASSERT_EQ(veksNorm_L2_32fc64f(p, n, &wide), vekStsNoErr);
            expectNear(wide, std::sqrt(complex.l2), kDouble, n);
          },
          z);
    });
  }
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
          const double scale = ring ? 1000 * size / double(magnitudeOf(v.re, v.im)) : size;
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

TEST(NormDiff, RealAndComplex) {
  for (int n : sweepLengths(100, 1100)) {
    const auto x = randomVector<float>(n), y = randomVector<float>(n);
    const auto a = randomVector<Vek32fc>(n), b = randomVector<Vek32fc>(n);
    Norm real, complex;
    float inf = 0, infComplex = 0;
    for (int i = 0; i < n; ++i) {
      real.add(std::fabs((long double)x[i] - y[i]));
      inf = std::max(inf, float(std::fabs(double(x[i]) - double(y[i]))));
      const float re = a[i].re - b[i].re, im = a[i].im - b[i].im;
      complex.add(magnitudeOf(re, im));
      infComplex = std::max(infComplex, re * re + im * im);
    }
    inEverySlot([&](int) {
      atEveryPlace(
          3,
          [&](const float* p, const float* q) {
            float got = -1;
            ASSERT_EQ(veksNormDiff_Inf_32f(p, q, n, &got), vekStsNoErr);
            ASSERT_EQ(got, inf) << n;
            ASSERT_EQ(veksNormDiff_L1_32f(p, q, n, &got), vekStsNoErr);
            expectNear(got, real.l1, 6e-8, n);
            ASSERT_EQ(veksNormDiff_L2_32f(p, q, n, &got), vekStsNoErr);
            expectNear(got, std::sqrt(real.l2), 6e-8, n);
          },
          x, y);
      atEveryPlace(
          3,
          [&](const Vek32fc* p, const Vek32fc* q) {
            float got = -1;
            double wide = -1;
            ASSERT_EQ(veksNormDiff_Inf_32fc32f(p, q, n, &got), vekStsNoErr);
            ASSERT_EQ(got, std::sqrt(infComplex)) << n;
            ASSERT_EQ(veksNormDiff_L1_32fc64f(p, q, n, &wide), vekStsNoErr);
            expectNear(wide, complex.l1, kDouble, n);
            ASSERT_EQ(veksNormDiff_L2_32fc64f(p, q, n, &wide), vekStsNoErr);
            expectNear(wide, std::sqrt(complex.l2), kDouble, n);
          },
          a, b);
    });
  }
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
  for (int n : sweepLengths(100, 600)) {
    const auto x = mixedVector<int32_t>(n);
    for (const auto& [low, high] : bounds) {
      int want = 0;
      for (int32_t v : x) want += low < v && v < high;
      inEverySlot([&, low = low, high = high](int) {
        atEveryPlace(
            3,
            [&](const int32_t* p) {
              int got = -1;
              ASSERT_EQ(veksCountInRange_32s(p, n, &got, low, high), vekStsNoErr);
              ASSERT_EQ(got, want) << n << " in " << low << ", " << high;
            },
            x);
      });
    }
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
    long double want = 0, magnitudes = 0;
    for (int i = 0; i < n; ++i) want += (long double)x[i] * y[i], magnitudes += std::fabs((long double)x[i] * y[i]);
    inEverySlot([&](int slot) {
      atEveryPlace(
          16,
          [&](const float* q, const float* p) {
            float got = -1;
            double wide = -1;
            ASSERT_EQ(veksDotProd_32f(p, q, n, &got), vekStsNoErr);
            if (slot < kFirstRegroupingSlot) {
              ASSERT_EQ(got, orderedDot(x, y, reinterpret_cast<uintptr_t>(q))) << n;
            }
            ASSERT_LE(std::fabs(got - want), kSingle * magnitudes) << n;
            ASSERT_EQ(veksDotProd_32f64f(p, q, n, &wide), vekStsNoErr);
            ASSERT_LE(std::fabs(wide - want), kDouble * magnitudes) << n;
          },
          y, x);
    });
  }
}

struct Wide {
  long double re, im;
};
Wide wide(float x) { return {x, 0}; }
Wide wide(int32_t x) { return {(long double)x, 0}; }
Wide wide(Vek32fc x) { return {x.re, x.im}; }
Wide wide(Vek32sc x) { return {(long double)x.re, (long double)x.im}; }
Wide wide(Vek64fc x) { return {x.re, x.im}; }

// sum of a * b, and the sum of the magnitudes of the products' terms.
template <class A, class B>
Wide product(const std::vector<A>& a, const std::vector<B>& b, long double* magnitudes) {
  Wide sum = {0, 0};
  *magnitudes = 0;
  for (size_t i = 0; i < a.size(); ++i) {
    const Wide x = wide(a[i]), y = wide(b[i]);
    sum.re += x.re * y.re - x.im * y.im;
    sum.im += x.re * y.im + x.im * y.re;
    *magnitudes += std::fabs(x.re * y.re) + std::fabs(x.im * y.im) + std::fabs(x.re * y.im) + std::fabs(x.im * y.re);
  }
  return sum;
}

template <class A, class B, class R>
void checkComplexDot(VekStatus (*dot)(const A*, const B*, int, R*), double precision) {
  for (int n : sweepLengths(70, 600)) {
    const auto a = randomVector<A>(n);
    const auto b = randomVector<B>(n);
    long double magnitudes;
    const Wide want = product(a, b, &magnitudes);
    inEverySlot([&](int) {
      atEveryPlace(
          3,
          [&](const A* p, const B* q) {
            R r;
            ASSERT_EQ(dot(p, q, n, &r), vekStsNoErr);
            const Wide got = wide(r);
            ASSERT_LE(std::fabs(got.re - want.re), precision * magnitudes) << n;
            ASSERT_LE(std::fabs(got.im - want.im), precision * magnitudes) << n;
          },
          a, b);
    });
  }
}
TEST(DotProd, Complex) {
  checkComplexDot(veksDotProd_32fc, kSingle);
  checkComplexDot(veksDotProd_32fc64fc, kDouble);
  checkComplexDot(veksDotProd_32f32fc, kSingle);
  checkComplexDot(veksDotProd_32f32fc64fc, kDouble);
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
      long double unused;
      const Wide real = product(x, y, &unused), complex = product(a, b, &unused), mixed = product(x, b, &unused);
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
        atEveryPlace(
            2,
            [&](const Vek32sc* p, const Vek32sc* q) {
              Vek32sc c;
              veksDotProd_32sc_Sfs(p, q, n, &c, 8);
              ASSERT_TRUE(sameBits(c, Vek32sc{scaledDot(complex.re, 8), scaledDot(complex.im, 8)}));
            },
            a, b);
        atEveryPlace(
            2,
            [&](const int32_t* p, const Vek32sc* q) {
              Vek32sc m;
              veksDotProd_32s32sc_Sfs(p, q, n, &m, 8);
              ASSERT_TRUE(sameBits(m, Vek32sc{scaledDot(mixed.re, 8), scaledDot(mixed.im, 8)}));
            },
            x, b);
        atEveryPlace(
            2,
            [&](const int32_t* p, const int32_t* q) {
              int32_t r;
              veksDotProd_32s_Sfs(p, q, n, &r, 1);
              ASSERT_EQ(r, scaledDot(real.re, 1));
            },
            x, y);
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
