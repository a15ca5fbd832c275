// SPDX-License-Identifier: Apache-2.0
// Convolution, cross-correlation, autocorrelation.
#ifndef VEK_CORRELATION_H
#define VEK_CORRELATION_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_correlation Convolution and correlation
 *
 * Linear convolution, cross-correlation and autocorrelation of whole vectors.
 *
 * Each call sums directly or, where that is faster, goes through the transform; the points of change are fixed and
 * alike in every slot. Sums are formed in single precision. Class: rounded on the direct paths, where a result of n
 * products is within about n * 2^-24 * S of the exact one, S being the sum of the products' magnitudes, and where a NaN
 * or infinity reaches exactly the results whose sums contain it. Class transform on the others: the error is relative
 * to the largest results, and a non-finite element spoils every result of its block.
 *
 * The transform paths take memory for the duration of the call and return #vekStsMemAllocErr without it, and
 * #vekStsFftOrderErr where a transform would need more than 2^28 points (the sum of both lengths, for autocorrelation
 * of srcLen and dstLen; block by block four times the shorter length). In both cases nothing has been written. The
 * direct paths take no memory. Destinations overlap no source.
 * @{
 */

/**
 * Linear convolution: pDst[n] = sum over k of pSrc1[k] * pSrc2[n-k], n = 0 .. src1Len+src2Len-2. Either order of the
 * sources gives the same result.
 *
 * Direct with fewer than 150 results or fewer than 32 elements in the shorter source; otherwise by one transform, or
 * block by block where the longer source has at least three times the elements of the shorter.
 *
 * @return #vekStsNullPtrErr for a null pointer, then #vekStsSizeErr for a length below 1; #vekStsMemAllocErr,
 * #vekStsFftOrderErr
 */
VEK_API VekStatus veksConv_32f(const Vek32f* pSrc1, int src1Len, const Vek32f* pSrc2, int src2Len, Vek32f* pDst);

/**
 * A stretch of the convolution: pDst[n] = sum over k of pSrc1[k] * pSrc2[n + bias - k], n = 0 .. dstLen-1, terms
 * outside the sources being zero. The bias may be negative. The paths of veksConv_32f() apply to the results that have
 * terms.
 *
 * @return #vekStsNullPtrErr for a null pointer, then #vekStsSizeErr for a length below 1; #vekStsMemAllocErr,
 * #vekStsFftOrderErr
 */
VEK_API VekStatus veksConvBiased_32f(const Vek32f* pSrc1, int src1Len, const Vek32f* pSrc2, int src2Len, Vek32f* pDst,
                                     int dstLen, int bias);

/**
 * @name Cross-correlation
 * pDst[n] = sum over k of conj(pSrc1[k]) * pSrc2[k + lowLag + n], n = 0 .. dstLen-1, over the k for which both elements
 * exist. Lags below -(src1Len-1) and from src2Len up have none and give 0.
 *
 * With m lags that overlap, through the transform where min(src1Len, src2Len) * m / max(src1Len, src2Len), formed in
 * single precision and its fraction dropped, is above 383; there block by block where the longer source has at least
 * three times the elements of the shorter and the first lag lies within the shorter.
 *
 * @return #vekStsNullPtrErr for a null pointer, then #vekStsSizeErr for a length below 1; #vekStsMemAllocErr,
 * #vekStsFftOrderErr
 * @{
 */
VEK_API VekStatus veksCrossCorr_32f(const Vek32f* pSrc1, int src1Len, const Vek32f* pSrc2, int src2Len, Vek32f* pDst,
                                    int dstLen, int lowLag);
VEK_API VekStatus veksCrossCorr_32fc(const Vek32fc* pSrc1, int src1Len, const Vek32fc* pSrc2, int src2Len,
                                     Vek32fc* pDst, int dstLen, int lowLag);
/** @} */

/**
 * @name Autocorrelation
 * pDst[k] = sum over n of conj(pSrc[n]) * pSrc[n+k], k = 0 .. dstLen-1; lags from srcLen up give 0. NormA multiplies
 * each result by the single-precision reciprocal of srcLen, NormB divides it by srcLen - k, the number of its products.
 *
 * Through the transform from min(srcLen, dstLen) = 600 up, real and complex alike.
 *
 * @return #vekStsNullPtrErr for a null pointer, then #vekStsSizeErr for a length below 1; #vekStsMemAllocErr,
 * #vekStsFftOrderErr
 * @{
 */
VEK_API VekStatus veksAutoCorr_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int dstLen);
VEK_API VekStatus veksAutoCorr_NormA_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int dstLen);
VEK_API VekStatus veksAutoCorr_NormB_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int dstLen);
VEK_API VekStatus veksAutoCorr_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int dstLen);
VEK_API VekStatus veksAutoCorr_NormA_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int dstLen);
VEK_API VekStatus veksAutoCorr_NormB_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int dstLen);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
