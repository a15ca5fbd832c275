// SPDX-License-Identifier: Apache-2.0
// The life of states and specs: made before anything else of the program runs, used by another slot's code, released
// twice. Built against the static library, and against the shared one for what needs no internals.
#include <gtest/gtest.h>
#include <string.h>

#include <vector>

#include "vek/vek.hpp"
#ifndef VEK_SHARED_CLIENT
#include "tests/support/heap.h"
#include "tests/support/slots.h"
#endif

namespace {

#define VEK_KINDS(DO)         \
  DO(_32f, Vek32f, Vek32f)    \
  DO(_32fc, Vek32fc, Vek32fc) \
  DO(64f_32f, Vek64f, Vek32f) \
  DO(64fc_32fc, Vek64fc, Vek32fc)

constexpr int kTaps = 100, kOrder = 200, kLen = 900;
constexpr int kDctLengths[] = {8, 30, 64, 150};

// Taps that make a stable filter of any order: b = 1, 1/2, 0 ..., a = 1, 1/4, 0 ...
template <class T>
const T* taps(int order) {
  static T values[2 * (kOrder + 1)];
  const double b[2] = {1, 0.5}, a[2] = {1, 0.25};
  memset(static_cast<void*>(values), 0, sizeof values);
  for (int i = 0; i < 2; ++i) {
    if constexpr (sizeof(T) == sizeof(Vek32f) || std::is_same_v<T, Vek64f>) {
      values[i] = T(b[i]), values[order + 1 + i] = T(a[i]);
    } else {
      values[i].re = decltype(T::re)(b[i]), values[order + 1 + i].re = decltype(T::re)(a[i]);
    }
  }
  return values;
}

// One of everything, by plain C calls.
struct Everything {
  int refused = 0;
#define VEK_MEMBERS(SUFFIX, TAP, SAMPLE)                                 \
  VeksFIRState##SUFFIX *fir##SUFFIX = nullptr, *rates##SUFFIX = nullptr; \
  VeksIIRState##SUFFIX *low##SUFFIX = nullptr, *high##SUFFIX = nullptr;
  VEK_KINDS(VEK_MEMBERS)
  VeksIIRState_32f* biquads = nullptr;
  VeksIIRState_32fc* complexBiquads = nullptr;
  VeksDCTFwdSpec_32f* forward[4] = {};
  VeksDCTInvSpec_32f* inverse[4] = {};

  void make() {
#define VEK_MAKE(SUFFIX, TAP, SAMPLE)                                                                   \
  refused |= veksFIRInitAlloc##SUFFIX(&fir##SUFFIX, taps<TAP>(kOrder), kTaps, nullptr);                 \
  refused |= veksFIRMRInitAlloc##SUFFIX(&rates##SUFFIX, taps<TAP>(kOrder), kTaps, 3, 0, 2, 0, nullptr); \
  refused |= veksIIRInitAlloc##SUFFIX(&low##SUFFIX, taps<TAP>(2), 2, nullptr);                          \
  refused |= veksIIRInitAlloc##SUFFIX(&high##SUFFIX, taps<TAP>(kOrder), kOrder, nullptr);
    VEK_KINDS(VEK_MAKE)
    refused |= veksIIRInitAlloc_BiQuad_32f(&biquads, taps<Vek32f>(2), 1, nullptr);
    refused |= veksIIRInitAlloc_BiQuad_32fc(&complexBiquads, taps<Vek32fc>(2), 1, nullptr);
    for (int i = 0; i < 4; ++i) {
      refused |= veksDCTFwdInitAlloc_32f(&forward[i], kDctLengths[i], vekAlgHintNone);
      refused |= veksDCTInvInitAlloc_32f(&inverse[i], kDctLengths[i], vekAlgHintNone);
    }
  }

