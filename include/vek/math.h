// SPDX-License-Identifier: Apache-2.0
// Absolute values, squares, square roots; magnitude and phase; normalisation.
#ifndef VEK_MATH_H
#define VEK_MATH_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_math Roots, magnitude, phase
 *
 * Everything in this chapter is exact: every slot gives the same bits at every length and alignment, and no product is
 * ever fused with a sum. Lengths count elements. Statuses, in the order they are checked, unless a family says
 * otherwise: #vekStsNullPtrErr for a null array, #vekStsSizeErr for len < 1; a refused call writes nothing. Saturation,
 * infinities and NaN are not reported. A destination may be the very array of a source; other overlap is not allowed.
 *
 * Forms with a scale factor multiply the exact result by 2^(-scaleFactor), round it to the nearest integer, ties to
 * even, and saturate it to the element type. Every 32-bit scale factor is accepted.
 * @{
 */

/**
 * pDst[n] = |pSrc[n]|. The most negative integer gives the most positive. Floats clear the sign bit and keep all
 * others, those of a NaN included.
 */
VEK_API VekStatus veksAbs_16s(const Vek16s* pSrc, Vek16s* pDst, int len);
VEK_API VekStatus veksAbs_16s_I(Vek16s* pSrcDst, int len);
VEK_API VekStatus veksAbs_32s(const Vek32s* pSrc, Vek32s* pDst, int len);
VEK_API VekStatus veksAbs_32s_I(Vek32s* pSrcDst, int len);
VEK_API VekStatus veksAbs_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksAbs_32f_I(Vek32f* pSrcDst, int len);

/**
 * pDst[n] = pSrc[n]^2; the integer forms times 2^(-scaleFactor), rounded and saturated. The complex square is
 * (re * re - im * im, re * im + im * re), every operation rounded.
 */
VEK_API VekStatus veksSqr_8u_Sfs(const Vek8u* pSrc, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSqr_8u_ISfs(Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSqr_16s_Sfs(const Vek16s* pSrc, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSqr_16s_ISfs(Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSqr_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksSqr_32f_I(Vek32f* pSrcDst, int len);
VEK_API VekStatus veksSqr_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksSqr_32fc_I(Vek32fc* pSrcDst, int len);

/**
 * pDst[n] = sqrt(pSrc[n]); the integer forms times 2^(-scaleFactor), rounded once and saturated.
 *
 * A negative integer gives 0, a float below zero the NaN 0xFFC00000; -0 is its own root. The complex form gives the
 * principal root: the real part is not negative and the imaginary part has the sign of the source's. Each of its parts
 * is within 4 ulp, without overflow or underflow on the way; infinities and NaN give what the C function csqrt does.
 * @return the common errors; the warning #vekStsSqrtNegArg, after the whole vector is done, when a real element is
 *         below zero. The complex forms give no warning.
 */
VEK_API VekStatus veksSqrt_8u_Sfs(const Vek8u* pSrc, Vek8u* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSqrt_8u_ISfs(Vek8u* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSqrt_16s_Sfs(const Vek16s* pSrc, Vek16s* pDst, int len, int scaleFactor);
VEK_API VekStatus veksSqrt_16s_ISfs(Vek16s* pSrcDst, int len, int scaleFactor);
VEK_API VekStatus veksSqrt_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksSqrt_32f_I(Vek32f* pSrcDst, int len);
VEK_API VekStatus veksSqrt_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksSqrt_32fc_I(Vek32fc* pSrcDst, int len);

/**
 * pDst[n] = sqrt(re^2 + im^2) in plain single precision: squares beyond the range overflow or vanish. The parts lie in
 * two arrays of len elements or interleaved.
 */
VEK_API VekStatus veksMagnitude_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDst, int len);
VEK_API VekStatus veksMagnitude_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len);

/**
 * pDst[n] = atan2(im, re) in radians, from -pi to pi, within 2 ulp for all finite parts; zeros, infinities and NaN give
 * what the C function atan2 does.
 */
VEK_API VekStatus veksPhase_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDst, int len);
VEK_API VekStatus veksPhase_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len);

/** pDst[n] = re^2 + im^2 in plain single precision. */
VEK_API VekStatus veksPowerSpectrum_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDst, int len);
VEK_API VekStatus veksPowerSpectrum_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len);

/** veksMagnitude_* and veksPhase_* of each element at once, to the same bits. */
VEK_API VekStatus veksCartToPolar_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDstMagn, Vek32f* pDstPhase,
                                      int len);
VEK_API VekStatus veksCartToPolar_32fc(const Vek32fc* pSrc, Vek32f* pDstMagn, Vek32f* pDstPhase, int len);

/**
 * (magn * cos(phase), magn * sin(phase)), phase in radians. Cosine and sine are within 2 ulp for every finite phase,
 * however large (Payne and Hanek, "Radian reduction for trigonometric functions", 1983), and NaN for any other; the
 * products are formed in single precision.
 */
VEK_API VekStatus veksPolarToCart_32f(const Vek32f* pSrcMagn, const Vek32f* pSrcPhase, Vek32f* pDstRe, Vek32f* pDstIm,
                                      int len);
VEK_API VekStatus veksPolarToCart_32fc(const Vek32f* pSrcMagn, const Vek32f* pSrcPhase, Vek32fc* pDst, int len);

/**
 * pDst[n] = (pSrc[n] - vSub) / vDiv in single precision; the complex form divides both parts.
 * @return the common errors, then #vekStsDivByZeroErr for vDiv equal to zero.
 */
VEK_API VekStatus veksNormalize_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f vSub, Vek32f vDiv);
VEK_API VekStatus veksNormalize_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32fc vSub, Vek32f vDiv);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
