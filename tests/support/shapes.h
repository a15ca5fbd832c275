// SPDX-License-Identifier: Apache-2.0
// One check of a function for every shape of a call: whole vectors and each length, arrays off alignment by their own
// numbers of bytes and flush against an inaccessible page in front or behind, into a source, through the in-place form,
// in every slot. A test says what goes in, how to call and what it means:
//
//   Shapes(a, b).check(veksAdd_32f, each(std::plus<float>()), veksAdd_32f_I);
#ifndef VEK_TESTS_SHAPES_H
#define VEK_TESTS_SHAPES_H

#include <functional>
#include <tuple>

#include "tests/support/data.h"
#include "tests/support/guarded.h"
#include "tests/support/slots.h"

namespace vektest {

// f(pointers...) with copies of the arrays flush in front, then at `shifts` places behind, off each other too.
template <class F, class... T>
void atEveryPlace(size_t shifts, F f, const std::vector<T>&... arrays) {
  const auto at = [&](Flush flush, size_t shift, size_t apart) {
    size_t off = shift - apart;
    const auto next = [&] { return off += apart; };
    std::tuple<Guarded<T>...> copies{Guarded<T>(arrays, flush, next())...};
    std::apply([&](auto&... a) { f(static_cast<const T*>(a.data())...); }, copies);
  };
  at(Flush::kFront, 0, 0);
  for (size_t shift = 0; shift < shifts; ++shift)
    for (size_t apart : {0, 3, 4})
      if (apart == 0 || sizeof...(T) > 1) at(Flush::kBack, shift, apart);
}

// The line of the test that a check stands in.
struct Where {
  const char* file = __builtin_FILE();
  int line = __builtin_LINE();
};

// What a function means that works element by element: f gives an element of the result; D where that is of another
// type than f returns.
template <class D = void, class F>
auto each(F f) {
  return [f]<class... S>(int n, const std::vector<S>&... x) {
    std::vector<std::conditional_t<std::is_void_v<D>, std::invoke_result_t<F, S...>, D>> y(static_cast<size_t>(n));
    for (size_t i = 0; i < y.size(); ++i) y[i] = f(x[i]...);
    return y;
  };
}

// A result within a bound of a value, or the same NaN or infinity.
template <class T>
struct Near {
  T value;
  double bound;
};
template <class T>
::testing::AssertionResult sameVectors(const std::vector<T>& got, const std::vector<Near<T>>& want) {
  for (size_t i = 0; i < want.size(); ++i)
    if (!sameBits(got[i], want[i].value) && !(std::fabs(double(got[i]) - double(want[i].value)) <= want[i].bound))
      return ::testing::AssertionFailure() << "element " << i << " of " << got.size() << ": got " << got[i] << ", want "
                                           << want[i].value << " within " << want[i].bound;
  return ::testing::AssertionSuccess();
}
template <class W>
struct ResultOf {
  using type = W;
};
template <class T>
struct ResultOf<Near<T>> {
  using type = T;
};

// The function is called as call(sources..., results..., n). `meaning` takes n and the sources as vectors of n elements
// and returns the vector of the result, of any length, or a tuple of such vectors for several results. `inPlace` is
// called as inPlace(sources..., n) and has to leave the result in the last source; `call` is null where it is the only
// form. check() makes calls of all lengths, with elements from anywhere in the sources; values() one for the whole.
template <class... S>
class Shapes {
 public:
  explicit Shapes(const std::vector<S>&... sources) : sources_{sources...} {
    ((most_ = std::min(most_, int(sources.size()))), ...);
  }

  Shapes& lengths(std::vector<int> n) { return lengths_ = std::move(n), *this; }
  // No destination may be a source.
  Shapes& apart() { return apart_ = true, *this; }
  // NaNs are told apart by their bits.
  Shapes& bits() { return bits_ = true, *this; }
  Shapes& returns(VekStatus status) { return status_ = status, *this; }
  // Any status that is no error.
  Shapes& mayWarn() { return status_ = kNoError, *this; }
  // In each state of the library that paths(f) calls f(slot) in, instead of every slot.
  using Paths = std::function<void(const std::function<void(int)>&)>;
  Shapes& on(Paths paths) { return paths_ = std::move(paths), *this; }

