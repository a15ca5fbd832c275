// SPDX-License-Identifier: Apache-2.0
// Signal generators: tones, triangles, the Jaehne chirp, ramps and slopes, random numbers.
#ifndef VEK_GEN_H
#define VEK_GEN_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_gen Signal generation
 *
 * Functions that fill a vector with a synthetic signal. They keep no state of their own: what a following call needs
 * to continue the signal (a phase, a seed) is one word that the caller owns. Results are the same to the bit in every
 * variant slot; nothing is written unless all checks pass.
 * @{
 */

/**
 * @name Tone
 * pDst[n] = magn * cos(2*pi*rFreq*n + phase), n = 0 .. len-1; complex forms magn * (cos, sin) of the same angle.
 *
 * The samples follow a recurrence in double precision and are rounded to single precision when stored. With
 * w = 2*pi*rFreq, c = 2*cos(w) and d = c*c - 2 the real form computes x[0] and x[1] from the cosine, x[n] = c*x[n-1] -
 * x[n-2] for n = 2 and 3, and x[n] = d*x[n-2] - x[n-4] from there on; the complex form computes elements 0 and 1 from
 * cosine and sine and the rest by x[n] = c*x[n-1] - x[n-2]. These cosines and sines are rounded to nearest, alike on
 * every processor and with every C library.
 *
 * @param pDst    len elements
 * @param magn    magnitude, above 0
 * @param rFreq   frequency relative to the sampling rate (cycles a sample), in [0, 0.5)
 * @param pPhase  phase of the first sample in radians, in [0, 2*pi); replaced by the phase at which a following call
 *                continues. A phase that would round to a value outside that range is stored as 0.
 * @param hint    accepted and without influence
 * @return in the order of the checks: #vekStsNullPtrErr (pPhase), #vekStsToneMagnErr, #vekStsToneFreqErr,
 *         #vekStsTonePhaseErr, #vekStsNullPtrErr (pDst), #vekStsSizeErr
 * @{
 */
VEK_API VekStatus veksTone_Direct_32f(Vek32f* pDst, int len, Vek32f magn, Vek32f rFreq, Vek32f* pPhase,
                                      VekHintAlgorithm hint);
VEK_API VekStatus veksTone_Direct_32fc(Vek32fc* pDst, int len, Vek32f magn, Vek32f rFreq, Vek32f* pPhase,
                                       VekHintAlgorithm hint);
/** @} */

/**
 * @name Triangle
 * A triangle wave between magn and -magn. Of its period 2*pi the part pi + asym falls, starting with magn at phase 0,
 * and the part pi - asym rises. Complex forms hold the same wave, started at phase + (3*pi + asym)/2, as the imaginary
 * part.
 *
 * The value advances in double precision by 4*pi*magn*rFreq/(pi - asym) a sample while it rises and by
 * -4*pi*magn*rFreq/(pi + asym) while it falls; a value beyond a peak is reflected into the other slope.
 *
 * @param pDst    len elements
 * @param magn    magnitude, above 0
 * @param rFreq   frequency in cycles a sample, in [0, 0.5)
 * @param asym    asymmetry in radians, in [-pi, pi)
 * @param pPhase  phase of the first sample, treated as that of a tone
 * @return in the order of the checks: #vekStsNullPtrErr (pPhase), #vekStsTrnglMagnErr, #vekStsTrnglFreqErr,
 *         #vekStsTrnglAsymErr, #vekStsTrnglPhaseErr, #vekStsNullPtrErr (pDst), #vekStsSizeErr
 * @{
 */
VEK_API VekStatus veksTriangle_Direct_32f(Vek32f* pDst, int len, Vek32f magn, Vek32f rFreq, Vek32f asym,
                                          Vek32f* pPhase);
VEK_API VekStatus veksTriangle_Direct_32fc(Vek32fc* pDst, int len, Vek32f magn, Vek32f rFreq, Vek32f asym,
                                           Vek32f* pPhase);
/** @} */

/**
 * @name Jaehne chirp
 * pDst[n] = magn * sin((pi/2 / len) * n * n) in double precision, rounded to single precision or to the nearest
 * integer (halves away from zero); a single element is 0. The sine is within 1.5 units in the last place of a double.
 *
 * @return #vekStsNullPtrErr, #vekStsSizeErr, then #vekStsJaehneErr for magn below 0
 * @{
 */
VEK_API VekStatus veksVectorJaehne_32f(Vek32f* pDst, int len, Vek32f magn);
VEK_API VekStatus veksVectorJaehne_32s(Vek32s* pDst, int len, Vek32s magn);
/** @} */

/**
 * @name Ramp
 * pDst[n] = n * slope + offset, the index converted to single precision, product and sum rounded to single precision.
 * The integer form rounds halves away from zero and saturates; NaN gives -2147483648.
 *
 * @return #vekStsNullPtrErr, #vekStsSizeErr
 * @{
 */
VEK_API VekStatus veksVectorRamp_32f(Vek32f* pDst, int len, Vek32f offset, Vek32f slope);
VEK_API VekStatus veksVectorRamp_32s(Vek32s* pDst, int len, Vek32f offset, Vek32f slope);
/** @} */

/**
 * @name Slope
 * pDst[n] = offset + slope * n, in single precision (32s: in double precision). Integer forms round halves away from
 * zero and saturate; NaN gives 0, in the 32s form -2147483648.
 *
 * The integer forms fill saturated stretches outright. With r = 1/slope the bound b is passed at index (int)((b -
 * offset)*r + 1), formed in the precision of the arguments and held to 0 .. 2147483647: elements from there on (upper
 * bound of a rising slope, lower bound of a falling one) or before it (the other bound) hold b. With slope 0 every
 * element is the rounded offset.
 *
 * @return #vekStsNullPtrErr, #vekStsSizeErr
 * @{
 */
VEK_API VekStatus veksVectorSlope_8u(Vek8u* pDst, int len, Vek32f offset, Vek32f slope);
VEK_API VekStatus veksVectorSlope_16s(Vek16s* pDst, int len, Vek32f offset, Vek32f slope);
VEK_API VekStatus veksVectorSlope_32f(Vek32f* pDst, int len, Vek32f offset, Vek32f slope);
VEK_API VekStatus veksVectorSlope_32s(Vek32s* pDst, int len, Vek64f offset, Vek64f slope);
/** @} */

/**
 * @name Random numbers
 * Both generators sum two 32-bit sequences (Marsaglia's combination of a subtract-with-borrow and a linear
 * congruential generator). The seed sets the first; the second starts alike in every call, so one long call and two
 * short ones give different numbers.
 *
 * Uniform: r * ((high - low) * 2^-32) + (low + high)/2 in double precision for each signed 32-bit output r, rounded to
 * single precision. Bounds may be equal or reversed.
 *
 * Gauss: Marsaglia's polar method on pairs of outputs, mean and standard deviation as given (a deviation of 0 or below
 * included). An even length draws one pair more than it stores.
 *
 * @param pDst   len elements
 * @param pSeed  any value; replaced by the seed of a following call
 * @return #vekStsNullPtrErr (pDst or pSeed), #vekStsSizeErr
 * @{
 */
VEK_API VekStatus veksRandUniform_Direct_32f(Vek32f* pDst, int len, Vek32f low, Vek32f high, Vek32u* pSeed);
VEK_API VekStatus veksRandGauss_Direct_32f(Vek32f* pDst, int len, Vek32f mean, Vek32f stdDev, Vek32u* pSeed);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
