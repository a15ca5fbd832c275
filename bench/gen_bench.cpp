// SPDX-License-Identifier: Apache-2.0
// Generators and windows against plain loops and open libraries.
#include <math.h>

#include "bench/support/rows.h"

using namespace vekbench;

namespace {

constexpr double kTwoPi = 6.283185307179586;

void tones() {
  rows("tone_32f", [](size_t n) {
    const Array<float> d(n);
    return Contenders{{"vek",
                       [=] {
                         float phase = 0.3f;
                         veksTone_Direct_32f(d.data(), d.len(), 1.5f, 0.0123f, &phase, vekAlgHintFast);
                       }},
                      {"plain", [=] {
                         // The same recurrence, element by element.
                         const double w = kTwoPi * 0.0123f, c = 2 * cos(w), e = c * c - 2;
                         double a = 1.5 * cos(0.3), b = 1.5 * cos(0.3 + w), p = c * b - a, q = c * p - b;
                         d[0] = float(a), d[1] = float(b), d[2] = float(p), d[3] = float(q);
                         for (size_t i = 4; i + 1 < n; i += 2) {
                           const double r = e * p - a, s = e * q - b;
                           a = p, b = q, p = r, q = s;
                           d[i] = float(r), d[i + 1] = float(s);
                         }
                         keep(d);
                       }}};
  });
  rows("tone_32fc", [](size_t n) {
    const Array<Vek32fc> d(n);
    return Contenders{{"vek",
                       [=] {
                         float phase = 0.3f;
                         veksTone_Direct_32fc(d.data(), d.len(), 1.5f, 0.0123f, &phase, vekAlgHintFast);
                       }},
                      {"plain", [=] {
                         const double w = kTwoPi * 0.0123f, c = 2 * cos(w);
                         double a = 1.5 * cos(0.3), b = 1.5 * cos(0.3 + w), p = 1.5 * sin(0.3), q = 1.5 * sin(0.3 + w);
                         for (size_t i = 0; i < n; ++i) {
                           d[i] = {float(a), float(p)};
                           const double r = c * b - a, s = c * q - p;
                           a = b, b = r, p = q, q = s;
                         }
                         keep(d);
                       }}};
  });
  rows("triangle_32f", [](size_t n) {
    const Array<float> d(n);
    return Contenders{{"vek",
                       [=] {
                         float phase = 0.3f;
                         veksTriangle_Direct_32f(d.data(), d.len(), 1.5f, 0.0123f, 0.5f, &phase);
                       }},
                      {"plain", [=] {
                         double v = 1.2, up = 0.09, down = -0.07, top = 1.5;
                         bool rising = false;
                         for (size_t i = 0; i < n; ++i) {
                           d[i] = float(v);
                           v += rising ? up : down;
                           if (rising && v > top) v = -0.7 * v + 2.55, rising = false;
                           if (!rising && v < -top) v = -1.4 * v - 3.6, rising = true;
                         }
                         keep(d);
                       }}};
  });
}

void lines() {
  rows("jaehne_32f", [](size_t n) {
    const Array<float> d(n);
    return Contenders{{"vek", [=] { veksVectorJaehne_32f(d.data(), d.len(), 1.5f); }},
                      {"plain", [=] {
                         const double w = kTwoPi / 4 / double(n);
                         for (size_t i = 0; i < n; ++i) d[i] = float(1.5 * sin(w * double(i) * double(i)));
                         keep(d);
                       }}};
  });
  rows("ramp_32f", [](size_t n) {
    const Array<float> d(n);
    return Contenders{{"vek", [=] { veksVectorRamp_32f(d.data(), d.len(), 1.5f, 0.25f); }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n; ++i) d[i] = float(int(i)) * 0.25f + 1.5f;
                         keep(d);
                       }}};
  });
  rows("slope_16s", [](size_t n) {
    const Array<int16_t> d(n);
    const float slope = 60000.0f / float(n);
    return Contenders{{"vek", [=] { veksVectorSlope_16s(d.data(), d.len(), -30000, slope); }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n; ++i) d[i] = int16_t(lrintf(float(int(i)) * slope - 30000));
                         keep(d);
                       }}};
  });
}

