// SPDX-License-Identifier: Apache-2.0
// Processor detection over recorded register sets.
#include <cpuid.h>
#include <gtest/gtest.h>
#include <string.h>

#include <algorithm>
#include <chrono>
#include <vector>

#include "core/cpu.h"

namespace {

using vek::CpuidRegs;

struct Leaf {
  uint32_t leaf, subleaf;
  CpuidRegs regs;
};

const char* const kChecked = "GenuineOrvel";
const char* const kAmd = "AuthenticAMD";

// A processor as its registers. A leaf above the maximum reads as all ones, so that nothing relies on it unnoticed.
struct FakeCpu {
  const char* vendor;
  uint32_t maxLeaf, maxExtended;
  std::vector<Leaf> leaves;
  uint64_t xcr0 = 7;
  uint32_t mxcsrMask = 0xFFFF;

  vek::CpuidSource source() const {
    return {[](const void* self, uint32_t leaf, uint32_t sub) { return cast(self).read(leaf, sub); },
            [](const void* self) { return cast(self).readXcr0(); },
            [](const void* self) { return cast(self).mxcsrMask; }, this};
  }

 private:
  static const FakeCpu& cast(const void* self) { return *static_cast<const FakeCpu*>(self); }

  CpuidRegs read(uint32_t leaf, uint32_t subleaf) const {
    if (leaf == 0x80000000) return {maxExtended, 0, 0, 0};
    if (leaf == 0) {
      uint32_t text[3];
      memcpy(text, vendor, sizeof text);
      return {maxLeaf, text[0], text[2], text[1]};
    }
    if (leaf > (leaf < 0x80000000 ? maxLeaf : maxExtended) && leaf != 0x20000001) return {~0u, ~0u, ~0u, ~0u};
    for (const Leaf& l : leaves)
      if (l.leaf == leaf && l.subleaf == subleaf) return l.regs;
    return leaf == 0x20000001 ? CpuidRegs{~0u, ~0u, ~0u, ~0u} : CpuidRegs{};
  }

