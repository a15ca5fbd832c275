// SPDX-License-Identifier: Apache-2.0
// Two sequences to one and back: interleaving, taking apart, and sums of neighbours.
#ifndef VEK_CORE_SIMD_INTERLEAVE_H
#define VEK_CORE_SIMD_INTERLEAVE_H

#include "core/simd/shuffle.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
struct Two {
  Pack<T> a, b;
};

template <int Bytes>
VEK_INLINE __m128i unpackLow(__m128i a, __m128i b) {
  if constexpr (Bytes == 1) return _mm_unpacklo_epi8(a, b);
  if constexpr (Bytes == 2) return _mm_unpacklo_epi16(a, b);
  if constexpr (Bytes == 4) return _mm_unpacklo_epi32(a, b);
  if constexpr (Bytes == 8) return _mm_unpacklo_epi64(a, b);
}
template <int Bytes>
VEK_INLINE __m128i unpackHigh(__m128i a, __m128i b) {
  if constexpr (Bytes == 1) return _mm_unpackhi_epi8(a, b);
  if constexpr (Bytes == 2) return _mm_unpackhi_epi16(a, b);
  if constexpr (Bytes == 4) return _mm_unpackhi_epi32(a, b);
  if constexpr (Bytes == 8) return _mm_unpackhi_epi64(a, b);
}
template <int Bytes>
VEK_INLINE __m256i unpackLow(__m256i a, __m256i b) {
  if constexpr (Bytes == 4 && !kAvx2) return (__m256i)_mm256_unpacklo_ps((__m256)a, (__m256)b);
  if constexpr (Bytes == 8 && !kAvx2) return (__m256i)_mm256_unpacklo_pd((__m256d)a, (__m256d)b);
  if constexpr (Bytes == 1) return _mm256_unpacklo_epi8(a, b);
  if constexpr (Bytes == 2) return _mm256_unpacklo_epi16(a, b);
  if constexpr (Bytes == 4 && kAvx2) return _mm256_unpacklo_epi32(a, b);
  if constexpr (Bytes == 8 && kAvx2) return _mm256_unpacklo_epi64(a, b);
}
template <int Bytes>
VEK_INLINE __m256i unpackHigh(__m256i a, __m256i b) {
  if constexpr (Bytes == 4 && !kAvx2) return (__m256i)_mm256_unpackhi_ps((__m256)a, (__m256)b);
  if constexpr (Bytes == 8 && !kAvx2) return (__m256i)_mm256_unpackhi_pd((__m256d)a, (__m256d)b);
  if constexpr (Bytes == 1) return _mm256_unpackhi_epi8(a, b);
  if constexpr (Bytes == 2) return _mm256_unpackhi_epi16(a, b);
  if constexpr (Bytes == 4 && kAvx2) return _mm256_unpackhi_epi32(a, b);
  if constexpr (Bytes == 8 && kAvx2) return _mm256_unpackhi_epi64(a, b);
}

// (a0 b0 a1 b1 ..., the same of the upper halves): the packs of an interleaved sequence.
template <class T>
VEK_INLINE Two<T> interleave(Pack<T> a, Pack<T> b) {
  constexpr int size = int(sizeof(T));
  using Reg = typename Pack<T>::Reg;
  if constexpr (Pack<T>::regs == 2) {
    const __m128i a0 = (__m128i)a.r[0], a1 = (__m128i)a.r[1], b0 = (__m128i)b.r[0], b1 = (__m128i)b.r[1];
    return {fromHalves<T>(unpackLow<size>(a0, b0), unpackHigh<size>(a0, b0)),
            fromHalves<T>(unpackLow<size>(a1, b1), unpackHigh<size>(a1, b1))};
  } else {
    const __m256i low = unpackLow<size>((__m256i)a.r[0], (__m256i)b.r[0]);
    const __m256i high = unpackHigh<size>((__m256i)a.r[0], (__m256i)b.r[0]);
    return {{{regCast<Reg>(_mm256_permute2f128_si256(low, high, 0x20))}},
            {{regCast<Reg>(_mm256_permute2f128_si256(low, high, 0x31))}}};
  }
}

