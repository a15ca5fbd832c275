// SPDX-License-Identifier: Apache-2.0
#include "tests/fuzz/input.h"
namespace vektest { std::string fuzzStream(size_t, Input&) { return ""; } }
