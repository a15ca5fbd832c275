// SPDX-License-Identifier: Apache-2.0
// Conversions between integer types of whole machine widths.
#include "core/simd/map.h"
#include "core/simd/scale.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

template <class S, class D>
VEK_INLINE VekStatus widenVector(const S* src, D* dst, int len) {
  return sweepChecked<Pack<D>::lanes>([](D* d, const S* x) VEK_LAMBDA { store(d, loadWiden<D>(x)); }, dst, len, src);
}

// 32s to 16s: op prepares each pack of 32-bit values, saturation does the rest.
template <class Op>
VEK_INLINE void narrowTo16(Op op, const int32_t* src, int16_t* dst, int len) {
  sweep<16>([op](int16_t* d, const int32_t* x)
                VEK_LAMBDA { store(d, narrowSaturated<int16_t>(op(load(x)), op(load(x + 8)))); },
            dst, len, src);
}

VEK_INLINE VekStatus narrow16(const int32_t* src, int16_t* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  narrowTo16([](Pack<int32_t> x) VEK_LAMBDA { return x; }, src, dst, len);
  return vekStsNoErr;
}

VEK_INLINE VekStatus narrow16Scaled(const int32_t* src, int16_t* dst, int len, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (scaleFactor > 32) {
    __builtin_memset(dst, 0, size_t(len) * sizeof *dst);
  } else if (scaleFactor > 0) {
    narrowTo16([=](Pack<int32_t> x) VEK_LAMBDA { return shiftRounded<vekRoundNearestEven>(x, scaleFactor); }, src, dst,
               len);
  } else {
    narrowTo16(ShiftUp<int32_t>(-32768, 32767, scaleFactor < -16 ? 16 : -scaleFactor), src, dst, len);
  }
  return vekStsNoErr;
}

// 64s to 32s likewise; there is no instruction that saturates such a pair, so op is followed by a clamp.
template <class Op>
VEK_INLINE void narrowTo32(Op op, const int64_t* src, int32_t* dst, int len) {
  const Pack<int64_t> low = broadcast(int64_t(INT32_MIN)), high = broadcast(int64_t(INT32_MAX));
  const auto clamped = [=](const int64_t* x) VEK_LAMBDA { return minOf(maxOf(op(load(x)), low), high); };
  sweep<8>([=](int32_t* d, const int64_t* x)
               VEK_LAMBDA { store(d, narrowWrapped<int32_t>(clamped(x), clamped(x + 4))); },
           dst, len, src);
}

template <int Mode>
VEK_INLINE void narrow32Down(const int64_t* src, int32_t* dst, int len, int scaleFactor) {
  narrowTo32([=](Pack<int64_t> x) VEK_LAMBDA { return shiftRounded<Mode>(x, scaleFactor); }, src, dst, len);
}

VEK_INLINE VekStatus narrow32Scaled(const int64_t* src, int32_t* dst, int len, int mode, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (scaleFactor > 64) {
    __builtin_memset(dst, 0, size_t(len) * sizeof *dst);
  } else if (scaleFactor <= 0) {
    narrowTo32(ShiftUp<int64_t>(INT32_MIN, INT32_MAX, scaleFactor < -32 ? 32 : -scaleFactor), src, dst, len);
  } else if (mode == vekRoundTowardZero) {
    narrow32Down<vekRoundTowardZero>(src, dst, len, scaleFactor);
  } else if (mode == vekRoundNearestEven) {
    narrow32Down<vekRoundNearestEven>(src, dst, len, scaleFactor);
  } else {
    narrow32Down<vekRoundHalfAway>(src, dst, len, scaleFactor);
  }
  return vekStsNoErr;
}

}  // namespace

VekStatus veksConvert_8s16s(const Vek8s* pSrc, Vek16s* pDst, int len) { return widenVector(pSrc, pDst, len); }
VekStatus veksConvert_16s32s(const Vek16s* pSrc, Vek32s* pDst, int len) { return widenVector(pSrc, pDst, len); }
VekStatus veksConvert_32s16s(const Vek32s* pSrc, Vek16s* pDst, int len) { return narrow16(pSrc, pDst, len); }
VekStatus veksConvert_32s16s_Sfs(const Vek32s* pSrc, Vek16s* pDst, int len, int scaleFactor) {
  return narrow16Scaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_64s32s_Sfs(const Vek64s* pSrc, Vek32s* pDst, int len, VekRoundMode rndMode, int scaleFactor) {
  return narrow32Scaled(pSrc, pDst, len, rndMode, scaleFactor);
}

}  // namespace vek::VEK_SLOT
