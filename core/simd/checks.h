// SPDX-License-Identifier: Apache-2.0
// The argument checks that nearly every function begins with.
#ifndef VEK_CORE_SIMD_CHECKS_H
#define VEK_CORE_SIMD_CHECKS_H

#include "core/simd/level.h"
#include "vek/status.h"

namespace vek::VEK_SLOT {
namespace {

// Null pointers first, then the length: the order of the whole library.
template <class... P>
VEK_INLINE VekStatus checkVectors(int len, const P*... p) {
  if ((!p || ...)) return vekStsNullPtrErr;
  return len < 1 ? vekStsSizeErr : vekStsNoErr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
