// SPDX-License-Identifier: Apache-2.0
// Specs and calls of the Fourier engine of powers of two.
#include "transform/fft.h"

#include "core/memory.h"
#include "transform/fft_conv.h"
#include "transform/fft_small.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int kConstantOrder = 10;  // up to here Init needs no memory

bool isComplex(FftKind kind) { return kind == kFftComplex32 || kind == kFftComplex64; }
int64_t partSize(FftKind kind) { return kind == kFftReal64 || kind == kFftComplex64 ? 8 : 4; }
// log2 of the complex transform inside.
int complexOrder(FftKind kind, int order) { return isComplex(kind) ? order : order - 1; }
// Below this many points the kernels are straight-line and need no tables.
bool isSmall(FftKind kind, int order) { return complexOrder(kind, order) < 6; }

int64_t roundUp64(int64_t bytes) { return (bytes + 63) & ~int64_t(63); }
int64_t roundDown64(int64_t bytes) { return bytes & ~int64_t(63); }

// ---- sizes ----------------------------------------------------------------------------------------------------------

// Part of the contract with callers that provide the memory: larger than what these kernels fill.

// From this order up the stated size counts a table of two levels.
constexpr int kTwoLevelOrder = 19;
constexpr int64_t kFineRoots = 1024;

// log2 of the factor that a transform of 2^m points is split by; 0: no split.
int splitBits(int m) {
  static const int8_t bits[] = {0, 0, 5, 6, 7, 8, 8, 8, 10, 10, 10, 10, 8, 8};
  return m <= 24 ? bits[m - 11] : 10;
}

struct Sizes {
  int64_t spec, init, work;
};

int64_t inCacheSize(int m, int64_t part) {
  const int64_t n = int64_t(1) << m;
  return roundDown64(2 * part * n + 71) + roundDown64((n & ~int64_t(3)) + 67);
}

Sizes complexSizes(int m, int64_t part) {
  if (m < 6) return {};
  Sizes s = {};
  for (;;) {
    if (m <= 10) {
      s.spec += inCacheSize(m, part);
      return s;
    }
    const int64_t n = int64_t(1) << m;
    const int bits = splitBits(m);
    if (bits == 0) {
      s.spec += 2 * part * n + 8256;
      return s;
    }
    const int64_t factor = int64_t(1) << bits;
    s.spec += roundUp64(2 * part * factor) + 2 * part * n;
    s.init += 8 * part * factor;
    if (s.work < 8 * part * factor) s.work = 8 * part * factor;
    m -= bits;
  }
}

Sizes sizesFor(FftKind kind, int order) {
  const int64_t part = partSize(kind), n = int64_t(1) << order;
  Sizes s = complexSizes(complexOrder(kind, order), part);
  if (order <= 5) {
    s.spec += 208;
  } else {
    const int64_t roots =
        order < kTwoLevelOrder ? roundUp64(n / 4 * 2 * part) : roundDown64(2 * part * ((n >> 12) + kFineRoots) + 63);
    s.spec += 256 + (isComplex(kind) ? 0 : 2 * roots);
  }
  if (order > kConstantOrder) s.init += roundDown64(n * part / 4 + 67) + 64;
  if (s.work > 0) s.work += 64;
  return s;
}

bool isFlag(int flag) { return flag == 1 || flag == 2 || flag == 4 || flag == 8; }

// ---- building ------------------------------------------------------------------------------------------------------

uint8_t* align64(uint8_t* p) { return p + (-reinterpret_cast<uintptr_t>(p) & 63); }

// The tables that are no constants. Apart, because the roots take room on the stack and time.
template <class T>
VEK_NOINLINE void computeTables(T* table, FftKind kind, int order) {
  const Roots roots(order);
  if (isComplex(kind)) {
    makeComplexTable(table, order, roots, order);
  } else {
    makeRealTable(table, order, roots);
  }
}

