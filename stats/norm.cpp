// SPDX-License-Identifier: Apache-2.0
// Norms of vectors and of differences of vectors.
#include "stats/fold.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- maxima --------------------------------------------------------------------------------------------------------

// The largest of op(sources...), which is not negative, or 0: NaN never compares greater.
template <class Op, class... S>
VEK_INLINE float largest(Op op, ptrdiff_t n, const S*... src) {
  const Pack<float> zero = zeros<float>();
  if (n >= Pack<float>::lanes) return outermost<true>(fold<Want::kHigh, float>({zero, zero}, op, n, src...).high);
  return outermost<true>(maxOf(op(loadShort(src, n * ptrdiff_t(sizeof(float)))...), zero));
}

VEK_INLINE float largestMagnitude(const float* src, ptrdiff_t n) {
  return largest([](auto x) VEK_LAMBDA { return magnitude(x); }, n, src);
}

// Rounding to single precision commutes with the maximum; and the difference of two elements rounds to the same single
// whether it passes through double precision or not: one that is inexact in double lies far from every tie.
VEK_INLINE float largestDifference(const float* src1, const float* src2, ptrdiff_t n) {
  return largest([](auto x, auto y) VEK_LAMBDA { return magnitude(x - y); }, n, src1, src2);
}

VEK_INLINE float largestComplexDifference(const float* src1, const float* src2, ptrdiff_t n) {
  const auto power = [](auto x, auto y) VEK_LAMBDA { return squaredMagnitude(x - y); };
  return __builtin_sqrtf(largest(power, 2 * n, src1, src2));
}

// Over whole packs of four elements, in double precision.
VEK_INLINE float largestPowerInDouble(float least, const float* src, ptrdiff_t packs) {
  Pack<double> high[4];
#pragma GCC unroll 4
  for (int k = 0; k < 4; ++k) high[k] = broadcast(double(least));
  const auto include = [&](int k, const float* p)
                           VEK_LAMBDA { high[k] = maxOf(squaredMagnitude(loadDouble(p)), high[k]); };
  ptrdiff_t i = 0;
  for (; i + 2 <= packs; i += 2) {
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) include(k, src + 8 * i + 4 * k);
  }
  if (i < packs) {
    include(0, src + 8 * i);
    include(1, src + 8 * i + 4);
  }
  const Lanes<double> last = lanesOf(maxOf(maxOf(high[0], high[1]), maxOf(high[2], high[3])));
  return float(last[0] > last[2] ? last[0] : last[2]);
}

// The powers of two packs, rounded anyhow: off by less than kPowerError of themselves, or kPowerUnderflow.
constexpr float kPowerError = 0x1p-20f, kPowerUnderflow = 0x1p-140f;

VEK_INLINE Pack<float> roughPower(const float* p) {
  const Two<float> z = splitPairs(loadOnce(p), loadOnce(p + 8));
  return fusedMulAdd(z.a, z.a, z.b * z.b);
}

VEK_INLINE float largestPowerRoughly(const float* src, ptrdiff_t packs) {
  Pack<float> high[4] = {zeros<float>(), zeros<float>(), zeros<float>(), zeros<float>()};
  ptrdiff_t i = 0;
  for (; i + 8 <= packs; i += 8) {
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) high[k] = maxOf(roughPower(src + 8 * i + 16 * k), high[k]);
  }
  for (; i < packs; ++i) high[0] = maxOf(squaredMagnitude(load(src + 8 * i)), high[0]);
  return outermost<true>(maxOf(maxOf(high[0], high[1]), maxOf(high[2], high[3])));
}