void randoms() {
  rows("uniform_32f", [](size_t n) {
    const Array<float> d(n);
    return Contenders{{"vek",
                       [=] {
                         Vek32u seed = 7;
                         veksRandUniform_Direct_32f(d.data(), d.len(), -1, 1, &seed);
                       }},
                      {"plain", [=, e = std::mt19937(1)]() mutable {
                         std::uniform_real_distribution<float> u(-1, 1);
                         for (size_t i = 0; i < n; ++i) d[i] = u(e);
                         keep(d);
                       }}};
  });
  rows("gauss_32f", [](size_t n) {
    const Array<float> d(n);
    return Contenders{{"vek",
                       [=] {
                         Vek32u seed = 7;
                         veksRandGauss_Direct_32f(d.data(), d.len(), 0, 1, &seed);
                       }},
                      {"plain", [=, e = std::mt19937(1)]() mutable {
                         std::normal_distribution<float> g(0, 1);
                         for (size_t i = 0; i < n; ++i) d[i] = g(e);
                         keep(d);
                       }}};
  });
}

// The loop a user would write: a cosine a sample ("cosf"), and the library's own recurrence ("plain").
template <class Call, class Weight>
void window(const char* name, Call call, Weight weight) {
  rows(name, [=](size_t n) {
    const Array<float> s = uniform<float>(n, -1, 1), d(n);
    return Contenders{{"vek", [=] { call(s.data(), d.data(), d.len()); }},
                      {"cosf",
                       [=] {
                         const float t = float(kTwoPi / double(n - 1));
                         for (size_t i = 0; i < n; ++i) d[i] = s[i] * weight(cosf(t * float(i)));
                         keep(d);
                       }},
                      {"plain", [=] {
                         const double t = kTwoPi / double(n - 1), stepC = cos(t), stepS = sin(t);
                         double c = 1, q = 0;
                         for (size_t i = 0, j = n - 1; i < n / 2; ++i, --j) {
                           const double w = weight(c);
                           d[i] = float(s[i] * w);
                           d[j] = float(s[j] * w);
                           const double u = c * stepC - q * stepS;
                           q = q * stepC + c * stepS;
                           c = u;
                         }
                         keep(d);
                       }}};
  });
}

double besselI0(double x) {
  double sum = 1, term = 1;
  for (int k = 1; term > sum * 1e-9; ++k) sum += term *= x * x / (4.0 * k * k);
  return sum;
}

void windows() {
  window("hann_32f", veksWinHann_32f, [](auto c) { return decltype(c)(0.5) - decltype(c)(0.5) * c; });
  window("hamming_32f", veksWinHamming_32f, [](auto c) { return decltype(c)(0.54) - decltype(c)(0.46) * c; });
  window("blackmanstd_32f", veksWinBlackmanStd_32f,
         [](auto c) { return decltype(c)(0.34) - c * (decltype(c)(0.5) - decltype(c)(0.16) * c); });
  rows("bartlett_32f", [](size_t n) {
    const Array<float> s = uniform<float>(n, -1, 1), d(n);
    return Contenders{{"vek", [=] { veksWinBartlett_32f(s.data(), d.data(), d.len()); }},
                      {"plain", [=] {
                         double w = 0;
                         for (size_t i = 0, j = n - 1; i < n / 2; ++i, --j, w += 2.0 / double(n - 1)) {
                           d[i] = float(s[i] * w);
                           d[j] = float(s[j] * w);
                         }
                         keep(d);
                       }}};
  });
  rows("kaiser_32f", [](size_t n) {
    const Array<float> s = uniform<float>(n, -1, 1), d(n);
    const float alpha = 16.0f / float(n - 1);
    return Contenders{{"vek", [=] { veksWinKaiser_32f(s.data(), d.data(), d.len(), alpha); }},
                      {"plain", [=] {
                         const double scale = 1 / besselI0(8);
                         for (size_t i = 0; i < n; ++i)
                           d[i] = float(s[i] * besselI0(alpha * sqrt(double(i) * double(n - 1 - i))) * scale);
                         keep(d);
                       }}};
  });
}

}  // namespace

int main(int argc, char** argv) {
  tones();
  lines();
  randoms();
  windows();
  return runAll(argc, argv);
}