template <class T>
int64_t tableSize(FftKind kind, int order) {
  return isComplex(kind) ? complexTableSize<T>(order) : realTableSize<T>(order);
}
template <class T>
void buildTables(FftSpec* spec, FftKind kind, int order) {
  T* const table = reinterpret_cast<T*>(align64(reinterpret_cast<uint8_t*>(spec + 1)));
  const int64_t size = tableSize<T>(kind, order);
  (isComplex(kind) ? spec->complexTwiddles : spec->realTwiddles) = table;
  if (size > 0) computeTables(table, kind, order);
  spec->tableEnd = reinterpret_cast<uint8_t*>(table + size);
}

void setNorm(FftSpec* spec, int flag, int order) {
  spec->fwdScaled = flag == kFftNormFwdByN || flag == kFftNormBySqrtN;
  spec->invScaled = flag == kFftNormInvByN || flag == kFftNormBySqrtN;
  if (flag == kFftNormNone) return;
  const double n = double(int64_t(1) << order);
  spec->scale64 = flag == kFftNormBySqrtN ? 1 / sqrt(n) : 1 / n;
  spec->scale = float(spec->scale64);
}

template <class T>
T scaleOf(const FftSpec* spec, Direction d) {
  const bool scaled = d == kForward ? spec->fwdScaled : spec->invScaled;
  return !scaled ? T(1) : sizeof(T) == 8 ? T(spec->scale64) : T(spec->scale);
}

// ---- transforms ----------------------------------------------------------------------------------------------------

VekStatus checkCall(const void* src, const void* dst, const FftSpec* spec, FftKind kind) {
  if (!spec) return vekStsNullPtrErr;
  if (spec->id != kind) return vekStsContextMatchErr;
  return src && dst ? vekStsNoErr : vekStsNullPtrErr;
}

template <Direction D, class T>
void realSmall(const T* src, T* dst, int order, T scale) {
  if (order == 0) {
    dst[0] = src[0] * scale;
    return;
  }
  withSmall(order - 1, [&]<int M>() VEK_LAMBDA { smallReal<D, M>(src, dst, scale); });
}

template <Direction D, class T>
void realBy(const T* src, T* dst, int order, const T* table, T scale) {
  if (isSmall(kFftKindOf<T>, order)) return realSmall<D>(src, dst, order, scale);
  if constexpr (D == kForward) {
    realForward<kInterleaved>(src, dst, order, table);
    if (scale != 1) scaleAll(dst, int64_t(1) << order, scale);
  } else {
    realInverse<kInterleaved>(src, dst, order, table, scale);
  }
}
template <Direction D, class C, class T>
void complexBy(const C* src, C* dst, int order, const T* table, T scale) {
  const T* in = &src->re;
  T* out = &dst->re;
  if (isSmall(kFftKindOf<C>, order)) {
    withSmall(order, [&]<int M>() VEK_LAMBDA { smallTransform<D, M>(in, out, scale); });
  } else {
    complexTransform<D>(in, out, order, table, scale);
  }
}

template <Direction D, class T>
VekStatus realTransform(const T* src, T* dst, const FftSpec* spec) {
  if (const VekStatus s = checkCall(src, dst, spec, kFftKindOf<T>)) return s;
  realBy<D>(src, dst, spec->order, static_cast<const T*>(spec->realTwiddles), scaleOf<T>(spec, D));
  return vekStsNoErr;
}
template <Direction D, class C, class T>
VekStatus complexCall(const C* src, C* dst, const FftSpec* spec, T) {
  if (const VekStatus s = checkCall(src, dst, spec, kFftKindOf<C>)) return s;
  complexBy<D>(src, dst, spec->order, static_cast<const T*>(spec->complexTwiddles), scaleOf<T>(spec, D));
  return vekStsNoErr;
}

