// SPDX-License-Identifier: Apache-2.0
// Aligned memory: each block remembers what the heap gave for it.
#include "core/memory.h"

#include <stdlib.h>
#include <string.h>

namespace vek {

namespace {

constexpr int64_t kAlignment = 64;
// Below each block lies the address that the heap gave; with the worst misalignment that takes this many bytes more.
constexpr int64_t kOverhead = kAlignment + sizeof(void*);

}  // namespace

void* allocate(int64_t bytes) {
  if (bytes < 1 || bytes > INT64_MAX - kOverhead) return nullptr;
  void* raw = malloc(static_cast<size_t>(bytes + kOverhead));
  if (!raw) return nullptr;
  const uintptr_t address = reinterpret_cast<uintptr_t>(raw);
  const uintptr_t aligned = (address + kOverhead - 1) & ~static_cast<uintptr_t>(kAlignment - 1);
  char* block = static_cast<char*>(raw) + (aligned - address);
  memcpy(block - sizeof raw, &raw, sizeof raw);
  return block;
}

void release(void* block) {
  if (!block) return;
  void* raw;
  memcpy(&raw, static_cast<char*>(block) - sizeof raw, sizeof raw);
  free(raw);
}

}  // namespace vek
