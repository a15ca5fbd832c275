// SPDX-License-Identifier: Apache-2.0
// Derived from the public prototypes by tools/derive.py; edits are lost.
// clang-format off
#ifndef VEKX_IDX_H
#define VEKX_IDX_H

#include "vek/api.h"

#include "vekx/core.h"
#include "vekx/fft.h"
#include "vekx/design.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vekx_idx Index-offset twins
 *
 * Every dispatched function again, each array given as a base and a signed element index, for callers that cannot form
 * interior pointers. An index counts elements of its own array (bytes where the array is given by a byte pointer), may
 * be negative, and is added to its base before the function sees it; an absent delay line stays absent whatever its
 * index. Everything else, the returned status included, is that of the function itself.
 * @{
 */

/**
 * @name Twins
 * In the order of the chapters.
 * @{
 */
VEK_API VekStatus vekxFFTGetSize_32fc_Idx(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxFFTGetSize_64fc_Idx(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxFFTGetSize_32f_Idx(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxFFTGetSize_64f_Idx(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxFFTInit_32fc_Idx(VekxFFTSpec_32fc* * ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer, int specBufferIdx);
VEK_API VekStatus vekxFFTInit_64fc_Idx(VekxFFTSpec_64fc* * ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer, int specBufferIdx);
VEK_API VekStatus vekxFFTInit_32f_Idx(VekxFFTSpec_32f* * ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer, int specBufferIdx);
VEK_API VekStatus vekxFFTInit_64f_Idx(VekxFFTSpec_64f* * ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer, int specBufferIdx);
VEK_API VekStatus vekxFFTInitAlloc_32fc_Idx(VekxFFTSpec_32fc* * ppSpec, int len, VekxScale scale);
VEK_API VekStatus vekxFFTInitAlloc_64fc_Idx(VekxFFTSpec_64fc* * ppSpec, int len, VekxScale scale);
VEK_API VekStatus vekxFFTInitAlloc_32f_Idx(VekxFFTSpec_32f* * ppSpec, int len, VekxScale scale);
VEK_API VekStatus vekxFFTInitAlloc_64f_Idx(VekxFFTSpec_64f* * ppSpec, int len, VekxScale scale);
VEK_API VekStatus vekxFFTFree_32fc_Idx(VekxFFTSpec_32fc* pSpec);
VEK_API VekStatus vekxFFTFree_64fc_Idx(VekxFFTSpec_64fc* pSpec);
VEK_API VekStatus vekxFFTFree_32f_Idx(VekxFFTSpec_32f* pSpec);
VEK_API VekStatus vekxFFTFree_64f_Idx(VekxFFTSpec_64f* pSpec);
VEK_API VekStatus vekxFFTFwd_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInv_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwd_64fc_Idx(const Vek64fc* pSrc, int srcIdx, Vek64fc* pDst, int dstIdx, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInv_64fc_Idx(const Vek64fc* pSrc, int srcIdx, Vek64fc* pDst, int dstIdx, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwd_32fc_I_Idx(Vek32fc* pSrcDst, int srcDstIdx, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInv_32fc_I_Idx(Vek32fc* pSrcDst, int srcDstIdx, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwd_64fc_I_Idx(Vek64fc* pSrcDst, int srcDstIdx, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInv_64fc_I_Idx(Vek64fc* pSrcDst, int srcDstIdx, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwd_32f32fc_Idx(const Vek32f* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInv_32fc32f_Idx(const Vek32fc* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwd_32f32fc_I_Idx(Vek32f* pSrcDst, int srcDstIdx, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInv_32fc32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwd_64f64fc_Idx(const Vek64f* pSrc, int srcIdx, Vek64fc* pDst, int dstIdx, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInv_64fc64f_Idx(const Vek64fc* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwd_64f64fc_I_Idx(Vek64f* pSrcDst, int srcDstIdx, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInv_64fc64f_I_Idx(Vek64f* pSrcDst, int srcDstIdx, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdPack_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvPack_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdPack_32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvPack_32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdPack_64f_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvPack_64f_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdPack_64f_I_Idx(Vek64f* pSrcDst, int srcDstIdx, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvPack_64f_I_Idx(Vek64f* pSrcDst, int srcDstIdx, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdMany_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdMany_32fc_I_Idx(Vek32fc* pSrcDst, int srcDstIdx, Vek64s count, Vek64s stride, Vek64s distance, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvMany_32fc_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvMany_32fc_I_Idx(Vek32fc* pSrcDst, int srcDstIdx, Vek64s count, Vek64s stride, Vek64s distance, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdMany_64fc_Idx(const Vek64fc* pSrc, int srcIdx, Vek64fc* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdMany_64fc_I_Idx(Vek64fc* pSrcDst, int srcDstIdx, Vek64s count, Vek64s stride, Vek64s distance, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvMany_64fc_Idx(const Vek64fc* pSrc, int srcIdx, Vek64fc* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvMany_64fc_I_Idx(Vek64fc* pSrcDst, int srcDstIdx, Vek64s count, Vek64s stride, Vek64s distance, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdMany_32f32fc_Idx(const Vek32f* pSrc, int srcIdx, Vek32fc* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvMany_32fc32f_Idx(const Vek32fc* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdMany_32f32fc_I_Idx(Vek32f* pSrcDst, int srcDstIdx, Vek64s count, Vek64s distance, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvMany_32fc32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, Vek64s count, Vek64s distance, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdMany_64f64fc_Idx(const Vek64f* pSrc, int srcIdx, Vek64fc* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvMany_64fc64f_Idx(const Vek64fc* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTFwdMany_64f64fc_I_Idx(Vek64f* pSrcDst, int srcDstIdx, Vek64s count, Vek64s distance, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTInvMany_64fc64f_I_Idx(Vek64f* pSrcDst, int srcDstIdx, Vek64s count, Vek64s distance, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxFFTMul_32fc_Idx(const Vek32fc* pSrc1, int src1Idx, const Vek32fc* pSrc2, int src2Idx, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus vekxFFTMul_32fc_I_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulAdd_32fc_Idx(const Vek32fc* pSrc1, int src1Idx, const Vek32fc* pSrc2, int src2Idx, Vek32fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulConj_32fc_Idx(const Vek32fc* pSrc1, int src1Idx, const Vek32fc* pSrc2, int src2Idx, Vek32fc* pDst, int dstIdx, int len);
VEK_API VekStatus vekxFFTMulConj_32fc_I_Idx(const Vek32fc* pSrc, int srcIdx, Vek32fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulConjAdd_32fc_Idx(const Vek32fc* pSrc1, int src1Idx, const Vek32fc* pSrc2, int src2Idx, Vek32fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMul_64fc_Idx(const Vek64fc* pSrc1, int src1Idx, const Vek64fc* pSrc2, int src2Idx, Vek64fc* pDst, int dstIdx, int len);
VEK_API VekStatus vekxFFTMul_64fc_I_Idx(const Vek64fc* pSrc, int srcIdx, Vek64fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulAdd_64fc_Idx(const Vek64fc* pSrc1, int src1Idx, const Vek64fc* pSrc2, int src2Idx, Vek64fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulConj_64fc_Idx(const Vek64fc* pSrc1, int src1Idx, const Vek64fc* pSrc2, int src2Idx, Vek64fc* pDst, int dstIdx, int len);
VEK_API VekStatus vekxFFTMulConj_64fc_I_Idx(const Vek64fc* pSrc, int srcIdx, Vek64fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulConjAdd_64fc_Idx(const Vek64fc* pSrc1, int src1Idx, const Vek64fc* pSrc2, int src2Idx, Vek64fc* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulPack_32f_Idx(const Vek32f* pSrc1, int src1Idx, const Vek32f* pSrc2, int src2Idx, Vek32f* pDst, int dstIdx, int len);
VEK_API VekStatus vekxFFTMulPack_32f_I_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulAddPack_32f_Idx(const Vek32f* pSrc1, int src1Idx, const Vek32f* pSrc2, int src2Idx, Vek32f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulConjPack_32f_Idx(const Vek32f* pSrc1, int src1Idx, const Vek32f* pSrc2, int src2Idx, Vek32f* pDst, int dstIdx, int len);
VEK_API VekStatus vekxFFTMulConjPack_32f_I_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulConjAddPack_32f_Idx(const Vek32f* pSrc1, int src1Idx, const Vek32f* pSrc2, int src2Idx, Vek32f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulPack_64f_Idx(const Vek64f* pSrc1, int src1Idx, const Vek64f* pSrc2, int src2Idx, Vek64f* pDst, int dstIdx, int len);
VEK_API VekStatus vekxFFTMulPack_64f_I_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulAddPack_64f_Idx(const Vek64f* pSrc1, int src1Idx, const Vek64f* pSrc2, int src2Idx, Vek64f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulConjPack_64f_Idx(const Vek64f* pSrc1, int src1Idx, const Vek64f* pSrc2, int src2Idx, Vek64f* pDst, int dstIdx, int len);
VEK_API VekStatus vekxFFTMulConjPack_64f_I_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxFFTMulConjAddPack_64f_Idx(const Vek64f* pSrc1, int src1Idx, const Vek64f* pSrc2, int src2Idx, Vek64f* pSrcDst, int srcDstIdx, int len);
VEK_API VekStatus vekxTrigGetSize_32f_Idx(int len, VekxTrigType type, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxTrigGetSize_64f_Idx(int len, VekxTrigType type, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxTrigInit_32f_Idx(VekxTrigSpec_32f* * ppSpec, int len, VekxTrigType type, VekxTrigNorm norm, Vek8u* pSpecBuffer, int specBufferIdx);
VEK_API VekStatus vekxTrigInit_64f_Idx(VekxTrigSpec_64f* * ppSpec, int len, VekxTrigType type, VekxTrigNorm norm, Vek8u* pSpecBuffer, int specBufferIdx);
VEK_API VekStatus vekxTrigInitAlloc_32f_Idx(VekxTrigSpec_32f* * ppSpec, int len, VekxTrigType type, VekxTrigNorm norm);
VEK_API VekStatus vekxTrigInitAlloc_64f_Idx(VekxTrigSpec_64f* * ppSpec, int len, VekxTrigType type, VekxTrigNorm norm);
VEK_API VekStatus vekxTrigFree_32f_Idx(VekxTrigSpec_32f* pSpec);
VEK_API VekStatus vekxTrigFree_64f_Idx(VekxTrigSpec_64f* pSpec);
VEK_API VekStatus vekxTrigFwd_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigInv_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigFwd_32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigInv_32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigFwd_64f_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigInv_64f_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigFwd_64f_I_Idx(Vek64f* pSrcDst, int srcDstIdx, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigInv_64f_I_Idx(Vek64f* pSrcDst, int srcDstIdx, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigFwdMany_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigFwdMany_32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, Vek64s count, Vek64s stride, Vek64s distance, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigInvMany_32f_Idx(const Vek32f* pSrc, int srcIdx, Vek32f* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigInvMany_32f_I_Idx(Vek32f* pSrcDst, int srcDstIdx, Vek64s count, Vek64s stride, Vek64s distance, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigFwdMany_64f_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigFwdMany_64f_I_Idx(Vek64f* pSrcDst, int srcDstIdx, Vek64s count, Vek64s stride, Vek64s distance, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigInvMany_64f_Idx(const Vek64f* pSrc, int srcIdx, Vek64f* pDst, int dstIdx, Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
VEK_API VekStatus vekxTrigInvMany_64f_I_Idx(Vek64f* pSrcDst, int srcDstIdx, Vek64s count, Vek64s stride, Vek64s distance, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer, int workBufferIdx);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
