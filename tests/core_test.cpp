// SPDX-License-Identifier: Apache-2.0
// Status texts, slot control, memory, version record and run-time controls.
#include <gtest/gtest.h>
#include <limits.h>
#include <malloc.h>
#include <stdlib.h>
#include <string.h>
#include <xmmintrin.h>

#include <string>
#include <vector>

#include "core/dispatch.h"
#include "core/memory.h"
#include "core/slots.h"
#include "tests/support/heap.h"

#define DECLARE_VERSION(slot)                      \
  namespace vek::slot {                            \
  decltype(::veksGetLibVersion) veksGetLibVersion; \
  }
DECLARE_VERSION(mx)
DECLARE_VERSION(m7)
DECLARE_VERSION(u8)
DECLARE_VERSION(n8)
DECLARE_VERSION(y8)
DECLARE_VERSION(e9)
DECLARE_VERSION(l9)
namespace vek::mx {
decltype(::veksMalloc_32s) veksMalloc_32s;
decltype(::veksMalloc_32f) veksMalloc_32f;
decltype(::veksMalloc_32sc) veksMalloc_32sc;
decltype(::veksMalloc_32fc) veksMalloc_32fc;
decltype(::veksFree) veksFree;
}  // namespace vek::mx

namespace {

const std::string kUnknown = "vekStsUnknownStatusCodeErr: Unknown status code.";

// FNV-1a, over "<code> <text>\n" of each row.
uint64_t addRow(uint64_t hash, VekStatus code, const std::string& text) {
  for (unsigned char c : std::to_string(code) + ' ' + text + '\n') hash = (hash ^ c) * 0x100000001B3;
  return hash;
}

bool isTextOfNamedCode(const std::string& text) {
  const size_t colon = text.find(": ");
  return text.starts_with("vekSts") && colon != std::string::npos && text.size() > colon + 3 && text.back() == '.' &&
         text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789") == colon;
}

TEST(Status, TableIsThePublishedOne) {
  // The rows whose whole text is part of the interface, by ranges; of the others it is the code and the name.
  const struct {
    VekStatus first, last;
  } fixedTexts[] = {{-9999, -9700}, {-216, -216}, {-213, -213}, {-46, -38}, {-32, -25}, {-19, -5},
                    {-1, 9},        {11, 12},     {16, 17},     {20, 20},   {36, 36},   {48, 48}};
  int errors = 0, warnings = 0;
  uint64_t names = 0xCBF29CE484222325, texts = names;
  std::string previous;
  for (VekStatus code = -10100; code <= 1000; ++code) {
    const std::string text = vekGetStatusString(code);
    if (text == kUnknown && code != vekStsUnknownStatusCodeErr) continue;
    const bool named = code < -9702 || code > -9700;
    EXPECT_EQ(isTextOfNamedCode(text), named) << text;
    EXPECT_NE(text, previous);
    (code < 0 ? errors : warnings) += code != 0;
    names = addRow(names, code, named ? text.substr(0, text.find(':')) : text);
    for (const auto& range : fixedTexts)
      if (code >= range.first && code <= range.last) texts = addRow(texts, code, text);
    previous = text;
  }
  EXPECT_EQ(errors, 226);
  EXPECT_EQ(warnings, 48);
  EXPECT_EQ(names, 0x99E3F066C137B7A5);
  EXPECT_EQ(texts, 0x9811035D511D5D78);
}

TEST(Status, Lookup) {
  EXPECT_STREQ(vekGetStatusString(0), "vekStsNoErr: No errors.");
  EXPECT_STREQ(vekGetStatusString(1), "vekStsNoOperation: No operation has been executed.");
  EXPECT_STREQ(vekGetStatusString(-9700), "Error at loading of %s library");
  EXPECT_STREQ(vekGetStatusString(vekStsNullPtrErr), "vekStsNullPtrErr: Null pointer error.");
  for (VekStatus code : {INT_MIN, -10000, -9996, -9699, -9696, -229, -165, -89, -84, -68, 49, 1000, INT_MAX})
    EXPECT_EQ(vekGetStatusString(code), kUnknown) << code;
}

// Puts the slot of this processor back in force.
class Slots : public testing::Test {
 protected:
  ~Slots() override { vek::initialiseDispatch(vek::nativeCpu); }
};

TEST_F(Slots, ChosenAtLoad) {
  const vek::SlotChoice choice = vek::chooseSlot(vek::nativeCpu);
  EXPECT_EQ(vek_variant_index, choice.slot);
  EXPECT_TRUE(vek::featuresEnabled(choice.enabledFeatures));
  EXPECT_FALSE(vek::featuresEnabled(choice.enabledFeatures | 1ull << 63)) << "every bit has to be enabled";
}

TEST_F(Slots, ForcedSlotRestrictsTheFeatures) {
  constexpr uint64_t kUsable[] = {0x7, 0xF, 0x1F, 0x3F, 0xCDF, 0x6FDF, 0x7EFFF};
  uint64_t detected = 0;
  ASSERT_EQ(vekGetCpuFeatures(&detected, nullptr), vekStsNoErr);
  for (int slot = 0; slot < vek::kSlotCount; ++slot) {
    vek::setSlotForTest(slot);
    EXPECT_EQ(vek_variant_index, slot);
    for (int bit = 0; bit < 64; ++bit)
      EXPECT_EQ(vek::featuresEnabled(1ull << bit), (detected & kUsable[slot]) >> bit & 1) << slot << ' ' << bit;
  }
}

// A family-6 processor with the given bits of leaf 1 ECX.
struct PlainCpu {
  const char* vendor;
  uint32_t ecx;

