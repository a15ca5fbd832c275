// SPDX-License-Identifier: Apache-2.0
// Sorting by value and by index.
#ifndef VEK_SORT_H
#define VEK_SORT_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_sort Sorting
 *
 * Vectors are sorted in place. Nothing is allocated, and no input takes more than a time proportional to
 * len * log2(len) (to len for bytes): ranges are split by vectorised quicksort partitions around sampled pivots (Hoare
 * 1961); where samples mislead, the range of values itself is halved, which ends after as many steps as a key has bits.
 * Short ranges go through fixed sorting networks (Batcher 1968, Green 1969), bytes through a counting sort. Calls use
 * less than 32 KiB of stack.
 *
 * Floats are ordered by value; NaNs of either sign are gathered behind the numbers, in both directions, and negative
 * and positive zeros are equal keys. Every bit pattern of the input, NaN payloads included, is in the output exactly as
 * often as in the input.
 *
 * Class: exact; sorted values are the same to the bit in every slot (NaNs and equal zeros in any order among
 * themselves).
 * @{
 */

/**
 * Sorts a vector into ascending order.
 * @param pSrcDst the vector, `len` elements
 * @param len number of elements
 * @return #vekStsNullPtrErr for a null pointer, #vekStsSizeErr for len below 1, else #vekStsNoErr
 */
VEK_API VekStatus veksSortAscend_8u_I(Vek8u* pSrcDst, int len);
VEK_API VekStatus veksSortAscend_16s_I(Vek16s* pSrcDst, int len);
VEK_API VekStatus veksSortAscend_32s_I(Vek32s* pSrcDst, int len);
VEK_API VekStatus veksSortAscend_32f_I(Vek32f* pSrcDst, int len);

/** Sorts a vector into descending order; arguments and statuses as for veksSortAscend_8u_I(). */
VEK_API VekStatus veksSortDescend_8u_I(Vek8u* pSrcDst, int len);
VEK_API VekStatus veksSortDescend_16s_I(Vek16s* pSrcDst, int len);
VEK_API VekStatus veksSortDescend_32s_I(Vek32s* pSrcDst, int len);
VEK_API VekStatus veksSortDescend_32f_I(Vek32f* pSrcDst, int len);

/**
 * Sorts a vector into ascending order and tells where each element came from: after the call pDstIdx[i] is the
 * position, before the call, of the value that is now pSrcDst[i]. Equal values come out in any order of their former
 * positions.
 * @param pSrcDst the vector, `len` elements
 * @param pDstIdx receives the former positions, `len` elements, apart from pSrcDst
 * @param len number of elements
 * @return #vekStsNullPtrErr for a null pointer, #vekStsSizeErr for len below 1, else #vekStsNoErr
 */
VEK_API VekStatus veksSortIndexAscend_8u_I(Vek8u* pSrcDst, int* pDstIdx, int len);
VEK_API VekStatus veksSortIndexAscend_16s_I(Vek16s* pSrcDst, int* pDstIdx, int len);
VEK_API VekStatus veksSortIndexAscend_32s_I(Vek32s* pSrcDst, int* pDstIdx, int len);
VEK_API VekStatus veksSortIndexAscend_32f_I(Vek32f* pSrcDst, int* pDstIdx, int len);

/** The same in descending order; arguments and statuses as for veksSortIndexAscend_8u_I(). */
VEK_API VekStatus veksSortIndexDescend_8u_I(Vek8u* pSrcDst, int* pDstIdx, int len);
VEK_API VekStatus veksSortIndexDescend_16s_I(Vek16s* pSrcDst, int* pDstIdx, int len);
VEK_API VekStatus veksSortIndexDescend_32s_I(Vek32s* pSrcDst, int* pDstIdx, int len);
VEK_API VekStatus veksSortIndexDescend_32f_I(Vek32f* pSrcDst, int* pDstIdx, int len);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
