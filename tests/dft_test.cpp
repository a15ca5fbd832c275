// SPDX-License-Identifier: Apache-2.0
// The internal Fourier engine of every length, reached in each slot it is compiled for: against sums in long double, on
// arrays between guard pages, in place and apart, one at a time and many.
#include <algorithm>
#include <complex>

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/slots.h"

#define VEK_SLOT mx
#include "transform/dft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_DFT_H
#ifdef VEK_HAS_y8
#define VEK_SLOT y8
#include "transform/dft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_DFT_H
#endif
#ifdef VEK_HAS_e9
#define VEK_SLOT e9
#include "transform/dft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_DFT_H
#endif
#ifdef VEK_HAS_l9
#define VEK_SLOT l9
#include "transform/dft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_DFT_H
#endif

namespace {

using vektest::Flush;
using vektest::Guarded;
using Number = std::complex<long double>;
using Numbers = std::vector<Number>;

// Kinds of data by their sample: 0 real, 1 complex.
template <class T>
struct Types;
template <>
struct Types<float> {
  using Complex = Vek32fc;
  static constexpr int kinds[] = {26, 28};
};
template <>
struct Types<double> {
  using Complex = Vek64fc;
  static constexpr int kinds[] = {27, 29};
};

#define VEK_ENGINE(NAME, SLOT)                                                                                   \
  struct NAME {                                                                                                  \
    static constexpr int slot = SLOT;                                                                            \
    using Spec = vek::NAME::DftSpec;                                                                             \
    static auto sizes(int kind, int64_t n) { return vek::NAME::dftSizes(vek::NAME::DftKind(kind), n); }          \
    static Spec* place(int kind, int64_t n, uint8_t* p) {                                                        \
      return vek::NAME::dftPlace(vek::NAME::DftKind(kind), n, p);                                                \
    }                                                                                                            \
    template <class A, class B, class T>                                                                         \
    static void run(bool forward, const A* x, B* y, const Spec* s, T scale, uint8_t* work) {                     \
      if constexpr (sizeof(A) <= sizeof(B))                                                                      \
        if (forward) return vek::NAME::dftForward(x, y, s, scale, work);                                         \
      if constexpr (sizeof(A) >= sizeof(B)) vek::NAME::dftInverse(x, y, s, scale, work);                         \
    }                                                                                                            \
    template <class A, class B, class T>                                                                         \
    static void run(bool forward, const A* x, B* y, const Spec* s, const int64_t (&b)[5], T scale, uint8_t* w) { \
      const vek::NAME::DftBatch batch = {b[0], b[1], b[2], b[3], b[4]};                                          \
      if constexpr (sizeof(A) <= sizeof(B))                                                                      \
        if (forward) return vek::NAME::dftForward(x, y, s, batch, scale, w);                                     \
      if constexpr (sizeof(A) >= sizeof(B)) vek::NAME::dftInverse(x, y, s, batch, scale, w);                     \
    }                                                                                                            \
  };
VEK_ENGINE(mx, 0)
#ifdef VEK_HAS_y8
VEK_ENGINE(y8, 4)
#endif
#ifdef VEK_HAS_e9
VEK_ENGINE(e9, 5)
#endif
#ifdef VEK_HAS_l9
VEK_ENGINE(l9, 6)
#endif

template <class E>
class Dft : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::vector<int> slots = vektest::availableSlots();
    if (std::find(slots.begin(), slots.end(), E::slot) == slots.end()) GTEST_SKIP() << "not on this processor";
  }
};
using Engines = ::testing::Types<mx
#ifdef VEK_HAS_y8
                                 ,
                                 y8
#endif
#ifdef VEK_HAS_e9
                                 ,
                                 e9
#endif
#ifdef VEK_HAS_l9
                                 ,
                                 l9
#endif
                                 >;
TYPED_TEST_SUITE(Dft, Engines);

// A direction's sums over n elements, bins from `first` in steps.
Numbers sums(const Numbers& x, bool forward, size_t first = 0, size_t step = 1) {
  const size_t n = x.size();
  Numbers roots(n), y;
  for (size_t k = 0; k < n; ++k) {
    roots[k] =
        std::polar(1.0L, (forward ? -2 : 2) * 3.14159265358979323846264338327950288L * (long double)k / (long double)n);
  }
  for (size_t k = first; k < n; k += step) {
    Number sum = 0;
    size_t i = 0;
    for (const Number& v : x) {
      sum += v * roots[i];
      i = i + k < n ? i + k : i + k - n;
    }
    y.push_back(sum);
  }
  return y;
}

