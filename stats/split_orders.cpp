// SPDX-License-Identifier: Apache-2.0
#include "stats/split_orders.h"

namespace vek {
namespace {

consteval SplitOrders8 makeOrders8() {
  SplitOrders8 t{};
  for (int m = 0; m < 256; ++m) {
    int at = 0;
    for (int below = 1; below >= 0; --below) {
      for (int k = 0; k < 8; ++k)
        if ((m >> k & 1) == below) t.lanes[m] |= uint64_t(k) << 8 * at++;
      if (below) t.count[m] = uint8_t(at);
    }
  }
  return t;
}

template <int N>
consteval SplitShuffles<N> makeShuffles() {
  SplitShuffles<N> t{};
  for (int m = 0; m < 1 << N; ++m) {
    int at = 0;
    for (int below = 1; below >= 0; --below)
      for (int k = 0; k < N; ++k)
        if ((m >> k & 1) == below)
          for (int b = 0; b < 16 / N; ++b) t.bytes[m][at++] = uint8_t(k * (16 / N) + b);
  }
  return t;
}

}  // namespace

constexpr SplitOrders8 splitOrders8 = makeOrders8();
constexpr SplitShuffles<4> splitShuffles4 = makeShuffles<4>();
constexpr SplitShuffles<8> splitShuffles8 = makeShuffles<8>();

}  // namespace vek
