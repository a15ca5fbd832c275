// SPDX-License-Identifier: Apache-2.0
// Comparison of packs, choice by the masks that it makes, and what follows from the two: extremes, signs, magnitudes.
#ifndef VEK_CORE_SIMD_COMPARE_H
#define VEK_CORE_SIMD_COMPARE_H

#include "core/simd/arithmetic.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
VEK_INLINE Mask<T> operator==(Pack<T> a, Pack<T> b) {
  if constexpr (sizeof(T) == 8 && !kFloat<T> && !kSse41) {
    // Both halves equal; SSE2 compares 32 bits at most.
    const auto eq = bits<int32_t>(a) == bits<int32_t>(b);
    const auto both = [](auto m) VEK_LAMBDA { return _mm_and_si128((__m128i)m, _mm_shuffle_epi32((__m128i)m, 0xB1)); };
    return each<Mask<T>>([&](int i) VEK_LAMBDA { return regCast<typename Mask<T>::Reg>(both(eq.r[i])); });
  } else {
    return each<Mask<T>>([&](int i) VEK_LAMBDA { return regCast<typename Mask<T>::Reg>(a.r[i] == b.r[i]); });
  }
}
template <class T>
VEK_INLINE Mask<T> operator!=(Pack<T> a, Pack<T> b) {
  return ~(a == b);
}

template <class T>
VEK_INLINE Mask<T> operator>(Pack<T> a, Pack<T> b) {
  if constexpr (kSame<T, int64_t> && !kAvx) {
    // SSE4.2's comparison is not promised below AVX: the high halves decide, or the borrow of the difference.
    const auto high = bits<int32_t>(bits<int32_t>(a) > bits<int32_t>(b));
    const auto same = bits<int32_t>(bits<int32_t>(a) == bits<int32_t>(b));
    const Pack<int32_t> r = high | (same & bits<int32_t>(b - a));
    const auto spread = [](auto x) VEK_LAMBDA { return _mm_shuffle_epi32(_mm_srai_epi32((__m128i)x, 31), 0xF5); };
    return each<Mask<T>>([&](int i) VEK_LAMBDA { return regCast<typename Mask<T>::Reg>(spread(r.r[i])); });
  } else if constexpr (!kFloat<T> && !kSigned<T>) {
    const Pack<T> bias = broadcast(T(T(1) << (8 * sizeof(T) - 1)));
    return maskCast<T>(bits<SignedOf<T>>(a ^ bias) > bits<SignedOf<T>>(b ^ bias));
  } else {
    return each<Mask<T>>([&](int i) VEK_LAMBDA { return regCast<typename Mask<T>::Reg>(a.r[i] > b.r[i]); });
  }
}
template <class T>
VEK_INLINE Mask<T> operator<(Pack<T> a, Pack<T> b) {
  return b > a;
}
// For floats false where either side is NaN, so not the complement of the other comparison.
template <class T>
VEK_INLINE Mask<T> operator>=(Pack<T> a, Pack<T> b) {
  if constexpr (kFloat<T>) {
    return each<Mask<T>>([&](int i) VEK_LAMBDA { return regCast<typename Mask<T>::Reg>(a.r[i] >= b.r[i]); });
  } else {
    return ~(b > a);
  }
}
template <class T>
VEK_INLINE Mask<T> operator<=(Pack<T> a, Pack<T> b) {
  return b >= a;
}

// NaN on either side.
template <class T>
VEK_INLINE Mask<T> unordered(Pack<T> a, Pack<T> b) {
  static_assert(kSame<T, float>);
  return each<Mask<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Mask<T>::Reg;
    if constexpr (sizeof(Reg) == 32) {
      return regCast<Reg>(_mm256_cmp_ps((__m256)a.r[i], (__m256)b.r[i], _CMP_UNORD_Q));
    } else {
      return regCast<Reg>(_mm_cmpunord_ps((__m128)a.r[i], (__m128)b.r[i]));
    }
  });
}

