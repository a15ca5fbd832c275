// SPDX-License-Identifier: Apache-2.0
// Means and standard deviations.
#include "stats/float_sum.h"
#include "stats/integer_sum.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- means ---------------------------------------------------------------------------------------------------------

// Two partial sums by the parity of the index; groups of four first, then the rest one by one.
template <class T>
VEK_INLINE double orderedMeanSum(const T* src, ptrdiff_t n) {
  __m128d sum = {};
  ptrdiff_t i = 0;
  for (; i + 4 <= n; i += 4) {
    sum += readPair(src + i);
    sum += readPair(src + i + 2);
  }
  double all = sum[1] + sum[0];
  for (; i < n; ++i) all += double(read(src + i));
  return all;
}

VEK_INLINE double meanSum(const float* src, ptrdiff_t n, VekHintAlgorithm hint) {
  if constexpr (!kRegroups) {
    return orderedMeanSum(src, n);
  } else {
    return hint == vekAlgHintFast ? fastSum(src, n) : doubleSum<kChains<double>, Rest::kPacks>(Plain(), n, src);
  }
}

VEK_INLINE VekStatus mean(const Vek32f* src, int len, Vek32f* result, VekHintAlgorithm hint) {
  if (const VekStatus s = checkVectors(len, src, result)) return s;
  *result = float(meanSum(src, len, hint) / len);
  return vekStsNoErr;
}

VEK_INLINE VekStatus mean(const Vek32fc* src, int len, Vek32fc* result) {
  if (const VekStatus s = checkVectors(len, src, result)) return s;
  const __m128d all = complexSum(parts(src), len);
  *result = {float(all[0] / len), float(all[1] / len)};
  return vekStsNoErr;
}

// ---- the integer mean ----------------------------------------------------------------------------------------------

VEK_INLINE uint64_t absolute(int64_t x) { return x < 0 ? -uint64_t(x) : uint64_t(x); }
VEK_INLINE int64_t withSign(uint64_t x, bool negative) { return negative ? -int64_t(x) : int64_t(x); }

VEK_INLINE uint64_t divideNearest(uint64_t x, uint64_t divisor) {
  const uint64_t quotient = x / divisor, twice = 2 * (x % divisor);
  return quotient + (twice > divisor || (twice == divisor && quotient % 2 != 0));
}

// Rounded twice on purpose: to an integer, and again by the scale factor. Only an upward scale of a sum within 32 bits
// goes into the dividend instead.
VEK_INLINE int32_t scaledMean(int64_t sum, int len, int scaleFactor) {
  const int64_t quotient = withSign(divideNearest(absolute(sum), uint64_t(len)), sum < 0);
  if (scaleFactor >= 0) {
    // |quotient| is at most 2^31: from scale factor 32 up nothing is left of it.
    return int32_t(scaleFactor == 0 ? quotient : shiftNearest(quotient, scaleFactor < 33 ? scaleFactor : 33));
  }
  if (scaleFactor > -32 && sum <= INT32_MAX && sum >= INT32_MIN) {
    return saturate32(withSign(divideNearest(absolute(sum) << -scaleFactor, uint64_t(len)), sum < 0));
  }
  return shiftUpSaturated(quotient, -int64_t(scaleFactor));
}

VEK_INLINE VekStatus mean(const Vek32s* src, int len, Vek32s* result, int scaleFactor) {
  if (const VekStatus s = checkVectors(len, src, result)) return s;
  *result = scaledMean(exactSum(src, len), len, scaleFactor);
  return vekStsNoErr;
}

// ---- deviations ----------------------------------------------------------------------------------------------------

struct Moments {
  double sum, squares;
};

// Both sums in one pass. The square of a widened element is exact, so fusing it changes no bit.
VEK_INLINE Moments momentsOf(const float* src, ptrdiff_t n) {
  constexpr int K = kChains<double> / 2;
  Pack<double> sum[K], squares[K];
#pragma GCC unroll 4
  for (int k = 0; k < K; ++k) sum[k] = squares[k] = zeros<double>();
  const auto add = [&](int k, const float* p) VEK_LAMBDA {
    const Pack<double> x = loadDouble(p);
    sum[k] = sum[k] + x;
    squares[k] = fusedMulAdd(x, x, squares[k]);
  };
  ptrdiff_t i = 0;
  for (; i + 4 * K <= n; i += 4 * K) {
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) add(k, src + i + 4 * k);
  }
  for (; i + 4 <= n; i += 4) add(0, src + i);
  Moments m = {total(tree(sum)), total(tree(squares))};
  for (; i < n; ++i) {
    const double x = double(read(src + i));
    m.sum += x;
    m.squares += x * x;
  }
  return m;
}

VEK_INLINE bool isConstant(const float* src, ptrdiff_t n) {
  const float first = read(src);
  for (ptrdiff_t i = 1; i < n; ++i)
    if (read(src + i) != first) return false;
  return true;
}

VEK_INLINE double deviation(Moments m, const float* src, int len) {
  const double numerator = m.squares * len - m.sum * m.sum;
  if (!(numerator > 0)) return 0;
  // A numerator this small against its terms may be their rounding alone: a constant vector deviates by exactly 0.
  if (numerator < 1e-6 * (m.squares * len) && isConstant(src, len)) return 0;
  return __builtin_sqrt(numerator / (double(len - 1) * double(len)));
}

