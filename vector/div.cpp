// SPDX-License-Identifier: Apache-2.0
// Division of vectors, and of integer vectors by a constant.
#include "vector/scaled.h"

namespace vek::VEK_SLOT {
namespace {

// The multiplier in single precision for the narrow types. Below -127 stands for itself what -127 gives: every quotient
// but 0 is out of range, and 0 times infinity is kept from being a NaN.
VEK_INLINE float finiteMultiplier(int scaleFactor) {
  return scaleMultiplier<float>(scaleFactor < -127 ? -127 : scaleFactor);
}

// ---- narrow integers as floats -------------------------------------------------------------------------------------

// 16 or 32 elements as packs of floats, in an order that `narrow` undoes.
VEK_INLINE Group<float, 2> wordsToFloat(Pack<int16_t> a, Pack<int16_t> high) {
  const Two<int16_t> w = interleaveInHalves(a, high);
  return {{toFloat(bits<int32_t>(w.a)), toFloat(bits<int32_t>(w.b))}};
}
VEK_INLINE Group<float, 2> widenToFloat(Pack<int16_t> a) { return wordsToFloat(a, signOf(a)); }
VEK_INLINE Group<float, 4> widenToFloat(Pack<uint8_t> a) {
  const Two<uint16_t> w = widenBytes(a);
  const Pack<int16_t> zero = zeros<int16_t>();
  const Group<float, 2> low = wordsToFloat(bits<int16_t>(w.a), zero), high = wordsToFloat(bits<int16_t>(w.b), zero);
  return {{low.p[0], low.p[1], high.p[0], high.p[1]}};
}

// To the nearest integers, clamped. What is too small for 32 bits becomes their least value and is clamped with the
// rest; what is too large has to be held below 2^31 first.
VEK_INLINE Pack<int32_t> toInteger(Pack<float> q) { return toInt32Nearest(minOf(q, broadcast(65536.0f))); }
VEK_INLINE Pack<int16_t> narrow(Group<float, 2> q) {
  return narrowInHalves<int16_t>(toInteger(q.p[0]), toInteger(q.p[1]));
}
VEK_INLINE Pack<uint8_t> narrow(Group<float, 4> q) {
  return narrowInHalves<uint8_t>(narrow(Group<float, 2>{{q.p[0], q.p[1]}}), narrow(Group<float, 2>{{q.p[2], q.p[3]}}));
}

// f on corresponding packs of two groups.
template <class F, class T, int K>
VEK_INLINE Group<T, K> eachPack(F f, Group<T, K> a, Group<T, K> b) {
  Group<T, K> out;
#pragma GCC unroll 4
  for (int k = 0; k < K; ++k) out.p[k] = f(a.p[k], b.p[k]);
  return out;
}

// ---- integer quotients ---------------------------------------------------------------------------------------------

// What an element divided by zero gives.
template <class T>
VEK_INLINE Pack<T> overZero(Pack<T> x) {
  const Mask<T> nonZero = x != zeros<T>();
  if constexpr (kSigned<T>) {
    return keep(nonZero, LeftShift<T>::saturation(x));
  } else {
    return bits<T>(nonZero);
  }
}

// Runs `quotient` on packs of divisors and dividends; zeros among the divisors are rare, and dealt with aside.
template <class T, class F>
VEK_INLINE VekStatus divideElements(F quotient, const T* divisors, const T* dividends, T* dst, int len) {
  bool zeroSeen = false;
  mapPacks(
      [quotient, &zeroSeen](Pack<T> d, Pack<T> x) VEK_LAMBDA {
        const Pack<T> q = quotient(d, x);
        const Mask<T> zero = d == zeros<T>();
        if (__builtin_expect(!any(zero), 1)) return q;
        zeroSeen = true;
        return select(zero, overZero(x), q);
      },
      dst, len, divisors, dividends);
  return zeroSeen ? vekStsDivByZero : vekStsNoErr;
}

template <class T>
VEK_INLINE VekStatus divide(const T* divisors, const T* dividends, T* dst, int len, int scaleFactor) {
  if (const VekStatus status = checkVectors(len, divisors, dividends, dst)) return status;
  const Pack<float> m = broadcast(finiteMultiplier(scaleFactor));
  const auto quotient = [m](Pack<T> d, Pack<T> x) VEK_LAMBDA {
    const auto divided = [m](Pack<float> a, Pack<float> b) VEK_LAMBDA { return b * m / a; };
    return narrow(eachPack(divided, widenToFloat(d), widenToFloat(x)));
  };
  return divideElements(quotient, divisors, dividends, dst, len);
}

VEK_INLINE VekStatus divide(const Vek32s* divisors, const Vek32s* dividends, Vek32s* dst, int len, int scaleFactor) {
  if (const VekStatus status = checkVectors(len, divisors, dividends, dst)) return status;
  const Pack<double> m = broadcast(scaleMultiplier<double>(scaleFactor)), most = broadcast(2147483647.0);
  const auto quotient = [m, most](Pack<int32_t> d, Pack<int32_t> x) VEK_LAMBDA {
    // The order of the minimum's operands lets a NaN through, to become -2^31.
    const auto divided = [m, most](Pack<double> a, Pack<double> b) VEK_LAMBDA { return minOf(most, b * m / a); };
    return toInt32Nearest(eachPack(divided, toDouble(d), toDouble(x)));
  };
  return divideElements(quotient, divisors, dividends, dst, len);
}

template <class T>
VEK_INLINE VekStatus divideByConstant(const T* src, T val, T* dst, int len, int scaleFactor) {
  if (const VekStatus status = checkVectors(len, src, dst)) return status;
  if (val == 0) return vekStsDivByZeroErr;
  const Pack<float> f = broadcast(finiteMultiplier(scaleFactor) / float(val));
  mapPacks(
      [f](Pack<T> x) VEK_LAMBDA {
        const auto w = widenToFloat(x);
        return narrow(eachPack([f](Pack<float> a, Pack<float>) VEK_LAMBDA { return a * f; }, w, w));
      },
      dst, len, src);
  return vekStsNoErr;
}

// ---- floats --------------------------------------------------------------------------------------------------------

VEK_INLINE Pack<float> undefined() { return bits<float>(broadcast(uint32_t(0xFFC00000))); }

VEK_INLINE VekStatus divide(const Vek32f* divisors, const Vek32f* dividends, Vek32f* dst, int len) {
  if (const VekStatus status = checkVectors(len, divisors, dividends, dst)) return status;
  bool zeroSeen = false;
  mapPacks(
      [&zeroSeen](Pack<float> d, Pack<float> x) VEK_LAMBDA {
        const Pack<float> q = x / d, zero = zeros<float>();
        const Mask<float> isZero = d == zero;
        if (__builtin_expect(!any(isZero), 1)) return q;
        zeroSeen = true;
        const Pack<float> infinite = x / zero;  // the divisor's sign does not count
        return select(isZero, select(infinite == infinite, infinite, undefined()), q);
      },
      dst, len, divisors, dividends);
  return zeroSeen ? vekStsDivByZero : vekStsNoErr;
}

// Eight complex quotients, real and imaginary parts apart, so that one division of a whole pack serves them all.
VEK_INLINE void divideBlock(Vek32fc* dst, const Vek32fc* divisors, const Vek32fc* dividends, bool& zeroSeen) {
  constexpr int step = Pack<float>::lanes;
  const auto split = [](const float* p)
                         VEK_LAMBDA { return deinterleaveInHalves(inRegister(load(p)), inRegister(load(p + step))); };
  const auto [aRe, aIm] = split(parts(divisors));
  const auto [bRe, bIm] = split(parts(dividends));
  const Pack<float> norm = squaredMagnitude(aRe, aIm), r = broadcast(1.0f) / norm;
  Pack<float> re = (aRe * bRe + aIm * bIm) * r, im = (aRe * bIm - aIm * bRe) * r;
  const Mask<float> isZero = norm == zeros<float>();
  if (__builtin_expect(any(isZero), 0)) {
    zeroSeen = true;
    re = select(isZero, undefined(), re);
    im = select(isZero, undefined(), im);
  }
  const Two<float> q = interleaveInHalves(re, im);
  store(parts(dst), q.a);
  store(parts(dst) + step, q.b);
}

VEK_INLINE VekStatus divide(const Vek32fc* divisors, const Vek32fc* dividends, Vek32fc* dst, int len) {
  if (const VekStatus status = checkVectors(len, divisors, dividends, dst)) return status;
  bool zeroSeen = false;
  sweep<8>([&zeroSeen](Vek32fc* d, const Vek32fc* a, const Vek32fc* b) VEK_LAMBDA { divideBlock(d, a, b, zeroSeen); },
           dst, len, divisors, dividends);
  return zeroSeen ? vekStsDivByZero : vekStsNoErr;
}

}  // namespace

VekStatus veksDiv_8u_Sfs(const Vek8u* pSrc1, const Vek8u* pSrc2, Vek8u* pDst, int len, int scaleFactor) {
  return divide(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksDiv_16s_Sfs(const Vek16s* pSrc1, const Vek16s* pSrc2, Vek16s* pDst, int len, int scaleFactor) {
  return divide(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksDiv_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, Vek32s* pDst, int len, int scaleFactor) {
  return divide(pSrc1, pSrc2, pDst, len, scaleFactor);
}
VekStatus veksDiv_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, Vek32f* pDst, int len) {
  return divide(pSrc1, pSrc2, pDst, len);
}
VekStatus veksDiv_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, Vek32fc* pDst, int len) {
  return divide(pSrc1, pSrc2, pDst, len);
}

VekStatus veksDivC_8u_Sfs(const Vek8u* pSrc, Vek8u val, Vek8u* pDst, int len, int scaleFactor) {
  return divideByConstant(pSrc, val, pDst, len, scaleFactor);
}
VekStatus veksDivC_16s_Sfs(const Vek16s* pSrc, Vek16s val, Vek16s* pDst, int len, int scaleFactor) {
  return divideByConstant(pSrc, val, pDst, len, scaleFactor);
}

}  // namespace vek::VEK_SLOT
