// SPDX-License-Identifier: Apache-2.0
// Copying, setting, reordering, logic and shifts against their definitions, in every slot.
#include <algorithm>
#include <functional>

#include "support/data.h"
#include "support/guarded.h"
#include "support/slots.h"

namespace vektest {
namespace {

// One unary operation: the call, and what it means for one whole vector. Checked out of place and, where there is such
// a form, in place, at every length, flush against both guard pages, and off every alignment.
template <class S, class D>
struct Unary {
  std::string name;
  std::function<VekStatus(const S*, D*, int)> call;
  std::function<std::vector<D>(const std::vector<S>&)> meaning;
  std::function<VekStatus(D*, int)> inPlace = nullptr;
};

template <class S, class D>
void check(const Unary<S, D>& f, std::vector<int> lengths = sweepLengths()) {
  inEverySlot([&](int) {
    for (int n : lengths) {
      const std::vector<S> x = mixedVector<S>(size_t(n));
      const std::vector<D> want = f.meaning(x);
      for (Flush flush : {Flush::kBack, Flush::kFront})
        for (size_t shift : {size_t(0), size_t(n % 37)}) {
          SCOPED_TRACE(f.name + " n=" + std::to_string(n) + " shift=" + std::to_string(shift));
          Guarded<S> src(x, flush, shift);
          Guarded<D> dst(want.size(), flush, size_t(n % 31));
          ASSERT_EQ(f.call(src, dst, n), vekStsNoErr);
          ASSERT_TRUE(sameVectors(dst.values(), want));
          ASSERT_TRUE(dst.intact() && src.intact());
          ASSERT_TRUE(sameVectors(src.values(), x)) << "source changed";
          if (f.inPlace) {
            std::vector<D> y(want.size());
            memcpy(y.data(), x.data(), y.size() * sizeof(D));
            Guarded<D> both(y, flush, shift);
            ASSERT_EQ(f.inPlace(both, n), vekStsNoErr);
            ASSERT_TRUE(sameVectors(both.values(), want)) << "in place";
            ASSERT_TRUE(both.intact());
          }
        }
    }
  });
}

template <class T>
std::vector<T> reversed(std::vector<T> x) {
  std::reverse(x.begin(), x.end());
  return x;
}

template <class T>
void checkCopyAndMove(const char* type, VekStatus (*copy)(const T*, T*, int), VekStatus (*move)(const T*, T*, int)) {
  const auto same = [](const std::vector<T>& x) { return x; };
  check<T, T>({std::string("Copy_") + type, copy, same}, sweepLengths(40, 300));
  check<T, T>({std::string("Move_") + type, move, same}, sweepLengths(40, 300));
  inEverySlot([&](int) {
    for (int shift : {-17, -1, 1, 5, 33}) {
      std::vector<T> x = randomVector<T>(200), want = x;
      std::copy(x.begin() + 50, x.begin() + 150, want.begin() + 50 + shift);
      if (shift > 0) std::copy_backward(x.begin() + 50, x.begin() + 150, want.begin() + 150 + shift);
      ASSERT_EQ(move(x.data() + 50, x.data() + 50 + shift, 100), vekStsNoErr);
      ASSERT_EQ(memcmp(x.data(), want.data(), x.size() * sizeof(T)), 0) << type << " moved by " << shift;
    }
  });
}
}  // namespace
}  // namespace vektest

