// SPDX-License-Identifier: Apache-2.0
// Element types and the small enumerations that the functions share.
#ifndef VEK_TYPES_H
#define VEK_TYPES_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t Vek8u;
typedef int8_t Vek8s;
typedef uint16_t Vek16u;
typedef int16_t Vek16s;
typedef uint16_t Vek16f; /**< IEEE 754 binary16, a storage format only. */
typedef uint32_t Vek32u;
typedef int32_t Vek32s;
typedef float Vek32f;
typedef int64_t Vek64s;
typedef uint64_t Vek64u;
typedef double Vek64f;

/** Complex numbers: two parts, real first, without padding; an array of them is a plain array of interleaved pairs. */
typedef struct Vek16sc {
  Vek16s re, im;
} Vek16sc;
typedef struct Vek32sc {
  Vek32s re, im;
} Vek32sc;
typedef struct Vek32fc {
  Vek32f re, im;
} Vek32fc;
typedef struct Vek64sc {
  Vek64s re, im;
} Vek64sc;
typedef struct Vek64fc {
  Vek64f re, im;
} Vek64fc;

/**
 * 24-bit integers: three bytes, least significant first, no alignment. Functions address arrays of them by byte
 * pointers (`Vek8u*`, three bytes an element); the types exist to name the element and its size.
 */
typedef struct Vek24u {
  Vek8u byte[3];
} Vek24u;
typedef struct Vek24s {
  Vek8u byte[3];
} Vek24s;

/** Rounding of a conversion to integers. Every other value acts as #vekRoundHalfAway unless a function says otherwise.
 */
typedef int VekRoundMode;
enum {
  vekRoundTowardZero = 0,  /**< discard the fraction */
  vekRoundNearestEven = 1, /**< nearest integer, ties to even */
  vekRoundHalfAway = 2     /**< nearest integer, ties away from zero */
};

/** Which side of a level a threshold replaces. */
typedef int VekCompareOp;
enum {
  vekCompareLess = 0,   /**< replace elements below the level */
  vekCompareGreater = 4 /**< replace elements above the level */
};

/** What a reduction or a transform is asked to favour. */
typedef int VekHintAlgorithm;
enum { vekAlgHintNone = 0, vekAlgHintFast = 1, vekAlgHintAccurate = 2 };

#ifdef __cplusplus
}
#endif

#endif
