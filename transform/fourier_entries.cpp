// SPDX-License-Identifier: Apache-2.0
// The exported Fourier transforms of every length: checks, specs and buffers around the engine of dft.h.
#include <math.h>

#include "transform/spectral_spec.h"
#include "vekx/fft.h"

namespace vek::VEK_SLOT {
namespace {

// The engine's spec lies right behind.
struct FourierSpec {
  SpecHead head;
  double forwardScale, inverseScale;
  uint8_t reserved[24];
};
static_assert(sizeof(FourierSpec) == 64);

template <class R, DftKind Kind>
struct FourierOf {
  using Body = FourierSpec;
  using Real = R;
  static constexpr DftKind kind = Kind;
  static constexpr int32_t id = Kind + 8;
};
template <>
struct SpecOf<VekxFFTSpec_32f> : FourierOf<float, kDftReal32> {};
template <>
struct SpecOf<VekxFFTSpec_64f> : FourierOf<double, kDftReal64> {};
template <>
struct SpecOf<VekxFFTSpec_32fc> : FourierOf<float, kDftComplex32> {};
template <>
struct SpecOf<VekxFFTSpec_64fc> : FourierOf<double, kDftComplex64> {};

template <class P>
constexpr bool kRealData = SpecOf<P>::kind == kDftReal32 || SpecOf<P>::kind == kDftReal64;
template <class P>
using RealOf = typename SpecOf<P>::Real;
template <class R>
struct ComplexOf {
  using type = Vek32fc;
};
template <>
struct ComplexOf<double> {
  using type = Vek64fc;
};

template <class P>
VEK_INLINE const DftSpec* engineOf(const P* spec) {
  return reinterpret_cast<const DftSpec*>(bodyOf(spec) + 1);
}
template <class P>
VEK_INLINE RealOf<P> forwardScale(const P* spec) {
  return RealOf<P>(bodyOf(spec)->forwardScale);
}
template <class P>
VEK_INLINE RealOf<P> inverseScale(const P* spec) {
  return RealOf<P>(bodyOf(spec)->inverseScale);
}

// ---- specs
// -----------------------------------------------------------------------------------------------------------

template <class P>
int64_t specBytes(int len) {
  return int64_t(sizeof(FourierSpec)) + 63 + dftSizes(SpecOf<P>::kind, len).spec;
}
// A packed spectrum passes through one that is not.
template <class P>
int64_t packWorkBytes(int64_t len, int64_t work) {
  return 64 + roundUp64((len / 2 + 1) * 2 * int64_t(sizeof(RealOf<P>))) + work;
}

VEK_INLINE bool badLength(int len) { return len < 1 || len > kDftLongest; }

template <class P>
VekStatus getSize(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize) {
  if (!pSpecSize || !pWorkSize || !pManyWorkSize) return vekStsNullPtrErr;
  if (badLength(len)) return vekStsSizeErr;
  const DftSizes sizes = dftSizes(SpecOf<P>::kind, len);
  *pSpecSize = specBytes<P>(len);
  *pWorkSize = kRealData<P> ? packWorkBytes<P>(len, sizes.work) : sizes.work;
  *pManyWorkSize = sizes.workMany;
  return vekStsNoErr;
}

VEK_INLINE VekStatus checkDesign(int len, VekxScale scale) {
  if (badLength(len)) return vekStsSizeErr;
  return scale < vekxScaleNone || scale > vekxScaleBoth ? vekStsFftFlagErr : vekStsNoErr;
}

// Fills a spec.
template <class P>
auto builder(int len, VekxScale scale) {
  return [=](FourierSpec* body) {
    const double whole = 1 / double(len), half = 1 / sqrt(double(len));
    body->forwardScale = scale == vekxScaleForward ? whole : scale == vekxScaleBoth ? half : 1;
    body->inverseScale = scale == vekxScaleInverse ? whole : scale == vekxScaleBoth ? half : 1;
    dftPlace(SpecOf<P>::kind, len, reinterpret_cast<uint8_t*>(body + 1));
  };
}
template <class P>
VekStatus init(P** ppSpec, int len, VekxScale scale, uint8_t* buffer) {
  if (!ppSpec || !buffer) return vekStsNullPtrErr;
  if (const VekStatus s = checkDesign(len, scale)) return s;
  return makeSpec(ppSpec, len, buffer, false, builder<P>(len, scale));
}
template <class P>
VekStatus initAlloc(P** ppSpec, int len, VekxScale scale) {
  if (!ppSpec) return vekStsNullPtrErr;
  if (const VekStatus s = checkDesign(len, scale)) return s;
  return makeSpecOnHeap(ppSpec, len, specBytes<P>(len), builder<P>(len, scale));
}

// ---- one transform
// ---------------------------------------------------------------------------------------------------

template <class A, class B, class P>
VekStatus forward(const A* src, B* dst, const P* spec, uint8_t* given) {
  if (const VekStatus s = checkCall(src, dst, spec)) return s;
  return withWork(dftSizes(engineOf(spec)).work, given,
                  [=](uint8_t* work) { dftForward(src, dst, engineOf(spec), forwardScale(spec), work); });
}
template <class A, class B, class P>
VekStatus inverse(const A* src, B* dst, const P* spec, uint8_t* given) {
  if (const VekStatus s = checkCall(src, dst, spec)) return s;
  return withWork(dftSizes(engineOf(spec)).work, given,
                  [=](uint8_t* work) { dftInverse(src, dst, engineOf(spec), inverseScale(spec), work); });
}

// Real bins 0 and (for even lengths) len/2 leave out their imaginary parts, so that behind bin 0 the rest of a packed
// spectrum is the front of the other one.
template <class R, class P>
VekStatus forwardPacked(const R* src, R* dst, const P* spec, uint8_t* given) {
  using C = typename ComplexOf<R>::type;
  if (const VekStatus s = checkCall(src, dst, spec)) return s;
  const int64_t n = bodyOf(spec)->head.len;
  return withWork(packWorkBytes<P>(n, dftSizes(engineOf(spec)).work), given, [=](uint8_t* work) {
    C* bins = reinterpret_cast<C*>(align64(work));
    dftForward(src, bins, engineOf(spec), forwardScale(spec), reinterpret_cast<uint8_t*>(bins + n / 2 + 1));
    dst[0] = bins[0].re;
    __builtin_memcpy(dst + 1, bins + 1, size_t(n - 1) * sizeof(R));
  });
}
template <class R, class P>
VekStatus inversePacked(const R* src, R* dst, const P* spec, uint8_t* given) {
  using C = typename ComplexOf<R>::type;
  if (const VekStatus s = checkCall(src, dst, spec)) return s;
  const int64_t n = bodyOf(spec)->head.len;
  return withWork(packWorkBytes<P>(n, dftSizes(engineOf(spec)).work), given, [=](uint8_t* work) {
    C* bins = reinterpret_cast<C*>(align64(work));
    bins[n / 2].im = 0;
    bins[0] = {src[0], 0};
    __builtin_memcpy(static_cast<void*>(bins + 1), src + 1, size_t(n - 1) * sizeof(R));
    dftInverse(bins, dst, engineOf(spec), inverseScale(spec), reinterpret_cast<uint8_t*>(bins + n / 2 + 1));
  });
}

// ---- many
// ------------------------------------------------------------------------------------------------------------

// Elements of an array on the side of type A: samples, or the bins of a real spectrum.
template <class A, class P>
int64_t elementsOf(const P* spec) {
  const int64_t n = bodyOf(spec)->head.len;
  return kRealData<P> && sizeof(A) == 2 * sizeof(RealOf<P>) ? n / 2 + 1 : n;
}

template <class A, class B, class P, class Run>
VekStatus many(const A* src, B* dst, const DftBatch& batch, const P* spec, uint8_t* given, Run run) {
  if (const VekStatus s = checkCall(src, dst, spec)) return s;
  if (const VekStatus s = checkPlaces(batch.count, src, {elementsOf<A>(spec), batch.srcStride, batch.srcDistance}, dst,
                                      {elementsOf<B>(spec), batch.dstStride, batch.dstDistance}))
    return s;
  return withWork(dftSizes(engineOf(spec)).workMany, given, run);
}
template <class A, class B, class P>
VekStatus forwardMany(const A* src, B* dst, const DftBatch& batch, const P* spec, uint8_t* given) {
  return many(src, dst, batch, spec, given,
              [&](uint8_t* work) { dftForward(src, dst, engineOf(spec), batch, forwardScale(spec), work); });
}
template <class A, class B, class P>
VekStatus inverseMany(const A* src, B* dst, const DftBatch& batch, const P* spec, uint8_t* given) {
  return many(src, dst, batch, spec, given,
              [&](uint8_t* work) { dftInverse(src, dst, engineOf(spec), batch, inverseScale(spec), work); });
}

// Real data in place: distances are even and hold a whole spectrum.
template <class R>
struct InPlace {
  R* reals;
  typename ComplexOf<R>::type* bins;
  explicit InPlace(R* p) : reals(p), bins(reinterpret_cast<typename ComplexOf<R>::type*>(p)) {}
};
// What the rule for destinations refuses where the distance is odd.
VEK_INLINE int64_t binDistance(int64_t distance) { return distance % 2 == 0 ? distance / 2 : 0; }

}  // namespace

#define VEKX_SPECS(KIND)                                                                                    \
  VekStatus vekxFFTGetSize_##KIND(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize) {   \
    return getSize<VekxFFTSpec_##KIND>(len, pSpecSize, pWorkSize, pManyWorkSize);                           \
  }                                                                                                         \
  VekStatus vekxFFTInit_##KIND(VekxFFTSpec_##KIND** ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer) { \
    return init(ppSpec, len, scale, pSpecBuffer);                                                           \
  }                                                                                                         \
  VekStatus vekxFFTInitAlloc_##KIND(VekxFFTSpec_##KIND** ppSpec, int len, VekxScale scale) {                \
    return initAlloc(ppSpec, len, scale);                                                                   \
  }                                                                                                         \
  VekStatus vekxFFTFree_##KIND(VekxFFTSpec_##KIND* pSpec) { return freeSpec(pSpec); }

