// SPDX-License-Identifier: Apache-2.0
// Reversing order and bytes, splitting and joining complex vectors, conjugation.
#include "core/simd/map.h"
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
VEK_INLINE VekStatus swapBytes(const T* src, T* dst, int len) {
  return mapChecked([](auto x) VEK_LAMBDA { return swapBytes(x); }, dst, len, src);
}

// Three-byte elements: five at a time in sixteen bytes, of which the last is stored back unchanged and belongs to the
// next step, so the loop works in place too.
VEK_INLINE VekStatus swapBytes24(const Vek8u* src, Vek8u* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  ptrdiff_t left = 3 * ptrdiff_t(len);
  if constexpr (kSsse3) {
    constexpr uint8_t order[16] = {2, 1, 0, 5, 4, 3, 8, 7, 6, 11, 10, 9, 14, 13, 12, 15};
    for (; left >= 16; left -= 15, src += 15, dst += 15) {
      storeBytes<16>(dst, lookup16(loadBytes<16>(src), loadBytes<16>(order)));
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

// The imaginary part is subtracted from zero and not negated: either zero gives +0. The real part keeps its bits.
VEK_INLINE Pack<float> conjugate(Pack<float> x) { return blendOdd(x, zeros<float>() - x); }

VEK_INLINE VekStatus conjugate(const Vek32fc* src, Vek32fc* dst, int len) {
  return mapChecked([](auto x) VEK_LAMBDA { return conjugate(x); }, dst, len, src);
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
  return sweepChecked<kLanes>([](float* d, const Vek32fc* s) VEK_LAMBDA { store(d, loadSplit(s).a); }, pDstRe, len,
                              pSrc);
}

VekStatus veksImag_32fc(const Vek32fc* pSrc, Vek32f* pDstIm, int len) {
  return sweepChecked<kLanes>([](float* d, const Vek32fc* s) VEK_LAMBDA { store(d, loadSplit(s).b); }, pDstIm, len,
                              pSrc);
}

VekStatus veksCplxToReal_32fc(const Vek32fc* pSrc, Vek32f* pDstRe, Vek32f* pDstIm, int len) {
  return sweepTwoChecked<kLanes>(
      [](float* re, float* im, const Vek32fc* s) VEK_LAMBDA {
        const Two<float> x = loadSplit(s);
        store(re, x.a);
        store(im, x.b);
      },
      pDstRe, pDstIm, len, pSrc);
}

VekStatus veksRealToCplx_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32fc* pDst, int len) {
  if (const VekStatus s = checkVectors(len, pDst)) return s;
  if (!pSrcRe && !pSrcIm) return vekStsNullPtrErr;
  if (!pSrcIm) {
    sweep<kLanes>([](Vek32fc* d, const float* re) VEK_LAMBDA { storeJoined(d, load(re), zeros<float>()); }, pDst, len,
                  pSrcRe);
  } else if (!pSrcRe) {
    sweep<kLanes>([](Vek32fc* d, const float* im) VEK_LAMBDA { storeJoined(d, zeros<float>(), load(im)); }, pDst, len,
                  pSrcIm);
  } else {
    sweep<kLanes>([](Vek32fc* d, const float* re, const float* im) VEK_LAMBDA { storeJoined(d, load(re), load(im)); },
                  pDst, len, pSrcRe, pSrcIm);
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
