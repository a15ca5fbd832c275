// SPDX-License-Identifier: Apache-2.0
// Functions whose results may differ between slots within a bound: by their definition, in higher precision.
#ifndef VEK_TESTS_FUZZ_ROUNDED_H
#define VEK_TESTS_FUZZ_ROUNDED_H

#include <map>

#include "tests/fuzz/input.h"

namespace vektest {

struct Operand {
  Type type;
  bool result, written;  // a pointer to one result; something that the function may change
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

// What is wrong with the results of a call that was not refused. Where elements are not finite, results are as finite
// as those of the model.
std::string checkRounded(const Operands& call);

}  // namespace vektest

#endif
