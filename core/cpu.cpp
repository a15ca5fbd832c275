// SPDX-License-Identifier: Apache-2.0
// Processor detection.
#include "core/cpu.h"

#include <cpuid.h>
#include <immintrin.h>
#include <string.h>
#include <time.h>

namespace vek {
namespace {

constexpr uint32_t kExtendedLeaves = 0x80000000;

constexpr bool bit(uint32_t word, int n) { return (word >> n & 1) != 0; }
constexpr uint32_t field(uint32_t word, int low, int width) { return word >> low & ((1u << width) - 1); }

// A fixed-length text as the little-endian word that CPUID returns it in.
constexpr uint32_t word(const char (&text)[5]) {
  uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(text[i]);
  return value;
}

CpuidRegs cpuid(const CpuidSource& cpu, uint32_t leaf, uint32_t subleaf = 0) {
  return cpu.cpuid(cpu.context, leaf, subleaf);
}

uint32_t maxLeaf(const CpuidSource& cpu) { return cpuid(cpu, 0).eax; }
uint32_t maxExtendedLeaf(const CpuidSource& cpu) { return cpuid(cpu, kExtendedLeaves).eax; }

// Leaf 7, all zero where the processor has none.
CpuidRegs extendedFeatureRegs(const CpuidSource& cpu) { return maxLeaf(cpu) >= 7 ? cpuid(cpu, 7) : CpuidRegs{}; }

// AVX2 code also uses FMA, BMI1 and BMI2; a processor counts only with all four.
bool hasAvx2Set(const CpuidRegs& leaf1, const CpuidRegs& leaf7) {
  return bit(leaf1.ecx, 12) && bit(leaf7.ebx, 5) && bit(leaf7.ebx, 3) && bit(leaf7.ebx, 8);
}

bool savesYmmState(const CpuidSource& cpu, const CpuidRegs& leaf1) {
  constexpr uint64_t kXmmAndYmm = 6;
  return bit(leaf1.ecx, 27) && bit(leaf1.ecx, 28) && (cpu.xgetbv(cpu.context) & kXmmAndYmm) == kXmmAndYmm;
}

struct FeatureBit {
  uint64_t feature;
  int bit;
};

constexpr FeatureBit kLeaf1Ecx[] = {{VEK_FEATURE_SSE3, 0},   {VEK_FEATURE_CLMUL, 1},  {VEK_FEATURE_SSSE3, 9},
                                    {VEK_FEATURE_SSE41, 19}, {VEK_FEATURE_SSE42, 20}, {VEK_FEATURE_MOVBE, 22},
                                    {VEK_FEATURE_AES, 25},   {VEK_FEATURE_AVX, 28},   {VEK_FEATURE_F16C, 29},
                                    {VEK_FEATURE_RDRAND, 30}};
constexpr FeatureBit kLeaf1Edx[] = {{VEK_FEATURE_MMX, 23}, {VEK_FEATURE_SSE, 25}, {VEK_FEATURE_SSE2, 26}};
constexpr FeatureBit kLeaf7Ebx[] = {{VEK_FEATURE_RDSEED, 18}, {VEK_FEATURE_ADX, 19}};

template <int N>
uint64_t collect(const FeatureBit (&bits)[N], uint32_t reg) {
  uint64_t features = 0;
  for (const FeatureBit& b : bits)
    if (bit(reg, b.bit)) features |= b.feature;
  return features;
}

uint64_t coprocessorFeatures(const CpuidSource& cpu, uint32_t signature) {
  uint64_t features = 0;
  if (field(signature, 8, 4) == 0xB && bit(cpuid(cpu, 0x20000001).edx, 1)) features |= VEK_FEATURE_COPROC_EXT;
  if (field(signature, 4, 8) == 0xB1) features |= VEK_FEATURE_COPROC;
  return features;
}

}  // namespace

bool detectFeatures(const CpuidSource& cpu, uint64_t* features) {
  if (maxLeaf(cpu) < 1) return false;
  const CpuidRegs leaf1 = cpuid(cpu, 1);
  const CpuidRegs leaf7 = extendedFeatureRegs(cpu);
  uint64_t found = collect(kLeaf1Ecx, leaf1.ecx) | collect(kLeaf1Edx, leaf1.edx) | collect(kLeaf7Ebx, leaf7.ebx);
  if (savesYmmState(cpu, leaf1)) found |= VEK_FEATURE_AVX_OS;
  if (hasAvx2Set(leaf1, leaf7)) found |= VEK_FEATURE_AVX2;
  if (maxExtendedLeaf(cpu) >= 0x80000001 && bit(cpuid(cpu, 0x80000001).ecx, 8)) found |= VEK_FEATURE_PREFETCHW;
  *features = found | coprocessorFeatures(cpu, leaf1.eax);
  return true;
}

uint64_t enabledInSlot(int32_t slot, uint64_t detected) {
  // Not monotone: the SSE4.1 and AVX slots serve processors with and without MOVBE, so their code may not rely on it.
  constexpr uint64_t kUsable[kSlotCount] = {0x7, 0xF, 0x1F, 0x3F, 0xCDF, 0x6FDF, 0x7EFFF};
  return detected & kUsable[slot];
}

SlotChoice chooseSlot(const CpuidSource& cpu) {
  uint64_t features;
  if (!detectFeatures(cpu, &features)) return {0, VEK_FEATURE_MMX | VEK_FEATURE_SSE | VEK_FEATURE_SSE2};
  const auto has = [features](uint64_t mask) { return (features & mask) == mask; };
  int32_t slot = 0;
  if (has(VEK_FEATURE_AVX | VEK_FEATURE_AVX_OS))
    slot = has(VEK_FEATURE_AVX2) ? 6 : 5;
  else if (has(VEK_FEATURE_SSE41))
    slot = 4;
  else if (has(VEK_FEATURE_SSSE3))
    slot = has(VEK_FEATURE_MOVBE) ? 3 : 2;
  else if (has(VEK_FEATURE_SSE3))
    slot = 1;
  return {slot, enabledInSlot(slot, features)};
}

bool isCheckedVendor(const CpuidSource& cpu) {
  const CpuidRegs leaf0 = cpuid(cpu, 0);
  return leaf0.ebx == word("Genu") && leaf0.edx == word("ineO") && leaf0.ecx == word("rvel");
}

namespace {

constexpr int kFeatureSSE = 25;  // leaf 1 EDX

uint32_t coresPerPackage(const CpuidSource& cpu) { return maxLeaf(cpu) >= 4 ? field(cpuid(cpu, 4).eax, 26, 6) + 1 : 1; }

struct Signature {
  uint32_t family, model;
};

Signature decodeSignature(uint32_t eax) {
  Signature s = {field(eax, 8, 4), field(eax, 4, 4)};
  if (s.family == 6 || s.family == 15) s.model += field(eax, 16, 4) << 4;
  if (s.family == 15) s.family += field(eax, 20, 8);
  return s;
}

// Family-6 models of the checked vendor with a type of their own; vekCpuUnknown for the others.
VekCpuType family6Type(const CpuidSource& cpu, uint32_t model, const CpuidRegs& leaf1) {
  const bool ssse3 = bit(leaf1.ecx, 9), sse41 = bit(leaf1.ecx, 19), sse42 = bit(leaf1.ecx, 20);
  const bool movbe = bit(leaf1.ecx, 22), avx = bit(leaf1.ecx, 28);
  switch (model) {
    case 0x0F:
      if (!ssse3) break;
      return coresPerPackage(cpu) < 3 ? vekCpuSsse3Gen1 : vekCpuSsse3Gen1Quad;
    case 0x17:
      return sse41 ? vekCpuSse41Gen : vekCpuUnknown;
    case 0x1A:
      if (avx) return vekCpuAVX;
      return sse42 ? vekCpuSse42Gen : vekCpuUnknown;
    case 0x1C:
      return ssse3 && movbe ? vekCpuLumen : vekCpuUnknown;
    case 0x3C:
      return hasAvx2Set(leaf1, extendedFeatureRegs(cpu)) ? vekCpuAVX2 : vekCpuUnknown;
  }
  return vekCpuUnknown;
}

VekCpuType genericType(const CpuidSource& cpu, const CpuidRegs& leaf1) {
  if (bit(leaf1.ecx, 28)) return vekCpuAVX;
  if (bit(leaf1.ecx, 20)) return vekCpuSSE42;
  if (bit(leaf1.ecx, 19)) return vekCpuSSE41;
  if (bit(leaf1.ecx, 9)) return vekCpuSSSE3;
  if (bit(leaf1.ecx, 0)) return vekCpuSSE3;
  if (bit(leaf1.edx, 26)) return vekCpuSSE2;
  if (bit(leaf1.edx, kFeatureSSE)) return vekCpuSSE;
  const bool is64Bit = maxExtendedLeaf(cpu) >= 0x80000001 && bit(cpuid(cpu, 0x80000001).edx, 29);
  return is64Bit ? vekCpuX8664 : vekCpuUnknown;
}

}  // namespace

VekCpuType cpuType(const CpuidSource& cpu) {
  const CpuidRegs leaf1 = cpuid(cpu, 1);
  const Signature signature = decodeSignature(leaf1.eax);
  if (isCheckedVendor(cpu)) {
    if (signature.family == 15) return vekCpuSSE3;
    const VekCpuType type = signature.family == 6 ? family6Type(cpu, signature.model, leaf1) : vekCpuUnknown;
    if (type != vekCpuUnknown) return type;
  }
  return genericType(cpu, leaf1);
}

int32_t numCoresOnDie(const CpuidSource& cpu) {
  const CpuidRegs leaf0 = cpuid(cpu, 0);
  if (isCheckedVendor(cpu)) {
    const uint32_t threads = leaf0.eax >= 11 ? cpuid(cpu, 11, 0).ebx : 0;
    if (threads == 0) return static_cast<int32_t>(coresPerPackage(cpu));
    return static_cast<int32_t>(cpuid(cpu, 11, 1).ebx >> (bit(threads, 1) ? 1 : 0));
  }
  // Only the low digit of the maximum extended leaf is looked at: enough for the leaves that these processors have.
  if (leaf0.ecx != word("cAMD") || field(maxExtendedLeaf(cpu), 0, 4) < 8) return 1;
  return static_cast<int32_t>(field(cpuid(cpu, 0x80000008).ecx, 0, 8) + 1);
}

bool hasDenormalsAreZero(const CpuidSource& cpu) {
  return bit(cpuid(cpu, 1).edx, kFeatureSSE) && bit(cpu.mxcsrMask(cpu.context), 6);
}

VekStatus cpuFeatures(const CpuidSource& cpu, FeatureCache& cache, Vek64u* pFeaturesMask, Vek32u* pCpuidInfoRegs) {
  if (!__atomic_load_n(&cache.computed, __ATOMIC_ACQUIRE)) {
    uint64_t found;
    if (!detectFeatures(cpu, &found)) return vekStsNotSupportedCpu;
    __atomic_store_n(&cache.features, found, __ATOMIC_RELAXED);
    __atomic_store_n(&cache.computed, 1, __ATOMIC_RELEASE);
  }
  if (!pFeaturesMask) return vekStsNullPtrErr;
  constexpr Vek64u kGetInfo = 0x616F666E69746567;  // "getinfoa"
  const bool callersLeaf = *pFeaturesMask == kGetInfo;
  *pFeaturesMask = __atomic_load_n(&cache.features, __ATOMIC_RELAXED);
  if (!pCpuidInfoRegs) return vekStsNoErr;
  const CpuidRegs regs = callersLeaf ? cpuid(cpu, pCpuidInfoRegs[0], pCpuidInfoRegs[2]) : cpuid(cpu, 1);
  pCpuidInfoRegs[0] = regs.eax;
  pCpuidInfoRegs[1] = regs.ebx;
  pCpuidInfoRegs[2] = regs.ecx;
  pCpuidInfoRegs[3] = regs.edx;
  return vekStsNoErr;
}

namespace {

// File time: units of 100 ns since the start of 1601.
constexpr int64_t kUnitsPerSecond = 10000000;
constexpr int64_t kEpoch1970 = 116444736000000000;

}  // namespace

int32_t measureFreqMhz(const ClockSource& clock) {
  constexpr int64_t kLastSecond = 32535244799;  // later times are not told apart
  const auto seconds = [&clock] {
    const int64_t s = (clock.fileTime(clock.context) - kEpoch1970) / kUnitsPerSecond;
    return s > kLastSecond ? -1 : s;
  };
  // The first round only finds the start of a second; the two after it each span one.
  uint64_t spans[3];
  for (uint64_t& span : spans) {
    const uint64_t start = clock.cycles(clock.context);
    const int64_t second = seconds();
    while (seconds() == second) {
    }
    span = clock.cycles(clock.context) - start;
  }
  const float sum = static_cast<float>(spans[1]) + static_cast<float>(spans[2]);
  const double mhz = static_cast<double>(sum) / 1000000.0 * 0.5;
  return _mm_cvttsd_si32(_mm_set_sd(mhz));  // defined for every value, unlike a cast
}

namespace {

struct CacheDescriptor {
  uint8_t code;
  int32_t bytes;
};

// Descriptors of CPUID leaf 2, by falling size: the first that a processor lists is its largest cache.
constexpr CacheDescriptor kCacheDescriptors[] = {
    {0xEC, 25165824}, {0xEB, 18874368}, {0x4D, 16777216}, {0xEA, 12582912}, {0x4C, 12582912}, {0xE4, 8388608},
    {0xDE, 8388608},  {0x4B, 8388608},  {0x47, 8388608},  {0x4E, 6291456},  {0x4A, 6291456},  {0xE3, 4194304},
    {0xDD, 4194304},  {0xD8, 4194304},  {0x49, 4194304},  {0x29, 4194304},  {0x46, 4194304},  {0x48, 3145728},
    {0xE2, 2097152},  {0xDC, 2097152},  {0xD7, 2097152},  {0xD2, 2097152},  {0x25, 2097152},  {0x7D, 2097152},
    {0x85, 2097152},  {0x45, 2097152},  {0xD6, 1048576},  {0xD1, 1048576},  {0x23, 1048576},  {0x87, 1048576},
    {0x7C, 1048576},  {0x78, 1048576},  {0x84, 1048576},  {0x44, 1048576},  {0xD0, 524288},   {0x22, 524288},
    {0x7B, 524288},   {0x80, 524288},   {0x86, 524288},   {0x3E, 524288},   {0x7F, 524288},   {0x83, 524288},
    {0x43, 524288},   {0x3D, 393216},   {0x21, 262144},   {0x7A, 262144},   {0x82, 262144},   {0x3C, 262144},
    {0x3F, 262144},   {0x42, 262144},   {0x3A, 196608},   {0x79, 131072},   {0x39, 131072},   {0x3B, 131072},
    {0x41, 131072}};

// The largest data or unified cache of leaf 4, 0 if it lists none.
int32_t largestEnumeratedCache(const CpuidSource& cpu) {
  constexpr uint32_t kNoMore = 0, kInstruction = 2;
  int32_t largest = 0;
  for (uint32_t subleaf = 0; subleaf < 32; ++subleaf) {
    const CpuidRegs regs = cpuid(cpu, 4, subleaf);
    const uint32_t type = field(regs.eax, 0, 5);
    if (type == kNoMore) break;
    if (type == kInstruction) continue;
    const uint32_t ways = field(regs.ebx, 22, 10) + 1, partitions = field(regs.ebx, 12, 10) + 1;
    const uint32_t line = field(regs.ebx, 0, 12) + 1, sets = regs.ecx + 1;
    const int32_t size = static_cast<int32_t>(ways * partitions * line * sets);
    if (size > largest) largest = size;
  }
  return largest;
}

bool hasByte(uint32_t reg, uint8_t value) {
  for (int i = 0; i < 4; ++i)
    if (field(reg, 8 * i, 8) == value) return true;
  return false;
}

// The largest cache that the descriptors of leaf 2 name, 0 if they name none.
int32_t largestDescribedCache(const CpuidSource& cpu) {
  const CpuidRegs leaf2 = cpuid(cpu, 2);
  if (field(leaf2.eax, 0, 8) != 1) return 0;
  uint32_t regs[] = {leaf2.eax, leaf2.ebx, leaf2.ecx, leaf2.edx};
  for (uint32_t& reg : regs)
    if (bit(reg, 31)) reg = 0;  // holds no descriptors
  regs[0] &= ~0xFFu;            // a count, not a descriptor
  for (const CacheDescriptor& d : kCacheDescriptors)
    for (uint32_t reg : regs)
      if (hasByte(reg, d.code)) return d.bytes;
  return 0;
}

}  // namespace

CacheSize maxCacheSize(const CpuidSource& cpu) {
  const uint32_t leaves = maxLeaf(cpu);
  if (leaves < 2 || !isCheckedVendor(cpu)) return {vekStsNotSupportedCpu, 0};
  const int32_t bytes = leaves >= 4 ? largestEnumeratedCache(cpu) : largestDescribedCache(cpu);
  return {bytes == 0 ? vekStsUnknownCacheSize : vekStsNoErr, bytes};
}

VekStatus cachedMaxCacheSize(const CpuidSource& cpu, CacheSize& cache, int* pSizeByte) {
  if (!pSizeByte) return vekStsNullPtrErr;
  VekStatus status = __atomic_load_n(&cache.status, __ATOMIC_ACQUIRE);
  if (status == vekStsNoOperation) {
    const CacheSize computed = maxCacheSize(cpu);
    status = computed.status;
    __atomic_store_n(&cache.bytes, computed.bytes, __ATOMIC_RELAXED);
    __atomic_store_n(&cache.status, status, __ATOMIC_RELEASE);
  }
  *pSizeByte = __atomic_load_n(&cache.bytes, __ATOMIC_RELAXED);
  return status;
}

namespace {

CpuidRegs nativeCpuid(const void*, uint32_t leaf, uint32_t subleaf) {
  CpuidRegs regs;
  __cpuid_count(leaf, subleaf, regs.eax, regs.ebx, regs.ecx, regs.edx);
  return regs;
}

uint64_t nativeXgetbv(const void*) {
  uint32_t low, high;
  __asm__ volatile("xgetbv" : "=a"(low), "=d"(high) : "c"(0));
  return static_cast<uint64_t>(high) << 32 | low;
}

uint32_t nativeMxcsrMask(const void*) {
  alignas(16) unsigned char area[512] = {};
  __asm__ volatile("fxsave %0" : "+m"(area));
  uint32_t mask;
  memcpy(&mask, area + 28, sizeof mask);
  return mask;
}

uint64_t nativeCycles(void*) { return __rdtsc(); }

int64_t nativeFileTime(void*) {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return kEpoch1970 + static_cast<int64_t>(now.tv_sec) * kUnitsPerSecond + now.tv_nsec / 100;
}

FeatureCache featureCache;
CacheSize cacheSize;

}  // namespace

constinit const CpuidSource nativeCpu = {nativeCpuid, nativeXgetbv, nativeMxcsrMask, nullptr};

}  // namespace vek

