// SPDX-License-Identifier: Apache-2.0
// Between element types: widening and narrowing integers, integers and floats, single and double precision, rounding.
#ifndef VEK_CORE_SIMD_CONVERT_H
#define VEK_CORE_SIMD_CONVERT_H

#include "core/simd/interleave.h"

namespace vek::VEK_SLOT {
namespace {

// ---- wider integers -------------------------------------------------------------------------------------------------

// The lowest elements of x, one step wider: zero- or sign-extended by the source type.
template <class S, int Half>
VEK_INLINE __m128i widenStep(__m128i x) {
  constexpr int size = int(sizeof(S));
  __m128i fill = _mm_setzero_si128();
  if constexpr (kSigned<S>) {
    if constexpr (size == 1) fill = _mm_cmpgt_epi8(fill, x);
    if constexpr (size == 2) fill = _mm_srai_epi16(x, 15);
    if constexpr (size == 4) fill = _mm_srai_epi32(x, 31);
  }
  return Half == 0 ? unpackLow<size>(x, fill) : unpackHigh<size>(x, fill);
}

template <class D, class S>
VEK_INLINE typename Pack<D>::Reg widenReg(__m128i x) {
  using Reg = typename Pack<D>::Reg;
  constexpr bool sign = kSigned<S>;
  constexpr int from = sizeof(S), to = sizeof(D);
  if constexpr (sizeof(Reg) == 32) {
    if constexpr (from == 1 && to == 2) return regCast<Reg>(sign ? _mm256_cvtepi8_epi16(x) : _mm256_cvtepu8_epi16(x));
    if constexpr (from == 1 && to == 4) return regCast<Reg>(sign ? _mm256_cvtepi8_epi32(x) : _mm256_cvtepu8_epi32(x));
    if constexpr (from == 1 && to == 8) return regCast<Reg>(sign ? _mm256_cvtepi8_epi64(x) : _mm256_cvtepu8_epi64(x));
    if constexpr (from == 2 && to == 4) return regCast<Reg>(sign ? _mm256_cvtepi16_epi32(x) : _mm256_cvtepu16_epi32(x));
    if constexpr (from == 2 && to == 8) return regCast<Reg>(sign ? _mm256_cvtepi16_epi64(x) : _mm256_cvtepu16_epi64(x));
    if constexpr (from == 4 && to == 8) return regCast<Reg>(sign ? _mm256_cvtepi32_epi64(x) : _mm256_cvtepu32_epi64(x));
  } else if constexpr (kSse41) {
    if constexpr (from == 1 && to == 2) return regCast<Reg>(sign ? _mm_cvtepi8_epi16(x) : _mm_cvtepu8_epi16(x));
    if constexpr (from == 1 && to == 4) return regCast<Reg>(sign ? _mm_cvtepi8_epi32(x) : _mm_cvtepu8_epi32(x));
    if constexpr (from == 1 && to == 8) return regCast<Reg>(sign ? _mm_cvtepi8_epi64(x) : _mm_cvtepu8_epi64(x));
    if constexpr (from == 2 && to == 4) return regCast<Reg>(sign ? _mm_cvtepi16_epi32(x) : _mm_cvtepu16_epi32(x));
    if constexpr (from == 2 && to == 8) return regCast<Reg>(sign ? _mm_cvtepi16_epi64(x) : _mm_cvtepu16_epi64(x));
    if constexpr (from == 4 && to == 8) return regCast<Reg>(sign ? _mm_cvtepi32_epi64(x) : _mm_cvtepu32_epi64(x));
  } else {
    x = widenStep<S, 0>(x);
    if constexpr (to > 2 * from) {
      using Twice = typename IntTypes<2 * from>::Signed;
      using TwiceU = typename IntTypes<2 * from>::Unsigned;
      if constexpr (sign) x = widenStep<Twice, 0>(x);
      if constexpr (!sign) x = widenStep<TwiceU, 0>(x);
    }
    if constexpr (to > 4 * from) {
      if constexpr (sign) x = widenStep<int32_t, 0>(x);
      if constexpr (!sign) x = widenStep<uint32_t, 0>(x);
    }
    return regCast<Reg>(x);
  }
}

// Exactly one pack of the wide type, read from narrow integers.
template <class D, class S>
VEK_INLINE Pack<D> loadWiden(const S* p) {
  constexpr int step = Pack<D>::regLanes;
  return each<Pack<D>>([&](int i) VEK_LAMBDA { return widenReg<D, S>(loadBytes<step* int(sizeof(S))>(p + i * step)); });
}

// All elements of a pack, twice as wide, in order.
template <class D, class S>
VEK_INLINE Group<D, 2> widen(Pack<S> a) {
  static_assert(sizeof(D) == 2 * sizeof(S));
  const auto one = [](__m128i h) VEK_LAMBDA {
    if constexpr (Pack<D>::regs == 1) {
      return Pack<D>{{widenReg<D, S>(h)}};
    } else {
      return fromHalves<D>(widenStep<S, 0>(h), widenStep<S, 1>(h));
    }
  };
  return {{one(half(a, 0)), one(half(a, 1))}};
}

// ---- narrower integers ----------------------------------------------------------------------------------------------

// Two packs to one of half the width, each value clamped to the range of D. From 32 to 16 bits, from 16 to 8.
template <class D, class S>
VEK_INLINE Pack<D> narrowSaturated(Pack<S> a, Pack<S> b) {
  static_assert(kSigned<S> && sizeof(S) == 2 * sizeof(D));
  if constexpr (kAvx2) {
    const __m256i x = (__m256i)a.r[0], y = (__m256i)b.r[0];
    __m256i z;
    if constexpr (sizeof(S) == 4) {
      z = kSigned<D> ? _mm256_packs_epi32(x, y) : _mm256_packus_epi32(x, y);
    } else {
      z = kSigned<D> ? _mm256_packs_epi16(x, y) : _mm256_packus_epi16(x, y);
    }
    return {{regCast<typename Pack<D>::Reg>(_mm256_permute4x64_epi64(z, 0xD8))}};
  } else {
    const auto one = [](__m128i x, __m128i y) VEK_LAMBDA {
      if constexpr (sizeof(S) == 2) {
        return kSigned<D> ? _mm_packs_epi16(x, y) : _mm_packus_epi16(x, y);
      } else if constexpr (kSigned<D>) {
        return _mm_packs_epi32(x, y);
      } else if constexpr (kSse41) {
        return _mm_packus_epi32(x, y);
      } else {
        // Without an unsigned pack: clamp below at 0, move the range to that of int16, and move it back.
        const __m128i offset = _mm_set1_epi32(32768);
        const auto shifted = [&](__m128i v) VEK_LAMBDA {
          return _mm_sub_epi32(_mm_andnot_si128(_mm_srai_epi32(v, 31), v), offset);
        };
        return _mm_xor_si128(_mm_packs_epi32(shifted(x), shifted(y)), _mm_set1_epi16(-32768));
      }
    };
    return fromHalves<D>(one((__m128i)a.r[0], (__m128i)a.r[1]), one((__m128i)b.r[0], (__m128i)b.r[1]));
  }
}

// The same within each 16-byte half: the order that interleaveInHalves gives, undone.
template <class D, class S>
VEK_INLINE Pack<D> narrowInHalves(Pack<S> a, Pack<S> b) {
  static_assert((kSame<S, int32_t> && kSame<D, int16_t>) || (kSame<S, int16_t> && kSame<D, uint8_t>));
  return each<Pack<D>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<D>::Reg;
    if constexpr (sizeof(S) == 4) {
      VEK_INTRINSIC(_mm256_packs_epi32, _mm_packs_epi32, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    } else {
      VEK_INTRINSIC(_mm256_packus_epi16, _mm_packus_epi16, __m256i, __m128i, Reg, (Raw)a.r[i], (Raw)b.r[i])
    }
  });
}

// Four packs of 32-bit values to one of 8-bit ones, each clamped to the range of D.
template <class D>
VEK_INLINE Pack<D> narrowQuarter(Group<int32_t, 4> a) {
  static_assert(sizeof(D) == 1);
  if constexpr (kAvx2) {
    // Both steps narrow within 16-byte halves; one permutation at the end puts the groups of four in order.
    const auto pack16 = [&](int k) VEK_LAMBDA { return _mm256_packs_epi32(whole(a.p[k]), whole(a.p[k + 1])); };
    const __m256i x = pack16(0), y = pack16(2);
    const __m256i z = kSigned<D> ? _mm256_packs_epi16(x, y) : _mm256_packus_epi16(x, y);
    return {
        {regCast<typename Pack<D>::Reg>(_mm256_permutevar8x32_epi32(z, _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7)))}};
  } else {
    return narrowSaturated<D>(narrowSaturated<int16_t>(a.p[0], a.p[1]), narrowSaturated<int16_t>(a.p[2], a.p[3]));
  }
}

