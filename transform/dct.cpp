// SPDX-License-Identifier: Apache-2.0
// The cosine transforms' entries: checks, specs, buffers, the choice of the way.
#include "transform/dct.h"

#include <math.h>

#include "core/memory.h"
#include "core/simd/level.h"
#include "vek/transform.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kLongestPow2 = 268435455;
constexpr int kLongestInit = 67108863;
constexpr int kLongestAlloc = 33554431;

bool isPow2(int len) { return (len & (len - 1)) == 0; }
bool isSmall(int len) { return isPow2(len) && len <= 8; }
// The real transform of these lengths asks for an initialisation buffer. Nothing is put there, but null is refused.
bool needsInitBuffer(int len) { return isPow2(len) && len >= 2048; }

// ---- sizes ---------------------------------------------------------------------------------------------------------

// Bytes of the caller's spec buffer; -1 where no spec is that large.
int64_t specBytes(int len) {
  if (isSmall(len)) return 352;
  if (isPow2(len)) {
    int spec, init, work;
    if (fftGetSize(kFftReal32, __builtin_ctz(unsigned(len)), kFftNormNone, 0, &spec, &init, &work)) return -1;
    return int64_t(spec) + 192;
  }
  if (len < kDctDirectLimit) return 16 * int64_t(len) + 192;
  const int64_t p = chirpPoints(len), m = len % 2 != 0 ? len : len / 2;
  return 20 * p + 8 * m + 4 * int64_t(len) + 1024;
}

int32_t workBytes(int len) {
  if (isSmall(len)) return 0;
  if (isPow2(len)) {
    int spec, init, work;
    return fftGetSize(kFftReal32, __builtin_ctz(unsigned(len)), kFftNormNone, 0, &spec, &init, &work) ? 0 : work;
  }
  return len < kDctDirectLimit ? 4 * len : int32_t(8 * chirpPoints(len));
}

// ---- specs ---------------------------------------------------------------------------------------------------------

uint8_t* align64(uint8_t* p) { return p + (-reinterpret_cast<uintptr_t>(p) & 63); }

// 1/sqrt(n): a first value good to a few bits, Newton steps in double, and the documented last step in single
// precision.
float reciprocalRoot(float n) {
  double r = 1;
  while (r * r * double(n) > 2) r *= 0.5;
  for (int i = 0; i < 6; ++i) r = 0.5 * r * (3 - double(n) * r * r);
  const float s = float(r);
  return s * -0.5f * (n * s * s - 3);
}

VekStatus initialise(DctSpec** ppSpec, int len, VekHintAlgorithm hint, uint8_t* buffer, const uint8_t* initBuffer,
                     int longest, bool forward) {
  if (len < 1 || len > (isPow2(len) ? kLongestPow2 : longest)) return vekStsSizeErr;
  if (!ppSpec || !buffer || (needsInitBuffer(len) && !initBuffer)) return vekStsNullPtrErr;
  DctSpec* spec = reinterpret_cast<DctSpec*>(align64(buffer));
  *spec = DctSpec{};
  spec->len = len;
  spec->slot = VEK_SLOT_INDEX;
  spec->forward = forward;
  spec->hint = hint;
  if (isSmall(len)) {
    spec->smallKernel = 1;
  } else {
    spec->workSize = workBytes(len);
    spec->dcScale = reciprocalRoot(float(len));
    spec->acScale = float(sqrt(2.0) / sqrt(double(len)));
    if (isPow2(len)) {
      buildPow2(spec);
      spec->viaPow2Fft = 1;
    } else if (len >= kDctDirectLimit) {
      buildChirp(spec);
      spec->viaLargeFft = 1;
    } else {
      buildDirect(spec, forward);
    }
  }
  spec->id = kDctId;
  *ppSpec = spec;
  return vekStsNoErr;
}

VekStatus initialiseAlloc(DctSpec** ppSpec, int len, VekHintAlgorithm hint, bool forward) {
  if (len < 1 || len > (isPow2(len) ? kLongestPow2 : kLongestAlloc)) return vekStsSizeErr;
  if (!ppSpec) return vekStsNullPtrErr;
  uint8_t* block = static_cast<uint8_t*>(allocate(specBytes(len)));
  if (!block) return vekStsMemAllocErr;
  if (const VekStatus s = initialise(ppSpec, len, hint, block, block, kLongestAlloc, forward)) {
    release(block);
    return s;
  }
  (*ppSpec)->ownsMemory = 1;
  (*ppSpec)->memBlock = block;
  return vekStsNoErr;
}

