// SPDX-License-Identifier: Apache-2.0
// Sums, means and deviations against their definitions: orders of additions to the bit, integers exactly. Those with a
// bound are held to it by tests/lengths_test.cpp.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;
__extension__ typedef __int128 Int128;

constexpr int kFirstRegroupingSlot = 4;  // the slots below share the generic code
const std::vector<VekHintAlgorithm> kHints = {vekAlgHintNone, vekAlgHintFast, vekAlgHintAccurate, 77};

// Sixteen partial sums by index; step = 2 reads one part of complex elements, whose eight sums interleave.
double sixteenSums(const float* x, int n, int parts, int part) {
  double lane[16] = {};
  const int groups = n * parts / 16;
  for (int i = 0; i < groups * 16; ++i) lane[i % 16] += double(x[i]);
  double pair[2];
  for (int l = 0; l < 2; ++l)
    pair[l] = ((lane[l] + lane[2 + l]) + (lane[4 + l] + lane[6 + l])) +
              ((lane[8 + l] + lane[10 + l]) + (lane[12 + l] + lane[14 + l]));
  double all = parts == 1 ? pair[0] + pair[1] : pair[part];
  for (int i = groups * 16 + part; i < n * parts; i += parts) all += double(x[i]);
  return all;
}

float foldFour(const float* l) { return (l[0] + l[2]) + (l[1] + l[3]); }

double blockwiseSum(const float* data, int n, uintptr_t address) {
  double all = 0;
  for (int start = 0; start < n; start += 1024, address += 4096) {
    const float* x = data + start;
    const int count = std::min(1024, n - start);
    float sum = 0;
    int i = 0;
    const int lead = address % 4 ? count : std::min(count, int((16 - address % 16) % 16 / 4));
    while (i < lead) sum += x[i++];
    if (i + 32 <= count) {
      float lane[32] = {sum}, four[4];
      for (; i + 32 <= count; i += 32)
        for (int k = 0; k < 32; ++k) lane[k] += x[i + k];
      for (int l = 0; l < 4; ++l)
        four[l] = ((lane[l] + lane[4 + l]) + (lane[8 + l] + lane[12 + l])) +
                  ((lane[16 + l] + lane[20 + l]) + (lane[24 + l] + lane[28 + l]));
      sum = foldFour(four);
    }
    float four[4] = {sum};
    for (; i + 4 <= count; i += 4)
      for (int k = 0; k < 4; ++k) four[k] += x[i + k];
    sum = foldFour(four);
    while (i < count) sum += x[i++];
    all += double(sum);
  }
  return all;
}

double parityMean(const float* x, int n) {
  double sum[2] = {};
  const int whole = n / 4 * 4;
  for (int i = 0; i < whole; ++i) sum[i % 2] += double(x[i]);
  double all = sum[1] + sum[0];
  for (int i = whole; i < n; ++i) all += double(x[i]);
  return all / n;
}

// Nearly everything cancels and what is left are the roundings of the partial sums in double: any other order of
// additions shows.
std::vector<float> cancellingVector(int n) {
  auto x = randomVector<float>(n);
  for (int i = 0; i < n / 2; ++i) x[n - 1 - i] = -(x[i] = std::ldexp(x[i], i * 7 % 60));
  return x;
}

TEST(Sum, FloatOrders) {
  std::vector<int> lengths = sweepLengths(100, 300);
  for (int n : {1023, 1024, 1025, 2047, 2049, 5000}) lengths.push_back(n);
  for (int n : lengths) {
    for (const auto& x : {randomVector<float>(n), cancellingVector(n)}) {
      inEverySlot([&](int slot) {
        atEveryPlace(
            16,
            [&](const float* p) {
              for (VekHintAlgorithm hint : kHints) {
                float got = -1;
                ASSERT_EQ(veksSum_32f(p, n, &got, hint), vekStsNoErr);
                if (hint != vekAlgHintFast) {
                  ASSERT_EQ(got, float(sixteenSums(x.data(), n, 1, 0))) << n;
                } else if (slot < kFirstRegroupingSlot) {
                  ASSERT_EQ(got, float(blockwiseSum(x.data(), n, reinterpret_cast<uintptr_t>(p)))) << n;
                }
              }
            },
            x);
      });
    }
  }
}

TEST(Mean, FloatOrders) {
  for (int n : sweepLengths(70, 5000)) {
    const auto x = randomVector<float>(n);
    inEverySlot([&](int slot) {
      if (slot >= kFirstRegroupingSlot) return;
      atEveryPlace(
          5,
          [&](const float* p) {
            for (VekHintAlgorithm hint : kHints) {
              float got = -1;
              ASSERT_EQ(veksMean_32f(p, n, &got, hint), vekStsNoErr);
              ASSERT_EQ(got, float(parityMean(x.data(), n))) << n;
            }
          },
          x);
    });
  }
}

