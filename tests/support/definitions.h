// SPDX-License-Identifier: Apache-2.0
// Filters, cosine transforms and medians as they are defined, for the tests of values and those of streams; the kinds
// of filters under one set of names each.
#ifndef VEK_TESTS_DEFINITIONS_H
#define VEK_TESTS_DEFINITIONS_H

#include <gtest/gtest.h>

#include <algorithm>
#include <complex>
#include <vector>

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/heap.h"
#include "tests/support/slots.h"

namespace vektest {

using Value = std::complex<double>;
template <class T>
Value value(T x) {
  if constexpr (kComplex<T>) {
    return {double(x.re), double(x.im)};
  } else {
    return double(x);
  }
}
template <class T>
T make(double re, double im) {
  if constexpr (kComplex<T>) {
    return {PartOf<T>(re), PartOf<T>(im)};
  } else {
    return T(re);
  }
}

// ---- FIR filters of both rates --------------------------------------------------------------------------------------

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

struct Rate {
  int taps, up, upPhase, down, downPhase;
};
inline std::ostream& operator<<(std::ostream& o, const Rate& r) {
  return o << r.taps << " taps, up " << r.up << '+' << r.upPhase << ", down " << r.down << '+' << r.downPhase;
}

// The signal up-sampled, filtered and down-sampled.
template <class Kind>
std::vector<Expected> filtered(const Rate& r, const std::vector<typename Kind::Tap>& taps,
                               const Stream<typename Kind::Data>& x) {
  std::vector<Expected> y(x.now.size() / size_t(r.down) * size_t(r.up));
  for (size_t i = 0; i < y.size(); ++i) {
    const int64_t at = int64_t(i) * r.down + r.downPhase - r.upPhase;
    for (int64_t k = (at % r.up + r.up) % r.up; k < r.taps; k += r.up)
      y[i].add(value(taps[size_t(k)]), x.at((at - k) / r.up));
  }
  return y;
}

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

// ---- IIR filters ----------------------------------------------------------------------------------------------------

#define VEK_IIR_KIND(NAME, SUFFIX, STATE, DATA, TAP, ID)       \
  struct NAME {                                                \
    using State = STATE;                                       \
    using Data = DATA;                                         \
    using Tap = TAP;                                           \
    static constexpr uint32_t id = ID;                         \
    static constexpr auto allocate = veksIIRInitAlloc##SUFFIX; \
    static constexpr auto init = veksIIRInit##SUFFIX;          \
    static constexpr auto run = veksIIR##SUFFIX;               \
    static constexpr auto runInPlace = veksIIR##SUFFIX##_I;    \
    static constexpr auto one = veksIIROne##SUFFIX;            \
    static constexpr auto release = veksIIRFree##SUFFIX;       \
  }
VEK_IIR_KIND(Iir32f, _32f, VeksIIRState_32f, Vek32f, Vek32f, 0x49493031);
VEK_IIR_KIND(Iir32fc, _32fc, VeksIIRState_32fc, Vek32fc, Vek32fc, 0x49493033);
VEK_IIR_KIND(Iir64f, 64f_32f, VeksIIRState64f_32f, Vek32f, Vek64f, 0x49493137);
VEK_IIR_KIND(Iir64fc, 64fc_32fc, VeksIIRState64fc_32fc, Vek32fc, Vek64fc, 0x49493139);
using IirKinds = ::testing::Types<Iir32f, Iir32fc, Iir64f, Iir64fc>;

// A state of sections of second order, or of one section of any.
template <class Kind>
VekStatus allocateIir(typename Kind::State** state, const typename Kind::Tap* taps, int size, bool biquads,
                      const typename Kind::Tap* delay) {
  if constexpr (std::is_same_v<Kind, Iir32f>) {
    if (biquads) return veksIIRInitAlloc_BiQuad_32f(state, taps, size, delay);
  } else if constexpr (std::is_same_v<Kind, Iir32fc>) {
    if (biquads) return veksIIRInitAlloc_BiQuad_32fc(state, taps, size, delay);
  }
  return Kind::allocate(state, taps, size, delay);
}

// The recursion sample by sample in precision R, every operation rounded.
template <class R, class Tap, class Data>
std::vector<std::complex<R>> recursion(const std::vector<Tap>& taps, const std::vector<Tap>& delay, int order,
                                       bool biquads, const std::vector<Data>& x) {
  using C = std::complex<R>;
  std::vector<C> d, y, c;
  for (const auto& v : delay) d.emplace_back(value(v));
  d.emplace_back(0);
  const size_t n = size_t(order), sections = taps.size() / (2 * n + 2);
  for (size_t i = 0; i < taps.size(); ++i)
    c.push_back(C(value(taps[i])) * R(1 / value(taps[i / (2 * n + 2) * (2 * n + 2) + n + 1]).real()));
  for (const auto& sample : x) {
    C v = C(value(sample));
    for (size_t q = 0; q < sections; ++q) {
      const C *b = &c[q * (2 * n + 2)], *a = b + n + 1;
      C* e = &d[q * n];
      const C out = b[0] * v + e[0];
      if (biquads) {
        e[0] = e[1] - a[1] * out + b[1] * v;
        e[1] = b[2] * v - a[2] * out;
      } else {
        for (size_t k = 1; k <= n; ++k) e[k - 1] = b[k] * v - a[k] * out + (k < n ? e[k] : C(0));
      }
      v = out;
    }
    y.push_back(v);
  }
  return y;
}

// ---- cosine transforms ----------------------------------------------------------------------------------------------

inline bool isPowerOfTwo(size_t n) { return (n & (n - 1)) == 0; }

// The documented sizes of a spec and of its work buffer, and the documented error.
struct DctSizes {
  size_t spec, work;
};
inline DctSizes dctSizes(size_t len) {
  if (isPowerOfTwo(len)) {
    if (len <= 8) return {352, 1};
    if (len <= 64) return {len == 64 ? 704u : 400u, 1};
    return len <= 2048 ? DctSizes{8 * len + len / 2 + 576, 1} : DctSizes{8 * len + len / 2 + 9216, 32832};
  }
  if (len < 86) return {16 * len + 192, 4 * len + 64};
  const size_t m = len % 2 ? len : len / 2;
  size_t p = 1;
  while (p < 2 * m - 1) p *= 2;
  return {20 * p + 8 * m + 4 * len + 1024, 8 * p + 64};
}
inline double dctError(size_t len) {
  return (0.6e-7 * std::sqrt(std::log2(double(len))) + 1e-7) * (isPowerOfTwo(len) ? 1 : 2);
}

inline std::vector<double> cosines(const std::vector<Vek32f>& x, bool inverse) {
  const size_t n = x.size();
  std::vector<double> table(4 * n), y(n);
  for (size_t i = 0; i < 4 * n; ++i) table[i] = std::cos(M_PI * double(i) / (2 * double(n)));
  for (size_t i = 0; i < n; ++i)
    for (size_t j = 0; j < n; ++j) {
      const size_t k = inverse ? j : i, t = inverse ? i : j;
      y[i] += double(x[j]) * table[(2 * t + 1) * k % (4 * n)] * std::sqrt((k ? 2.0 : 1.0) / double(n));
    }
  return y;
}

// ---- medians --------------------------------------------------------------------------------------------------------

// The order of the values: by size, -0 below +0, NaNs outside the infinities on the side of their sign.
template <class T>
int64_t rankOf(T x) {
  if constexpr (std::is_floating_point_v<T>) {
    Vek32s bits;
    memcpy(&bits, &x, 4);
    return bits >= 0 ? bits : -1 - int64_t(bits & 0x7FFFFFFF);
  } else {
    return x;
  }
}

template <class T>
std::vector<T> medians(const std::vector<T>& x, int64_t mask) {
  const int64_t n = int64_t(x.size()), half = (mask - 1) / 2;
  if (mask < 3 || n < 3) return x;
  std::vector<T> y(x.size()), window;
  for (int64_t i = 0; i < n; ++i) {
    window.clear();
    for (int64_t k = i - half; k <= i + half; ++k) window.push_back(x[size_t(std::clamp<int64_t>(k, 0, n - 1))]);
    std::nth_element(window.begin(), window.begin() + half, window.end(),
                     [](T a, T b) { return rankOf(a) < rankOf(b); });
    y[size_t(i)] = window[size_t(half)];
  }
  return y;
}

}  // namespace vektest

#endif
