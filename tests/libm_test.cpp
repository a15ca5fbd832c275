// SPDX-License-Identifier: Apache-2.0
// Results do not depend on which of its variants the C library picks for this processor: the sine and cosine that
// recurrences start from are our own, and what else comes from there is rounded to single precision before it counts.
#include <gtest/gtest.h>
#include <math.h>
#include <stdio.h>
#include <string.h>
#include <unistd.h>

#include <string>

#include "tests/support/data.h"
#include "tests/support/slots.h"

#define VEK_SLOT mx
#pragma GCC diagnostic ignored "-Wpsabi"
#include "core/simd/double_double.h"

namespace {

double ulps(double got, long double want) {
  const double unit = nextafter(fabs(got), INFINITY) - fabs(got);
  return double(fabsl((long double)(got)-want) / unit);
}

TEST(Libm, OwnSineAndCosineAreRoundedToNearest) {
  double worst = 0;
  for (int i = 0; i < 200000; ++i) {
    const double fraction = double(vektest::rng()() >> 32) * 0x1p-32;
    double x = i % 3 ? fraction * 11 : ldexp(1 + fraction, -(i % 60));
    if (i % 2) x = float(x);
    if (i < 15) x = i * 0.7853981633974483;
    const auto y = vek::mx::sineCosine(x);
    worst = std::max({worst, ulps(y.sine, sinl(x)), ulps(y.cosine, cosl(x))});
  }
  EXPECT_LT(worst, 0.5001);
}

class Digest {
 public:
  template <class T>
  void add(const std::vector<T>& x) {
    const unsigned char* const bytes = reinterpret_cast<const unsigned char*>(x.data());
    for (size_t i = 0; i < x.size() * sizeof(T); ++i) value_ = (value_ ^ bytes[i]) * 0x100000001B3;
  }
  unsigned long long value() const { return value_; }

 private:
  unsigned long long value_ = 0xCBF29CE484222325;
};

// Thousands of arguments for every function that has its sines and cosines from somewhere, in every slot; the exact
// ones give the same in each.
std::string digests() {
  std::string all;
  vektest::inEverySlot([&](int) {
    vektest::rng().seed(20);
    Digest exact, rounded;
    const auto uniform = [](double below) {
      return float(std::uniform_real_distribution<double>(0, below)(vektest::rng()));
    };
    std::vector<Vek32f> x(3000), y(9000), ones(3000, 1.0f);
    std::vector<Vek32fc> z(3000), v(2);
    for (float& a : x) a = uniform(2) - 1;
    for (int i = 0; i < 1500; ++i) {
      // Two cosines of the C library make two samples of the first of these.
      float phase = i ? uniform(6.28) : 4.70000029f, same = phase;
      const float freq = i ? uniform(0.499) : 0.284216642f;
      veksTone_Direct_32f(y.data(), 3000, 1, freq, &phase, 0);
      exact.add(std::vector<Vek32f>(y.begin(), y.begin() + 3000));
      veksTone_Direct_32fc(z.data(), 1000, 1, freq, &same, 0);
      exact.add(std::vector<Vek32fc>(z.begin(), z.begin() + 1000));
      veksGoertz_32f(x.data(), 1000, v.data(), freq);
      veksGoertzTwo_32f(x.data() + i, 500, v.data(), x.data());
      rounded.add(v);
    }
    for (int len = 4; len < 3000; len += len < 300 ? 1 : 97) {
      for (auto* window : {veksWinHann_32f, veksWinHamming_32f, veksWinBlackmanOpt_32f, veksWinBlackmanStd_32f}) {
        window(ones.data(), y.data(), len);
        exact.add(std::vector<Vek32f>(y.begin(), y.begin() + len));
      }
    }
    for (int len = 1; len < 1200; len += len < 130 ? 1 : 31) {
      VeksDCTFwdSpec_32f* spec = nullptr;
      veksDCTFwdInitAlloc_32f(&spec, len, vekAlgHintNone);
      veksDCTFwd_32f(x.data(), y.data(), spec, nullptr);
      veksDCTFwdFree_32f(spec);
      rounded.add(std::vector<Vek32f>(y.begin(), y.begin() + len));
    }
    for (const int taps : {40, 300, 1500}) {
      std::vector<Vek64f> h(size_t(taps), 0.7);
      VeksFIRState64f_32f* filter = nullptr;
      veksFIRInitAlloc64f_32f(&filter, h.data(), taps, nullptr);
      veksFIR64f_32f(x.data(), y.data(), 3000, filter);
      veksFIRFree64f_32f(filter);
      veksConv_32f(x.data(), 3000, x.data(), taps, y.data() + 3000);
      rounded.add(y);
    }
    char line[64];
    snprintf(line, sizeof line, "%016llx:%016llx ", exact.value(), rounded.value());
    all += line;
  });
  return all;
}

TEST(Libm, ResultsDoNotDependOnItsVariants) {
  const std::string here = digests();
  if (getenv("VEK_TEST_CHILD")) {
    printf("digests %s\n", here.c_str());
    return;
  }
  for (size_t at = 34; at < here.size(); at += 34) EXPECT_EQ(here.substr(at, 16), here.substr(0, 16)) << "slots differ";
  char self[4096] = {};
  ASSERT_GT(readlink("/proc/self/exe", self, sizeof self - 1), 0);
  const std::string command =
      std::string("VEK_TEST_CHILD=1 GLIBC_TUNABLES=glibc.cpu.hwcaps=-FMA,-FMA_Usable,-FMA4,-AVX2,-AVX2_Usable '") +
      self + "' --gtest_filter=Libm.ResultsDoNotDependOnItsVariants";
  FILE* const child = popen(command.c_str(), "r");
  ASSERT_NE(child, nullptr);
  std::string there;
  char line[4096];
  while (fgets(line, sizeof line, child))
    if (strncmp(line, "digests ", 8) == 0) there = std::string(line + 8, strcspn(line + 8, "\n"));
  EXPECT_EQ(pclose(child), 0);
  EXPECT_EQ(there, here);
}

}  // namespace
