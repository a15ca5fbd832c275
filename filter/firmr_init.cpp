// SPDX-License-Identifier: Apache-2.0
// Making multi-rate FIR states. They are released like single-rate ones.
#include "core/memory.h"
#include "filter/firmr_plan.h"

namespace vek::VEK_SLOT {
namespace {

struct Rates {
  int upFactor, upPhase, downFactor, downPhase;
};

VEK_INLINE VekStatus checkRates(int tapsLen, Rates r) {
  if (tapsLen < 1) return vekStsFIRLenErr;
  if (r.upFactor <= 0 || r.downFactor <= 0) return vekStsFIRMRFactorErr;
  if (r.upPhase < 0 || r.upPhase >= r.upFactor) return vekStsFIRMRPhaseErr;
  if (r.downPhase < 0 || r.downPhase >= r.downFactor) return vekStsFIRMRPhaseErr;
  return vekStsNoErr;
}

// Splitting the samples into streams pays once there are taps enough for each of them.
VEK_INLINE bool worthStreams(int tapsLen, Rates r) {
  if (r.downFactor > kFirMostStreams) return false;
  const float density = float(tapsLen) / (3 * float(r.downFactor) + float(tapsLen));
  return r.upFactor == 1 ? density > 0.5f : double(density) > 0.3;
}

template <class Kind>
VEK_INLINE FirState* layOut(char* start, const RatePlan& plan, int64_t* bytes) {
  Parcel parcel(start);
  FirState part = {};
  FirState* const state = parcel.take<FirState>(kFirHeaderBytes);
  part.taps = parcel.take(plan.tapsLen * Kind::bytes);
  part.delay = parcel.take(plan.window() * Kind::bytes);
  part.scratch = parcel.take(plan.scratch() * Kind::bytes);
  if (state) *state = part;
  if (bytes) *bytes = parcel.used();
  return state;
}

template <class Kind>
VEK_INLINE void arrangeTaps(const FirState* state, const RatePlan& plan, const typename Kind::T* taps) {
  constexpr int C = Kind::C;
  typename Kind::T* to = static_cast<typename Kind::T*>(state->taps);
  const int64_t groups = state->blocked ? plan.down : 1;
  const Shares phases(plan.tapsLen, plan.up);
  for (int64_t phase = 0; phase < smaller(plan.up, plan.tapsLen); ++phase) {
    const Shares group(phases.count(phase), groups);
    for (int64_t g = 0; g < smaller(groups, phases.count(phase)); ++g) {
      for (int64_t j = group.count(g) - 1; j >= 0; --j) {
        for (int c = 0; c < C; ++c) *to++ = taps[C * (phase + (j * groups + g) * plan.up) + c];
      }
    }
  }
}

// Past sample j, j = 0 the newest, goes where the run functions expect it.
template <class Kind>
VEK_INLINE void arrangePast(const FirState* state, const RatePlan& plan, const float* delayLine) {
  constexpr int C = Kind::C;
  typename Kind::T* const delay = static_cast<typename Kind::T*>(state->delay);
  const int64_t history = plan.history();
  clearSamples(delay, C * (state->blocked ? plan.down * plan.stream() : history));
  if (!delayLine) return;
  for (int64_t j = 0; j < history; ++j) {
    const int64_t back = j / plan.down, stream = plan.down - 1 - j % plan.down;
    const int64_t at = state->blocked ? stream * plan.stream() + plan.streamHistory() - 1 - back : history - 1 - j;
    for (int c = 0; c < C; ++c) delay[C * at + c] = delayLine[C * j + c];
  }
}

template <class Kind>
VEK_INLINE void fill(FirState* state, const RatePlan& plan, Rates r, const typename Kind::T* taps,
                     const float* delayLine) {
  state->slot = VEK_SLOT_INDEX;
  state->tapsLen = int32_t(plan.tapsLen);
  state->fftLen = -1;
  state->upFactor = r.upFactor, state->upPhase = r.upPhase;
  state->downFactor = r.downFactor, state->downPhase = r.downPhase;
  state->blocked = worthStreams(state->tapsLen, r);
  arrangeTaps<Kind>(state, plan, taps);
  arrangePast<Kind>(state, plan, delayLine);
  state->id = Kind::multi;
}

template <class Kind, class State, class Taps, class Data>
VEK_INLINE VekStatus init(State** ppState, const Taps* taps, int tapsLen, Rates r, const Data* delayLine,
                          Vek8u* buffer) {
  const RatePlan plan(tapsLen, r.upFactor, r.downFactor);
  FirState* const state = layOut<Kind>(alignedUp(buffer), plan, nullptr);
  fill<Kind>(state, plan, r, reinterpret_cast<const typename Kind::T*>(taps),
             reinterpret_cast<const float*>(delayLine));
  *ppState = reinterpret_cast<State*>(state);
  return vekStsNoErr;
}

template <class Kind, class State, class Taps, class Data>
VEK_INLINE VekStatus initAlloc(State** ppState, const Taps* taps, int tapsLen, Rates r, const Data* delayLine) {
  const RatePlan plan(tapsLen, r.upFactor, r.downFactor);
  int64_t bytes;
  layOut<Kind>(nullptr, plan, &bytes);
  char* const block = static_cast<char*>(allocate(bytes));
  if (!block) return vekStsMemAllocErr;
  FirState* const state = layOut<Kind>(block, plan, nullptr);
  fill<Kind>(state, plan, r, reinterpret_cast<const typename Kind::T*>(taps),
             reinterpret_cast<const float*>(delayLine));
  state->ownsMemory = 1;
  *ppState = reinterpret_cast<State*>(state);
  return vekStsNoErr;
}

}  // namespace

// With both factors 1 the filter is a single-rate one, the transform path included.
#define VEK_FIRMR_INIT(KIND, NAME, SINGLE, STATE, TAPS, DATA)                                                \
  VekStatus NAME(STATE** ppState, const TAPS* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, \
                 int downPhase, const DATA* pDlyLine, Vek8u* pBuffer) {                                      \
    const Rates r = {upFactor, upPhase, downFactor, downPhase};                                              \
    if (!ppState || !pTaps || !pBuffer) return vekStsNullPtrErr;                                             \
    const VekStatus status = checkRates(tapsLen, r);                                                         \
    if (status != vekStsNoErr) return status;                                                                \
    if (upFactor == 1 && downFactor == 1) return ::SINGLE(ppState, pTaps, tapsLen, pDlyLine, pBuffer);       \
    return init<KIND>(ppState, pTaps, tapsLen, r, pDlyLine, pBuffer);                                        \
  }
#define VEK_FIRMR_INIT_ALLOC(KIND, NAME, SINGLE, STATE, TAPS, DATA)                                          \
  VekStatus NAME(STATE** ppState, const TAPS* pTaps, int tapsLen, int upFactor, int upPhase, int downFactor, \
                 int downPhase, const DATA* pDlyLine) {                                                      \
    const Rates r = {upFactor, upPhase, downFactor, downPhase};                                              \
    if (!ppState || !pTaps) return vekStsNullPtrErr;                                                         \
    const VekStatus status = checkRates(tapsLen, r);                                                         \
    if (status != vekStsNoErr) return status;                                                                \
    if (upFactor == 1 && downFactor == 1) return ::SINGLE(ppState, pTaps, tapsLen, pDlyLine);                \
    return initAlloc<KIND>(ppState, pTaps, tapsLen, r, pDlyLine);                                            \
  }

VEK_FIRMR_INIT_ALLOC(Fir32f, veksFIRMRInitAlloc_32f, veksFIRInitAlloc_32f, VeksFIRState_32f, Vek32f, Vek32f)
VEK_FIRMR_INIT_ALLOC(Fir32fc, veksFIRMRInitAlloc_32fc, veksFIRInitAlloc_32fc, VeksFIRState_32fc, Vek32fc, Vek32fc)
VEK_FIRMR_INIT_ALLOC(Fir64f, veksFIRMRInitAlloc64f_32f, veksFIRInitAlloc64f_32f, VeksFIRState64f_32f, Vek64f, Vek32f)
VEK_FIRMR_INIT_ALLOC(Fir64fc, veksFIRMRInitAlloc64fc_32fc, veksFIRInitAlloc64fc_32fc, VeksFIRState64fc_32fc, Vek64fc,
                     Vek32fc)

VEK_FIRMR_INIT(Fir32f, veksFIRMRInit_32f, veksFIRInit_32f, VeksFIRState_32f, Vek32f, Vek32f)
VEK_FIRMR_INIT(Fir32fc, veksFIRMRInit_32fc, veksFIRInit_32fc, VeksFIRState_32fc, Vek32fc, Vek32fc)
VEK_FIRMR_INIT(Fir64f, veksFIRMRInit64f_32f, veksFIRInit64f_32f, VeksFIRState64f_32f, Vek64f, Vek32f)
VEK_FIRMR_INIT(Fir64fc, veksFIRMRInit64fc_32fc, veksFIRInit64fc_32fc, VeksFIRState64fc_32fc, Vek64fc, Vek32fc)

}  // namespace vek::VEK_SLOT
