// SPDX-License-Identifier: Apache-2.0
// The C++ header of vekx, and std::complex in both libraries' headers.
#include <gtest/gtest.h>

#include <cmath>
#include <complex>
#include <vector>
#include <vek/vek.hpp>
#include <vekx/vekx.hpp>

namespace {

template <class T>
std::complex<double> number(T x) {
  if constexpr (requires { x.im; }) {
    return {x.re, x.im};
  } else {
    return std::complex<double>(x);
  }
}
template <class T>
T element(std::complex<double> x) {
  if constexpr (std::is_floating_point_v<T>) {
    return T(x.real());
  } else if constexpr (requires(T t) { t.im; }) {
    T out{};
    out.re = decltype(out.re)(x.real()), out.im = decltype(out.im)(x.imag());
    return out;
  } else {
    return T(x);
  }
}

template <class Make>
VekStatus refusal(Make make) {
  try {
    make();
  } catch (const vek::Error& e) {
    return e.status();
  }
  return vekStsNoErr;
}

// Samples, and the type in which a caller of the C++ header keeps their bins.
template <class S, class B>
struct Types {
  using Sample = S;
  using Bin = B;
};
template <class T>
class CppFft : public testing::Test {};
using Kinds = testing::Types<Types<float, std::complex<float>>, Types<double, std::complex<double>>,
                             Types<float, Vek32fc>, Types<std::complex<float>, std::complex<float>>,
                             Types<std::complex<double>, std::complex<double>>, Types<Vek64fc, Vek64fc>>;
TYPED_TEST_SUITE(CppFft, Kinds);

TYPED_TEST(CppFft, FindsATone) {
  using Sample = typename TypeParam::Sample;
  using Bin = typename TypeParam::Bin;
  constexpr int n = 60, tone = 7, count = 3;
  constexpr bool real = std::is_floating_point_v<Sample>;
  vek::Fft<Sample> first(n);
  vek::Fft<Sample> fft = std::move(first);
  ASSERT_EQ(fft.points(), size_t(n));
  ASSERT_EQ(fft.bins(), size_t(real ? n / 2 + 1 : n));
  std::vector<Sample> x(n * count), back(n * count);
  for (int t = 0; t < count; ++t)
    for (int j = 0; j < n; ++j) x[size_t(t * n + j)] = element<Sample>(std::polar(t + 1.0, 2 * M_PI * tone * j / n));
  const auto expectTone = [&](const std::vector<Bin>& y, size_t from, size_t stride, double magnitude) {
    for (size_t k = 0; k < fft.bins(); ++k) {
      const double want = k == tone ? magnitude * (real ? n / 2 : n) : 0;
      EXPECT_NEAR(std::abs(number(y[from + k * stride]) - want), 0, 1e-4) << k;
    }
  };
  const auto expectSame = [&](size_t len) {
    for (size_t j = 0; j < len; ++j) EXPECT_NEAR(std::abs(number(back[j]) - number(x[j])), 0, 1e-5) << j;
  };
  std::vector<Bin> y(fft.bins() * count), longer(fft.bins() + 1);
  const std::span<Sample> one = std::span(x).first(n), oneBack = std::span(back).first(n);
  const std::span<Bin> spectrum = std::span(y).first(fft.bins());
  ASSERT_TRUE(fft.forward(one, spectrum) && fft.inverse(spectrum, oneBack));
  expectTone(y, 0, 1, 1);
  expectSame(n);

  const auto& shared = fft;  // with work of the caller's the object is read only
  std::vector<Vek8u> work(shared.workSize() + 1);
  std::fill(y.begin(), y.end(), Bin{});
  ASSERT_TRUE(shared.forward(one, spectrum, work) && shared.inverse(spectrum, oneBack, work));
  expectTone(y, 0, 1, 1);
  if (shared.workSize() > 0) {
    const std::span<Vek8u> small = std::span(work).first(shared.workSize() - 1);
    EXPECT_EQ(shared.forward(one, spectrum, small).status(), vekStsSizeErr);
    EXPECT_EQ(shared.inverse(spectrum, oneBack, small).status(), vekStsSizeErr);
  }

  ASSERT_TRUE(fft.forwardMany(x, y, count) && fft.inverseMany(y, back, count));
  for (size_t t = 0; t < count; ++t) expectTone(y, t * fft.bins(), 1, double(t + 1));
  expectSame(x.size());
  const vek::Layout rows{1, n}, columns{count, 1};
  ASSERT_TRUE(fft.forwardMany(x, y, count, rows, columns) && fft.inverseMany(y, back, count, columns, rows));
  for (size_t t = 0; t < count; ++t) expectTone(y, t, count, double(t + 1));
  expectSame(x.size());

  EXPECT_EQ(fft.forward(one, longer).status(), vekStsSizeErr);
  EXPECT_EQ(fft.inverse(longer, oneBack).status(), vekStsSizeErr);
  EXPECT_EQ(fft.forwardMany(x, y, count + 1).status(), vekStsSizeErr);
  EXPECT_EQ(fft.forwardMany(x, y, count, {1, n + 1}, columns).status(), vekStsSizeErr);
  EXPECT_EQ(fft.inverseMany(y, back, count, {count + 1, 1}, rows).status(), vekStsSizeErr);
  EXPECT_EQ(fft.forwardMany(x, y, count, {0, n}, columns).status(), vekStsStrideErr);
  EXPECT_EQ(fft.forwardMany(x, y, 0).status(), vekStsSizeErr);
  EXPECT_EQ(first.forward(one, spectrum).status(), vekStsNullPtrErr);
  EXPECT_EQ(refusal([] { vek::Fft<Sample>(0); }), vekStsSizeErr);
  EXPECT_EQ(refusal([] { vek::Fft<Sample>(8, 9); }), vekStsFftFlagErr);
}

TEST(CppTrig, UndoesItself) {
  const std::vector<double> x = {3, 1, -4, 1, -5, 9, 2};
  std::vector<double> y(7), back(7);
  for (VekxTrigType type = vekxDCT1; type <= vekxDST4; ++type) {
    vek::Trig<double> trig(7, type);
    ASSERT_TRUE(trig.forward(x, y) && trig.inverse(y, back));
    double before = 0, after = 0;
    for (size_t i = 0; i < x.size(); ++i) {
      EXPECT_NEAR(back[i], x[i], 1e-14);
      before += x[i] * x[i], after += y[i] * y[i];
    }
    EXPECT_NEAR(after, before, 1e-12) << type;
  }
  EXPECT_EQ(refusal([] { vek::Trig<float>(1, vekxDCT1); }), vekStsSizeErr);
  EXPECT_EQ(refusal([] { vek::Trig<float>(8, 0); }), vekStsFftFlagErr);
  EXPECT_EQ(vek::fastLength(1009), 1024);
  EXPECT_EQ(refusal([] { vek::fastLength(0); }), vekStsSizeErr);
}

TEST(CppComplex, TheStandardTypeIsTakenEverywhere) {
  using Complex = std::complex<float>;
  const std::vector<Complex> a = {{1, 2}, {3, -1}}, b = {{0, 1}, {2, 2}};
  std::vector<Complex> c(2);
  std::vector<Vek32fc> own(2);
  std::vector<float> magnitude(2);
  ASSERT_TRUE(vek::mul(a, b, c) && vek::mul(a, b, own) && vek::fftMulConj(a, b, own));
  EXPECT_EQ(c, (std::vector<Complex>{a[0] * b[0], a[1] * b[1]}));
  EXPECT_TRUE(own[0].re == 2 && own[0].im == 1 && own[1].re == 4 && own[1].im == 8);
  ASSERT_TRUE(vek::mul(b, c) && vek::magnitude(std::span(a), magnitude));
  EXPECT_EQ(c[0], a[0] * b[0] * b[0]);
  EXPECT_NEAR(magnitude[1], std::sqrt(10.0), 1e-6);
  EXPECT_EQ(vek::mul(a, std::span(b).first(1), c).status(), vekStsSizeErr);
  vek::Fir<Vek32fc, Vek32fc> filter(b);
  ASSERT_TRUE(filter(a, c));
  EXPECT_EQ(c, (std::vector<Complex>{a[0] * b[0], a[1] * b[0] + a[0] * b[1]}));
}

}  // namespace
