// SPDX-License-Identifier: Apache-2.0
// Functions from one array to another, checked against a scalar reference: every value, every slot, every length and
// misalignment between guard pages, and in place where a function allows it.
#ifndef VEK_TESTS_UNARY_H
#define VEK_TESTS_UNARY_H

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/slots.h"

namespace vektest {

template <class S, class D, class Ref>
std::vector<D> mapped(const std::vector<S>& values, Ref ref) {
  std::vector<D> out;
  out.reserve(values.size());
  for (const S& x : values) out.push_back(ref(x));
  return out;
}

// All values at once, in the slot in force.
template <class S, class D, class Call>
void checkValues(const std::vector<S>& values, const std::vector<D>& want, Call call, VekStatus status = vekStsNoErr) {
  std::vector<D> got(values.size());
  ASSERT_EQ(call(values.data(), got.data(), int(values.size())), status);
  const auto same = sameVectors(got, want);
  if (same) return;
  size_t i = 0;
  while (sameBits(got[i], want[i])) ++i;
  ADD_FAILURE() << same.message() << " for source " << ::testing::PrintToString(values[i]);
}

// Every length, from the middle of `values`, at changing offsets, behind and in front of an inaccessible page.
template <class S, class D, class Call>
void checkShapes(const std::vector<S>& values, const std::vector<D>& want, Call call) {
  size_t offset = 0;
  for (const int n : sweepLengths(140, 600)) {
    const size_t len = std::min(size_t(n), values.size());
    const size_t from = (offset * 37) % (values.size() - len + 1);
    const std::vector<S> part(values.begin() + from, values.begin() + from + len);
    const std::vector<D> wanted(want.begin() + from, want.begin() + from + len);
    for (const Flush flush : {Flush::kBack, Flush::kFront}) {
      Guarded<S> src(part, flush, offset % 3 == 0 ? 0 : offset % 33);
      Guarded<D> dst(len, flush, offset % 2 == 0 ? 0 : (offset * 5) % 33);
      ASSERT_EQ(call(src.data(), dst.data(), int(len)), vekStsNoErr);
      ASSERT_TRUE(sameVectors(dst.values(), wanted)) << "length " << len << ", offset " << offset;
      ASSERT_TRUE(dst.intact()) << "length " << len << ", offset " << offset;
    }
    if constexpr (sizeof(S) == sizeof(D)) {
      Guarded<S> both(part, Flush::kBack, offset % 33);
      ASSERT_EQ(call(both.data(), reinterpret_cast<D*>(both.data()), int(len)), vekStsNoErr);
      std::vector<D> got(len);
      memcpy(got.data(), both.data(), len * sizeof(D));
      ASSERT_TRUE(sameVectors(got, wanted)) << "in place, length " << len;
    }
    ++offset;
  }
}

// `shapes` false for further arguments that run the same code as earlier ones.
template <class S, class D, class Call, class Ref>
void checkUnary(const std::vector<S>& values, Call call, Ref ref, bool shapes = true) {
  const std::vector<D> want = mapped<S, D>(values, ref);
  inEverySlot([&](int) {
    checkValues(values, want, call);
    if (shapes) checkShapes(values, want, call);
  });
}

// Floats where conversions and thresholds go wrong: every exponent of both signs with several fractions, ties and their
// neighbours, the neighbours of the ends of every integer range, and the special values with several NaNs.
template <class T>
std::vector<T> floatSweep() {
  std::vector<T> v = specialValues<T>();
  const auto around = [&](double centre) {
    const T x = T(centre);
    for (const T y : {x, std::nextafter(x, T(-INFINITY)), std::nextafter(x, T(INFINITY))})
      v.push_back(y), v.push_back(-y);
  };
  for (int e = std::numeric_limits<T>::min_exponent - std::numeric_limits<T>::digits;
       e < std::numeric_limits<T>::max_exponent; ++e)
    for (const double f : {1.0, 1.25, 1.5, 1.9999999, 1.3333333})
      v.push_back(T(std::ldexp(f, e))), v.push_back(-v.back());
  for (int i = 0; i <= 260; ++i) around(i / 2.0), around(i / 4.0);
  for (const double limit : {127.0, 128.0, 255.0, 32767.0, 32768.0, 65535.0, 8388607.0, 8388608.0, 16777215.0,
                             2147483647.0, 2147483648.0, 65504.0, 65520.0, 65536.0})
    for (const double d : {-1.0, -0.5, 0.0, 0.5, 1.0}) around(limit + d);
  const uint32_t nans[] = {0x7F800001, 0x7FBFFFFF, 0x7FC12345, 0xFF800001, 0xFFFFFFFF};
  for (const uint32_t n : nans) {
    float x;
    memcpy(&x, &n, sizeof x);
    v.push_back(T(x));
  }
  while (v.size() < 3000) v.push_back(randomValue<T>());
  return v;
}

}  // namespace vektest

#endif
