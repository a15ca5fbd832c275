// SPDX-License-Identifier: Apache-2.0
// Pack<T>: 32 bytes of elements in every slot, one register where the level has registers that wide for the type and a
// pair of 16-byte registers elsewhere. Kernels are written on packs once; as the logical width never changes, sums are
// grouped alike and results agree to the bit between slots.
#ifndef VEK_CORE_SIMD_PACK_H
#define VEK_CORE_SIMD_PACK_H

#include "core/simd/level.h"

namespace vek::VEK_SLOT {
namespace {

template <class T, int Bytes>
struct VectorOf {
  typedef T type __attribute__((vector_size(Bytes)));
};

template <class T>
constexpr int kRegBytes = kAvx2 || (kAvx && kFloat<T>) ? 32 : 16;

template <class T>
struct Pack {
  using Element = T;
  static constexpr int lanes = 32 / int(sizeof(T));
  static constexpr int regs = 32 / kRegBytes<T>;
  static constexpr int regLanes = lanes / regs;
  using Reg = typename VectorOf<T, kRegBytes<T>>::type;
  Reg r[regs];
};

// The result of a comparison: all ones or all zeros a lane, in registers shaped like those of Pack<T>.
template <class T>
struct Mask {
  using Element = T;
  static constexpr int regs = Pack<T>::regs;
  using Reg = typename VectorOf<SignedOf<T>, kRegBytes<T>>::type;
  Reg r[regs];
};

// K packs that travel together (a block of elements wider than one pack).
template <class T, int K>
struct Group {
  Pack<T> p[K];
};

// Builds a pack (or mask) from a function of the register number.
template <class P, class F>
VEK_INLINE P each(F f) {
  if constexpr (P::regs == 1) {
    return P{{f(0)}};
  } else {
    return P{{f(0), f(1)}};
  }
}

// ---- reinterpretation -------------------------------------------------------------------------------------------

template <class To, class From>
VEK_INLINE To regCast(From x) {
  static_assert(sizeof(To) == sizeof(From));
  return (To)x;
}
VEK_INLINE __m128i lowHalf(__m256i x) { return _mm256_castsi256_si128(x); }
VEK_INLINE __m128i highHalf(__m256i x) { return _mm256_extractf128_si256(x, 1); }
VEK_INLINE __m256i joinHalves(__m128i low, __m128i high) {
  return _mm256_insertf128_si256(_mm256_castsi128_si256(low), high, 1);
}

// From one register shape to another: only slot e9 has both (floats in 32 bytes, integers in 16).
template <class To, class From>
VEK_INLINE To reshape(From x) {
  if constexpr (To::regs == From::regs) {
    return each<To>([&](int i) VEK_LAMBDA { return regCast<typename To::Reg>(x.r[i]); });
  } else if constexpr (From::regs == 1) {
    return To{{regCast<typename To::Reg>(lowHalf(regCast<__m256i>(x.r[0]))),
               regCast<typename To::Reg>(highHalf(regCast<__m256i>(x.r[0])))}};
  } else {
    return To{{regCast<typename To::Reg>(joinHalves(regCast<__m128i>(x.r[0]), regCast<__m128i>(x.r[1])))}};
  }
}

// The same 32 bytes seen as elements of U.
template <class U, class T>
VEK_INLINE Pack<U> bits(Pack<T> x) {
  return reshape<Pack<U>>(x);
}
template <class U, class T>
VEK_INLINE Pack<U> bits(Mask<T> x) {
  return reshape<Pack<U>>(x);
}
template <class U, class T>
VEK_INLINE Mask<U> asMask(Pack<T> x) {
  return reshape<Mask<U>>(x);
}
template <class U, class T>
VEK_INLINE Mask<U> maskCast(Mask<T> x) {
  return reshape<Mask<U>>(x);
}

// ---- memory -----------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE typename Pack<T>::Reg loadReg(const T* p) {
  using Reg = typename Pack<T>::Reg;
  if constexpr (sizeof(Reg) == 32) {
    return regCast<Reg>(_mm256_loadu_si256(reinterpret_cast<const __m256i_u*>(p)));
  } else {
    return regCast<Reg>(_mm_loadu_si128(reinterpret_cast<const __m128i_u*>(p)));
  }
}

template <class T>
VEK_INLINE Pack<T> load(const T* p) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA { return loadReg(p + i * Pack<T>::regLanes); });
}

template <class T>
VEK_INLINE void store(T* p, Pack<T> x) {
  if constexpr (Pack<T>::regs == 1) {
    _mm256_storeu_si256(reinterpret_cast<__m256i_u*>(p), regCast<__m256i>(x.r[0]));
  } else {
    _mm_storeu_si128(reinterpret_cast<__m128i_u*>(p), regCast<__m128i>(x.r[0]));
    _mm_storeu_si128(reinterpret_cast<__m128i_u*>(p + Pack<T>::regLanes), regCast<__m128i>(x.r[1]));
  }
}

