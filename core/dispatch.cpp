// SPDX-License-Identifier: Apache-2.0
// The choice of the slot when the library is loaded.
#include "core/dispatch.h"

#include "core/slots.h"

int32_t vek_variant_index = vek::kSlotCount;

namespace vek {
namespace {

uint64_t enabledFeatures;

void putInForce(const SlotChoice& choice) {
  enabledFeatures = choice.enabledFeatures;
  __atomic_store_n(&vek_variant_index, choice.slot, __ATOMIC_RELEASE);
}

// Before any constructor without a priority; whoever is even earlier chooses with his first call.
__attribute__((constructor(101))) void atLoad() { initialiseDispatch(nativeCpu); }

}  // namespace

bool featuresEnabled(uint64_t mask) { return (enabledFeatures & mask) == mask; }

VekStatus initialiseDispatch(const CpuidSource& cpu) {
  SlotChoice choice = chooseSlot(cpu);
  if (vek_only_slot >= 0) choice = {vek_only_slot, choice.enabledFeatures & usableInSlot(vek_only_slot)};
  putInForce(choice);
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

void vek_choose_slot() { vek::initialiseDispatch(vek::nativeCpu); }
