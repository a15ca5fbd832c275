// SPDX-License-Identifier: Apache-2.0
// The sort of 16- and 32-bit keys into ascending order.
#ifndef VEK_STATS_SORT_VALUES_H
#define VEK_STATS_SORT_VALUES_H

#include "stats/sort_partition.h"
#include "stats/sort_ranges.h"

namespace vek::VEK_SLOT {
namespace {

// At most kNetworkSize keys, of any type that widens to int32, by a network; unused places hold the largest key.
template <class T>
VEK_NOINLINE void sortShort(T* v, ptrdiff_t n) {
  alignas(64) int32_t block[kNetworkSize<int32_t>];
  const int packs = networkPacks<int32_t>(int(n));
  const Pack<int32_t> most = broadcast(int32_t(0x7FFFFFFF));
  if ((n & 7) != 0) store(block + (n & -8), most);
  if constexpr (sizeof(T) == 4) {
    __builtin_memcpy(block, v, size_t(n) * 4);
  } else {
    ptrdiff_t i = 0;
    for (; i + 8 <= n; i += 8) store(block + i, loadKeys(v + i));
    for (; i < n; ++i) block[i] = v[i];
  }
  for (ptrdiff_t i = (n + 7) & -8; i < packs * 8; i += 8) store(block + i, most);
  sortNetwork(block, packs);
  if constexpr (sizeof(T) == 4) {
    __builtin_memcpy(v, block, size_t(n) * 4);
  } else {
    for (ptrdiff_t i = 0; i < n; ++i) v[i] = T(block[i]);
  }
}

template <class T>
VEK_NOINLINE void sortKeys(T* v, ptrdiff_t n) {
  constexpr ptrdiff_t shortest = kNetworkSize<int32_t>;
  if (n <= shortest) return sortShort(v, n);
  constexpr int32_t least = int32_t(UnsignedOf<int32_t>(-1) << (8 * sizeof(T) - 1));
  RangeStack stack;
  Range r = {0, n, least, ~least, 0};
  for (;;) {
    bool more = false;
    int32_t pivot;
    if (r.size <= shortest) {
      sortShort(v + r.first, r.size);
    } else if (choosePivot(v, r, pivot)) {
      more = continueWith(r, partition(v + r.first, r.size, T(pivot)), pivot, stack);
    }
    if (more) continue;
    do {
      if (stack.count == 0) return;
      r = stack.pop();
    } while (r.size < 2);
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
