// SPDX-License-Identifier: Apache-2.0
// Fewer elements than a block. Where every element is dealt with by itself they are spread: the largest power of two of
// them from the front, beside it as many from the back, and copies of those, so that an operation which watches for
// special values (a zero divisor, say) meets none that the vector does not hold. All arrays of a call are put in the
// same order, whatever their types. Where places matter (sums, windows, generators) they stay in order.
#ifndef VEK_CORE_SIMD_SHORT_H
#define VEK_CORE_SIMD_SHORT_H

#include "core/simd/halves.h"

namespace vek::VEK_SLOT {
namespace {

// ---- in order -------------------------------------------------------------------------------------------------------

template <class W>
VEK_INLINE void copyEnds(char* to, const char* from, ptrdiff_t bytes) {
  // Two moves that overlap cover every count from sizeof(W) to twice that.
  W head, tail;
  __builtin_memcpy(&head, from, sizeof(W));
  __builtin_memcpy(&tail, from + bytes - sizeof(W), sizeof(W));
  __builtin_memcpy(to, &head, sizeof(W));
  __builtin_memcpy(to + bytes - sizeof(W), &tail, sizeof(W));
}

// 0..32 bytes by at most two moves and never a byte outside them.
VEK_INLINE void copyFew(void* to, const void* from, ptrdiff_t bytes) {
  char* d = static_cast<char*>(to);
  const char* s = static_cast<const char*>(from);
  if (bytes >= 16) {
    copyEnds<__m128i_u>(d, s, bytes);
  } else if (bytes >= 8) {
    copyEnds<uint64_t>(d, s, bytes);
  } else if (bytes >= 4) {
    copyEnds<uint32_t>(d, s, bytes);
  } else if (bytes >= 2) {
    copyEnds<uint16_t>(d, s, bytes);
  } else if (bytes == 1) {
    *d = *s;
  }
}

// The first n < lanes elements; the other lanes are zero.
template <class T>
VEK_INLINE Pack<T> loadPart(const T* p, ptrdiff_t n) {
  alignas(32) T block[Pack<T>::lanes] = {};
  copyFew(block, p, n * ptrdiff_t(sizeof(T)));
  return load(block);
}

template <class T>
VEK_INLINE void storePart(T* p, Pack<T> x, ptrdiff_t n) {
  alignas(32) T block[Pack<T>::lanes];
  store(block, x);
  copyFew(p, block, n * ptrdiff_t(sizeof(T)));
}

// Out of line: short vectors are rare, and every kernel would carry a copy.
VEK_NOINLINE void copyShort(void* to, const void* from, ptrdiff_t bytes) {
  char* d = static_cast<char*>(to);
  const char* s = static_cast<const char*>(from);
  for (; bytes > 32; bytes -= 32, d += 32, s += 32) store((uint8_t*)d, load((const uint8_t*)s));
  copyFew(d, s, bytes);
}

// ---- spread, in a register ------------------------------------------------------------------------------------------

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

// ---- spread, in memory ----------------------------------------------------------------------------------------------

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

// Elements of 1, 2, 4 or 8 bytes, L of which fit a pack, go through a register as integers.
template <int L, class T>
constexpr bool kFitsPack = (sizeof(T) & (sizeof(T) - 1)) == 0 && L * sizeof(T) <= 32;

// 1 <= n < L elements to a block of L, a power of two, and back.
template <int L, class T>
VEK_INLINE void gatherShort(T* block, const T* src, ptrdiff_t n) {
  if constexpr (kFitsPack<L, T>) {
    using U = UnsignedOf<T>;
    const Pack<U> x = loadShort(reinterpret_cast<const U*>(src), n * ptrdiff_t(sizeof(T)));
    if constexpr (L * sizeof(T) == 32) {
      store(reinterpret_cast<U*>(block), x);
    } else {
      const __m128i h = half(x, 0);
      __builtin_memcpy(block, &h, L * sizeof(T));
    }
  } else if constexpr (L == 1) {
    *block = *src;
  } else {
    constexpr int part = L / 2;
    static_assert(2 * part == L);
    if (n >= part) {
      copyBlock<T, part>(block, src);
      copyBlock<T, part>(block + part, src + n - part);
    } else {
      gatherShort<part>(block, src, n);
      if constexpr (kFitsPack<1, T>) {
        copyBlock<T, part>(block + part, block);
      } else {
        gatherShort<part>(block + part, src, n);  // sooner than reading again what was just stored
      }
    }
  }
}
template <int L, class T>
VEK_INLINE void scatterShort(T* dst, const T* block, ptrdiff_t n) {
  if constexpr (kFitsPack<L, T>) {
    using U = UnsignedOf<T>;
    Pack<U> x;
    if constexpr (L * sizeof(T) == 32) {
      x = load(reinterpret_cast<const U*>(block));
    } else {
      __m128i h = _mm_setzero_si128();
      __builtin_memcpy(&h, block, L * sizeof(T));
      x = withLowHalf<U>(h);
    }
    storeShort(reinterpret_cast<U*>(dst), x, n * ptrdiff_t(sizeof(T)));
  } else if constexpr (L == 1) {
    *dst = *block;
  } else {
    constexpr int part = L / 2;
    if (n >= part) {
      copyBlock<T, part>(dst, block);
      copyBlock<T, part>(dst + n - part, block + part);
    } else {
      scatterShort<part>(dst, block, n);
    }
  }
}

template <int L, class T>
VEK_INLINE Block<T, L> gatherBlock(const T* src, ptrdiff_t n) {
  Block<T, L> b;
  gatherShort<L>(b.x, src, n);
  return b;
}

template <int L, class T>
VEK_INLINE void scatterBlock(T* dst, const Block<T, L>& b, ptrdiff_t n) {
  scatterShort<L>(dst, b.x, n);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
