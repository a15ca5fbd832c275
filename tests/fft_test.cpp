// SPDX-License-Identifier: Apache-2.0
// The internal FFT engine, reached in each slot it is compiled for.
#include <stdlib.h>

#include <algorithm>
#include <complex>

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/heap.h"
#include "tests/support/slots.h"

#define VEK_SLOT mx
#include "transform/fft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_FFT_H
#ifdef VEK_HAS_e9
#define VEK_SLOT e9
#include "transform/fft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_FFT_H
#endif
#ifdef VEK_HAS_l9
#define VEK_SLOT l9
#include "transform/fft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_FFT_H
#endif

namespace {

using vektest::Flush;
using vektest::Guarded;
using Complex = std::complex<double>;
using Spectrum = std::vector<Complex>;

// One slot's engine under names that a template can use.
#define VEK_ENGINE(NAME, SLOT)                                                                            \
  struct NAME {                                                                                           \
    static constexpr int slot = SLOT;                                                                     \
    using Spec = vek::NAME::FftSpec;                                                                      \
    using Kind = vek::NAME::FftKind;                                                                      \
    template <class T>                                                                                    \
    static constexpr Kind kindOf = vek::NAME::kFftKindOf<T>;                                              \
    static VekStatus getSize(Kind k, int order, int flag, int* a, int* b, int* c) {                       \
      return vek::NAME::fftGetSize(k, order, flag, 0, a, b, c);                                           \
    }                                                                                                     \
    static VekStatus init(Kind k, Spec** s, int order, int flag, uint8_t* buffer, uint8_t* initBuffer) {  \
      return vek::NAME::fftInit(k, s, order, flag, 0, buffer, initBuffer);                                \
    }                                                                                                     \
    static VekStatus initAlloc(Kind k, Spec** s, int order, int flag) {                                   \
      return vek::NAME::fftInitAlloc(k, s, order, flag, 0);                                               \
    }                                                                                                     \
    static VekStatus free(Spec* s) { return vek::NAME::fftFree(s); }                                      \
    template <class T>                                                                                    \
    static VekStatus run(bool forward, const T* x, T* y, const Spec* s) {                                 \
      return forward ? vek::NAME::fftForward(x, y, s, nullptr) : vek::NAME::fftInverse(x, y, s, nullptr); \
    }                                                                                                     \
    template <class T>                                                                                    \
    static VekStatus multiply(const T* x, T* y, int len) {                                                \
      return vek::NAME::fftMulSpectra(x, y, len);                                                         \
    }                                                                                                     \
    template <class T>                                                                                    \
    static VekStatus convForward(const T* x, size_t count, T* y, const Spec* s) {                         \
      return vek::NAME::fftConvForward(x, int64_t(count), y, s);                                          \
    }                                                                                                     \
    template <class T>                                                                                    \
    static VekStatus convMultiply(const T* x, T* y, const Spec* s) {                                      \
      return vek::NAME::fftConvMultiply(x, y, s);                                                         \
    }                                                                                                     \
    template <class T>                                                                                    \
    static VekStatus convPower(T* x, const Spec* s) {                                                     \
      return vek::NAME::fftConvPower(x, s);                                                               \
    }                                                                                                     \
    template <class T>                                                                                    \
    static VekStatus convInverse(const T* x, T* y, const Spec* s) {                                       \
      return vek::NAME::fftConvInverse(x, y, s);                                                          \
    }                                                                                                     \
  };
VEK_ENGINE(mx, 0)
#ifdef VEK_HAS_e9
VEK_ENGINE(e9, 5)
#endif
#ifdef VEK_HAS_l9
VEK_ENGINE(l9, 6)
#endif

template <class E>
class Fft : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::vector<int> slots = vektest::availableSlots();
    if (std::find(slots.begin(), slots.end(), E::slot) == slots.end()) GTEST_SKIP() << "not on this processor";
  }
};
using Engines = ::testing::Types<mx
#ifdef VEK_HAS_e9
                                 ,
                                 e9
#endif
#ifdef VEK_HAS_l9
                                 ,
                                 l9
#endif
                                 >;
TYPED_TEST_SUITE(Fft, Engines);

