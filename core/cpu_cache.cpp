// SPDX-License-Identifier: Apache-2.0
// The size of the largest cache.
#include "core/cpuid.h"

namespace vek {
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

CacheSize cacheSize;

}  // namespace
}  // namespace vek

VekStatus vekGetMaxCacheSizeB(int* pSizeByte) {
  return vek::cachedMaxCacheSize(vek::nativeCpu, vek::cacheSize, pSizeByte);
}