  vek::CpuidSource source() const { return {cpuid, nullptr, nullptr, this}; }

 private:
  static vek::CpuidRegs cpuid(const void* self, uint32_t leaf, uint32_t) {
    const PlainCpu& cpu = *static_cast<const PlainCpu*>(self);
    uint32_t text[3];
    memcpy(text, cpu.vendor, sizeof text);
    if (leaf == 0) return {1, text[0], text[2], text[1]};
    return leaf == 1 ? vek::CpuidRegs{0x606, 0, cpu.ecx, 0x7000000} : vek::CpuidRegs{};
  }
};

TEST_F(Slots, InitialisationTellsTheVendor) {
  EXPECT_EQ(vek::initialiseDispatch(PlainCpu{"GenuineOrvel", 0x200}.source()), vekStsNoErr);
  EXPECT_EQ(vek_variant_index, 2);
  EXPECT_EQ(vek::initialiseDispatch(PlainCpu{"OtherVendor!", 0x201}.source()), vekStsNonOrvelCpu);
  EXPECT_EQ(vek_variant_index, 2);
  EXPECT_TRUE(vek::featuresEnabled(VEK_FEATURE_SSSE3 | VEK_FEATURE_SSE3));
  EXPECT_FALSE(vek::featuresEnabled(VEK_FEATURE_SSSE3 | VEK_FEATURE_SSE41));
}

TEST_F(Slots, VersionRecords) {
  const struct {
    decltype(veksGetLibVersion)* get;
    uint32_t ecx;
    const char *code, *name;
  } cases[] = {{vek::mx::veksGetLibVersion, 0, "mx", "vekSP PX (mx)"},
               {vek::m7::veksGetLibVersion, 0, "m7", "vekSP SSE3 (m7)"},
               {vek::u8::veksGetLibVersion, 0, "u8", "vekSP SSSE3 (u8)"},
               {vek::n8::veksGetLibVersion, 0, "n8", "vekSP Lumen (n8)"},
               {vek::y8::veksGetLibVersion, 0x080000, "y8", "vekSP SSE4.1/4.2 (y8)"},
               {vek::y8::veksGetLibVersion, 0x180000, "y8", "vekSP SSE4.1/4.2 (y8)+"},
               {vek::y8::veksGetLibVersion, 0x080000, "y8", "vekSP SSE4.1/4.2 (y8)"},
               {vek::e9::veksGetLibVersion, 0x180000, "e9", "vekSP AVX (e9)"},
               {vek::l9::veksGetLibVersion, 0x180000, "l9", "vekSP AVX2 (l9)"}};
  for (const auto& c : cases) {
    vek::initialiseDispatch(PlainCpu{"GenuineOrvel", c.ecx}.source());
    const VekLibVersion& v = *c.get();
    char code[4] = {};
    memcpy(code, c.code, 2);
    EXPECT_EQ(memcmp(v.cpuCode, code, 4), 0) << c.code;
    EXPECT_STREQ(v.name, c.name);
    EXPECT_EQ(v.major, 8);
    EXPECT_EQ(v.minor, 0);
    EXPECT_EQ(v.update, 1);
    EXPECT_EQ(v.revision, 40318);
    EXPECT_STREQ(v.version, "8.0.1 (r40318)");
    EXPECT_STREQ(v.buildDate, "Jul 11 2013");
  }
}

// Stands in for malloc: hands out `next` and notes what was asked for.
class Memory : public testing::Test {
 protected:
  Memory() {
    next = nullptr;
    calls = requested = 0;
  }
  ~Memory() override { vektest::heapHook = nullptr; }

  static void* take(size_t bytes) {
    ++calls;
    requested = bytes;
    return next;
  }

  static inline void* next;
  static inline size_t calls, requested;
};

TEST_F(Memory, BlockIsAlignedWithItsRawAddressBelow) {
  alignas(64) char heap[256];
  vektest::heapHook = take;
  for (int offset = 0; offset < 64; ++offset) {
    next = heap + offset;
    char* block = static_cast<char*>(vek::allocate(100));
    ASSERT_EQ(requested, 172u);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(block) % 64, 0u);
    EXPECT_EQ(block, heap + (offset <= 56 ? 64 : 128));
    EXPECT_LE(block + 100, heap + offset + requested);
    void* raw;
    memcpy(&raw, block - 8, 8);
    EXPECT_EQ(raw, next);
  }
}

