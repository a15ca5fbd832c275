// SPDX-License-Identifier: Apache-2.0
// Cross-correlation.
#include "core/simd/checks.h"
#include "filter/conv_fft.h"
#include "filter/corr_window.h"
#include "vek/correlation.h"
#include "vek/vector.h"

namespace vek::VEK_SLOT {
namespace {

// The work of a lag, averaged over the lags, above which the transform is used; and the ratio of the lengths from which
// it goes block by block.
constexpr float kDirectMost = 383;
constexpr int64_t kBlockRatio = 3;

// Both vectors, the shorter one as taps, cut down to what the lags from w.first on reach.
VEK_INLINE Window trimmed(Window w, int64_t n, int C) {
  const int64_t last = w.first + n - 1;
  const int64_t xFrom = larger(0, w.first), xTo = smaller(w.xCount, last + w.tapCount);
  const int64_t tapFrom = larger(0, -last), tapTo = smaller(w.tapCount, w.xCount - w.first);
  return {w.taps + C * tapFrom, tapTo - tapFrom, w.x + C * xFrom, xTo - xFrom, w.first + tapFrom - xFrom};
}

// The window as a stretch of the convolution with the taps reversed.
template <int C>
VEK_INLINE VekStatus correlateByFft(const Window& w, float* y, int64_t n) {
  if (w.xCount >= kBlockRatio * w.tapCount && w.first < w.tapCount) {
    return convolveBlocks<C>({w.taps, w.tapCount, true}, w.x, w.xCount, w.first + w.tapCount - 1, y, n);
  }
  const Window t = trimmed(w, n, C);
  return convolveAtOnce<C>({t.taps, t.tapCount, true}, {t.x, t.xCount, false}, t.first + t.tapCount - 1, y, n);
}

VEK_INLINE bool isLong(int src1Len, int src2Len, int64_t lags) {
  const float shorter = float(src1Len < src2Len ? src1Len : src2Len);
  const float longer = float(src1Len < src2Len ? src2Len : src1Len);
  return shorter * float(lags) / longer >= kDirectMost + 1;  // the quotient's fraction does not count
}

VEK_INLINE void mirror(float* y, int64_t n, Vek32f) { ::veksFlip_32f_I(y, int(n)); }
VEK_INLINE void mirror(float* y, int64_t n, Vek32fc) {
  ::veksFlip_32fc_I(reinterpret_cast<Vek32fc*>(y), int(n));
  for (int64_t i = 0; i < n; ++i) y[2 * i + 1] = -y[2 * i + 1];
}

// Lags `first` .. first+n-1, all with some overlap.
template <class Data>
VEK_INLINE VekStatus correlate(const float* src1, int src1Len, const float* src2, int src2Len, float* y, int64_t n,
                               int64_t first) {
  constexpr int C = int(sizeof(Data) / sizeof(float));
  const bool swapped = src1Len > src2Len;
  const Window w =
      swapped ? Window{src2, src2Len, src1, src1Len, -(first + n - 1)} : Window{src1, src1Len, src2, src2Len, first};
  if (isLong(src1Len, src2Len, n)) {
    const VekStatus status = correlateByFft<C>(w, y, n);
    if (status != vekStsNoErr) return status;
  } else {
    slideWindow<C>(w, y, n);
  }
  if (swapped) mirror(y, n, Data());
  return vekStsNoErr;
}

template <class Data>
VEK_INLINE VekStatus crossCorr(const Data* pSrc1, int src1Len, const Data* pSrc2, int src2Len, Data* pDst, int dstLen,
                               int lowLag) {
  constexpr int C = int(sizeof(Data) / sizeof(float));
  if (!pSrc1 || !pSrc2 || !pDst) return vekStsNullPtrErr;
  if (src1Len < 1 || src2Len < 1 || dstLen < 1) return vekStsSizeErr;
  float* const dst = reinterpret_cast<float*>(pDst);
  const int64_t from = smaller(dstLen, larger(0, 1 - int64_t(src1Len) - lowLag));
  const int64_t to = larger(from, smaller(dstLen, int64_t(src2Len) - lowLag));
  if (from < to) {
    const VekStatus status =
        correlate<Data>(reinterpret_cast<const float*>(pSrc1), src1Len, reinterpret_cast<const float*>(pSrc2), src2Len,
                        dst + C * from, to - from, lowLag + from);
    if (status != vekStsNoErr) return status;
  }
  clearSamples(dst, C * from);
  clearSamples(dst + C * to, C * (dstLen - to));
  return vekStsNoErr;
}

}  // namespace

VekStatus veksCrossCorr_32f(const Vek32f* pSrc1, int src1Len, const Vek32f* pSrc2, int src2Len, Vek32f* pDst,
                            int dstLen, int lowLag) {
  return crossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag);
}
VekStatus veksCrossCorr_32fc(const Vek32fc* pSrc1, int src1Len, const Vek32fc* pSrc2, int src2Len, Vek32fc* pDst,
                             int dstLen, int lowLag) {
  return crossCorr(pSrc1, src1Len, pSrc2, src2Len, pDst, dstLen, lowLag);
}

}  // namespace vek::VEK_SLOT
