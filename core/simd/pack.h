// SPDX-License-Identifier: Apache-2.0
// Pack<T>: 32 bytes of elements in every slot, one register where the level has registers that wide for the type and a
// pair of 16-byte registers elsewhere. Kernels are written on packs once. As the logical width never changes, what is
// done lane by lane, and every sum whose order a kernel fixes, has the same bits in all slots; they differ only where a
// kernel promises no more than a precision and asks for it: by fusedMulAdd, or by an order of its own for a level
// (kRegroups in stats/reduce.h).
#ifndef VEK_CORE_SIMD_PACK_H
#define VEK_CORE_SIMD_PACK_H

#include "core/simd/level.h"

namespace vek::VEK_SLOT {
namespace {

template <class T, int Bytes>
struct VectorOf {
  typedef T type __attribute__((vector_size(Bytes)));
};

template <class T>
constexpr int kRegBytes = kAvx2 || (kAvx && kFloat<T>) ? 32 : 16;

template <class T>
struct Pack {
  using Element = T;
  static constexpr int lanes = 32 / int(sizeof(T));
  static constexpr int regs = 32 / kRegBytes<T>;
  static constexpr int regLanes = lanes / regs;
  using Reg = typename VectorOf<T, kRegBytes<T>>::type;
  Reg r[regs];
};

// The result of a comparison: all ones or all zeros a lane, in registers shaped like those of Pack<T>.
template <class T>
struct Mask {
  using Element = T;
  static constexpr int regs = Pack<T>::regs;
  using Reg = typename VectorOf<SignedOf<T>, kRegBytes<T>>::type;
  Reg r[regs];
};

// K packs that travel together (a block of elements wider than one pack).
template <class T, int K>
struct Group {
  Pack<T> p[K];
};

// Builds a pack (or mask) from a function of the register number.
template <class P, class F>
VEK_INLINE P each(F f) {
  if constexpr (P::regs == 1) {
    return P{{f(0)}};
  } else {
    return P{{f(0), f(1)}};
  }
}

// ---- reinterpretation -------------------------------------------------------------------------------------------

template <class To, class From>
VEK_INLINE To regCast(From x) {
  static_assert(sizeof(To) == sizeof(From));
  return (To)x;
}
VEK_INLINE __m128i lowHalf(__m256i x) { return _mm256_castsi256_si128(x); }
VEK_INLINE __m128i highHalf(__m256i x) { return _mm256_extractf128_si256(x, 1); }
VEK_INLINE __m256i joinHalves(__m128i low, __m128i high) {
  return _mm256_insertf128_si256(_mm256_castsi128_si256(low), high, 1);
}

// From one register shape to another: only slot e9 has both (floats in 32 bytes, integers in 16).
template <class To, class From>
VEK_INLINE To reshape(From x) {
  if constexpr (To::regs == From::regs) {
    return each<To>([&](int i) VEK_LAMBDA { return regCast<typename To::Reg>(x.r[i]); });
  } else if constexpr (From::regs == 1) {
    return To{{regCast<typename To::Reg>(lowHalf(regCast<__m256i>(x.r[0]))),
               regCast<typename To::Reg>(highHalf(regCast<__m256i>(x.r[0])))}};
  } else {
    return To{{regCast<typename To::Reg>(joinHalves(regCast<__m128i>(x.r[0]), regCast<__m128i>(x.r[1])))}};
  }
}

// The same 32 bytes seen as elements of U.
template <class U, class T>
VEK_INLINE Pack<U> bits(Pack<T> x) {
  return reshape<Pack<U>>(x);
}
template <class U, class T>
VEK_INLINE Pack<U> bits(Mask<T> x) {
  return reshape<Pack<U>>(x);
}
template <class U, class T>
VEK_INLINE Mask<U> asMask(Pack<T> x) {
  return reshape<Mask<U>>(x);
}
template <class U, class T>
VEK_INLINE Mask<U> maskCast(Mask<T> x) {
  return reshape<Mask<U>>(x);
}

// ---- memory -----------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE typename Pack<T>::Reg loadReg(const T* p) {
  using Reg = typename Pack<T>::Reg;
  if constexpr (sizeof(Reg) == 32) {
    return regCast<Reg>(_mm256_loadu_si256(reinterpret_cast<const __m256i_u*>(p)));
  } else {
    return regCast<Reg>(_mm_loadu_si128(reinterpret_cast<const __m128i_u*>(p)));
  }
}

template <class T>
VEK_INLINE Pack<T> load(const T* p) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA { return loadReg(p + i * Pack<T>::regLanes); });
}