double bound(int order) { return 0.6e-7 * std::sqrt(order) + 1e-7; }
// exp(-2 pi i k / n) without loss for large k.
Complex root(size_t k, size_t n) { return std::polar(1.0, -2 * 3.14159265358979323846 * double(k % n) / double(n)); }

// The transform by its definition, even and odd elements apart.
void transform(Spectrum& x) {
  const size_t n = x.size();
  if (n == 1) return;
  Spectrum even(n / 2), odd(n / 2);
  for (size_t i = 0; i < n / 2; ++i) even[i] = x[2 * i], odd[i] = x[2 * i + 1];
  transform(even);
  transform(odd);
  for (size_t k = 0; k < n / 2; ++k) {
    const Complex t = root(k, n) * odd[k];
    x[k] = even[k] + t;
    x[k + n / 2] = even[k] - t;
  }
}

// Samples of each kind as complex numbers, and spectra of each kind as all N bins.
Complex asComplex(float x) { return x; }
Complex asComplex(double x) { return x; }
Complex asComplex(Vek32fc x) { return {x.re, x.im}; }
Complex asComplex(Vek64fc x) { return {x.re, x.im}; }
template <class T>
Spectrum samplesOf(const std::vector<T>& x) {
  Spectrum s;
  for (T v : x) s.push_back(asComplex(v));
  return s;
}
template <class T>
Spectrum binsOf(const std::vector<T>& packed) {
  if constexpr (!std::is_floating_point_v<T>) {
    return samplesOf(packed);
  } else {
    const size_t n = packed.size();
    Spectrum s(n);
    s[0] = packed[0];
    if (n > 1) s[n / 2] = packed[1];
    for (size_t k = 1; k < n / 2; ++k) s[k] = {packed[2 * k], packed[2 * k + 1]}, s[n - k] = std::conj(s[k]);
    return s;
  }
}

double relativeError(const Spectrum& got, const Spectrum& want) {
  double error = 0, total = 0;
  for (size_t i = 0; i < want.size(); ++i) error += std::norm(got[i] - want[i]), total += std::norm(want[i]);
  return std::sqrt(error / total);
}

// Forward and back, apart and in place, inside buffers of the stated size at odd alignments.
template <class E, class T>
void checkKind(int order, int flag) {
  SCOPED_TRACE(order);
  const bool single = std::is_same_v<T, float> || std::is_same_v<T, Vek32fc>;
  const double limit = single ? bound(order) : 1e-14;
  const size_t n = size_t(1) << order;
  int specSize, initSize, workSize;
  ASSERT_EQ(E::getSize(E::template kindOf<T>, order, flag, &specSize, &initSize, &workSize), vekStsNoErr);
  const size_t shift = size_t(7 * order + flag) % 64;
  Guarded<uint8_t> buffer(size_t(specSize), Flush::kBack, shift), init(size_t(initSize), Flush::kBack, shift);
  typename E::Spec* spec = nullptr;
  ASSERT_EQ(E::init(E::template kindOf<T>, &spec, order, flag, buffer, initSize > 0 ? init.data() : nullptr),
            vekStsNoErr);
  EXPECT_TRUE(buffer.intact() && init.intact());

  const std::vector<T> x = vektest::randomVector<T>(n);
  Spectrum want = samplesOf(x);
  const Spectrum samples = want;
  transform(want);
  const double forwardScale = flag == 1 ? 1.0 / double(n) : flag == 4 ? 1 / std::sqrt(double(n)) : 1;
  const double backScale = flag == 8 ? double(n) : 1;
  Spectrum scaled = want, back = samples;
  for (Complex& v : scaled) v *= forwardScale;
  for (Complex& v : back) v *= backScale;

  Guarded<T> in(x), out(n), both(x, Flush::kFront), again(n, Flush::kFront);
  ASSERT_EQ(E::run(true, in.data(), out.data(), spec), vekStsNoErr);
  ASSERT_EQ(E::run(true, both.data(), both.data(), spec), vekStsNoErr);
  EXPECT_LE(relativeError(binsOf(out.values()), scaled), limit);
  EXPECT_LE(relativeError(binsOf(both.values()), scaled), limit);
  ASSERT_EQ(E::run(false, out.data(), again.data(), spec), vekStsNoErr);
  ASSERT_EQ(E::run(false, both.data(), both.data(), spec), vekStsNoErr);
  EXPECT_LE(relativeError(samplesOf(again.values()), back), 2 * limit);
  EXPECT_LE(relativeError(samplesOf(both.values()), back), 2 * limit);
  EXPECT_TRUE(in.intact() && out.intact() && both.intact() && again.intact() && buffer.intact());
  EXPECT_TRUE(vektest::sameVectors(in.values(), x));
}

