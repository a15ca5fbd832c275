// SPDX-License-Identifier: Apache-2.0
// Recursive filters: their states, and which kernel a state and a length get.
#include "core/memory.h"
#include "core/simd/checks.h"
#include "filter/iir_block.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- building a state ---------------------------------------------------------------------------------------------

constexpr int64_t roundUp(int64_t bytes) { return (bytes + 31) / 32 * 32; }

// Where the parts of a state lie behind its start.
struct Layout {
  int64_t delay, nextDelay, tables, size;
};
template <class V>
VEK_INLINE Layout layoutOf(int64_t numBq, int64_t order) {
  const int64_t sections = numBq == 0 ? 1 : numBq, width = sizeof(V), delays = roundUp((sections * order + 1) * width);
  Layout l;
  l.delay = kIirHeader + roundUp(sections * (2 * order + 1) * width);
  l.nextDelay = l.delay + delays;
  l.tables = l.nextDelay + (kIirBlocks ? delays : 0);
  l.size = l.tables;
  if (kIirBlocks && order <= kBlockMaxOrder)
    l.size += 32 * (runsAsCascade<V>(numBq) ? cascadeTablePacks(sections) : sections * tablePacks(kParts<V>, order));
  return l;
}

// b[0..N], a[0..N] to b[0..N]/a[0], a[1..N]/a[0].
template <class Coef, class V>
VEK_INLINE VekStatus normalise(V* to, const Coef* taps, int64_t order, bool biquad) {
  const Coef a0 = taps[order + 1];
  if (isZero(a0) || (biquad && isZero(taps[0]))) return vekStsDivByZeroErr;
  const Coef r = reciprocal(a0);
  for (int64_t k = 0; k <= order; ++k) to[k] = convertTo<V>(taps[k] * r);
  for (int64_t k = 1; k <= order; ++k) to[order + k] = convertTo<V>(taps[order + 1 + k] * r);
  return vekStsNoErr;
}

template <class V>
VEK_INLINE double* tablesFor(const IirState& s, double* tables) {
  if (!kIirBlocks || section<V>(s, 0).order > kBlockMaxOrder) return nullptr;
  if constexpr (kIirBlocks) {
    if constexpr (!kComplex<V>) {
      if (runsAsCascade<V>(s.numBq)) return buildCascadeTable(tables, s) ? tables : nullptr;
    }
    double* t = tables;
    for (int i = 0; i < sections(s); ++i) {
      const Section<V> q = section<V>(s, i);
      if (!buildTable(t, q) || !keepsPrecision(t, q)) return nullptr;
      t += 4 * tablePacks(kParts<V>, q.order);
    }
  }
  return tables;
}

template <class K>
VEK_INLINE VekStatus buildState(IirState** state, const typename K::Coef* taps, int numBq, int order,
                                const typename K::Coef* delay, void* buffer, bool owns) {
  using V = typename K::Value;
  char* start = reinterpret_cast<char*>((reinterpret_cast<uintptr_t>(buffer) + 31) & ~uintptr_t(31));
  const int64_t count = numBq == 0 ? 1 : numBq;
  const Layout at = layoutOf<V>(numBq, order);
  IirState* s = reinterpret_cast<IirState*>(start);
  s->id = 0;
  s->slot = VEK_SLOT_INDEX;
  s->coefs = start + kIirHeader;
  s->delay = start + at.delay;
  s->nextDelay = start + at.nextDelay;
  s->delayLen = numBq == 0 ? order : 2 * numBq;
  s->numBq = numBq;
  s->ownsMemory = owns;
  V* d = static_cast<V*>(s->delay);
  for (int64_t k = 0; k <= count * order; ++k) d[k] = delay && k < count * order ? convertTo<V>(delay[k]) : V{};
  if (kIirBlocks) static_cast<V*>(s->nextDelay)[count * order] = V{};
  for (int64_t i = 0; i < count; ++i) {
    V* to = static_cast<V*>(s->coefs) + i * (2 * order + 1);
    if (const VekStatus e = normalise(to, taps + i * 2 * (order + 1), order, numBq != 0)) return e;
  }
  s->tables = tablesFor<V>(*s, reinterpret_cast<double*>(start + at.tables));
  s->id = numBq == 0 ? K::orderId : K::biquadId;
  *state = s;
  return vekStsNoErr;
}

