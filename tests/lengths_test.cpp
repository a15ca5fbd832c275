// SPDX-License-Identifier: Apache-2.0
// Every function without a state at every length, with arrays anywhere between guard pages: in each slot what slot mx
// gives with aligned arrays of their own, each in-place form what the other form gives, elements what their formulas
// give.
#include "tests/fuzz/input.h"
#include "tests/support/generic.h"

namespace vektest {
namespace {

TEST(Lengths, GiveTheSameEverywhere) {
  for (int length : sweepLengths(140, 520))
    for (size_t row = 0; row < allRows().size(); ++row) ASSERT_EQ(sweptCall(row, length), "") << "length " << length;
}

}  // namespace
}  // namespace vektest
