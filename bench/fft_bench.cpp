// SPDX-License-Identifier: Apache-2.0
// The internal FFT engine against FFTW. The engine is not exported: the rows call the slots' functions directly. FFTW
// runs as it chooses for this processor ("fftw") and, from a second copy of the library that was told of no AVX, with
// its SSE2 kernels ("fftw-sse2"), where the kernel lets a program do that.
//
// FFTW's plans are its most patient. The first run takes about ten minutes to make them all; it keeps them in files
// beside the program, or in those that --wisdom=NAME names, and later runs read them.
#include "bench/support/rows.h"

#define VEK_SLOT y8
#include "transform/fft.h"
#undef VEK_SLOT
#undef VEK_TRANSFORM_FFT_H
#define VEK_SLOT l9
#include "transform/fft.h"

#if __has_include(<fftw3.h>)
#include <dlfcn.h>
#include <fftw3.h>

#include "bench/support/without_avx.h"
#endif

namespace {

using vekbench::Array;
using Run = std::function<void()>;

constexpr int kFirstOrder = 4, kLastOrder = 20;

// A row whose work is prepared when its turn comes: plans take long, and a filter may leave most of them out.
enum Measure { kPerElement, kWholeCall };
template <class Prepare>
void row(const std::string& name, int order, Prepare prepare, Measure measure = kPerElement) {
  const size_t n = size_t(1) << order;
  benchmark::RegisterBenchmark((name + "/" + std::to_string(n)).c_str(), [=](benchmark::State& state) {
    const Run run = prepare(order);
    if (!run) return state.SkipWithError("not on this machine");
    run();
    for (auto _ : state) {
      run();
      benchmark::ClobberMemory();
    }
    if (measure == kWholeCall) return;
    state.counters["ns_per_element"] = benchmark::Counter(
        double(n) * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  })->MinTime(0.02);
}

// ---- the engine ----------------------------------------------------------------------------------------------------

#define VEK_ENGINE(SLOT)                                                                                    \
  struct SLOT {                                                                                             \
    using Spec = vek::SLOT::FftSpec;                                                                        \
    static Spec* make(int order) {                                                                          \
      Spec* spec = nullptr;                                                                                 \
      vek::SLOT::fftInitAlloc(vek::SLOT::kFftReal32, &spec, order, vek::SLOT::kFftNormNone, 0);             \
      return spec;                                                                                          \
    }                                                                                                       \
    static void free(Spec* spec) { vek::SLOT::fftFree(spec); }                                              \
    static size_t workSize(int order) {                                                                     \
      int spec, init, work;                                                                                 \
      vek::SLOT::fftGetSize(vek::SLOT::kFftReal32, order, vek::SLOT::kFftNormNone, 0, &spec, &init, &work); \
      return size_t(work);                                                                                  \
    }                                                                                                       \
    static void run(bool forward, const float* x, float* y, const Spec* spec, uint8_t* work) {              \
      forward ? vek::SLOT::fftForward(x, y, spec, work) : vek::SLOT::fftInverse(x, y, spec, work);          \
    }                                                                                                       \
  };
VEK_ENGINE(y8)
VEK_ENGINE(l9)

template <class Engine>
Run engine(int order, bool forward) {
  const size_t n = size_t(1) << order;
  const Array<float> x = vekbench::uniform<float>(n + 2, -1, 1), y(n + 2);
  const Array<uint8_t> work(Engine::workSize(order) + 64);
  const std::shared_ptr<typename Engine::Spec> spec(Engine::make(order), Engine::free);
  return [=] { Engine::run(forward, x.data(), y.data(), spec.get(), work.data()); };
}

template <class Engine>
Run engineSpec(int order) {
  return [=] { Engine::free(Engine::make(order)); };
}

// ---- FFTW ----------------------------------------------------------------------------------------------------------

#if __has_include(<fftw3.h>)

std::string wisdomName;

// The functions of one copy of the library, and where its wisdom is kept.
struct Fftw {
  decltype(&fftwf_plan_dft_r2c_1d) forward = fftwf_plan_dft_r2c_1d;
  decltype(&fftwf_plan_dft_c2r_1d) inverse = fftwf_plan_dft_c2r_1d;
  decltype(&fftwf_execute) execute = fftwf_execute;
  decltype(&fftwf_destroy_plan) destroy = fftwf_destroy_plan;
  decltype(&fftwf_forget_wisdom) forget = fftwf_forget_wisdom;
  decltype(&fftwf_import_wisdom_from_filename) import = fftwf_import_wisdom_from_filename;
  decltype(&fftwf_export_wisdom_to_filename) keep = fftwf_export_wisdom_to_filename;
  std::string wisdom;
  bool narrow = false;
};

// Calls f, which makes a plan, as the copy of the library is to see the processor.
template <class F>
void planning(const Fftw& fftw, F f) {
  if (fftw.narrow) {
    vekbench::withoutAvx(f);
  } else {
    f();
  }
}

const Fftw& wide() {
  static const Fftw fftw = [] {
    Fftw f;
    f.wisdom = wisdomName + ".wisdom";
    f.import(f.wisdom.c_str());
    return f;
  }();
  return fftw;
}

// A copy in a namespace of its own; null if there is none or CPUID cannot be made to fault.
const Fftw* narrow() {
  static const Fftw fftw = [] {
    Fftw f;
    void* library = dlmopen(LM_ID_NEWLM, "libfftw3f.so.3", RTLD_NOW | RTLD_LOCAL);
    if (!library) return f;
    const auto find = [=]<class T>(T& function, const char* name) { function = T(dlsym(library, name)); };
    find(f.forward, "fftwf_plan_dft_r2c_1d");
    find(f.inverse, "fftwf_plan_dft_c2r_1d");
    find(f.execute, "fftwf_execute");
    find(f.destroy, "fftwf_destroy_plan");
    find(f.import, "fftwf_import_wisdom_from_filename");
    find(f.keep, "fftwf_export_wisdom_to_filename");
    f.wisdom = wisdomName + "-sse2.wisdom";
    f.narrow = vekbench::withoutAvx([&] { f.import(f.wisdom.c_str()); });
    return f;
  }();
  return fftw.narrow ? &fftw : nullptr;
}

Run peer(const Fftw& fftw, int order, bool forward) {
  const int n = 1 << order;
  const Array<float> x(size_t(n) + 2), y(size_t(n) + 2);
  // Above this length even the plans of the second copy would take minutes.
  const unsigned effort = fftw.narrow && order > 16 ? FFTW_MEASURE : FFTW_PATIENT;
  fftwf_plan plan = nullptr;
  planning(fftw, [&] {
    plan = forward ? fftw.forward(n, x.data(), reinterpret_cast<fftwf_complex*>(y.data()), effort)
                   : fftw.inverse(n, reinterpret_cast<fftwf_complex*>(x.data()), y.data(),
                                  effort | FFTW_PRESERVE_INPUT);  // as the engine does
  });
  fftw.keep(fftw.wisdom.c_str());
  const Array<float> data = vekbench::uniform<float>(x.size(), -1, 1);
  for (size_t i = 0; i < x.size(); ++i) x[i] = data[i];
  const std::shared_ptr<fftwf_plan_s> owned(plan, fftw.destroy);
  return [=, execute = fftw.execute] { (void)y, execute(owned.get()); };  // y stays alive with the plan
}

// Planning from nothing; the wisdom of the other rows comes back at the end.
Run peerSpec(int order) {
  const int n = 1 << order;
  const Array<float> x(size_t(n) + 2), y(size_t(n) + 2);
  const std::shared_ptr<void> restore(nullptr, [](void*) { wide().import(wide().wisdom.c_str()); });
  return [=] {
    (void)restore;
    fftwf_forget_wisdom();
    fftwf_destroy_plan(fftwf_plan_dft_r2c_1d(n, x.data(), reinterpret_cast<fftwf_complex*>(y.data()), FFTW_MEASURE));
  };
}

#endif

void rows(bool forward) {
  const std::string name = forward ? "fft_fwd_32f/" : "fft_inv_32f/";
  for (int order = kFirstOrder; order <= kLastOrder; ++order) {
    row(name + "vek-y8", order, [=](int o) { return engine<y8>(o, forward); });
    row(name + "vek-l9", order, [=](int o) { return engine<l9>(o, forward); });
#if __has_include(<fftw3.h>)
    row(name + "fftw", order, [=](int o) { return peer(wide(), o, forward); });
    row(name + "fftw-sse2", order, [=](int o) { return narrow() ? peer(*narrow(), o, forward) : Run(); });
#endif
  }
}

void specRows() {
  for (int order = kFirstOrder; order <= kLastOrder; ++order) {
    row("fft_spec_32f/vek-l9", order, engineSpec<l9>, kWholeCall);
#if __has_include(<fftw3.h>)
    row("fft_spec_32f/fftw-measure", order, peerSpec, kWholeCall);
#endif
  }
}

}  // namespace

int main(int argc, char** argv) {
#if __has_include(<fftw3.h>)
  wisdomName = argv[0];
  for (int i = 1; i < argc; ++i) {
    const std::string option = "--wisdom=", argument = argv[i];
    if (argument.compare(0, option.size(), option) != 0) continue;
    wisdomName = argument.substr(option.size());
    for (int k = i; k < argc; ++k) argv[k] = argv[k + 1];
    --argc, --i;
  }
#endif
  rows(true);
  rows(false);
  specRows();
  return vekbench::runAll(argc, argv);
}
