// SPDX-License-Identifier: Apache-2.0
// Arithmetic and division beside the plain loops that compute the same.
#include <math.h>

#include <limits>

#include "bench/support/rows.h"

#if __has_include(<eigen3/Eigen/Core>)
#include <eigen3/Eigen/Core>
#define VEK_BENCH_EIGEN(...) Contenders::value_type("eigen", __VA_ARGS__)
template <class T>
Eigen::Map<Eigen::Array<T, Eigen::Dynamic, 1>> eigen(const vekbench::Array<T>& a) {
  return {a.data(), Eigen::Index(a.size())};
}
#else
#define VEK_BENCH_EIGEN(...)
#endif

// Not constants, and visible from outside, so that the compiler cannot build them into the plain loops.
int s1 = 1, s4 = 4, s8 = 8, s15 = 15;

namespace {

using namespace vekbench;

// The rule of the integer forms as a user would write it, for factors 0 and, known at run time only, above.
template <class T, class W>
inline T scaled(W r, int s = 0) {
  if (s > 0) r = (r + (W(1) << (s - 1)) - 1 + ((r >> s) & 1)) >> s;
  const W low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
  return T(r < low ? low : r > high ? high : r);
}
template <class T>
inline T roundedQuotient(double q) {
  const double r = nearbyint(q), low = std::numeric_limits<T>::min(), high = std::numeric_limits<T>::max();
  return T(r < low ? low : r > high ? high : r);
}

template <class T>
Array<T> data(size_t n) {
  const double most = std::numeric_limits<T>::is_integer ? double(std::numeric_limits<T>::max()) : 1.0;
  return uniform<T>(n, std::numeric_limits<T>::is_signed ? -most : 1.0, most);
}
template <>
Array<Vek32fc> data(size_t n) {
  Array<Vek32fc> a(n);
  const Array<float> v = data<float>(2 * n);
  for (size_t i = 0; i < n; ++i) a[i] = {v[2 * i], v[2 * i + 1]};
  return a;
}
template <>
Array<Vek32sc> data(size_t n) {
  Array<Vek32sc> a(n);
  const Array<Vek32s> v = data<Vek32s>(2 * n);
  for (size_t i = 0; i < n; ++i) a[i] = {v[2 * i], v[2 * i + 1]};
  return a;
}

// A row of two sources a, b and destination d; `VEK` and `PLAIN` are the call and the expression of element i.
#define ROW(NAME, A, B, D, VEK, PLAIN, ...)                           \
  rows(NAME, [](size_t n) {                                           \
    const auto a = data<A>(n);                                        \
    const auto b = data<B>(n);                                        \
    const auto d = data<D>(n);                                        \
    return Contenders{{"vek", [=] { VEK; }},                          \
                      {"plain",                                       \
                       [=] {                                          \
                         const A* x = a.data();                       \
                         const B* y = b.data();                       \
                         D* __restrict z = d.data();                  \
                         (void)x, (void)y;                            \
                         for (size_t i = 0; i < n; ++i) z[i] = PLAIN; \
                         keep(d);                                     \
                       }},                                            \
                      __VA_ARGS__};                                   \
  })
#define TWO a.data(), b.data(), d.data(), d.len()
#define ONE(VAL) a.data(), VAL, d.data(), d.len()

inline Vek32fc product(Vek32fc a, Vek32fc b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }
inline Vek32fc sum(Vek32fc a, Vek32fc b) { return {a.re + b.re, a.im + b.im}; }
inline Vek32fc quotient(Vek32fc b, Vek32fc a) {
  const float r = 1 / (a.re * a.re + a.im * a.im);
  return {(a.re * b.re + a.im * b.im) * r, (a.re * b.im - a.im * b.re) * r};
}
inline Vek32sc product(Vek32sc a, Vek32sc b, int s = 0) {
  return {scaled<Vek32s>(int64_t(a.re) * b.re - int64_t(a.im) * b.im, s),
          scaled<Vek32s>(int64_t(uint64_t(int64_t(a.re) * b.im) + uint64_t(int64_t(a.im) * b.re)), s)};
}

void floatRows() {
  using F = Vek32f;
  using C = Vek32fc;
  ROW("add_32f", F, F, F, veksAdd_32f(TWO), x[i] + y[i], VEK_BENCH_EIGEN([=] { eigen(d) = eigen(a) + eigen(b); }));
  ROW("sub_32f", F, F, F, veksSub_32f(TWO), y[i] - x[i], VEK_BENCH_EIGEN([=] { eigen(d) = eigen(b) - eigen(a); }));
  ROW("mul_32f", F, F, F, veksMul_32f(TWO), x[i] * y[i], VEK_BENCH_EIGEN([=] { eigen(d) = eigen(a) * eigen(b); }));
  ROW("div_32f", F, F, F, veksDiv_32f(TWO), y[i] / x[i], VEK_BENCH_EIGEN([=] { eigen(d) = eigen(b) / eigen(a); }));
  ROW("add_32fc", C, C, C, veksAdd_32fc(TWO), sum(x[i], y[i]));
  ROW("mul_32fc", C, C, C, veksMul_32fc(TWO), product(x[i], y[i]));
  ROW("div_32fc", C, C, C, veksDiv_32fc(TWO), quotient(y[i], x[i]));
  ROW("mul_32f32fc", F, C, C, veksMul_32f32fc(TWO), (C{x[i] * y[i].re, x[i] * y[i].im}));
  ROW("addc_32f", F, F, F, veksAddC_32f(ONE(0.5f)), x[i] + 0.5f);
  ROW("mulc_32f", F, F, F, veksMulC_32f(ONE(0.7f)), x[i] * 0.7f);
  ROW("mulc_32fc", C, F, C, veksMulC_32fc(ONE((C{0.7f, 0.1f}))), product(x[i], (C{0.7f, 0.1f})));
  ROW("divc_32f", F, F, F, veksDivC_32f(ONE(0.7f)), x[i] * (1 / 0.7f));
  // Accumulators start from the data and stay in range as the products are small.
  ROW("addproduct_32f", F, F, F, veksAddProduct_32f(TWO), z[i] + x[i] * y[i]);
  ROW("addproductc_32f", F, F, F, veksAddProductC_32f(ONE(0.7f)), z[i] + x[i] * 0.7f);
  ROW("addproduct_32fc", C, C, C, veksAddProduct_32fc(TWO), sum(z[i], product(x[i], y[i])));
}

void narrowRows() {
  using B = Vek8u;
  using W = Vek16s;
  ROW("add_8u_sf0", B, B, B, veksAdd_8u_Sfs(TWO, 0), (scaled<B>(x[i] + y[i])));
  ROW("add_8u_sf1", B, B, B, veksAdd_8u_Sfs(TWO, 1), (scaled<B>(x[i] + y[i], s1)));
  ROW("mul_8u_sf0", B, B, B, veksMul_8u_Sfs(TWO, 0), (scaled<B>(x[i] * y[i])));
  ROW("mul_8u_sf8", B, B, B, veksMul_8u_Sfs(TWO, 8), (scaled<B>(x[i] * y[i], s8)));
  ROW("add_16s_sf0", W, W, W, veksAdd_16s_Sfs(TWO, 0), (scaled<W>(x[i] + y[i])));
  ROW("add_16s_sf1", W, W, W, veksAdd_16s_Sfs(TWO, 1), (scaled<W>(x[i] + y[i], s1)));
  ROW("add_16s_sf4", W, W, W, veksAdd_16s_Sfs(TWO, 4), (scaled<W>(x[i] + y[i], s4)));
  ROW("sub_16s_sf0", W, W, W, veksSub_16s_Sfs(TWO, 0), (scaled<W>(y[i] - x[i])));
  ROW("mul_16s_sf0", W, W, W, veksMul_16s_Sfs(TWO, 0), (scaled<W>(x[i] * y[i])));
  ROW("mul_16s_sf15", W, W, W, veksMul_16s_Sfs(TWO, 15), (scaled<W>(x[i] * y[i], s15)));
  ROW("addc_16s_sf0", W, W, W, veksAddC_16s_Sfs(ONE(77), 0), (scaled<W>(x[i] + 77)));
  ROW("mulc_16s_sf4", W, W, W, veksMulC_16s_Sfs(ONE(77), 4), (scaled<W>(x[i] * 77, s4)));
  ROW("div_8u_sf0", B, B, B, veksDiv_8u_Sfs(TWO, 0), roundedQuotient<B>(float(y[i]) / float(x[i])));
  ROW("div_16s_sf0", W, W, W, veksDiv_16s_Sfs(TWO, 0), roundedQuotient<W>(float(y[i]) / float(x[i])));
  ROW("divc_16s_sf0", W, W, W, veksDivC_16s_Sfs(ONE(77), 0), roundedQuotient<W>(float(x[i]) * (1 / 77.0f)));
}

void wideRows() {
  using I = Vek32s;
  using C = Vek32sc;
  ROW("add_32s_sf0", I, I, I, veksAdd_32s_Sfs(TWO, 0), (scaled<I>(int64_t(x[i]) + y[i])));
  ROW("add_32s_sf4", I, I, I, veksAdd_32s_Sfs(TWO, 4), (scaled<I>(int64_t(x[i]) + y[i], s4)));
  ROW("mul_32s_sf0", I, I, I, veksMul_32s_Sfs(TWO, 0), (scaled<I>(int64_t(x[i]) * y[i])));
  ROW("mul_32s_sf4", I, I, I, veksMul_32s_Sfs(TWO, 4), (scaled<I>(int64_t(x[i]) * y[i], s4)));
  ROW("mul_low_32s_sf4", I, I, I, veksMul_Low_32s_Sfs(TWO, 4), I((int64_t(x[i]) * y[i]) >> s4));
  ROW("mul_32sc_sf0", C, C, C, veksMul_32sc_Sfs(TWO, 0), product(x[i], y[i]));
  ROW("mul_32sc_sf4", C, C, C, veksMul_32sc_Sfs(TWO, 4), product(x[i], y[i], s4));
  ROW("addproduct_32s_sf4", I, I, I, veksAddProduct_32s_Sfs(TWO, 4), (scaled<I>(z[i] + int64_t(x[i]) * y[i], s4)));
  ROW("div_32s_sf0", I, I, I, veksDiv_32s_Sfs(TWO, 0), roundedQuotient<I>(double(y[i]) / x[i]));
}

}  // namespace

int main(int argc, char** argv) {
  floatRows();
  narrowRows();
  wideRows();
  return vekbench::runAll(argc, argv);
}
