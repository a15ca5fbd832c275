// SPDX-License-Identifier: Apache-2.0
// Running a test in every slot that the processor has.
#ifndef VEK_TESTS_SLOTS_H
#define VEK_TESTS_SLOTS_H

#include <gtest/gtest.h>
#include <stdlib.h>

#include <vector>

#include "core/dispatch.h"
#include "core/slots.h"
#include "vek.h"

namespace vektest {

inline const char* slotName(int slot) { return vek::kSlots[slot].name; }

inline const std::vector<int>& availableSlots() {
  static const std::vector<int> available = [] {
    Vek64u mask = 0;
    vekGetCpuFeatures(&mask, nullptr);
    std::vector<int> slots;
    for (int s = 0; s < vek::kSlotCount; ++s)
      if ((mask & vek::kSlots[s].needs) == vek::kSlots[s].needs) slots.push_back(s);
    // Under emulation, where time is dear, only the slot that detection would choose.
    if (getenv("VEK_TEST_CHOSEN_SLOT")) slots.erase(slots.begin(), slots.end() - 1);
    return slots;
  }();
  return available;
}

// Calls f(slot) with each available slot in force, and leaves the highest in force.
template <class F>
void inEverySlot(F f) {
  const std::vector<int> slots = availableSlots();
  for (int s : slots) {
    SCOPED_TRACE(std::string("slot ") + slotName(s));
    vek::setSlotForTest(s);
    f(s);
  }
  vek::setSlotForTest(slots.back());
}

}  // namespace vektest

#endif
