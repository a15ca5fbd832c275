// SPDX-License-Identifier: Apache-2.0
// How the lanes of a register are put in order by a mask: those whose bit is set to the front, the order kept. The
// tables are the same for all slots and defined once in split_orders.cpp.
#ifndef VEK_STATS_SPLIT_ORDERS_H
#define VEK_STATS_SPLIT_ORDERS_H

#include <stdint.h>

namespace vek {

// By the mask of lanes below the pivot: the numbers of those lanes, then of the others, a byte each.
struct SplitOrders8 {
  alignas(64) uint64_t lanes[256];
  uint8_t count[256];
};
extern __attribute__((visibility("hidden"))) const SplitOrders8 splitOrders8;

// The same as byte shuffles of 16 bytes, for N lanes.
template <int N>
struct SplitShuffles {
  alignas(64) uint8_t bytes[1 << N][16];
};
extern __attribute__((visibility("hidden"))) const SplitShuffles<4> splitShuffles4;
extern __attribute__((visibility("hidden"))) const SplitShuffles<8> splitShuffles8;

}  // namespace vek

#endif
