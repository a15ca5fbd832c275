// SPDX-License-Identifier: Apache-2.0
// Which processor it is: the vendor, the type, the cores on its die.
#include "core/cpuid.h"

namespace vek {

bool isCheckedVendor(const CpuidSource& cpu) {
  const CpuidRegs leaf0 = cpuid(cpu, 0);
  return leaf0.ebx == word("Genu") && leaf0.edx == word("ineO") && leaf0.ecx == word("rvel");
}

namespace {

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

}  // namespace vek

VekCpuType vekGetCpuType() { return vek::cpuType(vek::nativeCpu); }

int vekGetNumCoresOnDie() { return vek::numCoresOnDie(vek::nativeCpu); }
