// SPDX-License-Identifier: Apache-2.0
// What the derived overloads on std::span share.
#ifndef VEK_LENGTHS_HPP
#define VEK_LENGTHS_HPP

#include <limits.h>

#include "vek/types.h"

namespace vek::detail {

// The common length, or 0, which every function refuses.
template <class First, class... Rest>
constexpr int len(const First& first, const Rest&... rest) {
  return first.size() <= INT_MAX && ((rest.size() == first.size()) && ... && true) ? int(first.size()) : 0;
}
inline const Vek8u* bytes(const void* p) { return static_cast<const Vek8u*>(p); }
inline Vek8u* bytes(void* p) { return static_cast<Vek8u*>(p); }

}  // namespace vek::detail

#endif
