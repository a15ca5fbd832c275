// SPDX-License-Identifier: Apache-2.0
// Sorts by value.
#include "core/simd/checks.h"
#include "stats/sort_keys.h"
#include "stats/sort_values.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- bytes ----------------------------------------------------------------------------------------------------------

// Counters of a table and room, so that no two tables lie a multiple of 4 KiB apart: stores would seem to hit the next
// table's loads.
constexpr int kCountRow = 256 + 16;

// Eight tables take turns, so that repeated values do not wait for the store of the last count, and long runs of one
// value are counted 32 at a time. The first table becomes their sum.
VEK_INLINE void countBytes(const uint8_t* v, ptrdiff_t n, uint32_t (&count)[8][kCountRow]) {
  ptrdiff_t i = 0;
  for (; i + 32 <= n; i += 32) {
    if (all(load(v + i) == broadcast(v[i]))) {
      count[0][v[i]] += 32;
      continue;
    }
    for (const uint8_t* p = v + i; p < v + i + 32; p += 8) {
      uint64_t x;
      __builtin_memcpy(&x, p, 8);
#pragma GCC unroll 8
      for (int k = 0; k < 8; ++k) ++count[k][x >> 8 * k & 0xFF];
    }
  }
  for (; i < n; ++i) ++count[0][v[i]];
  for (int k = 0; k < 256; k += 8) {
    Pack<uint32_t> sum = load(count[0] + k);
#pragma GCC unroll 8
    for (int t = 1; t < 8; ++t) sum = sum + load(count[t] + k);
    store(count[0] + k, sum);
  }
}

// `run` elements of one value; bytes up to `end` may be overwritten beyond them.
VEK_INLINE uint8_t* fillRun(uint8_t* to, ptrdiff_t run, uint8_t value, const uint8_t* end) {
  if (end - to < run + 32) {
    for (ptrdiff_t i = 0; i < run; ++i) to[i] = value;
    return to + run;
  }
  const Pack<uint8_t> x = broadcast(value);
  store(to, x);
  for (ptrdiff_t i = 32; i < run; i += 32) store(to + i, x);
  return to + run;
}

VEK_NOINLINE void sortByCounting(uint8_t* v, ptrdiff_t n, bool descending) {
  alignas(32) uint32_t count[8][kCountRow] = {};
  countBytes(v, n, count);
  uint8_t* to = v;
  for (int k = 0; k < 256; ++k) {
    const int value = descending ? 255 - k : k;
    to = fillRun(to, ptrdiff_t(count[0][value]), uint8_t(value), v + n);
  }
}

constexpr ptrdiff_t kCountFrom = 128;

VEK_INLINE VekStatus sortBytes(Vek8u* v, int len, bool descending) {
  if (const VekStatus s = checkVectors(len, v)) return s;
  if (len >= kCountFrom) {
    sortByCounting(v, len, descending);
  } else {
    if (descending) complement(v, len);
    sortShort(v, len);
    if (descending) complement(v, len);
  }
  return vekStsNoErr;
}

// ---- integers and floats --------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE VekStatus sortIntegers(T* v, int len, bool descending) {
  if (const VekStatus s = checkVectors(len, v)) return s;
  if (descending) complement(v, len);
  sortKeys(v, len);
  if (descending) complement(v, len);
  return vekStsNoErr;
}

VEK_NOINLINE void sortFloatBits(int32_t* v, ptrdiff_t n, int32_t flip) {
  const bool nans = floatsToKeys(v, n, flip);
  const ptrdiff_t numbers = nans ? gatherNans<int>(v, nullptr, n, flip) : n;
  if (numbers > 0) sortKeys(v, numbers);
  keysToFloats(v, n, flip);
}

VEK_INLINE VekStatus sortFloats(Vek32f* v, int len, bool descending) {
  if (const VekStatus s = checkVectors(len, v)) return s;
  sortFloatBits(reinterpret_cast<int32_t*>(v), len, descending ? -1 : 0);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksSortAscend_8u_I(Vek8u* pSrcDst, int len) { return sortBytes(pSrcDst, len, false); }
VekStatus veksSortAscend_16s_I(Vek16s* pSrcDst, int len) { return sortIntegers(pSrcDst, len, false); }
VekStatus veksSortAscend_32s_I(Vek32s* pSrcDst, int len) { return sortIntegers(pSrcDst, len, false); }
VekStatus veksSortAscend_32f_I(Vek32f* pSrcDst, int len) { return sortFloats(pSrcDst, len, false); }
VekStatus veksSortDescend_8u_I(Vek8u* pSrcDst, int len) { return sortBytes(pSrcDst, len, true); }
VekStatus veksSortDescend_16s_I(Vek16s* pSrcDst, int len) { return sortIntegers(pSrcDst, len, true); }
VekStatus veksSortDescend_32s_I(Vek32s* pSrcDst, int len) { return sortIntegers(pSrcDst, len, true); }
VekStatus veksSortDescend_32f_I(Vek32f* pSrcDst, int len) { return sortFloats(pSrcDst, len, true); }

}  // namespace vek::VEK_SLOT
