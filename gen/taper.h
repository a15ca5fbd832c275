// SPDX-License-Identifier: Apache-2.0
// Multiplying both ends of a vector by the weights of a symmetric window, from the outside in.
#ifndef VEK_GEN_TAPER_H
#define VEK_GEN_TAPER_H

#include "core/simd/checks.h"
#include "core/simd/convert.h"
#include "core/simd/driver.h"
#include "vek/types.h"

namespace vek::VEK_SLOT {
namespace {

// Products of eight elements and eight weights, rounded once.
VEK_INLINE void weigh(float* dst, const float* src, Group<double, 2> w) {
  const Group<double, 2> x = toDouble(load(src));
  store(dst, toFloat(Group<double, 2>{{x.p[0] * w.p[0], x.p[1] * w.p[1]}}));
}
VEK_INLINE void weigh(Vek32fc* dst, const Vek32fc* src, Group<double, 2> w) {
  for (int k = 0; k < 2; ++k) {
    const Two<double> both = interleave(w.p[k], w.p[k]);
    weigh(parts(dst + 4 * k), parts(src + 4 * k), Group<double, 2>{{both.a, both.b}});
  }
}

VEK_INLINE Group<double, 2> reversed(Group<double, 2> w) { return {{reverse(w.p[1]), reverse(w.p[0])}}; }

// Fewer than eight elements.
template <class T>
VEK_INLINE void weighFew(T* dst, const T* src, Group<double, 2> w, int n) {
  Block<T, 8> in = {}, out;
  copyShort(in.x, src, n * ptrdiff_t(sizeof(T)));
  weigh(out.x, in.x, w);
  copyShort(dst, out.x, n * ptrdiff_t(sizeof(T)));
}

// weights(k) gives the weights k .. k+7 and is called for k = 0, 8, 16, ... while there are pairs left; the middle
// element of an odd length is copied.
template <class T, class F>
VEK_INLINE void taper(const T* src, T* dst, int len, F weights) {
  const int pairs = len / 2;
  int k = 0;
  for (; k + 8 <= pairs; k += 8) {
    const Group<double, 2> w = weights(k);
    weigh(dst + k, src + k, w);
    weigh(dst + len - 8 - k, src + len - 8 - k, reversed(w));
  }
  if (const int few = pairs - k) {
    // The weights of the far end stand at the back of their packs: what is read behind those is padding.
    alignas(32) double far[16] = {};
    const Group<double, 2> w = weights(k);
    storeGroup(far, reversed(w));
    weighFew(dst + k, src + k, w, few);
    weighFew(dst + len - k - few, src + len - k - few, loadGroup<2>(far + 8 - few), few);
  }
  if (len % 2) dst[pairs] = src[pairs];
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
