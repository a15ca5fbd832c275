// SPDX-License-Identifier: Apache-2.0
// Absolute values, squares, roots, polar forms and normalisation: what they mean, how near they come, and that every
// slot, length, alignment and in-place form gives the same bits.
#include <complex>
#include <functional>

#include "support/data.h"
#include "support/guarded.h"
#include "support/slots.h"

namespace vektest {
namespace {

// ---- position ------------------------------------------------------------------------------------------------------

// A function of one or two sources with one or two results. `want` gives the same for n elements.
template <class S, class D>
struct Case {
  using Call = std::function<VekStatus(const S*, const S*, D*, D*, int)>;
  std::string name;
  int sources, results;
  Call call, want;
  std::function<VekStatus(D*, int)> inPlace = nullptr;
};

template <class S>
std::vector<S> inputs(size_t n) {
  if constexpr (std::is_same_v<S, Vek32fc>) {
    const std::vector<float> x = mixedVector<float>(2 * n + 1);
    std::vector<S> z(n);
    for (size_t i = 0; i < n; ++i) z[i] = {x[2 * i + i % 2], x[2 * i + 1 - i % 2]};
    return z;
  } else {
    return mixedVector<S>(n);
  }
}

template <class S, class D>
void checkPositions(const Case<S, D>& c) {
  std::vector<int> lengths = sweepLengths(36, 520);
  for (int n : lengths) {
    const std::vector<S> a = inputs<S>(size_t(n)), b = inputs<S>(size_t(n));
    std::vector<D> want1(a.size()), want2(a.size());
    vek::setSlotForTest(0);
    c.want(a.data(), b.data(), want1.data(), want2.data(), n);
    inEverySlot([&](int) {
      for (Flush flush : {Flush::kBack, Flush::kFront}) {
        SCOPED_TRACE(c.name + " n=" + std::to_string(n));
        Guarded<S> src1(a, flush, size_t(n % 37)), src2(b, flush, size_t(n % 7));
        Guarded<D> dst1(a.size(), flush, size_t(n % 31)), dst2(a.size(), flush, size_t(n % 5));
        c.call(src1, src2, dst1, dst2, n);
        ASSERT_TRUE(sameVectors(dst1.values(), want1));
        ASSERT_TRUE(c.results == 1 || sameVectors(dst2.values(), want2));
        ASSERT_TRUE(dst1.intact() && dst2.intact() && sameVectors(src1.values(), a) && sameVectors(src2.values(), b));
        if constexpr (std::is_same_v<S, D>) {
          c.call(src1, src2, src1, src2, n);
          ASSERT_TRUE(sameVectors(src1.values(), want1)) << "into the source";
          ASSERT_TRUE(sameVectors(src2.values(), c.results == 2 ? want2 : b));
          Guarded<S> both(a, flush, size_t(n % 37));
          if (c.inPlace) c.inPlace(both, n);
          ASSERT_TRUE(!c.inPlace || (sameVectors(both.values(), want1) && both.intact())) << "in place";
        }
      }
    });
    if (::testing::Test::HasFatalFailure()) return;
  }
}

// What the definition says of one element.
template <class S, class D, class F, class Call>
Case<S, D> formula(const char* name, Call call, F f, std::function<VekStatus(D*, int)> inPlace = nullptr) {
  constexpr bool two = std::is_invocable_v<F, S, S>;
  Case<S, D> c{name, two ? 2 : 1, 1, nullptr, nullptr, inPlace};
  c.call = [call](const S* a, [[maybe_unused]] const S* b, D* d, D*, int n) {
    if constexpr (two) return call(a, b, d, n);
    if constexpr (!two) return call(a, d, n);
  };
  c.want = [f](const S* a, [[maybe_unused]] const S* b, D* d, D*, int n) {
    for (int i = 0; i < n; ++i) {
      if constexpr (two) d[i] = f(a[i], b[i]);
      if constexpr (!two) d[i] = f(a[i]);
    }
    return vekStsNoErr;
  };
  return c;
}

// The results of each element on its own, for functions that the accuracy tests below judge.
template <class S, class D>
Case<S, D> alone(const char* name, int sources, int results, typename Case<S, D>::Call call,
                 std::function<VekStatus(D*, int)> inPlace = nullptr) {
  const auto want = [call](const S* a, const S* b, D* d, D* e, int n) {
    for (int i = 0; i < n; ++i) call(a + i, b + i, d + i, e + i, 1);
    return vekStsNoErr;
  };
  return {name, sources, results, call, want, inPlace};
}

using C = Vek32fc;

template <class T>
T absolute(T x) {
  return x == std::numeric_limits<T>::min() ? std::numeric_limits<T>::max() : x < 0 ? T(-x) : x;
}
float power(float re, float im) { return re * re + im * im; }

TEST(Math, ExactFormsFollowTheirFormulasEverywhere) {
  checkPositions(formula<Vek16s, Vek16s>("Abs_16s", veksAbs_16s, absolute<Vek16s>, veksAbs_16s_I));
  checkPositions(formula<Vek32s, Vek32s>("Abs_32s", veksAbs_32s, absolute<Vek32s>, veksAbs_32s_I));
  checkPositions(formula<float, float>(
      "Abs_32f", veksAbs_32f, [](float x) { return std::fabs(x); }, veksAbs_32f_I));
  checkPositions(formula<float, float>(
      "Sqr_32f", veksSqr_32f, [](float x) { return x * x; }, veksSqr_32f_I));
  checkPositions(formula<C, C>(
      "Sqr_32fc", veksSqr_32fc,
      [](C z) {
        return C{z.re * z.re - z.im * z.im, z.re * z.im + z.im * z.re};
      },
      veksSqr_32fc_I));
  checkPositions(formula<float, float>(
      "Sqrt_32f", veksSqrt_32f, [](float x) { return std::sqrt(x); }, veksSqrt_32f_I));
  checkPositions(formula<float, float>("PowerSpectrum_32f", veksPowerSpectrum_32f, power));
  checkPositions(
      formula<C, float>("PowerSpectrum_32fc", veksPowerSpectrum_32fc, [](C z) { return power(z.re, z.im); }));
  checkPositions(formula<float, float>("Magnitude_32f", veksMagnitude_32f,
                                       [](float re, float im) { return std::sqrt(power(re, im)); }));
  checkPositions(
      formula<C, float>("Magnitude_32fc", veksMagnitude_32fc, [](C z) { return std::sqrt(power(z.re, z.im)); }));
  const auto normalize = [](const float* s, float* d, int n) { return veksNormalize_32f(s, d, n, 1.5f, -0.3f); };
  checkPositions(formula<float, float>("Normalize_32f", normalize, [](float x) { return (x - 1.5f) / -0.3f; }));
  const auto normalizeC = [](const C* s, C* d, int n) { return veksNormalize_32fc(s, d, n, {1.5f, -7}, -0.3f); };
  checkPositions(formula<C, C>("Normalize_32fc", normalizeC, [](C z) {
    return C{(z.re - 1.5f) / -0.3f, (z.im + 7) / -0.3f};
  }));
}

TEST(Math, ScaledAndPolarFormsAgreeEverywhere) {
  for (int sf : {-4, 1, 12}) {
    checkPositions(alone<Vek8u, Vek8u>(
        "Sqr_8u", 1, 1, [sf](auto a, auto, auto d, auto, int n) { return veksSqr_8u_Sfs(a, d, n, sf); },
        [sf](auto d, int n) { return veksSqr_8u_ISfs(d, n, sf); }));
    checkPositions(alone<Vek16s, Vek16s>(
        "Sqr_16s", 1, 1, [sf](auto a, auto, auto d, auto, int n) { return veksSqr_16s_Sfs(a, d, n, sf); },
        [sf](auto d, int n) { return veksSqr_16s_ISfs(d, n, sf); }));
    checkPositions(alone<Vek8u, Vek8u>(
        "Sqrt_8u", 1, 1, [sf](auto a, auto, auto d, auto, int n) { return veksSqrt_8u_Sfs(a, d, n, sf); },
        [sf](auto d, int n) { return veksSqrt_8u_ISfs(d, n, sf); }));
    checkPositions(alone<Vek16s, Vek16s>(
        "Sqrt_16s", 1, 1, [sf](auto a, auto, auto d, auto, int n) { return veksSqrt_16s_Sfs(a, d, n, sf); },
        [sf](auto d, int n) { return veksSqrt_16s_ISfs(d, n, sf); }));
  }
  checkPositions(alone<C, C>(
      "Sqrt_32fc", 1, 1, [](auto a, auto, auto d, auto, int n) { return veksSqrt_32fc(a, d, n); }, veksSqrt_32fc_I));
  checkPositions(alone<float, float>("Phase_32f", 2, 1,
                                     [](auto a, auto b, auto d, auto, int n) { return veksPhase_32f(a, b, d, n); }));
  checkPositions(
      alone<C, float>("Phase_32fc", 1, 1, [](auto a, auto, auto d, auto, int n) { return veksPhase_32fc(a, d, n); }));
  checkPositions(alone<float, C>("PolarToCart_32fc", 2, 1,
                                 [](auto a, auto b, auto d, auto, int n) { return veksPolarToCart_32fc(a, b, d, n); }));
  checkPositions(alone<float, float>("PolarToCart_32f", 2, 2, veksPolarToCart_32f));
  Case<float, float> toPolar{"CartToPolar_32f", 2, 2, veksCartToPolar_32f, nullptr};
  toPolar.want = [](auto a, auto b, auto d, auto e, int n) {
    veksMagnitude_32f(a, b, d, n);
    return veksPhase_32f(a, b, e, n);
  };
  checkPositions(toPolar);
  Case<C, float> toPolarC{"CartToPolar_32fc", 1, 2, nullptr, nullptr};
  toPolarC.call = [](auto a, auto, auto d, auto e, int n) { return veksCartToPolar_32fc(a, d, e, n); };
  toPolarC.want = [](auto a, auto, auto d, auto e, int n) {
    veksMagnitude_32fc(a, d, n);
    return veksPhase_32fc(a, e, n);
  };
  checkPositions(toPolarC);
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
  float x = 3;
  Guarded<float> d(1);
  Guarded<Vek32fc> e(1);
  const Vek32fc z = {1, 2};
  for (float zero : {0.0f, -0.0f}) {
    EXPECT_EQ(veksNormalize_32f(nullptr, d, 1, 0, zero), vekStsNullPtrErr);
    EXPECT_EQ(veksNormalize_32f(&x, d, 0, 0, zero), vekStsSizeErr);
    EXPECT_EQ(veksNormalize_32f(&x, d, 1, 0, zero), vekStsDivByZeroErr);
    EXPECT_EQ(veksNormalize_32fc(&z, e, 0, z, zero), vekStsSizeErr);
    EXPECT_EQ(veksNormalize_32fc(&z, e, 1, z, zero), vekStsDivByZeroErr);
  }
  EXPECT_TRUE(d.untouched() && e.untouched());
}

}  // namespace
}  // namespace vektest
