// SPDX-License-Identifier: Apache-2.0
// Up- and down-sampling, and the Goertzel transform against its recurrence.
#include <limits.h>

#include <complex>

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/slots.h"

namespace {

using namespace vektest;

template <class T>
struct Samplers {
  VekStatus (*up)(const T*, int, T*, int*, int, int*);
  VekStatus (*down)(const T*, int, T*, int*, int, int*);
};
template <class T>
Samplers<T> samplers();
template <>
Samplers<Vek32f> samplers() {
  return {veksSampleUp_32f, veksSampleDown_32f};
}
template <>
Samplers<Vek32fc> samplers() {
  return {veksSampleUp_32fc, veksSampleDown_32fc};
}

template <class T>
class Sample : public ::testing::Test {};
using Types = ::testing::Types<Vek32f, Vek32fc>;
TYPED_TEST_SUITE(Sample, Types);

TYPED_TEST(Sample, EveryFactorPhaseAndLength) {
  using T = TypeParam;
  inEverySlot([](int) {
    for (int n : sweepLengths(70, 600))
      for (int factor : {1, 2, 3, 4, 5, 8, 17, 1000}) {
        const std::vector<T> x = randomVector<T>(n);
        for (int phase = 0; phase<factor; phase += factor> 8 ? factor / 3 : 1) {
          std::vector<T> raised(size_t(n) * factor, T{}), kept;
          for (int i = 0; i < n; ++i) raised[size_t(i) * factor + phase] = x[i];
          int next = phase;
          for (; next < n; next += factor) kept.push_back(x[next]);

          Guarded<T> src(x), up(raised.size(), Flush::kBack, n % 4 * 4), down(kept.size());
          int count = -1, p = phase;
          ASSERT_EQ(samplers<T>().up(src, n, up, &count, factor, &p), vekStsNoErr);
          ASSERT_TRUE(sameVectors(up.values(), raised)) << "factor " << factor << ", phase " << phase;
          ASSERT_TRUE(up.intact() && count == n * factor && p == phase);
          ASSERT_EQ(samplers<T>().down(src, n, down, &count, factor, &p), vekStsNoErr);
          ASSERT_TRUE(sameVectors(down.values(), kept)) << "factor " << factor << ", phase " << phase;
          ASSERT_TRUE(down.intact() && count == int(kept.size()) && p == next - n) << factor << " " << phase;
        }
      }
  });
}

// Sums and products with such factors go beyond 32 bits.
TYPED_TEST(Sample, DownByFactorsThatHardlyFitAnInt) {
  using T = TypeParam;
  inEverySlot([](int) {
    for (const int factor : {INT_MAX, INT_MAX - 1, INT_MAX / 2 + 1, INT_MAX / 2})
      for (const int n : {1, 2, 3, 40})
        for (const int phase : {0, 1, n - 1, n, factor - n, factor - 2, factor - 1}) {
          const std::vector<T> x = randomVector<T>(size_t(n));
          const size_t kept = phase < n;
          Guarded<T> src(x), down(kept);
          int count = -1, p = phase;
          ASSERT_EQ(samplers<T>().down(src, n, down, &count, factor, &p), vekStsNoErr);
          const int64_t next = int64_t(phase) + (kept ? factor : 0) - n;
          ASSERT_TRUE(size_t(count) == kept && p == next && down.intact()) << factor << " " << phase << " " << n;
          if (kept) {
            ASSERT_TRUE(sameVectors(down.values(), {x[size_t(phase)]}));
          }
        }
  });
}

TEST(SampleChecks, OrderAndUntouchedOutputs) {
  inEverySlot([](int) {
    const Vek32f x[] = {1, 2};
    Vek32f y[8] = {};
    int len = 77, phase = 3;
    EXPECT_EQ(veksSampleDown_32f(x, 2, y, nullptr, 0, &phase), vekStsNullPtrErr);
    EXPECT_EQ(veksSampleUp_32f(x, 2, y, &len, 2, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(veksSampleUp_32f(x, 0, y, &len, 0, &phase), vekStsSizeErr);
    EXPECT_EQ(veksSampleDown_32f(x, 2, y, &len, 0, &phase), vekStsSampleFactorErr);
    EXPECT_EQ(veksSampleUp_32f(x, 2, y, &len, 3, &phase), vekStsSamplePhaseErr);
    phase = -1;
    EXPECT_EQ(veksSampleDown_32f(x, 2, y, &len, 3, &phase), vekStsSamplePhaseErr);
    EXPECT_TRUE(len == 77 && phase == -1 && y[0] == 0);
    phase = 3;
    EXPECT_EQ(veksSampleDown_32f(x, 2, y, &len, 4, &phase), vekStsNoErr);
    EXPECT_TRUE(len == 0 && phase == 1);
    phase = 0x7FFFFFFE;  // products and sums beyond 32 bits
    EXPECT_EQ(veksSampleDown_32f(x, 2, y, &len, 0x7FFFFFFF, &phase), vekStsNoErr);
    EXPECT_TRUE(len == 0 && phase == 0x7FFFFFFC);
    phase = 1;
    EXPECT_EQ(veksSampleDown_32f(x, 2, y, &len, 0x7FFFFFFF, &phase), vekStsNoErr);
    EXPECT_TRUE(len == 1 && phase == 0x7FFFFFFE && y[0] == 2);
  });
}

// ---- Goertzel -------------------------------------------------------------------------------------------------------

std::complex<double> asComplex(Vek32f x) { return x; }
std::complex<double> asComplex(Vek32fc x) { return {x.re, x.im}; }

// The recurrence as documented, and the sum of magnitudes, to which cancellation is compared.
template <class T>
std::complex<double> horner(const std::vector<T>& x, Vek32f freq) {
  const double theta = double(freq) * 6.283185307179586, c = cos(theta), s = sin(theta);
  double re = 0, im = 0;
  for (size_t n = x.size(); n-- > 0;) {
    const double next = re * c + im * s + asComplex(x[n]).real();
    im = im * c - re * s + asComplex(x[n]).imag();
    re = next;
  }
  return {re, im};
}
template <class T>
double size(const std::vector<T>& x) {
  double sum = 0;
  for (const T& v : x) sum += std::abs(asComplex(v));
  return sum;
}

void expectClose(Vek32fc got, std::complex<double> want, double scale) {
  const auto near = [scale](float a, double b) {
    const float r = float(b);
    return std::abs(double(a) - double(r)) <= std::nextafter(std::abs(r), INFINITY) - std::abs(r) + 1e-12 * scale;
  };
  EXPECT_TRUE(near(got.re, want.real()) && near(got.im, want.imag()))
      << got.re << ", " << got.im << " for " << want.real() << ", " << want.imag();
}

const std::vector<Vek32f> kFrequencies = {0, 0.1f, 0.25f, 0.5f, 1e-6f, 0.37f, 0.99999f};

template <class T>
void checkGoertzel(VekStatus (*one)(const T*, int, Vek32fc*, Vek32f),
                   VekStatus (*two)(const T*, int, Vek32fc*, const Vek32f*)) {
  inEverySlot([&](int slot) {
    for (int n : sweepLengths(70, 5000)) {
      const std::vector<T> x = randomVector<T>(n);
      Guarded<T> src(x, n % 2 ? Flush::kBack : Flush::kFront);
      for (size_t k = 0; k < kFrequencies.size(); ++k) {
        const Vek32f pair[] = {kFrequencies[k], kFrequencies[(k + 3) % kFrequencies.size()]};
        const std::complex<double> want[] = {horner(x, pair[0]), horner(x, pair[1])};
        Guarded<Vek32fc> single(1), both(2);
        ASSERT_EQ(one(src, n, single, pair[0]), vekStsNoErr);
        ASSERT_EQ(two(src, n, both, pair), vekStsNoErr);
        ASSERT_TRUE(single.intact() && both.intact());
        const double scale = slot == 0 ? 0 : size(x);
        expectClose(single.at(0), want[0], scale);
        for (int f = 0; f < 2; ++f) expectClose(both.at(f), want[f], scale);
      }
    }
  });
}

TEST(Goertzel, RealMatchesTheRecurrence) { checkGoertzel(veksGoertz_32f, veksGoertzTwo_32f); }
TEST(Goertzel, ComplexMatchesTheRecurrence) { checkGoertzel(veksGoertz_32fc, veksGoertzTwo_32fc); }

TEST(Goertzel, LongBlocksStayWithinAnUlp) {
  std::vector<Vek32f> x = randomVector<Vek32f>(3000001);
  for (size_t i = 0; i < x.size(); ++i) x[i] += 900 * std::cos(double(0.1234f) * 6.283185307179586 * double(i));
  const std::complex<double> want = horner(x, 0.1234f);
  inEverySlot([&](int) {
    Vek32fc got;
    ASSERT_EQ(veksGoertz_32f(x.data(), int(x.size()), &got, 0.1234f), vekStsNoErr);
    expectClose(got, want, 0);
  });
}

template <class T>
void checkInfinities(VekStatus (*one)(const T*, int, Vek32fc*, Vek32f),
                     VekStatus (*two)(const T*, int, Vek32fc*, const Vek32f*)) {
  const auto alike = [](float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); };
  for (int at = 0; at < 40; ++at) {
    std::vector<T> x = randomVector<T>(40);
    reinterpret_cast<Vek32f&>(x[size_t(at)]) = at % 2 ? INFINITY : -INFINITY;
    for (const Vek32f freq : kFrequencies) {
      const Vek32f pair[] = {0.1f, freq};
      Vek32fc want = {};
      inEverySlot([&](int slot) {
        Vek32fc got[3];
        ASSERT_EQ(one(x.data(), 40, got, freq), vekStsNoErr);
        ASSERT_EQ(two(x.data(), 40, got + 1, pair), vekStsNoErr);
        if (slot == 0) want = got[0];
        for (const Vek32fc& v : {got[0], got[2]}) {
          ASSERT_TRUE(alike(v.re, want.re) && alike(v.im, want.im)) << at << " " << freq << " slot " << slot;
        }
      });
    }
  }
}
TEST(Goertzel, InfinitiesAreThoseOfTheRecurrence) {
  checkInfinities(veksGoertz_32f, veksGoertzTwo_32f);
  checkInfinities(veksGoertz_32fc, veksGoertzTwo_32fc);
}

TEST(Goertzel, ChecksAndPlainSum) {
  inEverySlot([](int) {
    const Vek32f x[] = {1, 2, 4};
    Vek32fc v[2] = {{5, 5}, {5, 5}};
    const Vek32f bad[] = {0.5f, 1.0f};
    EXPECT_EQ(veksGoertz_32f(x, 0, nullptr, 2), vekStsNullPtrErr);
    EXPECT_EQ(veksGoertz_32f(x, 0, v, 2), vekStsSizeErr);
    EXPECT_EQ(veksGoertz_32f(x, 3, v, 1), vekStsRelFreqErr);
    EXPECT_EQ(veksGoertz_32f(x, 3, v, -1e-30f), vekStsRelFreqErr);
    EXPECT_EQ(veksGoertzTwo_32f(x, 3, v, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(veksGoertzTwo_32f(x, 3, v, bad), vekStsRelFreqErr);
    EXPECT_TRUE(v[0].re == 5 && v[1].im == 5);
    EXPECT_EQ(veksGoertz_32f(x, 3, v, 0), vekStsNoErr);
    EXPECT_TRUE(v[0].re == 7 && v[0].im == 0);
  });
}

}  // namespace
