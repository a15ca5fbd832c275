// SPDX-License-Identifier: Apache-2.0
// Derived from the public prototypes by tools/derive.py; edits are lost.
//
// One overload a function on std::span: the arrays carry their own lengths, which have to agree, and the element types
// choose the function. Where two functions take the same types the type tokens stay in the name. Arrays that do not
// fit each other, empty ones and those of more than INT_MAX elements are refused, with vekStsSizeErr unless the
// function finds another fault first.
// clang-format off
#ifndef VEKX_SPANS_HPP
#define VEKX_SPANS_HPP

#include <span>

#include "vek/lengths.hpp"
#include "vek/result.hpp"
#include "vekx.h"

namespace vek {


}  // namespace vek

#endif
