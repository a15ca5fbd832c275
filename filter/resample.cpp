// SPDX-License-Identifier: Apache-2.0
// Up- and down-sampling move bit patterns: 32-bit words for real samples, 64-bit words for complex ones.
#include "core/simd/checks.h"
#include "core/simd/driver.h"
#include "core/simd/interleave.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

VEK_INLINE VekStatus checkSampling(const void* src, int srcLen, const void* dst, const int* dstLen, int factor,
                                   const int* phase) {
  if (const VekStatus s = checkVectors(srcLen, src, dst, dstLen, phase)) return s;
  if (factor < 1) return vekStsSampleFactorErr;
  return *phase < 0 || *phase >= factor ? vekStsSamplePhaseErr : vekStsNoErr;
}

// ---- up -------------------------------------------------------------------------------------------------------------

// One pack of samples to Factor packs of output, Factor a power of two: the samples are interleaved with zeros, at the
// place that the highest bit of the phase tells, and the two halves go on alike with the rest of the phase.
template <int Factor, class W>
VEK_INLINE void spread(W* dst, Pack<W> x, int phase) {
  if constexpr (Factor == 1) {
    store(dst, x);
  } else {
    const Pack<W> zero = zeros<W>();
    const Two<W> t = phase >= Factor / 2 ? interleave(zero, x) : interleave(x, zero);
    spread<Factor / 2>(dst, t.a, phase % (Factor / 2));
    spread<Factor / 2>(dst + Pack<W>::lanes * Factor / 2, t.b, phase % (Factor / 2));
  }
}

// The samples one by one onto zeros, in stretches short enough to stay in the nearest cache.
template <class W>
VEK_INLINE void scatter(const W* src, ptrdiff_t n, W* dst, ptrdiff_t factor, ptrdiff_t phase) {
  constexpr ptrdiff_t stretch = 16384 / ptrdiff_t(sizeof(W));
  const ptrdiff_t samples = stretch / factor > 1 ? stretch / factor : 1;
  for (ptrdiff_t i = 0; i < n; i += samples) {
    const ptrdiff_t count = n - i < samples ? n - i : samples;
    __builtin_memset(dst + i * factor, 0, size_t(count * factor) * sizeof(W));
    for (ptrdiff_t k = i; k < i + count; ++k) dst[k * factor + phase] = src[k];
  }
}

template <int Factor, int Phase, class W>
VEK_NOINLINE ptrdiff_t spreadAll(const W* src, ptrdiff_t n, W* dst) {
  constexpr int lanes = Pack<W>::lanes;
  ptrdiff_t i = 0;
#pragma GCC unroll 4
  for (; i <= n - lanes; i += lanes) spread<Factor>(dst + i * Factor, load(src + i), Phase);
  return i;
}

template <int Factor, class W>
VEK_INLINE ptrdiff_t spreadPacks(const W* src, ptrdiff_t n, W* dst, int phase) {
  if (phase == 0) return spreadAll<Factor, 0>(src, n, dst);
  if (phase == 1) return spreadAll<Factor, 1>(src, n, dst);
  if constexpr (Factor == 4) return phase == 2 ? spreadAll<4, 2>(src, n, dst) : spreadAll<4, 3>(src, n, dst);
  return 0;
}

template <class W>
VEK_INLINE void insertZeros(const W* src, ptrdiff_t n, W* dst, int factor, int phase) {
  ptrdiff_t done = 0;
  if (factor == 2) done = spreadPacks<2>(src, n, dst, phase);
  if (factor == 4) done = spreadPacks<4>(src, n, dst, phase);
  scatter(src + done, n - done, dst + done * factor, factor, phase);
}

template <class W, class T>
VEK_INLINE VekStatus sampleUp(const T* src, int srcLen, T* dst, int* dstLen, int factor, const int* phase) {
  if (const VekStatus s = checkSampling(src, srcLen, dst, dstLen, factor, phase)) return s;
  const int p = *phase;
  *dstLen = int(int64_t(srcLen) * factor);
  if (factor == 1) {
    __builtin_memcpy(dst, src, size_t(srcLen) * sizeof(T));
  } else {
    insertZeros(reinterpret_cast<const W*>(src), srcLen, reinterpret_cast<W*>(dst), factor, p);
  }
  return vekStsNoErr;
}

