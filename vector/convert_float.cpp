// SPDX-License-Identifier: Apache-2.0
// Conversions from integers to floating point and between single and double precision.
#include "core/simd/map.h"
#include "core/simd/scale.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// Eight elements of any integer type as floats.
VEK_INLINE Pack<float> loadFloat(const int32_t* p) { return toFloat(load(p)); }
template <class S>
VEK_INLINE Pack<float> loadFloat(const S* p) {
  return toFloat(loadWiden<int32_t>(p));
}
// Four elements as doubles.
VEK_INLINE Pack<double> loadAsDouble(const int16_t* p) {
  return int32sToDouble(widenStep<int16_t, 0>(loadBytes<8>(p)));
}
template <class S>
VEK_INLINE Pack<double> loadAsDouble(const S* p) {
  return loadDouble(p);
}

template <class D, class S>
VEK_INLINE Pack<D> loadAs(const S* p) {
  if constexpr (kSame<D, float>) {
    return loadFloat(p);
  } else {
    return loadAsDouble(p);
  }
}

template <class S, class D>
VEK_INLINE VekStatus convertVector(const S* src, D* dst, int len) {
  return sweepChecked<Pack<D>::lanes>([](D* d, const S* x) VEK_LAMBDA { store(d, loadAs<D>(x)); }, dst, len, src);
}

template <class S, class D>
VEK_INLINE VekStatus convertScaled(const S* src, D* dst, int len, int scaleFactor) {
  const Pack<D> m = broadcast(scaleMultiplier<D>(scaleFactor));
  return sweepChecked<Pack<D>::lanes>([m](D* d, const S* x) VEK_LAMBDA { store(d, loadAs<D>(x) * m); }, dst, len, src);
}

VEK_INLINE VekStatus narrowDoubles(const double* src, float* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  sweep<4>([](float* d, const double* x) VEK_LAMBDA { storeBytes<16>(d, doubleToFloats(load(x))); }, dst, len, src);
  leaveUpperHalvesClean();
  return vekStsNoErr;
}

}  // namespace

VekStatus veksConvert_8u32f(const Vek8u* pSrc, Vek32f* pDst, int len) { return convertVector(pSrc, pDst, len); }
VekStatus veksConvert_8s32f(const Vek8s* pSrc, Vek32f* pDst, int len) { return convertVector(pSrc, pDst, len); }
VekStatus veksConvert_16u32f(const Vek16u* pSrc, Vek32f* pDst, int len) { return convertVector(pSrc, pDst, len); }
VekStatus veksConvert_16s32f(const Vek16s* pSrc, Vek32f* pDst, int len) { return convertVector(pSrc, pDst, len); }
VekStatus veksConvert_32s32f(const Vek32s* pSrc, Vek32f* pDst, int len) { return convertVector(pSrc, pDst, len); }
VekStatus veksConvert_32s64f(const Vek32s* pSrc, Vek64f* pDst, int len) { return convertVector(pSrc, pDst, len); }
VekStatus veksConvert_32f64f(const Vek32f* pSrc, Vek64f* pDst, int len) { return convertVector(pSrc, pDst, len); }
VekStatus veksConvert_64f32f(const Vek64f* pSrc, Vek32f* pDst, int len) { return narrowDoubles(pSrc, pDst, len); }
VekStatus veksConvert_16s32f_Sfs(const Vek16s* pSrc, Vek32f* pDst, int len, int scaleFactor) {
  return convertScaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_32s32f_Sfs(const Vek32s* pSrc, Vek32f* pDst, int len, int scaleFactor) {
  return convertScaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_16s64f_Sfs(const Vek16s* pSrc, Vek64f* pDst, int len, int scaleFactor) {
  return convertScaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_32s64f_Sfs(const Vek32s* pSrc, Vek64f* pDst, int len, int scaleFactor) {
  return convertScaled(pSrc, pDst, len, scaleFactor);
}

}  // namespace vek::VEK_SLOT
