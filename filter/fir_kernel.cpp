// SPDX-License-Identifier: Apache-2.0
// Sums of products of shifted samples with taps, many outputs at a time.
#include "filter/fir_kernel.h"

#include "core/simd/complex.h"
#include "core/simd/convert.h"
#include "core/simd/short.h"

namespace vek::VEK_SLOT {
namespace {

// How a kernel reads its operands: C flat elements a sample (1 real, 2 complex), taps conjugated or not, and where the
// outputs go.
template <class Element, int Parts, class Output, bool ConjugateTaps = false>
struct Kind {
  using T = Element;
  using Out = Output;
  static constexpr int C = Parts;
  static constexpr bool conjugate = ConjugateTaps;
  static constexpr int lanes = Pack<T>::lanes;
  static constexpr int samples = lanes / C;  // in a pack
};

// Taps that are gone through together, so that they and their samples stay in the nearest cache.
constexpr int64_t kTapChunk = 1024;

// ---- tiles: B packs of outputs held in registers -------------------------------------------------------------------

// The sums of a tile. A complex sample meets the real and the imaginary part of a tap in sums of their own, combined
// at the end; S sets of sums keep short tiles from waiting for their own additions.
template <class K, int B, int S>
struct Sums {
  Pack<typename K::T> a[S][K::C][B];
};

// Q taps that lie one pack of samples apart: they share the packs of samples, each of which is loaded once.
template <int Q, class K, int B, int S>
VEK_INLINE void addTaps(Sums<K, B, S>& sums, const typename K::T* x, const typename K::T* taps) {
  using P = Pack<typename K::T>;
  P tap[Q][K::C];
#pragma GCC unroll 8
  for (int q = 0; q < Q; ++q) {
#pragma GCC unroll 2
    for (int c = 0; c < K::C; ++c) tap[q][c] = broadcast(taps[q * K::lanes + c]);
  }
#pragma GCC unroll 20
  for (int s = 0; s < B + Q - 1; ++s) {
    const P samples = load(x + s * K::lanes);
#pragma GCC unroll 8
    for (int q = 0; q < Q; ++q) {
      const int b = s - q;
      if (b < 0 || b >= B) continue;
#pragma GCC unroll 2
      for (int c = 0; c < K::C; ++c) {
        P& sum = sums.a[q % S][c][b];
        sum = fusedMulAdd(tap[q][c], samples, sum);
      }
    }
  }
}

template <class K, int B, int S, int Q>
VEK_INLINE void addRun(Sums<K, B, S>& sums, const typename K::T* x, const typename K::T* taps, int64_t count) {
  if (count < 2 * K::samples) {  // too few to share samples
    for (int64_t j = 0; j < count; ++j) addTaps<1>(sums, x + K::C * j, taps + K::C * j);
    return;
  }
  for (int64_t first = 0; first < count; first += kTapChunk) {
    const int64_t chunk = count - first < kTapChunk ? count - first : kTapChunk;
    const int64_t phases = chunk < K::samples ? chunk : K::samples;
    for (int64_t phase = 0; phase < phases; ++phase) {
      const typename K::T* xs = x + K::C * (first + phase);
      const typename K::T* ts = taps + K::C * (first + phase);
      int64_t left = (chunk - phase + K::samples - 1) / K::samples;
      for (; left >= Q; left -= Q, xs += Q * K::lanes, ts += Q * K::lanes) addTaps<Q>(sums, xs, ts);
      for (; left > 0; --left, xs += K::lanes, ts += K::lanes) addTaps<1>(sums, xs, ts);
    }
  }
}

VEK_INLINE void put(float* y, Pack<float> v) { store(y, v); }
VEK_INLINE void put(float* y, Pack<double> v) { storeBytes<16>(y, doubleToFloats(v)); }
template <class K, int B, int S>
VEK_INLINE Pack<typename K::T> total(const Sums<K, B, S>& sums, int c, int b) {
  Pack<typename K::T> t = sums.a[0][c][b];
#pragma GCC unroll 4
  for (int s = 1; s < S; ++s) t = t + sums.a[s][c][b];
  return t;
}

template <class K, int B, int S, int Q>
VEK_NOINLINE void tile(const Run<typename K::T>* runs, int64_t runCount, int64_t at, typename K::Out* y) {
  using P = Pack<typename K::T>;
  Sums<K, B, S> sums;
#pragma GCC unroll 4
  for (int s = 0; s < S; ++s) {
#pragma GCC unroll 2
    for (int c = 0; c < K::C; ++c) {
#pragma GCC unroll 16
      for (int b = 0; b < B; ++b) sums.a[s][c][b] = zeros<typename K::T>();
    }
  }
  for (int64_t r = 0; r < runCount; ++r) addRun<K, B, S, Q>(sums, runs[r].x + K::C * at, runs[r].taps, runs[r].count);
#pragma GCC unroll 16
  for (int b = 0; b < B; ++b) {
    P v = total(sums, 0, b);
    if constexpr (K::C == 2) {
      const P cross = swapPairs(total(sums, 1, b));
      v = addSubtract(v, K::conjugate ? zeros<typename K::T>() - cross : cross);
    }
    put(y + K::C * at + b * K::lanes, v);
  }
}

// ---- single outputs: sums along the taps ---------------------------------------------------------------------------

// The sums of the even and of the odd lanes, in lanes 0 and 1.
template <class T>
VEK_INLINE Pack<T> foldPairs(Pack<T> a) {
  a = a + swapHalves(a);
  if constexpr (sizeof(T) == 4) a = a + shuffle32<0x4E>(a);
  return a;
}
template <class T>
VEK_INLINE Pack<T> fold(Pack<T> a) {
  a = foldPairs(a);
  return a + swapPairs(a);
}
template <class T>
VEK_INLINE T lane(Pack<T> a, int i) {
  return a.r[0][i];
}

template <class T>
struct ComplexOf {
  T re, im;
};

template <class K>
VEK_INLINE void putOne(ComplexOf<typename K::T> v, typename K::Out* y) {
  y[0] = typename K::Out(v.re);
  if constexpr (K::C == 2) y[1] = typename K::Out(v.im);
}

template <class K>
VEK_INLINE ComplexOf<typename K::T> dot(const typename K::T* x, const typename K::T* taps, int64_t count) {
  using T = typename K::T;
  using P = Pack<T>;
  constexpr int C = K::C, ways = 4 / C;
  P straight[ways], crossed[ways];
#pragma GCC unroll 4
  for (int w = 0; w < ways; ++w) straight[w] = crossed[w] = zeros<T>();
  const auto addPack = [&](int w, P t, P v) VEK_LAMBDA {
    straight[w] = fusedMulAdd(t, v, straight[w]);
    if constexpr (C == 2) crossed[w] = fusedMulAdd(t, swapPairs(v), crossed[w]);
  };
  const int64_t flat = count * C;
  int64_t j = 0;
  for (; j + ways * K::lanes <= flat; j += ways * K::lanes) {
#pragma GCC unroll 4
    for (int w = 0; w < ways; ++w) addPack(w, load(taps + j + w * K::lanes), load(x + j + w * K::lanes));
  }
  for (; j + K::lanes <= flat; j += K::lanes) addPack(0, load(taps + j), load(x + j));
  // Beyond the last tap a zero meets a zero.
  if (j < flat) addPack(ways - 1, loadPart(taps + j, flat - j), loadPart(x + j, flat - j));
#pragma GCC unroll 4
  for (int w = 1; w < ways; ++w) straight[0] = straight[0] + straight[w], crossed[0] = crossed[0] + crossed[w];
  if constexpr (C == 1) {
    return {lane(fold(straight[0]), 0), T(0)};
  } else {
    // Of the four products of two complex numbers, those of like parts and those of unlike ones.
    const P like = foldPairs(straight[0]), unlike = foldPairs(crossed[0]);
    const P likeOdd = swapPairs(like), unlikeOdd = swapPairs(unlike);
    if constexpr (K::conjugate) return {lane(like + likeOdd, 0), lane(unlike - unlikeOdd, 0)};
    return {lane(like - likeOdd, 0), lane(unlike + unlikeOdd, 0)};
  }
}

template <class K>
VEK_NOINLINE void singly(const Run<typename K::T>* runs, int64_t runCount, int64_t from, int64_t to,
                         typename K::Out* y) {
  for (int64_t i = from; i < to; ++i) {
    ComplexOf<typename K::T> sum = {0, 0};
    for (int64_t r = 0; r < runCount; ++r) {
      const auto d = dot<K>(runs[r].x + K::C * i, runs[r].taps, runs[r].count);
      sum.re += d.re, sum.im += d.im;
    }
    putOne<K>(sum, y + K::C * i);
  }
}

template <class K>
VEK_INLINE void strided(const typename K::T* taps, int64_t count, const typename K::T* x, int64_t step,
                        typename K::Out* y, int64_t outStep, int64_t n) {
  for (int64_t i = 0; i < n; ++i) putOne<K>(dot<K>(x + K::C * step * i, taps, count), y + K::C * outStep * i);
}

// ---- from the widest tiles to the last output ----------------------------------------------------------------------

// Sixteen registers hold the sums, the taps that share samples and the sample at hand.
template <class K>
constexpr bool kOneRegister = Pack<typename K::T>::regs == 1;
template <class K>
constexpr int kTile = kOneRegister<K> ? (K::C == 1 ? 8 : 5) : 4 / K::C;
template <class K>
constexpr int kSharing = kOneRegister<K>&& K::C == 1 ? 4 : 2;
template <class K>
constexpr int kHalfTile = (kOneRegister<K> ? 4 : 2) / K::C;

template <class K>
VEK_INLINE void run(const Run<typename K::T>* runs, int64_t runCount, typename K::Out* y, int64_t n) {
  constexpr int wide = kTile<K>, half = kHalfTile<K>;
  int64_t i = 0;
  for (; i + wide * K::samples <= n; i += wide * K::samples) tile<K, wide, 1, kSharing<K>>(runs, runCount, i, y);
  for (; i + half * K::samples <= n; i += half * K::samples) tile<K, half, 2, 2>(runs, runCount, i, y);
  for (; i + K::samples <= n; i += K::samples) tile<K, 1, 4 / K::C, 4 / K::C>(runs, runCount, i, y);
  if (i == n) return;
  if (n > K::samples) {
    tile<K, 1, 4 / K::C, 4 / K::C>(runs, runCount, n - K::samples, y);  // some outputs once more
  } else {
    singly<K>(runs, runCount, i, n, y);
  }
}

}  // namespace

void slide(const Run<float>* runs, int64_t runCount, float* y, int64_t n) {
  run<Kind<float, 1, float>>(runs, runCount, y, n);
}
void slide(const Run<double>* runs, int64_t runCount, float* y, int64_t n) {
  run<Kind<double, 1, float>>(runs, runCount, y, n);
}
void slideComplex(const Run<float>* runs, int64_t runCount, float* y, int64_t n) {
  run<Kind<float, 2, float>>(runs, runCount, y, n);
}
void slideComplex(const Run<double>* runs, int64_t runCount, float* y, int64_t n) {
  run<Kind<double, 2, float>>(runs, runCount, y, n);
}
void slideConjugate(const Run<float>* runs, int64_t runCount, float* y, int64_t n) {
  run<Kind<float, 2, float, true>>(runs, runCount, y, n);
}

void stride(const float* taps, int64_t count, const float* x, int64_t step, float* y, int64_t outStep, int64_t n) {
  strided<Kind<float, 1, float>>(taps, count, x, step, y, outStep, n);
}
void stride(const double* taps, int64_t count, const double* x, int64_t step, float* y, int64_t outStep, int64_t n) {
  strided<Kind<double, 1, float>>(taps, count, x, step, y, outStep, n);
}
void strideComplex(const float* taps, int64_t count, const float* x, int64_t step, float* y, int64_t outStep,
                   int64_t n) {
  strided<Kind<float, 2, float>>(taps, count, x, step, y, outStep, n);
}
void strideComplex(const double* taps, int64_t count, const double* x, int64_t step, float* y, int64_t outStep,
                   int64_t n) {
  strided<Kind<double, 2, float>>(taps, count, x, step, y, outStep, n);
}

}  // namespace vek::VEK_SLOT
