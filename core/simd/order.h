// SPDX-License-Identifier: Apache-2.0
// The order of lanes: two packs into order, networks of that for several, medians of few, and floats as integers of the
// same order.
#ifndef VEK_CORE_SIMD_ORDER_H
#define VEK_CORE_SIMD_ORDER_H

#include "core/simd/compare.h"

namespace vek::VEK_SLOT {
namespace {

// A float's bits to an integer of the same order, -0 below +0 and NaNs outside the infinities; its own inverse.
VEK_INLINE Pack<int32_t> floatOrder(Pack<int32_t> x) { return x ^ bits<int32_t>(bits<uint32_t>(x >> 31) >> 1); }

template <class T>
VEK_INLINE void sortTwo(Pack<T>& a, Pack<T>& b) {
  const Pack<T> low = minOf(a, b);
  b = maxOf(a, b);
  a = low;
}

// Three values into ascending order.
template <class T>
VEK_INLINE void sortThree(Pack<T>& a, Pack<T>& b, Pack<T>& c) {
  sortTwo(b, c);
  sortTwo(a, b);
  sortTwo(b, c);
}

template <class T>
VEK_INLINE Pack<T> medianOf3(Pack<T> a, Pack<T> b, Pack<T> c) {
  sortTwo(a, b);
  return maxOf(a, minOf(b, c));
}
template <class T>
VEK_INLINE Pack<T> medianOf5(Pack<T> a, Pack<T> b, Pack<T> c, Pack<T> d, Pack<T> e) {
  sortTwo(a, b);
  sortTwo(c, d);
  return medianOf3(maxOf(a, c), minOf(b, d), e);
}

// ---- networks -------------------------------------------------------------------------------------------------------

struct Comparator {
  uint8_t a, b;
};
template <int R>
struct SortNetwork;
template <>
struct SortNetwork<1> {
  static constexpr int size = 0;
  static constexpr Comparator steps[1] = {};
};
template <>
struct SortNetwork<2> {
  static constexpr int size = 1;
  static constexpr Comparator steps[1] = {{0, 1}};
};
template <>
struct SortNetwork<4> {
  static constexpr int size = 5;
  static constexpr Comparator steps[5] = {{0, 1}, {2, 3}, {0, 2}, {1, 3}, {1, 2}};
};
template <>
struct SortNetwork<8> {
  static constexpr int size = 19;
  static constexpr Comparator steps[19] = {{0, 2}, {1, 3}, {4, 6}, {5, 7}, {0, 4}, {1, 5}, {2, 6},
                                           {3, 7}, {0, 1}, {2, 3}, {4, 5}, {6, 7}, {2, 4}, {3, 5},
                                           {1, 4}, {3, 6}, {1, 2}, {3, 4}, {5, 6}};
};
template <>
struct SortNetwork<16> {
  static constexpr int size = 60;
  static constexpr Comparator steps[60] = {
      {0, 13},  {1, 12},  {2, 15},  {3, 14},  {4, 8},   {5, 6},   {7, 11}, {9, 10},  {0, 5},   {1, 7},
      {2, 9},   {3, 4},   {6, 13},  {8, 14},  {10, 15}, {11, 12}, {0, 1},  {2, 3},   {4, 5},   {6, 8},
      {7, 9},   {10, 11}, {12, 13}, {14, 15}, {0, 2},   {1, 3},   {4, 10}, {5, 11},  {6, 7},   {8, 9},
      {12, 14}, {13, 15}, {1, 2},   {3, 12},  {4, 6},   {5, 7},   {8, 10}, {9, 11},  {13, 14}, {1, 4},
      {2, 6},   {5, 8},   {7, 10},  {9, 13},  {11, 14}, {2, 4},   {3, 6},  {9, 12},  {11, 13}, {3, 5},
      {6, 8},   {7, 9},   {10, 12}, {3, 4},   {5, 6},   {7, 8},   {9, 10}, {11, 12}, {6, 7},   {8, 9}};
};

// R packs into order, lane by lane.
template <int R, class T>
VEK_INLINE void sortAcross(Pack<T> (&v)[R]) {
  using Network = SortNetwork<R>;
#pragma GCC unroll 64
  for (int i = 0; i < Network::size; ++i) sortTwo(v[Network::steps[i].a], v[Network::steps[i].b]);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
