// SPDX-License-Identifier: Apache-2.0
// Autocorrelation.
#include "core/simd/checks.h"
#include "filter/conv_fft.h"
#include "filter/corr_window.h"
#include "vek/correlation.h"

namespace vek::VEK_SLOT {
namespace {

// Lags from which the transform is used.
constexpr int64_t kFftLags = 600;

template <int C>
VEK_INLINE VekStatus byFft(const float* src, int64_t count, float* y, int64_t lags) {
  int order = 2;
  while ((int64_t(1) << order) < count + lags - 1) ++order;
  FftWorkspace<C> work;
  VekStatus status = work.open(order, 2);
  if (status != vekStsNoErr) return status;
  if ((status = work.forward(src, count, work.a)) != vekStsNoErr) return status;
  if ((status = work.power(work.a)) != vekStsNoErr) return status;
  if ((status = work.inverse(work.a, work.b)) != vekStsNoErr) return status;
  copySamples(work.b, y, C * lags);
  return vekStsNoErr;
}

template <class Data>
VEK_INLINE VekStatus autoCorr(const Data* pSrc, int srcLen, Data* pDst, int dstLen) {
  constexpr int C = int(sizeof(Data) / sizeof(float));
  if (!pSrc || !pDst) return vekStsNullPtrErr;
  if (srcLen < 1 || dstLen < 1) return vekStsSizeErr;
  const float* const src = reinterpret_cast<const float*>(pSrc);
  float* const dst = reinterpret_cast<float*>(pDst);
  const int64_t lags = smaller(srcLen, dstLen);
  if (lags >= kFftLags) {
    const VekStatus status = byFft<C>(src, srcLen, dst, lags);
    if (status != vekStsNoErr) return status;
  } else {
    slideWindow<C>({src, srcLen, src, srcLen, 0}, dst, lags);
  }
  clearSamples(dst + C * lags, C * (dstLen - lags));
  return vekStsNoErr;
}

// Divided by the number of elements, the reciprocal being rounded once.
template <class Data>
VEK_INLINE VekStatus normA(const Data* pSrc, int srcLen, Data* pDst, int dstLen) {
  constexpr int C = int(sizeof(Data) / sizeof(float));
  const VekStatus status = autoCorr(pSrc, srcLen, pDst, dstLen);
  if (status != vekStsNoErr) return status;
  float* const dst = reinterpret_cast<float*>(pDst);
  const float factor = 1 / float(srcLen);
  const int64_t n = C * smaller(srcLen, dstLen);
  for (int64_t i = 0; i < n; ++i) dst[i] *= factor;
  return vekStsNoErr;
}

// Divided by the number of products that each lag sums.
template <class Data>
VEK_INLINE VekStatus normB(const Data* pSrc, int srcLen, Data* pDst, int dstLen) {
  constexpr int C = int(sizeof(Data) / sizeof(float));
  const VekStatus status = autoCorr(pSrc, srcLen, pDst, dstLen);
  if (status != vekStsNoErr) return status;
  float* const dst = reinterpret_cast<float*>(pDst);
  const int n = srcLen < dstLen ? srcLen : dstLen;
  for (int k = 0; k < n; ++k) {
    const float divisor = float(srcLen - k);
    for (int c = 0; c < C; ++c) dst[C * int64_t(k) + c] /= divisor;
  }
  return vekStsNoErr;
}

}  // namespace

VekStatus veksAutoCorr_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int dstLen) {
  return autoCorr(pSrc, srcLen, pDst, dstLen);
}
VekStatus veksAutoCorr_NormA_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int dstLen) {
  return normA(pSrc, srcLen, pDst, dstLen);
}
VekStatus veksAutoCorr_NormB_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int dstLen) {
  return normB(pSrc, srcLen, pDst, dstLen);
}
VekStatus veksAutoCorr_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int dstLen) {
  return autoCorr(pSrc, srcLen, pDst, dstLen);
}
VekStatus veksAutoCorr_NormA_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int dstLen) {
  return normA(pSrc, srcLen, pDst, dstLen);
}
VekStatus veksAutoCorr_NormB_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int dstLen) {
  return normB(pSrc, srcLen, pDst, dstLen);
}

}  // namespace vek::VEK_SLOT
