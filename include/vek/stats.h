// SPDX-License-Identifier: Apache-2.0
// Reductions: a vector, or two, to one value.
#ifndef VEK_STATS_H
#define VEK_STATS_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_stats Reductions
 *
 * Common to the families below, unless one says otherwise:
 * - Sources are arrays of len elements that are only read and need no alignment; results go through pointers to one
 *   element each.
 * - Returned: #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, else #vekStsNoErr. A refused call
 *   writes nothing. No function of this chapter returns a warning, allocates memory or keeps a state.
 * - Numeric class: stated with each. "Exact" means the same bits in every slot, at every address. "Rounded" means the
 *   precision stated and the same bits for a given slot, address modulo 16 and hint; slot mx adds in the order stated,
 *   higher slots regroup the partial sums and may fuse a product with the addition of it. With u the unit roundoff of
 *   the precision that sums are formed in (2^-53 double, 2^-24 single), a rounded sum of terms t is within
 *   (N + 2) * u * sum(|t|) of the exact sum, before its one rounding to the result type; N is the number of terms that
 *   share a partial sum, plus 8.
 * @{
 */

/**
 * Sum: *pSum = x[0] + ... + x[len-1].
 *
 * Every hint but vekAlgHintFast: exact. Elements are widened to double; those of the first 16 * floor(len / 16) go to
 * 16 partial sums by index modulo 16, which are added as neighbours, neighbours of those, and so on (in pairs of lanes:
 * ((A0+A1)+(A2+A3)) + ((A4+A5)+(A6+A7)) with A0 = lanes 0 and 1, ..., then lane 0 + lane 1); the rest is added one by
 * one, and the total rounded to single.
 *
 * vekAlgHintFast: rounded, single precision within blocks whose sums are added in double. Slot mx takes blocks of 1024:
 * scalar additions up to 16-byte alignment, 32 partial sums over groups of 32 (the first starts from the sum so far),
 * four over groups of 4 (likewise), then single elements; data off 4-byte alignment is added one by one throughout.
 * Higher slots: blocks of 2048, 32 or 64 partial sums.
 *
 * Complex: exact, the hint is ignored. Both parts in double, eight complex partial sums over groups of 8 elements,
 * added as above; the rest one by one.
 *
 * @param pSrc the vector, len elements
 * @param len  number of elements
 * @param pSum the sum
 * @param hint #vekAlgHintFast for the fast sum; every other value means the exact one
 */
VEK_API VekStatus veksSum_32f(const Vek32f* pSrc, int len, Vek32f* pSum, VekHintAlgorithm hint);
VEK_API VekStatus veksSum_32fc(const Vek32fc* pSrc, int len, Vek32fc* pSum, VekHintAlgorithm hint);

/**
 * Scaled integer sum: *pSum = (x[0] + ... + x[len-1]) * 2^-scaleFactor, rounded to nearest with ties to even and
 * saturated to 32 bits. The sum is exact, any scaleFactor is accepted. Exact.
 *
 * @param pSrc        the vector, len elements
 * @param len         number of elements
 * @param pSum        the sum
 * @param scaleFactor binary scale factor of the sum, any value
 */
VEK_API VekStatus veksSum_16s32s_Sfs(const Vek16s* pSrc, int len, Vek32s* pSum, int scaleFactor);
VEK_API VekStatus veksSum_32s_Sfs(const Vek32s* pSrc, int len, Vek32s* pSum, int scaleFactor);

/**
 * Mean: *pMean = sum / len; sum and quotient in double, rounded once to single. A NaN among the elements gives NaN;
 * each part of complex elements is a mean by itself, so that a NaN in one leaves the other finite.
 *
 * Real: rounded. Slot mx ignores the hint and adds whole groups of four into two partial sums by the parity of the
 * index, odd + even, then the rest one by one. Higher slots use 16 or 32 partial sums, and with vekAlgHintFast the fast
 * sum of veksSum_32f. Complex: exact, the sum of veksSum_32fc, hint ignored.
 *
 * @param pSrc  the vector, len elements
 * @param len   number of elements
 * @param pMean the mean
 * @param hint  #vekAlgHintFast for the fast sum
 */
VEK_API VekStatus veksMean_32f(const Vek32f* pSrc, int len, Vek32f* pMean, VekHintAlgorithm hint);
VEK_API VekStatus veksMean_32fc(const Vek32fc* pSrc, int len, Vek32fc* pMean, VekHintAlgorithm hint);

/**
 * Mean of integers, rounded twice: q = sum / len to the nearest integer, ties to even, from the exact sum; then
 * q * 2^-scaleFactor, rounded alike (0 from scaleFactor 33 up) and saturated. Where scaleFactor is in -31..-1 and the
 * sum fits 32 bits, the sum is scaled before the division instead: |sum| * 2^-scaleFactor / len, rounded once. Exact.
 *
 * @param pSrc        the vector, len elements
 * @param len         number of elements
 * @param pMean       the mean
 * @param scaleFactor binary scale factor of the mean, any value
 */
VEK_API VekStatus veksMean_32s_Sfs(const Vek32s* pSrc, int len, Vek32s* pMean, int scaleFactor);

/**
 * Standard deviation: *pStdDev = sqrt(D / ((len - 1) * len)) with D = len * sum(x^2) - sum(x)^2, the sample deviation;
 * 0 where D is not above 0 or is NaN. A constant vector gives exactly 0. *pMean = sum(x) / len.
 *
 * Rounded: both sums in double from one pass, D and the root in double, then one rounding to single; relative to D the
 * error grows as (mean / deviation)^2. veksStdDev_32f with vekAlgHintFast and len >= 256 in slots above the generic one
 * forms the sums of x - c and (x - c)^2 in single precision instead, c being the mean of the first 64 elements and 16
 * terms sharing a partial sum; the deviation is then good to about 1e-6 as long as c is within a deviation of the mean.
 * veksMeanStdDev_32f ignores the hint.
 *
 * @param pSrc    the vector, len elements
 * @param len     number of elements, 2 or more
 * @param pMean   the mean
 * @param pStdDev the standard deviation
 * @param hint    #vekAlgHintFast for sums in single precision
 * @return #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 2, nothing being written; else
 *         #vekStsNoErr.
 */
VEK_API VekStatus veksStdDev_32f(const Vek32f* pSrc, int len, Vek32f* pStdDev, VekHintAlgorithm hint);
VEK_API VekStatus veksMeanStdDev_32f(const Vek32f* pSrc, int len, Vek32f* pMean, Vek32f* pStdDev,
                                     VekHintAlgorithm hint);

/**
 * Extremes: the largest and smallest element. Exact; as if the elements were visited in order, the first being the
 * extreme at the start and each later one replacing it only where it compares strictly greater (less). So a tie keeps
 * the earlier element, +0 and -0 tie, a NaN is passed over, and a NaN in front is returned as it is.
 *
 * @param pSrc the vector, len elements
 * @param len  number of elements
 * @param pMin the smallest element
 * @param pMax the largest element
 */
VEK_API VekStatus veksMax_16s(const Vek16s* pSrc, int len, Vek16s* pMax);
VEK_API VekStatus veksMax_32s(const Vek32s* pSrc, int len, Vek32s* pMax);
VEK_API VekStatus veksMax_32f(const Vek32f* pSrc, int len, Vek32f* pMax);
VEK_API VekStatus veksMin_16s(const Vek16s* pSrc, int len, Vek16s* pMin);
VEK_API VekStatus veksMin_32s(const Vek32s* pSrc, int len, Vek32s* pMin);
VEK_API VekStatus veksMin_32f(const Vek32f* pSrc, int len, Vek32f* pMin);
VEK_API VekStatus veksMinMax_16s(const Vek16s* pSrc, int len, Vek16s* pMin, Vek16s* pMax);
VEK_API VekStatus veksMinMax_32s(const Vek32s* pSrc, int len, Vek32s* pMin, Vek32s* pMax);
VEK_API VekStatus veksMinMax_32f(const Vek32f* pSrc, int len, Vek32f* pMin, Vek32f* pMax);

/**
 * Extremes and their positions: as above, and the 0-based index of the element returned: the first one that compares
 * equal to the extreme. pIndx may be null, the call is then the one without an index. The index pointers of MinMaxIndx
 * may not. Exact.
 *
 * @param pSrc     the vector, len elements
 * @param len      number of elements
 * @param pMin     the smallest element
 * @param pMinIndx its index
 * @param pMax     the largest element
 * @param pMaxIndx its index
 * @param pIndx    index of the element returned, or null
 */
VEK_API VekStatus veksMaxIndx_16s(const Vek16s* pSrc, int len, Vek16s* pMax, int* pIndx);
VEK_API VekStatus veksMaxIndx_32s(const Vek32s* pSrc, int len, Vek32s* pMax, int* pIndx);
VEK_API VekStatus veksMaxIndx_32f(const Vek32f* pSrc, int len, Vek32f* pMax, int* pIndx);
VEK_API VekStatus veksMinIndx_16s(const Vek16s* pSrc, int len, Vek16s* pMin, int* pIndx);
VEK_API VekStatus veksMinIndx_32s(const Vek32s* pSrc, int len, Vek32s* pMin, int* pIndx);
VEK_API VekStatus veksMinIndx_32f(const Vek32f* pSrc, int len, Vek32f* pMin, int* pIndx);
VEK_API VekStatus veksMinMaxIndx_16s(const Vek16s* pSrc, int len, Vek16s* pMin, int* pMinIndx, Vek16s* pMax,
                                     int* pMaxIndx);
VEK_API VekStatus veksMinMaxIndx_32s(const Vek32s* pSrc, int len, Vek32s* pMin, int* pMinIndx, Vek32s* pMax,
                                     int* pMaxIndx);
VEK_API VekStatus veksMinMaxIndx_32f(const Vek32f* pSrc, int len, Vek32f* pMin, int* pMinIndx, Vek32f* pMax,
                                     int* pMaxIndx);

/**
 * Extreme magnitudes: the largest and smallest |x|, with 2^31 (of -2147483648) clamped to 2147483647 before it is
 * compared: -2147483648 and 2147483647 tie, and the first of them is the one whose index is given. pIndx may be null as
 * above. Exact.
 *
 * @param pSrc    the vector, len elements
 * @param len     number of elements
 * @param pMaxAbs the largest magnitude
 * @param pMinAbs the smallest magnitude
 * @param pIndx   index of the element that has it, or null
 */
VEK_API VekStatus veksMaxAbs_32s(const Vek32s* pSrc, int len, Vek32s* pMaxAbs);
VEK_API VekStatus veksMinAbs_32s(const Vek32s* pSrc, int len, Vek32s* pMinAbs);
VEK_API VekStatus veksMaxAbsIndx_32s(const Vek32s* pSrc, int len, Vek32s* pMaxAbs, int* pIndx);
VEK_API VekStatus veksMinAbsIndx_32s(const Vek32s* pSrc, int len, Vek32s* pMinAbs, int* pIndx);

/**
 * Norms: Inf: the largest magnitude, at least 0; NaN elements are passed over. L1: the sum of magnitudes. L2: the root
 * of the sum of squared magnitudes.
 *
 * - Inf_32f: exact.
 * - Inf_32fc32f: exact. re^2 + im^2 in double, rounded to single, for whole groups of four elements, in single (every
 *   operation rounded) for the last len mod 4; root in single.
 * - L1_32f: exact, double sums in the order of veksSum_32f, rounded to single.
 * - L1_32fc64f: rounded, sum in double. Each magnitude is formed in double and rounded to single before it is added.
 * - L2_32f: rounded, sum and root in double (slot mx: eight partial sums), result rounded to single.
 * - L2_32fc64f: rounded, sum and root in double.
 *
 * @param pSrc  the vector, len elements
 * @param len   number of elements
 * @param pNorm the norm
 */
VEK_API VekStatus veksNorm_Inf_32f(const Vek32f* pSrc, int len, Vek32f* pNorm);
VEK_API VekStatus veksNorm_Inf_32fc32f(const Vek32fc* pSrc, int len, Vek32f* pNorm);
VEK_API VekStatus veksNorm_L1_32f(const Vek32f* pSrc, int len, Vek32f* pNorm);
VEK_API VekStatus veksNorm_L1_32fc64f(const Vek32fc* pSrc, int len, Vek64f* pNorm);
VEK_API VekStatus veksNorm_L2_32f(const Vek32f* pSrc, int len, Vek32f* pNorm);
VEK_API VekStatus veksNorm_L2_32fc64f(const Vek32fc* pSrc, int len, Vek64f* pNorm);

/**
 * Norms of differences: the norms of pSrc1 - pSrc2.
 *
 * - Inf_32f: exact, the single nearest to the largest |difference|.
 * - Inf_32fc32f: exact, everything in single precision, every operation rounded.
 * - L1_32f, L2_32f: rounded, differences, sums and root in double, result rounded to single.
 * - L1_32fc64f, L2_32fc64f: rounded, differences in single, everything after in double. Unlike veksNorm_L1_32fc64f the
 *   magnitudes are not rounded to single.
 *
 * @param pSrc1,pSrc2 the vectors, len elements each
 * @param len         number of elements
 * @param pNorm       the norm
 */
VEK_API VekStatus veksNormDiff_Inf_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek32f* pNorm);
VEK_API VekStatus veksNormDiff_Inf_32fc32f(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek32f* pNorm);
VEK_API VekStatus veksNormDiff_L1_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek32f* pNorm);
VEK_API VekStatus veksNormDiff_L1_32fc64f(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek64f* pNorm);
VEK_API VekStatus veksNormDiff_L2_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek32f* pNorm);
VEK_API VekStatus veksNormDiff_L2_32fc64f(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek64f* pNorm);

