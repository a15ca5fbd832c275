// SPDX-License-Identifier: Apache-2.0
// Absolute values, squares, square roots, normalisation.
#include "core/simd/map.h"
#include "core/simd/scale.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kFloats = Pack<float>::lanes;

// ---- absolute values -----------------------------------------------------------------------------------------------

// Floats keep every other bit; of the integers the most negative gives the most positive.
VEK_INLINE Pack<float> absolute(Pack<float> x) { return magnitude(x); }
VEK_INLINE Pack<int16_t> absolute(Pack<int16_t> x) { return maxOf(x, subSaturated(zeros<int16_t>(), x)); }
VEK_INLINE Pack<int32_t> absolute(Pack<int32_t> x) {
  const Pack<int32_t> m = magnitude(x);
  return m + signOf(m);
}

template <class T>
VEK_INLINE VekStatus absolute(const T* src, T* dst, int len) {
  return mapChecked([](auto x) VEK_LAMBDA { return absolute(x); }, dst, len, src);
}

// ---- squares -------------------------------------------------------------------------------------------------------

// The largest root whose square, times 2^left, does not pass `most`.
VEK_INLINE int largestRoot(int left, int most) { return int(__builtin_sqrt(double(most >> left))); }

// Bytes, no larger than `cap`, are squared in 16-bit lanes, those in even and odd places apart.
template <class Scale>
VEK_INLINE void squareBytes(Scale scale, const Vek8u* src, Vek8u* dst, int len, int cap = 255) {
  const Pack<uint8_t> largest = broadcast(uint8_t(cap));
  const Pack<int16_t> most = broadcast(int16_t(255));
  mapPacks(
      [=](Pack<uint8_t> bytes) VEK_LAMBDA {
        const Pack<uint16_t> x = bits<uint16_t>(minOf(bytes, largest));
        const Pack<uint16_t> even = x & broadcast(uint16_t(0xFF)), odd = x >> 8;
        const Pack<int16_t> a = minOf(bits<int16_t>(scale(even * even)), most);
        const Pack<int16_t> b = minOf(bits<int16_t>(scale(odd * odd)), most);
        return bits<uint8_t>(a | (b << 8));
      },
      dst, len, src);
}

VEK_INLINE void squareScaled(const Vek8u* src, Vek8u* dst, int len, int scaleFactor) {
  using P = Pack<uint16_t>;
  if (scaleFactor > 16) {
    ::veksZero_8u(dst, len);
  } else if (scaleFactor > 8) {
    // Halved first, what falls off kept in the lowest bit: the sum of the rounding stays within 16 bits.
    const RightShift<uint16_t> rest(scaleFactor - 1);
    squareBytes([=](P r) VEK_LAMBDA { return roundShift((r >> 1) | (r & broadcast(uint16_t(1))), rest); }, src, dst,
                len);
  } else if (scaleFactor > 0) {
    const RightShift<uint16_t> scale(scaleFactor);
    squareBytes([=](P r) VEK_LAMBDA { return roundShift(r, scale); }, src, dst, len);
  } else {
    // Beyond the first root that saturates nothing changes; its square is still below 2^15 after the shift.
    const int left = scaleFactor < -8 ? 8 : -scaleFactor;
    squareBytes([=](P r) VEK_LAMBDA { return r << left; }, src, dst, len, largestRoot(left, 255) + 1);
  }
}

VEK_INLINE void squareScaled(const Vek16s* src, Vek16s* dst, int len, int scaleFactor) {
  using P = Pack<int16_t>;
  if (scaleFactor > 30) {
    ::veksZero_16s(dst, len);
  } else if (scaleFactor > 0) {
    const RightShift<int32_t> scale(scaleFactor);
    mapPacks(
        [=](P x) VEK_LAMBDA {
          const Two<int16_t> squares = interleaveInHalves(x * x, mulHigh(x, x));
          return narrowInHalves<int16_t>(roundShift(bits<int32_t>(squares.a), scale),
                                         roundShift(bits<int32_t>(squares.b), scale));
        },
        dst, len, src);
  } else {
    const int left = scaleFactor < -15 ? 15 : -scaleFactor;
    const int root = largestRoot(left, 32767);
    const P most = broadcast(int16_t(root)), least = broadcast(int16_t(-root)), end = broadcast(int16_t(32767));
    mapPacks([=](P x) VEK_LAMBDA { return select((x > most) | (x < least), end, (x * x) << left); }, dst, len, src);
  }
}