template <class T>
Number numberOf(T x) {
  return x;
}
Number numberOf(Vek32fc x) { return {x.re, x.im}; }
Number numberOf(Vek64fc x) { return {x.re, x.im}; }

// The relative error in the 2-norm of what lies at y.
template <class E>
double errorOf(const E* y, size_t stride, const Numbers& expected, double scale) {
  long double difference = 0, norm = 0;
  for (size_t k = 0; k < expected.size(); ++k) {
    difference += std::norm(numberOf(y[k * stride]) - expected[k] * (long double)scale);
    norm += std::norm(expected[k] * (long double)scale);
  }
  return double(std::sqrt(difference / norm));
}

bool smooth(size_t n) {
  for (const size_t p : {2, 3, 5, 7, 11, 13})
    while (n % p == 0) n /= p;
  return n == 1;
}
template <class T>
double bound(size_t n) {
  const double unit = sizeof(T) == 4 ? 0x1p-24 : 0x1p-53;
  return unit * (std::sqrt(std::log2(double(n))) + 2) * (smooth(n) ? 1 : 2);
}

// A placed spec with its work buffers, all flush against a page at some misalignment.
template <class E>
struct Plan {
  Plan(int kind, size_t n, size_t shift)
      : sizes(E::sizes(kind, int64_t(n))),
        spec(size_t(sizes.spec), Flush::kBack, shift),
        work(size_t(sizes.work), Flush::kBack, shift),
        many(size_t(sizes.workMany), Flush::kBack, shift),
        placed(E::place(kind, int64_t(n), spec)) {}
  bool intact() const { return spec.intact() && work.intact() && many.intact(); }
  decltype(E::sizes(0, 1)) sizes;
  Guarded<uint8_t> spec, work, many;
  typename E::Spec* placed;
};

// One pair of sides: x of type A to y of type B.
template <class E, class A, class B, class T>
void expectTransform(Plan<E>& plan, bool forward, const std::vector<A>& x, const Numbers& y, size_t n) {
  const T scale = T(0.75);
  const double limit = bound<T>(n);
  const size_t shift = n % 5 * sizeof(T);
  Guarded<A> from(x, Flush::kBack, shift);
  Guarded<B> to(y.size(), Flush::kBack, shift);
  E::template run(forward, from.data(), to.data(), plan.placed, scale, plan.work.data());
  EXPECT_LT(errorOf(to.data(), 1, y, 0.75), limit) << n << (forward ? " forward" : " inverse");
  EXPECT_TRUE(from.intact() && to.intact() && plan.intact()) << n;
  EXPECT_EQ(memcmp(from.data(), x.data(), x.size() * sizeof(A)), 0) << n;

  Guarded<uint8_t> both(std::max(x.size() * sizeof(A), y.size() * sizeof(B)), Flush::kBack, shift);
  memcpy(both.data(), x.data(), x.size() * sizeof(A));
  E::template run(forward, reinterpret_cast<A*>(both.data()), reinterpret_cast<B*>(both.data()), plan.placed, scale,
                  plan.work.data());
  EXPECT_LT(errorOf(reinterpret_cast<B*>(both.data()), 1, y, 0.75), limit) << n << " in place";
  EXPECT_TRUE(both.intact()) << n;

  // Many times the same, from columns to rows and from rows to columns.
  constexpr size_t count = 19;
  Guarded<A> columns(count * x.size(), Flush::kBack, shift), rows(count * x.size(), Flush::kBack, shift);
  Guarded<B> across(count * y.size(), Flush::kBack, shift), along(count * y.size(), Flush::kBack, shift);
  for (size_t t = 0; t < count; ++t) {
    for (size_t e = 0; e < x.size(); ++e) columns.data()[e * count + t] = rows.data()[t * x.size() + e] = x[e];
  }
  const int64_t in = int64_t(x.size()), out = int64_t(y.size()), many = count;
  E::template run(forward, columns.data(), along.data(), plan.placed, {many, many, 1, 1, out}, scale, plan.many.data());
  E::template run(forward, rows.data(), across.data(), plan.placed, {many, 1, in, many, 1}, scale, plan.many.data());
  for (size_t t = 0; t < count; t += count - 1) {
    EXPECT_LT(errorOf(along.data() + t * y.size(), 1, y, 0.75), limit) << n << " from columns";
    EXPECT_LT(errorOf(across.data() + t, count, y, 0.75), limit) << n << " to columns";
  }
  EXPECT_TRUE(columns.intact() && along.intact() && across.intact() && plan.intact()) << n;
}

