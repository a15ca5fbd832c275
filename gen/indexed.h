// SPDX-License-Identifier: Apache-2.0
// Filling a vector with a function of the index, pack by pack.
#ifndef VEK_GEN_INDEXED_H
#define VEK_GEN_INDEXED_H

#include "core/simd/convert.h"
#include "core/simd/driver.h"

namespace vek::VEK_SLOT {
namespace {

// f(out, index) writes L elements, a multiple of eight, the first eight of which have the given indices. dst[0] has the
// index `first`. As the values depend on nothing else, the tail is a whole block that overlaps the one before it.
template <int L, class D, class F>
VEK_INLINE void fillIndexed(D* dst, ptrdiff_t n, int32_t first, F f) {
  Pack<int32_t> index = iota<int32_t>() + broadcast(first);
  if (n < L) {
    if (n < 1) return;
    Block<D, L> block;
    f(block.x, index);
    copyShort(dst, block.x, n * ptrdiff_t(sizeof(D)));
    return;
  }
  const Pack<int32_t> step = broadcast(int32_t(L));
  for (ptrdiff_t i = 0; i + L <= n; i += L) {
    f(dst + i, index);
    index = index + step;
  }
  f(dst + n - L, iota<int32_t>() + broadcast(int32_t(first + (n - L))));
}

template <int K>
VEK_INLINE Pack<int32_t> indexPlus(Pack<int32_t> index) {
  return K == 0 ? index : index + broadcast(int32_t(K));
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
