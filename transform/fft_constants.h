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
constexpr void fillPass(T* table, int bits, int64_t length, F root) {
  constexpr int L = kLanes<T>, block = 2 * L;
  for (int64_t k = 0; k < length; k += L) {
    for (int level = bits - 1; level >= 0; --level, table += block) {
      for (int lane = 0; lane < L; ++lane) storeRoot(table, lane, root((k + kLaneOrder<T>[lane]) << level));
    }
    if (bits != 3) continue;
    for (int lane = 0; lane < L; ++lane) storeRoot(table, lane, root(k + kLaneOrder<T>[lane] + length));
    table += block;
  }
}

// exp(-2 pi i k / N) for k < count, block by block; root(k) gives one.
template <class T, class F>
constexpr void fillBlocks(T* table, int64_t count, F root) {
  constexpr int L = kLanes<T>;
  for (int64_t k = 0; k < count; k += L) {
    for (int lane = 0; lane < L; ++lane) storeRoot(table + 2 * k, lane, root(k + kLaneOrder<T>[lane]));
  }
}

// All passes of complex transforms up to 2^12 points, and the recombination of real ones of 2^7 to 2^13.
constexpr int kConstantBits = 13;
constexpr int64_t kLongestConstantPass = int64_t(1) << (kConstantBits - 4), kShortestReal = 64;

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
  T real[(1 << kConstantBits) - kShortestReal];               // orders 7, 8 ...
};
template <class T>
constexpr ConstantTables<T> makeConstantTables() {
  ConstantTables<T> t{};
  T* pass = t.byEight;
  for (int bits = 3; int64_t(1) << bits <= kLongestConstantPass; pass += rootsOfPass(3, int64_t(1) << bits++)) {
    fillPass(pass, 3, int64_t(1) << bits, [=](int64_t k) { return constantRoot(k, bits + 3); });
  }
  fillPass(t.byFour, 2, 8, [](int64_t k) { return constantRoot(k, 5); });
  fillPass(t.byFour + 32, 2, 32, [](int64_t k) { return constantRoot(k, 7); });
  for (int order = 7; order <= kConstantBits; ++order) {
    fillBlocks(t.real + (1 << (order - 1)) - kShortestReal, int64_t(1) << (order - 2),
               [=](int64_t k) { return constantRoot(k, order); });
  }
  return t;
}
constexpr ConstantTables<float> kConstantTables = makeConstantTables<float>();

// The constant roots of a pass or of a recombination; null if there are none.
template <class T>
VEK_INLINE const T* constantRoots([[maybe_unused]] int bits, [[maybe_unused]] int64_t length) {
  if constexpr (sizeof(T) == 4) {
    if (bits == 2) return kConstantTables.byFour + (length == 8 ? 0 : 32);
    if (length <= kLongestConstantPass) return kConstantTables.byEight + 8 * (length - 8);
  }
  return nullptr;
}
template <class T>
VEK_INLINE const T* constantRealRoots([[maybe_unused]] int order) {
  if constexpr (sizeof(T) == 4) {
    if (order <= kConstantBits) return kConstantTables.real + (int64_t(1) << (order - 1)) - kShortestReal;
  }
  return nullptr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
