// SPDX-License-Identifier: Apache-2.0
// Results by their definition, apart from the library.
#ifndef VEK_TESTS_FUZZ_ROUNDED_H
#define VEK_TESTS_FUZZ_ROUNDED_H

#include <map>

#include "tests/fuzz/input.h"

namespace vektest {

struct Operand {
  Type type;
  bool result, written, readToo;  // a pointer to one result; something that the function may change; its source, too
  std::vector<char> before, after, model;
};
struct Operands {
  std::string name;
  std::map<std::string, int> ints;
  std::vector<Operand> arrays;
};

// By the function's name without prefix.
bool isReduction(const std::string& name);
bool isRounded(const std::string& name, int hint);

// What is wrong with the results of a call that was not refused.
//
// Exact ones of which a formula is known here; `after` is empty for constants.
std::string checkPlain(const Operands& call);
// Those with a bound, against higher precision. Where elements are not finite, results are as finite
// as those of the model.
std::string checkRounded(const Operands& call);

}  // namespace vektest

#endif
