// SPDX-License-Identifier: Apache-2.0
// Roots of unity that are constants, the same for all slots and defined once in root_constants.cpp, and how tables of
// roots are laid out. Blocks have L real parts, then L imaginary ones; L is that of the registers, so the constants
// of the passes come in two forms.
#ifndef VEK_TRANSFORM_ROOT_CONSTANTS_H
#define VEK_TRANSFORM_ROOT_CONSTANTS_H

#include <stdint.h>

namespace vek {

struct Root {
  double re, im;

  friend constexpr __attribute__((always_inline)) Root operator*(Root a, Root b) {
    return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
  }
};

constexpr double kTwoPi = 6.283185307179586476925286766559;

namespace {  // compiled for each slot

// The power series, whose terms fall fast enough on the quarter circle.
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

}  // namespace

// sin(2 pi k / 1024), k = 0 .. 256.
struct QuarterSine {
  double at[257];
};
consteval QuarterSine makeQuarterSine() {
  QuarterSine s{};
  for (int k = 0; k <= 256; ++k) {
    s.at[k] = k <= 128 ? seriesSin(kTwoPi * k / 1024) : seriesCos(kTwoPi * (256 - k) / 1024);
  }
  return s;
}
// For constant expressions; everything else reads the one in memory.
constexpr QuarterSine kQuarterSine = makeQuarterSine();
extern __attribute__((visibility("hidden"))) const QuarterSine quarterSine;

// The order of a block's elements, which is the cheapest to split interleaved data into.
struct LaneOrder {
  int8_t at[8];
  constexpr int operator[](int i) const { return at[i]; }
};
template <class T, int L>
constexpr LaneOrder kLaneOrderOf = L == 8                     ? LaneOrder{{0, 1, 4, 5, 2, 3, 6, 7}}
                                   : L == 4 && sizeof(T) == 8 ? LaneOrder{{0, 2, 1, 3}}
                                                              : LaneOrder{{0, 1, 2, 3, 4, 5, 6, 7}};

// All passes of complex transforms up to 2^12 points and of real ones up to 2^13, in single precision: who transforms
// once would otherwise spend more time on the tables than on the transform.
constexpr int kConstantBits = 13;
constexpr int64_t kLongestConstantPass = int64_t(1) << (kConstantBits - 4);

struct PassConstants {
  alignas(64) float byEight[8 * (2 * kLongestConstantPass - 8)];  // passes of 8, 16, 32 ... points
  float byFour[4 * (8 + 32)];                                     // passes of 8 and of 32 points
  float halfByFour[2 * (16 + 64 + 256)];                          // the first halves of passes of 16, 64 and 256
  float halfByEight[8 * kLongestConstantPass];                    // and of the longest
};
extern __attribute__((visibility("hidden"))) const PassConstants passConstants4, passConstants8;

namespace {  // compiled for each slot

// Stores a root as one lane of a block.
template <int L, class T>
constexpr inline __attribute__((always_inline)) void placeRoot(T* block, int lane, Root w) {
  block[lane] = T(w.re);
  block[lane + L] = T(w.im);
}

// exp(-2 pi i k / 1024), 0 <= k < 1024.
constexpr inline __attribute__((always_inline)) Root root1024(int64_t k) {
  const QuarterSine* sine = &quarterSine;
  if (__builtin_is_constant_evaluated()) sine = &kQuarterSine;
  const int quadrant = int(k >> 8), j = int(k & 255);
  const double s = sine->at[j], c = sine->at[256 - j];
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

// The roots of a pass that joins 2^bits transforms of `length` points; root(k) = w^k, w = exp(-2 pi i / (2^bits
// length)). For every block of k: w^4k (bits = 3 only), w^2k, w^k, and for bits = 3 w^(k + length).
template <int L, class T, class F>
constexpr void fillPass(T* table, int bits, int64_t length, int64_t count, F root) {
  constexpr int block = 2 * L;
  for (int64_t k = 0; k < count; k += L) {
    for (int level = bits - 1; level >= 0; --level, table += block) {
      for (int lane = 0; lane < L; ++lane) placeRoot<L>(table, lane, root((k + kLaneOrderOf<T, L>[lane]) << level));
    }
    if (bits != 3) continue;
    for (int lane = 0; lane < L; ++lane) placeRoot<L>(table, lane, root(k + kLaneOrderOf<T, L>[lane] + length));
    table += block;
  }
}

}  // namespace
}  // namespace vek

#endif