VekStatus freeSpec(DctSpec* spec) {
  if (!spec) return vekStsNullPtrErr;
  if (spec->id != kDctId) return vekStsContextMatchErr;
  if (spec->ownsMemory) {
    spec->id = 0;
    release(spec->memBlock);
  }
  return vekStsNoErr;
}

// ---- the call ------------------------------------------------------------------------------------------------------

VekStatus transform(const float* x, float* y, const DctSpec* spec, uint8_t* given, bool forward) {
  if (!x || !y || !spec) return vekStsNullPtrErr;
  if (spec->id != kDctId || spec->slot != VEK_SLOT_INDEX) return vekStsContextMatchErr;
  if (spec->smallKernel) {
    dctSmall(x, y, spec->len, forward);
    return vekStsNoErr;
  }
  uint8_t* own = nullptr;
  if (!given && spec->workSize > 0) {
    own = static_cast<uint8_t*>(allocate(spec->workSize));
    if (!own) return vekStsMemAllocErr;
  }
  uint8_t* work = given ? align64(given) : own;
  if (spec->viaPow2Fft) {
    dctPow2(x, y, spec, forward);
  } else if (spec->viaLargeFft) {
    dctChirp(x, y, spec, reinterpret_cast<Vek32fc*>(work), forward);
  } else {
    dctDirect(x, y, spec, reinterpret_cast<float*>(work), forward);
  }
  release(own);
  return vekStsNoErr;
}

template <class S>
DctSpec** asSpec(S** p) {
  return reinterpret_cast<DctSpec**>(p);
}
template <class S>
const DctSpec* asSpec(const S* p) {
  return reinterpret_cast<const DctSpec*>(p);
}

}  // namespace

VekStatus veksDCTFwdInit_32f(VeksDCTFwdSpec_32f** ppDCTSpec, int len, VekHintAlgorithm hint, Vek8u* pSpecBuffer,
                             Vek8u* pInitBuffer) {
  return initialise(asSpec(ppDCTSpec), len, hint, pSpecBuffer, pInitBuffer, kLongestInit, true);
}
VekStatus veksDCTInvInit_32f(VeksDCTInvSpec_32f** ppDCTSpec, int len, VekHintAlgorithm hint, Vek8u* pSpecBuffer,
                             Vek8u* pInitBuffer) {
  return initialise(asSpec(ppDCTSpec), len, hint, pSpecBuffer, pInitBuffer, kLongestInit, false);
}
VekStatus veksDCTFwdInitAlloc_32f(VeksDCTFwdSpec_32f** ppDCTSpec, int len, VekHintAlgorithm hint) {
  return initialiseAlloc(asSpec(ppDCTSpec), len, hint, true);
}
VekStatus veksDCTInvInitAlloc_32f(VeksDCTInvSpec_32f** ppDCTSpec, int len, VekHintAlgorithm hint) {
  return initialiseAlloc(asSpec(ppDCTSpec), len, hint, false);
}
VekStatus veksDCTFwdFree_32f(VeksDCTFwdSpec_32f* pDCTSpec) { return freeSpec(reinterpret_cast<DctSpec*>(pDCTSpec)); }
VekStatus veksDCTInvFree_32f(VeksDCTInvSpec_32f* pDCTSpec) { return freeSpec(reinterpret_cast<DctSpec*>(pDCTSpec)); }

VekStatus veksDCTFwd_32f(const Vek32f* pSrc, Vek32f* pDst, const VeksDCTFwdSpec_32f* pDCTSpec, Vek8u* pWorkBuffer) {
  return transform(pSrc, pDst, asSpec(pDCTSpec), pWorkBuffer, true);
}
VekStatus veksDCTInv_32f(const Vek32f* pSrc, Vek32f* pDst, const VeksDCTInvSpec_32f* pDCTSpec, Vek8u* pWorkBuffer) {
  return transform(pSrc, pDst, asSpec(pDCTSpec), pWorkBuffer, false);
}

}  // namespace vek::VEK_SLOT
