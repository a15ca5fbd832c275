// SPDX-License-Identifier: Apache-2.0
// Tapering windows of spectral analysis and filter design.
#ifndef VEK_WINDOW_H
#define VEK_WINDOW_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_window Windows
 *
 * Each function multiplies a vector of N = len elements by a symmetric window w of the same length, w[n] = w[N-1-n],
 * real data or both parts of complex data. Weights are formed in double precision; the product of element and weight
 * is formed in double precision and rounded to single precision. For odd N the middle element is copied (its weight
 * is 1). Below, theta = 2*pi/(N - 1), and n runs up to the middle.
 *
 * The cosines advance by the rotation cos((n+1)t) = cos(nt)cos(t) - sin(nt)sin(t), sin((n+1)t) = sin(nt)cos(t) +
 * cos(nt)sin(t) in double precision, from cos(t) rounded to nearest, alike with every C library, and sin(t) = sqrt(1 -
 * cos(t)^2); cos(2nt) is 2*cos(nt)^2 - 1. For N = 3 Hann and the Blackman windows store zeros at both ends; beyond it a
 * NaN or an infinity there becomes NaN.
 *
 * Common to the windows below, unless one says otherwise:
 * - pDst may be equal to pSrc; any other overlap is not supported. In-place forms: `pSrcDst`.
 * - Returned: #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len is below the shortest length, else
 *   #vekStsNoErr. A refused call writes nothing.
 * - Numeric class: exact. The same bits on every processor, at every position and alignment, and in place.
 * @{
 */

/**
 * Bartlett window: w[n] = 2n/(N - 1), summed step by step; the two end elements are stored as zeros, whatever the data.
 *
 * @param pSrc the data, len elements (in place: pSrcDst)
 * @param pDst the weighted data, len elements
 * @param len  number of elements, 3 or more
 */
VEK_API VekStatus veksWinBartlett_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksWinBartlett_32f_I(Vek32f* pSrcDst, int len);
VEK_API VekStatus veksWinBartlett_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksWinBartlett_32fc_I(Vek32fc* pSrcDst, int len);

/**
 * Hann window: w[n] = 0.5 * (1 - cos(n*theta)). Shortest length: 3. Parameters as for veksWinBartlett.
 */
VEK_API VekStatus veksWinHann_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksWinHann_32f_I(Vek32f* pSrcDst, int len);
VEK_API VekStatus veksWinHann_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksWinHann_32fc_I(Vek32fc* pSrcDst, int len);

/**
 * Hamming window: w[n] = 0.54 - 0.46*cos(n*theta). Shortest length: 3. Parameters as for veksWinBartlett.
 */
VEK_API VekStatus veksWinHamming_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksWinHamming_32f_I(Vek32f* pSrcDst, int len);
VEK_API VekStatus veksWinHamming_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksWinHamming_32fc_I(Vek32fc* pSrcDst, int len);

/**
 * Blackman window: w[n] = (alpha + 1)/2 - 0.5*cos(n*theta) - (alpha/2)*cos(2*n*theta).
 *
 * @param pSrc  the data, len elements (in place: pSrcDst)
 * @param pDst  the weighted data, len elements
 * @param len   number of elements, 3 or more
 * @param alpha shape of the window, any value
 */
VEK_API VekStatus veksWinBlackman_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f alpha);
VEK_API VekStatus veksWinBlackman_32f_I(Vek32f* pSrcDst, int len, Vek32f alpha);
VEK_API VekStatus veksWinBlackman_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f alpha);
VEK_API VekStatus veksWinBlackman_32fc_I(Vek32fc* pSrcDst, int len, Vek32f alpha);

/**
 * Blackman window with alpha = -0.16, rounded to single precision. Shortest length: 3. Parameters as for
 * veksWinBartlett.
 */
VEK_API VekStatus veksWinBlackmanStd_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksWinBlackmanStd_32f_I(Vek32f* pSrcDst, int len);
VEK_API VekStatus veksWinBlackmanStd_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksWinBlackmanStd_32fc_I(Vek32fc* pSrcDst, int len);

/**
 * Blackman window with alpha = -(0.5/cos(pi/(N - 1)))^2, rounded to single precision.
 *
 * @param pSrc the data, len elements (in place: pSrcDst)
 * @param pDst the weighted data, len elements
 * @param len  number of elements, 4 or more
 * @return #vekStsSizeErr if len < 4, then #vekStsNullPtrErr if a pointer is null, nothing being written; else
 *         #vekStsNoErr.
 */
VEK_API VekStatus veksWinBlackmanOpt_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksWinBlackmanOpt_32f_I(Vek32f* pSrcDst, int len);
VEK_API VekStatus veksWinBlackmanOpt_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksWinBlackmanOpt_32fc_I(Vek32fc* pSrcDst, int len);

/**
 * Kaiser window: w[n] = I0(|alpha| * sqrt(n*(N - 1 - n))) / I0(|alpha| * (N - 1)/2), with the modified Bessel function
 * of order zero by the approximations 9.8.1 and 9.8.2 of Abramowitz and Stegun, Handbook of Mathematical Functions, in
 * double precision; the divisor's (N - 1)*alpha is rounded to single precision first.
 *
 * @param pSrc  the data, len elements (in place: pSrcDst)
 * @param pDst  the weighted data, len elements
 * @param len   number of elements, 1 or more
 * @param alpha shape of the window; its sign does not matter
 * @return #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, then #vekStsHugeWinErr if
 *         (N - 1)*0.5*|alpha| is above 38, nothing being written; else #vekStsNoErr.
 */
VEK_API VekStatus veksWinKaiser_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f alpha);
VEK_API VekStatus veksWinKaiser_32f_I(Vek32f* pSrcDst, int len, Vek32f alpha);
VEK_API VekStatus veksWinKaiser_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f alpha);
VEK_API VekStatus veksWinKaiser_32fc_I(Vek32fc* pSrcDst, int len, Vek32f alpha);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
