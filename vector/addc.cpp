// SPDX-License-Identifier: Apache-2.0
// Addition and subtraction of a constant.
#include "vector/sum.h"

namespace vek::VEK_SLOT {
namespace {

struct PlusConstant {
  Pack<float> c;
  template <class E>
  VEK_INLINE explicit PlusConstant(E val) : c(broadcastElement(val)) {}
  VEK_INLINE Pack<float> operator()(Pack<float> x) const { return x + c; }
};
struct MinusConstant : PlusConstant {
  using PlusConstant::PlusConstant;
  VEK_INLINE Pack<float> operator()(Pack<float> x) const { return x - c; }
};
struct ConstantMinus : PlusConstant {
  using PlusConstant::PlusConstant;
  VEK_INLINE Pack<float> operator()(Pack<float> x) const { return c - x; }
};

}  // namespace

VekStatus veksAddC_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor) {
  return scaledConstant<Sum<uint8_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksAddC_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor) {
  return scaledConstant<Sum<int16_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksAddC_32s_Sfs(const Vek32s* pSrc, Vek32s val, Vek32s* pDst, int len, int scaleFactor) {
  return scaledConstant<Sum<int32_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksAddC_32sc_Sfs(const Vek32sc* pSrc, Vek32sc val, Vek32sc* pDst, int len, int scaleFactor) {
  return scaledConstant<Sum<int32_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksAddC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len) {
  return mapChecked(held(PlusConstant(val)), pDst, len, pSrc);
}
VekStatus veksAddC_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len) {
  return mapChecked(held(PlusConstant(val)), pDst, len, pSrc);
}

VekStatus veksSubC_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor) {
  return scaledConstant<Difference<uint8_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksSubC_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor) {
  return scaledConstant<Difference<int16_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksSubC_32s_Sfs(const Vek32s* pSrc, Vek32s val, Vek32s* pDst, int len, int scaleFactor) {
  return scaledConstant<Difference<int32_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksSubC_32sc_Sfs(const Vek32sc* pSrc, Vek32sc val, Vek32sc* pDst, int len, int scaleFactor) {
  return scaledConstant<Difference<int32_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksSubC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len) {
  return mapChecked(held(MinusConstant(val)), pDst, len, pSrc);
}
VekStatus veksSubC_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len) {
  return mapChecked(held(MinusConstant(val)), pDst, len, pSrc);
}

VekStatus veksSubCRev_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor) {
  return scaledConstant<DifferenceReversed<uint8_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksSubCRev_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor) {
  return scaledConstant<DifferenceReversed<int16_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksSubCRev_32s_Sfs(const Vek32s* pSrc, Vek32s val, Vek32s* pDst, int len, int scaleFactor) {
  return scaledConstant<DifferenceReversed<int32_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksSubCRev_32sc_Sfs(const Vek32sc* pSrc, Vek32sc val, Vek32sc* pDst, int len, int scaleFactor) {
  return scaledConstant<DifferenceReversed<int32_t>>(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksSubCRev_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len) {
  return mapChecked(held(ConstantMinus(val)), pDst, len, pSrc);
}
VekStatus veksSubCRev_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len) {
  return mapChecked(held(ConstantMinus(val)), pDst, len, pSrc);
}

}  // namespace vek::VEK_SLOT
