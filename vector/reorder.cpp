// SPDX-License-Identifier: Apache-2.0
// Reversing order and bytes, splitting and joining complex vectors, conjugation.
#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "core/simd/shuffle.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// dst[n] = op(src[len - 1 - n]); op works on packs of already reversed order. No overlap.
template <class T, class Op>
VEK_INLINE void mirror(Op op, T* dst, ptrdiff_t n, const T* src) {
  constexpr ptrdiff_t lanes = Pack<T>::lanes;
  const auto block = [=](ptrdiff_t i) VEK_LAMBDA { store(dst + i, op(reverse(load(src + (n - lanes - i))))); };
  if (n < lanes) {
    Block<T, int(lanes)> b = {};
    for (ptrdiff_t i = 0; i < n; ++i) b.x[i] = src[n - 1 - i];
    storePart(dst, op(load(b.x)), n);
    return;
  }
  ptrdiff_t i = 0;
  for (; i + 2 * lanes < n; i += 2 * lanes) block(i), block(i + lanes);
  for (; i < n - lanes; i += lanes) block(i);
  block(n - lanes);
}

template <class T>
VEK_INLINE void mirrorInPlace(T* x, ptrdiff_t n) {
  constexpr ptrdiff_t lanes = Pack<T>::lanes;
  T *low = x, *high = x + n;
  while (high - low >= lanes) {
    // Closer than two packs the blocks overlap; as both are loaded before either is stored, they agree there.
    high -= lanes;
    const Pack<T> a = load(low), b = load(high);
    store(low, reverse(b));
    store(high, reverse(a));
    low += lanes;
    if (high <= low) return;
  }
  while (high - low >= 2) {
    const T t = *low;
    *low++ = *--high;
    *high = t;
  }
}

template <class T>
VEK_INLINE VekStatus flip(const T* src, T* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  using Bits = UnsignedOf<T>;
  if (src == dst) {
    mirrorInPlace(reinterpret_cast<Bits*>(dst), len);
  } else {
    mirror([](auto x) VEK_LAMBDA { return x; }, reinterpret_cast<Bits*>(dst), len, reinterpret_cast<const Bits*>(src));
  }
  return vekStsNoErr;
}

// ---- bytes ---------------------------------------------------------------------------------------------------------

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

template <class T>
VEK_INLINE VekStatus swapBytes(const T* src, T* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  mapPacks([](auto x) VEK_LAMBDA { return swapBytes(x); }, dst, len, src);
  return vekStsNoErr;
}

// Three-byte elements: five at a time in sixteen bytes, of which the last is stored back unchanged and belongs to the
// next step, so the loop works in place too.
VEK_INLINE VekStatus swapBytes24(const Vek8u* src, Vek8u* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  ptrdiff_t left = 3 * ptrdiff_t(len);
  if constexpr (kSsse3) {
    const __m128i order = _mm_setr_epi8(2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15);
    for (; left >= 16; left -= 15, src += 15, dst += 15) {
      _mm_storeu_si128((__m128i_u*)dst, lookup16(_mm_loadu_si128((const __m128i_u*)src), order));
    }
  }
  for (; left > 0; left -= 3, src += 3, dst += 3) {
    const Vek8u first = src[0], middle = src[1];
    dst[0] = src[2];
    dst[1] = middle;
    dst[2] = first;
  }
  return vekStsNoErr;
}

// ---- complex vectors -----------------------------------------------------------------------------------------------

VEK_INLINE Two<float> loadSplit(const Vek32fc* s) {
  return deinterleave(load(parts(s)), load(parts(s) + Pack<float>::lanes));
}

// The imaginary part is subtracted from zero and not negated: either zero gives +0. The real part keeps its bits.
VEK_INLINE Pack<float> conjugate(Pack<float> x) { return blendOdd(x, zeros<float>() - x); }

VEK_INLINE VekStatus conjugate(const Vek32fc* src, Vek32fc* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  mapComplex([](auto x) VEK_LAMBDA { return conjugate(x); }, dst, len, src);
  return vekStsNoErr;
}

constexpr int kLanes = Pack<float>::lanes;

}  // namespace

