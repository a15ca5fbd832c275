// SPDX-License-Identifier: Apache-2.0
// Every operation of core/simd against the same thing done to one value at a time: an operation on packs, a reference
// on scalars, and values that cover the ends and the oddities of each type in all pairs. Compiled once for each slot,
// so no standard-library header may come in: its inline functions would carry one slot's instructions into another.
#ifndef VEK_TESTS_SIMD_CHECK_H
#define VEK_TESTS_SIMD_CHECK_H

#include "core/simd/pack.h"

// Defined by the driver: told about an operation that went wrong, by the bits of its operands and results.
void simdFailure(const char* slot, const char* operation, const char* type, uint64_t a, uint64_t b, uint64_t got,
                 uint64_t want);
// n bytes that end at an unreadable page, or (front) begin behind one; filled with 0xA5.
uint8_t* simdGuarded(int64_t n, bool front);

namespace vek::VEK_SLOT {
namespace {

#define VEK_NAME_OF(X) VEK_NAME_OF_(X)
#define VEK_NAME_OF_(X) #X

constexpr int kValues = 64;

template <class T>
constexpr const char* kTypeName = kFloat<T>        ? (sizeof(T) == 4 ? "32f" : "64f")
                                  : sizeof(T) == 1 ? (kSigned<T> ? "8s" : "8u")
                                  : sizeof(T) == 2 ? (kSigned<T> ? "16s" : "16u")
                                  : sizeof(T) == 4 ? (kSigned<T> ? "32s" : "32u")
                                                   : (kSigned<T> ? "64s" : "64u");

template <class T>
uint64_t patternOf(T x) {
  uint64_t p = 0;
  __builtin_memcpy(&p, &x, sizeof x);
  return p;
}
// Equal to the bit; one NaN is as good as another.
template <class T>
bool same(T x, T y) {
  if constexpr (kFloat<T>) {
    if (x != x && y != y) return true;
  }
  return patternOf(x) == patternOf(y);
}

template <class T>
void expectLane(const char* operation, uint64_t a, uint64_t b, T got, T want) {
  if (!same(got, want))
    simdFailure(VEK_NAME_OF(VEK_SLOT), operation, kTypeName<T>, a, b, patternOf(got), patternOf(want));
}
inline void expectThat(bool holds, const char* operation, const char* type, uint64_t a = 0, uint64_t b = 0) {
  if (!holds) simdFailure(VEK_NAME_OF(VEK_SLOT), operation, type, a, b, 0, 1);
}

struct Generator {
  uint64_t state = 88172645463325252u;
  uint64_t operator()() {
    state ^= state << 13, state ^= state >> 7, state ^= state << 17;
    return state * 0x2545F4914F6CDD1Du;
  }
};

// The ends, their neighbours, zeros of both signs, denormals, infinities, NaN, ties, the ends of the integer types as
// floats, and bits at random.
template <class T>
const T* values() {
  static T v[kValues];
  if (v[1] != 0 || v[2] != 0) return v;
  int n = 0;
  const auto put = [&](T x) { v[n++] = x; };
  if constexpr (kFloat<T>) {
    const double inf = __builtin_inf();
    const T most = kSame<T, float> ? T(__FLT_MAX__) : T(__DBL_MAX__);
    const T least = kSame<T, float> ? T(__FLT_MIN__) : T(__DBL_MIN__);
    const T tiny = kSame<T, float> ? T(__FLT_DENORM_MIN__) : T(__DBL_DENORM_MIN__);
    const double list[] = {
        0.0,        1.0,   0.5,   1.5,   2.5,     inf,     most,      least,     tiny,         __builtin_nan(""),
        0.49999997, 126.5, 127.5, 255.5, 32767.5, 65534.5, 8388607.5, 8388609.0, 2147483520.0, 2147483648.0};
    put(T(0)), put(T(1));
    for (double x : list) put(T(x)), put(T(-x));
  } else {
    const T top = T(UnsignedOf<T>(1) << (8 * sizeof(T) - 1));
    put(T(0)), put(T(1));
    for (int k = -2; k <= 2; ++k) put(T(top + T(k))), put(T(k));
    for (int k = 1; k < int(8 * sizeof(T)); k += sizeof(T) == 1 ? 2 : 5) put(T(T(1) << k)), put(T(~(T(1) << k)));
  }
  Generator random;
  while (n < kValues) {
    const uint64_t x = random();
    T t;
    __builtin_memcpy(&t, &x, sizeof t);
    put(t);
  }
  return v;
}

// op on packs against ref on values, one operand or two; all pairs of the latter.
template <class T, class Op, class Ref>
void unary(const char* name, Op op, Ref ref) {
  constexpr int lanes = Pack<T>::lanes;
  for (int i = 0; i < kValues; i += lanes) {
    const T* a = values<T>() + i;
    const auto got = lanesOf(op(load(a)));
    for (int k = 0; k < lanes; ++k) expectLane(name, patternOf(a[k]), 0, got[k], ref(a[k]));
  }
}
template <class T, class Op, class Ref>
void binary(const char* name, Op op, Ref ref) {
  constexpr int lanes = Pack<T>::lanes;
  for (int turn = 0; turn < kValues; ++turn) {
    T b[kValues];
    for (int k = 0; k < kValues; ++k) b[k] = values<T>()[(k + turn) % kValues];
    for (int i = 0; i < kValues; i += lanes) {
      const T* a = values<T>() + i;
      const auto got = lanesOf(op(load(a), load(b + i)));
      for (int k = 0; k < lanes; ++k)
        expectLane(name, patternOf(a[k]), patternOf(b[i + k]), got[k], ref(a[k], b[i + k]));
    }
  }
}

// Where elements go: op on packs whose elements are their own numbers, first those of `a`, then those of `b`;
// from(k) is the number that place k has to hold, -1 for any.
template <class T, class Op, class From>
void places(const char* name, Op op, From from) {
  constexpr int lanes = Pack<T>::lanes;
  T a[lanes], b[lanes];
  for (int k = 0; k < lanes; ++k) a[k] = T(k), b[k] = T(lanes + k);
  const auto got = op(load(a), load(b));
  T out[sizeof got / sizeof(T)];
  __builtin_memcpy(out, &got, sizeof got);
  for (int k = 0; k < int(sizeof got / sizeof(T)); ++k)
    if (from(k) >= 0) expectLane(name, uint64_t(k), 0, out[k], T(from(k)));
}

template <class... T, class F>
void forTypes(F f) {
  (f(T()), ...);
}
template <class F>
void forIntegers(F f) {
  forTypes<int8_t, uint8_t, int16_t, uint16_t, int32_t, uint32_t, int64_t, uint64_t>(f);
}
template <class F>
void forFloats(F f) {
  forTypes<float, double>(f);
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
