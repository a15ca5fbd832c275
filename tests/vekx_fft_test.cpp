// SPDX-License-Identifier: Apache-2.0
// The transforms of vekx against their definitions in long double. With VEK_TEST_THOROUGH set every length up to 2,048
// and lengths up to 2^24 are tried; the check stops at 256 and 2^20.
#include <stdlib.h>

#include <complex>
#include <thread>

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/heap.h"
#include "tests/support/slots.h"
#include "vekx.h"

namespace {

using vektest::Flush;
using vektest::Guarded;
using vektest::inEverySlot;
using vektest::PartOf;
using Bytes = Guarded<Vek8u>;
using Wide = long double;
using Number = std::complex<Wide>;
using Numbers = std::vector<Number>;

constexpr Wide kPi = 3.14159265358979323846264338327950288L;

bool thorough() { return getenv("VEK_TEST_THOROUGH") != nullptr; }

// ---- the functions under test by kind
// --------------------------------------------------------------------------------

#define VEKX_KIND(NAME, SPEC_KIND, FORWARD, INVERSE, SAMPLE, BIN)            \
  struct NAME {                                                              \
    using Spec = VekxFFTSpec_##SPEC_KIND;                                    \
    using X = SAMPLE;                                                        \
    using Y = BIN;                                                           \
    static constexpr auto getSize = vekxFFTGetSize_##SPEC_KIND;              \
    static constexpr auto init = vekxFFTInit_##SPEC_KIND;                    \
    static constexpr auto initAlloc = vekxFFTInitAlloc_##SPEC_KIND;          \
    static constexpr auto free = vekxFFTFree_##SPEC_KIND;                    \
    static constexpr auto forward = vekxFFTFwd_##FORWARD;                    \
    static constexpr auto inverse = vekxFFTInv_##INVERSE;                    \
    static constexpr auto forwardInPlace = vekxFFTFwd_##FORWARD##_I;         \
    static constexpr auto inverseInPlace = vekxFFTInv_##INVERSE##_I;         \
    static constexpr auto forwardMany = vekxFFTFwdMany_##FORWARD;            \
    static constexpr auto inverseMany = vekxFFTInvMany_##INVERSE;            \
    static constexpr auto forwardManyInPlace = vekxFFTFwdMany_##FORWARD##_I; \
    static constexpr auto inverseManyInPlace = vekxFFTInvMany_##INVERSE##_I; \
  };
VEKX_KIND(Complex32, 32fc, 32fc, 32fc, Vek32fc, Vek32fc)
VEKX_KIND(Complex64, 64fc, 64fc, 64fc, Vek64fc, Vek64fc)
VEKX_KIND(Real32, 32f, 32f32fc, 32fc32f, Vek32f, Vek32fc)
VEKX_KIND(Real64, 64f, 64f64fc, 64fc64f, Vek64f, Vek64fc)

template <class K>
constexpr bool kReal = std::is_floating_point_v<typename K::X>;
template <class K>
using PartOfKind = PartOf<typename K::Y>;

template <class K>
class Fft : public ::testing::Test {};
using Kinds = ::testing::Types<Complex32, Complex64, Real32, Real64>;
TYPED_TEST_SUITE(Fft, Kinds);

template <class T>
struct Trig;
#define VEKX_TRIG(KIND)                                                    \
  template <>                                                              \
  struct Trig<Vek##KIND> {                                                 \
    using Spec = VekxTrigSpec_##KIND;                                      \
    static constexpr auto getSize = vekxTrigGetSize_##KIND;                \
    static constexpr auto init = vekxTrigInit_##KIND;                      \
    static constexpr auto initAlloc = vekxTrigInitAlloc_##KIND;            \
    static constexpr auto free = vekxTrigFree_##KIND;                      \
    static constexpr auto forward = vekxTrigFwd_##KIND;                    \
    static constexpr auto inverse = vekxTrigInv_##KIND;                    \
    static constexpr auto forwardInPlace = vekxTrigFwd_##KIND##_I;         \
    static constexpr auto inverseInPlace = vekxTrigInv_##KIND##_I;         \
    static constexpr auto forwardMany = vekxTrigFwdMany_##KIND;            \
    static constexpr auto inverseManyInPlace = vekxTrigInvMany_##KIND##_I; \
  };
VEKX_TRIG(32f)
VEKX_TRIG(64f)

// ---- references
// ------------------------------------------------------------------------------------------------------

// exp(-2 pi i k / n), k < n.
class Roots {
 public:
  explicit Roots(size_t n) : n_(n), coarse_(n / kFine + 1), fine_(std::min(n, kFine)) {
    for (size_t k = 0; k < fine_.size(); ++k) fine_[k] = at(k);
    for (size_t k = 0; k < coarse_.size(); ++k) coarse_[k] = at(k * kFine);
  }
  Number operator()(size_t k) const { return k < kFine ? fine_[k] : coarse_[k / kFine] * fine_[k % kFine]; }

 private:
  static constexpr size_t kFine = 4096;
  Number at(size_t k) const { return std::polar(Wide(1), -2 * kPi * Wide(k) / Wide(n_)); }
  size_t n_;
  Numbers coarse_, fine_;
};

Number oneBin(const Numbers& x, size_t bin, const Roots& root) {
  Number sum = 0;
  for (size_t j = 0; j < x.size(); ++j) sum += x[j] * root(j * bin % x.size());
  return sum;
}
Numbers transformed(const Numbers& x, bool forward) {
  const Roots root(x.size());
  Numbers y(x.size());
  for (size_t k = 0; k < x.size(); ++k) y[k] = oneBin(x, forward || k == 0 ? k : x.size() - k, root);
  return y;
}

template <class T>
Number number(T x) {
  if constexpr (std::is_floating_point_v<T>) {
    return x;
  } else {
    return {x.re, x.im};
  }
}
template <class T>
Numbers numbers(const std::vector<T>& v) {
  Numbers out;
  for (const T& x : v) out.push_back(number(x));
  return out;
}
// All bins of a real spectrum, whose ends count as real.
Numbers wholeSpectrum(Numbers half, size_t n) {
  half[0] = half[0].real();
  if (n % 2 == 0) half[n / 2] = half[n / 2].real();
  for (size_t k = n / 2 + 1; k < n; ++k) half.push_back(std::conj(half[n - k]));
  return half;
}

// The documented bound.
template <class T>
Wide bound(size_t n) {
  size_t rest = n;
  for (size_t p : {2, 3, 5, 7, 11, 13})
    while (rest % p == 0) rest /= p;
  const Wide unit = std::is_same_v<PartOf<T>, float> ? 0x1p-24L : 0x1p-53L;
  return (std::sqrt(std::log2(Wide(n))) + 2) * unit * (rest == 1 ? 1 : 2);
}

