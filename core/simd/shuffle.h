// SPDX-License-Identifier: Apache-2.0
// Moving elements within the 16-byte halves of a pack, bytes by table, and reversal.
#ifndef VEK_CORE_SIMD_SHUFFLE_H
#define VEK_CORE_SIMD_SHUFFLE_H

#include "core/simd/compare.h"
#include "core/simd/halves.h"

namespace vek::VEK_SLOT {
namespace {

// ---- 32-bit elements ------------------------------------------------------------------------------------------------

// Every half's 32-bit elements in the order given by the immediate (two bits an element, as in pshufd).
template <int Order, class T>
VEK_INLINE Pack<T> shuffle32(Pack<T> a) {
  static_assert(sizeof(T) == 4 || sizeof(T) == 8);
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (sizeof(Reg) == 32) {
      if constexpr (kFloat<T>) {
        return regCast<Reg>(_mm256_permute_ps((__m256)a.r[i], Order));
      } else {
        return regCast<Reg>(_mm256_shuffle_epi32((__m256i)a.r[i], Order));
      }
    } else {
      return regCast<Reg>(_mm_shuffle_epi32((__m128i)a.r[i], Order));
    }
  });
}

// (re, im) to (im, re) in every pair of 32-bit elements; pairs of 64-bit elements.
template <class T>
VEK_INLINE Pack<T> swapPairs(Pack<T> a) {
  if constexpr (sizeof(T) == 4) {
    return shuffle32<0xB1>(a);
  } else {
    return shuffle32<0x4E>(a);
  }
}

// The even (real) or odd (imaginary) element of every pair, twice.
template <class T>
VEK_INLINE Pack<T> dupEven(Pack<T> a) {
  if constexpr (sizeof(T) == 8) {
    return shuffle32<0x44>(a);
  } else if constexpr (kAvx && kSame<T, float>) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_moveldup_ps((__m256)a.r[0]))}};
  } else {
    return shuffle32<0xA0>(a);
  }
}
template <class T>
VEK_INLINE Pack<T> dupOdd(Pack<T> a) {
  if constexpr (sizeof(T) == 8) {
    return shuffle32<0xEE>(a);
  } else if constexpr (kAvx && kSame<T, float>) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_movehdup_ps((__m256)a.r[0]))}};
  } else {
    return shuffle32<0xF5>(a);
  }
}

// Four elements of 4 bytes, each one twice.
template <class T>
VEK_INLINE Pack<T> loadTwice(const T* p) {
  static_assert(sizeof(T) == 4);
  const __m128 x = (__m128)_mm_loadu_si128((const __m128i_u*)p);
  if constexpr (kAvx) {
    const __m256i order = _mm256_setr_epi32(0, 0, 1, 1, 2, 2, 3, 3);
    const __m256i y = (__m256i)_mm256_permutevar_ps(_mm256_set_m128(x, x), order);
    return fromHalves<T>(lowHalf(y), highHalf(y));
  } else {
    return fromHalves<T>((__m128i)_mm_unpacklo_ps(x, x), (__m128i)_mm_unpackhi_ps(x, x));
  }
}

// Even 32-bit lanes from a, odd ones from b.
template <class T>
VEK_INLINE Pack<T> blendOdd(Pack<T> a, Pack<T> b) {
  static_assert(sizeof(T) == 4);
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (sizeof(Reg) == 32) {
      return regCast<Reg>(_mm256_blend_ps((__m256)a.r[i], (__m256)b.r[i], 0xAA));
    } else if constexpr (kSse41) {
      return regCast<Reg>(_mm_blend_ps((__m128)a.r[i], (__m128)b.r[i], 0xA));
    } else {
      const __m128i odd = _mm_setr_epi32(0, -1, 0, -1);
      return regCast<Reg>(_mm_or_si128(_mm_andnot_si128(odd, (__m128i)a.r[i]), _mm_and_si128(odd, (__m128i)b.r[i])));
    }
  });
}

