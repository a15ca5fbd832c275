// SPDX-License-Identifier: Apache-2.0
// Running a test in every slot that the processor has.
#ifndef VEK_TESTS_SLOTS_H
#define VEK_TESTS_SLOTS_H

#include <gtest/gtest.h>
#include <stdlib.h>

#include <vector>

#include "core/dispatch.h"
#include "vek.h"

namespace vektest {

inline const char* slotName(int slot) {
  static const char* const names[] = {"mx", "m7", "u8", "n8", "y8", "e9", "l9"};
  return names[slot];
}

// What each slot asks of the processor, as bits of the feature mask.
inline const std::vector<int>& availableSlots() {
  static const std::vector<int> available = [] {
    const Vek64u needs[] = {0,
                            VEK_FEATURE_SSE3,
                            VEK_FEATURE_SSSE3,
                            VEK_FEATURE_SSSE3 | VEK_FEATURE_MOVBE,
                            VEK_FEATURE_SSE41,
                            VEK_FEATURE_AVX | VEK_FEATURE_AVX_OS,
                            VEK_FEATURE_AVX | VEK_FEATURE_AVX_OS | VEK_FEATURE_AVX2};
    Vek64u mask = 0;
    vekGetCpuFeatures(&mask, nullptr);
    std::vector<int> slots;
    for (int s = 0; s < 7; ++s)
      if ((mask & needs[s]) == needs[s]) slots.push_back(s);
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
