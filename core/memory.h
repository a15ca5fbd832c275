// SPDX-License-Identifier: Apache-2.0
// The aligned allocator behind every block that the library hands out or uses itself.
#ifndef VEK_CORE_MEMORY_H
#define VEK_CORE_MEMORY_H

#include <stddef.h>
#include <stdint.h>

namespace vek {

// A block of `bytes` bytes, aligned to 64; null if `bytes` is below 1 or the heap has no such block.
void* allocate(int64_t bytes);

// Returns a block of allocate() to the heap; null is harmless.
void release(void* block);

}  // namespace vek

#endif
