// SPDX-License-Identifier: Apache-2.0
// The dispatch tables: no cell is empty, and each is called.
#include "tests/support/generic.h"
#include "tests/support/slots.h"

#define VEK_FUNCTION(NAME, RESULT, PARAMETERS) extern "C" decltype(&NAME) const vek_table_##NAME[8];
#include "vek/functions.inc"
#include "vekx/functions.inc"
#undef VEK_FUNCTION

namespace vektest {
namespace {

TEST(Tables, HoldAFormOfEveryFunctionForEachSlot) {
#define VEK_FUNCTION(NAME, RESULT, PARAMETERS) \
  for (auto form : vek_table_##NAME) EXPECT_TRUE(form != nullptr) << #NAME;
#include "vek/functions.inc"
#include "vekx/functions.inc"
#undef VEK_FUNCTION
}

TEST(Tables, EveryCellWorks) {
  inEverySlot([](int) {
    for (const Row& r : allRows()) {
      Arena arena(r.parameters);
      RawCall call = r.raw(arena);
      vek_raw_call(&call);
      const bool good = !r.returnsStatus || VekStatus(call.result) >= 0;
      EXPECT_TRUE(good) << r.name;
      if (r.releases()) {
        arena.objects.abandon();
      } else if (r.returnsStatus) {
        releaseMade(r.name, arena.regions[0].get());
      } else if (std::string(r.name).find("Malloc") != std::string::npos) {
        veksFree(reinterpret_cast<void*>(call.result));
      }
    }
  });
}

}  // namespace
}  // namespace vektest