TEST(SumAndMean, ComplexIsTheSameForEveryHintAndSlot) {
  for (int n : sweepLengths(70, 300)) {
    const auto x = randomVector<Vek32fc>(n);
    const float* parts = &x[0].re;
    const double re = sixteenSums(parts, n, 2, 0), im = sixteenSums(parts, n, 2, 1);
    inEverySlot([&](int) {
      atEveryPlace(
          5,
          [&](const Vek32fc* p) {
            for (VekHintAlgorithm hint : kHints) {
              Vek32fc sum, mean;
              ASSERT_EQ(veksSum_32fc(p, n, &sum, hint), vekStsNoErr);
              ASSERT_EQ(veksMean_32fc(p, n, &mean, hint), vekStsNoErr);
              ASSERT_TRUE(sameBits(sum, Vek32fc{float(re), float(im)})) << n;
              ASSERT_TRUE(sameBits(mean, Vek32fc{float(re / n), float(im / n)})) << n;
            }
          },
          x);
    });
  }
}

TEST(SumAndMean, NanAndInfinityArriveInTheResult) {
  inEverySlot([&](int) {
    for (float special : {NAN, INFINITY, -INFINITY})
      for (int n : {1, 3, 17, 70, 3000})
        for (int at : {0, n / 2, n - 1})
          for (VekHintAlgorithm hint : kHints) {
            std::vector<float> x(n, 1.5f);
            x[at] = special;
            float sum, mean, deviation = -1;
            veksSum_32f(x.data(), n, &sum, hint);
            veksMean_32f(x.data(), n, &mean, hint);
            ASSERT_TRUE(sameBits(sum, special) && sameBits(mean, special)) << n << " " << at;
            if (n > 1) veksStdDev_32f(x.data(), n, &deviation, hint);
            ASSERT_EQ(deviation, n > 1 ? 0.0f : -1.0f);  // the numerator is NaN, or infinity less infinity
          }
  });
}

// ---- integers ------------------------------------------------------------------------------------------------------

int32_t saturate(Int128 x) { return x > INT32_MAX ? INT32_MAX : x < INT32_MIN ? INT32_MIN : int32_t(x); }

// x / y to nearest, ties to even, y > 0.
Int128 divideNearest(Int128 x, Int128 y) {
  Int128 q = x / y, r = x % y;
  if (r < 0) q -= 1, r += y;
  return q + (2 * r > y || (2 * r == y && q % 2 != 0));
}

int32_t scaled(Int128 x, int scaleFactor) {
  if (scaleFactor > 0) return saturate(divideNearest(x, Int128(1) << std::min(scaleFactor, 100)));
  return saturate(x * (Int128(1) << std::min<int64_t>(-int64_t(scaleFactor), 40)));
}

int32_t referenceMean(int64_t sum, int n, int scaleFactor) {
  if (scaleFactor < 0 && scaleFactor > -32 && saturate(sum) == sum)
    return saturate(divideNearest(Int128(sum) << -scaleFactor, n));
  return scaled(divideNearest(sum, n), scaleFactor);
}

const std::vector<int> kScaleFactors = {
    0,  1,  2,   3,  7,  15, 16, 17,  30,  31,  32,  33,  34,  46,  47,  48,  49,  50,  61,   62,        63,
    64, 65, 200, -1, -2, -3, -7, -15, -16, -30, -31, -32, -33, -40, -62, -63, -64, -65, -200, INT32_MAX, INT32_MIN};

void checkScaledSums(const std::vector<int16_t>& x, const std::vector<int32_t>& y) {
  const int n = int(x.size());
  int64_t sum16 = 0, sum32 = 0;
  for (int i = 0; i < n; ++i) sum16 += x[i], sum32 += y[i];
  inEverySlot([&](int) {
    for (int scaleFactor : kScaleFactors) {
      int32_t s16, s32, mean;
      ASSERT_EQ(veksSum_16s32s_Sfs(x.data(), n, &s16, scaleFactor), vekStsNoErr);
      ASSERT_EQ(veksSum_32s_Sfs(y.data(), n, &s32, scaleFactor), vekStsNoErr);
      ASSERT_EQ(veksMean_32s_Sfs(y.data(), n, &mean, scaleFactor), vekStsNoErr);
      ASSERT_EQ(s16, scaled(sum16, scaleFactor)) << n << " sf " << scaleFactor;
      ASSERT_EQ(s32, scaled(sum32, scaleFactor)) << n << " sf " << scaleFactor;
      ASSERT_EQ(mean, referenceMean(sum32, n, scaleFactor)) << n << " sf " << scaleFactor;
    }
  });
}

