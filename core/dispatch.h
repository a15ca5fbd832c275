// SPDX-License-Identifier: Apache-2.0
// The choice of the variant slot, made once when the library is loaded.
#ifndef VEK_CORE_DISPATCH_H
#define VEK_CORE_DISPATCH_H

#include <stdint.h>

#include "core/cpu.h"

extern "C" {
// The slot in force. The forwarding entries read it; until the library has been loaded it is kSlotCount, and the cell
// of that index in every table leads to vek_first_call. So no call, however early, and no state comes from another slot
// than all that follow.
extern __attribute__((visibility("hidden"))) int32_t vek_variant_index;

// The only slot of a library that is built with one, else -1.
extern __attribute__((visibility("hidden"))) const int32_t vek_only_slot;

// What vek_first_call does before it goes on with the call: chooses the slot.
__attribute__((visibility("hidden"))) void vek_choose_slot();
}

namespace vek {

// True if the slot in force may use every feature of the mask. For code that has a faster path on some of its slot's
// processors only.
bool featuresEnabled(uint64_t mask);

// Chooses the slot by the features of the processor. The result only tells the vendor, which has no influence:
// vekStsNoErr or vekStsNonOrvelCpu.
VekStatus initialiseDispatch(const CpuidSource& cpu);

// Puts a slot in force that this processor can run, with the features that it would have there. For tests, which link
// the objects; the shared library does not export it.
void setSlotForTest(int slot);

}  // namespace vek

#endif