/**
 * *pCounts = the number of elements with lowerBound < x < upperBound; both bounds are excluded, bounds in the wrong
 * order count nothing. Exact.
 *
 * @param pSrc       the vector, len elements
 * @param len        number of elements
 * @param pCounts    the number of elements counted; 0 is written to it before len is checked
 * @param lowerBound the lower bound
 * @param upperBound the upper bound
 */
VEK_API VekStatus veksCountInRange_32s(const Vek32s* pSrc, int len, int* pCounts, Vek32s lowerBound, Vek32s upperBound);

/**
 * Dot products: *pDp = sum of x[n] * y[n]; complex elements are multiplied as they are, neither is conjugated, and a
 * real element multiplies both parts of a complex one.
 *
 * Rounded. veksDotProd_32f, _32fc and _32f32fc multiply and add in single precision; those with a double result widen
 * the elements first and multiply and add in double. veksDotProd_32f in slot mx: products of leading elements one by
 * one until pSrc2 is 16-byte aligned, then eight partial sums over groups of 8 (the first starts from the sum so far),
 * then one by one; everything one by one where pSrc2 is off 4-byte alignment. Higher slots: 32 or 64 partial sums.
 *
 * @param pSrc1,pSrc2 the vectors, len elements each
 * @param len         number of elements
 * @param pDp         the dot product
 */
