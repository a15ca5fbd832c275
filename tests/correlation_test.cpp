// SPDX-License-Identifier: Apache-2.0
#include <gtest/gtest.h>

#include <functional>

#include "fir_kinds.h"

namespace {

using namespace vektest;

// Signals so far apart that no result of one is zero by chance, and single precision shows.
template <class T>
std::vector<T> signal(size_t n) {
  return randomSignal<T>(n);
}

template <class T>
Value elementOf(const std::vector<T>& v, int64_t i) {
  return i >= 0 && i < int64_t(v.size()) ? value(v[size_t(i)]) : Value(0);
}

// sum over k of conj(a[k]) * b[k + lag]
template <class T>
Expected correlationAt(const std::vector<T>& a, const std::vector<T>& b, int64_t lag) {
  Expected e;
  const int64_t from = std::max<int64_t>(0, -lag), to = std::min<int64_t>(int64_t(a.size()), int64_t(b.size()) - lag);
  for (int64_t k = from; k < to; ++k) e.add(std::conj(value(a[size_t(k)])), value(b[size_t(k + lag)]));
  return e;
}

template <class T>
std::vector<Expected> correlation(const std::vector<T>& a, const std::vector<T>& b, int64_t lowLag, int n) {
  std::vector<Expected> y;
  for (int i = 0; i < n; ++i) y.push_back(correlationAt(a, b, lowLag + i));
  return y;
}

std::vector<Expected> convolution(const std::vector<float>& a, const std::vector<float>& b, int64_t first, int n) {
  const std::vector<float> reversed(a.rbegin(), a.rend());
  return correlation(reversed, b, first - int64_t(a.size()) + 1, n);
}

// Direct sums are judged by their own terms, transformed ones by the largest there may be.
template <class T>
::testing::AssertionResult near(const std::vector<T>& got, const std::vector<Expected>& want, size_t terms, bool direct) {
  double largest = 0;
  for (const Expected& e : want) largest = std::max(largest, e.magnitude);
  return closeTo<Kind32fc>(reinterpret_cast<const std::vector<Vek32fc>&>(got), want, int(terms), direct ? 0 : 8 * largest);
}

struct Lengths {
  int a, b;
};
const std::vector<Lengths> kLengths = {{1, 1},    {1, 9},     {2, 3},     {7, 8},     {16, 40},   {31, 31},   {64, 64},
                                       {75, 75},  {118, 32},  {119, 32},  {119, 31},  {1000, 31}, {100, 40},  {96, 32},
                                       {95, 32},  {300, 100}, {299, 100}, {2000, 33}, {513, 512}, {5000, 20}, {9000, 300}};

bool convIsDirect(int a, int b) { return a + b - 1 < 150 || std::min(a, b) < 32; }

}  // namespace
