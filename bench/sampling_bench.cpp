// SPDX-License-Identifier: Apache-2.0
// Resampling, median, sampling and their like against plain loops.
#include <algorithm>
#include <cmath>
#include <complex>
#include <cstring>

#include "bench/support/rows.h"

namespace {

using namespace vekbench;

// The window kept in order: the leaving element is looked up and taken out, the new one inserted.
template <class T>
void insertionMedian(const T* x, T* y, int n, int mask) {
  const int half = mask / 2;
  std::vector<T> sorted;
  const auto at = [&](int i) { return x[std::clamp(i, 0, n - 1)]; };
  for (int i = -half; i <= half; ++i) sorted.push_back(at(i));
  std::sort(sorted.begin(), sorted.end());
  for (int i = 0;; ++i) {
    y[i] = sorted[half];
    if (i + 1 == n) return;
    int k = 0;
    const T out = at(i - half), in = at(i + 1 + half);
    while (sorted[k] != out) ++k;
    for (; k + 1 < mask && sorted[k + 1] < in; ++k) sorted[k] = sorted[k + 1];
    for (; k > 0 && sorted[k - 1] > in; --k) sorted[k] = sorted[k - 1];
    sorted[k] = in;
  }
}

template <class T>
void plainMedian(const T* x, T* y, int n, int mask) {
  if (mask > 3) return insertionMedian(x, y, n, mask);
  y[0] = x[0];
  y[n - 1] = x[n - 1];
  for (int i = 1; i + 1 < n; ++i)
    y[i] = std::max(std::min(x[i - 1], x[i]), std::min(std::max(x[i - 1], x[i]), x[i + 1]));
}

template <class T>
void medianRows(const std::string& type, VekStatus (*filter)(const T*, T*, int, int), double low, double high) {
  for (int mask : {3, 5, 9, 15, 31, 101, 1001})
    rows("median_" + type + "_m" + std::to_string(mask),
         [=](size_t n) {
           const Array<T> x = uniform<T>(n, low, high), y(n);
           return Contenders{{"vek", [=] { filter(x.data(), y.data(), int(n), mask); }},
                             {"plain", [=] { plainMedian(x.data(), y.data(), int(n), mask); }}};
         },
         {16384});
}

// Per element of the source.
void samplingRows(int factor) {
  rows("sampleup_32f_x" + std::to_string(factor), [=](size_t n) {
    const Array<float> x = uniform<float>(n, -1, 1), y(n * factor);
    return Contenders{{"vek",
                       [=] {
                         int len, phase = 0;
                         veksSampleUp_32f(x.data(), int(n), y.data(), &len, factor, &phase);
                       }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n; ++i) {
                           y[i * factor] = x[i];
                           for (int k = 1; k < factor; ++k) y[i * factor + k] = 0;
                         }
                         keep(y);
                       }}};
  });
  rows("sampledown_32f_x" + std::to_string(factor), [=](size_t n) {
    const Array<float> x = uniform<float>(n, -1, 1), y(n);
    return Contenders{{"vek",
                       [=] {
                         int len, phase = 0;
                         veksSampleDown_32f(x.data(), int(n), y.data(), &len, factor, &phase);
                       }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n / factor; ++i) y[i] = x[i * factor];
                         keep(y);
                       }}};
  });
}

template <class T>
Vek32fc plainGoertzel(const Array<T>& x, double freq) {
  const double theta = freq * 6.283185307179586, c = cos(theta), s = sin(theta);
  double re = 0, im = 0;
  for (size_t n = x.size(); n-- > 0;) {
    const double next = re * c + im * s;
    im = im * c - re * s;
    re = next;
    if constexpr (std::is_same_v<T, float>) {
      re += x[n];
    } else {
      re += x[n].re;
      im += x[n].im;
    }
  }
  return {float(re), float(im)};
}

template <class T>
void goertzelRows(const std::string& type, VekStatus (*one)(const T*, int, Vek32fc*, Vek32f),
                  VekStatus (*two)(const T*, int, Vek32fc*, const Vek32f*)) {
  const auto make = [](size_t n) {
    const Array<float> parts = uniform<float>(n * sizeof(T) / 4, -1, 1);
    Array<T> x(n);
    memcpy(x.data(), parts.data(), n * sizeof(T));
    return x;
  };
  rows("goertz_" + type, [=](size_t n) {
    const Array<T> x = make(n);
    const Array<Vek32fc> v(2);
    return Contenders{{"vek", [=] { one(x.data(), int(n), v.data(), 0.123f); }},
                      {"plain", [=] { v[0] = plainGoertzel(x, 0.123f), keep(v); }}};
  });
  rows("goertztwo_" + type, [=](size_t n) {
    const Array<T> x = make(n);
    const Array<Vek32fc> v(2);
    const Array<float> f(2);
    f[0] = 0.123f, f[1] = 0.321f;
    return Contenders{{"vek", [=] { two(x.data(), int(n), v.data(), f.data()); }},
                      {"plain", [=] { v[0] = plainGoertzel(x, f[0]), v[1] = plainGoertzel(x, f[1]), keep(v); }}};
  });
}

}  // namespace

int main(int argc, char** argv) {
  medianRows<Vek8u>("8u", veksFilterMedian_8u, 0, 256);
  medianRows<Vek16s>("16s", veksFilterMedian_16s, -32768, 32768);
  medianRows<Vek32f>("32f", veksFilterMedian_32f, -1, 1);
  for (int factor : {2, 3, 4, 10}) samplingRows(factor);
  goertzelRows<Vek32f>("32f", veksGoertz_32f, veksGoertzTwo_32f);
  goertzelRows<Vek32fc>("32fc", veksGoertz_32fc, veksGoertzTwo_32fc);
  return runAll(argc, argv);
}
