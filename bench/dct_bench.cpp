// SPDX-License-Identifier: Apache-2.0
// Cosine transforms against an open library.
#include <math.h>

#include "bench/support/rows.h"

#if __has_include(<fftw3.h>)
#include <fftw3.h>
#endif

namespace {

using vekbench::Array;
using vekbench::Contenders;

const std::vector<size_t> kLengths = {8, 16, 64, 85, 86, 256, 1000, 1024, 4096, 65536, 1000000};
constexpr size_t kLongestPlain = 1024;

// The sum as a user would write it, over a table of cosines that is made once.
void plainDct(const float* x, float* y, const float* cosines, size_t n, bool forward) {
  for (size_t k = 0; k < n; ++k) {
    float sum = 0;
    for (size_t j = 0; j < n; ++j) sum += x[j] * (forward ? cosines[k * n + j] : cosines[j * n + k]);
    y[k] = sum;
  }
}

// A spec belongs to the slot that built it; it is made before anything is timed.
void ownRows(const std::string& workload, size_t n, bool forward) {
  for (auto& [label, slot] : vekbench::slotsToTime()) {
    vek::setSlotForTest(slot);
    Array<float> x = vekbench::uniform<float>(n, -1, 1), y(n);
    Array<Vek8u> work(64 * n + 40000);
    VeksDCTFwdSpec_32f* fwd = nullptr;
    VeksDCTInvSpec_32f* inv = nullptr;
    if (forward) {
      veksDCTFwdInitAlloc_32f(&fwd, int(n), vekAlgHintNone);
    } else {
      veksDCTInvInitAlloc_32f(&inv, int(n), vekAlgHintNone);
    }
    vekbench::registerRow(workload + "/" + label, n, slot, [=] {
      if (forward) {
        veksDCTFwd_32f(x.data(), y.data(), fwd, work.data());
      } else {
        veksDCTInv_32f(x.data(), y.data(), inv, work.data());
      }
    });
  }
}

Contenders others(size_t n, bool forward) {
  Array<float> x = vekbench::uniform<float>(n, -1, 1), y(n);
  Contenders rows;
  if (n <= kLongestPlain) {
    Array<float> cosines(n * n);
    for (size_t k = 0; k < n; ++k)
      for (size_t j = 0; j < n; ++j)
        cosines[k * n + j] = float(cos(3.14159265358979323846 * double((2 * j + 1) * k) / double(2 * n)) *
                                   sqrt((k ? 2.0 : 1.0) / double(n)));
    rows.push_back({"plain", [=]() mutable {
                      plainDct(x.data(), y.data(), cosines.data(), n, forward);
                      vekbench::keep(y);
                    }});
  }
#if __has_include(<fftw3.h>)
  Array<float> in(n), out(n);
  // Measured planning of the longest transforms would take minutes.
  const fftwf_plan plan = fftwf_plan_r2r_1d(int(n), in.data(), out.data(), forward ? FFTW_REDFT10 : FFTW_REDFT01,
                                            n <= 4096 ? FFTW_MEASURE : FFTW_ESTIMATE);
  for (size_t i = 0; i < n; ++i) in[i] = x[i];
  rows.push_back({"fftw", [plan, in, out] { fftwf_execute(plan); }});  // the arrays stay alive
#endif
  return rows;
}

}  // namespace

int main(int argc, char** argv) {
  for (bool forward : {true, false}) {
    const std::string workload = forward ? "dct_fwd_32f" : "dct_inv_32f";
    for (size_t n : kLengths) {
      ownRows(workload, n, forward);
      vekbench::rows(workload, [=](size_t len) { return others(len, forward); }, {n});
    }
  }
  return vekbench::runAll(argc, argv);
}
