// SPDX-License-Identifier: Apache-2.0
// Division: the quotients of integers step by step as they are defined, zero divisors and their warning, floats.
#include <algorithm>
#include <climits>

#include "tests/support/shapes.h"

namespace {

using namespace vektest;

// 2^(-s) by halving and doubling, in the precision of the division.
template <class F>
F multiplier(int s) {
  volatile F m = 1;
  for (int i = 0; i < s && m != 0; ++i) m = m * F(0.5);
  for (int i = 0; i > s && std::isfinite(m); --i) m = m * 2;
  return m;
}

template <class T, class F>
T rounded(F q) {
  const F low = std::numeric_limits<T>::min(), high = F(std::numeric_limits<T>::max());
  if (std::isnan(q)) return sizeof(T) == 4 ? std::numeric_limits<T>::min() : T(0);
  if (q >= low && q <= high) return T(std::nearbyint(q));
  return q >= 0 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::min();
}

template <class T, class F>
T quotient(T x, T d, F m) {
  if (d == 0) return x > 0 ? std::numeric_limits<T>::max() : x < 0 ? std::numeric_limits<T>::min() : T(0);
  volatile F product = F(x) * m, q = product / F(d);
  return rounded<T, F>(q);
}

std::vector<int> scaleFactors() {
  std::vector<int> s = {INT_MIN, -1100, -1025, -1024, -1023, -130, -128, -127, -126,   126,
                        127,     148,   149,   150,   1022,  1023, 1074, 1075, INT_MAX};
  for (int i = -70; i <= 70; ++i) s.push_back(i);
  return s;
}

template <class T, class F, class Call>
void checkQuotients(Call call, const std::vector<T>& d, const std::vector<T>& x, const std::vector<int>& factors) {
  const bool anyZero = std::find(d.begin(), d.end(), T(0)) != d.end();
  const auto shapes = Shapes(d, x).returns(anyZero ? vekStsDivByZero : vekStsNoErr);
  for (int s : factors) {
    const F m = multiplier<F>(s);
    shapes.values([=](auto* a, auto* b, T* to, int n) { return call(a, b, to, n, s); },
                  each([=](T a, T b) { return quotient<T, F>(b, a, m); }));
  }
}

TEST(Division, AllPairsOfBytes) {
  std::vector<Vek8u> d(65536), x(65536);
  for (int i = 0; i < 65536; ++i) d[i] = Vek8u(i >> 8), x[i] = Vek8u(i);
  checkQuotients<Vek8u, float>(veksDiv_8u_Sfs, d, x, scaleFactors());
}

TEST(Division, AllWordsByRepresentativeDivisors) {
  std::vector<Vek16s> x(65536);
  for (int i = 0; i < 65536; ++i) x[i] = Vek16s(i);
  for (Vek16s d : {-32768, 32767, -1, 0, 1, 2, 3, -7, 181, 255, -256, 10000}) {
    std::vector<int> some;
    for (size_t i = 0; i < scaleFactors().size(); ++i)
      if (i % 5 == size_t(d & 255) % 5) some.push_back(scaleFactors()[i]);
    checkQuotients<Vek16s, float>(veksDiv_16s_Sfs, std::vector<Vek16s>(x.size(), d), x, some);
  }
}

TEST(Division, Words32) {
  const std::vector<Vek32s> ends = {INT_MIN, INT_MAX, 0, 1, -1, 2, 3, INT_MAX - 1};
  std::vector<Vek32s> d(3000), x(3000);
  for (auto* v : {&d, &x})
    for (Vek32s& y : *v) {
      const uint64_t r = rng()();
      y = r % 4 == 0 ? ends[(r >> 8) % ends.size()] : Vek32s(r >> 32) >> (r >> 8) % 32;
    }
  checkQuotients<Vek32s, double>(veksDiv_32s_Sfs, d, x, scaleFactors());
  for (Vek32s& y : d) y |= 1;
  checkQuotients<Vek32s, double>(veksDiv_32s_Sfs, d, x, {0, 1, -3});
}

template <class T, class Call>
void checkConstant(Call call, const std::vector<T>& divisors) {
  std::vector<T> x(sizeof(T) == 1 ? 256 : 65536);
  for (size_t i = 0; i < x.size(); ++i) x[i] = T(i);
  const Shapes shapes(x);
  for (T d : divisors)
    for (int s : scaleFactors()) {
      const float f = multiplier<float>(s) / float(d);
      shapes.values([=](auto* a, T* to, int n) { return call(a, d, to, n, s); },
                    each([=](T a) { return rounded<T, float>(float(a) * f); }));
    }
}

TEST(Division, ByIntegerConstants) {
  std::vector<Vek8u> bytes;
  for (int d = 1; d < 256; d += 14) bytes.push_back(Vek8u(d));
  checkConstant<Vek8u>(veksDivC_8u_Sfs, bytes);
  checkConstant<Vek16s>(veksDivC_16s_Sfs, {1, -1, 3, 7, -10, -32768, 32767});
}

uint32_t word(float x) {
  uint32_t w;
  memcpy(&w, &x, 4);
  return w;
}

// A zero divisor in every position of a vector longer than the blocks, and in none.
TEST(Division, FloatZeroDivisors) {
  const float inf = std::numeric_limits<float>::infinity();
  const float divisors[] = {0.0f, -0.0f}, dividends[] = {1, -1, inf, -inf, 1e-45f, 0.0f, -0.0f, NAN};
  const int n = 37;
  inEverySlot([&](int) {
    for (float d : divisors)
      for (float x : dividends)
        for (int at = -1; at < n; ++at) {
          std::vector<float> ds(n, 2), xs(n, 1), got(n);
          if (at >= 0) ds[at] = d, xs[at] = x;
          ASSERT_EQ(veksDiv_32f(ds.data(), xs.data(), got.data(), n), at < 0 ? vekStsNoErr : vekStsDivByZero);
          for (int i = 0; i < n; ++i) {
            const uint32_t want = i != at ? word(0.5f) : x > 0 ? word(inf) : x < 0 ? word(-inf) : 0xFFC00000u;
            ASSERT_EQ(word(got[i]), want) << x << " / " << d;
          }
        }
  });
}

Vek32fc complexQuotient(Vek32fc b, Vek32fc a) {
  volatile float rr = a.re * a.re, ii = a.im * a.im, norm = rr + ii;
  volatile float r = 1 / norm, u = a.re * b.re, v = a.im * b.im, w = a.re * b.im, x = a.im * b.re;
  volatile float re = u + v, im = w - x;
  Vek32fc q = {re * r, im * r};
  if (norm == 0) {
    const uint32_t nan = 0xFFC00000;
    memcpy(&q.re, &nan, 4);
    memcpy(&q.im, &nan, 4);
  }
  return q;
}

TEST(Division, ComplexFloats) {
  const int n = 2000;
  std::vector<Vek32fc> d = mixedVector<Vek32fc>(n), x = mixedVector<Vek32fc>(n), want(n);
  d[7] = {0, -0.0f}, d[13] = {1e-30f, 1e-30f};  // zero, and zero by underflow
  for (int i = 0; i < n; ++i) want[i] = complexQuotient(x[i], d[i]);
  inEverySlot([&](int) {
    std::vector<Vek32fc> got(n);
    ASSERT_EQ(veksDiv_32fc(d.data(), x.data(), got.data(), n), vekStsDivByZero);
    ASSERT_TRUE(sameVectors(got, want));
    for (int i : {7, 13}) ASSERT_TRUE(word(got[i].re) == 0xFFC00000u && word(got[i].im) == 0xFFC00000u) << i;
    ASSERT_EQ(veksDiv_32fc(d.data() + 14, x.data(), got.data(), 1), vekStsNoErr);
  });
}

TEST(Division, ByZeroConstants) {
  inEverySlot([](int) {
    Vek8u b = 9;
    Vek16s w = 9;
    Vek32f f = 9;
    Vek32fc c = {9, 9};
    const Vek32fc none = {0, -0.0f};
    EXPECT_EQ(veksDivC_8u_ISfs(0, &b, 1, 0), vekStsDivByZeroErr);
    EXPECT_EQ(veksDivC_16s_Sfs(&w, 0, &w, 1, 0), vekStsDivByZeroErr);
    EXPECT_EQ(veksDivC_32f_I(-0.0f, &f, 1), vekStsDivByZeroErr);
    EXPECT_EQ(veksDivC_32fc(&c, none, &c, 1), vekStsDivByZeroErr);
    EXPECT_TRUE(b == 9 && w == 9 && f == 9 && c.re == 9 && c.im == 9);
    // The pointer and the length are looked at first.
    EXPECT_EQ(veksDivC_16s_ISfs(0, nullptr, 1, 0), vekStsNullPtrErr);
    EXPECT_EQ(veksDivC_32f(&f, 0, &f, 0), vekStsSizeErr);
  });
}

TEST(Division, KnownResults) {
  inEverySlot([](int) {
    const Vek16s d[6] = {2, 2, 2, 2, -1, 0}, x[6] = {1, 3, 5, -1, -32768, 7};
    Vek16s q[6];
    EXPECT_EQ(veksDiv_16s_Sfs(d, x, q, 6, 0), vekStsDivByZero);
    EXPECT_EQ(std::vector<Vek16s>(q, q + 6), (std::vector<Vek16s>{0, 2, 2, 0, 32767, 32767}));
  });
}

}  // namespace
