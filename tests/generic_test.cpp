// SPDX-License-Identifier: Apache-2.0
// What holds for every function alike, driven by the list derived from the prototypes: a null pointer and a length
// below one are refused with nothing written, and the index-offset twin does what the function does. A new prototype is
// covered without a new line here.
#include "tests/support/generic.h"

#include <climits>

#include "tests/support/data.h"
#include "tests/support/slots.h"

namespace vektest {
namespace {

// Pointers whose absence means something, or is found out later.
bool mayBeNull(const Row& r, const Parameter& p) {
  static const std::set<std::string> always = {"pDlyLine", "pWorkBuffer", "pInitBuffer"};
  const std::string name = r.name;
  const bool indexForm = name.find("Indx_") != std::string::npos && name.find("MinMax") == std::string::npos;
  return always.count(p.name) || (indexForm && p.name == "pIndx") ||
         (name == "veksRealToCplx_32f" && p.name.substr(0, 4) == "pSrc");
}

bool judgesLengthFirst(const Row& r) {
  const std::string name = r.name;
  return name.find("WinBlackmanOpt") != std::string::npos ||
         (name.find("DCT") != std::string::npos && name.find("Init") != std::string::npos);
}

TEST(EveryFunction, RefusesNullPointers) {
  static const std::set<std::string> choices = {"int", "VekRoundMode", "VekCompareOp", "VekHintAlgorithm"};
  inEverySlot([](int) {
    int refused = 0;
    for (const Row& r : allRows()) {
      if (!r.returnsStatus) continue;
      for (size_t i = 0; i < r.parameters.size(); ++i) {
        const Parameter& p = r.parameters[i];
        if (p.type.back() != '*' || mayBeNull(r, p)) continue;
        Arena arena(r.parameters);
        Arena before(r.parameters);
        for (size_t k = 0; k < r.parameters.size(); ++k)
          if (r.parameters[k].type.back() == '*' && !r.parameters[k].array) before.blank(k), arena.blank(k);
        if (r.releases()) arena.objects.abandon();
        EXPECT_EQ(r.call(arena, int(i), -1, 0), vekStsNullPtrErr) << r.name << " without " << p.name;
        for (size_t k = 0; k < r.parameters.size(); ++k) {  // whatever else is wrong
          if (choices.count(r.parameters[k].type) == 0) continue;
          const bool first = judgesLengthFirst(r) && r.parameters[k].name == "len";
          EXPECT_EQ(r.call(arena, int(i), int(k), -1), first ? vekStsSizeErr : vekStsNullPtrErr)
              << r.name << " without " << p.name << ", " << r.parameters[k].name << " wrong";
        }
        EXPECT_TRUE(arena.sameAs(before, {})) << r.name << " wrote although " << p.name << " was null";
        ++refused;
      }
    }
    EXPECT_GT(refused, 1000);
  });
}

TEST(EveryFunction, RefusesLengthsBelowOne) {
  static const std::set<std::string> lengths = {"len", "srcLen", "src1Len", "src2Len", "dstLen", "numIters"};
  inEverySlot([](int) {
    int refused = 0;
    for (const Row& r : allRows()) {
      if (!r.returnsStatus) continue;
      for (size_t i = 0; i < r.parameters.size(); ++i) {
        if (!lengths.count(r.parameters[i].name)) continue;
        for (int value : {0, -1, INT_MIN}) {
          Arena arena(r.parameters), before(r.parameters);
          for (size_t k = 0; k < r.parameters.size(); ++k)
            if (r.parameters[k].type.back() == '*' && !r.parameters[k].array) before.blank(k), arena.blank(k);
          EXPECT_EQ(r.call(arena, -1, int(i), value), vekStsSizeErr)
              << r.name << " " << r.parameters[i].name << "=" << value;
          EXPECT_TRUE(arena.sameAs(before, {})) << r.name << " wrote although refused";
          ++refused;
        }
      }
    }
    EXPECT_GT(refused, 1300);
  });
}

TEST(EveryFunction, HasATwinThatDoesTheSame) {
  inEverySlot([](int) {
    for (const Row& r : allRows()) {
      if (!r.returnsStatus || r.releases()) continue;
      for (int null = -1; null < int(r.parameters.size()); ++null) {
        if (null >= 0 && r.parameters[size_t(null)].name != "pDlyLine") continue;
        Arena a(r.parameters), b(r.parameters);
        const VekStatus direct = r.call(a, null, -1, 0), twin = r.callTwin(b, null);
        EXPECT_EQ(direct, twin) << r.name;
        EXPECT_GE(direct, 0) << r.name << " refused arguments that are meant to be good";
        EXPECT_TRUE(a.sameAs(b, r.holdingAddresses())) << r.name;
        releaseMade(r.name, a.regions[0].get());
        releaseMade(r.name, b.regions[0].get());
      }
    }
  });
}

}  // namespace
}  // namespace vektest
