// SPDX-License-Identifier: Apache-2.0
// Element addresses for the index-offset twins, formed on integers: a null base takes its index like any other.
#ifndef VEK_IDX_AT_H
#define VEK_IDX_AT_H

#include <stdint.h>

namespace vek {

template <class T>
static inline T* at(T* base, int index) {
  return reinterpret_cast<T*>(reinterpret_cast<intptr_t>(base) + intptr_t(index) * intptr_t(sizeof(T)));
}

// An array that may be absent stays absent.
template <class T>
static inline T* atIfAny(T* base, int index) {
  return base ? at(base, index) : nullptr;
}

}  // namespace vek

#endif
