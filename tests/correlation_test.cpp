// SPDX-License-Identifier: Apache-2.0
// Convolution and correlation against their sums, on both sides of the choice between sums and transforms.
#include <limits.h>

#include "tests/support/definitions.h"

namespace {

using namespace vektest;

// lags lowLag .. lowLag+n-1 of sum over k of conj(a[k]) * b[k + lag]
template <class T>
std::vector<Expected> correlation(const std::vector<T>& a, const std::vector<T>& b, int64_t lowLag, int n) {
  std::vector<Expected> y(size_t(n), Expected{});
  for (int64_t i = 0; i < n; ++i) {
    const int64_t lag = lowLag + i, from = std::max<int64_t>(0, -lag);
    const int64_t to = std::min(int64_t(a.size()), int64_t(b.size()) - lag);
    for (int64_t k = from; k < to; ++k) y[size_t(i)].add(std::conj(value(a[size_t(k)])), value(b[size_t(k + lag)]));
  }
  return y;
}
std::vector<Expected> convolution(const std::vector<float>& a, const std::vector<float>& b, int64_t first, int n) {
  return correlation(std::vector<float>(a.rbegin(), a.rend()), b, first - int64_t(a.size()) + 1, n);
}

// Direct sums are held against their own terms, transforms against the largest there may be.
template <class T>
::testing::AssertionResult near(const std::vector<T>& got, const std::vector<Expected>& want, size_t terms,
                                bool direct) {
  double largest = 0;
  for (const Expected& e : want) largest = std::max(largest, e.magnitude);
  for (size_t i = 0; i < want.size(); ++i) {
    const double bound = (direct ? 1.5 * double(terms + 2) * want[i].magnitude : 10 * largest) * std::ldexp(1.0, -24);
    if (!(std::abs(value(got[i]) - want[i].sum) <= bound))
      return ::testing::AssertionFailure() << "result " << i << " of " << want.size() << ": got " << value(got[i])
                                           << ", want " << want[i].sum << " within " << bound;
  }
  return ::testing::AssertionSuccess();
}

template <class T>
::testing::AssertionResult sameFiniteness(const std::vector<T>& got, const std::vector<Expected>& want) {
  for (size_t i = 0; i < want.size(); ++i)
    if (std::isfinite(std::abs(value(got[i]))) != std::isfinite(std::abs(want[i].sum)))
      return ::testing::AssertionFailure() << "result " << i << " of " << want.size() << " is " << value(got[i]);
  return ::testing::AssertionSuccess();
}

// Calls f(pSrc1, pSrc2, pDst) on arrays between guard pages and returns the destination.
template <class T, class F>
std::vector<T> guarded(const std::vector<T>& a, const std::vector<T>& b, int n, F f) {
  const Flush flush = n % 2 ? Flush::kBack : Flush::kFront;
  Guarded<T> src1(a, flush), src2(b, flush), dst(size_t(n), flush);
  EXPECT_EQ(f(src1.data(), src2.data(), dst.data()), vekStsNoErr);
  EXPECT_TRUE(src1.intact() && src2.intact() && dst.intact());
  EXPECT_TRUE(sameVectors(src1.values(), a) && sameVectors(src2.values(), b));
  return dst.values();
}

std::vector<float> conv(const std::vector<float>& a, const std::vector<float>& b) {
  const int la = int(a.size()), lb = int(b.size());
  return guarded(a, b, la + lb - 1, [&](auto p, auto q, auto d) { return veksConv_32f(p, la, q, lb, d); });
}
std::vector<float> convBiased(const std::vector<float>& a, const std::vector<float>& b, int n, int bias) {
  const int la = int(a.size()), lb = int(b.size());
  return guarded(a, b, n, [&](auto p, auto q, auto d) { return veksConvBiased_32f(p, la, q, lb, d, n, bias); });
}
template <class T>
std::vector<T> cross(const std::vector<T>& a, const std::vector<T>& b, int n, int lag) {
  const int la = int(a.size()), lb = int(b.size());
  return guarded(a, b, n, [&](auto p, auto q, auto d) {
    if constexpr (std::is_same_v<T, float>) return veksCrossCorr_32f(p, la, q, lb, d, n, lag);
    if constexpr (!std::is_same_v<T, float>) return veksCrossCorr_32fc(p, la, q, lb, d, n, lag);
  });
}
enum Norm { kPlain, kNormA, kNormB };
template <class T>
std::vector<T> automatic(const std::vector<T>& a, int n, Norm norm = kPlain) {
  const int la = int(a.size());
  return guarded(a, a, n, [&](auto p, auto, auto d) {
    if constexpr (std::is_same_v<T, float>) {
      return norm == kPlain   ? veksAutoCorr_32f(p, la, d, n)
             : norm == kNormA ? veksAutoCorr_NormA_32f(p, la, d, n)
                              : veksAutoCorr_NormB_32f(p, la, d, n);
    } else {
      return norm == kPlain   ? veksAutoCorr_32fc(p, la, d, n)
             : norm == kNormA ? veksAutoCorr_NormA_32fc(p, la, d, n)
                              : veksAutoCorr_NormB_32fc(p, la, d, n);
    }
  });
}

bool convIsDirect(size_t a, size_t b, int n) { return n < 150 || std::min(a, b) < 32; }

const int kLengths[][2] = {{1, 1},     {1, 9},     {3, 2},     {7, 8},     {16, 40},    {31, 31},  {64, 64}, {75, 75},
                           {118, 32},  {32, 119},  {31, 119},  {1000, 31}, {100, 40},   {96, 32},  {95, 32}, {300, 100},
                           {299, 100}, {33, 2000}, {513, 512}, {5000, 20}, {9000, 300}, {20, 4133}};

TEST(Convolution, MatchesItsDefinition) {
  inEverySlot([](int) {
    for (const auto& [la, lb] : kLengths) {
      const auto a = randomSignal<float>(size_t(la)), b = randomSignal<float>(size_t(lb));
      const int n = la + lb - 1;
      const bool direct = convIsDirect(a.size(), b.size(), n);
      ASSERT_TRUE(near(conv(a, b), convolution(a, b, 0, n), size_t(std::min(la, lb)), direct)) << la << ' ' << lb;
      ASSERT_TRUE(sameVectors(conv(a, b), la == lb ? conv(a, b) : conv(b, a)));
    }
  });
}

TEST(Convolution, BiasedStretchesOfAnyPlace) {
  inEverySlot([](int) {
    for (const auto& [la, lb] : kLengths) {
      const auto a = randomSignal<float>(size_t(la)), b = randomSignal<float>(size_t(lb));
      for (int n : {1, 10, 149, 151, 700}) {
        for (int bias : {-n, -n + 1, -5, 0, la / 2, la + lb - 2, la + lb - 1, INT_MIN, INT_MAX}) {
          const int64_t from = std::max<int64_t>(0, bias), to = std::min<int64_t>(la + lb - 1, int64_t(bias) + n);
          const bool direct = convIsDirect(a.size(), b.size(), int(std::max<int64_t>(0, to - from)));
          ASSERT_TRUE(near(convBiased(a, b, n, bias), convolution(a, b, bias, n), size_t(std::min(la, lb)), direct))
              << la << ' ' << lb << ' ' << n << ' ' << bias;
        }
      }
    }
    // Few results of many terms each.
    const auto a = randomSignal<float>(6001), b = randomSignal<float>(5000);
    ASSERT_TRUE(near(convBiased(a, b, 140, 4950), convolution(a, b, 4950, 140), 5000, true));
  });
}

template <class T>
void crossMatches(const std::vector<T>& a, const std::vector<T>& b) {
  const int la = int(a.size()), lb = int(b.size());
  for (int n : {1, 5, 64, 300, 900}) {
    for (int lag : {-la - n, -la, 1 - la, -la / 2, -3, 0, lb / 3, lb - 1, lb, INT_MIN, INT_MAX}) {
      const auto want = correlation(a, b, lag, n);
      int64_t m = 0;
      for (int i = 0; i < n; ++i) m += int64_t(lag) + i > -la && int64_t(lag) + i < lb;
      const float q = float(std::min(la, lb)) * float(m) / float(std::max(la, lb));
      ASSERT_TRUE(near(cross(a, b, n, lag), want, size_t(std::min(la, lb)), q < 384))
          << la << ' ' << lb << ' ' << n << ' ' << lag;
    }
  }
}
TEST(CrossCorrelation, MatchesItsDefinitionAtEveryLag) {
  inEverySlot([](int) {
    for (const auto& [la, lb] : {std::pair{1, 1},
                                 {1, 50},
                                 {30, 1},
                                 {5, 9},
                                 {100, 100},
                                 {200, 40},
                                 {70, 333},
                                 {1000, 990},
                                 {600, 2000},
                                 {3000, 700}}) {
      crossMatches(randomSignal<float>(size_t(la)), randomSignal<float>(size_t(lb)));
      crossMatches(randomSignal<Vek32fc>(size_t(la)), randomSignal<Vek32fc>(size_t(lb)));
    }
  });
}

// All lags of a long vector with a short one, which go through the transform block by block.
template <class T>
void manyLagsMatch(int la, int lb) {
  const auto a = randomSignal<T>(size_t(la)), b = randomSignal<T>(size_t(lb));
  const int n = la + lb + 20;
  for (int lag : {-la - 9, 1 - la, -std::min(la, 200)}) {
    const auto want = correlation(a, b, lag, n);
    inEverySlot([&](int) {
      ASSERT_TRUE(near(cross(a, b, n, lag), want, size_t(std::min(la, lb)), false)) << la << ' ' << lb << ' ' << lag;
    });
  }
}
TEST(CrossCorrelation, MatchesItsDefinitionBlockByBlock) {
  for (const auto& [la, lb] : {std::pair{400, 1300}, {1300, 400}, {500, 1501}}) {
    manyLagsMatch<float>(la, lb);
    manyLagsMatch<Vek32fc>(la, lb);
  }
}

template <class T>
void autoMatches(size_t la) {
  const auto a = randomSignal<T>(la);
  for (int n : {1, 2, 9, 31, 33, 65, 130, 599, 600, 1500}) {
    const auto got = automatic(a, n);
    ASSERT_TRUE(near(got, correlation(a, a, 0, n), la, std::min(int(la), n) < 600)) << la << ' ' << n;
    const auto byA = automatic(a, n, kNormA), byB = automatic(a, n, kNormB);
    const float reciprocal = 1 / float(la);
    for (int k = 0; k < n; ++k) {
      const float* plain = reinterpret_cast<const float*>(&got[size_t(k)]);
      for (size_t c = 0; c < sizeof(T) / sizeof(float); ++c) {
        const bool reached = k < int(la);
        ASSERT_EQ(reinterpret_cast<const float*>(&byA[size_t(k)])[c], reached ? plain[c] * reciprocal : 0);
        ASSERT_EQ(reinterpret_cast<const float*>(&byB[size_t(k)])[c], reached ? plain[c] / float(int(la) - k) : 0);
      }
    }
  }
}
TEST(AutoCorrelation, MatchesItsDefinitionAndNorms) {
  inEverySlot([](int) {
    for (size_t la : {1, 4, 63, 64, 65, 200, 599, 600, 1400}) {
      autoMatches<float>(la);
      autoMatches<Vek32fc>(la);
    }
  });
}

// Whether results far from a huge element show rounding errors of its size: then they came through a transform that
// also held that element.
bool smeared(const std::vector<float>& y, const std::vector<Expected>& want, size_t from, size_t to) {
  for (size_t i = from; i < to; ++i)
    if (!(std::abs(value(y[i]) - want[i].sum) < 1)) return true;
  return false;
}
constexpr float kHuge = 1e15f;

TEST(CorrelationPaths, ChangeExactlyWhereStated) {
  inEverySlot([](int) {
    const auto convSmears = [](size_t la, size_t lb, size_t from, size_t to) {
      auto a = randomSignal<float>(la), b = randomSignal<float>(lb);
      a[0] = kHuge;
      return smeared(conv(a, b), convolution(a, b, 0, int(la + lb - 1)), from, to);
    };
    EXPECT_FALSE(convSmears(118, 32, 32, 149));
    EXPECT_TRUE(convSmears(119, 32, 32, 97));
    EXPECT_FALSE(convSmears(5000, 31, 32, 5000));
    // One transform holds everything; of several blocks, of 97 results here, the first alone holds the huge element.
    EXPECT_TRUE(convSmears(95, 60, 97, 154));
    EXPECT_TRUE(convSmears(119, 40, 97, 158));
    EXPECT_FALSE(convSmears(120, 32, 97, 151));

    const auto crossSmears = [](size_t la, size_t lb, int n) {
      auto a = randomSignal<float>(la), b = randomSignal<float>(lb);
      b[1] = kHuge;
      return smeared(cross(a, b, n, 0), correlation(a, b, 0, n), 2, size_t(n));
    };
    EXPECT_FALSE(crossSmears(1000, 1000, 383));
    EXPECT_TRUE(crossSmears(1000, 1000, 384));
    EXPECT_FALSE(crossSmears(500, 1000, 767));
    EXPECT_TRUE(crossSmears(500, 1000, 768));
    EXPECT_TRUE(crossSmears(1000, 500, 384) == false && crossSmears(400, 390, 390) == false);

    // All that lags 1 .. 49 sum is the ones at the end.
    std::vector<float> a(700, 0.0f);
    a[0] = kHuge;
    std::fill(a.end() - 50, a.end(), 1.0f);
    EXPECT_FALSE(smeared(automatic(a, 599), correlation(a, a, 0, 599), 1, 50));
    EXPECT_TRUE(smeared(automatic(a, 600), correlation(a, a, 0, 600), 1, 50));
  });
}

TEST(CorrelationPaths, NonFiniteElementsReachTheirResultsOnly) {
  inEverySlot([](int) {
    for (float bad : {std::numeric_limits<float>::infinity(), std::nanf("")}) {
      for (const auto& [la, lb] : {std::pair{5, 9}, {70, 64}, {1000, 31}, {300, 300}}) {
        auto a = randomSignal<float>(size_t(la)), b = randomSignal<float>(size_t(lb));
        for (int at : {0, la / 3, la - 1}) {
          auto spoilt = a;
          spoilt[size_t(at)] = bad;
          if (convIsDirect(a.size(), b.size(), la + lb - 1)) {
            ASSERT_TRUE(sameFiniteness(conv(spoilt, b), convolution(spoilt, b, 0, la + lb - 1)));
          }
          for (int lag : {-la, 1 - la, -2, lb - 100}) {
            ASSERT_TRUE(sameFiniteness(cross(spoilt, b, 150, lag), correlation(spoilt, b, lag, 150)));
            ASSERT_TRUE(sameFiniteness(cross(b, spoilt, 150, lag), correlation(b, spoilt, lag, 150)));
          }
          ASSERT_TRUE(
              sameFiniteness(automatic(spoilt, std::min(la, 599)), correlation(spoilt, spoilt, 0, std::min(la, 599))));
        }
      }
    }
  });
}

TEST(CorrelationPaths, WithoutMemory) {
  inEverySlot([](int) {
    const auto a = randomSignal<float>(2000), b = randomSignal<float>(1900);
    const auto c = randomSignal<Vek32fc>(2000);
    std::vector<float> y(4000);
    std::vector<Vek32fc> z(4000);
    const auto failsUntilServed = [](auto call) {
      for (int requests = 0; requests < 10; ++requests) {
        Heap heap(requests);
        const VekStatus status = call();
        if (status == vekStsNoErr) return requests > 0;
        if (status != vekStsMemAllocErr) return false;
      }
      return false;
    };
    EXPECT_TRUE(failsUntilServed([&] { return veksConv_32f(a.data(), 2000, b.data(), 1900, y.data()); }));
    EXPECT_TRUE(failsUntilServed([&] { return veksConv_32f(a.data(), 2000, b.data(), 100, y.data()); }));
    EXPECT_TRUE(failsUntilServed([&] { return veksConvBiased_32f(a.data(), 2000, b.data(), 1900, y.data(), 900, 7); }));
    EXPECT_TRUE(failsUntilServed([&] { return veksCrossCorr_32f(a.data(), 2000, b.data(), 1900, y.data(), 900, 7); }));
    EXPECT_TRUE(failsUntilServed([&] { return veksCrossCorr_32fc(c.data(), 2000, c.data(), 1900, z.data(), 900, 7); }));
    EXPECT_TRUE(failsUntilServed([&] { return veksAutoCorr_NormB_32f(a.data(), 2000, y.data(), 900); }));
    EXPECT_TRUE(failsUntilServed([&] { return veksAutoCorr_NormA_32fc(c.data(), 2000, z.data(), 900); }));
    EXPECT_EQ(veksConvBiased_32f(a.data(), 1, a.data(), 1, y.data(), 0, 0), vekStsSizeErr);
    EXPECT_EQ(veksConvBiased_32f(a.data(), 0, a.data(), 1, nullptr, 1, 0), vekStsNullPtrErr);
  });
}

}  // namespace
