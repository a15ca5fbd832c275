// SPDX-License-Identifier: Apache-2.0
// Cascades of real second-order sections, a section a lane. Two samples are taken a step, and the state is advanced
// over both at once:
//
//   y[0] = b0*x[0] + d0                      d0' = c*x[1] + (e - a1*c)*x[0] + (a1^2 - a2)*d0 - a1*d1
//   y[1] = b0*x[1] + c*x[0] - a1*d0 + d1     d1' = e*x[1] - a2*c*x[0] + a1*a2*d0 - a2*d1
//
// with c = b1 - a1*b0 and e = b2 - a2*b0. A section works on the samples that the one before it gave some steps ago, so
// that no step waits for what happens inside another.
#ifndef VEK_FILTER_IIR_CASCADE_H
#define VEK_FILTER_IIR_CASCADE_H

#include "core/simd/convert.h"
#include "filter/iir_state.h"

namespace vek::VEK_SLOT {
namespace {

// Sections run in groups of four lanes, or of eight where at least five are left.
constexpr int cascadePacks(int sectionsLeft) { return sectionsLeft > 4 ? 2 : 1; }

// Factors of the lanes of a group.
enum CascadeRow { kB0, kC, kE, kMinusA1, kMinusA2, kX0ToD0, kX0ToD1, kD0ToD0, kD0ToD1, kCascadeRows };

constexpr int64_t cascadeTablePacks(int64_t sections) {
  int64_t packs = sections / 8 * 2;
  if (sections % 8 != 0) packs += cascadePacks(int(sections % 8));
  return packs * kCascadeRows;
}

// A group's table: for each row, the factors of its lanes. Lanes beyond the last section pass samples on.
VEK_INLINE bool buildCascadeTable(double* table, const IirState& s) {
  bool finite = true;
  for (int first = 0; first < s.numBq;) {
    const int lanes = 4 * cascadePacks(s.numBq - first);
    for (int l = 0; l < lanes; ++l) {
      const double through[5] = {1, 0, 0, 0, 0};
      const double* f = first + l < s.numBq ? section<double>(s, first + l).b : through;
      const double c = f[1] - f[3] * f[0], e = f[2] - f[4] * f[0];
      const double row[kCascadeRows] = {f[0],       c, e, -f[3], -f[4], e - f[3] * c, -(f[4] * c), f[3] * f[3] - f[4],
                                        f[3] * f[4]};
      for (int r = 0; r < kCascadeRows; ++r) {
        table[r * lanes + l] = row[r];
        finite &= __builtin_fabs(row[r]) < 1e100;
      }
    }
    table += lanes * kCascadeRows;
    first += lanes;
  }
  return finite;
}

// The samples of all lanes move one lane up. What leaves a pack at the top is then in its lane 0, from where it enters
// the next pack; `in` enters the first.
template <int P>
VEK_INLINE void moveUp(Group<double, P>& x) {
  for (int p = P - 1; p >= 0; --p) x.p[p] = rotateUp(x.p[p]);
}
template <int P>
VEK_INLINE Group<double, P> entered(const Group<double, P>& up, Pack<double> in) {
  Group<double, P> x;
  x.p[0] = replaceLowest(up.p[0], in);
  if constexpr (P == 2) x.p[1] = replaceLowest(up.p[1], up.p[0]);
  return x;
}

// Two samples, each in the lowest lane of a pack, and back.
VEK_INLINE Two<double> loadPair(const double* x) { return {broadcast(x[0]), broadcast(x[1])}; }
VEK_INLINE Two<double> loadPair(const float* x) {
  const __m128d pair = readPair(x);
  return {withLowHalf<double>((__m128i)pair), withLowHalf<double>((__m128i)__m128d{pair[1], pair[1]})};
}
template <class S>
VEK_INLINE void storePair(S* to, Two<double> x) {
  const __m128d a = (__m128d)half(x.a, 0), b = (__m128d)half(x.b, 0);
  storePair(to, __m128d{a[0], b[0]});
}

template <int P>
struct Cascade {
  // Steps between a section's output and the next section's use of it: enough to hide the way from one to the other.
  static constexpr int delay = P == 1 ? 3 : 2;
  static constexpr int lanes = 4 * P, fill = delay * (lanes - 1);
  const double* table;
  Group<double, P> d0, d1;
  Group<double, P> way0[delay], way1[delay];  // both samples on their way between sections, oldest first

  VEK_INLINE Pack<double> row(int r, int p) const { return load(table + r * lanes + 4 * p); }

