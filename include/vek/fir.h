// SPDX-License-Identifier: Apache-2.0
// FIR filters, single- and multi-rate.
#ifndef VEK_FIR_H
#define VEK_FIR_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_fir FIR filters
 *
 * FIR filters: streaming, single-rate and multi-rate, with a state that keeps the taps and the past samples.
 *
 * Four kinds, by taps and samples:
 *
 * | functions    | taps   | samples | accumulated in | state                 |
 * |--------------|--------|---------|----------------|-----------------------|
 * | `_32f`       | Vek32f | Vek32f  | single         | VeksFIRState_32f      |
 * | `_32fc`      | Vek32fc| Vek32fc | single         | VeksFIRState_32fc     |
 * | `64f_32f`    | Vek64f | Vek32f  | double         | VeksFIRState64f_32f   |
 * | `64fc_32fc`  | Vek64fc| Vek32fc | double         | VeksFIRState64fc_32fc |
 *
 * A state comes from an Init function (inside the caller's memory, nothing to release) or from an InitAlloc function
 * (to be released by the Free function of its kind). Both keep copies of the taps and of the delay line. A state begins
 * with a 32-bit id, four ASCII characters, the first in the highest byte: single-rate "FI01" (32f), "FI02" (32fc),
 * "FI17" (64f), "FI18" (64fc); multi-rate "FI03", "FI04", "FI19", "FI20"; "FI33" and "FI34" are taken for "FI03". Every
 * call on a state changes it: one state serves one thread at a time.
 *
 * Class: rounded. The order of additions is fixed for a slot, a length and a position in the call, and differs between
 * slots. With S = sum of |taps[k] * x[n-k]|, an output of n taps is within about n * 2^-24 * S of the exact value for
 * the 32f and 32fc kinds and within 2^-24 * |y| + n * 2^-53 * S for the 64f and 64fc kinds. The transform path is of
 * class transform: its error is relative to the largest values that meet in a block, not to a single output.
 * @{
 */

typedef struct VeksFIRState_32f VeksFIRState_32f;           /**< ids "FI01", "FI03" */
typedef struct VeksFIRState_32fc VeksFIRState_32fc;         /**< ids "FI02", "FI04" */
typedef struct VeksFIRState64f_32f VeksFIRState64f_32f;     /**< ids "FI17", "FI19" */
typedef struct VeksFIRState64fc_32fc VeksFIRState64fc_32fc; /**< ids "FI18", "FI20" */

/* What the size functions below share: tapBytes is the size of a tap, fftTaps the number of taps from which the state
   holds a transform, fftBytes the size of the transform's tables for each element of a block. */
static inline size_t vekFIRStateSize(int tapsLen, size_t tapBytes, int fftTaps, size_t fftBytes) {
  size_t f = 8, bytes = 271 + (4 * (size_t)tapsLen + 4096) * tapBytes;
  while (f <= (size_t)tapsLen * 2) f *= 2;
  return tapsLen < fftTaps ? bytes : bytes + 6656 + (2 * tapBytes + fftBytes) * f;
}
static inline size_t vekFIRMRStateSize(int tapsLen, int upFactor, int downFactor, size_t tapBytes) {
  const size_t up = (size_t)upFactor, down = (size_t)downFactor, taps = (size_t)tapsLen;
  const size_t most = (down > 4096 ? down : 4096) + (up > 4096 ? up : 4096);
  return 271 + tapBytes * (taps + (taps + up - 1) / up + 256 + most);
}

/**
 * @name Memory of a state
 * Bytes that the Init functions take from `pBuffer`, whatever its alignment. With F the smallest power of two above
 * 2 * tapsLen and, for the kinds 32f, 32fc, 64f and 64fc, t = 4, 8, 8, 16 and u = 9, 9, 17, 17:
 *
 *     271 + t * (4 * tapsLen + 4096)                               below 64, 16, 32, 16 taps
 *     271 + t * (4 * tapsLen + 4096) + 6656 + (2 * t + u) * F      from there on
 *
 * and for multi-rate states
 *
 *     271 + t * (tapsLen + ceil(tapsLen / upFactor) + 256 + max(4096, downFactor) + max(4096, upFactor))
 *
 * except that both factors 1 make a single-rate state.
 * @{
 */
/** Single-rate, 32f. */
static inline size_t vekFIRBufferSize_32f(int tapsLen) { return vekFIRStateSize(tapsLen, 4, 64, 9); }
/** Single-rate, 32fc. */
static inline size_t vekFIRBufferSize_32fc(int tapsLen) { return vekFIRStateSize(tapsLen, 8, 16, 9); }
/** Single-rate, 64f. */
static inline size_t vekFIRBufferSize64f_32f(int tapsLen) { return vekFIRStateSize(tapsLen, 8, 32, 17); }
/** Single-rate, 64fc. */
static inline size_t vekFIRBufferSize64fc_32fc(int tapsLen) { return vekFIRStateSize(tapsLen, 16, 16, 17); }
/** Multi-rate, 32f. */
static inline size_t vekFIRMRBufferSize_32f(int tapsLen, int upFactor, int downFactor) {
  return upFactor == 1 && downFactor == 1 ? vekFIRBufferSize_32f(tapsLen)
                                          : vekFIRMRStateSize(tapsLen, upFactor, downFactor, 4);
}
/** Multi-rate, 32fc. */
static inline size_t vekFIRMRBufferSize_32fc(int tapsLen, int upFactor, int downFactor) {
  return upFactor == 1 && downFactor == 1 ? vekFIRBufferSize_32fc(tapsLen)
                                          : vekFIRMRStateSize(tapsLen, upFactor, downFactor, 8);
}
/** Multi-rate, 64f. */
static inline size_t vekFIRMRBufferSize64f_32f(int tapsLen, int upFactor, int downFactor) {
  return upFactor == 1 && downFactor == 1 ? vekFIRBufferSize64f_32f(tapsLen)
                                          : vekFIRMRStateSize(tapsLen, upFactor, downFactor, 8);
}
/** Multi-rate, 64fc. */
static inline size_t vekFIRMRBufferSize64fc_32fc(int tapsLen, int upFactor, int downFactor) {
  return upFactor == 1 && downFactor == 1 ? vekFIRBufferSize64fc_32fc(tapsLen)
                                          : vekFIRMRStateSize(tapsLen, upFactor, downFactor, 16);
}
/** @} */

/**
 * @name Making a single-rate state
 * @param ppState  receives the state
 * @param pTaps    tapsLen taps, taps[0] meeting the newest sample
 * @param pDlyLine tapsLen past samples, newest first: element 0 came just before the first sample to be filtered; the
 *                 last element never matters. Null: all past samples are zero
 * @param pBuffer  memory for the state, of the size told by the vekFIRBufferSize function of the kind and at any
 *                 alignment; it must stay in place as long as the state is used
 * @return #vekStsNullPtrErr for a null pointer other than pDlyLine; #vekStsFIRLenErr for tapsLen below 1; InitAlloc:
 *         #vekStsMemAllocErr without memory; a status of the transform engine where tapsLen is beyond its lengths. In
 * all these cases *ppState is untouched and nothing stays allocated
 * @{
 */
VEK_API VekStatus veksFIRInitAlloc_32f(VeksFIRState_32f** ppState, const Vek32f* pTaps, int tapsLen,
                                       const Vek32f* pDlyLine);
VEK_API VekStatus veksFIRInitAlloc_32fc(VeksFIRState_32fc** ppState, const Vek32fc* pTaps, int tapsLen,
                                        const Vek32fc* pDlyLine);
VEK_API VekStatus veksFIRInitAlloc64f_32f(VeksFIRState64f_32f** ppState, const Vek64f* pTaps, int tapsLen,
                                          const Vek32f* pDlyLine);
VEK_API VekStatus veksFIRInitAlloc64fc_32fc(VeksFIRState64fc_32fc** ppState, const Vek64fc* pTaps, int tapsLen,
                                            const Vek32fc* pDlyLine);
VEK_API VekStatus veksFIRInit_32f(VeksFIRState_32f** ppState, const Vek32f* pTaps, int tapsLen, const Vek32f* pDlyLine,
                                  Vek8u* pBuffer);
VEK_API VekStatus veksFIRInit_32fc(VeksFIRState_32fc** ppState, const Vek32fc* pTaps, int tapsLen,
                                   const Vek32fc* pDlyLine, Vek8u* pBuffer);
VEK_API VekStatus veksFIRInit64f_32f(VeksFIRState64f_32f** ppState, const Vek64f* pTaps, int tapsLen,
                                     const Vek32f* pDlyLine, Vek8u* pBuffer);
VEK_API VekStatus veksFIRInit64fc_32fc(VeksFIRState64fc_32fc** ppState, const Vek64fc* pTaps, int tapsLen,
                                       const Vek32fc* pDlyLine, Vek8u* pBuffer);
/** @} */

/**
 * @name Releasing a state
 * Releases a state of an InitAlloc or FIRMRInitAlloc function of the same kind. A state inside the caller's buffer is
 * left alone.
 * @return #vekStsNullPtrErr for null; #vekStsContextMatchErr for a state of another kind
 * @{
 */
VEK_API VekStatus veksFIRFree_32f(VeksFIRState_32f* pState);
VEK_API VekStatus veksFIRFree_32fc(VeksFIRState_32fc* pState);
VEK_API VekStatus veksFIRFree64f_32f(VeksFIRState64f_32f* pState);
VEK_API VekStatus veksFIRFree64fc_32fc(VeksFIRState64fc_32fc* pState);
/** @} */

/**
 * @name Filtering
 * y[n] = sum over k < tapsLen of taps[k] * x[n-k], samples before the first coming from the state, which afterwards
 * holds the last samples of the call: a signal filtered in pieces gives what it gives as a whole.
 *
 * Single-rate states read and write numIters samples. Long filters in long calls go through the transform: with at
 * least 64 (32f), 16 (32fc), 32 (64f) or 16 (64fc) taps, and more than 511 (32f, 64f) or 255 (32fc, 64fc) samples. In
 * place the samples go chunk by chunk, 4096 at a time, and it is the number of samples behind a chunk that is compared
 * with 511 or 255. Everywhere else a NaN or infinity in a sample reaches exactly the outputs whose sums contain it.
 *
 * Multi-rate states read numIters * downFactor samples and write numIters * upFactor. Input n counts as sample
 * n * upFactor + upPhase of the up-sampled signal (zeros elsewhere), and output i of iteration m is the filtered value
 * at m * upFactor * downFactor + downPhase + i * downFactor.
 *
 * @param pSrc,pDst arrays apart from each other, or one and the same; pSrcDst in place. In place a multi-rate call
 * copies its input aside in memory of its own
 * @return #vekStsNullPtrErr for a null pointer; #vekStsSizeErr for numIters below 1; #vekStsContextMatchErr for a state
 * of another kind; multi-rate in place: #vekStsMemAllocErr without memory, nothing being changed
 * @{
 */
VEK_API VekStatus veksFIR_32f(const Vek32f* pSrc, Vek32f* pDst, int numIters, VeksFIRState_32f* pState);
VEK_API VekStatus veksFIR_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int numIters, VeksFIRState_32fc* pState);
VEK_API VekStatus veksFIR64f_32f(const Vek32f* pSrc, Vek32f* pDst, int numIters, VeksFIRState64f_32f* pState);
VEK_API VekStatus veksFIR64fc_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int numIters, VeksFIRState64fc_32fc* pState);
VEK_API VekStatus veksFIR_32f_I(Vek32f* pSrcDst, int numIters, VeksFIRState_32f* pState);
VEK_API VekStatus veksFIR_32fc_I(Vek32fc* pSrcDst, int numIters, VeksFIRState_32fc* pState);
VEK_API VekStatus veksFIR64f_32f_I(Vek32f* pSrcDst, int numIters, VeksFIRState64f_32f* pState);
VEK_API VekStatus veksFIR64fc_32fc_I(Vek32fc* pSrcDst, int numIters, VeksFIRState64fc_32fc* pState);
/** @} */

