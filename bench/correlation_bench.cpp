// SPDX-License-Identifier: Apache-2.0
// Convolution and correlation, per result. Peers: overlap-save and one transform with FFTW, plans made beforehand.
#include <string>

#include "bench/support/overlap_save.h"
#include "bench/support/rows.h"

namespace {

using vekbench::Array;
using vekbench::Contenders;
using vekbench::keep;
using vekbench::uniform;

Contenders convRow(size_t la, size_t lb) {
  const size_t n = la + lb - 1;
  const auto a = uniform<float>(la, -1, 1), b = uniform<float>(lb, -1, 1);
  auto y = Array<float>(n), padded = Array<float>(la + 2 * lb);
  for (size_t i = 0; i < la; ++i) padded[lb - 1 + i] = a[i];
  Contenders rows;
  rows.push_back({"vek", [=]() { veksConv_32f(a.data(), int(la), b.data(), int(lb), y.data()); }});
  rows.push_back({"plain", [=]() {
                    for (size_t i = 0; i < n; ++i) y[i] = 0;
                    for (size_t j = 0; j < lb; ++j)
                      for (size_t i = 0; i < la; ++i) y[i + j] += a[i] * b[j];
                    keep(y);
                  }});
#ifdef VEK_HAVE_FFTW
  auto blocks = std::make_shared<vekbench::OverlapSave>(b.data(), lb, n);
  rows.push_back({"fftw-ols", [=]() { blocks->run(padded.data(), y.data(), n); }});
#endif
  return rows;
}

Contenders crossRow(size_t len) {
  const auto a = uniform<float>(len, -1, 1), b = uniform<float>(len, -1, 1);
  const int n = int(2 * len - 1), low = 1 - int(len);
  auto y = Array<float>(size_t(n));
  Contenders rows;
  rows.push_back({"vek", [=]() { veksCrossCorr_32f(a.data(), int(len), b.data(), int(len), y.data(), n, low); }});
  rows.push_back({"plain", [=]() {
                    for (int i = 0; i < n; ++i) {
                      const int lag = low + i;
                      float sum = 0;
                      for (int k = std::max(0, -lag); k < std::min(int(len), int(len) - lag); ++k)
                        sum += a[size_t(k)] * b[size_t(k + lag)];
                      y[size_t(i)] = sum;
                    }
                    keep(y);
                  }});
  return rows;
}

Contenders autoRow(size_t len, size_t lags) {
  const auto a = uniform<float>(len, -1, 1);
  auto y = Array<float>(lags);
  Contenders rows;
  rows.push_back({"vek", [=]() { veksAutoCorr_32f(a.data(), int(len), y.data(), int(lags)); }});
  rows.push_back({"plain", [=]() {
                    for (size_t k = 0; k < lags; ++k) {
                      float sum = 0;
                      for (size_t i = 0; i + k < len; ++i) sum += a[i] * a[i + k];
                      y[k] = sum;
                    }
                    keep(y);
                  }});
  return rows;
}

}  // namespace

int main(int argc, char** argv) {
  struct Shape {
    const char* name;
    size_t a, b;
  };
  for (const Shape& s : {Shape{"conv_64x64", 64, 64},
                         {"conv_1024x32", 1024, 32},
                         {"conv_1024x1024", 1024, 1024},
                         {"conv_100kx512", 100000, 512}})
    vekbench::rows(s.name, [=](size_t) { return convRow(s.a, s.b); }, {s.a + s.b - 1});
  vekbench::rows("crosscorr_256", [](size_t) { return crossRow(256); }, {511});
  vekbench::rows("crosscorr_4096", [](size_t) { return crossRow(4096); }, {8191});
  vekbench::rows("autocorr_256", [](size_t) { return autoRow(256, 64); }, {64});
  vekbench::rows("autocorr_4096", [](size_t) { return autoRow(4096, 4096); }, {4096});
  return vekbench::runAll(argc, argv);
}
