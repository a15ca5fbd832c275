// SPDX-License-Identifier: Apache-2.0
// Thresholds against their rules in scalar code.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

template <class T, class... A>
using Plain = VekStatus (*)(const T*, T*, int, A...);
template <class T, class... A>
using InPlace = VekStatus (*)(T*, int, A...);

// Both forms of a function with the given arguments.
template <class T, class Ref, class... A>
void checkBoth(const std::vector<T>& values, Plain<T, A...> plain, InPlace<T, A...> inPlace, Ref ref,
               std::common_type_t<A>... args) {
  Shapes(values).check([=](const T* a, T* d, int n) { return plain(a, d, n, args...); }, each<T>(ref),
                       [=](T* d, int n) { return inPlace(d, n, args...); });
}

template <class T>
std::vector<T> sourceValues() {
  if constexpr (std::is_same_v<T, float>) {
    return floatSweep<float>();
  } else {
    return mixedVector<T>(700);
  }
}

template <class T>
std::vector<T> levels() {
  if constexpr (std::is_same_v<T, float>) {
    return {0.0f, -0.0f, 1.5f, -2.0f, 100.0f, 1e30f, 1e-40f, -INFINITY, INFINITY};
  } else {
    return {0, 1, -1, 100, -3000, std::numeric_limits<T>::max(), std::numeric_limits<T>::min()};
  }
}

#define FORMS(name, type) veksThreshold_##name##_##type, veksThreshold_##name##_##type##_I

template <class T>
void checkOneSided(Plain<T, T> lt, InPlace<T, T> ltI, Plain<T, T> gt, InPlace<T, T> gtI) {
  for (const T level : levels<T>()) {
    SCOPED_TRACE(level);
    checkBoth<T>(
        sourceValues<T>(), lt, ltI, [=](T x) { return x > level ? x : level; }, level);
    checkBoth<T>(
        sourceValues<T>(), gt, gtI, [=](T x) { return x < level ? x : level; }, level);
  }
}

TEST(Threshold, BelowAndAbove) {
  checkOneSided<Vek16s>(FORMS(LT, 16s), FORMS(GT, 16s));
  checkOneSided<Vek32s>(FORMS(LT, 32s), FORMS(GT, 32s));
  checkOneSided<Vek32f>(FORMS(LT, 32f), FORMS(GT, 32f));
}

TEST(Threshold, ByRelation) {
  const std::vector<float> v = floatSweep<float>();
  const auto less = [](float x) { return x > 1.5f ? x : 1.5f; };
  const auto greater = [](float x) { return x < 1.5f ? x : 1.5f; };
  checkBoth<float>(v, veksThreshold_32f, veksThreshold_32f_I, less, 1.5f, int(vekCompareLess));
  checkBoth<float>(v, veksThreshold_32f, veksThreshold_32f_I, greater, 1.5f, int(vekCompareGreater));
}

TEST(Threshold, ByValue) {
  const std::vector<float> v = floatSweep<float>();
  for (const float level : levels<float>()) {
    SCOPED_TRACE(level);
    checkBoth<float>(
        v, FORMS(LTVal, 32f), [=](float x) { return x >= level ? x : 7.25f; }, level, 7.25f);
    checkBoth<float>(
        v, FORMS(GTVal, 32f), [=](float x) { return level >= x ? x : -7.25f; }, level, -7.25f);
  }
}

template <class T>
void checkTwoSided(Plain<T, T, T, T, T> plain, InPlace<T, T, T, T, T> inPlace) {
  for (const auto& [low, high] :
       {std::pair<T, T>(T(-100), T(50)), {T(3), T(3)}, {T(0), std::numeric_limits<T>::max()}}) {
    const T l = low, h = high;
    const auto ref = [=](T x) { return x < l ? T(11) : x > h || x != x ? T(-12) : x; };
    checkBoth<T>(sourceValues<T>(), plain, inPlace, ref, l, T(11), h, T(-12));
  }
}

TEST(Threshold, ByTwoValues) {
  checkTwoSided<Vek32s>(FORMS(LTValGTVal, 32s));
  checkTwoSided<Vek32f>(FORMS(LTValGTVal, 32f));
}

template <class T>
void checkByMagnitude(Plain<T, T> lt, InPlace<T, T> ltI, Plain<T, T> gt, InPlace<T, T> gtI) {
  for (const T level : levels<T>()) {
    if (level < 0) continue;
    SCOPED_TRACE(level);
    using Wide = std::conditional_t<std::is_integral_v<T>, int64_t, double>;
    const auto smaller = [=](T x) {
      return (x < 0 ? -Wide(x) : Wide(x)) < Wide(level) ? x >= 0 ? level : T(-level) : x;
    };
    // With a level of zero the sign of the result is open; every other result is decided.
    const auto larger = [=](T x) {
      return x != x || x > level ? level : x < T(-level) ? T(-level) : x == 0 && level == 0 ? level : x;
    };
    checkBoth<T>(sourceValues<T>(), lt, ltI, smaller, level);
    checkBoth<T>(sourceValues<T>(), gt, gtI, larger, level);
  }
}

