// SPDX-License-Identifier: Apache-2.0
// CPUID's leaves and the bits of their registers, read by every file that asks for the processor.
#ifndef VEK_CORE_CPUID_H
#define VEK_CORE_CPUID_H

#include "core/cpu.h"

namespace vek {

constexpr uint32_t kExtendedLeaves = 0x80000000;

constexpr bool bit(uint32_t word, int n) { return (word >> n & 1) != 0; }
constexpr uint32_t field(uint32_t word, int low, int width) { return word >> low & ((1u << width) - 1); }

// A fixed-length text as the little-endian word that CPUID returns it in.
constexpr uint32_t word(const char (&text)[5]) {
  uint32_t value = 0;
  for (int i = 3; i >= 0; --i) value = value << 8 | static_cast<unsigned char>(text[i]);
  return value;
}

inline CpuidRegs cpuid(const CpuidSource& cpu, uint32_t leaf, uint32_t subleaf = 0) {
  return cpu.cpuid(cpu.context, leaf, subleaf);
}

inline uint32_t maxLeaf(const CpuidSource& cpu) { return cpuid(cpu, 0).eax; }
inline uint32_t maxExtendedLeaf(const CpuidSource& cpu) { return cpuid(cpu, kExtendedLeaves).eax; }

// Leaf 7, all zero where the processor has none.
inline CpuidRegs extendedFeatureRegs(const CpuidSource& cpu) { return maxLeaf(cpu) >= 7 ? cpuid(cpu, 7) : CpuidRegs{}; }

// AVX2 code also uses FMA, BMI1 and BMI2; a processor counts only with all four.
inline bool hasAvx2Set(const CpuidRegs& leaf1, const CpuidRegs& leaf7) {
  return bit(leaf1.ecx, 12) && bit(leaf7.ebx, 5) && bit(leaf7.ebx, 3) && bit(leaf7.ebx, 8);
}

constexpr int kFeatureSSE = 25;  // leaf 1 EDX

}  // namespace vek

#endif
