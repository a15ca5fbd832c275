// SPDX-License-Identifier: Apache-2.0
// The Jaehne test signal, a chirp from frequency zero to the highest.
#include "core/simd/checks.h"
#include "core/simd/elementary.h"
#include "gen/indexed.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// The angle (pi/2 / len) * n * n of four indices and its sine.
VEK_INLINE Pack<double> chirp(__m128i index, double magn, double rate) {
  const Pack<double> n = int32sToDouble(index);
  return broadcast(magn) * sineOf(broadcast(rate) * n * n);
}
VEK_INLINE Group<double, 2> chirp(Pack<int32_t> index, double magn, double rate) {
  return {{chirp(half(index, 0), magn, rate), chirp(half(index, 1), magn, rate)}};
}

VEK_INLINE void storeAs(float* dst, Group<double, 2> x) { store(dst, toFloat(x)); }
VEK_INLINE void storeAs(int32_t* dst, Group<double, 2> x) {
  const Pack<double> h = broadcast(0.5);
  store(dst, toInt32Truncated(Group<double, 2>{{x.p[0] + (h | signOf(x.p[0])), x.p[1] + (h | signOf(x.p[1]))}}));
}

template <class D>
VEK_INLINE VekStatus jaehne(D* dst, int len, D magn) {
  if (const VekStatus s = checkVectors(len, dst)) return s;
  if (magn < 0) return vekStsJaehneErr;
  const double size = len == 1 ? 0 : double(magn), rate = 1.5707963267948966 / len;
  fillIndexed<8>(dst, len, 0, [=](D* out, Pack<int32_t> index) VEK_LAMBDA { storeAs(out, chirp(index, size, rate)); });
  return vekStsNoErr;
}

}  // namespace

VekStatus veksVectorJaehne_32f(Vek32f* pDst, int len, Vek32f magn) { return jaehne(pDst, len, magn); }
VekStatus veksVectorJaehne_32s(Vek32s* pDst, int len, Vek32s magn) { return jaehne(pDst, len, magn); }

}  // namespace vek::VEK_SLOT
