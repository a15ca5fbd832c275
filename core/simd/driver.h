// SPDX-License-Identifier: Apache-2.0
// The loops of element-wise functions. A kernel is a functor that turns one block of L elements into another, by
// pointers: f(dst, src...). The driver owns everything around it: the main loop, destinations off alignment, the tail,
// and vectors shorter than a block. Head and tail are whole blocks that overlap the main loop; their results are
// formed before the main loop stores anything and stored after it, so a destination equal to a source works.
#ifndef VEK_CORE_SIMD_DRIVER_H
#define VEK_CORE_SIMD_DRIVER_H

#include "core/simd/shuffle.h"
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

// ---- vectors shorter than a block -----------------------------------------------------------------------------------

// Less than a pack in a register: the largest power of two of elements that fits from the front, beside it as many from
// the back, and copies of those, so that an operation which watches for special values (a zero divisor, say) meets none
// that the vector does not hold. Arrays of different types are put in the same order. `bytes` is the length.
template <class T>
VEK_INLINE Pack<T> loadShort(const T* src, ptrdiff_t bytes) {
  const char* p = reinterpret_cast<const char*>(src);
  const auto word32 = [](const char* from) VEK_LAMBDA {
    int32_t x;
    __builtin_memcpy(&x, from, 4);
    return _mm_cvtsi32_si128(x);
  };
  if (bytes >= 16) {
    return fromHalves<T>(_mm_loadu_si128((const __m128i_u*)p), _mm_loadu_si128((const __m128i_u*)(p + bytes - 16)));
  }
  __m128i h;
  if (sizeof(T) == 8 || bytes >= 8) {
    h = _mm_unpacklo_epi64(_mm_loadl_epi64((const __m128i_u*)p), _mm_loadl_epi64((const __m128i_u*)(p + bytes - 8)));
  } else if (sizeof(T) == 4 || bytes >= 4) {
    h = _mm_unpacklo_epi32(word32(p), word32(p + bytes - 4));
    h = _mm_unpacklo_epi64(h, h);
  } else {
    const uint8_t* b = reinterpret_cast<const uint8_t*>(p);
    uint32_t word = b[0] * 0x01010101u;
    if (sizeof(T) == 2 || bytes >= 2) word = b[0] | b[1] << 8 | b[bytes - 2] << 16 | uint32_t(b[bytes - 1]) << 24;
    h = _mm_shuffle_epi32(_mm_cvtsi32_si128(int(word)), 0);
  }
  return fromHalves<T>(h, h);
}

template <class T>
VEK_INLINE void storeShort(T* dst, Pack<T> x, ptrdiff_t bytes) {
  char* p = reinterpret_cast<char*>(dst);
  const __m128i h = half(x, 0);
  if (bytes >= 16) {
    _mm_storeu_si128((__m128i_u*)p, h);
    _mm_storeu_si128((__m128i_u*)(p + bytes - 16), half(x, 1));
  } else if (sizeof(T) == 8 || bytes >= 8) {
    _mm_storel_epi64((__m128i_u*)p, h);
    _mm_storel_epi64((__m128i_u*)(p + bytes - 8), _mm_unpackhi_epi64(h, h));
  } else if (sizeof(T) == 4 || bytes >= 4) {
    const int32_t first = _mm_cvtsi128_si32(h), last = _mm_cvtsi128_si32(_mm_srli_epi64(h, 32));
    __builtin_memcpy(p, &first, 4);
    __builtin_memcpy(p + bytes - 4, &last, 4);
  } else {
    const uint32_t word = uint32_t(_mm_cvtsi128_si32(h)), last = word >> 16;
    if (sizeof(T) == 2 || bytes >= 2) {
      p[0] = char(word), p[1] = char(word >> 8);
      p[bytes - 2] = char(last), p[bytes - 1] = char(last >> 8);
    } else {
      p[0] = char(word);
    }
  }
}

// The same order in memory, for a block of `Bytes` with elements like T.
template <int Bytes, class T>
VEK_INLINE void gatherShort(T* block, const T* src, ptrdiff_t bytes) {
  constexpr int rest = Bytes / 2 / int(sizeof(T));
  if constexpr (Bytes <= 32) {
    const Pack<T> x = loadShort(src, bytes);
    const __m128i h = half(x, 0);
    if constexpr (Bytes == 32) {
      store(block, x);
    } else {
      __builtin_memcpy(block, &h, Bytes);
    }
  } else if (bytes >= Bytes / 2) {
    copyBlock<T, rest>(block, src);
    copyBlock<T, rest>(block + rest, src + bytes / ptrdiff_t(sizeof(T)) - rest);
  } else {
    gatherShort<Bytes / 2>(block, src, bytes);
    copyBlock<T, rest>(block + rest, block);
  }
}
template <int Bytes, class T>
VEK_INLINE void scatterShort(T* dst, const T* block, ptrdiff_t bytes) {
  constexpr int rest = Bytes / 2 / int(sizeof(T));
  if constexpr (Bytes == 32) {
    storeShort(dst, load(block), bytes);
  } else if constexpr (Bytes < 32) {
    __m128i h = _mm_setzero_si128();
    __builtin_memcpy(&h, block, Bytes);
    storeShort(dst, withLowHalf<T>(h), bytes);
  } else if (bytes >= Bytes / 2) {
    copyBlock<T, rest>(dst, block);
    copyBlock<T, rest>(dst + bytes / ptrdiff_t(sizeof(T)) - rest, block + rest);
  } else {
    scatterShort<Bytes / 2>(dst, block, bytes);
  }
}