// Where an element may be the largest, by its rough power, four packs are looked at in double precision.
VEK_INLINE float largestPowerAmong(float least, const float* src, ptrdiff_t packs, float rough) {
  const float finite = rough < __FLT_MAX__ ? rough : __FLT_MAX__;
  const Pack<float> candidate = broadcast(finite - finite * kPowerError - kPowerUnderflow);
  ptrdiff_t i = 0;
  for (; i + 4 <= packs; i += 4) {
    const float* p = src + 8 * i;
    if (any((roughPower(p) >= candidate) | (roughPower(p + 16) >= candidate)))
      least = largestPowerInDouble(least, p, 4);
  }
  return largestPowerInDouble(least, src + 8 * i, packs - i);
}

// Blocks are surveyed in single precision; few of them can hold a new maximum.
VEK_INLINE float largestPower(const float* src, ptrdiff_t packs) {
  constexpr ptrdiff_t block = 64;
  if (packs < block / 2) return largestPowerInDouble(0, src, packs);
  float high = 0;
  for (ptrdiff_t i = 0; i < packs; i += block) {
    const ptrdiff_t count = packs - i < block ? packs - i : block;
    const float rough = largestPowerRoughly(src + 8 * i, count);
    const bool settled = rough + rough * kPowerError + kPowerUnderflow <= high;
    if (!settled) high = largestPowerAmong(high, src + 8 * i, count, rough);
  }
  return high;
}

VEK_INLINE float largestComplexMagnitude(const float* src, ptrdiff_t n) {
  float high = kRegroups ? largestPower(src, n / 4) : largestPowerInDouble(0, src, n / 4);
  for (ptrdiff_t i = n / 4 * 8; i < 2 * n; i += 2) {
    const float re = read(src + i), im = read(src + i + 1), power = squaredMagnitude(re, im);
    if (power > high) high = power;
  }
  return __builtin_sqrtf(high);
}

// ---- sums over complex elements ------------------------------------------------------------------------------------

// Four complex elements, in double precision.
VEK_INLINE Group<double, 2> complexOf(const float* p) { return {{loadDouble(p), loadDouble(p + 4)}}; }
VEK_INLINE Group<double, 2> complexOf(const float* p, const float* q) { return toDouble(load(p) - load(q)); }
VEK_INLINE __m128d oneComplex(const float* p) { return readPair(p); }
VEK_INLINE __m128d oneComplex(const float* p, const float* q) {
  return pairToDouble((__m128)loadBytes<8>(p) - (__m128)loadBytes<8>(q));
}

VEK_INLINE Pack<double> magnitudes(Group<double, 2> x) {
  const Two<double> z = splitPairs(x.p[0], x.p[1]);
  return squareRoot(squaredMagnitude(z.a, z.b));
}
VEK_INLINE double magnitudeOf(__m128d x) { return __builtin_sqrt(squaredMagnitude(x[0], x[1])); }

VEK_INLINE Pack<double> throughSingle(Pack<double> x) { return floatsToDouble(doubleToFloats(x)); }
VEK_INLINE double throughSingle(double x) { return double(float(x)); }

struct Exactly {
  template <class V>
  VEK_INLINE V operator()(V x) const {
    return x;
  }
};
struct ThroughSingle {
  template <class V>
  VEK_INLINE V operator()(V x) const {
    return throughSingle(x);
  }
};

// The sum of round(magnitude) over the elements of one source, or over the differences of two.
template <class Round, class... S>
VEK_INLINE double magnitudeSum(Round round, ptrdiff_t n, const S*... src) {
  Pack<double> sum[2] = {zeros<double>(), zeros<double>()};
  ptrdiff_t i = 0;
  for (; i + 8 <= n; i += 8) {
#pragma GCC unroll 2
    for (int k = 0; k < 2; ++k) sum[k] = sum[k] + round(magnitudes(complexOf((src + 2 * i + 8 * k)...)));
  }
  double all = total(tree(sum));
  for (; i < n; ++i) all += round(magnitudeOf(oneComplex((src + 2 * i)...)));
  return all;
}

