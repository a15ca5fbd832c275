// SPDX-License-Identifier: Apache-2.0
#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/slots.h"

namespace {

using vektest::Flush;
using vektest::Guarded;

const float kRootHalf = float(std::sqrt(0.5)), kRootTwo = float(std::sqrt(2.0));

TEST(Haar, StepsForwardAndBack) {
  for (int len : vektest::sweepLengths(70, 600)) {
    const size_t n = size_t(len), lows = (n + 1) / 2, highs = n / 2;
    const std::vector<float> x = vektest::mixedVector<float>(n);
    std::vector<float> low(lows), high(highs), back(n);
    for (size_t k = 0; k < highs; ++k) {
      low[k] = (x[2 * k] + x[2 * k + 1]) * kRootHalf;
      high[k] = (x[2 * k] - x[2 * k + 1]) * kRootHalf;
      back[2 * k] = (low[k] + high[k]) * kRootHalf;
      back[2 * k + 1] = (low[k] - high[k]) * kRootHalf;
    }
    if (n % 2 != 0) {
      low[highs] = x[n - 1] * kRootTwo;
      back[n - 1] = low[highs] * kRootHalf;
    }
    vektest::inEverySlot([&](int) {
      SCOPED_TRACE(len);
      for (Flush flush : {Flush::kBack, Flush::kFront}) {
        Guarded<float> in(x, flush), a(lows, flush), b(highs, flush), out(n, flush);
        ASSERT_EQ(veksHaarFwd_32f(in, len, a, b), vekStsNoErr);
        EXPECT_TRUE(vektest::sameVectors(a.values(), low));
        EXPECT_TRUE(vektest::sameVectors(b.values(), high));
        ASSERT_EQ(veksHaarInv_32f(a, b, out, len), vekStsNoErr);
        EXPECT_TRUE(vektest::sameVectors(out.values(), back));
        EXPECT_TRUE(in.intact() && a.intact() && b.intact() && out.intact());
      }
    });
  }
}

TEST(Haar, KeepsEnergyAndNeedsBothBands) {
  vektest::inEverySlot([](int) {
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
