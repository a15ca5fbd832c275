// SPDX-License-Identifier: Apache-2.0
// The cosine transform and the Haar wavelet step.
#ifndef VEK_TRANSFORM_H
#define VEK_TRANSFORM_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_transform Cosine and Haar transforms
 *
 * Transforms: the discrete cosine transform and the Haar wavelet step, on single-precision real data.
 * @{
 */

/** What a forward transform of one length needs; made by an Init or InitAlloc function and read-only from then on. */
typedef struct VeksDCTFwdSpec_32f VeksDCTFwdSpec_32f;
/** The same for the inverse transform. */
typedef struct VeksDCTInvSpec_32f VeksDCTInvSpec_32f;

/**
 * @name Discrete cosine transform, initialisation
 * Builds the spec of the orthonormal transform of `len` points (any length):
 *
 *     forward (DCT-II)   X[k] = c(k) * sum over n of x[n] * cos(pi * (2n + 1) * k / (2 len)),
 *                        c(0) = sqrt(1 / len), c(k) = sqrt(2 / len) for k > 0
 *     inverse (DCT-III)  x[n] = sum over k of c(k) * X[k] * cos(pi * (2n + 1) * k / (2 len))
 *
 * The inverse undoes the forward transform up to rounding. Powers of two go through a complex FFT of half the length,
 * other lengths below 86 through the sums themselves, longer ones through Bluestein's chirp convolution (L. Bluestein,
 * "A linear filtering approach to the computation of the discrete Fourier transform", 1970); a cosine transform becomes
 * a Fourier transform by J. Makhoul's permutation ("A fast cosine transform in one and two dimensions", 1980).
 *
 * The Init functions build inside `pSpecBuffer`, at any alignment, and the spec lives there; the InitAlloc functions
 * allocate it, to be released by the Free functions. `hint` is stored and has no effect. Sizes in bytes, with
 * P the smallest power of two not below 2M - 1, M = len for odd len and len/2 for even len:
 *
 * | len                        | pSpecBuffer                | pInitBuffer          | pWorkBuffer of the transform |
 * |----------------------------|----------------------------|----------------------|------------------------------|
 * | 1, 2, 4, 8                 | 352                        | none                 | none                         |
 * | 16, 32                     | 400                        | none                 | none                         |
 * | 64                         | 704                        | none                 | none                         |
 * | powers of two 128 .. 2^11  | 8*len + len/2 + 576        | none                 | none                         |
 * | powers of two 2^12 .. 2^27 | 8*len + len/2 + 9216       | none                 | 32832                        |
 * | other, below 86            | 16*len + 192               | none                 | 4*len + 64                   |
 * | other, from 86             | 20*P + 8*M + 4*len + 1024  | none                 | 8*P + 64                     |
 *
 * `pInitBuffer` may be null, but not for powers of two from 2^11 on (nothing is put there). Longest lengths: 2^27 among
 * the powers of two; 67108863 among the others, 33554431 through InitAlloc.
 *
 * @param ppDCTSpec where the address of the spec is stored
 * @param len       points of the transform
 * @param hint      stored, not used
 * @return in this order: len below 1 or too long #vekStsSizeErr, a null pointer where none may be #vekStsNullPtrErr, no
 *         memory (InitAlloc) #vekStsMemAllocErr; else #vekStsNoErr
 * @{
 */
VEK_API VekStatus veksDCTFwdInit_32f(VeksDCTFwdSpec_32f** ppDCTSpec, int len, VekHintAlgorithm hint, Vek8u* pSpecBuffer,
                                     Vek8u* pInitBuffer);
VEK_API VekStatus veksDCTInvInit_32f(VeksDCTInvSpec_32f** ppDCTSpec, int len, VekHintAlgorithm hint, Vek8u* pSpecBuffer,
                                     Vek8u* pInitBuffer);
VEK_API VekStatus veksDCTFwdInitAlloc_32f(VeksDCTFwdSpec_32f** ppDCTSpec, int len, VekHintAlgorithm hint);
VEK_API VekStatus veksDCTInvInitAlloc_32f(VeksDCTInvSpec_32f** ppDCTSpec, int len, VekHintAlgorithm hint);
/** @} */

/**
 * @name Discrete cosine transform, release
 * Releases a spec that an InitAlloc function made.
 * @return null #vekStsNullPtrErr, not such a spec #vekStsContextMatchErr
 * @{
 */
VEK_API VekStatus veksDCTFwdFree_32f(VeksDCTFwdSpec_32f* pDCTSpec);
VEK_API VekStatus veksDCTInvFree_32f(VeksDCTInvSpec_32f* pDCTSpec);
/** @} */

/**
 * @name Discrete cosine transform
 * Transforms the spec's number of points from pSrc to pDst, which are the same array or do not overlap; the `_I` forms
 * work in place. `pWorkBuffer` has the size stated with the initialisers, at any alignment; if it is null, the call
 * allocates what it needs and releases it again. Numeric class: transform; the relative error in the 2-norm stays below
 * 0.6e-7 * sqrt(log2 len) + 1e-7 for powers of two and below twice that for other lengths. Any number of threads may
 * use one spec, each with a work buffer of its own. A spec of the other direction gives the same results, at lengths
 * below 86 that are no power of two more slowly.
 * @return in this order: a null pSrc, pDst or pDCTSpec #vekStsNullPtrErr, not a cosine spec #vekStsContextMatchErr, no
 *         memory for the work buffer #vekStsMemAllocErr; else #vekStsNoErr
 * @{
 */
VEK_API VekStatus veksDCTFwd_32f(const Vek32f* pSrc, Vek32f* pDst, const VeksDCTFwdSpec_32f* pDCTSpec,
                                 Vek8u* pWorkBuffer);
VEK_API VekStatus veksDCTInv_32f(const Vek32f* pSrc, Vek32f* pDst, const VeksDCTInvSpec_32f* pDCTSpec,
                                 Vek8u* pWorkBuffer);
VEK_API VekStatus veksDCTFwd_32f_I(Vek32f* pSrcDst, const VeksDCTFwdSpec_32f* pDCTSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus veksDCTInv_32f_I(Vek32f* pSrcDst, const VeksDCTInvSpec_32f* pDCTSpec, Vek8u* pWorkBuffer);
/** @} */

/**
 * @name Haar wavelet step
 * One orthonormal step (A. Haar, 1910): pairs of samples become their scaled sum and difference,
 *
 *     low[k] = (x[2k] + x[2k+1]) * sqrt(1/2),   high[k] = (x[2k] - x[2k+1]) * sqrt(1/2)
 *
 * with (len + 1)/2 elements in low and len/2 in high; an odd len ends in low[len/2] = x[len-1] * sqrt(2). The inverse
 * step rebuilds the len samples. Sums, differences and products are rounded one by one: exact class. No array overlaps
 * another. For len 1 the upper band is empty, yet its pointer must not be null.
 * @return in this order: a null pointer #vekStsNullPtrErr, len below 1 #vekStsSizeErr
 * @{
 */
VEK_API VekStatus veksHaarFwd_32f(const Vek32f* pSrc, int len, Vek32f* pDstLow, Vek32f* pDstHigh);
VEK_API VekStatus veksHaarInv_32f(const Vek32f* pSrcLow, const Vek32f* pSrcHigh, Vek32f* pDst, int len);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
