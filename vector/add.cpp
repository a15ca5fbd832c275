// SPDX-License-Identifier: Apache-2.0
// Addition and subtraction of two vectors.
#include "vector/sum.h"

namespace vek::VEK_SLOT {
namespace {

struct Plus {
  VEK_INLINE Pack<float> operator()(Pack<float> a, Pack<float> b) const { return a + b; }
};
struct Minus {
  VEK_INLINE Pack<float> operator()(Pack<float> a, Pack<float> b) const { return a - b; }
};

}  // namespace

VekStatus veksAdd_8u_Sfs(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len, int scaleFactor) {
  return scaledTwo<Sum<uint8_t>>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksAdd_16s_Sfs(const Vek16s* pSrc1, const Vek16s* pSrc2, Vek16s* pDst, int len, int scaleFactor) {
  return scaledTwo<Sum<int16_t>>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksAdd_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor) {
  return scaledTwo<Sum<int32_t>>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksAdd_32sc_Sfs(const Vek32sc* pSrc1, const Vek32sc* pSrc2, Vek32sc* pDst, int len, int scaleFactor) {
  return scaledTwo<Sum<int32_t>>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksAdd_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len) {
  return mapChecked(held(Plus()), pDst, len, pSrc1, pSrc2);
}
VekStatus veksAdd_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len) {
  return mapChecked(held(Plus()), pDst, len, pSrc1, pSrc2);
}

VekStatus veksSub_8u_Sfs(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len, int scaleFactor) {
  return scaledTwo<Difference<uint8_t>>(pSrc2, pSrc1, pDst, len, scaleFactor);
}
VekStatus veksSub_16s_Sfs(const Vek16s* pSrc1, const Vek16s* pSrc2, Vek16s* pDst, int len, int scaleFactor) {
  return scaledTwo<Difference<int16_t>>(pSrc2, pSrc1, pDst, len, scaleFactor);
}
VekStatus veksSub_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor) {
  return scaledTwo<Difference<int32_t>>(pSrc2, pSrc1, pDst, len, scaleFactor);
}
VekStatus veksSub_32sc_Sfs(const Vek32sc* pSrc1, const Vek32sc* pSrc2, Vek32sc* pDst, int len, int scaleFactor) {
  return scaledTwo<Difference<int32_t>>(pSrc2, pSrc1, pDst, len, scaleFactor);
}
VekStatus veksSub_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len) {
  return mapChecked(held(Minus()), pDst, len, pSrc2, pSrc1);
}
VekStatus veksSub_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len) {
  return mapChecked(held(Minus()), pDst, len, pSrc2, pSrc1);
}

}  // namespace vek::VEK_SLOT
