// SPDX-License-Identifier: Apache-2.0
// Bytes by table, in pairs and in triples.
#ifndef VEK_CORE_SIMD_BYTES_H
#define VEK_CORE_SIMD_BYTES_H

#include "core/simd/interleave.h"

namespace vek::VEK_SLOT {
namespace {

// ---- pairs -------------------------------------------------------------------------------------------------

// Unpacking works within 16-byte halves. With its operands put through beforeUnpack, the results of unpackBytes are the
// pairs of elements 0 to 15 and of 16 to 31 in order; one permutation serves everything computed in between.
template <class T>
VEK_INLINE Pack<T> beforeUnpack(Pack<T> a) {
  if constexpr (Pack<T>::regs == 1) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_permute4x64_epi64((__m256i)a.r[0], 0xD8))}};
  } else {
    return a;
  }
}
template <class T>
VEK_INLINE Two<T> unpackBytes(Pack<T> a, Pack<T> b) {
  static_assert(sizeof(T) == 1);
  using Reg = typename Pack<T>::Reg;
  if constexpr (Pack<T>::regs == 1) {
    return {{{regCast<Reg>(unpackLow<1>((__m256i)a.r[0], (__m256i)b.r[0]))}},
            {{regCast<Reg>(unpackHigh<1>((__m256i)a.r[0], (__m256i)b.r[0]))}}};
  } else {
    return interleave(a, b);
  }
}

// From slot u8 on: a with the sign of b taken in, 0 where b is 0.
template <class T>
VEK_INLINE Pack<T> withSign(Pack<T> a, Pack<T> b) {
  static_assert(kSame<T, int8_t>);
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (sizeof(Reg) == 32) {
      return regCast<Reg>(_mm256_sign_epi8((__m256i)a.r[i], (__m256i)b.r[i]));
    } else {
      return regCast<Reg>(_mm_sign_epi8((__m128i)a.r[i], (__m128i)b.r[i]));
    }
  });
}
// From slot u8 on, lane k: a[2k]*b[2k] + a[2k+1]*b[2k+1], saturated.
template <class A, class B>
VEK_INLINE Pack<int16_t> mulAddBytes(Pack<A> a, Pack<B> b) {
  static_assert(kSame<A, uint8_t> && kSame<B, int8_t>);
  return each<Pack<int16_t>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<int16_t>::Reg;
    if constexpr (sizeof(Reg) == 32) {
      return regCast<Reg>(_mm256_maddubs_epi16((__m256i)a.r[i], (__m256i)b.r[i]));
    } else {
      return regCast<Reg>(_mm_maddubs_epi16((__m128i)a.r[i], (__m128i)b.r[i]));
    }
  });
}

// 16-bit lanes to bytes saturated as D, within 16-byte halves; afterPack puts the quarters in order.
template <class D>
VEK_INLINE Pack<uint8_t> packInHalves(Pack<int16_t> a, Pack<int16_t> b) {
  using Reg = typename Pack<uint8_t>::Reg;
  if constexpr (sizeof(Reg) == 32) {
    const __m256i x = whole(a), y = whole(b);
    return {{regCast<Reg>(kSigned<D> ? _mm256_packs_epi16(x, y) : _mm256_packus_epi16(x, y))}};
  } else {
    const auto one = [](auto x, auto y) VEK_LAMBDA {
      return kSigned<D> ? _mm_packs_epi16((__m128i)x, (__m128i)y) : _mm_packus_epi16((__m128i)x, (__m128i)y);
    };
    return fromHalves<uint8_t>(one(a.r[0], a.r[1]), one(b.r[0], b.r[1]));
  }
}
template <class T>
VEK_INLINE Pack<T> afterPack(Pack<T> a) {
  return beforeUnpack(a);
}

// ---- triples --------------------------------------------------------------------------------------------------------

// Three bytes each to the upper three of a 32-bit lane, from the first 12 bytes of x or from the last.
alignas(16) constexpr uint8_t kSpreadFirst[16] = {128, 0, 1, 2, 128, 3, 4, 5, 128, 6, 7, 8, 128, 9, 10, 11};
alignas(16) constexpr uint8_t kSpreadLast[16] = {128, 4, 5, 6, 128, 7, 8, 9, 128, 10, 11, 12, 128, 13, 14, 15};

// The same by byte shifts, for the levels without a byte shuffle.
VEK_INLINE __m128i spreadByShifts(__m128i x) {
  const __m128i pair0 = _mm_unpacklo_epi32(x, _mm_srli_si128(x, 3));
  const __m128i pair1 = _mm_unpacklo_epi32(_mm_srli_si128(x, 6), _mm_srli_si128(x, 9));
  return _mm_slli_epi32(_mm_unpacklo_epi64(pair0, pair1), 8);
}

// Eight elements, each times 256. The two loads overlap so that neither leaves the 24 bytes.
template <class T>
VEK_INLINE Pack<T> loadTriplesHigh(const uint8_t* p) {
  const __m128i first = loadBytes<16>(p), last = loadBytes<16>(p + 8);
  if constexpr (kAvx2) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_shuffle_epi8(
        joinHalves(first, last), joinHalves(loadBytes<16>(kSpreadFirst), loadBytes<16>(kSpreadLast))))}};
  } else if constexpr (kSsse3) {
    return fromHalves<T>(lookup16(first, loadBytes<16>(kSpreadFirst)), lookup16(last, loadBytes<16>(kSpreadLast)));
  } else {
    return fromHalves<T>(spreadByShifts(first), spreadByShifts(_mm_srli_si128(last, 4)));
  }
}

// The lower three bytes of each lane to the first 12 bytes.
alignas(16) constexpr uint8_t kGather[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 128, 128, 128, 128};

VEK_INLINE __m128i gather12(__m128i x) {
  if constexpr (kSsse3) {
    return lookup16(x, loadBytes<16>(kGather));
  } else {
    const __m128i even = _mm_and_si128(x, _mm_set1_epi64x(0xFFFFFF));
    const __m128i odd = _mm_and_si128(_mm_srli_epi64(x, 8), _mm_set1_epi64x(0xFFFFFF000000));
    const __m128i six = _mm_or_si128(even, odd);
    return _mm_or_si128(_mm_move_epi64(six), _mm_slli_si128(_mm_srli_si128(six, 8), 6));
  }
}

template <class T>
VEK_INLINE void storeTriples(uint8_t* p, Pack<T> x) {
  __m128i head, rest;
  if constexpr (kAvx2) {
    const __m256i twelves = _mm256_shuffle_epi8(whole(x), _mm256_broadcastsi128_si256(loadBytes<16>(kGather)));
    const __m256i all = _mm256_permutevar8x32_epi32(twelves, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
    head = lowHalf(all), rest = highHalf(all);
  } else {
    const __m128i low = gather12(half(x, 0)), high = gather12(half(x, 1));
    head = _mm_or_si128(low, _mm_slli_si128(high, 12)), rest = _mm_srli_si128(high, 4);
  }
  storeBytes<16>(p, head);
  storeBytes<8>(p + 16, rest);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
