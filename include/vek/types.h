// SPDX-License-Identifier: Apache-2.0
// Element types and the small enumerations that the functions share.
#ifndef VEK_TYPES_H
#define VEK_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_types Element types
 *
 * The types that the functions take, and the small enumerations that they share. Names end in the element type: the
 * number of bits, then u (unsigned), s (signed), f (floating point), and c where the element is complex: two parts,
 * real first, without padding, so that an array of them is a plain array of interleaved pairs.
 * @{
 */

typedef uint8_t Vek8u;   /**< unsigned, 8 bits */
typedef int8_t Vek8s;    /**< signed, 8 bits */
typedef uint16_t Vek16u; /**< unsigned, 16 bits */
typedef int16_t Vek16s;  /**< signed, 16 bits */
typedef uint16_t Vek16f; /**< IEEE 754 binary16, a storage format only. */
typedef uint32_t Vek32u; /**< unsigned, 32 bits */
typedef int32_t Vek32s;  /**< signed, 32 bits */
typedef float Vek32f;    /**< single precision */
typedef int64_t Vek64s;  /**< signed, 64 bits */
typedef uint64_t Vek64u; /**< unsigned, 64 bits */
typedef double Vek64f;   /**< double precision */

/** Complex number of two 16-bit parts. */
typedef struct Vek16sc {
  Vek16s re; /**< real part */
  Vek16s im; /**< imaginary part */
} Vek16sc;
/** Complex number of two 32-bit parts. */
typedef struct Vek32sc {
  Vek32s re; /**< real part */
  Vek32s im; /**< imaginary part */
} Vek32sc;
/** Complex number of two single-precision parts. */
typedef struct Vek32fc {
  Vek32f re; /**< real part */
  Vek32f im; /**< imaginary part */
} Vek32fc;
/** Complex number of two 64-bit parts. */
typedef struct Vek64sc {
  Vek64s re; /**< real part */
  Vek64s im; /**< imaginary part */
} Vek64sc;
/** Complex number of two double-precision parts. */
typedef struct Vek64fc {
  Vek64f re; /**< real part */
  Vek64f im; /**< imaginary part */
} Vek64fc;

/**
 * Unsigned 24-bit integer: three bytes, least significant first, no alignment. Functions address arrays of them by byte
 * pointers (`Vek8u*`, three bytes an element); the types exist to name the element and its size.
 */
typedef struct Vek24u {
  Vek8u byte[3]; /**< least significant first */
} Vek24u;
/** Signed 24-bit integer, in the same form. */
typedef struct Vek24s {
  Vek8u byte[3]; /**< least significant first */
} Vek24s;

/** Rounding of a conversion to integers. Every other value acts as #vekRoundHalfAway unless a function says otherwise.
 */
typedef int VekRoundMode;
/** Values of #VekRoundMode. */
enum {
  vekRoundTowardZero = 0,  /**< discard the fraction */
  vekRoundNearestEven = 1, /**< nearest integer, ties to even */
  vekRoundHalfAway = 2     /**< nearest integer, ties away from zero */
};

/** Which side of a level a threshold replaces. */
typedef int VekCompareOp;
/** Values of #VekCompareOp. */
enum {
  vekCompareLess = 0,   /**< replace elements below the level */
  vekCompareGreater = 4 /**< replace elements above the level */
};

/** What a reduction or a transform is asked to favour. */
typedef int VekHintAlgorithm;
/** Values of #VekHintAlgorithm. */
enum {
  vekAlgHintNone = 0,    /**< no preference */
  vekAlgHintFast = 1,    /**< speed: sums in single precision where a function says so */
  vekAlgHintAccurate = 2 /**< accuracy */
};

/** @} */

#ifdef __cplusplus
}
#endif

#endif
