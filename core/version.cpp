// SPDX-License-Identifier: Apache-2.0
// The slot's version record.
#include "core/version.h"

#include "core/dispatch.h"
#include "core/slots.h"

namespace vek::VEK_SLOT {
namespace {

constexpr const SlotName& kNames = kSlotNames[VEK_SLOT_INDEX];
// The slot serves processors with and without SSE4.2, and tells them apart.
constexpr bool kAsksForSse42 = (kSlots[VEK_SLOT_INDEX].adds & VEK_FEATURE_SSE42) != 0;
constexpr VekLibVersion kRecord = versionRecord(kNames.suffix, kNames.name);
[[maybe_unused]] constexpr VekLibVersion kRecordWithSse42 = versionRecord(kNames.suffix, kNames.nameWithSse42);

}  // namespace

const VekLibVersion* veksGetLibVersion() {
  if constexpr (kAsksForSse42)
    if (featuresEnabled(VEK_FEATURE_SSE42)) return &kRecordWithSse42;
  return &kRecord;
}

}  // namespace vek::VEK_SLOT