// Even 16-bit lanes from a, odd ones from b.
template <class T>
VEK_INLINE Pack<T> blendOddWords(Pack<T> a, Pack<T> b) {
  static_assert(kSame<T, int16_t>);
  if constexpr (kSse41) {
    return each<Pack<T>>([&](int i) VEK_LAMBDA {
      using Reg = typename Pack<T>::Reg;
      VEK_INTRINSIC(_mm256_blend_epi16, _mm_blend_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i], 0xAA)
    });
  } else {
    const Pack<int32_t> lower = broadcast(0xFFFF);
    return bits<T>((bits<int32_t>(a) & lower) | (bits<int32_t>(b) & ~lower));
  }
}

// Lanes with bit D of their number clear from a, the others from b.
template <int D, class T>
VEK_INLINE Pack<T> blendLanes(Pack<T> a, Pack<T> b) {
  using Reg = typename Pack<T>::Reg;
  constexpr int words = D * int(sizeof(T)) / 4;
  if constexpr (Pack<T>::regs == 1) {
    constexpr int choice = words == 4 ? 0xF0 : words == 2 ? 0xCC : 0xAA;
    return {{regCast<Reg>(_mm256_blend_ps((__m256)a.r[0], (__m256)b.r[0], choice))}};
  } else if constexpr (words == 4) {
    return {{a.r[0], b.r[1]}};
  } else {
    return each<Pack<T>>([&](int i) VEK_LAMBDA {
      if constexpr (words == 2) {
        return regCast<Reg>(_mm_shuffle_pd((__m128d)a.r[i], (__m128d)b.r[i], 2));
      } else if constexpr (kSse41) {
        return regCast<Reg>(_mm_blend_epi16((__m128i)a.r[i], (__m128i)b.r[i], 0xCC));
      } else {
        const __m128i even = _mm_setr_epi32(-1, 0, -1, 0);
        return regCast<Reg>(
            _mm_or_si128(_mm_and_si128(even, (__m128i)a.r[i]), _mm_andnot_si128(even, (__m128i)b.r[i])));
      }
    });
  }
}

// ---- bytes by table -------------------------------------------------------------------------------------------------

// out[k] = a[table[k]] within each 16-byte half; a table byte with the top bit set gives zero. The table holds 16
// bytes.
VEK_INLINE __m128i lookup16(__m128i table, __m128i index) {
  if constexpr (kSsse3) {
    return _mm_shuffle_epi8(table, index);
  } else {
    alignas(16) uint8_t t[16], k[16];
    _mm_store_si128((__m128i*)t, table);
    _mm_store_si128((__m128i*)k, index);
#pragma GCC unroll 16
    for (int j = 0; j < 16; ++j) k[j] = k[j] & 0x80 ? 0 : t[k[j] & 15];
    return _mm_load_si128((const __m128i*)k);
  }
}
// Each half of `a` is looked up in itself: the same 16-entry order for both halves.
template <class T>
VEK_INLINE Pack<T> shuffleBytes(Pack<T> a, const uint8_t (&order)[16]) {
  const __m128i index = _mm_loadu_si128((const __m128i*)order);
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (sizeof(Reg) == 32 && kAvx2) {
      return regCast<Reg>(_mm256_shuffle_epi8((__m256i)a.r[i], _mm256_broadcastsi128_si256(index)));
    } else if constexpr (sizeof(Reg) == 32) {
      return regCast<Reg>(
          joinHalves(lookup16(lowHalf((__m256i)a.r[i]), index), lookup16(highHalf((__m256i)a.r[i]), index)));
    } else {
      return regCast<Reg>(lookup16((__m128i)a.r[i], index));
    }
  });
}
// A 16-entry byte table looked up by every byte of the index pack (top bit set gives zero).
VEK_INLINE Pack<uint8_t> lookup(const uint8_t (&table)[16], Pack<uint8_t> index) {
  const __m128i t = _mm_loadu_si128((const __m128i*)table);
  if constexpr (kAvx2) {
    return {{regCast<Pack<uint8_t>::Reg>(_mm256_shuffle_epi8(_mm256_broadcastsi128_si256(t), whole(index)))}};
  } else {
    return fromHalves<uint8_t>(lookup16(t, half(index, 0)), lookup16(t, half(index, 1)));
  }
}

