// SPDX-License-Identifier: Apache-2.0
// Conversions from and to packed 24-bit integers, eight elements (exactly 24 bytes) at a time.
#include "core/simd/bytes.h"
#include "core/simd/map.h"
#include "core/simd/scale.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kBlock = Pack<int32_t>::lanes;
constexpr int32_t kHigh24 = (1 << 23) - 1;
constexpr uint32_t kHigh24u = (1u << 24) - 1;

// ---- unpacking ------------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE Pack<T> load24(const Vek24u* p) {
  return loadTriplesHigh<T>(p->byte) >> 8;
}

template <class T, class D, class Op>
VEK_INLINE VekStatus unpackVector(Op op, const Vek8u* src, D* dst, int len) {
  return sweepChecked<kBlock>([op](D* d, const Vek24u* x) VEK_LAMBDA { store(d, op(load24<T>(x))); }, dst, len,
                              reinterpret_cast<const Vek24u*>(src));
}

constexpr auto kSame32 = [](auto x) VEK_LAMBDA { return x; };
constexpr auto kAsFloat = [](auto x) VEK_LAMBDA { return toFloat(bits<int32_t>(x)); };

// ---- packing --------------------------------------------------------------------------------------------------------

// op turns packs of the source into packs of 32-bit integers in the range of 24 bits.
template <class S, class Op>
VEK_INLINE void packVector(Op op, const S* src, Vek8u* dst, int len) {
  sweep<kBlock>([op](Vek24u* d, const S* x) VEK_LAMBDA { storeTriples(d->byte, op(load(x))); },
                reinterpret_cast<Vek24u*>(dst), len, src);
}

template <class T>
VEK_INLINE Pack<T> clamp24(Pack<T> x) {
  if constexpr (kSigned<T>) {
    return minOf(maxOf(x, broadcast(T(-kHigh24 - 1))), broadcast(T(kHigh24)));
  } else {
    return minOf(x, broadcast(T(kHigh24u)));
  }
}

template <class T>
VEK_INLINE VekStatus pack24Scaled(const T* src, Vek8u* dst, int len, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (scaleFactor > 32) {
    __builtin_memset(dst, 0, size_t(len) * sizeof(Vek24u));
  } else if (scaleFactor > 0) {
    packVector([=](Pack<T> x) VEK_LAMBDA { return clamp24(shiftRounded<vekRoundNearestEven>(x, scaleFactor)); }, src,
               dst, len);
  } else {
    const ShiftUp<T> up(kSigned<T> ? T(-kHigh24 - 1) : T(0), kSigned<T> ? T(kHigh24) : T(kHigh24u),
                        scaleFactor < -24 ? 24 : -scaleFactor);
    packVector([=](Pack<T> x) VEK_LAMBDA { return clamp24(up(x)); }, src, dst, len);
  }
  return vekStsNoErr;
}

// Clamped, then rounded with ties away from zero; NaN gives 0. Ordered so that the maximum with 0 takes NaN away from
// the unsigned range; the signed one needs a mask.
template <bool Signed>
VEK_INLINE Pack<int32_t> roundTo24(Pack<float> y) {
  if constexpr (Signed) {
    const Pack<float> number = keep(y == y, y);
    return roundToInt32<vekRoundHalfAway>(
        minOf(maxOf(number, broadcast(float(-kHigh24 - 1))), broadcast(float(kHigh24))));
  } else {
    const Pack<float> inRange = minOf(maxOf(y, zeros<float>()), broadcast(float(kHigh24u)));
    return toInt32Truncated(inRange + broadcast(kBelowHalf<float>));
  }
}

template <bool Signed>
VEK_INLINE VekStatus floatTo24(const float* src, Vek8u* dst, int len, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  const Pack<float> m = broadcast(scaleMultiplier<float>(scaleFactor));
  packVector([m](Pack<float> x) VEK_LAMBDA { return roundTo24<Signed>(x * m); }, src, dst, len);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksConvert_24u32u(const Vek8u* pSrc, Vek32u* pDst, int len) {
  return unpackVector<uint32_t>(kSame32, pSrc, pDst, len);
}
VekStatus veksConvert_24s32s(const Vek8u* pSrc, Vek32s* pDst, int len) {
  return unpackVector<int32_t>(kSame32, pSrc, pDst, len);
}
VekStatus veksConvert_24u32f(const Vek8u* pSrc, Vek32f* pDst, int len) {
  return unpackVector<uint32_t>(kAsFloat, pSrc, pDst, len);
}
VekStatus veksConvert_24s32f(const Vek8u* pSrc, Vek32f* pDst, int len) {
  return unpackVector<int32_t>(kAsFloat, pSrc, pDst, len);
}
VekStatus veksConvert_32s24s_Sfs(const Vek32s* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return pack24Scaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_32u24u_Sfs(const Vek32u* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return pack24Scaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_32f24s_Sfs(const Vek32f* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return floatTo24<true>(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_32f24u_Sfs(const Vek32f* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return floatTo24<false>(pSrc, pDst, len, scaleFactor);
}

}  // namespace vek::VEK_SLOT