TEST(Threshold, ByMagnitude) {
  checkByMagnitude<Vek32s>(FORMS(LTAbs, 32s), FORMS(GTAbs, 32s));
  checkByMagnitude<Vek32f>(FORMS(LTAbs, 32f), FORMS(GTAbs, 32f));
}

TEST(Threshold, Inverts) {
  for (const float level : levels<float>()) {
    if (!(level > 0)) continue;
    SCOPED_TRACE(level);
    const auto ref = [=](float x) { return std::fabs(double(x)) > level ? 1 / x : x >= 0 ? 1 / level : -1 / level; };
    checkBoth<float>(floatSweep<float>(), FORMS(LTInv, 32f), ref, level);
  }
}

// At level 0: the warning comes for a zero at any place of a vector of any length, and only then.
TEST(Threshold, InvertsAtLevelZero) {
  inEverySlot([](int) {
    for (const int n : {1, 3, 8, 31, 64, 257})
      for (int at = -1; at<n; at += n> 64 ? 17 : 1) {
        std::vector<float> x(n, -2.0f), got(n), want(n, -0.5f);
        std::vector<Vek32fc> z(n, {0.0f, 2.0f}), gotC(n), wantC(n, {0.0f, -0.5f});
        if (at >= 0)
          x[at] = at % 2 ? 0.0f : -0.0f, want[at] = INFINITY, z[at] = {x[at], -0.0f}, wantC[at] = {INFINITY, 0};
        const VekStatus status = at >= 0 ? vekStsInvZero : vekStsNoErr;
        EXPECT_EQ(veksThreshold_LTInv_32f(x.data(), got.data(), n, 0.0f), status);
        EXPECT_TRUE(sameVectors(got, want));
        EXPECT_EQ(veksThreshold_LTInv_32f_I(x.data(), n, -0.0f), status);
        EXPECT_TRUE(sameVectors(x, want));
        EXPECT_EQ(veksThreshold_LTInv_32fc(z.data(), gotC.data(), n, 0.0f), status);
        EXPECT_TRUE(sameVectors(gotC, wantC));
        EXPECT_EQ(veksThreshold_LTInv_32fc_I(z.data(), n, 0.0f), status);
        EXPECT_TRUE(sameVectors(z, wantC));
      }
  });
}

// ---- complex elements ----------------------------------------------------------------------------------------------

std::vector<Vek32fc> complexValues() {
  std::vector<Vek32fc> v = {{0, 0}, {-0.0f, 0}, {0, 0.5f},       {3, 4},   {-3, 4},
                            {1, 0}, {0, -1},    {1e-3f, -1e-3f}, {NAN, 1}, {INFINITY, 0}};
  for (int i = 0; i < 500; ++i) v.push_back(randomValue<Vek32fc>());
  for (int i = 0; i < 300; ++i) v.push_back({randomValue<float>() / 500, randomValue<float>() / 500});
  return v;
}

float square(Vek32fc x) { return x.re * x.re + x.im * x.im; }
Vek32fc times(Vek32fc x, double f) { return {float(x.re * f), float(x.im * f)}; }

TEST(Threshold, Complex) {
  const std::vector<Vek32fc> v = complexValues();
  for (const float level : {0.0f, 1.0f, 2.5f, 700.0f}) {
    SCOPED_TRACE(level);
    const float l2 = level * level;
    const auto lt = [=](Vek32fc x) {
      if (square(x) >= l2) return x;
      return x.re == 0 && x.im == 0 ? Vek32fc{level, 0} : times(x, std::sqrt(double(l2) / square(x)));
    };
    const auto gt = [=](Vek32fc x) { return square(x) <= l2 ? x : times(x, std::sqrt(double(l2) / square(x))); };
    const Vek32fc value = {-1, 9};
    checkBoth<Vek32fc>(v, FORMS(LT, 32fc), lt, level);
    checkBoth<Vek32fc>(v, FORMS(GT, 32fc), gt, level);
    checkBoth<Vek32fc>(v, veksThreshold_32fc, veksThreshold_32fc_I, lt, level, int(vekCompareLess));
    checkBoth<Vek32fc>(v, veksThreshold_32fc, veksThreshold_32fc_I, gt, level, int(vekCompareGreater));
    checkBoth<Vek32fc>(
        v, FORMS(LTVal, 32fc), [=](Vek32fc x) { return square(x) >= l2 ? x : value; }, level, value);
    checkBoth<Vek32fc>(
        v, FORMS(GTVal, 32fc), [=](Vek32fc x) { return square(x) <= l2 ? x : value; }, level, value);
    if (level == 0) continue;
    checkBoth<Vek32fc>(
        v, FORMS(LTInv, 32fc),
        [=](Vek32fc x) {
          const float m = square(x);
          if (m > l2) return Vek32fc{x.re / m, -x.im / m};
          if (x.re == 0 && x.im == 0) return Vek32fc{1 / level, 0};
          return times({x.re, -x.im}, 1 / (double(level) * std::sqrt(double(m))));
        },
        level);
  }
}

