// SPDX-License-Identifier: Apache-2.0
// Half precision by integer arithmetic on packs of eight 32-bit lanes, for processors without the conversion
// instructions and for the NaNs that those instructions treat differently.
#ifndef VEK_VECTOR_CONVERT_HALF_H
#define VEK_VECTOR_CONVERT_HALF_H

#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "vector/convert_scale.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kRebias = 127 - 15;

// Eight halves to floats, exactly. A denormal becomes the fraction of a normal number from which that number's leading
// one is subtracted, so that no operand of the subtraction is a denormal.
VEK_INLINE Pack<float> halfToFloat(Pack<int32_t> h) {
  const Pack<int32_t> magnitude = h & broadcast(0x7FFF);
  const Pack<int32_t> sign = (h ^ magnitude) << 16;
  const Pack<int32_t> shifted = magnitude << 13;
  const Pack<int32_t> rebias = broadcast(kRebias << 23), denormalBias = broadcast((kRebias + 1) << 23);
  const Pack<int32_t> isSpecial = bits<int32_t>(magnitude > broadcast(0x7BFF));
  const Pack<int32_t> normal = shifted + rebias + (isSpecial & rebias);
  const Pack<int32_t> denormal = bits<int32_t>(bits<float>(shifted + denormalBias) - bits<float>(denormalBias));
  return bits<float>(select(magnitude < broadcast(0x400), denormal, normal) | sign);
}
VEK_INLINE Pack<float> halfToFloat(const Vek16f* p) { return halfToFloat(loadWiden<int32_t>(p)); }

// Half patterns of eight magnitudes (sign bit cleared), to nearest even. Adding a number whose last fraction bit weighs
// 2^-24 lets the addition round a denormal; the fraction of a normal is rounded by a carry that may pass into the
// exponent and on to infinity.
VEK_INLINE Pack<int32_t> finiteToHalfNearest(Pack<int32_t> m) {
  constexpr int32_t denormalUnit = (127 - 1) << 23;  // 0.5
  const Pack<int32_t> denormal =
      bits<int32_t>(bits<float>(m) + bits<float>(broadcast(denormalUnit))) - broadcast(denormalUnit);
  const Pack<int32_t> odd = (m >> 13) & broadcast(1);
  const Pack<int32_t> normal = (m + odd + broadcast(0xFFF - (kRebias << 23))) >> 13;
  return select(m < broadcast((kRebias + 1) << 23), denormal, minOf(normal, broadcast(0x7C00)));
}
// Toward zero: nothing finite passes the largest finite half.
VEK_INLINE Pack<int32_t> finiteToHalfTruncated(Pack<int32_t> m) {
  const Pack<int32_t> denormal = toInt32Truncated(bits<float>(m) * broadcast(16777216.0f));
  const Pack<int32_t> normal = (m - broadcast(kRebias << 23)) >> 13;
  return select(m < broadcast((kRebias + 1) << 23), denormal, minOf(normal, broadcast(0x7BFF)));
}

// Eight floats to half patterns in the low 16 bits of their lanes; the upper bits repeat the sign.
template <int Mode>
VEK_INLINE Pack<int32_t> floatToHalf(Pack<float> x) {
  const Pack<int32_t> b = bits<int32_t>(x);
  const Pack<int32_t> m = b & broadcast(0x7FFFFFFF);
  const Pack<int32_t> infinity = broadcast(0x7F800000);
  const Pack<int32_t> finite = Mode == vekRoundNearestEven ? finiteToHalfNearest(m) : finiteToHalfTruncated(m);
  const Pack<int32_t> special = broadcast(0x7C00) + (bits<int32_t>(m > infinity) & broadcast(0x1FF));
  const Pack<int32_t> result = select(m < infinity, finite, special);
  return result | ((b >> 31) << 15);
}

// Sixteen at a time. The lanes hold sign-extended 16-bit patterns, so saturation leaves them alone.
template <int Mode>
VEK_INLINE Pack<Vek16f> floatToHalf(Pack<float> a, Pack<float> b) {
  return bits<Vek16f>(narrowSaturated<int16_t>(floatToHalf<Mode>(a), floatToHalf<Mode>(b)));
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
