// SPDX-License-Identifier: Apache-2.0
// Sorting networks for short ranges. R packs of N lanes are seen as N columns of R elements: the columns are sorted by
// a network between registers, then neighbouring columns are merged two by two, four by four and so on (bitonic merges
// whose last log2(R) steps again run between registers), and a transposition puts the columns one behind the other.
#ifndef VEK_STATS_SORT_NETWORK_H
#define VEK_STATS_SORT_NETWORK_H

#include "core/simd/convert.h"
#include "core/simd/order.h"

namespace vek::VEK_SLOT {
namespace {

// ---- lanes of one pack ----------------------------------------------------------------------------------------------

// Lane k of the result is lane k ^ D.
template <int D, class E>
VEK_INLINE Pack<E> exchangeLanes(Pack<E> a) {
  constexpr int bytes = D * int(sizeof(E));
  if constexpr (bytes == 16) return swapHalves(a);
  if constexpr (bytes == 8) return shuffle32<0x4E>(a);
  if constexpr (bytes == 4) return shuffle32<0xB1>(a);
}

// Every group of G lanes in the opposite order.
template <int G, class E>
VEK_INLINE Pack<E> reverseGroups(Pack<E> a) {
  if constexpr (G == Pack<E>::lanes) {
    return reverse(a);
  } else if constexpr (G == 2) {
    return exchangeLanes<1>(a);
  } else {
    static_assert(G == 4 && sizeof(E) == 4);
    return shuffle32<0x1B>(a);
  }
}

// ---- columns --------------------------------------------------------------------------------------------------------

template <int D, class E>
VEK_INLINE Pack<E> orderLanes(Pack<E> a) {
  const Pack<E> b = exchangeLanes<D>(a);
  return blendLanes<D>(minOf(a, b), maxOf(a, b));
}

// Merges the sorted runs of G/2 columns each into runs of G columns.
template <int G, int R, class E>
VEK_INLINE void mergeColumns(Pack<E> (&v)[R]) {
  if constexpr (R == 1) {
    const Pack<E> b = reverseGroups<G>(v[0]);
    v[0] = blendLanes<G / 2>(minOf(v[0], b), maxOf(v[0], b));
  } else {
#pragma GCC unroll 8
    for (int i = 0; i < R / 2; ++i) {
      const Pack<E> b = reverseGroups<G>(v[R - 1 - i]);
      const Pack<E> low = minOf(v[i], b), high = maxOf(v[i], b);
      v[i] = blendLanes<G / 2>(low, high);
      v[R - 1 - i] = reverseGroups<G>(blendLanes<G / 2>(high, low));
    }
  }
#pragma GCC unroll 16
  for (int i = 0; i < R; ++i) {
    if constexpr (G >= 8) v[i] = orderLanes<2>(v[i]);
    if constexpr (G >= 4) v[i] = orderLanes<1>(v[i]);
  }
#pragma GCC unroll 8
  for (int d = R / 2; d > 0; d /= 2) {
#pragma GCC unroll 16
    for (int i = 0; i < R; ++i)
      if ((i & d) == 0) sortTwo(v[i], v[i + d]);
  }
}

// Elements of Bytes bytes of the low or the high half of each 16 bytes, alternating.
template <int Bytes, bool High, class E>
VEK_INLINE Pack<E> zip(Pack<E> a, Pack<E> b) {
  using Raw = typename VectorOf<long long, kRegBytes<E>>::type;
  return each<Pack<E>>([&](int i) VEK_LAMBDA {
    const Raw x = (Raw)a.r[i], y = (Raw)b.r[i];
    return regCast<typename Pack<E>::Reg>(High ? unpackHigh<Bytes>(x, y) : unpackLow<Bytes>(x, y));
  });
}

// Stores the columns one behind the other, transposed in squares as wide as 16 bytes.
template <int R, class E>
VEK_INLINE void storeColumns(E* p, const Pack<E> (&v)[R]) {
  constexpr int lanes = 16 / int(sizeof(E));
  // Rows of column c and of the one at the same place of the upper 16 bytes.
  const auto put = [p](int c, int row, Pack<E> x) VEK_LAMBDA {
    storeBytes<16>(p + c * R + row, half(x, 0));
    storeBytes<16>(p + (c + lanes) * R + row, half(x, 1));
  };
  if constexpr (sizeof(E) == 8) {
#pragma GCC unroll 8
    for (int i = 0; i < R; i += 2) {
      put(0, i, zip<8, false>(v[i], v[i + 1]));
      put(1, i, zip<8, true>(v[i], v[i + 1]));
    }
  } else if constexpr (R == 2) {
    put(0, 0, zip<4, false>(v[0], v[1]));
    put(2, 0, zip<4, true>(v[0], v[1]));
  } else {
#pragma GCC unroll 4
    for (int i = 0; i < R; i += 4) {
      const Pack<E> a = zip<4, false>(v[i], v[i + 1]), b = zip<4, true>(v[i], v[i + 1]);
      const Pack<E> c = zip<4, false>(v[i + 2], v[i + 3]), d = zip<4, true>(v[i + 2], v[i + 3]);
      put(0, i, zip<8, false>(a, c));
      put(1, i, zip<8, true>(a, c));
      put(2, i, zip<8, false>(b, d));
      put(3, i, zip<8, true>(b, d));
    }
  }
}

// Sorts exactly R packs at p.
template <int R, class E>
VEK_NOINLINE void sortPacks(E* p) {
  constexpr int lanes = Pack<E>::lanes;
  Pack<E> v[R];
#pragma GCC unroll 16
  for (int i = 0; i < R; ++i) v[i] = load(p + i * lanes);
  sortAcross(v);
  mergeColumns<2>(v);
  mergeColumns<4>(v);
  if constexpr (lanes == 8) mergeColumns<8>(v);
  storeColumns(p, v);
}

// The largest number of packs and of elements that a network sorts.
constexpr int kNetworkPacks = 16;
template <class E>
constexpr int kNetworkSize = kNetworkPacks* Pack<E>::lanes;

// Packs of the network that n elements need.
template <class E>
VEK_INLINE int networkPacks(int n) {
  constexpr int lanes = Pack<E>::lanes;
  return n <= 2 * lanes ? 2 : n <= 4 * lanes ? 4 : n <= 8 * lanes ? 8 : 16;
}

template <class E>
VEK_INLINE void sortNetwork(E* p, int packs) {
  if (packs == 2) return sortPacks<2>(p);
  if (packs == 4) return sortPacks<4>(p);
  if (packs == 8) return sortPacks<8>(p);
  return sortPacks<16>(p);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
