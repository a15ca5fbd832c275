// SPDX-License-Identifier: Apache-2.0
// What the library asks of the processor. Each answer is a function of a CpuidSource, so that it can be worked out for
// any processor whose registers are known; nativeCpu is the one that the library runs on.
#ifndef VEK_CORE_CPU_H
#define VEK_CORE_CPU_H

#include <stdint.h>

#include "vek/core.h"

namespace vek {

struct CpuidRegs {
  uint32_t eax, ebx, ecx, edx;
};

struct CpuidSource {
  CpuidRegs (*cpuid)(const void* context, uint32_t leaf, uint32_t subleaf);
  uint64_t (*xgetbv)(const void* context);     // XCR0; asked only where OSXSAVE is set
  uint32_t (*mxcsrMask)(const void* context);  // the MXCSR mask that FXSAVE stores; asked only where SSE is set
  const void* context;
};

extern const CpuidSource nativeCpu;

// Writes the VEK_FEATURE mask. False, with nothing written, if the processor has no CPUID leaf 1 to tell features.
bool detectFeatures(const CpuidSource& cpu, uint64_t* features);

struct SlotChoice {
  int32_t slot;
  uint64_t enabledFeatures;  // the detected features that the slot's code may use
};

// The features among `detected` that code of the slot may use.
uint64_t enabledInSlot(int32_t slot, uint64_t detected);

SlotChoice chooseSlot(const CpuidSource& cpu);

bool isCheckedVendor(const CpuidSource& cpu);
VekCpuType cpuType(const CpuidSource& cpu);
int32_t numCoresOnDie(const CpuidSource& cpu);
bool hasDenormalsAreZero(const CpuidSource& cpu);

// The status starts as vekStsNoOperation while nothing has been computed.
struct CacheSize {
  VekStatus status = vekStsNoOperation;
  int32_t bytes = 0;
};

CacheSize maxCacheSize(const CpuidSource& cpu);

// The exported calls, with the processor and the memory of earlier answers as arguments. The memory may be filled by
// several threads at once: they all store the same answer.
struct FeatureCache {
  int32_t computed = 0;
  uint64_t features = 0;
};

VekStatus cpuFeatures(const CpuidSource& cpu, FeatureCache& cache, Vek64u* pFeaturesMask, Vek32u* pCpuidInfoRegs);
VekStatus cachedMaxCacheSize(const CpuidSource& cpu, CacheSize& cache, int* pSizeByte);

// The two clocks that the frequency is measured with.
struct ClockSource {
  uint64_t (*cycles)(void* context);
  int64_t (*fileTime)(void* context);  // wall clock in units of 100 ns since the start of 1601
  void* context;
};

int32_t measureFreqMhz(const ClockSource& clock);

}  // namespace vek

#endif
