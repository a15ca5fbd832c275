// SPDX-License-Identifier: Apache-2.0
// What a call leaves behind: for every kind of state and every length of a call up to 2,100 and around each boundary
// inside, the call and one sample after it give what the samples give one by one.
#include <gtest/gtest.h>
#include <math.h>
#include <string.h>
#include <xmmintrin.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/data.h"
#include "tests/support/slots.h"

namespace vektest {
namespace {

// A filter as a stream: a call takes `in` floats and gives `out` for each of its units.
struct Stream {
  std::string name;
  int in, out;
  bool inPlace;
  std::function<void()> reset;  // a new state in the old one's memory
  std::function<VekStatus(const float*, float*, int)> run;
};

template <class T>
constexpr bool kPair = !std::is_floating_point_v<T>;

template <class T>
T tap(double re, double im) {
  if constexpr (kPair<T>) {
    return {decltype(T::re)(re), decltype(T::im)(im)};
  } else {
    return T(re);
  }
}

std::vector<Vek8u>& memory() {
  static std::vector<Vek8u> bytes(size_t(1) << 20);
  return bytes;
}

template <class State, class Data>
void addStream(std::vector<Stream>& all, const std::string& name, int down, int up,
               std::function<VekStatus(State**)> make, VekStatus (*run)(const Data*, Data*, int, State*),
               VekStatus (*inPlace)(Data*, int, State*)) {
  const auto state = std::make_shared<State*>();
  constexpr int parts = kPair<Data> ? 2 : 1;
  const auto reset = [=] { ASSERT_EQ(make(state.get()), vekStsNoErr) << name; };
  all.push_back({name, down * parts, up * parts, false, reset, [=](const float* x, float* y, int n) {
                   return run(reinterpret_cast<const Data*>(x), reinterpret_cast<Data*>(y), n, *state);
                 }});
  all.push_back({name + " in place", down * parts, up * parts, true, reset, [=](const float* x, float* y, int n) {
                   memcpy(y, x, size_t(n) * size_t(down) * sizeof(Data));
                   return inPlace(reinterpret_cast<Data*>(y), n, *state);
                 }});
}

template <class State, class Tap, class Data, class Init, class Rates, class Run, class InPlace>
void addFir(std::vector<Stream>& all, const std::string& suffix, Init init, Rates rates, Run run, InPlace inPlace) {
  for (const int taps : {1, 3, 20, 100, 600}) {
    std::vector<Tap> h;
    for (int k = 0; k < taps; ++k) h.push_back(tap<Tap>(cos(k * 0.7) / (k + 2), sin(k * 0.9) / (k + 3)));
    addStream<State, Data>(
        all, "fir" + suffix + " of " + std::to_string(taps), 1, 1,
        [=](State** s) { return init(s, h.data(), taps, nullptr, memory().data()); }, run, inPlace);
    if (taps != 20) continue;
    for (const auto& [up, down] : {std::pair(3, 2), std::pair(1, 2), std::pair(2, 7), std::pair(4, 1)})
      addStream<State, Data>(
          all, "fir" + suffix + " by " + std::to_string(up) + "/" + std::to_string(down), down, up,
          [=, up = up, down = down](State** s) {
            return rates(s, h.data(), taps, up, up - 1, down, down / 2, nullptr, memory().data());
          },
          run, inPlace);
  }
}

template <class State, class Tap, class Data, class Init, class Run, class InPlace>
void addIir(std::vector<Stream>& all, const std::string& suffix, Init init, Run run, InPlace inPlace) {
  for (const int order : {1, 2, 3, 6, 12, 40}) {
    std::vector<Tap> h(size_t(2 * order) + 2, tap<Tap>(0, 0));
    for (int k = 0; k <= order; ++k) h[size_t(k)] = tap<Tap>(0.5 / (k + 1), 0.1);
    h[size_t(order) + 1] = tap<Tap>(1, 0);
    for (int k = 1; k <= order; ++k) h[size_t(order + 1 + k)] = tap<Tap>(0.4 * cos(k) / order, 0.2 * sin(k) / order);
    addStream<State, Data>(
        all, "iir" + suffix + " of order " + std::to_string(order), 1, 1,
        [=](State** s) { return init(s, h.data(), order, nullptr, memory().data()); }, run, inPlace);
  }
}

// Biquads are made by allocation alone.
template <class State, class Data, class Make, class Run, class InPlace, class Free>
void addBiquads(std::vector<Stream>& all, const std::string& suffix, Make make, Run run, InPlace inPlace,
                Free release) {
  for (const int sections : {1, 2, 3, 7}) {
    std::vector<Data> h;
    for (int i = 0; i < sections; ++i)
      for (const double v : {0.7, 0.3, 0.1 + 0.01 * i, 1.0, -0.4, 0.2 + 0.02 * i}) h.push_back(tap<Data>(v, 0));
    const std::shared_ptr<State*> old(new State*(nullptr), [release](State** s) {
      if (*s) release(*s);
      delete s;
    });
    addStream<State, Data>(
        all, "biquads" + suffix + " " + std::to_string(sections), 1, 1,
        [=](State** s) {
          if (*old) release(*old);
          const VekStatus status = make(s, h.data(), sections, nullptr);
          *old = *s;
          return status;
        },
        run, inPlace);
  }
}

const std::vector<Stream>& streams() {
  static const std::vector<Stream> all = [] {
    std::vector<Stream> a;
#define VEK_FIR(SUFFIX, TAP, DATA)                                                                                 \
  addFir<VeksFIRState##SUFFIX, TAP, DATA>(a, #SUFFIX, veksFIRInit##SUFFIX, veksFIRMRInit##SUFFIX, veksFIR##SUFFIX, \
                                          veksFIR##SUFFIX##_I);                                                    \
  addIir<VeksIIRState##SUFFIX, TAP, DATA>(a, #SUFFIX, veksIIRInit##SUFFIX, veksIIR##SUFFIX, veksIIR##SUFFIX##_I);
    VEK_FIR(_32f, Vek32f, Vek32f)
    VEK_FIR(_32fc, Vek32fc, Vek32fc)
    VEK_FIR(64f_32f, Vek64f, Vek32f)
    VEK_FIR(64fc_32fc, Vek64fc, Vek32fc)
#undef VEK_FIR
    addBiquads<VeksIIRState_32f, Vek32f>(a, "_32f", veksIIRInitAlloc_BiQuad_32f, veksIIR_32f, veksIIR_32f_I,
                                         veksIIRFree_32f);
    addBiquads<VeksIIRState_32fc, Vek32fc>(a, "_32fc", veksIIRInitAlloc_BiQuad_32fc, veksIIR_32fc, veksIIR_32fc_I,
                                           veksIIRFree_32fc);
    return a;
  }();
  return all;
}

TEST(Stream, EveryLengthOfACallAndASampleAfterIt) {
  constexpr int most = 8192 + 514, dense = 2100;
  // Chunks of 4096 and 2048 samples, and what has to remain behind one for the transform.
  std::vector<int> lengths;
  for (int n = 1; n <= dense; ++n) lengths.push_back(n);
  for (const int n : {4096, 4096 + 256, 4096 + 512, 6144, 8192, 8192 + 256, 8192 + 512})
    for (int k = -1; k <= 1; ++k) lengths.push_back(n + k);
  rng().seed(5);
  std::vector<float> x(size_t(most + 1) * 14), y(x.size()), want(x.size());
  for (float& v : x) v = float(std::uniform_real_distribution<double>(-1, 1)(rng()));
  // One slot is done in full, the others where their lengths are likely to matter.
  const int last = availableSlots().back();
  inEverySlot([&](int slot) {
    for (const Stream& s : streams()) {
      s.reset();
      double scale = 0;
      for (int i = 0; i <= most; ++i) {
        const size_t at = size_t(i * s.out);
        ASSERT_EQ(s.run(&x[size_t(i * s.in)], s.inPlace ? y.data() : &want[at], 1), vekStsNoErr) << s.name;
        if (s.inPlace) memcpy(&want[at], y.data(), size_t(s.out) * sizeof(float));
        for (int k = 0; k < s.out; ++k) scale = std::max(scale, fabs(double(want[at + size_t(k)])));
      }
      int wrong = 0, first = 0;
      const auto check = [&](int length, const float* got, int from, int units) {
        for (int k = 0; k < units * s.out; ++k) {
          if (fabs(got[k] - want[size_t(from * s.out + k)]) <= 2e-5 * scale) continue;
          if (wrong++ == 0) first = length;
          return;
        }
      };
      for (const int length : lengths) {
        if (length <= dense && slot != last && length % 7 != 3 && length % 64 > 1) continue;
        s.reset();
        ASSERT_EQ(s.run(x.data(), y.data(), length), vekStsNoErr) << s.name;
        check(length, y.data(), 0, length);
        ASSERT_EQ(s.run(&x[size_t(length * s.in)], y.data(), 1), vekStsNoErr) << s.name;
        check(length, y.data(), length, 1);
      }
      EXPECT_EQ(wrong, 0) << s.name << ", a call of " << first << " first";
    }
  });
}

// What a state's memory held before, and what of it no sample has reached yet, is never computed on: here it raises a
// flag.
TEST(Stream, StatesInMemoryFullOfSignallingNans) {
  const std::vector<float> x(7 * 3000 * 2, 0.25f);
  std::vector<float> y(x.size());
  const auto fill = [] {
    const std::vector<unsigned> nans(memory().size() / 4, 0x7FA00000);
    memcpy(memory().data(), nans.data(), memory().size());
  };
  const auto flags = [](auto run) {
    _MM_SET_EXCEPTION_STATE(0);
    EXPECT_EQ(run(), vekStsNoErr);
    return _MM_GET_EXCEPTION_STATE() & (_MM_EXCEPT_INVALID | _MM_EXCEPT_DIV_ZERO | _MM_EXCEPT_OVERFLOW);
  };
  inEverySlot([&](int) {
    for (const Stream& s : streams()) {
      fill();
      s.reset();
      unsigned raised = 0;
      for (const int n : {1, 2, 5, 8, 13, 30, 700, 3000, 1})
        raised |= flags([&] { return s.run(x.data(), y.data(), n); });
      EXPECT_EQ(raised, 0u) << s.name;
    }
    for (const int len : {3, 4, 5, 7, 16, 21, 40, 64, 85, 90, 128, 150, 4096}) {
      VeksDCTFwdSpec_32f* forward = nullptr;
      VeksDCTInvSpec_32f* inverse = nullptr;
      Vek8u* const work = memory().data() + memory().size() / 2;
      unsigned raised = 0;
      fill();
      raised |= flags([&] { return veksDCTFwdInit_32f(&forward, len, vekAlgHintNone, memory().data(), work); });
      raised |= flags([&] { return veksDCTFwd_32f(x.data(), y.data(), forward, work); });
      fill();
      raised |= flags([&] { return veksDCTInvInit_32f(&inverse, len, vekAlgHintNone, memory().data(), work); });
      raised |= flags([&] { return veksDCTInv_32f(x.data(), y.data(), inverse, work); });
      EXPECT_EQ(raised, 0u) << "cosine transform of " << len;
    }
  });
}

}  // namespace
}  // namespace vektest
