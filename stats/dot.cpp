// SPDX-License-Identifier: Apache-2.0
// Dot products, real, complex and mixed, in single and double precision and of scaled integers.
#include "core/simd/scale.h"
#include "stats/reduce.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- real, single precision ----------------------------------------------------------------------------------------

// The defining order: a prologue brings the second source to 16 bytes (data off 4-byte alignment never gets there), two
// four-lane sums run over groups of eight, the first of them taking the prologue's sum over, and the rest follows one
// by one.
template <class T>
VEK_INLINE T orderedDot(const T* src1, const T* src2, ptrdiff_t n) {
  const uintptr_t address = reinterpret_cast<uintptr_t>(src2);
  ptrdiff_t scalar = ptrdiff_t(-address & 15) / 4;
  if (address % 4 != 0 || scalar > n) scalar = n;
  float sum = 0;
  ptrdiff_t i = 0;
  for (; i < scalar; ++i) sum += read(src1 + i) * read(src2 + i);
  if (i + 8 <= n) {
    alignas(32) const float seed[8] = {sum};
    Pack<float> part = load(seed);
    for (; i + 8 <= n; i += 8) part = part + load(src1 + i) * load(src2 + i);
    sum = total(halvesAdded(part));
  }
  for (; i < n; ++i) sum += read(src1 + i) * read(src2 + i);
  return sum;
}

template <class T>
VEK_INLINE T regroupedDot(const T* src1, const T* src2, ptrdiff_t n) {
  constexpr int K = kChains<float>;
  Pack<float> sum[K];
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) sum[k] = zeros<float>();
  ptrdiff_t i = 0;
  for (; i + 8 * K <= n; i += 8 * K) {
#pragma GCC unroll 8
    for (int k = 0; k < K; ++k) sum[k] = fusedMulAdd(load(src1 + i + 8 * k), load(src2 + i + 8 * k), sum[k]);
  }
  for (; i + 8 <= n; i += 8) sum[0] = fusedMulAdd(load(src1 + i), load(src2 + i), sum[0]);
  if (i < n) sum[1] = fusedMulAdd(loadPart(src1 + i, n - i), loadPart(src2 + i, n - i), sum[1]);
  return total(halvesAdded(packTree(sum)));
}

VEK_INLINE float singleDot(const float* src1, const float* src2, ptrdiff_t n) {
  if constexpr (kRegroups) {
    return regroupedDot(src1, src2, n);
  } else {
    return orderedDot(src1, src2, n);
  }
}

// ---- complex, single precision -------------------------------------------------------------------------------------

// The products of one source with the other as it is, (re*re, im*im), and with its parts swapped, (re*im, im*re), are
// summed apart; a subtraction and an addition make the complex sum of them at the end.
VEK_INLINE Vek32fc complexDot(const float* src1, const float* src2, ptrdiff_t n) {
  constexpr int K = kChains<float> / 2;
  Pack<float> straight[K], crossed[K];
#pragma GCC unroll 4
  for (int k = 0; k < K; ++k) straight[k] = crossed[k] = zeros<float>();
  const auto add = [&](int k, ptrdiff_t at) VEK_LAMBDA {
    const Pack<float> x = loadOnce(src1 + at), y = loadOnce(src2 + at);
    straight[k] = fusedMulAdd(x, y, straight[k]);
    crossed[k] = fusedMulAdd(x, swapPairs(y), crossed[k]);
  };
  ptrdiff_t i = 0;
  for (; i + 8 * K <= 2 * n; i += 8 * K) {
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) add(k, i + 8 * k);
  }
  for (; i + 8 <= 2 * n; i += 8) add(0, i);
  const __m128 s = tree(straight), c = tree(crossed);
  Vek32fc all = {(s[0] + s[2]) - (s[1] + s[3]), (c[0] + c[2]) + (c[1] + c[3])};
  for (; i < 2 * n; i += 2) {
    const float re1 = read(src1 + i), im1 = read(src1 + i + 1), re2 = read(src2 + i), im2 = read(src2 + i + 1);
    all.re += re1 * re2;
    all.re -= im1 * im2;
    all.im += re1 * im2 + re2 * im1;
  }
  return all;
}

