// SPDX-License-Identifier: Apache-2.0
// Conversion between element types.
#ifndef VEK_CONVERT_H
#define VEK_CONVERT_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_convert Type conversion
 *
 * Each function turns `len` elements of one type into `len` elements of another; the name gives the source type, then
 * the destination type.
 *
 * - Source and destination must not overlap, except that they may be the same array where both element types have the
 *   same size.
 * - 24-bit elements are three bytes each, least significant first, without alignment: such an array is a byte pointer
 *   to 3 * `len` bytes.
 * - `scaleFactor` may be any 32-bit integer; all of them take the same time.
 * - Checks, in order: a null pointer gives #vekStsNullPtrErr; `len` below 1 gives #vekStsSizeErr; rounding mode
 *   #vekRoundHalfAway gives #vekStsRoundModeNotSupportedErr in the functions that say so. A refused call writes
 *   nothing. Otherwise the result is #vekStsNoErr: saturation, overflow and NaN are not reported.
 * - Numeric class of all functions: exact. The result depends on nothing but the element and the arguments.
 * @{
 */

/**
 * @name Wider and narrower integers
 * Sign extension of 8s, 16s and 24s, zero extension of 24u; 32s to 16s saturates to -32768..32767.
 * @{
 */
VEK_API VekStatus veksConvert_8s16s(const Vek8s* pSrc, Vek16s* pDst, int len);
VEK_API VekStatus veksConvert_16s32s(const Vek16s* pSrc, Vek32s* pDst, int len);
VEK_API VekStatus veksConvert_24u32u(const Vek8u* pSrc, Vek32u* pDst, int len);
VEK_API VekStatus veksConvert_24s32s(const Vek8u* pSrc, Vek32s* pDst, int len);
VEK_API VekStatus veksConvert_32s16s(const Vek32s* pSrc, Vek16s* pDst, int len);
/** @} */

/**
 * @name Floating point from integers and between precisions
 * Exact wherever the destination can hold the value, else rounded to nearest, ties to even (32s to 32f, 64f to 32f).
 * @{
 */
VEK_API VekStatus veksConvert_8u32f(const Vek8u* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksConvert_8s32f(const Vek8s* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksConvert_16u32f(const Vek16u* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksConvert_16s32f(const Vek16s* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksConvert_24u32f(const Vek8u* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksConvert_24s32f(const Vek8u* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksConvert_32s32f(const Vek32s* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksConvert_32s64f(const Vek32s* pSrc, Vek64f* pDst, int len);
VEK_API VekStatus veksConvert_32f64f(const Vek32f* pSrc, Vek64f* pDst, int len);
VEK_API VekStatus veksConvert_64f32f(const Vek64f* pSrc, Vek32f* pDst, int len);
/** @} */

/**
 * @name Floating point from integers, scaled
 * pDst[n] = float(pSrc[n]) * m, where the multiplier m is 2^-scaleFactor in the precision of the destination: denormal
 * from 127 (single) or 1023 (double) on, 0 from 150 or 1075 on, and infinity from -128 or -1024 down. An infinite
 * multiplier makes NaN of a zero element, as IEEE arithmetic has it.
 *
 * @param scaleFactor exponent of the division, any value
 * @{
 */
VEK_API VekStatus veksConvert_16s32f_Sfs(const Vek16s* pSrc, Vek32f* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32s32f_Sfs(const Vek32s* pSrc, Vek32f* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_16s64f_Sfs(const Vek16s* pSrc, Vek64f* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32s64f_Sfs(const Vek32s* pSrc, Vek64f* pDst, int len, int scaleFactor);
/** @} */

/**
 * @name Narrower integers, scaled
 * pSrc[n] * 2^-scaleFactor, rounded to nearest with ties to even, saturated to the range of the destination. The value
 * is exact before the one rounding, whatever the scale factor.
 * @{
 */
VEK_API VekStatus veksConvert_32s16s_Sfs(const Vek32s* pSrc, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32s24s_Sfs(const Vek32s* pSrc, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32u24u_Sfs(const Vek32u* pSrc, Vek8u* pDst, int len, int scaleFactor);

/**
 * The same with a choice of rounding: #vekRoundTowardZero, #vekRoundNearestEven, and ties away from zero for every
 * other value.
 */
VEK_API VekStatus veksConvert_64s32s_Sfs(const Vek64s* pSrc, Vek32s* pDst, int len, VekRoundMode rndMode,
                                         int scaleFactor);
/** @} */

/**
 * @name Integers from floating point
 * y = pSrc[n] * m in the precision of the source, with the multiplier m = 2^-scaleFactor as above (denormal, 0 or
 * infinity beyond the ends of the exponent range); y clamped to the range of the destination; then rounded by
 * `rndMode`. NaN, also that of zero times infinity, gives 0 in 8, 16 and 24 bits and -2147483648 in 32 bits.
 *
 * @param rndMode #vekRoundTowardZero, #vekRoundNearestEven, and ties away from zero for every other value; the 24-bit
 *                functions take no mode and round ties away from zero
 * @{
 */
VEK_API VekStatus veksConvert_32f8s_Sfs(const Vek32f* pSrc, Vek8s* pDst, int len, VekRoundMode rndMode,
                                        int scaleFactor);
VEK_API VekStatus veksConvert_32f8u_Sfs(const Vek32f* pSrc, Vek8u* pDst, int len, VekRoundMode rndMode,
                                        int scaleFactor);
VEK_API VekStatus veksConvert_32f16s_Sfs(const Vek32f* pSrc, Vek16s* pDst, int len, VekRoundMode rndMode,
                                         int scaleFactor);
VEK_API VekStatus veksConvert_32f16u_Sfs(const Vek32f* pSrc, Vek16u* pDst, int len, VekRoundMode rndMode,
                                         int scaleFactor);
VEK_API VekStatus veksConvert_32f32s_Sfs(const Vek32f* pSrc, Vek32s* pDst, int len, VekRoundMode rndMode,
                                         int scaleFactor);
VEK_API VekStatus veksConvert_64f32s_Sfs(const Vek64f* pSrc, Vek32s* pDst, int len, VekRoundMode rndMode,
                                         int scaleFactor);
VEK_API VekStatus veksConvert_32f24s_Sfs(const Vek32f* pSrc, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32f24u_Sfs(const Vek32f* pSrc, Vek8u* pDst, int len, int scaleFactor);
/** @} */

/**
 * @name Half precision
 * IEEE 754 binary16 as a storage format.
 * @{
 */

/** Exact. Signed zeros, denormals and infinities stay what they are; a NaN keeps its sign and its fraction. */
VEK_API VekStatus veksConvert_16f32f(const Vek16f* pSrc, Vek32f* pDst, int len);

/**
 * Half to integer as in the group above: widened to single precision, scaled, clamped and rounded there.
 *
 * @param rndMode #vekRoundNearestEven rounds to nearest, #vekRoundHalfAway is refused, every other value truncates
 */
VEK_API VekStatus veksConvert_16f16s_Sfs(const Vek16f* pSrc, Vek16s* pDst, int len, VekRoundMode rndMode,
                                         int scaleFactor);

/**
 * To half precision. A NaN becomes 0x7DFF with the sign of the source, an infinity stays one.
 *
 * With #vekRoundNearestEven finite values round as IEEE 754 has it, to denormals, to a signed zero, and to infinity
 * from 65520 on. Truncation never makes an infinity of a finite value: the largest magnitude is 0x7BFF (65504).
 *
 * @param rndMode #vekRoundNearestEven rounds to nearest, #vekRoundHalfAway is refused, every other value truncates
 */
VEK_API VekStatus veksConvert_32f16f(const Vek32f* pSrc, Vek16f* pDst, int len, VekRoundMode rndMode);
/** The same from integers, all of which are in the range of a half. */
VEK_API VekStatus veksConvert_16s16f(const Vek16s* pSrc, Vek16f* pDst, int len, VekRoundMode rndMode);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
