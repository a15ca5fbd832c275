// SPDX-License-Identifier: Apache-2.0
// Benchmark rows. A workload is timed for each size and for each contender: the library in its slots, the plain loop a
// user would write, open peers. Rows are called workload/contender/size and report nanoseconds per element.
//
//   rows("add_32f", [](size_t n) {
//     auto a = vector<float>(n), b = ..., d = ...;
//     return Contenders{
//         {"vek", [=]() mutable { veksAdd_32f(a.data(), b.data(), d.data(), int(n)); }},
//         {"plain", [=]() mutable { for (size_t i = 0; i < n; ++i) d[i] = a[i] + b[i]; keep(d); }}};
//   });
#ifndef VEK_BENCH_ROWS_H
#define VEK_BENCH_ROWS_H

#include <benchmark/benchmark.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "core/dispatch.h"
#include "vek.h"

namespace vekbench {

using Contenders = std::vector<std::pair<std::string, std::function<void()>>>;

inline const std::vector<size_t> kSizes = {64, 1024, 16384, 1048576};

// Vectors are 64-byte aligned, as a careful user's would be.
template <class T>
class Array {
 public:
  explicit Array(size_t n) : n_(n), data_(static_cast<T*>(aligned_alloc(64, (n * sizeof(T) + 127) / 64 * 64)), free) {
    for (size_t i = 0; i < n; ++i) data_.get()[i] = T();
  }
  T* data() const { return data_.get(); }
  T& operator[](size_t i) const { return data_.get()[i]; }
  size_t size() const { return n_; }
  int len() const { return int(n_); }

 private:
  size_t n_;
  std::shared_ptr<T> data_;  // copies share the elements, so that contenders work on the same memory
};

// Uniform values in [low, high].
template <class T>
Array<T> uniform(size_t n, double low, double high) {
  static std::mt19937_64 engine(1);
  std::uniform_real_distribution<double> d(low, high);
  Array<T> a(n);
  for (size_t i = 0; i < n; ++i) a[i] = T(d(engine));
  return a;
}

// Stops the compiler from dropping a plain loop whose result nobody reads.
template <class T>
void keep(const Array<T>& a) {
  benchmark::DoNotOptimize(a.data());
  benchmark::ClobberMemory();
}

inline void registerRow(const std::string& name, size_t n, int slot, std::function<void()> run) {
  benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(),
                               [=](benchmark::State& state) {
                                 vek::setSlotForTest(slot);
                                 for (auto _ : state) {
                                   run();
                                   benchmark::ClobberMemory();
                                 }
                                 state.counters["ns_per_element"] = benchmark::Counter(
                                     double(n) * 1e-9,
                                     benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
                               })
      ->MinTime(0.02)
      ->Repetitions(1);
}

// The slots in which the contender "vek" is timed.
inline std::vector<std::pair<std::string, int>>& slotsToTime() {
  static std::vector<std::pair<std::string, int>> slots = {{"vek-y8", 4}, {"vek-l9", 6}};
  return slots;
}

template <class Make>
void rows(const std::string& workload, Make make, const std::vector<size_t>& sizes = kSizes) {
  for (size_t n : sizes)
    for (auto& [who, run] : make(n)) {
      if (who == "vek") {
        for (auto& [label, slot] : slotsToTime()) registerRow(workload + "/" + label, n, slot, run);
      } else {
        registerRow(workload + "/" + who, n, 6, run);
      }
    }
}

inline int runAll(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}

}  // namespace vekbench

#endif
