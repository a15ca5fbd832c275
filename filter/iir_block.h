// SPDX-License-Identifier: Apache-2.0
// IIR filtering in blocks of eight numbers (eight real or four complex samples). With v the numerator's part of a
// block, every output of the block is written out as a sum over v and over the outputs before the block:
//
//   y[r] = v[r] + sum over j < r of h[r-j]*v[j] + sum over m = 1..N of p[m][r]*y[-m]
//
// with h the impulse response of 1/A(z) and p[m] the response to the output of m samples ago. The latency of the
// recursion is then paid once a block. Complex sums are taken apart into real ones: a complex factor is two columns,
// one for the real and one for the imaginary part of what it multiplies.
#ifndef VEK_FILTER_IIR_BLOCK_H
#define VEK_FILTER_IIR_BLOCK_H

#include "core/simd/convert.h"
#include "filter/iir_cascade.h"
#include "filter/iir_state.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kBlockMaxOrder = 32;
constexpr int kBlockReals = 8;
// Real numbers that pass through all sections at a time, and room for the past in front of them.
constexpr int kChunkReals = 1024, kPastReals = 2 * kBlockMaxOrder;

struct Chunk {
  alignas(32) double x[kPastReals + kChunkReals];
};

// ---- tables -------------------------------------------------------------------------------------------------------

// Packs of a section: the columns of v for the lower and for the upper half of the block, then those of past outputs,
// oldest first, two packs each.
constexpr int lowColumns(int parts) { return 4 - parts; }
constexpr int highColumns(int parts) { return 8 - parts; }
constexpr int64_t tablePacks(int parts, int64_t order) {
  return lowColumns(parts) + highColumns(parts) + 2 * order * parts;
}

VEK_INLINE void setCell(double* column, int row, double factor) { column[row] = factor; }
VEK_INLINE void setCell(double* columns, int row, Vek64fc factor, int stride) {
  columns[2 * row] = factor.re;
  columns[2 * row + 1] = factor.im;
  columns[stride + 2 * row] = -factor.im;
  columns[stride + 2 * row + 1] = factor.re;
}
VEK_INLINE void setCell(double* column, int row, double factor, int) { setCell(column, row, factor); }

VEK_INLINE void setOne(double& x) { x = 1; }
VEK_INLINE void setOne(Vek64fc& x) { x.re = 1; }

// False if a number overflows: such a filter is left to the recursion.
template <class V>
VEK_INLINE bool buildTable(double* table, Section<V> s) {
  constexpr int parts = kParts<V>, samples = kBlockReals / parts;
  V h[samples] = {};
  setOne(h[0]);
  for (int r = 1; r < samples; ++r) {
    h[r] = V{};
    for (int i = 1; i <= r && i <= s.order; ++i) h[r] = h[r] - s.a[i - 1] * h[r - i];
  }
  const int64_t numbers = 4 * tablePacks(parts, s.order);
  for (int64_t i = 0; i < numbers; ++i) table[i] = 0;
  double* high = table + 4 * lowColumns(parts);
  double* past = high + 4 * highColumns(parts);
  for (int j = 0; j < samples; ++j)
    for (int r = j + 1; r < samples; ++r) {
      if (r < samples / 2) {
        setCell(table + 4 * parts * j, r, h[r - j], 4);
      } else {
        setCell(high + 4 * parts * j, r - samples / 2, h[r - j], 4);
      }
    }
  for (int m = 1; m <= s.order; ++m)
    for (int r = 0; r < samples; ++r) {
      V sum = V{};
      for (int q = 0; q <= r && q + m <= s.order; ++q) sum = sum - h[r - q] * s.a[q + m - 1];
      setCell(past + 8 * parts * (s.order - m), r, sum, 8);
    }
  bool finite = true;
  for (int64_t i = 0; i < numbers; ++i) finite &= __builtin_fabs(table[i]) < 1e100;
  return finite;
}

VEK_INLINE double sizeOf(double x) { return __builtin_fabs(x); }
VEK_INLINE double sizeOf(Vek64fc x) { return __builtin_fabs(x.re) + __builtin_fabs(x.im); }