// The sum of the squares of single-precision differences.
VEK_INLINE double differencePower(const float* src1, const float* src2, ptrdiff_t n) {
  constexpr int K = kChains<double> / 2;
  Group<double, 2> sum[K];
#pragma GCC unroll 4
  for (int k = 0; k < K; ++k) sum[k] = {{zeros<double>(), zeros<double>()}};
  const auto add = [&](int k, ptrdiff_t at) VEK_LAMBDA {
    const Group<double, 2> d = toDouble(load(src1 + at) - load(src2 + at));
    for (int h = 0; h < 2; ++h) sum[k].p[h] = fusedMulAdd(d.p[h], d.p[h], sum[k].p[h]);
  };
  ptrdiff_t i = 0;
  for (; i + 8 * K <= n; i += 8 * K) {
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) add(k, i + 8 * k);
  }
  for (; i + 8 <= n; i += 8) add(0, i);
  Pack<double> packs[K];
#pragma GCC unroll 4
  for (int k = 0; k < K; ++k) packs[k] = sum[k].p[0] + sum[k].p[1];
  double all = total(tree(packs));
  for (; i < n; ++i) {
    const double d = double(read(src1 + i) - read(src2 + i));
    all += d * d;
  }
  return all;
}

// ---- counting ------------------------------------------------------------------------------------------------------

VEK_INLINE int countInRange(const int32_t* src, ptrdiff_t n, int32_t low, int32_t high) {
  const int64_t inside = int64_t(high) - int64_t(low) - 1;
  if (inside <= 0) return 0;
  // x - (low + 1) as an unsigned number is below the count of values inside; less 2^31, a signed comparison says so.
  const Pack<int32_t> shift = broadcast(int32_t(uint32_t(low) + 1u + 0x80000000u));
  const Pack<int32_t> bound = broadcast(int32_t(uint32_t(inside) + 0x80000000u));
  constexpr int K = 4;
  Pack<int32_t> count[K];
#pragma GCC unroll 4
  for (int k = 0; k < K; ++k) count[k] = zeros<int32_t>();
  ptrdiff_t i = 0;
  for (; i + 8 * K <= n; i += 8 * K) {
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) count[k] = count[k] - bits<int32_t>(load(src + i + 8 * k) - shift < bound);
  }
  for (; i + 8 <= n; i += 8) count[0] = count[0] - bits<int32_t>(load(src + i) - shift < bound);
  const Lanes<int32_t> lanes = lanesOf((count[0] + count[1]) + (count[2] + count[3]));
  int all = 0;
  for (int k = 0; k < 8; ++k) all += lanes[k];
  for (; i < n; ++i) {
    const int32_t x = read(src + i);
    all += low < x && x < high;
  }
  return all;
}

// ---- arguments -----------------------------------------------------------------------------------------------------

template <class F, class S, class R>
VEK_INLINE VekStatus norm(F f, const S* src, int len, R* result) {
  if (const VekStatus s = checkVectors(len, src, result)) return s;
  *result = R(f(src, ptrdiff_t(len)));
  return vekStsNoErr;
}
template <class F, class S, class R>
VEK_INLINE VekStatus normDiff(F f, const S* src1, const S* src2, int len, R* result) {
  if (const VekStatus s = checkVectors(len, src1, src2, result)) return s;
  *result = R(f(src1, src2, ptrdiff_t(len)));
  return vekStsNoErr;
}

}  // namespace

