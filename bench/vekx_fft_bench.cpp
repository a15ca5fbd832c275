// SPDX-License-Identifier: Apache-2.0
// The Fourier transforms of vekx against FFTW and KISS FFT: complex and real, both precisions, both ways, batches.
//
// FFTW's plans are its most patient up to 65,536 points, with 15 seconds for each, and measured above; its real
// inverses keep their input, as vekx does. The first run takes most of an hour to make them all; it keeps them in files
// beside the program, or in those that --wisdom=NAME names, and later runs read them. The rows fft_spec tell what
// making a spec takes, and a measured plan from nothing.
#include <string.h>

#include "bench/support/fftw.h"
#include "bench/support/rows.h"
#include "vekx.h"

#if __has_include(<kissfft/kiss_fft.h>)
#include <kissfft/kiss_fft.h>
#include <kissfft/kiss_fftr.h>
#define VEK_HAVE_KISSFFT 1
#endif

namespace {

using vekbench::Array;
using Run = std::function<void()>;

const int kLengths[] = {16,    32,     64,     128,    256,     512,   1024,  2048,  4096,  8192,   16384,   32768,
                        65536, 131072, 262144, 524288, 1048576,  // powers of two
                        60,    100,    120,    160,    240,     320,   360,   400,   480,   600,    640,     720,
                        800,   882,    960,    1000,   1080,    1152,  1200,  1280,  1440,  1536,   1920,    2000,
                        2400,  3000,   4410,   4800,   9600,    10000, 44100, 48000, 96000, 100000, 1000000,  // smooth
                        7,     11,     13,     17,     31,      61,    101,   127,   251,   257,    509,     1009,
                        2003,  4099,   10007,  65537,  100003,           // primes
                        45,    105,    315,    1155,   3465,    15015};  // odd composites

// What one row transforms: how many arrays, and where their elements lie on both sides.
struct Job {
  int n, count;
  Vek64s stride, distance;  // of real arrays and their spectra the distance is n and n/2+1
  size_t points() const { return size_t(n) * size_t(count); }
};
Job single(int n) { return {n, 1, 1, n}; }
Job rows1000(int n) { return {n, 1000, 1, n}; }
Job columns(int n) { return {n, n, n, 1}; }

// A row whose work is prepared when its turn comes: plans take long, and a filter may leave most of them out.
template <class Prepare>
void row(const std::string& name, const Job& job, int slot, Prepare prepare, bool wholeCall = false) {
  benchmark::RegisterBenchmark((name + "/" + std::to_string(job.n)).c_str(), [=](benchmark::State& state) {
    vek::setSlotForTest(slot);
    const Run run = prepare();
    if (!run) return state.SkipWithError("no plan");
    run();
    for (auto _ : state) {
      run();
      benchmark::ClobberMemory();
    }
    if (wholeCall) return;
    state.counters["ns_per_element"] = benchmark::Counter(
        double(job.points()) * 1e-9, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
  })->MinTime(0.02);
}

// ---- vekx
// ------------------------------------------------------------------------------------------------------------

#define VEKX_KIND(NAME, LABEL, SAMPLE, BIN, PART, REAL, KIND, FORWARD, INVERSE) \
  struct NAME {                                                                 \
    using X = SAMPLE;                                                           \
    using Y = BIN;                                                              \
    using R = PART;                                                             \
    using Spec = VekxFFTSpec_##KIND;                                            \
    static constexpr bool real = REAL;                                          \
    static constexpr const char* label = LABEL;                                 \
    static constexpr auto make = vekxFFTInitAlloc_##KIND;                       \
    static constexpr auto free = vekxFFTFree_##KIND;                            \
    static constexpr auto size = vekxFFTGetSize_##KIND;                         \
    static constexpr auto forward = vekxFFTFwd_##FORWARD;                       \
    static constexpr auto inverse = vekxFFTInv_##INVERSE;                       \
    static constexpr auto forwardMany = vekxFFTFwdMany_##FORWARD;               \
    static constexpr auto inverseMany = vekxFFTInvMany_##INVERSE;               \
  };
VEKX_KIND(Complex32, "32fc", Vek32fc, Vek32fc, float, false, 32fc, 32fc, 32fc)
VEKX_KIND(Complex64, "64fc", Vek64fc, Vek64fc, double, false, 64fc, 64fc, 64fc)
VEKX_KIND(Real32, "32f", float, Vek32fc, float, true, 32f, 32f32fc, 32fc32f)
VEKX_KIND(Real64, "64f", double, Vek64fc, double, true, 64f, 64f64fc, 64fc64f)

// The arrays of a job, random, with room for spectra.
template <class K>
struct Data {
  size_t bins;
  Array<typename K::X> x;
  Array<typename K::Y> y;
  explicit Data(const Job& job)
      : bins(K::real ? size_t(job.n) / 2 + 1 : size_t(job.n)), x(job.points()), y(bins * size_t(job.count)) {
    refill();
  }
  void refill() const {
    const Array<typename K::R> noise = vekbench::uniform<typename K::R>(y.size() * 2, -1, 1);
    memcpy(static_cast<void*>(x.data()), noise.data(), x.size() * sizeof(typename K::X));
    memcpy(static_cast<void*>(y.data()), noise.data(), y.size() * sizeof(typename K::Y));
  }
};

template <class K>
Run own(const Job& job, bool forward) {
  typename K::Spec* made = nullptr;
  if (K::make(&made, job.n, vekxScaleNone) != vekStsNoErr) return nullptr;
  const std::shared_ptr<typename K::Spec> spec(made, K::free);
  Vek64s specSize, one, many;
  K::size(job.n, &specSize, &one, &many);
  const Data<K> d(job);
  const Array<Vek8u> work(size_t(job.count == 1 ? one : many) + 1);
  const Vek64s far = job.stride == 1 ? Vek64s(d.bins) : 1;  // from spectrum to spectrum
  if (job.count == 1) {
    if (forward) return [=] { K::forward(d.x.data(), d.y.data(), spec.get(), work.data()); };
    return [=] { K::inverse(d.y.data(), d.x.data(), spec.get(), work.data()); };
  }
  if (forward)
    return [=] {
      K::forwardMany(d.x.data(), d.y.data(), job.count, job.stride, job.distance, job.stride, far, spec.get(),
                     work.data());
    };
  return [=] {
    K::inverseMany(d.y.data(), d.x.data(), job.count, job.stride, far, job.stride, job.distance, spec.get(),
                   work.data());
  };
}

template <class K>
Run ownSpec(int n) {
  return [=] {
    typename K::Spec* spec = nullptr;
    K::make(&spec, n, vekxScaleNone);
    K::free(spec);
  };
}

// ---- peers
// -----------------------------------------------------------------------------------------------------------

#ifdef VEK_HAVE_FFTW

std::string wisdomName;

template <class R>
std::string wisdomFile() {
  return wisdomName + (sizeof(R) == 4 ? "-32.wisdom" : "-64.wisdom");
}

template <class K>
typename vekbench::Fftw<typename K::R>::Plan plan(const Job& job, bool forward, const Data<K>& d, unsigned effort) {
  using F = vekbench::Fftw<typename K::R>;
  using C = typename F::Complex;
  const int n = job.n, stride = int(job.stride), near = int(job.distance), far = stride == 1 ? int(d.bins) : 1;
  C* y = reinterpret_cast<C*>(d.y.data());
  if constexpr (!K::real) {
    C* x = reinterpret_cast<C*>(d.x.data());
    return F::complex(1, &n, job.count, forward ? x : y, nullptr, stride, near, forward ? y : x, nullptr, stride, near,
                      forward ? FFTW_FORWARD : FFTW_BACKWARD, effort);
  } else if (forward) {
    return F::forward(1, &n, job.count, d.x.data(), nullptr, stride, near, y, nullptr, stride, far, effort);
  } else {
    return F::inverse(1, &n, job.count, y, nullptr, stride, far, d.x.data(), nullptr, stride, near,
                      effort | FFTW_PRESERVE_INPUT);
  }
}

template <class K>
Run fftw(const Job& job, bool forward) {
  using F = vekbench::Fftw<typename K::R>;
  static const bool read = F::import(wisdomFile<typename K::R>().c_str());
  (void)read;
  F::limit(15);
  const Data<K> d(job);
  const auto made = plan<K>(job, forward, d, job.points() > 65536 ? FFTW_MEASURE : FFTW_PATIENT);
  if (!made) return nullptr;
  F::keep(wisdomFile<typename K::R>().c_str());
  d.refill();
  const std::shared_ptr<std::remove_pointer_t<decltype(made)>> owned(made, F::destroy);
  return [=] { (void)d, F::execute(owned.get()); };  // the arrays stay alive with the plan
}

// Planning from nothing; the wisdom of the other rows comes back at the end.
template <class K>
Run fftwSpec(int n) {
  using F = vekbench::Fftw<typename K::R>;
  const Data<K> d(single(n));
  const std::shared_ptr<void> restore(nullptr, [](void*) { F::import(wisdomFile<typename K::R>().c_str()); });
  return [=] {
    (void)restore;
    F::forget();
    F::destroy(plan<K>(single(n), true, d, FFTW_MEASURE));
  };
}

#endif
#ifdef VEK_HAVE_KISSFFT

// Single precision; real data of even length only.
template <class K>
Run kiss(const Job& job, bool forward) {
  const Data<K> d(job);
  auto* const y = reinterpret_cast<kiss_fft_cpx*>(d.y.data());
  if constexpr (!K::real) {
    auto* const x = reinterpret_cast<kiss_fft_cpx*>(d.x.data());
    const std::shared_ptr<std::remove_pointer_t<kiss_fft_cfg>> spec(kiss_fft_alloc(job.n, !forward, nullptr, nullptr),
                                                                    free);
    return [=] { (void)d, kiss_fft(spec.get(), forward ? x : y, forward ? y : x); };
  } else {
    const std::shared_ptr<std::remove_pointer_t<kiss_fftr_cfg>> spec(kiss_fftr_alloc(job.n, !forward, nullptr, nullptr),
                                                                     free);
    if (forward) return [=] { kiss_fftr(spec.get(), d.x.data(), y); };
    return [=] { kiss_fftri(spec.get(), y, d.x.data()); };
  }
}

#endif

// ---- rows
// ------------------------------------------------------------------------------------------------------------

template <class K>
void rowsOf(const std::string& workload, const Job& job) {
  for (const bool forward : {true, false}) {
    const std::string name = workload + (forward ? "_fwd_" : "_inv_") + K::label + "/";
    for (const auto& [label, slot] : vekbench::slotsToTime())
      row(name + "vekx" + label.substr(3), job, slot, [=] { return own<K>(job, forward); });
#ifdef VEK_HAVE_FFTW
    row(name + "fftw", job, 6, [=] { return fftw<K>(job, forward); });
#endif
#ifdef VEK_HAVE_KISSFFT
    if constexpr (sizeof(typename K::R) == 4)
      if (job.count == 1 && (!K::real || job.n % 2 == 0))
        row(name + "kissfft", job, 6, [=] { return kiss<K>(job, forward); });
#endif
  }
}

template <class K>
void allRows() {
  for (int n : kLengths) rowsOf<K>("fft", single(n));
  for (int n : {16, 64, 256}) rowsOf<K>("fft_1000", rows1000(n));
  rowsOf<K>("fft_columns", columns(256));
  for (int n : {16, 256, 1000, 1009, 4096, 65536}) {
    const std::string name = std::string("fft_spec_") + K::label + "/";
    row(
        name + "vekx-l9", single(n), 6, [=] { return ownSpec<K>(n); }, true);
#ifdef VEK_HAVE_FFTW
    row(
        name + "fftw-measure", single(n), 6, [=] { return fftwSpec<K>(n); }, true);
#endif
  }
}

}  // namespace

int main(int argc, char** argv) {
#ifdef VEK_HAVE_FFTW
  wisdomName = argv[0];
  for (int i = 1; i < argc; ++i) {
    const std::string option = "--wisdom=", argument = argv[i];
    if (argument.compare(0, option.size(), option) != 0) continue;
    wisdomName = argument.substr(option.size());
    for (int k = i; k < argc; ++k) argv[k] = argv[k + 1];
    --argc, --i;
  }
#endif
  allRows<Complex32>();
  allRows<Complex64>();
  allRows<Real32>();
  allRows<Real64>();
  return vekbench::runAll(argc, argv);
}
