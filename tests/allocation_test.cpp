// SPDX-License-Identifier: Apache-2.0
// Where functions take memory: exactly at the boundaries that the documents state, and back again before they end.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <vector>

#include "core/memory.h"
#include "tests/support/slots.h"
#include "vek.h"

namespace {

int allocations;
void* counted(size_t bytes) {
  ++allocations;
  return malloc(bytes);
}

template <class Call>
int during(Call call) {
  allocations = 0;
  vek::allocateRaw = counted;
  EXPECT_GE(call(), vekStsNoErr);
  vek::allocateRaw = malloc;
  return allocations;
}

TEST(Allocation, BoundariesAreTheDocumentedOnes) {
  vektest::inEverySlot([](int) {
    std::vector<float> x(1400, 1.0f), y(2800);
    const auto median = [&](int len, int mask) {
      return during([&] { return veksFilterMedian_32f(x.data(), y.data(), len, mask); });
    };
    EXPECT_TRUE(median(1000, 33) == 0 && median(1000, 35) == 1 && median(17, 999) == 0 && median(18, 999) == 1);
    const auto conv = [&](int n, int m) {
      return during([&] { return veksConv_32f(x.data(), n, x.data(), m, y.data()); });
    };
    EXPECT_TRUE(conv(118, 32) == 0 && conv(119, 32) > 0 && conv(500, 31) == 0);
    const auto lags = [&](auto* function, int n) {
      return during([&] { return function(x.data(), 700, y.data(), n); });
    };
    for (auto* function : {veksAutoCorr_32f, veksAutoCorr_NormA_32f, veksAutoCorr_NormB_32f})
      EXPECT_TRUE(lags(function, 599) == 0 && lags(function, 600) == 1);
    for (const int len : {8, 128, 2048, 37, 150, 1 << 15}) {
      VeksDCTFwdSpec_32f* spec = nullptr;
      ASSERT_EQ(veksDCTFwdInitAlloc_32f(&spec, len, vekAlgHintNone), vekStsNoErr);
      std::vector<float> in(len, 1.0f), out(len);
      std::vector<Vek8u> work(32832 + 64 * size_t(len));
      EXPECT_EQ(during([&] { return veksDCTFwd_32f(in.data(), out.data(), spec, work.data()); }), 0) << len;
      const int without = during([&] { return veksDCTFwd_32f(in.data(), out.data(), spec, nullptr); });
      EXPECT_EQ(without, len <= 8 || len == 128 || len == 2048 ? 0 : 1) << len;
      veksDCTFwdFree_32f(spec);
    }
    const float taps[5] = {1, 2, 3, 4, 5};
    VeksFIRState_32f* rates = nullptr;
    ASSERT_EQ(veksFIRMRInitAlloc_32f(&rates, taps, 5, 2, 0, 3, 0, nullptr), vekStsNoErr);
    EXPECT_EQ(during([&] { return veksFIR_32f(x.data(), y.data(), 100, rates); }), 0);
    EXPECT_EQ(during([&] { return veksFIR_32f_I(x.data(), 100, rates); }), 1);
    veksFIRFree_32f(rates);
    VeksFIRState_32f* filter = nullptr;
    EXPECT_EQ(during([&] { return veksFIRInitAlloc_32f(&filter, x.data(), 100, nullptr); }), 1);
    EXPECT_EQ(during([&] { return veksFIR_32f_I(y.data(), 2800, filter); }), 0);  // long enough for the transform
    veksFIRFree_32f(filter);
    EXPECT_EQ(during([&] { return veksSortAscend_32f_I(y.data(), 2800); }), 0);
  });
}

}  // namespace
