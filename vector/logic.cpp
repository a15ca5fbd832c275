// SPDX-License-Identifier: Apache-2.0
// Bitwise logic and shifts.
#include "core/simd/map.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

struct And {
  template <class P>
  VEK_INLINE P operator()(P a, P b) const {
    return a & b;
  }
};
struct Or {
  template <class P>
  VEK_INLINE P operator()(P a, P b) const {
    return a | b;
  }
};
struct Xor {
  template <class P>
  VEK_INLINE P operator()(P a, P b) const {
    return a ^ b;
  }
};

template <class Op, class T>
VEK_INLINE VekStatus combine(const T* a, const T* b, T* dst, int len) {
  return mapChecked(Op(), dst, len, a, b);
}

template <class Op, class T>
VEK_INLINE VekStatus combineConstant(const T* src, T val, T* dst, int len) {
  return mapChecked([c = broadcast(val)](auto x) VEK_LAMBDA { return Op()(x, c); }, dst, len, src);
}

VEK_INLINE VekStatus zero(Vek8u* dst, int len) { return ::veksZero_8u(dst, len); }
VEK_INLINE VekStatus zero(Vek16u* dst, int len) { return ::veksZero_16s(reinterpret_cast<Vek16s*>(dst), len); }
VEK_INLINE VekStatus zero(Vek32u* dst, int len) { return ::veksZero_32s(reinterpret_cast<Vek32s*>(dst), len); }
VEK_INLINE VekStatus zero(Vek32s* dst, int len) { return ::veksZero_32s(dst, len); }

VEK_INLINE VekStatus copy(const Vek8u* src, Vek8u* dst, int len) { return ::veksCopy_8u(src, dst, len); }
VEK_INLINE VekStatus copy(const Vek16s* src, Vek16s* dst, int len) { return ::veksCopy_16s(src, dst, len); }
VEK_INLINE VekStatus copy(const Vek32s* src, Vek32s* dst, int len) { return ::veksCopy_32s(src, dst, len); }
VEK_INLINE VekStatus copy(const Vek16u* src, Vek16u* dst, int len) {
  return ::veksCopy_16s(reinterpret_cast<const Vek16s*>(src), reinterpret_cast<Vek16s*>(dst), len);
}
VEK_INLINE VekStatus copy(const Vek32u* src, Vek32u* dst, int len) {
  return ::veksCopy_32s(reinterpret_cast<const Vek32s*>(src), reinterpret_cast<Vek32s*>(dst), len);
}

// Constants that change nothing, or everything to zero, are handed on before any check of the arguments: the function
// that does the work reports its own.
template <class T>
VEK_INLINE VekStatus andConstant(const T* src, T val, T* dst, int len) {
  return val == 0 && src ? zero(dst, len) : combineConstant<And>(src, val, dst, len);
}
template <class Op, class T>
VEK_INLINE VekStatus orConstant(const T* src, T val, T* dst, int len) {
  return val == 0 ? copy(src, dst, len) : combineConstant<Op>(src, val, dst, len);
}
template <class T>
VEK_INLINE VekStatus complement(const T* src, T* dst, int len) {
  return combineConstant<Xor>(src, T(-1), dst, len);
}

template <class T, class Shift>
VEK_INLINE VekStatus shiftElements(Shift shift, const T* src, int val, T* dst, int len) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (val < 0) return vekStsShiftErr;
  mapPacks([=](auto x) VEK_LAMBDA { return shift(x, val); }, dst, len, src);
  return vekStsNoErr;
}

template <class T>
VEK_INLINE VekStatus shiftLeft(const T* src, int val, T* dst, int len) {
  if (val == 0) return copy(src, dst, len);
  if constexpr (!kSame<T, Vek16s>) {
    if (val >= int(8 * sizeof(T)) && src) return zero(dst, len);
  }
  return shiftElements([](auto x, int n) VEK_LAMBDA { return x << n; }, src, val, dst, len);
}

template <class T>
VEK_INLINE VekStatus shiftRight(const T* src, int val, T* dst, int len) {
  if (val == 0) return copy(src, dst, len);
  if constexpr (!kSigned<T>) {
    if (val >= int(8 * sizeof(T)) && src) return zero(dst, len);
  }
  return shiftElements([](auto x, int n) VEK_LAMBDA { return x >> n; }, src, val, dst, len);
}

}  // namespace

#define VEK_BITWISE(NAME, OP, T)                                                                \
  VekStatus veks##NAME##_##T(const Vek##T* pSrc1, const Vek##T* pSrc2, Vek##T* pDst, int len) { \
    return combine<OP>(pSrc1, pSrc2, pDst, len);                                                \
  }
#define VEK_CONSTANT(NAME, FUNCTION, T, V)                                       \
  VekStatus veks##NAME##_##T(const Vek##T* pSrc, V val, Vek##T* pDst, int len) { \
    return FUNCTION(pSrc, val, pDst, len);                                       \
  }
#define VEK_LOGIC(T)                             \
  VEK_BITWISE(And, And, T)                       \
  VEK_BITWISE(Or, Or, T)                         \
  VEK_BITWISE(Xor, Xor, T)                       \
  VEK_CONSTANT(AndC, andConstant, T, Vek##T)     \
  VEK_CONSTANT(OrC, orConstant<Or>, T, Vek##T)   \
  VEK_CONSTANT(XorC, orConstant<Xor>, T, Vek##T) \
  VekStatus veksNot_##T(const Vek##T* pSrc, Vek##T* pDst, int len) { return complement(pSrc, pDst, len); }
#define VEK_SHIFTS(T)                      \
  VEK_CONSTANT(LShiftC, shiftLeft, T, int) \
  VEK_CONSTANT(RShiftC, shiftRight, T, int)

VEK_LOGIC(8u)
VEK_LOGIC(16u)
VEK_LOGIC(32u)

VEK_SHIFTS(8u)
VEK_SHIFTS(16s)
VEK_SHIFTS(32s)

}  // namespace vek::VEK_SLOT
