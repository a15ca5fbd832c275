// SPDX-License-Identifier: Apache-2.0
#include "core/dispatch.h"

#include "core/slots.h"

int32_t vek_variant_index;

namespace vek {
namespace {

uint64_t enabledFeatures;

void putInForce(const SlotChoice& choice) {
  vek_variant_index = choice.slot;
  enabledFeatures = choice.enabledFeatures;
}

__attribute__((constructor)) void atLoad() { initialiseDispatch(nativeCpu); }

}  // namespace

bool featuresEnabled(uint64_t mask) { return (enabledFeatures & mask) == mask; }

VekStatus initialiseDispatch(const CpuidSource& cpu) {
  putInForce(chooseSlot(cpu));
  return isCheckedVendor(cpu) ? vekStsNoErr : vekStsNonOrvelCpu;
}

void setSlotForTest(int slot) {
  static uint64_t detected = 0;  // asked once: CPUID in a virtual machine takes longer than most tests' calls
  if (detected == 0) {
    detected = usableInSlot(kSlot_mx);
    detectFeatures(nativeCpu, &detected);
  }
  putInForce({slot, enabledInSlot(slot, detected)});
}

}  // namespace vek