template <class T>
VEK_INLINE VekStatus square(const T* src, T* dst, int len, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  squareScaled(src, dst, len, scaleFactor);
  return vekStsNoErr;
}

VEK_INLINE VekStatus square(const Vek32f* src, Vek32f* dst, int len) {
  return mapChecked([](auto x) VEK_LAMBDA { return x * x; }, dst, len, src);
}

VEK_INLINE VekStatus square(const Vek32fc* src, Vek32fc* dst, int len) {
  return mapChecked([](auto x) VEK_LAMBDA { return complexMul(x, x); }, dst, len, src);
}

// ---- square roots of integers --------------------------------------------------------------------------------------

// The root of eight integers >= 0, scaled and rounded. sqrt(x) * 2^left meets a tie t only for square numbers x, where
// it is exact, and else keeps a distance of more than 1 / (2t)^2 / 2 of itself from it. With 2t < 2^10, as for all
// bytes, and for 16 bits up to left = 2, single precision therefore rounds like exact arithmetic.
struct RootInSingle {
  Pack<float> scale;
  VEK_INLINE Pack<int32_t> operator()(Pack<int32_t> x) const { return toInt32Nearest(squareRoot(toFloat(x)) * scale); }
};
struct RootInDouble {
  Pack<double> scale;
  VEK_INLINE Pack<int32_t> operator()(Pack<int32_t> x) const {
    Group<double, 2> r = toDouble(x);
#pragma GCC unroll 2
    for (int i = 0; i < 2; ++i) r.p[i] = squareRoot(r.p[i]) * scale;
    return toInt32Nearest(r);
  }
};

template <class Root>
VEK_INLINE void rootBlocks(Root root, const Vek8u* src, Vek8u* dst, int len, Pack<int16_t>*) {
  constexpr int lanes = Pack<int32_t>::lanes;
  sweep<4 * lanes>(
      [=](Vek8u* d, const Vek8u* s) VEK_LAMBDA {
        Pack<int32_t> r[4];
#pragma GCC unroll 4
        for (int k = 0; k < 4; ++k) r[k] = root(loadWiden<int32_t>(s + k * lanes));
        store(d, narrowSaturated<uint8_t>(narrowSaturated<int16_t>(r[0], r[1]), narrowSaturated<int16_t>(r[2], r[3])));
      },
      dst, len, src);
}

// `seen` collects the sign bits.
template <class Root>
VEK_INLINE void rootBlocks(Root root, const Vek16s* src, Vek16s* dst, int len, Pack<int16_t>* seen) {
  constexpr int lanes = Pack<int16_t>::lanes;
  Pack<int16_t> signs = zeros<int16_t>();
  sweep<lanes>(
      [=, &signs](Vek16s* d, const Vek16s* s) VEK_LAMBDA {
        const Pack<int16_t> x = load(s);
        signs = signs | x;
        const Group<int32_t, 2> w = widen<int32_t>(maxOf(x, zeros<int16_t>()));
        store(d, narrowSaturated<int16_t>(root(w.p[0]), root(w.p[1])));
      },
      dst, len, src);
  *seen = signs;
}

template <class T>
VEK_INLINE VekStatus rootScaled(const T* src, T* dst, int len, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  // Beyond these ends every root but 0 saturates, or vanishes.
  const int left = scaleFactor < -16 ? 16 : scaleFactor > 16 ? -16 : -scaleFactor;
  const float scale = scaleMultiplier<float>(-left);
  Pack<int16_t> signs = zeros<int16_t>();
  if (sizeof(T) == 1 || left <= 2) {
    rootBlocks(RootInSingle{broadcast(scale)}, src, dst, len, &signs);
  } else {
    rootBlocks(RootInDouble{broadcast(double(scale))}, src, dst, len, &signs);
  }
  return any(signs < zeros<int16_t>()) ? vekStsSqrtNegArg : vekStsNoErr;
}

// ---- square roots of floats ----------------------------------------------------------------------------------------

VEK_INLINE VekStatus root(const Vek32f* src, Vek32f* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  Mask<float> negative = asMask<float>(zeros<float>());
  mapPacks(
      [&negative](Pack<float> x) VEK_LAMBDA {
        negative = negative | (x < zeros<float>());
        return squareRoot(x);
      },
      dst, len, src);
  return any(negative) ? vekStsSqrtNegArg : vekStsNoErr;
}

