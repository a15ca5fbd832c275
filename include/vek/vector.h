// SPDX-License-Identifier: Apache-2.0
// Copy, move, set, reorder; bitwise logic and shifts.
#ifndef VEK_VECTOR_H
#define VEK_VECTOR_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_vector Movement, logic, shifts
 *
 * Common to the families below, unless one says otherwise:
 * - `len` counts elements; a complex element counts once.
 * - pDst may be equal to a source; any other overlap is not supported. In-place forms: `pSrcDst`.
 * - Returned: #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, else #vekStsNoErr. A refused
 *   call writes nothing.
 * - Numeric class: exact. The same bits on every processor and at every position and alignment.
 * @{
 */

/**
 * Copies elements, every bit pattern as it is. The arrays must not overlap; veksMove allows that.
 *
 * @param pSrc the elements, len of them
 * @param pDst the copies, len elements
 * @param len  number of elements
 */
VEK_API VekStatus veksCopy_8u(const Vek8u* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksCopy_16s(const Vek16s* pSrc, Vek16s* pDst, int len);
VEK_API VekStatus veksCopy_32s(const Vek32s* pSrc, Vek32s* pDst, int len);
VEK_API VekStatus veksCopy_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksCopy_64s(const Vek64s* pSrc, Vek64s* pDst, int len);
VEK_API VekStatus veksCopy_64f(const Vek64f* pSrc, Vek64f* pDst, int len);
VEK_API VekStatus veksCopy_16sc(const Vek16sc* pSrc, Vek16sc* pDst, int len);
VEK_API VekStatus veksCopy_32sc(const Vek32sc* pSrc, Vek32sc* pDst, int len);
VEK_API VekStatus veksCopy_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksCopy_64sc(const Vek64sc* pSrc, Vek64sc* pDst, int len);
VEK_API VekStatus veksCopy_64fc(const Vek64fc* pSrc, Vek64fc* pDst, int len);

/**
 * Copies bits. Bits are numbered from the most significant of a byte: offset 0 is the bit of value 0x80. Only the
 * low three bits of an offset count; it never moves the pointer on. Destination bits around the copied ones keep their
 * values. The arrays must not overlap.
 *
 * @param pSrc         bytes with the bits, as many as the last of them needs
 * @param srcBitOffset number of the first bit, 0 or more
 * @param pDst         bytes that receive the bits, as many as the last of them needs
 * @param dstBitOffset number of the first bit to write, 0 or more
 * @param len          number of bits
 * @return #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1 or an offset is negative, nothing
 *         being written; else #vekStsNoErr.
 */
VEK_API VekStatus veksCopy_1u(const Vek8u* pSrc, int srcBitOffset, Vek8u* pDst, int dstBitOffset, int len);

/**
 * Copies elements as veksCopy does; the arrays may overlap in any way. Parameters as for veksCopy.
 */
VEK_API VekStatus veksMove_8u(const Vek8u* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksMove_16s(const Vek16s* pSrc, Vek16s* pDst, int len);
VEK_API VekStatus veksMove_32s(const Vek32s* pSrc, Vek32s* pDst, int len);
VEK_API VekStatus veksMove_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksMove_64s(const Vek64s* pSrc, Vek64s* pDst, int len);
VEK_API VekStatus veksMove_64f(const Vek64f* pSrc, Vek64f* pDst, int len);
VEK_API VekStatus veksMove_16sc(const Vek16sc* pSrc, Vek16sc* pDst, int len);
VEK_API VekStatus veksMove_32sc(const Vek32sc* pSrc, Vek32sc* pDst, int len);
VEK_API VekStatus veksMove_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksMove_64sc(const Vek64sc* pSrc, Vek64sc* pDst, int len);
VEK_API VekStatus veksMove_64fc(const Vek64fc* pSrc, Vek64fc* pDst, int len);

/**
 * Sets every element to zero.
 *
 * @param pDst the vector, len elements
 * @param len  number of elements
 */
VEK_API VekStatus veksZero_8u(Vek8u* pDst, int len);
VEK_API VekStatus veksZero_16s(Vek16s* pDst, int len);
VEK_API VekStatus veksZero_32s(Vek32s* pDst, int len);
VEK_API VekStatus veksZero_32f(Vek32f* pDst, int len);
VEK_API VekStatus veksZero_32sc(Vek32sc* pDst, int len);
VEK_API VekStatus veksZero_32fc(Vek32fc* pDst, int len);

/**
 * Sets every element to val, to the bit: NaN patterns and -0 are kept.
 *
 * @param val  the value
 * @param pDst the vector, len elements
 * @param len  number of elements
 */
VEK_API VekStatus veksSet_8u(Vek8u val, Vek8u* pDst, int len);
VEK_API VekStatus veksSet_16s(Vek16s val, Vek16s* pDst, int len);
VEK_API VekStatus veksSet_32s(Vek32s val, Vek32s* pDst, int len);
VEK_API VekStatus veksSet_32f(Vek32f val, Vek32f* pDst, int len);
VEK_API VekStatus veksSet_32sc(Vek32sc val, Vek32sc* pDst, int len);
VEK_API VekStatus veksSet_32fc(Vek32fc val, Vek32fc* pDst, int len);

/**
 * Reverses the order: pDst[n] = pSrc[len - 1 - n].
 *
 * @param pSrc the vector, len elements (in place: pSrcDst)
 * @param pDst the vector reversed, len elements
 * @param len  number of elements
 */
VEK_API VekStatus veksFlip_8u(const Vek8u* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksFlip_8u_I(Vek8u* pSrcDst, int len);
VEK_API VekStatus veksFlip_16u(const Vek16u* pSrc, Vek16u* pDst, int len);
VEK_API VekStatus veksFlip_16u_I(Vek16u* pSrcDst, int len);
VEK_API VekStatus veksFlip_32f(const Vek32f* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksFlip_32f_I(Vek32f* pSrcDst, int len);
VEK_API VekStatus veksFlip_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksFlip_32fc_I(Vek32fc* pSrcDst, int len);

/**
 * Reverses the bytes inside each element. The 24-bit arrays hold 3 * len bytes. Parameters as for veksFlip.
 */
VEK_API VekStatus veksSwapBytes_16u(const Vek16u* pSrc, Vek16u* pDst, int len);
VEK_API VekStatus veksSwapBytes_16u_I(Vek16u* pSrcDst, int len);
VEK_API VekStatus veksSwapBytes_24u(const Vek8u* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksSwapBytes_24u_I(Vek8u* pSrcDst, int len);
VEK_API VekStatus veksSwapBytes_32u(const Vek32u* pSrc, Vek32u* pDst, int len);
VEK_API VekStatus veksSwapBytes_32u_I(Vek32u* pSrcDst, int len);
VEK_API VekStatus veksSwapBytes_64u(const Vek64u* pSrc, Vek64u* pDst, int len);
VEK_API VekStatus veksSwapBytes_64u_I(Vek64u* pSrcDst, int len);

/**
 * The real part, the imaginary part, or both parts of a complex vector. No destination may overlap another array.
 *
 * @param pSrc   the complex vector, len elements
 * @param pDstRe the real parts, len elements
 * @param pDstIm the imaginary parts, len elements
 * @param len    number of elements
 */
VEK_API VekStatus veksReal_32fc(const Vek32fc* pSrc, Vek32f* pDstRe, int len);
VEK_API VekStatus veksImag_32fc(const Vek32fc* pSrc, Vek32f* pDstIm, int len);
VEK_API VekStatus veksCplxToReal_32fc(const Vek32fc* pSrc, Vek32f* pDstRe, Vek32f* pDstIm, int len);

/**
 * Joins two real vectors: pDst[n] = (pSrcRe[n], pSrcIm[n]). One source may be null; its part becomes +0. No array may
 * overlap another.
 *
 * @param pSrcRe the real parts, len elements, or null
 * @param pSrcIm the imaginary parts, len elements, or null
 * @param pDst   the complex vector, len elements
 * @param len    number of elements
 * @return #vekStsNullPtrErr if pDst is null, then #vekStsSizeErr if len < 1, then #vekStsNullPtrErr if both sources are
 *         null, nothing being written; else #vekStsNoErr.
 */
VEK_API VekStatus veksRealToCplx_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32fc* pDst, int len);

/**
 * The conjugate (re, 0 - im): an imaginary part of either zero gives +0. ConjFlip also reverses the order,
 * pDst[n] = conj(pSrc[len - 1 - n]), and allows no overlap at all. Parameters as for veksFlip.
 */
VEK_API VekStatus veksConj_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);
VEK_API VekStatus veksConj_32fc_I(Vek32fc* pSrcDst, int len);
VEK_API VekStatus veksConjFlip_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len);

/**
 * Bitwise and, or, exclusive or: pDst[n] = pSrc1[n] op pSrc2[n]; in place pSrcDst[n] = pSrcDst[n] op pSrc[n].
 *
 * @param pSrc1,pSrc2 the operands, len elements each (in place: pSrc)
 * @param pDst        the results, len elements (in place: pSrcDst)
 * @param len         number of elements
 */
VEK_API VekStatus veksAnd_8u(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len);
VEK_API VekStatus veksAnd_8u_I(const Vek8u* pSrc, Vek8u* pSrcDst, int len);
VEK_API VekStatus veksAnd_16u(const Vek16u* pSrc1, const Vek16u* pSrc2, Vek16u* pDst, int len);
VEK_API VekStatus veksAnd_16u_I(const Vek16u* pSrc, Vek16u* pSrcDst, int len);
VEK_API VekStatus veksAnd_32u(const Vek32u* pSrc1, const Vek32u* pSrc2, Vek32u* pDst, int len);
VEK_API VekStatus veksAnd_32u_I(const Vek32u* pSrc, Vek32u* pSrcDst, int len);
VEK_API VekStatus veksOr_8u(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len);
VEK_API VekStatus veksOr_8u_I(const Vek8u* pSrc, Vek8u* pSrcDst, int len);
VEK_API VekStatus veksOr_16u(const Vek16u* pSrc1, const Vek16u* pSrc2, Vek16u* pDst, int len);
VEK_API VekStatus veksOr_16u_I(const Vek16u* pSrc, Vek16u* pSrcDst, int len);
VEK_API VekStatus veksOr_32u(const Vek32u* pSrc1, const Vek32u* pSrc2, Vek32u* pDst, int len);
VEK_API VekStatus veksOr_32u_I(const Vek32u* pSrc, Vek32u* pSrcDst, int len);
VEK_API VekStatus veksXor_8u(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len);
VEK_API VekStatus veksXor_8u_I(const Vek8u* pSrc, Vek8u* pSrcDst, int len);
VEK_API VekStatus veksXor_16u(const Vek16u* pSrc1, const Vek16u* pSrc2, Vek16u* pDst, int len);
VEK_API VekStatus veksXor_16u_I(const Vek16u* pSrc, Vek16u* pSrcDst, int len);
VEK_API VekStatus veksXor_32u(const Vek32u* pSrc1, const Vek32u* pSrc2, Vek32u* pDst, int len);
VEK_API VekStatus veksXor_32u_I(const Vek32u* pSrc, Vek32u* pSrcDst, int len);

/**
 * Bitwise operation with a constant: pDst[n] = pSrc[n] op val; in place pSrcDst[n] = pSrcDst[n] op val. A val of 0 is a
 * short cut taken before any check: AndC with a source that is not null zeroes the destination without reading the
 * source, OrC and XorC copy, each with the checks of veksZero and veksCopy.
 *
 * @param pSrc the vector, len elements (in place: pSrcDst)
 * @param val  the constant
 * @param pDst the results, len elements
 * @param len  number of elements
 */
VEK_API VekStatus veksAndC_8u(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len);
VEK_API VekStatus veksAndC_8u_I(Vek8u val, Vek8u* pSrcDst, int len);
VEK_API VekStatus veksAndC_16u(const Vek16u* pSrc, Vek16u val, Vek16u* pDst, int len);
VEK_API VekStatus veksAndC_16u_I(Vek16u val, Vek16u* pSrcDst, int len);
VEK_API VekStatus veksAndC_32u(const Vek32u* pSrc, Vek32u val, Vek32u* pDst, int len);
VEK_API VekStatus veksAndC_32u_I(Vek32u val, Vek32u* pSrcDst, int len);
VEK_API VekStatus veksOrC_8u(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len);
VEK_API VekStatus veksOrC_8u_I(Vek8u val, Vek8u* pSrcDst, int len);
VEK_API VekStatus veksOrC_16u(const Vek16u* pSrc, Vek16u val, Vek16u* pDst, int len);
VEK_API VekStatus veksOrC_16u_I(Vek16u val, Vek16u* pSrcDst, int len);
VEK_API VekStatus veksOrC_32u(const Vek32u* pSrc, Vek32u val, Vek32u* pDst, int len);
VEK_API VekStatus veksOrC_32u_I(Vek32u val, Vek32u* pSrcDst, int len);
VEK_API VekStatus veksXorC_8u(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len);
VEK_API VekStatus veksXorC_8u_I(Vek8u val, Vek8u* pSrcDst, int len);
VEK_API VekStatus veksXorC_16u(const Vek16u* pSrc, Vek16u val, Vek16u* pDst, int len);
VEK_API VekStatus veksXorC_16u_I(Vek16u val, Vek16u* pSrcDst, int len);
VEK_API VekStatus veksXorC_32u(const Vek32u* pSrc, Vek32u val, Vek32u* pDst, int len);
VEK_API VekStatus veksXorC_32u_I(Vek32u val, Vek32u* pSrcDst, int len);

/**
 * Bitwise complement. Parameters as for veksFlip.
 */
VEK_API VekStatus veksNot_8u(const Vek8u* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksNot_8u_I(Vek8u* pSrcDst, int len);
VEK_API VekStatus veksNot_16u(const Vek16u* pSrc, Vek16u* pDst, int len);
VEK_API VekStatus veksNot_16u_I(Vek16u* pSrcDst, int len);
VEK_API VekStatus veksNot_32u(const Vek32u* pSrc, Vek32u* pDst, int len);
VEK_API VekStatus veksNot_32u_I(Vek32u* pSrcDst, int len);

/**
 * Shifts every element by val bits: left without saturation, right logically for 8u and arithmetically for 16s and 32s.
 * Counts at or above the width give zeros, or the sign fill for arithmetic right shifts.
 *
 * A val of 0 copies, with the checks of veksCopy. A count at or above the width that gives zeros, with a source that is
 * not null, zeroes the destination with the checks of veksZero (8u both ways, 32s left).
 *
 * @param pSrc the vector, len elements (in place: pSrcDst)
 * @param val  number of bits
 * @param pDst the results, len elements
 * @param len  number of elements
 * @return otherwise #vekStsNullPtrErr if a pointer is null, then #vekStsSizeErr if len < 1, then #vekStsShiftErr if val
 *         is negative, nothing being written; else #vekStsNoErr.
 */
VEK_API VekStatus veksLShiftC_8u(const Vek8u* pSrc, int val, Vek8u* pDst, int len);
VEK_API VekStatus veksLShiftC_8u_I(int val, Vek8u* pSrcDst, int len);
VEK_API VekStatus veksLShiftC_16s(const Vek16s* pSrc, int val, Vek16s* pDst, int len);
VEK_API VekStatus veksLShiftC_16s_I(int val, Vek16s* pSrcDst, int len);
VEK_API VekStatus veksLShiftC_32s(const Vek32s* pSrc, int val, Vek32s* pDst, int len);
VEK_API VekStatus veksLShiftC_32s_I(int val, Vek32s* pSrcDst, int len);
VEK_API VekStatus veksRShiftC_8u(const Vek8u* pSrc, int val, Vek8u* pDst, int len);
VEK_API VekStatus veksRShiftC_8u_I(int val, Vek8u* pSrcDst, int len);
VEK_API VekStatus veksRShiftC_16s(const Vek16s* pSrc, int val, Vek16s* pDst, int len);
VEK_API VekStatus veksRShiftC_16s_I(int val, Vek16s* pSrcDst, int len);
VEK_API VekStatus veksRShiftC_32s(const Vek32s* pSrc, int val, Vek32s* pDst, int len);
VEK_API VekStatus veksRShiftC_32s_I(int val, Vek32s* pSrcDst, int len);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