// ---- products of spectra -------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE void mulOne(const T* a, T* b) {
  const T re = a[0] * b[0] - a[1] * b[1], im = a[0] * b[1] + a[1] * b[0];
  b[0] = re, b[1] = im;
}
template <class T>
void mulPairs(const T* a, T* b, int64_t count) {
  constexpr int L = kLanes<T>;
  int64_t k = 0;
  for (; k + L <= count; k += L) {
    storeInterleaved<T>(b + 2 * k, times(loadInterleaved(a + 2 * k), loadInterleaved(b + 2 * k)));
  }
  for (; k < count; ++k) mulOne(a + 2 * k, b + 2 * k);
}

template <class T>
VekStatus mulPacked(const T* src, T* srcDst, int len) {
  if (!src || !srcDst) return vekStsNullPtrErr;
  if (len < 1) return vekStsSizeErr;
  const int reals = len % 2 == 0 ? 2 : 1;
  for (int i = 0; i < reals; ++i) srcDst[i] *= src[i];
  mulPairs(src + reals, srcDst + reals, (len - reals) / 2);
  return vekStsNoErr;
}
template <class C>
VekStatus mulComplex(const C* src, C* srcDst, int len) {
  if (!src || !srcDst) return vekStsNullPtrErr;
  if (len < 1) return vekStsSizeErr;
  mulPairs(&src->re, &srcDst->re, len);
  return vekStsNoErr;
}

// ---- convolution ---------------------------------------------------------------------------------------------------

// The elements that a transform does not get from its caller, made zero in dst; returns where all of them are.
template <class E>
const E* padded(const E* src, int64_t count, E* dst, int64_t n) {
  if (count >= n) return src;
  if (src != dst) __builtin_memcpy(dst, src, size_t(count) * sizeof(E));
  __builtin_memset(dst + count, 0, size_t(n - count) * sizeof(E));
  return dst;
}

template <Extent X, class E, class T>
void convTransform(const E* src, E* dst, const FftSpec* spec, T scale) {
  if constexpr (kSame<E, T>) {
    realForward<kBlocks, X>(src, dst, spec->order, static_cast<const T*>(spec->realTwiddles));
  } else {
    complexTransform<kForward, X>(&src->re, &dst->re, spec->order, static_cast<const T*>(spec->complexTwiddles), scale);
  }
}

template <class E, class T>
VekStatus convForward(const E* src, int64_t count, E* dst, const FftSpec* spec, T t) {
  constexpr FftKind kind = kFftKindOf<E>;
  if (const VekStatus s = checkCall(src, dst, spec, kind)) return s;
  const int64_t n = int64_t(1) << spec->order;
  if (isSmall(kind, spec->order)) {
    src = padded(src, count, dst, n);
    if constexpr (kSame<E, T>) return realTransform<kForward>(src, dst, spec);
    if constexpr (!kSame<E, T>) return complexCall<kForward>(src, dst, spec, t);
  }
  const T scale = scaleOf<T>(spec, kForward);
  if (count <= n / 2) {
    convTransform<kFirstHalf>(padded(src, count, dst, n / 2), dst, spec, scale);
  } else {
    convTransform<kWhole>(padded(src, count, dst, n), dst, spec, scale);
  }
  return vekStsNoErr;
}

template <class T>
VekStatus convMultiply(const T* src, T* srcDst, const FftSpec* spec) {
  if (const VekStatus s = checkCall(src, srcDst, spec, kFftKindOf<T>)) return s;
  if (isSmall(kFftKindOf<T>, spec->order)) return mulPacked(src, srcDst, 1 << spec->order);
  multiplySpectra(src, srcDst, int64_t(1) << spec->order);
  return vekStsNoErr;
}
template <class C>
VekStatus convMultiplyComplex(const C* src, C* srcDst, const FftSpec* spec) {
  if (const VekStatus s = checkCall(src, srcDst, spec, kFftKindOf<C>)) return s;
  return mulComplex(src, srcDst, 1 << spec->order);
}

