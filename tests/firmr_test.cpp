// SPDX-License-Identifier: Apache-2.0
// Multi-rate FIR filters: up-sampling, filtering and down-sampling in one.
#include "tests/support/definitions.h"

namespace {

using namespace vektest;

// Few and many taps for the factors, phases at both ends, factors above the taps, above the scratch and coprime.
const std::vector<Rate> kRates = {
    {1, 1, 0, 2, 1},       {7, 1, 0, 4, 0},         {13, 1, 0, 4, 3},     {64, 1, 0, 4, 2},      {64, 4, 0, 1, 0},
    {65, 4, 3, 1, 0},      {3, 5, 4, 1, 0},         {48, 3, 0, 2, 0},     {48, 3, 2, 2, 1},      {50, 2, 1, 3, 0},
    {5, 2, 1, 3, 2},       {29, 7, 6, 5, 4},        {300, 7, 0, 5, 4},    {10, 16, 7, 15, 14},   {100, 16, 15, 15, 0},
    {2000, 16, 15, 15, 0}, {900, 1, 0, 260, 9},     {40, 260, 100, 3, 0}, {200, 2, 1, 300, 299}, {30, 5000, 4999, 1, 0},
    {9, 1, 0, 5000, 4999}, {6, 4500, 7, 4400, 4399}};

template <class Kind>
class MultiRate : public ::testing::Test {
 public:
  using State = typename Kind::State;
  using Tap = typename Kind::Tap;
  using Data = typename Kind::Data;

  static State* make(const Rate& r, const std::vector<Tap>& taps, const Data* past) {
    State* state = nullptr;
    EXPECT_EQ(Kind::rateInitAlloc(&state, taps.data(), r.taps, r.up, r.upPhase, r.down, r.downPhase, past),
              vekStsNoErr);
    return state;
  }

