// SPDX-License-Identifier: Apache-2.0
// Cosine and sine transforms of types I to IV and every length through the Fourier engine of dft.h. Each is a pass that
// arranges the points, a Fourier transform in place in the work buffer, and a pass that arranges its result.
#include <math.h>

#include "core/simd/double_double.h"
#include "transform/dct_order.h"
#include "transform/spectral_spec.h"
#include "vekx/fft.h"

namespace vek::VEK_SLOT {
namespace {

// The engine's spec lies behind, and behind that the real and the imaginary parts of the roots.
struct TrigSpec {
  SpecHead head;
  int32_t type, norm;
  double forwardScale, inverseScale;
  int64_t roots;  // bytes from here to the roots
  uint8_t reserved[8];
};
static_assert(sizeof(TrigSpec) == 64);

template <class R, DftKind RealKind, DftKind ComplexKind, class C, int32_t Id>
struct TrigOf {
  using Body = TrigSpec;
  using Real = R;
  using Complex = C;
  static constexpr DftKind realKind = RealKind, complexKind = ComplexKind;
  static constexpr int32_t id = Id;
};
template <>
struct SpecOf<VekxTrigSpec_32f> : TrigOf<float, kDftReal32, kDftComplex32, Vek32fc, 38> {};
template <>
struct SpecOf<VekxTrigSpec_64f> : TrigOf<double, kDftReal64, kDftComplex64, Vek64fc, 39> {};

// The four types, each with its sine form; the inverse of each.
VEK_INLINE int typeNumber(VekxTrigType type) { return (type - 1) % 4 + 1; }
VEK_INLINE bool isSine(VekxTrigType type) { return type >= vekxDST1; }
VEK_INLINE int inverseNumber(int number) { return number == 2 ? 3 : number == 3 ? 2 : number; }

// The Fourier transform behind a type, and how many roots its passes read.
struct Shape {
  bool complex;
  int64_t points, roots;
};
VEK_INLINE Shape shapeOf(VekxTrigType type, int64_t n) {
  switch (typeNumber(type)) {
    case 1:
      return {false, isSine(type) ? 2 * (n + 1) : 2 * (n - 1), 0};
    case 4:
      return n % 2 == 0 ? Shape{true, n / 2, n / 2} : Shape{false, n, 0};
    default:
      return {false, n, n / 2 + 1};
  }
}
template <class P>
VEK_INLINE DftKind kindOf(Shape s) {
  return s.complex ? SpecOf<P>::complexKind : SpecOf<P>::realKind;
}
// Real numbers that the transform in place takes.
VEK_INLINE int64_t rowOf(Shape s) { return s.complex ? 2 * s.points : 2 * (s.points / 2 + 1); }

// How many of `many` go through the engine at once.
VEK_INLINE int64_t sideBySide(int64_t n) { return n <= 16384 ? 16 : 1; }

// ---- roots
// -----------------------------------------------------------------------------------------------------------

template <class T>
struct Roots {
  const T *re, *im;
};
template <class T>
VEK_INLINE int64_t rootBytes(int64_t count) {
  return roundUp64(count * int64_t(sizeof(T)));
}

// Types II and III: exp(-i pi k / 2n); type IV: exp(-i pi (k + 1/8) / n).
template <class T>
VEK_NOINLINE void makeRoots(T* re, T* im, int64_t count, double unit, double first) {
  constexpr int L = Pack<double>::lanes;
  for (int64_t k = 0; k < count; k += L) {
    const Pack<double> angle = (iota<double>() + broadcast(double(k) + first)) * broadcast(unit);
    const SineCosine w = sineCosine(DoubleDouble<Pack<double>>{angle, zeros<double>()});
    const Lanes<double> sine = lanesOf(w.sine.hi), cosine = lanesOf(w.cosine.hi);
    for (int i = 0; i < L && k + i < count; ++i) re[k + i] = T(cosine[i]), im[k + i] = T(-sine[i]);
  }
}

// ---- passes
// ----------------------------------------------------------------------------------------------------------

enum Wave { kCosine, kSine };

template <class T>
constexpr T kRootHalf = T(0.70710678118654752440);
template <class T>
constexpr T kRootTwo = T(1.41421356237309504880);

template <class T>
VEK_INLINE Pack<T> negated(Pack<T> x) {
  return x ^ broadcast(T(-0.0));
}
template <class T>
struct Product {
  T re, im;
};
// w * (re + i im).
template <class T>
VEK_INLINE Product<T> turned(const Roots<T>& w, int64_t k, T re, T im) {
  return {re * w.re[k] - im * w.im[k], re * w.im[k] + im * w.re[k]};
}
template <class T>
VEK_INLINE Product<Pack<T>> turned(const Roots<T>& w, int64_t k, Pack<T> re, Pack<T> im) {
  const Pack<T> c = load(w.re + k), s = load(w.im + k);
  return {fusedNegMulAdd(im, s, re * c), fusedMulAdd(im, c, re * s)};
}

// Type II from the spectrum V of the samples in the order of splitParity: with p = w[k] V[k] the result is Re p at k
// and -Im p at n-k. For sines k counts from the end.
template <Wave W, class T>
VEK_NOINLINE void fromSpectrum(const T* v, const Roots<T>& w, T* y, int64_t n, bool ortho) {
  constexpr int L = Pack<T>::lanes;
  const auto place = [=](int64_t k) VEK_LAMBDA { return W == kSine ? n - 1 - k : k; };
  y[place(0)] = ortho ? v[0] * kRootHalf<T> : v[0];
  int64_t k = 1;
  for (; k + L <= (n + 1) / 2; k += L) {
    const Two<T> z = deinterleave(load(v + 2 * k), load(v + 2 * k + L));
    const Product<Pack<T>> p = turned(w, k, z.a, z.b);
    if constexpr (W == kSine) {
      store(y + n - k - L, reverse(p.re));
      store(y + k - 1, negated(p.im));
    } else {
      store(y + k, p.re);
      store(y + n - k - L + 1, reverse(negated(p.im)));
    }
  }
  for (; k < (n + 1) / 2; ++k) {
    const Product<T> p = turned(w, k, v[2 * k], v[2 * k + 1]);
    y[place(k)] = p.re;
    y[place(n - k)] = -p.im;
  }
  if (n > 1 && n % 2 == 0) y[place(n / 2)] = turned(w, n / 2, v[n], T(0)).re;
}

// Type III back to that spectrum: V[k] = conj(w[k] (x[k] + i x[n-k])).
template <Wave W, class T>
VEK_NOINLINE void toSpectrum(const T* x, const Roots<T>& w, T* v, int64_t n, bool ortho) {
  constexpr int L = Pack<T>::lanes;
  const auto place = [=](int64_t k) VEK_LAMBDA { return W == kSine ? n - 1 - k : k; };
  v[0] = ortho ? x[place(0)] * kRootTwo<T> : x[place(0)];
  v[1] = 0;
  int64_t k = 1;
  for (; k + L <= (n + 1) / 2; k += L) {
    Product<Pack<T>> p;
    if constexpr (W == kSine) {
      p = turned(w, k, reverse(load(x + n - k - L)), load(x + k - 1));
    } else {
      p = turned(w, k, load(x + k), reverse(load(x + n - k - L + 1)));
    }
    const Two<T> z = interleave(p.re, negated(p.im));
    store(v + 2 * k, z.a);
    store(v + 2 * k + L, z.b);
  }
  for (; 2 * k <= n; ++k) {
    const Product<T> p = turned(w, k, x[place(k)], x[place(n - k)]);
    v[2 * k] = p.re, v[2 * k + 1] = -p.im;
  }
}

// Type IV of even length n = 2h: pairs t[k] = w[k] (x[2k] + i x[n-1-2k]), and with p = w[k] T[k] the result is Re p at
// 2k and -Im p at n-1-2k. For sines the parts of t change places and the sign goes.
template <Wave W, class T>
VEK_NOINLINE void toPairs(const T* x, const Roots<T>& w, T* t, int64_t n) {
  constexpr int L = Pack<T>::lanes;
  const int64_t h = n / 2;
  int64_t k = 0;
  for (; k + L <= h; k += L) {
    const Pack<T> up = deinterleave(load(x + 2 * k), load(x + 2 * k + L)).a;
    const T* last = x + n - 2 * k - 2 * L;
    const Pack<T> down = reverse(deinterleave(load(last), load(last + L)).b);
    const Product<Pack<T>> p = turned(w, k, W == kSine ? down : up, W == kSine ? up : down);
    const Two<T> z = interleave(p.re, p.im);
    store(t + 2 * k, z.a);
    store(t + 2 * k + L, z.b);
  }
  for (; k < h; ++k) {
    const T up = x[2 * k], down = x[n - 1 - 2 * k];
    const Product<T> p = turned(w, k, W == kSine ? down : up, W == kSine ? up : down);
    t[2 * k] = p.re, t[2 * k + 1] = p.im;
  }
}
template <Wave W, class T>
VEK_NOINLINE void fromPairs(const T* t, const Roots<T>& w, T* y, int64_t n) {
  constexpr int L = Pack<T>::lanes;
  const int64_t h = n / 2;
  const auto block = [&](int64_t k) VEK_LAMBDA {
    const Two<T> z = deinterleave(load(t + 2 * k), load(t + 2 * k + L));
    Product<Pack<T>> p = turned(w, k, z.a, z.b);
    p.im = reverse(W == kSine ? p.im : negated(p.im));
    return p;
  };
  const auto put = [&](int64_t k, Pack<T> even, Pack<T> odd) VEK_LAMBDA {
    const Two<T> z = interleave(even, odd);
    store(y + 2 * k, z.a);
    store(y + 2 * k + L, z.b);
  };
  int64_t k = 0;
  for (; 2 * (k + L) <= h; k += L) {
    const int64_t m = h - L - k;
    const Product<Pack<T>> front = block(k), back = block(m);
    put(k, front.re, back.im);
    put(m, back.re, front.im);
  }
  for (const int64_t end = h - k; k < end; ++k) {
    const Product<T> p = turned(w, k, t[2 * k], t[2 * k + 1]);
    y[2 * k] = p.re;
    y[n - 1 - 2 * k] = W == kSine ? p.im : -p.im;
  }
}

// Type IV of odd length n: with 2m+1 = n + 4j every sample is met once, folded back at 2n and 4n where the cosine
// changes its sign; (-1)^j of it has the spectrum Z, and with l = (2k+1-n)/2 the result is a sum or difference of the
// parts of Z[l], by the quadrant of pi (2k+1) / 4. For sines the samples come from the end and every other result
// changes sign.
template <Wave W, class T>
VEK_NOINLINE void toFolded(const T* x, T* z, int64_t n) {
  for (int64_t j = 0; j < n; ++j) {
    const int64_t r = n + 4 * j;
    const int64_t m = r < 2 * n ? (r - 1) / 2 : r < 4 * n ? (4 * n - r - 1) / 2 : (r - 4 * n - 1) / 2;
    const T v = x[W == kSine ? n - 1 - m : m];
    z[j] = (r > 2 * n) != (j % 2 != 0) ? -v : v;
  }
}
template <Wave W, class T>
VEK_NOINLINE void fromFolded(const T* z, T* y, int64_t n) {
  for (int64_t k = 0; k < n; ++k) {
    const int64_t l = (2 * k + 1 - n) / 2;  // exact
    const int64_t at = l < 0 ? -l : l;
    const T re = z[2 * at], im = at == 0 ? T(0) : l < 0 ? -z[2 * at + 1] : z[2 * at + 1];
    const int quadrant = int(k & 3);
    const T v = (quadrant == 0 || quadrant == 3 ? re : -re) + (quadrant < 2 ? im : -im);
    y[k] = W == kSine && k % 2 != 0 ? -v : v;
  }
}

// Type I: the points and their mirror image are one period of an even or odd sequence.
template <class T>
VEK_INLINE void mirror(const T* x, T* y, int64_t n, bool negate) {
  constexpr int L = Pack<T>::lanes;
  const T sign = negate ? T(-0.0) : T(0);
  int64_t i = 0;
  for (; i + L <= n; i += L) store(y + n - i - L, reverse(load(x + i)) ^ broadcast(sign));
  for (; i < n; ++i) y[n - 1 - i] = negate ? -x[i] : x[i];
}
template <Wave W, class T>
VEK_NOINLINE void toPeriod(const T* x, T* z, int64_t n, bool ortho) {
  if constexpr (W == kSine) {
    z[0] = z[n + 1] = 0;
    __builtin_memcpy(z + 1, x, size_t(n) * sizeof(T));
    mirror(x, z + n + 2, n, true);
  } else {
    __builtin_memcpy(z, x, size_t(n) * sizeof(T));
    mirror(x + 1, z + n, n - 2, false);
    if (ortho) z[0] *= kRootTwo<T>, z[n - 1] *= kRootTwo<T>;
  }
}
template <Wave W, class T>
VEK_NOINLINE void fromPeriod(const T* z, T* y, int64_t n, bool ortho) {
  constexpr int L = Pack<T>::lanes;
  if (W == kSine) z += 2;
  int64_t k = 0;
  for (; k + L <= n; k += L) {
    const Two<T> p = deinterleave(load(z + 2 * k), load(z + 2 * k + L));
    store(y + k, W == kSine ? negated(p.b) : p.a);
  }
  for (; k < n; ++k) y[k] = W == kSine ? -z[2 * k + 1] : z[2 * k];
  if (W == kCosine && ortho) y[0] *= kRootHalf<T>, y[n - 1] *= kRootHalf<T>;
}

// ---- one call
// --------------------------------------------------------------------------------------------------------

// What a call does to rows of points.
template <class P>
class Transform {
 public:
  using T = typename SpecOf<P>::Real;
  using C = typename SpecOf<P>::Complex;

