// SPDX-License-Identifier: Apache-2.0
// The roots of the passes, and in single precision constants of them: who transforms once would otherwise spend more
// time on the tables than on the transform.
#ifndef VEK_TRANSFORM_FFT_CONSTANTS_H
#define VEK_TRANSFORM_FFT_CONSTANTS_H

#include "transform/fft_tables.h"

namespace vek::VEK_SLOT {
namespace {

// Elements of T that the roots of a pass take.
constexpr VEK_INLINE int64_t rootsOfPass(int bits, int64_t length) { return (bits == 3 ? 8 : 4) * length; }

// The roots of a pass that joins 2^bits transforms of `length` points; root(k) = w^k, w = exp(-2 pi i / (2^bits
// length)). For every block of k: w^4k (bits = 3 only), w^2k, w^k, and for bits = 3 w^(k + length).
template <class T, class F>
constexpr void fillPass(T* table, int bits, int64_t length, int64_t count, F root) {
  constexpr int L = kLanes<T>, block = 2 * L;
  for (int64_t k = 0; k < count; k += L) {
    for (int level = bits - 1; level >= 0; --level, table += block) {
      for (int lane = 0; lane < L; ++lane) storeRoot(table, lane, root((k + kLaneOrder<T>[lane]) << level));
    }
    if (bits != 3) continue;
    for (int lane = 0; lane < L; ++lane) storeRoot(table, lane, root(k + kLaneOrder<T>[lane] + length));
    table += block;
  }
}

// All passes of complex transforms up to 2^12 points and of real ones up to 2^13.
constexpr int kConstantBits = 13;
constexpr int64_t kLongestConstantPass = int64_t(1) << (kConstantBits - 4);

struct FineRoots {
  Root at[1 << (kConstantBits - 10)];
};
constexpr FineRoots makeFineRoots() {
  FineRoots r{};
  for (int k = 0; k < 1 << (kConstantBits - 10); ++k) {
    const double angle = kTwoPi * k / (1 << kConstantBits);
    r.at[k] = {seriesCos(angle), -seriesSin(angle)};
  }
  return r;
}
constexpr FineRoots kFineConstants = makeFineRoots();

// exp(-2 pi i k / 2^order), order <= 13.
constexpr Root constantRoot(int64_t k, int order) {
  const int64_t j = k << (kConstantBits - order), fine = j & ((1 << (kConstantBits - 10)) - 1);
  const Root r = root1024(j >> (kConstantBits - 10));
  return fine == 0 ? r : r * kFineConstants.at[fine];
}

template <class T>
struct ConstantTables {
  alignas(64) T byEight[8 * (2 * kLongestConstantPass - 8)];  // passes of 8, 16, 32 ... points
  T byFour[4 * (8 + 32)];                                     // passes of 8 and of 32 points
  T halfByFour[2 * (16 + 64 + 256)];                          // the first halves of passes of 16, 64 and 256
  T halfByEight[8 * kLongestConstantPass];                    // and of the longest
};
template <class T>
constexpr ConstantTables<T> makeConstantTables() {
  ConstantTables<T> t{};
  const auto fill = [](T* table, int bits, int64_t length, int64_t count) {
    int order = bits;
    while (length << bits >> order > 1) ++order;
    fillPass(table, bits, length, count, [=](int64_t k) { return constantRoot(k, order); });
  };
  for (int64_t length = 8; length <= kLongestConstantPass; length *= 2) {
    fill(t.byEight + 8 * (length - 8), 3, length, length);
  }
  fill(t.byFour, 2, 8, 8);
  fill(t.byFour + 32, 2, 32, 32);
  fill(t.halfByFour, 2, 16, 8);
  fill(t.halfByFour + 32, 2, 64, 32);
  fill(t.halfByFour + 160, 2, 256, 128);
  fill(t.halfByEight, 3, 2 * kLongestConstantPass, kLongestConstantPass);
  return t;
}
constexpr ConstantTables<float> kConstantTables = makeConstantTables<float>();

// The constant roots of a pass, and those of the first half of its columns; null if there are none.
template <class T>
VEK_INLINE const T* constantRoots([[maybe_unused]] int bits, [[maybe_unused]] int64_t length) {
  if constexpr (sizeof(T) == 4) {
    if (bits == 2) return kConstantTables.byFour + (length == 8 ? 0 : 32);
    if (length <= kLongestConstantPass) return kConstantTables.byEight + 8 * (length - 8);
  }
  return nullptr;
}
template <class T>
VEK_INLINE const T* constantHalfRoots([[maybe_unused]] int bits, [[maybe_unused]] int64_t length) {
  if constexpr (sizeof(T) == 4) {
    if (bits == 2) return kConstantTables.halfByFour + 2 * (length - 16) / 3;
    if (length == 2 * kLongestConstantPass) return kConstantTables.halfByEight;
    return constantRoots<T>(bits, length);
  }
  return nullptr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