// Of samples X and spectra Y.
#define VEKX_TRANSFORMS(FORWARD, INVERSE, X, Y, SPEC)                                                               \
  VekStatus vekxFFTFwd_##FORWARD(const X* pSrc, Y* pDst, const SPEC* pSpec, Vek8u* pWorkBuffer) {                   \
    return forward(pSrc, pDst, pSpec, pWorkBuffer);                                                                 \
  }                                                                                                                 \
  VekStatus vekxFFTInv_##INVERSE(const Y* pSrc, X* pDst, const SPEC* pSpec, Vek8u* pWorkBuffer) {                   \
    return inverse(pSrc, pDst, pSpec, pWorkBuffer);                                                                 \
  }                                                                                                                 \
  VekStatus vekxFFTFwdMany_##FORWARD(const X* pSrc, Y* pDst, Vek64s count, Vek64s srcStride, Vek64s srcDistance,    \
                                     Vek64s dstStride, Vek64s dstDistance, const SPEC* pSpec, Vek8u* pWorkBuffer) { \
    return forwardMany(pSrc, pDst, {count, srcStride, srcDistance, dstStride, dstDistance}, pSpec, pWorkBuffer);    \
  }                                                                                                                 \
  VekStatus vekxFFTInvMany_##INVERSE(const Y* pSrc, X* pDst, Vek64s count, Vek64s srcStride, Vek64s srcDistance,    \
                                     Vek64s dstStride, Vek64s dstDistance, const SPEC* pSpec, Vek8u* pWorkBuffer) { \
    return inverseMany(pSrc, pDst, {count, srcStride, srcDistance, dstStride, dstDistance}, pSpec, pWorkBuffer);    \
  }

