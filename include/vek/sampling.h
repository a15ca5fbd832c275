// SPDX-License-Identifier: Apache-2.0
// The median filter, resampling by whole factors, the Goertzel transform.
#ifndef VEK_SAMPLING_H
#define VEK_SAMPLING_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_median Median filter
 *
 * The median of a sliding window.
 * @{
 */

/**
 * @name Median
 * pDst[i] = median of x[i - h] .. x[i + h], h = maskSize / 2, where an index below 0 reads x[0] and one above len - 1
 * reads x[len - 1]. An even maskSize is reduced by one, which the warning #vekStsEvenMedianMaskSize reports. A maskSize
 * of 1 (or 2), or a len below 3, leaves the values as they are. Any maskSize is accepted, whatever len is.
 *
 * Floats are ordered as numbers, with -0 below +0, NaNs with a clear sign bit above +infinity and NaNs with a set one
 * below -infinity; every output is the bit pattern of some element of its window.
 *
 * Masks up to 33 run through min/max networks (Batcher 1968, Green 1969) on whole vector registers. Larger masks rank a
 * stretch of the signal once and slide a bit set of ranks along it, so that an output costs about the logarithm of the
 * mask; bytes keep a histogram of two levels. Larger masks allocate working memory, at most some tens of bytes for each
 * element of the vector.
 *
 * Class: exact; the same bits in every slot, in place or not. pDst equals pSrc or does not overlap it.
 *
 * @param pSrc (or pSrcDst) the vector, `len` elements
 * @param pDst receives the medians, `len` elements
 * @param len number of elements
 * @param maskSize number of elements in the window
 * @return #vekStsNullPtrErr for a null pointer; #vekStsSizeErr for len or maskSize below 1; #vekStsMemAllocErr if
 * memory ran out, with the destination unchanged; #vekStsEvenMedianMaskSize for an even mask; else #vekStsNoErr
 * @{
 */
VEK_API VekStatus veksFilterMedian_8u(const Vek8u* pSrc, Vek8u* pDst, int len, int maskSize);
VEK_API VekStatus veksFilterMedian_8u_I(Vek8u* pSrcDst, int len, int maskSize);
VEK_API VekStatus veksFilterMedian_16s(const Vek16s* pSrc, Vek16s* pDst, int len, int maskSize);
VEK_API VekStatus veksFilterMedian_16s_I(Vek16s* pSrcDst, int len, int maskSize);
VEK_API VekStatus veksFilterMedian_32s(const Vek32s* pSrc, Vek32s* pDst, int len, int maskSize);
VEK_API VekStatus veksFilterMedian_32s_I(Vek32s* pSrcDst, int len, int maskSize);
VEK_API VekStatus veksFilterMedian_32f(const Vek32f* pSrc, Vek32f* pDst, int len, int maskSize);
VEK_API VekStatus veksFilterMedian_32f_I(Vek32f* pSrcDst, int len, int maskSize);
/** @} */

/** @} */

/**
 * @defgroup vek_resampling Resampling by whole factors
 *
 * Long signals are resampled block by block; `*pPhase`, kept by the caller, is the place of the grid in the next block.
 * Class: exact, values are only moved. pDst does not overlap pSrc.
 * @{
 */

/**
 * Up-samples by zero insertion: *pDstLen = srcLen * factor, pDst[n * factor + *pPhase] = pSrc[n] for
 * n = 0 .. srcLen - 1, and every other element of pDst is 0. *pPhase stays as it is: each block yields whole periods,
 * so the next one continues on the same grid. Where srcLen * factor does not fit an int, *pDstLen is the product modulo
 * 2^32; pDst must hold the true number of elements.
 * @param pSrc `srcLen` elements
 * @param srcLen number of source elements
 * @param pDst receives srcLen * factor elements
 * @param pDstLen receives their number
 * @param factor up-sampling factor, at least 1
 * @param pPhase 0 .. factor - 1
 * @return in this order: #vekStsNullPtrErr for a null pointer; #vekStsSizeErr for srcLen below 1;
 *   #vekStsSampleFactorErr for a factor below 1; #vekStsSamplePhaseErr for a phase outside [0, factor); else
 * #vekStsNoErr
 */
VEK_API VekStatus veksSampleUp_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int* pDstLen, int factor, int* pPhase);
VEK_API VekStatus veksSampleUp_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int* pDstLen, int factor,
                                    int* pPhase);

/**
 * Down-samples by keeping every factor-th element: pDst[k] = pSrc[*pPhase + k * factor] while the index is below
 * srcLen. *pDstLen is the number kept, possibly 0, and *pPhase becomes the phase for the block that follows.
 * @param pSrc `srcLen` elements
 * @param srcLen number of source elements
 * @param pDst receives (srcLen + factor - 1 - *pPhase) / factor elements (none if the phase is not below srcLen)
 * @param pDstLen receives their number
 * @param factor down-sampling factor, at least 1
 * @param pPhase 0 .. factor - 1 on entry; the phase of the next block on return
 * @return as veksSampleUp_32f()
 */
VEK_API VekStatus veksSampleDown_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int* pDstLen, int factor,
                                     int* pPhase);
VEK_API VekStatus veksSampleDown_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int* pDstLen, int factor,
                                      int* pPhase);
/** @} */

/**
 * @defgroup vek_goertzel Goertzel transform
 *
 * One value of the discrete Fourier transform, sum over n of pSrc[n] * exp(-j * 2 * pi * rFreq * n), by Horner's rule
 * in double precision: with c and s the cosine and sine of theta = rFreq * 2 * pi, starting from (re, im) = (0, 0) and
 * running n from len - 1 down to 0, (re, im) becomes (re * c + im * s + x[n], im * c - re * s); a complex x[n] is added
 * to both parts. The result is rounded to single precision once.
 *
 * Class: rounded. The generic slot runs the recurrence as it stands; the others join 16 interleaved ones (8 in complex
 * and two-frequency forms), within 1 ulp of single precision of it unless the terms cancel to less than about
 * len * 1e-9 of their size, and with its infinities and NaNs.
 * @{
 */

/**
 * @param pSrc `len` samples
 * @param len number of samples
 * @param pVal receives the one result
 * @param rFreq frequency relative to the sampling rate, in [0, 1)
 * @return in this order: #vekStsNullPtrErr for a null pointer; #vekStsSizeErr for len below 1; #vekStsRelFreqErr for
 *   rFreq below 0 or not below 1; else #vekStsNoErr
 */
VEK_API VekStatus veksGoertz_32f(const Vek32f* pSrc, int len, Vek32fc* pVal, Vek32f rFreq);
VEK_API VekStatus veksGoertz_32fc(const Vek32fc* pSrc, int len, Vek32fc* pVal, Vek32f rFreq);

/**
 * Two frequencies in one pass over the samples: pVal[k] is the value for rFreq[k], k = 0, 1.
 * @param pSrc `len` samples
 * @param len number of samples
 * @param pVal receives two results
 * @param rFreq two relative frequencies, each in [0, 1)
 * @return as veksGoertz_32f(), a null rFreq giving #vekStsNullPtrErr; both frequencies are checked before a result is
 *   written
 */
VEK_API VekStatus veksGoertzTwo_32f(const Vek32f* pSrc, int len, Vek32fc* pVal, const Vek32f* rFreq);
VEK_API VekStatus veksGoertzTwo_32fc(const Vek32fc* pSrc, int len, Vek32fc* pVal, const Vek32f* rFreq);
/** @} */

#ifdef __cplusplus
}
#endif

#endif
