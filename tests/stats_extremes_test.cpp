// SPDX-License-Identifier: Apache-2.0
// Extremes and their positions against the scan in index order that defines them: ties, NaN and signed zeros anywhere.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

template <class T>
struct Extremes {
  T low, high;
  int lowAt, highAt;
};

template <class T>
Extremes<T> scan(const std::vector<T>& x) {
  Extremes<T> e = {x[0], x[0], 0, 0};
  for (int i = 1; i < int(x.size()); ++i) {
    if (x[i] > e.high) e.high = x[i], e.highAt = i;
    if (x[i] < e.low) e.low = x[i], e.lowAt = i;
  }
  return e;
}

template <class T>
struct Family {
  VekStatus (*max)(const T*, int, T*);
  VekStatus (*min)(const T*, int, T*);
  VekStatus (*minMax)(const T*, int, T*, T*);
  VekStatus (*maxIndx)(const T*, int, T*, int*);
  VekStatus (*minIndx)(const T*, int, T*, int*);
  VekStatus (*minMaxIndx)(const T*, int, T*, int*, T*, int*);
};
const Family<int16_t> kShorts = {veksMax_16s,     veksMin_16s,     veksMinMax_16s,
                                 veksMaxIndx_16s, veksMinIndx_16s, veksMinMaxIndx_16s};
const Family<int32_t> kInts = {veksMax_32s,     veksMin_32s,     veksMinMax_32s,
                               veksMaxIndx_32s, veksMinIndx_32s, veksMinMaxIndx_32s};
const Family<float> kFloats = {veksMax_32f,     veksMin_32f,     veksMinMax_32f,
                               veksMaxIndx_32f, veksMinIndx_32f, veksMinMaxIndx_32f};

// What a member wrote: bits of values, so that signs of zeros and NaNs count.
template <class T>
std::vector<int64_t> raw(std::initializer_list<T> values, std::initializer_list<int> positions) {
  std::vector<int64_t> out(positions.begin(), positions.end());
  for (T v : values) {
    int64_t b = 0;
    memcpy(&b, &v, sizeof v);
    out.push_back(b);
  }
  return out;
}

template <class T>
void check(const Family<T>& f, const std::vector<T>& x, const T* p) {
  const int n = int(x.size());
  const Extremes<T> want = scan(x);
  const T unset = T(77);
  T low = unset, high = unset;
  int lowAt = -1, highAt = -1;
  ASSERT_EQ(f.max(p, n, &high), vekStsNoErr);
  ASSERT_EQ(f.min(p, n, &low), vekStsNoErr);
  ASSERT_EQ(raw({low, high}, {}), raw({want.low, want.high}, {})) << n;
  low = high = unset;
  ASSERT_EQ(f.minMax(p, n, &low, &high), vekStsNoErr);
  ASSERT_EQ(raw({low, high}, {}), raw({want.low, want.high}, {})) << n;
  low = high = unset;
  ASSERT_EQ(f.maxIndx(p, n, &high, &highAt), vekStsNoErr);
  ASSERT_EQ(f.minIndx(p, n, &low, &lowAt), vekStsNoErr);
  ASSERT_EQ(raw({low, high}, {lowAt, highAt}), raw({want.low, want.high}, {want.lowAt, want.highAt})) << n;
  low = high = unset;
  lowAt = highAt = -1;
  ASSERT_EQ(f.minMaxIndx(p, n, &low, &lowAt, &high, &highAt), vekStsNoErr);
  ASSERT_EQ(raw({low, high}, {lowAt, highAt}), raw({want.low, want.high}, {want.lowAt, want.highAt})) << n;
}

// Few distinct values make ties; floats get zeros of both signs and NaN.
template <class T>
std::vector<T> tiedVector(int n) {
  std::vector<T> x(n);
  for (T& v : x) v = T(int(rng()() % 5) - 2);
  if constexpr (std::is_floating_point_v<T>)
    for (T& v : x) v = v == T(2) ? T(NAN) : v == T(1) ? T(-0.0) : v;
  return x;
}

template <class T>
void sweep(const Family<T>& f) {
  for (int n : sweepLengths(150, 9000))
    for (const std::vector<T>& x : {randomVector<T>(n), tiedVector<T>(n), mixedVector<T>(n)})
      inEverySlot([&](int) {
        atEveryPlace(
            n > 64 ? 4 : 17, [&](const T* p) { check(f, x, p); }, x);
      });
}
TEST(Extremes, Shorts) { sweep(kShorts); }
TEST(Extremes, Ints) { sweep(kInts); }
TEST(Extremes, Floats) { sweep(kFloats); }

// One outlier walks over every position, alone and followed by equals.
template <class T>
void walk(const Family<T>& f, const std::vector<T>& outliers, T background, const std::vector<int>& lengths) {
  for (int n : lengths)
    for (T outlier : outliers)
      for (int at = 0; at<n; at += n> 200 ? 37 : 1)
        for (bool repeated : {false, true}) {
          std::vector<T> x(n, background);
          for (int i = at; i < n; i += 3) {
            x[i] = outlier;
            if (!repeated) break;
          }
          inEverySlot([&](int) { check(f, x, x.data()); });
        }
}
TEST(Extremes, FirstOfEqualsAtEveryPosition) {
  const std::vector<int> lengths = {1, 2, 7, 8, 15, 16, 31, 33, 65, 100, 4500};
  walk<int16_t>(kShorts, {INT16_MAX, INT16_MIN, 1}, 0, lengths);
  walk<int32_t>(kInts, {INT32_MAX, INT32_MIN, 1}, 0, lengths);
  walk<float>(kFloats, {1.0f, -1.0f, NAN, INFINITY, -INFINITY}, 0.0f, lengths);
}

