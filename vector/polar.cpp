// SPDX-License-Identifier: Apache-2.0
// Complex numbers by magnitude and phase, their power, and back. The parts lie in two arrays or interleaved.
#include "core/simd/elementary.h"
#include "core/simd/map.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kLanes = Pack<float>::lanes;

VEK_INLINE Two<float> loadSplit(const float* re, const float* im) { return {load(re), load(im)}; }

// What is computed from the parts of each element, given as packs or as a block in memory.
struct Power {
  VEK_INLINE Pack<float> operator()(Pack<float> re, Pack<float> im) const { return squaredMagnitude(re, im); }
  VEK_INLINE Pack<float> operator()(const Vek32fc* s) const {
    const Pack<float> a = load(parts(s)), b = load(parts(s) + kLanes);
    return addNeighbours(a * a, b * b);
  }
};
struct Magnitude {
  template <class... S>
  VEK_INLINE Pack<float> operator()(S... s) const {
    return squareRoot(Power()(s...));
  }
};
struct Phase {
  VEK_INLINE Pack<float> operator()(Pack<float> re, Pack<float> im) const { return angleOf(im, re); }
  VEK_INLINE Pack<float> operator()(const Vek32fc* s) const {
    const Two<float> z = loadSplit(s);
    return angleOf(z.b, z.a);
  }
};

template <class Op>
VEK_INLINE VekStatus realResults(const float* re, const float* im, float* dst, int len) {
  return mapChecked(Op(), dst, len, re, im);
}
template <class Op>
VEK_INLINE VekStatus realResults(const Vek32fc* src, float* dst, int len) {
  return sweepChecked<kLanes>([](float* d, const Vek32fc* s) VEK_LAMBDA { store(d, Op()(s)); }, dst, len, src);
}

VEK_INLINE void storeSplit(Pack<float> re, Pack<float> im, float* dstRe, float* dstIm) {
  store(dstRe, re);
  store(dstIm, im);
}
VEK_INLINE void storeSplit(Pack<float> re, Pack<float> im, Vek32fc* dst) { storeJoined(dst, re, im); }

template <class... S>
VEK_INLINE VekStatus toPolar(float* dstMagn, float* dstPhase, int len, const S*... src) {
  return sweepTwoChecked<kLanes>(
      [](float* magn, float* phase, const S*... s) VEK_LAMBDA {
        const Two<float> z = loadSplit(s...);
        store(magn, Magnitude()(z.a, z.b));
        store(phase, Phase()(z.a, z.b));
      },
      dstMagn, dstPhase, len, src...);
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
  return realResults<Magnitude>(pSrcRe, pSrcIm, pDst, len);
}
VekStatus veksMagnitude_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len) {
  return realResults<Magnitude>(pSrc, pDst, len);
}

VekStatus veksPhase_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDst, int len) {
  return realResults<Phase>(pSrcRe, pSrcIm, pDst, len);
}
VekStatus veksPhase_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len) { return realResults<Phase>(pSrc, pDst, len); }

VekStatus veksPowerSpectrum_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDst, int len) {
  return realResults<Power>(pSrcRe, pSrcIm, pDst, len);
}
VekStatus veksPowerSpectrum_32fc(const Vek32fc* pSrc, Vek32f* pDst, int len) {
  return realResults<Power>(pSrc, pDst, len);
}

VekStatus veksCartToPolar_32f(const Vek32f* pSrcRe, const Vek32f* pSrcIm, Vek32f* pDstMagn, Vek32f* pDstPhase,
                              int len) {
  return toPolar(pDstMagn, pDstPhase, len, pSrcRe, pSrcIm);
}
VekStatus veksCartToPolar_32fc(const Vek32fc* pSrc, Vek32f* pDstMagn, Vek32f* pDstPhase, int len) {
  return toPolar(pDstMagn, pDstPhase, len, pSrc);
}

VekStatus veksPolarToCart_32f(const Vek32f* pSrcMagn, const Vek32f* pSrcPhase, Vek32f* pDstRe, Vek32f* pDstIm,
                              int len) {
  return sweepTwoChecked<kLanes>([](float* re, float* im, const float* magn, const float* phase)
                                     VEK_LAMBDA { fromPolar(magn, phase, re, im); },
                                 pDstRe, pDstIm, len, pSrcMagn, pSrcPhase);
}
VekStatus veksPolarToCart_32fc(const Vek32f* pSrcMagn, const Vek32f* pSrcPhase, Vek32fc* pDst, int len) {
  return sweepChecked<kLanes>([](Vek32fc* d, const float* magn, const float* phase)
                                  VEK_LAMBDA { fromPolar(magn, phase, d); },
                              pDst, len, pSrcMagn, pSrcPhase);
}

}  // namespace vek::VEK_SLOT
