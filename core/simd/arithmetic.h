// SPDX-License-Identifier: Apache-2.0
// Arithmetic, bitwise operations and shifts of packs, lane by lane: IEEE for floats, wrapping for integers.
#ifndef VEK_CORE_SIMD_ARITHMETIC_H
#define VEK_CORE_SIMD_ARITHMETIC_H

#include "core/simd/pack.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
using ArithReg = typename VectorOf<UnsignedOf<T>, kRegBytes<T>>::type;

#define VEK_PACK_ARITHMETIC(OP)                                                                              \
  template <class T>                                                                                         \
  VEK_INLINE Pack<T> operator OP(Pack<T> a, Pack<T> b) {                                                     \
    return each<Pack<T>>([&](int i) VEK_LAMBDA {                                                             \
      if constexpr (kFloat<T>) {                                                                             \
        return a.r[i] OP b.r[i];                                                                             \
      } else {                                                                                               \
        return regCast<typename Pack<T>::Reg>(regCast<ArithReg<T>>(a.r[i]) OP regCast<ArithReg<T>>(b.r[i])); \
      }                                                                                                      \
    });                                                                                                      \
  }
VEK_PACK_ARITHMETIC(+)
VEK_PACK_ARITHMETIC(-)
VEK_PACK_ARITHMETIC(*)
#undef VEK_PACK_ARITHMETIC

template <class T>
VEK_INLINE Pack<T> operator/(Pack<T> a, Pack<T> b) {
  static_assert(kFloat<T>);
  return each<Pack<T>>([&](int i) VEK_LAMBDA { return a.r[i] / b.r[i]; });
}

// Bitwise operators work on every type, floats included.
template <class T>
using BitReg = typename VectorOf<SignedOf<T>, kRegBytes<T>>::type;

#define VEK_PACK_BITWISE(OP)                                                                           \
  template <class T>                                                                                   \
  VEK_INLINE Pack<T> operator OP(Pack<T> a, Pack<T> b) {                                               \
    return each<Pack<T>>([&](int i) VEK_LAMBDA {                                                       \
      return regCast<typename Pack<T>::Reg>(regCast<BitReg<T>>(a.r[i]) OP regCast<BitReg<T>>(b.r[i])); \
    });                                                                                                \
  }                                                                                                    \
  template <class T>                                                                                   \
  VEK_INLINE Mask<T> operator OP(Mask<T> a, Mask<T> b) {                                               \
    return each<Mask<T>>([&](int i) VEK_LAMBDA { return a.r[i] OP b.r[i]; });                          \
  }
VEK_PACK_BITWISE(&)
VEK_PACK_BITWISE(|)
VEK_PACK_BITWISE(^)
#undef VEK_PACK_BITWISE

template <class T>
VEK_INLINE Pack<T> operator~(Pack<T> a) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA { return regCast<typename Pack<T>::Reg>(~regCast<BitReg<T>>(a.r[i])); });
}
template <class T>
VEK_INLINE Mask<T> operator~(Mask<T> a) {
  return each<Mask<T>>([&](int i) VEK_LAMBDA { return ~a.r[i]; });
}

// The bits of a where the mask is set, zero elsewhere.
template <class T>
VEK_INLINE Pack<T> keep(Mask<T> m, Pack<T> a) {
  return bits<T>(m) & a;
}

// a * b + c, fused in the slots that can; for sums whose order and rounding are not promised to the bit.
template <class T>
VEK_INLINE Pack<T> fusedMulAdd(Pack<T> a, Pack<T> b, Pack<T> c) {
  if constexpr (!kFma) {
    return a * b + c;
  } else if constexpr (kSame<T, float>) {
    return {{(typename Pack<T>::Reg)_mm256_fmadd_ps((__m256)a.r[0], (__m256)b.r[0], (__m256)c.r[0])}};
  } else {
    return {{(typename Pack<T>::Reg)_mm256_fmadd_pd((__m256d)a.r[0], (__m256d)b.r[0], (__m256d)c.r[0])}};
  }
}