template <class T>
Wide relativeError(const std::vector<T>& got, const Numbers& want, Wide scale = 1) {
  Wide error = 0, total = 0;
  if (got.size() != want.size()) return INFINITY;
  for (size_t i = 0; i < want.size(); ++i) {
    error += std::norm(number(got[i]) - want[i] * scale);
    total += std::norm(want[i] * scale);
  }
  return std::sqrt(error / total);
}

// Pairwise: the squares of short numbers end in the same bits, and a long sum would round them all one way.
Wide energyOf(const Number* x, size_t n) {
  if (n > 64) return energyOf(x, n / 2) + energyOf(x + n / 2, n - n / 2);
  Wide sum = 0;
  for (size_t i = 0; i < n; ++i) sum += std::norm(x[i]);
  return sum;
}

// Numbers that single precision holds, so that one reference serves both.
template <class T>
std::vector<T> samples(size_t n) {
  std::vector<T> x(n);
  PartOf<T>* const parts = reinterpret_cast<PartOf<T>*>(x.data());
  for (size_t i = 0; i < n * sizeof(T) / sizeof(PartOf<T>); ++i)
    parts[i] = PartOf<T>(float(std::uniform_real_distribution<double>(-1, 1)(vektest::rng())));
  return x;
}

Wide forwardScale(VekxScale scale, size_t n) {
  return scale == vekxScaleForward ? 1 / Wide(n) : scale == vekxScaleBoth ? 1 / std::sqrt(Wide(n)) : 1;
}
Wide inverseScale(VekxScale scale, size_t n) {
  return scale == vekxScaleInverse ? 1 / Wide(n) : scale == vekxScaleBoth ? 1 / std::sqrt(Wide(n)) : 1;
}

// ---- specs in buffers of the stated sizes, between guard pages
// -------------------------------------------------------

struct Sizes {
  Vek64s spec = 0, work = 0, many = 0;
};

struct Place {
  Flush flush = Flush::kBack;
  size_t shift = 0;
};
Place placeFor(size_t n, int slot) {
  return {(n + size_t(slot)) % 2 == 0 ? Flush::kBack : Flush::kFront, (n * 7 + size_t(slot) * 5) % 64};
}

template <class Spec>
struct Buffers {
  Bytes spec, work, many;
  Spec* made = nullptr;
  Buffers(Sizes s, Place p)
      : spec(size_t(s.spec), p.flush, p.shift),
        work(size_t(s.work), p.flush, 63 - p.shift),
        many(size_t(s.many), p.flush, p.shift / 2) {}
  bool intact() const { return spec.intact() && work.intact() && many.intact(); }
};

template <class K>
Buffers<typename K::Spec> makeFft(int n, VekxScale scale, Place place = {}) {
  Sizes s;
  EXPECT_EQ(K::getSize(n, &s.spec, &s.work, &s.many), vekStsNoErr);
  Buffers<typename K::Spec> b(s, place);
  EXPECT_EQ(K::init(&b.made, n, scale, b.spec), vekStsNoErr);
  return b;
}
template <class T>
Buffers<typename Trig<T>::Spec> makeTrig(int n, VekxTrigType type, VekxTrigNorm norm, Place place = {}) {
  Sizes s;
  EXPECT_EQ(Trig<T>::getSize(n, type, &s.spec, &s.work, &s.many), vekStsNoErr);
  Buffers<typename Trig<T>::Spec> b(s, place);
  EXPECT_EQ(Trig<T>::init(&b.made, n, type, norm, b.spec), vekStsNoErr);
  return b;
}

// ---- Fourier transforms
// ----------------------------------------------------------------------------------------------

// One length of one kind: what goes in and what is to come out, unscaled.
template <class K>
struct Case {
  size_t n, bins;
  std::vector<typename K::X> x;
  std::vector<typename K::Y> y;
  Numbers spectrum, signal;
  explicit Case(size_t len)
      : n(len), bins(kReal<K> ? n / 2 + 1 : n), x(samples<typename K::X>(n)), y(samples<typename K::Y>(bins)) {
    spectrum = transformed(numbers(x), true);
    spectrum.resize(bins);
    Numbers whole = numbers(y);
    if (kReal<K>) whole = wholeSpectrum(whole, n);
    signal = transformed(whole, false);
    if (kReal<K>) {  // what must not be read
      y[0].im = NAN;
      if (n % 2 == 0) y[n / 2].im = NAN;
    }
  }
};

template <class K>
void checkPacked(const Case<K>& c, VekxScale scale, Place place) {
  using R = PartOfKind<K>;
  constexpr bool single = std::is_same_v<R, float>;
  const auto pick = [](auto f32, auto f64) {
    if constexpr (single) {
      return f32;
    } else {
      return f64;
    }
  };
  auto b = makeFft<K>(int(c.n), scale, place);
  std::vector<R> packed = {c.y[0].re};
  for (size_t k = 1; k < c.bins; ++k) packed.push_back(c.y[k].re), packed.push_back(c.y[k].im);
  packed.resize(c.n);
  Guarded<R> x(c.x), out(c.n), bins(packed), back(c.n), both(c.x), again(packed);
  ASSERT_EQ(pick(vekxFFTFwdPack_32f, vekxFFTFwdPack_64f)(x, out, b.made, b.work), vekStsNoErr);
  ASSERT_EQ(pick(vekxFFTInvPack_32f, vekxFFTInvPack_64f)(bins, back, b.made, b.work), vekStsNoErr);
  ASSERT_EQ(pick(vekxFFTFwdPack_32f_I, vekxFFTFwdPack_64f_I)(both, b.made, b.work), vekStsNoErr);
  ASSERT_EQ(pick(vekxFFTInvPack_32f_I, vekxFFTInvPack_64f_I)(again, b.made, b.work), vekStsNoErr);
  EXPECT_TRUE(vektest::sameVectors(x.values(), c.x) && vektest::sameVectors(bins.values(), packed));
  EXPECT_TRUE(vektest::sameVectors(both.values(), out.values()) && vektest::sameVectors(again.values(), back.values()));
  const std::vector<R> got = out.values();
  std::vector<typename K::Y> unpacked(c.bins);
  unpacked[0].re = got[0];
  for (size_t i = 1; i < c.n; ++i) (i % 2 != 0 ? unpacked[(i + 1) / 2].re : unpacked[i / 2].im) = got[i];
  EXPECT_LE(relativeError(unpacked, c.spectrum, forwardScale(scale, c.n)), bound<R>(c.n));
  EXPECT_LE(relativeError(back.values(), c.signal, inverseScale(scale, c.n)), bound<R>(c.n));
  EXPECT_TRUE(b.intact() && x.intact() && out.intact() && bins.intact() && back.intact());
}

