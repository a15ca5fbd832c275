// SPDX-License-Identifier: Apache-2.0
// Roots of unity. Those of order 1024 and below are constants; larger ones are products of two or three roots formed in
// double, so that a table costs a few multiplications an entry and is right to the last bit but one in single
// precision.
#ifndef VEK_TRANSFORM_FFT_TABLES_H
#define VEK_TRANSFORM_FFT_TABLES_H

#include <math.h>

#include "transform/fft_vector.h"
#include "transform/root_constants.h"

namespace vek::VEK_SLOT {
namespace {

enum Direction { kForward, kInverse };

// exp(-2 pi i k / 2^order) for 0 <= k < 2^order, order <= 28: ten bits of k by the constants, the rest in two parts.
class Roots {
 public:
  explicit Roots(int order) : order_(order), fineBits_(order > 10 ? order - 10 : 0) {
    lowBits_ = fineBits_ > kPart ? kPart : fineBits_;
    const double unit = kTwoPi / double(int64_t(1) << order);
    for (int64_t k = 0; k < int64_t(1) << lowBits_; ++k) low_[k] = {cos(unit * double(k)), -sin(unit * double(k))};
    for (int64_t k = 0; k < int64_t(1) << (fineBits_ - lowBits_); ++k) {
      const double angle = unit * double(k << lowBits_);
      middle_[k] = {cos(angle), -sin(angle)};
    }
  }
  Root operator()(int64_t k) const {
    if (order_ <= 10) return root1024(k << (10 - order_));
    const Root r = root1024(k >> fineBits_) * low_[k & ((int64_t(1) << lowBits_) - 1)];
    const int64_t middle = k >> lowBits_ & ((int64_t(1) << (fineBits_ - lowBits_)) - 1);
    return middle == 0 ? r : r * middle_[middle];
  }

 private:
  static constexpr int kPart = 9;
  int order_, fineBits_, lowBits_;
  Root low_[1 << kPart], middle_[1 << kPart];
};

// Stores a root as one lane of a block.
template <class T>
constexpr VEK_INLINE void storeRoot(T* block, int lane, Root w) {
  placeRoot<kLanes<T>>(block, lane, w);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
