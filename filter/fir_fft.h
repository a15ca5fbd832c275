// SPDX-License-Identifier: Apache-2.0
// The transform of each kind of filter.
#ifndef VEK_FILTER_FIR_FFT_H
#define VEK_FILTER_FIR_FFT_H

#include "core/simd/level.h"
#include "transform/fft.h"

namespace vek::VEK_SLOT {
namespace {

template <class T, int C>
struct FftElement;
template <>
struct FftElement<float, 1> {
  using type = Vek32f;
};
template <>
struct FftElement<float, 2> {
  using type = Vek32fc;
};
template <>
struct FftElement<double, 1> {
  using type = Vek64f;
};
template <>
struct FftElement<double, 2> {
  using type = Vek64fc;
};

struct FftSizes {
  int spec, init, work;  // bytes
};

// The steps of a convolution of flat samples, C of type T an element, in the destination alone; only the inverse is
// scaled.
template <class T, int C>
struct BlockFft {
  using E = typename FftElement<T, C>::type;
  static constexpr FftKind kind = kFftKindOf<E>;

  static VekStatus sizes(int order, FftSizes* s) {
    return fftGetSize(kind, order, kFftNormInvByN, vekAlgHintNone, &s->spec, &s->init, &s->work);
  }
  static VekStatus init(FftSpec** spec, int order, void* specBuffer, void* initBuffer) {
    return fftInit(kind, spec, order, kFftNormInvByN, vekAlgHintNone, static_cast<uint8_t*>(specBuffer),
                   static_cast<uint8_t*>(initBuffer));
  }
  static VekStatus forward(const T* src, int64_t count, T* dst, const FftSpec* spec) {
    return fftConvForward(reinterpret_cast<const E*>(src), count, reinterpret_cast<E*>(dst), spec);
  }
  static VekStatus multiply(const T* src, T* srcDst, const FftSpec* spec) {
    return fftConvMultiply(reinterpret_cast<const E*>(src), reinterpret_cast<E*>(srcDst), spec);
  }
  static VekStatus power(T* srcDst, const FftSpec* spec) { return fftConvPower(reinterpret_cast<E*>(srcDst), spec); }
  static VekStatus inverse(const T* src, T* dst, const FftSpec* spec) {
    return fftConvInverse(reinterpret_cast<const E*>(src), reinterpret_cast<E*>(dst), spec);
  }
};

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