// Single precision for a while: each partial sum takes this many terms before it is widened.
constexpr int kFastTerms = 16;
constexpr ptrdiff_t kShiftFrom = 64;   // elements whose mean is the shift
constexpr ptrdiff_t kFastLeast = 256;  // shorter vectors are done sooner in double

// The moments of x - shift in single precision, by blocks. A shift near the mean keeps the two terms of the numerator
// apart, which single precision could not bear otherwise.
VEK_INLINE Moments shiftedMoments(const float* src, ptrdiff_t n, Pack<float> shift) {
  constexpr int K = kChains<float> / 2;
  Pack<double> sums = zeros<double>(), allSquares = zeros<double>();
  for (ptrdiff_t i = 0; i < n;) {
    Pack<float> sum[K], squares[K];
#pragma GCC unroll 4
    for (int k = 0; k < K; ++k) sum[k] = squares[k] = zeros<float>();
    const auto add = [&](int k, Pack<float> x) VEK_LAMBDA {
      const Pack<float> d = x - shift;
      sum[k] = sum[k] + d;
      squares[k] = fusedMulAdd(d, d, squares[k]);
    };
    const ptrdiff_t full = i + 8 * K * kFastTerms <= n ? i + 8 * K * kFastTerms : n;
    for (; i + 8 * K <= full; i += 8 * K) {
#pragma GCC unroll 4
      for (int k = 0; k < K; ++k) add(k, load(src + i + 8 * k));
    }
    if (full == n) {
      for (; i + 8 <= n; i += 8) add(0, load(src + i));
      // The lanes beyond the end hold the shift itself, which adds nothing.
      if (i < n) {
        Lanes<float> last = lanesOf(shift);
        copyFew(last.x, src + i, (n - i) * ptrdiff_t(sizeof(float)));
        add(1, load(last.x));
        i = n;
      }
    }
    const Group<double, 2> s = toDouble(packTree(sum)), q = toDouble(packTree(squares));
    sums = sums + (s.p[0] + s.p[1]);
    allSquares = allSquares + (q.p[0] + q.p[1]);
  }
  return {total(halvesAdded(sums)), total(halvesAdded(allSquares))};
}

VEK_INLINE double fastDeviation(const float* src, int len) {
  const float shift = total(halvesAdded(regroupedBlock(src, kShiftFrom))) * (1.0f / kShiftFrom);
  const Moments m = shiftedMoments(src, len, broadcast(shift));
  // Squares beyond the range of single precision, or lost at its lower end, take the accurate way.
  if (!(m.squares > 1e-25 * len && m.squares < 1e38)) return deviation(momentsOf(src, len), src, len);
  return deviation(m, src, len);
}

VEK_INLINE VekStatus checkDeviation(int len, const Vek32f* src, const Vek32f* result1, const Vek32f* result2) {
  const VekStatus s = checkVectors(len, src, result1, result2);
  return s == vekStsNoErr && len < 2 ? vekStsSizeErr : s;
}

VEK_INLINE VekStatus standardDeviation(const Vek32f* src, int len, Vek32f* result, VekHintAlgorithm hint) {
  if (const VekStatus s = checkDeviation(len, src, result, result)) return s;
  const bool fast = kRegroups && hint == vekAlgHintFast && len >= kFastLeast;
  *result = float(fast ? fastDeviation(src, len) : deviation(momentsOf(src, len), src, len));
  return vekStsNoErr;
}

VEK_INLINE VekStatus meanAndDeviation(const Vek32f* src, int len, Vek32f* meanResult, Vek32f* result) {
  if (const VekStatus s = checkDeviation(len, src, meanResult, result)) return s;
  const Moments m = momentsOf(src, len);
  const float sigma = float(deviation(m, src, len));
  *meanResult = float(m.sum / len);
  *result = sigma;
  return vekStsNoErr;
}

}  // namespace

VekStatus veksMean_32f(const Vek32f* pSrc, int len, Vek32f* pMean, VekHintAlgorithm hint) {
  return mean(pSrc, len, pMean, hint);
}
VekStatus veksMean_32fc(const Vek32fc* pSrc, int len, Vek32fc* pMean, VekHintAlgorithm) {
  return mean(pSrc, len, pMean);
}
VekStatus veksMean_32s_Sfs(const Vek32s* pSrc, int len, Vek32s* pMean, int scaleFactor) {
  return mean(pSrc, len, pMean, scaleFactor);
}
VekStatus veksStdDev_32f(const Vek32f* pSrc, int len, Vek32f* pStdDev, VekHintAlgorithm hint) {
  return standardDeviation(pSrc, len, pStdDev, hint);
}
VekStatus veksMeanStdDev_32f(const Vek32f* pSrc, int len, Vek32f* pMean, Vek32f* pStdDev, VekHintAlgorithm) {
  return meanAndDeviation(pSrc, len, pMean, pStdDev);
}

}  // namespace vek::VEK_SLOT
