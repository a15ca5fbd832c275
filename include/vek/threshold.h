// SPDX-License-Identifier: Apache-2.0
// Thresholds: replacing the elements beyond a level.
#ifndef VEK_THRESHOLD_H
#define VEK_THRESHOLD_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_threshold Thresholds
 *
 * Elements on one side of a level are replaced; the others are stored as they are.
 *
 * Real elements x are compared in their own type. A complex element is compared by its squared magnitude
 * m = re*re + im*im with level*level, every operation rounded to single precision.
 *
 * Common to the families below:
 * - pDst may be equal to pSrc; any other overlap is not supported. In-place forms: `pSrcDst`.
 * - Returned, in this order: #vekStsNullPtrErr if a pointer is null; #vekStsSizeErr if len < 1; what the family adds;
 *   else #vekStsNoErr. A refused call writes nothing.
 * - Numeric class: exact. The same bits on every processor and at every position and alignment.
 * @{
 */

/**
 * Below or above a level. LT (`relOp` #vekCompareLess): x where x > level, else the level, so a NaN becomes the level.
 * GT (#vekCompareGreater): x where x < level, else the level.
 *
 * Complex LT keeps an element with m >= level^2, stores (level, 0) for a zero element, and multiplies every other by
 * sqrt(level^2 / m), in double precision with one rounding at the end, which sets the magnitude to the level and keeps
 * the phase. GT keeps an element with m <= level^2 and multiplies every other. Where m or level^2 leaves the range of
 * normal single-precision numbers, the factor is formed from squares in double precision, so that the magnitude still
 * comes out as the level. A NaN in one part gives NaN in both. Of an element with an infinite part LT keeps all, and GT
 * makes NaN of that part and zero of a finite one.
 *
 * @param pSrc  the vector, len elements (in place: pSrcDst)
 * @param pDst  the results, len elements
 * @param len   number of elements
 * @param level the level; for complex elements 0 or more
 * @param relOp which elements are replaced, #vekCompareLess or #vekCompareGreater
 * @return as above; #vekStsBadArgErr for any other relOp; then #vekStsThreshNegLevelErr if complex elements are
 *         compared with a level below 0.
 */
VEK_API VekStatus veksThreshold_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level, VekCompareOp relOp);
VEK_API VekStatus veksThreshold_32f_I(Vek32f* pSrcDst, int len, Vek32f level, VekCompareOp relOp);
VEK_API VekStatus veksThreshold_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level, VekCompareOp relOp);
VEK_API VekStatus veksThreshold_32fc_I(Vek32fc* pSrcDst, int len, Vek32f level, VekCompareOp relOp);
VEK_API VekStatus veksThreshold_LT_16s(const Vek16s* pSrc, Vek16s* pDst, int len, Vek16s level);
VEK_API VekStatus veksThreshold_LT_16s_I(Vek16s* pSrcDst, int len, Vek16s level);
VEK_API VekStatus veksThreshold_LT_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s level);
VEK_API VekStatus veksThreshold_LT_32s_I(Vek32s* pSrcDst, int len, Vek32s level);
VEK_API VekStatus veksThreshold_LT_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_LT_32f_I(Vek32f* pSrcDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_LT_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_LT_32fc_I(Vek32fc* pSrcDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_GT_16s(const Vek16s* pSrc, Vek16s* pDst, int len, Vek16s level);
VEK_API VekStatus veksThreshold_GT_16s_I(Vek16s* pSrcDst, int len, Vek16s level);
VEK_API VekStatus veksThreshold_GT_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s level);
VEK_API VekStatus veksThreshold_GT_32s_I(Vek32s* pSrcDst, int len, Vek32s level);
VEK_API VekStatus veksThreshold_GT_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_GT_32f_I(Vek32f* pSrcDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_GT_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_GT_32fc_I(Vek32fc* pSrcDst, int len, Vek32f level);

/**
 * Replaced by a value. LTVal: x where x >= level, else the value. GTVal: x where x <= level, else the value. NaN
 * becomes the value. Complex elements likewise by m and level^2.
 *
 * @param pSrc  the vector, len elements (in place: pSrcDst)
 * @param pDst  the results, len elements
 * @param len   number of elements
 * @param level the level; for complex elements 0 or more
 * @param value what replaces an element
 * @return as above; #vekStsThreshNegLevelErr if complex elements are compared with a level below 0.
 */
VEK_API VekStatus veksThreshold_LTVal_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level, Vek32f value);
VEK_API VekStatus veksThreshold_LTVal_32f_I(Vek32f* pSrcDst, int len, Vek32f level, Vek32f value);
VEK_API VekStatus veksThreshold_LTVal_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level, Vek32fc value);
VEK_API VekStatus veksThreshold_LTVal_32fc_I(Vek32fc* pSrcDst, int len, Vek32f level, Vek32fc value);
VEK_API VekStatus veksThreshold_GTVal_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level, Vek32f value);
VEK_API VekStatus veksThreshold_GTVal_32f_I(Vek32f* pSrcDst, int len, Vek32f level, Vek32f value);
VEK_API VekStatus veksThreshold_GTVal_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level, Vek32fc value);
VEK_API VekStatus veksThreshold_GTVal_32fc_I(Vek32fc* pSrcDst, int len, Vek32f level, Vek32fc value);

