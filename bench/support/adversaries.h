// SPDX-License-Identifier: Apache-2.0
// Data that a function could be slow on, beside random data: what the benchmarks time and a test holds to a ratio.
#ifndef VEK_BENCH_ADVERSARIES_H
#define VEK_BENCH_ADVERSARIES_H

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "vek.h"

namespace vekbench {

struct Adversary {
  std::string name;
  size_t elements;
  std::function<void()> ordinary, hostile;
};

template <class T>
std::vector<T> randomElements(size_t n) {
  std::mt19937_64 engine(3);
  std::vector<T> x(n);
  for (T& v : x) v = T(double(engine() >> 11) * 0x1p-53 * (sizeof(T) == 1 ? 256.0 : sizeof(T) == 2 ? 30000.0 : 1e6));
  return x;
}

// The two values in turn; a first stretch of others, which leave the window full of gaps.
template <class T>
std::vector<T> alternating(size_t n, size_t others) {
  std::vector<T> x = randomElements<T>(n);
  for (size_t i = others; i < n; ++i) x[i] = i % 2 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::lowest();
  return x;
}

template <class T>
void addMedian(std::vector<Adversary>& all, const std::string& type, VekStatus (*filter)(const T*, T*, int, int)) {
  for (const auto& [mask, n] : {std::pair(101, 20000), std::pair(501, 20000), std::pair(1023, 20000),
                                std::pair(5001, 30000), std::pair(50001, 60000)})
    for (const int others : {0, mask}) {
      const auto random = randomElements<T>(size_t(n)), turns = alternating<T>(size_t(n), size_t(others));
      const auto y = std::make_shared<std::vector<T>>(size_t(n));
      const auto run = [=, n = n, mask = mask](const std::vector<T>& x) { filter(x.data(), y->data(), n, mask); };
      all.push_back({"median_" + type + "_m" + std::to_string(mask) + (others ? "_behind_others" : ""), size_t(n),
                     [=] { run(random); }, [=] { run(turns); }});
    }
}

// Orders that partitions could degenerate on.
template <class T>
std::vector<std::pair<std::string, std::vector<T>>> hostileOrders(size_t n) {
  std::vector<T> up = randomElements<T>(n), pipe(n), saw(n), two(n), same(n, T(7));
  std::sort(up.begin(), up.end());
  std::vector<T> down(up.rbegin(), up.rend());
  for (size_t i = 0; i < n; ++i) {
    pipe[i] = up[i < n / 2 ? 2 * i : 2 * (n - 1 - i)];
    saw[i] = up[i * 37 % n];
    two[i] = T(i % 2);
  }
  return {{"ascending", up}, {"descending", down}, {"organ_pipe", pipe},
          {"sawtooth", saw}, {"two_values", two},  {"one_value", same}};
}

template <class T, class Sort>
void addSort(std::vector<Adversary>& all, const std::string& name, Sort sort) {
  const size_t n = 50000;
  const auto work = std::make_shared<std::vector<T>>(n);
  const auto run = [=](const std::vector<T>& x) {
    *work = x;
    sort(work->data(), int(n));
  };
  for (const auto& [order, x] : hostileOrders<T>(n))
    all.push_back({name + "_" + order, n, [=, random = randomElements<T>(n)] { run(random); }, [=, x = x] { run(x); }});
}

inline std::vector<Adversary> adversaries() {
  std::vector<Adversary> all;
  addMedian<Vek8u>(all, "8u", veksFilterMedian_8u);
  addMedian<Vek16s>(all, "16s", veksFilterMedian_16s);
  addMedian<Vek32s>(all, "32s", veksFilterMedian_32s);
  addMedian<Vek32f>(all, "32f", veksFilterMedian_32f);
  addSort<Vek8u>(all, "sort_8u", veksSortAscend_8u_I);
  addSort<Vek16s>(all, "sort_16s", veksSortAscend_16s_I);
  addSort<Vek32s>(all, "sort_32s", veksSortAscend_32s_I);
  addSort<Vek32f>(all, "sort_32f", veksSortDescend_32f_I);
  const auto index = std::make_shared<std::vector<int>>(50000);
  addSort<Vek16s>(all, "sort_index_16s", [=](Vek16s* x, int n) { veksSortIndexAscend_16s_I(x, index->data(), n); });
  addSort<Vek32f>(all, "sort_index_32f", [=](Vek32f* x, int n) { veksSortIndexAscend_32f_I(x, index->data(), n); });
  return all;
}

}  // namespace vekbench

#endif