  template <class Call, class Meaning, class InPlace = std::nullptr_t>
  void values(Call call, Meaning meaning, InPlace inPlace = {}, Where where = {}) const {
    const testing::ScopedTrace trace(where.file, where.line, "");
    calls(most_, 0, call, meaning, inPlace);
  }
  template <class Call, class Meaning, class InPlace = std::nullptr_t>
  void check(Call call, Meaning meaning, InPlace inPlace = {}, Where where = {}) const {
    if (sizeof...(S) > 0) values(call, meaning, inPlace, where);
    const testing::ScopedTrace trace(where.file, where.line, "");
    size_t turn = 0;
    for (int n : lengths_)
      if (n <= most_ && !testing::Test::HasFailure()) calls(n, ++turn, call, meaning, inPlace);
  }

 private:
  static constexpr VekStatus kNoError = INT32_MAX;
  template <class Call>
  static constexpr bool kApart = !std::is_same_v<Call, std::nullptr_t>;

  std::tuple<std::vector<S>...> sources_;
  std::vector<int> lengths_ = sweepLengths(std::min({size_t(8), sizeof(S)...}) < 4 ? 140 : 70, 600);
  int most_ = INT32_MAX;
  bool apart_ = false, bits_ = false;
  VekStatus status_ = vekStsNoErr;
  Paths paths_ = inEverySlot<const std::function<void(int)>&>;

  template <class Call, class Meaning, class InPlace>
  void calls(int n, size_t turn, Call call, Meaning meaning, InPlace inPlace) const {
    const auto part = [&]<class T>(const std::vector<T>& s) {
      const auto from = s.begin() + ptrdiff_t(turn * 37 % (s.size() - size_t(n) + 1));
      return std::vector<T>(from, from + n);
    };
    const auto parts =
        std::apply([&](const auto&... s) { return std::tuple<std::vector<S>...>{part(s)...}; }, sources_);
    const auto wants = tupled(std::apply([&](const auto&... s) { return meaning(n, s...); }, parts));
    constexpr auto results = std::make_index_sequence<std::tuple_size_v<std::decay_t<decltype(wants)>>>();
    paths_([&](int) {
      for (const Flush flush : {Flush::kBack, Flush::kFront}) {
        if (turn == 0 && flush == Flush::kFront) break;  // the whole is there for its values
        const Placed placed{flush, n, turn};
        ASSERT_EQ(oneCall(placed, parts, wants, call, inPlace, std::index_sequence_for<S...>(), results), "")
            << "length " << n << ", turn " << turn;
      }
    });
  }

  struct Placed {
    Flush flush;
    int n;
    size_t turn;
    size_t shift(size_t array) const { return turn % (array + 2) == 0 ? 0 : turn * (2 * array + 1) % 37; }
  };

