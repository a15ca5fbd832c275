// SPDX-License-Identifier: Apache-2.0
// The version record of vekx, one for each slot.
#include "core/dispatch.h"
#include "core/slots.h"
#include "vekx/core.h"

namespace {

constexpr VekxVersion kRecords[] = {
#define VEK_SLOT_ROW(NAME, ...) {VEKX_VERSION, #NAME},
#include "core/slots.def"
};

}  // namespace

const VekxVersion* vekxGetVersion() {
  if (vek_variant_index == vek::kSlotCount) vek_choose_slot();  // called before anything else was
  return &kRecords[vek_variant_index];
}
