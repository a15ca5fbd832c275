// SPDX-License-Identifier: Apache-2.0
// The frame of vekx: its version and the texts of statuses.
#ifndef VEKX_CORE_H
#define VEKX_CORE_H

#include "vek/api.h"
#include "vek/status.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vekx_core Frame of the second library
 *
 * vekx chooses its slot as vek does, by the same features, when it is loaded. The two libraries need each other for
 * nothing; a program that uses both meets the same element types, statuses and conventions.
 * @{
 */

/** The version of these headers. */
#define VEKX_VERSION "1.0.0"

/** Version record. Constant; never freed. */
typedef struct VekxVersion {
  const char* version; /**< #VEKX_VERSION of the library */
  const char* slot;    /**< the slot in force: mx, m7, u8, n8, y8, e9 or l9 */
} VekxVersion;

/** The version of the library and the slot that it runs in. */
VEK_API const VekxVersion* vekxGetVersion(void);

/**
 * Text of a status code: the code's name, a colon and a sentence. Both libraries have this function, so that neither
 * needs the other for it.
 *
 * @param status any value; a code without a row gives the text of #vekStsUnknownStatusCodeErr
 * @return constant text, never null; not to be freed or written
 */
VEK_API const char* vekGetStatusString(VekStatus status);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
