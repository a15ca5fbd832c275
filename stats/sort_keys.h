// SPDX-License-Identifier: Apache-2.0
// Element types seen as integer keys: descending order through the complement, floats through a mapping to integers of
// the same order.
#ifndef VEK_STATS_SORT_KEYS_H
#define VEK_STATS_SORT_KEYS_H

#include "core/simd/driver.h"
#include "core/simd/order.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
VEK_INLINE void complement(T* v, ptrdiff_t n) {
  mapPacks([](auto x) VEK_LAMBDA { return ~x; }, v, n, v);
}

// Maps in place; with `flip` -1, to the complement. True if there was a NaN.
VEK_INLINE bool floatsToKeys(int32_t* v, ptrdiff_t n, int32_t flip) {
  Mask<float> nans = asMask<float>(zeros<float>());
  const auto key = [&nans, flip](Pack<int32_t> x) VEK_LAMBDA {
    const Pack<float> f = bits<float>(x);
    nans = nans | (f != f);
    return floatOrder(x) ^ broadcast(flip);
  };
  mapPacks(key, v, n, v);
  return any(nans);
}
VEK_INLINE void keysToFloats(int32_t* v, ptrdiff_t n, int32_t flip) {
  mapPacks([flip](Pack<int32_t> x) VEK_LAMBDA { return floatOrder(x ^ broadcast(flip)); }, v, n, v);
}

// True for the key of a NaN (its flip taken back): outside the keys of the infinities.
VEK_INLINE bool isNanKey(int32_t key) { return key > 0x7F800000 || key < int32_t(0x807FFFFF); }

// NaN keys to the end, each with its index if there are any; the number of other keys.
template <class Index>
VEK_INLINE ptrdiff_t gatherNans(int32_t* v, Index* index, ptrdiff_t n, int32_t flip) {
  ptrdiff_t i = 0;
  while (i < n) {
    if (!isNanKey(v[i] ^ flip)) {
      ++i;
      continue;
    }
    --n;
    const int32_t key = v[i];
    v[i] = v[n];
    v[n] = key;
    if (index != nullptr) {
      const Index at = index[i];
      index[i] = index[n];
      index[n] = at;
    }
  }
  return n;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