// ---- reversal -------------------------------------------------------------------------------------------------------

VEK_INLINE __m128i reverse16(__m128i a) {  // eight 16-bit elements
  a = _mm_shufflelo_epi16(_mm_shufflehi_epi16(a, 0x1B), 0x1B);
  return _mm_shuffle_epi32(a, 0x4E);
}

// The elements of size Bytes in the opposite order.
template <int Bytes, class T>
VEK_INLINE Pack<T> reverseBy(Pack<T> a) {
  if constexpr (Bytes == 8) {
    if constexpr (kAvx2) {
      return {{regCast<typename Pack<T>::Reg>(_mm256_permute4x64_epi64((__m256i)a.r[0], 0x1B))}};
    } else {
      return fromHalves<T>(_mm_shuffle_epi32(half(a, 1), 0x4E), _mm_shuffle_epi32(half(a, 0), 0x4E));
    }
  } else if constexpr (Bytes == 4) {
    if constexpr (kAvx2) {
      return {{regCast<typename Pack<T>::Reg>(
          _mm256_permutevar8x32_epi32((__m256i)a.r[0], _mm256_setr_epi32(7, 6, 5, 4, 3, 2, 1, 0)))}};
    } else {
      return fromHalves<T>(_mm_shuffle_epi32(half(a, 1), 0x1B), _mm_shuffle_epi32(half(a, 0), 0x1B));
    }
  } else if constexpr (kSsse3) {
    constexpr uint8_t byTwo[16] = {14, 15, 12, 13, 10, 11, 8, 9, 6, 7, 4, 5, 2, 3, 0, 1};
    constexpr uint8_t byOne[16] = {15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0};
    return swapHalves(shuffleBytes(a, Bytes == 2 ? byTwo : byOne));
  } else {
    __m128i low = reverse16(half(a, 1)), high = reverse16(half(a, 0));
    if constexpr (Bytes == 1) {
      low = _mm_or_si128(_mm_slli_epi16(low, 8), _mm_srli_epi16(low, 8));
      high = _mm_or_si128(_mm_slli_epi16(high, 8), _mm_srli_epi16(high, 8));
    }
    return fromHalves<T>(low, high);
  }
}
template <class T>
VEK_INLINE Pack<T> reverse(Pack<T> a) {
  return reverseBy<int(sizeof(T))>(a);
}

// The bytes of every element in the opposite order, the elements where they are.
template <class T>
VEK_INLINE Pack<T> swapBytes(Pack<T> x) {
  if constexpr (kSsse3) {
    constexpr uint8_t two[16] = {1, 0, 3, 2, 5, 4, 7, 6, 9, 8, 11, 10, 13, 12, 15, 14};
    constexpr uint8_t four[16] = {3, 2, 1, 0, 7, 6, 5, 4, 11, 10, 9, 8, 15, 14, 13, 12};
    constexpr uint8_t eight[16] = {7, 6, 5, 4, 3, 2, 1, 0, 15, 14, 13, 12, 11, 10, 9, 8};
    return shuffleBytes(x, sizeof(T) == 2 ? two : sizeof(T) == 4 ? four : eight);
  } else {
    const Pack<uint16_t> halves = bits<uint16_t>(x);
    const Pack<uint16_t> swapped = (halves << 8) | (halves >> 8);
    const auto reorder = [](auto r) VEK_LAMBDA {
      if constexpr (sizeof(T) == 4) return _mm_shufflehi_epi16(_mm_shufflelo_epi16((__m128i)r, 0xB1), 0xB1);
      if constexpr (sizeof(T) == 8) return _mm_shufflehi_epi16(_mm_shufflelo_epi16((__m128i)r, 0x1B), 0x1B);
      if constexpr (sizeof(T) == 2) return (__m128i)r;
    };
    return fromHalves<T>(reorder(half(swapped, 0)), reorder(half(swapped, 1)));
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
