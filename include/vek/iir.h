// SPDX-License-Identifier: Apache-2.0
// Recursive (infinite impulse response) filters.
#ifndef VEK_IIR_H
#define VEK_IIR_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_iir IIR filters
 *
 * Streaming recursive filters with a state object that holds the normalised coefficients and the delay line from call
 * to call. There are two structures. A filter of order N given by its polynomials runs the transposed direct form II:
 * for every sample x
 *
 *     y = b[0]*x + d[0];   d[k-1] = b[k]*x - a[k]*y + d[k], k = 1 .. N, d[N] = 0
 *
 * A cascade of second-order sections ("biquads") runs in every section, whose output is the next section's input,
 *
 *     y = b0*x + d0;   d0 = d1 - a1*y + b1*x;   d1 = b2*x - a2*y
 *
 * Four kinds: real and complex samples, coefficients and delay line of the samples' type (`_32f`, `_32fc`) or in
 * double precision (`64f_32f`, `64fc_32fc`), where each sample is widened, filtered in double precision and rounded
 * once.
 *
 * Numeric class: rounded. The generic slot runs the recursion above in the precision of the coefficients. From slot y8
 * up single-precision kinds run in double precision and round each output once, and vectors are filtered in blocks
 * whose samples are formed together; results differ from those of the recursion by no more than rounding in the
 * precision of the kind. For a stable filter the error against exact arithmetic is bounded by that of the recursion. A
 * NaN or an infinity in one sample reaches no earlier output. Filtering in pieces, sample by sample or in place
 * continues one stream.
 *
 * A state must not be used by two threads at once. It belongs to the variant slot that it was made in, which never
 * changes while a program runs. Filtering and release of the real single-precision kind take the id "II29" too.
 *
 * Block forms follow Burrus, "Block realization of digital filters", IEEE Trans. Audio Electroacoust. 20 (1972).
 * @{
 */

typedef struct VeksIIRState_32f VeksIIRState_32f;           /**< ids "II01" (order N), "II02" (biquads) */
typedef struct VeksIIRState_32fc VeksIIRState_32fc;         /**< ids "II03", "II04" */
typedef struct VeksIIRState64f_32f VeksIIRState64f_32f;     /**< id "II17" */
typedef struct VeksIIRState64fc_32fc VeksIIRState64fc_32fc; /**< id "II19" */

/**
 * @name States of order N
 * pTaps holds 2*(order + 1) values, b[0] .. b[order], then a[0] .. a[order]; all are multiplied by the reciprocal of
 * a[0]. pDlyLine holds the order values d[0] .. d[order-1] to start from; null stands for zeros. Both are copied.
 *
 * InitAlloc allocates the state, which the matching Free releases. Init builds it inside pBuffer, which may have any
 * alignment and must stay in place as long as the state is used. With N = order and R(x) = x rounded up to a multiple
 * of 32, it takes
 *
 *     _32f, 64f_32f:      128 + R(8*(2*N + 1)) + 2*R(8*(N + 1)) + (N <= 32 ? 320 + 64*N : 0) bytes
 *     _32fc, 64fc_32fc:   128 + R(16*(2*N + 1)) + 2*R(16*(N + 1)) + (N <= 32 ? 256 + 128*N : 0) bytes
 *
 * @return in the order of the checks: #vekStsNullPtrErr (ppState, pTaps, pBuffer), #vekStsIIROrderErr for order below
 *         1, #vekStsMemAllocErr (InitAlloc), #vekStsDivByZeroErr for a[0] equal to zero. *ppState is set on success
 *         only.
 * @{
 */
VEK_API VekStatus veksIIRInitAlloc_32f(VeksIIRState_32f** ppState, const Vek32f* pTaps, int order,
                                       const Vek32f* pDlyLine);
VEK_API VekStatus veksIIRInitAlloc_32fc(VeksIIRState_32fc** ppState, const Vek32fc* pTaps, int order,
                                        const Vek32fc* pDlyLine);
VEK_API VekStatus veksIIRInitAlloc64f_32f(VeksIIRState64f_32f** ppState, const Vek64f* pTaps, int order,
                                          const Vek64f* pDlyLine);
VEK_API VekStatus veksIIRInitAlloc64fc_32fc(VeksIIRState64fc_32fc** ppState, const Vek64fc* pTaps, int order,
                                            const Vek64fc* pDlyLine);
VEK_API VekStatus veksIIRInit_32f(VeksIIRState_32f** ppState, const Vek32f* pTaps, int order, const Vek32f* pDlyLine,
                                  Vek8u* pBuffer);
VEK_API VekStatus veksIIRInit_32fc(VeksIIRState_32fc** ppState, const Vek32fc* pTaps, int order,
                                   const Vek32fc* pDlyLine, Vek8u* pBuffer);
VEK_API VekStatus veksIIRInit64f_32f(VeksIIRState64f_32f** ppState, const Vek64f* pTaps, int order,
                                     const Vek64f* pDlyLine, Vek8u* pBuffer);
VEK_API VekStatus veksIIRInit64fc_32fc(VeksIIRState64fc_32fc** ppState, const Vek64fc* pTaps, int order,
                                       const Vek64fc* pDlyLine, Vek8u* pBuffer);
/** @} */

/**
 * @name States of biquad cascades
 * pTaps holds six values a section in processing order, b0, b1, b2, a0, a1, a2, each section's multiplied by the
 * reciprocal of its a0; pDlyLine d0, d1 of each section, or null for zeros.
 *
 * @return as above, with numBq in place of the order; #vekStsDivByZeroErr also for a section whose b0 is zero
 * @{
 */
VEK_API VekStatus veksIIRInitAlloc_BiQuad_32f(VeksIIRState_32f** ppState, const Vek32f* pTaps, int numBq,
                                              const Vek32f* pDlyLine);
VEK_API VekStatus veksIIRInitAlloc_BiQuad_32fc(VeksIIRState_32fc** ppState, const Vek32fc* pTaps, int numBq,
                                               const Vek32fc* pDlyLine);
/** @} */

/**
 * @name Release
 * Releases a state made by InitAlloc; a state inside a caller's buffer is left alone.
 * @return #vekStsNullPtrErr, #vekStsContextMatchErr
 * @{
 */
VEK_API VekStatus veksIIRFree_32f(VeksIIRState_32f* pState);
VEK_API VekStatus veksIIRFree_32fc(VeksIIRState_32fc* pState);
VEK_API VekStatus veksIIRFree64f_32f(VeksIIRState64f_32f* pState);
VEK_API VekStatus veksIIRFree64fc_32fc(VeksIIRState64fc_32fc* pState);
/** @} */

/**
 * @name Filtering
 * Filters len samples and advances the delay line. The destination may be the source.
 * @return #vekStsNullPtrErr, #vekStsSizeErr, #vekStsContextMatchErr
 * @{
 */
VEK_API VekStatus veksIIR_32f(const Vek32f* pSrc, Vek32f* pDst, int len, VeksIIRState_32f* pState);
VEK_API VekStatus veksIIR_32f_I(Vek32f* pSrcDst, int len, VeksIIRState_32f* pState);
VEK_API VekStatus veksIIR_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, VeksIIRState_32fc* pState);
VEK_API VekStatus veksIIR_32fc_I(Vek32fc* pSrcDst, int len, VeksIIRState_32fc* pState);
VEK_API VekStatus veksIIR64f_32f(const Vek32f* pSrc, Vek32f* pDst, int len, VeksIIRState64f_32f* pState);
VEK_API VekStatus veksIIR64f_32f_I(Vek32f* pSrcDst, int len, VeksIIRState64f_32f* pState);
VEK_API VekStatus veksIIR64fc_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, VeksIIRState64fc_32fc* pState);
VEK_API VekStatus veksIIR64fc_32fc_I(Vek32fc* pSrcDst, int len, VeksIIRState64fc_32fc* pState);
/** @} */

/**
 * @name One sample
 * Filters the sample src into *pDstVal and advances the delay line.
 * @return #vekStsNullPtrErr, #vekStsContextMatchErr
 * @{
 */
VEK_API VekStatus veksIIROne_32f(Vek32f src, Vek32f* pDstVal, VeksIIRState_32f* pState);
VEK_API VekStatus veksIIROne_32fc(Vek32fc src, Vek32fc* pDstVal, VeksIIRState_32fc* pState);
VEK_API VekStatus veksIIROne64f_32f(Vek32f src, Vek32f* pDstVal, VeksIIRState64f_32f* pState);
VEK_API VekStatus veksIIROne64fc_32fc(Vek32fc src, Vek32fc* pDstVal, VeksIIRState64fc_32fc* pState);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