  // What is wrong with the call out of place, into the sources and in place.
  template <class Wants, class Call, class InPlace, size_t... I, size_t... K>
  std::string oneCall(const Placed& p, const std::tuple<std::vector<S>...>& parts, const Wants& wants, Call call,
                      InPlace inPlace, std::index_sequence<I...> sources, std::index_sequence<K...>) const {
    std::tuple<Guarded<S>...> in{Guarded<S>(std::get<I>(parts), p.flush, p.shift(I))...};
    std::tuple out{guardedLike(std::get<K>(wants), p.flush, p.shift(sizeof...(I) + K))...};
    std::string problem;
    if constexpr (kApart<Call>) {
      problem = judge(made(call, in, p.n, sources, std::get<K>(out).data()...));
      ((problem += differing(std::get<K>(out), std::get<K>(wants))), ...);
      ((problem += differing(std::get<I>(in), std::get<I>(parts), " source changed:")), ...);
    }
    const auto again = [&](const char* how, auto f) {
      if (!problem.empty()) return;
      (std::get<I>(in).assign(std::get<I>(parts)), ...);
      problem = f();
      if (!problem.empty()) problem = how + problem;
    };
    const auto& want = std::get<0>(wants);
    using D = std::remove_pointer_t<decltype(std::get<0>(out).data())>;
    [[maybe_unused]] const auto into = [&]<class T>(Guarded<T>& source) {
      if constexpr (kApart<Call> && sizeof(T) == sizeof(D) && sizeof...(K) == 1)
        if (!apart_ && p.turn != 0 && source.size() == want.size())
          again("into a source:", [&] {
            return judged(made(call, in, p.n, sources, reinterpret_cast<D*>(source.data())), source, want);
          });
    };
    (into(std::get<I>(in)), ...);
    if constexpr (kApart<Call> && sizeof...(K) > 1 && std::is_same_v<decltype(in), decltype(out)>)
      if (!apart_ && p.turn != 0)
        again("into the sources:", [&] {
          std::string s = judge(made(call, in, p.n, sources, std::get<K>(in).data()...));
          ((s += differing(std::get<K>(in), std::get<K>(wants))), ...);
          return s;
        });
    if constexpr (!std::is_same_v<InPlace, std::nullptr_t>)
      again("in place:", [&] { return judged(made(inPlace, in, p.n, sources), std::get<sizeof...(I) - 1>(in), want); });
    return problem;
  }

  template <class Call, size_t... I, class... D>
  static VekStatus made(Call call, std::tuple<Guarded<S>...>& in, int n, std::index_sequence<I...>, D*... to) {
    return call(std::get<I>(in).data()..., to..., n);
  }
  template <class W>
  static std::tuple<std::vector<W>> tupled(std::vector<W> x) {
    return {std::move(x)};
  }
  template <class... W>
  static std::tuple<std::vector<W>...> tupled(std::tuple<std::vector<W>...> x) {
    return x;
  }
  template <class W>
  static auto guardedLike(const std::vector<W>& want, Flush flush, size_t shift) {
    return Guarded<typename ResultOf<W>::type>(want.size(), flush, shift);
  }
  std::string judge(VekStatus s) const {
    return (status_ == kNoError ? s >= 0 : s == status_) ? "" : " status " + std::to_string(s);
  }
  template <class T, class W>
  std::string judged(VekStatus s, const Guarded<T>& result, const std::vector<W>& want) const {
    return judge(s) + differing(result, want);
  }
  // What is wrong with an array of which `want` is wanted.
  template <class T, class W>
  std::string differing(const Guarded<T>& array, const std::vector<W>& want, const char* what = "") const {
    const auto got = array.template values<typename ResultOf<W>::type>();
    const auto same = sameVectors(got, want);
    if (!same) return what + std::string(" ") + same.message();
    if constexpr (sizeof(W) == sizeof(got[0]))
      if (bits_ && memcmp(got.data(), want.data(), want.size() * sizeof(W)) != 0) return " other bits of a NaN";
    return array.intact() ? "" : " wrote beside an array";
  }
};
template <class... S>
Shapes(const std::vector<S>&...) -> Shapes<S...>;

// A call that is refused in every slot with the status and has not written to its destinations, an array of eight
// elements for each D: call(destinations...).
template <class... D, class Call>
void expectRefused(VekStatus status, Call call, Where where = {}) {
  const testing::ScopedTrace trace(where.file, where.line, "");
  inEverySlot([&](int) {
    std::tuple<Guarded<D>...> to{Guarded<D>(8)...};
    EXPECT_EQ(std::apply([&](auto&... d) { return call(d.data()...); }, to), status);
    std::apply([](auto&... d) { EXPECT_TRUE((d.untouched() && ... && true)); }, to);
  });
}

}  // namespace vektest

#endif