// The low halves of the elements, without saturation.
template <class D, class S>
VEK_INLINE Pack<D> narrowWrapped(Pack<S> a, Pack<S> b) {
  static_assert(sizeof(S) == 2 * sizeof(D));
  return deinterleave(bits<D>(a), bits<D>(b)).a;
}

// ---- integers and floats -------------------------------------------------------------------------------------------

VEK_INLINE Pack<float> toFloat(Pack<int32_t> a) {
  if constexpr (kAvx) {
    return {{regCast<Pack<float>::Reg>(_mm256_cvtepi32_ps(whole(a)))}};
  } else {
    return fromHalves<float>((__m128i)_mm_cvtepi32_ps(half(a, 0)), (__m128i)_mm_cvtepi32_ps(half(a, 1)));
  }
}

// To the nearest integer (ties to even), or toward zero; NaN and values out of range give -2^31.
VEK_INLINE Pack<int32_t> toInt32Nearest(Pack<float> a) {
  if constexpr (kAvx) {
    const __m256i x = _mm256_cvtps_epi32((__m256)whole(a));
    return fromHalves<int32_t>(lowHalf(x), highHalf(x));
  } else {
    return fromHalves<int32_t>(_mm_cvtps_epi32((__m128)half(a, 0)), _mm_cvtps_epi32((__m128)half(a, 1)));
  }
}
VEK_INLINE Pack<int32_t> toInt32Truncated(Pack<float> a) {
  if constexpr (kAvx) {
    const __m256i x = _mm256_cvttps_epi32((__m256)whole(a));
    return fromHalves<int32_t>(lowHalf(x), highHalf(x));
  } else {
    return fromHalves<int32_t>(_mm_cvttps_epi32((__m128)half(a, 0)), _mm_cvttps_epi32((__m128)half(a, 1)));
  }
}

