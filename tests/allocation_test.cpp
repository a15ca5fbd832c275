// SPDX-License-Identifier: Apache-2.0
// Where functions take memory: exactly at the boundaries that the documents state, and back again before they end.
#include <gtest/gtest.h>
#include <string.h>

#include <vector>

#include "tests/support/generic.h"
#include "tests/support/heap.h"
#include "tests/support/slots.h"
#include "vek.h"

namespace {

template <class Call>
int during(Call call) {
  const vektest::Heap heap;
  EXPECT_GE(call(), vekStsNoErr);
  return heap.requests();
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

// ---- every request of every function, refused -----------------------------------------------------------------------

// Calls prepared by `call` until no request is refused: where one is, nothing has been written and nothing is kept.
template <class Call>
int requestsOf(const vektest::Row& row, bool keeps, Call call) {
  for (int granted = 0; granted < 8; ++granted) {
    vektest::Arena arena(row.parameters), before(row.parameters);
    vektest::RawCall c = call(arena);
    (void)call(before);  // blanks what it blanks
    VekStatus status;
    int out;
    {
      const vektest::Heap heap(granted);
      vek_raw_call(&c);
      status = VekStatus(c.result), out = heap.out();
      EXPECT_EQ(heap.doubled(), 0) << row.name;
    }
    EXPECT_EQ(out, keeps && status >= 0) << row.name << " with " << granted << " requests granted: " << status;
    if (status >= 0 && keeps) vektest::releaseMade(row.name, arena.regions[0].get());
    if (status != vekStsMemAllocErr) return granted;
    EXPECT_TRUE(arena.sameAs(before, {})) << row.name << " wrote before it asked for memory";
  }
  ADD_FAILURE() << row.name << " never had enough";
  return 0;
}

TEST(Allocation, ARefusedRequestLeavesEverythingAsItWas) {
  vektest::lengthScale = 80;  // every path that takes memory
  vektest::inEverySlot([](int) {
    int asking = 0;
    for (const vektest::Row& row : vektest::allRows()) {
      if (!row.returnsStatus || row.releases()) continue;
      const std::string name = row.name;
      const bool keeps = name.find("InitAlloc") != std::string::npos;
      asking += requestsOf(row, keeps, [&](vektest::Arena& a) { return row.raw(a); }) > 0;
      for (size_t i = 0; i < row.parameters.size(); ++i) {
        if (row.parameters[i].name == "pWorkBuffer")
          asking += requestsOf(row, keeps, [&](vektest::Arena& a) { return row.raw(a, int(i)); }) > 0;
        // A filter of zeros is refused after its memory was taken.
        if (row.parameters[i].name == "pTaps" && keeps)
          requestsOf(row, keeps, [&](vektest::Arena& a) {
            a.blank(i);
            return row.raw(a);
          });
      }
    }
    EXPECT_GE(asking, 100);
  });
  vektest::lengthScale = 1;
}

// In place a multi-rate filter copies its input aside.
template <class State, class Data, class Tap>
void refuseCopies(VekStatus (*make)(State**, const Tap*, int, int, int, int, int, const Data*),
                  VekStatus (*run)(Data*, int, State*), VekStatus (*release)(State*)) {
  State* state = nullptr;
  const Tap taps[9] = {};
  ASSERT_EQ(make(&state, taps, 9, 2, 0, 3, 0, nullptr), vekStsNoErr);
  std::vector<Data> x(300);
  memset(static_cast<void*>(x.data()), 0x3F, x.size() * sizeof(Data));
  for (int granted = 0; granted < 2; ++granted) {
    const vektest::Heap heap(granted);
    EXPECT_EQ(run(x.data(), 100, state), granted ? vekStsNoErr : vekStsMemAllocErr);
    EXPECT_EQ(heap.out(), 0);
    EXPECT_EQ(*reinterpret_cast<const unsigned char*>(x.data()), granted ? 0 : 0x3F);
  }
  release(state);
}

TEST(Allocation, MultiRateInPlace) {
  vektest::inEverySlot([](int) {
    refuseCopies(veksFIRMRInitAlloc_32f, veksFIR_32f_I, veksFIRFree_32f);
    refuseCopies(veksFIRMRInitAlloc_32fc, veksFIR_32fc_I, veksFIRFree_32fc);
    refuseCopies(veksFIRMRInitAlloc64f_32f, veksFIR64f_32f_I, veksFIRFree64f_32f);
    refuseCopies(veksFIRMRInitAlloc64fc_32fc, veksFIR64fc_32fc_I, veksFIRFree64fc_32fc);
  });
}

// Behind the lags that overlap lie others, which are cleared only when nothing can fail any more.
TEST(Allocation, CorrelationsWithLagsThatDoNotOverlap) {
  vektest::inEverySlot([](int) {
    std::vector<Vek32fc> x(700, Vek32fc{1, 1}), y(3000);
    const auto left = [&](auto call, VekStatus want, int granted = 0) {
      memset(static_cast<void*>(y.data()), 0x55, y.size() * sizeof(Vek32fc));
      const vektest::Heap heap(granted);
      EXPECT_EQ(call(), want);
      const std::vector<unsigned> words(2 * y.size(), 0x55555555);
      EXPECT_TRUE(memcmp(y.data(), words.data(), y.size() * sizeof(Vek32fc)) == 0);
      EXPECT_EQ(heap.out(), 0);
    };
    const Vek32f* const src = &x[0].re;
    Vek32f* const dst = &y[0].re;
    for (auto* f : {veksAutoCorr_32f, veksAutoCorr_NormA_32f, veksAutoCorr_NormB_32f}) {
      left([&] { return f(src, 700, dst, 3000); }, vekStsMemAllocErr);
      // Longer than any transform, which is told before an element is read.
      left([&] { return f(src, 1 << 28, dst, 3000); }, vekStsFftOrderErr, 1);
    }
    for (auto* f : {veksAutoCorr_32fc, veksAutoCorr_NormA_32fc, veksAutoCorr_NormB_32fc}) {
      left([&] { return f(x.data(), 700, y.data(), 3000); }, vekStsMemAllocErr);
      left([&] { return f(x.data(), 1 << 28, y.data(), 3000); }, vekStsFftOrderErr, 1);
    }
    left([&] { return veksCrossCorr_32f(src, 700, src, 700, dst, 3000, -1000); }, vekStsMemAllocErr);
    left([&] { return veksCrossCorr_32fc(x.data(), 700, x.data(), 700, y.data(), 3000, -1000); }, vekStsMemAllocErr);
    left([&] { return veksConvBiased_32f(src, 700, src, 700, dst, 3000, -100); }, vekStsMemAllocErr);
  });
}

}  // namespace