template <class T>
void powers(T* bins, int64_t count) {
  constexpr int L = kLanes<T>;
  int64_t k = 0;
  for (; k + L <= count; k += L) {
    const Complex<T> x = loadInterleaved(bins + 2 * k);
    storeInterleaved<T>(bins + 2 * k, {mulAdd<T>(x.re, x.re, x.im * x.im), Reg<T>{}});
  }
  for (; k < count; ++k) {
    bins[2 * k] = bins[2 * k] * bins[2 * k] + bins[2 * k + 1] * bins[2 * k + 1];
    bins[2 * k + 1] = 0;
  }
}

template <class T>
VekStatus convInverse(const T* src, T* dst, const FftSpec* spec) {
  if (const VekStatus s = checkCall(src, dst, spec, kFftKindOf<T>)) return s;
  if (isSmall(kFftKindOf<T>, spec->order)) return realTransform<kInverse>(src, dst, spec);
  // Blocks are not scaled: here for both factors.
  const T forward = scaleOf<T>(spec, kForward), scale = forward * forward * scaleOf<T>(spec, kInverse);
  realInverse<kBlocks>(src, dst, spec->order, static_cast<const T*>(spec->realTwiddles), scale);
  return vekStsNoErr;
}

}  // namespace

// ---- the engine ----------------------------------------------------------------------------------------------------

VekStatus fftGetSize(FftKind kind, int order, int flag, int hint, int* pSpecSize, int* pInitSize, int* pWorkSize) {
  (void)hint;
  if (order < 0 || order > 30) return vekStsFftOrderErr;
  if (!pSpecSize || !pInitSize || !pWorkSize) return vekStsNullPtrErr;
  if (!isFlag(flag)) return vekStsFftFlagErr;
  if (order > kFftLargestOrder) return vekStsFftOrderErr;
  const Sizes s = sizesFor(kind, order);
  if (s.spec > INT32_MAX || s.init > INT32_MAX) return vekStsFftOrderErr;  // the widest kinds end one order earlier
  *pSpecSize = int(s.spec);
  *pInitSize = int(s.init);
  *pWorkSize = int(s.work);
  return vekStsNoErr;
}

FftSpec* fftPlace(FftKind kind, int order, int flag, int hint, uint8_t* pSpecBuffer) {
  FftSpec* spec = reinterpret_cast<FftSpec*>(align64(pSpecBuffer));
  *spec = FftSpec{};
  spec->order = order;
  spec->hint = hint;
  spec->tableArea = spec + 1;
  spec->tableEnd = reinterpret_cast<uint8_t*>(spec + 1);
  if (!isFlag(flag)) return spec;
  setNorm(spec, flag, order);
  if (!isSmall(kind, order)) {
    if (partSize(kind) == 8) {
      buildTables<double>(spec, kind, order);
    } else {
      buildTables<float>(spec, kind, order);
    }
  }
  spec->id = kind;
  return spec;
}

int64_t fftTableSize(FftKind kind, int order) {
  if (isSmall(kind, order)) return 0;
  if (partSize(kind) == 8) return 8 * tableSize<double>(kind, order);
  return 4 * tableSize<float>(kind, order);
}
void fftFillTable(FftKind kind, int order, void* table) {
  if (fftTableSize(kind, order) == 0) return;
  if (partSize(kind) == 8) {
    computeTables(static_cast<double*>(table), kind, order);
  } else {
    computeTables(static_cast<float*>(table), kind, order);
  }
}

VekStatus fftInit(FftKind kind, FftSpec** pSpec, int order, int flag, int hint, uint8_t* pSpecBuffer,
                  uint8_t* pInitBuffer) {
  if (!pSpec) return vekStsNullPtrErr;
  if (order < 0 || order > kFftLargestOrder) return vekStsFftOrderErr;
  if (!pSpecBuffer) return vekStsNullPtrErr;
  const bool ready = order <= kConstantOrder || pInitBuffer;
  FftSpec* spec = fftPlace(kind, order, ready ? flag : 0, hint, pSpecBuffer);
  if (!isFlag(flag)) return vekStsFftFlagErr;
  if (!ready) return vekStsNullPtrErr;
  *pSpec = spec;
  return vekStsNoErr;
}