TYPED_TEST(Fft, EveryShortLengthMatchesTheDefinition) {
  using K = TypeParam;
  using X = typename K::X;
  using Y = typename K::Y;
  using R = PartOfKind<K>;
  for (size_t n = 1; n <= (thorough() ? 2048 : 256); ++n) {
    const Case<K> c(n);
    inEverySlot([&](int slot) {
      SCOPED_TRACE(n);
      const VekxScale scale = int(n + size_t(slot)) % 4;
      const Wide f = forwardScale(scale, n), g = inverseScale(scale, n), limit = bound<R>(n);
      const Place place = placeFor(n, slot);
      auto b = makeFft<K>(int(n), scale, place);
      Guarded<X> x(c.x, place.flush), back(n, place.flush);
      Guarded<Y> y(c.y, place.flush), out(c.bins, place.flush);
      ASSERT_EQ(K::forward(x, out, b.made, b.work), vekStsNoErr);
      ASSERT_EQ(K::inverse(y, back, b.made, b.work), vekStsNoErr);
      EXPECT_LE(relativeError(out.values(), c.spectrum, f), limit);
      EXPECT_LE(relativeError(back.values(), c.signal, g), limit);
      EXPECT_TRUE(vektest::sameVectors(x.values(), c.x) && vektest::sameVectors(y.values(), c.y));
      if constexpr (kReal<K>) {
        EXPECT_EQ(out.at(0).im, 0);
        EXPECT_EQ(out.at(n % 2 == 0 ? n / 2 : 0).im, 0);
        checkPacked<K>(c, scale, place);
      }

      Guarded<X> both(2 * sizeof(R) * (kReal<K> ? c.bins : n) / sizeof(X)), again(both.size());
      memcpy(both.data(), c.x.data(), n * sizeof(X));
      memcpy(again.data(), c.y.data(), c.bins * sizeof(Y));
      ASSERT_EQ(K::forwardInPlace(both, b.made, b.work), vekStsNoErr);
      ASSERT_EQ(K::inverseInPlace(again, b.made, b.work), vekStsNoErr);
      EXPECT_LE(relativeError(both.template values<Y>(), c.spectrum, f), limit);
      std::vector<X> first = again.values();
      first.resize(n);
      EXPECT_LE(relativeError(first, c.signal, g), limit);
      EXPECT_TRUE(b.intact() && x.intact() && y.intact() && out.intact() && back.intact() && both.intact() &&
                  again.intact());
    });
  }
}

// Single bins against their sums, all of them by the energy that they hold together, and back.
TYPED_TEST(Fft, LongLengths) {
  using K = TypeParam;
  using X = typename K::X;
  using R = PartOfKind<K>;
  std::vector<size_t> lengths = {257,   509,    882,    1000,   1009,   1155,    1920,   2048,
                                 4410,  4800,   8192,   10007,  15015,  44100,   65536,  65537,
                                 96000, 100003, 131072, 262144, 531441, 1000000, 1048576};
  if (thorough())
    for (size_t n : {1 << 21, 1 << 22, 1 << 23, 1 << 24, 4782969, 9765625, 10000000, 1299709}) lengths.push_back(n);
  for (size_t n : lengths) {
    const std::vector<X> x = samples<X>(n);
    const Numbers whole = numbers(x);
    const size_t bins = kReal<K> ? n / 2 + 1 : n;
    const Roots root(n);
    const size_t probes[] = {0, 1, n / 3, bins - 1, bins / 2 + 1};
    Numbers want;
    for (size_t k : probes) want.push_back(oneBin(whole, k, root));
    const Wide energy = energyOf(whole.data(), n);
    inEverySlot([&](int slot) {
      if (slot > 0 && slot < 4) return;                    // code of their own have the others
      if (n > 300000 && slot != 6 && !thorough()) return;  // which differ in nothing that is long
      SCOPED_TRACE(n);
      const Wide limit = bound<R>(n);
      auto b = makeFft<K>(int(n), vekxScaleInverse);
      Guarded<X> in(x), back(n);
      Guarded<typename K::Y> out(bins);
      ASSERT_EQ(K::forward(in, out, b.made, b.work), vekStsNoErr);
      const auto got = out.values();
      for (size_t i = 0; i < std::size(probes); ++i)
        EXPECT_LE(std::abs(number(got[probes[i]]) - want[i]), 6 * limit * std::sqrt(energy)) << probes[i];
      const Numbers spectrum = numbers(got);
      Wide found = energyOf(spectrum.data(), bins);
      if (kReal<K>) found = 2 * found - std::norm(spectrum[0]) - (n % 2 == 0 ? std::norm(spectrum[bins - 1]) : 0);
      EXPECT_NEAR(double(found / (energy * Wide(n))), 1, double(2 * limit));
      ASSERT_EQ(K::inverse(out, back, b.made, b.work), vekStsNoErr);
      EXPECT_LE(relativeError(back.values(), whole), 2 * limit);
      EXPECT_TRUE(b.intact() && in.intact() && out.intact() && back.intact());
      EXPECT_TRUE(vektest::sameVectors(in.values(), x));
    });
  }
}

// ---- many
// ------------------------------------------------------------------------------------------------------------

struct Layout {
  Vek64s stride, distance;
  size_t at(size_t t, size_t e) const { return t * size_t(distance) + e * size_t(stride); }
  size_t extent(size_t count, size_t elements) const { return at(count - 1, elements - 1) + 1; }
};
enum class Shape { kRows, kGaps, kColumns, kWideColumns };
Layout layoutOf(Shape shape, size_t count, size_t elements) {
  const Vek64s n = Vek64s(elements), c = Vek64s(count);
  switch (shape) {
    case Shape::kRows:
      return {1, n};
    case Shape::kGaps:
      return {3, 3 * n + 2};
    case Shape::kColumns:
      return {c, 1};
    default:
      return {2 * c + 1, 2};
  }
}
constexpr Shape kShapes[] = {Shape::kRows, Shape::kGaps, Shape::kColumns, Shape::kWideColumns};

template <class T>
std::vector<T> laidOut(const std::vector<T>& rows, size_t count, Layout l) {
  const size_t elements = rows.size() / count;
  T hole;
  memset(static_cast<void*>(&hole), Guarded<T>::kCanary, sizeof hole);
  std::vector<T> v(l.extent(count, elements), hole);
  for (size_t t = 0; t < count; ++t)
    for (size_t e = 0; e < elements; ++e) v[l.at(t, e)] = rows[t * elements + e];
  return v;
}
template <class T>
std::vector<T> rowsOf(const std::vector<T>& v, size_t count, size_t elements, Layout l) {
  std::vector<T> rows;
  for (size_t t = 0; t < count; ++t)
    for (size_t e = 0; e < elements; ++e) rows.push_back(v[l.at(t, e)]);
  return rows;
}
// The results are those of single calls up to rounding, and nothing lies between them that was not there before.
template <class T>
void expectRows(const Guarded<T>& got, const std::vector<T>& want, size_t count, Layout l, Wide limit) {
  const std::vector<T> rows = rowsOf(got.values(), count, want.size() / count, l);
  EXPECT_LE(relativeError(rows, numbers(want)), limit);
  EXPECT_EQ(memcmp(laidOut(rows, count, l).data(), const_cast<Guarded<T>&>(got).data(), got.size() * sizeof(T)), 0);
  EXPECT_TRUE(got.intact());
}