  uint64_t readXcr0() const {
    EXPECT_TRUE(read(1, 0).ecx >> 27 & 1) << "XGETBV is an illegal instruction on this processor";
    return xcr0;
  }
};

Leaf leaf1(uint32_t signature, uint32_t ecx, uint32_t edx = 0xBFEBFBFF) { return {1, 0, {signature, 0, ecx, edx}}; }
Leaf leaf7(uint32_t ebx) { return {7, 0, {0, ebx, 0, 0}}; }
Leaf cores(uint32_t count) { return {4, 0, {(count - 1) << 26 | 0x121, 0x01C0003F, 0x3F, 0}}; }
Leaf topology(uint32_t level, uint32_t ebx) { return {11, level, {0, ebx, 0, 0}}; }
Leaf extended(uint32_t ecx) { return {0x80000001, 0, {0, 0, ecx, 0x2C100800}}; }

constexpr uint32_t kExt = 0x80000008, kSandyEcx = 0x1FBAE3FF, kHaswellEcx = 0x7FFAFBFF, kHaswellEbx = 0x27AB;

struct Processor {
  const char* name;
  FakeCpu cpu;
  uint64_t features;
  int32_t slot;
  uint64_t enabled;
  VekCpuType type;
  int32_t cores;
};

// clang-format off
const Processor kProcessors[] = {
    {"x87 only", {kChecked, 2, 0, {leaf1(0x543, 0, 0x1BF)}}, 0, 0, 0, vekCpuUnknown, 1},
    {"SSE", {kChecked, 2, 0, {leaf1(0x6B1, 0, 0x383FBFF)}}, 3, 0, 3, vekCpuSSE, 1},
    {"64 bits alone", {"SomeOtherCpu", 1, kExt, {leaf1(0x600, 0, 0), extended(0)}}, 0, 0, 0, vekCpuX8664, 1},
    {"family 15", {kChecked, 5, kExt, {leaf1(0xF41, 0x649D), cores(1)}}, 0xF, 1, 0xF, vekCpuSSE3, 1},
    {"family 15, SSE2", {kChecked, 2, 0x80000004, {leaf1(0xF27, 0x4400)}}, 7, 0, 7, vekCpuSSE3, 1},
    {"family 16", {kChecked, 2, 0x80000004, {leaf1(0x100F27, 0x4400)}}, 7, 0, 7, vekCpuSSE2, 1},
    {"family 15, other vendor", {kAmd, 1, 0x80000018, {leaf1(0xF4A, 0, 0x78BFBFF), extended(0),
      {0x80000008, 0, {0, 0, 0x3001, 0}}}},
     7, 0, 7, vekCpuSSE2, 2},
    {"model 0F, dual", {kChecked, 10, kExt, {leaf1(0x6F6, 0xE3BD), cores(2)}}, 0x1F, 2, 0x1F, vekCpuSsse3Gen1, 2},
    {"model 0F, triple", {kChecked, 10, kExt, {leaf1(0x6FB, 0xE3BD), cores(3)}}, 0x1F, 2, 0x1F, vekCpuSsse3Gen1Quad, 3},
    {"model 0F, leaf 4 masked", {kChecked, 3, kExt, {leaf1(0x6FB, 0xE3BD)}}, 0x1F, 2, 0x1F, vekCpuSsse3Gen1, 1},
    {"model 0F, no SSSE3", {kChecked, 10, kExt, {leaf1(0x6F6, 0xE1BD), cores(2)}}, 0xF, 1, 0xF, vekCpuSSE3, 2},
    {"model 0F, other vendor", {"OtherVendor!", 10, kExt, {leaf1(0x6F6, 0xE3BD), cores(2)}},
     0x1F, 2, 0x1F, vekCpuSSSE3, 1},
    {"model 17", {kChecked, 10, kExt, {leaf1(0x10676, 0x8E3FD), cores(2)}}, 0x5F, 4, 0x5F, vekCpuSse41Gen, 2},
    {"model 17, no SSE4.1", {kChecked, 10, kExt, {leaf1(0x10676, 0xE3FD), cores(2)}}, 0x1F, 2, 0x1F, vekCpuSSSE3, 2},
    {"model 1C", {kChecked, 10, kExt, {leaf1(0x106C2, 0x40C39D), cores(1)}}, 0x3F, 3, 0x3F, vekCpuLumen, 1},
    {"model 1C, no MOVBE", {kChecked, 10, kExt, {leaf1(0x106C2, 0xC39D), cores(1)}}, 0x1F, 2, 0x1F, vekCpuSSSE3, 1},
    {"model 1A", {kChecked, 11, kExt, {leaf1(0x106A5, 0x98E3BD), cores(8), topology(0, 2), topology(1, 8)}},
     0xDF, 4, 0xDF, vekCpuSse42Gen, 4},
    {"model 1A, AVX", {kChecked, 10, kExt, {leaf1(0x106A5, kSandyEcx), cores(4)}}, 0xFDF, 5, 0xFDF, vekCpuAVX, 4},
    {"model 2C, one thread a core", {kChecked, 11, kExt, {leaf1(0x206C2, 0x29EE3FF), topology(0, 1), topology(1, 6)}},
     0xCDF, 4, 0xCDF, vekCpuSSE42, 6},
    {"leaf 11 empty", {kChecked, 11, kExt, {leaf1(0x206C2, 0x29EE3FF), cores(6)}}, 0xCDF, 4, 0xCDF, vekCpuSSE42, 6},
    {"AVX", {kChecked, 13, kExt, {leaf1(0x206A7, kSandyEcx), cores(8), topology(0, 2), topology(1, 8)}},
     0xFDF, 5, 0xFDF, vekCpuAVX, 4},
    {"AVX, YMM not saved", {kChecked, 10, kExt, {leaf1(0x206A7, kSandyEcx)}, 3}, 0xDDF, 4, 0xCDF, vekCpuAVX, 1},
    {"AVX, XMM not saved", {kChecked, 10, kExt, {leaf1(0x206A7, kSandyEcx)}, 5}, 0xDDF, 4, 0xCDF, vekCpuAVX, 1},
    {"AVX, no XSAVE", {kChecked, 10, kExt, {leaf1(0x206A7, kSandyEcx & ~(1u << 27))}}, 0xDDF, 4, 0xCDF, vekCpuAVX, 1},
    {"model 3C", {kChecked, 10, kExt, {leaf1(0x306C3, kHaswellEcx), leaf7(kHaswellEbx), cores(8), extended(0x21)}},
     0xEFFF, 6, 0xEFFF, vekCpuAVX2, 8},
    {"model 3C, leaf 7 masked", {kChecked, 6, kExt, {leaf1(0x306C3, kHaswellEcx), leaf7(kHaswellEbx)}},
     0x6FFF, 5, 0x6FDF, vekCpuAVX, 1},
    {"model 3C, no FMA", {kChecked, 10, kExt, {leaf1(0x306C3, kHaswellEcx & ~0x1000u), leaf7(kHaswellEbx)}},
     0x6FFF, 5, 0x6FDF, vekCpuAVX, 1},
    {"model 3C, no BMI1", {kChecked, 10, kExt, {leaf1(0x306C3, kHaswellEcx), leaf7(kHaswellEbx & ~0x8u)}},
     0x6FFF, 5, 0x6FDF, vekCpuAVX, 1},
    {"model 3C, no BMI2", {kChecked, 10, kExt, {leaf1(0x306C3, kHaswellEcx), leaf7(kHaswellEbx & ~0x100u)}},
     0x6FFF, 5, 0x6FDF, vekCpuAVX, 1},
    {"model 3C, no AVX2", {kChecked, 10, kExt, {leaf1(0x306C3, kHaswellEcx), leaf7(kHaswellEbx & ~0x20u)}},
     0x6FFF, 5, 0x6FDF, vekCpuAVX, 1},
    {"AVX2, YMM not saved", {kChecked, 10, kExt, {leaf1(0x306C3, kHaswellEcx), leaf7(kHaswellEbx)}, 3},
     0xEDFF, 4, 0xCDF, vekCpuAVX2, 1},
    {"newer", {kChecked, 22, kExt, {leaf1(0x50654, 0x7FFEFBFF), leaf7(0xD39FFFFB), cores(16), extended(0x121)}},
     0x7EFFF, 6, 0x7EFFF, vekCpuAVX, 16},
    {"newer, extended leaves masked", {kChecked, 22, 0x80000000, {leaf1(0x50654, 0x7FFEFBFF), leaf7(0xD39FFFFB)}},
     0x3EFFF, 6, 0x3EFFF, vekCpuAVX, 1},
    {"other vendor, AVX2", {kAmd, 13, 0x8000001F, {leaf1(0x800F12, 0x7ED8320B), leaf7(0x209C01A9), extended(0x35C233FF),
      {0x80000008, 0, {0, 0, 0x400F, 0}}}},
     0x7EFFF, 6, 0x7EFFF, vekCpuAVX, 16},
    {"other vendor, digit below 8", {kAmd, 13, 0x80000020, {leaf1(0x800F12, 0x7ED8320B),
      {0x80000008, 0, {0, 0, 0x400F, 0}}}},
     0x6FFF, 5, 0x6FDF, vekCpuAVX, 1},
    {"MOVBE and SSE3", {kChecked, 10, kExt, {leaf1(0x606, 0x400001)}}, 0x2F, 1, 0xF, vekCpuSSE3, 1},
    {"MOVBE and SSE4.1", {kChecked, 10, kExt, {leaf1(0x606, 0x480201)}}, 0x7F, 4, 0x5F, vekCpuSSE41, 1},
    {"coprocessor", {kChecked, 4, kExt, {leaf1(0xB11, 0), {0x20000001, 0, {0, 0, 0, 2}}}},
     0x80001007, 0, 7, vekCpuSSE2, 1},
    {"coprocessor, bit clear", {kChecked, 4, kExt, {leaf1(0xB11, 0), {0x20000001, 0, {0, 0, 0, ~2u}}}},
     0x80000007, 0, 7, vekCpuSSE2, 1},
    {"coprocessor, next model", {kChecked, 10, kExt, {leaf1(0xB21, kHaswellEcx), leaf7(kHaswellEbx),
      {0x20000001, 0, {0, 0, 0, 2}}}},
     0xFFFF, 6, 0xEFFF, vekCpuAVX, 1},
};
// clang-format on

TEST(Detection, RecordedProcessors) {
  for (const Processor& p : kProcessors) {
    SCOPED_TRACE(p.name);
    const vek::CpuidSource cpu = p.cpu.source();
    uint64_t features = ~0ull;
    EXPECT_TRUE(vek::detectFeatures(cpu, &features));
    EXPECT_EQ(features, p.features);
    const vek::SlotChoice choice = vek::chooseSlot(cpu);
    EXPECT_EQ(choice.slot, p.slot);
    EXPECT_EQ(choice.enabledFeatures, p.enabled);
    EXPECT_EQ(vek::cpuType(cpu), p.type);
    EXPECT_EQ(vek::numCoresOnDie(cpu), p.cores);
    EXPECT_EQ(vek::isCheckedVendor(cpu), p.cpu.vendor == kChecked);
  }
}

TEST(Detection, WithoutFeatureLeaf) {
  const FakeCpu cpu = {kChecked, 0, 0, {}};
  vek::FeatureCache cache;
  Vek64u mask = 5;
  EXPECT_EQ(vek::cpuFeatures(cpu.source(), cache, nullptr, nullptr), vekStsNotSupportedCpu);
  EXPECT_EQ(vek::cpuFeatures(cpu.source(), cache, &mask, nullptr), vekStsNotSupportedCpu);
  EXPECT_EQ(mask, 5u);
  EXPECT_EQ(vek::chooseSlot(cpu.source()).slot, 0);
  EXPECT_EQ(vek::chooseSlot(cpu.source()).enabledFeatures, 7u);
}

TEST(Detection, VendorIsComparedWhole) {
  for (const char* vendor : {"genuineOrvel", "GenuineXrvel", "GenuineOrveL"})
    EXPECT_FALSE(vek::isCheckedVendor(FakeCpu{vendor, 1, 0, {}}.source())) << vendor;
}

TEST(Detection, DenormalsNeedSseAndTheMaskBit) {
  FakeCpu cpu = {kAmd, 1, 0, {leaf1(0xF4A, 0, 1u << 25)}, 0, 0x40};
  EXPECT_TRUE(vek::hasDenormalsAreZero(cpu.source()));
  cpu.mxcsrMask = 0xFFBF;
  EXPECT_FALSE(vek::hasDenormalsAreZero(cpu.source()));
  cpu.mxcsrMask = 0;
  EXPECT_FALSE(vek::hasDenormalsAreZero(cpu.source()));
  cpu.mxcsrMask = 0xFFFF;
  cpu.leaves = {leaf1(0xF4A, 0, ~(1u << 25))};
  EXPECT_FALSE(vek::hasDenormalsAreZero(cpu.source()));
}

TEST(CpuFeatures, RegistersOfAnyLeaf) {
  const FakeCpu cpu = {kChecked, 10, kExt, {leaf1(0x6F6, 0xE3BD), {4, 1, {11, 12, 13, 14}}}};
  constexpr Vek64u kGetInfo = 0x616F666E69746567;
  vek::FeatureCache cache;
  Vek64u mask = 0;
  Vek32u regs[4] = {4, 77, 1, 78};
  EXPECT_EQ(vek::cpuFeatures(cpu.source(), cache, nullptr, regs), vekStsNullPtrErr);
  EXPECT_EQ(regs[1], 77u);
  mask = kGetInfo;
  EXPECT_EQ(vek::cpuFeatures(cpu.source(), cache, &mask, regs), vekStsNoErr);
  EXPECT_EQ(mask, 0x1Fu);
  for (Vek32u i = 0; i < 4; ++i) EXPECT_EQ(regs[i], 11 + i);
  mask = kGetInfo ^ 1;
  EXPECT_EQ(vek::cpuFeatures(cpu.source(), cache, &mask, regs), vekStsNoErr);
  EXPECT_EQ(regs[0], 0x6F6u);
  EXPECT_EQ(regs[1], 0u);
  EXPECT_EQ(regs[2], 0xE3BDu);
  EXPECT_EQ(regs[3], 0xBFEBFBFFu);
  mask = kGetInfo;
  EXPECT_EQ(vek::cpuFeatures(FakeCpu{kAmd, 1, 0, {}}.source(), cache, &mask, nullptr), vekStsNoErr);
  EXPECT_EQ(mask, 0x1Fu) << "the first answer stays";
}

Leaf cacheLeaf(uint32_t subleaf, uint32_t type, uint32_t ways, uint32_t partitions, uint32_t line, uint32_t sets) {
  return {4, subleaf, {type, (ways - 1) << 22 | (partitions - 1) << 12 | (line - 1), sets - 1, 0}};
}

TEST(MaxCacheSize, Enumerated) {
  const Leaf data = cacheLeaf(0, 1, 8, 1, 64, 64), code = cacheLeaf(1, 2, 1024, 1, 64, 8192);
  const Leaf second = cacheLeaf(2, 3, 8, 2, 64, 1024), smaller = cacheLeaf(3, 3, 4, 1, 64, 64);
  const Leaf past = cacheLeaf(5, 3, 16, 1, 64, 16384), wrapping = cacheLeaf(3, 3, 1024, 1, 4096, 1024);
  std::vector<Leaf> full;
  for (uint32_t i = 0; i <= 32; ++i) full.push_back(cacheLeaf(i, 3, 1, 1, 64, i + 1));
  const struct {
    const char* name;
    std::vector<Leaf> leaves;
    VekStatus status;
    int32_t bytes;
  } cases[] = {{"instruction caches do not count", {data, code, second, smaller}, vekStsNoErr, 1 << 20},
               {"the first empty sub-leaf ends the list", {data, code, second, smaller, past}, vekStsNoErr, 1 << 20},
               {"32-bit product", {data, code, second, wrapping}, vekStsNoErr, 1 << 20},
               {"at most 32 sub-leaves", full, vekStsNoErr, 32 * 64},
               {"none", {}, vekStsUnknownCacheSize, 0},
               {"only instructions", {cacheLeaf(0, 2, 8, 1, 64, 64)}, vekStsUnknownCacheSize, 0}};
  for (const auto& c : cases) {
    const vek::CacheSize size = vek::maxCacheSize(FakeCpu{kChecked, 4, 0, c.leaves}.source());
    EXPECT_EQ(size.status, c.status) << c.name;
    EXPECT_EQ(size.bytes, c.bytes) << c.name;
  }
}

TEST(MaxCacheSize, Described) {
  const struct {
    CpuidRegs regs;
    VekStatus status;
    int32_t bytes;
  } cases[] = {{{0x665B5001, 0, 0, 0x007A7000}, vekStsNoErr, 262144},
               {{0x03020101, 0, 0, 0x0C040843}, vekStsNoErr, 524288},
               {{0x03020101, 0x49, 0x0000EC00, 0x0C040843}, vekStsNoErr, 25165824},
               {{0x03020101, 0, 0x80000043, 0x0C040841}, vekStsNoErr, 131072},
               {{0x83024301, 0x41, 0, 0}, vekStsNoErr, 131072},
               {{0x78020101, 0, 0, 0x39}, vekStsNoErr, 1048576},
               {{0x03020101, 0, 0, 0x80000043}, vekStsUnknownCacheSize, 0},
               {{0x03020102, 0, 0, 0x43}, vekStsUnknownCacheSize, 0},
               {{0x03024300, 0, 0, 0x43}, vekStsUnknownCacheSize, 0},
               {{0x03020101, 0, 0, 0x40}, vekStsUnknownCacheSize, 0}};
  for (const auto& c : cases) {
    const vek::CacheSize size = vek::maxCacheSize(FakeCpu{kChecked, 3, 0, {{2, 0, c.regs}}}.source());
    EXPECT_EQ(size.status, c.status) << c.regs.eax << ' ' << c.regs.edx;
    EXPECT_EQ(size.bytes, c.bytes) << c.regs.eax << ' ' << c.regs.edx;
  }
  // All descriptors: the published table as a sum of codes times sizes, and of every pair the larger one found.
  int64_t sum = 0;
  int known = 0;
  for (uint32_t code = 1; code < 256; ++code) {
    const auto sizeOf = [](uint32_t eax, uint32_t ebx) {
      return vek::maxCacheSize(FakeCpu{kChecked, 2, 0, {{2, 0, {eax, ebx, 0, 0}}}}.source()).bytes;
    };
    const int32_t bytes = sizeOf(1, code);
    sum += int64_t{bytes} * code;
    known += bytes != 0;
    for (uint32_t other = 1; other < 256; ++other)
      ASSERT_EQ(sizeOf(1, code | other << 8), std::max(bytes, sizeOf(1, other))) << code << ' ' << other;
  }
  EXPECT_EQ(known, 55);
  EXPECT_EQ(sum, 29714546688);
}

TEST(MaxCacheSize, FirstAnswerStays) {
  const FakeCpu good = {kChecked, 4, 0, {cacheLeaf(0, 1, 8, 1, 64, 64)}}, unknown = {kChecked, 4, 0, {}};
  const FakeCpu other = {kAmd, 4, 0, good.leaves}, old = {kChecked, 1, 0, {}};
  const struct {
    const FakeCpu& cpu;
    VekStatus status;
    int32_t bytes;
  } cases[] = {{good, vekStsNoErr, 32768},
               {unknown, vekStsUnknownCacheSize, 0},
               {other, vekStsNotSupportedCpu, 0},
               {old, vekStsNotSupportedCpu, 0}};
  for (const auto& c : cases) {
    vek::CacheSize cache;
    EXPECT_EQ(vek::cachedMaxCacheSize(c.cpu.source(), cache, nullptr), vekStsNullPtrErr);
    for (const FakeCpu* cpu : {&c.cpu, &good, &unknown}) {
      int bytes = -1;
      EXPECT_EQ(vek::cachedMaxCacheSize(cpu->source(), cache, &bytes), c.status);
      EXPECT_EQ(bytes, c.bytes);
    }
  }
}

// Both clocks as lists of readings.
struct FakeClock {
  std::vector<uint64_t> cycles;
  std::vector<int64_t> times;
  size_t cyclesRead = 0, timesRead = 0;