// c - a * b, under the same terms.
template <class T>
VEK_INLINE Pack<T> fusedNegMulAdd(Pack<T> a, Pack<T> b, Pack<T> c) {
  if constexpr (!kFma) {
    return c - a * b;
  } else if constexpr (kSame<T, float>) {
    return {{(typename Pack<T>::Reg)_mm256_fnmadd_ps((__m256)a.r[0], (__m256)b.r[0], (__m256)c.r[0])}};
  } else {
    return {{(typename Pack<T>::Reg)_mm256_fnmadd_pd((__m256d)a.r[0], (__m256d)b.r[0], (__m256d)c.r[0])}};
  }
}

// Calls a 16-byte or a 32-byte intrinsic, by the register of the pack.
#define VEK_INTRINSIC(WIDE, NARROW, CAST_WIDE, CAST_NARROW, REG, ...) \
  if constexpr (sizeof(REG) == 32) {                                  \
    using Raw = CAST_WIDE;                                            \
    return regCast<REG>(WIDE(__VA_ARGS__));                           \
  } else {                                                            \
    using Raw = CAST_NARROW;                                          \
    return regCast<REG>(NARROW(__VA_ARGS__));                         \
  }

template <class T>
VEK_INLINE Pack<T> squareRoot(Pack<T> a) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (kSame<T, float>) {
      VEK_INTRINSIC(_mm256_sqrt_ps, _mm_sqrt_ps, __m256, __m128, Reg, (Raw)a.r[i])
    } else {
      VEK_INTRINSIC(_mm256_sqrt_pd, _mm_sqrt_pd, __m256d, __m128d, Reg, (Raw)a.r[i])
    }
  });
}

// Register operations whose intrinsic follows the width of the register alone.
#define VEK_REG_BINARY(NAME, WIDE, NARROW)               \
  template <class R>                                     \
  VEK_INLINE R NAME(R a, R b) {                          \
    if constexpr (sizeof(R) == 32) {                     \
      return regCast<R>(WIDE((__m256i)a, (__m256i)b));   \
    } else {                                             \
      return regCast<R>(NARROW((__m128i)a, (__m128i)b)); \
    }                                                    \
  }
VEK_REG_BINARY(addsEpi8, _mm256_adds_epi8, _mm_adds_epi8)
VEK_REG_BINARY(addsEpu8, _mm256_adds_epu8, _mm_adds_epu8)
VEK_REG_BINARY(addsEpi16, _mm256_adds_epi16, _mm_adds_epi16)
VEK_REG_BINARY(addsEpu16, _mm256_adds_epu16, _mm_adds_epu16)
VEK_REG_BINARY(subsEpi8, _mm256_subs_epi8, _mm_subs_epi8)
VEK_REG_BINARY(subsEpu8, _mm256_subs_epu8, _mm_subs_epu8)
VEK_REG_BINARY(subsEpi16, _mm256_subs_epi16, _mm_subs_epi16)
VEK_REG_BINARY(subsEpu16, _mm256_subs_epu16, _mm_subs_epu16)
VEK_REG_BINARY(avgEpu8, _mm256_avg_epu8, _mm_avg_epu8)
VEK_REG_BINARY(avgEpu16, _mm256_avg_epu16, _mm_avg_epu16)
VEK_REG_BINARY(mulhiEpi16, _mm256_mulhi_epi16, _mm_mulhi_epi16)
VEK_REG_BINARY(mulhiEpu16, _mm256_mulhi_epu16, _mm_mulhi_epu16)
VEK_REG_BINARY(maddEpi16, _mm256_madd_epi16, _mm_madd_epi16)
VEK_REG_BINARY(mulEpu32, _mm256_mul_epu32, _mm_mul_epu32)
VEK_REG_BINARY(mulEpi32, _mm256_mul_epi32, _mm_mul_epi32)
VEK_REG_BINARY(sadEpu8, _mm256_sad_epu8, _mm_sad_epu8)

#define VEK_PACK_BINARY(NAME, RESULT, T, REG_OPERATION)                                                              \
  VEK_INLINE Pack<RESULT> NAME(Pack<T> a, Pack<T> b) {                                                               \
    return each<Pack<RESULT>>([&](int i)                                                                             \
                                  VEK_LAMBDA { return regCast<Pack<RESULT>::Reg>(REG_OPERATION(a.r[i], b.r[i])); }); \
  }