VekStatus vekGetCpuFeatures(Vek64u* pFeaturesMask, Vek32u* pCpuidInfoRegs) {
  return vek::cpuFeatures(vek::nativeCpu, vek::featureCache, pFeaturesMask, pCpuidInfoRegs);
}

VekCpuType vekGetCpuType() { return vek::cpuType(vek::nativeCpu); }

int vekGetNumCoresOnDie() { return vek::numCoresOnDie(vek::nativeCpu); }

Vek64u vekGetCpuClocks() { return __rdtsc(); }

VekStatus vekGetCpuFreqMhz(int* pMhz) {
  if (!pMhz) return vekStsNullPtrErr;
  *pMhz = vek::measureFreqMhz({vek::nativeCycles, vek::nativeFileTime, nullptr});
  return vekStsNoErr;
}

VekStatus vekGetMaxCacheSizeB(int* pSizeByte) {
  return vek::cachedMaxCacheSize(vek::nativeCpu, vek::cacheSize, pSizeByte);
}

VekStatus vekSetDenormAreZeros(int value) {
  if (!vek::hasDenormalsAreZero(vek::nativeCpu)) return vekStsCpuNotSupportedErr;
  constexpr unsigned kDenormalsAreZero = 0x40;
  const unsigned rest = _mm_getcsr() & ~kDenormalsAreZero;
  _mm_setcsr(value ? rest | kDenormalsAreZero : rest);
  return vekStsNoErr;
}
