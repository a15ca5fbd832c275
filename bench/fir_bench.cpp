// SPDX-License-Identifier: Apache-2.0
// FIR filters, per output: single-rate by taps and samples a call, multi-rate. Peers: liquid-dsp's filters, a loop over
// VOLK's dot product, overlap-save with FFTW.
#include <string.h>

#include <string>
#include <type_traits>

#include "bench/support/overlap_save.h"
#include "bench/support/rows.h"

#if __has_include(<liquid/liquid.h>)
#include <liquid/liquid.h>
#define VEK_HAVE_LIQUID 1
#endif
#if __has_include(<volk/volk.h>)
#include <volk/volk.h>
#define VEK_HAVE_VOLK 1
#endif

namespace {

using vekbench::Array;
using vekbench::Contenders;
using vekbench::keep;
using vekbench::uniform;

// Any element type from uniform parts.
template <class T>
Array<T> noise(size_t n) {
  if constexpr (std::is_same_v<T, float> || std::is_same_v<T, double>) {
    return uniform<T>(n, -1, 1);
  } else {
    using Part = decltype(T::re);
    Array<T> a(n);
    const Array<Part> flat = uniform<Part>(2 * n, -1, 1);
    memcpy(a.data(), flat.data(), n * sizeof(T));
    return a;
  }
}

template <class Acc, class A, class B>
inline void multiplyAdd(Acc& sum, A tap, B x) {
  if constexpr (std::is_arithmetic_v<A>) {
    sum += tap * Acc(x);
  } else {
    sum.re += tap.re * x.re - tap.im * x.im;
    sum.im += tap.re * x.im + tap.im * x.re;
  }
}
template <class Data, class Acc>
inline Data rounded(Acc a) {
  if constexpr (std::is_arithmetic_v<Acc>) {
    return Data(a);
  } else {
    return {float(a.re), float(a.im)};
  }
}

// A row of products for each tap, added up: what compilers make fast. x begins with the past samples.
template <class Tap, class Data>
void plainFir(const Tap* taps, size_t count, const Data* x, Tap* sums, Data* y, size_t n) {
  for (size_t i = 0; i < n; ++i) sums[i] = Tap();
  for (size_t k = 0; k < count; ++k)
    for (size_t i = 0; i < n; ++i) multiplyAdd(sums[i], taps[k], x[i + count - 1 - k]);
  for (size_t i = 0; i < n; ++i) y[i] = rounded<Data>(sums[i]);
}

template <class State, class Tap, class Data>
Contenders filterRow(size_t taps, size_t n, VekStatus (*make)(State**, const Tap*, int, const Data*),
                     VekStatus (*run)(const Data*, Data*, int, State*)) {
  const auto h = noise<Tap>(taps);
  auto x = noise<Data>(n + taps), y = Array<Data>(n);
  auto sums = Array<Tap>(n);
  Contenders rows;
  // A state belongs to the slot that made it: each slot's first call makes its own.
  auto states = std::make_shared<std::vector<State*>>(7, nullptr);
  rows.push_back({"vek", [=]() {
                    State*& state = (*states)[size_t(vek_variant_index)];
                    if (!state) make(&state, h.data(), int(taps), nullptr);
                    run(x.data(), y.data(), int(n), state);
                  }});
  rows.push_back({"plain", [=]() {
                    plainFir(h.data(), taps, x.data(), sums.data(), y.data(), n);
                    keep(y);
                  }});
  if constexpr (std::is_same_v<Tap, float>) {
#ifdef VEK_HAVE_LIQUID
    firfilt_rrrf filter = firfilt_rrrf_create(h.data(), unsigned(taps));
    rows.push_back({"liquid", [=]() { firfilt_rrrf_execute_block(filter, x.data(), unsigned(n), y.data()); }});
#endif
#ifdef VEK_HAVE_VOLK
    rows.push_back({"volk-loop", [=]() {
                      for (size_t i = 0; i < n; ++i)
                        volk_32f_x2_dot_prod_32f(&y[i], x.data() + i, h.data(), unsigned(taps));
                      keep(y);
                    }});
#endif
#ifdef VEK_HAVE_FFTW
    if (taps >= 32) {
      auto blocks = std::make_shared<vekbench::OverlapSave>(h.data(), taps, n);
      rows.push_back({"fftw-ols", [=]() { blocks->run(x.data(), y.data(), n); }});
    }
#endif
  }
  return rows;
}

Contenders rateRow(int taps, int up, int down, size_t outputs) {
  const size_t iterations = outputs / size_t(up), inputs = iterations * size_t(down);
  const auto h = uniform<float>(size_t(taps), -1, 1);
  auto x = uniform<float>(inputs, -1, 1), y = Array<float>(outputs);
  Contenders rows;
  auto states = std::make_shared<std::vector<VeksFIRState_32f*>>(7, nullptr);
  rows.push_back({"vek", [=]() {
                    VeksFIRState_32f*& state = (*states)[size_t(vek_variant_index)];
                    if (!state) veksFIRMRInitAlloc_32f(&state, h.data(), taps, up, 0, down, 0, nullptr);
                    veksFIR_32f(x.data(), y.data(), int(iterations), state);
                  }});
  rows.push_back({"plain", [=]() {
                    for (size_t i = 0; i < outputs; ++i) {
                      const int64_t at = int64_t(i) * down;
                      float sum = 0;
                      for (int64_t k = at % up; k < taps && k <= at; k += up)
                        sum += h[size_t(k)] * x[size_t((at - k) / up)];
                      y[i] = sum;
                    }
                    keep(y);
                  }});
#ifdef VEK_HAVE_LIQUID
  if (up == 1) {
    firdecim_rrrf filter = firdecim_rrrf_create(unsigned(down), h.data(), unsigned(taps));
    rows.push_back(
        {"liquid", [=]() { firdecim_rrrf_execute_block(filter, x.data(), unsigned(iterations), y.data()); }});
  } else if (down == 1) {
    firinterp_rrrf filter = firinterp_rrrf_create(unsigned(up), h.data(), unsigned(taps));
    rows.push_back(
        {"liquid", [=]() { firinterp_rrrf_execute_block(filter, x.data(), unsigned(iterations), y.data()); }});
  } else {
    rresamp_rrrf filter = rresamp_rrrf_create(unsigned(up), unsigned(down), unsigned(taps / up / 2), h.data());
    rows.push_back({"liquid", [=]() {
                      for (size_t i = 0; i < iterations; ++i)
                        rresamp_rrrf_execute(filter, x.data() + i * size_t(down), y.data() + i * size_t(up));
                    }});
  }
#endif
  return rows;
}

template <class Make, class Run>
void filters(const std::string& kind, const std::vector<std::pair<int, int>>& shapes, Make make, Run run) {
  for (const auto& [taps, n] : shapes)
    vekbench::rows(kind + "_t" + std::to_string(taps) + "_b" + std::to_string(n),
                   [=](size_t count) { return filterRow(size_t(taps), count, make, run); }, {size_t(n)});
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::pair<int, int>> shapes;
  for (int taps : {8, 32, 63, 128, 512, 2048})
    for (int n : {256, 4096}) shapes.push_back({taps, n});
  filters("fir_32f", shapes, veksFIRInitAlloc_32f, veksFIR_32f);
  filters("fir_32fc", {{15, 4096}, {16, 4096}, {64, 4096}, {64, 255}, {256, 4096}}, veksFIRInitAlloc_32fc,
          veksFIR_32fc);
  filters("fir64f_32f", {{31, 4096}, {32, 4096}, {32, 511}, {128, 4096}, {512, 4096}}, veksFIRInitAlloc64f_32f,
          veksFIR64f_32f);
  filters("fir64fc_32fc", {{15, 4096}, {64, 4096}}, veksFIRInitAlloc64fc_32fc, veksFIR64fc_32fc);
  vekbench::rows("firmr_decim4_t64", [](size_t n) { return rateRow(64, 1, 4, n); }, {1024});
  vekbench::rows("firmr_interp4_t64", [](size_t n) { return rateRow(64, 4, 1, n); }, {4096});
  vekbench::rows("firmr_3to2_t48", [](size_t n) { return rateRow(48, 3, 2, n); }, {3072});
  return vekbench::runAll(argc, argv);
}
