// SPDX-License-Identifier: Apache-2.0
// Products of real transforms' spectra that lie in blocks, for convolutions.
#ifndef VEK_TRANSFORM_FFT_CONV_H
#define VEK_TRANSFORM_FFT_CONV_H

#include "transform/fft_real.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
VEK_NOINLINE void multiplySpectra(const T* src, T* srcDst, int64_t len) {
  constexpr int L = kLanes<T>;
  const T first = src[0] * srcDst[0], half = src[L] * srcDst[L];
  for (int64_t k = 0; k < len; k += 2 * L) storeBlock(srcDst + k, times(loadBlock(src + k), loadBlock(srcDst + k)));
  storeFirst<kBlocks>(srcDst, first, half);
}

// |X|^2.
template <class T>
VEK_NOINLINE void powerOfSpectrum(T* srcDst, int64_t len) {
  constexpr int L = kLanes<T>;
  const T first = srcDst[0] * srcDst[0], half = srcDst[L] * srcDst[L];
  for (int64_t k = 0; k < len; k += 2 * L) {
    const Complex<T> x = loadBlock(srcDst + k);
    storeBlock<T>(srcDst + k, {mulAdd<T>(x.re, x.re, x.im * x.im), Reg<T>{}});
  }
  storeFirst<kBlocks>(srcDst, first, half);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
