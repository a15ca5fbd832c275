// SPDX-License-Identifier: Apache-2.0
// FFTW in every precision behind one name.
#ifndef VEK_BENCH_FFTW_H
#define VEK_BENCH_FFTW_H

#if __has_include(<fftw3.h>)
#include <fftw3.h>
#define VEK_HAVE_FFTW 1

namespace vekbench {

template <class R>
struct Fftw;

#define VEK_FFTW(R, P)                                              \
  template <>                                                       \
  struct Fftw<R> {                                                  \
    using Complex = P##_complex;                                    \
    using Plan = P##_plan;                                          \
    static constexpr auto complex = P##_plan_many_dft;              \
    static constexpr auto forward = P##_plan_many_dft_r2c;          \
    static constexpr auto inverse = P##_plan_many_dft_c2r;          \
    static constexpr auto trig = P##_plan_r2r_1d;                   \
    static constexpr auto execute = P##_execute;                    \
    static constexpr auto destroy = P##_destroy_plan;               \
    static constexpr auto forget = P##_forget_wisdom;               \
    static constexpr auto import = P##_import_wisdom_from_filename; \
    static constexpr auto keep = P##_export_wisdom_to_filename;     \
    static constexpr auto limit = P##_set_timelimit;                \
  };
VEK_FFTW(float, fftwf)
VEK_FFTW(double, fftw)
VEK_FFTW(long double, fftwl)
#undef VEK_FFTW

}  // namespace vekbench

#endif
#endif
