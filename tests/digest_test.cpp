// SPDX-License-Identifier: Apache-2.0
// The digest of the exact families: the same in every slot, and the number that it always was.
#include "tools/digest.h"

#include <set>
#include <string>

#include "tests/support/slots.h"

namespace vektest {
namespace {

struct Step {
  std::string name;
  uint64_t hash;
};
std::vector<Step> steps;

void take(const char* name, VekStatus status, uint64_t hash) {
  EXPECT_GE(status, 0) << name;
  steps.push_back({name, hash});
}

TEST(Digest, IsTheSameInEverySlotAndStaysTheSame) {
  std::vector<Step> first;
  inEverySlot([&](int) {
    steps.clear();
    EXPECT_EQ(vekDigest(take), VEK_DIGEST);
    if (first.empty()) first = steps;
    // Hashes are chained: the first that differs names the function.
    for (size_t i = 0; i < steps.size(); ++i)
      if (steps[i].hash != first[i].hash) {
        ADD_FAILURE() << "call " << i << ", " << steps[i].name << ", differs from the lowest slot's";
        break;
      }
  });
}

}  // namespace
}  // namespace vektest