// Every element twice: (a0 a0 a1 a1 ..., the same of the upper half). For elements of 4 and 8 bytes.
template <class T>
VEK_INLINE Two<T> repeatEach(Pack<T> a) {
  using Reg = typename Pack<T>::Reg;
  if constexpr (kAvx2 && sizeof(T) == 8) {
    return {{{regCast<Reg>(_mm256_permute4x64_epi64((__m256i)a.r[0], 0x50))}},
            {{regCast<Reg>(_mm256_permute4x64_epi64((__m256i)a.r[0], 0xFA))}}};
  } else if constexpr (kAvx2 && sizeof(T) == 4) {
    const auto pick = [&](__m256i order) VEK_LAMBDA {
      return Pack<T>{{regCast<Reg>(_mm256_permutevar8x32_epi32((__m256i)a.r[0], order))}};
    };
    return {pick(_mm256_setr_epi32(0, 0, 1, 1, 2, 2, 3, 3)), pick(_mm256_setr_epi32(4, 4, 5, 5, 6, 6, 7, 7))};
  } else {
    return interleave(a, a);
  }
}

// The same within each 16-byte half: cheaper where the order between the halves is undone later.
template <class T>
VEK_INLINE Two<T> interleaveInHalves(Pack<T> a, Pack<T> b) {
  constexpr int size = int(sizeof(T));
  using Reg = typename Pack<T>::Reg;
  using Raw = typename VectorOf<long long, int(sizeof(Reg))>::type;
  return {each<Pack<T>>([&](int i) VEK_LAMBDA { return regCast<Reg>(unpackLow<size>((Raw)a.r[i], (Raw)b.r[i])); }),
          each<Pack<T>>([&](int i) VEK_LAMBDA { return regCast<Reg>(unpackHigh<size>((Raw)a.r[i], (Raw)b.r[i])); })};
}

// Even and odd elements of each pair of 16-byte halves; interleaveInHalves undoes the order.
template <int Order>
VEK_INLINE Pack<float> shufflePair(Pack<float> a, Pack<float> b) {
  return each<Pack<float>>([&](auto i) VEK_LAMBDA {
    using Reg = decltype(a.r[i] + b.r[i]);
    VEK_INTRINSIC(_mm256_shuffle_ps, _mm_shuffle_ps, __m256, __m128, Reg, (Raw)a.r[i], (Raw)b.r[i], Order)
  });
}
VEK_INLINE Two<float> deinterleaveInHalves(Pack<float> a, Pack<float> b) {
  return {shufflePair<0x88>(a, b), shufflePair<0xDD>(a, b)};
}

