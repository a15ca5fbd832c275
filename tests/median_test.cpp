// SPDX-License-Identifier: Apache-2.0
// Medians of every mask and length against sorted windows, and what happens without memory.
#include "tests/support/definitions.h"
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

template <class T>
struct Filters {
  VekStatus (*apart)(const T*, T*, int, int);
  VekStatus (*inPlace)(T*, int, int);
};
template <class T>
Filters<T> filters();
template <>
Filters<Vek8u> filters() {
  return {veksFilterMedian_8u, veksFilterMedian_8u_I};
}
template <>
Filters<Vek16s> filters() {
  return {veksFilterMedian_16s, veksFilterMedian_16s_I};
}
template <>
Filters<Vek32s> filters() {
  return {veksFilterMedian_32s, veksFilterMedian_32s_I};
}
template <>
Filters<Vek32f> filters() {
  return {veksFilterMedian_32f, veksFilterMedian_32f_I};
}

template <class T>
void checkMedian(const std::vector<T>& x, int mask, const std::vector<T>& want) {
  Shapes(x)
      .bits()
      .returns(mask % 2 == 0 ? vekStsEvenMedianMaskSize : vekStsNoErr)
      .values([=](auto* s, T* d, int n) { return filters<T>().apart(s, d, n, mask); },
              [&](int, const auto&) { return want; }, [=](T* d, int n) { return filters<T>().inPlace(d, n, mask); });
}

template <class T>
class Median : public ::testing::Test {};
using Types = ::testing::Types<Vek8u, Vek16s, Vek32s, Vek32f>;
TYPED_TEST_SUITE(Median, Types);

TYPED_TEST(Median, EveryMaskAndLength) {
  using T = TypeParam;
  for (int n : {1, 2, 3, 4, 5, 7, 8, 16, 31, 33, 64, 100, 259})
    for (int mask = 1; mask <= 70; mask += n > 40 && mask > 33 ? 11 : 1) {
      const std::vector<T> x = mixedVector<T>(n);
      checkMedian(x, mask, medians(x, mask));
    }
}

// Beyond the pieces in which long vectors and long masks are worked off, and masks far longer than the vector.
TYPED_TEST(Median, LongVectorsAndMasks) {
  using T = TypeParam;
  const struct {
    int n, mask;
  } cases[] = {{5000, 3},    {5000, 5},   {9001, 9},   {9001, 31},        {9001, 33},     {12000, 101},
               {9000, 2001}, {600, 1199}, {600, 1201}, {300, 0x7FFFFFFF}, {5, 0x7FFFFFFE}};
  for (const auto& c : cases) {
    std::vector<T> x = mixedVector<T>(c.n);
    const int64_t mask = std::min<int64_t>(c.mask - (c.mask % 2 == 0), 2 * c.n + 3);  // as the repetitions balance
    checkMedian(x, c.mask, medians(x, mask));
    for (int i = 0; i < c.n; ++i) x[i] = T(i % 100 < 50 ? 3 : i / 64 % 120);  // plateaus, slopes and leaps
    checkMedian(x, c.mask, medians(x, mask));
  }
}

TEST(MedianExamples, ValuesAndStatuses) {
  inEverySlot([](int) {
    const Vek32s x[] = {5, 1, 4, 2, 3};
    Vek32s y[5];
    EXPECT_EQ(veksFilterMedian_32s(x, y, 5, 4), vekStsEvenMedianMaskSize);
    EXPECT_EQ(std::vector<Vek32s>(y, y + 5), (std::vector<Vek32s>{5, 4, 2, 3, 3}));
    EXPECT_EQ(veksFilterMedian_32s(x, y, 5, 5), vekStsNoErr);
    EXPECT_EQ(std::vector<Vek32s>(y, y + 5), (std::vector<Vek32s>{5, 4, 3, 3, 3}));
    EXPECT_EQ(veksFilterMedian_32s(x, y, 5, 0), vekStsSizeErr);
    EXPECT_EQ(veksFilterMedian_32s(x, nullptr, 0, 0), vekStsNullPtrErr);
    EXPECT_EQ(veksFilterMedian_32s_I(y, 0, 3), vekStsSizeErr);
  });
}

TYPED_TEST(Median, FailedAllocationLeavesTheData) {
  using T = TypeParam;
  const std::vector<T> x = randomVector<T>(200);
  inEverySlot([&](int) {
    Guarded<T> both(x), dst(x.size());
    Heap none(0);
    const VekStatus a = filters<T>().inPlace(both, 200, 101), b = filters<T>().apart(x.data(), dst, 200, 100);
    EXPECT_EQ(a, vekStsMemAllocErr);
    EXPECT_EQ(b, vekStsMemAllocErr);
    EXPECT_EQ(memcmp(both.values().data(), x.data(), x.size() * sizeof(T)), 0);
    EXPECT_TRUE(dst.untouched());
  });
}

}  // namespace