VekStatus veksNorm_Inf_32f(const Vek32f* pSrc, int len, Vek32f* pNorm) {
  return norm([](auto x, auto n) VEK_LAMBDA { return largestMagnitude(x, n); }, pSrc, len, pNorm);
}
VekStatus veksNorm_Inf_32fc32f(const Vek32fc* pSrc, int len, Vek32f* pNorm) {
  return norm([](auto x, auto n) VEK_LAMBDA { return largestComplexMagnitude(parts(x), n); }, pSrc, len, pNorm);
}
VekStatus veksNorm_L1_32f(const Vek32f* pSrc, int len, Vek32f* pNorm) {
  const auto sum = [](auto x, auto n) VEK_LAMBDA { return doubleSum<4, Rest::kOneByOne>(Magnitude(), n, x); };
  return norm(sum, pSrc, len, pNorm);
}
VekStatus veksNorm_L1_32fc64f(const Vek32fc* pSrc, int len, Vek64f* pNorm) {
  return norm([](auto x, auto n) VEK_LAMBDA { return magnitudeSum(ThroughSingle(), n, parts(x)); }, pSrc, len, pNorm);
}
VekStatus veksNorm_L2_32f(const Vek32f* pSrc, int len, Vek32f* pNorm) {
  const auto root = [](auto x, auto n) VEK_LAMBDA { return __builtin_sqrt(regroupedSum<2>(Square(), n, x)); };
  return norm(root, pSrc, len, pNorm);
}
VekStatus veksNorm_L2_32fc64f(const Vek32fc* pSrc, int len, Vek64f* pNorm) {
  const auto root = [](auto x, auto n)
                        VEK_LAMBDA { return __builtin_sqrt(regroupedSum<4>(Square(), 2 * n, parts(x))); };
  return norm(root, pSrc, len, pNorm);
}

VekStatus veksNormDiff_Inf_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek32f* pNorm) {
  const auto high = [](auto x, auto y, auto n) VEK_LAMBDA { return largestDifference(x, y, n); };
  return normDiff(high, pSrc1, pSrc2, len, pNorm);
}
VekStatus veksNormDiff_Inf_32fc32f(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek32f* pNorm) {
  const auto high = [](auto x, auto y, auto n) VEK_LAMBDA { return largestComplexDifference(parts(x), parts(y), n); };
  return normDiff(high, pSrc1, pSrc2, len, pNorm);
}
VekStatus veksNormDiff_L1_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek32f* pNorm) {
  const auto sum = [](auto x, auto y, auto n) VEK_LAMBDA { return regroupedSum<4>(DiffMagnitude(), n, x, y); };
  return normDiff(sum, pSrc1, pSrc2, len, pNorm);
}
VekStatus veksNormDiff_L1_32fc64f(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek64f* pNorm) {
  const auto sum = [](auto x, auto y, auto n) VEK_LAMBDA { return magnitudeSum(Exactly(), n, parts(x), parts(y)); };
  return normDiff(sum, pSrc1, pSrc2, len, pNorm);
}
VekStatus veksNormDiff_L2_32f(const Vek32f* pSrc1, const Vek32f* pSrc2, int len, Vek32f* pNorm) {
  const auto root = [](auto x, auto y, auto n)
                        VEK_LAMBDA { return __builtin_sqrt(regroupedSum<4>(DiffSquare(), n, x, y)); };
  return normDiff(root, pSrc1, pSrc2, len, pNorm);
}
VekStatus veksNormDiff_L2_32fc64f(const Vek32fc* pSrc1, const Vek32fc* pSrc2, int len, Vek64f* pNorm) {
  const auto root = [](auto x, auto y, auto n)
                        VEK_LAMBDA { return __builtin_sqrt(differencePower(parts(x), parts(y), 2 * n)); };
  return normDiff(root, pSrc1, pSrc2, len, pNorm);
}

// The count is cleared as soon as it can be: an empty vector counts nothing and is refused all the same.
VekStatus veksCountInRange_32s(const Vek32s* pSrc, int len, int* pCounts, Vek32s lowerBound, Vek32s upperBound) {
  if (pSrc == nullptr || pCounts == nullptr) return vekStsNullPtrErr;
  *pCounts = 0;
  if (len < 1) return vekStsSizeErr;
  *pCounts = countInRange(pSrc, len, lowerBound, upperBound);
  return vekStsNoErr;
}

}  // namespace vek::VEK_SLOT
