// SPDX-License-Identifier: Apache-2.0
// Conversions from and to packed 24-bit integers, eight elements (exactly 24 bytes) at a time.
#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "vector/convert_scale.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kBlock = Pack<int32_t>::lanes;
constexpr int32_t kHigh24 = (1 << 23) - 1;
constexpr uint32_t kHigh24u = (1u << 24) - 1;

// ---- unpacking ------------------------------------------------------------------------------------------------------

// Three bytes each to the upper three of a 32-bit lane, from the first 12 bytes of x or from the last.
alignas(16) constexpr uint8_t kSpreadFirst[16] = {128, 0, 1, 2, 128, 3, 4, 5, 128, 6, 7, 8, 128, 9, 10, 11};
alignas(16) constexpr uint8_t kSpreadLast[16] = {128, 4, 5, 6, 128, 7, 8, 9, 128, 10, 11, 12, 128, 13, 14, 15};

VEK_INLINE __m128i order(const uint8_t (&table)[16]) { return _mm_load_si128((const __m128i*)table); }

// The same by byte shifts, for the levels without a byte shuffle.
VEK_INLINE __m128i spreadByShifts(__m128i x) {
  const __m128i pair0 = _mm_unpacklo_epi32(x, _mm_srli_si128(x, 3));
  const __m128i pair1 = _mm_unpacklo_epi32(_mm_srli_si128(x, 6), _mm_srli_si128(x, 9));
  return _mm_slli_epi32(_mm_unpacklo_epi64(pair0, pair1), 8);
}

// Eight elements, each times 256. The two loads overlap so that neither leaves the 24 bytes.
template <class T>
VEK_INLINE Pack<T> load24High(const Vek24u* p) {
  const __m128i first = loadBytes<16>(p), last = loadBytes<16>(p->byte + 8);
  if constexpr (kAvx2) {
    return {{regCast<typename Pack<T>::Reg>(
        _mm256_shuffle_epi8(joinHalves(first, last), joinHalves(order(kSpreadFirst), order(kSpreadLast))))}};
  } else if constexpr (kSsse3) {
    return fromHalves<T>(lookup16(first, order(kSpreadFirst)), lookup16(last, order(kSpreadLast)));
  } else {
    return fromHalves<T>(spreadByShifts(first), spreadByShifts(_mm_srli_si128(last, 4)));
  }
}

template <class T>
VEK_INLINE Pack<T> load24(const Vek24u* p) {
  return load24High<T>(p) >> 8;
}

template <class T, class D, class Op>
VEK_INLINE VekStatus unpackVector(Op op, const Vek8u* src, D* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  sweep<kBlock>([op](D* d, const Vek24u* x) VEK_LAMBDA { store(d, op(load24<T>(x))); }, dst, len,
                reinterpret_cast<const Vek24u*>(src));
  return vekStsNoErr;
}

constexpr auto kSame32 = [](auto x) VEK_LAMBDA { return x; };
constexpr auto kAsFloat = [](auto x) VEK_LAMBDA { return toFloat(bits<int32_t>(x)); };

// ---- packing --------------------------------------------------------------------------------------------------------

// The lower three bytes of each lane to the first 12 bytes.
alignas(16) constexpr uint8_t kGather[16] = {0, 1, 2, 4, 5, 6, 8, 9, 10, 12, 13, 14, 128, 128, 128, 128};

VEK_INLINE __m128i gather12(__m128i x) {
  if constexpr (kSsse3) {
    return lookup16(x, order(kGather));
  } else {
    const __m128i even = _mm_and_si128(x, _mm_set1_epi64x(0xFFFFFF));
    const __m128i odd = _mm_and_si128(_mm_srli_epi64(x, 8), _mm_set1_epi64x(0xFFFFFF000000));
    const __m128i six = _mm_or_si128(even, odd);
    return _mm_or_si128(_mm_move_epi64(six), _mm_slli_si128(_mm_srli_si128(six, 8), 6));
  }
}

