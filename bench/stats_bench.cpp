// SPDX-License-Identifier: Apache-2.0
// Reductions against the loops a user would write, and against Eigen where it is installed.
#include <algorithm>
#include <cmath>

#include "bench/support/rows.h"

#if __has_include(<eigen3/Eigen/Core>)
#include <eigen3/Eigen/Core>
#define VEK_BENCH_EIGEN 1
#endif

namespace {

using namespace vekbench;

const std::vector<size_t> kReductionSizes = {64, 1024, 16384, 4194304};

template <class T>
Array<T> fill(size_t n) {
  if constexpr (std::is_same_v<T, Vek32fc>) {
    const Array<float> parts = uniform<float>(2 * n, -1, 1);
    Array<T> a(n);
    for (size_t i = 0; i < n; ++i) a[i] = {parts[2 * i], parts[2 * i + 1]};
    return a;
  } else {
    const double most = sizeof(T) == 2 ? 32000 : std::is_integral_v<T> ? 2e9 : 1;
    return uniform<T>(n, -most, most);
  }
}

// A reduction of one vector: vek(pointer, len) and plain(pointer, n), which returns its value.
template <class T, class Vek, class Plain>
void one(const char* name, Vek vek, Plain plain) {
  rows(
      name,
      [=](size_t n) {
        const Array<T> a = fill<T>(n);
        return Contenders{{"vek", [=] { vek(a.data(), a.len()); }}, {"plain", [=] {
                                                                       auto r = plain(a.data(), a.size());
                                                                       benchmark::DoNotOptimize(r);
                                                                     }}};
      },
      kReductionSizes);
}

template <class A, class B, class Vek, class Plain>
void two(const char* name, Vek vek, Plain plain) {
  rows(
      name,
      [=](size_t n) {
        const Array<A> a = fill<A>(n);
        const Array<B> b = fill<B>(n);
        return Contenders{{"vek", [=] { vek(a.data(), b.data(), a.len()); }}, {"plain", [=] {
                                                                                 auto r = plain(a.data(), b.data(),
                                                                                                a.size());
                                                                                 benchmark::DoNotOptimize(r);
                                                                               }}};
      },
      kReductionSizes);
}

// Sums of a term per element, in the accumulator's type.
template <class Sum, class T, class Term>
Sum plainSum(const T* x, size_t n, Term term) {
  Sum s = 0;
  for (size_t i = 0; i < n; ++i) s += term(x[i]);
  return s;
}
template <class Sum, class A, class B, class Term>
Sum plainSum(const A* x, const B* y, size_t n, Term term) {
  Sum s = 0;
  for (size_t i = 0; i < n; ++i) s += term(x[i], y[i]);
  return s;
}

template <class T>
struct Pair {
  T a, b;
};

template <class Sum, class A, class B, class Term>
Pair<Sum> plainPairSum(const A* x, const B* y, size_t n, Term term) {
  Pair<Sum> s = {};
  for (size_t i = 0; i < n; ++i) {
    const Pair<Sum> t = term(x[i], y[i]);
    s.a += t.a, s.b += t.b;
  }
  return s;
}

template <class T>
Pair<T> plainMinMax(const T* x, size_t n) {
  Pair<T> e = {x[0], x[0]};
  for (size_t i = 1; i < n; ++i) {
    if (x[i] < e.a) e.a = x[i];
    if (x[i] > e.b) e.b = x[i];
  }
  return e;
}

template <class T>
Pair<size_t> plainMinMaxIndx(const T* x, size_t n) {
  Pair<size_t> at = {0, 0};
  for (size_t i = 1; i < n; ++i) {
    if (x[i] < x[at.a]) at.a = i;
    if (x[i] > x[at.b]) at.b = i;
  }
  return at;
}

template <class T>
T plainMax(const T* x, size_t n) {
  T m = x[0];
  for (size_t i = 1; i < n; ++i)
    if (x[i] > m) m = x[i];
  return m;
}

template <class T>
size_t plainMaxIndx(const T* x, size_t n) {
  size_t at = 0;
  for (size_t i = 1; i < n; ++i)
    if (x[i] > x[at]) at = i;
  return at;
}

Pair<double> plainMoments(const float* x, size_t n) {
  Pair<double> s = {};
  for (size_t i = 0; i < n; ++i) s.a += x[i], s.b += double(x[i]) * x[i];
  return {s.a / double(n), std::sqrt((s.b * double(n) - s.a * s.a) / (double(n) * double(n - 1)))};
}

void sums() {
  static float f;
  static Vek32fc c;
  static int32_t i;
  one<float>(
      "sum_32f_fast", [](auto x, int n) { veksSum_32f(x, n, &f, vekAlgHintFast); },
      [](auto x, size_t n) { return plainSum<float>(x, n, [](float v) { return v; }); });
  one<float>(
      "sum_32f_acc", [](auto x, int n) { veksSum_32f(x, n, &f, vekAlgHintAccurate); },
      [](auto x, size_t n) { return plainSum<double>(x, n, [](float v) { return double(v); }); });
  one<Vek32fc>(
      "sum_32fc", [](auto x, int n) { veksSum_32fc(x, n, &c, vekAlgHintNone); },
      [](auto x, size_t n) {
        return plainPairSum<double>(x, x, n, [](Vek32fc v, Vek32fc) { return Pair<double>{v.re, v.im}; });
      });
  one<int16_t>(
      "sum_16s32s_sf0", [](auto x, int n) { veksSum_16s32s_Sfs(x, n, &i, 0); },
      [](auto x, size_t n) { return plainSum<int64_t>(x, n, [](int16_t v) { return int64_t(v); }); });
  one<int32_t>(
      "sum_32s_sf4", [](auto x, int n) { veksSum_32s_Sfs(x, n, &i, 4); },
      [](auto x, size_t n) { return plainSum<int64_t>(x, n, [](int32_t v) { return int64_t(v); }); });
  one<float>(
      "mean_32f", [](auto x, int n) { veksMean_32f(x, n, &f, vekAlgHintAccurate); },
      [](auto x, size_t n) { return plainSum<double>(x, n, [](float v) { return double(v); }) / double(n); });
  one<float>(
      "meanstddev_32f",
      [](auto x, int n) {
        static float g;
        veksMeanStdDev_32f(x, n, &g, &f, vekAlgHintAccurate);
      },
      [](auto x, size_t n) { return plainMoments(x, n); });
  one<float>(
      "stddev_32f_fast", [](auto x, int n) { veksStdDev_32f(x, n, &f, vekAlgHintFast); },
      [](auto x, size_t n) { return plainMoments(x, n).b; });
}

#define VEK_BENCH_EXTREMES(T, S)                                                                         \
  do {                                                                                                   \
    static T low, high;                                                                                  \
    static int lowAt, highAt;                                                                            \
    one<T>(                                                                                              \
        "max_" #S, [](auto x, int n) { veksMax_##S(x, n, &high); }, plainMax<T>);                        \
    one<T>(                                                                                              \
        "minmax_" #S, [](auto x, int n) { veksMinMax_##S(x, n, &low, &high); }, plainMinMax<T>);         \
    one<T>(                                                                                              \
        "maxindx_" #S, [](auto x, int n) { veksMaxIndx_##S(x, n, &high, &highAt); }, plainMaxIndx<T>);   \
    one<T>(                                                                                              \
        "minmaxindx_" #S, [](auto x, int n) { veksMinMaxIndx_##S(x, n, &low, &lowAt, &high, &highAt); }, \
        plainMinMaxIndx<T>);                                                                             \
  } while (0)

void extremes() {
  VEK_BENCH_EXTREMES(Vek16s, 16s);
  VEK_BENCH_EXTREMES(Vek32s, 32s);
  VEK_BENCH_EXTREMES(Vek32f, 32f);
  static int32_t m;
  one<int32_t>(
      "maxabs_32s", [](auto x, int n) { veksMaxAbs_32s(x, n, &m); },
      [](auto x, size_t n) {
        uint32_t high = 0;
        for (size_t i = 0; i < n; ++i) high = std::max(high, x[i] < 0 ? -uint32_t(x[i]) : uint32_t(x[i]));
        return high;
      });
  static int count;
  one<int32_t>(
      "countinrange_32s", [](auto x, int n) { veksCountInRange_32s(x, n, &count, -1000000000, 1000000000); },
      [](auto x, size_t n) {
        return plainSum<int>(x, n, [](int32_t v) { return -1000000000 < v && v < 1000000000; });
      });
}

double power(Vek32fc z) { return double(z.re) * z.re + double(z.im) * z.im; }

void norms() {
  static float f;
  static double d;
  const auto largest = [](auto x, size_t n) {
    float m = 0;
    for (size_t i = 0; i < n; ++i)
      if (std::fabs(x[i]) > m) m = std::fabs(x[i]);
    return m;
  };
  one<float>(
      "norm_inf_32f", [](auto x, int n) { veksNorm_Inf_32f(x, n, &f); }, largest);
  one<float>(
      "norm_l1_32f", [](auto x, int n) { veksNorm_L1_32f(x, n, &f); },
      [](auto x, size_t n) { return plainSum<double>(x, n, [](float v) { return std::fabs(double(v)); }); });
  one<float>(
      "norm_l2_32f", [](auto x, int n) { veksNorm_L2_32f(x, n, &f); },
      [](auto x, size_t n) { return std::sqrt(plainSum<double>(x, n, [](float v) { return double(v) * v; })); });
  one<Vek32fc>(
      "norm_inf_32fc32f", [](auto x, int n) { veksNorm_Inf_32fc32f(x, n, &f); },
      [](auto x, size_t n) {
        float m = 0;
        for (size_t i = 0; i < n; ++i) m = std::max(m, x[i].re * x[i].re + x[i].im * x[i].im);
        return std::sqrt(m);
      });
  one<Vek32fc>(
      "norm_l1_32fc64f", [](auto x, int n) { veksNorm_L1_32fc64f(x, n, &d); },
      [](auto x, size_t n) { return plainSum<double>(x, n, [](Vek32fc z) { return float(std::sqrt(power(z))); }); });
  one<Vek32fc>(
      "norm_l2_32fc64f", [](auto x, int n) { veksNorm_L2_32fc64f(x, n, &d); },
      [](auto x, size_t n) { return std::sqrt(plainSum<double>(x, n, power)); });
  two<float, float>(
      "normdiff_inf_32f", [](auto x, auto y, int n) { veksNormDiff_Inf_32f(x, y, n, &f); },
      [](auto x, auto y, size_t n) {
        float m = 0;
        for (size_t i = 0; i < n; ++i)
          if (std::fabs(x[i] - y[i]) > m) m = std::fabs(x[i] - y[i]);
        return m;
      });
  two<float, float>(
      "normdiff_l1_32f", [](auto x, auto y, int n) { veksNormDiff_L1_32f(x, y, n, &f); },
      [](auto x, auto y, size_t n) {
        return plainSum<double>(x, y, n, [](double v, double w) { return std::fabs(v - w); });
      });
  two<float, float>(
      "normdiff_l2_32f", [](auto x, auto y, int n) { veksNormDiff_L2_32f(x, y, n, &f); },
      [](auto x, auto y, size_t n) {
        return std::sqrt(plainSum<double>(x, y, n, [](double v, double w) { return (v - w) * (v - w); }));
      });
}

template <class R>
Pair<R> times(Vek32fc x, Vek32fc y) {
  return {R(x.re) * y.re - R(x.im) * y.im, R(x.re) * y.im + R(x.im) * y.re};
}

void dots() {
  static float f;
  static double d;
  static int32_t i;
  static Vek32fc c;
  static Vek64fc e;
  two<float, float>(
      "dotprod_32f", [](auto x, auto y, int n) { veksDotProd_32f(x, y, n, &f); },
      [](auto x, auto y, size_t n) { return plainSum<float>(x, y, n, [](float v, float w) { return v * w; }); });
  two<float, float>(
      "dotprod_32f64f", [](auto x, auto y, int n) { veksDotProd_32f64f(x, y, n, &d); },
      [](auto x, auto y, size_t n) { return plainSum<double>(x, y, n, [](double v, double w) { return v * w; }); });
  two<Vek32fc, Vek32fc>(
      "dotprod_32fc", [](auto x, auto y, int n) { veksDotProd_32fc(x, y, n, &c); },
      [](auto x, auto y, size_t n) { return plainPairSum<float>(x, y, n, times<float>); });
  two<Vek32fc, Vek32fc>(
      "dotprod_32fc64fc", [](auto x, auto y, int n) { veksDotProd_32fc64fc(x, y, n, &e); },
      [](auto x, auto y, size_t n) { return plainPairSum<double>(x, y, n, times<double>); });
  two<float, Vek32fc>(
      "dotprod_32f32fc", [](auto x, auto y, int n) { veksDotProd_32f32fc(x, y, n, &c); },
      [](auto x, auto y, size_t n) {
        return plainPairSum<float>(x, y, n, [](float v, Vek32fc w) { return Pair<float>{v * w.re, v * w.im}; });
      });
  two<int32_t, int32_t>(
      "dotprod_32s_sf20", [](auto x, auto y, int n) { veksDotProd_32s_Sfs(x, y, n, &i, 20); },
      [](auto x, auto y, size_t n) { return plainSum<double>(x, y, n, [](double v, double w) { return v * w; }); });
}

#ifdef VEK_BENCH_EIGEN
using Floats = Eigen::Map<const Eigen::ArrayXf>;

template <class F>
void eigen(const char* name, F f) {
  rows(
      name,
      [=](size_t n) {
        const Array<float> a = fill<float>(n), b = fill<float>(n);
        return Contenders{{"eigen", [=] {
                             float r = f(Floats(a.data(), Eigen::Index(n)), Floats(b.data(), Eigen::Index(n)));
                             benchmark::DoNotOptimize(r);
                           }}};
      },
      kReductionSizes);
}

void peers() {
  eigen("sum_32f_fast", [](Floats x, Floats) { return x.sum(); });
  eigen("max_32f", [](Floats x, Floats) { return x.maxCoeff(); });
  eigen("norm_inf_32f", [](Floats x, Floats) { return x.abs().maxCoeff(); });
  eigen("normdiff_inf_32f", [](Floats x, Floats y) { return (x - y).abs().maxCoeff(); });
  eigen("dotprod_32f", [](Floats x, Floats y) { return x.matrix().dot(y.matrix()); });
}
#else
void peers() {}
#endif

}  // namespace

int main(int argc, char** argv) {
  sums();
  extremes();
  norms();
  dots();
  peers();
  return vekbench::runAll(argc, argv);
}