  Transform(const P* spec, bool forward)
      : body_(bodyOf(spec)),
        n_(body_->head.len),
        number_(forward ? typeNumber(body_->type) : inverseNumber(typeNumber(body_->type))),
        sine_(isSine(body_->type)),
        ortho_(body_->norm == vekxTrigOrtho),
        scale_(T((forward ? body_->forwardScale : body_->inverseScale) * factor())),
        shape_(shapeOf(body_->type, n_)) {}

  // `count` rows behind each other, from x to y by way of rowOf(shape) numbers each in z.
  void operator()(const T* x, T* y, T* z, int64_t count, uint8_t* work) const {
    sine_ ? run<kSine>(x, y, z, count, work) : run<kCosine>(x, y, z, count, work);
  }

 private:
  // What the sums of the engine are short of.
  double factor() const {
    if (number_ == 2) return 2;
    if (number_ == 4) return n_ % 2 == 0 ? 2 : kRootTwo<double>;
    return 1;
  }
  template <Wave W>
  VEK_NOINLINE void run(const T* x, T* y, T* z, int64_t count, uint8_t* work) const {
    const int64_t row = rowOf(shape_);
    for (int64_t i = 0; i < count; ++i) before<W>(x + i * n_, z + i * row);
    const DftSpec* engine = reinterpret_cast<const DftSpec*>(body_ + 1);
    C* bins = reinterpret_cast<C*>(z);
    const DftBatch fromReal{count, 1, row, 1, row / 2}, fromBins{count, 1, row / 2, 1, row};
    if (shape_.complex) {
      transform(bins, bins, {count, 1, row / 2, 1, row / 2}, engine, work);
    } else if (number_ != 3) {
      transform(z, bins, fromReal, engine, work);
    } else if (count == 1) {
      dftInverse(bins, z, engine, scale_, work);
    } else {
      dftInverse(bins, z, engine, fromBins, scale_, work);
    }
    for (int64_t i = 0; i < count; ++i) after<W>(z + i * row, y + i * n_);
  }
  template <class A>
  void transform(const A* src, C* dst, const DftBatch& batch, const DftSpec* engine, uint8_t* work) const {
    if (batch.count == 1) {
      dftForward(src, dst, engine, scale_, work);
    } else {
      dftForward(src, dst, engine, batch, scale_, work);
    }
  }
  template <Wave W>
  void before(const T* x, T* z) const {
    if (number_ == 1) return toPeriod<W>(x, z, n_, ortho_);
    if (number_ == 2) return splitParity < W == kSine ? kNegatedOdds : kPlainOdds > (x, z, n_);
    if (number_ == 3) return toSpectrum<W>(x, roots(), z, n_, ortho_);
    return shape_.complex ? toPairs<W>(x, roots(), z, n_) : toFolded<W>(x, z, n_);
  }
  template <Wave W>
  void after(const T* z, T* y) const {
    if (number_ == 1) return fromPeriod<W>(z, y, n_, ortho_);
    if (number_ == 2) return fromSpectrum<W>(z, roots(), y, n_, ortho_);
    if (number_ == 3) return mergeParity < W == kSine ? kNegatedOdds : kPlainOdds > (z, y, n_);
    return shape_.complex ? fromPairs<W>(z, roots(), y, n_) : fromFolded<W>(z, y, n_);
  }
  Roots<T> roots() const {
    const uint8_t* at = reinterpret_cast<const uint8_t*>(body_) + body_->roots;
    return {reinterpret_cast<const T*>(at), reinterpret_cast<const T*>(at + rootBytes<T>(shape_.roots))};
  }