// Elements of a size that is a power of two are moved as integers.
template <class T>
constexpr bool kPowerOfTwoSize = (sizeof(T) & (sizeof(T) - 1)) == 0;

template <int L, class T>
VEK_INLINE Block<T, L> gatherBlock(const T* src, ptrdiff_t n) {
  Block<T, L> b;
  using U = UnsignedOf<T>;
  gatherShort<L* int(sizeof(T))>((U*)b.x, (const U*)src, n * ptrdiff_t(sizeof(T)));
  return b;
}

template <int L, class T>
VEK_INLINE void scatterBlock(T* dst, const Block<T, L>& b, ptrdiff_t n) {
  using U = UnsignedOf<T>;
  scatterShort<L* int(sizeof(T))>((U*)dst, (const U*)b.x, n * ptrdiff_t(sizeof(T)));
}

// Out of line and by the size of elements, so that the kernels of a file share them.
template <int L, class T>
VEK_NOINLINE void gatherOutside(T* block, const T* src, ptrdiff_t n) {
  gatherShort<L* int(sizeof(T))>(block, src, n * ptrdiff_t(sizeof(T)));
}
template <int L, class T>
VEK_NOINLINE void scatterOutside(T* dst, const T* block, ptrdiff_t n) {
  scatterShort<L* int(sizeof(T))>(dst, block, n * ptrdiff_t(sizeof(T)));
}
template <int L, class T>
VEK_NOINLINE void fillOutside(T* block, const T* src, ptrdiff_t n) {
  for (int i = 0; i < L; ++i) block[i] = src[0];
  copyShort(block, src, n * ptrdiff_t(sizeof(T)));
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
  // Vectors shorter than a block are spread, or where elements are no power of two filled up, in local memory.
  constexpr bool spread = kPowerOfTwoSize<D> && (kPowerOfTwoSize<S> && ...);
  alignas(16) unsigned char room[L * (sizeof(S) + ... + 0) + 1];
  size_t used = 0;
  const auto place = [&](const auto* s) VEK_LAMBDA {
    const auto block = reinterpret_cast<decltype(s)>(room + used);
    used += L * sizeof(*s);
    if constexpr (spread) {
      using U = UnsignedOf<RemoveConst<decltype(*s)>>;
      gatherOutside<L>((U*)block, (const U*)s, n);
    } else {
      using T = RemoveConst<decltype(*s)>;
      fillOutside<L>((T*)block, s, n);
    }
    return block;
  };
  const auto give = [&](const Result& result) VEK_LAMBDA {
    Block<D, L> out;
    put(out.x, result);
    if constexpr (spread) {
      using U = UnsignedOf<D>;
      scatterOutside<L>((U*)dst, (const U*)out.x, n);
    } else {
      copyShort(dst, out.x, n * ptrdiff_t(sizeof(D)));
    }
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
  if constexpr (kPowerOfTwoSize<D> && (kPowerOfTwoSize<S> && ...)) {
    [&](auto... in) VEK_LAMBDA { f(out.x, in.x...); }(gatherBlock<L>(src, n)...);
    scatterBlock(dst, out, n);
  } else {
    [&](auto... in) VEK_LAMBDA { f(out.x, in.x...); }(shortBlock<L>(src, n)...);
    copyShort(dst, out.x, n * ptrdiff_t(sizeof(D)));
  }
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

// The parts of complex elements as a plain array of twice the length.
VEK_INLINE const float* parts(const Vek32fc* p) { return &p->re; }
VEK_INLINE float* parts(Vek32fc* p) { return &p->re; }
VEK_INLINE const int32_t* parts(const Vek32sc* p) { return &p->re; }
VEK_INLINE int32_t* parts(Vek32sc* p) { return &p->re; }

// Interleaved complex vectors of 8-byte elements, four to a pack; no element is ever split between two blocks.
template <class Op, class D, class... S>
VEK_INLINE void mapComplex(Op op, D* dst, ptrdiff_t n, const S*... src) {
  sweep<4>(weighted<kWeightOf<Op>>([op](D* d, const S*... s) VEK_LAMBDA { store(parts(d), op(load(parts(s))...)); }),
           dst, n, src...);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
