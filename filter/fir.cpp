// SPDX-License-Identifier: Apache-2.0
// Filtering with a FIR state: directly, or block by block through the transform.
#include "core/simd/checks.h"
#include "filter/fir_fft.h"
#include "filter/fir_state.h"

namespace vek::VEK_SLOT {
namespace {

template <class Kind>
using FirFft = BlockFft<typename Kind::T, Kind::C>;

// Past samples kept for the next one. The output at hand sees them and itself.
VEK_INLINE int64_t historyOf(const FirState* state) { return state->tapsLen - 1; }

// Makes the last samples of the stream the history, `n` samples at x having passed the filter.
template <class Kind>
VEK_INLINE void remember(FirState* state, const float* x, int64_t n) {
  using T = typename Kind::T;
  constexpr int C = Kind::C;
  T* const delay = static_cast<T*>(state->delay);
  const int64_t history = historyOf(state), fresh = smaller(n, history);
  copySamples(delay + C * (state->historyAt + fresh), delay, C * (history - fresh));
  takeSamples(x + C * (n - fresh), delay + C * (history - fresh), C * fresh);
  state->historyAt = 0;
}

// ---- directly ------------------------------------------------------------------------------------------------------

// How many outputs are made from the delay buffer, where the history is followed by new samples: enough that all
// others find their past in x, and whole packs of them where there is room.
VEK_INLINE int64_t fromDelay(int64_t history, int64_t n) {
  const int64_t step = history >= 64 ? 64 : history >= 8 ? 8 : 1;
  return smaller(n, roundUp(history, step));
}

// n outputs for the n samples at x, which are in the taps' precision and apart from dst.
template <class Kind>
VEK_INLINE void window(FirState* state, const typename Kind::T* x, float* dst, int64_t n) {
  using T = typename Kind::T;
  constexpr int C = Kind::C;
  T* const delay = static_cast<T*>(state->delay);
  const T* const taps = static_cast<const T*>(state->taps);
  const int64_t history = historyOf(state), head = fromDelay(history, n);
  if (state->historyAt + history + head > 3 * int64_t(state->tapsLen)) {
    copySamples(delay + C * state->historyAt, delay, C * history);
    state->historyAt = 0;
  }
  T* const past = delay + C * state->historyAt;
  copySamples(x, past + C * history, C * head);
  const Run<T> first = {past, taps, state->tapsLen};
  slideKind<Kind>(&first, 1, dst, head);
  if (head == n) {
    state->historyAt += n;
    return;
  }
  const Run<T> rest = {x + C * (head - history), taps, state->tapsLen};
  slideKind<Kind>(&rest, 1, dst + C * head, n - head);
  copySamples(x + C * (n - history), delay, C * history);
  state->historyAt = 0;
}

// Samples that are overwritten or need another precision go through the scratch.
template <class Kind>
VEK_INLINE void runDirect(FirState* state, const float* src, float* dst, int64_t n) {
  using T = typename Kind::T;
  constexpr int C = Kind::C;
  if constexpr (kSame<T, float>) {
    if (src != dst) return window<Kind>(state, src, dst, n);
  }
  T* const scratch = static_cast<T*>(state->scratch);
  constexpr int64_t chunk = kSame<T, float> ? kFirScratch : kFirScratch / 2;
  for (int64_t done = 0; done < n; done += chunk) {
    const int64_t count = smaller(chunk, n - done);
    takeSamples(src + C * done, scratch, C * count);
    window<Kind>(state, scratch, dst + C * done, count);
  }
}

// ---- through the transform -----------------------------------------------------------------------------------------

// Overlap-save: every block begins with the samples before its new ones, and its first outputs, wrapped around by the
// transform, are left out. src and dst are apart.
template <class Kind>
VEK_INLINE VekStatus runBlocks(FirState* state, const float* src, float* dst, int64_t n) {
  using T = typename Kind::T;
  constexpr int C = Kind::C;
  T* const block = static_cast<T*>(state->block);
  const int64_t length = state->fftLen, history = historyOf(state), step = length - history;
  for (int64_t done = 0; done < n; done += step) {
    const int64_t count = smaller(step, n - done);
    const T* samples = block;
    if (done == 0) {
      copySamples(static_cast<const T*>(state->delay) + C * state->historyAt, block, C * history);
      takeSamples(src, block + C * history, C * count);
      clearSamples(block + C * (history + count), C * (step - count));
    } else if (kSame<T, float> && count == step) {
      samples = reinterpret_cast<const T*>(src + C * (done - history));
    } else {
      takeSamples(src + C * (done - history), block, C * (history + count));
      clearSamples(block + C * (history + count), C * (step - count));
    }
    VekStatus status = FirFft<Kind>::forward(samples, length, block, state->fft);
    if (status != vekStsNoErr) return status;
    status = FirFft<Kind>::multiply(static_cast<const T*>(state->spectrum), block, state->fft);
    if (status != vekStsNoErr) return status;
    status = FirFft<Kind>::inverse(block, block, state->fft);
    if (status != vekStsNoErr) return status;
    giveSamples(block + C * history, dst + C * done, C * count);
  }
  remember<Kind>(state, src, n);
  return vekStsNoErr;
}

// ---- choosing ------------------------------------------------------------------------------------------------------

// In place, chunk by chunk. Which way a chunk takes is decided by how many samples remain behind it: states have
// always worked so, and results depend on it.
template <class Kind>
VEK_INLINE VekStatus runInPlace(FirState* state, float* data, int64_t n) {
  constexpr int C = Kind::C;
  for (int64_t done = 0; done < n; done += kFirScratch) {
    const int64_t count = smaller(kFirScratch, n - done);
    float* const chunk = data + C * done;
    if (state->fftLen > 0 && n - done - count > Kind::fftCall) {
      float* const copy = static_cast<float*>(state->scratch);
      copySamples(chunk, copy, C * count);
      const VekStatus status = runBlocks<Kind>(state, copy, chunk, count);
      if (status != vekStsNoErr) return status;
    } else {
      runDirect<Kind>(state, chunk, chunk, count);
    }
  }
  return vekStsNoErr;
}

template <class Kind>
VEK_NOINLINE VekStatus runSingleRate(FirState* state, const float* src, float* dst, int64_t n) {
  if (src == dst) return runInPlace<Kind>(state, dst, n);
  if (n > Kind::fftCall && state->fftLen > 0) return runBlocks<Kind>(state, src, dst, n);
  runDirect<Kind>(state, src, dst, n);
  return vekStsNoErr;
}

VEK_INLINE VekStatus runMultiRate(Fir32f, FirState* state, const float* src, float* dst, int n) {
  return runMultiRate32f(state, src, dst, n);
}
VEK_INLINE VekStatus runMultiRate(Fir32fc, FirState* state, const float* src, float* dst, int n) {
  return runMultiRate32fc(state, src, dst, n);
}
VEK_INLINE VekStatus runMultiRate(Fir64f, FirState* state, const float* src, float* dst, int n) {
  return runMultiRate64f(state, src, dst, n);
}
VEK_INLINE VekStatus runMultiRate(Fir64fc, FirState* state, const float* src, float* dst, int n) {
  return runMultiRate64fc(state, src, dst, n);
}

template <class Kind, class Data, class State>
VEK_INLINE VekStatus filter(const Data* pSrc, Data* pDst, int numIters, State* pState) {
  FirState* const state = reinterpret_cast<FirState*>(pState);
  if (!state || !pSrc || !pDst) return vekStsNullPtrErr;
  if (numIters < 1) return vekStsSizeErr;
  if (state->slot != VEK_SLOT_INDEX) return vekStsContextMatchErr;
  const float* const src = reinterpret_cast<const float*>(pSrc);
  float* const dst = reinterpret_cast<float*>(pDst);
  if (state->id == Kind::single) return runSingleRate<Kind>(state, src, dst, numIters);
  if (Kind::isMulti(state->id)) return runMultiRate(Kind(), state, src, dst, numIters);
  return vekStsContextMatchErr;
}

template <class Kind, class Data, class State>
VEK_INLINE VekStatus filterOne(Data src, Data* pDstVal, State* pState) {
  FirState* const state = reinterpret_cast<FirState*>(pState);
  if (!state || !pDstVal) return vekStsNullPtrErr;
  if (state->slot != VEK_SLOT_INDEX || state->id != Kind::single) return vekStsContextMatchErr;
  return runSingleRate<Kind>(state, reinterpret_cast<const float*>(&src), reinterpret_cast<float*>(pDstVal), 1);
}

}  // namespace

VekStatus veksFIR_32f(const Vek32f* pSrc, Vek32f* pDst, int numIters, VeksFIRState_32f* pState) {
  return filter<Fir32f>(pSrc, pDst, numIters, pState);
}
VekStatus veksFIR_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int numIters, VeksFIRState_32fc* pState) {
  return filter<Fir32fc>(pSrc, pDst, numIters, pState);
}
VekStatus veksFIR64f_32f(const Vek32f* pSrc, Vek32f* pDst, int numIters, VeksFIRState64f_32f* pState) {
  return filter<Fir64f>(pSrc, pDst, numIters, pState);
}
VekStatus veksFIR64fc_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int numIters, VeksFIRState64fc_32fc* pState) {
  return filter<Fir64fc>(pSrc, pDst, numIters, pState);
}

VekStatus veksFIROne_32f(Vek32f src, Vek32f* pDstVal, VeksFIRState_32f* pState) {
  return filterOne<Fir32f>(src, pDstVal, pState);
}
VekStatus veksFIROne_32fc(Vek32fc src, Vek32fc* pDstVal, VeksFIRState_32fc* pState) {
  return filterOne<Fir32fc>(src, pDstVal, pState);
}
VekStatus veksFIROne64f_32f(Vek32f src, Vek32f* pDstVal, VeksFIRState64f_32f* pState) {
  return filterOne<Fir64f>(src, pDstVal, pState);
}
VekStatus veksFIROne64fc_32fc(Vek32fc src, Vek32fc* pDstVal, VeksFIRState64fc_32fc* pState) {
  return filterOne<Fir64fc>(src, pDstVal, pState);
}

}  // namespace vek::VEK_SLOT
