// SPDX-License-Identifier: Apache-2.0
// Random data and data chosen to be slow on, side by side.
#include "bench/support/adversaries.h"
#include "bench/support/rows.h"

int main(int argc, char** argv) {
  for (const vekbench::Adversary& a : vekbench::adversaries())
    for (auto& [label, slot] : vekbench::slotsToTime()) {
      vekbench::registerRow("adversarial_" + a.name + "_random/" + label, a.elements, slot, a.ordinary);
      vekbench::registerRow("adversarial_" + a.name + "/" + label, a.elements, slot, a.hostile);
    }
  return vekbench::runAll(argc, argv);
}