TYPED_TEST(Fft, EveryKindMatchesTheDefinition) {
  for (int order = 0; order <= 13; ++order) {
    for (int flag : {1, 2, 4, 8}) {
      checkKind<TypeParam, Vek32f>(order, flag);
      checkKind<TypeParam, Vek64f>(order, flag);
      checkKind<TypeParam, Vek32fc>(order, flag);
      checkKind<TypeParam, Vek64fc>(order, flag);
    }
  }
}

TYPED_TEST(Fft, LongOrdersMatchTheDefinition) {
  const int last = TypeParam::slot == 6 ? 19 : 16;
  for (int order = 14; order <= last; ++order) {
    checkKind<TypeParam, Vek32f>(order, 2);
    if (order <= 16) checkKind<TypeParam, Vek64f>(order, 2);
    if (order <= 16) checkKind<TypeParam, Vek32fc>(order, 2);
  }
}

// Up to 2^24 points: a tone of known phase fills one bin, and the inverse returns it.
TYPED_TEST(Fft, TonesOfTheLongestOrders) {
  if (TypeParam::slot != 6 && TypeParam::slot != 0) return;
  for (int order = 20; order <= (TypeParam::slot == 6 ? 24 : 20); ++order) {
    SCOPED_TRACE(order);
    const size_t n = size_t(1) << order, bin = n / 5 + 3;
    std::vector<float> x(n), y(n);
    const Complex phase = std::polar(1.0, 0.7);
    for (size_t j = 0; j < n; ++j) x[j] = float((phase * std::conj(root(bin * j, n))).real());
    typename TypeParam::Spec* spec = nullptr;
    ASSERT_EQ(TypeParam::initAlloc(TypeParam::template kindOf<Vek32f>, &spec, order, 2), vekStsNoErr);
    ASSERT_EQ(TypeParam::run(true, x.data(), y.data(), spec), vekStsNoErr);
    const Complex want = phase * (double(n) / 2);
    double error = 0;
    for (size_t k = 1; k < n / 2; ++k) error += std::norm(Complex(y[2 * k], y[2 * k + 1]) - (k == bin ? want : 0.0));
    EXPECT_LT(std::sqrt(error) / std::abs(want), bound(order));
    ASSERT_EQ(TypeParam::run(false, y.data(), y.data(), spec), vekStsNoErr);
    double drift = 0, total = 0;
    for (size_t j = 0; j < n; ++j) drift += double(y[j] - x[j]) * double(y[j] - x[j]), total += double(x[j]) * x[j];
    EXPECT_LT(std::sqrt(drift / total), 2 * bound(order));
    EXPECT_EQ(TypeParam::free(spec), vekStsNoErr);
  }
}

TYPED_TEST(Fft, SizesAreThoseOfTheContract) {
  static const struct {
    int order, spec, init, work;
  } rows[] = {{0, 208, 0, 0},
              {5, 208, 0, 0},
              {6, 512, 0, 0},
              {7, 1472, 0, 0},
              {10, 9088, 0, 0},
              {11, 17792, 2176, 0},
              {12, 41280, 4224, 0},
              {14, 134016, 17536, 1088},
              {19, 2127232, 532608, 8256}};
  for (const auto& row : rows) {
    int spec = -1, init = -1, work = -1;
    ASSERT_EQ(TypeParam::getSize(TypeParam::template kindOf<Vek32f>, row.order, 8, &spec, &init, &work), vekStsNoErr);
    EXPECT_EQ(spec, row.spec) << row.order;
    EXPECT_EQ(init, row.init) << row.order;
    EXPECT_EQ(work, row.work) << row.order;
  }
}

