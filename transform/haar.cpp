// SPDX-License-Identifier: Apache-2.0
// The Haar transform of one level and its inverse.
#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "core/simd/interleave.h"
#include "vek/transform.h"

namespace vek::VEK_SLOT {
namespace {

constexpr float kSqrtHalf = 0.707106781186547524f;
constexpr float kSqrtTwo = 1.41421356237309505f;
constexpr int L = Pack<float>::lanes;

// Pairs of one pack of results: L from each band.
VEK_INLINE void analyse(float* low, float* high, const float* x) {
  const Two<float> s = deinterleave(load(x), load(x + L));
  const Pack<float> scale = broadcast(kSqrtHalf);
  store(low, (s.a + s.b) * scale);
  store(high, (s.a - s.b) * scale);
}
VEK_INLINE void synthesise(float* x, const float* low, const float* high) {
  const Pack<float> scale = broadcast(kSqrtHalf), a = load(low), b = load(high);
  const Two<float> s = interleave((a + b) * scale, (a - b) * scale);
  store(x, s.a);
  store(x + L, s.b);
}

VEK_INLINE VekStatus forward(const float* x, int len, float* low, float* high) {
  if (const VekStatus s = checkVectors(len, x, low, high)) return s;
  const ptrdiff_t pairs = len / 2;
  ptrdiff_t k = 0;
  for (; k + L <= pairs; k += L) analyse(low + k, high + k, x + 2 * k);
  for (; k < pairs; ++k) {
    low[k] = (x[2 * k] + x[2 * k + 1]) * kSqrtHalf;
    high[k] = (x[2 * k] - x[2 * k + 1]) * kSqrtHalf;
  }
  if (len % 2 != 0) low[pairs] = x[len - 1] * kSqrtTwo;
  return vekStsNoErr;
}

VEK_INLINE VekStatus inverse(const float* low, const float* high, float* x, int len) {
  if (const VekStatus s = checkVectors(len, low, high, x)) return s;
  const ptrdiff_t pairs = len / 2;
  ptrdiff_t k = 0;
  for (; k + L <= pairs; k += L) synthesise(x + 2 * k, low + k, high + k);
  for (; k < pairs; ++k) {
    x[2 * k] = (low[k] + high[k]) * kSqrtHalf;
    x[2 * k + 1] = (low[k] - high[k]) * kSqrtHalf;
  }
  if (len % 2 != 0) x[len - 1] = low[pairs] * kSqrtHalf;
  return vekStsNoErr;
}

}  // namespace

VekStatus veksHaarFwd_32f(const Vek32f* pSrc, int len, Vek32f* pDstLow, Vek32f* pDstHigh) {
  return forward(pSrc, len, pDstLow, pDstHigh);
}
VekStatus veksHaarInv_32f(const Vek32f* pSrcLow, const Vek32f* pSrcHigh, Vek32f* pDst, int len) {
  return inverse(pSrcLow, pSrcHigh, pDst, len);
}

}  // namespace vek::VEK_SLOT
