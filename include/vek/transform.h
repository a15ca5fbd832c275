// SPDX-License-Identifier: Apache-2.0
#ifndef VEK_TRANSFORM_H
#define VEK_TRANSFORM_H

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
