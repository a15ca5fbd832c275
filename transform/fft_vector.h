// SPDX-License-Identifier: Apache-2.0
// The registers that the transform kernels work on: the level's own width, real and imaginary parts apart. A block is
// L complex numbers: L real parts, then L imaginary parts, in the lane order that the cheapest split of interleaved
// data produces; kLaneOrder<T>[p] is the element that lane p holds. That order is nowhere else of use, and the
// registers are single ones: its shuffles are written on intrinsics here and not in core/simd.
#ifndef VEK_TRANSFORM_FFT_VECTOR_H
#define VEK_TRANSFORM_FFT_VECTOR_H

#include "core/simd/compare.h"
#include "core/simd/halves.h"
#include "transform/root_constants.h"

namespace vek::VEK_SLOT {
namespace {

template <class T>
using Reg = typename Pack<T>::Reg;
template <class T>
constexpr int kLanes = Pack<T>::regLanes;

template <class T>
constexpr LaneOrder kLaneOrder = kLaneOrderOf<T, kLanes<T>>;

template <class T>
VEK_INLINE Reg<T> loadV(const T* p) {
  return loadReg(p);
}
template <class T>
VEK_INLINE void storeV(T* p, Reg<T> x) {
  if constexpr (sizeof(Reg<T>) == 32) {
    _mm256_storeu_si256(reinterpret_cast<__m256i_u*>(p), (__m256i)x);
  } else {
    _mm_storeu_si128(reinterpret_cast<__m128i_u*>(p), (__m128i)x);
  }
}

// a * b + c and c - a * b, fused where the level can.
template <class T>
VEK_INLINE Reg<T> mulAdd(Reg<T> a, Reg<T> b, Reg<T> c) {
  if constexpr (kFma) {
    return fusedMulAdd<T>({{a}}, {{b}}, {{c}}).r[0];
  } else {
    return a * b + c;
  }
}
template <class T>
VEK_INLINE Reg<T> negMulAdd(Reg<T> a, Reg<T> b, Reg<T> c) {
  if constexpr (kFma) {
    return fusedNegMulAdd<T>({{a}}, {{b}}, {{c}}).r[0];
  } else {
    return c - a * b;
  }
}

// Four values, whatever the width of the registers.
template <class T>
using V4 = typename VectorOf<T, 4 * int(sizeof(T))>::type;

template <class T>
VEK_INLINE V4<T> mulAddFour(V4<T> a, V4<T> b, V4<T> c) {
  if constexpr (kFma && sizeof(T) == 4) {
    return (V4<T>)_mm_fmadd_ps((__m128)a, (__m128)b, (__m128)c);
  } else if constexpr (kFma) {
    return (V4<T>)_mm256_fmadd_pd((__m256d)a, (__m256d)b, (__m256d)c);
  } else {
    return a * b + c;
  }
}
template <class T>
VEK_INLINE V4<T> negMulAddFour(V4<T> a, V4<T> b, V4<T> c) {
  if constexpr (kFma && sizeof(T) == 4) {
    return (V4<T>)_mm_fnmadd_ps((__m128)a, (__m128)b, (__m128)c);
  } else if constexpr (kFma) {
    return (V4<T>)_mm256_fnmadd_pd((__m256d)a, (__m256d)b, (__m256d)c);
  } else {
    return c - a * b;
  }
}
// L complex numbers.
template <class T>
struct Complex {
  Reg<T> re, im;
};
template <class T>
VEK_INLINE Complex<T> operator+(Complex<T> a, Complex<T> b) {
  return {a.re + b.re, a.im + b.im};
}
template <class T>
VEK_INLINE Complex<T> operator-(Complex<T> a, Complex<T> b) {
  return {a.re - b.re, a.im - b.im};
}
template <class T>
VEK_INLINE Complex<T> times(Complex<T> a, Complex<T> w) {
  return {negMulAdd<T>(a.im, w.im, a.re * w.re), mulAdd<T>(a.im, w.re, a.re * w.im)};
}

// a times the conjugate of w; the same times i.
template <class T>
VEK_INLINE Complex<T> timesConj(Complex<T> a, Complex<T> w) {
  return {mulAdd<T>(a.im, w.im, a.re * w.re), negMulAdd<T>(a.re, w.im, a.im * w.re)};
}
template <class T>
VEK_INLINE Complex<T> timesConjI(Complex<T> a, Complex<T> w) {
  return {negMulAdd<T>(a.im, w.re, a.re * w.im), mulAdd<T>(a.im, w.im, a.re * w.re)};
}

template <class T>
VEK_INLINE Complex<T> loadBlock(const T* p) {
  return {loadV(p), loadV(p + kLanes<T>)};
}
template <class T>
VEK_INLINE void storeBlock(T* p, Complex<T> x) {
  storeV(p, x.re);
  storeV(p + kLanes<T>, x.im);
}

// Elements 0, 2 of a, then of b in every 16 bytes; 1, 3; and the way back.
template <class R>
VEK_INLINE R evensOf(R a, R b, float) {
  if constexpr (sizeof(R) == 32)
    return (R)_mm256_shuffle_ps((__m256)a, (__m256)b, 0x88);
  else
    return (R)_mm_shuffle_ps((__m128)a, (__m128)b, 0x88);
}
template <class R>
VEK_INLINE R oddsOf(R a, R b, float) {
  if constexpr (sizeof(R) == 32)
    return (R)_mm256_shuffle_ps((__m256)a, (__m256)b, 0xDD);
  else
    return (R)_mm_shuffle_ps((__m128)a, (__m128)b, 0xDD);
}
template <class R>
VEK_INLINE R unpackLowV(R a, R b, float) {
  if constexpr (sizeof(R) == 32)
    return (R)_mm256_unpacklo_ps((__m256)a, (__m256)b);
  else
    return (R)_mm_unpacklo_ps((__m128)a, (__m128)b);
}
template <class R>
VEK_INLINE R unpackHighV(R a, R b, float) {
  if constexpr (sizeof(R) == 32)
    return (R)_mm256_unpackhi_ps((__m256)a, (__m256)b);
  else
    return (R)_mm_unpackhi_ps((__m128)a, (__m128)b);
}
template <class R>
VEK_INLINE R unpackLowV(R a, R b, double) {
  if constexpr (sizeof(R) == 32)
    return (R)_mm256_unpacklo_pd((__m256d)a, (__m256d)b);
  else
    return (R)_mm_unpacklo_pd((__m128d)a, (__m128d)b);
}
template <class R>
VEK_INLINE R unpackHighV(R a, R b, double) {
  if constexpr (sizeof(R) == 32)
    return (R)_mm256_unpackhi_pd((__m256d)a, (__m256d)b);
  else
    return (R)_mm_unpackhi_pd((__m128d)a, (__m128d)b);
}
template <class R>
VEK_INLINE R evensOf(R a, R b, double) {
  return unpackLowV(a, b, double());
}
template <class R>
VEK_INLINE R oddsOf(R a, R b, double) {
  return unpackHighV(a, b, double());
}

// L interleaved complex numbers as a block, and back.
template <class T>
VEK_INLINE Complex<T> split(Reg<T> a, Reg<T> b) {
  return {evensOf(a, b, T()), oddsOf(a, b, T())};
}
template <class T>
VEK_INLINE Complex<T> loadInterleaved(const T* p) {
  return split<T>(loadV(p), loadV(p + kLanes<T>));
}
template <class T>
VEK_INLINE void storeInterleaved(T* p, Complex<T> x) {
  storeV(p, unpackLowV(x.re, x.im, T()));
  storeV(p + kLanes<T>, unpackHighV(x.re, x.im, T()));
}

// The lower halves of two registers of 32 bytes in one, and the upper ones.
template <class R>
VEK_INLINE R lowHalves(R a, R b) {
  return (R)_mm256_permute2f128_si256((__m256i)a, (__m256i)b, 0x20);
}
template <class R>
VEK_INLINE R highHalves(R a, R b) {
  return (R)_mm256_permute2f128_si256((__m256i)a, (__m256i)b, 0x31);
}

// Complex elements (pairs) of one register in the opposite order.
template <class T>
VEK_INLINE Reg<T> reversePairs(Reg<T> a) {
  if constexpr (sizeof(Reg<T>) == 32 && sizeof(T) == 4) {
    if constexpr (kAvx2) {
      return (Reg<T>)_mm256_permute4x64_pd((__m256d)a, 0x1B);
    } else {
      return (Reg<T>)_mm256_permute_pd(_mm256_permute2f128_pd((__m256d)a, (__m256d)a, 1), 0x5);
    }
  } else if constexpr (sizeof(Reg<T>) == 32) {
    return (Reg<T>)_mm256_permute2f128_pd((__m256d)a, (__m256d)a, 1);
  } else if constexpr (sizeof(T) == 4) {
    return (Reg<T>)_mm_shuffle_epi32((__m128i)a, 0x4E);
  } else {
    return a;
  }
}

// L interleaved complex numbers whose last one is at p, last first; and back.
template <class T>
VEK_INLINE Complex<T> loadReversed(const T* last) {
  const T* p = last - 2 * (kLanes<T> - 1);
  return split<T>(reversePairs<T>(loadV(p + kLanes<T>)), reversePairs<T>(loadV(p)));
}
template <class T>
VEK_INLINE void storeReversed(T* last, Complex<T> x) {
  T* p = last - 2 * (kLanes<T> - 1);
  storeV(p + kLanes<T>, reversePairs<T>(unpackLowV(x.re, x.im, T())));
  storeV(p, reversePairs<T>(unpackHighV(x.re, x.im, T())));
}

// Lane 0 of `first` and the other lanes of x.
template <class R>
VEK_INLINE R withFirst(R x, R first, float) {
  if constexpr (sizeof(R) == 32)
    return (R)_mm256_blend_ps((__m256)x, (__m256)first, 1);
  else
    return (R)_mm_move_ss((__m128)x, (__m128)first);
}
template <class R>
VEK_INLINE R withFirst(R x, R first, double) {
  if constexpr (sizeof(R) == 32)
    return (R)_mm256_blend_pd((__m256d)x, (__m256d)first, 1);
  else
    return (R)_mm_move_sd((__m128d)x, (__m128d)first);
}

// The element at lane 0 stays, the others come in the opposite order: element k of a block is element L-k.
template <class T>
VEK_INLINE Reg<T> mirrorLanes(Reg<T> x) {
  if constexpr (kLanes<T> == 8 && kAvx2) {
    return (Reg<T>)_mm256_permutevar8x32_ps((__m256)x, _mm256_setr_epi32(0, 7, 2, 5, 6, 3, 4, 1));
  } else if constexpr (kLanes<T> == 8) {
    const __m256 y = _mm256_blend_ps((__m256)x, _mm256_permute2f128_ps((__m256)x, (__m256)x, 1), 0xAA);
    return (Reg<T>)_mm256_permutevar_ps(y, _mm256_setr_epi32(0, 3, 2, 1, 2, 3, 0, 1));
  } else if constexpr (kLanes<T> == 4 && sizeof(T) == 8) {
    return (Reg<T>)_mm256_permute_pd((__m256d)x, 6);
  } else if constexpr (kLanes<T> == 4) {
    return (Reg<T>)_mm_shuffle_epi32((__m128i)x, 0x6C);
  } else {
    return x;
  }
}

// Single precision: from the lane order of blocks to natural order and back; and to the opposite order.
template <class R>
VEK_INLINE R natural(R x) {
  if constexpr (kAvx2) {
    return (R)_mm256_permute4x64_pd((__m256d)x, 0xD8);
  } else if constexpr (kAvx) {
    const __m128d low = _mm256_castpd256_pd128((__m256d)x), high = _mm256_extractf128_pd((__m256d)x, 1);
    return (R)_mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_unpacklo_pd(low, high)), _mm_unpackhi_pd(low, high), 1);
  } else {
    return x;
  }
}
template <class R>
VEK_INLINE R reverseLanes(R x) {
  if constexpr (kAvx2) {
    return (R)_mm256_permutevar8x32_ps((__m256)x, _mm256_setr_epi32(7, 6, 5, 4, 3, 2, 1, 0));
  } else if constexpr (kAvx) {
    const __m256 y = _mm256_permute_ps((__m256)x, 0x1B);
    return (R)_mm256_permute2f128_ps(y, y, 1);
  } else {
    return (R)_mm_shuffle_epi32((__m128i)x, 0x1B);
  }
}

