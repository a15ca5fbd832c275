// SPDX-License-Identifier: Apache-2.0
// What the processor can do, and which slot serves it.
#include <immintrin.h>

#include "core/cpuid.h"
#include "core/slots.h"

namespace vek {
namespace {

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

uint64_t enabledInSlot(int32_t slot, uint64_t detected) { return detected & usableInSlot(slot); }

SlotChoice chooseSlot(const CpuidSource& cpu) {
  uint64_t features;
  if (!detectFeatures(cpu, &features)) return {kSlot_mx, usableInSlot(kSlot_mx)};
  int32_t slot = kSlotCount - 1;
  while ((features & kSlots[slot].needs) != kSlots[slot].needs) --slot;
  return {slot, enabledInSlot(slot, features)};
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

FeatureCache featureCache;

}  // namespace
}  // namespace vek

VekStatus vekGetCpuFeatures(Vek64u* pFeaturesMask, Vek32u* pCpuidInfoRegs) {
  return vek::cpuFeatures(vek::nativeCpu, vek::featureCache, pFeaturesMask, pCpuidInfoRegs);
}

VekStatus vekSetDenormAreZeros(int value) {
  if (!vek::hasDenormalsAreZero(vek::nativeCpu)) return vekStsCpuNotSupportedErr;
  constexpr unsigned kDenormalsAreZero = 0x40;
  const unsigned rest = _mm_getcsr() & ~kDenormalsAreZero;
  _mm_setcsr(value ? rest | kDenormalsAreZero : rest);
  return vekStsNoErr;
}
