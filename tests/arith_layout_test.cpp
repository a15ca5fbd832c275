// SPDX-License-Identifier: Apache-2.0
// Arithmetic at every length and alignment between guard pages, with the destination equal to either source and in
// place: the same results as for one long aligned vector, and no byte outside the arrays touched.
#include <gtest/gtest.h>

#include "support/data.h"
#include "support/guarded.h"
#include "support/slots.h"

namespace {

using namespace vektest;

constexpr int kMost = 300;

template <class T>
std::vector<T> prefix(const std::vector<T>& v, int n) {
  return {v.begin(), v.begin() + n};
}

// Compared as bytes: whether a NaN has the same payload matters here, as position alone must change nothing.
template <class T>
bool identical(const std::vector<T>& a, const std::vector<T>& b) {
  return memcmp(a.data(), b.data(), a.size() * sizeof(T)) == 0;
}

// out(a, b, dst, n) and in(a, dst, n), which works on b in place.
template <class A, class B, class Out, class In>
void checkLayout(const char* name, Out out, In in) {
  rng().seed(7);
  const std::vector<A> a = randomVector<A>(kMost);
  const std::vector<B> b = randomVector<B>(kMost);
  inEverySlot([&](int) {
    std::vector<B> all = b;
    out(a.data(), b.data(), all.data(), kMost);
    for (int n : sweepLengths(80, kMost)) {
      SCOPED_TRACE(std::string(name) + " length " + std::to_string(n));
      const std::vector<B> want = prefix(all, n);
      const Flush flush = n % 2 ? Flush::kBack : Flush::kFront;
      const size_t unit = sizeof(B) < 4 ? sizeof(B) : 4, step = size_t(n) / 2 % 32 * unit;
      Guarded<A> x(prefix(a, n), flush, n % 3 ? step : 0);
      Guarded<B> y(prefix(b, n), flush, n % 5 ? 2 * step : 0), dst(prefix(b, n), flush, n % 7 ? 3 * step : 0);
      out(x.data(), y.data(), dst.data(), n);
      ASSERT_TRUE(identical(dst.values(), want));
      ASSERT_TRUE(identical(x.values(), prefix(a, n)) && identical(y.values(), prefix(b, n)));
      out(x.data(), y.data(), y.data(), n);
      ASSERT_TRUE(identical(y.values(), want)) << "over the second source";
      y.assign(prefix(b, n));
      in(x.data(), y.data(), n);
      ASSERT_TRUE(identical(y.values(), want)) << "in place";
      if constexpr (std::is_same_v<A, B>) {
        y.assign(prefix(b, n));
        out(x.data(), y.data(), x.data(), n);
        ASSERT_TRUE(identical(x.values(), want)) << "over the first source";
      }
      ASSERT_TRUE(x.intact() && y.intact() && dst.intact());
    }
  });
}

#define TWO_SCALED(NAME, T, S)                                                               \
  checkLayout<T, T>(                                                                         \
      #NAME, [&](const T* a, const T* b, T* d, int n) { return NAME##_Sfs(a, b, d, n, S); }, \
      [&](const T* a, T* d, int n) { return NAME##_ISfs(a, d, n, S); })
#define TWO_FLOAT(NAME, A, B)                                                       \
  checkLayout<A, B>(                                                                \
      #NAME, [&](const A* a, const B* b, B* d, int n) { return NAME(a, b, d, n); }, \
      [&](const A* a, B* d, int n) { return NAME##_I(a, d, n); })
#define ONE_SCALED(NAME, T, VAL, S)                                                              \
  checkLayout<Vek8u, T>(                                                                         \
      #NAME, [&](const Vek8u*, const T* b, T* d, int n) { return NAME##_Sfs(b, VAL, d, n, S); }, \
      [&](const Vek8u*, T* d, int n) { return NAME##_ISfs(VAL, d, n, S); })
#define ONE_FLOAT(NAME, T, VAL)                                                         \
  checkLayout<Vek8u, T>(                                                                \
      #NAME, [&](const Vek8u*, const T* b, T* d, int n) { return NAME(b, VAL, d, n); }, \
      [&](const Vek8u*, T* d, int n) { return NAME##_I(VAL, d, n); })

#define SCALED_FAMILY(SUFFIX, T, VAL)              \
  for (int s : {0, 1, 5, -2, 100}) {               \
    SCOPED_TRACE(s);                               \
    TWO_SCALED(veksAdd_##SUFFIX, T, s);            \
    TWO_SCALED(veksSub_##SUFFIX, T, s);            \
    TWO_SCALED(veksMul_##SUFFIX, T, s);            \
    ONE_SCALED(veksAddC_##SUFFIX, T, (VAL), s);    \
    ONE_SCALED(veksSubC_##SUFFIX, T, (VAL), s);    \
    ONE_SCALED(veksSubCRev_##SUFFIX, T, (VAL), s); \
    ONE_SCALED(veksMulC_##SUFFIX, T, (VAL), s);    \
  }
#define FLOAT_FAMILY(SUFFIX, T, VAL)         \
  TWO_FLOAT(veksAdd_##SUFFIX, T, T);         \
  TWO_FLOAT(veksSub_##SUFFIX, T, T);         \
  TWO_FLOAT(veksMul_##SUFFIX, T, T);         \
  TWO_FLOAT(veksDiv_##SUFFIX, T, T);         \
  ONE_FLOAT(veksAddC_##SUFFIX, T, (VAL));    \
  ONE_FLOAT(veksSubC_##SUFFIX, T, (VAL));    \
  ONE_FLOAT(veksSubCRev_##SUFFIX, T, (VAL)); \
  ONE_FLOAT(veksMulC_##SUFFIX, T, (VAL));    \
  ONE_FLOAT(veksDivC_##SUFFIX, T, (VAL))

TEST(ArithmeticLayout, Bytes) {
  SCALED_FAMILY(8u, Vek8u, 77)
  TWO_SCALED(veksDiv_8u, Vek8u, -3);
  ONE_SCALED(veksDivC_8u, Vek8u, 3, 0);
}

TEST(ArithmeticLayout, Words) {
  SCALED_FAMILY(16s, Vek16s, -777)
  TWO_SCALED(veksDiv_16s, Vek16s, -3);
  ONE_SCALED(veksDivC_16s, Vek16s, 3, 0);
}

TEST(ArithmeticLayout, Words32) {
  SCALED_FAMILY(32s, Vek32s, -77777777)
  TWO_SCALED(veksDiv_32s, Vek32s, -3);
}

TEST(ArithmeticLayout, ComplexWords32) {
  const Vek32sc c = {77777777, -33333};
  SCALED_FAMILY(32sc, Vek32sc, c)
  for (int s : {0, 9})
    checkLayout<Vek32s, Vek32sc>(
        "veksMul_32s32sc",
        [&](const Vek32s* a, const Vek32sc* b, Vek32sc* d, int n) { return veksMul_32s32sc_Sfs(a, b, d, n, s); },
        [&](const Vek32s* a, Vek32sc* d, int n) { return veksMul_32s32sc_ISfs(a, d, n, s); });
}

TEST(ArithmeticLayout, Floats) {
  const Vek32fc c = {0.3f, -7};
  FLOAT_FAMILY(32f, Vek32f, 0.3f);
  FLOAT_FAMILY(32fc, Vek32fc, c);
  TWO_FLOAT(veksMul_32f32fc, Vek32f, Vek32fc);
}

// Accumulators are source and destination at once, so both forms of the check are the same call.
#define ACCUMULATED(NAME, A, T, CALL)            \
  checkLayout<A, T>(                             \
      #NAME,                                     \
      [&](const A* a, const T* b, T* d, int n) { \
        std::vector<T> sum(b, b + n);            \
        CALL(a, sum.data(), n);                  \
        memcpy(d, sum.data(), n * sizeof(T));    \
      },                                         \
      [&](const A* a, T* d, int n) { CALL(a, d, n); })

TEST(ArithmeticLayout, Accumulation) {
  // The second factor is the vector behind the guard page too: squares are accumulated.
  const auto words = [](const Vek32s* a, Vek32s* d, int n) { veksAddProduct_32s_Sfs(a, a, d, n, 4); };
  const auto floats = [](const Vek32f* a, Vek32f* d, int n) { veksAddProduct_32f(a, a, d, n); };
  const auto pairs = [](const Vek32fc* a, Vek32fc* d, int n) { veksAddProduct_32fc(a, a, d, n); };
  const auto constant = [](const Vek32f* a, Vek32f* d, int n) { veksAddProductC_32f(a, 0.3f, d, n); };
  ACCUMULATED(veksAddProduct_32s, Vek32s, Vek32s, words);
  ACCUMULATED(veksAddProduct_32f, Vek32f, Vek32f, floats);
  ACCUMULATED(veksAddProduct_32fc, Vek32fc, Vek32fc, pairs);
  ACCUMULATED(veksAddProductC_32f, Vek32f, Vek32f, constant);
}

}  // namespace
