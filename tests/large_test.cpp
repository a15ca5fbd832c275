// SPDX-License-Identifier: Apache-2.0
// Lengths just below 2^31 and extreme indices: sums and products of lengths that leave 32 bits. The arrays are one
// small file mapped over and over, so that gigabytes of addresses take little memory.
#include <gtest/gtest.h>
#include <limits.h>
#include <sys/mman.h>
#include <unistd.h>

#include "vek.h"

namespace vektest {
namespace {

// `bytes` bytes of addresses that repeat a block of 16 MiB.
class Repeated {
 public:
  explicit Repeated(size_t bytes) : size_((bytes + kBlock - 1) / kBlock * kBlock) {
    const int file = memfd_create("repeated", 0);
    base_ = static_cast<char*>(mmap(nullptr, size_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0));
    bool good = file >= 0 && base_ != MAP_FAILED && ftruncate(file, kBlock) == 0;
    for (size_t at = 0; good && at < size_; at += kBlock)
      good = mmap(base_ + at, kBlock, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file, 0) != MAP_FAILED;
    if (file >= 0) close(file);
    EXPECT_TRUE(good) << "no room for the mapping";
  }
  Repeated(const Repeated&) = delete;
  Repeated& operator=(const Repeated&) = delete;
  ~Repeated() { munmap(base_, size_); }
  template <class T>
  T* as() {
    return reinterpret_cast<T*>(base_);
  }

 private:
  static constexpr size_t kBlock = 16 << 20;
  size_t size_;
  char* base_;
};

constexpr int kLen = INT_MAX - 20;  // not a multiple of any block

TEST(Large, LengthsBelowTwoToTheThirtyOne) {
  Repeated memory(size_t(kLen) * 2);
  Vek16s* const h = memory.as<Vek16s>();
  ASSERT_EQ(veksSet_16s(-3, h, kLen), vekStsNoErr);
  EXPECT_EQ(h[kLen - 1], -3);
  Vek32s sum = 0;
  ASSERT_EQ(veksSum_16s32s_Sfs(h, kLen, &sum, 4), vekStsNoErr);
  EXPECT_EQ(sum, int(-(3LL * kLen + 8) / 16));
  ASSERT_EQ(veksAbs_16s_I(h, kLen), vekStsNoErr);
  Vek16s most = 0;
  ASSERT_EQ(veksMax_16s(h, kLen, &most), vekStsNoErr);
  EXPECT_EQ(most, 3);
  EXPECT_EQ(h[kLen - 1], 3);
}

// The last element lies at an index that times its size does not fit in 32 bits, before the base as well as behind it.
TEST(Large, ExtremeIndicesOfTheTwins) {
  alignas(16) Vek64f x[4] = {1, 2, 3, 4}, y[4] = {};
  const auto moved = [](Vek64f* p, long long index) {
    return reinterpret_cast<Vek64f*>(reinterpret_cast<uintptr_t>(p) - uintptr_t(index * 8));
  };
  for (const int src : {INT_MIN, INT_MIN + 1, -1, 0, INT_MAX})
    for (const int dst : {INT_MIN, 1 << 29, INT_MAX}) {
      for (Vek64f& v : y) v = 0;
      ASSERT_EQ(veksCopy_64f_Idx(moved(x, src), src, moved(y, dst), dst, 4), vekStsNoErr);
      for (int i = 0; i < 4; ++i) EXPECT_EQ(y[i], x[i]) << src << " " << dst;
    }
}

}  // namespace
}  // namespace vektest
