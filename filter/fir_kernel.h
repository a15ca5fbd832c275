// SPDX-License-Identifier: Apache-2.0
// Sliding sums of products: what direct filtering, multi-rate filtering, convolution and correlation all come down to.
#ifndef VEK_FILTER_FIR_KERNEL_H
#define VEK_FILTER_FIR_KERNEL_H

#include "core/simd/level.h"

namespace vek::VEK_SLOT {

// One run of taps and the samples it slides over: output i takes the sum of taps[j] * x[i + j] over j < count. Complex
// taps and samples are interleaved pairs, and i, j, count number the pairs.
template <class T>
struct Run {
  const T* x;
  const T* taps;
  int64_t count;
};

// Output i < n is the sum over all runs, rounded once to the type of y, which overlaps none of the samples. Only
// samples that belong to an output are read, and each product appears in exactly the sums that it belongs to.
void slide(const Run<float>* runs, int64_t runCount, float* y, int64_t n);
void slide(const Run<double>* runs, int64_t runCount, float* y, int64_t n);
void slideComplex(const Run<float>* runs, int64_t runCount, float* y, int64_t n);
void slideComplex(const Run<double>* runs, int64_t runCount, float* y, int64_t n);
// The same with every tap conjugated.
void slideConjugate(const Run<float>* runs, int64_t runCount, float* y, int64_t n);

// Outputs far apart: y[i * outStep] is the sum of taps[j] * x[i * step + j].
void stride(const float* taps, int64_t count, const float* x, int64_t step, float* y, int64_t outStep, int64_t n);
void stride(const double* taps, int64_t count, const double* x, int64_t step, float* y, int64_t outStep, int64_t n);
void strideComplex(const float* taps, int64_t count, const float* x, int64_t step, float* y, int64_t outStep,
                   int64_t n);
void strideComplex(const double* taps, int64_t count, const double* x, int64_t step, float* y, int64_t outStep,
                   int64_t n);

}  // namespace vek::VEK_SLOT

#endif