TEST_F(Memory, SizesThatCannotBe) {
  vektest::heapHook = take;
  for (int64_t bytes : {INT64_MIN, int64_t{-1}, int64_t{0}, INT64_MAX - 71, INT64_MAX})
    EXPECT_EQ(vek::allocate(bytes), nullptr) << bytes;
  EXPECT_EQ(calls, 0u);
  EXPECT_EQ(vek::allocate(INT64_MAX - 72), nullptr);
  EXPECT_EQ(requested, static_cast<size_t>(INT64_MAX));
}

TEST_F(Memory, ElementCountsWrapIn32Bits) {
  namespace mx = vek::mx;
  const struct {
    int len;
    size_t bytes4, bytes8;  // what is asked of the heap for elements of 4 and 8 bytes; 0 for a refused length
  } cases[] = {{INT_MIN, 0, 0},
               {-1, 0, 0},
               {0, 0, 0},
               {1, 76, 80},
               {1000, 4072, 8072},
               {268435455, 1073741892, 2147483712},
               {268435456, 1073741896, 0},
               {536870911, 2147483716, 0},
               {536870912, 0, 0},
               {536870913, 0, 80},
               {1073741824, 0, 0},
               {1073741825, 76, 80},
               {INT_MAX, 0, 0}};
  vektest::heapHook = take;
  const auto asked = [](auto* function, int len) {
    requested = 0;
    EXPECT_EQ(function(len), nullptr);
    return requested;
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.len);
    EXPECT_EQ(asked(mx::veksMalloc_32s, c.len), c.bytes4);
    EXPECT_EQ(asked(mx::veksMalloc_32f, c.len), c.bytes4);
    EXPECT_EQ(asked(mx::veksMalloc_32sc, c.len), c.bytes8);
    EXPECT_EQ(asked(mx::veksMalloc_32fc, c.len), c.bytes8);
  }
}

TEST_F(Memory, BlocksOfTheHeap) {
  std::vector<Vek32fc*> blocks;
  for (int len = 1; len < 200; ++len) {
    blocks.push_back(vek::mx::veksMalloc_32fc(len));
    ASSERT_NE(blocks.back(), nullptr);
    EXPECT_EQ(reinterpret_cast<uintptr_t>(blocks.back()) % 64, 0u);
    memset(static_cast<void*>(blocks.back()), len, static_cast<size_t>(len) * sizeof(Vek32fc));
  }
  for (size_t i = 0; i < blocks.size(); ++i) {
    const unsigned char* bytes = reinterpret_cast<unsigned char*>(blocks[i]);
    for (size_t k = 0; k < (i + 1) * sizeof(Vek32fc); ++k) ASSERT_EQ(bytes[k], i + 1);
    vek::mx::veksFree(blocks[i]);
  }
  vek::mx::veksFree(nullptr);
}

TEST_F(Memory, ReleasedBlocksAreTheHeapsAgain) {
  const size_t before = mallinfo2().uordblks;
  for (int i = 0; i < 1000; ++i) vek::release(vek::allocate(5000));
  EXPECT_LT(mallinfo2().uordblks, before + 100 * 5000);
}

TEST(Threads, CountIsFixed) {
  int threads = 0;
  EXPECT_EQ(vekGetNumThreads(nullptr), vekStsNullPtrErr);
  for (int n : {INT_MIN, -1, 0, 1, 8, INT_MAX}) {
    EXPECT_EQ(vekSetNumThreads(n), vekStsNoOperation);
    EXPECT_EQ(vekGetNumThreads(&threads), vekStsNoOperation);
    EXPECT_EQ(threads, 1);
  }
}

TEST(Denormals, SetAndClearOneBit) {
  constexpr unsigned kDenormalsAreZero = 0x40, kFlushToZero = 0x8000, kRoundDown = 0x2000;
  const unsigned before = _mm_getcsr();
  volatile float tiny = 1e-40f;
  for (unsigned others : {0x1F80u, 0x1F80u | kFlushToZero | kRoundDown, 0x1F80u | 1}) {
    for (unsigned start : {others, others | kDenormalsAreZero}) {
      for (int value : {1, 0, -5, 0, INT_MIN}) {
        _mm_setcsr(start);
        const VekStatus status = vekSetDenormAreZeros(value);
        const unsigned after = _mm_getcsr();
        const bool vanishes = tiny * 1e10f == 0;
        _mm_setcsr(before);
        EXPECT_EQ(status, vekStsNoErr);
        EXPECT_EQ(after, others | (value ? kDenormalsAreZero : 0));
        EXPECT_EQ(vanishes, value != 0);
      }
    }
  }
}

}  // namespace
