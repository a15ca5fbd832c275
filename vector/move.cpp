// SPDX-License-Identifier: Apache-2.0
// Copying and setting whole vectors. The C library's block moves are the right kernels for what they do.
#include <string.h>

#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
VEK_INLINE VekStatus copy(const T* src, T* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (src != dst) memcpy(dst, src, size_t(len) * sizeof(T));
  return vekStsNoErr;
}

template <class T>
VEK_INLINE VekStatus move(const T* src, T* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  memmove(dst, src, size_t(len) * sizeof(T));
  return vekStsNoErr;
}

template <class T>
VEK_INLINE VekStatus zero(T* dst, int len) {
  if (const VekStatus s = checkVectors(len, dst)) return s;
  memset(dst, 0, size_t(len) * sizeof(T));
  return vekStsNoErr;
}

// The value travels as its bit pattern, so that no float operation can touch it.
template <class T>
VEK_INLINE VekStatus set(T val, T* dst, int len) {
  if (const VekStatus s = checkVectors(len, dst)) return s;
  if constexpr (sizeof(T) == 1) {
    memset(dst, val, size_t(len));
  } else {
    using Bits = UnsignedOf<T>;
    Bits pattern;
    __builtin_memcpy(&pattern, &val, sizeof(T));
    const Pack<Bits> x = broadcast(pattern);
    mapPacks([x]() VEK_LAMBDA { return x; }, reinterpret_cast<Bits*>(dst), len);
  }
  return vekStsNoErr;
}

// ---- bit strings ----------------------------------------------------------------------------------------------------

// Up to eight bits from bit position `at`, the first in the top bit; bytes that hold none of them are not read.
VEK_INLINE unsigned takeBits(const Vek8u* src, int64_t at, int count) {
  const int offset = int(at & 7);
  unsigned v = unsigned(src[at >> 3]) << offset;
  if (offset + count > 8) v |= unsigned(src[(at >> 3) + 1]) >> (8 - offset);
  return v & 0xFF;
}

// The top `count` bits of v into one byte, from bit `offset` of it on; its other bits stay.
VEK_INLINE void putBits(Vek8u* dst, int offset, int count, unsigned v) {
  const unsigned mask = (0xFFu >> offset) & ~(0xFFu >> (offset + count));
  *dst = Vek8u((*dst & ~mask) | ((v >> offset) & mask));
}

// n whole bytes from a source that is `offset` (1..7) bits ahead; reads n + 1 bytes, every one of them copied from.
VEK_INLINE void copyShifted(const Vek8u* src, int offset, Vek8u* dst, ptrdiff_t n) {
  constexpr ptrdiff_t lanes = Pack<uint8_t>::lanes;
  const auto block = [=](ptrdiff_t i) VEK_LAMBDA {
    store(dst + i, (load(src + i) << offset) | (load(src + i + 1) >> (8 - offset)));
  };
  ptrdiff_t i = 0;
  if (n >= lanes) {
    for (; i + 2 * lanes <= n - lanes; i += 2 * lanes) block(i), block(i + lanes);
    for (; i < n - lanes; i += lanes) block(i);
    block(n - lanes);
  } else {
    for (; i < n; ++i) dst[i] = Vek8u(src[i] << offset | src[i + 1] >> (8 - offset));
  }
}

VEK_INLINE void copyBits(const Vek8u* src, int srcBit, Vek8u* dst, int dstBit, int64_t len) {
  int64_t at = srcBit;
  if (dstBit != 0 || len < 8) {
    const int head = int(len < 8 - dstBit ? len : 8 - dstBit);
    putBits(dst++, dstBit, head, takeBits(src, at, head));
    at += head, len -= head;
    // A string shorter than a byte may still cross into the next one.
    if (len < 8) {
      if (len > 0) putBits(dst, 0, int(len), takeBits(src, at, int(len)));
      return;
    }
  }
  const int64_t bytes = len >> 3;
  if ((at & 7) == 0) {
    memcpy(dst, src + (at >> 3), size_t(bytes));
  } else {
    copyShifted(src + (at >> 3), int(at & 7), dst, bytes);
  }
  const int left = int(len & 7);
  if (left != 0) putBits(dst + bytes, 0, left, takeBits(src, at + 8 * bytes, left));
}

}  // namespace

#define VEK_COPY_AND_MOVE(T)                                                                          \
  VekStatus veksCopy_##T(const Vek##T* pSrc, Vek##T* pDst, int len) { return copy(pSrc, pDst, len); } \
  VekStatus veksMove_##T(const Vek##T* pSrc, Vek##T* pDst, int len) { return move(pSrc, pDst, len); }
#define VEK_ZERO(T) \
  VekStatus veksZero_##T(Vek##T* pDst, int len) { return zero(pDst, len); }
#define VEK_SET(T) \
  VekStatus veksSet_##T(Vek##T val, Vek##T* pDst, int len) { return set(val, pDst, len); }

VEK_COPY_AND_MOVE(8u)
VEK_COPY_AND_MOVE(16s)
VEK_COPY_AND_MOVE(32s)
VEK_COPY_AND_MOVE(32f)
VEK_COPY_AND_MOVE(64s)
VEK_COPY_AND_MOVE(64f)
VEK_COPY_AND_MOVE(16sc)
VEK_COPY_AND_MOVE(32sc)
VEK_COPY_AND_MOVE(32fc)
VEK_COPY_AND_MOVE(64sc)
VEK_COPY_AND_MOVE(64fc)

VekStatus veksCopy_1u(const Vek8u* pSrc, int srcBitOffset, Vek8u* pDst, int dstBitOffset, int len) {
  if (!pSrc || !pDst) return vekStsNullPtrErr;
  if (len < 1 || srcBitOffset < 0 || dstBitOffset < 0) return vekStsSizeErr;
  copyBits(pSrc, srcBitOffset & 7, pDst, dstBitOffset & 7, len);
  return vekStsNoErr;
}

VEK_ZERO(8u)
VEK_ZERO(16s)
VEK_ZERO(32s)
VEK_ZERO(32f)
VEK_ZERO(32sc)
VEK_ZERO(32fc)

VEK_SET(8u)
VEK_SET(16s)
VEK_SET(32s)
VEK_SET(32f)
VEK_SET(32sc)
VEK_SET(32fc)

}  // namespace vek::VEK_SLOT
