// SPDX-License-Identifier: Apache-2.0
// The internal FFT engine against FFTW. The engine is not exported: the rows call the slots' functions directly.
#include "bench/support/rows.h"

#define VEK_SLOT y8
#include "transform/fft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_FFT_H
#define VEK_SLOT l9
#include "transform/fft.h"

#if __has_include(<fftw3.h>)
#include <fftw3.h>
#endif

namespace {

using vekbench::Array;
using vekbench::Contenders;

const std::vector<size_t> kLengths = {16,   32,    64,    128,   256,    512,    1024,   2048,   4096,
                                      8192, 16384, 32768, 65536, 131072, 262144, 524288, 1048576};

[[maybe_unused]] constexpr size_t kLongestPatient = 65536;

int orderOf(size_t n) { return __builtin_ctzll(n); }

template <class Spec, class Make, class Run>
std::function<void()> engine(Make make, Run run, Array<float> a, Array<float> b, size_t n) {
  Spec* spec = nullptr;
  make(&spec, orderOf(n));
  return [=] { run(a.data(), b.data(), spec); };
}

Contenders contenders(size_t n, bool forward) {
  Array<float> a = vekbench::uniform<float>(n + 2, -1, 1), b(n + 2);
  Contenders rows;
#define VEK_ENGINE(SLOT)                                                                                             \
  rows.push_back({"engine-" #SLOT,                                                                                   \
                  engine<vek::SLOT::FftSpec>(                                                                        \
                      [](vek::SLOT::FftSpec** s, int order) {                                                        \
                        vek::SLOT::fftInitAlloc(vek::SLOT::kFftReal32, s, order, vek::SLOT::kFftNormNone, 0);        \
                      },                                                                                             \
                      [forward](const float* x, float* y, const vek::SLOT::FftSpec* s) {                             \
                        forward ? vek::SLOT::fftForward(x, y, s, nullptr) : vek::SLOT::fftInverse(x, y, s, nullptr); \
                      },                                                                                             \
                      a, b, n)})
  VEK_ENGINE(y8);
  VEK_ENGINE(l9);
#if __has_include(<fftw3.h>)
  Array<float> in(n + 2), out(n + 2);
  const unsigned effort = n <= 16384 ? FFTW_PATIENT : FFTW_MEASURE;
  auto* spectrum = reinterpret_cast<fftwf_complex*>(forward ? out.data() : in.data());
  const fftwf_plan plan = forward ? fftwf_plan_dft_r2c_1d(int(n), in.data(), spectrum, effort)
                                  : fftwf_plan_dft_c2r_1d(int(n), spectrum, out.data(), effort | FFTW_PRESERVE_INPUT);
  for (size_t i = 0; i < n + 2; ++i) in[i] = a[i];
  rows.push_back({n <= 16384 ? "fftw-patient" : "fftw-measure",
                  [plan, in, out] { fftwf_execute(plan); }});  // the arrays stay alive
#endif
  return rows;
}

void specRows(size_t n) {
  using vek::l9::FftSpec;
  auto* row = benchmark::RegisterBenchmark(
      ("fft_spec_32f/engine-l9/" + std::to_string(n)).c_str(), [n](benchmark::State& state) {
        for (auto _ : state) {
          FftSpec* spec = nullptr;
          vek::l9::fftInitAlloc(vek::l9::kFftReal32, &spec, orderOf(n), vek::l9::kFftNormNone, 0);
          vek::l9::fftFree(spec);
        }
      });
  row->MinTime(0.02);
#if __has_include(<fftw3.h>)
  auto* peer = benchmark::RegisterBenchmark(
      ("fft_spec_32f/fftw-measure/" + std::to_string(n)).c_str(), [n](benchmark::State& state) {
        Array<float> in(n + 2), out(n + 2);
        for (auto _ : state) {
          fftwf_forget_wisdom();
          const fftwf_plan plan =
              fftwf_plan_dft_r2c_1d(int(n), in.data(), reinterpret_cast<fftwf_complex*>(out.data()), FFTW_MEASURE);
          fftwf_destroy_plan(plan);
        }
      });
  peer->Iterations(1);
#endif
}

}  // namespace

int main(int argc, char** argv) {
  vekbench::rows(
      "fft_fwd_32f", [](size_t n) { return contenders(n, true); }, kLengths);
  vekbench::rows(
      "fft_inv_32f", [](size_t n) { return contenders(n, false); }, kLengths);
  for (size_t n : {1024u, 65536u, 1048576u}) specRows(n);
  return vekbench::runAll(argc, argv);
}
