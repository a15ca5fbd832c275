// SPDX-License-Identifier: Apache-2.0
// Making and releasing single-rate FIR states.
#include "core/memory.h"
#include "core/simd/checks.h"
#include "filter/fir_fft.h"
#include "filter/fir_state.h"

namespace vek::VEK_SLOT {
namespace {

template <class Kind>
using FirFft = BlockFft<typename Kind::T, Kind::C>;

// What the transform path of a filter takes; all zero without one.
struct FftPlan {
  int order = 0;
  FftSizes sizes = {};
  VEK_INLINE int64_t length() const { return order ? int64_t(1) << order : 0; }
};

template <class Kind>
VEK_INLINE VekStatus planFft(int tapsLen, FftPlan* plan) {
  if (tapsLen < Kind::fftTaps) return vekStsNoErr;
  int k = 2;
  while ((int64_t(1) << k) <= tapsLen) ++k;
  plan->order = k + 1;
  return FirFft<Kind>::sizes(plan->order, &plan->sizes);
}

// The parts of the block in their order; the transform's tables begin where they are aligned best.
template <class Kind>
VEK_INLINE FirState* layOut(char* start, int tapsLen, const FftPlan& plan, int64_t* bytes) {
  Parcel parcel(start);
  FirState part = {};
  FirState* const state = parcel.take<FirState>(kFirHeaderBytes);
  if (plan.order) {
    part.fft = parcel.take<FftSpec>(plan.sizes.spec, 64);
    part.spectrum = parcel.take(plan.length() * Kind::bytes, 64);
    // Also the memory that the transform wants while it is made.
    part.block = parcel.take(larger(plan.length() * Kind::bytes, plan.sizes.init), 64);
  }
  part.taps = parcel.take(tapsLen * Kind::bytes);
  part.delay = parcel.take(3 * tapsLen * Kind::bytes);
  part.scratch = parcel.take(kFirScratch * Kind::bytes);
  if (state) *state = part;
  if (bytes) *bytes = parcel.used();
  return state;
}

template <class Kind>
VEK_INLINE VekStatus fill(FirState* state, const typename Kind::T* taps, int tapsLen, const float* delayLine,
                          const FftPlan& plan) {
  using T = typename Kind::T;
  constexpr int C = Kind::C;
  T* const reversed = static_cast<T*>(state->taps);
  T* const delay = static_cast<T*>(state->delay);
  for (int64_t j = 0; j < tapsLen; ++j)
    for (int c = 0; c < C; ++c) reversed[C * (tapsLen - 1 - j) + c] = taps[C * j + c];
  // The oldest sample of the given line has left the filter by the time the next one enters.
  for (int64_t j = 0; j < tapsLen - 1; ++j)
    for (int c = 0; c < C; ++c) delay[C * (tapsLen - 2 - j) + c] = delayLine ? delayLine[C * j + c] : 0;
  state->slot = VEK_SLOT_INDEX;
  state->tapsLen = tapsLen;
  state->historyAt = 0;
  state->upFactor = state->downFactor = 1;
  state->fftLen = -1;
  if (plan.order) {
    T* const spectrum = static_cast<T*>(state->spectrum);
    VekStatus status = FirFft<Kind>::init(&state->fft, plan.order, state->fft, state->block);
    if (status != vekStsNoErr) return status;
    status = FirFft<Kind>::forward(taps, tapsLen, spectrum, state->fft);
    if (status != vekStsNoErr) return status;
    state->fftLen = int32_t(plan.length());
  }
  state->id = Kind::single;
  return vekStsNoErr;
}

template <class Kind, class State, class Taps, class Data>
VEK_INLINE VekStatus init(State** state, const Taps* taps, int tapsLen, const Data* delayLine, Vek8u* buffer) {
  if (!state || !taps || !buffer) return vekStsNullPtrErr;
  if (tapsLen < 1) return vekStsFIRLenErr;
  FftPlan plan;
  VekStatus status = planFft<Kind>(tapsLen, &plan);
  if (status != vekStsNoErr) return status;
  FirState* const made = layOut<Kind>(alignedUp(buffer), tapsLen, plan, nullptr);
  status = fill<Kind>(made, reinterpret_cast<const typename Kind::T*>(taps), tapsLen,
                      reinterpret_cast<const float*>(delayLine), plan);
  if (status == vekStsNoErr) *state = reinterpret_cast<State*>(made);
  return status;
}

template <class Kind, class State, class Taps, class Data>
VEK_INLINE VekStatus initAlloc(State** state, const Taps* taps, int tapsLen, const Data* delayLine) {
  if (!state || !taps) return vekStsNullPtrErr;
  if (tapsLen < 1) return vekStsFIRLenErr;
  FftPlan plan;
  VekStatus status = planFft<Kind>(tapsLen, &plan);
  if (status != vekStsNoErr) return status;
  int64_t bytes;
  layOut<Kind>(nullptr, tapsLen, plan, &bytes);
  char* const block = static_cast<char*>(allocate(bytes));
  if (!block) return vekStsMemAllocErr;
  FirState* const made = layOut<Kind>(block, tapsLen, plan, nullptr);
  status = fill<Kind>(made, reinterpret_cast<const typename Kind::T*>(taps), tapsLen,
                      reinterpret_cast<const float*>(delayLine), plan);
  if (status != vekStsNoErr) {
    release(block);
    return status;
  }
  made->ownsMemory = 1;
  *state = reinterpret_cast<State*>(made);
  return vekStsNoErr;
}

template <class Kind, class State>
VEK_INLINE VekStatus freeState(State* pState) {
  FirState* const state = reinterpret_cast<FirState*>(pState);
  if (!state) return vekStsNullPtrErr;
  if (state->id != Kind::single && !Kind::isMulti(state->id)) return vekStsContextMatchErr;
  if (state->ownsMemory) {
    state->id = 0;
    release(state);
  }
  return vekStsNoErr;
}

}  // namespace

VekStatus veksFIRInitAlloc_32f(VeksFIRState_32f** ppState, const Vek32f* pTaps, int tapsLen, const Vek32f* pDlyLine) {
  return initAlloc<Fir32f>(ppState, pTaps, tapsLen, pDlyLine);
}
VekStatus veksFIRInitAlloc_32fc(VeksFIRState_32fc** ppState, const Vek32fc* pTaps, int tapsLen,
                                const Vek32fc* pDlyLine) {
  return initAlloc<Fir32fc>(ppState, pTaps, tapsLen, pDlyLine);
}
VekStatus veksFIRInitAlloc64f_32f(VeksFIRState64f_32f** ppState, const Vek64f* pTaps, int tapsLen,
                                  const Vek32f* pDlyLine) {
  return initAlloc<Fir64f>(ppState, pTaps, tapsLen, pDlyLine);
}
VekStatus veksFIRInitAlloc64fc_32fc(VeksFIRState64fc_32fc** ppState, const Vek64fc* pTaps, int tapsLen,
                                    const Vek32fc* pDlyLine) {
  return initAlloc<Fir64fc>(ppState, pTaps, tapsLen, pDlyLine);
}

VekStatus veksFIRInit_32f(VeksFIRState_32f** ppState, const Vek32f* pTaps, int tapsLen, const Vek32f* pDlyLine,
                          Vek8u* pBuffer) {
  return init<Fir32f>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
VekStatus veksFIRInit_32fc(VeksFIRState_32fc** ppState, const Vek32fc* pTaps, int tapsLen, const Vek32fc* pDlyLine,
                           Vek8u* pBuffer) {
  return init<Fir32fc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
VekStatus veksFIRInit64f_32f(VeksFIRState64f_32f** ppState, const Vek64f* pTaps, int tapsLen, const Vek32f* pDlyLine,
                             Vek8u* pBuffer) {
  return init<Fir64f>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}
VekStatus veksFIRInit64fc_32fc(VeksFIRState64fc_32fc** ppState, const Vek64fc* pTaps, int tapsLen,
                               const Vek32fc* pDlyLine, Vek8u* pBuffer) {
  return init<Fir64fc>(ppState, pTaps, tapsLen, pDlyLine, pBuffer);
}

VekStatus veksFIRFree_32f(VeksFIRState_32f* pState) { return freeState<Fir32f>(pState); }
VekStatus veksFIRFree_32fc(VeksFIRState_32fc* pState) { return freeState<Fir32fc>(pState); }
VekStatus veksFIRFree64f_32f(VeksFIRState64f_32f* pState) { return freeState<Fir64f>(pState); }
VekStatus veksFIRFree64fc_32fc(VeksFIRState64fc_32fc* pState) { return freeState<Fir64fc>(pState); }

}  // namespace vek::VEK_SLOT
