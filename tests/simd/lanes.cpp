// SPDX-License-Identifier: Apache-2.0
// Operations that deal with each lane by itself: arithmetic, comparison, conversion, scaling, elementary functions.
#include <math.h>

#include "core/simd/complex.h"
#include "core/simd/elementary.h"
#include "core/simd/order.h"
#include "core/simd/scale.h"
#include "tests/simd/check.h"

namespace vek::VEK_SLOT {
namespace {

__extension__ typedef __int128 Int128;

template <class T>
T saturated(Int128 x) {
  const UnsignedOf<T> ones = UnsignedOf<T>(-1);
  const Int128 most = kSigned<T> ? Int128(ones >> 1) : Int128(ones), least = kSigned<T> ? -most - 1 : Int128(0);
  return T(x > most ? most : x < least ? least : x);
}
template <class T>
T bitwise(T a, T b, uint64_t (*f)(uint64_t, uint64_t)) {
  const uint64_t x = f(patternOf(a), patternOf(b));
  T t;
  __builtin_memcpy(&t, &x, sizeof t);
  return t;
}
// x / 2^s to the nearest integer by the mode, exactly.
Int128 divided(Int128 x, int s, int mode) {
  const Int128 unit = Int128(1) << s, rest = ((x % unit) + unit) % unit, down = (x - rest) / unit, half = unit / 2;
  if (s == 0 || rest == 0) return down;
  if (mode == vekRoundTowardZero) return x < 0 ? down + 1 : down;
  if (rest != half) return down + (rest > half);
  return mode == vekRoundNearestEven ? down + (down & 1) : down + (x > 0);
}
template <class T>
double roundedBy(T x, int mode) {  // in double, where every float has its exact neighbours
  if (mode == vekRoundTowardZero) return trunc(double(x));
  return mode == vekRoundNearestEven ? nearbyint(double(x)) : round(double(x));
}
int32_t toInt32(double rounded) {
  return rounded >= -2147483648.0 && rounded < 2147483648.0 ? int32_t(rounded) : INT32_MIN;
}

// ---- arithmetic -----------------------------------------------------------------------------------------------------

void arithmetic() {
  forIntegers([](auto tag) {
    using T = decltype(tag);
    binary<T>(
        "a + b", [](auto a, auto b) { return a + b; }, [](T a, T b) { return T(uint64_t(a) + uint64_t(b)); });
    binary<T>(
        "a - b", [](auto a, auto b) { return a - b; }, [](T a, T b) { return T(uint64_t(a) - uint64_t(b)); });
    binary<T>(
        "a * b", [](auto a, auto b) { return a * b; }, [](T a, T b) { return T(uint64_t(a) * uint64_t(b)); });
    constexpr int width = 8 * int(sizeof(T));
    for (int n = 0; n <= width + 1; ++n) {
      const auto right = [n](T a) { return T(n < width ? Int128(a) >> n : a < T(0) ? -1 : 0); };
      const auto left = [n](T a) { return n < width ? T(uint64_t(a) << n) : T(0); };
      if constexpr (!kSame<T, int8_t>)
        unary<T>(
            "a >> n", [n](auto a) { return a >> n; }, right);
      unary<T>(
          "a << n", [n](auto a) { return a << n; }, left);
      if constexpr (sizeof(T) > 1) {
        if (n > width) continue;
        const ShiftCount<T> count(n);
        unary<T>(
            "a << count", [count](auto a) { return a << count; }, left);
        if (n > 0)
          unary<T>(
              "a >> count", [count](auto a) { return a >> count; }, right);
      }
    }
  });
  forFloats([](auto tag) {
    using T = decltype(tag);
    binary<T>(
        "a + b", [](auto a, auto b) { return a + b; }, [](T a, T b) { return a + b; });
    binary<T>(
        "a - b", [](auto a, auto b) { return a - b; }, [](T a, T b) { return a - b; });
    binary<T>(
        "a * b", [](auto a, auto b) { return a * b; }, [](T a, T b) { return a * b; });
    binary<T>(
        "a / b", [](auto a, auto b) { return a / b; }, [](T a, T b) { return a / b; });
    unary<T>(
        "squareRoot", [](auto a) { return squareRoot(a); }, [](T a) { return T(sqrt(double(a))); });
    const auto fused = [](T a, T b, T c) {
      return kFma ? kSame<T, float> ? T(fmaf(float(a), float(b), float(c))) : T(fma(a, b, c)) : T(a * b) + c;
    };
    binary<T>(
        "fusedMulAdd", [](auto a, auto b) { return fusedMulAdd(a, b, b); }, [=](T a, T b) { return fused(a, b, b); });
    binary<T>(
        "fusedNegMulAdd", [](auto a, auto b) { return fusedNegMulAdd(a, b, a); },
        [=](T a, T b) { return fused(-a, b, a); });
  });
  forTypes<uint8_t, int16_t, uint32_t, int64_t, float, double>([](auto tag) {
    using T = decltype(tag);
    binary<T>(
        "a & b", [](auto a, auto b) { return a & b; },
        [](T a, T b) { return bitwise(a, b, [](uint64_t x, uint64_t y) { return x & y; }); });
    binary<T>(
        "a | b", [](auto a, auto b) { return a | b; },
        [](T a, T b) { return bitwise(a, b, [](uint64_t x, uint64_t y) { return x | y; }); });
    binary<T>(
        "a ^ ~b", [](auto a, auto b) { return a ^ ~b; },
        [](T a, T b) { return bitwise(a, b, [](uint64_t x, uint64_t y) { return x ^ ~y; }); });
  });
  forTypes<int8_t, uint8_t, int16_t, uint16_t>([](auto tag) {
    using T = decltype(tag);
    binary<T>(
        "addSaturated", [](auto a, auto b) { return addSaturated(a, b); },
        [](T a, T b) { return saturated<T>(a + b); });
    binary<T>(
        "subSaturated", [](auto a, auto b) { return subSaturated(a, b); },
        [](T a, T b) { return saturated<T>(a - b); });
  });
  forTypes<uint8_t, uint16_t>([](auto tag) {
    using T = decltype(tag);
    binary<T>(
        "averageUp", [](auto a, auto b) { return averageUp(a, b); }, [](T a, T b) { return T((a + b + 1) >> 1); });
  });
  forTypes<int16_t, uint16_t>([](auto tag) {
    using T = decltype(tag);
    binary<T>(
        "mulHigh", [](auto a, auto b) { return mulHigh(a, b); },
        [](T a, T b) { return T(int64_t(a) * int64_t(b) >> 16); });
  });
  binary<int16_t>(
      "mulRound15", [](auto a, auto b) { return mulRound15(a, b); },
      [](int a, int b) { return int16_t((a * b + (1 << 14)) >> 15); });
  // The even lanes of two 32-bit packs to 64 bits: seen from lanes whose upper halves are anything.
  binary<uint64_t>(
      "mulEven", [](auto a, auto b) { return mulEven(bits<uint32_t>(a), bits<uint32_t>(b)); },
      [](uint64_t a, uint64_t b) { return uint64_t(uint32_t(a)) * uint32_t(b); });
  binary<int64_t>(
      "mulEven", [](auto a, auto b) { return mulEven(bits<int32_t>(a), bits<int32_t>(b)); },
      [](int64_t a, int64_t b) { return int64_t(int32_t(a)) * int32_t(b); });
  binary<int32_t>(
      "mulAddPairs", [](auto a, auto b) { return mulAddPairs(bits<int16_t>(a), bits<int16_t>(b)); },
      [](int32_t a, int32_t b) {
        const int64_t low = int64_t(int16_t(a)) * int16_t(b), high = int64_t(a >> 16) * (b >> 16);
        return int32_t(low + high);
      });
  binary<uint64_t>(
      "sumAbsDiff8", [](auto a, auto b) { return sumAbsDiff8(bits<uint8_t>(a), bits<uint8_t>(b)); },
      [](uint64_t a, uint64_t b) {
        uint64_t sum = 0;
        for (int k = 0; k < 64; k += 8) {
          const int d = int(a >> k & 255) - int(b >> k & 255);
          sum += uint64_t(d < 0 ? -d : d);
        }
        return sum;
      });
}

// ---- comparison -----------------------------------------------------------------------------------------------------

void comparison() {
  forTypes<int8_t, uint8_t, int16_t, uint16_t, int32_t, uint32_t, int64_t, uint64_t, float, double>([](auto tag) {
    using T = decltype(tag);
    using U = UnsignedOf<T>;
    // A mask as a number: all ones where true.
    const auto mask = [](auto compare) {
      return [compare](auto a, auto b) { return bits<U>(compare(bits<T>(a), bits<T>(b))); };
    };
    const auto truth = [](auto compare) {
      return [compare](U a, U b) {
        T x, y;
        __builtin_memcpy(&x, &a, sizeof x);
        __builtin_memcpy(&y, &b, sizeof y);
        return compare(x, y) ? U(-1) : U(0);
      };
    };
    const auto both = [&](const char* name, auto compare) {
      binary<U>(name, mask(compare), truth(compare));
      // The special values of floats do not come up among those of integers.
      binary<T>(
          name, [compare](auto a, auto b) { return bits<T>(bits<U>(compare(a, b)) & broadcast(U(1))); },
          [compare](T a, T b) {
            return bitwise(
                T(0), T(0), compare(a, b) ? [](uint64_t, uint64_t) { return uint64_t(1); } : [](uint64_t, uint64_t) {
                  return uint64_t(0);
                });
          });
    };
    both("a == b", [](auto a, auto b) { return a == b; });
    both("a != b", [](auto a, auto b) { return a != b; });
    both("a > b", [](auto a, auto b) { return a > b; });
    both("a < b", [](auto a, auto b) { return a < b; });
    both("a >= b", [](auto a, auto b) { return a >= b; });
    both("a <= b", [](auto a, auto b) { return a <= b; });
    binary<T>(
        "maxOf", [](auto a, auto b) { return maxOf(a, b); }, [](T a, T b) { return a > b ? a : b; });
    binary<T>(
        "minOf", [](auto a, auto b) { return minOf(a, b); }, [](T a, T b) { return a < b ? a : b; });
    binary<T>(
        "select", [](auto a, auto b) { return select(a < b, b, a ^ b); },
        [](T a, T b) { return a < b ? b : bitwise(a, b, [](uint64_t x, uint64_t y) { return x ^ y; }); });
    binary<T>(
        "keep", [](auto a, auto b) { return keep(a < b, b); }, [](T a, T b) { return a < b ? b : T(0); });
    if constexpr (kFloat<T>) {
      unary<T>(
          "magnitude", [](auto a) { return magnitude(a); }, [](T a) { return T(__builtin_fabs(a)); });
      unary<T>(
          "signOf", [](auto a) { return signOf(a); }, [](T a) { return T(__builtin_copysign(0.0, a)); });
    } else if constexpr (kSigned<T>) {
      unary<T>(
          "magnitude", [](auto a) { return magnitude(a); }, [](T a) { return a < 0 ? T(-uint64_t(a)) : a; });
      unary<T>(
          "signOf", [](auto a) { return signOf(a); }, [](T a) { return T(a < 0 ? -1 : 0); });
    }
  });
  binary<float>(
      "unordered", [](auto a, auto b) { return keep(unordered(a, b), broadcast(1.0f)); },
      [](float a, float b) { return a != a || b != b ? 1.0f : 0.0f; });
  binary<int32_t>(
      "selectNegative", [](auto a, auto b) { return selectNegative(a, b, ~a); },
      [](int32_t a, int32_t b) { return a < 0 ? b : ~a; });
  // Floats and their places in the order of all bit patterns.
  binary<int32_t>(
      "floatOrder", [](auto a, auto b) { return bits<int32_t>(floatOrder(a) < floatOrder(b)); },
      [](int32_t a, int32_t b) {
        const auto place = [](int32_t x) { return x < 0 ? -int64_t(x & INT32_MAX) - 1 : int64_t(x); };
        return place(a) < place(b) ? -1 : 0;
      });
}

// ---- conversion -----------------------------------------------------------------------------------------------------

void conversion() {
  unary<int32_t>(
      "toFloat", [](auto a) { return toFloat(a); }, [](int32_t a) { return float(a); });
  unary<float>(
      "toInt32Nearest", [](auto a) { return toInt32Nearest(a); },
      [](float a) { return toInt32(nearbyint(double(a))); });
  unary<float>(
      "toInt32Truncated", [](auto a) { return toInt32Truncated(a); },
      [](float a) { return toInt32(trunc(double(a))); });
  unary<float>(
      "toDouble, toFloat", [](auto a) { return toFloat(toDouble(a)); }, [](float a) { return a; });
  unary<int32_t>(
      "toDouble, toInt32", [](auto a) { return toInt32Nearest(toDouble(a)); }, [](int32_t a) { return a; });
  unary<double>(
      "doubleToFloats", [](auto a) { return floatsToDouble(doubleToFloats(a)); },
      [](double a) { return double(float(a)); });
  unary<double>(
      "doubleToInt32Nearest", [](auto a) { return int32sToDouble(doubleToInt32Nearest(a)); },
      [](double a) { return double(toInt32(nearbyint(a))); });
  unary<double>(
      "doubleToInt32Truncated", [](auto a) { return int32sToDouble(doubleToInt32Truncated(a)); },
      [](double a) { return double(toInt32(trunc(a))); });
  forFloats([](auto tag) {
    using T = decltype(tag);
    unary<T>(
        "roundEven", [](auto a) { return roundEven(a); }, [](T a) { return T(nearbyint(double(a))); });
    unary<T>(
        "awayFromZero", [](auto a) { return a - (awayFromZero(a) - a); },
        [](T a) { return T(a - T(T(a + __builtin_copysign(double(kBelowHalf<T>), double(a))) - a)); });
  });
}

// ---- scaling --------------------------------------------------------------------------------------------------------

template <int Mode>
void scalingBy() {
  forTypes<int32_t, uint32_t, int64_t>([](auto tag) {
    using T = decltype(tag);
    for (int s = 1; s <= int(8 * sizeof(T)); s += s < 4 ? 1 : 5)
      unary<T>(
          "shiftRounded", [s](auto a) { return shiftRounded<Mode>(a, s); },
          [s](T a) { return T(divided(a, s, Mode)); });
  });
  unary<float>(
      "roundToInt32", [](auto a) { return roundToInt32<Mode>(a); },
      [](float a) { return toInt32(roundedBy(a, Mode)); });
  unary<double>(
      "roundToInt32", [](auto a) { return int32sToDouble(roundToInt32<Mode>(a)); },
      [](double a) { return double(toInt32(roundedBy(a, Mode))); });
  forTypes<int8_t, uint8_t, int16_t, uint16_t>([](auto tag) {
    using D = decltype(tag);
    unary<float>(
        "limitFor",
        [](auto a) {
          return maxOf(roundToInt32<Mode>(limitFor<D>(a)),
                       broadcast(int32_t(D(kSigned<D> ? D(1) << (8 * sizeof(D) - 1) : 0))));
        },
        [](float a) {
          const double x = a != a ? 0 : roundedBy(a, Mode);
          return int32_t(saturated<D>(x > 1e6 ? 1000000 : x < -1e6 ? -1000000 : Int128(x)));
        });
  });
}

void scaling() {
  scalingBy<vekRoundTowardZero>();
  scalingBy<vekRoundNearestEven>();
  scalingBy<vekRoundHalfAway>();
  for (int s = -1100; s <= 1100; ++s) {
    expectLane("scaleMultiplier", uint64_t(s), 0, scaleMultiplier<float>(s), s > 149 ? 0.0f : float(ldexp(1.0, -s)));
    expectLane("scaleMultiplier", uint64_t(s), 0, scaleMultiplier<double>(s), s > 1074 ? 0.0 : ldexp(1.0, -s));
  }
  forTypes<uint8_t, int16_t, int32_t>([](auto tag) {
    using T = decltype(tag);
    for (int n = 1; n <= int(8 * sizeof(T)) + 2; ++n) {
      const LeftShift<T> shift(n);
      unary<T>(
          "LeftShift", [shift](auto a) { return shift(a); }, [n](T a) { return saturated<T>(Int128(a) << n); });
    }
  });
  forTypes<uint16_t, int32_t>([](auto tag) {
    using T = decltype(tag);
    for (int s = 1; s <= int(8 * sizeof(T)); ++s) {
      const RightShift<T> shift(s);
      // Halved twice and less: where the sum of the rounding has room.
      if (s < int(8 * sizeof(T)) || !kSigned<T>)
        unary<T>(
            "roundShift", [shift](auto a) { return roundShift(a >> 2, shift); },
            [s](T a) { return T(divided(a >> 2, s, vekRoundNearestEven)); });
    }
  });
  for (int s = 1; s <= 63; ++s) {
    const WideShift shift(s);
    unary<int64_t>(
        "roundFull", [shift](auto a) { return shift.roundFull(a); },
        [s](int64_t a) { return int64_t(divided(a, s, vekRoundNearestEven)); });
    if (s < 63)
      unary<int64_t>(
          "roundRoomy", [shift](auto a) { return shift.roundRoomy(a >> 1); },
          [s](int64_t a) { return int64_t(divided(a >> 1, s, vekRoundNearestEven)); });
    for (int i = 0; i < kValues; ++i) {
      const int64_t x = values<int64_t>()[i] >> 1;
      expectLane("shiftNearest", uint64_t(x), uint64_t(s), shiftNearest(x, s),
                 int64_t(divided(x, s, vekRoundNearestEven)));
      expectLane("shiftUpSaturated", uint64_t(x), uint64_t(s), shiftUpSaturated(x, s),
                 saturated<int32_t>(Int128(x) << s));
    }
  }
  for (int k = 0; k <= 16; ++k) {
    const ShiftUp<int32_t> up(-32768, 32767, k);
    unary<int32_t>(
        "ShiftUp", [up](auto a) { return minOf(maxOf(up(a), broadcast(-32768)), broadcast(32767)); },
        [k](int32_t a) { return int32_t(saturated<int16_t>(Int128(a) << k)); });
  }
  binary<int32_t>(
      "product, clampWide", [](auto a, auto b) { return clampWide(product(a, b)); },
      [](int32_t a, int32_t b) { return saturated<int32_t>(Int128(a) * b); });
  for (int i = 0; i < kValues; ++i) {
    const double x = values<double>()[i];
    if (x == x)
      expectLane("roundedResult", patternOf(x), 0, roundedResult(x),
                 int32_t(x >= 2147483647      ? 2147483647
                         : x <= -2147483648.0 ? -2147483648.0
                                              : nearbyint(x)));
  }
}

// ---- elementary functions -------------------------------------------------------------------------------------------

// The distance from the exact value in units of the last place of T.
template <class T>
double error(T got, long double exact) {
  if (got != got || exact != exact) return got != got && exact != exact ? 0 : 1e9;
  if (__builtin_isinf(got) || T(exact) == 0) return T(exact) == got ? 0 : 1e9;
  int exponent;
  frexpl(exact, &exponent);
  const int digits = kSame<T, float> ? 24 : 53, least = kSame<T, float> ? -149 : -1074;
  const int unit = exponent - digits > least ? exponent - digits : least;
  return double(fabsl(got - exact) / ldexpl(1, unit));
}

template <class T, class Op, class Exact>
void within(double bound, const char* name, T low, T high, Op op, Exact exact) {
  Generator random;
  constexpr int lanes = Pack<T>::lanes;
  for (int round = 0; round < 400; ++round) {
    T x[lanes];
    for (int k = 0; k < lanes; ++k) x[k] = low + (high - low) * T(double(random() >> 11) * 0x1p-53);
    const Lanes<T> got = lanesOf(op(load(x)));
    for (int k = 0; k < lanes; ++k)
      if (!(error(got[k], exact(static_cast<long double>(x[k]))) <= bound))
        expectLane(name, patternOf(x[k]), 0, got[k], T(exact(static_cast<long double>(x[k]))));
  }
}

void elementary() {
  const float ranges[] = {0.7f, 100.0f, 1e4f, 3e6f, 1e20f, 1.5e38f};
  for (float range : ranges) {
    within<float>(
        2, "sine", -range, range, [](auto x) { return sineCosineOf(x).sine; }, sinl);
    within<float>(
        2, "cosine", -range, range, [](auto x) { return sineCosineOf(x).cosine; }, cosl);
  }
  binary<float>(
      "angleOf, bits that all slots share", [](auto y, auto x) { return angleOf(y, x) - angleOf(y, x); },
      [](float y, float x) { return y != y || x != x ? __builtin_nanf("") : 0.0f; });
  for (int turn = 0; turn < kValues; ++turn) {
    for (int i = 0; i < kValues; i += Pack<float>::lanes) {
      float x[8];
      for (int k = 0; k < 8; ++k) x[k] = values<float>()[(i + k + turn) % kValues];
      const Lanes<float> got = lanesOf(angleOf(load(values<float>() + i), load(x)));
      for (int k = 0; k < 8; ++k) {
        const float y = values<float>()[i + k];
        const long double exact = atan2l(y, x[k]);
        if (!(error(got[k], exact) <= 2)) expectLane("angleOf", patternOf(y), patternOf(x[k]), got[k], float(exact));
      }
    }
  }
  within<double>(
      1, "exponential", 0, 700, [](auto x) { return exponential(x); }, expl);
  within<double>(
      1, "naturalLog", 0x1p-60, 1, [](auto x) { return naturalLog(x); }, logl);
  within<double>(
      1, "naturalLog", 0.9, 1.1, [](auto x) { return naturalLog(x); }, logl);
  within<double>(
      2, "sineOf", 0, 4294967295.0, [](auto x) { return sineOf(x); }, sinl);
}

}  // namespace

void checkLanes() {
  arithmetic();
  comparison();
  conversion();
  scaling();
  elementary();
}

}  // namespace vek::VEK_SLOT
