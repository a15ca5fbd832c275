// SPDX-License-Identifier: Apache-2.0
#include "tests/support/heap.h"

#include <stdlib.h>

#include <algorithm>

extern "C" {
void* __real_malloc(size_t bytes);
void __real_free(void* block);
void* __wrap_malloc(size_t bytes);
void __wrap_free(void* block);
}

namespace vektest {

void* (*heapHook)(size_t bytes);

namespace {

constexpr int kMost = 256;
int left, asked, twice;
struct {
  void* block;
  bool back;
} blocks[kMost];
int used;

void* take(size_t bytes) {
  ++asked;
  if (left-- <= 0) return nullptr;
  if (used == kMost) abort();
  blocks[used] = {__real_malloc(bytes), false};
  return blocks[used++].block;
}

bool giveBack(void* block) {
  for (int i = 0; i < used; ++i) {
    if (blocks[i].block != block) continue;
    twice += blocks[i].back;
    return blocks[i].back = true;
  }
  return false;
}

}  // namespace

Heap::Heap(int granted) {
  left = granted;
  asked = twice = used = 0;
  heapHook = take;
}
Heap::~Heap() {
  heapHook = nullptr;
  for (int i = 0; i < used; ++i)
    if (blocks[i].back) __real_free(blocks[i].block);
  used = 0;
}
int Heap::requests() const { return asked; }
int Heap::out() const {
  return int(std::count_if(blocks, blocks + used, [](const auto& b) { return b.block && !b.back; }));
}
int Heap::doubled() const { return twice; }

}  // namespace vektest

void* __wrap_malloc(size_t bytes) { return vektest::heapHook ? vektest::heapHook(bytes) : __real_malloc(bytes); }

void __wrap_free(void* block) {
  if (!vektest::used || !vektest::giveBack(block)) __real_free(block);
}
