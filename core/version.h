// SPDX-License-Identifier: Apache-2.0
// The version record of each variant slot.
#ifndef VEK_CORE_VERSION_H
#define VEK_CORE_VERSION_H

#include "vek/core.h"

namespace vek {

struct SlotName {
  char suffix[4];
  const char* name;
  const char* nameWithSse42;  // for a slot that serves processors with and without SSE4.2
};

constexpr SlotName kSlotNames[] = {
    {"mx", "vekSP PX (mx)", nullptr},
    {"m7", "vekSP SSE3 (m7)", nullptr},
    {"u8", "vekSP SSSE3 (u8)", nullptr},
    {"n8", "vekSP Lumen (n8)", nullptr},
    {"y8", "vekSP SSE4.1/4.2 (y8)", "vekSP SSE4.1/4.2 (y8)+"},
    {"e9", "vekSP AVX (e9)", nullptr},
    {"l9", "vekSP AVX2 (l9)", nullptr},
};

consteval VekLibVersion versionRecord(const char (&suffix)[4], const char* name) {
  return {8, 0, 1, 40318, {suffix[0], suffix[1], suffix[2], suffix[3]}, name, "8.0.1 (r40318)", "Jul 11 2013"};
}

}  // namespace vek

#endif