/**
 * Replaced by two values: `valueLT` where x < levelLT, `valueGT` where x > levelGT or x is NaN, else x.
 *
 * @param pSrc    the vector, len elements (in place: pSrcDst)
 * @param pDst    the results, len elements
 * @param len     number of elements
 * @param levelLT the lower level
 * @param valueLT what replaces an element below it
 * @param levelGT the upper level
 * @param valueGT what replaces an element above it
 * @return as above; #vekStsThresholdErr if levelLT is above levelGT.
 */
VEK_API VekStatus veksThreshold_LTValGTVal_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s levelLT,
                                               Vek32s valueLT, Vek32s levelGT, Vek32s valueGT);
VEK_API VekStatus veksThreshold_LTValGTVal_32s_I(Vek32s* pSrcDst, int len, Vek32s levelLT, Vek32s valueLT,
                                                 Vek32s levelGT, Vek32s valueGT);
VEK_API VekStatus veksThreshold_LTValGTVal_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f levelLT,
                                               Vek32f valueLT, Vek32f levelGT, Vek32f valueGT);
VEK_API VekStatus veksThreshold_LTValGTVal_32f_I(Vek32f* pSrcDst, int len, Vek32f levelLT, Vek32f valueLT,
                                                 Vek32f levelGT, Vek32f valueGT);

/**
 * By magnitude. LTAbs: where |x| < level, the level with the sign of x (+level for both zeros); else x, NaN included.
 * GTAbs: x clamped to -level..level; NaN becomes +level, and with level 0 both zeros become +0. The magnitude of
 * -2147483648 is 2147483648.
 *
 * @param pSrc  the vector, len elements (in place: pSrcDst)
 * @param pDst  the results, len elements
 * @param len   number of elements
 * @param level the level, 0 or more
 * @return as above; #vekStsThreshNegLevelErr if level is below 0.
 */
VEK_API VekStatus veksThreshold_LTAbs_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s level);
VEK_API VekStatus veksThreshold_LTAbs_32s_I(Vek32s* pSrcDst, int len, Vek32s level);
VEK_API VekStatus veksThreshold_LTAbs_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_LTAbs_32f_I(Vek32f* pSrcDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_GTAbs_32s(const Vek32s* pSrc, Vek32s* pDst, int len, Vek32s level);
VEK_API VekStatus veksThreshold_GTAbs_32s_I(Vek32s* pSrcDst, int len, Vek32s level);
VEK_API VekStatus veksThreshold_GTAbs_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_GTAbs_32f_I(Vek32f* pSrcDst, int len, Vek32f level);

/**
 * Reciprocal with a limit: 1/x where |x| > level; elsewhere +1/level for x >= 0 and -1/level for x < 0 and for NaN.
 * With level 0 every element but zero gives 1/x, and zeros of either sign give +infinity.
 *
 * Complex: (re/m, -im/m) where m > level^2; elsewhere magnitude 1/level with the phase of the reciprocal, (1/level, 0)
 * for a zero element. With level 0 every element but zero gives its reciprocal, and a zero element (+infinity, 0). A
 * NaN in one part gives NaN in both; an infinite part gives NaN there and zero for a finite one.
 *
 * @param pSrc  the vector, len elements (in place: pSrcDst)
 * @param pDst  the results, len elements
 * @param len   number of elements
 * @param level the largest magnitude whose reciprocal is limited, 0 or more
 * @return as above; #vekStsThreshNegLevelErr if level is below 0; the warning #vekStsInvZero if level is 0 and an
 *         element is zero, after the whole vector.
 */
VEK_API VekStatus veksThreshold_LTInv_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_LTInv_32f_I(Vek32f* pSrcDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_LTInv_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f level);
VEK_API VekStatus veksThreshold_LTInv_32fc_I(Vek32fc* pSrcDst, int len, Vek32f level);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
