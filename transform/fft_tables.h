// SPDX-License-Identifier: Apache-2.0
// Roots of unity. Those of order 1024 and below are constants; larger ones are products of two or three roots formed in
// double, so that a table costs a few multiplications an entry and is right to the last bit but one in single
// precision.
#ifndef VEK_TRANSFORM_FFT_TABLES_H
#define VEK_TRANSFORM_FFT_TABLES_H

#include <math.h>

#include "transform/fft_vector.h"

namespace vek::VEK_SLOT {
namespace {

enum Direction { kForward, kInverse };

struct Root {
  double re, im;
};
constexpr VEK_INLINE Root operator*(Root a, Root b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; }

constexpr double kTwoPi = 6.283185307179586476925286766559;

// sin(2 pi k / 1024), k = 0 .. 256, by the power series: its terms fall fast enough on the quarter circle.
struct QuarterSine {
  double at[257];
};
constexpr double seriesSin(double x) {
  double sum = 0;
  for (int k = 27; k >= 3; k -= 2) sum = (1 - sum) * x * x / (k * (k - 1));
  return x - x * sum;
}
constexpr double seriesCos(double x) {
  double sum = 0;
  for (int k = 28; k >= 2; k -= 2) sum = (1 - sum) * x * x / (k * (k - 1));
  return 1 - sum;
}
constexpr QuarterSine makeQuarterSine() {
  QuarterSine s{};
  for (int k = 0; k <= 256; ++k) {
    s.at[k] = k <= 128 ? seriesSin(kTwoPi * k / 1024) : seriesCos(kTwoPi * (256 - k) / 1024);
  }
  return s;
}
constexpr QuarterSine kQuarterSine = makeQuarterSine();

// exp(-2 pi i k / 1024), 0 <= k < 1024.
constexpr VEK_INLINE Root root1024(int64_t k) {
  const int quadrant = int(k >> 8), j = int(k & 255);
  const double s = kQuarterSine.at[j], c = kQuarterSine.at[256 - j];
  switch (quadrant) {
    case 0:
      return {c, -s};
    case 1:
      return {-s, -c};
    case 2:
      return {-c, s};
    default:
      return {s, c};
  }
}

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

// Stores a root as lane p of a block.
template <class T>
constexpr VEK_INLINE void storeRoot(T* block, int lane, Root w) {
  block[lane] = T(w.re);
  block[lane + kLanes<T>] = T(w.im);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