/**
 * @name Filtering one sample
 * What the filtering functions do for one sample, with a single-rate state.
 * @return #vekStsNullPtrErr for a null pointer; #vekStsContextMatchErr for any other state
 * @{
 */
VEK_API VekStatus veksFIROne_32f(Vek32f src, Vek32f* pDstVal, VeksFIRState_32f* pState);
VEK_API VekStatus veksFIROne_32fc(Vek32fc src, Vek32fc* pDstVal, VeksFIRState_32fc* pState);
VEK_API VekStatus veksFIROne64f_32f(Vek32f src, Vek32f* pDstVal, VeksFIRState64f_32f* pState);
VEK_API VekStatus veksFIROne64fc_32fc(Vek32fc src, Vek32fc* pDstVal, VeksFIRState64fc_32fc* pState);
/** @} */

/**
 * @name Making a multi-rate state
 * As for single-rate states, and one such where both factors are 1.
 * @param upFactor,upPhase     outputs of an iteration; where in its group of upFactor an input is placed
 * @param downFactor,downPhase inputs of an iteration; which of each downFactor filtered values is kept
 * @param pDlyLine             ceil(tapsLen / upFactor) past samples, newest first, or null for zeros
 * @param pBuffer              memory of the size told by the vekFIRMRBufferSize function of the kind
 * @return in this order: #vekStsNullPtrErr for a null pointer other than pDlyLine; #vekStsFIRLenErr for tapsLen below
 * 1; #vekStsFIRMRFactorErr for a factor below 1; #vekStsFIRMRPhaseErr for a phase below 0 or not below its factor;
 *         InitAlloc: #vekStsMemAllocErr without memory
 * @{
 */
