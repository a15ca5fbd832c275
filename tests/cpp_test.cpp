// SPDX-License-Identifier: Apache-2.0
// The C++ header. Filters run on small whole numbers, on which every kind is exact, against their definitions.
#include <gtest/gtest.h>

#include <complex>
#include <vector>
#include <vek/vek.hpp>

namespace {

using Floats = std::vector<Vek32f>;

// Elements and results of every kind as complex numbers of double precision.
using Value = std::complex<double>;
Value valueOf(double x) { return x; }
template <class Complex>
requires requires(Complex x) { x.im; }
Value valueOf(Complex x) { return {double(x.re), double(x.im)}; }
template <class T>
T element(int re, int im) {
  if constexpr (std::is_floating_point_v<T>) {
    return T(re);
  } else {
    T x{};
    x.re = decltype(x.re)(re);
    x.im = decltype(x.im)(im);
    return x;
  }
}
template <class T>
std::vector<T> numbers(int n, int step) {
  std::vector<T> x;
  for (int i = 0; i < n; ++i) x.push_back(element<T>(i * step % 7 - 3, i * step % 5 - 2));
  return x;
}
template <class T>
std::vector<Value> values(const std::vector<T>& x) {
  std::vector<Value> v;
  for (const T& e : x) v.push_back(valueOf(e));
  return v;
}

template <class Make>
VekStatus refusal(Make make) {
  try {
    make();
  } catch (const vek::Error& e) {
    EXPECT_STREQ(e.what(), vekGetStatusString(e.status()));
    return e.status();
  }
  return vekStsNoErr;
}

TEST(CppResult, ErrorsThrowAndWarningsPass) {
  const vek::Result error = vekStsSizeErr, warning = vekStsSqrtNegArg, none = vekStsNoErr;
  EXPECT_TRUE(!error && warning && none);
  EXPECT_TRUE(!error.warns() && warning.warns() && !none.warns());
  EXPECT_STREQ(error.text(), vekGetStatusString(vekStsSizeErr));
  EXPECT_EQ(warning.orThrow(), vekStsSqrtNegArg);
  EXPECT_EQ(refusal([&] { error.orThrow(); }), vekStsSizeErr);
}

TEST(CppSpans, ElementTypesChooseTheFunction) {
  const Floats a = {1, 2, 3}, b = {10, 20, 30};
  Floats f(3);
  ASSERT_TRUE(vek::sub(a, b, f));
  EXPECT_EQ(f, (Floats{9, 18, 27}));
  ASSERT_TRUE(vek::mulC(2, f));
  EXPECT_EQ(f, (Floats{18, 36, 54}));
  const std::vector<Vek16s> shorts = {5, 7, -3};
  std::vector<Vek16s> scaled(3);
  ASSERT_TRUE(vek::addC(shorts, 0, scaled, 1));
  EXPECT_EQ(scaled, (std::vector<Vek16s>{2, 4, -2}));
  // A half is a 16-bit word to the language: the names tell the two apart.
  const std::vector<Vek16u> words = {0x3C00, 0xC000, 0};
  ASSERT_TRUE(vek::convert_16f32f(words, f));
  EXPECT_EQ(f, (Floats{1, -2, 0}));
  ASSERT_TRUE(vek::convert_16u32f(words, f));
  EXPECT_EQ(f, (Floats{15360, 49152, 0}));
  std::vector<Vek24u> packed = {{{1, 2, 3}}, {{4, 5, 6}}};
  ASSERT_TRUE(vek::swapBytes(packed));
  EXPECT_TRUE(packed[0].byte[0] == 3 && packed[1].byte[0] == 6 && packed[1].byte[2] == 4);
  Vek32f single = 0;
  Vek64f wide = 0;
  ASSERT_TRUE(vek::dotProd(a, b, &single) && vek::dotProd(a, b, &wide));
  EXPECT_TRUE(single == 140 && wide == 140);
}

TEST(CppSpans, ThatDoNotFitAreRefused) {
  const Floats a = {1, 2, 3}, b = {4, 5};
  Floats c(3, 9), d(2, 9);
  Vek32f dot = 9;
  EXPECT_EQ(vek::add(a, b, c).status(), vekStsSizeErr);
  EXPECT_EQ(vek::add(b, a, c).status(), vekStsSizeErr);
  EXPECT_EQ(vek::add(a, a, d).status(), vekStsSizeErr);
  EXPECT_EQ(vek::add(b, c).status(), vekStsSizeErr);
  EXPECT_EQ(vek::dotProd(a, b, &dot).status(), vekStsSizeErr);
  EXPECT_FALSE(vek::zero(std::span<Vek32f>()));
  // A length that no int holds is refused, not cut off.
  EXPECT_EQ(vek::zero(std::span(c.data(), (size_t(1) << 32) + 1)).status(), vekStsSizeErr);
  EXPECT_TRUE(c == Floats(3, 9) && d == Floats(2, 9) && dot == 9);
}

TEST(CppSpans, BandsOfTheHaarStepAreHalves) {
  for (size_t n : {2, 5, 8}) {
    const Floats x = numbers<Vek32f>(int(n), 3);
    Floats low((n + 1) / 2), high(n / 2), back(n), longer(n / 2 + 1);
    ASSERT_TRUE(vek::haarFwd(x, low, high) && vek::haarInv(low, high, back));
    for (size_t i = 0; i < n; ++i) EXPECT_NEAR(back[i], x[i], 1e-6);
    EXPECT_EQ(vek::haarFwd(x, low, longer).status(), vekStsSizeErr);
    EXPECT_EQ(vek::haarInv(longer, longer, back).status(), vekStsSizeErr);
  }
}

template <class Pair>
class CppFilter : public testing::Test {};
template <class T, class S>
struct Pair {
  using Tap = T;
  using Sample = S;
};
using Pairs =
    testing::Types<Pair<Vek32f, Vek32f>, Pair<Vek32fc, Vek32fc>, Pair<Vek64f, Vek32f>, Pair<Vek64fc, Vek32fc>>;
TYPED_TEST_SUITE(CppFilter, Pairs);

// A filter called on pieces: the first out of place, the second in place, the third a single sample, then moved.
template <class Filter, class Sample>
std::vector<Value> inPieces(Filter filter, std::vector<Sample> x) {
  static_assert(!std::is_copy_constructible_v<Filter> && std::is_nothrow_move_constructible_v<Filter>);
  std::vector<Sample> y(x.size());
  const std::span<Sample> in(x), out(y);
  EXPECT_TRUE(filter(in.first(9), out.first(9)));
  std::copy(x.begin() + 9, x.begin() + 16, y.begin() + 9);
  EXPECT_TRUE(filter(out.subspan(9, 7)));
  y[16] = filter(x[16]);
  EXPECT_EQ(filter(in.first(3), out.last(2)).status(), vekStsSizeErr);
  Filter moved = std::move(filter);
  EXPECT_EQ(filter(in.subspan(17), out.subspan(17)).status(), vekStsNullPtrErr);
  EXPECT_EQ(refusal([&] { filter(x[0]); }), vekStsNullPtrErr);
  EXPECT_TRUE(moved.get() != nullptr && moved(in.subspan(17), out.subspan(17)));
  return values(y);
}

TYPED_TEST(CppFilter, FirStreamsItsDefinition) {
  using Tap = typename TypeParam::Tap;
  using Sample = typename TypeParam::Sample;
  const auto taps = numbers<Tap>(5, 2);
  const auto x = numbers<Sample>(31, 3), past = numbers<Sample>(5, 4);
  for (bool delayed : {false, true}) {
    std::vector<Value> want(x.size());
    for (int n = 0; n < 31; ++n)
      for (int k = 0; k < 5; ++k) {
        if (n - k >= 0) want[n] += valueOf(taps[k]) * valueOf(x[n - k]);
        if (n - k < 0 && delayed) want[n] += valueOf(taps[k]) * valueOf(past[k - n - 1]);
      }
    vek::Fir<Tap, Sample> filter(taps, delayed ? std::span<const Sample>(past) : std::span<const Sample>());
    EXPECT_EQ(inPieces(std::move(filter), x), want);
  }
  const auto make = [&](size_t tapsLen, size_t delayLen) {
    return refusal([&] { vek::Fir<Tap, Sample>(std::span(taps).first(tapsLen), std::span(past).first(delayLen)); });
  };
  EXPECT_EQ(make(4, 5), vekStsSizeErr);
  EXPECT_EQ(make(5, 4), vekStsSizeErr);
  EXPECT_EQ(make(0, 0), vekStsFIRLenErr);
}

TYPED_TEST(CppFilter, MultiRateFirStreamsItsDefinition) {
  using Tap = typename TypeParam::Tap;
  using Sample = typename TypeParam::Sample;
  constexpr int kUp = 3, kDown = 2, kUpPhase = 1, kDownPhase = 1, kIters = 12;
  const auto taps = numbers<Tap>(7, 2);
  const auto x = numbers<Sample>(kIters * kDown, 3);
  std::vector<Value> upsampled(kIters * kDown * kUp), want(kIters * kUp);
  for (size_t n = 0; n < x.size(); ++n) upsampled[n * kUp + kUpPhase] = valueOf(x[n]);
  for (int i = 0; i < kIters * kUp; ++i)
    for (int k = 0; k < 7; ++k) {
      const int at = i * kDown + kDownPhase - k;
      if (at >= 0) want[i] += valueOf(taps[k]) * upsampled[at];
    }
  vek::MultiRateFir<Tap, Sample> filter(taps, kUp, kDown, kUpPhase, kDownPhase);
  std::vector<Sample> y(want.size());
  const std::span<const Sample> in(x);
  const std::span<Sample> out(y);
  ASSERT_TRUE(filter(in.first(5 * kDown), out.first(5 * kUp)));
  EXPECT_EQ(filter(in.first(5), out.first(6)).status(), vekStsSizeErr);
  EXPECT_EQ(filter(in.first(4), out.first(5)).status(), vekStsSizeErr);
  const auto moved = std::move(filter);
  auto again = vek::MultiRateFir<Tap, Sample>(taps, 1, 1);
  again = vek::MultiRateFir<Tap, Sample>(taps, kUp, kDown, kUpPhase, kDownPhase, std::vector<Sample>(3));
  ASSERT_TRUE(again(in.first(5 * kDown), out.first(5 * kUp)) && again(in.subspan(5 * kDown), out.subspan(5 * kUp)));
  EXPECT_EQ(values(y), want);
  const auto make = [&](int up, int down, int phase, size_t delayLen) {
    return refusal([&] { vek::MultiRateFir<Tap, Sample>(taps, up, down, phase, 0, in.first(delayLen)); });
  };
  EXPECT_EQ(make(0, 2, 0, 0), vekStsFIRMRFactorErr);
  EXPECT_EQ(make(3, 0, 0, 0), vekStsFIRMRFactorErr);
  EXPECT_EQ(make(3, 2, 3, 0), vekStsFIRMRPhaseErr);
  EXPECT_EQ(make(3, 2, 0, 2), vekStsSizeErr);
}

// y[n] = b0 x[n] + b1 x[n-1] - a1 y[n-1] with a1 = -1 stays on whole numbers.
template <class Tap>
std::vector<Tap> integrator() {
  return {element<Tap>(2, 1), element<Tap>(1, -1), element<Tap>(1, 0), element<Tap>(-1, 0)};
}

TYPED_TEST(CppFilter, IirStreamsItsDefinition) {
  using Tap = typename TypeParam::Tap;
  using Sample = typename TypeParam::Sample;
  const auto taps = integrator<Tap>();
  const auto x = numbers<Sample>(31, 3);
  const std::vector<Tap> delay = {element<Tap>(3, 4)};
  for (bool delayed : {false, true}) {
    std::vector<Value> want(x.size());
    Value d = delayed ? valueOf(delay[0]) : 0;
    for (size_t n = 0; n < x.size(); ++n) {
      want[n] = valueOf(taps[0]) * valueOf(x[n]) + d;
      d = valueOf(taps[1]) * valueOf(x[n]) + want[n];
    }
    vek::Iir<Tap, Sample> filter(taps, delayed ? std::span<const Tap>(delay) : std::span<const Tap>());
    EXPECT_EQ(inPieces(std::move(filter), x), want);
  }
  const auto make = [&](std::vector<Tap> t, size_t delayLen) {
    return refusal([&] { vek::Iir<Tap, Sample>(t, std::vector<Tap>(delayLen)); });
  };
  EXPECT_EQ(make({taps[0], taps[1], taps[2]}, 0), vekStsIIROrderErr);
  EXPECT_EQ(make({taps[0], taps[1]}, 0), vekStsIIROrderErr);
  EXPECT_EQ(make({taps[0], taps[1], Tap{}, taps[3]}, 0), vekStsDivByZeroErr);
  EXPECT_EQ(make(taps, 2), vekStsSizeErr);
}

template <class Sample>
void checkBiquads() {
  const auto t = integrator<Sample>();
  const Sample zero{}, one = element<Sample>(1, 0);
  const std::vector<Sample> sections = {t[0], t[1], zero, t[2], t[3], zero, one, zero, one, one, zero, zero};
  const auto x = numbers<Sample>(31, 3);
  std::vector<Value> first(x.size() + 2), want(x.size());
  Value d = 0;
  for (size_t n = 0; n < x.size(); ++n) {
    first[n + 2] = valueOf(t[0]) * valueOf(x[n]) + d;
    d = valueOf(t[1]) * valueOf(x[n]) + first[n + 2];
    want[n] = first[n + 2] + first[n];
  }
  const auto make = [](std::vector<Sample> taps, size_t delayLen) {
    return refusal([&] { vek::Biquads<Sample>(taps, std::vector<Sample>(delayLen)); });
  };
  EXPECT_EQ(inPieces(vek::Biquads<Sample>(sections), x), want);
  EXPECT_EQ(inPieces(vek::Biquads<Sample>(sections, std::vector<Sample>(4)), x), want);
  EXPECT_EQ(make({t[0], t[1], zero, t[2], t[3]}, 0), vekStsIIROrderErr);
  EXPECT_EQ(make(sections, 2), vekStsSizeErr);
}

TEST(CppBiquads, StreamTheirDefinition) {
  checkBiquads<Vek32f>();
  checkBiquads<Vek32fc>();
}

TEST(CppDct, ThereAndBack) {
  for (int n : {1, 8, 37, 128, 150}) {
    vek::Dct first(n);
    const vek::Dct dct = std::move(first);
    const Floats x = numbers<Vek32f>(n, 3);
    Floats spectrum(x.size()), back(x.size()), longer(x.size() + 1);
    ASSERT_TRUE(dct.forward(x, spectrum) && dct.inverse(spectrum, back));
    double energy = 0, before = 0;
    for (int i = 0; i < n; ++i) {
      EXPECT_NEAR(back[i], x[i], 1e-5) << n;
      energy += double(spectrum[i]) * spectrum[i];
      before += double(x[i]) * x[i];
    }
    EXPECT_NEAR(energy, before, 1e-5 * before) << n;
    ASSERT_TRUE(dct.forward(back, back));
    for (int i = 0; i < n; ++i) EXPECT_NEAR(back[i], spectrum[i], 2e-5) << n;
    EXPECT_EQ(dct.forward(x, longer).status(), vekStsSizeErr);
    EXPECT_EQ(dct.inverse(longer, back).status(), vekStsSizeErr);
    EXPECT_EQ(dct.forward(longer, spectrum).status(), vekStsSizeErr);
    EXPECT_EQ(dct.inverse(x, longer).status(), vekStsSizeErr);
    EXPECT_EQ(first.forward(x, spectrum).status(), vekStsNullPtrErr);
  }
  EXPECT_EQ(refusal([] { vek::Dct(0); }), vekStsSizeErr);
}

}  // namespace