#define VEKX_COMPLEX(KIND)                                                                                 \
  VEKX_SPECS(KIND)                                                                                         \
  VEKX_TRANSFORMS(KIND, KIND, Vek##KIND, Vek##KIND, VekxFFTSpec_##KIND)                                    \
  VekStatus vekxFFTFwdMany_##KIND##_I(Vek##KIND* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,    \
                                      const VekxFFTSpec_##KIND* pSpec, Vek8u* pWorkBuffer) {               \
    return forwardMany(pSrcDst, pSrcDst, {count, stride, distance, stride, distance}, pSpec, pWorkBuffer); \
  }                                                                                                        \
  VekStatus vekxFFTInvMany_##KIND##_I(Vek##KIND* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,    \
                                      const VekxFFTSpec_##KIND* pSpec, Vek8u* pWorkBuffer) {               \
    return inverseMany(pSrcDst, pSrcDst, {count, stride, distance, stride, distance}, pSpec, pWorkBuffer); \
  }

#define VEKX_REAL(KIND)                                                                                               \
  VEKX_SPECS(KIND)                                                                                                    \
  VEKX_TRANSFORMS(KIND##KIND##c, KIND##c##KIND, Vek##KIND, Vek##KIND##c, VekxFFTSpec_##KIND)                          \
  VekStatus vekxFFTFwd_##KIND##KIND##c_I(Vek##KIND* pSrcDst, const VekxFFTSpec_##KIND* pSpec, Vek8u* pWorkBuffer) {   \
    return forward(pSrcDst, InPlace(pSrcDst).bins, pSpec, pWorkBuffer);                                               \
  }                                                                                                                   \
  VekStatus vekxFFTInv_##KIND##c##KIND##_I(Vek##KIND* pSrcDst, const VekxFFTSpec_##KIND* pSpec, Vek8u* pWorkBuffer) { \
    return inverse(InPlace(pSrcDst).bins, pSrcDst, pSpec, pWorkBuffer);                                               \
  }                                                                                                                   \
  VekStatus vekxFFTFwdMany_##KIND##KIND##c_I(Vek##KIND* pSrcDst, Vek64s count, Vek64s distance,                       \
                                             const VekxFFTSpec_##KIND* pSpec, Vek8u* pWorkBuffer) {                   \
    return forwardMany(pSrcDst, InPlace(pSrcDst).bins, {count, 1, distance, 1, binDistance(distance)}, pSpec,         \
                       pWorkBuffer);                                                                                  \
  }                                                                                                                   \
  VekStatus vekxFFTInvMany_##KIND##c##KIND##_I(Vek##KIND* pSrcDst, Vek64s count, Vek64s distance,                     \
                                               const VekxFFTSpec_##KIND* pSpec, Vek8u* pWorkBuffer) {                 \
    return inverseMany(InPlace(pSrcDst).bins, pSrcDst, {count, 1, binDistance(distance), 1, distance}, pSpec,         \
                       pWorkBuffer);                                                                                  \
  }                                                                                                                   \
  VekStatus vekxFFTFwdPack_##KIND(const Vek##KIND* pSrc, Vek##KIND* pDst, const VekxFFTSpec_##KIND* pSpec,            \
                                  Vek8u* pWorkBuffer) {                                                               \
    return forwardPacked(pSrc, pDst, pSpec, pWorkBuffer);                                                             \
  }                                                                                                                   \
  VekStatus vekxFFTInvPack_##KIND(const Vek##KIND* pSrc, Vek##KIND* pDst, const VekxFFTSpec_##KIND* pSpec,            \
                                  Vek8u* pWorkBuffer) {                                                               \
    return inversePacked(pSrc, pDst, pSpec, pWorkBuffer);                                                             \
  }

VEKX_COMPLEX(32fc)
VEKX_COMPLEX(64fc)
VEKX_REAL(32f)
VEKX_REAL(64f)

}  // namespace vek::VEK_SLOT
