// SPDX-License-Identifier: Apache-2.0
// Calls a function on copies of its data at every kind of address: flush against guard pages in front and behind, and
// at each byte offset from alignment.
#ifndef VEK_TESTS_PLACEMENT_H
#define VEK_TESTS_PLACEMENT_H

#include "tests/support/guarded.h"

namespace vektest {

// f(pointer) for one array.
template <class T, class F>
void atEveryPlace(const std::vector<T>& values, F f, size_t shifts = 16) {
  Guarded<T> front(values, Flush::kFront);
  f(front.data());
  for (size_t shift = 0; shift < shifts; ++shift) {
    Guarded<T> back(values, Flush::kBack, shift);
    f(back.data());
  }
}

// f(pointer, pointer) for two, off alignment each by its own number of bytes.
template <class A, class B, class F>
void atEveryPlace(const std::vector<A>& a, const std::vector<B>& b, F f, size_t shifts = 16) {
  atEveryPlace(
      a,
      [&](const A* p) {
        for (size_t shift : {size_t(0), size_t(3), size_t(4)}) {
          Guarded<B> back(b, Flush::kBack, shift);
          f(p, back.data());
        }
      },
      shifts);
}

}  // namespace vektest

#endif
