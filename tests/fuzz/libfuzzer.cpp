// SPDX-License-Identifier: Apache-2.0
// The fuzzer under libFuzzer, which chooses the bytes by what they reach. Run without arguments it goes on until it
// finds something; given a file it runs that input.
#include <stdio.h>
#include <stdlib.h>

#include "tests/fuzz/input.h"

extern "C" __attribute__((visibility("default"))) int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string problem = vektest::fuzz(data, size);
  if (problem.empty()) return 0;
  fprintf(stderr, "%s\n", problem.c_str());
  abort();
}
