// SPDX-License-Identifier: Apache-2.0
// Median filters: pieces of the signal with its edges repeated, and the kernel that fits the mask.
#include "core/memory.h"
#include "core/simd/checks.h"
#include "filter/median_network.h"
#include "filter/median_ranks.h"
#include "vek.h"

namespace vek::VEK_SLOT {
namespace {

// ---- the signal with its edge elements repeated ---------------------------------------------------------------------

// Elements from .. from + count - 1, where those below 0 are src[0] and those from len on are src[len - 1].
template <class T>
VEK_INLINE void copyRepeated(T* to, const T* src, int64_t len, int64_t from, int64_t count) {
  const auto clamp = [count](int64_t k) VEK_LAMBDA { return k < 0 ? 0 : k > count ? count : k; };
  const int64_t first = clamp(-from), last = clamp(len - from);
  for (int64_t k = 0; k < first; ++k) to[k] = src[0];
  if (first < last) __builtin_memcpy(to + first, src + from + first, size_t(last - first) * sizeof(T));
  for (int64_t k = first > last ? first : last; k < count; ++k) to[k] = src[len - 1];
}

// Floats are filtered as integers of the same order where their own minima and maxima do not do.
template <class T>
VEK_INLINE void mapOrder(T* v, int64_t n) {
  if constexpr (kSame<T, float>) {
    int32_t* const k = reinterpret_cast<int32_t*>(v);
    mapPacks([](Pack<int32_t> x) VEK_LAMBDA { return floatOrder(x); }, k, n, k);
  }
}
template <class T>
struct OrderedType {
  using Type = T;
};
template <>
struct OrderedType<float> {
  using Type = int32_t;
};
template <class T>
using Ordered = typename OrderedType<T>::Type;

// ---- short masks ----------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE void slideRegisters(const T* window, T* dst, int64_t n, int mask) {
  if (mask == 3) return slideNetwork<3>(window, dst, n);
  if (mask == 5) return slideNetwork<5>(window, dst, n);
  if (mask == 7) return slideNetwork<7>(window, dst, n);
  return slideNetwork<9>(window, dst, n);
}
constexpr int kRegisterMask = 9;

// A piece of the window's elements in a buffer, which is changed.
template <class T>
VEK_INLINE void slidePiece(T* window, T* dst, int64_t n, int mask) {
  if (mask <= kRegisterMask) return slideRegisters(window, dst, n, mask);
  using K = Ordered<T>;
  const int half = mask / 2;
  const K* const w = reinterpret_cast<const K*>(window);
  if (half <= 8) {
    slideLists<8>(w, reinterpret_cast<K*>(dst), n, half);
  } else {
    slideLists<16>(w, reinterpret_cast<K*>(dst), n, half);
  }
  mapOrder(dst, n);
}

// Outputs from .. to - 1, piece by piece through a buffer: it repeats the edge elements, and keeps the elements that an
// output in place has overwritten.
template <class T>
VEK_NOINLINE void filterPieces(const T* src, T* dst, int64_t len, int64_t from, int64_t to, int mask) {
  constexpr int64_t piece = 4096 / int64_t(sizeof(T));
  const int64_t half = mask / 2;
  const bool mapped = mask > kRegisterMask;
  alignas(64) T buffer[piece + kListMask + kListSlack];
  copyRepeated(buffer, src, len, from - half, 2 * half);
  if (mapped) mapOrder(buffer, 2 * half);
  for (int64_t i = from; i < to; i += piece) {
    const int64_t count = to - i < piece ? to - i : piece;
    copyRepeated(buffer + 2 * half, src, len, i + half, count);
    if (mapped) mapOrder(buffer + 2 * half, count);
    if (mapped) __builtin_memset(buffer + 2 * half + count, 0, kListSlack * sizeof(T));
    slidePiece(buffer, dst + i, count, mask);
    if (i + count < to) __builtin_memmove(buffer, buffer + count, size_t(2 * half) * sizeof(T));
  }
}

template <class T>
VEK_INLINE void filterShort(const T* src, T* dst, int64_t len, int mask) {
  const int64_t half = mask / 2, aligned = half + toAlignment(dst + half);
  if (src == dst || mask > kRegisterMask || len <= 4 * half + 32) return filterPieces(src, dst, len, 0, len, mask);
  filterPieces(src, dst, len, 0, aligned, mask);
  slideRegisters(src + aligned - half, dst + aligned, len - half - aligned, mask);
  filterPieces(src, dst, len, len - half, len, mask);
}

// ---- long masks -----------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE VekStatus filterLong(const T* src, T* dst, int64_t len, int64_t mask) {
  using K = Ordered<T>;
  const int64_t half = mask / 2, padded = len + 2 * half;
  const int64_t piece = rankPiece(len, mask);
  if (!kSame<T, uint8_t> && piece + 2 * half > INT32_MAX) return vekStsMemAllocErr;
  const int64_t signalBytes = (padded * int64_t(sizeof(T)) + 63) & -64;
  char* const block = static_cast<char*>(allocate(signalBytes + slideBytes<K>(piece + 2 * half)));
  if (block == nullptr) return vekStsMemAllocErr;
  T* const signal = reinterpret_cast<T*>(block);
  copyRepeated(signal, src, len, -half, padded);
  mapOrder(signal, padded);
  slideLong(reinterpret_cast<const K*>(signal), reinterpret_cast<K*>(dst), len, half, piece, block + signalBytes);
  mapOrder(dst, len);
  release(block);
  return vekStsNoErr;
}

// ---- entries --------------------------------------------------------------------------------------------------------

template <class T>
VEK_INLINE VekStatus filterMedian(const T* src, T* dst, int len, int maskSize) {
  if (const VekStatus s = checkVectors(len, src, dst)) return s;
  if (maskSize < 1) return vekStsSizeErr;
  const VekStatus done = maskSize % 2 == 0 ? vekStsEvenMedianMaskSize : vekStsNoErr;
  int64_t mask = maskSize - (maskSize % 2 == 0);
  if (mask == 1 || len < 3) {
    if (src != dst) __builtin_memmove(dst, src, size_t(len) * sizeof(T));
    return done;
  }
  // From a half mask of len - 1 on every window holds the whole vector; more repetitions, as many of either edge
  // element, leave its median between the two, where it is.
  const int64_t most = 2 * int64_t(len) - 1;
  if (mask > most) mask = most;
  if (mask > kListMask) {
    const VekStatus s = filterLong(src, dst, len, mask);
    return s == vekStsNoErr ? done : s;
  }
  filterShort(src, dst, len, int(mask));
  return done;
}

}  // namespace

VekStatus veksFilterMedian_8u(const Vek8u* pSrc, Vek8u* pDst, int len, int maskSize) {
  return filterMedian(pSrc, pDst, len, maskSize);
}
VekStatus veksFilterMedian_16s(const Vek16s* pSrc, Vek16s* pDst, int len, int maskSize) {
  return filterMedian(pSrc, pDst, len, maskSize);
}
VekStatus veksFilterMedian_32s(const Vek32s* pSrc, Vek32s* pDst, int len, int maskSize) {
  return filterMedian(pSrc, pDst, len, maskSize);
}
VekStatus veksFilterMedian_32f(const Vek32f* pSrc, Vek32f* pDst, int len, int maskSize) {
  return filterMedian(pSrc, pDst, len, maskSize);
}

}  // namespace vek::VEK_SLOT
