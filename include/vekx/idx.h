// SPDX-License-Identifier: Apache-2.0
// Derived from the public prototypes by tools/derive.py; edits are lost.
// clang-format off
#ifndef VEKX_IDX_H
#define VEKX_IDX_H

#include "vek/api.h"

#include "vekx/core.h"
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
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