  static std::vector<Data> filter(const Rate& r, State* state, const std::vector<Data>& x, int iters,
                                  const std::vector<int>& pieces, bool inPlace) {
    std::vector<Data> y;
    for (int done = 0, piece = 0, n; done < iters; done += n, ++piece) {
      n = std::min(iters - done, pieces[std::min(size_t(piece), pieces.size() - 1)]);
      const auto from = x.begin() + int64_t(done) * r.down;
      std::vector<Data> in(from, from + int64_t(n) * r.down);
      const size_t outputs = size_t(n) * size_t(r.up);
      if (inPlace) in.resize(std::max(in.size(), outputs));
      const Flush flush = piece % 2 ? Flush::kFront : Flush::kBack;
      Guarded<Data> src(in, flush), dst(outputs, flush);
      EXPECT_EQ(inPlace ? Kind::runInPlace(src, n, state) : Kind::run(src, dst, n, state), vekStsNoErr);
      EXPECT_TRUE(src.intact() && dst.intact());
      auto out = (inPlace ? src : dst).values();
      y.insert(y.end(), out.begin(), out.begin() + int64_t(outputs));
    }
    return y;
  }
};
TYPED_TEST_SUITE(MultiRate, FirKinds);

TYPED_TEST(MultiRate, IsUpSamplingFilteringAndDownSampling) {
  using Kind = TypeParam;
  using Data = typename Kind::Data;
  for (const Rate& r : kRates) {
    SCOPED_TRACE(::testing::PrintToString(r));
    const int iters = std::max(3, 1500 / std::max(r.up, r.down));
    const auto h = randomSignal<typename Kind::Tap>(size_t(r.taps));
    const size_t past = size_t((r.taps + r.up - 1) / r.up);
    const Stream<Data> x{randomSignal<Data>(past), randomSignal<Data>(size_t(iters) * size_t(r.down))};
    const Stream<Data> fresh{{}, x.now};
    const auto want = filtered<Kind>(r, h, x), wantFresh = filtered<Kind>(r, h, fresh);
    inEverySlot([&](int) {
      for (bool inPlace : {false, true}) {
        for (const auto& cut : {std::vector<int>{100000}, {1, 2, 1, 40, 7, 300}}) {
          auto* state = this->make(r, h, x.past.data());
          ASSERT_TRUE(closeTo<Kind>(this->filter(r, state, x.now, iters, cut, inPlace), want, r.taps, 0)) << inPlace;
          ASSERT_EQ(Kind::release(state), vekStsNoErr);
        }
      }
      auto* state = this->make(r, h, nullptr);
      ASSERT_TRUE(closeTo<Kind>(this->filter(r, state, x.now, iters, {5}, false), wantFresh, r.taps, 0));
      Kind::release(state);
    });
  }
}

TYPED_TEST(MultiRate, InitStaysInsideABufferOfTheDocumentedSize) {
  using Kind = TypeParam;
  using Data = typename Kind::Data;
  inEverySlot([&](int) {
    for (const Rate& r : kRates) {
      auto h = randomSignal<typename Kind::Tap>(size_t(r.taps));
      auto past = randomSignal<Data>(size_t((r.taps + r.up - 1) / r.up));
      const int iters = std::max(1, 600 / r.down);
      const auto x = randomSignal<Data>(size_t(iters) * size_t(r.down));
      auto* owned = this->make(r, h, past.data());
      const auto want = this->filter(r, owned, x, iters, {iters}, false);
      Kind::release(owned);
      for (size_t shift = 0; shift < 64; shift += r.taps == 13 ? 1 : 31) {
        Guarded<Vek8u> buffer(Kind::rateBufferSize(r.taps, r.up, r.down), Flush::kBack, shift);
        auto taps = h;
        auto line = past;
        typename Kind::State* state = nullptr;
        ASSERT_EQ(
            Kind::rateInit(&state, taps.data(), r.taps, r.up, r.upPhase, r.down, r.downPhase, line.data(), buffer),
            vekStsNoErr);
        std::fill(taps.begin(), taps.end(), typename Kind::Tap{});
        std::fill(line.begin(), line.end(), Data{});
        ASSERT_TRUE(sameVectors(this->filter(r, state, x, iters, {iters}, false), want)) << r << ", shift " << shift;
        ASSERT_EQ(Kind::release(state), vekStsNoErr);
        ASSERT_TRUE(buffer.intact()) << r << ", shift " << shift;
      }
    }
  });
}

TYPED_TEST(MultiRate, NonFiniteSamplesReachTheirOutputsOnly) {
  using Kind = TypeParam;
  using Data = typename Kind::Data;
  inEverySlot([&](int) {
    for (const Rate& r : kRates) {
      const auto h = randomSignal<typename Kind::Tap>(size_t(r.taps));
      const int past = (r.taps + r.up - 1) / r.up, iters = r.up > 1000 ? 2 : 20;
      Stream<Data> x{randomSignal<Data>(size_t(past)), randomSignal<Data>(size_t(iters) * size_t(r.down))};
      for (int at : {-past, 0, r.down * iters / 2}) {
        auto bad = x;
        (at < 0 ? bad.past[size_t(-at - 1)] : bad.now[size_t(at)]) = vektest::make<Data>(std::nan(""), 0);
        auto* state = this->make(r, h, bad.past.data());
        const auto y = this->filter(r, state, bad.now, iters, {iters}, false);
        Kind::release(state);
        const auto want = filtered<Kind>(r, h, bad);
        for (size_t i = 0; i < y.size(); ++i)
          ASSERT_EQ(std::isnan(std::abs(value(y[i]))), std::isnan(std::abs(want[i].sum))) << r << ", output " << i;
      }
    }
  });
}

TYPED_TEST(MultiRate, StatusesInOrderAndMemory) {
  using Kind = TypeParam;
  const auto h = randomSignal<typename Kind::Tap>(100);
  inEverySlot([&](int) {
    typename Kind::State* state = nullptr;
    const auto init = [&](int taps, int up, int upPhase, int down, int downPhase) {
      std::vector<Vek8u> buffer(Kind::rateBufferSize(100, 3, 3));
      const VekStatus a = Kind::rateInitAlloc(&state, h.data(), taps, up, upPhase, down, downPhase, nullptr);
      EXPECT_EQ(Kind::rateInit(&state, h.data(), taps, up, upPhase, down, downPhase, nullptr, buffer.data()), a);
      return a;
    };
    EXPECT_EQ(Kind::rateInitAlloc(nullptr, h.data(), 0, 0, 0, 0, 0, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(Kind::rateInit(&state, h.data(), 0, 0, 0, 0, 0, nullptr, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(init(0, 0, 5, 0, 5), vekStsFIRLenErr);
    EXPECT_EQ(init(9, 0, 5, 2, 5), vekStsFIRMRFactorErr);
    EXPECT_EQ(init(9, 2, 5, -1, 5), vekStsFIRMRFactorErr);
    EXPECT_EQ(init(9, 2, 2, 2, 0), vekStsFIRMRPhaseErr);
    EXPECT_EQ(init(9, 2, -1, 2, 0), vekStsFIRMRPhaseErr);
    EXPECT_EQ(init(9, 2, 0, 2, 2), vekStsFIRMRPhaseErr);
    EXPECT_EQ(init(9, 2, 0, 2, -1), vekStsFIRMRPhaseErr);
    EXPECT_EQ(state, nullptr);

    // Factors of 1 make a single-rate state, which takes single samples.
    ASSERT_EQ(Kind::rateInitAlloc(&state, h.data(), 100, 1, 0, 1, 0, nullptr), vekStsNoErr);
    typename Kind::Data y{};
    EXPECT_EQ(Kind::one({}, &y, state), vekStsNoErr);
    Kind::release(state);

    {
      Heap none(0);
      EXPECT_EQ(Kind::rateInitAlloc(&state, h.data(), 100, 3, 0, 2, 0, nullptr), vekStsMemAllocErr);
    }
    state = this->make({100, 3, 0, 2, 0}, h, nullptr);
    EXPECT_EQ(Kind::one({}, &y, state), vekStsContextMatchErr);
    // In place without memory: nothing happens.
    const auto x = randomSignal<typename Kind::Data>(30);
    auto data = x;
    {
      Heap none(0);
      EXPECT_EQ(Kind::runInPlace(data.data(), 10, state), vekStsMemAllocErr);
    }
    EXPECT_TRUE(sameVectors(data, x));
    Kind::release(state);
  });
}

TEST(MultiRateIds, FurtherIdsOfTheRealKind) {
  const float taps[] = {1, 2, 4}, x[] = {1, 0};
  inEverySlot([&](int) {
    for (uint32_t id : {0x46493333u, 0x46493334u}) {
      VeksFIRState_32f* state = nullptr;
      ASSERT_EQ(veksFIRMRInitAlloc_32f(&state, taps, 3, 2, 0, 1, 0, nullptr), vekStsNoErr);
      memcpy(state, &id, sizeof id);
      float y[4];
      EXPECT_EQ(veksFIR_32f(x, y, 2, state), vekStsNoErr);
      EXPECT_TRUE(y[0] == 1 && y[1] == 2 && y[2] == 4 && y[3] == 0);
      EXPECT_EQ(veksFIROne_32f(1, y, state), vekStsContextMatchErr);
      EXPECT_EQ(veksFIRFree_32f(state), vekStsNoErr);
    }
  });
}

}  // namespace
