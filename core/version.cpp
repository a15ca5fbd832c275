// SPDX-License-Identifier: Apache-2.0
#include "core/version.h"

#include "core/dispatch.h"

namespace vek::VEK_SLOT {
namespace {

constexpr const SlotName& kNames = kSlotNames[VEK_SLOT_INDEX];
constexpr VekLibVersion kRecord = versionRecord(kNames.suffix, kNames.name);
[[maybe_unused]] constexpr VekLibVersion kRecordWithSse42 = versionRecord(kNames.suffix, kNames.nameWithSse42);

}  // namespace

const VekLibVersion* veksGetLibVersion() {
  if constexpr (kNames.nameWithSse42 != nullptr)
    if (featuresEnabled(VEK_FEATURE_SSE42)) return &kRecordWithSse42;
  return &kRecord;
}

}  // namespace vek::VEK_SLOT