// Even and odd elements of the sequence a, b: the inverse of interleave.
template <class T>
VEK_INLINE Two<T> deinterleave(Pack<T> a, Pack<T> b) {
  using Reg = typename Pack<T>::Reg;
  if constexpr (sizeof(T) == 1) {
    constexpr uint8_t split[16] = {0, 2, 4, 6, 8, 10, 12, 14, 1, 3, 5, 7, 9, 11, 13, 15};
    const Two<uint64_t> q =
        deinterleave(bits<uint64_t>(shuffleBytes(a, split)), bits<uint64_t>(shuffleBytes(b, split)));
    return {bits<T>(q.a), bits<T>(q.b)};
  } else if constexpr (sizeof(T) == 2) {
    const auto split = [](Pack<T> x) VEK_LAMBDA {
      if constexpr (kSsse3) {
        constexpr uint8_t order[16] = {0, 1, 4, 5, 8, 9, 12, 13, 2, 3, 6, 7, 10, 11, 14, 15};
        return shuffleBytes(x, order);
      } else {
        const auto one = [](__m128i h) VEK_LAMBDA {
          return _mm_shuffle_epi32(_mm_shufflehi_epi16(_mm_shufflelo_epi16(h, 0xD8), 0xD8), 0xD8);
        };
        return fromHalves<T>(one(half(x, 0)), one(half(x, 1)));
      }
    };
    const Two<uint64_t> q = deinterleave(bits<uint64_t>(split(a)), bits<uint64_t>(split(b)));
    return {bits<T>(q.a), bits<T>(q.b)};
  } else if constexpr (sizeof(T) == 4) {
    if constexpr (Pack<T>::regs == 2) {
      const auto even = [](auto x, auto y) VEK_LAMBDA { return (__m128i)_mm_shuffle_ps((__m128)x, (__m128)y, 0x88); };
      const auto odd = [](auto x, auto y) VEK_LAMBDA { return (__m128i)_mm_shuffle_ps((__m128)x, (__m128)y, 0xDD); };
      return {fromHalves<T>(even(a.r[0], a.r[1]), even(b.r[0], b.r[1])),
              fromHalves<T>(odd(a.r[0], a.r[1]), odd(b.r[0], b.r[1]))};
    } else {
      const __m256 x = (__m256)a.r[0], y = (__m256)b.r[0];
      if constexpr (kAvx2) {
        // One crossing of the halves for each result, so that a caller who drops one does not pay for it.
        const auto order = [](__m256 v) VEK_LAMBDA { return _mm256_permute4x64_epi64((__m256i)v, 0xD8); };
        return {{{regCast<Reg>(order(_mm256_shuffle_ps(x, y, 0x88)))}},
                {{regCast<Reg>(order(_mm256_shuffle_ps(x, y, 0xDD)))}}};
      } else {
        const __m256 low = _mm256_permute2f128_ps(x, y, 0x20), high = _mm256_permute2f128_ps(x, y, 0x31);
        return {{{regCast<Reg>(_mm256_shuffle_ps(low, high, 0x88))}},
                {{regCast<Reg>(_mm256_shuffle_ps(low, high, 0xDD))}}};
      }
    }
  } else {
    if constexpr (Pack<T>::regs == 2) {
      return {
          fromHalves<T>(unpackLow<8>((__m128i)a.r[0], (__m128i)a.r[1]), unpackLow<8>((__m128i)b.r[0], (__m128i)b.r[1])),
          fromHalves<T>(unpackHigh<8>((__m128i)a.r[0], (__m128i)a.r[1]),
                        unpackHigh<8>((__m128i)b.r[0], (__m128i)b.r[1]))};
    } else if constexpr (kAvx2 && !kFloat<T>) {
      const __m256i low = unpackLow<8>((__m256i)a.r[0], (__m256i)b.r[0]);
      const __m256i high = unpackHigh<8>((__m256i)a.r[0], (__m256i)b.r[0]);
      return {{{regCast<Reg>(_mm256_permute4x64_epi64(low, 0xD8))}},
              {{regCast<Reg>(_mm256_permute4x64_epi64(high, 0xD8))}}};
    } else {
      const __m256i low = _mm256_permute2f128_si256((__m256i)a.r[0], (__m256i)b.r[0], 0x20);
      const __m256i high = _mm256_permute2f128_si256((__m256i)a.r[0], (__m256i)b.r[0], 0x31);
      return {{{regCast<Reg>(unpackLow<8>(low, high))}}, {{regCast<Reg>(unpackHigh<8>(low, high))}}};
    }
  }
}

// The sums of neighbours over the sequence a, b: a0+a1, a2+a3, ..., b0+b1, ...
template <class T>
VEK_INLINE Pack<T> addNeighbours(Pack<T> a, Pack<T> b) {
  if constexpr (kAvx2 && kSame<T, float>) {
    const __m256 sums = _mm256_hadd_ps((__m256)a.r[0], (__m256)b.r[0]);
    return {{regCast<typename Pack<T>::Reg>(_mm256_permute4x64_epi64((__m256i)sums, 0xD8))}};
  } else {
    const Two<T> x = deinterleave(a, b);
    return x.a + x.b;
  }
}

// The even and the odd elements of a and b, both in one order that differs between slots: for complex elements whose
// order does not matter, at half the shuffles of deinterleave.
template <class T>
VEK_INLINE Two<T> splitPairs(Pack<T> a, Pack<T> b) {
  static_assert(sizeof(T) == 4 || sizeof(T) == 8);
  using Reg = typename Pack<T>::Reg;
  if constexpr (sizeof(Reg) == 32 && sizeof(T) == 8) {
    return {{{regCast<Reg>(_mm256_unpacklo_pd((__m256d)a.r[0], (__m256d)b.r[0]))}},
            {{regCast<Reg>(_mm256_unpackhi_pd((__m256d)a.r[0], (__m256d)b.r[0]))}}};
  } else if constexpr (sizeof(Reg) == 32) {
    return {{{regCast<Reg>(_mm256_shuffle_ps((__m256)a.r[0], (__m256)b.r[0], 0x88))}},
            {{regCast<Reg>(_mm256_shuffle_ps((__m256)a.r[0], (__m256)b.r[0], 0xDD))}}};
  } else {
    return deinterleave(a, b);
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
