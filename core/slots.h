// SPDX-License-Identifier: Apache-2.0
// The slot table of slots.def as C++ data.
#ifndef VEK_CORE_SLOTS_H
#define VEK_CORE_SLOTS_H

#include <stdint.h>

#include "vek/core.h"

namespace vek {

// The numbers of the slots: kSlot_mx and so on.
enum SlotNumber : int32_t {
#define VEK_SLOT_ROW(NAME, ...) kSlot_##NAME,
#include "core/slots.def"
  kSlotCount
};

struct SlotRow {
  const char* name;
  int32_t below;
  uint64_t needs, adds;
};

inline constexpr SlotRow kSlots[] = {
#define VEK_SLOT_ROW(NAME, BELOW, FLAGS, NEEDS, ADDS, ...) {#NAME, kSlot_##BELOW, NEEDS, ADDS},
#include "core/slots.def"
};

// The features that code of the slot may ask for.
constexpr uint64_t usableInSlot(int32_t slot) {
  uint64_t usable = kSlots[slot].adds;
  while (slot != kSlots[slot].below) usable |= kSlots[slot = kSlots[slot].below].adds;
  return usable;
}

}  // namespace vek

#endif