// A load that stays one. Of a plain load with two users the compiler makes an operand in memory for each, and loads
// are what limits the loops that use this.
template <class T>
VEK_INLINE Pack<T> loadOnce(const T* p) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    using Reg = typename Pack<T>::Reg;
    const T* at = p + i * Pack<T>::regLanes;
    if constexpr (sizeof(Reg) == 32) {
      return regCast<Reg>(*reinterpret_cast<const volatile __m256i_u*>(at));
    } else {
      return regCast<Reg>(*reinterpret_cast<const volatile __m128i_u*>(at));
    }
  });
}

template <class T>
VEK_INLINE void store(T* p, Pack<T> x) {
  if constexpr (Pack<T>::regs == 1) {
    _mm256_storeu_si256(reinterpret_cast<__m256i_u*>(p), regCast<__m256i>(x.r[0]));
  } else {
    _mm_storeu_si128(reinterpret_cast<__m128i_u*>(p), regCast<__m128i>(x.r[0]));
    _mm_storeu_si128(reinterpret_cast<__m128i_u*>(p + Pack<T>::regLanes), regCast<__m128i>(x.r[1]));
  }
}

template <int K, class T>
VEK_INLINE Group<T, K> loadGroup(const T* p) {
  Group<T, K> g;
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) g.p[k] = load(p + k * Pack<T>::lanes);
  return g;
}

template <int K, class T>
VEK_INLINE void storeGroup(T* p, Group<T, K> g) {
#pragma GCC unroll 8
  for (int k = 0; k < K; ++k) store(p + k * Pack<T>::lanes, g.p[k]);
}

// ---- constants --------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE typename Pack<T>::Reg broadcastReg(T x) {
  if constexpr (kSame<T, float>) {
    if constexpr (kAvx) {
      return regCast<typename Pack<T>::Reg>(_mm256_set1_ps(x));
    } else {
      return regCast<typename Pack<T>::Reg>(_mm_set1_ps(x));
    }
  } else if constexpr (kSame<T, double>) {
    if constexpr (kAvx) {
      return regCast<typename Pack<T>::Reg>(_mm256_set1_pd(x));
    } else {
      return regCast<typename Pack<T>::Reg>(_mm_set1_pd(x));
    }
  } else {
    return typename Pack<T>::Reg{} + x;
  }
}

template <class T>
VEK_INLINE Pack<T> broadcast(T x) {
  const typename Pack<T>::Reg reg = broadcastReg(x);
  return each<Pack<T>>([&](int) VEK_LAMBDA { return reg; });
}

template <class T>
VEK_INLINE Pack<T> zeros() {
  return each<Pack<T>>([](int) VEK_LAMBDA { return typename Pack<T>::Reg{}; });
}

// 0, 1, 2, ... by lane.
template <class T>
VEK_INLINE Pack<T> iota() {
  alignas(32) T x[Pack<T>::lanes];
#pragma GCC unroll 32
  for (int i = 0; i < Pack<T>::lanes; ++i) x[i] = T(i);
  return load(x);
}

// Alternating values, the pattern of an interleaved complex constant.
template <class T>
VEK_INLINE Pack<T> broadcastPair(T even, T odd) {
  alignas(32) T x[Pack<T>::lanes];
#pragma GCC unroll 32
  for (int i = 0; i < Pack<T>::lanes; i += 2) x[i] = even, x[i + 1] = odd;
  return load(x);
}

// Keeps a loaded pack in its register: left to itself the compiler reads memory again for each of several uses.
template <class T>
VEK_INLINE Pack<T> inRegister(Pack<T> a) {
  return each<Pack<T>>([&](int i) VEK_LAMBDA {
    typename Pack<T>::Reg r = a.r[i];
    asm("" : "+x"(r));
    return r;
  });
}

// The lanes as an array, for the few places that finish in scalar code.
template <class T>
struct Lanes {
  alignas(32) T x[Pack<T>::lanes];
  VEK_INLINE T operator[](int i) const { return x[i]; }
};
template <class T>
VEK_INLINE Lanes<T> lanesOf(Pack<T> a) {
  Lanes<T> out;
  store(out.x, a);
  return out;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
