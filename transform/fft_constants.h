// SPDX-License-Identifier: Apache-2.0
// Where the constant roots of a pass are found.
#ifndef VEK_TRANSFORM_FFT_CONSTANTS_H
#define VEK_TRANSFORM_FFT_CONSTANTS_H

#include "transform/fft_tables.h"

namespace vek::VEK_SLOT {
namespace {

// Elements of T that the roots of a pass take.
constexpr VEK_INLINE int64_t rootsOfPass(int bits, int64_t length) { return (bits == 3 ? 8 : 4) * length; }

constexpr const PassConstants& kPassConstants = kLanes<float> == 8 ? passConstants8 : passConstants4;

// The constant roots of a pass, and those of the first half of its columns; null if there are none.
template <class T>
VEK_INLINE const T* constantRoots([[maybe_unused]] int bits, [[maybe_unused]] int64_t length) {
  if constexpr (sizeof(T) == 4) {
    if (bits == 2) return kPassConstants.byFour + (length == 8 ? 0 : 32);
    if (length <= kLongestConstantPass) return kPassConstants.byEight + 8 * (length - 8);
  }
  return nullptr;
}
template <class T>
VEK_INLINE const T* constantHalfRoots([[maybe_unused]] int bits, [[maybe_unused]] int64_t length) {
  if constexpr (sizeof(T) == 4) {
    if (bits == 2) return kPassConstants.halfByFour + 2 * (length - 16) / 3;
    if (length == 2 * kLongestConstantPass) return kPassConstants.halfByEight;
    return constantRoots<T>(bits, length);
  }
  return nullptr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