template <class E, class T>
void everyWay(size_t n) {
  using C = typename Types<T>::Complex;
  std::vector<C> x(n);
  std::vector<T> samples(n);
  Numbers numbers(n), reals(n);
  for (size_t j = 0; j < n; ++j) {
    std::uniform_real_distribution<T> uniform(-1, 1);
    x[j] = {uniform(vektest::rng()), uniform(vektest::rng())};
    numbers[j] = numberOf(x[j]);
    samples[j] = x[j].re;
    reals[j] = samples[j];
  }
  Plan<E> complexPlan(Types<T>::kinds[1], n, n % 64), realPlan(Types<T>::kinds[0], n, n % 64);
  expectTransform<E, C, C, T>(complexPlan, true, x, sums(numbers, true), n);
  expectTransform<E, C, C, T>(complexPlan, false, x, sums(numbers, false), n);
  Numbers spectrum = sums(reals, true);
  spectrum.resize(n / 2 + 1);
  expectTransform<E, T, C, T>(realPlan, true, samples, spectrum, n);
  std::vector<C> half(x.begin(), x.begin() + int64_t(n / 2 + 1));
  for (size_t k = 0; k < n; ++k) numbers[k] = k <= n / 2 ? numberOf(half[k]) : std::conj(numberOf(half[n - k]));
  numbers[0] = numbers[0].real();  // imaginary parts that no spectrum of real data has are not read
  if (n % 2 == 0) numbers[n / 2] = numbers[n / 2].real();
  Numbers back = sums(numbers, false);
  expectTransform<E, C, T, T>(realPlan, false, half, back, n);
}

TYPED_TEST(Dft, EveryShortLengthEqualsItsSums) {
  for (size_t n = 1; n <= 260; ++n) {
    everyWay<TypeParam, float>(n);
    everyWay<TypeParam, double>(n);
  }
}

// What short lengths do not reach: many passes, long rows, long convolutions.
TYPED_TEST(Dft, ChosenLengthsEqualTheirSums) {
  for (const size_t n : {441, 512, 625, 1000, 1009, 1024, 1155, 1331, 1920, 2018, 2187, 2401}) {
    everyWay<TypeParam, float>(n);
    everyWay<TypeParam, double>(n);
  }
}

// Some bins of a transform forward, and all elements of the way back.
template <class E, class T>
void roundTrip(size_t n) {
  using C = typename Types<T>::Complex;
  std::vector<C> x(n), y(n), z(n);
  Numbers numbers(n);
  for (size_t j = 0; j < n; ++j) {
    std::uniform_real_distribution<T> uniform(-1, 1);
    x[j] = {uniform(vektest::rng()), uniform(vektest::rng())};
    numbers[j] = numberOf(x[j]);
  }
  Plan<E> plan(Types<T>::kinds[1], n, 1);
  E::template run(true, x.data(), y.data(), plan.placed, T(1), plan.work.data());
  const size_t step = n / 7;
  EXPECT_LT(errorOf(y.data() + 1, step, sums(numbers, true, 1, step), 1), 2 * bound<T>(n)) << n;
  E::template run(false, y.data(), z.data(), plan.placed, T(1) / T(n), plan.work.data());
  EXPECT_LT(errorOf(z.data(), 1, numbers, 1), 2 * bound<T>(n)) << n;
}
TYPED_TEST(Dft, LongTransformsComeBack) {
  for (const size_t n : {10007, 15015, 44100, 65536, 100000, 131072, 270000, 524288}) {
    roundTrip<TypeParam, float>(n);
    roundTrip<TypeParam, double>(n);
  }
}

}  // namespace