template <class K, class State>
VEK_INLINE VekStatus initState(State** state, const typename K::Coef* taps, int order, const typename K::Coef* delay,
                               Vek8u* buffer) {
  if (!state || !taps || !buffer) return vekStsNullPtrErr;
  if (order < 1) return vekStsIIROrderErr;
  return buildState<K>(reinterpret_cast<IirState**>(state), taps, 0, order, delay, buffer, false);
}

template <class K, class State>
VEK_INLINE VekStatus allocateState(State** state, const typename K::Coef* taps, int numBq, int order,
                                   const typename K::Coef* delay) {
  if (!state || !taps) return vekStsNullPtrErr;
  if (order < 1 || numBq < 0) return vekStsIIROrderErr;
  void* block = allocate(layoutOf<typename K::Value>(numBq, order).size);
  if (!block) return vekStsMemAllocErr;
  const VekStatus e = buildState<K>(reinterpret_cast<IirState**>(state), taps, numBq, order, delay, block, true);
  if (e != vekStsNoErr) release(block);
  return e;
}
template <class K, class State>
VEK_INLINE VekStatus allocateBiquads(State** state, const typename K::Coef* taps, int numBq,
                                     const typename K::Coef* delay) {
  return allocateState<K>(state, taps, numBq < 1 ? -1 : numBq, 2, delay);
}

template <class K>
VEK_INLINE VekStatus freeState(void* state) {
  if (!state) return vekStsNullPtrErr;
  IirState* s = static_cast<IirState*>(state);
  if (s->id != K::orderId && s->id != K::biquadId && s->id != K::otherId) return vekStsContextMatchErr;
  if (s->ownsMemory) {
    s->id = 0;
    release(s);
  }
  return vekStsNoErr;
}

// ---- filtering ----------------------------------------------------------------------------------------------------

// Fewer samples than this are not worth a block.
constexpr int kFewSamples = 6;

template <class K, class State>
VEK_INLINE VekStatus filter(const typename K::Sample* src, typename K::Sample* dst, int len, State* state) {
  if (const VekStatus e = checkVectors(len, src, dst, state)) return e;
  IirState& s = *reinterpret_cast<IirState*>(state);
  if (s.slot != VEK_SLOT_INDEX || (s.id != K::orderId && s.id != K::biquadId && s.id != K::otherId))
    return vekStsContextMatchErr;
  if constexpr (kIirBlocks) {
    if (s.tables && len >= kFewSamples) {
      if constexpr (!kComplex<typename K::Sample>) {
        if (runsAsCascade<typename K::Value>(s.numBq)) {
          filterCascade(src, dst, len, s);
          return vekStsNoErr;
        }
      }
      filterByBlocks<K>(src, dst, len, s);
      return vekStsNoErr;
    }
  }
  filterBySample<K>(src, dst, len, s);
  return vekStsNoErr;
}

template <class K, class State>
VEK_INLINE VekStatus filterOne(typename K::Sample src, typename K::Sample* dst, State* state) {
  if (!state || !dst) return vekStsNullPtrErr;
  IirState& s = *reinterpret_cast<IirState*>(state);
  if (s.slot != VEK_SLOT_INDEX || (s.id != K::orderId && s.id != K::biquadId)) return vekStsContextMatchErr;
  *dst = convertTo<typename K::Sample>(step(convertTo<typename K::Value>(src), s));
  return vekStsNoErr;
}

}  // namespace