TYPED_TEST(Fft, ManyAreWhatSingleOnesAre) {
  using K = TypeParam;
  using X = typename K::X;
  using Y = typename K::Y;
  using R = PartOfKind<K>;
  for (size_t n : {1, 2, 3, 4, 5, 7, 8, 12, 15, 16, 17, 31, 32, 60, 64, 100, 101, 128, 256, 509, 1000, 4096}) {
    const size_t bins = kReal<K> ? n / 2 + 1 : n;
    for (size_t count : {1, 2, 3, 8, 17, 33}) {
      if (n * count > 20000) continue;
      const std::vector<X> x = samples<X>(n * count);
      inEverySlot([&](int slot) {
        SCOPED_TRACE(testing::Message() << n << " x " << count);
        const Place place = placeFor(n + count, slot);
        auto b = makeFft<K>(int(n), vekxScaleBoth, place);
        const Wide limit = 2 * bound<R>(n);
        std::vector<Y> y(bins * count);
        std::vector<X> z(n * count);
        for (size_t t = 0; t < count; ++t) {
          ASSERT_EQ(K::forward(x.data() + t * n, y.data() + t * bins, b.made, b.work), vekStsNoErr);
          ASSERT_EQ(K::inverse(y.data() + t * bins, z.data() + t * n, b.made, b.work), vekStsNoErr);
        }
        for (Shape from : kShapes) {
          const Shape to = kShapes[(size_t(from) + n + count) % 4];
          const Layout lx = layoutOf(from, count, n), ly = layoutOf(to, count, bins);
          Guarded<X> in(laidOut(x, count, lx), place.flush), back(lx.extent(count, n), place.flush);
          Guarded<Y> out(ly.extent(count, bins), place.flush);
          const Vek64s c = Vek64s(count);
          ASSERT_EQ(K::forwardMany(in, out, c, lx.stride, lx.distance, ly.stride, ly.distance, b.made, b.many),
                    vekStsNoErr);
          expectRows(out, y, count, ly, limit);
          ASSERT_EQ(K::inverseMany(out, back, c, ly.stride, ly.distance, lx.stride, lx.distance, b.made, b.many),
                    vekStsNoErr);
          expectRows(back, z, count, lx, limit);
          EXPECT_TRUE(in.intact() && vektest::sameVectors(in.values(), laidOut(x, count, lx)));
          if constexpr (!kReal<K>) {
            ASSERT_EQ(K::forwardManyInPlace(in, c, lx.stride, lx.distance, b.made, b.many), vekStsNoErr);
            expectRows(in, y, count, lx, limit);
            ASSERT_EQ(K::inverseManyInPlace(in, c, lx.stride, lx.distance, b.made, b.many), vekStsNoErr);
            expectRows(in, z, count, lx, limit);
          }
        }
        if constexpr (kReal<K>) {
          const size_t distance = 2 * bins + 2 * (count % 2);
          Guarded<R> both(distance * (count - 1) + 2 * bins);
          for (size_t t = 0; t < count; ++t) memcpy(both.data() + t * distance, x.data() + t * n, n * sizeof(R));
          ASSERT_EQ(K::forwardManyInPlace(both, Vek64s(count), Vek64s(distance), b.made, b.many), vekStsNoErr);
          const Layout ly{1, Vek64s(distance / 2)}, lx{1, Vek64s(distance)};
          EXPECT_LE(relativeError(rowsOf(both.template values<Y>(), count, bins, ly), numbers(y)), limit);
          ASSERT_EQ(K::inverseManyInPlace(both, Vek64s(count), Vek64s(distance), b.made, b.many), vekStsNoErr);
          EXPECT_LE(relativeError(rowsOf(both.values(), count, n, lx), numbers(z)), limit);
          EXPECT_TRUE(both.intact());
        }
        EXPECT_TRUE(b.intact());
      });
    }
  }
}

// The frames of a spectrogram: sources that share elements.
TYPED_TEST(Fft, FramesMayOverlap) {
  using K = TypeParam;
  constexpr size_t n = 48, hop = 7, count = 21;
  const size_t bins = kReal<K> ? n / 2 + 1 : n;
  inEverySlot([&](int) {
    auto b = makeFft<K>(int(n), vekxScaleNone);
    Guarded<typename K::X> x(samples<typename K::X>(hop * (count - 1) + n));
    Guarded<typename K::Y> y(bins * count);
    std::vector<typename K::Y> want(bins * count);
    for (size_t t = 0; t < count; ++t)
      ASSERT_EQ(K::forward(x.data() + t * hop, want.data() + t * bins, b.made, b.work), vekStsNoErr);
    ASSERT_EQ(K::forwardMany(x, y, count, 1, hop, 1, Vek64s(bins), b.made, b.many), vekStsNoErr);
    EXPECT_LE(relativeError(y.values(), numbers(want)), 2 * bound<typename K::Y>(n));
    EXPECT_TRUE(x.intact() && y.intact());
  });
}

// ---- specs
// -----------------------------------------------------------------------------------------------------------

template <class F>
VekStatus withoutMemory(F f) {
  vektest::Heap empty(0);
  return f();
}