VekStatus veksFlip_8u(const Vek8u* pSrc, Vek8u* pDst, int len) { return flip(pSrc, pDst, len); }
VekStatus veksFlip_16u(const Vek16u* pSrc, Vek16u* pDst, int len) { return flip(pSrc, pDst, len); }
VekStatus veksFlip_32f(const Vek32f* pSrc, Vek32f* pDst, int len) { return flip(pSrc, pDst, len); }
VekStatus veksFlip_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) { return flip(pSrc, pDst, len); }

VekStatus veksSwapBytes_16u(const Vek16u* pSrc, Vek16u* pDst, int len) { return swapBytes(pSrc, pDst, len); }
VekStatus veksSwapBytes_24u(const Vek8u* pSrc, Vek8u* pDst, int len) { return swapBytes24(pSrc, pDst, len); }
VekStatus veksSwapBytes_32u(const Vek32u* pSrc, Vek32u* pDst, int len) { return swapBytes(pSrc, pDst, len); }
VekStatus veksSwapBytes_64u(const Vek64u* pSrc, Vek64u* pDst, int len) { return swapBytes(pSrc, pDst, len); }

VekStatus veksReal_32fc(const Vek32fc* pSrc, Vek32f* pDstRe, int len) {
  if (const VekStatus s = checkVectors(len, pSrc, pDstRe)) return s;
  sweep<kLanes>([](float* d, const Vek32fc* s) VEK_LAMBDA { store(d, loadSplit(s).a); }, pDstRe, len, pSrc);
  return vekStsNoErr;
}

VekStatus veksImag_32fc(const Vek32fc* pSrc, Vek32f* pDstIm, int len) {
  if (const VekStatus s = checkVectors(len, pSrc, pDstIm)) return s;
  sweep<kLanes>([](float* d, const Vek32fc* s) VEK_LAMBDA { store(d, loadSplit(s).b); }, pDstIm, len, pSrc);
  return vekStsNoErr;
}

VekStatus veksCplxToReal_32fc(const Vek32fc* pSrc, Vek32f* pDstRe, Vek32f* pDstIm, int len) {
  if (const VekStatus s = checkVectors(len, pSrc, pDstRe, pDstIm)) return s;
  sweepTwo<kLanes>(
      [](float* re, float* im, const Vek32fc* s) VEK_LAMBDA {
        const Two<float> x = loadSplit(s);
        store(re, x.a);
        store(im, x.b);
      },
      pDstRe, pDstIm, len, pSrc);
  return vekStsNoErr;
}

VekStatus veksRealToCplx_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32fc* pDst, int len) {
  if (const VekStatus s = checkVectors(len, pDst)) return s;
  if (!pSrcRe && !pSrcIm) return vekStsNullPtrErr;
  const auto join = [](Vek32fc* d, Pack<float> re, Pack<float> im) VEK_LAMBDA {
    const Two<float> x = interleave(re, im);
    store(parts(d), x.a);
    store(parts(d) + kLanes, x.b);
  };
  if (!pSrcIm) {
    sweep<kLanes>([=](Vek32fc* d, const float* re) VEK_LAMBDA { join(d, load(re), zeros<float>()); }, pDst, len,
                  pSrcRe);
  } else if (!pSrcRe) {
    sweep<kLanes>([=](Vek32fc* d, const float* im) VEK_LAMBDA { join(d, zeros<float>(), load(im)); }, pDst, len,
                  pSrcIm);
  } else {
    sweep<kLanes>([=](Vek32fc* d, const float* re, const float* im) VEK_LAMBDA { join(d, load(re), load(im)); }, pDst,
                  len, pSrcRe, pSrcIm);
  }
  return vekStsNoErr;
}

VekStatus veksConj_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) { return conjugate(pSrc, pDst, len); }

VekStatus veksConjFlip_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) {
  if (const VekStatus s = checkVectors(len, pSrc, pDst)) return s;
  mirror([](Pack<uint64_t> x) VEK_LAMBDA { return bits<uint64_t>(conjugate(bits<float>(x))); },
         reinterpret_cast<uint64_t*>(pDst), len, reinterpret_cast<const uint64_t*>(pSrc));
  return vekStsNoErr;
}

}  // namespace vek::VEK_SLOT
