// SPDX-License-Identifier: Apache-2.0
#ifndef VEK_MATH_H
#define VEK_MATH_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

#ifdef __cplusplus
}
#endif

#endif