TYPED_TEST(Fft, RefusesInTheStatedOrder) {
  using K = TypeParam;
  using X = typename K::X;
  using Y = typename K::Y;
  inEverySlot([](int slot) {
    constexpr int tooLong = (1 << 27) + 1;
    Vek64s a = -1, w = -1, m = -1;
    Vek8u byte = 42;
    typename K::Spec* spec = nullptr;
    EXPECT_EQ(K::getSize(0, nullptr, &w, &m), vekStsNullPtrErr);
    EXPECT_EQ(K::getSize(0, &a, nullptr, &m), vekStsNullPtrErr);
    EXPECT_EQ(K::getSize(0, &a, &w, nullptr), vekStsNullPtrErr);
    for (int len : {0, -1, INT32_MIN, tooLong, INT32_MAX}) {
      EXPECT_EQ(K::getSize(len, &a, &w, &m), vekStsSizeErr);
      EXPECT_EQ(K::init(&spec, len, 99, &byte), vekStsSizeErr);
      EXPECT_EQ(K::initAlloc(&spec, len, 99), vekStsSizeErr);
    }
    EXPECT_EQ(K::init(nullptr, 0, 99, &byte), vekStsNullPtrErr);
    EXPECT_EQ(K::init(&spec, 0, 99, nullptr), vekStsNullPtrErr);
    EXPECT_EQ(K::initAlloc(nullptr, 0, 99), vekStsNullPtrErr);
    for (int scale : {-1, 4}) {
      EXPECT_EQ(K::init(&spec, 8, scale, &byte), vekStsFftFlagErr);
      EXPECT_EQ(K::initAlloc(&spec, 8, scale), vekStsFftFlagErr);
    }
    EXPECT_EQ(withoutMemory([&] { return K::initAlloc(&spec, 8, vekxScaleNone); }), vekStsMemAllocErr);
    EXPECT_TRUE(a == -1 && w == -1 && m == -1 && byte == 42 && spec == nullptr);
    EXPECT_EQ(K::getSize(1 << 27, &a, &w, &m), vekStsNoErr);

    constexpr size_t n = 8;
    auto b = makeFft<K>(int(n), vekxScaleNone);
    std::vector<X> x = samples<X>(4 * n);
    Guarded<Y> y(4 * n);
    EXPECT_EQ(K::forward(nullptr, y, b.made, b.work), vekStsNullPtrErr);
    EXPECT_EQ(K::forward(x.data(), nullptr, b.made, b.work), vekStsNullPtrErr);
    EXPECT_EQ(K::forward(x.data(), y, nullptr, b.work), vekStsNullPtrErr);
    EXPECT_EQ(K::free(nullptr), vekStsNullPtrErr);
    const auto many = [&](Vek64s count, Vek64s srcStride, Vek64s srcDistance, Vek64s dstStride, Vek64s dstDistance) {
      return K::forwardMany(x.data(), y, count, srcStride, srcDistance, dstStride, dstDistance, b.made, b.many);
    };
    EXPECT_EQ(many(0, 0, 0, 0, 0), vekStsSizeErr);
    EXPECT_EQ(many(INT64_MIN, 1, n, 1, n), vekStsSizeErr);
    for (Vek64s bad : {Vek64s(0), Vek64s(-1), INT64_MIN, INT64_MAX, INT64_MAX / 8}) {
      EXPECT_EQ(many(2, bad, n, 1, n), vekStsStrideErr);
      EXPECT_EQ(many(2, 1, bad, 1, n), vekStsStrideErr);
      EXPECT_EQ(many(2, 1, n, bad, n), vekStsStrideErr);
      EXPECT_EQ(many(2, 1, n, 1, bad), vekStsStrideErr);
    }
    const Vek64s last = kReal<K> ? n / 2 : n - 1;  // the last element of a destination
    EXPECT_EQ(many(2, 1, n, 1, last), vekStsStrideErr);
    EXPECT_EQ(many(2, 1, n, 2, 2 * last), vekStsStrideErr);
    EXPECT_EQ(many(3, 1, n, 2, 1), vekStsStrideErr);
    EXPECT_EQ(many(INT64_MAX, 1, n, 1, n), vekStsStrideErr);
    if constexpr (kReal<K>) {
      for (Vek64s bad : {0, 8, 9, 11}) {
        EXPECT_EQ(K::forwardManyInPlace(x.data(), 2, bad, b.made, b.many), vekStsStrideErr) << bad;
        EXPECT_EQ(K::inverseManyInPlace(x.data(), 2, bad, b.made, b.many), vekStsStrideErr) << bad;
      }
    } else {
      EXPECT_EQ(K::forwardMany(x.data(), x.data(), 2, 1, n, 1, n + 1, b.made, b.many), vekStsStrideErr);
      EXPECT_EQ(K::forwardMany(x.data(), x.data(), 2, 2, 1, 1, n, b.made, b.many), vekStsStrideErr);
    }
    // A spec of every other kind is none of this one; nor is memory that holds none.
    const auto refused = [&](void* other) {
      auto* wrong = static_cast<typename K::Spec*>(other);
      EXPECT_EQ(K::forward(x.data(), y, wrong, b.work), vekStsContextMatchErr);
      EXPECT_EQ(K::inverse(y, x.data(), wrong, b.work), vekStsContextMatchErr);
      EXPECT_EQ(K::forwardMany(x.data(), y, 0, 0, 0, 0, 0, wrong, b.many), vekStsContextMatchErr);
      EXPECT_EQ(K::free(wrong), vekStsContextMatchErr);
    };
    const std::vector<X> before = x;
    auto c32 = makeFft<Complex32>(n, 0);
    auto c64 = makeFft<Complex64>(n, 0);
    auto r32 = makeFft<Real32>(n, 0);
    auto r64 = makeFft<Real64>(n, 0);
    auto t32 = makeTrig<float>(n, vekxDCT2, 0);
    auto t64 = makeTrig<double>(n, vekxDCT2, 0);
    if (!std::is_same_v<K, Complex32>) refused(c32.made);
    if (!std::is_same_v<K, Complex64>) refused(c64.made);
    if (!std::is_same_v<K, Real32>) refused(r32.made);
    if (!std::is_same_v<K, Real64>) refused(r64.made);
    refused(t32.made);
    refused(t64.made);
    refused(std::vector<Vek64s>(16).data());
    vek::setSlotForTest(0);
    auto foreign = makeFft<K>(int(n), vekxScaleNone);
    vek::setSlotForTest(slot);
    if (slot == 6) {
      EXPECT_EQ(K::forward(x.data(), y, foreign.made, foreign.work), vekStsContextMatchErr);
    }
    EXPECT_TRUE(y.untouched() && vektest::sameVectors(x, before));
  });
}

TYPED_TEST(Fft, AllocatesOnlyWhatIsNotGiven) {
  using K = TypeParam;
  inEverySlot([](int) {
    for (size_t n : {1, 16, 101, 1009, 4096}) {
      auto b = makeFft<K>(int(n), vekxScaleNone);
      std::vector<typename K::X> x = samples<typename K::X>(2 * n + 2);
      std::vector<typename K::Y> y(n + 1), z(n + 1);
      const Vek64s rows = kReal<K> ? Vek64s(n / 2 + 1) : Vek64s(n);
      EXPECT_EQ(withoutMemory([&] { return K::forward(x.data(), y.data(), b.made, b.work); }), vekStsNoErr);
      EXPECT_EQ(
          withoutMemory([&] { return K::forwardMany(x.data(), y.data(), 1, 1, Vek64s(n), 1, rows, b.made, b.many); }),
          vekStsNoErr);
      EXPECT_EQ(K::forward(x.data(), y.data(), b.made, nullptr), vekStsNoErr);
      EXPECT_EQ(K::forward(x.data(), z.data(), b.made, b.work), vekStsNoErr);
      EXPECT_TRUE(vektest::sameVectors(y, z));
      std::fill(y.begin(), y.end(), typename K::Y{});
      const VekStatus s = withoutMemory([&] { return K::forward(x.data(), y.data(), b.made, nullptr); });
      EXPECT_TRUE(s == vekStsNoErr ||
                  (s == vekStsMemAllocErr && vektest::sameVectors(y, std::vector<typename K::Y>(n + 1))));
    }
  });
}

