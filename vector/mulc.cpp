// SPDX-License-Identifier: Apache-2.0
// Multiplication by a constant, division by a float constant, and the sum with a constant's products.
#include "vector/product.h"

namespace vek::VEK_SLOT {
namespace {

struct TimesConstant {
  Pack<float> c;
  VEK_INLINE explicit TimesConstant(float val) : c(broadcast(val)) {}
  VEK_INLINE Pack<float> operator()(Pack<float> x) const { return x * c; }
};

// The same products as between two vectors, with the subtraction's sign moved into the constant.
struct TimesComplexConstant {
  Pack<float> re, im;
  VEK_INLINE explicit TimesComplexConstant(Vek32fc val) : re(broadcast(val.re)), im(broadcastPair(-val.im, val.im)) {}
  VEK_INLINE Pack<float> operator()(Pack<float> x) const { return x * re + swapPairs(x) * im; }
};

struct PlusProductConstant : TimesConstant {
  using TimesConstant::TimesConstant;
  VEK_INLINE Pack<float> operator()(Pack<float> x, Pack<float> sum) const { return sum + x * c; }
};

VEK_INLINE VekStatus addProduct(const Vek32f* src, Vek32f val, Vek32f* sum, int len) {
  const Vek32f* from = sum;
  return mapChecked(held(PlusProductConstant(val)), sum, len, src, from);
}

VEK_INLINE VekStatus divide(const Vek32f* src, Vek32f val, Vek32f* dst, int len) {
  if (const VekStatus status = checkVectors(len, src, dst)) return status;
  if (val == 0) return vekStsDivByZeroErr;
  mapPacks(TimesConstant(1 / val), dst, len, src);
  return vekStsNoErr;
}

VEK_INLINE VekStatus divide(const Vek32fc* src, Vek32fc val, Vek32fc* dst, int len) {
  if (const VekStatus status = checkVectors(len, src, dst)) return status;
  if (val.re == 0 && val.im == 0) return vekStsDivByZeroErr;
  const Vek32f s = 1 / (val.re * val.re + val.im * val.im);
  mapComplex(TimesComplexConstant({val.re * s, -val.im * s}), dst, len, src);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksMulC_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor) {
  return scaledConstant<Product<uint8_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksMulC_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor) {
  return scaledConstant<Product<int16_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksMulC_32s_Sfs(const Vek32s* pSrc, Vek32s val, Vek32s* pDst, int len, int scaleFactor) {
  return scaledConstant<Product<int32_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksMulC_32sc_Sfs(const Vek32sc* pSrc, Vek32sc val, Vek32sc* pDst, int len, int scaleFactor) {
  return scaledConstant<ComplexProduct>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksMulC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len) {
  return mapChecked(held(TimesConstant(val)), pDst, len, pSrc);
}
VekStatus veksMulC_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len) {
  return mapChecked(held(TimesComplexConstant(val)), pDst, len, pSrc);
}

VekStatus veksAddProductC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pSrcDst, int len) {
  return addProduct(pSrc, val, pSrcDst, len);
}

VekStatus veksDivC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len) { return divide(pSrc, val, pDst, len); }
VekStatus veksDivC_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len) {
  return divide(pSrc, val, pDst, len);
}

}  // namespace vek::VEK_SLOT
