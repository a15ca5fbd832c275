// SPDX-License-Identifier: Apache-2.0
// Windows of correlations and convolutions that reach over the ends of their vectors, computed directly.
#ifndef VEK_FILTER_CORR_WINDOW_H
#define VEK_FILTER_CORR_WINDOW_H

#include "filter/fir_kernel.h"
#include "filter/fir_state.h"

namespace vek::VEK_SLOT {
namespace {

// y[i] is the sum of taps[j] * x[first + i + j] over all j for which both exist; complex taps are conjugated.
struct Window {
  const float* taps;
  int64_t tapCount;
  const float* x;
  int64_t xCount;
  int64_t first;
};

template <int C>
VEK_INLINE void slideRuns(const Run<float>* runs, int64_t runCount, float* y, int64_t n) {
  if constexpr (C == 1) {
    slide(runs, runCount, y, n);
  } else {
    slideConjugate(runs, runCount, y, n);
  }
}

// True for infinities and NaN anywhere among n floats.
VEK_INLINE bool anyNonFinite(const float* p, int64_t n) {
  uint32_t most = 0;
  for (int64_t i = 0; i < n; ++i) {
    uint32_t b;
    __builtin_memcpy(&b, p + i, sizeof b);
    b &= 0x7FFFFFFF;
    most = b > most ? b : most;
  }
  return most >= 0x7F800000;
}

// Outputs at the ends are made a few at a time: a tile of the kernel, or part of one where the taps are few. Taps that
// reach over the end with some of them slide over a copy of the samples between zeros.
template <int C>
constexpr int64_t kEdgeOutputs = C == 1 ? 64 : 40;
template <int C>
constexpr int64_t kEdgeTaps = 2 * kEdgeOutputs<C>;

template <int C>
VEK_NOINLINE void slideEdge(const Window& w, int64_t from, int64_t n, float* y) {
  const int64_t at = w.first + from, last = at + n - 1;
  const int64_t allFrom = larger(0, -at), allTo = smaller(w.tapCount, w.xCount - last);
  const int64_t someFrom = larger(0, -last), someTo = smaller(w.tapCount, w.xCount - at);
  float copies[2][C * (kEdgeTaps<C> + kEdgeOutputs<C>)];
  Run<float> runs[3];
  int64_t count = 0;
  bool exact = true;
  const auto addEdge = [&](int64_t tapFrom, int64_t tapTo, float* copy) VEK_LAMBDA {
    if (tapFrom >= tapTo) return;
    const float* const taps = w.taps + C * tapFrom;
    if (anyNonFinite(taps, C * (tapTo - tapFrom))) exact = false;  // not to be multiplied by the zeros
    const int64_t start = at + tapFrom, length = tapTo - tapFrom + n - 1;
    const int64_t head = larger(0, -start), inside = smaller(w.xCount - start, length);
    clearSamples(copy, C * head);
    copySamples(w.x + C * (start + head), copy + C * head, C * (inside - head));
    clearSamples(copy + C * inside, C * (length - inside));
    runs[count++] = {copy, taps, tapTo - tapFrom};
  };
  if (allFrom < allTo) {
    addEdge(someFrom, allFrom, copies[0]);
    runs[count++] = {w.x + C * (at + allFrom), w.taps + C * allFrom, allTo - allFrom};
    addEdge(allTo, someTo, copies[1]);
  } else {
    addEdge(someFrom, someTo, copies[0]);
  }
  if (exact) return slideRuns<C>(runs, count, y + C * from, n);
  for (int64_t i = 0; i < n; ++i) {
    const int64_t tapFrom = larger(0, -(at + i)), tapTo = smaller(w.tapCount, w.xCount - at - i);
    const Run<float> run = {w.x + C * (at + i + tapFrom), w.taps + C * tapFrom, larger(0, tapTo - tapFrom)};
    slideRuns<C>(&run, 1, y + C * (from + i), 1);
  }
}

template <int C>
VEK_INLINE void slideEdges(const Window& w, int64_t from, int64_t to, float* y) {
  const int64_t step = w.tapCount > 128 ? kEdgeOutputs<C> : kEdgeOutputs<C> / 2;
  for (int64_t i = from; i < to; i += step) slideEdge<C>(w, i, smaller(step, to - i), y);
}

// Outputs 0 .. n-1 of the window: those whose taps all meet a sample at once, the others in small steps.
template <int C>
VEK_INLINE void slideWindow(const Window& w, float* y, int64_t n) {
  const int64_t from = smaller(n, larger(0, -w.first));
  const int64_t to = larger(from, smaller(n, w.xCount - w.tapCount - w.first + 1));
  slideEdges<C>(w, 0, from, y);
  if (from < to) {
    const Run<float> run = {w.x + C * (w.first + from), w.taps, w.tapCount};
    slideRuns<C>(&run, 1, y + C * from, to - from);
  }
  slideEdges<C>(w, to, n, y);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
