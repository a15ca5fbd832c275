// SPDX-License-Identifier: Apache-2.0
// The heap as a test wants it: the linker leads the calls of malloc and free in the library's objects here, so that the
// library needs no hook of its own.
#ifndef VEK_TESTS_HEAP_H
#define VEK_TESTS_HEAP_H

#include <limits.h>
#include <stddef.h>

namespace vektest {

// Stands in for malloc while it is set.
extern void* (*heapHook)(size_t bytes);

// Counts while it lives, and grants the first `granted` requests only. Blocks that are given back stay readable until
// it ends, so that a use after the release is seen by what it answers. One at a time.
class Heap {
 public:
  explicit Heap(int granted = INT_MAX);
  ~Heap();
  Heap(const Heap&) = delete;
  Heap& operator=(const Heap&) = delete;
  int requests() const;
  int out() const;      // blocks that were taken and not given back
  int doubled() const;  // releases of what had been given back
};

}  // namespace vektest

#endif
