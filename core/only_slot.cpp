// SPDX-License-Identifier: Apache-2.0
// Compiled once for the libraries that choose a slot, and with VEK_ONLY_SLOT for each that has only one.
#include "core/dispatch.h"
#include "core/slots.h"

#ifndef VEK_ONLY_SLOT
#define VEK_ONLY_SLOT -1
#endif

const int32_t vek_only_slot = VEK_ONLY_SLOT;