VEK_API VekStatus veksDotProd_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek32f* pDp);
VEK_API VekStatus veksDotProd_32f64f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek64f* pDp);
VEK_API VekStatus veksDotProd_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek32fc* pDp);
VEK_API VekStatus veksDotProd_32fc64fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek64fc* pDp);
VEK_API VekStatus veksDotProd_32f32fc(const Vek32f* pSrc1, const Vek32fc* pSrc2, int len, Vek32fc* pDp);
VEK_API VekStatus veksDotProd_32f32fc64fc(const Vek32f* pSrc1, const Vek32fc* pSrc2, int len, Vek64fc* pDp);

/**
 * Scaled integer dot products: the sum of products in double, times 2^-scaleFactor with scaleFactor clamped to [-31,
 * 93], saturated to 32 bits and rounded to nearest, ties to even; complex results part by part. Rounded: products are
 * formed, rounded and added in double in every slot, never fused, and a product or sum above 2^53 is not exact. Below
 * that bound the result is.
 *
 * @param pSrc1,pSrc2 the vectors, len elements each
 * @param len         number of elements
 * @param pDp         the dot product
 * @param scaleFactor binary scale factor of the sum, any value
 */
VEK_API VekStatus veksDotProd_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, int len, Vek32s* pDp, int scaleFactor);
VEK_API VekStatus veksDotProd_32sc_Sfs(const Vek32sc* pSrc1, const Vek32sc* pSrc2, int len, Vek32sc* pDp,
                                       int scaleFactor);
VEK_API VekStatus veksDotProd_32s32sc_Sfs(const Vek32s* pSrc1, const Vek32sc* pSrc2, int len, Vek32sc* pDp,
                                          int scaleFactor);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