  const TrigSpec* body_;
  int64_t n_;
  int number_;
  bool sine_, ortho_;
  T scale_;
  Shape shape_;
};

// ---- sizes and specs
// -------------------------------------------------------------------------------------------------

template <class P>
VEK_INLINE int64_t engineBytes(Shape s) {
  return roundUp64(dftSizes(kindOf<P>(s), s.points).spec);
}
template <class P>
int64_t specBytes(VekxTrigType type, int64_t n) {
  const Shape s = shapeOf(type, n);
  return int64_t(sizeof(TrigSpec)) + 63 + engineBytes<P>(s) + 2 * rootBytes<typename SpecOf<P>::Real>(s.roots);
}

// The work buffer of `count` transforms at once: their rows, the engine's buffer, and for strided points a copy.
template <class P>
struct Work {
  using T = typename SpecOf<P>::Real;
  int64_t rows, points, engine;
  Work(VekxTrigType type, int64_t n, int64_t count) {
    const Shape s = shapeOf(type, n);
    const DftSizes sizes = dftSizes(kindOf<P>(s), s.points);
    rows = roundUp64(count * rowOf(s) * int64_t(sizeof(T)));
    points = roundUp64(count * n * int64_t(sizeof(T)));
    engine = count == 1 ? sizes.work : sizes.work > sizes.workMany ? sizes.work : sizes.workMany;
  }
  int64_t bytes() const { return 63 + rows + engine; }
  int64_t bytesWithPoints() const { return bytes() + points; }
};

VEK_INLINE VekStatus checkDesign(int len, VekxTrigType type, VekxTrigNorm norm) {
  const int shortest = type == vekxDCT1 ? 2 : 1;
  if (len < shortest || len > kDftLongest) return vekStsSizeErr;
  if (type < vekxDCT1 || type > vekxDST4 || norm < vekxTrigPlain || norm > vekxTrigOrtho) return vekStsFftFlagErr;
  return shapeOf(type, len).points > kDftLongest ? vekStsSizeErr : vekStsNoErr;
}

template <class P>
VekStatus getSize(int len, VekxTrigType type, Vek64s* pSpecSize, Vek64s* pWorkSize, Vek64s* pManyWorkSize) {
  if (!pSpecSize || !pWorkSize || !pManyWorkSize) return vekStsNullPtrErr;
  if (const VekStatus s = checkDesign(len, type, vekxTrigPlain)) return s;
  *pSpecSize = specBytes<P>(type, len);
  *pWorkSize = Work<P>(type, len, 1).bytes();
  *pManyWorkSize = Work<P>(type, len, sideBySide(len)).bytesWithPoints();
  return vekStsNoErr;
}

template <class P>
auto builder(int len, VekxTrigType type, VekxTrigNorm norm) {
  return [=](TrigSpec* body) {
    using T = typename SpecOf<P>::Real;
    constexpr double pi = 3.14159265358979323846;
    const Shape shape = shapeOf(type, len);
    const double whole = typeNumber(type) == 1 ? double(shape.points) : 2 * double(len);
    body->type = type, body->norm = norm;
    body->forwardScale = norm == vekxTrigOrtho ? 1 / sqrt(whole) : 1;
    body->inverseScale = norm == vekxTrigOrtho ? 1 / sqrt(whole) : 1 / whole;
    body->roots = int64_t(sizeof(TrigSpec)) + engineBytes<P>(shape);
    dftPlace(kindOf<P>(shape), shape.points, reinterpret_cast<uint8_t*>(body + 1));
    if (shape.roots == 0) return;
    uint8_t* at = reinterpret_cast<uint8_t*>(body) + body->roots;
    makeRoots(reinterpret_cast<T*>(at), reinterpret_cast<T*>(at + rootBytes<T>(shape.roots)), shape.roots,
              shape.complex ? pi / len : pi / (2 * double(len)), shape.complex ? 0.125 : 0);
  };
}
template <class P>
VekStatus init(P** ppSpec, int len, VekxTrigType type, VekxTrigNorm norm, uint8_t* buffer) {
  if (!ppSpec || !buffer) return vekStsNullPtrErr;
  if (const VekStatus s = checkDesign(len, type, norm)) return s;
  return makeSpec(ppSpec, len, buffer, false, builder<P>(len, type, norm));
}
template <class P>
VekStatus initAlloc(P** ppSpec, int len, VekxTrigType type, VekxTrigNorm norm) {
  if (!ppSpec) return vekStsNullPtrErr;
  if (const VekStatus s = checkDesign(len, type, norm)) return s;
  return makeSpecOnHeap(ppSpec, len, specBytes<P>(type, len), builder<P>(len, type, norm));
}

// ---- calls
// -----------------------------------------------------------------------------------------------------------

template <class T, class P>
VekStatus one(const T* x, T* y, const P* spec, uint8_t* given, bool forward) {
  if (const VekStatus s = checkCall(x, y, spec)) return s;
  const Work<P> sizes(bodyOf(spec)->type, bodyOf(spec)->head.len, 1);
  return withWork(sizes.bytes(), given, [=](uint8_t* work) {
    uint8_t* rows = align64(work);
    Transform<P>(spec, forward)(x, y, reinterpret_cast<T*>(rows), 1, rows + sizes.rows);
  });
}

// Points of one side, `count` arrays at a time, beside each other in memory where the arrays are interleaved.
template <class T>
void gather(const T* x, Places p, int64_t count, T* points) {
  for (int64_t e = 0; e < p.elements; ++e)
    for (int64_t t = 0; t < count; ++t) points[t * p.elements + e] = x[t * p.distance + e * p.stride];
}
template <class T>
void scatter(const T* points, T* y, Places p, int64_t count) {
  for (int64_t e = 0; e < p.elements; ++e)
    for (int64_t t = 0; t < count; ++t) y[t * p.distance + e * p.stride] = points[t * p.elements + e];
}

template <class T, class P>
VekStatus many(const T* x, T* y, const DftBatch& batch, const P* spec, uint8_t* given, bool forward) {
  if (const VekStatus s = checkCall(x, y, spec)) return s;
  const int64_t n = bodyOf(spec)->head.len, most = sideBySide(n);
  const Places src{n, batch.srcStride, batch.srcDistance}, dst{n, batch.dstStride, batch.dstDistance};
  if (const VekStatus s = checkPlaces(batch.count, x, src, y, dst)) return s;
  const Work<P> sizes(bodyOf(spec)->type, n, most);
  return withWork(sizes.bytesWithPoints(), given, [&](uint8_t* work) {
    uint8_t* at = align64(work);
    T *rows = reinterpret_cast<T*>(at), *points = reinterpret_cast<T*>(at + sizes.rows);
    uint8_t* engine = at + sizes.rows + sizes.points;
    const Transform<P> transform(spec, forward);
    const auto dense = [=](Places p) { return p.stride == 1 && p.distance == n; };
    for (int64_t t = 0; t < batch.count; t += most) {
      const int64_t count = batch.count - t < most ? batch.count - t : most;
      const T* from = x + t * src.distance;
      T* to = y + t * dst.distance;
      if (!dense(src)) gather(from, src, count, points);
      transform(dense(src) ? from : points, dense(dst) ? to : points, rows, count, engine);
      if (!dense(dst)) scatter(points, to, dst, count);
    }
  });
}

}  // namespace

#define VEKX_TRIG(KIND)                                                                                             \
  VekStatus vekxTrigGetSize_##KIND(int len, VekxTrigType type, Vek64s* pSpecSize, Vek64s* pWorkSize,                \
                                   Vek64s* pManyWorkSize) {                                                         \
    return getSize<VekxTrigSpec_##KIND>(len, type, pSpecSize, pWorkSize, pManyWorkSize);                            \
  }                                                                                                                 \
  VekStatus vekxTrigInit_##KIND(VekxTrigSpec_##KIND** ppSpec, int len, VekxTrigType type, VekxTrigNorm norm,        \
                                Vek8u* pSpecBuffer) {                                                               \
    return init(ppSpec, len, type, norm, pSpecBuffer);                                                              \
  }                                                                                                                 \
  VekStatus vekxTrigInitAlloc_##KIND(VekxTrigSpec_##KIND** ppSpec, int len, VekxTrigType type, VekxTrigNorm norm) { \
    return initAlloc(ppSpec, len, type, norm);                                                                      \
  }                                                                                                                 \
  VekStatus vekxTrigFree_##KIND(VekxTrigSpec_##KIND* pSpec) { return freeSpec(pSpec); }                             \
  VEKX_TRIG_WAY(Fwd, KIND, true)                                                                                    \
  VEKX_TRIG_WAY(Inv, KIND, false)