// Squares that leave the range of single precision must not spoil the magnitude.
TEST(Threshold, ComplexBeyondTheRangeOfSquares) {
  const auto near = [](float got, float want) { return std::fabs(got - want) <= 1e-6f * std::fabs(want); };
  inEverySlot([&](int) {
    const Vek32fc tiny = {3e-30f, -4e-30f}, huge = {-3e30f, 4e30f};
    Vek32fc d;
    EXPECT_EQ(veksThreshold_LT_32fc(&tiny, &d, 1, 5.0f), vekStsNoErr);
    EXPECT_TRUE(near(d.re, 3) && near(d.im, -4)) << d.re << " " << d.im;
    EXPECT_EQ(veksThreshold_GT_32fc(&huge, &d, 1, 5.0f), vekStsNoErr);
    EXPECT_TRUE(near(d.re, -3) && near(d.im, 4)) << d.re << " " << d.im;
    EXPECT_EQ(veksThreshold_LT_32fc(&tiny, &d, 1, 5e25f), vekStsNoErr);
    EXPECT_TRUE(near(d.re, 3e25f) && near(d.im, -4e25f)) << d.re << " " << d.im;
    EXPECT_EQ(veksThreshold_LTInv_32fc(&tiny, &d, 1, 0.0f), vekStsNoErr);
    EXPECT_TRUE(near(d.re, 1.2e29f) && near(d.im, 1.6e29f)) << d.re << " " << d.im;
    EXPECT_EQ(veksThreshold_LTInv_32fc(&huge, &d, 1, 1.0f), vekStsNoErr);
    EXPECT_TRUE(near(d.re, -1.2e-31f) && near(d.im, -1.6e-31f)) << d.re << " " << d.im;
  });
}

// ---- arguments -----------------------------------------------------------------------------------------------------

TEST(Threshold, RefusesInOrder) {
  inEverySlot([](int) {
    const float x = 1;
    const Vek32s i = 1;
    const Vek32fc z = {1, 1};
    float d = 99;
    Vek32s di = 99;
    Vek32fc dz = {99, 99};
    for (const int relOp : {-1, 1, 2, 3, 5}) {
      EXPECT_EQ(veksThreshold_32f(&x, &d, 1, 1, relOp), vekStsBadArgErr);
      EXPECT_EQ(veksThreshold_32f_I(&d, 1, 1, relOp), vekStsBadArgErr);
      EXPECT_EQ(veksThreshold_32fc(&z, &dz, 1, -1, relOp), vekStsBadArgErr);
      EXPECT_EQ(veksThreshold_32fc_I(&dz, 1, -1, relOp), vekStsBadArgErr);
      EXPECT_EQ(veksThreshold_32f(&x, &d, 0, 1, relOp), vekStsSizeErr);
    }
    // The length is judged before the level.
    for (const auto& [len, refusal] : {std::pair(1, vekStsThreshNegLevelErr), std::pair(0, vekStsSizeErr)})
      for (const VekStatus s :
           {veksThreshold_32fc(&z, &dz, len, -1, vekCompareLess), veksThreshold_LT_32fc(&z, &dz, len, -1),
            veksThreshold_GT_32fc_I(&dz, len, -1), veksThreshold_LTVal_32fc(&z, &dz, len, -1, z),
            veksThreshold_GTVal_32fc(&z, &dz, len, -1, z), veksThreshold_LTInv_32fc(&z, &dz, len, -1),
            veksThreshold_LTInv_32f(&x, &d, len, -1), veksThreshold_LTAbs_32f(&x, &d, len, -1),
            veksThreshold_GTAbs_32f(&x, &d, len, -1), veksThreshold_LTAbs_32s(&i, &di, len, -1),
            veksThreshold_GTAbs_32s_I(&di, len, -1)})
        EXPECT_EQ(s, refusal);
    EXPECT_EQ(veksThreshold_LTValGTVal_32f(&x, &d, 1, 2, 0, 1, 0), vekStsThresholdErr);
    EXPECT_EQ(veksThreshold_LTValGTVal_32s_I(&di, 1, 2, 0, 1, 0), vekStsThresholdErr);
    EXPECT_EQ(veksThreshold_LTValGTVal_32f(&x, &d, 0, 2, 0, 1, 0), vekStsSizeErr);
    EXPECT_EQ(veksThreshold_LTInv_32f(&x, &d, 0, 0), vekStsSizeErr);
    EXPECT_EQ(veksThreshold_LTInv_32fc(&z, &dz, 0, 0), vekStsSizeErr);
    EXPECT_EQ(d, 99);
    EXPECT_EQ(di, 99);
    EXPECT_EQ(dz.re, 99);
  });
}

}  // namespace
