// SPDX-License-Identifier: Apache-2.0
// Float arithmetic against scalar IEEE arithmetic, special values included, every operation rounded on its own.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;
using C = Vek32fc;

C times(C a, C b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
C plus(C a, C b) { return {a.re + b.re, a.im + b.im}; }
C minus(C a, C b) { return {a.re - b.re, a.im - b.im}; }

// Special values meet each other in every combination; the rest is random, so that products and sums are inexact.
struct FloatArithmetic : testing::Test {
  static constexpr int n = 2500;
  std::vector<float> a = randomVector<float>(2 * n), b = randomVector<float>(2 * n), c = mixedVector<float>(2 * n);
  std::vector<C> ca, cb, cc;

  FloatArithmetic() {
    const std::vector<float> s = specialValues<float>();
    for (size_t i = 0; i < s.size() * s.size(); ++i) a[2 * i] = s[i % s.size()], b[2 * i] = s[i / s.size()];
    ca = paired<C>(a), cb = paired<C>(b), cc = paired<C>(c);
  }
};

#define CONSTANT(NAME, MEANING) \
  one.check([=](auto* x, auto* d, int n) { return NAME(x, v, d, n); }, each([=](auto x) { return MEANING; }))

TEST_F(FloatArithmetic, Real) {
  const Shapes two(a, b);
  const Shapes one(a);
  two.check(veksAdd_32f, each([](float x, float y) { return x + y; }));
  two.check(veksSub_32f, each([](float x, float y) { return y - x; }));
  two.check(veksMul_32f, each([](float x, float y) { return x * y; }));
  Shapes(a, b, c).check(nullptr, each([](float x, float y, float to) { return to + x * y; }), veksAddProduct_32f);
  for (float v : {0.1f, -0.0f, 3e38f, std::numeric_limits<float>::infinity(), 1e-40f}) {
    const auto accumulate = [=](auto* x, float* to, int n) { return veksAddProductC_32f(x, v, to, n); };
    CONSTANT(veksAddC_32f, x + v);
    CONSTANT(veksSubC_32f, x - v);
    CONSTANT(veksSubCRev_32f, v - x);
    CONSTANT(veksMulC_32f, x * v);
    Shapes(a, c).check(nullptr, each([=](float x, float to) { return to + x * v; }), accumulate);
    const float reciprocal = 1 / v;
    if (v != 0) CONSTANT(veksDivC_32f, x * reciprocal);
  }
}

TEST_F(FloatArithmetic, Complex) {
  const Shapes two(ca, cb);
  const Shapes one(ca);
  two.check(veksAdd_32fc, each(plus));
  two.check(veksSub_32fc, each([](C x, C y) { return minus(y, x); }));
  two.check(veksMul_32fc, each(times));
  Shapes(a, cb).check(veksMul_32f32fc, each([](float x, C y) { return C{x * y.re, x * y.im}; }));
  Shapes(ca, cb, cc).check(nullptr, each([](C x, C y, C to) { return plus(to, times(x, y)); }), veksAddProduct_32fc);
  for (C v : {C{0.1f, -3}, C{-0.0f, 1e38f}, C{0, std::numeric_limits<float>::infinity()}, C{1e-30f, 0}}) {
    CONSTANT(veksAddC_32fc, plus(x, v));
    CONSTANT(veksSubC_32fc, minus(x, v));
    CONSTANT(veksSubCRev_32fc, minus(v, x));
    CONSTANT(veksMulC_32fc, times(x, v));
    const float s = 1 / (v.re * v.re + v.im * v.im);
    const C f = {v.re * s, -v.im * s};
    CONSTANT(veksDivC_32fc, times(x, f));
  }
}

// The one NaN among the operands of a complex product keeps its sign and payload in both parts.
TEST(ComplexProduct, OneNan) {
  inEverySlot([&](int) {
    for (uint32_t nan : {0x7FC00001u, 0xFFC12345u})
      for (int len : {1, 3, 4, 7, 33})
        for (int part = 0; part < 4; ++part) {
          std::vector<Vek32fc> a(len, {2, -3}), b(len, {-5, 7}), d(len), sum(len, {1, 1}), square(len);
          memcpy(&(part < 2 ? &a : &b)->at(len - 1).re + part % 2, &nan, sizeof nan);
          ASSERT_EQ(veksMul_32fc(a.data(), b.data(), d.data(), len), vekStsNoErr);
          ASSERT_EQ(veksAddProduct_32fc(a.data(), b.data(), sum.data(), len), vekStsNoErr);
          ASSERT_EQ(veksSqr_32fc((part < 2 ? a : b).data(), square.data(), len), vekStsNoErr);
          for (const Vek32fc z : {d[len - 1], sum[len - 1], square[len - 1]}) {
            uint32_t got[2];
            memcpy(got, &z, sizeof got);
            // The square of (NaN, y) has x * y twice and y * y once: both parts are the NaN.
            ASSERT_EQ(got[0], nan) << "part " << part << " len " << len;
            ASSERT_EQ(got[1], nan) << "part " << part << " len " << len;
          }
        }
  });
}

}  // namespace
