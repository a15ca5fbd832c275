// SPDX-License-Identifier: Apache-2.0
// Half precision by integer arithmetic on packs of eight 32-bit lanes, for processors without the conversion
// instructions and for the NaNs that those instructions treat differently.
#ifndef VEK_VECTOR_CONVERT_HALF_H
#define VEK_VECTOR_CONVERT_HALF_H

#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "core/simd/scale.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kRebias = 127 - 15;

// Eight halves, sign-extended to 32 bits, to floats, exactly. A denormal becomes the fraction of a normal number from
// which that number's leading one is subtracted, so that no operand of the subtraction is a denormal.
VEK_INLINE Pack<float> halfToFloat(Pack<int32_t> h) {
  const Pack<int32_t> magnitude = h & broadcast(0x7FFF);
  const Pack<int32_t> sign = h & broadcast(INT32_MIN);
  const Pack<int32_t> shifted = magnitude << 13;
  const Pack<int32_t> rebias = broadcast(kRebias << 23), denormalBias = broadcast((kRebias + 1) << 23);
  const Pack<int32_t> isSpecial = bits<int32_t>(magnitude > broadcast(0x7BFF));
  const Pack<int32_t> normal = shifted + rebias + (isSpecial & rebias);
  const Pack<int32_t> denormal = bits<int32_t>(bits<float>(shifted + denormalBias) - bits<float>(denormalBias));
  return bits<float>(select(magnitude < broadcast(0x400), denormal, normal) | sign);
}
VEK_INLINE Pack<float> halfToFloat(const Vek16f* p) {
  return halfToFloat(loadWiden<int32_t>(reinterpret_cast<const int16_t*>(p)));
}

// Half patterns of eight magnitudes that are not NaN, to nearest even. To each is added the power of two whose last
// fraction bit weighs as much as that of the half, or as that of a denormal half: the addition rounds, and the fraction
// of the sum is the significand of the half, leading one included. What rounds to 2^16 comes out as infinity.
VEK_INLINE Pack<int32_t> magnitudeToHalfNearest(Pack<float> m) {
  constexpr int32_t least = (kRebias + 1) << 23;  // exponent of the smallest normal half
  const Pack<float> limited = minOf(m, broadcast(65536.0f));
  const Pack<int32_t> exponent = bits<int32_t>(limited) & broadcast(0x7F800000);
  const Pack<int32_t> above = maxOf(exponent - broadcast(least), zeros<int32_t>());
  const Pack<int32_t> unit = above + broadcast(least + (13 << 23));
  const Pack<int32_t> significand = bits<int32_t>(limited + bits<float>(unit)) - unit;
  return significand + (above >> 13);
}
// Toward zero: nothing finite passes the largest finite half.
VEK_INLINE Pack<int32_t> magnitudeToHalfTruncated(Pack<float> m) {
  constexpr int32_t least = (kRebias + 1) << 23;
  const Pack<int32_t> b = bits<int32_t>(m);
  const Pack<int32_t> denormal = toInt32Truncated(m * broadcast(16777216.0f));
  const Pack<int32_t> normal = minOf((b - broadcast(kRebias << 23)) >> 13, broadcast(0x7BFF));
  const Pack<int32_t> finite = select(b < broadcast(least), denormal, normal);
  return select(b < broadcast(0x7F800000), finite, broadcast(0x7C00));
}
template <int Mode>
VEK_INLINE Pack<int32_t> magnitudeToHalf(Pack<float> m) {
  return Mode == vekRoundNearestEven ? magnitudeToHalfNearest(m) : magnitudeToHalfTruncated(m);
}

// NaN in either pack.
VEK_INLINE bool anyNan(Pack<float> a, Pack<float> b) { return __builtin_expect(any(unordered(a, b)), 0); }

// Sixteen floats to halves. Infinity comes out of either rounding as 0x7C00, and NaN is made of it.
template <int Mode>
VEK_INLINE Pack<Vek16f> floatToHalf(Pack<float> a, Pack<float> b) {
  Pack<int32_t> low = magnitudeToHalf<Mode>(magnitude(a)), high = magnitudeToHalf<Mode>(magnitude(b));
  if (anyNan(a, b)) {
    const Pack<int32_t> nan = broadcast(0x7DFF);
    low = select(maskCast<int32_t>(a == a), low, nan), high = select(maskCast<int32_t>(b == b), high, nan);
  }
  // Saturating as integers, negative floats keep their top bit.
  const Pack<int16_t> sign = narrowSaturated<int16_t>(bits<int32_t>(a), bits<int32_t>(b)) & broadcast(int16_t(-32768));
  return bits<Vek16f>(narrowSaturated<int16_t>(low, high) | sign);
}

// Halves to 16-bit integers, by whatever loads eight halves as floats.
template <int Mode, class Load>
VEK_INLINE void halvesTo16(Load load8, const Vek16f* src, int16_t* dst, int len, float multiplier) {
  const Pack<float> m = broadcast(multiplier);
  const auto round8 = [=](const Vek16f* x) VEK_LAMBDA { return roundToInt32<Mode>(limitFor<int16_t>(load8(x) * m)); };
  sweep<16>([=](int16_t* d, const Vek16f* x)
                VEK_LAMBDA { store(d, narrowSaturated<int16_t>(round8(x), round8(x + 8))); },
            dst, len, src);
}

// Calls f<Mode> with one of the two modes that half precision knows.
#define VEK_BY_HALF_MODE(mode, f, ...) \
  (mode == vekRoundNearestEven ? f<vekRoundNearestEven>(__VA_ARGS__) : f<vekRoundTowardZero>(__VA_ARGS__))

}  // namespace

// The kernels for processors with the conversion instructions, compiled apart. Slots without them never call these.
void halfToFloatF16c(const Vek16f* src, Vek32f* dst, int len);
void halfTo16sF16c(const Vek16f* src, Vek16s* dst, int len, VekRoundMode mode, float multiplier);
void floatToHalfF16c(const Vek32f* src, Vek16f* dst, int len, VekRoundMode mode);
void int16ToHalfF16c(const Vek16s* src, Vek16f* dst, int len, VekRoundMode mode);

}  // namespace vek::VEK_SLOT

#endif
