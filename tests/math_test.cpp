// SPDX-License-Identifier: Apache-2.0
// Absolute values, squares, roots, polar forms and normalisation: what they mean, how near they come, and that every
// slot, length, alignment and in-place form gives the same bits.
#include <complex>

#include "tests/support/shapes.h"

namespace vektest {
namespace {

using C = Vek32fc;

template <class T>
T absolute(T x) {
  return x == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : x < 0 ? T(-x) : x;
}
float power(float re, float im) { return re * re + im * im; }

TEST(Math, ExactFormsFollowTheirFormulas) {
  Shapes(mixedVector<Vek16s>(900)).check(veksAbs_16s, each(absolute<Vek16s>), veksAbs_16s_I);
  Shapes(mixedVector<Vek32s>(900)).check(veksAbs_32s, each(absolute<Vek32s>), veksAbs_32s_I);
  Shapes x(mixedVector<float>(900));
  Shapes xy(mixedVector<float>(901), mixedVector<float>(902));
  Shapes z(mixedVector<C>(900));
  x.check(veksAbs_32f, each([](float v) { return std::fabs(v); }), veksAbs_32f_I);
  x.check(veksSqr_32f, each([](float v) { return v * v; }), veksSqr_32f_I);
  z.check(veksSqr_32fc, each([](C v) {
            return C{v.re * v.re - v.im * v.im, v.re * v.im + v.im * v.re};
          }),
          veksSqr_32fc_I);
  x.mayWarn().check(veksSqrt_32f, each([](float v) { return std::sqrt(v); }), veksSqrt_32f_I);
  xy.check(veksPowerSpectrum_32f, each(power));
  z.check(veksPowerSpectrum_32fc, each([](C v) { return power(v.re, v.im); }));
  xy.check(veksMagnitude_32f, each([](float re, float im) { return std::sqrt(power(re, im)); }));
  z.check(veksMagnitude_32fc, each([](C v) { return std::sqrt(power(v.re, v.im)); }));
  x.check([](auto* s, float* d, int n) { return veksNormalize_32f(s, d, n, 1.5f, -0.3f); },
          each([](float v) { return (v - 1.5f) / -0.3f; }));
  z.check(
      [](auto* s, C* d, int n) {
        return veksNormalize_32fc(s, d, n, {1.5f, -7}, -0.3f);
      },
      each([](C v) {
        return C{(v.re - 1.5f) / -0.3f, (v.im + 7) / -0.3f};
      }));
}

// What the parts of polar coordinates are is told by the functions for one part.
TEST(Math, PolarFormsAreBothParts) {
  const auto call = [](auto f) {
    return [f](int n, const auto&... s) {
      std::vector<float> d(static_cast<size_t>(n));
      f(s.data()..., d.data(), n);
      return d;
    };
  };
  const auto magnitude = call(veksMagnitude_32f), phase = call(veksPhase_32f);
  const auto magnitudeC = call(veksMagnitude_32fc), phaseC = call(veksPhase_32fc);
  const Shapes xy(mixedVector<float>(901), mixedVector<float>(902));
  const Shapes z(mixedVector<C>(900));
  xy.check(veksCartToPolar_32f, [&](int n, const auto& x, const auto& y) {
    return std::tuple{magnitude(n, x, y), phase(n, x, y)};
  });
  z.check(veksCartToPolar_32fc, [&](int n, const auto& v) { return std::tuple{magnitudeC(n, v), phaseC(n, v)}; });
}

// ---- integers, every value at every scale factor -------------------------------------------------------------------

// Long double tells every case apart: a root is at least 2^-33 of itself away from a tie that it does not meet.
template <class T>
T scaled(long double value, int sf) {
  const long double v = nearbyintl(scalbnl(value, -std::min(std::max(sf, -200), 200)));
  return T(std::min(v, (long double)std::numeric_limits<T>::max()));
}

template <class T>
void checkEveryValue(VekStatus (*square)(const T*, T*, int, int), VekStatus (*root)(const T*, T*, int, int)) {
  std::vector<T> x, squares, roots;
  std::vector<int> factors = {INT_MIN, INT_MIN + 1, INT_MAX};
  for (int sf = -70; sf <= 70; ++sf) factors.push_back(sf);
  for (int v = std::numeric_limits<T>::min(); v <= std::numeric_limits<T>::max(); ++v) x.push_back(T(v));
  for (int sf : factors) {
    squares.clear(), roots.clear();
    for (T v : x) {
      squares.push_back(scaled<T>((long double)(v)*v, sf));
      roots.push_back(v < 0 ? T(0) : scaled<T>(sqrtl(v), sf));
    }
    inEverySlot([&](int) {
      SCOPED_TRACE("factor " + std::to_string(sf));
      std::vector<T> got(x.size());
      ASSERT_EQ(square(x.data(), got.data(), int(x.size()), sf), vekStsNoErr);
      ASSERT_TRUE(got == squares || sameVectors(got, squares));
      ASSERT_EQ(root(x.data(), got.data(), int(x.size()), sf), T(-1) < T(0) ? vekStsSqrtNegArg : vekStsNoErr);
      ASSERT_TRUE(got == roots || sameVectors(got, roots));
    });
    if (::testing::Test::HasFatalFailure()) return;
  }
}

TEST(Math, ScaledFormsOfEveryValue) {
  checkEveryValue<Vek8u>(veksSqr_8u_Sfs, veksSqrt_8u_Sfs);
  checkEveryValue<Vek16s>(veksSqr_16s_Sfs, veksSqrt_16s_Sfs);
}

// ---- accuracy of the float forms -----------------------------------------------------------------------------------

float fromBits(uint32_t u) {
  float x;
  memcpy(&x, &u, sizeof x);
  return x;
}

// Zeros and infinities must match with their signs, NaN with NaN.
::testing::AssertionResult near(float got, long double want, double ulps) {
  if (std::isnan(want) && std::isnan(got)) return ::testing::AssertionSuccess();
  const float nearest = float(want);
  if (got == nearest && std::signbit(got) == std::signbit(nearest)) return ::testing::AssertionSuccess();
  int e;
  frexpl(want, &e);
  const long double off = fabsl(got - want) / scalbnl(1, std::max(e - 24, -149));
  if (want != 0 && off <= ulps) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "got " << got << ", want " << double(want) << ", off by " << double(off);
}

// Every sign and exponent with random fractions, and what is special.
std::vector<float> patterns(int perExponent) {
  std::vector<float> x = specialValues<float>();
  for (uint32_t top = 0; top < 512; ++top)
    for (int k = 0; k < perExponent; ++k) x.push_back(fromBits(top << 23 | (k < 2 ? k : uint32_t(rng()() & 0x7FFFFF))));
  return x;
}

TEST(Math, CosineAndSineOfAnyPhase) {
  std::vector<float> phase = patterns(400);
  // Next to the multiples of pi/2, where the reduction cancels, over all of its ranges; and the worst of all phases.
  for (double k = 1; k < 1e37; k = k < 4000 ? k + 1 : std::floor(k * 1.37))
    for (float x : {float(k * M_PI_2), std::nextafterf(float(k * M_PI_2), 0), -float(k * M_PI_2)}) phase.push_back(x);
  for (float x : {0x1.5e34b4p+7f, 0x1.8d656ep+7f, 200.0f, std::nextafterf(200, 201), 6e6f, std::nextafterf(6e6f, 7e6f),
                  0x1.3507f0p+79f, 0x1.f2f3d8p+45f, 16367173 * 0x1p+72f})
    phase.push_back(x);
  const int n = int(phase.size());
  const std::vector<float> one(phase.size(), 1.0f);
  inEverySlot([&](int) {
    std::vector<float> re(phase.size()), im(phase.size());
    ASSERT_EQ(veksPolarToCart_32f(one.data(), phase.data(), re.data(), im.data(), n), vekStsNoErr);
    for (size_t i = 0; i < phase.size(); ++i) {
      ASSERT_TRUE(near(re[i], cosl(phase[i]), 2)) << "cos " << phase[i];
      ASSERT_TRUE(near(im[i], sinl(phase[i]), 2)) << "sin " << phase[i];
    }
    // The products are single ones of the same cosine and sine.
    std::vector<float> magn(phase.size(), 0x1.8p-140f), scaledRe(phase.size()), scaledIm(phase.size());
    veksPolarToCart_32f(magn.data(), phase.data(), scaledRe.data(), scaledIm.data(), n);
    for (size_t i = 0; i < phase.size(); ++i) {
      ASSERT_TRUE(sameBits(scaledRe[i], magn[i] * re[i]) && sameBits(scaledIm[i], magn[i] * im[i])) << phase[i];
    }
  });
}

TEST(Math, PhaseOfAnyPoint) {
  std::vector<float> re, im;
  const auto add = [&](float x, float y) { re.push_back(x), im.push_back(y); };
  for (float x : specialValues<float>())
    for (float y : specialValues<float>()) add(x, y);
  // Quotients of every size around 1, then arbitrary pairs; where the error of the polynomial is largest.
  for (float y : patterns(150)) {
    add(y * fromBits(uint32_t(rng()() & 0x7FFFFF) | (100 + uint32_t(rng()() % 56)) << 23), y);
    add(fromBits(uint32_t(rng()())), y);
  }
  for (uint32_t u = 0x3D000000; u <= 0x3F800000; u += 613) {
    const float t = fromBits(u);
    add(1, t), add(-1, t), add(t, 1), add(-t, -1);
  }
  for (float t : {0x1.01bdf4p-1f, 0x1.cef36p-2f, 0x1.dd136ep-1f}) add(1, t), add(-1, t), add(t, -1), add(-t, 1);
  inEverySlot([&](int) {
    std::vector<float> got(re.size());
    ASSERT_EQ(veksPhase_32f(re.data(), im.data(), got.data(), int(re.size())), vekStsNoErr);
    for (size_t i = 0; i < re.size(); ++i) {
      ASSERT_TRUE(near(got[i], atan2l(im[i], re[i]), 2)) << "re " << re[i] << " im " << im[i];
    }
  });
}

TEST(Math, ComplexSquareRootIsPrincipalAndAccurate) {
  std::vector<Vek32fc> z;
  for (float x : specialValues<float>())
    for (float y : specialValues<float>()) z.push_back({x, y});
  for (float x : patterns(60))
    z.push_back({x, fromBits(uint32_t(rng()()))}), z.push_back({x, x * randomValue<float>()});
  inEverySlot([&](int) {
    std::vector<Vek32fc> got(z.size());
    ASSERT_EQ(veksSqrt_32fc(z.data(), got.data(), int(z.size())), vekStsNoErr);
    for (size_t i = 0; i < z.size(); ++i) {
      const std::complex<long double> want = std::sqrt(std::complex<long double>(z[i].re, z[i].im));
      ASSERT_TRUE(near(got[i].re, want.real(), 4)) << "re of root of " << z[i].re << " " << z[i].im;
      // Of -infinity and NaN the sign of the imaginary part is nobody's.
      const bool open = std::isnan(z[i].im) && std::isinf(z[i].re);
      ASSERT_TRUE(near(open ? std::fabs(got[i].im) : got[i].im, open ? fabsl(want.imag()) : want.imag(), 4))
          << "im of root of " << z[i].re << " " << z[i].im;
    }
  });
}

// ---- bit patterns and statuses -------------------------------------------------------------------------------------

TEST(Math, RootsOfNegativeElements) {
  inEverySlot([&](int) {
    for (int n : {1, 7, 8, 33, 200})
      for (int at = 0; at < n; ++at) {
        std::vector<float> x(size_t(n), 4.0f), y(x.size());
        std::vector<Vek16s> k(size_t(n), 9), r(k.size());
        for (float harmless : {-0.0f, fromBits(0xFFC00001)}) {
          x[size_t(at)] = harmless;
          ASSERT_EQ(veksSqrt_32f(x.data(), y.data(), n), vekStsNoErr);
        }
        x[size_t(at)] = at % 2 ? -0x1p-149f : -INFINITY;
        k[size_t(at)] = at % 2 ? -1 : -32768;
        ASSERT_EQ(veksSqrt_32f(x.data(), y.data(), n), vekStsSqrtNegArg);
        ASSERT_EQ(veksSqrt_16s_Sfs(k.data(), r.data(), n, 0), vekStsSqrtNegArg);
        for (int i = 0; i < n; ++i) {
          uint32_t pattern;
          memcpy(&pattern, &y[size_t(i)], 4);
          ASSERT_EQ(pattern, i == at ? 0xFFC00000u : 0x40000000u);
          ASSERT_EQ(r[size_t(i)], i == at ? 0 : 3);
        }
      }
  });
}

TEST(Math, AbsoluteValueKeepsThePayloadOfNaN) {
  const std::vector<uint32_t> x = {0xFF800001, 0x7FABCDEF, 0xFFFFFFFF, 0x80000000, 0x80000001};
  inEverySlot([&](int) {
    uint32_t y[5];
    veksAbs_32f(reinterpret_cast<const float*>(x.data()), reinterpret_cast<float*>(y), 5);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(y[i], x[size_t(i)] & 0x7FFFFFFF);
  });
}

TEST(Math, NormalizeRefusesAZeroDivisorLast) {
  const float x = 3;
  const C z = {1, 2};
  for (float zero : {0.0f, -0.0f}) {
    expectRefused<float>(vekStsNullPtrErr, [=](float* d) { return veksNormalize_32f(nullptr, d, 1, 0, zero); });
    expectRefused<float>(vekStsSizeErr, [=](float* d) { return veksNormalize_32f(&x, d, 0, 0, zero); });
    expectRefused<float>(vekStsDivByZeroErr, [=](float* d) { return veksNormalize_32f(&x, d, 1, 0, zero); });
    expectRefused<C>(vekStsSizeErr, [=](C* d) { return veksNormalize_32fc(&z, d, 0, z, zero); });
    expectRefused<C>(vekStsDivByZeroErr, [=](C* d) { return veksNormalize_32fc(&z, d, 1, z, zero); });
  }
}

}  // namespace
}  // namespace vektest
