// SPDX-License-Identifier: Apache-2.0
// The two 16-byte halves of a pack, and lanes moved from one to the other.
#ifndef VEK_CORE_SIMD_HALVES_H
#define VEK_CORE_SIMD_HALVES_H

#include "core/simd/pack.h"

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

// The first bytes of memory as the lowest of a half, and back.
template <int Bytes>
VEK_INLINE __m128i loadBytes(const void* p) {
  if constexpr (Bytes == 16) return _mm_loadu_si128((const __m128i_u*)p);
  if constexpr (Bytes == 8) return _mm_loadl_epi64((const __m128i_u*)p);
  if constexpr (Bytes == 4) {
    int32_t x;
    __builtin_memcpy(&x, p, 4);
    return _mm_cvtsi32_si128(x);
  }
  if constexpr (Bytes == 2) {
    uint16_t x;
    __builtin_memcpy(&x, p, 2);
    return _mm_cvtsi32_si128(x);
  }
}
template <int Bytes>
VEK_INLINE void storeBytes(void* p, __m128i x) {
  static_assert(Bytes == 16 || Bytes == 8);
  if constexpr (Bytes == 16) _mm_storeu_si128((__m128i_u*)p, x);
  if constexpr (Bytes == 8) _mm_storel_epi64((__m128i_u*)p, x);
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

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
