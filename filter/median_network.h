// SPDX-License-Identifier: Apache-2.0
// Medians of short windows. Each lane of a pack is one output, the window's elements are packs loaded at shifted
// addresses, and minima and maxima bring the median to its place.
#ifndef VEK_FILTER_MEDIAN_NETWORK_H
#define VEK_FILTER_MEDIAN_NETWORK_H

#include "core/simd/driver.h"
#include "core/simd/order.h"

namespace vek::VEK_SLOT {
namespace {

// ---- masks up to 9: the window in registers -------------------------------------------------------------------------

// The median of M values.
template <int M, class T>
VEK_INLINE Pack<T> medianOf(Pack<T> (&v)[M]) {
  if constexpr (M == 3) {
    return medianOf3(v[0], v[1], v[2]);
  } else if constexpr (M == 5) {
    return medianOf5(v[0], v[1], v[3], v[4], v[2]);
  } else if constexpr (M == 7) {
    // Of two sorted triples the pairwise minima are the three smallest and the maxima the three largest values.
    sortThree(v[0], v[1], v[2]);
    sortThree(v[4], v[5], v[6]);
    const Pack<T> low = maxOf(maxOf(minOf(v[0], v[6]), minOf(v[1], v[5])), minOf(v[2], v[4]));
    const Pack<T> high = minOf(minOf(maxOf(v[0], v[6]), maxOf(v[1], v[5])), maxOf(v[2], v[4]));
    return maxOf(low, minOf(v[3], high));
  } else {
    // The median of the largest minimum, the median median and the smallest maximum of three sorted triples.
    static_assert(M == 9);
    sortThree(v[0], v[1], v[2]);
    sortThree(v[3], v[4], v[5]);
    sortThree(v[6], v[7], v[8]);
    return medianOf3(maxOf(maxOf(v[0], v[3]), v[6]), medianOf3(v[1], v[4], v[7]), minOf(minOf(v[2], v[5]), v[8]));
  }
}

template <int M, class T>
VEK_INLINE void medianBlock(T* d, const T* s) {
  Pack<T> v[M];
#pragma GCC unroll 9
  for (int k = 0; k < M; ++k) v[k] = load(s + k);
  store(d, medianOf<M>(v));
}

// Floats by integer arithmetic, which places every bit pattern.
template <int M>
VEK_NOINLINE void medianBlockBits(float* d, const float* s) {
  Pack<int32_t> v[M];
#pragma GCC unroll 9
  for (int k = 0; k < M; ++k) v[k] = floatOrder(bits<int32_t>(load(s + k)));
  store(d, bits<float>(floatOrder(medianOf<M>(v))));
}

// True if no float that N packs of outputs read is a NaN or -0: all others keep the order of integers under the minimum
// and maximum of floats.
template <int N, int M>
VEK_INLINE bool isPlain(const float* s) {
  constexpr int lanes = Pack<float>::lanes;
  static_assert(M <= lanes + 1);
  const Pack<int32_t> minusZero = broadcast(INT32_MIN);
  Pack<float> last = load(s + (N - 1) * lanes + M - 1);
  Pack<int32_t> least = bits<int32_t>(last);  // as an integer -0 is the least of all
  Mask<int32_t> marks = least == minusZero;
#pragma GCC unroll 4
  for (int k = 0; k < N; ++k) {
    const Pack<float> x = load(s + k * lanes);
    if (k % 2 == 0) marks = marks | maskCast<int32_t>(unordered(x, last));
    if constexpr (Pack<int32_t>::regs == 1) {
      least = minOf(least, bits<int32_t>(x));
    } else {
      marks = marks | (bits<int32_t>(x) == minusZero);
    }
    last = x;
  }
  if (N % 2 == 0) marks = marks | maskCast<int32_t>(unordered(last, last));
  return laneBits(marks | (least == minusZero)) == 0;
}

// Packs of outputs at a time.
constexpr int kMedianUnroll = 4;

template <int M, class T>
VEK_INLINE void medianBlocks(T* d, const T* s) {
  constexpr int lanes = Pack<T>::lanes;
  if constexpr (kSame<T, float>) {
    if (!isPlain<kMedianUnroll, M>(s)) {
      for (int k = 0; k < kMedianUnroll; ++k) medianBlockBits<M>(d + k * lanes, s + k * lanes);
      return;
    }
  }
#pragma GCC unroll 4
  for (int k = 0; k < kMedianUnroll; ++k) medianBlock<M>(d + k * lanes, s + k * lanes);
}
template <int M, class T>
VEK_INLINE void medianOneBlock(T* d, const T* s) {
  if constexpr (kSame<T, float>) {
    medianBlockBits<M>(d, s);
  } else {
    medianBlock<M>(d, s);
  }
}

// dst[i] = median of window[i] .. window[i + M - 1], i < n; the arrays do not overlap.
template <int M, class T>
VEK_NOINLINE void slideNetwork(const T* window, T* dst, ptrdiff_t n) {
  constexpr int lanes = Pack<T>::lanes;
  if (n >= lanes) {
    ptrdiff_t i = 0;
    for (; i + kMedianUnroll * lanes <= n; i += kMedianUnroll * lanes) medianBlocks<M>(dst + i, window + i);
    for (; i + lanes <= n; i += lanes) medianOneBlock<M>(dst + i, window + i);
    if (i < n) medianOneBlock<M>(dst + n - lanes, window + n - lanes);
    return;
  }
  alignas(32) T in[lanes + M] = {}, out[lanes];
  copyShort(in, window, (n + M - 1) * ptrdiff_t(sizeof(T)));
  medianOneBlock<M>(out, in);
  copyShort(dst, out, n * ptrdiff_t(sizeof(T)));
}

// ---- masks up to 33: sorted halves that windows share ---------------------------------------------------------------
// With half = mask / 2, the window of an output is a centre and two runs of `half` elements, and the run before one
// centre is the run after another: every run is sorted once. Sorted ascending, a[k] and b[half - 1 - k] pair up so that
// the minima are the `half` smallest and the maxima the `half` largest of both runs; the median is the centre, held
// between the largest minimum and the smallest maximum.

constexpr int kListMask = 33;
constexpr int kListHalf = kListMask / 2;
constexpr int kListBytes = 1216;  // of each row of sorted runs
constexpr int kListSlack = 64;    // elements that may be read behind the window's last

// Lane by lane the H = 8 or 16 shifted elements, sorted; those from `half` on count as the largest value.
template <int H, class T>
VEK_INLINE void sortRun(const T* s, int half, T* row, ptrdiff_t stride) {
  constexpr T most = kSigned<T> ? T(UnsignedOf<T>(-1) >> 1) : T(-1);
  Pack<T> v[H];
#pragma GCC unroll 16
  for (int k = 0; k < H; ++k) v[k] = k < half ? load(s + k) : broadcast(most);
  sortAcross(v);
#pragma GCC unroll 16
  for (int k = 0; k < H; ++k) store(row + k * stride, v[k]);
}

template <class T>
VEK_INLINE Pack<T> medianOfRuns(const T* before, const T* after, int half, ptrdiff_t stride, Pack<T> centre) {
  const T* b = after + (half - 1) * stride;
  Pack<T> low = minOf(load(before), load(b)), high = maxOf(load(before), load(b));
  for (int k = 1; k < half; ++k) {
    before += stride;
    b -= stride;
    const Pack<T> x = load(before), y = load(b);
    low = maxOf(low, minOf(x, y));
    high = minOf(high, maxOf(x, y));
  }
  return maxOf(low, minOf(centre, high));
}

// dst[i] = median of window[i] .. window[i + 2 * half], i < n, of integers; kListSlack elements follow the window.
template <int H, class T>
VEK_NOINLINE void slideLists(const T* window, T* dst, ptrdiff_t n, int half) {
  constexpr int lanes = Pack<T>::lanes;
  constexpr ptrdiff_t stride = kListBytes / ptrdiff_t(sizeof(T)), runs = stride & -lanes;
  alignas(64) T rows[H * stride];
  const ptrdiff_t most = (runs - kListHalf - 1) & -lanes;
  for (ptrdiff_t i = 0; i < n; i += most) {
    const ptrdiff_t count = n - i < most ? n - i : most;
    for (ptrdiff_t k = 0; k < count + half + 1; k += lanes) sortRun<H>(window + i + k, half, rows + k, stride);
    for (ptrdiff_t k = 0; k < count; k += lanes) {
      const Pack<T> x = medianOfRuns(rows + k, rows + k + half + 1, half, stride, load(window + i + k + half));
      if (count - k >= lanes) {
        store(dst + i + k, x);
      } else {
        storePart(dst + i + k, x, count - k);
      }
    }
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
