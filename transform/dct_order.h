// SPDX-License-Identifier: Apache-2.0
// The order in which a cosine transform takes its samples: evens from the front, odds from the back.
#ifndef VEK_TRANSFORM_DCT_ORDER_H
#define VEK_TRANSFORM_DCT_ORDER_H

#include "core/simd/interleave.h"

namespace vek::VEK_SLOT {
namespace {

// The odd samples may change their sign on the way: a sine transform is a cosine transform of those.
enum Odds { kPlainOdds, kNegatedOdds };

template <Odds O, class T>
VEK_INLINE Pack<T> signedOdds(Pack<T> x) {
  return O == kNegatedOdds ? x ^ broadcast(T(-0.0)) : x;
}

template <Odds O = kPlainOdds, class T>
void splitParity(const T* x, T* v, int64_t len) {
  constexpr int lanes = Pack<T>::lanes;
  int64_t i = 0;
  for (; 2 * (i + lanes) <= len; i += lanes) {
    const Two<T> s = deinterleave(load(x + 2 * i), load(x + 2 * i + lanes));
    store(v + i, s.a);
    store(v + len - i - lanes, reverse(signedOdds<O>(s.b)));
  }
  for (; 2 * i < len; ++i) {
    v[i] = x[2 * i];
    if (2 * i + 1 < len) v[len - 1 - i] = O == kNegatedOdds ? -x[2 * i + 1] : x[2 * i + 1];
  }
}
template <Odds O = kPlainOdds, class T>
void mergeParity(const T* v, T* x, int64_t len) {
  constexpr int lanes = Pack<T>::lanes;
  int64_t i = 0;
  for (; 2 * (i + lanes) <= len; i += lanes) {
    const Two<T> s = interleave(load(v + i), signedOdds<O>(reverse(load(v + len - i - lanes))));
    store(x + 2 * i, s.a);
    store(x + 2 * i + lanes, s.b);
  }
  for (; 2 * i < len; ++i) {
    x[2 * i] = v[i];
    if (2 * i + 1 < len) x[2 * i + 1] = O == kNegatedOdds ? -v[len - 1 - i] : v[len - 1 - i];
  }
}

// In place, for long powers of two: first inside chunks, then whole blocks move along the cycles of the permutation.
constexpr int kBlock = 1024;

struct BlockCycles {
  uint64_t done[1 << 11];  // a bit for each block of the longest transform
  alignas(64) float held[kBlock];
};

// x[block b] = x[block from(b)] for all b.
template <class F>
VEK_INLINE void permuteBlocks(float* x, int64_t blocks, F from) {
  BlockCycles c;
  __builtin_memset(c.done, 0, sizeof c.done);
  for (int64_t start = 0; start < blocks; ++start) {
    if (c.done[start >> 6] >> (start & 63) & 1) continue;
    __builtin_memcpy(c.held, x + start * kBlock, sizeof c.held);
    int64_t hole = start;
    for (;;) {
      c.done[hole >> 6] |= uint64_t(1) << (hole & 63);
      const int64_t next = from(hole);
      if (next == start) break;
      __builtin_memcpy(x + hole * kBlock, x + next * kBlock, sizeof c.held);
      hole = next;
    }
    __builtin_memcpy(x + hole * kBlock, c.held, sizeof c.held);
  }
}

VEK_NOINLINE void splitChunks(float* x, int64_t len) {
  alignas(64) float chunk[2 * kBlock];
  for (int64_t i = 0; i < len; i += 2 * kBlock) {
    splitParity(x + i, chunk, 2 * kBlock);
    __builtin_memcpy(x + i, chunk, sizeof chunk);
  }
}
VEK_NOINLINE void mergeChunks(float* x, int64_t len) {
  alignas(64) float chunk[2 * kBlock];
  for (int64_t i = 0; i < len; i += 2 * kBlock) {
    mergeParity(x + i, chunk, 2 * kBlock);
    __builtin_memcpy(x + i, chunk, sizeof chunk);
  }
}
VEK_NOINLINE void splitParityInPlace(float* x, int64_t len) {
  const int64_t blocks = len / kBlock;
  splitChunks(x, len);
  permuteBlocks(x, blocks, [=](int64_t b) VEK_LAMBDA { return 2 * b < blocks ? 2 * b : 2 * (blocks - 1 - b) + 1; });
}
VEK_NOINLINE void mergeParityInPlace(float* x, int64_t len) {
  const int64_t blocks = len / kBlock;
  permuteBlocks(x, blocks, [=](int64_t b) VEK_LAMBDA { return b % 2 == 0 ? b / 2 : blocks - 1 - b / 2; });
  mergeChunks(x, len);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