// A spec is what its arguments say and nothing else, wherever it lies, and threads read it at the same time.
TYPED_TEST(Fft, SpecsAreCopiedAndShared) {
  using K = TypeParam;
  using X = typename K::X;
  using Y = typename K::Y;
  for (size_t n : {16, 100, 1009, 4096}) {
    typename K::Spec* heap = nullptr;
    ASSERT_EQ(K::initAlloc(&heap, int(n), vekxScaleBoth), vekStsNoErr);
    auto b = makeFft<K>(int(n), vekxScaleBoth, {Flush::kFront, 3}),
         again = makeFft<K>(int(n), vekxScaleBoth, {Flush::kFront, 3});
    auto moved = makeFft<K>(3, vekxScaleNone, {Flush::kFront, 3});
    const std::vector<Vek8u> bytes = b.spec.values();
    Bytes copy(bytes, Flush::kFront, 3);
    auto* const copied = reinterpret_cast<typename K::Spec*>(
        copy.data() + (reinterpret_cast<char*>(b.made) - reinterpret_cast<char*>(b.spec.data())));
    EXPECT_EQ(bytes, again.spec.values());
    const std::vector<X> x = samples<X>(n);
    std::vector<Y> want(n);
    ASSERT_EQ(K::forward(x.data(), want.data(), heap, nullptr), vekStsNoErr);
    EXPECT_EQ(K::free(b.made), vekStsNoErr);
    EXPECT_EQ(K::free(copied), vekStsNoErr);  // neither is on the heap
    std::vector<std::vector<Y>> got(8, std::vector<Y>(n));
    std::vector<std::thread> threads;
    for (size_t t = 0; t < got.size(); ++t)
      threads.emplace_back(
          [&, t] { (void)K::forward(x.data(), got[t].data(), t % 2 == 0 ? b.made : copied, nullptr); });
    for (std::thread& t : threads) t.join();
    for (const auto& y : got) EXPECT_TRUE(vektest::sameVectors(y, want));
    EXPECT_TRUE(copy.intact());
    EXPECT_EQ(K::free(heap), vekStsNoErr);
  }
}

// ---- products and lengths
// --------------------------------------------------------------------------------------------

template <class C>
struct Products;
#define VEKX_PRODUCTS(C, R)                                                                                 \
  template <>                                                                                               \
  struct Products<Vek##C> {                                                                                 \
    using Part = Vek##R;                                                                                    \
    static constexpr auto mul = vekxFFTMul_##C, mulAdd = vekxFFTMulAdd_##C, mulConj = vekxFFTMulConj_##C,   \
                          mulConjAdd = vekxFFTMulConjAdd_##C;                                               \
    static constexpr auto mulI = vekxFFTMul_##C##_I, mulConjI = vekxFFTMulConj_##C##_I;                     \
    static constexpr auto mulPack = vekxFFTMulPack_##R, mulAddPack = vekxFFTMulAddPack_##R,                 \
                          mulConjPack = vekxFFTMulConjPack_##R, mulConjAddPack = vekxFFTMulConjAddPack_##R; \
    static constexpr auto mulPackI = vekxFFTMulPack_##R##_I, mulConjPackI = vekxFFTMulConjPack_##R##_I;     \
  };
VEKX_PRODUCTS(32fc, 32f)
VEKX_PRODUCTS(64fc, 64f)

template <class R>
void productOf(const R* a, const R* b, R* out, bool conjugate, bool add) {
  const R im = conjugate ? -a[1] : a[1];
  const R re = a[0] * b[0] - im * b[1], other = a[0] * b[1] + im * b[0];
  out[0] = add ? out[0] + re : re;
  out[1] = add ? out[1] + other : other;
}
// Parts of bins as the functions are to leave them; `real` of the first are real numbers.
template <class R>
std::vector<R> multiplied(const std::vector<R>& a, const std::vector<R>& b, std::vector<R> out, bool packed,
                          bool conjugate, bool add) {
  const auto real = [&](size_t i) { out[i] = add ? out[i] + a[i] * b[i] : a[i] * b[i]; };
  if (packed) real(0);
  size_t i = packed;
  for (; i + 1 < a.size(); i += 2) productOf(&a[i], &b[i], &out[i], conjugate, add);
  if (i < a.size()) real(i);
  return out;
}

template <class C>
void checkProducts() {
  using P = Products<C>;
  using R = typename P::Part;
  for (int len : {1, 2, 3, 4, 5, 6, 7, 8, 9, 15, 16, 17, 18, 31, 33, 64, 101, 1000}) {
    for (bool packed : {false, true}) {
      const size_t parts = size_t(len) * (packed ? 1 : 2);
      const std::vector<R> a = vektest::randomVector<R>(parts), b = vektest::randomVector<R>(parts),
                           c = vektest::randomVector<R>(parts);
      inEverySlot([&](int) {
        SCOPED_TRACE(len);
        Guarded<R> x(a), y(b), out(parts);
        const auto run = [&](auto whole, auto pack, bool conjugate, bool add) {
          if (add) out.assign(c);
          ASSERT_EQ(packed ? pack(x, y, out, len) : whole((const C*)x.data(), (const C*)y.data(), (C*)out.data(), len),
                    vekStsNoErr);
          EXPECT_TRUE(vektest::sameVectors(out.values(), multiplied(a, b, c, packed, conjugate, add)));
        };
        const auto runInPlace = [&](auto whole, auto pack, bool conjugate) {
          out.assign(b);
          ASSERT_EQ(packed ? pack(x, out, len) : whole((const C*)x.data(), (C*)out.data(), len), vekStsNoErr);
          EXPECT_TRUE(vektest::sameVectors(out.values(), multiplied(a, b, c, packed, conjugate, false)));
        };
        run(P::mul, P::mulPack, false, false);
        run(P::mulAdd, P::mulAddPack, false, true);
        run(P::mulConj, P::mulConjPack, true, false);
        run(P::mulConjAdd, P::mulConjAddPack, true, true);
        runInPlace(P::mulI, P::mulPackI, false);
        runInPlace(P::mulConjI, P::mulConjPackI, true);
        EXPECT_TRUE(x.intact() && y.intact() && out.intact());
      });
    }
  }
}
TEST(Spectra, AreMultipliedAsStated) {
  checkProducts<Vek32fc>();
  checkProducts<Vek64fc>();
}

TEST(FastLength, IsTheNextWithoutLargePrimes) {
  const auto smooth = [](int n) {
    for (int p : {2, 3, 5, 7})
      while (n % p == 0) n /= p;
    return n == 1;
  };
  int len = -1;
  EXPECT_EQ(vekxFFTGetFastLen(1, nullptr), vekStsNullPtrErr);
  for (int bad : {0, -1, (1 << 27) + 1, INT32_MAX}) EXPECT_EQ(vekxFFTGetFastLen(bad, &len), vekStsSizeErr);
  EXPECT_EQ(len, -1);
  for (int from : {1, 40000000, (1 << 27) - 3000}) {
    int next = from;
    for (int n = from; n < from + 3000; ++n) {
      while (next < n || !smooth(next)) ++next;
      ASSERT_EQ(vekxFFTGetFastLen(n, &len), vekStsNoErr);
      ASSERT_EQ(len, next) << n;
    }
  }
}

// ---- cosine and sine transforms
// --------------------------------------------------------------------------------------