TEST(IntegerSums, ScaledRoundedAndSaturated) {
  checkScaledSums({6}, {6});
  checkScaledSums({10}, {10});
  checkScaledSums({0}, {0});
  checkScaledSums({1, 2}, {1, 2});  // means of 1.5 and 2.5 go to 2
  checkScaledSums({1, 4}, {1, 4});
  checkScaledSums({-1, -2}, {-1, -2});
  checkScaledSums({-1, -4}, {-1, -4});
  checkScaledSums({INT16_MIN}, {INT32_MIN});
  checkScaledSums({INT16_MAX}, {INT32_MAX});
  for (int n : {2, 3, 31, 64, 65, 100, 257})
    for (int size : {0, 8, 24}) {
      auto x = randomVector<int16_t>(n);
      auto y = randomVector<int32_t>(n);
      for (int i = 0; i < n; ++i) x[i] = int16_t(x[i] >> size / 2), y[i] >>= size;
      checkScaledSums(x, y);
    }
}

TEST(IntegerSums, BlocksDoNotOverflow) {
  for (int n : {65535, 65536, 65537, 70000, 131072 + 77})
    for (int sign : {0, -1})
      checkScaledSums(std::vector<int16_t>(n, int16_t(INT16_MAX ^ sign)), std::vector<int32_t>(n, INT32_MAX ^ sign));
  std::vector<int16_t> x(200000, INT16_MIN);
  std::vector<int32_t> y(200000, INT32_MAX);
  for (size_t i = 0; i < x.size(); i += 3) x[i] = INT16_MAX, y[i] = INT32_MIN;
  checkScaledSums(x, y);
}

// ---- deviations ----------------------------------------------------------------------------------------------------

void expectMoments(const std::vector<float>& x, double relative) {
  const int n = int(x.size());
  long double mean = 0, squares = 0;
  for (float v : x) mean += v;
  mean /= n;
  for (float v : x) squares += (v - mean) * (v - mean);
  const double want = double(std::sqrt(squares / (n - 1)));
  inEverySlot([&](int) {
    atEveryPlace(
        5,
        [&](const float* p) {
          float fast, accurate, m, both;
          ASSERT_EQ(veksStdDev_32f(p, n, &fast, vekAlgHintFast), vekStsNoErr);
          ASSERT_EQ(veksStdDev_32f(p, n, &accurate, vekAlgHintNone), vekStsNoErr);
          ASSERT_EQ(veksMeanStdDev_32f(p, n, &m, &both, vekAlgHintFast), vekStsNoErr);
          ASSERT_NEAR(fast, want, want * 2e-6) << n;
          ASSERT_NEAR(accurate, want, want * relative) << n;
          ASSERT_EQ(both, accurate);
          ASSERT_NEAR(m, double(mean), 1e-7 * (std::fabs(double(mean)) + want));
        },
        x);
  });
}

TEST(StdDev, MatchesTheDefinition) {
  for (int n : sweepLengths(80, 1100))
    if (n > 1) expectMoments(randomVector<float>(n), 1e-7);
  std::vector<float> far = randomVector<float>(3000), huge = far, tiny = far;
  for (size_t i = 0; i < far.size(); ++i) far[i] += 1e6f, huge[i] *= 1e30f, tiny[i] *= 1e-30f;
  expectMoments(far, 1e-7);
  expectMoments(huge, 1e-7);
  expectMoments(tiny, 1e-7);
}

TEST(StdDev, ConstantIsExactlyZero) {
  inEverySlot([&](int) {
    for (float c : {0.1f, -1.0f / 3, 1e30f, 3e38f, 16777215.0f, 1e-40f, 0.0f})
      for (int n : {2, 3, 7, 63, 64, 65, 1000, 4099})
        for (VekHintAlgorithm hint : kHints) {
          const std::vector<float> x(n, c);
          float alone = -1, both = -1, mean;
          veksStdDev_32f(x.data(), n, &alone, hint);
          veksMeanStdDev_32f(x.data(), n, &mean, &both, hint);
          ASSERT_EQ(alone, 0.0f) << c << " x " << n;
          ASSERT_EQ(both, 0.0f) << c << " x " << n;
          ASSERT_FLOAT_EQ(mean, c);
        }
  });
}

TEST(StdDev, TwoElementsAtLeast) {
  inEverySlot([&](int) {
    const float x = 1;
    float mean = -7, deviation = -7;
    EXPECT_EQ(veksStdDev_32f(&x, 1, &deviation, vekAlgHintNone), vekStsSizeErr);
    EXPECT_EQ(veksMeanStdDev_32f(&x, 1, &mean, &deviation, vekAlgHintNone), vekStsSizeErr);
    EXPECT_EQ(veksMeanStdDev_32f(&x, 1, nullptr, &deviation, vekAlgHintNone), vekStsNullPtrErr);
    EXPECT_EQ(mean, -7);
    EXPECT_EQ(deviation, -7);
  });
}

}  // namespace