VEK_PACK_BINARY(addSaturated, int8_t, int8_t, addsEpi8)
VEK_PACK_BINARY(addSaturated, uint8_t, uint8_t, addsEpu8)
VEK_PACK_BINARY(addSaturated, int16_t, int16_t, addsEpi16)
VEK_PACK_BINARY(addSaturated, uint16_t, uint16_t, addsEpu16)
VEK_PACK_BINARY(subSaturated, int8_t, int8_t, subsEpi8)
VEK_PACK_BINARY(subSaturated, uint8_t, uint8_t, subsEpu8)
VEK_PACK_BINARY(subSaturated, int16_t, int16_t, subsEpi16)
VEK_PACK_BINARY(subSaturated, uint16_t, uint16_t, subsEpu16)
VEK_PACK_BINARY(averageUp, uint8_t, uint8_t, avgEpu8)  // (a + b + 1) >> 1
VEK_PACK_BINARY(averageUp, uint16_t, uint16_t, avgEpu16)
VEK_PACK_BINARY(mulHigh, int16_t, int16_t, mulhiEpi16)  // the upper half of the product
VEK_PACK_BINARY(mulHigh, uint16_t, uint16_t, mulhiEpu16)
VEK_PACK_BINARY(mulAddPairs, int32_t, int16_t, maddEpi16)  // lane k: a[2k]*b[2k] + a[2k+1]*b[2k+1]
VEK_PACK_BINARY(mulEven, uint64_t, uint32_t, mulEpu32)     // the 64-bit products of lanes 0, 2, 4, 6
VEK_PACK_BINARY(sumAbsDiff8, uint64_t, uint8_t, sadEpu8)   // lane k: sum of |a - b| over bytes 8k .. 8k+7
VEK_INLINE Pack<int64_t> mulEven(Pack<int32_t> a, Pack<int32_t> b);

// Shifts by one count for all lanes. Counts at or above the width give zeros, or sign fill for >> of signed types.
template <class T>
VEK_INLINE Pack<T> operator<<(Pack<T> a, int n) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (sizeof(T) == 1) {
      const uint8_t left = n > 7 ? 0 : uint8_t(0xFF << n);
      const Reg shifted = [&]() VEK_LAMBDA {
        VEK_INTRINSIC(_mm256_slli_epi16, _mm_slli_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], n)
      }();
      return regCast<Reg>(shifted & regCast<Reg>(broadcastReg(T(left))));
    } else if constexpr (sizeof(T) == 2) {
      VEK_INTRINSIC(_mm256_slli_epi16, _mm_slli_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], n)
    } else if constexpr (sizeof(T) == 4) {
      VEK_INTRINSIC(_mm256_slli_epi32, _mm_slli_epi32, __m256i, __m128i, Reg, (Raw)a.r[i], n)
    } else {
      VEK_INTRINSIC(_mm256_slli_epi64, _mm_slli_epi64, __m256i, __m128i, Reg, (Raw)a.r[i], n)
    }
  });
}

template <class T>
VEK_INLINE Pack<T> operator>>(Pack<T> a, int n) {
  using Reg = typename Pack<T>::Reg;
  if constexpr (kSame<T, uint8_t>) {
    return each<Pack<T>>([&](int i) VEK_LAMBDA {
      const Reg shifted = [&]() VEK_LAMBDA {
        VEK_INTRINSIC(_mm256_srli_epi16, _mm_srli_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], n)
      }();
      return regCast<Reg>(shifted & broadcastReg(T(n > 7 ? 0 : 0xFF >> n)));
    });
  } else if constexpr (kSame<T, int64_t>) {
    // No level up to AVX2 shifts 64-bit lanes arithmetically: bias to unsigned, shift, and take the bias off again.
    const int count = n > 63 ? 63 : n;
    const Pack<uint64_t> bias = broadcast(uint64_t(1) << 63);
    return bits<int64_t>(((bits<uint64_t>(a) ^ bias) >> count) - (bias >> count));
  } else {
    return each<Pack<T>>([&](int i) VEK_LAMBDA {
      if constexpr (kSame<T, int16_t>) {
        VEK_INTRINSIC(_mm256_srai_epi16, _mm_srai_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], n)
      } else if constexpr (kSame<T, uint16_t>) {
        VEK_INTRINSIC(_mm256_srli_epi16, _mm_srli_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], n)
      } else if constexpr (kSame<T, int32_t>) {
        VEK_INTRINSIC(_mm256_srai_epi32, _mm_srai_epi32, __m256i, __m128i, Reg, (Raw)a.r[i], n)
      } else if constexpr (kSame<T, uint32_t>) {
        VEK_INTRINSIC(_mm256_srli_epi32, _mm_srli_epi32, __m256i, __m128i, Reg, (Raw)a.r[i], n)
      } else {
        static_assert(kSame<T, uint64_t>);
        VEK_INTRINSIC(_mm256_srli_epi64, _mm_srli_epi64, __m256i, __m128i, Reg, (Raw)a.r[i], n)
      }
    });
  }
}