// Row k, column j of the matrix of a type.
class TrigMatrix {
 public:
  TrigMatrix(VekxTrigType type, size_t n, bool ortho) : type_(type), n_(n), ortho_(ortho), period_(8 * (n + 1)) {
    const Wide unit = kPi / (4 * Wide(order()));
    for (size_t i = 0; i < 8 * order(); ++i) cosine_.push_back(std::cos(unit * Wide(i)));
  }
  Wide operator()(size_t k, size_t j) const {
    const bool first = j == 0, last = j == n_ - 1;
    Wide v = 0;
    switch (type_) {
      case vekxDCT1:
        v = wave(4 * k * j, 0) * (first || last ? 1 : 2);
        if (ortho_) v *= (first || last ? std::sqrt(Wide(2)) : 1) / (k == 0 || k == n_ - 1 ? std::sqrt(Wide(2)) : 1);
        break;
      case vekxDCT2:
        v = 2 * wave(2 * k * (2 * j + 1), 0) / (ortho_ && k == 0 ? std::sqrt(Wide(2)) : 1);
        break;
      case vekxDCT3:
        v = wave(2 * (2 * k + 1) * j, 0) * (first ? (ortho_ ? std::sqrt(Wide(2)) : 1) : 2);
        break;
      case vekxDCT4:
        v = 2 * wave((2 * k + 1) * (2 * j + 1), 0);
        break;
      case vekxDST1:
        v = 2 * wave(4 * (k + 1) * (j + 1), 1);
        break;
      case vekxDST2:
        v = 2 * wave(2 * (k + 1) * (2 * j + 1), 1) / (ortho_ && k == n_ - 1 ? std::sqrt(Wide(2)) : 1);
        break;
      case vekxDST3:
        v = wave(2 * (2 * k + 1) * (j + 1), 1) * (last ? (ortho_ ? std::sqrt(Wide(2)) : 1) : 2);
        break;
      default:
        v = 2 * wave((2 * k + 1) * (2 * j + 1), 1);
    }
    return ortho_ ? v / std::sqrt(divisor()) : v;
  }
  // What a plain transform and its inverse multiply by together.
  Wide divisor() const { return 2 * Wide(order()); }

 private:
  size_t order() const { return type_ == vekxDCT1 ? n_ - 1 : type_ == vekxDST1 ? n_ + 1 : n_; }
  // cos or sin of pi i / (4 order).
  Wide wave(size_t i, size_t sine) const { return cosine_[(i + sine * 6 * order()) % (8 * order())]; }
  VekxTrigType type_;
  size_t n_;
  bool ortho_;
  size_t period_;
  std::vector<Wide> cosine_;
};
VekxTrigType inverseType(VekxTrigType type) {
  switch (type) {
    case vekxDCT2:
      return vekxDCT3;
    case vekxDCT3:
      return vekxDCT2;
    case vekxDST2:
      return vekxDST3;
    case vekxDST3:
      return vekxDST2;
    default:
      return type;
  }
}
Numbers product(const TrigMatrix& m, const std::vector<float>& x) {
  Numbers y(x.size());
  for (size_t k = 0; k < x.size(); ++k) {
    Wide sum = 0;
    for (size_t j = 0; j < x.size(); ++j) sum += m(k, j) * Wide(x[j]);
    y[k] = sum;
  }
  return y;
}

template <class T>
void checkTrig(size_t n, VekxTrigType type, bool ortho, const std::vector<float>& data, const Numbers& want,
               const Numbers& wantBack, int slot) {
  SCOPED_TRACE(testing::Message() << n << " type " << type << (ortho ? " orthonormal" : " plain"));
  const Place place = placeFor(n, slot);
  const std::vector<T> x(data.begin(), data.end());
  const Wide limit = 2 * bound<T>(2 * n + 2);
  auto b = makeTrig<T>(int(n), type, ortho, place);
  Guarded<T> in(x, place.flush), out(n, place.flush), back(n, place.flush), both(x), again(x);
  ASSERT_EQ(Trig<T>::forward(in, out, b.made, b.work), vekStsNoErr);
  ASSERT_EQ(Trig<T>::inverse(in, back, b.made, b.work), vekStsNoErr);
  ASSERT_EQ(Trig<T>::forwardInPlace(both, b.made, b.work), vekStsNoErr);
  ASSERT_EQ(Trig<T>::inverseInPlace(again, b.made, b.work), vekStsNoErr);
  EXPECT_LE(relativeError(out.values(), want), limit);
  EXPECT_LE(relativeError(back.values(), wantBack), limit);
  EXPECT_TRUE(vektest::sameVectors(both.values(), out.values()) && vektest::sameVectors(again.values(), back.values()));
  EXPECT_TRUE(vektest::sameVectors(in.values(), x));
  EXPECT_TRUE(b.intact() && in.intact() && out.intact() && back.intact() && both.intact() && again.intact());
}

TEST(Trig, EveryShortLengthMatchesTheDefinition) {
  for (size_t n = 1; n <= (thorough() ? 1024 : 130); ++n) {
    const std::vector<float> x = samples<float>(n);
    for (VekxTrigType type = n == 1 ? vekxDCT2 : vekxDCT1; type <= vekxDST4; ++type) {
      for (bool ortho : {false, true}) {
        const TrigMatrix m(type, n, ortho), inverse(inverseType(type), n, ortho);
        const Numbers want = product(m, x);
        Numbers back = product(inverse, x);
        if (!ortho)
          for (Number& v : back) v /= m.divisor();
        inEverySlot([&](int slot) {
          checkTrig<float>(n, type, ortho, x, want, back, slot);
          checkTrig<double>(n, type, ortho, x, want, back, slot);
        });
      }
    }
  }
}

template <class T>
void checkLongTrig(size_t n, VekxTrigType type) {
  SCOPED_TRACE(testing::Message() << n << " type " << type);
  const std::vector<float> data = samples<float>(n);
  const std::vector<T> x(data.begin(), data.end());
  const Wide limit = 2 * bound<T>(2 * n + 2);
  const TrigMatrix m(type, n, true);
  Wide energy = 0;
  for (T v : x) energy += Wide(v) * v;
  inEverySlot([&](int slot) {
    if (slot != 0 && slot != 4 && slot != 6) return;
    auto b = makeTrig<T>(int(n), type, vekxTrigOrtho);
    Guarded<T> in(x), out(n), back(n);
    ASSERT_EQ(Trig<T>::forward(in, out, b.made, b.work), vekStsNoErr);
    ASSERT_EQ(Trig<T>::inverse(out, back, b.made, b.work), vekStsNoErr);
    for (size_t k : {size_t(0), size_t(1), n / 3, n - 1}) {
      Wide want = 0;
      for (size_t j = 0; j < n; ++j) want += m(k, j) * Wide(x[j]);
      EXPECT_LE(std::abs(out.at(k) - want), 6 * limit * std::sqrt(energy / Wide(n))) << k;
    }
    EXPECT_LE(relativeError(back.values(), numbers(x)), 2 * limit);
    EXPECT_TRUE(b.intact() && in.intact() && out.intact() && back.intact());
  });
}
TEST(Trig, LongLengths) {
  for (size_t n : {997, 1000, 2048, 4801, 30000, 65536})
    for (VekxTrigType type = vekxDCT1; type <= vekxDST4; ++type)
      checkLongTrig<float>(n, type), checkLongTrig<double>(n, type);
}