TYPED_TEST(Fft, RefusesInTheStatedOrder) {
  using E = TypeParam;
  constexpr auto real = E::template kindOf<Vek32f>;
  alignas(64) uint8_t buffer[20000] = {}, init[4096];
  typename E::Spec* spec = nullptr;
  int a, b, c;
  EXPECT_EQ(E::getSize(real, 31, 3, nullptr, &b, &c), vekStsFftOrderErr);
  EXPECT_EQ(E::getSize(real, 29, 3, nullptr, &b, &c), vekStsNullPtrErr);
  EXPECT_EQ(E::getSize(real, 29, 3, &a, &b, &c), vekStsFftFlagErr);
  EXPECT_EQ(E::getSize(real, 29, 2, &a, &b, &c), vekStsFftOrderErr);
  EXPECT_EQ(E::init(real, nullptr, 29, 3, nullptr, nullptr), vekStsNullPtrErr);
  EXPECT_EQ(E::init(real, &spec, 29, 3, nullptr, nullptr), vekStsFftOrderErr);
  EXPECT_EQ(E::init(real, &spec, 28, 3, nullptr, nullptr), vekStsNullPtrErr);
  EXPECT_EQ(E::init(real, &spec, 11, 2, buffer, nullptr), vekStsNullPtrErr);
  EXPECT_EQ(E::init(real, &spec, 11, 3, buffer, nullptr), vekStsFftFlagErr);
  EXPECT_EQ(E::init(real, &spec, 11, 2, buffer, init), vekStsNoErr);
  EXPECT_EQ(E::init(real, &spec, 10, 2, buffer, nullptr), vekStsNoErr);

  float x[1024] = {}, y[1024] = {42};
  EXPECT_EQ(E::run(true, x, y, static_cast<typename E::Spec*>(nullptr)), vekStsNullPtrErr);
  EXPECT_EQ(E::run(true, x, static_cast<float*>(nullptr), spec), vekStsNullPtrErr);
  typename E::Spec* rejected = nullptr;
  EXPECT_EQ(E::init(real, &rejected, 10, 3, buffer, nullptr), vekStsFftFlagErr);
  EXPECT_EQ(rejected, nullptr);
  EXPECT_EQ(E::run(true, static_cast<float*>(nullptr), y, spec), vekStsContextMatchErr);
  EXPECT_EQ(E::init(E::template kindOf<Vek64f>, &spec, 5, 2, buffer, nullptr), vekStsNoErr);
  EXPECT_EQ(E::run(false, x, y, spec), vekStsContextMatchErr);
  EXPECT_EQ(y[0], 42);
}

TYPED_TEST(Fft, ReportsMissingMemory) {
  typename TypeParam::Spec* spec = nullptr;
  for (int granted = 0; granted < 2; ++granted) {
    vektest::Heap heap(granted);
    EXPECT_EQ(TypeParam::initAlloc(TypeParam::template kindOf<Vek32f>, &spec, 12, 2), vekStsMemAllocErr);
    EXPECT_EQ(heap.out(), 0);
  }
  EXPECT_EQ(spec, nullptr);
}

template <class E, class T>
void checkProducts(int len) {
  const std::vector<T> a = vektest::randomVector<T>(size_t(len)), b = vektest::randomVector<T>(size_t(len));
  Guarded<T> x(a), y(b);
  ASSERT_EQ(E::multiply(x.data(), y.data(), len), vekStsNoErr);
  const std::vector<T> got = y.values();
  const int reals = std::is_floating_point_v<T> ? (len % 2 == 0 ? 2 : 1) : 0;
  for (int i = 0; i < reals; ++i) {
    const size_t k = size_t(i);
    EXPECT_LT(std::abs(asComplex(got[k]) - asComplex(a[k]) * asComplex(b[k])), 1e-7 * std::abs(asComplex(got[k])));
  }
  for (size_t i = size_t(reals); i < got.size(); i += std::is_floating_point_v<T> ? 2 : 1) {
    Complex u, v, w;
    if constexpr (std::is_floating_point_v<T>) {
      u = {a[i], a[i + 1]}, v = {b[i], b[i + 1]}, w = {got[i], got[i + 1]};
    } else {
      u = asComplex(a[i]), v = asComplex(b[i]), w = asComplex(got[i]);
    }
    EXPECT_LT(std::abs(w - u * v), 3e-7 * std::abs(u) * std::abs(v)) << len << " " << i;
  }
  EXPECT_TRUE(x.intact() && y.intact());
}