// Rows become columns: L registers of L lanes.
template <class T>
VEK_INLINE void transpose(Reg<T> (&r)[kLanes<T>]) {
  using R = Reg<T>;
  if constexpr (kLanes<T> == 8) {
    __m256 a[8], b[8];
#pragma GCC unroll 4
    for (int i = 0; i < 8; i += 2) {
      a[i] = _mm256_unpacklo_ps((__m256)r[i], (__m256)r[i + 1]);
      a[i + 1] = _mm256_unpackhi_ps((__m256)r[i], (__m256)r[i + 1]);
    }
#pragma GCC unroll 2
    for (int h = 0; h < 8; h += 4) {
      b[h] = _mm256_shuffle_ps(a[h], a[h + 2], 0x44);
      b[h + 1] = _mm256_shuffle_ps(a[h], a[h + 2], 0xEE);
      b[h + 2] = _mm256_shuffle_ps(a[h + 1], a[h + 3], 0x44);
      b[h + 3] = _mm256_shuffle_ps(a[h + 1], a[h + 3], 0xEE);
    }
#pragma GCC unroll 4
    for (int i = 0; i < 4; ++i) {
      r[i] = (R)_mm256_permute2f128_ps(b[i], b[i + 4], 0x20);
      r[i + 4] = (R)_mm256_permute2f128_ps(b[i], b[i + 4], 0x31);
    }
  } else if constexpr (kLanes<T> == 4 && sizeof(T) == 8) {
    const R a = unpackLowV(r[0], r[1], T()), b = unpackHighV(r[0], r[1], T());
    const R c = unpackLowV(r[2], r[3], T()), d = unpackHighV(r[2], r[3], T());
    r[0] = (R)_mm256_permute2f128_pd((__m256d)a, (__m256d)c, 0x20);
    r[1] = (R)_mm256_permute2f128_pd((__m256d)b, (__m256d)d, 0x20);
    r[2] = (R)_mm256_permute2f128_pd((__m256d)a, (__m256d)c, 0x31);
    r[3] = (R)_mm256_permute2f128_pd((__m256d)b, (__m256d)d, 0x31);
  } else if constexpr (kLanes<T> == 4) {
    const R a = unpackLowV(r[0], r[1], T()), b = unpackHighV(r[0], r[1], T());
    const R c = unpackLowV(r[2], r[3], T()), d = unpackHighV(r[2], r[3], T());
    r[0] = (R)_mm_movelh_ps((__m128)a, (__m128)c);
    r[1] = (R)_mm_movehl_ps((__m128)c, (__m128)a);
    r[2] = (R)_mm_movelh_ps((__m128)b, (__m128)d);
    r[3] = (R)_mm_movehl_ps((__m128)d, (__m128)b);
  } else {
    const R a = unpackLowV(r[0], r[1], T());
    r[1] = unpackHighV(r[0], r[1], T());
    r[0] = a;
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