// mixedVector knows real types only; complex data needs no special values to be copied.
namespace vektest {
#define VEK_COMPLEX_MIX(T)                  \
  template <>                               \
  std::vector<T> mixedVector<T>(size_t n) { \
    return randomVector<T>(n);              \
  }
VEK_COMPLEX_MIX(Vek16sc)
VEK_COMPLEX_MIX(Vek32sc)
VEK_COMPLEX_MIX(Vek64sc)
VEK_COMPLEX_MIX(Vek64fc)
#undef VEK_COMPLEX_MIX
template <>
std::vector<Vek32fc> mixedVector<Vek32fc>(size_t n) {
  const std::vector<float> x = mixedVector<float>(2 * n);
  std::vector<Vek32fc> v(n);
  memcpy(v.data(), x.data(), n * sizeof(Vek32fc));
  return v;
}

namespace {

TEST(Vector, CopyAndMove) {
#define VEK_CASE(T) checkCopyAndMove<Vek##T>(#T, veksCopy_##T, veksMove_##T);
  VEK_CASE(8u)
  VEK_CASE(16s)
  VEK_CASE(32s)
  VEK_CASE(32f) VEK_CASE(64s) VEK_CASE(64f) VEK_CASE(16sc) VEK_CASE(32sc) VEK_CASE(32fc) VEK_CASE(64sc) VEK_CASE(64fc)
#undef VEK_CASE
}

TEST(Vector, CopyBits) {
  const auto bit = [](const std::vector<Vek8u>& x, int64_t i) { return x[size_t(i >> 3)] >> (7 - (i & 7)) & 1; };
  inEverySlot([&](int) {
    for (int len :
         {1, 2, 5, 7, 8, 9, 15, 16, 17, 31, 63, 64, 65, 200, 256, 257, 263, 264, 300, 511, 512, 520, 1000, 4099})
      for (int from = 0; from < 8; ++from)
        for (int to = 0; to < 8; ++to) {
          const std::vector<Vek8u> x = randomVector<Vek8u>(size_t(from + len + 7) / 8);
          const std::vector<Vek8u> y = randomVector<Vek8u>(size_t(to + len + 7) / 8);
          std::vector<Vek8u> want = y;
          for (int i = 0; i < len; ++i) {
            const int64_t at = to + i;
            const int mask = 0x80 >> (at & 7);
            want[size_t(at >> 3)] = Vek8u((want[size_t(at >> 3)] & ~mask) | (bit(x, from + i) ? mask : 0));
          }
          Guarded<Vek8u> src(x), dst(y);
          ASSERT_EQ(veksCopy_1u(src, from + 8 * (len % 3), dst, to + 16, len), vekStsNoErr);
          ASSERT_TRUE(sameVectors(dst.values(), want)) << len << " bits from " << from << " to " << to;
          ASSERT_TRUE(dst.intact());
        }
    Vek8u a = 0, b = 0;
    EXPECT_EQ(veksCopy_1u(&a, -1, &b, 0, 8), vekStsSizeErr);
    EXPECT_EQ(veksCopy_1u(&a, 0, &b, -1, 8), vekStsSizeErr);
    EXPECT_EQ(veksCopy_1u(nullptr, -1, &b, 0, 8), vekStsNullPtrErr);
  });
}

template <class T>
void checkFill(const char* type, VekStatus (*zero)(T*, int), VekStatus (*set)(T, T*, int), T val) {
  inEverySlot([&](int) {
    for (int n : sweepLengths())
      for (size_t shift : {size_t(0), size_t(n % 29)}) {
        Guarded<T> a(size_t(n), Flush::kBack, shift), b(size_t(n), Flush::kFront, shift);
        ASSERT_EQ(set(val, a, n), vekStsNoErr);
        ASSERT_EQ(zero(b, n), vekStsNoErr);
        T none;
        memset(&none, 0, sizeof(T));
        for (int i = 0; i < n; ++i) {
          const T x = a.at(size_t(i)), y = b.at(size_t(i));
          ASSERT_EQ(memcmp(&x, &val, sizeof(T)), 0) << type << " n=" << n << " element " << i;
          ASSERT_EQ(memcmp(&y, &none, sizeof(T)), 0) << type << " n=" << n << " element " << i;
        }
        ASSERT_TRUE(a.intact() && b.intact()) << type << " n=" << n;
      }
  });
}

TEST(Vector, SetAndZero) {
  float strangeNaN;
  const uint32_t pattern = 0x7F812345;  // a signalling NaN must arrive as it left
  memcpy(&strangeNaN, &pattern, 4);
  checkFill<Vek8u>("8u", veksZero_8u, veksSet_8u, 0x9C);
  checkFill<Vek16s>("16s", veksZero_16s, veksSet_16s, -12345);
  checkFill<Vek32s>("32s", veksZero_32s, veksSet_32s, -123456789);
  checkFill<Vek32f>("32f", veksZero_32f, veksSet_32f, strangeNaN);
  checkFill<Vek32sc>("32sc", veksZero_32sc, veksSet_32sc, {1, -2});
  checkFill<Vek32fc>("32fc", veksZero_32fc, veksSet_32fc, {-0.0f, strangeNaN});
}

TEST(Vector, Flip) {
#define VEK_CASE(T) check<Vek##T, Vek##T>({"Flip_" #T, veksFlip_##T, reversed<Vek##T>, veksFlip_##T##_I});
  VEK_CASE(8u)
  VEK_CASE(16u)
  VEK_CASE(32f)
  VEK_CASE(32fc)
#undef VEK_CASE
  std::vector<Vek32f> x = {1, 2, 3, 4, 5};
  EXPECT_EQ(veksFlip_32f(x.data(), x.data(), 5), vekStsNoErr);
  EXPECT_TRUE(sameVectors(x, {5, 4, 3, 2, 1}));
}

template <class T, int Bytes>
std::vector<T> bytesSwapped(const std::vector<T>& x) {
  std::vector<T> y = x;
  char* p = reinterpret_cast<char*>(y.data());
  for (size_t i = 0; i + Bytes <= y.size() * sizeof(T); i += Bytes) std::reverse(p + i, p + i + Bytes);
  return y;
}

TEST(Vector, SwapBytes) {
  check<Vek16u, Vek16u>({"SwapBytes_16u", veksSwapBytes_16u, bytesSwapped<Vek16u, 2>, veksSwapBytes_16u_I});
  check<Vek32u, Vek32u>({"SwapBytes_32u", veksSwapBytes_32u, bytesSwapped<Vek32u, 4>, veksSwapBytes_32u_I});
  check<Vek64u, Vek64u>({"SwapBytes_64u", veksSwapBytes_64u, bytesSwapped<Vek64u, 8>, veksSwapBytes_64u_I});
  std::vector<int> bytes;
  for (int n : sweepLengths(70, 520)) bytes.push_back(3 * n);
  check<Vek8u, Vek8u>({"SwapBytes_24u", [](const Vek8u* s, Vek8u* d, int n) { return veksSwapBytes_24u(s, d, n / 3); },
                       bytesSwapped<Vek8u, 3>, [](Vek8u* d, int n) { return veksSwapBytes_24u_I(d, n / 3); }},
                      bytes);
}

TEST(Vector, ComplexParts) {
  using C = Vek32fc;
  const auto part = [](auto get) {
    return [get](const std::vector<C>& x) {
      std::vector<float> y;
      for (const C& c : x) y.push_back(get(c));
      return y;
    };
  };
  const auto re = part([](C c) { return c.re; });
  const auto im = part([](C c) { return c.im; });
  check<C, float>({"Real", veksReal_32fc, re});
  check<C, float>({"Imag", veksImag_32fc, im});
  // Both outputs side by side in one vector, so that the one helper checks them.
  check<C, float>({"CplxToReal", [](const C* s, float* d, int n) { return veksCplxToReal_32fc(s, d, d + n, n); },
                   [&](const std::vector<C>& x) {
                     std::vector<float> y = re(x);
                     const std::vector<float> z = im(x);
                     y.insert(y.end(), z.begin(), z.end());
                     return y;
                   }});
  const auto joined = [](bool hasRe, bool hasIm) {
    return [=](const std::vector<float>& x) {
      std::vector<C> y;
      for (float v : x) y.push_back({hasRe ? v : 0.0f, hasIm ? v : 0.0f});
      return y;
    };
  };
  check<float, C>(
      {"RealToCplx", [](const float* s, C* d, int n) { return veksRealToCplx_32f(s, s, d, n); }, joined(true, true)});
  check<float, C>({"RealToCplx re", [](const float* s, C* d, int n) { return veksRealToCplx_32f(s, nullptr, d, n); },
                   joined(true, false)});
  check<float, C>({"RealToCplx im", [](const float* s, C* d, int n) { return veksRealToCplx_32f(nullptr, s, d, n); },
                   joined(false, true)});
  C one;
  float x = 0;
  EXPECT_EQ(veksRealToCplx_32f(nullptr, nullptr, &one, 0), vekStsSizeErr);
  EXPECT_EQ(veksRealToCplx_32f(nullptr, nullptr, &one, 1), vekStsNullPtrErr);
  EXPECT_EQ(veksRealToCplx_32f(&x, &x, nullptr, 0), vekStsNullPtrErr);
}

TEST(Vector, Conjugate) {
  const auto conj = [](std::vector<Vek32fc> x) {
    for (Vek32fc& c : x) c.im = 0.0f - c.im;
    return x;
  };
  check<Vek32fc, Vek32fc>({"Conj", veksConj_32fc, conj, veksConj_32fc_I});
  check<Vek32fc, Vek32fc>(
      {"ConjFlip", veksConjFlip_32fc, [&](const std::vector<Vek32fc>& x) { return reversed(conj(x)); }});
}

// ---- logic ---------------------------------------------------------------------------------------------------------

template <class T>
void checkLogic(const std::string& name, std::function<T(T, T)> op, VekStatus (*both)(const T*, const T*, T*, int),
                VekStatus (*bothInPlace)(const T*, T*, int), VekStatus (*constant)(const T*, T, T*, int),
                VekStatus (*constantInPlace)(T, T*, int)) {
  const std::vector<T> second = randomVector<T>(1200);
  check<T, T>({name, [&](const T* s, T* d, int n) { return both(s, second.data(), d, n); },
               [&](std::vector<T> x) {
                 for (size_t i = 0; i < x.size(); ++i) x[i] = op(x[i], second[i]);
                 return x;
               },
               [&](T* d, int n) { return bothInPlace(second.data(), d, n); }});
  for (T val : {T(0), T(0x5A), T(-1)}) {
    check<T, T>({name + "C", [&](const T* s, T* d, int n) { return constant(s, val, d, n); },
                 [&](std::vector<T> x) {
                   for (T& v : x) v = op(v, val);
                   return x;
                 },
                 [&](T* d, int n) { return constantInPlace(val, d, n); }},
                sweepLengths(70, 300));
  }
}

template <class T>
void checkShift(const std::string& name, bool left, VekStatus (*call)(const T*, int, T*, int),
                VekStatus (*inPlace)(int, T*, int)) {
  const int width = int(8 * sizeof(T));
  for (int val = 0; val <= width + 3; ++val) {
    check<T, T>({name, [&](const T* s, T* d, int n) { return call(s, val, d, n); },
                 [&](std::vector<T> x) {
                   for (T& v : x)
                     v = left ? T(val >= width ? 0 : int64_t(v) * (int64_t(1) << val)) : T(int64_t(v) >> val);
                   return x;
                 },
                 [&](T* d, int n) { return inPlace(val, d, n); }},
                {1, 7, 31, 32, 33, 64, 100, 257});
  }
}

TEST(Logic, Bitwise) {
#define VEK_CASE(T)                                                                                                \
  checkLogic<Vek##T>("And", std::bit_and<Vek##T>(), veksAnd_##T, veksAnd_##T##_I, veksAndC_##T, veksAndC_##T##_I); \
  checkLogic<Vek##T>("Or", std::bit_or<Vek##T>(), veksOr_##T, veksOr_##T##_I, veksOrC_##T, veksOrC_##T##_I);       \
  checkLogic<Vek##T>("Xor", std::bit_xor<Vek##T>(), veksXor_##T, veksXor_##T##_I, veksXorC_##T, veksXorC_##T##_I); \
  check<Vek##T, Vek##T>({"Not", veksNot_##T,                                                                       \
                         [](std::vector<Vek##T> x) {                                                               \
                           for (auto& v : x) v = Vek##T(~v);                                                       \
                           return x;                                                                               \
                         },                                                                                        \
                         veksNot_##T##_I});
  VEK_CASE(8u) VEK_CASE(16u) VEK_CASE(32u)
#undef VEK_CASE
}

TEST(Logic, Shifts) {
#define VEK_CASE(T)                                                              \
  checkShift<Vek##T>("LShiftC_" #T, true, veksLShiftC_##T, veksLShiftC_##T##_I); \
  checkShift<Vek##T>("RShiftC_" #T, false, veksRShiftC_##T, veksRShiftC_##T##_I);
  VEK_CASE(8u) VEK_CASE(16s) VEK_CASE(32s)
#undef VEK_CASE
}

// The short cuts decide which checks run.
TEST(Logic, OrderOfChecks) {
  inEverySlot([](int) {
    Vek8u b[2] = {7, 7};
    Vek16s h[2] = {-5, 7};
    Vek32s w[2] = {-5, 7};
    EXPECT_EQ(veksAndC_8u(b, 0, nullptr, 0), vekStsNullPtrErr);
    EXPECT_EQ(veksAndC_8u(nullptr, 0, b, 0), vekStsNullPtrErr);
    EXPECT_EQ(veksAndC_8u(b, 0, b, 0), vekStsSizeErr);
    EXPECT_EQ(veksOrC_8u(b, 0, nullptr, 0), vekStsNullPtrErr);
    EXPECT_EQ(veksRShiftC_32s(w, -1, w, 2), vekStsShiftErr);
    EXPECT_EQ(veksRShiftC_32s(w, -1, w, 0), vekStsSizeErr);
    EXPECT_EQ(veksRShiftC_32s(nullptr, 0, w, 2), vekStsNullPtrErr);
    EXPECT_EQ(veksLShiftC_8u(b, 9, b, 0), vekStsSizeErr);
    EXPECT_EQ(veksLShiftC_8u(b, -1, b, 2), vekStsShiftErr);
    EXPECT_EQ(veksLShiftC_16s(h, 16, h, 0), vekStsSizeErr);
    EXPECT_EQ(veksLShiftC_16s_I(-1, h, 2), vekStsShiftErr);
    EXPECT_EQ(veksRShiftC_16s(h, 20, h, 2), vekStsNoErr);
    EXPECT_EQ(h[0], -1);
    EXPECT_EQ(h[1], 0);
    EXPECT_EQ(b[0], 7);
    EXPECT_EQ(w[0], -5);
  });
}

}  // namespace
}  // namespace vektest