// Four elements from 16 bytes to doubles.
VEK_INLINE Pack<double> floatsToDouble(__m128i x) {
  if constexpr (kAvx) {
    return {{regCast<Pack<double>::Reg>(_mm256_cvtps_pd((__m128)x))}};
  } else {
    return fromHalves<double>((__m128i)_mm_cvtps_pd((__m128)x),
                              (__m128i)_mm_cvtps_pd((__m128)_mm_shuffle_epi32(x, 0xEE)));
  }
}
VEK_INLINE Pack<double> int32sToDouble(__m128i x) {
  if constexpr (kAvx) {
    return {{regCast<Pack<double>::Reg>(_mm256_cvtepi32_pd(x))}};
  } else {
    return fromHalves<double>((__m128i)_mm_cvtepi32_pd(x), (__m128i)_mm_cvtepi32_pd(_mm_shuffle_epi32(x, 0xEE)));
  }
}
VEK_INLINE Pack<double> loadDouble(const float* p) { return floatsToDouble(loadBytes<16>(p)); }
VEK_INLINE Pack<double> loadDouble(const int32_t* p) { return int32sToDouble(loadBytes<16>(p)); }
// Two elements, and back.
VEK_INLINE __m128d pairToDouble(__m128 x) { return _mm_cvtps_pd(x); }
VEK_INLINE __m128d readPair(const float* p) { return pairToDouble((__m128)loadBytes<8>(p)); }
VEK_INLINE __m128d readPair(const int32_t* p) { return _mm_cvtepi32_pd(loadBytes<8>(p)); }
VEK_INLINE void storePair(float* p, __m128d x) { storeBytes<8>(p, (__m128i)_mm_cvtpd_ps(x)); }
VEK_INLINE void storePair(double* p, __m128d x) { storeBytes<16>(p, (__m128i)x); }

