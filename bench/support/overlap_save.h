// SPDX-License-Identifier: Apache-2.0
// Block convolution with FFTW, the peer of long filters and convolutions.
#ifndef VEK_BENCH_OVERLAP_SAVE_H
#define VEK_BENCH_OVERLAP_SAVE_H

#include <stddef.h>

#if __has_include(<fftw3.h>)
#include <fftw3.h>
#define VEK_HAVE_FFTW 1

#include <algorithm>

#include "bench/support/rows.h"

namespace vekbench {

// Blocks of at least four times the taps, or one that holds all outputs. Taps are transformed once.
class OverlapSave {
 public:
  OverlapSave(const float* taps, size_t count, size_t outputs)
      : taps_(count),
        length_(lengthFor(count, outputs)),
        block_(length_),
        spectrum_(length_ + 2),
        filter_(length_ + 2) {
    forward_ = fftwf_plan_dft_r2c_1d(int(length_), block_.data(), bins(spectrum_), FFTW_MEASURE);
    inverse_ = fftwf_plan_dft_c2r_1d(int(length_), bins(spectrum_), block_.data(), FFTW_MEASURE);
    for (size_t i = 0; i < length_; ++i) block_[i] = i < count ? taps[i] / float(length_) : 0;
    fftwf_execute_dft_r2c(forward_, block_.data(), bins(filter_));
  }
  OverlapSave(const OverlapSave&) = delete;
  OverlapSave& operator=(const OverlapSave&) = delete;
  ~OverlapSave() {
    fftwf_destroy_plan(forward_);
    fftwf_destroy_plan(inverse_);
  }

  // x holds taps - 1 samples more than there are outputs.
  void run(const float* x, float* y, size_t n) {
    const size_t step = length_ - taps_ + 1;
    for (size_t done = 0; done < n; done += step) {
      const size_t count = std::min(step, n - done), filled = count + taps_ - 1;
      std::copy(x + done, x + done + filled, block_.data());
      std::fill(block_.data() + filled, block_.data() + length_, 0.0f);
      fftwf_execute(forward_);
      for (size_t i = 0; i < length_ + 2; i += 2) {
        const float re = spectrum_[i] * filter_[i] - spectrum_[i + 1] * filter_[i + 1];
        spectrum_[i + 1] = spectrum_[i] * filter_[i + 1] + spectrum_[i + 1] * filter_[i];
        spectrum_[i] = re;
      }
      fftwf_execute(inverse_);
      std::copy(block_.data() + taps_ - 1, block_.data() + filled, y + done);
    }
  }

 private:
  static size_t lengthFor(size_t taps, size_t outputs) {
    size_t all = 8, some = 8;
    while (all < outputs + taps - 1) all *= 2;
    while (some < 4 * taps) some *= 2;
    return std::min(all, some);
  }
  static fftwf_complex* bins(Array<float>& a) { return reinterpret_cast<fftwf_complex*>(a.data()); }

  size_t taps_, length_;
  Array<float> block_, spectrum_, filter_;
  fftwf_plan forward_, inverse_;
};

}  // namespace vekbench

#endif
#endif
