// SPDX-License-Identifier: Apache-2.0
// Complex numbers by magnitude and phase, their power, and back. The parts lie in two arrays or interleaved.
#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "core/simd/trig.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kLanes = Pack<float>::lanes;

VEK_INLINE Two<float> loadSplit(const float* re, const float* im) { return {load(re), load(im)}; }
VEK_INLINE Two<float> loadSplit(const Vek32fc* s) {
  return deinterleave(load(parts(s)), load(parts(s) + kLanes));
}

// re^2 + im^2, both squares and the sum rounded.
VEK_INLINE Pack<float> power(const float* re, const float* im) {
  const Pack<float> x = load(re), y = load(im);
  return x * x + y * y;
}
VEK_INLINE Pack<float> power(const Vek32fc* s) {
  const Pack<float> a = load(parts(s)), b = load(parts(s) + kLanes);
  return addNeighbours(a * a, b * b);
}

VEK_INLINE void storeSplit(Pack<float> re, Pack<float> im, float* dstRe, float* dstIm) {
  store(dstRe, re);
  store(dstIm, im);
}
VEK_INLINE void storeSplit(Pack<float> re, Pack<float> im, Vek32fc* d) {
  const Two<float> x = interleave(re, im);
  store(parts(d), x.a);
  store(parts(d) + kLanes, x.b);
}

// One real result for each element of the source, which is one array or two.
template <class... S>
VEK_INLINE VekStatus powerSpectrum(float* dst, int len, const S*... src) {
  if (const VekStatus s = checkVectors(len, src..., dst)) return s;
  sweep<kLanes>([](float* d, const S*... s) VEK_LAMBDA { store(d, power(s...)); }, dst, len, src...);
  return vekStsNoErr;
}

template <class... S>
VEK_INLINE VekStatus magnitudes(float* dst, int len, const S*... src) {
  if (const VekStatus s = checkVectors(len, src..., dst)) return s;
  sweep<kLanes>([](float* d, const S*... s) VEK_LAMBDA { store(d, squareRoot(power(s...))); }, dst, len, src...);
  return vekStsNoErr;
}

template <class... S>
VEK_INLINE VekStatus phases(float* dst, int len, const S*... src) {
  if (const VekStatus s = checkVectors(len, src..., dst)) return s;
  sweep<kLanes>(
      [](float* d, const S*... s) VEK_LAMBDA {
        const Two<float> z = loadSplit(s...);
        store(d, angleOf(z.b, z.a));
      },
      dst, len, src...);
  return vekStsNoErr;
}

template <class... S>
VEK_INLINE VekStatus toPolar(float* dstMagn, float* dstPhase, int len, const S*... src) {
  if (const VekStatus s = checkVectors(len, src..., dstMagn, dstPhase)) return s;
  sweepTwo<kLanes>(
      [](float* magn, float* phase, const S*... s) VEK_LAMBDA {
        const Two<float> z = loadSplit(s...);
        store(magn, squareRoot(z.a * z.a + z.b * z.b));
        store(phase, angleOf(z.b, z.a));
      },
      dstMagn, dstPhase, len, src...);
  return vekStsNoErr;
}

// Magnitude and phase to the place of one block of the destination, one array or two.
template <class... D>
VEK_INLINE void fromPolar(const float* magn, const float* phase, D*... d) {
  const SineCosine unit = sineCosineOf(load(phase));
  const Pack<float> m = load(magn);
  storeSplit(m * unit.cosine, m * unit.sine, d...);
}

}  // namespace

VekStatus veksMagnitude_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDst, int len) {
  return magnitudes(pDst, len, pSrcRe, pSrcIm);
}
VekStatus veksMagnitude_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len) { return magnitudes(pDst, len, pSrc); }

VekStatus veksPhase_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDst, int len) {
  return phases(pDst, len, pSrcRe, pSrcIm);
}
VekStatus veksPhase_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len) { return phases(pDst, len, pSrc); }

VekStatus veksPowerSpectrum_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDst, int len) {
  return powerSpectrum(pDst, len, pSrcRe, pSrcIm);
}
VekStatus veksPowerSpectrum_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len) { return powerSpectrum(pDst, len, pSrc); }

VekStatus veksCartToPolar_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDstMagn, Vek32f* pDstPhase,
                              int len) {
  return toPolar(pDstMagn, pDstPhase, len, pSrcRe, pSrcIm);
}
VekStatus veksCartToPolar_32fc(const Vek32fc* pSrc, Vek32f* pDstMagn, Vek32f* pDstPhase, int len) {
  return toPolar(pDstMagn, pDstPhase, len, pSrc);
}

VekStatus veksPolarToCart_32f(const Vek32f* pSrcMagn, const Vek32f* pSrcPhase, Vek32f* pDstRe, Vek32f* pDstIm,
                              int len) {
  if (const VekStatus s = checkVectors(len, pSrcMagn, pSrcPhase, pDstRe, pDstIm)) return s;
  sweepTwo<kLanes>([](float* re, float* im, const float* magn, const float* phase)
                       VEK_LAMBDA { fromPolar(magn, phase, re, im); },
                   pDstRe, pDstIm, len, pSrcMagn, pSrcPhase);
  return vekStsNoErr;
}
VekStatus veksPolarToCart_32fc(const Vek32f* pSrcMagn, const Vek32f* pSrcPhase, Vek32fc* pDst, int len) {
  if (const VekStatus s = checkVectors(len, pSrcMagn, pSrcPhase, pDst)) return s;
  sweep<kLanes>([](Vek32fc* d, const float* magn, const float* phase) VEK_LAMBDA { fromPolar(magn, phase, d); }, pDst,
                len, pSrcMagn, pSrcPhase);
  return vekStsNoErr;
}

}  // namespace vek::VEK_SLOT