// Past the caches, to memory; p is 32-byte aligned. The caller ends with _mm_sfence().
template <class T>
VEK_INLINE void storeStreaming(T* p, Pack<T> x) {
  if constexpr (Pack<T>::regs == 1) {
    _mm256_stream_si256(reinterpret_cast<__m256i*>(p), regCast<__m256i>(x.r[0]));
  } else {
    _mm_stream_si128(reinterpret_cast<__m128i*>(p), regCast<__m128i>(x.r[0]));
    _mm_stream_si128(reinterpret_cast<__m128i*>(p + Pack<T>::regLanes), regCast<__m128i>(x.r[1]));
  }
}

template <int K, class T>
VEK_INLINE Group<T, K> loadGroup(const T* p) {
  Group<T, K> g;
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) g.p[k] = load(p + k * Pack<T>::lanes);
  return g;
}

template <int K, class T>
VEK_INLINE void storeGroup(T* p, Group<T, K> g) {
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) store(p + k * Pack<T>::lanes, g.p[k]);
}

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

// n elements of a group, 0 <= n <= K packs.
template <int K, class T>
VEK_INLINE Group<T, K> loadGroupPart(const T* p, ptrdiff_t n) {
  constexpr int lanes = Pack<T>::lanes;
  Group<T, K> g;
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) {
    const ptrdiff_t left = n - k * lanes;
    g.p[k] = left >= lanes ? load(p + k * lanes) : loadPart(p + k * lanes, left > 0 ? left : 0);
  }
  return g;
}

template <int K, class T>
VEK_INLINE void storeGroupPart(T* p, Group<T, K> g, ptrdiff_t n) {
  constexpr int lanes = Pack<T>::lanes;
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) {
    const ptrdiff_t left = n - k * lanes;
    if (left >= lanes) {
      store(p + k * lanes, g.p[k]);
    } else if (left > 0) {
      storePart(p + k * lanes, g.p[k], left);
    }
  }
}

// ---- constants --------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE typename Pack<T>::Reg broadcastReg(T x) {
  if constexpr (kSame<T, float>) {
    if constexpr (kAvx) {
      return regCast<typename Pack<T>::Reg>(_mm256_set1_ps(x));
    } else {
      return regCast<typename Pack<T>::Reg>(_mm_set1_ps(x));
    }
  } else if constexpr (kSame<T, double>) {
    if constexpr (kAvx) {
      return regCast<typename Pack<T>::Reg>(_mm256_set1_pd(x));
    } else {
      return regCast<typename Pack<T>::Reg>(_mm_set1_pd(x));
    }
  } else {
    return typename Pack<T>::Reg{} + x;
  }
}

template <class T>
VEK_INLINE Pack<T> broadcast(T x) {
  const typename Pack<T>::Reg reg = broadcastReg(x);
  return each<Pack<T>>([&](int) VEK_LAMBDA { return reg; });
}

template <class T>
VEK_INLINE Pack<T> zeros() {
  return each<Pack<T>>([](int) VEK_LAMBDA { return typename Pack<T>::Reg{}; });
}

// 0, 1, 2, ... by lane.
template <class T>
VEK_INLINE Pack<T> iota() {
  alignas(32) T x[Pack<T>::lanes];
#pragma GCC unroll 32
  for (int i = 0; i < Pack<T>::lanes; ++i) x[i] = T(i);
  return load(x);
}

// Alternating values, the pattern of an interleaved complex constant.
template <class T>
VEK_INLINE Pack<T> broadcastPair(T even, T odd) {
  alignas(32) T x[Pack<T>::lanes];
#pragma GCC unroll 32
  for (int i = 0; i < Pack<T>::lanes; i += 2) x[i] = even, x[i + 1] = odd;
  return load(x);
}

// ---- arithmetic: lane by lane, IEEE for floats, wrapping for integers ---------------------------------------------

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

// ---- comparison and choice ----------------------------------------------------------------------------------------

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

// ---- a few functions of one pack ------------------------------------------------------------------------------------

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

// Keeps a loaded pack in its register: left to itself the compiler reads memory again for each of several uses.
template <class T>
VEK_INLINE Pack<T> inRegister(Pack<T> a) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    typename Pack<T>::Reg r = a.r[i];
    asm("" : "+x"(r));
    return r;
  });
}

// The lanes as an array, for the few places that finish in scalar code.
template <class T>
struct Lanes {
  alignas(32) T x[Pack<T>::lanes];
  VEK_INLINE T operator[](int i) const { return x[i]; }
};
template <class T>
VEK_INLINE Lanes<T> lanesOf(Pack<T> a) {
  Lanes<T> out;
  store(out.x, a);
  return out;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
