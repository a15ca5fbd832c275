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
 * Each function turns len elements of one type into len elements of another; the name gives the source type, then the
 * destination type.
 *
 * Common to the families below, unless one says otherwise:
 * - 24-bit elements are three bytes each, least significant first, without alignment: such an array is a byte pointer
 *   to 3 * len bytes.
 * - pDst may be equal to pSrc where both element types have the same size; any other overlap is not supported.
 * - Returned: #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, else #vekStsNoErr: saturation,
 *   overflow and NaN are not reported. A refused call writes nothing.
 * - Numeric class: exact. The result depends on nothing but the element and the arguments.
 * @{
 */

/**
 * Wider and narrower integers: sign extension of 8s, 16s and 24s, zero extension of 24u; 32s to 16s saturates to
 * -32768..32767.
 *
 * @param pSrc the elements, len of them
 * @param pDst the results, len elements
 * @param len  number of elements
 */
VEK_API VekStatus veksConvert_8s16s(const Vek8s* pSrc, Vek16s* pDst, int len);
VEK_API VekStatus veksConvert_16s32s(const Vek16s* pSrc, Vek32s* pDst, int len);
VEK_API VekStatus veksConvert_24u32u(const Vek8u* pSrc, Vek32u* pDst, int len);
VEK_API VekStatus veksConvert_24s32s(const Vek8u* pSrc, Vek32s* pDst, int len);
VEK_API VekStatus veksConvert_32s16s(const Vek32s* pSrc, Vek16s* pDst, int len);

/**
 * Floating point from integers and between precisions: exact wherever the destination can hold the value, else rounded
 * to nearest, ties to even (32s to 32f, 64f to 32f). Parameters as for veksConvert_8s16s.
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

/**
 * Floating point from integers, scaled: pDst[n] = float(pSrc[n]) * m, where the multiplier m is 2^-scaleFactor in the
 * precision of the destination: denormal from 127 (single) or 1023 (double) on, 0 from 150 or 1075 on, and infinity
 * from -128 or -1024 down. An infinite multiplier makes NaN of a zero element, as IEEE arithmetic has it.
 *
 * @param pSrc        the elements, len of them
 * @param pDst        the results, len elements
 * @param len         number of elements
 * @param scaleFactor exponent of the division, any value; all take the same time
 */
VEK_API VekStatus veksConvert_16s32f_Sfs(const Vek16s* pSrc, Vek32f* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32s32f_Sfs(const Vek32s* pSrc, Vek32f* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_16s64f_Sfs(const Vek16s* pSrc, Vek64f* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32s64f_Sfs(const Vek32s* pSrc, Vek64f* pDst, int len, int scaleFactor);

/**
 * Narrower integers, scaled: pSrc[n] * 2^-scaleFactor, rounded to nearest with ties to even, saturated to the range of
 * the destination. The value is exact before the one rounding, whatever the scale factor.
 *
 * @param pSrc        the elements, len of them
 * @param pDst        the results, len elements
 * @param len         number of elements
 * @param scaleFactor binary scale factor of the result, any value
 */
VEK_API VekStatus veksConvert_32s16s_Sfs(const Vek32s* pSrc, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32s24s_Sfs(const Vek32s* pSrc, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksConvert_32u24u_Sfs(const Vek32u* pSrc, Vek8u* pDst, int len, int scaleFactor);

/**
 * The same with a choice of rounding.
 *
 * @param pSrc        the elements, len of them
 * @param pDst        the results, len elements
 * @param len         number of elements
 * @param rndMode     #vekRoundTowardZero, #vekRoundNearestEven, and ties away from zero for every other value
 * @param scaleFactor binary scale factor of the result, any value
 */
VEK_API VekStatus veksConvert_64s32s_Sfs(const Vek64s* pSrc, Vek32s* pDst, int len, VekRoundMode rndMode,
                                         int scaleFactor);

/**
 * Integers from floating point: y = pSrc[n] * m in the precision of the source, with the multiplier m = 2^-scaleFactor
 * as above (denormal, 0 or infinity beyond the ends of the exponent range); y clamped to the range of the destination;
 * then rounded by rndMode. NaN, also that of zero times infinity, gives 0 in 8, 16 and 24 bits and -2147483648 in 32
 * bits.
 *
 * @param pSrc        the elements, len of them
 * @param pDst        the results, len elements
 * @param len         number of elements
 * @param rndMode     #vekRoundTowardZero, #vekRoundNearestEven, and ties away from zero for every other value; the
 *                    24-bit functions take no mode and round ties away from zero
 * @param scaleFactor binary scale factor of the result, any value
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

/**
 * Half precision, IEEE 754 binary16 as a storage format, to single. Signed zeros, denormals and infinities stay what
 * they are; a NaN keeps its sign and its fraction. Parameters as for veksConvert_8s16s.
 */
VEK_API VekStatus veksConvert_16f32f(const Vek16f* pSrc, Vek32f* pDst, int len);

/**
 * Half precision to integers: widened to single precision, scaled, clamped and rounded there as single precision is.
 *
 * @param pSrc        the elements, len of them
 * @param pDst        the results, len elements
 * @param len         number of elements
 * @param rndMode     #vekRoundNearestEven rounds to nearest, #vekRoundHalfAway is refused, every other value truncates
 * @param scaleFactor binary scale factor of the result, any value
 * @return #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, then #vekStsRoundModeNotSupportedErr
 *         for #vekRoundHalfAway, nothing being written; else #vekStsNoErr.
 */
VEK_API VekStatus veksConvert_16f16s_Sfs(const Vek16f* pSrc, Vek16s* pDst, int len, VekRoundMode rndMode,
                                         int scaleFactor);

/**
 * To half precision. A NaN becomes 0x7DFF with the sign of the source, an infinity stays one. With #vekRoundNearestEven
 * finite values round as IEEE 754 has it, to denormals, to a signed zero, and to infinity from 65520 on. Truncation
 * never makes an infinity of a finite value: the largest magnitude is 0x7BFF (65504). All 16-bit integers are in range.
 *
 * @param pSrc    the elements, len of them
 * @param pDst    the results, len elements
 * @param len     number of elements
 * @param rndMode #vekRoundNearestEven rounds to nearest, #vekRoundHalfAway is refused, every other value truncates
 * @return #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, then #vekStsRoundModeNotSupportedErr
 *         for #vekRoundHalfAway, nothing being written; else #vekStsNoErr.
 */
VEK_API VekStatus veksConvert_32f16f(const Vek32f* pSrc, Vek16f* pDst, int len, VekRoundMode rndMode);
VEK_API VekStatus veksConvert_16s16f(const Vek16s* pSrc, Vek16f* pDst, int len, VekRoundMode rndMode);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