  // One step; gives the two samples that leave the last section.
  template <bool Masked>
  VEK_INLINE Two<double> step(Two<double> in, const Mask<double>* active) {
    const Group<double, P> x0 = entered<P>(way0[0], in.a), x1 = entered<P>(way1[0], in.b);
    Group<double, P> y0, y1;
#pragma GCC unroll 2
    for (int p = 0; p < P; ++p) {
      const Pack<double> a = x0.p[p], b = x1.p[p], s = d0.p[p], t = d1.p[p];
      y0.p[p] = fusedMulAdd(row(kB0, p), a, s);
      y1.p[p] = fusedMulAdd(row(kMinusA1, p), s, fusedMulAdd(row(kB0, p), b, fusedMulAdd(row(kC, p), a, t)));
      const Pack<double> u = fusedMulAdd(row(kX0ToD0, p), a, row(kC, p) * b);
      const Pack<double> v = fusedMulAdd(row(kX0ToD1, p), a, row(kE, p) * b);
      const Pack<double> next0 = fusedMulAdd(row(kD0ToD0, p), s, fusedMulAdd(row(kMinusA1, p), t, u));
      const Pack<double> next1 = fusedMulAdd(row(kD0ToD1, p), s, fusedMulAdd(row(kMinusA2, p), t, v));
      d0.p[p] = Masked ? select(active[p], next0, s) : next0;
      d1.p[p] = Masked ? select(active[p], next1, t) : next1;
    }
    moveUp<P>(y0);
    moveUp<P>(y1);
#pragma GCC unroll 3
    for (int k = 0; k + 1 < delay; ++k) way0[k] = way0[k + 1], way1[k] = way1[k + 1];
    way0[delay - 1] = y0;
    way1[delay - 1] = y1;
    return {y0.p[P - 1], y1.p[P - 1]};
  }

  // A step while some sections have not begun or have finished: lane l is at step t - l * delay of `steps`.
  template <class S>
  VEK_INLINE Two<double> partialStep(const S* x, ptrdiff_t t, ptrdiff_t steps) {
    Mask<double> active[P];
#pragma GCC unroll 2
    for (int p = 0; p < P; ++p) {
      const Pack<double> at = broadcast(double(t)) - (iota<double>() + broadcast(4.0 * p)) * broadcast(double(delay));
      active[p] = (at >= broadcast(0.0)) & (at < broadcast(double(steps)));
    }
    return step<true>(loadPair(x + 2 * (t < steps ? t : steps - 1)), active);
  }

  // 2 * steps samples; x may be y: a sample is stored long after it has been read.
  template <class S>
  VEK_INLINE void run(const S* x, S* y, ptrdiff_t steps) {
#pragma GCC unroll 3
    for (int k = 0; k < delay; ++k)
      for (int p = 0; p < P; ++p) way0[k].p[p] = way1[k].p[p] = zeros<double>();
    ptrdiff_t t = 0;
#pragma GCC unroll 1
    for (; t < fill; ++t) partialStep(x, t, steps);
#pragma GCC unroll 1
    for (; t < steps; ++t) storePair(y + 2 * (t - fill), step<false>(loadPair(x + 2 * t), nullptr));
#pragma GCC unroll 1
    for (; t < steps + fill; ++t) storePair(y + 2 * (t - fill), partialStep(x, t, steps));
  }
};

// n samples through the `count` sections of a group.
template <int P, class S>
VEK_INLINE void filterGroup(const S* x, S* y, ptrdiff_t n, int count, const double* table, const double* coefs,
                            double* delay) {
  constexpr int lanes = 4 * P;
  alignas(32) double state[2][lanes] = {};
  for (int l = 0; l < count; ++l) state[0][l] = delay[2 * l], state[1][l] = delay[2 * l + 1];
  Cascade<P> c;
  c.table = table;
  c.d0 = loadGroup<P>(state[0]);
  c.d1 = loadGroup<P>(state[1]);
  double last = double(x[n - 1]);
  if (n > 1) c.run(x, y, n / 2);
  storeGroup(state[0], c.d0);
  storeGroup(state[1], c.d1);
  for (int l = 0; l < count; ++l) delay[2 * l] = state[0][l], delay[2 * l + 1] = state[1][l];
  if (n % 2 == 0) return;
  for (int l = 0; l < count; ++l) last = biquadStep(last, coefs + 5 * l, delay + 2 * l);
  y[n - 1] = S(last);
}

template <class S>
VEK_NOINLINE void filterGroups(const S* x, S* y, ptrdiff_t n, const IirState& s) {
  const double* table = s.tables;
  for (int first = 0; first < s.numBq;) {
    const int left = s.numBq - first, packs = cascadePacks(left), count = left < 4 * packs ? left : 4 * packs;
    const double* coefs = static_cast<const double*>(s.coefs) + 5 * ptrdiff_t(first);
    double* delay = static_cast<double*>(s.delay) + 2 * ptrdiff_t(first);
    if (packs == 2) {
      filterGroup<2>(x, y, n, count, table, coefs, delay);
    } else {
      filterGroup<1>(x, y, n, count, table, coefs, delay);
    }
    table += 4 * packs * kCascadeRows;
    first += 4 * packs;
    x = y;
  }
}

// A single group takes the vector as it is; between groups, chunks of samples wait in double precision.
constexpr int kCascadeChunk = 2048;

VEK_NOINLINE void filterCascade(const float* src, float* dst, ptrdiff_t n, const IirState& s) {
  if (s.numBq <= 8) return filterGroups(src, dst, n, s);
  alignas(32) double x[kCascadeChunk];
  for (ptrdiff_t done = 0; done < n; done += kCascadeChunk) {
    const int count = n - done < kCascadeChunk ? int(n - done) : kCascadeChunk;
    for (int i = 0; i < count; ++i) x[i] = src[done + i];
    filterGroups(x, x, count, s);
    for (int i = 0; i < count; ++i) dst[done + i] = float(x[i]);
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
