// SPDX-License-Identifier: Apache-2.0
// States of IIR filters and the recursion by single samples.
#ifndef VEK_FILTER_IIR_STATE_H
#define VEK_FILTER_IIR_STATE_H

#include "core/simd/level.h"
#include "vek/types.h"

namespace vek::VEK_SLOT {
namespace {

// ---- arithmetic of the element types ------------------------------------------------------------------------------

template <class T>
constexpr bool kComplex = kSame<T, Vek32fc> || kSame<T, Vek64fc>;
template <class T>
constexpr int kParts = kComplex<T> ? 2 : 1;

#define VEK_COMPLEX_ARITHMETIC(T)                                                                     \
  VEK_INLINE T operator+(T a, T b) { return {a.re + b.re, a.im + b.im}; }                             \
  VEK_INLINE T operator-(T a, T b) { return {a.re - b.re, a.im - b.im}; }                             \
  VEK_INLINE T operator*(T a, T b) { return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; } \
  VEK_INLINE bool isZero(T a) { return a.re == 0 && a.im == 0; }
VEK_COMPLEX_ARITHMETIC(Vek32fc)
VEK_COMPLEX_ARITHMETIC(Vek64fc)
#undef VEK_COMPLEX_ARITHMETIC
VEK_INLINE bool isZero(double a) { return a == 0; }

template <class D, class S>
VEK_INLINE D convertTo(S x) {
  if constexpr (kComplex<S>) {
    return {decltype(D::re)(x.re), decltype(D::im)(x.im)};
  } else {
    return D(x);
  }
}

VEK_INLINE float reciprocal(float a) { return 1 / a; }
VEK_INLINE double reciprocal(double a) { return 1 / a; }
// With the quotient of the smaller part by the larger one no intermediate overflows.
VEK_INLINE Vek64fc reciprocal(Vek64fc a) {
  if (__builtin_fabs(a.re) >= __builtin_fabs(a.im)) {
    const double q = a.im / a.re, m = 1 / (a.re + a.im * q);
    return {m, -q * m};
  }
  const double q = a.re / a.im, m = 1 / (a.im + a.re * q);
  return {q * m, -m};
}
VEK_INLINE Vek32fc reciprocal(Vek32fc a) { return convertTo<Vek32fc>(reciprocal(convertTo<Vek64fc>(a))); }

// ---- kinds --------------------------------------------------------------------------------------------------------

// From here up filters run in blocks, in double precision.
constexpr bool kIirBlocks = kSse41;

template <bool Wide, class A, class B>
struct Choose {
  using type = A;
};
template <class A, class B>
struct Choose<false, A, B> {
  using type = B;
};

// Ids: the characters "II" and two digits, first character in the highest byte. Value is what coefficients and delay
// line are stored in and filtered with.
struct Iir32f {
  using Sample = Vek32f;
  using Coef = Vek32f;
  using Value = typename Choose<kIirBlocks, Vek64f, Vek32f>::type;
  static constexpr uint32_t orderId = 0x49493031, biquadId = 0x49493032, otherId = 0x49493239;
};
struct Iir32fc {
  using Sample = Vek32fc;
  using Coef = Vek32fc;
  using Value = typename Choose<kIirBlocks, Vek64fc, Vek32fc>::type;
  static constexpr uint32_t orderId = 0x49493033, biquadId = 0x49493034, otherId = orderId;
};
struct Iir64f {
  using Sample = Vek32f;
  using Coef = Vek64f;
  using Value = Vek64f;
  static constexpr uint32_t orderId = 0x49493137, biquadId = 0x49493138, otherId = orderId;
};
struct Iir64fc {
  using Sample = Vek32fc;
  using Coef = Vek64fc;
  using Value = Vek64fc;
  static constexpr uint32_t orderId = 0x49493139, biquadId = 0x49493230, otherId = orderId;
};

struct IirState {
  uint32_t id;
  void* coefs;       // per section b[0..N], a[1..N]
  void* delay;       // per section d[0..N-1]
  int32_t delayLen;  // the order, or twice the number of sections
  int32_t numBq;     // 0 for a filter of order N
  int32_t ownsMemory;
  int32_t slot;     // whose code made it: slots differ in precision and layout
  void* nextDelay;  // where a block builds the delay line that it leaves
  double* tables;   // of the block filter; null where that is not to be used
};
constexpr int kIirHeader = 96;
static_assert(sizeof(IirState) <= kIirHeader);

template <class V>
struct Section {
  int order;
  const V* b;
  const V* a;  // a[k-1] is the coefficient of the k-th last output
};

template <class V>
VEK_INLINE Section<V> section(const IirState& s, int index) {
  const V* c = static_cast<const V*>(s.coefs);
  if (s.numBq == 0) return {s.delayLen, c, c + s.delayLen + 1};
  return {2, c + 5 * ptrdiff_t(index), c + 5 * ptrdiff_t(index) + 3};
}
VEK_INLINE int sections(const IirState& s) { return s.numBq == 0 ? 1 : s.numBq; }

// ---- the recursion ------------------------------------------------------------------------------------------------

// The delay line has an element more than the order, which is always zero.
template <class V>
VEK_INLINE V orderStep(V x, Section<V> s, V* d) {
  const V y = s.b[0] * x + d[0];
  for (int k = 1; k <= s.order; ++k) d[k - 1] = s.b[k] * x - s.a[k - 1] * y + d[k];
  return y;
}

template <class V>
VEK_INLINE V biquadStep(V x, const V* c, V* d) {
  const V y = c[0] * x + d[0];
  d[0] = d[1] - c[3] * y + c[1] * x;
  d[1] = c[2] * x - c[4] * y;
  return y;
}

template <class V>
VEK_INLINE V step(V x, IirState& s) {
  V* d = static_cast<V*>(s.delay);
  if (s.numBq == 0) return orderStep(x, section<V>(s, 0), d);
  const V* c = static_cast<const V*>(s.coefs);
  for (int i = 0; i < s.numBq; ++i, c += 5, d += 2) x = biquadStep(x, c, d);
  return x;
}

template <class K>
VEK_NOINLINE void filterBySample(const typename K::Sample* src, typename K::Sample* dst, ptrdiff_t n, IirState& s) {
  using V = typename K::Value;
  for (ptrdiff_t i = 0; i < n; ++i) dst[i] = convertTo<typename K::Sample>(step(convertTo<V>(src[i]), s));
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
