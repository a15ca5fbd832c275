// SPDX-License-Identifier: Apache-2.0
// Multiplication of two vectors, and its sums.
#include "vector/product.h"

namespace vek::VEK_SLOT {
namespace {

struct Times {
  VEK_INLINE Pack<float> operator()(Pack<float> a, Pack<float> b) const { return a * b; }
};

// Four complex products of floats: (re, im) = (a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re). Each part of `a`
// is doubled as it is loaded, which leaves the shuffle ports alone.
VEK_INLINE Pack<float> complexProduct(const Vek32fc* a, const Vek32fc* b) {
  return complexMul(load(parts(a)), inRegister(load(parts(b))));
}

VEK_INLINE VekStatus multiplyComplex(const Vek32fc* a, const Vek32fc* b, Vek32fc* dst, int len) {
  return sweepChecked<4>([](Vek32fc* d, const Vek32fc* x, const Vek32fc* y)
                             VEK_LAMBDA { store(parts(d), complexProduct(x, y)); },
                         dst, len, a, b);
}

VEK_INLINE VekStatus multiplyRealComplex(const Vek32f* a, const Vek32fc* b, Vek32fc* dst, int len) {
  return sweepChecked<4>([](Vek32fc* d, const Vek32f* x, const Vek32fc* y)
                             VEK_LAMBDA { store(parts(d), loadTwice(x) * load(parts(y))); },
                         dst, len, a, b);
}

VEK_INLINE VekStatus multiplyRealComplex(const Vek32s* a, const Vek32sc* b, Vek32sc* dst, int len, int scaleFactor) {
  if (const VekStatus status = checkVectors(len, a, b, dst)) return status;
  mapScaled(RealTimesComplex(), scaleFactor, dst, len, [=](auto f) VEK_LAMBDA {
    sweep<4>(weighted<kWeightOf<decltype(f)>>([f](Vek32sc* d, const Vek32s* x, const Vek32sc* y)
                                                  VEK_LAMBDA { store(parts(d), f(loadTwice(x), load(parts(y)))); }),
             dst, len, a, b);
  });
  return vekStsNoErr;
}

// ---- the low half of the product -----------------------------------------------------------------------------------

// The end of the range that has the sign of a * b, or 0.
VEK_INLINE Pack<int32_t> productSaturation(Pack<int32_t> a, Pack<int32_t> b) {
  const Pack<int32_t> zero = zeros<int32_t>();
  return keep(~((a == zero) | (b == zero)), LeftShift<int32_t>::saturation(a ^ b));
}

VEK_INLINE VekStatus multiplyLow(const Vek32s* a, const Vek32s* b, Vek32s* dst, int len, int scaleFactor) {
  using P = Pack<int32_t>;
  if (const VekStatus status = checkVectors(len, a, b, dst)) return status;
  if (scaleFactor > 62) {
    __builtin_memset(dst, 0, size_t(len) * sizeof(Vek32s));
  } else if (scaleFactor > 32) {
    const auto shifted = [=](Pack<int64_t> p) VEK_LAMBDA { return p >> scaleFactor; };
    mapElements(held([=](P x, P y) VEK_LAMBDA {
                  const Wide p = wideProduct(x, y);
                  return lowParts({shifted(p.even), shifted(p.odd)});
                }),
                dst, len, a, b);
  } else if (scaleFactor > 0) {
    // The sign never comes down into the low half: the cheaper shift does.
    const ShiftCount<uint64_t> count(scaleFactor);
    const auto shifted = [=](Pack<int64_t> p) VEK_LAMBDA { return bits<int64_t>(bits<uint64_t>(p) >> count); };
    mapElements(held([=](P x, P y) VEK_LAMBDA {
                  const Wide p = wideProduct(x, y);
                  return lowParts({shifted(p.even), shifted(p.odd)});
                }),
                dst, len, a, b);
  } else if (scaleFactor >= -31) {
    mapElements(held([=](P x, P y) VEK_LAMBDA { return (x * y) << -scaleFactor; }), dst, len, a, b);
  } else {
    mapElements(held([](P x, P y) VEK_LAMBDA { return productSaturation(x, y); }), dst, len, a, b);
  }
  return vekStsNoErr;
}

// ---- accumulated products -------------------------------------------------------------------------------------------

struct PlusProduct {
  VEK_INLINE Pack<float> operator()(Pack<float> a, Pack<float> b, Pack<float> sum) const { return sum + a * b; }
};

VEK_INLINE VekStatus addProduct(const Vek32s* a, const Vek32s* b, Vek32s* sum, int len, int scaleFactor) {
  if (const VekStatus status = checkVectors(len, a, b, sum)) return status;
  const Vek32s* from = sum;
  mapScaled(ProductSum(), scaleFactor, sum, len,
            [=](auto f) VEK_LAMBDA { mapElements(held(f), sum, len, a, b, from); });
  return vekStsNoErr;
}

VEK_INLINE VekStatus addProduct(const Vek32f* a, const Vek32f* b, Vek32f* sum, int len) {
  const Vek32f* from = sum;
  return mapChecked(held(PlusProduct()), sum, len, a, b, from);
}

VEK_INLINE VekStatus addProduct(const Vek32fc* a, const Vek32fc* b, Vek32fc* sum, int len) {
  const Vek32fc* from = sum;
  return sweepChecked<4>([](Vek32fc* d, const Vek32fc* x, const Vek32fc* y, const Vek32fc* z)
                             VEK_LAMBDA { store(parts(d), load(parts(z)) + complexProduct(x, y)); },
                         sum, len, a, b, from);
}

}  // namespace

VekStatus veksMul_8u_Sfs(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len, int scaleFactor) {
  return scaledTwo<Product<uint8_t>>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksMul_16s_Sfs(const Vek16s* pSrc1, const Vek16s* pSrc2, Vek16s* pDst, int len, int scaleFactor) {
  return scaledTwo<Product<int16_t>>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksMul_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor) {
  return scaledTwo<Product<int32_t>>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksMul_32sc_Sfs(const Vek32sc* pSrc1, const Vek32sc* pSrc2, Vek32sc* pDst, int len, int scaleFactor) {
  return scaledTwo<ComplexProduct>(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksMul_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len) {
  return mapChecked(held(Times()), pDst, len, pSrc1, pSrc2);
}
VekStatus veksMul_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len) {
  return multiplyComplex(pSrc1, pSrc2, pDst, len);
}
VekStatus veksMul_32f32fc(const Vek32f* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len) {
  return multiplyRealComplex(pSrc1, pSrc2, pDst, len);
}
VekStatus veksMul_32s32sc_Sfs(const Vek32s* pSrc1, const Vek32sc* pSrc2, Vek32sc* pDst, int len, int scaleFactor) {
  return multiplyRealComplex(pSrc1, pSrc2, pDst, len, scaleFactor);
}

VekStatus veksMul_Low_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor) {
  return multiplyLow(pSrc1, pSrc2, pDst, len, scaleFactor);
}

VekStatus veksAddProduct_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pSrcDst, int len, int scaleFactor) {
  return addProduct(pSrc1, pSrc2, pSrcDst, len, scaleFactor);
}
VekStatus veksAddProduct_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pSrcDst, int len) {
  return addProduct(pSrc1, pSrc2, pSrcDst, len);
}
VekStatus veksAddProduct_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pSrcDst, int len) {
  return addProduct(pSrc1, pSrc2, pSrcDst, len);
}

}  // namespace vek::VEK_SLOT