VekStatus fftInitAlloc(FftKind kind, FftSpec** pSpec, int order, int flag, int hint) {
  if (!pSpec) return vekStsNullPtrErr;
  int specSize, initSize, workSize;
  if (const VekStatus s = fftGetSize(kind, order, flag, hint, &specSize, &initSize, &workSize)) return s;
  uint8_t* block = static_cast<uint8_t*>(allocate(specSize));
  if (!block) return vekStsMemAllocErr;
  uint8_t* init = initSize > 0 ? static_cast<uint8_t*>(allocate(initSize)) : nullptr;
  const VekStatus s = initSize > 0 && !init ? vekStsMemAllocErr : fftInit(kind, pSpec, order, flag, hint, block, init);
  release(init);
  if (s != vekStsNoErr) {
    release(block);
    return s;
  }
  (*pSpec)->ownsMemory = 1;
  (*pSpec)->memBlock = block;
  return vekStsNoErr;
}

VekStatus fftFree(FftSpec* spec) {
  if (!spec) return vekStsNullPtrErr;
  if (spec->id < kFftReal32 || spec->id > kFftComplex64) return vekStsContextMatchErr;
  if (spec->ownsMemory) {
    spec->id = 0;
    release(spec->memBlock);
  }
  return vekStsNoErr;
}

VekStatus fftForward(const Vek32f* src, Vek32f* dst, const FftSpec* spec, uint8_t*) {
  return realTransform<kForward>(src, dst, spec);
}
VekStatus fftForward(const Vek64f* src, Vek64f* dst, const FftSpec* spec, uint8_t*) {
  return realTransform<kForward>(src, dst, spec);
}
VekStatus fftForward(const Vek32fc* src, Vek32fc* dst, const FftSpec* spec, uint8_t*) {
  return complexCall<kForward>(src, dst, spec, float());
}
VekStatus fftForward(const Vek64fc* src, Vek64fc* dst, const FftSpec* spec, uint8_t*) {
  return complexCall<kForward>(src, dst, spec, double());
}
VekStatus fftInverse(const Vek32f* src, Vek32f* dst, const FftSpec* spec, uint8_t*) {
  return realTransform<kInverse>(src, dst, spec);
}
VekStatus fftInverse(const Vek64f* src, Vek64f* dst, const FftSpec* spec, uint8_t*) {
  return realTransform<kInverse>(src, dst, spec);
}
VekStatus fftInverse(const Vek32fc* src, Vek32fc* dst, const FftSpec* spec, uint8_t*) {
  return complexCall<kInverse>(src, dst, spec, float());
}
VekStatus fftInverse(const Vek64fc* src, Vek64fc* dst, const FftSpec* spec, uint8_t*) {
  return complexCall<kInverse>(src, dst, spec, double());
}

void fftForwardBy(const Vek32f* src, Vek32f* dst, int order, const float* table, float scale) {
  realBy<kForward>(src, dst, order, table, scale);
}
void fftForwardBy(const Vek64f* src, Vek64f* dst, int order, const double* table, double scale) {
  realBy<kForward>(src, dst, order, table, scale);
}
void fftForwardBy(const Vek32fc* src, Vek32fc* dst, int order, const float* table, float scale) {
  complexBy<kForward>(src, dst, order, table, scale);
}
void fftForwardBy(const Vek64fc* src, Vek64fc* dst, int order, const double* table, double scale) {
  complexBy<kForward>(src, dst, order, table, scale);
}
void fftInverseBy(const Vek32f* src, Vek32f* dst, int order, const float* table, float scale) {
  realBy<kInverse>(src, dst, order, table, scale);
}
void fftInverseBy(const Vek64f* src, Vek64f* dst, int order, const double* table, double scale) {
  realBy<kInverse>(src, dst, order, table, scale);
}
void fftInverseBy(const Vek32fc* src, Vek32fc* dst, int order, const float* table, float scale) {
  complexBy<kInverse>(src, dst, order, table, scale);
}
void fftInverseBy(const Vek64fc* src, Vek64fc* dst, int order, const double* table, double scale) {
  complexBy<kInverse>(src, dst, order, table, scale);
}