VEK_INLINE Vek32fc mixedDot(const float* reals, const float* complexes, ptrdiff_t n) {
  constexpr int K = kChains<float> / 2;
  Pack<float> low[K], high[K];
#pragma GCC unroll 4
  for (int k = 0; k < K; ++k) low[k] = high[k] = zeros<float>();
  const auto add = [&](int k, ptrdiff_t at) VEK_LAMBDA {
    const Two<float> x = repeatEach(load(reals + at));
    low[k] = fusedMulAdd(x.a, load(complexes + 2 * at), low[k]);
    high[k] = fusedMulAdd(x.b, load(complexes + 2 * at + 8), high[k]);
  };
  ptrdiff_t i = 0;
  for (; i + 8 * K <= n; i += 8 * K) {
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) add(k, i + 8 * k);
  }
  for (; i + 8 <= n; i += 8) add(0, i);
  const __m128 s = tree(low) + tree(high);
  Vek32fc all = {s[0] + s[2], s[1] + s[3]};
  for (; i < n; ++i) {
    const float x = read(reals + i);
    all.re += x * read(complexes + 2 * i);
    all.im += x * read(complexes + 2 * i + 1);
  }
  return all;
}

// ---- complex, double precision -------------------------------------------------------------------------------------

// The sum with a product of elements of type S. Products of 32-bit integers are rounded before they are added; those of
// singles are exact in double, and fusing does not show.
template <class S>
struct ProductOf {
  template <class V>
  VEK_INLINE V operator()(V sum, V x, V y) const {
    if constexpr (kSame<S, float>) {
      return fusedMulAdd(x, y, sum);
    } else {
      return sum + x * y;
    }
  }
};

// Every operation rounded. With contraction off gcc 12 still makes vfmaddsub of such a difference and sum of products,
// unless it cannot see that the first operands are products.
VEK_INLINE __m128d complexMulOne(__m128d x, __m128d y) {
  __m128d straight = __m128d{x[0], x[0]} * y;
  if constexpr (kFma) asm("" : "+x"(straight));
  return __m128d{straight[0] - x[1] * y[1], straight[1] + x[1] * y[0]};
}

// Complex products, each formed whole, in four complex sums.
template <class S>
VEK_INLINE __m128d orderedComplexDot(const S* src1, const S* src2, ptrdiff_t n) {
  Pack<double> sum[2] = {zeros<double>(), zeros<double>()};
  ptrdiff_t i = 0;
  for (; i + 4 <= n; i += 4) {
#pragma GCC unroll 2
    for (int k = 0; k < 2; ++k) {
      const ptrdiff_t at = 2 * i + 4 * k;
      sum[k] = sum[k] + complexMul(loadDouble(src1 + at), loadDouble(src2 + at));
    }
  }
  __m128d all = tree(sum);
  for (; i < n; ++i) all += complexMulOne(readPair(src1 + 2 * i), readPair(src2 + 2 * i));
  return all;
}

// As complexDot, in double.
template <class S>
VEK_INLINE __m128d regroupedComplexDot(const S* src1, const S* src2, ptrdiff_t n) {
  constexpr int K = kChains<double> / 2;
  Pack<double> straight[K], crossed[K];
#pragma GCC unroll 4
  for (int k = 0; k < K; ++k) straight[k] = crossed[k] = zeros<double>();
  const auto add = [&](int k, ptrdiff_t at) VEK_LAMBDA {
    const Pack<double> x = loadDouble(src1 + at), y = loadDouble(src2 + at);
    straight[k] = ProductOf<S>()(straight[k], x, y);
    crossed[k] = ProductOf<S>()(crossed[k], x, swapPairs(y));
  };
  ptrdiff_t i = 0;
  for (; i + 4 * K <= 2 * n; i += 4 * K) {
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) add(k, i + 4 * k);
  }
  for (; i + 4 <= 2 * n; i += 4) add(0, i);
  const __m128d s = tree(straight), c = tree(crossed);
  __m128d all = {s[0] - s[1], c[0] + c[1]};
  if (i < 2 * n) all += complexMulOne(readPair(src1 + i), readPair(src2 + i));
  return all;
}

template <class S>
VEK_INLINE __m128d complexDotInDouble(const S* src1, const S* src2, ptrdiff_t n) {
  if constexpr (kRegroups) {
    return regroupedComplexDot(src1, src2, n);
  } else {
    return orderedComplexDot(src1, src2, n);
  }
}

// Real by complex. Two packs of sums for every group of four elements, so K = 1 gives four complex sums.
template <class S>
VEK_INLINE __m128d mixedDotInDouble(const S* reals, const S* complexes, ptrdiff_t n) {
  constexpr int K = kRegroups ? kChains<double> / 2 : 1;
  Pack<double> sum[2 * K];
#pragma GCC unroll 8
  for (int k = 0; k < 2 * K; ++k) sum[k] = zeros<double>();
  const auto add = [&](int k, ptrdiff_t at) VEK_LAMBDA {
    const Two<double> x = repeatEach(loadDouble(reals + at));
    sum[2 * k] = ProductOf<S>()(sum[2 * k], x.a, loadDouble(complexes + 2 * at));
    sum[2 * k + 1] = ProductOf<S>()(sum[2 * k + 1], x.b, loadDouble(complexes + 2 * at + 4));
  };
  ptrdiff_t i = 0;
  for (; i + 4 * K <= n; i += 4 * K) {
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) add(k, i + 4 * k);
  }
  for (; i + 4 <= n; i += 4) add(0, i);
  __m128d all = tree(sum);
  for (; i < n; ++i) {
    const double x = double(read(reals + i));
    all += __m128d{x, x} * readPair(complexes + 2 * i);
  }
  return all;
}

