// SPDX-License-Identifier: Apache-2.0
// Convolution through the transform: at once, or block by block where one vector is much longer.
#ifndef VEK_FILTER_CONV_FFT_H
#define VEK_FILTER_CONV_FFT_H

#include "core/memory.h"
#include "filter/fir_fft.h"
#include "filter/fir_state.h"

namespace vek::VEK_SLOT {
namespace {

// A transform and some blocks of samples in one piece of memory, for the length of a call.
template <int C>
class FftWorkspace {
 public:
  using Fft = BlockFft<float, C>;
  VEK_INLINE FftWorkspace() : memory_(nullptr) {}
  VEK_INLINE ~FftWorkspace() { release(memory_); }
  FftWorkspace(const FftWorkspace&) = delete;
  FftWorkspace& operator=(const FftWorkspace&) = delete;

  VekStatus open(int order, int blocks) {
    FftSizes sizes;
    VekStatus status = Fft::sizes(order, &sizes);
    if (status != vekStsNoErr) return status;
    length = int64_t(1) << order;
    const int64_t bytes = roundUp(length * C * int64_t(sizeof(float)), 64), tables = roundUp(sizes.spec, 64);
    char* const memory = static_cast<char*>(allocate(tables + larger(blocks * bytes, sizes.init)));
    if (!memory) return vekStsMemAllocErr;
    memory_ = memory;
    a = reinterpret_cast<float*>(memory + tables);
    b = reinterpret_cast<float*>(memory + tables + bytes);
    c = blocks < 3 ? nullptr : reinterpret_cast<float*>(memory + tables + 2 * bytes);
    return Fft::init(&spec_, order, memory, a);
  }
  // Zeros follow the first `count` elements of src.
  VEK_INLINE VekStatus forward(const float* src, int64_t count, float* dst) const {
    return Fft::forward(src, count, dst, spec_);
  }
  VEK_INLINE VekStatus multiply(const float* src, float* srcDst) const { return Fft::multiply(src, srcDst, spec_); }
  VEK_INLINE VekStatus power(float* srcDst) const { return Fft::power(srcDst, spec_); }
  VEK_INLINE VekStatus inverse(const float* src, float* dst) const { return Fft::inverse(src, dst, spec_); }

  int64_t length;  // of a block
  float *a, *b, *c;

 private:
  void* memory_;
  FftSpec* spec_;
};

// One of the two vectors: as it is, or in the opposite order with its elements conjugated.
struct Operand {
  const float* p;
  int64_t count;
  bool reversed;
};

// The operand's elements in the order of the convolution: where they are, or in `room`.
template <int C>
VEK_INLINE const float* inOrder(const Operand& v, float* room) {
  if (!v.reversed) return v.p;
  if constexpr (C == 1) {
    for (int64_t i = 0; i < v.count; ++i) room[i] = v.p[v.count - 1 - i];
  } else {
    for (int64_t i = 0; i < v.count; ++i) {
      room[2 * i] = v.p[2 * (v.count - 1 - i)];
      room[2 * i + 1] = -v.p[2 * (v.count - 1 - i) + 1];
    }
  }
  return room;
}

// Elements first .. first+n-1 of the convolution of h and x, by one transform that holds all of it.
template <int C>
VEK_NOINLINE VekStatus convolveAtOnce(const Operand& h, const Operand& x, int64_t first, float* y, int64_t n) {
  int order = 2;
  while ((int64_t(1) << order) < h.count + x.count - 1) ++order;
  FftWorkspace<C> work;
  VekStatus status = work.open(order, 2);
  if (status != vekStsNoErr) return status;
  if ((status = work.forward(inOrder<C>(h, work.b), h.count, work.a)) != vekStsNoErr) return status;
  if ((status = work.forward(inOrder<C>(x, work.b), x.count, work.b)) != vekStsNoErr) return status;
  if ((status = work.multiply(work.a, work.b)) != vekStsNoErr) return status;
  if ((status = work.inverse(work.b, work.a)) != vekStsNoErr) return status;
  copySamples(work.a + C * first, y, C * n);
  return vekStsNoErr;
}

// The same block by block, h being the shorter: each block takes in the h.count - 1 elements of x before its own, and
// its first outputs, wrapped around by the transform, are left out.
template <int C>
VEK_NOINLINE VekStatus convolveBlocks(const Operand& h, const float* x, int64_t xCount, int64_t first, float* y,
                                      int64_t n) {
  int k = 1;
  while ((int64_t(1) << k) < 2 * h.count) ++k;
  FftWorkspace<C> work;
  VekStatus status = work.open(k + 1, 3);
  if (status != vekStsNoErr) return status;
  if ((status = work.forward(inOrder<C>(h, work.b), h.count, work.a)) != vekStsNoErr) return status;
  const int64_t history = h.count - 1, step = work.length - history;
  for (int64_t done = 0; done < n; done += step) {
    const int64_t count = smaller(step, n - done), start = first + done - history;
    const float* block = x + C * start;
    if (start < 0 || start + work.length > xCount) {
      const int64_t head = larger(0, -start), inside = larger(head, smaller(work.length, xCount - start));
      clearSamples(work.b, C * head);
      copySamples(x + C * (start + head), work.b + C * head, C * (inside - head));
      clearSamples(work.b + C * inside, C * (work.length - inside));
      block = work.b;
    }
    if ((status = work.forward(block, work.length, work.c)) != vekStsNoErr) return status;
    if ((status = work.multiply(work.a, work.c)) != vekStsNoErr) return status;
    if ((status = work.inverse(work.c, work.b)) != vekStsNoErr) return status;
    copySamples(work.b + C * history, y + C * done, C * count);
  }
  return vekStsNoErr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
