// SPDX-License-Identifier: Apache-2.0
// Element-wise arithmetic: addition, subtraction, multiplication, accumulation of products, division.
#ifndef VEK_ARITH_H
#define VEK_ARITH_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_arith Arithmetic and the scaled-result rule
 *
 * Every integer function with the modifier `_Sfs` (or `_ISfs`, in place) takes a scale factor and stores
 *
 *     saturate(round(r * 2^(-scaleFactor)))
 *
 * where r is the exact mathematical result of the operation. A positive factor divides, with rounding to the nearest
 * integer and ties to even; a negative one multiplies; zero leaves r as it is. The value is then clamped to the range
 * of the destination: 0..255, -32768..32767 or -2147483648..2147483647, each part of a complex element on its
 * own. With scaleFactor 1 the results 1, 3, 5, -1, -3 become 0, 2, 2, 0, -2. Any 32-bit value is a valid scale factor:
 * a large positive one gives zeros, a large negative one the end of the range that has the sign of r, or 0.
 *
 * Functions without the modifier work in single precision with ordinary IEEE arithmetic, every product and every sum
 * rounded on its own; NaN, infinities and denormals are not treated specially.
 *
 * Common to the families below, unless one says otherwise:
 * - `len` counts elements; a complex element counts once.
 * - Two-source forms: `pSrc1`, `pSrc2`, `pDst`; pDst may be equal to either source. In-place forms: `pSrc`, `pSrcDst`;
 *   the two may be equal. Constant forms: `val` in the place of one source. Vectors that overlap in any other way are
 *   not supported.
 * - Returned: #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, else #vekStsNoErr. A refused
 *   call writes nothing.
 * - Numeric class: exact. The same bits on every processor and at every position and alignment.
 * @{
 */

/**
 * Sum of two vectors: pDst[n] = pSrc1[n] + pSrc2[n]; in place pSrcDst[n] = pSrcDst[n] + pSrc[n].
 * In place pSrcDst is pSrc1.
 *
 * @param pSrc1,pSrc2 the terms, len elements each (in place: pSrc)
 * @param pDst        the sums, len elements (in place: pSrcDst)
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the result
 */
VEK_API VekStatus veksAdd_8u_Sfs(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksAdd_8u_ISfs(const Vek8u* pSrc, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksAdd_16s_Sfs(const Vek16s* pSrc1, const Vek16s* pSrc2, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksAdd_16s_ISfs(const Vek16s* pSrc, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksAdd_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksAdd_32s_ISfs(const Vek32s* pSrc, Vek32s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksAdd_32sc_Sfs(const Vek32sc* pSrc1, const Vek32sc* pSrc2, Vek32sc* pDst, int len, int scaleFactor);
VEK_API VekStatus veksAdd_32sc_ISfs(const Vek32sc* pSrc, Vek32sc* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksAdd_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len);
VEK_API VekStatus veksAdd_32f_I(const Vek32f* pSrc, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksAdd_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len);
VEK_API VekStatus veksAdd_32fc_I(const Vek32fc* pSrc, Vek32fc* pSrcDst, int len);

/**
 * Difference of two vectors. The first argument is what is taken away: pDst[n] = pSrc2[n] - pSrc1[n]; in place
 * pSrcDst[n] = pSrcDst[n] - pSrc[n].
 *
 * @param pSrc1       the subtrahends, len elements (in place: pSrc)
 * @param pSrc2       the minuends, len elements (in place: pSrcDst)
 * @param pDst        the differences, len elements
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the result
 */
VEK_API VekStatus veksSub_8u_Sfs(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSub_8u_ISfs(const Vek8u* pSrc, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSub_16s_Sfs(const Vek16s* pSrc1, const Vek16s* pSrc2, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSub_16s_ISfs(const Vek16s* pSrc, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSub_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSub_32s_ISfs(const Vek32s* pSrc, Vek32s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSub_32sc_Sfs(const Vek32sc* pSrc1, const Vek32sc* pSrc2, Vek32sc* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSub_32sc_ISfs(const Vek32sc* pSrc, Vek32sc* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSub_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len);
VEK_API VekStatus veksSub_32f_I(const Vek32f* pSrc, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksSub_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len);
VEK_API VekStatus veksSub_32fc_I(const Vek32fc* pSrc, Vek32fc* pSrcDst, int len);

/**
 * Product of two vectors: pDst[n] = pSrc1[n] * pSrc2[n]; in place pSrcDst[n] = pSrcDst[n] * pSrc[n].
 * In place pSrcDst is pSrc1, or the complex factor.
 *
 * Complex: (re1 * re2 - im1 * im2, re1 * im2 + im1 * re2). Integers form each part exactly before it is scaled once;
 * floats round each of the four products and then the difference and the sum.
 * A real vector times a complex one (`_32f32fc`, `_32s32sc`) multiplies both parts by the real element.
 *
 * @param pSrc1,pSrc2 the factors, len elements each (in place: pSrc; with mixed types pSrc1 and pSrc are real)
 * @param pDst        the products, len elements (in place: pSrcDst)
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the result
 */
VEK_API VekStatus veksMul_8u_Sfs(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksMul_8u_ISfs(const Vek8u* pSrc, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksMul_16s_Sfs(const Vek16s* pSrc1, const Vek16s* pSrc2, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksMul_16s_ISfs(const Vek16s* pSrc, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksMul_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksMul_32s_ISfs(const Vek32s* pSrc, Vek32s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksMul_32sc_Sfs(const Vek32sc* pSrc1, const Vek32sc* pSrc2, Vek32sc* pDst, int len, int scaleFactor);
VEK_API VekStatus veksMul_32sc_ISfs(const Vek32sc* pSrc, Vek32sc* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksMul_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len);
VEK_API VekStatus veksMul_32f_I(const Vek32f* pSrc, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksMul_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len);
VEK_API VekStatus veksMul_32fc_I(const Vek32fc* pSrc, Vek32fc* pSrcDst, int len);
VEK_API VekStatus veksMul_32f32fc(const Vek32f* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len);
VEK_API VekStatus veksMul_32f32fc_I(const Vek32f* pSrc, Vek32fc* pSrcDst, int len);
VEK_API VekStatus veksMul_32s32sc_Sfs(const Vek32s* pSrc1, const Vek32sc* pSrc2, Vek32sc* pDst, int len,
                                      int scaleFactor);
VEK_API VekStatus veksMul_32s32sc_ISfs(const Vek32s* pSrc, Vek32sc* pSrcDst, int len, int scaleFactor);

/**
 * The low half of a scaled product, without rounding or saturation: with p = pSrc1[n] * pSrc2[n] in 64 bits,
 * pDst[n] receives the low 32 bits of
 *
 *     p >> scaleFactor  (arithmetically, toward minus infinity)   for    0 <= scaleFactor <= 62,
 *     p << -scaleFactor                                           for  -31 <= scaleFactor < 0.
 *
 * scaleFactor > 62 gives zeros. scaleFactor < -31 gives 2147483647 for p > 0, -2147483648 for p < 0 and 0 for p = 0.
 *
 * @param pSrc1,pSrc2 the factors, len elements each
 * @param pDst        the results, len elements
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the product
 */
VEK_API VekStatus veksMul_Low_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor);

/**
 * Sum with a constant: pDst[n] = pSrc[n] + val; in place pSrcDst[n] = pSrcDst[n] + val.
 *
 * @param pSrc        the vector, len elements (in place: pSrcDst)
 * @param val         the constant
 * @param pDst        the results, len elements
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the result
 */
VEK_API VekStatus veksAddC_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksAddC_8u_ISfs(Vek8u val, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksAddC_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksAddC_16s_ISfs(Vek16s val, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksAddC_32s_Sfs(const Vek32s* pSrc, Vek32s val, Vek32s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksAddC_32s_ISfs(Vek32s val, Vek32s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksAddC_32sc_Sfs(const Vek32sc* pSrc, Vek32sc val, Vek32sc* pDst, int len, int scaleFactor);
VEK_API VekStatus veksAddC_32sc_ISfs(Vek32sc val, Vek32sc* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksAddC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len);
VEK_API VekStatus veksAddC_32f_I(Vek32f val, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksAddC_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len);
VEK_API VekStatus veksAddC_32fc_I(Vek32fc val, Vek32fc* pSrcDst, int len);

/**
 * Difference with a constant: pDst[n] = pSrc[n] - val; in place pSrcDst[n] = pSrcDst[n] - val.
 * Parameters as for veksAddC.
 */
VEK_API VekStatus veksSubC_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSubC_8u_ISfs(Vek8u val, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSubC_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSubC_16s_ISfs(Vek16s val, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSubC_32s_Sfs(const Vek32s* pSrc, Vek32s val, Vek32s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSubC_32s_ISfs(Vek32s val, Vek32s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSubC_32sc_Sfs(const Vek32sc* pSrc, Vek32sc val, Vek32sc* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSubC_32sc_ISfs(Vek32sc val, Vek32sc* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSubC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len);
VEK_API VekStatus veksSubC_32f_I(Vek32f val, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksSubC_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len);
VEK_API VekStatus veksSubC_32fc_I(Vek32fc val, Vek32fc* pSrcDst, int len);

/**
 * A constant minus a vector: pDst[n] = val - pSrc[n]; in place pSrcDst[n] = val - pSrcDst[n].
 * Parameters as for veksAddC.
 */
VEK_API VekStatus veksSubCRev_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSubCRev_8u_ISfs(Vek8u val, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSubCRev_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSubCRev_16s_ISfs(Vek16s val, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSubCRev_32s_Sfs(const Vek32s* pSrc, Vek32s val, Vek32s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSubCRev_32s_ISfs(Vek32s val, Vek32s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSubCRev_32sc_Sfs(const Vek32sc* pSrc, Vek32sc val, Vek32sc* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSubCRev_32sc_ISfs(Vek32sc val, Vek32sc* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSubCRev_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len);
VEK_API VekStatus veksSubCRev_32f_I(Vek32f val, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksSubCRev_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len);
VEK_API VekStatus veksSubCRev_32fc_I(Vek32fc val, Vek32fc* pSrcDst, int len);

/**
 * Product with a constant: pDst[n] = pSrc[n] * val; in place pSrcDst[n] = pSrcDst[n] * val. Complex products as in
 * veksMul. Parameters as for veksAddC.
 */
VEK_API VekStatus veksMulC_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksMulC_8u_ISfs(Vek8u val, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksMulC_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksMulC_16s_ISfs(Vek16s val, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksMulC_32s_Sfs(const Vek32s* pSrc, Vek32s val, Vek32s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksMulC_32s_ISfs(Vek32s val, Vek32s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksMulC_32sc_Sfs(const Vek32sc* pSrc, Vek32sc val, Vek32sc* pDst, int len, int scaleFactor);
VEK_API VekStatus veksMulC_32sc_ISfs(Vek32sc val, Vek32sc* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksMulC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len);
VEK_API VekStatus veksMulC_32f_I(Vek32f val, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksMulC_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len);
VEK_API VekStatus veksMulC_32fc_I(Vek32fc val, Vek32fc* pSrcDst, int len);

/**
 * Accumulated product: pSrcDst[n] = pSrcDst[n] + pSrc1[n] * pSrc2[n].
 *
 * `_32s_Sfs`: the scale factor applies to the whole sum, which is formed exactly: accumulator 3, product 0 and
 * scaleFactor 1 give 2. A scale factor above 62 gives zeros.
 * `_32f`, `_32fc`: the product is rounded, then the sum.
 *
 * @param pSrc1,pSrc2 the factors, len elements each; either may be equal to pSrcDst
 * @param pSrcDst     the accumulators, len elements
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the sum
 */
VEK_API VekStatus veksAddProduct_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pSrcDst, int len,
                                         int scaleFactor);
VEK_API VekStatus veksAddProduct_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksAddProduct_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pSrcDst, int len);

/**
 * Accumulated product with a constant: pSrcDst[n] = pSrcDst[n] + pSrc[n] * val, the product rounded, then the sum.
 *
 * @param pSrc    the vector, len elements
 * @param val     the constant
 * @param pSrcDst the accumulators, len elements
 * @param len     number of elements
 */
VEK_API VekStatus veksAddProductC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pSrcDst, int len);

/**
 * Quotient of two vectors. The first argument holds the divisors: pDst[n] = pSrc2[n] / pSrc1[n]; in place
 * pSrcDst[n] = pSrcDst[n] / pSrc[n].
 *
 * Integers: with m = 2^(-scaleFactor) (infinite or zero where that is out of range) q = pSrc2[n] * m / pSrc1[n], the
 * product first and then the quotient, in single precision (`8u`, `16s`) or double precision (`32s`); q is rounded to
 * the nearest integer, ties to even, and saturated. A zero divisor gives the largest value for a positive dividend, the
 * smallest for a negative one and 0 for a zero dividend. `_32s` with scaleFactor <= -1024, where m is infinite, gives
 * -2147483648 for a zero dividend over a divisor that is not zero: its q is a NaN.
 *
 * `_32f`: IEEE quotient. A zero divisor of either sign gives +infinity for a positive dividend, -infinity for a
 * negative one and the NaN 0xFFC00000 for a zero or a NaN.
 *
 * `_32fc`: with divisor a and dividend b, r = 1 / (a.re^2 + a.im^2) and the quotient is
 * ((a.re * b.re + a.im * b.im) * r, (a.re * b.im - a.im * b.re) * r), every operation rounded. Where the sum of squares
 * is zero, by underflow too, both parts are the NaN 0xFFC00000 and the divisor counts as zero.
 *
 * @param pSrc1       the divisors, len elements (in place: pSrc)
 * @param pSrc2       the dividends, len elements (in place: pSrcDst)
 * @param pDst        the quotients, len elements; may be equal to either source
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the quotient, any value
 * @return #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, nothing being written; else the whole
 *         vector is divided and #vekStsDivByZero (a warning) is returned if a divisor was zero, #vekStsNoErr if not.
 *
 * Numeric class: exact.
 */
VEK_API VekStatus veksDiv_8u_Sfs(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksDiv_8u_ISfs(const Vek8u* pSrc, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksDiv_16s_Sfs(const Vek16s* pSrc1, const Vek16s* pSrc2, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksDiv_16s_ISfs(const Vek16s* pSrc, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksDiv_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksDiv_32s_ISfs(const Vek32s* pSrc, Vek32s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksDiv_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len);
VEK_API VekStatus veksDiv_32f_I(const Vek32f* pSrc, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksDiv_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len);
VEK_API VekStatus veksDiv_32fc_I(const Vek32fc* pSrc, Vek32fc* pSrcDst, int len);

/**
 * Quotient with a constant: pDst[n] = pSrc[n] / val; in place pSrcDst[n] = pSrcDst[n] / val.
 *
 * All forms multiply by one factor formed beforehand. Integers: f = 2^(-scaleFactor) / val in single precision,
 * pSrc[n] * f rounded to the nearest integer, ties to even, and saturated. `_32f`: f = 1 / val. `_32fc`: the complex
 * f = (val.re * s, -val.im * s) with s = 1 / (val.re^2 + val.im^2) and a complex product as in veksMulC.
 *
 * @param pSrc        the vector, len elements (in place: pSrcDst)
 * @param val         the divisor
 * @param pDst        the quotients, len elements; may be equal to pSrc
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the quotient, any value
 * @return #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, then #vekStsDivByZeroErr if val is
 *         zero (both parts of a complex one), nothing being written; else #vekStsNoErr.
 *
 * Numeric class: exact.
 */
VEK_API VekStatus veksDivC_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksDivC_8u_ISfs(Vek8u val, Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksDivC_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksDivC_16s_ISfs(Vek16s val, Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksDivC_32f(const Vek32f* pSrc, Vek32f val, Vek32f* pDst, int len);
VEK_API VekStatus veksDivC_32f_I(Vek32f val, Vek32f* pSrcDst, int len);
VEK_API VekStatus veksDivC_32fc(const Vek32fc* pSrc, Vek32fc val, Vek32fc* pDst, int len);
VEK_API VekStatus veksDivC_32fc_I(Vek32fc val, Vek32fc* pSrcDst, int len);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