// ---- integers: sums of rounded products, rounded once more ---------------------------------------------------------

VEK_INLINE Vek32sc roundedResult(__m128d x, double scale) {
  return {roundedResult(x[0] * scale), roundedResult(x[1] * scale)};
}

// ---- arguments -----------------------------------------------------------------------------------------------------

template <class F, class S1, class S2, class R>
VEK_INLINE VekStatus dot(F f, const S1* src1, const S2* src2, int len, R* result) {
  if (const VekStatus s = checkVectors(len, src1, src2, result)) return s;
  *result = f(src1, src2, ptrdiff_t(len));
  return vekStsNoErr;
}

}  // namespace

VekStatus veksDotProd_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek32f* pDp) {
  return dot([](auto x, auto y, auto n) VEK_LAMBDA { return singleDot(x, y, n); }, pSrc1, pSrc2, len, pDp);
}
VekStatus veksDotProd_32f64f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek64f* pDp) {
  const auto sum = [](auto x, auto y, auto n) VEK_LAMBDA { return regroupedSum<4>(ProductOf<Vek32f>(), n, x, y); };
  return dot(sum, pSrc1, pSrc2, len, pDp);
}
VekStatus veksDotProd_32fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek32fc* pDp) {
  const auto sum = [](auto x, auto y, auto n) VEK_LAMBDA { return complexDot(parts(x), parts(y), n); };
  return dot(sum, pSrc1, pSrc2, len, pDp);
}
VekStatus veksDotProd_32fc64fc(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek64fc* pDp) {
  const auto sum = [](auto x, auto y, auto n) VEK_LAMBDA {
    const __m128d all = complexDotInDouble(parts(x), parts(y), n);
    return Vek64fc{all[0], all[1]};
  };
  return dot(sum, pSrc1, pSrc2, len, pDp);
}
VekStatus veksDotProd_32f32fc(const Vek32f* pSrc1, const Vek32fc* pSrc2, int len, Vek32fc* pDp) {
  return dot([](auto x, auto y, auto n) VEK_LAMBDA { return mixedDot(x, parts(y), n); }, pSrc1, pSrc2, len, pDp);
}
VekStatus veksDotProd_32f32fc64fc(const Vek32f* pSrc1, const Vek32fc* pSrc2, int len, Vek64fc* pDp) {
  const auto sum = [](auto x, auto y, auto n) VEK_LAMBDA {
    const __m128d all = mixedDotInDouble(x, parts(y), n);
    return Vek64fc{all[0], all[1]};
  };
  return dot(sum, pSrc1, pSrc2, len, pDp);
}
VekStatus veksDotProd_32s_Sfs(const Vek32s* pSrc1, const Vek32s* pSrc2, int len, Vek32s* pDp, int scaleFactor) {
  const double scale = scaleMultiplier<double>(scaleFactor < -31 ? -31 : scaleFactor > 93 ? 93 : scaleFactor);
  const auto sum = [scale](auto x, auto y, auto n)
                       VEK_LAMBDA { return roundedResult(regroupedSum<2>(ProductOf<Vek32s>(), n, x, y) * scale); };
  return dot(sum, pSrc1, pSrc2, len, pDp);
}
VekStatus veksDotProd_32sc_Sfs(const Vek32sc* pSrc1, const Vek32sc* pSrc2, int len, Vek32sc* pDp, int scaleFactor) {
  const double scale = scaleMultiplier<double>(scaleFactor < -31 ? -31 : scaleFactor > 93 ? 93 : scaleFactor);
  const auto sum = [scale](auto x, auto y, auto n)
                       VEK_LAMBDA { return roundedResult(complexDotInDouble(parts(x), parts(y), n), scale); };
  return dot(sum, pSrc1, pSrc2, len, pDp);
}
VekStatus veksDotProd_32s32sc_Sfs(const Vek32s* pSrc1, const Vek32sc* pSrc2, int len, Vek32sc* pDp, int scaleFactor) {
  const double scale = scaleMultiplier<double>(scaleFactor < -31 ? -31 : scaleFactor > 93 ? 93 : scaleFactor);
  const auto sum = [scale](auto x, auto y, auto n)
                       VEK_LAMBDA { return roundedResult(mixedDotInDouble(x, parts(y), n), scale); };
  return dot(sum, pSrc1, pSrc2, len, pDp);
}

}  // namespace vek::VEK_SLOT
