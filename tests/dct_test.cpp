// SPDX-License-Identifier: Apache-2.0
// Cosine transforms of every path against their sums, inside buffers of the documented sizes.
#include "tests/support/definitions.h"

namespace {

using namespace vektest;
using Bytes = Guarded<Vek8u>;
using Doubles = std::vector<double>;

template <class A, class B>
double relativeError(const A& got, const B& want) {
  double error = 0, total = 0;
  for (size_t i = 0; i < want.size(); ++i) {
    error += (double(got[i]) - want[i]) * (double(got[i]) - want[i]);
    total += double(want[i]) * want[i];
  }
  return std::sqrt(error / total);
}
// Both directions as one family of functions.
struct Family {
  void* spec = nullptr;
  bool forward;
  explicit Family(bool f) : forward(f) {}
  VekStatus init(int len, Vek8u* buffer) {
    return initBy(len, buffer, isPowerOfTwo(size_t(len)) && len >= 2048 ? buffer : nullptr);
  }
  VekStatus initBy(int len, Vek8u* buffer, Vek8u* initBuffer) {
    return forward ? veksDCTFwdInit_32f((VeksDCTFwdSpec_32f**)&spec, len, vekAlgHintNone, buffer, initBuffer)
                   : veksDCTInvInit_32f((VeksDCTInvSpec_32f**)&spec, len, vekAlgHintNone, buffer, initBuffer);
  }
  VekStatus initAlloc(int len) {
    return forward ? veksDCTFwdInitAlloc_32f((VeksDCTFwdSpec_32f**)&spec, len, vekAlgHintFast)
                   : veksDCTInvInitAlloc_32f((VeksDCTInvSpec_32f**)&spec, len, vekAlgHintFast);
  }
  VekStatus run(const float* x, float* y, Vek8u* work) const {
    return forward ? veksDCTFwd_32f(x, y, (const VeksDCTFwdSpec_32f*)spec, work)
                   : veksDCTInv_32f(x, y, (const VeksDCTInvSpec_32f*)spec, work);
  }
  VekStatus runInPlace(float* x, Vek8u* work) const {
    return forward ? veksDCTFwd_32f_I(x, (const VeksDCTFwdSpec_32f*)spec, work)
                   : veksDCTInv_32f_I(x, (const VeksDCTInvSpec_32f*)spec, work);
  }
  VekStatus free() const {
    return forward ? veksDCTFwdFree_32f((VeksDCTFwdSpec_32f*)spec) : veksDCTInvFree_32f((VeksDCTInvSpec_32f*)spec);
  }
};

// Every path: straight-line, direct, powers of two short and long, chirp of even, odd and prime lengths.
const int kLengths[] = {1,   2,   3,   4,   5,   6,   7,   8,    9,    12,   15,   16,   17,   31,  32,  47,
                        63,  64,  65,  84,  85,  86,  87,  88,   90,   97,   100,  127,  128,  129, 130, 200,
                        255, 256, 257, 360, 500, 509, 512, 1000, 1001, 1009, 1024, 2048, 2050, 4096};

TEST(Dct, MatchesItsSumsInsideBuffersOfTheStatedSize) {
  for (int len : kLengths) {
    const std::vector<float> x = randomSignal<float>(size_t(len));
    const Doubles want[] = {cosines(x, true), cosines(x, false)};
    const DctSizes sizes = dctSizes(size_t(len));
    inEverySlot([&](int slot) {
      SCOPED_TRACE(len);
      for (bool forward : {true, false}) {
        const size_t shift = size_t((len + slot * 5) % 64);
        const Flush flush = forward ? Flush::kBack : Flush::kFront;
        Bytes buffer(sizes.spec, flush, shift), work(sizes.work, flush, 63 - shift);
        Guarded<float> in(x, flush), out(x.size(), flush), both(x, flush);
        Family f(forward);
        ASSERT_EQ(f.init(len, buffer), vekStsNoErr);
        ASSERT_EQ(f.run(in, out, work), vekStsNoErr);
        ASSERT_EQ(f.runInPlace(both, work), vekStsNoErr);
        EXPECT_LT(relativeError(out.values(), want[forward]), dctError(size_t(len))) << forward;
        EXPECT_LT(relativeError(both.values(), want[forward]), dctError(size_t(len))) << forward;
        EXPECT_EQ(in.values(), x);
        EXPECT_TRUE(buffer.intact() && work.intact() && in.intact() && out.intact() && both.intact());
      }
    });
  }
}

// A cosine of the basis, far too long for the sums, has one coefficient; and the inverse undoes the forward transform.
TEST(Dct, LongLengths) {
  for (int len : {4098, 8192, 16384, 65536, 65537, 524288, 1000000, 1000003, 1048576}) {
    const size_t n = size_t(len), bin = n / 3 + 1;
    const std::vector<float> x = randomSignal<float>(n);
    std::vector<float> tone(n), unit(n);
    unit[bin] = 1;
    for (size_t j = 0; j < n; ++j)
      tone[j] =
          float(std::sqrt(2.0 / double(n)) * std::cos(M_PI * double((2 * j + 1) * bin % (4 * n)) / double(2 * n)));
    inEverySlot([&](int slot) {
      if (slot != vek::kSlot_mx && slot < vek::kSlot_e9 && len > 300000)
        return;  // the narrow slots differ in nothing that is long
      SCOPED_TRACE(len);
      Family forward(true), inverse(false);
      ASSERT_EQ(forward.initAlloc(len), vekStsNoErr);
      ASSERT_EQ(inverse.initAlloc(len), vekStsNoErr);
      std::vector<float> y(n), z(n);
      ASSERT_EQ(forward.run(tone.data(), y.data(), nullptr), vekStsNoErr);
      EXPECT_LT(relativeError(y, unit), 2 * dctError(size_t(len)));
      ASSERT_EQ(inverse.run(unit.data(), y.data(), nullptr), vekStsNoErr);
      EXPECT_LT(relativeError(y, tone), 2 * dctError(size_t(len)));
      ASSERT_EQ(forward.run(x.data(), y.data(), nullptr), vekStsNoErr);
      ASSERT_EQ(inverse.run(y.data(), z.data(), nullptr), vekStsNoErr);
      EXPECT_LT(relativeError(z, x), 2 * dctError(size_t(len)));
      z = x;
      ASSERT_EQ(forward.runInPlace(z.data(), nullptr), vekStsNoErr);
      EXPECT_LT(relativeError(z, y), dctError(size_t(len)));
      ASSERT_EQ(inverse.runInPlace(z.data(), nullptr), vekStsNoErr);
      EXPECT_LT(relativeError(z, x), 2 * dctError(size_t(len)));
      EXPECT_EQ(forward.free(), vekStsNoErr);
      EXPECT_EQ(inverse.free(), vekStsNoErr);
    });
  }
}

TEST(Dct, RefusesInTheStatedOrder) {
  inEverySlot([](int) {
    alignas(64) Vek8u buffer[2048] = {};
    float x[16] = {}, y[16] = {42};
    for (bool forward : {true, false}) {
      Family f(forward);
      EXPECT_EQ(f.initAlloc(0), vekStsSizeErr);
      EXPECT_EQ(f.init(-1, nullptr), vekStsSizeErr);
      EXPECT_EQ(f.init(1 << 28, nullptr), vekStsSizeErr);
      EXPECT_EQ(f.init((1 << 27) + 1, nullptr), vekStsSizeErr);
      EXPECT_EQ(f.init(67108865, nullptr), vekStsSizeErr);
      EXPECT_EQ(f.init(67108863, nullptr), vekStsNullPtrErr);
      EXPECT_EQ(f.initAlloc(33554433), vekStsSizeErr);
      EXPECT_EQ(f.init(16, nullptr), vekStsNullPtrErr);
      EXPECT_EQ(f.initBy(2048, buffer, nullptr), vekStsNullPtrErr);
      EXPECT_EQ(f.spec, nullptr);
      ASSERT_EQ(f.init(16, buffer), vekStsNoErr);
      EXPECT_EQ(f.run(nullptr, y, nullptr), vekStsNullPtrErr);
      EXPECT_EQ(f.run(x, nullptr, nullptr), vekStsNullPtrErr);
      Family other(forward);
      EXPECT_EQ(other.run(x, y, nullptr), vekStsNullPtrErr);
      EXPECT_EQ(other.free(), vekStsNullPtrErr);
      Vek32s* id = static_cast<Vek32s*>(f.spec);
      EXPECT_EQ(*id, 21);
      *id = 6;
      EXPECT_EQ(f.run(x, y, nullptr), vekStsContextMatchErr);
      EXPECT_EQ(f.free(), vekStsContextMatchErr);
      EXPECT_EQ(y[0], 42);
    }
  });
}

TEST(Dct, ReportsMissingMemory) {
  inEverySlot([](int) {
    Family direct(true), pow2(true), chirp(false), none(false);
    ASSERT_EQ(direct.initAlloc(85), vekStsNoErr);
    ASSERT_EQ(pow2.initAlloc(1024), vekStsNoErr);
    ASSERT_EQ(chirp.initAlloc(86), vekStsNoErr);
    std::vector<float> x(1024), y(1024, 42);
    Heap empty(0);
    EXPECT_EQ(none.initAlloc(1024), vekStsMemAllocErr);
    EXPECT_EQ(direct.run(x.data(), y.data(), nullptr), vekStsMemAllocErr);
    EXPECT_EQ(chirp.run(x.data(), y.data(), nullptr), vekStsMemAllocErr);
    EXPECT_EQ(y, std::vector<float>(1024, 42));
    EXPECT_EQ(pow2.run(x.data(), y.data(), nullptr), vekStsNoErr);
    for (const Family* f : {&direct, &pow2, &chirp}) EXPECT_EQ(f->free(), vekStsNoErr);
  });
}

}  // namespace
