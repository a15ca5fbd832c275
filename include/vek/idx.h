// SPDX-License-Identifier: Apache-2.0
// Derived from the public prototypes by tools/derive.py; edits are lost.
//
// The index-offset twins: every dispatched function again, each array given as a base and a signed element index, for
// callers that cannot form interior pointers. An index counts elements of its own array (bytes where the array is given
// by a byte pointer), may be negative, and is added to its base before the function sees it; an absent delay line
// stays absent whatever its index. Everything else, the returned status included, is that of the function itself.
// clang-format off
#ifndef VEK_IDX_H
#define VEK_IDX_H

#include "vek/api.h"

#include "vek/core.h"
#include "vek/vector.h"
#include "vek/arith.h"
#include "vek/math.h"
#include "vek/convert.h"
#include "vek/stats.h"
#include "vek/sort.h"
#include "vek/gen.h"
#include "vek/window.h"
#include "vek/fir.h"
#include "vek/iir.h"
#include "vek/sampling.h"
#include "vek/correlation.h"
#include "vek/transform.h"

#ifdef __cplusplus
extern "C" {
#endif

VEK_API Vek32s* veksMalloc_32s_Idx(int len);
VEK_API Vek32f* veksMalloc_32f_Idx(int len);
VEK_API Vek32sc* veksMalloc_32sc_Idx(int len);
VEK_API Vek32fc* veksMalloc_32fc_Idx(int len);
VEK_API void veksFree_Idx(void* ptr);
VEK_API const VekLibVersion* veksGetLibVersion_Idx(void);
VEK_API VekStatus veksCopy_8u_Idx(const Vek8u* pSrc, int srcIdx, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_16s_Idx(const Vek16s* pSrc, int srcIdx, Vek16s* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_32s_Idx(const Vek32s* pSrc, int srcIdx, Vek32s* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_64s_Idx(const Vek64s* pSrc, int srcIdx, Vek64s* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_64f_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_16sc_Idx(const Vek16sc* pSrc, int srcIdx, Vek16sc* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_32sc_Idx(const Vek32sc* pSrc, int srcIdx, Vek32sc* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_64sc_Idx(const Vek64sc* pSrc, int srcIdx, Vek64sc* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_64fc_Idx(const Vek64fc* pSrc, int srcIdx, Vek64fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksCopy_1u_Idx(const Vek8u* pSrc, int srcIdx, int srcBitOffset, Vek8u* pDst, int dstIdx, int dstBitOffset, int len);
VEK_API VekStatus veksMove_8u_Idx(const Vek8u* pSrc, int srcIdx, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_16s_Idx(const Vek16s* pSrc, int srcIdx, Vek16s* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_32s_Idx(const Vek32s* pSrc, int srcIdx, Vek32s* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_64s_Idx(const Vek64s* pSrc, int srcIdx, Vek64s* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_64f_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_16sc_Idx(const Vek16sc* pSrc, int srcIdx, Vek16sc* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_32sc_Idx(const Vek32sc* pSrc, int srcIdx, Vek32sc* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_64sc_Idx(const Vek64sc* pSrc, int srcIdx, Vek64sc* pDst, int dstIdx, int len);
VEK_API VekStatus veksMove_64fc_Idx(const Vek64fc* pSrc, int srcIdx, Vek64fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksZero_8u_Idx(Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksZero_16s_Idx(Vek16s* pDst, int dstIdx, int len);
VEK_API VekStatus veksZero_32s_Idx(Vek32s* pDst, int dstIdx, int len);
VEK_API VekStatus veksZero_32f_Idx(Vek32f* pDst, int dstIdx, int len);
VEK_API VekStatus veksZero_32sc_Idx(Vek32sc* pDst, int dstIdx, int len);
VEK_API VekStatus veksZero_32fc_Idx(Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksSet_8u_Idx(Vek8u val, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksSet_16s_Idx(Vek16s val, Vek16s* pDst, int dstIdx, int len);
VEK_API VekStatus veksSet_32s_Idx(Vek32s val, Vek32s* pDst, int dstIdx, int len);
VEK_API VekStatus veksSet_32f_Idx(Vek32f val, Vek32f* pDst, int dstIdx, int len);
VEK_API VekStatus veksSet_32sc_Idx(Vek32sc val, Vek32sc* pDst, int dstIdx, int len);
VEK_API VekStatus veksSet_32fc_Idx(Vek32fc val, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksFlip_8u_Idx(const Vek8u* pSrc, int srcIdx, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksFlip_8u_I_Idx(Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksFlip_16u_Idx(const Vek16u* pSrc, int srcIdx, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksFlip_16u_I_Idx(Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksFlip_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, int len);
VEK_API VekStatus veksFlip_32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksFlip_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksFlip_32fc_I_Idx(Vek32fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksSwapBytes_16u_Idx(const Vek16u* pSrc, int srcIdx, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksSwapBytes_16u_I_Idx(Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksSwapBytes_24u_Idx(const Vek8u* pSrc, int srcIdx, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksSwapBytes_24u_I_Idx(Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksSwapBytes_32u_Idx(const Vek32u* pSrc, int srcIdx, Vek32u* pDst, int dstIdx, int len);
VEK_API VekStatus veksSwapBytes_32u_I_Idx(Vek32u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksSwapBytes_64u_Idx(const Vek64u* pSrc, int srcIdx, Vek64u* pDst, int dstIdx, int len);
VEK_API VekStatus veksSwapBytes_64u_I_Idx(Vek64u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksReal_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32f* pDstRe, int dstReIdx, int len);
VEK_API VekStatus veksImag_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32f* pDstIm, int dstImIdx, int len);
VEK_API VekStatus veksCplxToReal_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32f* pDstRe, int dstReIdx, Vek32f* pDstIm, int dstImIdx, int len);
VEK_API VekStatus veksRealToCplx_32f_Idx(const Vek32f* pSrcRe, int srcReIdx, const Vek32f* pSrcIm, int srcImIdx, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksConj_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksConj_32fc_I_Idx(Vek32fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksConjFlip_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus veksAnd_8u_Idx(const Vek8u* pSrc1, int src1Idx, const Vek8u* pSrc2, int src2Idx, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksAnd_8u_I_Idx(const Vek8u* pSrc, int srcIdx, Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksAnd_16u_Idx(const Vek16u* pSrc1, int src1Idx, const Vek16u* pSrc2, int src2Idx, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksAnd_16u_I_Idx(const Vek16u* pSrc, int srcIdx, Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksAnd_32u_Idx(const Vek32u* pSrc1, int src1Idx, const Vek32u* pSrc2, int src2Idx, Vek32u* pDst, int dstIdx, int len);
VEK_API VekStatus veksAnd_32u_I_Idx(const Vek32u* pSrc, int srcIdx, Vek32u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksOr_8u_Idx(const Vek8u* pSrc1, int src1Idx, const Vek8u* pSrc2, int src2Idx, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksOr_8u_I_Idx(const Vek8u* pSrc, int srcIdx, Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksOr_16u_Idx(const Vek16u* pSrc1, int src1Idx, const Vek16u* pSrc2, int src2Idx, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksOr_16u_I_Idx(const Vek16u* pSrc, int srcIdx, Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksOr_32u_Idx(const Vek32u* pSrc1, int src1Idx, const Vek32u* pSrc2, int src2Idx, Vek32u* pDst, int dstIdx, int len);
VEK_API VekStatus veksOr_32u_I_Idx(const Vek32u* pSrc, int srcIdx, Vek32u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksXor_8u_Idx(const Vek8u* pSrc1, int src1Idx, const Vek8u* pSrc2, int src2Idx, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksXor_8u_I_Idx(const Vek8u* pSrc, int srcIdx, Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksXor_16u_Idx(const Vek16u* pSrc1, int src1Idx, const Vek16u* pSrc2, int src2Idx, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksXor_16u_I_Idx(const Vek16u* pSrc, int srcIdx, Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksXor_32u_Idx(const Vek32u* pSrc1, int src1Idx, const Vek32u* pSrc2, int src2Idx, Vek32u* pDst, int dstIdx, int len);
VEK_API VekStatus veksXor_32u_I_Idx(const Vek32u* pSrc, int srcIdx, Vek32u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksAndC_8u_Idx(const Vek8u* pSrc, int srcIdx, Vek8u val, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksAndC_8u_I_Idx(Vek8u val, Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksAndC_16u_Idx(const Vek16u* pSrc, int srcIdx, Vek16u val, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksAndC_16u_I_Idx(Vek16u val, Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksAndC_32u_Idx(const Vek32u* pSrc, int srcIdx, Vek32u val, Vek32u* pDst, int dstIdx, int len);
VEK_API VekStatus veksAndC_32u_I_Idx(Vek32u val, Vek32u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksOrC_8u_Idx(const Vek8u* pSrc, int srcIdx, Vek8u val, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksOrC_8u_I_Idx(Vek8u val, Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksOrC_16u_Idx(const Vek16u* pSrc, int srcIdx, Vek16u val, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksOrC_16u_I_Idx(Vek16u val, Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksOrC_32u_Idx(const Vek32u* pSrc, int srcIdx, Vek32u val, Vek32u* pDst, int dstIdx, int len);
VEK_API VekStatus veksOrC_32u_I_Idx(Vek32u val, Vek32u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksXorC_8u_Idx(const Vek8u* pSrc, int srcIdx, Vek8u val, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksXorC_8u_I_Idx(Vek8u val, Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksXorC_16u_Idx(const Vek16u* pSrc, int srcIdx, Vek16u val, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksXorC_16u_I_Idx(Vek16u val, Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksXorC_32u_Idx(const Vek32u* pSrc, int srcIdx, Vek32u val, Vek32u* pDst, int dstIdx, int len);
VEK_API VekStatus veksXorC_32u_I_Idx(Vek32u val, Vek32u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksNot_8u_Idx(const Vek8u* pSrc, int srcIdx, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksNot_8u_I_Idx(Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksNot_16u_Idx(const Vek16u* pSrc, int srcIdx, Vek16u* pDst, int dstIdx, int len);
VEK_API VekStatus veksNot_16u_I_Idx(Vek16u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksNot_32u_Idx(const Vek32u* pSrc, int srcIdx, Vek32u* pDst, int dstIdx, int len);
VEK_API VekStatus veksNot_32u_I_Idx(Vek32u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksLShiftC_8u_Idx(const Vek8u* pSrc, int srcIdx, int val, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksLShiftC_8u_I_Idx(int val, Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksLShiftC_16s_Idx(const Vek16s* pSrc, int srcIdx, int val, Vek16s* pDst, int dstIdx, int len);
VEK_API VekStatus veksLShiftC_16s_I_Idx(int val, Vek16s* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksLShiftC_32s_Idx(const Vek32s* pSrc, int srcIdx, int val, Vek32s* pDst, int dstIdx, int len);
VEK_API VekStatus veksLShiftC_32s_I_Idx(int val, Vek32s* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksRShiftC_8u_Idx(const Vek8u* pSrc, int srcIdx, int val, Vek8u* pDst, int dstIdx, int len);
VEK_API VekStatus veksRShiftC_8u_I_Idx(int val, Vek8u* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksRShiftC_16s_Idx(const Vek16s* pSrc, int srcIdx, int val, Vek16s* pDst, int dstIdx, int len);
VEK_API VekStatus veksRShiftC_16s_I_Idx(int val, Vek16s* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus veksRShiftC_32s_Idx(const Vek32s* pSrc, int srcIdx, int val, Vek32s* pDst, int dstIdx, int len);
VEK_API VekStatus veksRShiftC_32s_I_Idx(int val, Vek32s* pSrcDst, int srcDstIdx, int len);

#ifdef __cplusplus
}
#endif

#endif