#define VEKX_TRIG_WAY(WAY, KIND, FORWARD)                                                                          \
  VekStatus vekxTrig##WAY##_##KIND(const Vek##KIND* pSrc, Vek##KIND* pDst, const VekxTrigSpec_##KIND* pSpec,       \
                                   Vek8u* pWorkBuffer) {                                                           \
    return one(pSrc, pDst, pSpec, pWorkBuffer, FORWARD);                                                           \
  }                                                                                                                \
  VekStatus vekxTrig##WAY##Many_##KIND(const Vek##KIND* pSrc, Vek##KIND* pDst, Vek64s count, Vek64s srcStride,     \
                                       Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance,                   \
                                       const VekxTrigSpec_##KIND* pSpec, Vek8u* pWorkBuffer) {                     \
    return many(pSrc, pDst, {count, srcStride, srcDistance, dstStride, dstDistance}, pSpec, pWorkBuffer, FORWARD); \
  }                                                                                                                \
  VekStatus vekxTrig##WAY##Many_##KIND##_I(Vek##KIND* pSrcDst, Vek64s count, Vek64s stride, Vek64s distance,       \
                                           const VekxTrigSpec_##KIND* pSpec, Vek8u* pWorkBuffer) {                 \
    return many(pSrcDst, pSrcDst, {count, stride, distance, stride, distance}, pSpec, pWorkBuffer, FORWARD);       \
  }

VEKX_TRIG(32f)
VEKX_TRIG(64f)

}  // namespace vek::VEK_SLOT