// (a * b + 2^14) >> 15; the square of -2^15 wraps to -2^15.
template <class T>
VEK_INLINE Pack<T> mulRound15(Pack<T> a, Pack<T> b) {
  static_assert(kSame<T, int16_t>);
  if constexpr (kSsse3) {
    return each<Pack<T>>([&](int i) VEK_LAMBDA {
      using Reg = typename Pack<T>::Reg;
      VEK_INTRINSIC(_mm256_mulhrs_epi16, _mm_mulhrs_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    });
  } else {
    const Pack<T> high = mulHigh(a, b);
    const Pack<uint16_t> low = bits<uint16_t>(a * b);
    return ((high + high) | bits<T>(low >> 15)) + bits<T>((low >> 14) & broadcast(uint16_t(1)));
  }
}

// A count for shifting all lanes, unsigned or signed, known at run time only: prepared once outside a loop for the
// level's fastest shift. A count that sits in a register costs an extra operation at every shift; with AVX2 lanes of 32
// and 64 bits have a shift by lanes instead, and 16-bit lanes go by the halves of a product with a power of two.
template <class T>
struct ShiftCount {
  int n;
  Pack<T> lanes;            // the count in every lane
  Pack<uint16_t> up, down;  // 2^n and 2^(16-n)

  VEK_INLINE explicit ShiftCount(int count) : n(count) {
    lanes = broadcast(T(count));
    up = broadcast(uint16_t(1u << unsigned(count) % 32));
    down = broadcast(uint16_t(1u << (16 - unsigned(count)) % 32));
  }
};

// Counts from 0 to the width of a lane.
template <class T>
VEK_INLINE Pack<T> operator<<(Pack<T> a, const ShiftCount<T>& s) {
  static_assert(sizeof(T) > 1);
  if constexpr (sizeof(T) == 2) {
    return a * bits<T>(s.up);
  } else if constexpr (kAvx2 && sizeof(T) == 4) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_sllv_epi32((__m256i)a.r[0], (__m256i)s.lanes.r[0]))}};
  } else if constexpr (kAvx2) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_sllv_epi64((__m256i)a.r[0], (__m256i)s.lanes.r[0]))}};
  } else {
    return a << s.n;
  }
}

// Counts from 1 to the width of a lane.
template <class T>
VEK_INLINE Pack<T> operator>>(Pack<T> a, const ShiftCount<T>& s) {
  static_assert(sizeof(T) > 1);
  if constexpr (kSame<T, uint16_t>) {
    return mulHigh(a, s.down);
  } else if constexpr (kAvx2 && kSame<T, int32_t>) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_srav_epi32((__m256i)a.r[0], (__m256i)s.lanes.r[0]))}};
  } else if constexpr (kAvx2 && kSame<T, uint32_t>) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_srlv_epi32((__m256i)a.r[0], (__m256i)s.lanes.r[0]))}};
  } else if constexpr (kAvx2 && kSame<T, uint64_t>) {
    return {{regCast<typename Pack<T>::Reg>(_mm256_srlv_epi64((__m256i)a.r[0], (__m256i)s.lanes.r[0]))}};
  } else {
    return a >> s.n;
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
