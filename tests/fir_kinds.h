// SPDX-License-Identifier: Apache-2.0
// The four kinds of FIR filters under one set of names, and what both rates' tests need of them.
#ifndef VEK_TESTS_FIR_KINDS_H
#define VEK_TESTS_FIR_KINDS_H

#include <gtest/gtest.h>

#include <algorithm>
#include <complex>
#include <vector>

#include "support/data.h"
#include "support/guarded.h"
#include "support/heap.h"
#include "support/slots.h"

namespace vektest {

using Value = std::complex<double>;
inline Value value(double x) { return x; }
inline Value value(Vek32fc x) { return {x.re, x.im}; }
inline Value value(Vek64fc x) { return {x.re, x.im}; }
template <class T>
T make(double re, double im) {
  if constexpr (std::is_floating_point_v<T>) {
    return T(re);
  } else {
    return {decltype(T::re)(re), decltype(T::im)(im)};
  }
}

#define VEK_FIR_KIND(NAME, STATE, TAP, DATA, FFT_TAPS, FFT_CALL, SUFFIX) \
  struct NAME {                                                          \
    using State = STATE;                                                 \
    using Tap = TAP;                                                     \
    using Data = DATA;                                                   \
    static constexpr int fftTaps = FFT_TAPS, fftCall = FFT_CALL;         \
    static constexpr bool wide = sizeof(DATA) < sizeof(TAP);             \
    static constexpr auto initAlloc = veksFIRInitAlloc##SUFFIX;          \
    static constexpr auto init = veksFIRInit##SUFFIX;                    \
    static constexpr auto run = veksFIR##SUFFIX;                         \
    static constexpr auto runInPlace = veksFIR##SUFFIX##_I;              \
    static constexpr auto one = veksFIROne##SUFFIX;                      \
    static constexpr auto release = veksFIRFree##SUFFIX;                 \
    static constexpr auto bufferSize = vekFIRBufferSize##SUFFIX;         \
    static constexpr auto rateInitAlloc = veksFIRMRInitAlloc##SUFFIX;    \
    static constexpr auto rateInit = veksFIRMRInit##SUFFIX;              \
    static constexpr auto rateBufferSize = vekFIRMRBufferSize##SUFFIX;   \
  }
VEK_FIR_KIND(Kind32f, VeksFIRState_32f, Vek32f, Vek32f, 64, 511, _32f);
VEK_FIR_KIND(Kind32fc, VeksFIRState_32fc, Vek32fc, Vek32fc, 16, 255, _32fc);
VEK_FIR_KIND(Kind64f, VeksFIRState64f_32f, Vek64f, Vek32f, 32, 511, 64f_32f);
VEK_FIR_KIND(Kind64fc, VeksFIRState64fc_32fc, Vek64fc, Vek32fc, 16, 255, 64fc_32fc);
using FirKinds = ::testing::Types<Kind32f, Kind32fc, Kind64f, Kind64fc>;

// Values in [-1, 1].
template <class T>
std::vector<T> randomSignal(size_t n) {
  std::uniform_real_distribution<double> d(-1, 1);
  std::vector<T> v(n);
  for (T& x : v) x = make<T>(d(rng()), d(rng()));
  return v;
}

// A signal and what came before it, newest first.
template <class Data>
struct Stream {
  std::vector<Data> past, now;
  Value at(int64_t n) const {
    if (n >= 0) return value(now[size_t(n)]);
    return size_t(-n) <= past.size() ? value(past[size_t(-n - 1)]) : Value(0);
  }
};

// One output by its definition, and how far a computed one may be from it.
struct Expected {
  Value sum = 0;
  double magnitude = 0;
  void add(Value tap, Value sample) {
    sum += tap * sample;
    magnitude += std::abs(tap) * std::abs(sample);
  }
};

template <class Kind>
::testing::AssertionResult closeTo(const std::vector<typename Kind::Data>& got, const std::vector<Expected>& want,
                                   int taps, double blockError) {
  for (size_t i = 0; i < want.size(); ++i) {
    const double single = std::ldexp(1.0, -24), double_ = std::ldexp(1.0, -52);
    const double sum = Kind::wide ? single * std::abs(want[i].sum) + double_ * taps * want[i].magnitude
                                  : single * (taps + 2) * want[i].magnitude;
    const double bound = 1.5 * sum + blockError * (Kind::wide ? double_ : single) + 1e-37;
    if (!(std::abs(value(got[i]) - want[i].sum) <= bound))
      return ::testing::AssertionFailure() << "output " << i << " of " << want.size() << ": got " << value(got[i])
                                           << ", want " << want[i].sum << " within " << bound;
  }
  return ::testing::AssertionSuccess();
}

}  // namespace vektest

#endif
