// SPDX-License-Identifier: Apache-2.0
// Conversions between integers, and from integers to floating point.
#include "tests/support/shapes.h"

namespace {

using namespace vektest;
__extension__ typedef __int128 Wide;

enum { kTruncate, kEven, kAway };

// x * 2^-s rounded and clamped, in exact arithmetic.
int64_t scaled(Wide x, int s, int mode, int64_t low, int64_t high) {
  Wide r = 0;
  if (s <= 0) {
    r = s < -60 ? (x > 0) - (x < 0) : x;
    if (s < -60) return r > 0 ? high : r < 0 ? low : 0;
    r = x * (Wide(1) << -s);
  } else if (s < 100) {
    const Wide unit = Wide(1) << s, a = x < 0 ? -x : x;
    r = a / unit;
    const Wide twice = 2 * (a % unit);
    if (mode == kEven && (twice > unit || (twice == unit && r % 2 != 0))) ++r;
    if (mode == kAway && twice >= unit) ++r;
    if (x < 0) r = -r;
  }
  return int64_t(r < low ? low : r > high ? high : r);
}

const int kScales[] = {0,   1,   2,   3,   4,   7,   8,   9,   15,  16,   17,        23,  24,    25,       30,
                       31,  32,  33,  40,  62,  63,  64,  65,  66,  1000, INT32_MAX, -1,  -2,    -5,       -8,
                       -15, -16, -17, -23, -24, -25, -31, -32, -33, -63,  -64,       -65, -1000, INT32_MIN};

template <class T>
Vek24u pack24(T x) {
  const uint32_t b = uint32_t(x);
  return {{Vek8u(b), Vek8u(b >> 8), Vek8u(b >> 16)}};
}
uint32_t unsigned24(Vek24u x) { return uint32_t(x.byte[0]) + uint32_t(x.byte[1]) * 256 + uint32_t(x.byte[2]) * 65536; }
int32_t signed24(Vek24u x) { return int32_t(x.byte[0]) + int32_t(x.byte[1]) * 256 + int32_t(Vek8s(x.byte[2])) * 65536; }

template <class T>
std::vector<T> everyValue() {
  std::vector<T> v;
  for (int i = std::numeric_limits<T>::min(); i <= std::numeric_limits<T>::max(); ++i) v.push_back(T(i));
  return v;
}

// Ties and their neighbours at every shift, around both ends and zero, and random values of every size.
template <class T>
std::vector<T> integerSweep() {
  std::vector<T> v = specialValues<T>();
  for (int s = 0; s < int(8 * sizeof(T)); ++s)
    for (int odd : {1, 3, 5, 7, 65535, 65537, 8388607, 16777215})
      for (int d : {-1, 0, 1}) {
        const uint64_t x = (uint64_t(odd) << s) + uint64_t(int64_t(d));
        v.push_back(T(x)), v.push_back(T(0 - x));
      }
  for (int i = 0; i < 1500; ++i) v.push_back(T(randomValue<T>() >> (i % int(8 * sizeof(T)))));
  return v;
}

std::vector<Vek24u> sweep24() {
  std::vector<Vek24u> v;
  for (const int32_t x : integerSweep<int32_t>()) v.push_back(pack24(x));
  v.push_back({{0xFF, 0xFF, 0xFF}}), v.push_back({{0, 0, 0x80}});
  return v;
}
Vek8u* bytes(Vek24u* p) { return reinterpret_cast<Vek8u*>(p); }

// Every length with a few of the scale factors, which otherwise run the same code.
template <class S, class Call, class Meaning>
void checkScaled(const std::vector<S>& values, bool everyLength, Call call, Meaning meaning) {
  everyLength ? Shapes(values).check(call, meaning) : Shapes(values).values(call, meaning);
}

TEST(ConvertInteger, WidensExactly) {
  Shapes(everyValue<Vek8s>()).check(veksConvert_8s16s, each([](Vek8s x) { return Vek16s(x); }));
  Shapes(everyValue<Vek16s>()).check(veksConvert_16s32s, each([](Vek16s x) { return Vek32s(x); }));
  Shapes(everyValue<Vek8u>()).check(veksConvert_8u32f, each([](Vek8u x) { return Vek32f(x); }));
  Shapes(everyValue<Vek8s>()).check(veksConvert_8s32f, each([](Vek8s x) { return Vek32f(x); }));
  Shapes(everyValue<Vek16u>()).check(veksConvert_16u32f, each([](Vek16u x) { return Vek32f(x); }));
  Shapes(everyValue<Vek16s>()).check(veksConvert_16s32f, each([](Vek16s x) { return Vek32f(x); }));
  Shapes(integerSweep<Vek32s>()).check(veksConvert_32s64f, each([](Vek32s x) { return Vek64f(x); }));
}

TEST(ConvertInteger, RoundsToSinglePrecision) {
  Shapes(integerSweep<Vek32s>()).check(veksConvert_32s32f, each([](Vek32s x) { return Vek32f(x); }));
}

TEST(ConvertInteger, SaturatesTo16) {
  Shapes(integerSweep<Vek32s>()).check(veksConvert_32s16s, each([](Vek32s x) {
                                         return Vek16s(scaled(x, 0, kEven, -32768, 32767));
                                       }));
}

TEST(ConvertInteger, ScalesTo16And24Bits) {
  const std::vector<Vek32s> s32 = integerSweep<Vek32s>();
  const std::vector<Vek32u> u32 = integerSweep<Vek32u>();
  for (const int s : kScales) {
    SCOPED_TRACE(s);
    const bool shapes = s == 1000 || s == 4 || s == -1;
    checkScaled(
        s32, shapes, [=](auto* a, Vek16s* d, int n) { return veksConvert_32s16s_Sfs(a, d, n, s); },
        each([=](Vek32s x) { return Vek16s(scaled(x, s, kEven, -32768, 32767)); }));
    checkScaled(
        s32, shapes, [=](auto* a, Vek24u* d, int n) { return veksConvert_32s24s_Sfs(a, bytes(d), n, s); },
        each([=](Vek32s x) { return pack24(scaled(x, s, kEven, -8388608, 8388607)); }));
    checkScaled(
        u32, shapes, [=](auto* a, Vek24u* d, int n) { return veksConvert_32u24u_Sfs(a, bytes(d), n, s); },
        each([=](Vek32u x) { return pack24(scaled(x, s, kEven, 0, 16777215)); }));
  }
}

TEST(ConvertInteger, Scales64BitsInEveryMode) {
  const std::vector<Vek64s> values = integerSweep<Vek64s>();
  for (const int s : kScales)
    for (const int mode : {0, 1, 2, 7, -1}) {
      SCOPED_TRACE(testing::Message() << "scale factor " << s << " mode " << mode);
      const int rounding = mode == 0 ? kTruncate : mode == 1 ? kEven : kAway;
      checkScaled(
          values, s == 1000 || s == 4 || s == -1,
          [=](auto* a, Vek32s* d, int n) { return veksConvert_64s32s_Sfs(a, d, n, mode, s); },
          each([=](Vek64s x) { return Vek32s(scaled(x, s, rounding, INT32_MIN, INT32_MAX)); }));
    }
}

TEST(ConvertInteger, Unpacks24Bits) {
  const Shapes v(sweep24());
  const auto to = [](auto convert) { return [=](auto* a, auto* d, int n) { return convert(&a->byte[0], d, n); }; };
  v.check(to(veksConvert_24u32u), each(unsigned24));
  v.check(to(veksConvert_24s32s), each(signed24));
  v.check(to(veksConvert_24u32f), each<Vek32f>(unsigned24));
  v.check(to(veksConvert_24s32f), each<Vek32f>(signed24));
}

// The multiplier by halving and doubling, as it is defined; 1200 steps reach 0 or infinity.
template <class T>
T multiplier(int s) {
  T m = 1;
  for (int i = 0; i < std::min(std::abs(int64_t(s)), int64_t(1200)); ++i) m *= s > 0 ? T(0.5) : T(2);
  return m;
}

TEST(ConvertInteger, ScalesToFloatingPoint) {
  const std::vector<Vek16s> s16 = everyValue<Vek16s>();
  const std::vector<Vek32s> s32 = integerSweep<Vek32s>();
  for (const int s : {0,    1,    15,   31,   100,       126, 127,  130,  140,  149,   150,   151,      1022,
                      1023, 1074, 1075, 1076, INT32_MAX, -1,  -100, -127, -128, -1023, -1024, INT32_MIN}) {
    SCOPED_TRACE(s);
    const Vek32f m = multiplier<Vek32f>(s);
    const Vek64f wide = multiplier<Vek64f>(s);
    checkScaled(
        s16, s == 0, [=](auto* a, Vek32f* d, int n) { return veksConvert_16s32f_Sfs(a, d, n, s); },
        each([=](Vek16s x) { return Vek32f(x) * m; }));
    checkScaled(
        s32, s == 0, [=](auto* a, Vek32f* d, int n) { return veksConvert_32s32f_Sfs(a, d, n, s); },
        each([=](Vek32s x) { return Vek32f(x) * m; }));
    checkScaled(
        s16, s == 0, [=](auto* a, Vek64f* d, int n) { return veksConvert_16s64f_Sfs(a, d, n, s); },
        each([=](Vek16s x) { return Vek64f(x) * wide; }));
    checkScaled(
        s32, s == 0, [=](auto* a, Vek64f* d, int n) { return veksConvert_32s64f_Sfs(a, d, n, s); },
        each([=](Vek32s x) { return Vek64f(x) * wide; }));
  }
}

}  // namespace