VekStatus veksIIRInitAlloc_32f(VeksIIRState_32f** ppState, const Vek32f* pTaps, int order, const Vek32f* pDlyLine) {
  return allocateState<Iir32f>(ppState, pTaps, 0, order, pDlyLine);
}
VekStatus veksIIRInitAlloc_32fc(VeksIIRState_32fc** ppState, const Vek32fc* pTaps, int order, const Vek32fc* pDlyLine) {
  return allocateState<Iir32fc>(ppState, pTaps, 0, order, pDlyLine);
}
VekStatus veksIIRInitAlloc64f_32f(VeksIIRState64f_32f** ppState, const Vek64f* pTaps, int order,
                                  const Vek64f* pDlyLine) {
  return allocateState<Iir64f>(ppState, pTaps, 0, order, pDlyLine);
}
VekStatus veksIIRInitAlloc64fc_32fc(VeksIIRState64fc_32fc** ppState, const Vek64fc* pTaps, int order,
                                    const Vek64fc* pDlyLine) {
  return allocateState<Iir64fc>(ppState, pTaps, 0, order, pDlyLine);
}
VekStatus veksIIRInit_32f(VeksIIRState_32f** ppState, const Vek32f* pTaps, int order, const Vek32f* pDlyLine,
                          Vek8u* pBuffer) {
  return initState<Iir32f>(ppState, pTaps, order, pDlyLine, pBuffer);
}
VekStatus veksIIRInit_32fc(VeksIIRState_32fc** ppState, const Vek32fc* pTaps, int order, const Vek32fc* pDlyLine,
                           Vek8u* pBuffer) {
  return initState<Iir32fc>(ppState, pTaps, order, pDlyLine, pBuffer);
}
VekStatus veksIIRInit64f_32f(VeksIIRState64f_32f** ppState, const Vek64f* pTaps, int order, const Vek64f* pDlyLine,
                             Vek8u* pBuffer) {
  return initState<Iir64f>(ppState, pTaps, order, pDlyLine, pBuffer);
}
VekStatus veksIIRInit64fc_32fc(VeksIIRState64fc_32fc** ppState, const Vek64fc* pTaps, int order,
                               const Vek64fc* pDlyLine, Vek8u* pBuffer) {
  return initState<Iir64fc>(ppState, pTaps, order, pDlyLine, pBuffer);
}

VekStatus veksIIRInitAlloc_BiQuad_32f(VeksIIRState_32f** ppState, const Vek32f* pTaps, int numBq,
                                      const Vek32f* pDlyLine) {
  return allocateBiquads<Iir32f>(ppState, pTaps, numBq, pDlyLine);
}
VekStatus veksIIRInitAlloc_BiQuad_32fc(VeksIIRState_32fc** ppState, const Vek32fc* pTaps, int numBq,
                                       const Vek32fc* pDlyLine) {
  return allocateBiquads<Iir32fc>(ppState, pTaps, numBq, pDlyLine);
}

VekStatus veksIIRFree_32f(VeksIIRState_32f* pState) { return freeState<Iir32f>(pState); }
VekStatus veksIIRFree_32fc(VeksIIRState_32fc* pState) { return freeState<Iir32fc>(pState); }
VekStatus veksIIRFree64f_32f(VeksIIRState64f_32f* pState) { return freeState<Iir64f>(pState); }
VekStatus veksIIRFree64fc_32fc(VeksIIRState64fc_32fc* pState) { return freeState<Iir64fc>(pState); }

VekStatus veksIIR_32f(const Vek32f* pSrc, Vek32f* pDst, int len, VeksIIRState_32f* pState) {
  return filter<Iir32f>(pSrc, pDst, len, pState);
}
VekStatus veksIIR_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, VeksIIRState_32fc* pState) {
  return filter<Iir32fc>(pSrc, pDst, len, pState);
}
VekStatus veksIIR64f_32f(const Vek32f* pSrc, Vek32f* pDst, int len, VeksIIRState64f_32f* pState) {
  return filter<Iir64f>(pSrc, pDst, len, pState);
}
VekStatus veksIIR64fc_32fc(const Vek32fc* pSrc, Vek32fc* pDst, int len, VeksIIRState64fc_32fc* pState) {
  return filter<Iir64fc>(pSrc, pDst, len, pState);
}

VekStatus veksIIROne_32f(Vek32f src, Vek32f* pDstVal, VeksIIRState_32f* pState) {
  return filterOne<Iir32f>(src, pDstVal, pState);
}
VekStatus veksIIROne_32fc(Vek32fc src, Vek32fc* pDstVal, VeksIIRState_32fc* pState) {
  return filterOne<Iir32fc>(src, pDstVal, pState);
}
VekStatus veksIIROne64f_32f(Vek32f src, Vek32f* pDstVal, VeksIIRState64f_32f* pState) {
  return filterOne<Iir64f>(src, pDstVal, pState);
}
VekStatus veksIIROne64fc_32fc(Vek32fc src, Vek32fc* pDstVal, VeksIIRState64fc_32fc* pState) {
  return filterOne<Iir64fc>(src, pDstVal, pState);
}

}  // namespace vek::VEK_SLOT
