// SPDX-License-Identifier: Apache-2.0
// The internal Fourier engine of every length: complex and real data in single and double precision, one transform or
// many. Powers of two go through the engine of fft.h where that is best, products of small primes through passes of
// mixed radix, other lengths through sums or convolutions with a chirp. Nothing here is exported, and nothing here
// checks its arguments: the functions on top do. A source that calls it is compiled for VEK_FFT_SLOTS, so that it links
// to the engine of its own slot.
#ifndef VEK_TRANSFORM_DFT_H
#define VEK_TRANSFORM_DFT_H

#include <stdint.h>

#include "vek/types.h"

namespace vek::VEK_SLOT {

// What a spec transforms; the value is the id in its first word. Real data of length N has a spectrum of N/2+1 complex
// numbers, bins 0 .. N/2; the imaginary parts of bin 0 and (N even) bin N/2 are written as 0 and not read.
enum DftKind : int32_t { kDftReal32 = 26, kDftReal64 = 27, kDftComplex32 = 28, kDftComplex64 = 29 };

constexpr int64_t kDftLongest = int64_t(1) << 27;

// Lies at the first 64-byte boundary of the caller's buffer, its tables behind it. It holds no pointers, so that it may
// be copied to any other place of the same alignment, and is read-only after dftPlace: any number of threads may
// transform with it.
struct DftSpec;

// Bytes of the buffers, whatever their alignment: of the spec, of the work buffer of one transform, and of the one of
// many. A size may be 0, and the buffer then null.
struct DftSizes {
  int64_t spec, work, workMany;
};
// 1 <= n <= kDftLongest.
DftSizes dftSizes(DftKind kind, int64_t n);

// Builds a spec inside the buffer and returns it; the same bytes for the same kind and length. No memory is allocated.
DftSpec* dftPlace(DftKind kind, int64_t n, uint8_t* specBuffer);

// What dftPlace was given (id 0 in memory that holds no spec is for the caller to check: the first word is the kind).
DftKind dftKind(const DftSpec* spec);
int64_t dftLength(const DftSpec* spec);
DftSizes dftSizes(const DftSpec* spec);

// N elements to their spectrum and back, times `scale`. Forward is exp(-2 pi i jk/N), neither way divides by N. Out of
// place the source is kept; in place both pointers are the same address (real data and its spectrum then share an array
// of N/2+1 complex numbers); other overlaps are not allowed. `work` is dftSizes().work bytes, at any alignment.
void dftForward(const Vek32fc* src, Vek32fc* dst, const DftSpec* spec, float scale, uint8_t* work);
void dftForward(const Vek64fc* src, Vek64fc* dst, const DftSpec* spec, double scale, uint8_t* work);
void dftForward(const Vek32f* src, Vek32fc* dst, const DftSpec* spec, float scale, uint8_t* work);
void dftForward(const Vek64f* src, Vek64fc* dst, const DftSpec* spec, double scale, uint8_t* work);
void dftInverse(const Vek32fc* src, Vek32fc* dst, const DftSpec* spec, float scale, uint8_t* work);
void dftInverse(const Vek64fc* src, Vek64fc* dst, const DftSpec* spec, double scale, uint8_t* work);
void dftInverse(const Vek32fc* src, Vek32f* dst, const DftSpec* spec, float scale, uint8_t* work);
void dftInverse(const Vek64fc* src, Vek64f* dst, const DftSpec* spec, double scale, uint8_t* work);

// `count` transforms: element e of transform t is at t * distance + e * stride, each counted in elements of its own
// side. No two elements of a side share a place. In place needs the same address and, for complex data, the same
// strides and distances on both sides; for real data strides of 1 and a real distance of twice the complex one.
struct DftBatch {
  int64_t count;
  int64_t srcStride, srcDistance;
  int64_t dstStride, dstDistance;
};

// `work` is dftSizes().workMany bytes.
void dftForward(const Vek32fc* src, Vek32fc* dst, const DftSpec* spec, DftBatch batch, float scale, uint8_t* work);
void dftForward(const Vek64fc* src, Vek64fc* dst, const DftSpec* spec, DftBatch batch, double scale, uint8_t* work);
void dftForward(const Vek32f* src, Vek32fc* dst, const DftSpec* spec, DftBatch batch, float scale, uint8_t* work);
void dftForward(const Vek64f* src, Vek64fc* dst, const DftSpec* spec, DftBatch batch, double scale, uint8_t* work);
void dftInverse(const Vek32fc* src, Vek32fc* dst, const DftSpec* spec, DftBatch batch, float scale, uint8_t* work);
void dftInverse(const Vek64fc* src, Vek64fc* dst, const DftSpec* spec, DftBatch batch, double scale, uint8_t* work);
void dftInverse(const Vek32fc* src, Vek32f* dst, const DftSpec* spec, DftBatch batch, float scale, uint8_t* work);
void dftInverse(const Vek64fc* src, Vek64f* dst, const DftSpec* spec, DftBatch batch, double scale, uint8_t* work);

}  // namespace vek::VEK_SLOT

#endif
