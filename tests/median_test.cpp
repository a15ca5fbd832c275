// SPDX-License-Identifier: Apache-2.0
#include <algorithm>

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/heap.h"
#include "tests/support/slots.h"

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

// The order of the values: by size, -0 below +0, NaNs outside the infinities on the side of their sign.
template <class T>
int64_t rankOf(T x) {
  if constexpr (std::is_floating_point_v<T>) {
    Vek32s bits;
    memcpy(&bits, &x, 4);
    return bits >= 0 ? bits : -1 - int64_t(bits & 0x7FFFFFFF);
  } else {
    return x;
  }
}

template <class T>
std::vector<T> medianByDefinition(const std::vector<T>& x, int64_t mask) {
  const int64_t n = int64_t(x.size()), half = mask / 2;
  if (mask < 3 || n < 3) return x;
  std::vector<T> y(x.size()), window;
  for (int64_t i = 0; i < n; ++i) {
    window.clear();
    for (int64_t k = i - half; k <= i + half; ++k) window.push_back(x[std::clamp<int64_t>(k, 0, n - 1)]);
    std::nth_element(window.begin(), window.begin() + half, window.end(),
                     [](T a, T b) { return rankOf(a) < rankOf(b); });
    y[i] = window[half];
  }
  return y;
}

template <class T>
::testing::AssertionResult sameBytes(const std::vector<T>& got, const std::vector<T>& want) {
  for (size_t i = 0; i < got.size(); ++i)
    if (memcmp(&got[i], &want[i], sizeof(T)) != 0)
      return ::testing::AssertionFailure() << "element " << i << " of " << got.size();
  return ::testing::AssertionSuccess();
}

template <class T>
void checkMedian(const std::vector<T>& x, int mask, const std::vector<T>& want) {
  const int n = int(x.size());
  const VekStatus status = mask % 2 == 0 ? vekStsEvenMedianMaskSize : vekStsNoErr;
  inEverySlot([&](int) {
    const Flush flush = n % 2 ? Flush::kBack : Flush::kFront;
    Guarded<T> src(x, flush), dst(x.size(), flush, n % 3 * sizeof(T)), both(x, flush);
    ASSERT_EQ(filters<T>().apart(src, dst, n, mask), status);
    ASSERT_TRUE(sameBytes(dst.values(), want)) << "mask " << mask;
    ASSERT_EQ(filters<T>().inPlace(both, n, mask), status);
    ASSERT_TRUE(sameBytes(both.values(), want)) << "in place, mask " << mask;
    ASSERT_TRUE(dst.intact() && both.intact());
  });
}

template <class T>
class Median : public ::testing::Test {};
using Types = ::testing::Types<Vek8u, Vek16s, Vek32s, Vek32f>;
TYPED_TEST_SUITE(Median, Types);

TYPED_TEST(Median, everyMaskAndLength) {
  using T = TypeParam;
  for (int n : {1, 2, 3, 4, 5, 7, 8, 16, 31, 33, 64, 100, 259})
    for (int mask = 1; mask <= 70; mask += n > 40 && mask > 33 ? 11 : 1) {
      const std::vector<T> x = mixedVector<T>(n);
      checkMedian(x, mask, medianByDefinition(x, mask - (mask % 2 == 0)));
    }
}

// Beyond the pieces in which long vectors and long masks are worked off, and masks far longer than the vector.
TYPED_TEST(Median, longVectorsAndMasks) {
  using T = TypeParam;
  const struct {
    int n, mask;
  } cases[] = {{5000, 3},    {5000, 5},   {9001, 9},   {9001, 31},        {9001, 33},     {12000, 101},
               {9000, 2001}, {600, 1199}, {600, 1201}, {300, 0x7FFFFFFF}, {5, 0x7FFFFFFE}};
  for (const auto& c : cases) {
    std::vector<T> x = mixedVector<T>(c.n);
    const int64_t mask = std::min<int64_t>(c.mask - (c.mask % 2 == 0), 2 * c.n + 3);  // as the repetitions balance
    checkMedian(x, c.mask, medianByDefinition(x, mask));
    for (int i = 0; i < c.n; ++i) x[i] = T(i % 100 < 50 ? 3 : i / 64 % 120);  // plateaus, slopes and leaps
    checkMedian(x, c.mask, medianByDefinition(x, mask));
  }
}

TEST(MedianExamples, valuesAndStatuses) {
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

TYPED_TEST(Median, failedAllocationLeavesTheData) {
  using T = TypeParam;
  const std::vector<T> x = randomVector<T>(200);
  inEverySlot([&](int) {
    Guarded<T> both(x), dst(x.size());
    Heap none(0);
    const VekStatus a = filters<T>().inPlace(both, 200, 101), b = filters<T>().apart(x.data(), dst, 200, 100);
    EXPECT_EQ(a, vekStsMemAllocErr);
    EXPECT_EQ(b, vekStsMemAllocErr);
    EXPECT_TRUE(sameBytes(both.values(), x));
    EXPECT_TRUE(dst.untouched());
  });
}

}  // namespace
