// SPDX-License-Identifier: Apache-2.0
// Linear convolution.
#include "core/simd/checks.h"
#include "filter/conv_fft.h"
#include "filter/corr_window.h"
#include "vek/correlation.h"

namespace vek::VEK_SLOT {
namespace {

// From these many outputs and elements of the shorter vector up the transform is used, in blocks where the longer
// vector has at least three times the elements.
constexpr int64_t kFftOutputs = 150, kFftTaps = 32, kBlockRatio = 3;

struct Vector {
  const float* p;
  int64_t count;
};

// Elements first .. first+n-1 of the convolution, summed directly. The kernel takes the shorter vector, h, last element
// first and a chunk of it at a time: more than one where there are few outputs.
VEK_NOINLINE void convolveDirect(Vector h, Vector x, int64_t first, float* y, int64_t n) {
  constexpr int64_t chunk = 2048, outputs = 256;
  float reversed[chunk], part[outputs];
  for (int64_t from = 0; from < h.count; from += chunk) {
    const int64_t count = smaller(chunk, h.count - from);
    for (int64_t i = 0; i < count; ++i) reversed[i] = h.p[from + count - 1 - i];
    const int64_t start = first - from - (count - 1);
    if (from == 0) {
      slideWindow<1>({reversed, count, x.p, x.count, start}, y, n);
      continue;
    }
    for (int64_t i = 0; i < n; i += outputs) {
      const int64_t m = smaller(outputs, n - i);
      slideWindow<1>({reversed, count, x.p, x.count, start + i}, part, m);
      for (int64_t j = 0; j < m; ++j) y[i + j] += part[j];
    }
  }
}

// n >= 1 outputs, all of which both vectors reach.
VEK_INLINE VekStatus convolve(Vector h, Vector x, int64_t first, float* y, int64_t n) {
  if (n < kFftOutputs || h.count < kFftTaps) {
    convolveDirect(h, x, first, y, n);
    return vekStsNoErr;
  }
  if (x.count < kBlockRatio * h.count) {
    return convolveAtOnce<1>({h.p, h.count, false}, {x.p, x.count, false}, first, y, n);
  }
  return convolveBlocks<1>({h.p, h.count, false}, x.p, x.count, first, y, n);
}

// The longer vector is x; of equal ones the first.
VEK_INLINE VekStatus convolveSorted(Vector a, Vector b, int64_t first, float* y, int64_t n) {
  return a.count >= b.count ? convolve(b, a, first, y, n) : convolve(a, b, first, y, n);
}

}  // namespace

VekStatus veksConv_32f(const Vek32f* pSrc1, int src1Len, const Vek32f* pSrc2, int src2Len, Vek32f* pDst) {
  if (!pSrc1 || !pSrc2 || !pDst) return vekStsNullPtrErr;
  if (src1Len < 1 || src2Len < 1) return vekStsSizeErr;
  return convolveSorted({pSrc1, src1Len}, {pSrc2, src2Len}, 0, pDst, int64_t(src1Len) + src2Len - 1);
}

VekStatus veksConvBiased_32f(const Vek32f* pSrc1, int src1Len, const Vek32f* pSrc2, int src2Len, Vek32f* pDst,
                             int dstLen, int bias) {
  if (!pSrc1 || !pSrc2 || !pDst) return vekStsNullPtrErr;
  if (src1Len < 1 || src2Len < 1 || dstLen < 1) return vekStsSizeErr;
  // The part of the destination that the convolution reaches.
  const int64_t from = smaller(dstLen, larger(0, -int64_t(bias)));
  const int64_t to = larger(from, smaller(dstLen, int64_t(src1Len) + src2Len - 1 - bias));
  if (from < to) {
    const VekStatus status = convolveSorted({pSrc1, src1Len}, {pSrc2, src2Len}, bias + from, pDst + from, to - from);
    if (status != vekStsNoErr) return status;
  }
  clearSamples(pDst, from);
  clearSamples(pDst + to, dstLen - to);
  return vekStsNoErr;
}

}  // namespace vek::VEK_SLOT
