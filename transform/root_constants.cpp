// SPDX-License-Identifier: Apache-2.0
#include "transform/root_constants.h"

namespace vek {
namespace {

struct FineRoots {
  Root at[1 << (kConstantBits - 10)];
};
consteval FineRoots makeFineRoots() {
  FineRoots r{};
  for (int k = 0; k < 1 << (kConstantBits - 10); ++k) {
    const double angle = kTwoPi * k / (1 << kConstantBits);
    r.at[k] = {seriesCos(angle), -seriesSin(angle)};
  }
  return r;
}
constexpr FineRoots kFineRoots = makeFineRoots();

// exp(-2 pi i k / 2^order), order <= 13.
constexpr Root constantRoot(int64_t k, int order) {
  const int64_t j = k << (kConstantBits - order), fine = j & ((1 << (kConstantBits - 10)) - 1);
  const Root r = root1024(j >> (kConstantBits - 10));
  return fine == 0 ? r : r * kFineRoots.at[fine];
}

template <int L>
consteval PassConstants makePassConstants() {
  PassConstants t{};
  const auto fill = [](float* table, int bits, int64_t length, int64_t count) {
    int order = bits;
    while (length << bits >> order > 1) ++order;
    fillPass<L>(table, bits, length, count, [=](int64_t k) { return constantRoot(k, order); });
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

}  // namespace

constexpr QuarterSine quarterSine = makeQuarterSine();
constexpr PassConstants passConstants4 = makePassConstants<4>();
constexpr PassConstants passConstants8 = makePassConstants<8>();

}  // namespace vek
