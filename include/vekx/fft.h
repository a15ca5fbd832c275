// SPDX-License-Identifier: Apache-2.0
// Fourier, cosine and sine transforms of every length.
#ifndef VEKX_FFT_H
#define VEKX_FFT_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vekx_fft Fourier, cosine and sine transforms
 *
 * Discrete Fourier transforms of complex and real data, and the cosine and sine transforms of types I to IV, of every
 * length N from 1 to 2^27, in single and double precision, one at a time or many.
 *
 *     forward   X[k] = f * sum over n of x[n] * exp(-2 pi i n k / N)
 *     inverse   x[n] = g * sum over k of X[k] * exp(+2 pi i n k / N)
 *
 * with f and g as #VekxScale says. Real data has the spectrum X[0] .. X[N/2] (N/2 rounded down); the other bins are the
 * conjugates X[N-k] of those.
 *
 * Products of small primes are taken apart into passes of those (J. W. Cooley and J. W. Tukey, "An algorithm for the
 * machine calculation of complex Fourier series", 1965); prime factors too large for a pass go through a convolution
 * with a chirp (L. Bluestein, "A linear filtering approach to the computation of the discrete Fourier transform",
 * 1970).
 *
 * A spec holds what transforms of one kind, length and scale need. It is made once and read-only from then on: any
 * number of threads may use it, each with a work buffer of its own. The GetSize functions tell the bytes of the two
 * buffers in the slot in force, which may lie at any alignment: the Init functions build the spec inside `pSpecBuffer`,
 * where it lives; the InitAlloc functions allocate it, to be released by the Free functions. The bytes of a buffer with
 * a spec inside may be copied to one of the same alignment modulo 64, where they are a spec as well. Making one
 * measures nothing, and gives the same spec each time; another slot's code refuses it.
 *
 * `pWorkBuffer` has the size that GetSize stores in `pWorkSize`, or for the Many forms in `pManyWorkSize`. Where it is
 * null, the call allocates what it needs and releases it again; where it is given, nothing is allocated. A size may be
 * 0, and nothing is needed then.
 *
 * Numeric class: transform. With u = 2^-24 for single and 2^-53 for double precision, the relative error in the 2-norm
 * stays below (sqrt(log2 N) + 2) * u where no prime factor of N exceeds 13, and below twice that for other lengths.
 * @{
 */

/** Which way a pair of transforms is divided by N, so that one undoes the other. */
typedef int VekxScale;
/** Values of #VekxScale. */
enum {
  vekxScaleNone = 0,    /**< neither way: both together multiply by N */
  vekxScaleForward = 1, /**< forward by 1/N */
  vekxScaleInverse = 2, /**< inverse by 1/N */
  vekxScaleBoth = 3     /**< both by 1/sqrt(N) */
};

/** What transforms of complex data need, in single precision. */
typedef struct VekxFFTSpec_32fc VekxFFTSpec_32fc;
/** The same in double precision. */
typedef struct VekxFFTSpec_64fc VekxFFTSpec_64fc;
/** What transforms of real data need, in single precision. */
typedef struct VekxFFTSpec_32f VekxFFTSpec_32f;
/** The same in double precision. */
typedef struct VekxFFTSpec_64f VekxFFTSpec_64f;

/**
 * @name Next fast length
 * Stores the smallest length from `len` on that no prime but 2, 3, 5 and 7 divides: the one to fill up with zeros to,
 * where the length of a transform is free.
 * @param len  1 to 2^27
 * @param pLen where the length is stored
 * @return in this order: null pLen #vekStsNullPtrErr, len below 1 or above 2^27 #vekStsSizeErr
 * @{
 */
VEK_API VekStatus vekxFFTGetFastLen(int len, int* pLen);
/** @} */

/**
 * @name Fourier transforms, buffer sizes
 * Stores the bytes of a spec for `len` points, of the work buffer of one transform, and of the one of many.
 * @param len           points of the transform, 1 to 2^27
 * @param pSpecSize     bytes of pSpecBuffer
 * @param pWorkSize     bytes of pWorkBuffer for one transform
 * @param pManyWorkSize bytes of pWorkBuffer for the Many forms, whatever their count and strides
 * @return in this order: a null pointer #vekStsNullPtrErr, len below 1 or above 2^27 #vekStsSizeErr
 * @{
 */
VEK_API VekStatus vekxFFTGetSize_32fc(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxFFTGetSize_64fc(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxFFTGetSize_32f(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
VEK_API VekStatus vekxFFTGetSize_64f(int len, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize);
/** @} */

/**
 * @name Fourier transforms, initialisation
 * Makes a spec for `len` points.
 * @param ppSpec where the address of the spec is stored
 * @param len    points of the transform, 1 to 2^27
 * @param scale  a #VekxScale
 * @return in this order: a null pointer #vekStsNullPtrErr, len below 1 or above 2^27 #vekStsSizeErr, no such scale
 *         #vekStsFftFlagErr, no memory (InitAlloc) #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxFFTInit_32fc(VekxFFTSpec_32fc** ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer);
VEK_API VekStatus vekxFFTInit_64fc(VekxFFTSpec_64fc** ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer);
VEK_API VekStatus vekxFFTInit_32f(VekxFFTSpec_32f** ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer);
VEK_API VekStatus vekxFFTInit_64f(VekxFFTSpec_64f** ppSpec, int len, VekxScale scale, Vek8u* pSpecBuffer);
VEK_API VekStatus vekxFFTInitAlloc_32fc(VekxFFTSpec_32fc** ppSpec, int len, VekxScale scale);
VEK_API VekStatus vekxFFTInitAlloc_64fc(VekxFFTSpec_64fc** ppSpec, int len, VekxScale scale);
VEK_API VekStatus vekxFFTInitAlloc_32f(VekxFFTSpec_32f** ppSpec, int len, VekxScale scale);
VEK_API VekStatus vekxFFTInitAlloc_64f(VekxFFTSpec_64f** ppSpec, int len, VekxScale scale);
/** @} */

/**
 * @name Fourier transforms, release
 * Releases a spec that an InitAlloc function made. One that lives in the caller's buffer, or was copied, stays as it
 * is.
 * @return null #vekStsNullPtrErr, not a spec of this kind #vekStsContextMatchErr
 * @{
 */
VEK_API VekStatus vekxFFTFree_32fc(VekxFFTSpec_32fc* pSpec);
VEK_API VekStatus vekxFFTFree_64fc(VekxFFTSpec_64fc* pSpec);
VEK_API VekStatus vekxFFTFree_32f(VekxFFTSpec_32f* pSpec);
VEK_API VekStatus vekxFFTFree_64f(VekxFFTSpec_64f* pSpec);
/** @} */

/**
 * @name Complex data
 * Transforms N complex numbers from pSrc to pDst. The source is kept; source and destination are the same array or do
 * not overlap. The `_I` forms work in place.
 * @return in this order: a null pSrc, pDst or pSpec #vekStsNullPtrErr, not a spec of this kind #vekStsContextMatchErr,
 *         no memory for the work buffer #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxFFTFwd_32fc(const Vek32fc* pSrc, Vek32fc* pDst, const VekxFFTSpec_32fc* pSpec,
                                  Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInv_32fc(const Vek32fc* pSrc, Vek32fc* pDst, const VekxFFTSpec_32fc* pSpec,
                                  Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwd_64fc(const Vek64fc* pSrc, Vek64fc* pDst, const VekxFFTSpec_64fc* pSpec,
                                  Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInv_64fc(const Vek64fc* pSrc, Vek64fc* pDst, const VekxFFTSpec_64fc* pSpec,
                                  Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwd_32fc_I(Vek32fc* pSrcDst, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInv_32fc_I(Vek32fc* pSrcDst, const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwd_64fc_I(Vek64fc* pSrcDst, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInv_64fc_I(Vek64fc* pSrcDst, const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer);
/** @} */

/**
 * @name Real data, spectrum of N/2+1 bins
 * Forward from N real numbers to the bins 0 .. N/2, and back. The imaginary parts of bin 0 and, for even N, of bin N/2
 * are stored as 0 and not read. The source is kept; source and destination are the same address or do not overlap. The
 * `_I` forms work in place: pSrcDst has room for 2*(N/2+1) real numbers, of which samples fill the first N.
 * @return in this order: a null pSrc, pDst or pSpec #vekStsNullPtrErr, not a spec of this kind #vekStsContextMatchErr,
 *         no memory for the work buffer #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxFFTFwd_32f32fc(const Vek32f* pSrc, Vek32fc* pDst, const VekxFFTSpec_32f* pSpec,
                                     Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInv_32fc32f(const Vek32fc* pSrc, Vek32f* pDst, const VekxFFTSpec_32f* pSpec,
                                     Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwd_32f32fc_I(Vek32f* pSrcDst, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInv_32fc32f_I(Vek32f* pSrcDst, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwd_64f64fc(const Vek64f* pSrc, Vek64fc* pDst, const VekxFFTSpec_64f* pSpec,
                                     Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInv_64fc64f(const Vek64fc* pSrc, Vek64f* pDst, const VekxFFTSpec_64f* pSpec,
                                     Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwd_64f64fc_I(Vek64f* pSrcDst, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInv_64fc64f_I(Vek64f* pSrcDst, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer);
/** @} */

/**
 * @name Real data, packed spectrum
 * The same with the spectrum packed into N real numbers: re X[0], then re X[k] and im X[k] for k = 1, 2 ..., for even N
 * re X[N/2] at the end. The source is kept; source and destination are the same array or do not overlap.
 * @return in this order: a null pSrc, pDst or pSpec #vekStsNullPtrErr, not a spec of this kind #vekStsContextMatchErr,
 *         no memory for the work buffer #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxFFTFwdPack_32f(const Vek32f* pSrc, Vek32f* pDst, const VekxFFTSpec_32f* pSpec,
                                     Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvPack_32f(const Vek32f* pSrc, Vek32f* pDst, const VekxFFTSpec_32f* pSpec,
                                     Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdPack_32f_I(Vek32f* pSrcDst, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvPack_32f_I(Vek32f* pSrcDst, const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdPack_64f(const Vek64f* pSrc, Vek64f* pDst, const VekxFFTSpec_64f* pSpec,
                                     Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvPack_64f(const Vek64f* pSrc, Vek64f* pDst, const VekxFFTSpec_64f* pSpec,
                                     Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdPack_64f_I(Vek64f* pSrcDst, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvPack_64f_I(Vek64f* pSrcDst, const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer);
/** @} */

/**
 * @name Many transforms
 * Transforms `count` arrays: element e of array t lies at pSrc[t * srcDistance + e * srcStride] and goes to
 * pDst[t * dstDistance + e * dstStride], each counted in elements of its own side. So the rows of a matrix of M columns
 * have stride 1 and distance M, its columns stride M and distance 1; both one after the other are a transform in two
 * dimensions. Short transforms go through the vector unit side by side.
 *
 * Source arrays may share elements: with distances below N they are the overlapping frames of a spectrogram. In the
 * destination either whole arrays lie one behind the other, dstDistance > (N-1) * dstStride, or they are interleaved as
 * columns are, dstStride > (count-1) * dstDistance (N the number of elements on that side); so the arrays share no
 * place. Source and destination do not overlap, or they begin at the same address with the same strides and distances,
 * and no elements are shared; for real data in place the strides are 1 and a distance in real numbers is twice the one
 * in complex numbers. The `_I` forms work in place; for real data `distance` counts real numbers, is even and at least
 * 2*(N/2+1).
 * @return in this order: a null pSrc, pDst or pSpec #vekStsNullPtrErr, not a spec of this kind #vekStsContextMatchErr,
 *         count below 1 #vekStsSizeErr, a stride or distance below 1 or elements of the destination that share a place
 *         #vekStsStrideErr, no memory for the work buffer #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxFFTFwdMany_32fc(const Vek32fc* pSrc, Vek32fc* pDst, Vek64s count, Vek64s srcStride,
                                      Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                      const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdMany_32fc_I(Vek32fc* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,
                                        const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvMany_32fc(const Vek32fc* pSrc, Vek32fc* pDst, Vek64s count, Vek64s srcStride,
                                      Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                      const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvMany_32fc_I(Vek32fc* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,
                                        const VekxFFTSpec_32fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdMany_64fc(const Vek64fc* pSrc, Vek64fc* pDst, Vek64s count, Vek64s srcStride,
                                      Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                      const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdMany_64fc_I(Vek64fc* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,
                                        const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvMany_64fc(const Vek64fc* pSrc, Vek64fc* pDst, Vek64s count, Vek64s srcStride,
                                      Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                      const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvMany_64fc_I(Vek64fc* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,
                                        const VekxFFTSpec_64fc* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdMany_32f32fc(const Vek32f* pSrc, Vek32fc* pDst, Vek64s count, Vek64s srcStride,
                                         Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                         const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvMany_32fc32f(const Vek32fc* pSrc, Vek32f* pDst, Vek64s count, Vek64s srcStride,
                                         Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                         const VekxFFTSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdMany_32f32fc_I(Vek32f* pSrcDst, Vek64s count, Vek64s distance, const VekxFFTSpec_32f* pSpec,
                                           Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvMany_32fc32f_I(Vek32f* pSrcDst, Vek64s count, Vek64s distance, const VekxFFTSpec_32f* pSpec,
                                           Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdMany_64f64fc(const Vek64f* pSrc, Vek64fc* pDst, Vek64s count, Vek64s srcStride,
                                         Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                         const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvMany_64fc64f(const Vek64fc* pSrc, Vek64f* pDst, Vek64s count, Vek64s srcStride,
                                         Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                         const VekxFFTSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTFwdMany_64f64fc_I(Vek64f* pSrcDst, Vek64s count, Vek64s distance, const VekxFFTSpec_64f* pSpec,
                                           Vek8u* pWorkBuffer);
VEK_API VekStatus vekxFFTInvMany_64fc64f_I(Vek64f* pSrcDst, Vek64s count, Vek64s distance, const VekxFFTSpec_64f* pSpec,
                                           Vek8u* pWorkBuffer);
/** @} */

/**
 * @name Products of spectra
 * For convolutions (Mul) and correlations (MulConj) of one's own: `len` bins, in the order in which the transforms
 * store them, are multiplied one by one.
 *
 *     Mul         pDst[k] = pSrc1[k] * pSrc2[k]          _I   pSrcDst[k] = pSrc[k] * pSrcDst[k]
 *     MulConj     pDst[k] = conj(pSrc1[k]) * pSrc2[k]    _I   pSrcDst[k] = conj(pSrc[k]) * pSrcDst[k]
 *     MulAdd      pSrcDst[k] = pSrcDst[k] + pSrc1[k] * pSrc2[k]
 *     MulConjAdd  pSrcDst[k] = pSrcDst[k] + conj(pSrc1[k]) * pSrc2[k]
 *
 * Products, sums and differences are rounded one by one: exact class. A destination is the same array as a source or
 * does not overlap it.
 * @return in this order: a null pointer #vekStsNullPtrErr, len below 1 #vekStsSizeErr
 * @{
 */
VEK_API VekStatus vekxFFTMul_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len);
VEK_API VekStatus vekxFFTMul_32fc_I(const Vek32fc* pSrc, Vek32fc* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulAdd_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulConj_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len);
VEK_API VekStatus vekxFFTMulConj_32fc_I(const Vek32fc* pSrc, Vek32fc* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulConjAdd_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pSrcDst, int len);
VEK_API VekStatus vekxFFTMul_64fc(const Vek64fc* pSrc1, const Vek64fc* pSrc2, Vek64fc* pDst, int len);
VEK_API VekStatus vekxFFTMul_64fc_I(const Vek64fc* pSrc, Vek64fc* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulAdd_64fc(const Vek64fc* pSrc1, const Vek64fc* pSrc2, Vek64fc* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulConj_64fc(const Vek64fc* pSrc1, const Vek64fc* pSrc2, Vek64fc* pDst, int len);
VEK_API VekStatus vekxFFTMulConj_64fc_I(const Vek64fc* pSrc, Vek64fc* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulConjAdd_64fc(const Vek64fc* pSrc1, const Vek64fc* pSrc2, Vek64fc* pSrcDst, int len);
/** @} */

/**
 * @name Products of packed spectra
 * The same for packed spectra of `len` = N real numbers.
 * @return in this order: a null pointer #vekStsNullPtrErr, len below 1 #vekStsSizeErr
 * @{
 */
VEK_API VekStatus vekxFFTMulPack_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len);
VEK_API VekStatus vekxFFTMulPack_32f_I(const Vek32f* pSrc, Vek32f* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulAddPack_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulConjPack_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len);
VEK_API VekStatus vekxFFTMulConjPack_32f_I(const Vek32f* pSrc, Vek32f* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulConjAddPack_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulPack_64f(const Vek64f* pSrc1, const Vek64f* pSrc2, Vek64f* pDst, int len);
VEK_API VekStatus vekxFFTMulPack_64f_I(const Vek64f* pSrc, Vek64f* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulAddPack_64f(const Vek64f* pSrc1, const Vek64f* pSrc2, Vek64f* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulConjPack_64f(const Vek64f* pSrc1, const Vek64f* pSrc2, Vek64f* pDst, int len);
VEK_API VekStatus vekxFFTMulConjPack_64f_I(const Vek64f* pSrc, Vek64f* pSrcDst, int len);
VEK_API VekStatus vekxFFTMulConjAddPack_64f(const Vek64f* pSrc1, const Vek64f* pSrc2, Vek64f* pSrcDst, int len);
/** @} */

/** The eight cosine and sine transforms. */
typedef int VekxTrigType;
/** Values of #VekxTrigType. */
enum {
  vekxDCT1 = 1, /**< cosine transform, type I */
  vekxDCT2 = 2, /**< cosine transform, type II */
  vekxDCT3 = 3, /**< cosine transform, type III */
  vekxDCT4 = 4, /**< cosine transform, type IV */
  vekxDST1 = 5, /**< sine transform, type I */
  vekxDST2 = 6, /**< sine transform, type II */
  vekxDST3 = 7, /**< sine transform, type III */
  vekxDST4 = 8  /**< sine transform, type IV */
};

/** How cosine and sine transforms are scaled. */
typedef int VekxTrigNorm;
/** Values of #VekxTrigNorm. */
enum {
  vekxTrigPlain = 0, /**< the sums as they stand */
  vekxTrigOrtho = 1  /**< orthonormal */
};

/** What a cosine or sine transform needs, in single precision. */
typedef struct VekxTrigSpec_32f VekxTrigSpec_32f;
/** The same in double precision. */
typedef struct VekxTrigSpec_64f VekxTrigSpec_64f;

/**
 * @name Cosine and sine transforms, buffer sizes
 * Stores the bytes of a spec for `len` points, of the work buffer of one transform, and of the one of many.
 * @param len           points of the transform, 1 to 2^27; #vekxDCT1 2 to 2^26 + 1; #vekxDST1 1 to 2^26 - 1
 * @param type          a #VekxTrigType
 * @param pSpecSize     bytes of pSpecBuffer
 * @param pWorkSize     bytes of pWorkBuffer for one transform
 * @param pManyWorkSize bytes of pWorkBuffer for the Many forms, whatever their count and strides
 * @return in this order: a null pointer #vekStsNullPtrErr, len out of range #vekStsSizeErr, no such type
 *         #vekStsFftFlagErr
 * @{
 */
VEK_API VekStatus vekxTrigGetSize_32f(int len, VekxTrigType type, Vek64s* pSpecSize, Vek64s* pWorkSize,
                                      Vek64s* pManyWorkSize);
VEK_API VekStatus vekxTrigGetSize_64f(int len, VekxTrigType type, Vek64s* pSpecSize, Vek64s* pWorkSize,
                                      Vek64s* pManyWorkSize);
/** @} */

/**
 * @name Cosine and sine transforms, initialisation
 * Makes a spec of the transform of `len` = N points:
 *
 *     DCT-I    X[k] = x[0] + (-1)^k x[N-1] + 2 sum over n = 1 .. N-2 of x[n] cos(pi k n / (N-1))
 *     DCT-II   X[k] = 2 sum of x[n] cos(pi k (2n+1) / (2N))
 *     DCT-III  X[k] = x[0] + 2 sum over n > 0 of x[n] cos(pi (2k+1) n / (2N))
 *     DCT-IV   X[k] = 2 sum of x[n] cos(pi (2k+1)(2n+1) / (4N))
 *     DST-I    X[k] = 2 sum of x[n] sin(pi (k+1)(n+1) / (N+1))
 *     DST-II   X[k] = 2 sum of x[n] sin(pi (k+1)(2n+1) / (2N))
 *     DST-III  X[k] = (-1)^k x[N-1] + 2 sum over n < N-1 of x[n] sin(pi (2k+1)(n+1) / (2N))
 *     DST-IV   X[k] = 2 sum of x[n] sin(pi (2k+1)(2n+1) / (4N))
 *
 * Plain transforms are these sums. Of the inverses, types I and IV are the same sums and II and III each other's,
 * divided by M = 2N (types II, III, IV), 2(N-1) (DCT-I) or 2(N+1) (DST-I). Orthonormal transforms are the sums divided
 * by sqrt(M), with x[0] and x[N-1] of DCT-I times sqrt(2) and X[0] and X[N-1] divided by it, X[0] of DCT-II and X[N-1]
 * of DST-II divided by sqrt(2), and x[0] of DCT-III and x[N-1] of DST-III times sqrt(2); their inverses are their
 * transposes.
 *
 * Types II and III become a real Fourier transform of N points by J. Makhoul's permutation ("A fast cosine transform in
 * one and two dimensions", 1980), type IV a complex one of N/2 points or, for odd N, a real one of N points by a
 * permutation with signs (S. C. Chan and K. L. Ho, "Fast algorithms for computing the discrete cosine transform",
 * 1992); type I is a real Fourier transform of M points.
 * @param ppSpec where the address of the spec is stored
 * @param len    points of the transform, 1 to 2^27; #vekxDCT1 2 to 2^26 + 1; #vekxDST1 1 to 2^26 - 1
 * @param type   a #VekxTrigType
 * @param norm   a #VekxTrigNorm
 * @return in this order: a null pointer #vekStsNullPtrErr, len out of range #vekStsSizeErr, no such type or norm
 *         #vekStsFftFlagErr, no memory (InitAlloc) #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxTrigInit_32f(VekxTrigSpec_32f** ppSpec, int len, VekxTrigType type, VekxTrigNorm norm,
                                   Vek8u* pSpecBuffer);
VEK_API VekStatus vekxTrigInit_64f(VekxTrigSpec_64f** ppSpec, int len, VekxTrigType type, VekxTrigNorm norm,
                                   Vek8u* pSpecBuffer);
VEK_API VekStatus vekxTrigInitAlloc_32f(VekxTrigSpec_32f** ppSpec, int len, VekxTrigType type, VekxTrigNorm norm);
VEK_API VekStatus vekxTrigInitAlloc_64f(VekxTrigSpec_64f** ppSpec, int len, VekxTrigType type, VekxTrigNorm norm);
/** @} */

/**
 * @name Cosine and sine transforms, release
 * Releases a spec that an InitAlloc function made. One that lives in the caller's buffer, or was copied, stays as it
 * is.
 * @return null #vekStsNullPtrErr, not a spec of this kind #vekStsContextMatchErr
 * @{
 */
VEK_API VekStatus vekxTrigFree_32f(VekxTrigSpec_32f* pSpec);
VEK_API VekStatus vekxTrigFree_64f(VekxTrigSpec_64f* pSpec);
/** @} */

/**
 * @name Cosine and sine transforms
 * The transform (Fwd) and its inverse (Inv), which undoes it. Source and destination are the same array or do not
 * overlap.
 * @return in this order: a null pSrc, pDst or pSpec #vekStsNullPtrErr, not a spec of this kind #vekStsContextMatchErr,
 *         no memory for the work buffer #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxTrigFwd_32f(const Vek32f* pSrc, Vek32f* pDst, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigInv_32f(const Vek32f* pSrc, Vek32f* pDst, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigFwd_32f_I(Vek32f* pSrcDst, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigInv_32f_I(Vek32f* pSrcDst, const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigFwd_64f(const Vek64f* pSrc, Vek64f* pDst, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigInv_64f(const Vek64f* pSrc, Vek64f* pDst, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigFwd_64f_I(Vek64f* pSrcDst, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigInv_64f_I(Vek64f* pSrcDst, const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer);
/** @} */

/**
 * @name Many cosine and sine transforms
 * Transforms `count` arrays, placed as those of the Fourier transforms are.
 * @return in this order: a null pSrc, pDst or pSpec #vekStsNullPtrErr, not a spec of this kind #vekStsContextMatchErr,
 *         count below 1 #vekStsSizeErr, a stride or distance below 1 or elements of the destination that share a place
 *         #vekStsStrideErr, no memory for the work buffer #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxTrigFwdMany_32f(const Vek32f* pSrc, Vek32f* pDst, Vek64s count, Vek64s srcStride,
                                      Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                      const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigFwdMany_32f_I(Vek32f* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,
                                        const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigInvMany_32f(const Vek32f* pSrc, Vek32f* pDst, Vek64s count, Vek64s srcStride,
                                      Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                      const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigInvMany_32f_I(Vek32f* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,
                                        const VekxTrigSpec_32f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigFwdMany_64f(const Vek64f* pSrc, Vek64f* pDst, Vek64s count, Vek64s srcStride,
                                      Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                      const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigFwdMany_64f_I(Vek64f* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,
                                        const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigInvMany_64f(const Vek64f* pSrc, Vek64f* pDst, Vek64s count, Vek64s srcStride,
                                      Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,
                                      const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer);
VEK_API VekStatus vekxTrigInvMany_64f_I(Vek64f* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,
                                        const VekxTrigSpec_64f* pSpec, Vek8u* pWorkBuffer);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
