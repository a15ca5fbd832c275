// SPDX-License-Identifier: Apache-2.0
// Callers may run with floating-point traps on: on ordinary data no function raises a flag that its arithmetic does
// not, be it in lanes that no element uses or on what lies behind the arrays.
#include <string.h>
#include <xmmintrin.h>

#include <algorithm>

#include "tests/support/generic.h"
#include "tests/support/slots.h"

namespace vektest {
namespace {

constexpr unsigned kTraps = _MM_EXCEPT_INVALID | _MM_EXCEPT_DIV_ZERO | _MM_EXCEPT_OVERFLOW;

unsigned flagsOf(RawCall& call) {
  vek_raw_call(&call);
  return call.mxcsr & kTraps;
}

int callAll() {
  int called = 0;
  for (const Row& row : allRows()) {
    Arena arena(row.parameters);
    for (size_t i = 0; i < arena.regions.size(); ++i)  // divisors among them
      std::replace(arena.regions[i].get(), arena.regions[i].get() + arena.sizes[i], char(0), char(1));
    RawCall call = row.raw(arena);
    const unsigned flags = flagsOf(call);
    EXPECT_EQ(flags, 0u) << row.name << (flags & _MM_EXCEPT_INVALID ? " is invalid" : "")
                         << (flags & _MM_EXCEPT_DIV_ZERO ? " divides by zero" : "")
                         << (flags & _MM_EXCEPT_OVERFLOW ? " overflows" : "");
    ++called;
    if (row.releases()) {
      arena.objects.abandon();
    } else if (row.returnsStatus) {
      releaseMade(row.name, arena.regions[0].get());
    } else if (strstr(row.name, "Malloc")) {
      veksFree(reinterpret_cast<void*>(call.result));
    }
  }
  return called;
}

TEST(Flags, AreSeen) {
  const Vek32f x[9] = {1, 1, 1, 1, 1, 1, 1, 1, 1}, zero[9] = {};
  Vek32f y[9];
  RawCall call = rawCall(reinterpret_cast<const void*>(&veksDiv_32f),
                         {argumentOf(&zero[0]), argumentOf(&x[0]), argumentOf(&y[0]), argumentOf(9)});
  EXPECT_EQ(flagsOf(call), unsigned(_MM_EXCEPT_DIV_ZERO));
}

TEST(Flags, NoneOnOrdinaryData) {
  inEverySlot([](int) {
    for (exactLength = 1; exactLength <= 40; ++exactLength) {
      SCOPED_TRACE(testing::Message() << "length " << exactLength);
      EXPECT_GT(callAll(), 500);
    }
    exactLength = 0;
    lengthScale = 80;
    EXPECT_GT(callAll(), 500);
    lengthScale = 1;
  });
}

}  // namespace
}  // namespace vektest
