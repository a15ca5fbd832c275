// SPDX-License-Identifier: Apache-2.0
// Windows of cosines and the Bartlett window.
#include <math.h>

#include "core/simd/double_double.h"
#include "gen/taper.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

constexpr double kTwoPi = 6.283185307179586;
constexpr double kPi = 3.141592653589793;

// cos(n * theta) for eight n at a time, each from the one before: the latency of a product and a sum a step.
struct Rotation {
  double c, s, stepC, stepS;

  VEK_INLINE explicit Rotation(int len) : c(1), s(0) {
    stepC = sineCosine(kTwoPi / (len - 1)).cosine;
    stepS = sqrt(1 - stepC * stepC);
  }
  VEK_INLINE Group<double, 2> next() {
    alignas(32) double x[8];
#pragma GCC unroll 8
    for (int i = 0; i < 8; ++i) {
      x[i] = c;
      const double turned = c * stepC - s * stepS;
      s = s * stepC + c * stepS;
      c = turned;
    }
    return loadGroup<2>(x);
  }
};

// Windows made of cosines: each turns a pack of cos(n * theta) into weights.
struct Hann {
  VEK_INLINE Pack<double> operator()(Pack<double> c) const { return broadcast(0.5) * (broadcast(1.0) - c); }
};
struct Hamming {
  VEK_INLINE Pack<double> operator()(Pack<double> c) const { return broadcast(0.54) - broadcast(0.46) * c; }
};
struct Blackman {
  double alpha;
  VEK_INLINE Pack<double> operator()(Pack<double> c) const {
    const Pack<double> twice = broadcast(2.0) * c * c - broadcast(1.0);
    return broadcast((alpha + 1) / 2) - broadcast(0.5) * c - broadcast(alpha / 2) * twice;
  }
};

template <class T>
VEK_INLINE void clearEnds(T* dst, int len) {
  dst[0] = dst[len - 1] = T{};
}

template <class T, class W>
VEK_INLINE VekStatus cosineWindow(const T* src, T* dst, int len, W window) {
  if (const VekStatus s = checkVectors(len < 3 ? 0 : len, src, dst)) return s;
  Rotation rotation(len);
  taper(src, dst, len, [&](int) VEK_LAMBDA {
    const Group<double, 2> c = rotation.next();
    return Group<double, 2>{{window(c.p[0]), window(c.p[1])}};
  });
  return vekStsNoErr;
}

// As cosineWindow, with the ends of the shortest window exactly zero.
template <class T, class W>
VEK_INLINE VekStatus closedWindow(const T* src, T* dst, int len, W window) {
  const VekStatus s = cosineWindow(src, dst, len, window);
  if (s == vekStsNoErr && len == 3) clearEnds(dst, len);
  return s;
}

template <class T>
VEK_INLINE VekStatus blackmanOpt(const T* src, T* dst, int len) {
  if (len < 4) return vekStsSizeErr;
  const double ratio = 0.5 / sineCosine(kPi / (len - 1)).cosine;
  return closedWindow(src, dst, len, Blackman{float(-(ratio * ratio))});
}

template <class T>
VEK_INLINE VekStatus bartlett(const T* src, T* dst, int len) {
  if (const VekStatus s = checkVectors(len < 3 ? 0 : len, src, dst)) return s;
  double w = 0;
  const double step = 2.0 / (len - 1);
  taper(src, dst, len, [&](int) VEK_LAMBDA {
    alignas(32) double x[8];
#pragma GCC unroll 8
    for (int i = 0; i < 8; ++i) {
      x[i] = w;
      w += step;
    }
    return loadGroup<2>(x);
  });
  clearEnds(dst, len);
  return vekStsNoErr;
}

constexpr float kStandard = -0.16f;

}  // namespace

VekStatus veksWinBartlett_32f(const Vek32f* pSrc, Vek32f* pDst, int len) { return bartlett(pSrc, pDst, len); }
VekStatus veksWinBartlett_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) { return bartlett(pSrc, pDst, len); }

VekStatus veksWinHann_32f(const Vek32f* pSrc, Vek32f* pDst, int len) { return closedWindow(pSrc, pDst, len, Hann{}); }
VekStatus veksWinHann_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) {
  return closedWindow(pSrc, pDst, len, Hann{});
}

VekStatus veksWinHamming_32f(const Vek32f* pSrc, Vek32f* pDst, int len) {
  return cosineWindow(pSrc, pDst, len, Hamming{});
}
VekStatus veksWinHamming_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) {
  return cosineWindow(pSrc, pDst, len, Hamming{});
}

VekStatus veksWinBlackman_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f alpha) {
  return closedWindow(pSrc, pDst, len, Blackman{alpha});
}
VekStatus veksWinBlackman_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32f alpha) {
  return closedWindow(pSrc, pDst, len, Blackman{alpha});
}

VekStatus veksWinBlackmanStd_32f(const Vek32f* pSrc, Vek32f* pDst, int len) {
  return closedWindow(pSrc, pDst, len, Blackman{kStandard});
}
VekStatus veksWinBlackmanStd_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) {
  return closedWindow(pSrc, pDst, len, Blackman{kStandard});
}

VekStatus veksWinBlackmanOpt_32f(const Vek32f* pSrc, Vek32f* pDst, int len) { return blackmanOpt(pSrc, pDst, len); }
VekStatus veksWinBlackmanOpt_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) { return blackmanOpt(pSrc, pDst, len); }

}  // namespace vek::VEK_SLOT
