// SPDX-License-Identifier: Apache-2.0
// The allocator's dispatched functions.
#include "core/memory.h"
#include "vek/core.h"

namespace vek::VEK_SLOT {
namespace {

// The documented size in bytes: a 32-bit product that wraps.
template <typename T>
T* allocateElements(int len) {
  if (len < 1) return nullptr;
  const int32_t bytes = static_cast<int32_t>(static_cast<uint32_t>(len) * static_cast<uint32_t>(sizeof(T)));
  return static_cast<T*>(allocate(bytes));
}

}  // namespace

Vek32s* veksMalloc_32s(int len) { return allocateElements<Vek32s>(len); }
Vek32f* veksMalloc_32f(int len) { return allocateElements<Vek32f>(len); }
Vek32sc* veksMalloc_32sc(int len) { return allocateElements<Vek32sc>(len); }
Vek32fc* veksMalloc_32fc(int len) { return allocateElements<Vek32fc>(len); }

void veksFree(void* ptr) { release(ptr); }

}  // namespace vek::VEK_SLOT
