// SPDX-License-Identifier: Apache-2.0
// Sorts of fresh data: every run copies the vector into place first.
#include <algorithm>
#include <cstring>
#include <numeric>

#include "bench/support/rows.h"

namespace {

using namespace vekbench;

template <class T>
void row(const std::string& name, VekStatus (*sort)(T*, int), const std::function<Array<T>(size_t)>& make) {
  rows(name, [=](size_t n) {
    const Array<T> from = make(n), work(n);
    const auto fresh = [=] { memcpy(work.data(), from.data(), n * sizeof(T)); };
    return Contenders{{"vek", [=] { fresh(), sort(work.data(), int(n)); }},
                      {"plain", [=] { fresh(), std::sort(work.data(), work.data() + n); }}};
  });
}

template <class T>
void rowsOf(const std::string& type, VekStatus (*sort)(T*, int), double low, double high) {
  const auto random = [=](size_t n) { return uniform<T>(n, low, high); };
  row<T>("sort_" + type + "_random", sort, random);
  row<T>("sort_" + type + "_sorted", sort, [=](size_t n) {
    Array<T> a = random(n);
    std::sort(a.data(), a.data() + n);
    return a;
  });
  row<T>("sort_" + type + "_few", sort, [](size_t n) {
    Array<T> a = uniform<T>(n, 0, 8);
    for (size_t i = 0; i < n; ++i) a[i] = T(int(a[i]));
    return a;
  });
}

template <class T>
void indexRow(const std::string& type, VekStatus (*sort)(T*, int*, int), double low, double high) {
  rows("sortindex_" + type, [=](size_t n) {
    const Array<T> from = uniform<T>(n, low, high), work(n);
    const Array<int> index(n);
    return Contenders{{"vek",
                       [=] {
                         memcpy(work.data(), from.data(), n * sizeof(T));
                         sort(work.data(), index.data(), int(n));
                       }},
                      {"plain", [=] {
                         int* p = index.data();
                         std::iota(p, p + n, 0);
                         std::sort(p, p + n, [&](int a, int b) { return from[a] < from[b]; });
                         for (size_t i = 0; i < n; ++i) work[i] = from[p[i]];
                       }}};
  });
}

}  // namespace

int main(int argc, char** argv) {
  rowsOf<Vek8u>("8u", veksSortAscend_8u_I, 0, 256);
  rowsOf<Vek16s>("16s", veksSortAscend_16s_I, -32768, 32768);
  rowsOf<Vek32s>("32s", veksSortAscend_32s_I, -2147483648.0, 2147483648.0);
  rowsOf<Vek32f>("32f", veksSortAscend_32f_I, -1, 1);
  indexRow<Vek16s>("16s", veksSortIndexAscend_16s_I, -32768, 32768);
  indexRow<Vek32s>("32s", veksSortIndexAscend_32s_I, -2147483648.0, 2147483648.0);
  indexRow<Vek32f>("32f", veksSortIndexAscend_32f_I, -1, 1);
  return runAll(argc, argv);
}
