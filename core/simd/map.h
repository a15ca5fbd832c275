// SPDX-License-Identifier: Apache-2.0
// Element-wise functions as a whole: the checks of the arguments, then the loop.
#ifndef VEK_CORE_SIMD_MAP_H
#define VEK_CORE_SIMD_MAP_H

#include "core/simd/checks.h"
#include "core/simd/driver.h"

namespace vek::VEK_SLOT {
namespace {

// op on packs of the sources, complex elements whole.
template <class Op, class D, class... S>
VEK_INLINE void mapElements(Op op, D* dst, ptrdiff_t n, const S*... src) {
  if constexpr (kSame<D, Vek32fc> || kSame<D, Vek32sc>) {
    mapComplex(op, dst, n, src...);
  } else {
    mapPacks(op, dst, n, src...);
  }
}

// The operation with its operands kept in registers, for one that uses them more than once.
template <class Op>
VEK_INLINE auto held(Op op) {
  return weighted<kWeightOf<Op>>([op](auto... x) VEK_LAMBDA { return op(inRegister(x)...); });
}

template <class Op, class D, class... S>
VEK_INLINE VekStatus mapChecked(Op op, D* dst, int len, const S*... src) {
  if (const VekStatus status = checkVectors(len, src..., dst)) return status;
  mapElements(op, dst, len, src...);
  return vekStsNoErr;
}

// The same for f(dst, src...) on blocks of L elements.
template <int L, class F, class D, class... S>
VEK_INLINE VekStatus sweepChecked(F f, D* dst, int len, const S*... src) {
  if (const VekStatus status = checkVectors(len, src..., dst)) return status;
  sweep<L>(f, dst, len, src...);
  return vekStsNoErr;
}
template <int L, class F, class D1, class D2, class... S>
VEK_INLINE VekStatus sweepTwoChecked(F f, D1* dst1, D2* dst2, int len, const S*... src) {
  if (const VekStatus status = checkVectors(len, src..., dst1, dst2)) return status;
  sweepTwo<L>(f, dst1, dst2, len, src...);
  return vekStsNoErr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
