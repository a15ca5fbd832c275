// SPDX-License-Identifier: Apache-2.0
// The loops of element-wise functions. A kernel is a functor that turns one block of L elements into another, by
// pointers: f(dst, src...). The driver owns everything around it: the main loop, destinations off alignment, the tail,
// and vectors shorter than a block. Head and tail are whole blocks that overlap the main loop; their results are
// formed before the main loop stores anything and stored after it, so a destination equal to a source works.
#ifndef VEK_CORE_SIMD_DRIVER_H
#define VEK_CORE_SIMD_DRIVER_H

#include "core/simd/complex.h"
#include "core/simd/short.h"

namespace vek::VEK_SLOT {
namespace {

// Elements from dst to its next 32-byte boundary; 0 where there is none to gain or none to reach.
template <class D>
VEK_INLINE ptrdiff_t toAlignment(const D* dst) {
  const ptrdiff_t bytes = ptrdiff_t(-reinterpret_cast<uintptr_t>(dst) & 31);
  return 32 % sizeof(D) == 0 && bytes % ptrdiff_t(sizeof(D)) == 0 ? bytes / ptrdiff_t(sizeof(D)) : 0;
}

// Below this many blocks a misaligned destination costs less than the extra block that aligns it.
constexpr ptrdiff_t kAlignBlocks = 16;

// ---- vectors shorter than a block -----------------------------------------------------------------------------------

// Elements of a register's sizes are moved as integers.
template <class T, bool Plain = kFitsPack<1, T>>
struct MovedAsOf {
  using Type = T;
};
template <class T>
struct MovedAsOf<T, true> {
  using Type = UnsignedOf<T>;
};
template <class T>
using MovedAs = typename MovedAsOf<T>::Type;

// Out of line and by the size of elements, so that the kernels of a file share them.
template <int L, class T>
VEK_NOINLINE void gatherOutside(T* block, const T* src, ptrdiff_t n) {
  gatherShort<L>(block, src, n);
}
template <int L, class T>
VEK_NOINLINE void scatterOutside(T* dst, const T* block, ptrdiff_t n) {
  scatterShort<L>(dst, block, n);
}

// ---- loops ----------------------------------------------------------------------------------------------------------

// Every use of a functor is another copy of its code. Light ones, a few instructions, need several blocks a turn of the
// loop; the work of heavy ones hides the loop's own. Rare ones, whose caller is out of line, take a block at a time.
enum Weight { kLight, kHeavy, kRare };

// A functor that says what it weighs; the others are light.
template <Weight W, class F>
struct Weighted {
  F f;
  template <class... A>
  VEK_INLINE auto operator()(A... a) const {
    return f(a...);
  }
};
template <class F>
constexpr Weight kWeightOf = kLight;
template <Weight W, class F>
constexpr Weight kWeightOf<Weighted<W, F>> = W;
template <Weight W, class F>
VEK_INLINE Weighted<W, F> weighted(F f) {
  return {f};
}

// Blocks a turn: four where registers are wide, two where a pack takes two of them; half as many where the work is more
// or a block gives more than a pack, and one where it takes more than two.
template <class T>
constexpr bool kWideRegisters = kAvx2 || (kAvx && (kFloat<T> || kSame<T, Vek32fc>));
template <Weight W, int L, class D, class... S>
constexpr int blocksATurn() {
  int bytes = L * int(sizeof(D));
  ((bytes = bytes < L * int(sizeof(S)) ? L * int(sizeof(S)) : bytes), ...);
  if (kSmallCode || W == kRare || bytes > 64) return 1;
  return (kWideRegisters<D> ? 4 : 2) / (W == kLight && L * int(sizeof(D)) <= 32 ? 1 : 2);
}

// Blocks of L elements over vectors of any length. make(src...) forms the result of a block, put(dst, result) stores
// it, step(dst, src...) does both at once.
template <Weight W, int L, class Result, class Make, class Put, class Step, class D, class... S>
VEK_INLINE void drive(Make make, Put put, Step step, D* dst, ptrdiff_t n, const S*... src) {
  // Vectors shorter than a block are spread in local memory.
  alignas(16) unsigned char room[L * (sizeof(S) + ... + 0) + 1];
  size_t used = 0;
  const auto place = [&](const auto* s) VEK_LAMBDA {
    const auto block = reinterpret_cast<decltype(s)>(room + used);
    used += L * sizeof(*s);
    using U = MovedAs<RemoveConst<decltype(*s)>>;
    gatherOutside<L>((U*)block, (const U*)s, n);
    return block;
  };
  const auto give = [&](const Result& result) VEK_LAMBDA {
    Block<D, L> out;
    put(out.x, result);
    using U = MovedAs<D>;
    scatterOutside<L>((U*)dst, (const U*)out.x, n);
  };
  const ptrdiff_t last = n - L;
  if constexpr (W == kRare) {
    // One copy: a block is stored when the next has been formed, which may overlap it only if it is the last.
    const auto run = [&](const S*... at) VEK_LAMBDA {
      Result kept;
      ptrdiff_t i = 0, before = -1;
#pragma GCC unroll 1
      for (bool more = true; more;) {
        const Result next = make((at + i)...);
        if (before >= 0) put(dst + before, kept);
        kept = next;
        more = i < last;
        before = i;
        i = i + L < last ? i + L : last;
      }
      return kept;
    };
    const Result end = run((n < L ? place(src) : src)...);
    if (n < L) return give(end);
    return put(dst + last, end);
  }
  Result ends[2];
  const ptrdiff_t toBoundary = n >= kAlignBlocks * L ? toAlignment(dst) : 0;
  ptrdiff_t i = toBoundary <= L ? toBoundary : 0;
  const bool aligns = i != 0;
  // The last block and the first share a copy.
  const auto formEnds = [&](const S*... end) VEK_LAMBDA {
#pragma GCC unroll 1
    for (int k = 0; k <= int(aligns); ++k) ends[k] = make((k == 0 ? end : src)...);
  };
  formEnds((n < L ? place(src) : src + last)...);
  if (n < L) return give(ends[0]);
  constexpr int turn = blocksATurn<W, L, D, S...>();
  if constexpr (turn > 1) {
    for (; i + turn * L <= last; i += turn * L) {
#pragma GCC unroll 4
      for (int k = 0; k < turn; ++k) step(dst + i + k * L, (src + i + k * L)...);
    }
  }
#pragma GCC unroll 1
  for (; i < last; i += L) step(dst + i, (src + i)...);
  if (aligns) put(dst, ends[1]);
  put(dst + last, ends[0]);
}

// ---- whole vectors --------------------------------------------------------------------------------------------------

template <int L, Weight W, class F, class D, class... S>
VEK_INLINE void sweepBlocks(const F& f, D* dst, ptrdiff_t n, const S*... src) {
  const auto make = [&](const S*... at) VEK_LAMBDA {
    Block<D, L> b;
    f(b.x, at...);
    return b;
  };
  const auto put = [](D* at, const Block<D, L>& b) VEK_LAMBDA { copyBlock<D, L>(at, b.x); };
  drive<W, L, Block<D, L>>(
      make, put, [&](D* d, const S*... at) VEK_LAMBDA { f(d, at...); }, dst, n, src...);
}

// With wide registers, which most calls find, short vectors have a copy of a light functor of their own. The functor
// comes by reference to a copy: gcc forgets to clean the upper vector halves after a call that passes packs by value,
// and would keep one that has escaped out of registers.
template <int L, class F, class D, class... S>
VEK_NOINLINE void sweepShort(const F& f, D* dst, ptrdiff_t n, const S*... src) {
  Block<D, L> out;
  [&](auto... in) VEK_LAMBDA { f(out.x, in.x...); }(gatherBlock<L>(src, n)...);
  scatterBlock(dst, out, n);
}

template <int L, class F, class D, class... S>
VEK_INLINE void sweep(F f, D* dst, ptrdiff_t n, const S*... src) {
  if (kAvx2 && kWeightOf<F> == kLight && n < L) {
    const F copy = f;
    return sweepShort<L>(copy, dst, n, src...);
  }
  sweepBlocks<L, kWeightOf<F>>(f, dst, n, src...);
}

// Two destinations: f(dst1, dst2, src...).
template <int L, class F, class D1, class D2, class... S>
VEK_NOINLINE void sweepTwoShort(const F& f, D1* dst1, D2* dst2, ptrdiff_t n, const S*... src) {
  Block<D1, L> out1;
  Block<D2, L> out2;
  [&](auto... in) VEK_LAMBDA { f(out1.x, out2.x, in.x...); }(gatherBlock<L>(src, n)...);
  scatterBlock(dst1, out1, n);
  scatterBlock(dst2, out2, n);
}
template <int L, class F, class D1, class D2, class... S>
VEK_INLINE void sweepTwo(F f, D1* dst1, D2* dst2, ptrdiff_t n, const S*... src) {
  if (n < L) {
    const F copy = f;
    return sweepTwoShort<L>(copy, dst1, dst2, n, src...);
  }
  Block<D1, L> tail1;
  Block<D2, L> tail2;
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

// The common case: one pack of each, all of one size. op takes packs and gives the pack to store.
template <Weight W, class Op, class D, class... S>
VEK_INLINE void mapBlocks(const Op& op, D* dst, ptrdiff_t n, const S*... src) {
  const auto make = [&](const S*... at) VEK_LAMBDA { return op(load(at)...); };
  const auto put = [](D* at, Pack<D> x) VEK_LAMBDA { store(at, x); };
  drive<W, Pack<D>::lanes, Pack<D>>(
      make, put, [&](D* d, const S*... at) VEK_LAMBDA { store(d, op(load(at)...)); }, dst, n, src...);
}

template <class Op, class D, class... S>
VEK_INLINE void mapPacks(Op op, D* dst, ptrdiff_t n, const S*... src) {
  if (n < 1) return;
  if (kAvx2 && kWeightOf<Op> != kRare && n < Pack<D>::lanes) {
    [[maybe_unused]] const ptrdiff_t bytes = n * ptrdiff_t(sizeof(D));
    storeShort(dst, op(loadShort(src, bytes)...), bytes);
    return;
  }
  mapBlocks<kWeightOf<Op>>(op, dst, n, src...);
}

// Interleaved complex vectors of 8-byte elements, four to a pack; no element is ever split between two blocks.
template <class Op, class D, class... S>
VEK_INLINE void mapComplex(Op op, D* dst, ptrdiff_t n, const S*... src) {
  sweep<4>(weighted<kWeightOf<Op>>([op](D* d, const S*... s) VEK_LAMBDA { store(parts(d), op(load(parts(s))...)); }),
           dst, n, src...);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