// The parts of a principal root: u + iv for re >= 0, |v| + iu with the sign of im otherwise, where
// u = sqrt((|z| + |re|) / 2) and v = |im| / 2u. In double nothing overflows, vanishes or cancels.
template <class P>
struct Parts {
  P re, im;
};
VEK_INLINE Parts<Pack<double>> complexRoot(Pack<double> re, Pack<double> im) {
  const Pack<double> zero = zeros<double>(), infinity = broadcast(__builtin_inf());
  const Pack<double> x = magnitude(re), y = magnitude(im);
  const Pack<double> modulus = squareRoot(squaredMagnitude(re, im));
  // An infinite part makes the larger part of the root infinite, whatever the other is, and an infinite imaginary part
  // makes both.
  const Mask<double> tall = y == infinity;
  const Pack<double> u = select(tall | (x == infinity), infinity, squareRoot(broadcast(0.5) * (modulus + x)));
  const Pack<double> v = select(tall, infinity, keep(u != zero, y / (u + u)));
  const Mask<double> right = re >= zero;
  return {select(right, u, v), select(right, v, u) | signOf(im)};
}

VEK_INLINE VekStatus root(const Vek32fc* src, Vek32fc* dst, int len) {
  return sweepChecked<kFloats>(
      [](Vek32fc* d, const Vek32fc* s) VEK_LAMBDA {
        const Two<float> z = loadSplit(s);
        const Group<double, 2> re = toDouble(z.a), im = toDouble(z.b);
        const Parts<Pack<double>> low = complexRoot(re.p[0], im.p[0]), high = complexRoot(re.p[1], im.p[1]);
        storeJoined(d, toFloat(Group<double, 2>{{low.re, high.re}}), toFloat(Group<double, 2>{{low.im, high.im}}));
      },
      dst, len, src);
}

// ---- normalisation -------------------------------------------------------------------------------------------------

VEK_INLINE VekStatus checkNormalize(const void* src, const void* dst, int len, float div) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  return div == 0 ? vekStsDivByZeroErr : vekStsNoErr;
}

VEK_INLINE auto normalizer(Pack<float> sub, float div) {
  return [=, d = broadcast(div)](Pack<float> x) VEK_LAMBDA { return (x - sub) / d; };
}

}  // namespace

VekStatus veksAbs_16s(const Vek16s* pSrc, Vek16s* pDst, int len) { return absolute(pSrc, pDst, len); }
VekStatus veksAbs_32s(const Vek32s* pSrc, Vek32s* pDst, int len) { return absolute(pSrc, pDst, len); }
VekStatus veksAbs_32f(const Vek32f* pSrc, Vek32f* pDst, int len) { return absolute(pSrc, pDst, len); }

VekStatus veksSqr_8u_Sfs(const Vek8u* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return square(pSrc, pDst, len, scaleFactor);
}
VekStatus veksSqr_16s_Sfs(const Vek16s* pSrc, Vek16s* pDst, int len, int scaleFactor) {
  return square(pSrc, pDst, len, scaleFactor);
}
VekStatus veksSqr_32f(const Vek32f* pSrc, Vek32f* pDst, int len) { return square(pSrc, pDst, len); }
VekStatus veksSqr_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) { return square(pSrc, pDst, len); }

VekStatus veksSqrt_8u_Sfs(const Vek8u* pSrc, Vek8u* pDst, int len, int scaleFactor) {
  return rootScaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksSqrt_16s_Sfs(const Vek16s* pSrc, Vek16s* pDst, int len, int scaleFactor) {
  return rootScaled(pSrc, pDst, len, scaleFactor);
}
VekStatus veksSqrt_32f(const Vek32f* pSrc, Vek32f* pDst, int len) { return root(pSrc, pDst, len); }
VekStatus veksSqrt_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len) { return root(pSrc, pDst, len); }

VekStatus veksNormalize_32f(const Vek32f* pSrc, Vek32f* pDst, int len, Vek32f vSub, Vek32f vDiv) {
  if (const VekStatus s = checkNormalize(pSrc, pDst, len, vDiv)) return s;
  mapPacks(normalizer(broadcast(vSub), vDiv), pDst, len, pSrc);
  return vekStsNoErr;
}
VekStatus veksNormalize_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, Vek32fc vSub, Vek32f vDiv) {
  if (const VekStatus s = checkNormalize(pSrc, pDst, len, vDiv)) return s;
  mapComplex(normalizer(broadcastPair(vSub.re, vSub.im), vDiv), pDst, len, pSrc);
  return vekStsNoErr;
}

}  // namespace vek::VEK_SLOT
