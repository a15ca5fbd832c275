// SPDX-License-Identifier: Apache-2.0
// The scaled-result rule against exact 128-bit arithmetic: all pairs of bytes, all 16-bit values against representative
// constants, and 32-bit values chosen for ties, carries and the ends of the range; every scale factor in every slot.
#include <climits>

#include "tests/support/shapes.h"

namespace {

using namespace vektest;
using C = Vek32sc;
__extension__ typedef __int128 Int;
struct Exact {
  Int re, im;
};

std::vector<int> scaleFactors() {
  std::vector<int> s = {INT_MIN, INT_MIN + 1, -1000, 1000, INT_MAX};
  for (int i = -70; i <= 70; ++i) s.push_back(i);
  return s;
}

// R holds r with room to shift: 64 bits for narrow data, 128 for the rest.
template <class T, class R>
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
template <class E>
E scaled(Exact x, int s) {
  if constexpr (kComplex<E>) return {scaled<PartOf<E>>(x.re, s), scaled<PartOf<E>>(x.im, s)};
  if constexpr (!kComplex<E>) return scaled<E>(std::conditional_t<(sizeof(E) < 4), int64_t, Int>(x.re), s);
}
template <class E>
Exact exact(E x) {
  if constexpr (kComplex<E>) return {x.re, x.im};
  if constexpr (!kComplex<E>) return {x, 0};
}

Exact sum(Exact a, Exact b) { return {a.re + b.re, a.im + b.im}; }
Exact less(Exact a, Exact b) { return {a.re - b.re, a.im - b.im}; }
Exact lessReversed(Exact a, Exact b) { return less(b, a); }
Exact times(Exact a, Exact b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
using Meaning = Exact (*)(Exact, Exact);

template <class A, class E>
void checkTwo(VekStatus (*call)(const A*, const E*, E*, int, int), Meaning meaning, const std::vector<A>& a,
              const std::vector<E>& b, const std::vector<int>& factors) {
  const Shapes both(a, b);
  for (int s : factors)
    both.values([=](auto* x, auto* y, E* d, int n) { return call(x, y, d, n, s); },
                each([=](A x, E y) { return scaled<E>(meaning(exact(x), exact(y)), s); }));
}
template <class E>
void checkOne(VekStatus (*call)(const E*, E, E*, int, int), Meaning meaning, const std::vector<E>& a, E val,
              const std::vector<int>& factors) {
  const Shapes one(a);
  for (int s : factors)
    one.values([=](auto* x, E* d, int n) { return call(x, val, d, n, s); },
               each([=](E x) { return scaled<E>(meaning(exact(x), exact(val)), s); }));
}

#define TWO(T, A, B, FACTORS)                               \
  checkTwo(veksAdd_##T##_Sfs, sum, A, B, FACTORS);          \
  checkTwo(veksSub_##T##_Sfs, lessReversed, A, B, FACTORS); \
  checkTwo(veksMul_##T##_Sfs, times, A, B, FACTORS)
#define CONSTANT(T, A, VAL, FACTORS)                              \
  checkOne(veksAddC_##T##_Sfs, sum, A, VAL, FACTORS);             \
  checkOne(veksSubC_##T##_Sfs, less, A, VAL, FACTORS);            \
  checkOne(veksSubCRev_##T##_Sfs, lessReversed, A, VAL, FACTORS); \
  checkOne(veksMulC_##T##_Sfs, times, A, VAL, FACTORS)

TEST(Scaled, AllPairsOfBytes) {
  std::vector<Vek8u> a(65536), b(65536);
  for (int i = 0; i < 65536; ++i) a[i] = Vek8u(i), b[i] = Vek8u(i >> 8);
  TWO(8u, a, b, scaleFactors());
  const std::vector<Vek8u> all(a.begin(), a.begin() + 256);
  const std::vector<int> factors = {-300, -8, -7, -1, 0, 1, 2, 3, 7, 8, 9, 10, 11, 15, 16, 17, 40};
  for (int val = 0; val < 256; val += 5) {
    CONSTANT(8u, all, Vek8u(val), factors);
  }
}

TEST(Scaled, AllWordsWithRepresentativeConstants) {
  std::vector<Vek16s> a(65536);
  for (int i = 0; i < 65536; ++i) a[i] = Vek16s(i);
  const std::vector<Vek16s> constants = {-32768, 32767, 1,    -1,    0,      2,      3,    -3,
                                         181,    255,   -256, 16384, -16385, -32767, 12345};
  const std::vector<int> factors = scaleFactors();
  // The ends of the range with every factor; the others by turns, each with factors from the whole range.
  for (size_t k = 0; k < constants.size(); ++k) {
    std::vector<int> some;
    for (size_t i = 0; i < factors.size(); ++i)
      if (k < 3 || i % 6 == k % 6) some.push_back(factors[i]);
    CONSTANT(16s, a, constants[k], some);
    TWO(16s, a, std::vector<Vek16s>(a.size(), constants[k]), some);
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
  TWO(32s, provoking(3001), provoking(3001), scaleFactors());
  for (Vek32s val : {INT_MIN, INT_MAX, -1, 0, 3, 1 << 20}) {
    CONSTANT(32s, provoking(211), val, scaleFactors());
  }
}

TEST(Scaled, ComplexWords32) {
  const size_t n = 1681;  // both operands hold four smallest parts at every 41st place: the one sum of 2^63
  TWO(32sc, provokingParts(n), provokingParts(n), scaleFactors());
  checkTwo(veksMul_32s32sc_Sfs, times, provoking(n), provokingParts(n), scaleFactors());
  for (C val : {C{INT_MIN, INT_MIN}, C{INT_MAX, INT_MIN}, C{-1, 3}, C{0, 1 << 20}}) {
    CONSTANT(32sc, provokingParts(123), val, scaleFactors());
  }
}

TEST(Scaled, AccumulatedProduct) {
  const Shapes shapes(provoking(2003), provoking(2003), provoking(2003));
  for (int s : scaleFactors())
    shapes.values(nullptr,
                  each([=](Vek32s a, Vek32s b, Vek32s to) { return s > 62 ? 0 : scaled<Vek32s>(to + Int(a) * b, s); }),
                  [=](auto* a, auto* b, Vek32s* to, int n) { return veksAddProduct_32s_Sfs(a, b, to, n, s); });
}

TEST(Scaled, LowHalf) {
  const Shapes shapes(provoking(2003), provoking(2003));
  for (int s : scaleFactors())
    shapes.values([=](auto* a, auto* b, Vek32s* d, int n) { return veksMul_Low_32s_Sfs(a, b, d, n, s); },
                  each<Vek32s>([=](Vek32s a, Vek32s b) -> int64_t {
                    const int64_t p = int64_t(a) * b;
                    if (s >= 0) return s > 62 ? 0 : p >> s;
                    if (s >= -31) return int64_t(uint64_t(p) << -s);
                    return p > 0 ? INT_MAX : p < 0 ? INT_MIN : 0;
                  }));
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
