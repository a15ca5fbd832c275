// SPDX-License-Identifier: Apache-2.0
// Moving elements between lanes: reversal, interleaving, the shuffles of complex arithmetic, bytes by table.
#ifndef VEK_CORE_SIMD_SHUFFLE_H
#define VEK_CORE_SIMD_SHUFFLE_H

#include "core/simd/compare.h"

namespace vek::VEK_SLOT {
namespace {

// The two 16-byte halves of a pack in order, and back.
template <class T>
VEK_INLINE __m128i half(Pack<T> a, int k) {
  if constexpr (Pack<T>::regs == 2) {
    return regCast<__m128i>(a.r[k]);
  } else {
    return k == 0 ? lowHalf(regCast<__m256i>(a.r[0])) : highHalf(regCast<__m256i>(a.r[0]));
  }
}
template <class T>
VEK_INLINE Pack<T> fromHalves(__m128i low, __m128i high) {
  using Reg = typename Pack<T>::Reg;
  if constexpr (Pack<T>::regs == 2) {
    return {{regCast<Reg>(low), regCast<Reg>(high)}};
  } else {
    return {{regCast<Reg>(joinHalves(low, high))}};
  }
}

// The lower half of a pack whose upper half does not matter.
template <class T>
VEK_INLINE Pack<T> withLowHalf(__m128i low) {
  using Reg = typename Pack<T>::Reg;
  if constexpr (Pack<T>::regs == 2) {
    return {{regCast<Reg>(low), regCast<Reg>(low)}};
  } else {
    return {{regCast<Reg>(_mm256_castsi128_si256(low))}};
  }
}

// All 32 bytes in one register, from slot e9 up.
template <class T>
VEK_INLINE __m256i whole(Pack<T> a) {
  if constexpr (Pack<T>::regs == 1) {
    return regCast<__m256i>(a.r[0]);
  } else {
    return joinHalves(regCast<__m128i>(a.r[0]), regCast<__m128i>(a.r[1]));
  }
}

template <class T>
VEK_INLINE Pack<T> swapHalves(Pack<T> a) {
  if constexpr (Pack<T>::regs == 2) {
    return {{a.r[1], a.r[0]}};
  } else if constexpr (kAvx2 && !kFloat<T>) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_permute4x64_epi64((__m256i)a.r[0], 0x4E))}};
  } else {
    return {{regCast<typename Pack<T>::Reg>(_mm256_permute2f128_si256((__m256i)a.r[0], (__m256i)a.r[0], 1))}};
  }
}

// One lane of doubles in all lanes; `lane` is to be known once the call is inlined.
template <class T>
VEK_INLINE Pack<T> broadcastLane(Pack<T> a, int lane) {
  static_assert(kSame<T, double>);
  using Reg = typename Pack<T>::Reg;
  if constexpr (Pack<T>::regs == 2) {
    const __m128d h = (__m128d)a.r[lane / 2], x = lane % 2 ? _mm_unpackhi_pd(h, h) : _mm_unpacklo_pd(h, h);
    return {{regCast<Reg>(x), regCast<Reg>(x)}};
  } else {
    const __m256d x = (__m256d)a.r[0];
    const __m256d h = lane / 2 ? _mm256_permute2f128_pd(x, x, 0x11) : _mm256_permute2f128_pd(x, x, 0);
    return {{regCast<Reg>(lane % 2 ? _mm256_permute_pd(h, 0xF) : _mm256_permute_pd(h, 0))}};
  }
}

// Doubles moved one lane up, the highest to lane 0.
template <class T>
VEK_INLINE Pack<T> rotateUp(Pack<T> a) {
  static_assert(kSame<T, double>);
  using Reg = typename Pack<T>::Reg;
  if constexpr (Pack<T>::regs == 2) {
    const __m128d low = (__m128d)a.r[0], high = (__m128d)a.r[1];
    return {{regCast<Reg>(_mm_shuffle_pd(high, low, 1)), regCast<Reg>(_mm_shuffle_pd(low, high, 1))}};
  } else if constexpr (kAvx2) {
    return {{regCast<Reg>(_mm256_permute4x64_pd((__m256d)a.r[0], 0x93))}};
  } else {
    const __m256d x = (__m256d)a.r[0];
    return {{regCast<Reg>(_mm256_shuffle_pd(_mm256_permute2f128_pd(x, x, 1), x, 5))}};
  }
}

// a with lane 0 from b.
template <class T>
VEK_INLINE Pack<T> replaceLowest(Pack<T> a, Pack<T> b) {
  static_assert(kSame<T, double>);
  using Reg = typename Pack<T>::Reg;
  if constexpr (Pack<T>::regs == 2) {
    return {{regCast<Reg>(_mm_move_sd((__m128d)a.r[0], (__m128d)b.r[0])), a.r[1]}};
  } else {
    return {{regCast<Reg>(_mm256_blend_pd((__m256d)a.r[0], (__m256d)b.r[0], 1))}};
  }
}

// ---- within 16-byte halves ------------------------------------------------------------------------------------------

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

// Even lanes a - b, odd lanes a + b. Nothing is negated: a NaN in b would change its sign.
template <class T>
VEK_INLINE Pack<T> addSubtract(Pack<T> a, Pack<T> b) {
  static_assert(kFloat<T>);
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (kSame<T, float>) {
      if constexpr (sizeof(Reg) == 32) {
        return regCast<Reg>(_mm256_addsub_ps((__m256)a.r[i], (__m256)b.r[i]));
      } else if constexpr (kSse3) {
        return regCast<Reg>(_mm_addsub_ps((__m128)a.r[i], (__m128)b.r[i]));
      } else {
        const __m128 odd = (__m128)_mm_setr_epi32(0, -1, 0, -1);
        const __m128 sum = (__m128)(a.r[i] + b.r[i]), difference = (__m128)(a.r[i] - b.r[i]);
        return regCast<Reg>(_mm_or_ps(_mm_andnot_ps(odd, difference), _mm_and_ps(odd, sum)));
      }
    } else {
      if constexpr (sizeof(Reg) == 32) {
        return regCast<Reg>(_mm256_addsub_pd((__m256d)a.r[i], (__m256d)b.r[i]));
      } else if constexpr (kSse3) {
        return regCast<Reg>(_mm_addsub_pd((__m128d)a.r[i], (__m128d)b.r[i]));
      } else {
        return regCast<Reg>(_mm_move_sd((__m128d)(a.r[i] + b.r[i]), (__m128d)(a.r[i] - b.r[i])));
      }
    }
  });
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

// The product of interleaved complex numbers, every operation rounded:
// (a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re).
template <class T>
VEK_INLINE Pack<T> complexMul(Pack<T> a, Pack<T> b) {
  return addSubtract(dupEven(a) * b, dupOdd(a) * swapPairs(b));
}

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

// ---- interleaving ---------------------------------------------------------------------------------------------------

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

// ---- bytes in pairs -------------------------------------------------------------------------------------------------

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
