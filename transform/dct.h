// SPDX-License-Identifier: Apache-2.0
// The cosine transforms' spec and the ways in which they are computed.
#ifndef VEK_TRANSFORM_DCT_H
#define VEK_TRANSFORM_DCT_H

#include "transform/fft.h"

namespace vek::VEK_SLOT {

constexpr int32_t kDctId = 21;

// At the first 64-byte boundary of the caller's buffer; the tables follow. Both directions share them, but for those of
// the direct sums, so that a spec serves the other direction too.
struct DctSpec {
  int32_t id;
  int32_t len;
  int32_t hint;
  int32_t workSize;
  int32_t ownsMemory;
  float dcScale;
  float acScale;
  int32_t smallKernel;
  int32_t viaPow2Fft;
  int32_t viaLargeFft;
  float* table;       // cosines, or the roots that turn a spectrum into cosine coefficients
  FftSpec* fft;       // complex, of len/2 or of the convolution's length
  Vek32fc* chirp;     // exp(-i pi j^2 / M), j < M
  Vek32fc* response;  // the conjugate chirp's spectrum, over P
  void* memBlock;
  int32_t slot;     // whose code made it
  int32_t forward;  // whose direct sums the table is for
  int32_t reserved[2];
};
static_assert(sizeof(DctSpec) == 96);

// Lengths below this, but for powers of two, are summed directly.
constexpr int kDctDirectLimit = 86;

// The transforms, by path; x may be y. The work buffer is aligned and large enough.
void dctSmall(const float* x, float* y, int len, bool forward);  // 1, 2, 4, 8, 16
void dctDirect(const float* x, float* y, const DctSpec* spec, float* work, bool forward);
void dctPow2(const float* x, float* y, const DctSpec* spec, bool forward);
void dctChirp(const float* x, float* y, const DctSpec* spec, Vek32fc* work, bool forward);

// The table builders; each fills what its transform reads behind the header.
void buildDirect(DctSpec* spec, bool forward);
void buildPow2(DctSpec* spec);
void buildChirp(DctSpec* spec);
int64_t chirpPoints(int len);  // P

}  // namespace vek::VEK_SLOT

#endif
