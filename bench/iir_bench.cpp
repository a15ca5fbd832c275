// SPDX-License-Identifier: Apache-2.0
// Recursive filters against plain loops and open libraries.
#include <math.h>

#include "bench/support/rows.h"

using namespace vekbench;

namespace {

const std::vector<size_t> kFilterSizes = {64, 1024, 16384};

// Low-pass sections of slightly different corner frequencies.
std::vector<float> sections(int count) {
  std::vector<float> taps;
  for (int i = 0; i < count; ++i) {
    const double w = 0.3 + 0.05 * i, q = 0.8, alpha = sin(w) / (2 * q), c = cos(w);
    for (double t : {(1 - c) / 2, 1 - c, (1 - c) / 2, 1 + alpha, -2 * c, 1 - alpha})
      taps.push_back(float(t / (1 + alpha)));
  }
  return taps;
}

std::vector<float> polynomial(int order) {
  std::vector<double> b = {1}, a = {1};
  const std::vector<float> s = sections(order / 2);
  const auto times = [](std::vector<double>& p, const float* q) {
    std::vector<double> r(p.size() + 2);
    for (size_t i = 0; i < p.size(); ++i)
      for (size_t k = 0; k < 3; ++k) r[i + k] += p[i] * q[k];
    p = r;
  };
  for (int i = 0; i < order / 2; ++i) times(b, &s[6 * i]), times(a, &s[6 * i + 3]);
  std::vector<float> taps(b.begin(), b.end());
  taps.insert(taps.end(), a.begin(), a.end());
  return taps;
}

void biquads(int count) {
  rows(
      "biquad_32f_x" + std::to_string(count),
      [=](size_t n) {
        const Array<float> s = uniform<float>(n, -1, 1), d(n);
        const std::vector<float> taps = sections(count);
        VeksIIRState_32f* made[7] = {};
        for (int slot : {4, 6}) {
          vek::setSlotForTest(slot);
          veksIIRInitAlloc_BiQuad_32f(&made[slot], taps.data(), count, nullptr);
        }
        VeksIIRState_32f *y8 = made[4], *l9 = made[6];
        return Contenders{{"vek", [=] { veksIIR_32f(s.data(), d.data(), d.len(), vek_variant_index == 4 ? y8 : l9); }},
                          {"plain", [=, state = std::vector<float>(size_t(count) * 2)]() mutable {
                             for (size_t i = 0; i < n; ++i) {
                               float x = s[i];
                               for (int k = 0; k < count; ++k) {
                                 const float* c = &taps[size_t(6 * k)];
                                 float* t = &state[size_t(2 * k)];
                                 const float y = c[0] * x + t[0];
                                 t[0] = t[1] - c[4] * y + c[1] * x;
                                 t[1] = c[2] * x - c[5] * y;
                                 x = y;
                               }
                               d[i] = x;
                             }
                             keep(d);
                           }}};
      },
      kFilterSizes);
}

void orders(int order) {
  rows(
      "iir_32f_order" + std::to_string(order),
      [=](size_t n) {
        const Array<float> s = uniform<float>(n, -1, 1), d(n);
        const std::vector<float> taps = polynomial(order);
        VeksIIRState_32f* made[7] = {};
        for (int slot : {4, 6}) {
          vek::setSlotForTest(slot);
          veksIIRInitAlloc_32f(&made[slot], taps.data(), order, nullptr);
        }
        VeksIIRState_32f *y8 = made[4], *l9 = made[6];
        return Contenders{{"vek", [=] { veksIIR_32f(s.data(), d.data(), d.len(), vek_variant_index == 4 ? y8 : l9); }},
                          {"plain", [=, state = std::vector<float>(size_t(order) + 1)]() mutable {
                             const float *b = taps.data(), *a = b + order + 1;
                             for (size_t i = 0; i < n; ++i) {
                               const float x = s[i], y = b[0] * x + state[0];
                               for (int k = 1; k <= order; ++k) state[k - 1] = b[k] * x - a[k] * y + state[k];
                               d[i] = y;
                             }
                             keep(d);
                           }}};
      },
      kFilterSizes);
}

}  // namespace

int main(int argc, char** argv) {
  for (int order : {4, 8}) orders(order);
  for (int count : {1, 2, 4, 8}) biquads(count);
  return runAll(argc, argv);
}