  int32_t measure() {
    return vek::measureFreqMhz({[](void* c) { return cast(c).cycles.at(cast(c).cyclesRead++); },
                                [](void* c) { return cast(c).times.at(cast(c).timesRead++); }, this});
  }

 private:
  static FakeClock& cast(void* c) { return *static_cast<FakeClock*>(c); }
};

constexpr int64_t kEpoch = 116444736000000000, kSecond = 10000000;

TEST(CpuFreq, SumsInSinglePrecision) {
  const struct {
    uint64_t second, third;
    int32_t mhz;
  } cases[] = {{2400000000, 2400000000, 2400},
               {2399999999, 2399999999, 2400},
               {2399999700, 2399999700, 2399},
               {2400000000, 2399999744, 2400},
               {1000000, 0, 0},
               {3000000, 1000000, 2},
               {2399999873, 2399999870, 2400},
               {~0ull >> 24, ~0ull >> 24, 1099511}};
  for (const auto& c : cases) {
    const uint64_t start = ~0ull - 1000;  // the counter may wrap
    FakeClock clock = {{0, 1ull << 60, start, start + c.second, 5, 5 + c.third}, {}};
    for (int64_t s : {1, 2, 2, 3, 3, 4}) clock.times.push_back(kEpoch + s * kSecond);
    EXPECT_EQ(clock.measure(), c.mhz) << c.second << ' ' << c.third;
    EXPECT_EQ(clock.cyclesRead, 6u);
    EXPECT_EQ(clock.timesRead, 6u);
  }
}

TEST(CpuFreq, SecondsOfTheWallClock) {
  constexpr int64_t kLast = kEpoch + 32535244799 * kSecond;
  FakeClock clock = {{0, 1, 0, 1000000, 0, 1000000}, {}};
  clock.times = {kEpoch + 9999998,
                 kEpoch + 9999999,
                 kEpoch + kSecond,  // one unit before and on a second
                 kLast,
                 kLast + kSecond - 1,
                 kLast + kSecond,  // the last second is told apart,
                 kLast + kSecond,
                 kLast + 5 * kSecond,
                 kLast + 9 * kSecond,
                 kLast};  // later ones are not
  EXPECT_EQ(clock.measure(), 1);
  EXPECT_EQ(clock.timesRead, clock.times.size());
}

TEST(CpuInformation, OfThisProcessor) {
  const auto wallStart = std::chrono::steady_clock::now();
  const Vek64u cycleStart = vekGetCpuClocks();
  int mhz = 0, bytes = 0, again = 0;
  EXPECT_EQ(vekGetCpuFreqMhz(nullptr), vekStsNullPtrErr);
  EXPECT_EQ(vekGetCpuFreqMhz(&mhz), vekStsNoErr);
  const std::chrono::duration<double, std::micro> elapsed = std::chrono::steady_clock::now() - wallStart;
  const double measured = static_cast<double>(vekGetCpuClocks() - cycleStart) / elapsed.count();
  EXPECT_NEAR(mhz, measured, measured * 0.05);

  Vek64u mask = 0x616F666E69746567;
  Vek32u regs[4] = {4, 0, 1, 0}, expected[4];
  EXPECT_EQ(vekGetCpuFeatures(&mask, regs), vekStsNoErr);
  __cpuid_count(4, 1, expected[0], expected[1], expected[2], expected[3]);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(regs[i], expected[i]);
  EXPECT_EQ((mask & VEK_FEATURE_SSE2) != 0, __builtin_cpu_supports("sse2") != 0);
  EXPECT_EQ((mask & VEK_FEATURE_SSE41) != 0, __builtin_cpu_supports("sse4.1") != 0);
  EXPECT_EQ((mask & VEK_FEATURE_AVX_OS) != 0, __builtin_cpu_supports("avx") != 0);
  EXPECT_GE(vekGetCpuType(), vekCpuSsse3Gen1);
  EXPECT_GE(vekGetNumCoresOnDie(), 1);
  const VekStatus status = vekGetMaxCacheSizeB(&bytes);
  EXPECT_EQ(vekGetMaxCacheSizeB(&again), status);
  EXPECT_EQ(again, bytes);
  EXPECT_EQ(bytes > 0, status == vekStsNoErr);
}

}  // namespace
