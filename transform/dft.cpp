// SPDX-License-Identifier: Apache-2.0
// Specs and calls of the Fourier engine of every length.
#include "transform/dft.h"

#include "transform/dft_direct.h"
#include "transform/dft_plan.h"
#include "transform/dft_real.h"
#include "transform/fft.h"

namespace vek::VEK_SLOT {

// How a length is transformed.
enum DftMethod : int32_t {
  kBySums,       // as sums
  kByPow2,       // by the engine of powers of two
  kByPasses,     // by passes of mixed radix
  kByChirp,      // as a convolution with a chirp
  kRealByPow2,   // real data: by the engine of powers of two
  kRealByPairs,  // by the transform of pairs
  kRealByParts   // by the transform of complex numbers without imaginary parts
};

struct DftSpec {
  int32_t kind;
  int32_t method;
  int64_t length;
  DftSizes sizes;
  int64_t points;        // of the transform inside
  int64_t inner, table;  // offsets of the spec inside and of tables from this one
  int64_t plane;         // elements of one
  int64_t narrow;
  PassPlan plan;
  PassPlan columns;  // for many transforms side by side; empty if there is none
  int64_t columnTable;
};

namespace {

constexpr int64_t kLine = 64;
int64_t inLines(int64_t bytes) { return (bytes + kLine - 1) & -kLine; }
uint8_t* alignedLine(uint8_t* p) { return p + (-reinterpret_cast<uintptr_t>(p) & (kLine - 1)); }

bool isReal(DftKind kind) { return kind == kDftReal32 || kind == kDftReal64; }
bool isDouble(DftKind kind) { return kind == kDftReal64 || kind == kDftComplex64; }
DftKind complexKind(DftKind kind) { return isDouble(kind) ? kDftComplex64 : kDftComplex32; }
bool isPow2(int64_t n) { return (n & (n - 1)) == 0; }
int orderOf(int64_t n) { return __builtin_ctzll(uint64_t(n)); }
FftKind fftKind(DftKind kind) {
  return isReal(kind) ? isDouble(kind) ? kFftReal64 : kFftReal32 : isDouble(kind) ? kFftComplex64 : kFftComplex32;
}

// ---- sizes and specs -----------------------------------------------------------------------------------------------

// Up to here sums are faster than a convolution.
template <class T>
constexpr int64_t kLongestSum = sizeof(T) == 4 ? 160 : 112;

// And up to here faster than passes whose rows are shorter than a vector.
template <class T>
constexpr int64_t kLongestNarrowSum = kFma && sizeof(T) == 4 ? 31 : 0;

// Whether sums are the way.
template <class T>
bool isSummed(int64_t n) {
  if (n <= kMaxRadix) return true;
  if (!isSmooth(n)) return n <= kLongestSum<T>;
  return n <= kLongestNarrowSum<T> && isNarrow<T>(planPasses<T>(n));
}

// The powers of two for which passes are faster than the engine of powers of two.
template <class T>
constexpr int64_t kLeastPassed = sizeof(T) == 4 ? 64 : 32;
constexpr int64_t kMostPassed = 2048;

// The longest transform that many of go side by side.
constexpr int64_t kLongestColumn = 2048;

// A length of at least n that transforms fast. Long powers of two take about two thirds of the time of others a point.
int64_t convolutionPoints(int64_t n) {
  constexpr int eighths[] = {9, 10, 12, 14, 15};
  int64_t best = 1;
  while (best < n) best *= 2;
  for (const int e : eighths) {
    const int64_t m = best / 16 * e;
    if (m >= n && (best <= 2 * kMostPassed || e <= 10)) return m;
  }
  return best;
}

// Everything but the tables, with the sizes of aligned buffers.
template <class T>
void layOut(DftSpec& spec, DftKind kind, int64_t n);

template <class T>
int64_t layOutInner(DftSpec& spec, DftKind kind, int64_t n) {
  DftSpec inner;
  layOut<T>(inner, kind, n);
  spec.points = n;
  spec.inner = inLines(sizeof(DftSpec));
  spec.sizes.work = inner.sizes.work;
  return spec.inner + inner.sizes.spec;
}

template <class T>
void layOut(DftSpec& spec, DftKind kind, int64_t n) {
  constexpr int64_t size = sizeof(T);
  spec = DftSpec{};
  spec.kind = kind;
  spec.length = n;
  spec.points = n;
  int64_t end = inLines(sizeof(DftSpec));
  spec.inner = spec.table = end;
  if (isReal(kind)) {
    if (isPow2(n) && n > 1) {
      spec.method = kRealByPow2;
      end += inLines(fftTableSize(fftKind(kind), orderOf(n)));
    } else if (n % 2 == 0) {
      spec.method = kRealByPairs;
      end = spec.table = layOutInner<T>(spec, complexKind(kind), n / 2);
      end += inLines((n / 4 + 1) * 2 * size);
    } else {
      spec.method = kRealByParts;
      end = layOutInner<T>(spec, complexKind(kind), n);
      spec.sizes.work += inLines(2 * n * size);
    }
  } else if (isPow2(n) && (n < kLeastPassed<T> || n > kMostPassed)) {
    spec.method = kByPow2;
    end += inLines(fftTableSize(fftKind(kind), orderOf(n)));
  } else if (isSummed<T>(n)) {
    spec.method = kBySums;
    end += inLines(sumTableSize<T>(n) * size);
  } else if (isSmooth(n)) {
    spec.method = kByPasses;
    spec.plan = planPasses<T>(n);
    // An odd number of lines keeps the two parts off the same lines of a cache.
    spec.plane = (inLines(planeSize<T>(spec.plan, n) * size) | kLine) / size;
    spec.narrow = isNarrow<T>(spec.plan);
    spec.sizes.work = (spec.plan.count > 2 ? 4 : 2) * spec.plane * size;
    end += inLines(tableSize<T>(spec.plan) * size);
  } else {
    spec.method = kByChirp;
    const int64_t m = convolutionPoints(2 * n - 1);
    end = spec.table = layOutInner<T>(spec, kind, m);
    // the tables are made in place, with room for the transform behind them
    end += inLines((m + n) * 2 * size) + spec.sizes.work;
    spec.sizes.work += inLines(2 * m * size);
  }
  if (!isReal(kind) && n > 1 && n <= kLongestColumn && isSmooth(n)) {
    spec.columns = planColumns(n);
    spec.columnTable = end;
    end += inLines(placeColumnRoots(spec.columns, 0) * size);
  }
  spec.sizes.spec = end;
}

constexpr int64_t kGatherBytes = 65536;
constexpr int64_t kMostGathered = 16;

// Elements (of T) of one transform that is gathered from a stride, and how many there are at a time.
template <class T>
int64_t gatheredSize(const DftSpec& spec) {
  return 2 * (isReal(DftKind(spec.kind)) ? spec.length / 2 + 1 : spec.length) + 2 * kLine / int64_t(sizeof(T));
}
template <class T>
int64_t gatheredCount(const DftSpec& spec) {
  const int64_t count = kGatherBytes / (gatheredSize<T>(spec) * int64_t(sizeof(T)));
  return count < 1 ? 1 : count > kMostGathered ? kMostGathered : count;
}

// Elements of a plane of transforms side by side; an odd number of lines.
template <class T>
int64_t columnPlane(const DftSpec& spec) {
  return (inLines(spec.length * kLanes<T> * int64_t(sizeof(T))) | kLine) / int64_t(sizeof(T));
}

template <class T>
DftSizes outerSizes(const DftSpec& spec) {
  DftSizes s = spec.sizes;
  s.workMany = s.work + gatheredCount<T>(spec) * gatheredSize<T>(spec) * int64_t(sizeof(T)) + kLine;
  const int64_t columns = spec.columns.count > 0 ? 4 * columnPlane<T>(spec) * int64_t(sizeof(T)) + kLine : 0;
  if (s.workMany < columns) s.workMany = columns;
  s.spec += kLine;
  if (s.work > 0) s.work += kLine;
  return s;
}

template <class T>
T* tableOf(const DftSpec* spec) {
  return reinterpret_cast<T*>(reinterpret_cast<uintptr_t>(spec) + uintptr_t(spec->table));
}
template <class T>
T* columnTableOf(const DftSpec* spec) {
  return reinterpret_cast<T*>(reinterpret_cast<uintptr_t>(spec) + uintptr_t(spec->columnTable));
}
const DftSpec* innerOf(const DftSpec* spec) {
  return reinterpret_cast<const DftSpec*>(reinterpret_cast<const uint8_t*>(spec) + spec->inner);
}

enum Part { kRe, kIm };
template <Direction D, class T>
void transformComplex(const T* src, T* dst, const DftSpec* spec, T scale, uint8_t* work);

// The spectrum of the conjugate chirp over m points, and the chirp: exp(-pi i j^2 / n).
template <class T>
VEK_NOINLINE void fillChirp(T* table, int64_t n, int64_t m) {
  const UnitRoots<T> roots(2 * n);
  T* const chirp = table + 2 * m;
  for (int64_t j = 0; j < 2 * m; ++j) table[j] = 0;
  int64_t square = 0;
  for (int64_t j = 0; j < n; ++j) {
    const Root w = roots(square);
    chirp[2 * j] = T(w.re), chirp[2 * j + 1] = T(w.im);
    table[2 * j] = T(w.re / double(m)), table[2 * j + 1] = T(-w.im / double(m));
    if (j > 0) table[2 * (m - j)] = table[2 * j], table[2 * (m - j) + 1] = table[2 * j + 1];
    square = (square + 2 * j + 1) % (2 * n);
  }
}

// The tables of roots of the length itself. Apart, because their making takes room on the stack.
template <class T>
VEK_NOINLINE void fillTables(DftSpec* spec) {
  const int64_t n = spec->length;
  const UnitRoots<T> roots(n);
  T* const table = tableOf<T>(spec);
  if (spec->method == kBySums) fillSums(table, n, roots);
  if (spec->method == kByPasses) fillRoots<kForRows>(table, spec->plan, n, roots);
  if (spec->method == kRealByPairs) fillPairRoots(table, n / 2, roots);
  if (spec->columns.count > 0) fillRoots<kForColumns>(columnTableOf<T>(spec), spec->columns, n, roots);
}

template <class T>
void place(DftSpec* spec, DftKind kind, int64_t n) {
  layOut<T>(*spec, kind, n);
  T* const table = tableOf<T>(spec);
  if (spec->method == kByPow2 || spec->method == kRealByPow2) fftFillTable(fftKind(kind), orderOf(n), table);
  if (spec->method == kBySums || spec->method == kByPasses || spec->method == kRealByPairs || spec->columns.count > 0) {
    fillTables<T>(spec);
  }
  if (spec->method != kByChirp && spec->method != kRealByPairs && spec->method != kRealByParts) return;
  DftSpec* const inner = const_cast<DftSpec*>(innerOf(spec));
  place<T>(inner, complexKind(kind), spec->points);
  if (spec->method == kByChirp) {
    const int64_t m = spec->points;
    fillChirp(table, n, m);
    transformComplex<kForward>(table, table, inner, T(1),
                               reinterpret_cast<uint8_t*>(table) + inLines((m + n) * 2 * int64_t(sizeof(T))));
  }
}

// ---- complex data --------------------------------------------------------------------------------------------------

template <class T>
struct PointsOf;
template <>
struct PointsOf<float> {
  using Type = Vek32fc;
};
template <>
struct PointsOf<double> {
  using Type = Vek64fc;
};

template <Direction D, class T>
VEK_INLINE void byPow2(const T* src, T* dst, const DftSpec* spec, T scale) {
  const auto* from = reinterpret_cast<const typename PointsOf<T>::Type*>(src);
  auto* to = reinterpret_cast<typename PointsOf<T>::Type*>(dst);
  const int order = orderOf(spec->length);
  const T* const table = tableOf<T>(spec);
  D == kForward ? fftForwardBy(from, to, order, table, scale) : fftInverseBy(from, to, order, table, scale);
}

// Calls f with the radix as a constant, for the last pass or another.
template <bool Last, class F>
VEK_INLINE void withRadix(int radix, F f) {
  forEach<kMaxRadix + 1>([&]<int R>() VEK_LAMBDA {
    if constexpr (Last ? isLastRadix(R) : isOtherRadix(R)) {
      if (R == radix) f.template operator()<R>();
    }
  });
}

// Two planes.
template <class T>
struct Planes {
  T* at;
  int64_t im;
};

// Lanes that belong to no element compute as well: with leftovers of the heap they might compute with subnormal
// numbers, at a snail's pace.
template <class T>
VEK_INLINE void clearBehind(Planes<T> planes, int64_t end, int64_t count) {
  for (int64_t i = end; i < end + count; i += kLanes<T>) {
    storeV(planes.at + i, Reg<T>{}), storeV(planes.at + planes.im + i, Reg<T>{});
  }
}

template <Direction D, class T>
void byPasses(const T* src, T* dst, const DftSpec* spec, T scale, T* work) {
  constexpr int L = kLanes<T>;
  const PassPlan& plan = spec->plan;
  const int64_t n = spec->length;
  const T* const table = tableOf<T>(spec);
  const Pass &first = plan.at[0], &last = plan.at[plan.count - 1];
  // The last pass but one ends in the work buffer. Where nothing reaches behind the data, and no power of two puts
  // everything on the same lines of a cache, the destination is the other place between passes.
  Planes<T> from = {work, spec->plane}, to = {work + 2 * spec->plane, spec->plane};
  const bool odd = plan.count % 2 != 0;
  if (!spec->narrow && n % 512 != 0 && !(odd && src == dst)) to = {dst, n};
  if (odd) {
    const Planes<T> t = from;
    from = to, to = t;
  }
  // What lies within a vector of the end of the caller's arrays is reached through a copy.
  T room[(kMaxRadix + 1) * 2 * L];
  if (spec->narrow) {
    if (first.left < L) {
      __builtin_memcpy(room, src, size_t(2 * n) * sizeof(T));
      __builtin_memset(room + 2 * n, 0, 2 * L * sizeof(T));
      src = room;
    }
    clearBehind(odd ? to : from, n, L);
    if (plan.count > 2) clearBehind(odd ? from : to, n, L);
    if (last.done < L)
      clearBehind(odd ? to : from, last.done * pitchOf<T>(last.radix), (L - last.done) * pitchOf<T>(last.radix));
  }
  withRadix<false>(first.radix, [&]<int R>() VEK_LAMBDA { firstPass<D, R>(src, from.at, from.im, first.left); });
  for (int i = 1; i + 1 < plan.count; ++i) {
    const Pass& p = plan.at[i];
    withRadix<false>(p.radix, [&]<int R>() VEK_LAMBDA {
      middlePass<R>(from.at, from.im, to.at, to.im, p.left, p.done, table + p.roots);
    });
    const Planes<T> t = from;
    from = to, to = t;
  }
  T* const out = last.done < L ? room : dst;
  withRadix<true>(last.radix, [&]<int R>() VEK_LAMBDA {
    lastPass<D, R>(from.at, out, from.im, last.done, table + last.roots, scale);
  });
  if (out == dst) return;
  const T* row = room;
  for (T *at = dst, *end = dst + 2 * n; at < end; at += 2 * last.done, row += 2 * L) {
    if (at + 2 * L <= end) {  // runs over into the next row
      storeV(at, loadV(row)), storeV(at + L, loadV(row + L));
    } else {
      for (int64_t i = 0; i < 2 * last.done; ++i) at[i] = row[i];
    }
  }
}

// L transforms side by side, one in each lane.
template <Direction D, class T>
void byColumns(const T* src, T* dst, const DftSpec* spec, const DftBatch& b, T scale, T* work) {
  constexpr int L = kLanes<T>;
  const int64_t n = spec->length, im = columnPlane<T>(*spec);
  const T* const table = columnTableOf<T>(spec);
  T *from = work, *to = work + 2 * im;
  const auto planes = [im](T* at) { return D == kForward ? Planes<T>{at, im} : Planes<T>{at + im, -im}; };
  const Planes<T> x = planes(from);
  if (b.srcDistance == 1) {
    const T* row = src;
    for (int64_t e = 0; e < n; ++e, row += 2 * b.srcStride) {
      const Complex<T> z = loadNatural(row);
      storeV(x.at + e * L, z.re), storeV(x.at + x.im + e * L, z.im);
    }
  } else {
    for (int64_t e = 0; e < n; ++e) {
      const T* const row = src + 2 * e * b.srcStride;
      for (int t = 0; t < L; ++t) {
        x.at[e * L + t] = row[2 * t * b.srcDistance], x.at[x.im + e * L + t] = row[2 * t * b.srcDistance + 1];
      }
    }
  }
  for (int i = 0; i < spec->columns.count; ++i) {
    const Pass& p = spec->columns.at[i];
    withRadix<false>(p.radix,
                     [&]<int R>() VEK_LAMBDA { middlePass<R>(from, im, to, im, p.left * L, p.done, table + p.roots); });
    T* const t = from;
    from = to, to = t;
  }
  const Planes<T> y = planes(from);
  const Reg<T> factor = broadcastReg(scale);
  if (b.dstDistance == 1) {
    T* row = dst;
    for (int64_t e = 0; e < n; ++e, row += 2 * b.dstStride) {
      storeNatural<T>(row, {loadV(y.at + e * L) * factor, loadV(y.at + y.im + e * L) * factor});
    }
  } else {
    for (int64_t e = 0; e < n; ++e) {
      T* const row = dst + 2 * e * b.dstStride;
      for (int t = 0; t < L; ++t) {
        row[2 * t * b.dstDistance] = y.at[e * L + t] * scale;
        row[2 * t * b.dstDistance + 1] = y.at[y.im + e * L + t] * scale;
      }
    }
  }
}

// dst = src * w, numbers exchanged on either side.
template <bool Before, bool After, class T>
VEK_NOINLINE void multiply(const T* src, const T* w, T* dst, int64_t n, T scale) {
  constexpr int L = kLanes<T>;
  const Reg<T> factor = broadcastReg(scale);
  int64_t j = 0;
  for (; j + L <= n; j += L) {
    const Complex<T> x = loadInterleaved(src + 2 * j);
    const Complex<T> y = times(Before ? exchanged(x) : x, loadInterleaved(w + 2 * j));
    const Complex<T> z = {y.re * factor, y.im * factor};
    storeInterleaved<T>(dst + 2 * j, After ? exchanged(z) : z);
  }
  for (; j < n; ++j) {
    const T re = src[2 * j + Before], im = src[2 * j + !Before], c = w[2 * j], s = w[2 * j + 1];
    dst[2 * j + After] = (re * c - im * s) * scale;
    dst[2 * j + !After] = (re * s + im * c) * scale;
  }
}

template <Direction D, class T>
void byChirp(const T* src, T* dst, const DftSpec* spec, T scale, uint8_t* work) {
  const int64_t n = spec->length, m = spec->points;
  T* const data = reinterpret_cast<T*>(work);
  uint8_t* const rest = work + inLines(2 * m * int64_t(sizeof(T)));
  const T *const response = tableOf<T>(spec), *const chirp = response + 2 * m;
  const DftSpec* const inner = innerOf(spec);
  multiply<D == kInverse, false>(src, chirp, data, n, T(1));
  __builtin_memset(data + 2 * n, 0, size_t(2 * (m - n)) * sizeof(T));
  transformComplex<kForward>(data, data, inner, T(1), rest);
  multiply<false, false>(data, response, data, m, T(1));
  transformComplex<kInverse>(data, data, inner, T(1), rest);
  multiply<false, D == kInverse>(data, chirp, dst, n, scale);
}

template <Direction D, class T>
void transformComplex(const T* src, T* dst, const DftSpec* spec, T scale, uint8_t* work) {
  switch (spec->method) {
    case kBySums:
      return sumTransform<D>(src, dst, spec->length, tableOf<T>(spec), scale);
    case kByPow2:
      return byPow2<D>(src, dst, spec, scale);
    case kByPasses:
      return byPasses<D>(src, dst, spec, scale, reinterpret_cast<T*>(work));
    default:
      return byChirp<D>(src, dst, spec, scale, work);
  }
}

// ---- real data: a spectrum is dst or src of complex numbers --------------------------------------------------------

template <class T>
void forwardReal(const T* src, T* dst, const DftSpec* spec, T scale, uint8_t* work) {
  const int64_t n = spec->length;
  if (spec->method == kRealByPow2) {
    fftForwardBy(src, dst, orderOf(n), tableOf<T>(spec), scale);
    dst[n] = dst[1];
    dst[1] = dst[n + 1] = 0;
  } else if (spec->method == kRealByPairs) {
    transformComplex<kForward>(src, dst, innerOf(spec), scale / 2, work);
    spectrumFromPairs(dst, n / 2, tableOf<T>(spec));
  } else {
    T* const whole = reinterpret_cast<T*>(work);
    for (int64_t j = 0; j < n; ++j) whole[2 * j] = src[j], whole[2 * j + 1] = 0;
    transformComplex<kForward>(whole, whole, innerOf(spec), scale, work + inLines(2 * n * int64_t(sizeof(T))));
    __builtin_memcpy(dst, whole, size_t(n + 1) * sizeof(T));
    dst[1] = 0;
  }
}

template <class T>
void inverseReal(const T* src, T* dst, const DftSpec* spec, T scale, uint8_t* work) {
  const int64_t n = spec->length;
  if (spec->method == kRealByPow2) {
    const T last = src[n];
    if (src != dst) __builtin_memcpy(dst, src, size_t(n) * sizeof(T));
    dst[1] = last;
    fftInverseBy(dst, dst, orderOf(n), tableOf<T>(spec), scale);
  } else if (spec->method == kRealByPairs) {
    pairsFromSpectrum(src, dst, n / 2, tableOf<T>(spec));
    transformComplex<kInverse>(dst, dst, innerOf(spec), scale, work);
  } else {
    T* const whole = reinterpret_cast<T*>(work);
    whole[0] = src[0], whole[1] = 0;
    for (int64_t k = 1; 2 * k < n; ++k) {
      const T re = src[2 * k], im = src[2 * k + 1];
      whole[2 * k] = re, whole[2 * k + 1] = im;
      whole[2 * (n - k)] = re, whole[2 * (n - k) + 1] = -im;
    }
    transformComplex<kInverse>(whole, whole, innerOf(spec), scale, work + inLines(2 * n * int64_t(sizeof(T))));
    for (int64_t j = 0; j < n; ++j) dst[j] = whole[2 * j];
  }
}

// ---- one transform or many -----------------------------------------------------------------------------------------

enum Data { kComplexData, kRealData };

template <Direction D, Data W, class T>
VEK_INLINE void one(const T* src, T* dst, const DftSpec* spec, T scale, uint8_t* aligned) {
  if constexpr (W == kComplexData) {
    transformComplex<D>(src, dst, spec, scale, aligned);
  } else if constexpr (D == kForward) {
    forwardReal(src, dst, spec, scale, aligned);
  } else {
    inverseReal(src, dst, spec, scale, aligned);
  }
}

// Elements of E parts between strided places and neighbours.
template <int E, class T>
void gather(const T* from, int64_t stride, int64_t distance, T* to, int64_t toDistance, int64_t length, int64_t count) {
  for (int64_t e = 0; e < length; ++e) {
    for (int64_t t = 0; t < count; ++t) {
      for (int i = 0; i < E; ++i) to[t * toDistance + e * E + i] = from[(t * distance + e * stride) * E + i];
    }
  }
}
template <int E, class T>
void scatter(const T* from, int64_t fromDistance, T* to, int64_t stride, int64_t distance, int64_t length,
             int64_t count) {
  for (int64_t e = 0; e < length; ++e) {
    for (int64_t t = 0; t < count; ++t) {
      for (int i = 0; i < E; ++i) to[(t * distance + e * stride) * E + i] = from[t * fromDistance + e * E + i];
    }
  }
}

template <Direction D, Data W, class T>
VEK_NOINLINE void many(const T* src, T* dst, const DftSpec* spec, const DftBatch& b, T scale, uint8_t* work) {
  constexpr int in = W == kRealData && D == kForward ? 1 : 2, out = W == kRealData && D == kInverse ? 1 : 2;
  const int64_t n = spec->length, half = n / 2 + 1;
  uint8_t* const aligned = alignedLine(work);
  if (b.srcStride == 1 && b.dstStride == 1) {
    for (int64_t t = 0; t < b.count; ++t) {
      one<D, W>(src + t * b.srcDistance * in, dst + t * b.dstDistance * out, spec, scale, aligned);
    }
    return;
  }
  int64_t done = 0;
  if constexpr (W == kComplexData) {
    for (; spec->columns.count > 0 && done + kLanes<T> <= b.count; done += kLanes<T>) {
      byColumns<D>(src + 2 * done * b.srcDistance, dst + 2 * done * b.dstDistance, spec, b, scale,
                   reinterpret_cast<T*>(aligned));
    }
  }
  T* const block = reinterpret_cast<T*>(aligned + spec->sizes.work);
  const int64_t each = gatheredSize<T>(*spec), most = gatheredCount<T>(*spec);
  for (int64_t t = done; t < b.count; t += most) {
    const int64_t count = b.count - t < most ? b.count - t : most;
    gather<in>(src + t * b.srcDistance * in, b.srcStride, b.srcDistance, block, each,
               W == kRealData && D == kInverse ? half : n, count);
    for (int64_t i = 0; i < count; ++i) one<D, W>(block + i * each, block + i * each, spec, scale, aligned);
    scatter<out>(block, each, dst + t * b.dstDistance * out, b.dstStride, b.dstDistance,
                 W == kRealData && D == kForward ? half : n, count);
  }
}

}  // namespace

DftSizes dftSizes(DftKind kind, int64_t n) {
  DftSpec spec;
  if (isDouble(kind)) {
    layOut<double>(spec, kind, n);
    return outerSizes<double>(spec);
  }
  layOut<float>(spec, kind, n);
  return outerSizes<float>(spec);
}

DftSpec* dftPlace(DftKind kind, int64_t n, uint8_t* specBuffer) {
  DftSpec* const spec = reinterpret_cast<DftSpec*>(alignedLine(specBuffer));
  if (isDouble(kind)) {
    place<double>(spec, kind, n);
  } else {
    place<float>(spec, kind, n);
  }
  return spec;
}

DftKind dftKind(const DftSpec* spec) { return DftKind(spec->kind); }
int64_t dftLength(const DftSpec* spec) { return spec->length; }
DftSizes dftSizes(const DftSpec* spec) {
  return isDouble(DftKind(spec->kind)) ? outerSizes<double>(*spec) : outerSizes<float>(*spec);
}

void dftForward(const Vek32fc* src, Vek32fc* dst, const DftSpec* spec, float scale, uint8_t* work) {
  one<kForward, kComplexData>(&src->re, &dst->re, spec, scale, alignedLine(work));
}
void dftForward(const Vek64fc* src, Vek64fc* dst, const DftSpec* spec, double scale, uint8_t* work) {
  one<kForward, kComplexData>(&src->re, &dst->re, spec, scale, alignedLine(work));
}
void dftForward(const Vek32f* src, Vek32fc* dst, const DftSpec* spec, float scale, uint8_t* work) {
  one<kForward, kRealData>(src, &dst->re, spec, scale, alignedLine(work));
}
void dftForward(const Vek64f* src, Vek64fc* dst, const DftSpec* spec, double scale, uint8_t* work) {
  one<kForward, kRealData>(src, &dst->re, spec, scale, alignedLine(work));
}
void dftInverse(const Vek32fc* src, Vek32fc* dst, const DftSpec* spec, float scale, uint8_t* work) {
  one<kInverse, kComplexData>(&src->re, &dst->re, spec, scale, alignedLine(work));
}
void dftInverse(const Vek64fc* src, Vek64fc* dst, const DftSpec* spec, double scale, uint8_t* work) {
  one<kInverse, kComplexData>(&src->re, &dst->re, spec, scale, alignedLine(work));
}
void dftInverse(const Vek32fc* src, Vek32f* dst, const DftSpec* spec, float scale, uint8_t* work) {
  one<kInverse, kRealData>(&src->re, dst, spec, scale, alignedLine(work));
}
void dftInverse(const Vek64fc* src, Vek64f* dst, const DftSpec* spec, double scale, uint8_t* work) {
  one<kInverse, kRealData>(&src->re, dst, spec, scale, alignedLine(work));
}

void dftForward(const Vek32fc* src, Vek32fc* dst, const DftSpec* spec, DftBatch batch, float scale, uint8_t* work) {
  many<kForward, kComplexData>(&src->re, &dst->re, spec, batch, scale, work);
}
void dftForward(const Vek64fc* src, Vek64fc* dst, const DftSpec* spec, DftBatch batch, double scale, uint8_t* work) {
  many<kForward, kComplexData>(&src->re, &dst->re, spec, batch, scale, work);
}
void dftForward(const Vek32f* src, Vek32fc* dst, const DftSpec* spec, DftBatch batch, float scale, uint8_t* work) {
  many<kForward, kRealData>(src, &dst->re, spec, batch, scale, work);
}
void dftForward(const Vek64f* src, Vek64fc* dst, const DftSpec* spec, DftBatch batch, double scale, uint8_t* work) {
  many<kForward, kRealData>(src, &dst->re, spec, batch, scale, work);
}
void dftInverse(const Vek32fc* src, Vek32fc* dst, const DftSpec* spec, DftBatch batch, float scale, uint8_t* work) {
  many<kInverse, kComplexData>(&src->re, &dst->re, spec, batch, scale, work);
}
void dftInverse(const Vek64fc* src, Vek64fc* dst, const DftSpec* spec, DftBatch batch, double scale, uint8_t* work) {
  many<kInverse, kComplexData>(&src->re, &dst->re, spec, batch, scale, work);
}
void dftInverse(const Vek32fc* src, Vek32f* dst, const DftSpec* spec, DftBatch batch, float scale, uint8_t* work) {
  many<kInverse, kRealData>(&src->re, dst, spec, batch, scale, work);
}
void dftInverse(const Vek64fc* src, Vek64f* dst, const DftSpec* spec, DftBatch batch, double scale, uint8_t* work) {
  many<kInverse, kRealData>(&src->re, dst, spec, batch, scale, work);
}

}  // namespace vek::VEK_SLOT