// ---- down -----------------------------------------------------------------------------------------------------------

// Every other word of two packs, from the first (Phase 0) or the second.
template <int Phase, class W>
VEK_INLINE Pack<W> everyOther(const W* s) {
  constexpr int lanes = Pack<W>::lanes;
  const Two<W> t = deinterleave(load(s), load(s + lanes));
  return Phase == 0 ? t.a : t.b;
}

// Whole periods only: the packs that are read end with the last period that lies inside the source.
template <int Factor, int Phase, class W>
VEK_NOINLINE ptrdiff_t gatherPacks(const W* src, ptrdiff_t srcLen, W* dst) {
  constexpr int lanes = Pack<W>::lanes;
  const ptrdiff_t last = srcLen / Factor - lanes;
  ptrdiff_t k = 0;
#pragma GCC unroll 4
  for (; k <= last; k += lanes) {
    if constexpr (Factor == 2) {
      store(dst + k, everyOther<Phase>(src + k * 2));
    } else {
      const W* s = src + k * 4;
      const Two<W> t = deinterleave(everyOther<Phase % 2>(s), everyOther<Phase % 2>(s + 2 * lanes));
      store(dst + k, Phase / 2 == 0 ? t.a : t.b);
    }
  }
  return k;
}

template <class W>
VEK_INLINE void pick(const W* src, ptrdiff_t srcLen, W* dst, ptrdiff_t count, int factor, int phase) {
  ptrdiff_t k = 0;
  if (factor == 2) k = phase == 0 ? gatherPacks<2, 0>(src, srcLen, dst) : gatherPacks<2, 1>(src, srcLen, dst);
  if (factor == 4) {
    k = phase == 0   ? gatherPacks<4, 0>(src, srcLen, dst)
        : phase == 1 ? gatherPacks<4, 1>(src, srcLen, dst)
        : phase == 2 ? gatherPacks<4, 2>(src, srcLen, dst)
                     : gatherPacks<4, 3>(src, srcLen, dst);
  }
  for (; k < count; ++k) dst[k] = src[k * factor + phase];
}

template <class W, class T>
VEK_INLINE VekStatus sampleDown(const T* src, int srcLen, T* dst, int* dstLen, int factor, int* phase) {
  if (const VekStatus s = checkSampling(src, srcLen, dst, dstLen, factor, phase)) return s;
  const int64_t p = *phase;
  const int64_t count = p < srcLen ? (int64_t(srcLen) + factor - p - 1) / factor : 0;
  if (factor == 1) {
    __builtin_memcpy(dst, src, size_t(srcLen) * sizeof(T));
  } else {
    pick(reinterpret_cast<const W*>(src), srcLen, reinterpret_cast<W*>(dst), count, factor, int(p));
  }
  *dstLen = int(count);
  *phase = int(p + count * factor - srcLen);
  return vekStsNoErr;
}

}  // namespace

VekStatus veksSampleUp_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int* pDstLen, int factor, int* pPhase) {
  return sampleUp<uint32_t>(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
VekStatus veksSampleUp_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int* pDstLen, int factor, int* pPhase) {
  return sampleUp<uint64_t>(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
VekStatus veksSampleDown_32f(const Vek32f* pSrc, int srcLen, Vek32f* pDst, int* pDstLen, int factor, int* pPhase) {
  return sampleDown<uint32_t>(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}
VekStatus veksSampleDown_32fc(const Vek32fc* pSrc, int srcLen, Vek32fc* pDst, int* pDstLen, int factor, int* pPhase) {
  return sampleDown<uint64_t>(pSrc, srcLen, pDst, pDstLen, factor, pPhase);
}

}  // namespace vek::VEK_SLOT
