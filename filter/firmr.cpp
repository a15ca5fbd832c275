// SPDX-License-Identifier: Apache-2.0
// Multi-rate filtering: polyphase, so that no inserted zero is multiplied and no dropped output computed.
#include "core/memory.h"
#include "filter/firmr_plan.h"

namespace vek::VEK_SLOT {
namespace {

// The outputs of an iteration in turn: which phase of the taps makes it, and at which input of the iteration it starts,
// -1 being the last input of the iteration before.
struct OutputPhases {
  int64_t phase, input;
  int64_t phaseStep, inputStep, up;
  VEK_INLINE explicit OutputPhases(const FirState* s) : up(s->upFactor) {
    const int64_t at = int64_t(s->downPhase) - s->upPhase + up;  // not negative
    phase = at % up, input = at / up - 1;
    phaseStep = s->downFactor % up, inputStep = s->downFactor / up;
  }
  VEK_INLINE void next() {
    phase += phaseStep, input += inputStep;
    if (phase >= up) phase -= up, ++input;
  }
};

// ---- output by output ----------------------------------------------------------------------------------------------

template <class Kind>
VEK_INLINE void runSingly(FirState* state, const RatePlan& plan, const float* src, float* dst, int64_t n) {
  using T = typename Kind::T;
  constexpr int C = Kind::C;
  const int64_t history = plan.history(), fresh = n * plan.down;
  const Shares phases(plan.tapsLen, plan.up);
  T* const window = static_cast<T*>(state->delay);
  const T* const taps = static_cast<const T*>(state->taps);
  takeSamples(src, window + C * history, C * fresh);
  OutputPhases at(state);
  for (int64_t i = 0; i < plan.up; ++i, at.next()) {
    const int64_t count = phases.count(at.phase);
    strideKind<Kind>(taps + C * phases.before(at.phase), count, window + C * (history + at.input + 1 - count),
                     plan.down, dst + C * i, plan.up, n);
  }
  copySamples(window + C * fresh, window, C * history);
}

// ---- by streams ----------------------------------------------------------------------------------------------------

// Sample k * parts + p of `from` becomes sample k of part p, and back; parts lie `room` samples apart.
template <int C, class From, class To>
VEK_INLINE void split(const From* from, int64_t parts, To* to, int64_t room, int64_t n) {
  for (int64_t p = 0; p < parts; ++p) {
    const From* s = from + C * p;
    To* d = to + C * room * p;
    for (int64_t k = 0; k < n; ++k, s += C * parts) {
      for (int c = 0; c < C; ++c) d[C * k + c] = s[c];
    }
  }
}
template <int C>
VEK_INLINE void join(const float* from, int64_t room, float* to, int64_t parts, int64_t n) {
  for (int64_t k = 0; k < n; ++k) {
    for (int64_t p = 0; p < parts; ++p) {
      for (int c = 0; c < C; ++c) to[C * (k * parts + p) + c] = from[C * (p * room + k) + c];
    }
  }
}

template <class Kind>
VEK_INLINE void runStreams(FirState* state, const RatePlan& plan, const float* src, float* dst, int64_t n) {
  using T = typename Kind::T;
  constexpr int C = Kind::C;
  const int64_t history = plan.streamHistory(), room = plan.stream();
  const Shares phases(plan.tapsLen, plan.up);
  T* const streams = static_cast<T*>(state->delay);
  const T* const taps = static_cast<const T*>(state->taps);
  float* const rows = plan.up == 1 ? dst : static_cast<float*>(state->scratch);
  split<C>(src, plan.down, streams + C * history, room, n);
  OutputPhases at(state);
  for (int64_t i = 0; i < plan.up; ++i, at.next()) {
    const T* const phaseTaps = taps + C * phases.before(at.phase);
    const int64_t phaseCount = phases.count(at.phase), groups = smaller(plan.down, phaseCount);
    const Shares group(phaseCount, plan.down);
    Run<T> runs[kFirMostStreams];
    for (int64_t g = 0; g < groups; ++g) {
      // Tap g of the phase meets this input, tap g + downFactor the one before it in the same stream.
      const int64_t input = at.input - g, count = group.count(g);
      const T* const newest = streams + C * (input < 0 ? room * (input + plan.down) - 1 : room * input);
      runs[g] = {newest + C * (history + 1 - count), phaseTaps + C * group.before(g), count};
    }
    slideKind<Kind>(runs, groups, rows + C * i * n, n);
  }
  if (plan.up > 1) join<C>(rows, n, dst, plan.up, n);
  for (int64_t p = 0; p < plan.down; ++p)
    copySamples(streams + C * (p * room + n), streams + C * p * room, C * history);
}

template <class Kind>
VEK_NOINLINE void runApart(FirState* state, const float* src, float* dst, int64_t numIters) {
  constexpr int C = Kind::C;
  const RatePlan plan(state);
  const int64_t most = plan.iterations();
  for (int64_t done = 0; done < numIters; done += most) {
    const int64_t n = smaller(most, numIters - done);
    const float* const from = src + C * done * plan.down;
    float* const to = dst + C * done * plan.up;
    if (state->blocked) {
      runStreams<Kind>(state, plan, from, to, n);
    } else {
      runSingly<Kind>(state, plan, from, to, n);
    }
  }
}

// In place the outputs may overtake the inputs: these are set aside first.
template <class Kind>
VEK_INLINE VekStatus runMultiRate(FirState* state, const float* src, float* dst, int64_t numIters) {
  if (src != dst) {
    runApart<Kind>(state, src, dst, numIters);
    return vekStsNoErr;
  }
  const int64_t inputs = numIters * state->downFactor * Kind::C;
  if (inputs > INT64_MAX / 8) return vekStsMemAllocErr;
  float* const copy = static_cast<float*>(allocate(inputs * int64_t(sizeof(float))));
  if (!copy) return vekStsMemAllocErr;
  copySamples(src, copy, inputs);
  runApart<Kind>(state, copy, dst, numIters);
  release(copy);
  return vekStsNoErr;
}

}  // namespace

VekStatus runMultiRate32f(FirState* state, const float* src, float* dst, int numIters) {
  return runMultiRate<Fir32f>(state, src, dst, numIters);
}
VekStatus runMultiRate32fc(FirState* state, const float* src, float* dst, int numIters) {
  return runMultiRate<Fir32fc>(state, src, dst, numIters);
}
VekStatus runMultiRate64f(FirState* state, const float* src, float* dst, int numIters) {
  return runMultiRate<Fir64f>(state, src, dst, numIters);
}
VekStatus runMultiRate64fc(FirState* state, const float* src, float* dst, int numIters) {
  return runMultiRate<Fir64fc>(state, src, dst, numIters);
}

}  // namespace vek::VEK_SLOT
