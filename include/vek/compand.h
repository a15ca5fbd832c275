// SPDX-License-Identifier: Apache-2.0
// Companding by ITU-T G.711.
#ifndef VEK_COMPAND_H
#define VEK_COMPAND_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_compand Companding
 *
 * Between linear samples and the 8-bit logarithmic codes of ITU-T Recommendation G.711. Codes are in the transmitted
 * form: A-law with the even bits inverted (0xD5 and 0x55 are the smallest magnitudes), mu-law inverted (0xFF and 0x7F
 * are zero).
 *
 * The linear scale is that of 16-bit samples: an A-law reconstruction value is the 13-bit value of G.711 times 8
 * (0xD5 is 8, 0xAA is 32256), a mu-law value the 14-bit one times 4 (0x80 is 32124). Floating-point samples are the
 * 16-bit values divided by 32768.
 *
 * Checks, in order: a null pointer gives #vekStsNullPtrErr; `len` below 1 gives #vekStsSizeErr. Otherwise the result
 * is #vekStsNoErr. Source and destination must not overlap, except that the transcoders may work in place. Numeric
 * class of all functions: exact.
 * @{
 */

/**
 * @name Decoding
 * The reconstruction value of each code, for 32f times 2^-15.
 * @{
 */
VEK_API VekStatus veksALawToLin_8u16s(const Vek8u* pSrc, Vek16s* pDst, int len);
VEK_API VekStatus veksALawToLin_8u32f(const Vek8u* pSrc, Vek32f* pDst, int len);
VEK_API VekStatus veksMuLawToLin_8u16s(const Vek8u* pSrc, Vek16s* pDst, int len);
VEK_API VekStatus veksMuLawToLin_8u32f(const Vek8u* pSrc, Vek32f* pDst, int len);
/** @} */

/**
 * @name Encoding
 * The code whose interval holds the sample. A floating-point sample is first made a 16-bit one: times 32768, clamped
 * to -32768..32767, rounded with ties away from zero; NaN counts as 0.
 * @{
 */
VEK_API VekStatus veksLinToALaw_16s8u(const Vek16s* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksLinToALaw_32f8u(const Vek32f* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksLinToMuLaw_16s8u(const Vek16s* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksLinToMuLaw_32f8u(const Vek32f* pSrc, Vek8u* pDst, int len);
/** @} */

/**
 * @name Transcoding
 * From one law to the other by the conversion tables, which differ in some codes from decoding and encoding anew.
 * @{
 */
VEK_API VekStatus veksALawToMuLaw_8u(const Vek8u* pSrc, Vek8u* pDst, int len);
VEK_API VekStatus veksMuLawToALaw_8u(const Vek8u* pSrc, Vek8u* pDst, int len);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
