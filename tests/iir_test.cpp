// SPDX-License-Identifier: Apache-2.0
// IIR filters of both structures against their recursion: precision, pieces, buffers, statuses.
#include "tests/support/definitions.h"

namespace {

using namespace vektest;

using Exact = std::complex<long double>;
template <class T>
Exact exact(T x) {
  return Exact(value(x));
}
template <class T>
T rounded(Exact x) {
  return make<T>(double(x.real()), double(x.imag()));
}

// ---- filters and their recursion ----------------------------------------------------------------------------------

template <class Coef>
struct Filter {
  int order = 0, numBq = 0;
  std::vector<Coef> taps, delay;
};

// One section's coefficients from its poles and random zeros; a[0] is 1 so that nothing is rounded twice.
template <class Coef>
std::vector<Coef> tapsFromPoles(const std::vector<Exact>& poles) {
  std::vector<Exact> a = {1}, b = {1};
  for (const Exact& p : poles) {
    const Exact zero = kComplex<Coef> ? p * Exact(0.7L, 0.3L) : Exact(0.5L * p.real());
    a.push_back(0), b.push_back(0);
    for (size_t k = a.size() - 1; k > 0; --k) a[k] -= p * a[k - 1], b[k] -= zero * b[k - 1];
  }
  std::vector<Coef> taps;
  for (const Exact& x : b) taps.push_back(rounded<Coef>(x * 0.4L));
  for (const Exact& x : a) taps.push_back(rounded<Coef>(x));
  return taps;
}

// Poles all over the circle; in conjugate pairs where coefficients are real.
template <class Coef>
std::vector<Exact> poles(int order, long double radius, long double turn) {
  std::vector<Exact> p;
  const long double pi = 3.14159265358979323846L;
  if (kComplex<Coef>) {
    for (int k = 0; k < order; ++k) p.push_back(std::polar(radius, 2 * pi * (k + turn) / order));
  } else {
    for (int k = 0; k < order / 2; ++k)
      for (int sign : {1, -1}) p.push_back(std::polar(radius, sign * pi * (k + turn) / (order / 2)));
    if (order % 2) p.push_back(radius * 0.9L);
  }
  return p;
}

template <class Coef>
Filter<Coef> orderFilter(int order, double radius, double turn) {
  Filter<Coef> f;
  f.order = order;
  f.taps = tapsFromPoles<Coef>(poles<Coef>(order, radius, turn));
  for (int k = 0; k < order; ++k) f.delay.push_back(rounded<Coef>(Exact(0.1L * k, 0.05L)));
  return f;
}

template <class Coef>
Filter<Coef> biquadFilter(int sections, double radius) {
  Filter<Coef> f;
  f.numBq = sections;
  for (int i = 0; i < sections; ++i) {
    const std::vector<Coef> t = tapsFromPoles<Coef>(poles<Coef>(2, radius, 0.1 + 0.8 * i / sections));
    f.taps.insert(f.taps.end(), t.begin(), t.end());
    for (int k = 0; k < 2; ++k) f.delay.push_back(rounded<Coef>(Exact(0.3L - 0.1L * k, 0.2L)));
  }
  return f;
}

template <class R, class Coef, class Sample>
std::vector<std::complex<R>> recursion(const Filter<Coef>& f, const std::vector<Sample>& x) {
  return vektest::recursion<R>(f.taps, f.delay, f.numBq ? 2 : f.order, f.numBq > 0, x);
}

template <class K>
typename K::State* makeState(const Filter<typename K::Tap>& f) {
  typename K::State* s = nullptr;
  EXPECT_EQ(allocateIir<K>(&s, f.taps.data(), f.numBq ? f.numBq : f.order, f.numBq > 0, f.delay.data()), vekStsNoErr);
  return s;
}

template <class K>
std::vector<Filter<typename K::Tap>> filters() {
  using Coef = typename K::Tap;
  std::vector<Filter<Coef>> all;
  for (int order : {1, 2, 3, 4, 5, 7, 8, 12, 16, 31, 32, 33, 40}) all.push_back(orderFilter<Coef>(order, 0.9, 0.37));
  for (int order : {1, 2, 4, 6, 16}) all.push_back(orderFilter<Coef>(order, 0.999, 0.4));
  all.push_back(orderFilter<Coef>(2, 0.999, 0.004));  // next to a double pole at 1
  if constexpr (std::is_same_v<Coef, typename K::Data>)
    for (int sections : {1, 2, 3, 4, 5, 8, 9, 17})
      for (double radius : {0.8, 0.999}) all.push_back(biquadFilter<Coef>(sections, radius));
  return all;
}

template <class K>
class Iir : public testing::Test {};
TYPED_TEST_SUITE(Iir, IirKinds);

template <class Sample>
std::vector<Sample> signal(int n) {
  std::vector<Sample> x = randomVector<Sample>(n);
  for (Sample& s : x) s = rounded<Sample>(exact(s) * 1e-3L);
  return x;
}

long double distance(Exact a, Exact b) { return std::abs(a - b); }

// Every filter against exact arithmetic: the error stays within that of the recursion and the rounding of the output;
// the generic slot runs the recursion itself.
TYPED_TEST(Iir, FollowsTheRecursion) {
  using K = TypeParam;
  using Sample = typename K::Data;
  using R = PartOf<typename K::Tap>;
  for (const auto& f : filters<K>()) {
    const std::vector<Sample> x = signal<Sample>(1500);
    const auto truth = recursion<long double>(f, x);
    const auto plain = recursion<R>(f, x);
    long double largest = 0, error = 0;
    for (size_t i = 0; i < x.size(); ++i) {
      const Exact t = truth[i];
      largest = std::max(largest, std::abs(t));
      error = std::max(error, distance(t, Exact(plain[i])));
    }
    inEverySlot([&](int slot) {
      SCOPED_TRACE(testing::Message() << "order " << f.order << ", sections " << f.numBq);
      typename K::State* s = makeState<K>(f);
      std::vector<Sample> y(x.size());
      ASSERT_EQ(K::run(x.data(), y.data(), int(x.size()), s), vekStsNoErr);
      for (size_t i = 0; i < x.size(); ++i) {
        ASSERT_TRUE(slot != 0 || sameBits(y[i], rounded<Sample>(Exact(plain[i])))) << i;
        ASSERT_LE(distance(exact(y[i]), truth[i]), error + 0x1p-23L * largest) << i;
      }
      EXPECT_EQ(K::release(s), vekStsNoErr);
    });
  }
}

// Whatever the pieces, and one by one, and in place: one stream. Between guard pages, for all small lengths.
TYPED_TEST(Iir, PiecesMakeOneStream) {
  using K = TypeParam;
  using Sample = typename K::Data;
  for (const auto& f : filters<K>()) {
    if (f.order > 8 && f.order != 33) continue;
    const std::vector<Sample> x = signal<Sample>(1300);
    inEverySlot([&](int slot) {
      typename K::State *whole = makeState<K>(f), *pieces = makeState<K>(f);
      std::vector<Sample> y(x.size());
      ASSERT_EQ(K::run(x.data(), y.data(), int(x.size()), whole), vekStsNoErr);
      long double largest = 0;
      for (const Sample& v : y) largest = std::max(largest, std::abs(exact(v)));
      for (size_t at = 0, n = 1; at < x.size(); at += n, n = n % 47 + 1) {
        n = std::min(n, x.size() - at);
        const Flush flush = n % 2 ? Flush::kBack : Flush::kFront;
        Guarded<Sample> in(std::vector<Sample>(x.begin() + at, x.begin() + at + n), flush), out(n, flush);
        if (n == 3) {
          for (size_t i = 0; i < n; ++i) ASSERT_EQ(K::one(in.at(i), out.data() + i, pieces), vekStsNoErr);
        } else if (n % 3) {
          ASSERT_EQ(K::run(in, out, int(n), pieces), vekStsNoErr);
        } else {
          ASSERT_EQ(K::runInPlace(in, int(n), pieces), vekStsNoErr);
          out.assign(in.values());
        }
        ASSERT_TRUE(in.intact() && out.intact());
        for (size_t i = 0; i < n; ++i)
          ASSERT_LE(distance(exact(out.at(i)), exact(y[at + i])), slot == 0 ? 0.0L : 0x1p-23L * largest);
      }
      K::release(whole);
      K::release(pieces);
    });
  }
}

TYPED_TEST(Iir, NotANumberSpreadsForwardOnly) {
  using K = TypeParam;
  using Sample = typename K::Data;
  using Coef = typename K::Tap;
  std::vector<Filter<Coef>> few = {orderFilter<Coef>(1, 0.5, 0), orderFilter<Coef>(5, 0.9, 0.2)};
  if constexpr (std::is_same_v<Coef, Sample>)
    few.insert(few.end(), {biquadFilter<Coef>(1, 0.9), biquadFilter<Coef>(3, 0.8)});
  for (const auto& f : few) {
    inEverySlot([&](int) {
      for (int p : {0, 1, 2, 3, 6, 7, 8, 9, 300, 511, 512, 515})
        for (float bad : {HUGE_VALF, NAN}) {
          std::vector<Sample> x = signal<Sample>(600), y(600), clean(600);
          typename K::State *s = makeState<K>(f), *t = makeState<K>(f);
          K::run(x.data(), clean.data(), 600, t);
          x[p] = rounded<Sample>(bad);
          K::run(x.data(), y.data(), 600, s);
          for (int i = 0; i < p; ++i) ASSERT_LE(distance(exact(y[i]), exact(clean[i])), 1e-5) << p << " " << i;
          ASSERT_FALSE(std::isfinite(exact(y[p]).real()));
          ASSERT_FALSE(std::isfinite(exact(y[p + 3]).real()));
          K::release(s);
          K::release(t);
        }
    });
  }
}

template <class K>
size_t documentedSize(int64_t n) {
  const bool complex = kComplex<typename K::Data>;
  const auto up = [](int64_t x) { return (x + 31) / 32 * 32; };
  const int64_t w = complex ? 16 : 8, tables = n > 32 ? 0 : complex ? 256 + 128 * n : 320 + 64 * n;
  return size_t(128 + up(w * (2 * n + 1)) + 2 * up(w * (n + 1)) + tables);
}

TYPED_TEST(Iir, InitKeepsInsideTheDocumentedBuffer) {
  using K = TypeParam;
  using Sample = typename K::Data;
  inEverySlot([](int) {
    for (int order : {1, 2, 3, 4, 8, 32, 33, 50}) {
      const auto f = orderFilter<typename K::Tap>(order, 0.7, 0.3);
      const std::vector<Sample> x = signal<Sample>(100);
      std::vector<Sample> want(100), got(100);
      typename K::State *ref = makeState<K>(f), *s = nullptr;
      K::run(x.data(), want.data(), 100, ref);
      EXPECT_EQ(K::release(ref), vekStsNoErr);
      for (size_t shift = 0; shift < 40; ++shift) {
        Guarded<Vek8u> buffer(documentedSize<K>(order), Flush::kBack, shift);
        ASSERT_EQ(K::init(&s, f.taps.data(), order, f.delay.data(), buffer), vekStsNoErr);
        ASSERT_EQ(uintptr_t(s) % 32, 0u);
        ASSERT_EQ(*reinterpret_cast<uint32_t*>(s), K::id);
        K::run(x.data(), got.data(), 100, s);
        ASSERT_TRUE(sameVectors(got, want));
        ASSERT_TRUE(buffer.intact());
        ASSERT_EQ(K::release(s), vekStsNoErr);  // the caller's buffer stays the caller's
        ASSERT_EQ(*reinterpret_cast<uint32_t*>(s), K::id);
      }
    }
  });
}

TYPED_TEST(Iir, Refusals) {
  using K = TypeParam;
  using Coef = typename K::Tap;
  using Sample = typename K::Data;
  inEverySlot([](int) {
    typename K::State* s = nullptr;
    std::vector<Vek8u> buffer(4096);
    const Coef zero = rounded<Coef>(0), two = rounded<Coef>(2);
    const std::vector<Coef> bad = {two, two, zero, two}, halved = {two, two, two, zero};
    EXPECT_EQ(K::allocate(nullptr, bad.data(), 0, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(K::allocate(&s, nullptr, 0, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(K::init(&s, bad.data(), 0, nullptr, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(K::allocate(&s, bad.data(), 0, nullptr), vekStsIIROrderErr);
    EXPECT_EQ(K::init(&s, bad.data(), INT32_MIN, nullptr, buffer.data()), vekStsIIROrderErr);
    EXPECT_EQ(K::allocate(&s, bad.data(), 1, nullptr), vekStsDivByZeroErr);
    EXPECT_EQ(K::init(&s, bad.data(), 1, nullptr, buffer.data()), vekStsDivByZeroErr);
    {
      Heap none(0);
      EXPECT_EQ(K::allocate(&s, halved.data(), 1, nullptr), vekStsMemAllocErr);
    }
    EXPECT_EQ(s, nullptr);
    ASSERT_EQ(K::allocate(&s, halved.data(), 1, nullptr), vekStsNoErr);
    Sample x = rounded<Sample>(6), y = rounded<Sample>(9);
    EXPECT_EQ(K::run(&x, nullptr, 0, s), vekStsNullPtrErr);
    EXPECT_EQ(K::run(&x, &y, 0, s), vekStsSizeErr);
    EXPECT_EQ(K::runInPlace(nullptr, 1, s), vekStsNullPtrErr);
    EXPECT_EQ(K::one(x, nullptr, s), vekStsNullPtrErr);
    EXPECT_EQ(K::one(x, &y, nullptr), vekStsNullPtrErr);
    uint32_t& id = *reinterpret_cast<uint32_t*>(s);
    for (uint32_t wrong : {0u, 0x46493031u, K::id ^ 0x100u}) {
      id = wrong;
      EXPECT_EQ(K::run(&x, &y, 0, s), vekStsSizeErr);
      EXPECT_EQ(K::run(&x, &y, 1, s), vekStsContextMatchErr);
      EXPECT_EQ(K::one(x, &y, s), vekStsContextMatchErr);
      EXPECT_EQ(K::release(s), vekStsContextMatchErr);
    }
    EXPECT_TRUE(sameBits(y, rounded<Sample>(9)));
    id = K::id;
    EXPECT_EQ(K::one(x, &y, s), vekStsNoErr);  // all coefficients halved by a[0]
    EXPECT_TRUE(sameBits(y, x));
    EXPECT_EQ(K::release(s), vekStsNoErr);
    EXPECT_EQ(K::release(nullptr), vekStsNullPtrErr);
  });
}

// Poles that crowd next to 1: a low-pass of many orders, whose factors over a block of samples would cancel.
TEST(Iir64, CrowdedPolesKeepThePrecisionOfTheRecursion) {
  std::vector<float> x(5000);
  for (size_t i = 0; i < x.size(); ++i) x[i] = float(std::sin(0.01 * double(i * i % 1000)));
  for (int order : {4, 6, 8, 12, 16}) {
    std::vector<Exact> p;
    for (int k = 0; k < order; ++k) p.push_back(std::polar(order < 12 ? 0.95L : 0.8L, 0.05L * (k - order / 2 + 0.5L)));
    const std::vector<double> taps = tapsFromPoles<double>(p);
    const Filter<double> f{order, 0, taps, std::vector<double>(size_t(order))};
    const auto want = recursion<double>(f, x);
    const auto exactly = recursion<long double>(f, x);
    double most = 0, lost = 0;
    for (size_t i = 0; i < x.size(); ++i) {
      most = std::max(most, std::abs(want[i].real()));
      lost = std::max(lost, double(std::abs(want[i].real() - exactly[i].real())));
    }
    inEverySlot([&](int slot) {
      VeksIIRState64f_32f* s = nullptr;
      ASSERT_EQ(veksIIRInitAlloc64f_32f(&s, taps.data(), order, nullptr), vekStsNoErr);
      std::vector<float> y(x.size());
      ASSERT_EQ(veksIIR64f_32f(x.data(), y.data(), int(x.size()), s), vekStsNoErr);
      double worst = 0;
      for (size_t i = 0; i < x.size(); ++i) worst = std::max(worst, std::abs(y[i] - want[i].real()));
      EXPECT_LE(worst, 1.2e-7 * most + 2 * lost) << order << " slot " << slot;
      EXPECT_EQ(veksIIRFree64f_32f(s), vekStsNoErr);
    });
  }
}

TEST(IirIds, FurtherIdOfTheRealKind) {
  inEverySlot([](int) {
    const float taps[] = {1, 0, 1, -1};
    for (int n : {4, 40}) {
      VeksIIRState_32f* s = nullptr;
      ASSERT_EQ(veksIIRInitAlloc_32f(&s, taps, 1, nullptr), vekStsNoErr);
      const uint32_t id = 0x49493239;
      memcpy(s, &id, sizeof id);
      std::vector<float> x(size_t(n), 1.0f), y(x);
      EXPECT_EQ(veksIIR_32f(x.data(), y.data(), n, s), vekStsNoErr);
      EXPECT_EQ(y.back(), float(n));
      EXPECT_EQ(veksIIROne_32f(1, y.data(), s), vekStsContextMatchErr);
      EXPECT_EQ(veksIIRFree_32f(s), vekStsNoErr);
    }
  });
}

TEST(IirBiquad, RefusesSectionsThatCannotBeNormalised) {
  inEverySlot([](int) {
    VeksIIRState_32f* s = nullptr;
    const float good[12] = {1, 2, 3, 2, 1, 0, 4, 5, 6, -2, 0, 1};
    EXPECT_EQ(veksIIRInitAlloc_BiQuad_32f(&s, good, 0, nullptr), vekStsIIROrderErr);
    EXPECT_EQ(veksIIRInitAlloc_BiQuad_32f(&s, good, -3, nullptr), vekStsIIROrderErr);
    EXPECT_EQ(veksIIRInitAlloc_BiQuad_32f(&s, nullptr, 0, nullptr), vekStsNullPtrErr);
    for (int at : {0, 3, 6, 9}) {
      float taps[12];
      memcpy(taps, good, sizeof taps);
      taps[at] = 0;
      EXPECT_EQ(veksIIRInitAlloc_BiQuad_32f(&s, taps, 2, nullptr), vekStsDivByZeroErr) << at;
    }
    EXPECT_EQ(s, nullptr);
    float taps[6] = {NAN, 2, 3, 2, 1, 0}, y;
    ASSERT_EQ(veksIIRInitAlloc_BiQuad_32f(&s, taps, 1, nullptr), vekStsNoErr);
    EXPECT_EQ(veksIIROne_32f(1, &y, s), vekStsNoErr);
    EXPECT_TRUE(std::isnan(y));
    veksIIRFree_32f(s);
    VeksIIRState_32fc* c = nullptr;
    const Vek32fc imaginary[6] = {{0, 1}, {2, 0}, {0, 0}, {0, 2}, {0, 0}, {1, 0}};
    ASSERT_EQ(veksIIRInitAlloc_BiQuad_32fc(&c, imaginary, 1, nullptr), vekStsNoErr);
    Vek32fc z;
    EXPECT_EQ(veksIIROne_32fc({2, 0}, &z, c), vekStsNoErr);  // i / 2i
    EXPECT_TRUE(sameBits(z, {1, 0}));
    veksIIRFree_32fc(c);
  });
}

}  // namespace
