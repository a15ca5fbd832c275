// SPDX-License-Identifier: Apache-2.0
// The loops of element-wise functions. A kernel is a functor that turns one block of L elements into another, by
// pointers: f(dst, src...). The driver owns everything around it: the main loop, destinations off alignment, the tail,
// and vectors shorter than a block. Head and tail are whole blocks that overlap the main loop; their results are
// formed before the main loop stores anything and stored after it, so a destination equal to a source works.
#ifndef VEK_CORE_SIMD_DRIVER_H
#define VEK_CORE_SIMD_DRIVER_H

#include "core/simd/compare.h"
#include "vek/types.h"

namespace vek::VEK_SLOT {
namespace {

// One block in local memory, for results that must wait and for vectors shorter than a block.
template <class T, int L>
struct Block {
  alignas(16) T x[L];  // what the stack gives for nothing; more would cost every call a realigned frame
};

template <class T, int L>
VEK_INLINE void copyBlock(T* to, const T* from) {
  if constexpr (L * sizeof(T) % 32 == 0) {
    for (size_t i = 0; i < L * sizeof(T); i += 32) store((uint8_t*)to + i, load((const uint8_t*)from + i));
  } else {
    __builtin_memcpy(to, from, L * sizeof(T));
  }
}

// Out of line: short vectors are rare, and every kernel would carry a copy.
VEK_NOINLINE void copyShort(void* to, const void* from, ptrdiff_t bytes) {
  char* d = static_cast<char*>(to);
  const char* s = static_cast<const char*>(from);
  for (; bytes > 32; bytes -= 32, d += 32, s += 32) store((uint8_t*)d, load((const uint8_t*)s));
  copyFew(d, s, bytes);
}

// Fewer than L elements: the block is filled up with copies of the first element, so that an operation which watches
// for special values (a zero divisor, say) meets none that the vector does not hold.
template <int L, class T>
VEK_INLINE Block<T, L> shortBlock(const T* src, ptrdiff_t n) {
  Block<T, L> b;
  for (int i = 0; i < L; ++i) b.x[i] = src[0];
  copyShort(b.x, src, n * ptrdiff_t(sizeof(T)));
  return b;
}

// Elements from dst to its next 32-byte boundary; 0 where there is none to gain or none to reach.
template <class D>
VEK_INLINE ptrdiff_t toAlignment(const D* dst) {
  const ptrdiff_t bytes = ptrdiff_t(-reinterpret_cast<uintptr_t>(dst) & 31);
  return 32 % sizeof(D) == 0 && bytes % ptrdiff_t(sizeof(D)) == 0 ? bytes / ptrdiff_t(sizeof(D)) : 0;
}

// Below this many blocks a misaligned destination costs less than the extra block that aligns it.
constexpr ptrdiff_t kAlignBlocks = 16;

// The loop around blocks of L elements, n >= L: make(i) forms the result of the block at i, put(i, result) stores it,
// step(i) does both at once.
template <int L, class D, class Make, class Put, class Step>
VEK_INLINE void drive(const D* dst, ptrdiff_t n, Make make, Put put, Step step) {
  const ptrdiff_t last = n - L;
  const auto tail = make(last);
  const ptrdiff_t toBoundary = n >= kAlignBlocks * L ? toAlignment(dst) : 0;
  ptrdiff_t i = toBoundary <= L ? toBoundary : 0;
  const bool aligns = i != 0;
  auto head = tail;
  if (aligns) head = make(0);
  for (; i + 4 * L <= last; i += 4 * L) {
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) step(i + k * L);
  }
  for (; i < last; i += L) step(i);
  if (aligns) put(0, head);
  put(last, tail);
}

template <int L, class F, class D, class... S>
VEK_INLINE void sweepShort(F f, D* dst, ptrdiff_t n, const S*... src) {
  Block<D, L> out;
  [&](auto... in) VEK_LAMBDA { f(out.x, in.x...); }(shortBlock<L>(src, n)...);
  copyShort(dst, out.x, n * ptrdiff_t(sizeof(D)));
}

template <int L, class F, class D, class... S>
VEK_INLINE void sweep(F f, D* dst, ptrdiff_t n, const S*... src) {
  if (n < L) return sweepShort<L>(f, dst, n, src...);
  const auto make = [&](ptrdiff_t i) VEK_LAMBDA {
    Block<D, L> b;
    f(b.x, (src + i)...);
    return b;
  };
  const auto put = [&](ptrdiff_t i, const Block<D, L>& b) VEK_LAMBDA { copyBlock<D, L>(dst + i, b.x); };
  drive<L>(dst, n, make, put, [&](ptrdiff_t i) VEK_LAMBDA { f(dst + i, (src + i)...); });
}

// Two destinations: f(dst1, dst2, src...).
template <int L, class F, class D1, class D2, class... S>
VEK_INLINE void sweepTwo(F f, D1* dst1, D2* dst2, ptrdiff_t n, const S*... src) {
  Block<D1, L> tail1;
  Block<D2, L> tail2;
  if (n < L) {
    [&](auto... in) VEK_LAMBDA { f(tail1.x, tail2.x, in.x...); }(shortBlock<L>(src, n)...);
    copyShort(dst1, tail1.x, n * ptrdiff_t(sizeof(D1)));
    copyShort(dst2, tail2.x, n * ptrdiff_t(sizeof(D2)));
    return;
  }
  const ptrdiff_t last = n - L;
  f(tail1.x, tail2.x, (src + last)...);
  ptrdiff_t i = 0;
  for (; i + 2 * L <= last; i += 2 * L) {
#pragma GCC unroll 2
    for (int k = 0; k < 2; ++k) f(dst1 + i + k * L, dst2 + i + k * L, (src + i + k * L)...);
  }
  for (; i < last; i += L) f(dst1 + i, dst2 + i, (src + i)...);
  copyBlock<D1, L>(dst1 + last, tail1.x);
  copyBlock<D2, L>(dst2 + last, tail2.x);
}

// The common case: one pack of each, all of one size. op takes packs and gives the pack to store, which waits in a
// register where it has to wait.
template <class Op, class D, class... S>
VEK_INLINE void mapPacks(Op op, D* dst, ptrdiff_t n, const S*... src) {
  constexpr int L = Pack<D>::lanes;
  if (n < L) return sweepShort<L>([op](D* d, const S*... s) VEK_LAMBDA { store(d, op(load(s)...)); }, dst, n, src...);
  const auto make = [&]([[maybe_unused]] ptrdiff_t i) VEK_LAMBDA { return op(load(src + i)...); };
  const auto put = [&](ptrdiff_t i, Pack<D> x) VEK_LAMBDA { store(dst + i, x); };
  drive<L>(dst, n, make, put, [&](ptrdiff_t i) VEK_LAMBDA { put(i, make(i)); });
}

// The parts of complex elements as a plain array of twice the length.
VEK_INLINE const float* parts(const Vek32fc* p) { return &p->re; }
VEK_INLINE float* parts(Vek32fc* p) { return &p->re; }
VEK_INLINE const int32_t* parts(const Vek32sc* p) { return &p->re; }
VEK_INLINE int32_t* parts(Vek32sc* p) { return &p->re; }

// Interleaved complex vectors of 8-byte elements, four to a pack; no element is ever split between two blocks.
template <class Op, class D, class... S>
VEK_INLINE void mapComplex(Op op, D* dst, ptrdiff_t n, const S*... src) {
  sweep<4>([op](D* d, const S*... s) VEK_LAMBDA { store(parts(d), op(load(parts(s))...)); }, dst, n, src...);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
