// SPDX-License-Identifier: Apache-2.0
// No data, however chosen, makes a function much slower than random data does.
#include <gtest/gtest.h>
#include <time.h>

#include "bench/support/adversaries.h"
#include "tests/support/slots.h"

namespace {

// Of this thread alone: other processes cannot lengthen it by more than what they evict.
double seconds(const std::function<void()>& run) {
  timespec from, to;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &from);
  run();
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &to);
  return double(to.tv_sec - from.tv_sec) + 1e-9 * double(to.tv_nsec - from.tv_nsec);
}

TEST(Pace, HostileDataTakesAtMostThreeTimesAsLong) {
  for (const vekbench::Adversary& a : vekbench::adversaries()) {
    vektest::inEverySlot([&](int) {
      // The shortest of a few rounds, and of many more before it is called slow.
      double ordinary = 1e9, hostile = 1e9;
      for (int round = 0; round < 3 || (round < 60 && hostile > 3 * ordinary); ++round) {
        ordinary = std::min(ordinary, seconds(a.ordinary));
        hostile = std::min(hostile, seconds(a.hostile));
      }
      EXPECT_LE(hostile, 3 * ordinary) << a.name;
      if (getenv("VEK_TEST_SHOW_PACE")) printf("%5.2f %s\n", hostile / ordinary, a.name.c_str());
    });
  }
}

}  // namespace