// Lane by lane: a where the mask is set, b elsewhere.
template <class T>
VEK_INLINE Pack<T> select(Mask<T> m, Pack<T> a, Pack<T> b) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (!kSse41) {
      return regCast<Reg>((m.r[i] & regCast<BitReg<T>>(a.r[i])) | (~m.r[i] & regCast<BitReg<T>>(b.r[i])));
    } else if constexpr (kSame<T, float> && sizeof(Reg) == 32) {
      return regCast<Reg>(_mm256_blendv_ps((__m256)b.r[i], (__m256)a.r[i], (__m256)m.r[i]));
    } else if constexpr (kSame<T, double> && sizeof(Reg) == 32) {
      return regCast<Reg>(_mm256_blendv_pd((__m256d)b.r[i], (__m256d)a.r[i], (__m256d)m.r[i]));
    } else {
      VEK_INTRINSIC(_mm256_blendv_epi8, _mm_blendv_epi8, __m256i, __m128i, Reg, (Raw)b.r[i], (Raw)a.r[i], (Raw)m.r[i])
    }
  });
}

// Lane by lane: a where `sign` is negative, b elsewhere; 32-bit integers.
template <class T>
VEK_INLINE Pack<T> selectNegative(Pack<T> sign, Pack<T> a, Pack<T> b) {
  static_assert(kSame<T, int32_t>);
  if constexpr (kSse41) {
    // The blend of floats looks at the sign bit alone.
    return each<Pack<T>>([&](int i) VEK_LAMBDA {
      using Reg = typename Pack<T>::Reg;
      VEK_INTRINSIC(_mm256_blendv_ps, _mm_blendv_ps, __m256, __m128, Reg, (Raw)b.r[i], (Raw)a.r[i], (Raw)sign.r[i])
    });
  } else {
    return select(asMask<T>(signOf(sign)), a, b);
  }
}

// One bit a byte of the mask, byte 0 lowest.
template <class T>
VEK_INLINE uint32_t byteBits(Mask<T> m) {
  if constexpr (Mask<T>::regs == 2) {
    return uint32_t(_mm_movemask_epi8((__m128i)m.r[0])) | uint32_t(_mm_movemask_epi8((__m128i)m.r[1])) << 16;
  } else if constexpr (kAvx2) {
    return uint32_t(_mm256_movemask_epi8((__m256i)m.r[0]));
  } else {
    return uint32_t(_mm_movemask_epi8(lowHalf((__m256i)m.r[0]))) |
           uint32_t(_mm_movemask_epi8(highHalf((__m256i)m.r[0]))) << 16;
  }
}

// One bit a lane of the mask, lane 0 lowest; for elements of 1, 4 and 8 bytes.
template <class T>
VEK_INLINE uint32_t laneBits(Mask<T> m) {
  if constexpr (sizeof(T) == 1) {
    return byteBits(m);
  } else if constexpr (sizeof(T) == 4) {
    if constexpr (Mask<T>::regs == 1) {
      return uint32_t(_mm256_movemask_ps((__m256)m.r[0]));
    } else {
      return uint32_t(_mm_movemask_ps((__m128)m.r[0])) | uint32_t(_mm_movemask_ps((__m128)m.r[1])) << 4;
    }
  } else {
    static_assert(sizeof(T) == 8);
    if constexpr (Mask<T>::regs == 1) {
      return uint32_t(_mm256_movemask_pd((__m256d)m.r[0]));
    } else {
      return uint32_t(_mm_movemask_pd((__m128d)m.r[0])) | uint32_t(_mm_movemask_pd((__m128d)m.r[1])) << 2;
    }
  }
}

template <class T>
VEK_INLINE bool any(Mask<T> m) {
  return byteBits(m) != 0;
}
template <class T>
VEK_INLINE bool all(Mask<T> m) {
  return byteBits(m) == 0xFFFFFFFFu;
}