template <class T>
void checkManyTrig(size_t n, VekxTrigType type) {
  for (size_t count : {1, 3, 16, 37}) {
    const std::vector<T> x = samples<T>(n * count);
    inEverySlot([&](int slot) {
      SCOPED_TRACE(testing::Message() << n << " x " << count << " type " << type);
      const Place place = placeFor(n + count, slot);
      auto b = makeTrig<T>(int(n), type, vekxTrigPlain, place);
      std::vector<T> y(n * count), z(n * count);
      for (size_t t = 0; t < count; ++t) {
        ASSERT_EQ(Trig<T>::forward(x.data() + t * n, y.data() + t * n, b.made, b.work), vekStsNoErr);
        ASSERT_EQ(Trig<T>::inverse(y.data() + t * n, z.data() + t * n, b.made, b.work), vekStsNoErr);
      }
      for (Shape from : kShapes) {
        const Layout lx = layoutOf(from, count, n), ly = layoutOf(kShapes[(size_t(from) + count) % 4], count, n);
        Guarded<T> in(laidOut(x, count, lx), place.flush), out(ly.extent(count, n), place.flush);
        ASSERT_EQ(Trig<T>::forwardMany(in, out, Vek64s(count), lx.stride, lx.distance, ly.stride, ly.distance, b.made,
                                       b.many),
                  vekStsNoErr);
        expectRows(out, y, count, ly, 2 * bound<T>(n));
        ASSERT_EQ(Trig<T>::inverseManyInPlace(out, Vek64s(count), ly.stride, ly.distance, b.made, b.many), vekStsNoErr);
        expectRows(out, z, count, ly, 4 * bound<T>(n));
        EXPECT_TRUE(b.intact() && in.intact());
      }
    });
  }
}
TEST(Trig, ManyAreWhatSingleOnesAre) {
  for (size_t n : {2, 9, 16, 30, 100})
    for (VekxTrigType type = vekxDCT1; type <= vekxDST4; ++type)
      checkManyTrig<float>(n, type), checkManyTrig<double>(n, type);
}

template <class T>
void checkTrigRefusals() {
  using K = Trig<T>;
  inEverySlot([](int) {
    Vek64s a = -1, w = -1, m = -1;
    Vek8u byte = 42;
    typename K::Spec* spec = nullptr;
    EXPECT_EQ(K::getSize(0, 0, nullptr, &w, &m), vekStsNullPtrErr);
    EXPECT_EQ(K::init(nullptr, 0, 0, 9, &byte), vekStsNullPtrErr);
    EXPECT_EQ(K::init(&spec, 0, 0, 9, nullptr), vekStsNullPtrErr);
    const struct {
      int len;
      VekxTrigType type;
    } lengths[] = {
        {0, 0}, {-1, vekxDCT2}, {1, vekxDCT1}, {(1 << 27) + 1, 0}, {(1 << 26) + 2, vekxDCT1}, {1 << 26, vekxDST1}};
    for (const auto& l : lengths) {
      EXPECT_EQ(K::getSize(l.len, l.type, &a, &w, &m), vekStsSizeErr) << l.len;
      EXPECT_EQ(K::init(&spec, l.len, l.type, vekxTrigPlain, &byte), vekStsSizeErr) << l.len;
      EXPECT_EQ(K::initAlloc(&spec, l.len, l.type, vekxTrigPlain), vekStsSizeErr) << l.len;
    }
    for (VekxTrigType type : {0, 9, -1}) {
      EXPECT_EQ(K::getSize(8, type, &a, &w, &m), vekStsFftFlagErr);
      EXPECT_EQ(K::init(&spec, 8, type, vekxTrigPlain, &byte), vekStsFftFlagErr);
    }
    EXPECT_EQ(K::initAlloc(&spec, 8, vekxDCT2, 2), vekStsFftFlagErr);
    EXPECT_EQ(K::initAlloc(&spec, 8, vekxDCT2, -1), vekStsFftFlagErr);
    EXPECT_EQ(withoutMemory([&] { return K::initAlloc(&spec, 8, vekxDCT2, vekxTrigPlain); }), vekStsMemAllocErr);
    EXPECT_TRUE(a == -1 && w == -1 && m == -1 && byte == 42 && spec == nullptr);
    EXPECT_EQ(K::getSize((1 << 26) + 1, vekxDCT1, &a, &w, &m), vekStsNoErr);
    EXPECT_EQ(K::getSize((1 << 26) - 1, vekxDST1, &a, &w, &m), vekStsNoErr);

    auto b = makeTrig<T>(8, vekxDCT2, vekxTrigPlain);
    auto other = makeFft<std::conditional_t<std::is_same_v<T, float>, Real32, Real64>>(8, vekxScaleNone);
    auto* const wrong = reinterpret_cast<typename K::Spec*>(other.made);
    std::vector<T> x = samples<T>(32);
    Guarded<T> y(32);
    EXPECT_EQ(K::forward(nullptr, y, b.made, b.work), vekStsNullPtrErr);
    EXPECT_EQ(K::forward(x.data(), nullptr, b.made, b.work), vekStsNullPtrErr);
    EXPECT_EQ(K::forward(x.data(), y, nullptr, b.work), vekStsNullPtrErr);
    EXPECT_EQ(K::forward(x.data(), y, wrong, b.work), vekStsContextMatchErr);
    EXPECT_EQ(K::free(wrong), vekStsContextMatchErr);
    EXPECT_EQ(K::forwardMany(x.data(), y, 0, 0, 0, 0, 0, wrong, b.many), vekStsContextMatchErr);
    EXPECT_EQ(K::forwardMany(x.data(), y, 0, 0, 0, 0, 0, b.made, b.many), vekStsSizeErr);
    EXPECT_EQ(K::forwardMany(x.data(), y, 2, 1, 8, 1, 7, b.made, b.many), vekStsStrideErr);
    EXPECT_EQ(K::forwardMany(x.data(), y, 2, 1, 0, 1, 8, b.made, b.many), vekStsStrideErr);
    EXPECT_EQ(withoutMemory([&] { return K::forward(x.data(), y, b.made, nullptr); }), vekStsMemAllocErr);
    EXPECT_TRUE(y.untouched());
    EXPECT_EQ(withoutMemory([&] { return K::forward(x.data(), y, b.made, b.work); }), vekStsNoErr);
    ASSERT_EQ(K::initAlloc(&spec, 8, vekxDST4, vekxTrigOrtho), vekStsNoErr);
    EXPECT_EQ(K::free(spec), vekStsNoErr);
  });
}
TEST(Trig, RefusesInTheStatedOrder) {
  checkTrigRefusals<float>();
  checkTrigRefusals<double>();
}

}  // namespace
