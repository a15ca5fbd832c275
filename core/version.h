// SPDX-License-Identifier: Apache-2.0
// The version record of each variant slot.
#ifndef VEK_CORE_VERSION_H
#define VEK_CORE_VERSION_H

#include "vek/core.h"

namespace vek {

struct SlotName {
  char suffix[4];
  const char *name, *nameWithSse42;
};

constexpr SlotName kSlotNames[] = {
#define VEK_SLOT_ROW(NAME, BELOW, FLAGS, NEEDS, ADDS, RECORD, ...) {#NAME, RECORD, RECORD "+"},
#include "core/slots.def"
};

consteval VekLibVersion versionRecord(const char (&suffix)[4], const char* name) {
  return {8, 0, 1, 40318, {suffix[0], suffix[1], suffix[2], suffix[3]}, name, "8.0.1 (r40318)", "Jul 11 2013"};
}

}  // namespace vek

#endif
