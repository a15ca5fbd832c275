// SPDX-License-Identifier: Apache-2.0
// Products of spectra, bin by bin, for convolutions of the caller's own.
#include "core/simd/checks.h"
#include "core/simd/complex.h"
#include "core/simd/short.h"
#include "vekx/fft.h"

namespace vek::VEK_SLOT {
namespace {

// a or its conjugate times b, which is all that the functions differ in, and whether the product is added.
enum Factor { kAsItIs, kConjugate };
enum Result { kStored, kAdded };

template <Factor F, class T>
VEK_INLINE Pack<T> product(Pack<T> a, Pack<T> b) {
  return complexMul(F == kConjugate ? a ^ broadcastPair(T(0), T(-0.0)) : a, b);
}

// Pairs of parts at any address. The pack loops of whole vectors would align their destination by elements of half a
// number.
template <Factor F, Result R, class T>
VEK_INLINE void multiplyPairs(const T* a, const T* b, T* dst, int64_t parts) {
  constexpr int L = Pack<T>::lanes;
  int64_t i = 0;
  for (; i + L <= parts; i += L) {
    const Pack<T> p = product<F>(load(a + i), load(b + i));
    store(dst + i, R == kAdded ? load(dst + i) + p : p);
  }
  const int64_t rest = parts - i;
  if (rest == 0) return;
  const Pack<T> p = product<F>(loadPart(a + i, rest), loadPart(b + i, rest));
  storePart(dst + i, R == kAdded ? loadPart(dst + i, rest) + p : p, rest);
}

template <Factor F, Result R, class C>
VekStatus multiply(const C* pSrc1, const C* pSrc2, C* pDst, int len) {
  if (const VekStatus s = checkVectors(len, pSrc1, pSrc2, pDst)) return s;
  using T = decltype(pDst->re);
  multiplyPairs<F, R>(reinterpret_cast<const T*>(pSrc1), reinterpret_cast<const T*>(pSrc2), reinterpret_cast<T*>(pDst),
                      2 * int64_t(len));
  return vekStsNoErr;
}

// Bin 0 and, for an even length, the last one are real.
template <Factor F, Result R, class T>
VekStatus multiplyPacked(const T* pSrc1, const T* pSrc2, T* pDst, int len) {
  if (const VekStatus s = checkVectors(len, pSrc1, pSrc2, pDst)) return s;
  const auto one = [=](int i) VEK_LAMBDA {
    const T p = pSrc1[i] * pSrc2[i];
    pDst[i] = R == kAdded ? pDst[i] + p : p;
  };
  one(0);
  if (len > 1 && len % 2 == 0) one(len - 1);
  multiplyPairs<F, R>(pSrc1 + 1, pSrc2 + 1, pDst + 1, (int64_t(len) - 1) & ~int64_t(1));
  return vekStsNoErr;
}

}  // namespace

#define VEKX_PRODUCT(NAME, T, MULTIPLY)                                       \
  VekStatus vekxFFT##NAME(const T* pSrc1, const T* pSrc2, T* pDst, int len) { \
    return MULTIPLY(pSrc1, pSrc2, pDst, len);                                 \
  }
#define VEKX_PRODUCTS(COMPLEX, REAL)                                                 \
  VEKX_PRODUCT(Mul_##COMPLEX, Vek##COMPLEX, (multiply<kAsItIs, kStored>))            \
  VEKX_PRODUCT(MulAdd_##COMPLEX, Vek##COMPLEX, (multiply<kAsItIs, kAdded>))          \
  VEKX_PRODUCT(MulConj_##COMPLEX, Vek##COMPLEX, (multiply<kConjugate, kStored>))     \
  VEKX_PRODUCT(MulConjAdd_##COMPLEX, Vek##COMPLEX, (multiply<kConjugate, kAdded>))   \
  VEKX_PRODUCT(MulPack_##REAL, Vek##REAL, (multiplyPacked<kAsItIs, kStored>))        \
  VEKX_PRODUCT(MulAddPack_##REAL, Vek##REAL, (multiplyPacked<kAsItIs, kAdded>))      \
  VEKX_PRODUCT(MulConjPack_##REAL, Vek##REAL, (multiplyPacked<kConjugate, kStored>)) \
  VEKX_PRODUCT(MulConjAddPack_##REAL, Vek##REAL, (multiplyPacked<kConjugate, kAdded>))

VEKX_PRODUCTS(32fc, 32f)
VEKX_PRODUCTS(64fc, 64f)

}  // namespace vek::VEK_SLOT
