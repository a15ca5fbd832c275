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
  } else {
    return T(rng()());
  }
}
template <>
inline Vek32fc randomValue<Vek32fc>() {
  return {randomValue<float>(), randomValue<float>()};
}
template <>
inline Vek32sc randomValue<Vek32sc>() {
  return {randomValue<int32_t>(), randomValue<int32_t>()};
}
template <>
inline Vek16sc randomValue<Vek16sc>() {
  return {randomValue<int16_t>(), randomValue<int16_t>()};
}
template <>
inline Vek64sc randomValue<Vek64sc>() {
  return {randomValue<int64_t>(), randomValue<int64_t>()};
}
template <>
inline Vek64fc randomValue<Vek64fc>() {
  return {randomValue<double>(), randomValue<double>()};
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
    return {T(0),
            T(-0.0),
            T(1),
            T(-1),
            T(0.5),
            T(-0.5),
            T(1.5),
            T(2.5),
            T(-2.5),
            T(255.5),
            T(-32768.5),
            T(32767.5),
            T(2147483648.0),
            T(-2147483648.0),
            T(1e30),
            T(-1e30),
            L::min(),
            L::denorm_min(),
            -L::denorm_min(),
            L::max(),
            L::lowest(),
            L::infinity(),
            -L::infinity(),
            L::quiet_NaN(),
            -L::quiet_NaN()};
  } else {
    return {T(0),           T(1), T(-1), T(2), T(-2), T(3), L::max(), L::min(), T(L::max() - 1), T(L::min() + 1),
            T(L::max() / 2)};
  }
}

// Random values with special ones strewn in at every phase of the packs.
template <class T>
std::vector<T> mixedVector(size_t n) {
  std::vector<T> v = randomVector<T>(n);
  const std::vector<T> s = specialValues<T>();
  for (size_t i = 0; i < n; i += 3) v[i] = s[rng()() % s.size()];
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
  for (size_t i = 0; i < got.size(); ++i)
    if (!sameBits(got[i], want[i]))
      return ::testing::AssertionFailure()
             << "element " << i << " of " << got.size() << ": got " << ::testing::PrintToString(got[i]) << ", want "
             << ::testing::PrintToString(want[i]);
  return ::testing::AssertionSuccess();
}

}  // namespace vektest

#endif