TYPED_TEST(Fft, MultipliesSpectra) {
  using E = TypeParam;
  for (int len = 1; len <= 70; ++len) {
    checkProducts<E, Vek32f>(len);
    checkProducts<E, Vek64f>(len);
    checkProducts<E, Vek32fc>(len);
    checkProducts<E, Vek64fc>(len);
  }
  float x = 1;
  EXPECT_EQ(E::multiply(static_cast<const float*>(nullptr), &x, 0), vekStsNullPtrErr);
  EXPECT_EQ(E::multiply(&x, &x, 0), vekStsSizeErr);
}

// The inverse of a product of spectra.
Spectrum convolved(Spectrum a, Spectrum b, bool conjugate) {
  transform(a);
  transform(b);
  for (size_t k = 0; k < a.size(); ++k)
    a[k] = std::conj(a[k] * (conjugate ? std::conj(b[k]) : b[k])) / double(a.size());
  transform(a);
  for (Complex& v : a) v = std::conj(v);
  return a;
}

// `count` elements and zeros with as many as the order has, and with themselves; the source ends at a guard page.
template <class E, class T>
void checkConvolution(int order, size_t count) {
  SCOPED_TRACE(testing::Message() << order << ' ' << count);
  constexpr bool single = sizeof(T) == 4 || std::is_same_v<T, Vek32fc>;
  const size_t n = size_t(1) << order;
  const double limit = single ? 4 * bound(order) : 1e-13;
  typename E::Spec* spec = nullptr;
  ASSERT_EQ(E::initAlloc(E::template kindOf<T>, &spec, order, 2), vekStsNoErr);
  const std::vector<T> a = vektest::randomVector<T>(count), b = vektest::randomVector<T>(n);
  Guarded<T> x(a), y(b), first(n), out(n, Flush::kFront);
  Spectrum padded = samplesOf(a);
  padded.resize(n);
  ASSERT_EQ(E::convForward(x.data(), count, first.data(), spec), vekStsNoErr);
  ASSERT_EQ(E::convForward(y.data(), n, y.data(), spec), vekStsNoErr);
  ASSERT_EQ(E::convMultiply(first.data(), y.data(), spec), vekStsNoErr);
  ASSERT_EQ(E::convInverse(y.data(), out.data(), spec), vekStsNoErr);
  EXPECT_LE(relativeError(samplesOf(out.values()), convolved(padded, samplesOf(b), false)), limit);
  if constexpr (single) {
    ASSERT_EQ(E::convPower(first.data(), spec), vekStsNoErr);
    ASSERT_EQ(E::convInverse(first.data(), first.data(), spec), vekStsNoErr);
    EXPECT_LE(relativeError(samplesOf(first.values()), convolved(padded, padded, true)), limit);
  }
  EXPECT_TRUE(x.intact() && y.intact() && first.intact() && out.intact());
  EXPECT_TRUE(vektest::sameVectors(x.values(), a));
  EXPECT_EQ(E::free(spec), vekStsNoErr);
}

TYPED_TEST(Fft, Convolves) {
  for (int order = 0; order <= 14; ++order) {
    const size_t n = size_t(1) << order;
    for (size_t count : {n, n / 2 + 1, n / 2, n / 3}) {
      if (count == 0 || count > n) continue;
      checkConvolution<TypeParam, Vek32f>(order, count);
      checkConvolution<TypeParam, Vek64f>(order, count);
      checkConvolution<TypeParam, Vek32fc>(order, count);
      checkConvolution<TypeParam, Vek64fc>(order, count);
    }
  }
  checkConvolution<TypeParam, Vek32f>(19, 300000);  // beyond the caches, tiles in squares
}

}  // namespace