// a > b ? a : b and a < b ? a : b: for floats the second operand where either is NaN or both are zero.
template <class T>
VEK_INLINE Pack<T> maxOf(Pack<T> a, Pack<T> b) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (kSame<T, float>) {
      VEK_INTRINSIC(_mm256_max_ps, _mm_max_ps, __m256, __m128, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, double>) {
      VEK_INTRINSIC(_mm256_max_pd, _mm_max_pd, __m256d, __m128d, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, int16_t>) {
      VEK_INTRINSIC(_mm256_max_epi16, _mm_max_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, uint8_t>) {
      VEK_INTRINSIC(_mm256_max_epu8, _mm_max_epu8, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, int32_t> && kSse41) {
      VEK_INTRINSIC(_mm256_max_epi32, _mm_max_epi32, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, uint32_t> && kSse41) {
      VEK_INTRINSIC(_mm256_max_epu32, _mm_max_epu32, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, uint16_t> && kSse41) {
      VEK_INTRINSIC(_mm256_max_epu16, _mm_max_epu16, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, int8_t> && kSse41) {
      VEK_INTRINSIC(_mm256_max_epi8, _mm_max_epi8, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else {
      return select(a > b, a, b).r[i];
    }
  });
}
template <class T>
VEK_INLINE Pack<T> minOf(Pack<T> a, Pack<T> b) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (kSame<T, float>) {
      VEK_INTRINSIC(_mm256_min_ps, _mm_min_ps, __m256, __m128, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, double>) {
      VEK_INTRINSIC(_mm256_min_pd, _mm_min_pd, __m256d, __m128d, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, int16_t>) {
      VEK_INTRINSIC(_mm256_min_epi16, _mm_min_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, uint8_t>) {
      VEK_INTRINSIC(_mm256_min_epu8, _mm_min_epu8, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, int32_t> && kSse41) {
      VEK_INTRINSIC(_mm256_min_epi32, _mm_min_epi32, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, uint32_t> && kSse41) {
      VEK_INTRINSIC(_mm256_min_epu32, _mm_min_epu32, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, uint16_t> && kSse41) {
      VEK_INTRINSIC(_mm256_min_epu16, _mm_min_epu16, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else if constexpr (kSame<T, uint16_t>) {
      return regCast<Reg>(a.r[i] - subsEpu16(a.r[i], b.r[i]));
    } else if constexpr (kSame<T, int8_t> && kSse41) {
      VEK_INTRINSIC(_mm256_min_epi8, _mm_min_epi8, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else {
      return select(a < b, a, b).r[i];
    }
  });
}

// ---- signs and magnitudes -------------------------------------------------------------------------------------------

// Floats: the sign bit alone. Integers: all ones where negative.
template <class T>
VEK_INLINE Pack<T> signOf(Pack<T> a) {
  if constexpr (kFloat<T>) {
    return bits<T>(broadcast(SignedOf<T>(UnsignedOf<T>(1) << (8 * sizeof(T) - 1)))) & a;
  } else if constexpr (sizeof(T) == 1) {
    return bits<T>(zeros<int8_t>() > bits<int8_t>(a));
  } else {
    return bits<T>(bits<SignedOf<T>>(a) >> int(8 * sizeof(T) - 1));
  }
}

// Floats: the sign bit cleared. Integers: the magnitude modulo 2^width, so the most negative value is itself.
template <class T>
VEK_INLINE Pack<T> magnitude(Pack<T> a) {
  if constexpr (kFloat<T>) {
    return bits<T>(broadcast(SignedOf<T>(UnsignedOf<T>(-1) >> 1))) & a;
  } else {
    if constexpr (kSsse3 && sizeof(T) == 2) {
      return each<Pack<T>>([&](int i) VEK_LAMBDA {
        VEK_INTRINSIC(_mm256_abs_epi16, _mm_abs_epi16, __m256i, __m128i, typename Pack<T>::Reg, (Raw)a.r[i])
      });
    } else if constexpr (kSsse3 && sizeof(T) == 4) {
      return each<Pack<T>>([&](int i) VEK_LAMBDA {
        VEK_INTRINSIC(_mm256_abs_epi32, _mm_abs_epi32, __m256i, __m128i, typename Pack<T>::Reg, (Raw)a.r[i])
      });
    } else {
      const Pack<T> s = signOf(a);
      return (a ^ s) - s;
    }
  }
}

VEK_INLINE Pack<int64_t> mulEven(Pack<int32_t> a, Pack<int32_t> b) {
  if constexpr (kSse41) {
    return each<Pack<int64_t>>([&](int i) VEK_LAMBDA { return regCast<Pack<int64_t>::Reg>(mulEpi32(a.r[i], b.r[i])); });
  } else {
    // The unsigned product counts 2^32 too much of one factor wherever the other is negative.
    const Pack<uint64_t> p = mulEven(bits<uint32_t>(a), bits<uint32_t>(b));
    const Pack<int32_t> excess = (signOf(a) & b) + (signOf(b) & a);
    return bits<int64_t>(p - (bits<uint64_t>(excess) << 32));
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
