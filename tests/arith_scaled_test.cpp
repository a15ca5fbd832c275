// SPDX-License-Identifier: Apache-2.0
// The scaled-result rule against exact 128-bit arithmetic: all pairs of bytes, all 16-bit values against representative
// constants, and 32-bit values chosen for ties, carries and the ends of the range; every scale factor in every slot.
#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "support/data.h"
#include "support/slots.h"

namespace {

using namespace vektest;
__extension__ typedef __int128 Exact;

std::vector<int> scaleFactors() {
  std::vector<int> s = {INT_MIN, INT_MIN + 1, -1000, 1000, INT_MAX};
  for (int i = -70; i <= 70; ++i) s.push_back(i);
  return s;
}

// R holds r with room to shift: 64 bits for narrow data, 128 for the rest.
template <class T, class R = std::conditional_t<(sizeof(T) < 4), int64_t, Exact>>
T scaled(R r, int s) {
  constexpr int most = 8 * sizeof(R) - 3, left = sizeof(T) < 4 ? 30 : 40;
  if (s > most) return 0;
  if (s > 0) {
    const R unit = R(1) << s, q = r >> s, twice = 2 * (r - q * unit);
    r = q + (twice > unit || (twice == unit && (q & 1)));
  } else if (s < 0) {
    r = r * (R(1) << (s < -left ? left : -s));
  }
  const R low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
  return T(r < low ? low : r > high ? high : r);
}
Vek32sc scaledParts(Exact re, Exact im, int s) { return {scaled<Vek32s>(re, s), scaled<Vek32s>(im, s)}; }

// An entry as a call on two vectors (a constant form takes the first element of b), and what it means.
template <class E>
struct Operation {
  std::string name;
  bool constant;
  VekStatus (*call)(const E* a, const E* b, E* dst, int n, int s);
  E (*meaning)(E a, E b, int s);
};

#define TWO(NAME, E, MEANING)                                                                             \
  Operation<E> {                                                                                          \
#NAME, false, [](const E* a, const E* b, E* d, int n, int s) { return NAME(a, b, d, n, s); }, MEANING \
  }
#define ONE(NAME, E, MEANING)                                                                             \
  Operation<E> {                                                                                          \
#NAME, true, [](const E* a, const E* b, E* d, int n, int s) { return NAME(a, *b, d, n, s); }, MEANING \
  }

template <class T>
T sum(T a, T b, int s) {
  return scaled<T>(Exact(a) + b, s);
}
template <class T>
T less(T a, T b, int s) {
  return scaled<T>(Exact(a) - b, s);
}
template <class T>
T lessReversed(T a, T b, int s) {
  return scaled<T>(Exact(b) - a, s);
}
template <class T>
T times(T a, T b, int s) {
  return scaled<T>(Exact(a) * b, s);
}
using C = Vek32sc;
C sumC(C a, C b, int s) { return scaledParts(Exact(a.re) + b.re, Exact(a.im) + b.im, s); }
C lessC(C a, C b, int s) { return scaledParts(Exact(a.re) - b.re, Exact(a.im) - b.im, s); }
C lessReversedC(C a, C b, int s) { return lessC(b, a, s); }
C timesC(C a, C b, int s) {
  return scaledParts(Exact(a.re) * b.re - Exact(a.im) * b.im, Exact(a.re) * b.im + Exact(a.im) * b.re, s);
}
C timesRealC(C a, C b, int s) { return scaledParts(Exact(a.re) * b.re, Exact(a.re) * b.im, s); }

#define FAMILY(T, E, SUM, LESS, REVERSED, TIMES)                                                                    \
  {                                                                                                                 \
    TWO(veksAdd_##T##_Sfs, E, SUM), TWO(veksSub_##T##_Sfs, E, REVERSED), TWO(veksMul_##T##_Sfs, E, TIMES),          \
        ONE(veksAddC_##T##_Sfs, E, SUM), ONE(veksSubC_##T##_Sfs, E, LESS), ONE(veksSubCRev_##T##_Sfs, E, REVERSED), \
        ONE(veksMulC_##T##_Sfs, E, TIMES)                                                                           \
  }

// Runs every operation on (a, b) with every factor in every slot. Where b is one value throughout, the constant forms
// run too.
template <class E>
void check(const std::vector<Operation<E>>& operations, const std::vector<E>& a, const std::vector<E>& b, bool constant,
           const std::vector<int>& factors) {
  const int n = int(a.size());
  std::vector<E> want(a.size()), got(a.size());
  for (int s : factors)
    for (const Operation<E>& op : operations) {
      if (op.constant && !constant) continue;
      SCOPED_TRACE(op.name + " scale factor " + std::to_string(s));
      for (int i = 0; i < n; ++i) want[i] = op.meaning(a[i], b[i], s);
      inEverySlot([&](int) {
        ASSERT_EQ(op.call(a.data(), b.data(), got.data(), n, s), vekStsNoErr);
        if (memcmp(got.data(), want.data(), sizeof(E) * n) == 0) return;
        int i = 0;
        while (memcmp(&got[i], &want[i], sizeof(E)) == 0) ++i;
        FAIL() << "element " << i << " from " << testing::PrintToString(a[i]) << " and " << testing::PrintToString(b[i])
               << ": " << testing::PrintToString(got[i]) << ", not " << testing::PrintToString(want[i]);
      });
      if (testing::Test::HasFatalFailure()) return;
    }
}

TEST(Scaled, AllPairsOfBytes) {
  using T = Vek8u;
  const std::vector<Operation<T>> family = FAMILY(8u, T, sum<T>, less<T>, lessReversed<T>, times<T>);
  std::vector<T> a(65536), b(65536);
  for (int i = 0; i < 65536; ++i) a[i] = T(i), b[i] = T(i >> 8);
  check(family, a, b, false, scaleFactors());
  for (int val = 0; val < 256; val += 5)
    check<T>(family, {a.begin(), a.begin() + 256}, std::vector<T>(256, T(val)), true,
             {-300, -8, -7, -1, 0, 1, 2, 3, 7, 8, 9, 10, 11, 15, 16, 17, 40});
}

TEST(Scaled, AllWordsWithRepresentativeConstants) {
  using T = Vek16s;
  const std::vector<Operation<T>> family = FAMILY(16s, T, sum<T>, less<T>, lessReversed<T>, times<T>);
  std::vector<T> a(65536);
  for (int i = 0; i < 65536; ++i) a[i] = T(i);
  const std::vector<T> constants = {-32768, 32767, 1, -1, 0, 2, 3, -3, 181, 255, -256, 16384, -16385, -32767, 12345};
  const std::vector<int> factors = scaleFactors();
  // The ends of the range with every factor; the others by turns, each with factors from the whole range.
  for (size_t k = 0; k < constants.size(); ++k) {
    std::vector<int> some;
    for (size_t i = 0; i < factors.size(); ++i)
      if (k < 3 || i % 6 == k % 6) some.push_back(factors[i]);
    check(family, a, std::vector<T>(a.size(), constants[k]), true, some);
  }
}

// Values of every magnitude, many with zeros below (ties) and many at the ends of the range.
std::vector<Vek32s> provoking(size_t n) {
  const std::vector<Vek32s> ends = {INT_MIN, INT_MAX, INT_MIN + 1, INT_MAX - 1, 0,      1,
                                    -1,      3,       -3,          65536,       -65536, 1 << 30};
  std::vector<Vek32s> v(n);
  for (Vek32s& x : v) {
    const uint64_t r = rng()();
    x = r % 3 == 0 ? ends[(r >> 8) % ends.size()] : Vek32s(Vek32s(r >> 32) >> (r >> 8) % 32) << (r >> 16) % 20;
  }
  return v;
}
std::vector<C> provokingParts(size_t n) {
  const std::vector<Vek32s> parts = provoking(2 * n);
  std::vector<C> v(n);
  memcpy(v.data(), parts.data(), n * sizeof(C));
  for (size_t i = 0; i < n; i += 41) v[i] = {INT_MIN, INT_MIN};
  return v;
}

TEST(Scaled, Words32) {
  using T = Vek32s;
  const std::vector<Operation<T>> family = FAMILY(32s, T, sum<T>, less<T>, lessReversed<T>, times<T>);
  check(family, provoking(3001), provoking(3001), false, scaleFactors());
  for (T val : {INT_MIN, INT_MAX, -1, 0, 3, 1 << 20})
    check(family, provoking(211), std::vector<T>(211, val), true, scaleFactors());
}

TEST(Scaled, ComplexWords32) {
  std::vector<Operation<C>> family = FAMILY(32sc, C, sumC, lessC, lessReversedC, timesC);
  family.push_back({"veksMul_32s32sc_Sfs", false,
                    [](const C* a, const C* b, C* d, int n, int s) {
                      std::vector<Vek32s> re(n);
                      for (int i = 0; i < n; ++i) re[i] = a[i].re;
                      return veksMul_32s32sc_Sfs(re.data(), b, d, n, s);
                    },
                    timesRealC});
  const size_t n = 1681;  // both operands hold four smallest parts at every 41st place: the one sum of 2^63
  check(family, provokingParts(n), provokingParts(n), false, scaleFactors());
  for (C val : {C{INT_MIN, INT_MIN}, C{INT_MAX, INT_MIN}, C{-1, 3}, C{0, 1 << 20}})
    check(family, provokingParts(123), std::vector<C>(123, val), true, scaleFactors());
}

TEST(Scaled, AccumulatedProduct) {
  const std::vector<Vek32s> a = provoking(2003), b = provoking(2003), from = provoking(2003);
  for (int s : scaleFactors()) {
    std::vector<Vek32s> want(a.size());
    for (size_t i = 0; i < a.size(); ++i) want[i] = s > 62 ? 0 : scaled<Vek32s>(from[i] + Exact(a[i]) * b[i], s);
    inEverySlot([&](int) {
      std::vector<Vek32s> got = from;
      ASSERT_EQ(veksAddProduct_32s_Sfs(a.data(), b.data(), got.data(), int(got.size()), s), vekStsNoErr);
      ASSERT_TRUE(sameVectors(got, want)) << "scale factor " << s;
    });
  }
}

TEST(Scaled, LowHalf) {
  const std::vector<Vek32s> a = provoking(2003), b = provoking(2003);
  for (int s : scaleFactors()) {
    std::vector<Vek32s> want(a.size());
    for (size_t i = 0; i < a.size(); ++i) {
      const int64_t p = int64_t(a[i]) * b[i];
      want[i] = s > 62    ? 0
                : s >= 0  ? Vek32s(p >> s)
                : s < -31 ? (p > 0   ? INT_MAX
                             : p < 0 ? INT_MIN
                                     : 0)
                          : Vek32s(uint64_t(p) << -s);
    }
    inEverySlot([&](int) {
      std::vector<Vek32s> got(a.size());
      ASSERT_EQ(veksMul_Low_32s_Sfs(a.data(), b.data(), got.data(), int(got.size()), s), vekStsNoErr);
      ASSERT_TRUE(sameVectors(got, want)) << "scale factor " << s;
    });
  }
}

// Numbers worked out by hand, so that the reference above is not the only witness.
TEST(Scaled, KnownResults) {
  inEverySlot([](int) {
    const Vek16s ones[5] = {1, 3, 5, -1, -3}, zero[5] = {};
    Vek16s d[5];
    veksAdd_16s_Sfs(ones, zero, d, 5, 1);
    EXPECT_EQ(std::vector<Vek16s>(d, d + 5), (std::vector<Vek16s>{0, 2, 2, 0, -2}));
    const Vek16s subtrahend = 1, minuend = 5, least = -32768;
    veksSub_16s_Sfs(&subtrahend, &minuend, d, 1, 0);
    EXPECT_EQ(d[0], 4);
    veksMul_16s_Sfs(&least, &least, d, 1, 15);
    EXPECT_EQ(d[0], 32767);
    veksAdd_16s_Sfs(&subtrahend, zero, d, 1, -20);
    EXPECT_EQ(d[0], 32767);
    const Vek32s minusThree = -3, one = 1, none = 0;
    Vek32s low, sum = 3;
    veksMul_Low_32s_Sfs(&minusThree, &one, &low, 1, 1);
    EXPECT_EQ(low, -2);
    veksAddProduct_32s_Sfs(&one, &none, &sum, 1, 1);
    EXPECT_EQ(sum, 2);
  });
}

}  // namespace
