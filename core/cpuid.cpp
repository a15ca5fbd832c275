// SPDX-License-Identifier: Apache-2.0
// The processor that the library runs on, as a source of CPUID registers.
#include <cpuid.h>
#include <string.h>

#include "core/cpu.h"

namespace vek {
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

}  // namespace

constinit const CpuidSource nativeCpu = {nativeCpuid, nativeXgetbv, nativeMxcsrMask, nullptr};

}  // namespace vek
