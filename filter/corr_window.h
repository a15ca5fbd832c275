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

// Outputs at the ends are made a few tiles of the kernel at a time. Taps that reach over the end with some of them
// slide over a copy of the samples between zeros.
template <int C>
constexpr int64_t kEdgeOutputs = C == 1 ? 64 : 40;
// From here on most taps stay inside with all outputs of a step, and larger steps would only copy more.
constexpr int64_t kManyTaps = 128;

// The runs of taps that make N outputs, the first of which has tap 0 at sample `at`.
template <int C, int64_t N>
struct EdgeRuns {
  Run<float> runs[3];
  int64_t count = 0;
  bool finite = true;  // whether the taps may be multiplied by the zeros
  float copies[2][C * 3 * N];

  VEK_INLINE EdgeRuns(const Window& w, int64_t at) {
    const int64_t last = at + N - 1;
    const int64_t someFrom = larger(0, -last), someTo = smaller(w.tapCount, w.xCount - at);
    const int64_t allFrom = larger(0, -at), allTo = smaller(w.tapCount, w.xCount - last);
    if (allFrom >= allTo || someTo - someFrom <= 2 * N) {
      addCopied(w, at, someFrom, someTo, copies[0]);
    } else {
      addCopied(w, at, someFrom, allFrom, copies[0]);
      runs[count++] = {w.x + C * (at + allFrom), w.taps + C * allFrom, allTo - allFrom};
      addCopied(w, at, allTo, someTo, copies[1]);
    }
  }

  VEK_INLINE void addCopied(const Window& w, int64_t at, int64_t tapFrom, int64_t tapTo, float* copy) {
    if (tapFrom >= tapTo) return;
    const float* const taps = w.taps + C * tapFrom;
    if (anyNonFinite(taps, C * (tapTo - tapFrom))) finite = false;
    const int64_t start = at + tapFrom, length = tapTo - tapFrom + N - 1;
    const int64_t head = larger(0, -start), inside = smaller(w.xCount - start, length);
    clearSamples(copy, C * head);
    copySamples(w.x + C * (start + head), copy + C * head, C * (inside - head));
    clearSamples(copy + C * inside, C * (length - inside));
    runs[count++] = {copy, taps, tapTo - tapFrom};
  }
};

// n <= N outputs.
template <int C, int64_t N>
VEK_NOINLINE void slideEdge(const Window& w, int64_t from, int64_t n, float* y) {
  const int64_t at = w.first + from;
  const EdgeRuns<C, N> edge(w, at);
  if (edge.finite) {
    float whole[C * N];
    const bool direct = n == N;
    slideRuns<C>(edge.runs, edge.count, direct ? y + C * from : whole, N);
    if (!direct) copySamples(whole, y + C * from, C * n);
    return;
  }
  for (int64_t i = 0; i < n; ++i) {
    const int64_t tapFrom = larger(0, -(at + i)), tapTo = smaller(w.tapCount, w.xCount - at - i);
    const Run<float> run = {w.x + C * (at + i + tapFrom), w.taps + C * tapFrom, larger(0, tapTo - tapFrom)};
    slideRuns<C>(&run, 1, y + C * (from + i), 1);
  }
}

template <int C>
VEK_INLINE void slideEdges(const Window& w, int64_t from, int64_t to, float* y) {
  constexpr int64_t step = kEdgeOutputs<C>;
  if (w.tapCount < kManyTaps) {
    for (; from + step < to; from += 2 * step) slideEdge<C, 2 * step>(w, from, smaller(2 * step, to - from), y);
  }
  for (; from < to; from += step) slideEdge<C, step>(w, from, smaller(step, to - from), y);
}

// Outputs 0 .. n-1 of the window: those whose taps all meet a sample at once, the others in small steps.
template <int C>
VEK_INLINE void slideWindow(const Window& w, float* y, int64_t n) {
  const int64_t to = larger(0, smaller(n, w.xCount - w.tapCount - w.first + 1));
  const int64_t from = smaller(n, roundUp(larger(0, -w.first), kEdgeOutputs<C>));
  if (to - from < kEdgeOutputs<C>) return slideEdges<C>(w, 0, n, y);
  slideEdges<C>(w, 0, from, y);
  const Run<float> run = {w.x + C * (w.first + from), w.taps, w.tapCount};
  slideRuns<C>(&run, 1, y + C * from, to - from);
  slideEdges<C>(w, to, n, y);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
