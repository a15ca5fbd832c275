// SPDX-License-Identifier: Apache-2.0
// The Haar step against its formulas and by its energy.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

const float kRootHalf = float(std::sqrt(0.5)), kRootTwo = float(std::sqrt(2.0));

TEST(Haar, StepsForwardAndBack) {
  Shapes(mixedVector<float>(700))
      .check([](auto* x, float* low, float* high, int n) { return veksHaarFwd_32f(x, n, low, high); },
             [](int n, const auto& x) {
               std::vector<float> low, high;
               for (int k = 0; k + 1 < n; k += 2) {
                 low.push_back((x[size_t(k)] + x[size_t(k) + 1]) * kRootHalf);
                 high.push_back((x[size_t(k)] - x[size_t(k) + 1]) * kRootHalf);
               }
               if (n % 2 != 0) low.push_back(x.back() * kRootTwo);
               return std::tuple{low, high};
             });
  // The bands of n elements each; an odd length leaves the last of the high one out.
  for (int odd : {0, 1})
    Shapes(mixedVector<float>(400), mixedVector<float>(400))
        .lengths(sweepLengths(40, 300))
        .apart()
        .check([=](auto* low, auto* high, float* x, int n) { return veksHaarInv_32f(low, high, x, 2 * n - odd); },
               [=](int n, const auto& low, const auto& high) {
                 std::vector<float> x;
                 for (size_t k = 0; k < size_t(n); ++k) {
                   const bool alone = odd && int(k) == n - 1;
                   x.push_back(alone ? low[k] * kRootHalf : (low[k] + high[k]) * kRootHalf);
                   if (!alone) x.push_back((low[k] - high[k]) * kRootHalf);
                 }
                 return x;
               });
}

TEST(Haar, KeepsEnergyAndNeedsBothBands) {
  inEverySlot([](int) {
    const float x[5] = {3, 1, -2, 2, 5};
    float low[3], high[2];
    ASSERT_EQ(veksHaarFwd_32f(x, 4, low, high), vekStsNoErr);
    double energy = 0;
    for (double v : {low[0], low[1], high[0], high[1]}) energy += v * v;
    EXPECT_NEAR(energy, 18, 1e-5);
    float y[1] = {7};
    EXPECT_EQ(veksHaarFwd_32f(x, 1, low, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(veksHaarInv_32f(low, nullptr, y, 1), vekStsNullPtrErr);
    EXPECT_EQ(veksHaarInv_32f(low, high, y, 0), vekStsSizeErr);
    EXPECT_EQ(y[0], 7);
  });
}

}  // namespace