TEST(Extremes, TheFirstZeroGivesTheSign) {
  for (int n : {2, 9, 16, 40, 130})
    for (int at = 0; at + 1 < n; ++at)
      for (float background : {-1.0f, 1.0f, NAN, INFINITY, -INFINITY})
        for (float first : {0.0f, -0.0f}) {
          std::vector<float> x(n, background);
          x[at] = first;
          for (int i = at + 1; i < n; i += 2) x[i] = -first;
          inEverySlot([&](int) { check(kFloats, x, x.data()); });
        }
}

TEST(Extremes, RisingAndFallingAcrossBlocks) {
  std::vector<int16_t> shorts(65536);
  std::vector<int32_t> ints(10000);
  std::vector<float> floats(10000);
  for (int direction : {1, -1}) {
    for (int i = 0; i < 65536; ++i) shorts[i] = int16_t(direction * (i - 32768) / 2);
    for (int i = 0; i < 10000; ++i) ints[i] = direction * i, floats[i] = float(direction * i);
    inEverySlot([&](int) {
      check(kShorts, shorts, shorts.data());
      check(kInts, ints, ints.data());
      check(kFloats, floats, floats.data());
    });
  }
}

TEST(Extremes, NanInFrontKeepsItsBits) {
  for (uint32_t pattern : {0x7FC00001u, 0xFFC12345u, 0x7F800001u}) {
    std::vector<float> x(50, 3.0f);
    memcpy(&x[0], &pattern, 4);
    inEverySlot([&](int) {
      for (int n : {1, 5, 50}) {
        float values[4];
        int at = -1;
        veksMax_32f(x.data(), n, &values[0]);
        veksMinMax_32f(x.data(), n, &values[1], &values[2]);
        veksMinIndx_32f(x.data(), n, &values[3], &at);
        EXPECT_EQ(at, 0);
        for (const float& v : values) EXPECT_EQ(memcmp(&v, &pattern, 4), 0);
      }
    });
  }
}

// ---- magnitudes ----------------------------------------------------------------------------------------------------

void checkMagnitudes(const std::vector<int32_t>& x, const int32_t* p) {
  const int n = int(x.size());
  std::vector<int32_t> m(n);
  for (int i = 0; i < n; ++i) m[i] = int32_t(std::min<int64_t>(INT32_MAX, std::abs(int64_t(x[i]))));
  const Extremes<int32_t> want = scan(m);
  int32_t low = -1, high = -1, low2 = -1, high2 = -1;
  int lowAt = -1, highAt = -1;
  ASSERT_EQ(veksMaxAbs_32s(p, n, &high), vekStsNoErr);
  ASSERT_EQ(veksMinAbs_32s(p, n, &low), vekStsNoErr);
  ASSERT_EQ(veksMaxAbsIndx_32s(p, n, &high2, &highAt), vekStsNoErr);
  ASSERT_EQ(veksMinAbsIndx_32s(p, n, &low2, &lowAt), vekStsNoErr);
  ASSERT_EQ(raw({low, low2, high, high2}, {lowAt, highAt}),
            raw({want.low, want.low, want.high, want.high}, {want.lowAt, want.highAt}))
      << n;
}

TEST(ExtremeMagnitudes, ClampedBeforeTheyAreCompared) {
  std::vector<std::vector<int32_t>> cases = {
      {INT32_MIN}, {INT32_MAX, INT32_MIN}, {INT32_MIN, INT32_MAX}, {-3, 3, 2, -2}};
  for (int n : sweepLengths(100, 2100)) {
    cases.push_back(mixedVector<int32_t>(n));
    cases.push_back(tiedVector<int32_t>(n));
    cases.push_back(std::vector<int32_t>(n, INT32_MIN + 1));
    cases.back()[n / 2] = INT32_MIN;
  }
  for (const auto& x : cases)
    inEverySlot([&](int) {
      atEveryPlace(
          5, [&](const int32_t* p) { checkMagnitudes(x, p); }, x);
    });
}

TEST(Extremes, NullIndexPointers) {
  inEverySlot([&](int) {
    const std::vector<float> x = {1, 9, 2};
    const std::vector<int32_t> y = {-1, -9, 2};
    float value = 0, other = 0;
    int32_t magnitude = 0;
    int at = -1;
    EXPECT_EQ(veksMaxIndx_32f(x.data(), 3, &value, nullptr), vekStsNoErr);
    EXPECT_EQ(value, 9);
    EXPECT_EQ(veksMinAbsIndx_32s(y.data(), 3, &magnitude, nullptr), vekStsNoErr);
    EXPECT_EQ(magnitude, 1);
    EXPECT_EQ(veksMaxAbsIndx_32s(y.data(), 0, &magnitude, nullptr), vekStsSizeErr);
    EXPECT_EQ(veksMinMaxIndx_32f(x.data(), 3, &value, nullptr, &other, &at), vekStsNullPtrErr);
    EXPECT_EQ(veksMinMaxIndx_32f(x.data(), 3, &value, &at, &other, nullptr), vekStsNullPtrErr);
  });
}

}  // namespace
