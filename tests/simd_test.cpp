// SPDX-License-Identifier: Apache-2.0
// The layer that kernels are written on, in every slot: its checks are compiled once for each (tests/simd/), this
// program calls those that the processor can run.
#include <gtest/gtest.h>

#include <map>
#include <string>

#include "support/guarded.h"
#include "support/slots.h"

#define VEK_SLOT_ROW(slot, ...) \
  namespace vek::slot {         \
  void checkLanes();            \
  void checkPlaces();           \
  }
#include "core/slots.def"
#undef VEK_SLOT_ROW

namespace {

struct SlotChecks {
  void (*lanes)();
  void (*places)();
};
#define VEK_SLOT_ROW(slot, ...) {vek::slot::checkLanes, vek::slot::checkPlaces},
constexpr SlotChecks kChecks[] = {
#include "core/slots.def"
};
#undef VEK_SLOT_ROW

std::map<std::string, int> failures;

}  // namespace

void simdFailure(const char* slot, const char* operation, const char* type, uint64_t a, uint64_t b, uint64_t got,
                 uint64_t want) {
  // The first few of each tell enough.
  if (++failures[std::string(slot) + operation + type] > 3) return;
  ADD_FAILURE() << slot << ": " << operation << " (" << type << ") of " << std::hex << a << ", " << b << " gives "
                << got << " and not " << want;
}

uint8_t* simdGuarded(int64_t n, bool front) {
  using Room = vektest::Guarded<uint8_t>;
  static Room* rooms[4];  // a check holds fewer at a time
  static int turn = 0;
  Room*& room = rooms[turn++ % 4];
  delete room;
  room = new Room(size_t(n), front ? vektest::Flush::kFront : vektest::Flush::kBack);
  return room->data();
}

TEST(Simd, LaneByLane) {
  for (int slot : vektest::availableSlots()) kChecks[slot].lanes();
}
TEST(Simd, PlacesAndTotals) {
  for (int slot : vektest::availableSlots()) kChecks[slot].places();
}
