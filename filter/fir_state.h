// SPDX-License-Identifier: Apache-2.0
// The state behind every FIR filter, single- and multi-rate, of all four kinds of taps.
#ifndef VEK_FILTER_FIR_STATE_H
#define VEK_FILTER_FIR_STATE_H

#include "core/simd/convert.h"
#include "filter/fir_kernel.h"
#include "transform/fft.h"
#include "vek/fir.h"

namespace vek::VEK_SLOT {

// Everything lives in one block, which begins with this; pointers lead to elements of the taps' type.
struct FirState {
  uint32_t id;
  int32_t ownsMemory;
  int32_t tapsLen;
  int32_t fftLen;  // -1 without a transform path, and always in multi-rate states
  int32_t upFactor, upPhase, downFactor, downPhase;
  int32_t slot;     // whose code made it: slots differ in the layout
  int32_t blocked;  // multi-rate: by streams of samples, else output by output
  void* taps;       // single-rate: last tap first; multi-rate: in the order of firmr.h
  void* delay;      // past samples, oldest first, from historyAt on; new ones are put behind them
  int64_t historyAt;
  void* scratch;
  FftSpec* fft;  // the transform, the taps transformed, and one block of samples
  void* spectrum;
  void* block;
};

constexpr int64_t kFirHeaderBytes = 160;
static_assert(sizeof(FirState) <= kFirHeaderBytes);
constexpr int64_t kFirScratch = 4096;  // samples

namespace {

// Single-rate and multi-rate ids, and where the transform takes over: taps from which it is built, calls longer than
// which use it.
template <class Element, int Parts, uint32_t Single, uint32_t Multi, int FftTaps, int FftCall>
struct FirKindOf {
  using T = Element;
  static constexpr int C = Parts;
  static constexpr uint32_t single = Single, multi = Multi;
  // The real single-precision kind knows its multi-rate states by two more ids, "FI33" and "FI34".
  static VEK_INLINE bool isMulti(uint32_t id) {
    return id == Multi || (Multi == 0x46493033 && (id == 0x46493333 || id == 0x46493334));
  }
  static constexpr int fftTaps = FftTaps, fftCall = FftCall;
  static constexpr int64_t bytes = C * int64_t(sizeof(T));  // of a tap
};
using Fir32f = FirKindOf<float, 1, 0x46493031, 0x46493033, 64, 511>;
using Fir32fc = FirKindOf<float, 2, 0x46493032, 0x46493034, 16, 255>;
using Fir64f = FirKindOf<double, 1, 0x46493137, 0x46493139, 32, 511>;
using Fir64fc = FirKindOf<double, 2, 0x46493138, 0x46493230, 16, 255>;

VEK_INLINE int64_t roundUp(int64_t n, int64_t step) { return (n + step - 1) / step * step; }
VEK_INLINE int64_t smaller(int64_t a, int64_t b) { return a < b ? a : b; }
VEK_INLINE int64_t larger(int64_t a, int64_t b) { return a > b ? a : b; }

// Hands out the parts of a state's block one behind the other; with a null start it only counts.
class Parcel {
 public:
  VEK_INLINE explicit Parcel(char* start) : start_(start), used_(0) {}
  template <class T = void>
  VEK_INLINE T* take(int64_t bytes, int64_t alignment = 16) {
    const int64_t at = roundUp(used_, alignment);
    used_ = at + bytes;
    return start_ ? reinterpret_cast<T*>(start_ + at) : nullptr;
  }
  VEK_INLINE int64_t used() const { return used_; }

 private:
  char* start_;
  int64_t used_;
};

VEK_INLINE char* alignedUp(void* p) {
  return reinterpret_cast<char*>((reinterpret_cast<uintptr_t>(p) + 63) & ~uintptr_t(63));
}

template <class T>
VEK_INLINE void copySamples(const T* from, T* to, int64_t n) {
  if (n > 0) __builtin_memmove(to, from, size_t(n) * sizeof(T));
}
template <class T>
VEK_INLINE void clearSamples(T* to, int64_t n) {
  if (n > 0) __builtin_memset(to, 0, size_t(n) * sizeof(T));
}

// Samples come in single precision and are kept in the taps' precision.
VEK_INLINE void takeSamples(const float* from, float* to, int64_t n) { copySamples(from, to, n); }
VEK_INLINE void takeSamples(const float* from, double* to, int64_t n) {
  constexpr int lanes = Pack<double>::lanes;
  int64_t i = 0;
  for (; i + lanes <= n; i += lanes) store(to + i, loadDouble(from + i));
  for (; i < n; ++i) to[i] = from[i];
}
VEK_INLINE void giveSamples(const float* from, float* to, int64_t n) { copySamples(from, to, n); }
VEK_INLINE void giveSamples(const double* from, float* to, int64_t n) {
  constexpr int lanes = Pack<double>::lanes;
  int64_t i = 0;
  for (; i + lanes <= n; i += lanes) storeBytes<16>(to + i, doubleToFloats(load(from + i)));
  for (; i < n; ++i) to[i] = float(from[i]);
}

// The kernels of the kind.
template <class Kind>
VEK_INLINE void slideKind(const Run<typename Kind::T>* runs, int64_t runCount, float* y, int64_t n) {
  if constexpr (Kind::C == 1) {
    slide(runs, runCount, y, n);
  } else {
    slideComplex(runs, runCount, y, n);
  }
}
template <class Kind>
VEK_INLINE void strideKind(const typename Kind::T* taps, int64_t count, const typename Kind::T* x, int64_t step,
                           float* y, int64_t outStep, int64_t n) {
  if constexpr (Kind::C == 1) {
    stride(taps, count, x, step, y, outStep, n);
  } else {
    strideComplex(taps, count, x, step, y, outStep, n);
  }
}

}  // namespace

// Filters numIters iterations with a multi-rate state; pSrc and pDst are flat, and may be one array.
VekStatus runMultiRate32f(FirState* state, const float* src, float* dst, int numIters);
VekStatus runMultiRate32fc(FirState* state, const float* src, float* dst, int numIters);
VekStatus runMultiRate64f(FirState* state, const float* src, float* dst, int numIters);
VekStatus runMultiRate64fc(FirState* state, const float* src, float* dst, int numIters);

}  // namespace vek::VEK_SLOT

#endif
