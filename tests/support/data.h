// SPDX-License-Identifier: Apache-2.0
// Test data that provokes: random values, extremes of the type, special floats; lengths and comparison to the bit.
#ifndef VEK_TESTS_DATA_H
#define VEK_TESTS_DATA_H

#include <gtest/gtest.h>
#include <string.h>

#include <cmath>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "vek/types.h"

namespace vektest {

// One generator, seeded alike in every run and re-seeded by each test that wants its data to stay put.
inline std::mt19937_64& rng() {
  static std::mt19937_64 engine(20240607);
  return engine;
}

template <class T>
T randomValue() {
  if constexpr (std::is_floating_point_v<T>) {
    return T(std::uniform_real_distribution<double>(-1000, 1000)(rng()));
  } else if constexpr (std::is_integral_v<T>) {
    return T(rng()());
  } else {
    T x;
    x.re = randomValue<decltype(x.re)>(), x.im = randomValue<decltype(x.im)>();
    return x;
  }
}

template <class T>
std::vector<T> randomVector(size_t n) {
  std::vector<T> v(n);
  for (T& x : v) x = randomValue<T>();
  return v;
}

// Values at which kernels go wrong: zero and its neighbours, the ends of the range, ties, NaN, infinities, denormals.
template <class T>
std::vector<T> specialValues() {
  using L = std::numeric_limits<T>;
  if constexpr (std::is_floating_point_v<T>) {
    std::vector<T> v;
    for (double x : {0.0, 1.0, 0.5, 1.5, 2.5, 255.5, 32767.5, 32768.5, 2147483648.0, 1e30, double(L::min()),
                     double(L::denorm_min()), double(L::max()), double(INFINITY), double(NAN)})
      v.push_back(T(x)), v.push_back(T(-x));
    return v;
  } else {
    return {T(0),           T(1), T(-1), T(2), T(-2), T(3), L::max(), L::min(), T(L::max() - 1), T(L::min() + 1),
            T(L::max() / 2)};
  }
}

// The real type of which a complex one has two.
template <class T>
struct Parts {
  using type = T;
};
template <class T>
requires requires(T x) { x.im; }
struct Parts<T> {
  using type = decltype(T::im);
};
template <class T>
using PartOf = typename Parts<T>::type;
template <class T>
constexpr bool kComplex = !std::is_same_v<T, PartOf<T>>;

// Parts as complex elements, in turn.
template <class C>
std::vector<C> paired(const std::vector<PartOf<C>>& parts) {
  std::vector<C> v(parts.size() / 2);
  memcpy(static_cast<void*>(v.data()), parts.data(), v.size() * sizeof(C));
  return v;
}

// Random values with special ones strewn in at every phase of the packs, and in either part.
template <class T>
std::vector<T> mixedVector(size_t n) {
  if constexpr (kComplex<T>) {
    return paired<T>(mixedVector<PartOf<T>>(2 * n));
  } else {
    std::vector<T> v = randomVector<T>(n);
    const std::vector<T> s = specialValues<T>();
    for (size_t i = 0; i < n; i += 3) v[i] = s[rng()() % s.size()];
    return v;
  }
}

// Floats where conversions and thresholds go wrong: every exponent of both signs with several fractions, ties and their
// neighbours, the neighbours of the ends of every integer range, and the special values with several NaNs.
template <class T>
std::vector<T> floatSweep() {
  std::vector<T> v = specialValues<T>();
  const auto around = [&](double centre) {
    const T x = T(centre);
    for (const T y : {x, std::nextafter(x, T(-INFINITY)), std::nextafter(x, T(INFINITY))})
      v.push_back(y), v.push_back(-y);
  };
  for (int e = std::numeric_limits<T>::min_exponent - std::numeric_limits<T>::digits;
       e < std::numeric_limits<T>::max_exponent; ++e)
    for (const double f : {1.0, 1.25, 1.5, 1.9999999, 1.3333333})
      v.push_back(T(std::ldexp(f, e))), v.push_back(-v.back());
  for (int i = 0; i <= 260; ++i) around(i / 2.0), around(i / 4.0);
  for (const double limit : {127.0, 128.0, 255.0, 32767.0, 32768.0, 65535.0, 8388607.0, 8388608.0, 16777215.0,
                             2147483647.0, 2147483648.0, 65504.0, 65520.0, 65536.0})
    for (const double d : {-1.0, -0.5, 0.0, 0.5, 1.0}) around(limit + d);
  const uint32_t nans[] = {0x7F800001, 0x7FBFFFFF, 0x7FC12345, 0xFF800001, 0xFFFFFFFF};
  for (const uint32_t n : nans) {
    float x;
    memcpy(&x, &n, sizeof x);
    v.push_back(T(x));
  }
  while (v.size() < 3000) v.push_back(randomValue<T>());
  return v;
}

// Lengths without gaps over a few blocks, then both sides of powers of two.
inline std::vector<int> sweepLengths(int dense = 140, int most = 1100) {
  std::vector<int> n;
  for (int i = 1; i <= dense; ++i) n.push_back(i);
  for (int p = 1; p <= most; p *= 2)
    for (int d : {-1, 0, 1})
      if (p + d > dense && p + d <= most) n.push_back(p + d);
  return n;
}

// Equal to the bit, any NaN equal to any NaN.
template <class T>
bool sameBits(const T& a, const T& b) {
  if constexpr (std::is_floating_point_v<T>) {
    if (std::isnan(a) && std::isnan(b)) return true;
  } else if constexpr (std::is_same_v<T, Vek32fc> || std::is_same_v<T, Vek64fc>) {
    return sameBits(a.re, b.re) && sameBits(a.im, b.im);
  }
  return memcmp(&a, &b, sizeof(T)) == 0;
}

template <class T>
::testing::AssertionResult sameVectors(const std::vector<T>& got, const std::vector<T>& want) {
  if (got.size() != want.size()) return ::testing::AssertionFailure() << "sizes differ";
  if (got.empty() || memcmp(got.data(), want.data(), got.size() * sizeof(T)) == 0) return ::testing::AssertionSuccess();
  for (size_t i = 0; i < got.size(); ++i)
    if (!sameBits(got[i], want[i]))
      return ::testing::AssertionFailure()
             << "element " << i << " of " << got.size() << ": got " << ::testing::PrintToString(got[i]) << ", want "
             << ::testing::PrintToString(want[i]);
  return ::testing::AssertionSuccess();
}

}  // namespace vektest

#endif