  // Calls f with a call of every function that takes one of them, each time the status, what was written and
  // whether it is a transform.
  template <class F>
  void use(F f) {
    Vek32fc x[kLen] = {}, y[3 * kLen];
    for (int i = 0; i < kLen; ++i) x[i] = {float(i % 37) - 11, float(i % 5)};
    bool transforms = false;
    const auto with = [&](auto call) {
      memset(static_cast<void*>(y), 0x55, sizeof y);
      f(call(), reinterpret_cast<const float*>(y), 2 * std::size(y), transforms);
    };
#define VEK_RUN(SUFFIX, SAMPLE, FAMILY, STATE)                       \
  {                                                                  \
    const SAMPLE* const src = reinterpret_cast<const SAMPLE*>(x);    \
    SAMPLE* const dst = reinterpret_cast<SAMPLE*>(y);                \
    with([&] { return FAMILY##SUFFIX(src, dst, kLen / 2, STATE); }); \
    with([&] { return FAMILY##SUFFIX##_I(dst, 8, STATE); });         \
  }
#define VEK_ONE(SUFFIX, SAMPLE, FAMILY, STATE) \
  VEK_RUN(SUFFIX, SAMPLE, FAMILY, STATE)       \
  with([&] { return FAMILY##One##SUFFIX(*reinterpret_cast<const SAMPLE*>(x), reinterpret_cast<SAMPLE*>(y), STATE); });
#define VEK_USE(SUFFIX, TAP, SAMPLE)              \
  VEK_ONE(SUFFIX, SAMPLE, veksFIR, fir##SUFFIX)   \
  VEK_RUN(SUFFIX, SAMPLE, veksFIR, rates##SUFFIX) \
  VEK_ONE(SUFFIX, SAMPLE, veksIIR, low##SUFFIX)   \
  VEK_ONE(SUFFIX, SAMPLE, veksIIR, high##SUFFIX)
    VEK_KINDS(VEK_USE)
    VEK_ONE(_32f, Vek32f, veksIIR, biquads)
    VEK_ONE(_32fc, Vek32fc, veksIIR, complexBiquads)
    transforms = true;
    for (int i = 0; i < 4; ++i) {
      with([&] { return veksDCTFwd_32f(&x[0].re, &y[0].re, forward[i], nullptr); });
      with([&] { return veksDCTInv_32f(&x[0].re, &y[0].re, inverse[i], nullptr); });
    }
  }

  // The statuses of a release of each.
  std::vector<VekStatus> release() {
    std::vector<VekStatus> all;
#define VEK_FREE(SUFFIX, TAP, SAMPLE)                                                 \
  for (auto* s : {fir##SUFFIX, rates##SUFFIX}) all.push_back(veksFIRFree##SUFFIX(s)); \
  for (auto* s : {low##SUFFIX, high##SUFFIX}) all.push_back(veksIIRFree##SUFFIX(s));
    VEK_KINDS(VEK_FREE)
    all.push_back(veksIIRFree_32f(biquads));
    all.push_back(veksIIRFree_32fc(complexBiquads));
    for (auto* s : forward) all.push_back(veksDCTFwdFree_32f(s));
    for (auto* s : inverse) all.push_back(veksDCTInvFree_32f(s));
    return all;
  }

  std::vector<float> outputs() {
    std::vector<float> all;
    use([&](VekStatus status, const float* y, size_t n, bool) {
      all.push_back(float(status));
      all.insert(all.end(), y, y + n);
    });
    return all;
  }
};

bool sameBytes(const std::vector<float>& a, const std::vector<float>& b) {
  return a.size() == b.size() && memcmp(a.data(), b.data(), a.size() * sizeof(float)) == 0;
}

// ---- before the library's constructor -------------------------------------------------------------------------------

Everything first, early;

#ifdef VEK_PREINIT  // sanitizers are not ready by then
const VekLibVersion* firstVersion;

// Of a program, the loader runs this before the constructors of its libraries.
void atFirst() {
  firstVersion = veksGetLibVersion();
  first.make();
}
__attribute__((used, section(".preinit_array"))) void (*const preinit)() = atFirst;
#endif

__attribute__((constructor(101))) void beforeOthers() { early.make(); }

// As a program's own objects, linked before the library, are made.
template <class T>
std::span<const T> section() {
  return {taps<T>(2), 6};
}
#define VEK_EARLIEST __attribute__((init_priority(101)))
vek::Fir<Vek32f, Vek32f> earlyFir VEK_EARLIEST(std::span(taps<Vek32f>(kOrder), kTaps));
vek::MultiRateFir<Vek32f, Vek32f> earlyRates VEK_EARLIEST(std::span(taps<Vek32f>(kOrder), kTaps), 3, 2);
vek::Iir<Vek64f, Vek32f> earlyIir VEK_EARLIEST(section<Vek64f>());
vek::Biquads<Vek32fc> earlyBiquads VEK_EARLIEST(section<Vek32fc>());
vek::Dct earlyDct VEK_EARLIEST(150);

TEST(Lifecycle, StatesMadeBeforeTheLibraryAreOfItsSlot) {
  Everything now;
  now.make();
  ASSERT_EQ(now.refused, 0);
  const std::vector<float> want = now.outputs();
  EXPECT_TRUE(sameBytes(early.outputs(), want)) << "made by a constructor";
#ifdef VEK_PREINIT
  EXPECT_STREQ(firstVersion->name, veksGetLibVersion()->name);
  EXPECT_TRUE(sameBytes(first.outputs(), want)) << "made before any constructor";
  for (const VekStatus s : first.release()) EXPECT_EQ(s, vekStsNoErr);
#endif
  for (Everything* e : {&now, &early})
    for (const VekStatus s : e->release()) EXPECT_EQ(s, vekStsNoErr);
}

TEST(Lifecycle, ObjectsOfAProgramMadeBeforeTheLibrary) {
  std::vector<Vek32f> x(600), y(600), z(600), w(900), v(900);
  for (size_t i = 0; i < x.size(); ++i) x[i] = float(i % 23);
  vek::Fir<Vek32f, Vek32f> fir(std::span(taps<Vek32f>(kOrder), kTaps));
  EXPECT_TRUE(earlyFir(x, y) && fir(x, z) && y == z);
  vek::MultiRateFir<Vek32f, Vek32f> rates(std::span(taps<Vek32f>(kOrder), kTaps), 3, 2);
  EXPECT_TRUE(earlyRates(x, w) && rates(x, v) && w == v);
  vek::Iir<Vek64f, Vek32f> iir(section<Vek64f>());
  EXPECT_TRUE(earlyIir(x, y) && iir(x, z) && y == z);
  std::vector<Vek32fc> c(300, Vek32fc{1, 2}), d(300), e(300);
  vek::Biquads<Vek32fc> biquads(section<Vek32fc>());
  EXPECT_TRUE(earlyBiquads(c, d) && biquads(c, e));
  EXPECT_EQ(memcmp(d.data(), e.data(), 300 * sizeof(Vek32fc)), 0);
  const std::span<const Vek32f> in = std::span(x).first(150);
  vek::Dct dct(150);
  EXPECT_TRUE(earlyDct.forward(in, std::span(y).first(150)) && dct.forward(in, std::span(z).first(150)) && y == z);
}

#ifndef VEK_SHARED_CLIENT

extern "C" decltype(&veksFIR_32f) const vek_table_veksFIR_32f[8];
extern "C" decltype(&veksDCTFwd_32f) const vek_table_veksDCTFwd_32f[8];

// ---- other slots ----------------------------------------------------------------------------------------------------

TEST(Lifecycle, AnotherSlotsStateIsRefusedAndReleased) {
  vektest::inEverySlot([&](int slot) {
    for (const int other : vektest::availableSlots()) {
      const bool shareFilters = vek_table_veksFIR_32f[slot] == vek_table_veksFIR_32f[other];
      const bool shareTransforms = vek_table_veksDCTFwd_32f[slot] == vek_table_veksDCTFwd_32f[other];
      vek::setSlotForTest(other);
      Everything all;
      all.make();
      ASSERT_EQ(all.refused, 0);
      vek::setSlotForTest(slot);
      int wrong = 0, calls = 0;
      all.use([&](VekStatus status, const float* y, size_t, bool transforms) {
        ++calls;
        wrong += status != ((transforms ? shareTransforms : shareFilters) ? vekStsNoErr : vekStsContextMatchErr);
        if (status < 0) wrong += *reinterpret_cast<const unsigned*>(y) != 0x55555555;
      });
      EXPECT_EQ(wrong, 0) << "of " << calls << " calls, states of slot " << vektest::slotName(other);
      for (const VekStatus s : all.release()) EXPECT_EQ(s, vekStsNoErr);
    }
  });
}

// ---- releases -------------------------------------------------------------------------------------------------------

TEST(Lifecycle, ASecondReleaseIsRefused) {
  vektest::inEverySlot([](int) {
    Everything all;
    vektest::Heap heap;
    all.make();
    ASSERT_EQ(all.refused, 0);
    EXPECT_GT(heap.out(), 20);
    for (const VekStatus s : all.release()) EXPECT_EQ(s, vekStsNoErr);
    EXPECT_EQ(heap.out(), 0);
    for (const VekStatus s : all.release()) EXPECT_EQ(s, vekStsContextMatchErr);
    EXPECT_EQ(heap.doubled(), 0);
  });
}

// ---- specs of the other direction -----------------------------------------------------------------------------------

TEST(Lifecycle, ACosineSpecServesBothDirections) {
  vektest::inEverySlot([](int) {
    for (int len = 1; len < 140; ++len) {
      std::vector<float> x(size_t(len), 0.5f), want(x.size()), got(x.size());
      for (int i = 0; i < len; ++i) x[size_t(i)] += float((i * 29) % 11);
      VeksDCTFwdSpec_32f* f = nullptr;
      VeksDCTInvSpec_32f* i = nullptr;
      ASSERT_EQ(veksDCTFwdInitAlloc_32f(&f, len, vekAlgHintNone), vekStsNoErr);
      ASSERT_EQ(veksDCTInvInitAlloc_32f(&i, len, vekAlgHintNone), vekStsNoErr);
      veksDCTFwd_32f(x.data(), want.data(), f, nullptr);
      EXPECT_EQ(veksDCTFwd_32f(x.data(), got.data(), reinterpret_cast<VeksDCTFwdSpec_32f*>(i), nullptr), vekStsNoErr);
      EXPECT_TRUE(sameBytes(got, want)) << len;
      veksDCTInv_32f(x.data(), want.data(), i, nullptr);
      EXPECT_EQ(veksDCTInv_32f(x.data(), got.data(), reinterpret_cast<VeksDCTInvSpec_32f*>(f), nullptr), vekStsNoErr);
      EXPECT_TRUE(sameBytes(got, want)) << len;
      veksDCTFwdFree_32f(f);
      veksDCTInvFree_32f(i);
    }
  });
}

#endif

}  // namespace