VekStatus fftMulSpectra(const Vek32f* src, Vek32f* srcDst, int len) { return mulPacked(src, srcDst, len); }
VekStatus fftMulSpectra(const Vek64f* src, Vek64f* srcDst, int len) { return mulPacked(src, srcDst, len); }
VekStatus fftMulSpectra(const Vek32fc* src, Vek32fc* srcDst, int len) { return mulComplex(src, srcDst, len); }
VekStatus fftMulSpectra(const Vek64fc* src, Vek64fc* srcDst, int len) { return mulComplex(src, srcDst, len); }

VekStatus fftConvForward(const Vek32f* src, int64_t count, Vek32f* dst, const FftSpec* spec) {
  return convForward(src, count, dst, spec, float());
}
VekStatus fftConvForward(const Vek64f* src, int64_t count, Vek64f* dst, const FftSpec* spec) {
  return convForward(src, count, dst, spec, double());
}
VekStatus fftConvForward(const Vek32fc* src, int64_t count, Vek32fc* dst, const FftSpec* spec) {
  return convForward(src, count, dst, spec, float());
}
VekStatus fftConvForward(const Vek64fc* src, int64_t count, Vek64fc* dst, const FftSpec* spec) {
  return convForward(src, count, dst, spec, double());
}

VekStatus fftConvMultiply(const Vek32f* src, Vek32f* srcDst, const FftSpec* spec) {
  return convMultiply(src, srcDst, spec);
}
VekStatus fftConvMultiply(const Vek64f* src, Vek64f* srcDst, const FftSpec* spec) {
  return convMultiply(src, srcDst, spec);
}
VekStatus fftConvMultiply(const Vek32fc* src, Vek32fc* srcDst, const FftSpec* spec) {
  return convMultiplyComplex(src, srcDst, spec);
}
VekStatus fftConvMultiply(const Vek64fc* src, Vek64fc* srcDst, const FftSpec* spec) {
  return convMultiplyComplex(src, srcDst, spec);
}

VekStatus fftConvPower(Vek32f* srcDst, const FftSpec* spec) {
  if (const VekStatus s = checkCall(srcDst, srcDst, spec, kFftReal32)) return s;
  if (isSmall(kFftReal32, spec->order)) {
    for (int i = 0; i < 2 && i < 1 << spec->order; ++i) srcDst[i] *= srcDst[i];
    powers(srcDst + 2, (1 << spec->order) / 2 - 1);
  } else {
    powerOfSpectrum(srcDst, int64_t(1) << spec->order);
  }
  return vekStsNoErr;
}
VekStatus fftConvPower(Vek32fc* srcDst, const FftSpec* spec) {
  if (const VekStatus s = checkCall(srcDst, srcDst, spec, kFftComplex32)) return s;
  powers(&srcDst->re, int64_t(1) << spec->order);
  return vekStsNoErr;
}

VekStatus fftConvInverse(const Vek32f* src, Vek32f* dst, const FftSpec* spec) { return convInverse(src, dst, spec); }
VekStatus fftConvInverse(const Vek64f* src, Vek64f* dst, const FftSpec* spec) { return convInverse(src, dst, spec); }
VekStatus fftConvInverse(const Vek32fc* src, Vek32fc* dst, const FftSpec* spec) {
  return complexCall<kInverse>(src, dst, spec, float());
}
VekStatus fftConvInverse(const Vek64fc* src, Vek64fc* dst, const FftSpec* spec) {
  return complexCall<kInverse>(src, dst, spec, double());
}

}  // namespace vek::VEK_SLOT