// Where poles crowd, the factors of past outputs grow far beyond the coefficients and cancel. What a block then loses
// is about 2^-53 times the largest sum of a row's factors, times the sum of the impulse response of 1/A(z), through
// which every rounding passes. True if that stays within the rounding of the results to single precision.
constexpr double kMostGrowth = 134217728;  // 2^27
template <class V>
VEK_INLINE bool keepsPrecision(const double* table, Section<V> s) {
  constexpr int parts = kParts<V>, mostSamples = 4096, stretch = 64;
  if (s.order <= 2) return true;
  const double* past = table + 4 * (lowColumns(parts) + highColumns(parts));
  double rows = 1;
  for (int r = 0; r < kBlockReals; ++r) {
    double sum = 0;
    for (int c = 0; c < s.order * parts; ++c) sum += __builtin_fabs(past[8 * c + r]);
    rows = sum > rows ? sum : rows;
  }
  V h[kBlockMaxOrder] = {};  // the last outputs, at the sample's number modulo the length
  double total = 0, before = -1;
  for (int n = 0; n < mostSamples; ++n) {
    V y = V{};
    if (n == 0) setOne(y);
    for (int i = 1; i <= s.order && i <= n; ++i) y = y - s.a[i - 1] * h[(n - i) % kBlockMaxOrder];
    h[n % kBlockMaxOrder] = y;
    total += sizeOf(y);
    if (n % stretch == stretch - 1) {
      if (!(rows * total <= kMostGrowth)) return false;
      if (total - before <= 1e-3 * total) return true;
      before = total;
    }
  }
  return true;
}

// ---- one section --------------------------------------------------------------------------------------------------

VEK_INLINE Pack<double> numerator(const double* x, const double* b, int order) {
  Pack<double> v = broadcast(b[0]) * load(x);
  for (int k = 1; k <= order; ++k) v = fusedMulAdd(broadcast(b[k]), load(x - k), v);
  return v;
}
VEK_INLINE Pack<double> numerator(const double* x, const Vek64fc* b, int order) {
  Pack<double> v = zeros<double>();
  for (int k = 0; k <= order; ++k) {
    const Pack<double> past = load(x - 2 * k);
    v = fusedMulAdd(broadcast(b[k].re), past, v);
    v = fusedMulAdd(broadcastPair(-b[k].im, b[k].im), swapPairs(past), v);
  }
  return v;
}

// From `reals` numbers x to as many y. In front of both lie zeros: what came before is in the delay line, whose
// elements are the contributions outstanding for the first samples. FixedOrder 0: the order is that of the section.
template <int FixedOrder, class V>
VEK_INLINE void filterBlocks(const double* x, double* y, int reals, Section<V> s, const V* delay, const double* table) {
  constexpr int parts = kParts<V>, low = lowColumns(parts), high = highColumns(parts);
  const int order = FixedOrder != 0 ? FixedOrder : s.order, pasts = order * parts;
  constexpr int room = FixedOrder != 0 ? kBlockReals : kPastReals;
  alignas(32) double pending[room] = {};
  const double* outstanding = reinterpret_cast<const double*>(delay);
  for (int i = 0; i < pasts; ++i) pending[i] = outstanding[i];
  const double* past = table + 4 * (low + high);
  Pack<double> last = zeros<double>();
  for (int i = 0; i < reals; i += kBlockReals) {
    Pack<double> y0 = numerator(x + i, s.b, order), y1 = numerator(x + i + 4, s.b, order);
    if (i < pasts) {
      y0 = y0 + load(pending + i);
      y1 = y1 + load(pending + i + 4);
    }
    alignas(32) double v[kBlockReals];
    store(v, y0);
    store(v + 4, y1);
#pragma GCC unroll 8
    for (int j = 0; j < low; ++j) y0 = fusedMulAdd(broadcast(v[j]), load(table + 4 * j), y0);
#pragma GCC unroll 8
    for (int j = 0; j < high; ++j) y1 = fusedMulAdd(broadcast(v[j]), load(table + 4 * (low + j)), y1);
    if constexpr (FixedOrder != 0 && FixedOrder * parts <= 4) {
#pragma GCC unroll 4
      for (int c = 0; c < FixedOrder * parts; ++c) {
        const Pack<double> h = broadcastLane(last, 4 - FixedOrder * parts + c);
        y0 = fusedMulAdd(h, load(past + 8 * c), y0);
        y1 = fusedMulAdd(h, load(past + 8 * c + 4), y1);
      }
      last = y1;
    } else {
      const double* before = y + i - pasts;
      Pack<double> z0 = zeros<double>(), z1 = zeros<double>();
      int c = 0;
      for (; c + 2 <= pasts; c += 2) {
        const Pack<double> h = broadcast(before[c]), g = broadcast(before[c + 1]);
        y0 = fusedMulAdd(h, load(past + 8 * c), y0);
        y1 = fusedMulAdd(h, load(past + 8 * c + 4), y1);
        z0 = fusedMulAdd(g, load(past + 8 * c + 8), z0);
        z1 = fusedMulAdd(g, load(past + 8 * c + 12), z1);
      }
      if (c < pasts) {
        const Pack<double> h = broadcast(before[c]);
        y0 = fusedMulAdd(h, load(past + 8 * c), y0);
        y1 = fusedMulAdd(h, load(past + 8 * c + 4), y1);
      }
      y0 = y0 + z0;
      y1 = y1 + z1;
    }
    store(y + i, y0);
    store(y + i + 4, y1);
  }
}

