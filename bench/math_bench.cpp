// SPDX-License-Identifier: Apache-2.0
// Absolute values, squares, roots, polar forms and normalisation against the loop a user would write, and VOLK.
#include <cmath>
#include <complex>
#include <cstdlib>

#include "bench/support/rows.h"

#if __has_include(<volk/volk.h>)
#include <volk/volk.h>
#define VEK_BENCH_VOLK 1
#endif

using namespace vekbench;

namespace {

Array<Vek32fc> complexUniform(size_t n) {
  const Array<float> x = uniform<float>(2 * n, -10, 10);
  Array<Vek32fc> z(n);
  for (size_t i = 0; i < n; ++i) z[i] = {x[2 * i], x[2 * i + 1]};
  return z;
}

// One source, one destination: the library's call and the body of the plain loop.
template <class T, class Call, class Plain>
void unary(const char* name, double low, double high, Call call, Plain plain) {
  rows(name, [=](size_t n) {
    const Array<T> a = uniform<T>(n, low, high);
    const Array<T> d(n);
    return Contenders{{"vek", [=] { call(a.data(), d.data(), int(n)); }}, {"plain", [=] {
                        const T* s = a.data();
                        T* __restrict out = d.data();
                        for (size_t i = 0; i < n; ++i) out[i] = plain(s[i]);
                        keep(d);
                      }}};
  });
}

template <class T>
T clamped(int x) {
  const int most = sizeof(T) == 1 ? 255 : 32767;
  return T(x > most ? most : x);
}

void integerRows() {
  unary<Vek16s>("abs_16s", -32768, 32767, veksAbs_16s, [](Vek16s x) { return clamped<Vek16s>(std::abs(int(x))); });
  unary<Vek32s>("abs_32s", -2e9, 2e9, veksAbs_32s, [](Vek32s x) { return x == INT32_MIN ? INT32_MAX : std::abs(x); });
  for (int sf : {0, 3, 12, -2}) {
    const auto scaled = [sf](int r) {
      return sf > 0 ? (r + (1 << (sf - 1)) - 1 + (r >> sf & 1)) >> sf : int(std::min<int64_t>(int64_t(r) << -sf, 65535));
    };
    const std::string tail = "_sf" + std::to_string(sf);
    unary<Vek8u>(("sqr_8u" + tail).c_str(), 0, 255, [sf](auto s, auto d, int n) { veksSqr_8u_Sfs(s, d, n, sf); },
                 [scaled](Vek8u x) { return clamped<Vek8u>(scaled(x * x)); });
    unary<Vek16s>(("sqr_16s" + tail).c_str(), -32768, 32767,
                  [sf](auto s, auto d, int n) { veksSqr_16s_Sfs(s, d, n, sf); },
                  [scaled](Vek16s x) { return clamped<Vek16s>(scaled(x * x)); });
  }
  for (int sf : {0, -7}) {
    const double scale = std::ldexp(1.0, -sf);
    const std::string tail = "_sf" + std::to_string(sf);
    unary<Vek8u>(("sqrt_8u" + tail).c_str(), 0, 255, [sf](auto s, auto d, int n) { veksSqrt_8u_Sfs(s, d, n, sf); },
                 [=](Vek8u x) { return clamped<Vek8u>(int(std::lrint(std::sqrt(double(x)) * scale))); });
    unary<Vek16s>(("sqrt_16s" + tail).c_str(), 0, 32767, [sf](auto s, auto d, int n) { veksSqrt_16s_Sfs(s, d, n, sf); },
                  [=](Vek16s x) { return clamped<Vek16s>(int(std::lrint(std::sqrt(double(x)) * scale))); });
  }
}

void floatRows() {
  unary<float>("abs_32f", -9, 9, veksAbs_32f, [](float x) { return std::fabs(x); });
  unary<float>("sqr_32f", -9, 9, veksSqr_32f, [](float x) { return x * x; });
  unary<float>("sqrt_32f", 0, 9, veksSqrt_32f, [](float x) { return std::sqrt(x); });
  unary<float>("normalize_32f", -9, 9, [](auto s, auto d, int n) { veksNormalize_32f(s, d, n, 0.5f, 3.0f); },
               [](float x) { return (x - 0.5f) / 3.0f; });
  const auto complexRow = [](const char* name, auto call, auto plain) {
    rows(name, [=](size_t n) {
      const Array<Vek32fc> a = complexUniform(n), d(n);
      return Contenders{{"vek", [=] { call(a.data(), d.data(), int(n)); }}, {"plain", [=] {
                          for (size_t i = 0; i < n; ++i) d[i] = plain(a[i]);
                          keep(d);
                        }}};
    });
  };
  complexRow("sqr_32fc", veksSqr_32fc, [](Vek32fc z) {
    return Vek32fc{z.re * z.re - z.im * z.im, z.re * z.im + z.im * z.re};
  });
  complexRow("sqrt_32fc", veksSqrt_32fc, [](Vek32fc z) {
    const std::complex<float> r = std::sqrt(std::complex<float>(z.re, z.im));
    return Vek32fc{r.real(), r.imag()};
  });
}

// Real results of complex elements, the parts interleaved or apart.
template <class Call, class CallSplit, class Plain>
void partsRow(const std::string& name, Call call, CallSplit callSplit, Plain plain,
              void (*volk)(float*, const Vek32fc*, unsigned) = nullptr) {
  rows(name + "_32fc", [=](size_t n) {
    const Array<Vek32fc> a = complexUniform(n);
    const Array<float> d(n);
    Contenders c{{"vek", [=] { call(a.data(), d.data(), int(n)); }}, {"plain", [=] {
                   for (size_t i = 0; i < n; ++i) d[i] = plain(a[i].re, a[i].im);
                   keep(d);
                 }}};
    if (volk) c.push_back({"volk", [=] { volk(d.data(), a.data(), unsigned(n)); }});
    return c;
  });
  rows(name + "_32f", [=](size_t n) {
    const Array<float> re = uniform<float>(n, -10, 10), im = uniform<float>(n, -10, 10), d(n);
    return Contenders{{"vek", [=] { callSplit(re.data(), im.data(), d.data(), int(n)); }}, {"plain", [=] {
                        for (size_t i = 0; i < n; ++i) d[i] = plain(re[i], im[i]);
                        keep(d);
                      }}};
  });
}

void polarRows() {
  void (*volkMagnitude)(float*, const Vek32fc*, unsigned) = nullptr;
  void (*volkPhase)(float*, const Vek32fc*, unsigned) = nullptr;
#ifdef VEK_BENCH_VOLK
  volkMagnitude = [](float* d, const Vek32fc* s, unsigned n) {
    volk_32fc_magnitude_32f(d, reinterpret_cast<const lv_32fc_t*>(s), n);
  };
  volkPhase = [](float* d, const Vek32fc* s, unsigned n) {
    volk_32fc_s32f_atan2_32f(d, reinterpret_cast<const lv_32fc_t*>(s), 1.0f, n);
  };
#endif
  partsRow("magnitude", veksMagnitude_32fc, veksMagnitude_32f,
           [](float re, float im) { return std::sqrt(re * re + im * im); }, volkMagnitude);
  partsRow("phase", veksPhase_32fc, veksPhase_32f, [](float re, float im) { return std::atan2(im, re); }, volkPhase);
  partsRow("powerspectrum", veksPowerSpectrum_32fc, veksPowerSpectrum_32f,
           [](float re, float im) { return re * re + im * im; });
  rows("carttopolar_32f", [](size_t n) {
    const Array<float> re = uniform<float>(n, -10, 10), im = uniform<float>(n, -10, 10), m(n), p(n);
    return Contenders{{"vek", [=] { veksCartToPolar_32f(re.data(), im.data(), m.data(), p.data(), int(n)); }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n; ++i) {
                           m[i] = std::sqrt(re[i] * re[i] + im[i] * im[i]);
                           p[i] = std::atan2(im[i], re[i]);
                         }
                         keep(p);
                       }}};
  });
  for (double range : {3.14, 1e5, 1e9}) {
    const std::string tail = range < 4 ? "" : range < 1e6 ? "_large" : "_huge";
    rows("polartocart_32f" + tail, [=](size_t n) {
      const Array<float> m = uniform<float>(n, 0, 9), p = uniform<float>(n, -range, range), re(n), im(n);
      return Contenders{{"vek", [=] { veksPolarToCart_32f(m.data(), p.data(), re.data(), im.data(), int(n)); }},
                        {"plain", [=] {
                           for (size_t i = 0; i < n; ++i) {
                             re[i] = m[i] * std::cos(p[i]);
                             im[i] = m[i] * std::sin(p[i]);
                           }
                           keep(im);
                         }}};
    });
  }
}

}  // namespace

int main(int argc, char** argv) {
  integerRows();
  floatRows();
  polarRows();
  return vekbench::runAll(argc, argv);
}
