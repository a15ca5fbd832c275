// SPDX-License-Identifier: Apache-2.0
// The internal FFT engine: power-of-two transforms of real and complex data in single and double precision. Filters,
// correlations and the cosine transforms build a spec once and call these functions with it; nothing here is exported.
// A source that uses the engine is compiled for VEK_FFT_SLOTS, so that it links to the engine of its own slot. Slot y8
// has none of its own: the engine works on floats, and SSE4.1 has nothing for them that would make it faster.
#ifndef VEK_TRANSFORM_FFT_H
#define VEK_TRANSFORM_FFT_H

#include <stdint.h>

#include "vek/status.h"
#include "vek/types.h"

#ifndef VEK_FFT_SLOT
#define VEK_FFT_SLOT VEK_SLOT
#endif

namespace vek::VEK_FFT_SLOT {

// What a spec transforms; the value is the id in its first word. Real data of length N = 2^order has the packed
// spectrum of N elements: bin 0, bin N/2, then (re, im) of bins 1 .. N/2-1. Complex data has N bins in natural order.
enum FftKind : int32_t { kFftReal32 = 6, kFftReal64 = 7, kFftComplex32 = 8, kFftComplex64 = 9 };

namespace {  // clang would give the specialisations a symbol in every file
template <class T>
constexpr FftKind kFftKindOf = kFftReal32;
template <>
constexpr FftKind kFftKindOf<Vek64f> = kFftReal64;
template <>
constexpr FftKind kFftKindOf<Vek32fc> = kFftComplex32;
template <>
constexpr FftKind kFftKindOf<Vek64fc> = kFftComplex64;
}  // namespace

// Which direction is multiplied by what.
enum FftNorm : int {
  kFftNormFwdByN = 1,   // forward by 1/N
  kFftNormInvByN = 2,   // inverse by 1/N
  kFftNormBySqrtN = 4,  // both by 1/sqrt(N)
  kFftNormNone = 8
};

constexpr int kFftLargestOrder = 28;

// Lies at the first 64-byte boundary of the caller's buffer, its tables behind it on boundaries of their own. Read-only
// after Init: any number of threads may transform with it.
struct FftSpec {
  int32_t id;
  int32_t order;
  int32_t fwdScaled;
  int32_t invScaled;
  float scale;
  int32_t hint;
  int32_t extTables;
  int32_t ownsMemory;
  void* memBlock;
  void* tableArea;
  void* bitRevTable;
  const void* complexTwiddles;  // those of complex kinds that are no constants
  const void* realTwiddles;     // and those of real ones
  double scale64;               // `scale` before it was rounded
  uint8_t* tableEnd;            // first byte behind the tables
  uint8_t reserved[56];
};
static_assert(sizeof(FftSpec) == 144);

// Sizes in bytes of the spec's buffer, of the buffer that fftInit needs for its duration and of the one that each
// transform may be given. Checks: order above 30 or negative (-15), null pointers (-8), flag (-16), order above 28
// (-15).
VekStatus fftGetSize(FftKind kind, int order, int flag, int hint, int* pSpecSize, int* pInitSize, int* pWorkSize);

// Builds a spec inside pSpecBuffer, at any alignment. pInitBuffer may be null below order 11. Checks: pSpec null (-8),
// order outside 0..28 (-15), pSpecBuffer null (-8), flag (-16), init buffer (-8).
VekStatus fftInit(FftKind kind, FftSpec** pSpec, int order, int flag, int hint, uint8_t* pSpecBuffer,
                  uint8_t* pInitBuffer);

// fftInit for callers that have checked their arguments: needs no init buffer, and fills the spec up to its tableEnd
// only, which may be short of the stated size.
FftSpec* fftPlace(FftKind kind, int order, int flag, int hint, uint8_t* pSpecBuffer);

// The same in memory of its own (-9 if there is none), to be returned by fftFree.
VekStatus fftInitAlloc(FftKind kind, FftSpec** pSpec, int order, int flag, int hint);
VekStatus fftFree(FftSpec* spec);

// N elements to their spectrum and back, in place if src == dst; other overlaps are not allowed. work may be null: the
// kernels work in the destination. In single precision the relative error in the 2-norm stays below
// 0.6e-7 * sqrt(order) + 1e-7 (about half of it for random data), that of one bin below 1e-6 of the spectrum's root
// mean square for orders up to 20. Checks: spec null (-8), its id (-17), src or dst null (-8).
VekStatus fftForward(const Vek32f* src, Vek32f* dst, const FftSpec* spec, uint8_t* work);
VekStatus fftForward(const Vek64f* src, Vek64f* dst, const FftSpec* spec, uint8_t* work);
VekStatus fftForward(const Vek32fc* src, Vek32fc* dst, const FftSpec* spec, uint8_t* work);
VekStatus fftForward(const Vek64fc* src, Vek64fc* dst, const FftSpec* spec, uint8_t* work);
VekStatus fftInverse(const Vek32f* src, Vek32f* dst, const FftSpec* spec, uint8_t* work);
VekStatus fftInverse(const Vek64f* src, Vek64f* dst, const FftSpec* spec, uint8_t* work);
VekStatus fftInverse(const Vek32fc* src, Vek32fc* dst, const FftSpec* spec, uint8_t* work);
VekStatus fftInverse(const Vek64fc* src, Vek64fc* dst, const FftSpec* spec, uint8_t* work);

// The same without a spec, times a factor, for callers that hold the tables: fftTableSize bytes, at any alignment.
int64_t fftTableSize(FftKind kind, int order);
void fftFillTable(FftKind kind, int order, void* table);
void fftForwardBy(const Vek32f* src, Vek32f* dst, int order, const float* table, float scale);
void fftForwardBy(const Vek64f* src, Vek64f* dst, int order, const double* table, double scale);
void fftForwardBy(const Vek32fc* src, Vek32fc* dst, int order, const float* table, float scale);
void fftForwardBy(const Vek64fc* src, Vek64fc* dst, int order, const double* table, double scale);
void fftInverseBy(const Vek32f* src, Vek32f* dst, int order, const float* table, float scale);
void fftInverseBy(const Vek64f* src, Vek64f* dst, int order, const double* table, double scale);
void fftInverseBy(const Vek32fc* src, Vek32fc* dst, int order, const float* table, float scale);
void fftInverseBy(const Vek64fc* src, Vek64fc* dst, int order, const double* table, double scale);

// srcDst *= src, bin by bin. Real kinds: packed spectra of len elements (an odd len has no bin N/2: element 0, then
// pairs). Complex kinds: len bins. Checks: null pointers (-8), len below 1 (-6).
VekStatus fftMulSpectra(const Vek32f* src, Vek32f* srcDst, int len);
VekStatus fftMulSpectra(const Vek64f* src, Vek64f* srcDst, int len);
VekStatus fftMulSpectra(const Vek32fc* src, Vek32fc* srcDst, int len);
VekStatus fftMulSpectra(const Vek64fc* src, Vek64fc* srcDst, int len);

// Convolution of N elements, cyclic: forward both, multiply, back. What lies between need not be a spectrum: the steps
// that only a spectrum's user wants are left out, and no other function may see it. src may have zeros from element
// `count` on: they are not read. Otherwise as above; dst may be src.
VekStatus fftConvForward(const Vek32f* src, int64_t count, Vek32f* dst, const FftSpec* spec);
VekStatus fftConvForward(const Vek64f* src, int64_t count, Vek64f* dst, const FftSpec* spec);
VekStatus fftConvForward(const Vek32fc* src, int64_t count, Vek32fc* dst, const FftSpec* spec);
VekStatus fftConvForward(const Vek64fc* src, int64_t count, Vek64fc* dst, const FftSpec* spec);
VekStatus fftConvMultiply(const Vek32f* src, Vek32f* srcDst, const FftSpec* spec);
VekStatus fftConvMultiply(const Vek64f* src, Vek64f* srcDst, const FftSpec* spec);
VekStatus fftConvMultiply(const Vek32fc* src, Vek32fc* srcDst, const FftSpec* spec);
VekStatus fftConvMultiply(const Vek64fc* src, Vek64fc* srcDst, const FftSpec* spec);
// Multiplies by the same of the elements in the opposite order, conjugated: the way to autocorrelations.
VekStatus fftConvPower(Vek32f* srcDst, const FftSpec* spec);
VekStatus fftConvPower(Vek32fc* srcDst, const FftSpec* spec);
VekStatus fftConvInverse(const Vek32f* src, Vek32f* dst, const FftSpec* spec);
VekStatus fftConvInverse(const Vek64f* src, Vek64f* dst, const FftSpec* spec);
VekStatus fftConvInverse(const Vek32fc* src, Vek32fc* dst, const FftSpec* spec);
VekStatus fftConvInverse(const Vek64fc* src, Vek64fc* dst, const FftSpec* spec);

}  // namespace vek::VEK_FFT_SLOT

namespace vek::VEK_SLOT {
using namespace vek::VEK_FFT_SLOT;
}

#endif
