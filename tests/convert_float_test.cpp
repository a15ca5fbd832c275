// SPDX-License-Identifier: Apache-2.0
// Conversions from floating point to integers, and between single and double precision.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;

const int kScales[] = {0,    1,    4,         15, 31, 126, 127,  140,  149,   150,   1023,
                       1074, 1075, INT32_MAX, -1, -7, -31, -127, -128, -1023, -1024, INT32_MIN};

template <class T>
T multiplier(int s) {
  T m = 1;
  for (int i = 0; i < std::min(std::abs(int64_t(s)), int64_t(1200)); ++i) m *= s > 0 ? T(0.5) : T(2);
  return m;
}

// Scaled in the precision of the source, clamped, rounded; long double holds every value met here exactly.
template <class T>
int64_t rounded(T x, T m, int mode, int64_t low, int64_t high, int64_t ofNan) {
  const T y = x * m;
  if (std::isnan(y)) return ofNan;
  const long double c = std::min<long double>(std::max<long double>(y, low), high);
  if (mode == 0) return int64_t(std::trunc(c));
  return int64_t(mode == 1 ? std::nearbyint(c) : std::round(c));
}

template <class S, class D>
using Convert = VekStatus (*)(const S*, D*, int, VekRoundMode, int);

// Every length with a few of the scale factors, which otherwise run the same code.
template <class S, class Call, class Meaning>
void checkScaled(const std::vector<S>& values, int s, Call call, Meaning meaning) {
  s == 0 || s == 1 ? Shapes(values).check(call, meaning) : Shapes(values).values(call, meaning);
}

template <class S, class D>
void checkModes(Convert<S, D> convert, int64_t ofNan) {
  const std::vector<S> values = floatSweep<S>();
  for (const int s : kScales)
    for (const int mode : {0, 1, 2, 7, -1}) {
      SCOPED_TRACE(testing::Message() << "scale factor " << s << " mode " << mode);
      const S m = multiplier<S>(s);
      checkScaled(
          values, s, [=](const S* a, D* d, int n) { return convert(a, d, n, mode, s); }, each<D>([=](S x) {
            return rounded(x, m, mode, std::numeric_limits<D>::min(), std::numeric_limits<D>::max(), ofNan);
          }));
    }
}

TEST(ConvertFloat, RoundsTo8Bits) {
  checkModes<Vek32f, Vek8s>(veksConvert_32f8s_Sfs, 0);
  checkModes<Vek32f, Vek8u>(veksConvert_32f8u_Sfs, 0);
}
TEST(ConvertFloat, RoundsTo16Bits) {
  checkModes<Vek32f, Vek16s>(veksConvert_32f16s_Sfs, 0);
  checkModes<Vek32f, Vek16u>(veksConvert_32f16u_Sfs, 0);
}
TEST(ConvertFloat, RoundsTo32Bits) {
  checkModes<Vek32f, Vek32s>(veksConvert_32f32s_Sfs, INT32_MIN);
  checkModes<Vek64f, Vek32s>(veksConvert_64f32s_Sfs, INT32_MIN);
}

TEST(ConvertFloat, RoundsTo24BitsAwayFromZero) {
  const std::vector<Vek32f> values = floatSweep<Vek32f>();
  const auto packed = [](int64_t x) { return Vek24u{{Vek8u(x), Vek8u(x >> 8), Vek8u(x >> 16)}}; };
  for (const int s : kScales) {
    SCOPED_TRACE(s);
    const Vek32f m = multiplier<Vek32f>(s);
    checkScaled(
        values, s, [=](auto* a, Vek24u* d, int n) { return veksConvert_32f24s_Sfs(a, &d->byte[0], n, s); },
        each([=](Vek32f x) { return packed(rounded(x, m, 2, -8388608, 8388607, 0)); }));
    checkScaled(
        values, s, [=](auto* a, Vek24u* d, int n) { return veksConvert_32f24u_Sfs(a, &d->byte[0], n, s); },
        each([=](Vek32f x) { return packed(rounded(x, m, 2, 0, 16777215, 0)); }));
  }
}

TEST(ConvertFloat, ChangesPrecision) {
  Shapes(floatSweep<Vek32f>()).check(veksConvert_32f64f, each([](Vek32f x) { return Vek64f(x); }));
  Shapes(floatSweep<Vek64f>()).check(veksConvert_64f32f, each([](Vek64f x) { return Vek32f(x); }));
}

// Examples worked out by hand, so that the reference above is not the only witness.
TEST(ConvertFloat, Examples) {
  const struct {
    float x;
    int mode, scaleFactor, want;
  } cases[] = {{2.5f, 1, 0, 2},         {3.5f, 1, 0, 4},   {-2.5f, 1, 0, -2}, {-2.7f, 0, 0, -2},
               {2.5f, 2, 0, 3},         {-2.5f, 2, 0, -3}, {2.5f, 7, 0, 3},   {1.0e6f, 0, 0, 32767},
               {-1.0e6f, 2, 0, -32768}, {1.25f, 1, -1, 2}, {5.0f, 1, 1, 2},   {5.0f, 2, 1, 3},
               {0.49999997f, 2, 0, 0},  {-0.5f, 2, 0, -1}, {NAN, 0, 0, 0},    {0.0f, 1, -200, 0}};
  inEverySlot([&](int) {
    for (const auto& c : cases) {
      Vek16s got = 99;
      EXPECT_EQ(veksConvert_32f16s_Sfs(&c.x, &got, 1, c.mode, c.scaleFactor), vekStsNoErr);
      EXPECT_EQ(got, c.want) << c.x << " mode " << c.mode << " scale factor " << c.scaleFactor;
    }
  });
}

}  // namespace
