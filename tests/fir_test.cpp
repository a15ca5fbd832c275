// SPDX-License-Identifier: Apache-2.0
// Single-rate FIR filters against their sums: pieces, buffers, statuses, the choice of the way.
#include "tests/support/definitions.h"

namespace {

using namespace vektest;

template <class Kind>
class Fir : public ::testing::Test {
 public:
  using State = typename Kind::State;
  using Tap = typename Kind::Tap;
  using Data = typename Kind::Data;

  static State* make(const std::vector<Tap>& taps, const Data* past) {
    State* state = nullptr;
    EXPECT_EQ(Kind::initAlloc(&state, taps.data(), int(taps.size()), past), vekStsNoErr);
    return state;
  }

  // Outputs of a signal filtered in pieces of the given sizes (the last one repeated), each between guard pages.
  static std::vector<Data> filter(State* state, const std::vector<Data>& x, const std::vector<int>& pieces,
                                  bool inPlace) {
    std::vector<Data> y;
    for (size_t at = 0, piece = 0; at < x.size(); ++piece) {
      const size_t n = std::min(x.size() - at, size_t(pieces[std::min(piece, pieces.size() - 1)]));
      const Flush flush = piece % 2 ? Flush::kFront : Flush::kBack;
      Guarded<Data> src(std::vector<Data>(x.begin() + at, x.begin() + at + n), flush), dst(n, flush);
      if (n == 1 && piece % 2) {
        EXPECT_EQ(Kind::one(src.at(0), dst.data(), state), vekStsNoErr);
      } else if (inPlace) {
        EXPECT_EQ(Kind::runInPlace(src, int(n), state), vekStsNoErr);
      } else {
        EXPECT_EQ(Kind::run(src, dst, int(n), state), vekStsNoErr);
      }
      EXPECT_TRUE(src.intact() && dst.intact());
      const std::vector<Data> out = (inPlace && !(n == 1 && piece % 2) ? src : dst).values();
      y.insert(y.end(), out.begin(), out.end());
      at += n;
    }
    return y;
  }
};
TYPED_TEST_SUITE(Fir, FirKinds);

// Every length of taps around packs and thresholds, whole or in pieces, out of place and in place, with a past or none.
TYPED_TEST(Fir, IsTheDefinedSumHoweverTheSignalIsCut) {
  using Kind = TypeParam;
  std::vector<int> singly(150, 1);
  singly.push_back(5000);
  // Pieces of 5000 in place, which five taps get to see, are longer than the scratch.
  const std::vector<std::vector<int>> cuts = {{5000}, singly, {3, 1, 700, 1, 12, 513}, {64, 257, 31}};
  for (int taps : {1, 2, 3, 4, 5, 8, 9, 15, 16, 17, 31, 32, 33, 63, 64, 65, 130, 520}) {
    SCOPED_TRACE(taps);
    const Rate r = {taps, 1, 0, 1, 0};
    const auto h = randomSignal<typename Kind::Tap>(size_t(taps));
    Stream<typename Kind::Data> x{randomSignal<typename Kind::Data>(size_t(taps)),
                                  randomSignal<typename Kind::Data>(taps == 5  ? 9001
                                                                    : taps % 2 ? 1500
                                                                               : 1207)};
    double blockError = 0;
    for (const auto& t : h) blockError += 20 * std::abs(value(t));
    const auto want = filtered<Kind>(r, h, x);
    const Stream<typename Kind::Data> fresh{{}, x.now};
    const auto wantFresh = filtered<Kind>(r, h, fresh);
    inEverySlot([&](int) {
      for (const auto& cut : cuts) {
        for (bool inPlace : {false, true}) {
          auto* state = this->make(h, x.past.data());
          ASSERT_TRUE(closeTo<Kind>(this->filter(state, x.now, cut, inPlace), want, taps, blockError))
              << "pieces of " << cut[0] << (inPlace ? " in place" : "");
          ASSERT_EQ(Kind::release(state), vekStsNoErr);
        }
      }
      auto* state = this->make(h, nullptr);
      ASSERT_TRUE(closeTo<Kind>(this->filter(state, x.now, cuts[0], false), wantFresh, taps, blockError));
      Kind::release(state);
    });
  }
}

// A transform smears rounding errors of the largest sample over its whole block; a direct sum does not. So a huge
// sample tells which way outputs came that do not contain it.
template <class Kind>
bool smeared(int taps, int n, int hugeAt, bool inPlace) {
  using Data = typename Kind::Data;
  std::vector<typename Kind::Tap> h(size_t(taps), vektest::make<typename Kind::Tap>(0.7, 0.3));
  std::vector<Data> x = randomSignal<Data>(size_t(n)), y(x.size());
  auto clean = x;
  x[size_t(hugeAt)] = vektest::make<Data>(3e30, 1e30);
  const auto outputs = [&](std::vector<Data>& in) {
    auto* state = Fir<Kind>::make(h, nullptr);
    EXPECT_EQ(inPlace ? Kind::runInPlace(in.data(), n, state) : Kind::run(in.data(), y.data(), n, state), vekStsNoErr);
    Kind::release(state);
    return inPlace ? in : y;
  };
  const auto a = outputs(x), b = outputs(clean);
  // Behind the reach of the huge sample, and still in its block.
  for (int i = hugeAt + taps; i < std::min(n, hugeAt + taps + taps / 2); ++i)
    if (std::abs(value(a[size_t(i)]) - value(b[size_t(i)])) > 1) return true;
  return false;
}

TYPED_TEST(Fir, TakesTheTransformExactlyWhereStated) {
  using Kind = TypeParam;
  const int taps = Kind::fftTaps, call = Kind::fftCall;
  inEverySlot([&](int) {
    EXPECT_FALSE(smeared<Kind>(taps - 1, 2000, 100, false));
    EXPECT_TRUE(smeared<Kind>(taps, 2000, 100, false));
    EXPECT_FALSE(smeared<Kind>(taps, call, 100, false));
    EXPECT_TRUE(smeared<Kind>(taps, call + 1, 100, false));
    // In place the samples left behind a chunk decide.
    EXPECT_FALSE(smeared<Kind>(taps, 4096, 100, true));
    EXPECT_FALSE(smeared<Kind>(taps, 4096 + call, 100, true));
    EXPECT_TRUE(smeared<Kind>(taps, 4096 + call + 1, 100, true));
    EXPECT_FALSE(smeared<Kind>(taps, 4096 + call + 1, 4100, true));
    EXPECT_FALSE(smeared<Kind>(taps - 1, 9000, 100, true));
  });
}

TYPED_TEST(Fir, NonFiniteSamplesReachTheirOutputsOnly) {
  using Kind = TypeParam;
  using Data = typename Kind::Data;
  const double inf = std::numeric_limits<double>::infinity(), nan = std::nan("");
  inEverySlot([&](int) {
    for (int taps : {1, 5, 11, 15, 40}) {
      const auto h = randomSignal<typename Kind::Tap>(size_t(taps));
      for (int n : {1, 3, 30, 100, 200}) {
        for (int at : {-taps, -taps + 1, -1, 0, 1, n / 2, n - 1}) {
          if (at >= n) continue;
          for (double bad : {nan, inf}) {
            Stream<Data> x{randomSignal<Data>(size_t(taps)), randomSignal<Data>(size_t(n))};
            (at < 0 ? x.past[size_t(-at - 1)] : x.now[size_t(at)]) = vektest::make<Data>(bad, 1);
            auto* state = this->make(h, x.past.data());
            std::vector<Data> y(x.now.size());
            ASSERT_EQ(Kind::run(x.now.data(), y.data(), n, state), vekStsNoErr);
            Kind::release(state);
            for (int i = 0; i < n; ++i)
              ASSERT_EQ(!std::isfinite(std::abs(value(y[size_t(i)]))), i >= at && i < at + taps)
                  << taps << " taps, sample " << at << ", output " << i << " of " << n;
          }
        }
      }
    }
  });
}

TYPED_TEST(Fir, InitStaysInsideABufferOfTheDocumentedSize) {
  using Kind = TypeParam;
  using Data = typename Kind::Data;
  inEverySlot([&](int) {
    for (int taps : {1, 2, 15, 16, 31, 32, 63, 64, 127, 129, 600, 1025, 2500}) {
      auto h = randomSignal<typename Kind::Tap>(size_t(taps));
      Stream<Data> x{randomSignal<Data>(size_t(taps)), randomSignal<Data>(600)};
      auto* owned = this->make(h, x.past.data());
      const auto want = this->filter(owned, x.now, {600}, false);
      Kind::release(owned);
      const size_t size = Kind::bufferSize(taps);
      for (size_t shift = 0; shift < 64; shift += taps < 100 ? 1 : 21) {
        Guarded<Vek8u> buffer(size, shift % 2 ? Flush::kFront : Flush::kBack, shift);
        auto taken = h;
        auto past = x.past;
        typename Kind::State* state = nullptr;
        ASSERT_EQ(Kind::init(&state, taken.data(), taps, past.data(), buffer), vekStsNoErr);
        std::fill(taken.begin(), taken.end(), typename Kind::Tap{});
        std::fill(past.begin(), past.end(), Data{});
        ASSERT_TRUE(sameVectors(this->filter(state, x.now, {600}, false), want)) << taps << " taps, shift " << shift;
        ASSERT_EQ(Kind::release(state), vekStsNoErr);  // the caller's memory stays
        ASSERT_TRUE(buffer.intact()) << taps << " taps, shift " << shift;
      }
    }
  });
}

template <class A, class B>
VekStatus crossRun(typename A::State* state) {
  typename B::Data x{}, y{};
  return B::run(&x, &y, 1, reinterpret_cast<typename B::State*>(state));
}
template <class A, class B>
void crossKinds() {
  auto* state = Fir<A>::make(randomSignal<typename A::Tap>(4), nullptr);
  const bool same = std::is_same_v<A, B>;
  typename B::Data y{};
  auto* other = reinterpret_cast<typename B::State*>(state);
  EXPECT_EQ((crossRun<A, B>(state)), same ? vekStsNoErr : vekStsContextMatchErr);
  EXPECT_EQ(B::one({}, &y, other), same ? vekStsNoErr : vekStsContextMatchErr);
  if (!same) {
    EXPECT_EQ(B::release(other), vekStsContextMatchErr);
  }
  EXPECT_EQ(A::release(state), vekStsNoErr);
}

TYPED_TEST(Fir, StatusesOwnershipAndIds) {
  using Kind = TypeParam;
  inEverySlot([&](int) {
    const auto h = randomSignal<typename Kind::Tap>(100);
    typename Kind::State* state = nullptr;
    std::vector<Vek8u> buffer(Kind::bufferSize(100));
    EXPECT_EQ(Kind::initAlloc(nullptr, h.data(), 0, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(Kind::initAlloc(&state, h.data(), 0, nullptr), vekStsFIRLenErr);
    EXPECT_EQ(Kind::init(&state, h.data(), 0, nullptr, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(Kind::init(&state, h.data(), 0, nullptr, buffer.data()), vekStsFIRLenErr);
    EXPECT_EQ(state, nullptr);
    for (int requests = 0;; ++requests) {
      Heap heap(requests);
      const VekStatus status = Kind::initAlloc(&state, h.data(), 100, nullptr);
      if (status == vekStsNoErr) {
        EXPECT_GT(requests, 0);
        break;
      }
      ASSERT_EQ(status, vekStsMemAllocErr);
      ASSERT_EQ(heap.out(), 0);
      ASSERT_EQ(state, nullptr);
    }
    typename Kind::Data x{};
    EXPECT_EQ(Kind::run(nullptr, &x, 0, state), vekStsNullPtrErr);
    EXPECT_EQ(Kind::run(&x, &x, 0, state), vekStsSizeErr);
    Kind::release(state);
    crossKinds<Kind, Kind32f>();
    crossKinds<Kind, Kind32fc>();
    crossKinds<Kind, Kind64f>();
    crossKinds<Kind, Kind64fc>();
  });
}

}  // namespace
