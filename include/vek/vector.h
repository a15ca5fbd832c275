// SPDX-License-Identifier: Apache-2.0
#ifndef VEK_VECTOR_H
#define VEK_VECTOR_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

VEK_API VekStatus veksSwapBytes_16u(const Vek16u* pSrc, Vek16u* pDst, int len);

#ifdef __cplusplus
}
#endif

#endif
