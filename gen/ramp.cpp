// SPDX-License-Identifier: Apache-2.0
// Straight lines, of floats and of integers rounded and clamped.
#include "core/simd/checks.h"
#include "core/simd/scale.h"
#include "gen/indexed.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- rounding to integers, halves away from zero ------------------------------------------------------------------

// Between the bounds before the conversion; NaN becomes 0.
VEK_INLINE Pack<int32_t> toInt32Within(Pack<float> x, float low, float high) {
  const Pack<float> r = minOf(maxOf(awayFromZero(x), broadcast(low)), broadcast(high));
  return toInt32Truncated(keep(x == x, r));
}
// The conversion itself gives -2147483648 for NaN and for everything out of range.
VEK_INLINE Pack<int32_t> toInt32Saturated(Group<double, 2> x) {
  const Pack<double> high = broadcast(2147483647.0);
  return toInt32Truncated(Group<double, 2>{{minOf(high, x.p[0]), minOf(high, x.p[1])}});
}

// ---- sixteen or eight elements from their indices -----------------------------------------------------------------

VEK_INLINE Pack<float> line(Pack<int32_t> index, float offset, float slope) {
  return broadcast(offset) + broadcast(slope) * toFloat(index);
}
VEK_INLINE Group<double, 2> line(Pack<int32_t> index, double offset, double slope) {
  Group<double, 2> n = toDouble(index);
  for (Pack<double>& p : n.p) p = broadcast(offset) + broadcast(slope) * p;
  return n;
}

template <class D>
struct Slope;
template <>
struct Slope<Vek32f> {
  static constexpr int elements = 16;
  VEK_INLINE static void write(Vek32f* dst, Pack<int32_t> index, float offset, float slope) {
    store(dst, line(index, offset, slope));
    store(dst + 8, line(indexPlus<8>(index), offset, slope));
  }
};
template <>
struct Slope<Vek16s> {
  static constexpr int elements = 16;
  VEK_INLINE static Pack<int16_t> pack(Pack<int32_t> index, float offset, float slope, float low, float high) {
    return narrowSaturated<int16_t>(toInt32Within(line(index, offset, slope), low, high),
                                    toInt32Within(line(indexPlus<8>(index), offset, slope), low, high));
  }
  VEK_INLINE static void write(Vek16s* dst, Pack<int32_t> index, float offset, float slope) {
    store(dst, pack(index, offset, slope, -32768, 32767));
  }
};
template <>
struct Slope<Vek8u> {
  static constexpr int elements = 32;
  VEK_INLINE static void write(Vek8u* dst, Pack<int32_t> index, float offset, float slope) {
    store(dst, narrowSaturated<uint8_t>(Slope<Vek16s>::pack(index, offset, slope, 0, 255),
                                        Slope<Vek16s>::pack(indexPlus<16>(index), offset, slope, 0, 255)));
  }
};
template <>
struct Slope<Vek32s> {
  static constexpr int elements = 8;
  VEK_INLINE static void write(Vek32s* dst, Pack<int32_t> index, double offset, double slope) {
    Group<double, 2> x = line(index, offset, slope);
    for (Pack<double>& p : x.p) p = awayFromZero(p);
    store(dst, toInt32Saturated(x));
  }
};

template <class D, class P>
VEK_INLINE void fillSlope(D* dst, ptrdiff_t n, int first, P offset, P slope) {
  fillIndexed<Slope<D>::elements>(
      dst, n, first, [=](D* out, Pack<int32_t> index) VEK_LAMBDA { Slope<D>::write(out, index, offset, slope); });
}

template <class D>
VEK_INLINE void fillWith(D* dst, ptrdiff_t from, ptrdiff_t to, D value) {
  for (ptrdiff_t i = from; i < to; ++i) dst[i] = value;
}

// ---- saturated stretches ------------------------------------------------------------------------------------------

// The index at which the line passes a bound, held to the range of indices. NaN (a line of NaN, or one that lies on
// the bound and is too flat to leave it) gives `otherwise`.
template <class P>
VEK_INLINE int passes(P bound, P offset, P r, int otherwise) {
  const P at = (bound - offset) * r + 1;
  if (at != at) return otherwise;
  if (at < 0) return 0;
  return at >= P(2147483648.0) ? 2147483647 : int(at);
}

template <class D, class P>
VEK_INLINE VekStatus slopeVector(D* dst, int len, P offset, P slope, P low, P high) {
  if (const VekStatus s = checkVectors(len, dst)) return s;
  if (slope == 0) {
    alignas(32) D value[Slope<D>::elements];
    Slope<D>::write(value, zeros<int32_t>(), offset, 0);
    fillWith(dst, 0, len, value[0]);
    return vekStsNoErr;
  }
  const bool rising = slope > 0;
  const P r = 1 / slope;
  int head = passes(rising ? low : high, offset, r, 0), tail = passes(rising ? high : low, offset, r, 2147483647);
  head = head < len ? head : len;
  tail = tail < len ? tail : len;
  const D first = D(rising ? low : high), last = D(rising ? high : low);
  fillWith(dst, 0, head, first);
  fillSlope(dst + head, tail - head, head, offset, slope);
  fillWith(dst, tail, len, last);
  return vekStsNoErr;
}

VEK_INLINE VekStatus singleLine(Vek32f* dst, int len, float offset, float slope) {
  if (const VekStatus s = checkVectors(len, dst)) return s;
  fillSlope(dst, len, 0, offset, slope);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksVectorRamp_32f(Vek32f* pDst, int len, Vek32f offset, Vek32f slope) {
  return singleLine(pDst, len, offset, slope);
}
VekStatus veksVectorRamp_32s(Vek32s* pDst, int len, Vek32f offset, Vek32f slope) {
  if (const VekStatus s = checkVectors(len, pDst)) return s;
  fillIndexed<8>(pDst, len, 0, [=](Vek32s* out, Pack<int32_t> index) VEK_LAMBDA {
    Group<double, 2> x = toDouble(line(index, offset, slope));
    for (Pack<double>& p : x.p) p = p + (broadcast(0.5) | signOf(p));
    store(out, toInt32Saturated(x));
  });
  return vekStsNoErr;
}

VekStatus veksVectorSlope_8u(Vek8u* pDst, int len, Vek32f offset, Vek32f slope) {
  return slopeVector<Vek8u, float>(pDst, len, offset, slope, 0, 255);
}
VekStatus veksVectorSlope_16s(Vek16s* pDst, int len, Vek32f offset, Vek32f slope) {
  return slopeVector<Vek16s, float>(pDst, len, offset, slope, -32768, 32767);
}
VekStatus veksVectorSlope_32f(Vek32f* pDst, int len, Vek32f offset, Vek32f slope) {
  return singleLine(pDst, len, offset, slope);
}
VekStatus veksVectorSlope_32s(Vek32s* pDst, int len, Vek64f offset, Vek64f slope) {
  return slopeVector<Vek32s, double>(pDst, len, offset, slope, -2147483648.0, 2147483647.0);
}

}  // namespace vek::VEK_SLOT
