// SPDX-License-Identifier: Apache-2.0
// Random numbers, uniform and Gaussian, from two integer sequences added.
#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "core/simd/elementary.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- the two integer sequences ------------------------------------------------------------------------------------

constexpr uint32_t kFactor = 69069, kIncrement = 1013904243, kCongruentialStart = 1131199209;

constexpr uint32_t afterSteps(uint32_t x, int n) {
  while (n-- > 0) x = kFactor * x + kIncrement;
  return x;
}

// Subtract with borrow: the sign of a difference is the borrow of the next one, and all that ties the two. Two
// instructions that change no register hand it on. Written in C++ it comes down by a shift and a copy, and a number
// takes 1.77 cycles of the time-stamp counter instead of 1.50 (g++ 12).
struct Subtractor {
  uint32_t a, b, c;
  uint32_t before;  // the difference before, uncorrected

  VEK_INLINE explicit Subtractor(uint32_t seed)
      : a(seed), b(afterSteps(seed, 1)), c(afterSteps(seed, 2)), before(0x80000000) {}
  VEK_INLINE uint32_t difference(uint32_t x, uint32_t y) {
    __asm__("btl $31, %1\n\tsbbl %2, %0" : "+&r"(x) : "r"(before), "r"(y) : "cc");
    before = x;
    return int32_t(x) < 0 ? x - 18 : x;
  }
  VEK_INLINE uint32_t half() { return difference(b, c); }
  VEK_INLINE void step(uint32_t* out) {
    const uint32_t first = half(), second = difference(a, b);
    c = a;
    b = first;
    a = second;
    out[0] = first;
    out[1] = second;
  }
};

// The congruential sequence, eight steps at a time.
struct Congruential {
  Pack<uint32_t> x;

  VEK_INLINE Congruential() {
    alignas(32) uint32_t start[8];
#pragma GCC unroll 8
    for (int i = 0; i < 8; ++i) start[i] = afterSteps(kCongruentialStart, i + 1);
    x = ::vek::VEK_SLOT::load(start);
  }
  VEK_INLINE Pack<int32_t> plus(const uint32_t* numbers) {
    const Pack<int32_t> sum = bits<int32_t>(load(numbers) + x);
    constexpr uint32_t increment = afterSteps(0, 8), factor = afterSteps(1, 8) - increment;
    x = x * broadcast(factor) + broadcast(increment);
    return sum;
  }
};

// ---- uniform ------------------------------------------------------------------------------------------------------

struct Mapping {
  double scale, centre;
  VEK_INLINE Pack<float> operator()(Pack<int32_t> r) const {
    Group<double, 2> x = toDouble(r);
    for (Pack<double>& p : x.p) p = p * broadcast(scale) + broadcast(centre);
    return toFloat(x);
  }
};

constexpr int kUniformBlock = 16;

// The integers are drawn one block ahead of their conversion: the chain of borrows and the packs then run side by side.
VEK_INLINE uint32_t fillUniform(float* dst, int len, Mapping map, uint32_t seed) {
  alignas(32) uint32_t raw[2][kUniformBlock];
  Subtractor numbers(seed);
  Congruential congruential;
  const int blocks = len / kUniformBlock, rest = len % kUniformBlock;
  if (blocks > 0)
    for (int i = 0; i < kUniformBlock; i += 2) numbers.step(raw[0] + i);
  for (int k = 0; k < blocks; ++k) {
    const uint32_t* now = raw[k & 1];
    uint32_t* next = raw[~k & 1];
    float* out = dst + ptrdiff_t(k) * kUniformBlock;
    const bool more = k + 1 < blocks;
    for (int i = 0; i < kUniformBlock; i += 8) {
      if (more)
        for (int j = 0; j < 8; j += 2) numbers.step(next + i + j);
      store(out + i, map(congruential.plus(now + i)));
    }
  }
  for (int i = 0; i + 2 <= rest; i += 2) numbers.step(raw[0] + i);
  uint32_t last = numbers.a;
  if (rest % 2) last = raw[0][rest - 1] = numbers.half();
  float* out = dst + ptrdiff_t(blocks) * kUniformBlock;
  for (int i = 0; i < rest; i += 8) {
    const Pack<float> x = map(congruential.plus(raw[0] + i));
    if (rest - i < 8) {
      storePart(out + i, x, rest - i);
    } else {
      store(out + i, x);
    }
  }
  return last;
}

// ---- Gauss --------------------------------------------------------------------------------------------------------

constexpr int kPairs = 64;

// Points of a block that fell inside the unit circle, in order, each with the number its step ended with.
struct Points {
  alignas(32) double u[kPairs + 8], v[kPairs + 8], s[kPairs + 8];
  uint32_t ending[kPairs + 8];
  int count;
};