// What the samples of the chunk leave outstanding for those to come.
template <class V>
VEK_INLINE void leaveDelay(const double* x, const double* y, int n, Section<V> s, const V* delay, V* next) {
  const V* xs = reinterpret_cast<const V*>(x);
  const V* ys = reinterpret_cast<const V*>(y);
  for (int k = 0; k < s.order; ++k) {
    V d = k + n < s.order ? delay[k + n] : V{};
    for (int i = k + 1; i <= s.order && i - k <= n; ++i)
      d = d + (s.b[i] * xs[n - (i - k)] - s.a[i - 1] * ys[n - (i - k)]);
    next[k] = d;
  }
}

// Real cascades of several sections take a section a lane; a lone section and complex ones run in blocks.
template <class V>
constexpr bool runsAsCascade(int64_t numBq) {
  return !kComplex<V> && numBq > 1;
}

// ---- a vector -----------------------------------------------------------------------------------------------------

VEK_INLINE void widenChunk(double* x, const float* src, int reals) {
  int i = 0;
  for (; i + 4 <= reals; i += 4) store(x + i, loadDouble(src + i));
  for (; i < reals; ++i) x[i] = src[i];
  for (; i % kBlockReals != 0; ++i) x[i] = 0;
}

VEK_INLINE bool allFinite(const double* y, int reals) {
  const Pack<double> infinity = broadcast(__builtin_inf());
  Mask<double> good = infinity == infinity;
  int i = 0;
  for (; i + 4 <= reals; i += 4) good = good & (magnitude(load(y + i)) < infinity);
  bool rest = true;
  for (; i < reals; ++i) rest &= __builtin_fabs(y[i]) < __builtin_inf();
  return all(good) && rest;
}

VEK_INLINE void narrowChunk(float* dst, const double* y, int reals) {
  int i = 0;
  for (; i + 8 <= reals; i += 8) store(dst + i, toFloat(loadGroup<2>(y + i)));
  for (; i < reals; ++i) dst[i] = float(y[i]);
}

// Runs n samples in chunk `a` through all sections, with chunk `b` to take turns, and gives where the result is.
template <class V>
VEK_INLINE const double* filterChunk(double* a, double* b, int n, const IirState& s) {
  const V* delay = static_cast<const V*>(s.delay);
  V* next = static_cast<V*>(s.nextDelay);
  const double* table = s.tables;
  const int reals = n * kParts<V>;
  for (int i = 0; i < sections(s); ++i) {
    const Section<V> q = section<V>(s, i);
    if (s.numBq != 0) {
      filterBlocks<2>(a, b, reals, q, delay, table);
    } else {
      filterBlocks<0>(a, b, reals, q, delay, table);
    }
    leaveDelay(a, b, n, q, delay, next);
    delay += q.order;
    next += q.order;
    table += 4 * tablePacks(kParts<V>, q.order);
    double* other = a;
    a = b;
    b = other;
  }
  return a;
}

template <class K>
VEK_NOINLINE void filterByBlocks(const typename K::Sample* src, typename K::Sample* dst, ptrdiff_t n, IirState& s) {
  using V = typename K::Value;
  constexpr int parts = kParts<V>, most = kChunkReals / parts;
  Chunk a, b;
  const int past = section<V>(s, 0).order * parts;
  for (int i = kPastReals - past; i < kPastReals; ++i) a.x[i] = b.x[i] = 0;
  for (ptrdiff_t done = 0; done < n;) {
    const int count = n - done < most ? int(n - done) : most;
    const float* in = reinterpret_cast<const float*>(src + done);
    widenChunk(a.x + kPastReals, in, count * parts);
    const double* y = filterChunk<V>(a.x + kPastReals, b.x + kPastReals, count, s);
    if (allFinite(y, count * parts)) {
      narrowChunk(reinterpret_cast<float*>(dst + done), y, count * parts);
      void* used = s.delay;
      s.delay = s.nextDelay;
      s.nextDelay = used;
    } else {
      // A NaN or an infinity would spread over its block: sample by sample it stays where it belongs.
      filterBySample<K>(src + done, dst + done, count, s);
    }
    done += count;
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