VEK_INLINE Group<double, 2> toDouble(Pack<float> a) {
  return {{floatsToDouble(half(a, 0)), floatsToDouble(half(a, 1))}};
}
VEK_INLINE Group<double, 2> toDouble(Pack<int32_t> a) {
  return {{int32sToDouble(half(a, 0)), int32sToDouble(half(a, 1))}};
}

// Four doubles to 16 bytes of floats or 32-bit integers, in the low half of the result for each pack.
VEK_INLINE __m128i doubleToFloats(Pack<double> a) {
  if constexpr (kAvx) {
    return (__m128i)_mm256_cvtpd_ps((__m256d)whole(a));
  } else {
    return (__m128i)_mm_movelh_ps(_mm_cvtpd_ps((__m128d)half(a, 0)), _mm_cvtpd_ps((__m128d)half(a, 1)));
  }
}
// For functions whose only wide instructions are those that narrow from memory to half a register: the processor counts
// the upper halves as used by them, the compiler does not.
VEK_INLINE void leaveUpperHalvesClean() {
  if constexpr (kAvx) _mm256_zeroupper();
}
VEK_INLINE __m128i doubleToInt32Nearest(Pack<double> a) {
  if constexpr (kAvx) {
    return _mm256_cvtpd_epi32((__m256d)whole(a));
  } else {
    return _mm_unpacklo_epi64(_mm_cvtpd_epi32((__m128d)half(a, 0)), _mm_cvtpd_epi32((__m128d)half(a, 1)));
  }
}
VEK_INLINE __m128i doubleToInt32Truncated(Pack<double> a) {
  if constexpr (kAvx) {
    return _mm256_cvttpd_epi32((__m256d)whole(a));
  } else {
    return _mm_unpacklo_epi64(_mm_cvttpd_epi32((__m128d)half(a, 0)), _mm_cvttpd_epi32((__m128d)half(a, 1)));
  }
}
VEK_INLINE Pack<float> toFloat(Group<double, 2> a) {
  return fromHalves<float>(doubleToFloats(a.p[0]), doubleToFloats(a.p[1]));
}
VEK_INLINE Pack<int32_t> toInt32Nearest(Group<double, 2> a) {
  return fromHalves<int32_t>(doubleToInt32Nearest(a.p[0]), doubleToInt32Nearest(a.p[1]));
}
VEK_INLINE Pack<int32_t> toInt32Truncated(Group<double, 2> a) {
  return fromHalves<int32_t>(doubleToInt32Truncated(a.p[0]), doubleToInt32Truncated(a.p[1]));
}

// ---- rounding to integral floats -----------------------------------------------------------------------------------

template <int Mode, class T>
VEK_INLINE Pack<T> roundWith(Pack<T> a) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    if constexpr (kSame<T, float> && sizeof(Reg) == 32) return regCast<Reg>(_mm256_round_ps((__m256)a.r[i], Mode));
    if constexpr (kSame<T, float> && sizeof(Reg) == 16) return regCast<Reg>(_mm_round_ps((__m128)a.r[i], Mode));
    if constexpr (kSame<T, double> && sizeof(Reg) == 32) return regCast<Reg>(_mm256_round_pd((__m256d)a.r[i], Mode));
    if constexpr (kSame<T, double> && sizeof(Reg) == 16) return regCast<Reg>(_mm_round_pd((__m128d)a.r[i], Mode));
  });
}

// To nearest, ties to even; the sign of zero is kept.
template <class T>
VEK_INLINE Pack<T> roundEven(Pack<T> a) {
  if constexpr (kSse41) {
    return roundWith<_MM_FROUND_TO_NEAREST_INT | _MM_FROUND_NO_EXC>(a);
  } else {
    // Adding and taking away the first value without a fraction lets the addition round.
    const Pack<T> big = broadcast(kSame<T, float> ? T(8388608.0) : T(4503599627370496.0));
    const Pack<T> m = magnitude(a);
    return select(m < big, ((m + big) - big) | signOf(a), a);
  }
}
}  // namespace
}  // namespace vek::VEK_SLOT

#endif