VEK_INLINE void choosePoints(Points& points, const uint32_t* raw, int pairs, Congruential& congruential) {
  const Pack<double> unit = broadcast(4.656612873077e-10);
  alignas(32) double u[8], v[8], s[8];
  ptrdiff_t count = 0;
  for (int i = 0; i < 2 * pairs; i += 16) {
    const Pack<int32_t> r0 = congruential.plus(raw + i), r1 = congruential.plus(raw + i + 8);
    const Two<int32_t> r = deinterleave(r0, r1);
    const Group<double, 2> x = toDouble(r.a), y = toDouble(r.b);
    uint32_t inside = 0;
    for (int k = 0; k < 2; ++k) {
      const Pack<double> a = x.p[k] * unit, b = y.p[k] * unit, square = squaredMagnitude(a, b);
      store(u + 4 * k, a);
      store(v + 4 * k, b);
      store(s + 4 * k, square);
      inside |= laneBits((square < broadcast(1.0)) & (square > zeros<double>())) << (4 * k);
    }
#pragma GCC unroll 8
    for (int k = 0; k < 8; ++k) {
      points.u[count] = u[k];
      points.v[count] = v[k];
      points.s[count] = s[k];
      points.ending[count] = raw[i + 2 * k + 1];
      count += ptrdiff_t(inside >> k & 1);
    }
  }
  points.count = int(count);
}

// Two elements from each point, four points at a time, with a call of `meanwhile` for each four.
template <class F>
VEK_INLINE void gaussFrom(float* dst, const Points& points, float mean, double deviation, F meanwhile) {
  const Pack<double> d = broadcast(deviation);
  for (int i = 0; i < points.count; i += 4) {
    const Pack<double> s = load(points.s + i);
    const Pack<double> f = squareRoot(broadcast(-2.0) * naturalLog(s) / s);
    const __m128i first = doubleToFloats(load(points.v + i) * d * f);
    const __m128i second = doubleToFloats(load(points.u + i) * d * f);
    store(dst + 2 * i, fromHalves<float>(unpackLow<4>(first, second), unpackHigh<4>(first, second)) + broadcast(mean));
    meanwhile();
  }
}

// Somewhat more points than the 4/pi a pair that are to be expected, in whole packs.
VEK_INLINE int pairsFor(int needed) {
  const int guess = needed < kPairs ? (needed + needed / 3 + 8) / 8 * 8 : kPairs;
  return guess < kPairs ? guess : kPairs;
}

// One point more than the pairs stored is drawn, and for odd lengths its first element used. While the points of one
// block become elements, the integers of the next are drawn: neither waits for the other.
VEK_INLINE uint32_t fillGauss(float* dst, int len, float mean, double deviation, uint32_t seed) {
  Subtractor numbers(seed);
  Congruential congruential;
  Points points;
  alignas(32) uint32_t raw[2 * kPairs];
  int needed = len / 2 + 1;
  ptrdiff_t left = len;
  int pairs = pairsFor(needed);
  for (int i = 0; i < 2 * pairs; i += 2) numbers.step(raw + i);
  for (;;) {
    choosePoints(points, raw, pairs, congruential);
    if (points.count > needed) points.count = needed;
    for (int i = points.count; i < points.count + 4; ++i) points.s[i] = points.u[i] = points.v[i] = 0.5;
    needed -= points.count;
    pairs = needed == 0 ? 0 : pairsFor(needed);
    int drawn = 0;
    const auto draw = [&]() VEK_LAMBDA {
      constexpr int steps = 5;  // by 64 pairs, of which 50 are good for points
      // Packs of two registers leave none for the integers.
      if (Pack<double>::regs == 2 || drawn + 2 * steps > 2 * pairs) return;
      for (int i = 0; i < steps; ++i) numbers.step(raw + drawn + 2 * i);
      drawn += 2 * steps;
    };
    if (left >= 2 * kPairs) {
      gaussFrom(dst, points, mean, deviation, draw);
    } else {
      alignas(32) float block[2 * kPairs + 8];
      gaussFrom(block, points, mean, deviation, draw);
      copyShort(dst, block, (left < 2 * points.count ? left : 2 * points.count) * ptrdiff_t(sizeof(float)));
    }
    for (; drawn < 2 * pairs; drawn += 2) numbers.step(raw + drawn);
    if (needed == 0) return points.ending[points.count - 1];
    dst += 2 * points.count;
    left -= 2 * points.count;
  }
}

}  // namespace

VekStatus veksRandUniform_Direct_32f(Vek32f* pDst, int len, Vek32f low, Vek32f high, Vek32u* pSeed) {
  if (const VekStatus s = checkVectors(len, pDst, pSeed)) return s;
  const Mapping map = {double(high - low) * 2.3283064365387e-10, double(low + high) * 0.5};
  *pSeed = fillUniform(pDst, len, map, *pSeed);
  return vekStsNoErr;
}

VekStatus veksRandGauss_Direct_32f(Vek32f* pDst, int len, Vek32f mean, Vek32f stdDev, Vek32u* pSeed) {
  if (const VekStatus s = checkVectors(len, pDst, pSeed)) return s;
  *pSeed = fillGauss(pDst, len, mean, stdDev, *pSeed);
  return vekStsNoErr;
}

}  // namespace vek::VEK_SLOT
