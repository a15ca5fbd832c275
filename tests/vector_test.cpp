// SPDX-License-Identifier: Apache-2.0
// Copying, setting, reordering, logic and shifts against their definitions, in every slot.
#include <algorithm>

#include "tests/support/shapes.h"

namespace vektest {
namespace {

template <class T>
void checkCopyAndMove(VekStatus (*copy)(const T*, T*, int), VekStatus (*move)(const T*, T*, int)) {
  const auto same = each([](T x) { return x; });
  Shapes(mixedVector<T>(700)).bits().apart().check(copy, same);
  Shapes(mixedVector<T>(700)).bits().check(move, same);
  inEverySlot([&](int) {
    for (int shift : {-17, -1, 1, 5, 33}) {
      std::vector<T> x = randomVector<T>(200), want = x;
      std::copy(x.begin() + 50, x.begin() + 150, want.begin() + 50 + shift);
      if (shift > 0) std::copy_backward(x.begin() + 50, x.begin() + 150, want.begin() + 150 + shift);
      ASSERT_EQ(move(x.data() + 50, x.data() + 50 + shift, 100), vekStsNoErr);
      ASSERT_EQ(memcmp(x.data(), want.data(), x.size() * sizeof(T)), 0) << "moved by " << shift;
    }
  });
}

TEST(Vector, CopyAndMove) {
#define VEK_CASE(T) checkCopyAndMove<Vek##T>(veksCopy_##T, veksMove_##T);
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
void checkFill(VekStatus (*zero)(T*, int), VekStatus (*set)(T, T*, int), T val) {
  const auto full = [](T x) { return [=](int n) { return std::vector<T>(size_t(n), x); }; };
  Shapes<>().bits().lengths(sweepLengths()).check([=](T* d, int n) { return set(val, d, n); }, full(val));
  Shapes<>().bits().lengths(sweepLengths()).check(zero, full({}));
}

TEST(Vector, SetAndZero) {
  float strangeNaN;
  const uint32_t pattern = 0x7F812345;  // a signalling NaN must arrive as it left
  memcpy(&strangeNaN, &pattern, 4);
  checkFill<Vek8u>(veksZero_8u, veksSet_8u, 0x9C);
  checkFill<Vek16s>(veksZero_16s, veksSet_16s, -12345);
  checkFill<Vek32s>(veksZero_32s, veksSet_32s, -123456789);
  checkFill<Vek32f>(veksZero_32f, veksSet_32f, strangeNaN);
  checkFill<Vek32sc>(veksZero_32sc, veksSet_32sc, {1, -2});
  checkFill<Vek32fc>(veksZero_32fc, veksSet_32fc, {-0.0f, strangeNaN});
}

template <class T>
std::vector<T> reversed(int, std::vector<T> x) {
  std::reverse(x.begin(), x.end());
  return x;
}

TEST(Vector, Flip) {
#define VEK_CASE(T) Shapes(mixedVector<Vek##T>(1200)).bits().check(veksFlip_##T, reversed<Vek##T>, veksFlip_##T##_I);
  VEK_CASE(8u)
  VEK_CASE(16u)
  VEK_CASE(32f)
  VEK_CASE(32fc)
#undef VEK_CASE
}

template <class T, int Bytes = sizeof(T)>
T bytesSwapped(T x) {
  std::reverse(reinterpret_cast<char*>(&x), reinterpret_cast<char*>(&x) + Bytes);
  return x;
}

TEST(Vector, SwapBytes) {
#define VEK_CASE(T) \
  Shapes(randomVector<Vek##T>(700)).check(veksSwapBytes_##T, each(bytesSwapped<Vek##T>), veksSwapBytes_##T##_I);
  VEK_CASE(16u)
  VEK_CASE(32u)
  VEK_CASE(64u)
#undef VEK_CASE
  std::vector<Vek24u> x(700);
  for (Vek24u& v : x)
    for (Vek8u& byte : v.byte) byte = randomValue<Vek8u>();
  Shapes(x).check([](auto* s, Vek24u* d, int n) { return veksSwapBytes_24u(&s->byte[0], &d->byte[0], n); },
                  each(bytesSwapped<Vek24u>), [](auto* d, int n) { return veksSwapBytes_24u_I(&d->byte[0], n); });
}

TEST(Vector, ComplexParts) {
  using C = Vek32fc;
  const auto re = each([](C c) { return c.re; });
  const auto im = each([](C c) { return c.im; });
  const Shapes z(mixedVector<C>(700));
  const Shapes x(mixedVector<float>(700));
  const Shapes xy(mixedVector<float>(700), mixedVector<float>(700));
  z.check(veksReal_32fc, re);
  z.check(veksImag_32fc, im);
  z.check(veksCplxToReal_32fc, [&](int n, const auto& v) { return std::tuple{re(n, v), im(n, v)}; });
  xy.check(veksRealToCplx_32f, each([](float a, float b) { return C{a, b}; }));
  x.check([](auto* a, C* d, int n) { return veksRealToCplx_32f(a, nullptr, d, n); }, each([](float a) {
            return C{a, 0};
          }));
  x.check([](auto* a, C* d, int n) { return veksRealToCplx_32f(nullptr, a, d, n); }, each([](float a) {
            return C{0, a};
          }));
  const float one = 1;
  expectRefused<C>(vekStsSizeErr, [](C* d) { return veksRealToCplx_32f(nullptr, nullptr, d, 0); });
  expectRefused<C>(vekStsNullPtrErr, [](C* d) { return veksRealToCplx_32f(nullptr, nullptr, d, 1); });
  expectRefused(vekStsNullPtrErr, [&] { return veksRealToCplx_32f(&one, &one, nullptr, 0); });
}

TEST(Vector, Conjugate) {
  const auto conj = each([](Vek32fc c) { return Vek32fc{c.re, 0.0f - c.im}; });
  Shapes z(mixedVector<Vek32fc>(700));
  z.check(veksConj_32fc, conj, veksConj_32fc_I);
  z.apart().check(veksConjFlip_32fc, [&](int n, const auto& x) { return reversed(n, conj(n, x)); });
}

// ---- logic ---------------------------------------------------------------------------------------------------------

#define VEK_LOGIC(BOTH, CONSTANT, T, OP)                                                                          \
  Shapes(randomVector<E>(700), randomVector<E>(700)).check(BOTH##_##T, each<E>([](E a, E b) { return a OP b; })); \
  for (E val : {E(0), E(0x5A), E(-1)})                                                                            \
  Shapes(randomVector<E>(700))                                                                                    \
      .check([=](const E* s, E* d, int n) { return CONSTANT##_##T(s, val, d, n); },                               \
             each<E>([=](E a) { return a OP val; }))

template <class T>
void checkShift(bool left, VekStatus (*call)(const T*, int, T*, int)) {
  const int width = int(8 * sizeof(T));
  for (int val = 0; val <= width + 3; ++val)
    Shapes(mixedVector<T>(300)).check([=](const T* s, T* d, int n) { return call(s, val, d, n); }, each<T>([=](T v) {
                                        return left ? val >= width ? 0 : int64_t(v) * (int64_t(1) << val)
                                                    : int64_t(v) >> val;
                                      }));
}

TEST(Logic, Bitwise){
#define VEK_CASE(T)                                                                   \
  {                                                                                   \
    using E = Vek##T;                                                                 \
    VEK_LOGIC(veksAnd, veksAndC, T, &);                                               \
    VEK_LOGIC(veksOr, veksOrC, T, |);                                                 \
    VEK_LOGIC(veksXor, veksXorC, T, ^);                                               \
    Shapes(randomVector<E>(700)).check(veksNot_##T, each<E>([](E v) { return ~v; })); \
  }
    VEK_CASE(8u) VEK_CASE(16u) VEK_CASE(32u)
#undef VEK_CASE
}

TEST(Logic, Shifts) {
  checkShift(true, veksLShiftC_8u);
  checkShift(true, veksLShiftC_16s);
  checkShift(true, veksLShiftC_32s);
  checkShift(false, veksRShiftC_8u);
  checkShift(false, veksRShiftC_16s);
  checkShift(false, veksRShiftC_32s);
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