template <class T>
VEK_INLINE void store24(Vek24u* d, Pack<T> x) {
  __m128i head, rest;
  if constexpr (kAvx2) {
    const __m256i twelves = _mm256_shuffle_epi8(whole(x), _mm256_broadcastsi128_si256(order(kGather)));
    const __m256i all = _mm256_permutevar8x32_epi32(twelves, _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 3, 7));
    head = lowHalf(all), rest = highHalf(all);
  } else {
    const __m128i low = gather12(half(x, 0)), high = gather12(half(x, 1));
    head = _mm_or_si128(low, _mm_slli_si128(high, 12)), rest = _mm_srli_si128(high, 4);
  }
  _mm_storeu_si128((__m128i_u*)d, head);
  _mm_storel_epi64((__m128i_u*)(d->byte + 16), rest);
}

// op turns packs of the source into packs of 32-bit integers in the range of 24 bits.
template <class S, class Op>
VEK_INLINE void packVector(Op op, const S* src, Vek8u* dst, int len) {
  sweep<kBlock>([op](Vek24u* d, const S* x) VEK_LAMBDA { store24(d, op(load(x))); }, reinterpret_cast<Vek24u*>(dst),
                len, src);
}

template <class T>
VEK_INLINE Pack<T> clamp24(Pack<T> x) {
  if constexpr (kSigned<T>) {
    return minOf(maxOf(x, broadcast(T(-kHigh24 - 1))), broadcast(T(kHigh24)));
  } else {
    return minOf(x, broadcast(T(kHigh24u)));
  }
}

template <class T>
VEK_INLINE VekStatus pack24Scaled(const T* src, Vek8u* dst, int len, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (scaleFactor > 32) {
    __builtin_memset(dst, 0, size_t(len) * sizeof(Vek24u));
  } else if (scaleFactor > 0) {
    packVector([=](Pack<T> x) VEK_LAMBDA { return clamp24(shiftRounded<vekRoundNearestEven>(x, scaleFactor)); }, src,
               dst, len);
  } else {
    const ShiftUp<T> up(kSigned<T> ? T(-kHigh24 - 1) : T(0), kSigned<T> ? T(kHigh24) : T(kHigh24u),
                        scaleFactor < -24 ? 24 : -scaleFactor);
    packVector([=](Pack<T> x) VEK_LAMBDA { return clamp24(up(x)); }, src, dst, len);
  }
  return vekStsNoErr;
}

// Clamped, then rounded with ties away from zero; NaN gives 0. Ordered so that the maximum with 0 takes NaN away from
// the unsigned range; the signed one needs a mask.
template <bool Signed>
VEK_INLINE Pack<int32_t> roundTo24(Pack<float> y) {
  if constexpr (Signed) {
    const Pack<float> number = keep(y == y, y);
    return roundToInt32<vekRoundHalfAway>(
        minOf(maxOf(number, broadcast(float(-kHigh24 - 1))), broadcast(float(kHigh24))));
  } else {
    const Pack<float> inRange = minOf(maxOf(y, zeros<float>()), broadcast(float(kHigh24u)));
    return toInt32Truncated(inRange + broadcast(kBelowHalf<float>));
  }
}

template <bool Signed>
VEK_INLINE VekStatus floatTo24(const float* src, Vek8u* dst, int len, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  const Pack<float> m = broadcast(scaleMultiplier<float>(scaleFactor));
  packVector([m](Pack<float> x) VEK_LAMBDA { return roundTo24<Signed>(x * m); }, src, dst, len);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksConvert_24u32u(const Vek8u* pSrc, Vek32u* pDst, int len) {
  return unpackVector<uint32_t>(kSame32, pSrc, pDst, len);
}
VekStatus veksConvert_24s32s(const Vek8u* pSrc, Vek32s* pDst, int len) {
  return unpackVector<int32_t>(kSame32, pSrc, pDst, len);
}
VekStatus veksConvert_24u32f(const Vek8u* pSrc, Vek32f* pDst, int len) {
  return unpackVector<uint32_t>(kAsFloat, pSrc, pDst, len);
}
VekStatus veksConvert_24s32f(const Vek8u* pSrc, Vek32f* pDst, int len) {
  return unpackVector<int32_t>(kAsFloat, pSrc, pDst, len);
}
VekStatus veksConvert_32s24s_Sfs(const Vek32s* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return pack24Scaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_32u24u_Sfs(const Vek32u* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return pack24Scaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_32f24s_Sfs(const Vek32f* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return floatTo24<true>(pSrc, pDst, len, scaleFactor);
}
VekStatus veksConvert_32f24u_Sfs(const Vek32f* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return floatTo24<false>(pSrc, pDst, len, scaleFactor);
}

}  // namespace vek::VEK_SLOT