VEK_API VekStatus veksFIRMRInitAlloc_32f(VeksFIRState_32f** ppState, const Vek32f* pTaps, int tapsLen, int upFactor,
                                         int upPhase, int downFactor, int downPhase, const Vek32f* pDlyLine);
VEK_API VekStatus veksFIRMRInitAlloc_32fc(VeksFIRState_32fc** ppState, const Vek32fc* pTaps, int tapsLen, int upFactor,
                                          int upPhase, int downFactor, int downPhase, const Vek32fc* pDlyLine);
VEK_API VekStatus veksFIRMRInitAlloc64f_32f(VeksFIRState64f_32f** ppState, const Vek64f* pTaps, int tapsLen,
                                            int upFactor, int upPhase, int downFactor, int downPhase,
                                            const Vek32f* pDlyLine);
VEK_API VekStatus veksFIRMRInitAlloc64fc_32fc(VeksFIRState64fc_32fc** ppState, const Vek64fc* pTaps, int tapsLen,
                                              int upFactor, int upPhase, int downFactor, int downPhase,
                                              const Vek32fc* pDlyLine);
VEK_API VekStatus veksFIRMRInit_32f(VeksFIRState_32f** ppState, const Vek32f* pTaps, int tapsLen, int upFactor,
                                    int upPhase, int downFactor, int downPhase, const Vek32f* pDlyLine, Vek8u* pBuffer);
VEK_API VekStatus veksFIRMRInit_32fc(VeksFIRState_32fc** ppState, const Vek32fc* pTaps, int tapsLen, int upFactor,
                                     int upPhase, int downFactor, int downPhase, const Vek32fc* pDlyLine,
                                     Vek8u* pBuffer);
VEK_API VekStatus veksFIRMRInit64f_32f(VeksFIRState64f_32f** ppState, const Vek64f* pTaps, int tapsLen, int upFactor,
                                       int upPhase, int downFactor, int downPhase, const Vek32f* pDlyLine,
                                       Vek8u* pBuffer);
VEK_API VekStatus veksFIRMRInit64fc_32fc(VeksFIRState64fc_32fc** ppState, const Vek64fc* pTaps, int tapsLen,
                                         int upFactor, int upPhase, int downFactor, int downPhase,
                                         const Vek32fc* pDlyLine, Vek8u* pBuffer);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
