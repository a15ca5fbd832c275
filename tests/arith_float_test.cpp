// SPDX-License-Identifier: Apache-2.0
// Float arithmetic against scalar IEEE arithmetic, special values included, every operation rounded on its own.
#include <gtest/gtest.h>

#include "support/data.h"
#include "support/slots.h"

namespace {

using namespace vektest;

// Rounds to single precision whatever the compiler would like to keep or fuse.
float r(float x) {
  volatile float y = x;
  return y;
}
Vek32fc times(Vek32fc a, Vek32fc b) { return {r(a.re * b.re) - r(a.im * b.im), r(a.re * b.im) + r(a.im * b.re)}; }
Vek32fc plus(Vek32fc a, Vek32fc b) { return {a.re + b.re, a.im + b.im}; }
Vek32fc minus(Vek32fc a, Vek32fc b) { return {a.re - b.re, a.im - b.im}; }

std::vector<Vek32fc> pairs(const std::vector<float>& v) {
  std::vector<Vek32fc> c(v.size() / 2);
  memcpy(c.data(), v.data(), c.size() * sizeof(Vek32fc));
  return c;
}

// Special values meet each other in every combination; the rest is random, so that products and sums are inexact.
struct FloatArithmetic : testing::Test {
  static constexpr int n = 2500;
  std::vector<float> a = randomVector<float>(2 * n), b = randomVector<float>(2 * n), c = mixedVector<float>(2 * n);
  std::vector<Vek32fc> ca, cb, cc;

  FloatArithmetic() {
    const std::vector<float> s = specialValues<float>();
    for (size_t i = 0; i < s.size() * s.size(); ++i) a[2 * i] = s[i % s.size()], b[2 * i] = s[i / s.size()];
    ca = pairs(a), cb = pairs(b), cc = pairs(c);
  }
  template <class E, class Call, class Meaning>
  void check(const char* name, Call call, Meaning meaning) {
    inEverySlot([&](int) {
      std::vector<E> got(n), want(n);
      if constexpr (std::is_same_v<E, float>) got.assign(c.begin(), c.begin() + n);
      if constexpr (std::is_same_v<E, Vek32fc>) got = cc;
      for (int i = 0; i < n; ++i) want[i] = meaning(i);
      ASSERT_EQ(call(got.data()), vekStsNoErr);
      ASSERT_TRUE(sameVectors(got, want)) << name;
    });
  }
};

TEST_F(FloatArithmetic, Real) {
  const float *x = a.data(), *y = b.data();
  check<float>(
      "Add", [&](float* d) { return veksAdd_32f(x, y, d, n); }, [&](int i) { return x[i] + y[i]; });
  check<float>(
      "Sub", [&](float* d) { return veksSub_32f(x, y, d, n); }, [&](int i) { return y[i] - x[i]; });
  check<float>(
      "Mul", [&](float* d) { return veksMul_32f(x, y, d, n); }, [&](int i) { return x[i] * y[i]; });
  check<float>(
      "AddProduct", [&](float* d) { return veksAddProduct_32f(x, y, d, n); },
      [&](int i) { return c[i] + r(x[i] * y[i]); });
  for (float v : {0.1f, -0.0f, 3e38f, std::numeric_limits<float>::infinity(), 1e-40f}) {
    check<float>(
        "AddC", [&](float* d) { return veksAddC_32f(x, v, d, n); }, [&](int i) { return x[i] + v; });
    check<float>(
        "SubC", [&](float* d) { return veksSubC_32f(x, v, d, n); }, [&](int i) { return x[i] - v; });
    check<float>(
        "SubCRev", [&](float* d) { return veksSubCRev_32f(x, v, d, n); }, [&](int i) { return v - x[i]; });
    check<float>(
        "MulC", [&](float* d) { return veksMulC_32f(x, v, d, n); }, [&](int i) { return x[i] * v; });
    check<float>(
        "AddProductC", [&](float* d) { return veksAddProductC_32f(x, v, d, n); },
        [&](int i) { return c[i] + r(x[i] * v); });
    if (v == 0) continue;
    check<float>(
        "DivC", [&](float* d) { return veksDivC_32f(x, v, d, n); }, [&](int i) { return x[i] * r(1 / v); });
  }
}

TEST_F(FloatArithmetic, Complex) {
  using E = Vek32fc;
  const E *x = ca.data(), *y = cb.data();
  check<E>(
      "Add", [&](E* d) { return veksAdd_32fc(x, y, d, n); }, [&](int i) { return plus(x[i], y[i]); });
  check<E>(
      "Sub", [&](E* d) { return veksSub_32fc(x, y, d, n); }, [&](int i) { return minus(y[i], x[i]); });
  check<E>(
      "Mul", [&](E* d) { return veksMul_32fc(x, y, d, n); }, [&](int i) { return times(x[i], y[i]); });
  check<E>(
      "Mul_32f32fc", [&](E* d) { return veksMul_32f32fc(a.data(), y, d, n); },
      [&](int i) {
        return E{a[i] * y[i].re, a[i] * y[i].im};
      });
  check<E>(
      "AddProduct", [&](E* d) { return veksAddProduct_32fc(x, y, d, n); },
      [&](int i) { return plus(cc[i], times(x[i], y[i])); });
  for (E v : {E{0.1f, -3}, E{-0.0f, 1e38f}, E{0, std::numeric_limits<float>::infinity()}, E{1e-30f, 0}}) {
    check<E>(
        "AddC", [&](E* d) { return veksAddC_32fc(x, v, d, n); }, [&](int i) { return plus(x[i], v); });
    check<E>(
        "SubC", [&](E* d) { return veksSubC_32fc(x, v, d, n); }, [&](int i) { return minus(x[i], v); });
    check<E>(
        "SubCRev", [&](E* d) { return veksSubCRev_32fc(x, v, d, n); }, [&](int i) { return minus(v, x[i]); });
    check<E>(
        "MulC", [&](E* d) { return veksMulC_32fc(x, v, d, n); }, [&](int i) { return times(x[i], v); });
    const float s = r(1 / r(r(v.re * v.re) + r(v.im * v.im)));
    const E f = {r(v.re * s), r(-v.im * s)};
    check<E>(
        "DivC", [&](E* d) { return veksDivC_32fc(x, v, d, n); }, [&](int i) { return times(x[i], f); });
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
