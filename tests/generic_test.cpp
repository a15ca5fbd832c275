// SPDX-License-Identifier: Apache-2.0
// What holds for every function alike, driven by the list derived from the prototypes: a null pointer and a length
// below one are refused with nothing written, and the index-offset twin does what the function does. A new prototype is
// covered without a new line here.
#include <climits>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <tuple>

#include "support/data.h"
#include "support/slots.h"

namespace vektest {
namespace {

struct Parameter {
  bool array;
  std::string type, name;
};

std::vector<Parameter> parse(const std::string& text) {
  std::vector<Parameter> out;
  std::istringstream in(text);
  for (std::string one; std::getline(in, one, ';');) {
    const size_t from = one.find_first_not_of(' '), kind = one.find(' ', from), name = one.rfind(' ');
    out.push_back({one.compare(from, 5, "array") == 0, one.substr(kind + 1, name - kind - 1), one.substr(name + 1)});
  }
  return out;
}

// Plain arguments that every function accepts, by the name of the parameter.
int plainInt(const std::string& name) {
  static const std::map<std::string, int> values = {
      {"len", 12},         {"srcLen", 12},      {"src1Len", 9},    {"src2Len", 7},     {"dstLen", 8},
      {"numIters", 6},     {"tapsLen", 4},      {"order", 2},      {"numBq", 1},       {"maskSize", 3},
      {"factor", 2},       {"upFactor", 2},     {"downFactor", 3}, {"scaleFactor", 1}, {"rndMode", 1},
      {"srcBitOffset", 3}, {"dstBitOffset", 5}, {"upPhase", 1},    {"downPhase", 1},   {"levelLT", 1},
      {"levelGT", 2},      {"val", 3},          {"lowerBound", 1}, {"upperBound", 99}, {"magn", 5},
      {"level", 3},        {"value", 4},        {"valueLT", 6},    {"valueGT", 7}};
  const auto it = values.find(name);
  return it == values.end() ? 0 : it->second;
}

template <class T>
T plainValue(const std::string& name) {
  if constexpr (std::is_integral_v<T>) {
    return T(plainInt(name));
  } else if constexpr (std::is_floating_point_v<T>) {
    return name == "levelGT" ? T(0.5) : T(0.25);
  } else {
    T x;
    x.re = 2, x.im = 3;
    return x;
  }
}

// States and specs, made for one call.
struct Objects {
  std::vector<std::shared_ptr<void>> live;
  template <class State, class Init, class Free>
  State* keep(Init init, Free free) {
    State* p = nullptr;
    if (init(&p) != vekStsNoErr) ADD_FAILURE() << "could not make a state";
    live.push_back(std::shared_ptr<void>(p, [free](void* q) { free(static_cast<State*>(q)); }));
    return p;
  }
};

template <class T>
constexpr bool kOpaque = false;

#include "generic_states.inc"

// The memory of one call: a region for each parameter, arrays at an offset inside theirs.
struct Arena {
  static constexpr size_t kRegion = 65536;
  std::vector<std::unique_ptr<char[], void (*)(void*)>> regions;
  Objects objects;
  Arena(size_t parameters) {
    for (size_t i = 0; i < parameters; ++i) {
      regions.emplace_back(static_cast<char*>(aligned_alloc(64, kRegion)), [](void* p) { free(p); });
      // Small positive numbers whatever type reads them: bytes that are finite as floats and doubles.
      for (size_t k = 0; k < kRegion; ++k) regions[i][k] = char(k % 4 == 3 ? 0x3F : (k * 7 + i) % 100);
    }
  }
  void blank(size_t i) { memset(regions[i].get(), 0, kRegion); }
  bool sameAs(const Arena& other, const std::set<size_t>& skip) const {
    for (size_t i = 0; i < regions.size(); ++i)
      if (!skip.count(i) && memcmp(regions[i].get(), other.regions[i].get(), kRegion) != 0) return false;
    return true;
  }
};

constexpr int kIndex = 5;  // where arrays begin, in their own elements

template <class A>
A argument(Arena& arena, size_t region, const Parameter& p) {
  if constexpr (!std::is_pointer_v<A>) {
    return plainValue<A>(p.name);
  } else {
    using T = std::remove_cv_t<std::remove_pointer_t<A>>;
    if constexpr (kOpaque<T>) {
      return makeState<T>(arena.objects);
    } else if constexpr (std::is_pointer_v<T>) {
      arena.blank(region);
      return reinterpret_cast<A>(arena.regions[region].get());
    } else if constexpr (std::is_void_v<T>) {
      return nullptr;
    } else {
      if (p.array) return reinterpret_cast<A>(arena.regions[region].get()) + kIndex;
      arena.blank(region);
      return reinterpret_cast<A>(arena.regions[region].get());
    }
  }
}

struct Row {
  const char* name;
  std::vector<Parameter> parameters;
  bool returnsStatus;
  // Calls the function with the pointer parameter `null` set to null (none for -1), and the int parameter `bad` set to
  // `value` (none for -1).
  std::function<VekStatus(Arena&, int null, int bad, int value)> call;
  std::function<VekStatus(Arena&)> twin;
};

template <class... A, size_t... I>
auto makeArguments(Arena& arena, const std::vector<Parameter>& ps, int null, int bad, int value,
                   std::index_sequence<I...>) {
  std::tuple<A...> args{argument<A>(arena, I, ps[I])...};
  const auto adjust = [&](auto& a, int i) {
    using T = std::remove_reference_t<decltype(a)>;
    if constexpr (std::is_pointer_v<T>) {
      if (i == null) a = nullptr;
    } else if constexpr (std::is_same_v<T, int>) {
      if (i == bad) a = value;
    }
  };
  (adjust(std::get<I>(args), int(I)), ...);
  return args;
}

template <class R, class... T, class... A>
VekStatus callTwinWith(R (*twin)(T...), const std::vector<Parameter>& ps, const std::tuple<A...>& args) {
  // The twin's parameters in order: each argument, and behind an array its index, with the base moved back by as much.
  std::vector<std::pair<int, bool>> plan;
  for (size_t i = 0; i < ps.size(); ++i) {
    plan.push_back({int(i), false});
    if (ps[i].array) plan.push_back({int(i), true});
  }
  if (plan.size() != sizeof...(T)) {
    ADD_FAILURE() << "the twin takes " << sizeof...(T) << " parameters, not " << plan.size();
    return vekStsErr;
  }
  size_t at = 0;
  const auto next = [&]<class P>() -> P {
    const int i = plan[at].first;
    const bool isIndex = plan[at++].second;
    P out{};
    if (isIndex) {
      if constexpr (std::is_same_v<P, int>) out = kIndex;
      return out;
    }
    size_t k = 0;
    std::apply(
        [&](const A&... a) {
          const auto take = [&](const auto& v) {
            using V = std::remove_cvref_t<decltype(v)>;
            if (int(k++) != i) return;
            if constexpr (std::is_same_v<V, P>) {
              out = v;
              if constexpr (std::is_pointer_v<P> && !std::is_void_v<std::remove_pointer_t<P>>) {
                using E = std::remove_cv_t<std::remove_pointer_t<P>>;
                if constexpr (!kOpaque<E>) {
                  if (ps[size_t(i)].array) out = v - kIndex;
                }
              }
            }
          };
          (take(a), ...);
        },
        args);
    return out;
  };
  std::tuple<T...> twinArgs{next.template operator()<T>()...};
  return VekStatus(std::apply(twin, twinArgs));
}

template <class R, class... A, class Twin>
Row makeRow(const char* name, R (*f)(A...), Twin twin, const char* parameters) {
  Row row{name, parse(parameters), std::is_same_v<R, VekStatus>, nullptr, nullptr};
  if constexpr (std::is_same_v<R, VekStatus>) {
    const std::vector<Parameter> ps = row.parameters;
    row.call = [=](Arena& arena, int null, int bad, int value) {
      return std::apply(f, makeArguments<A...>(arena, ps, null, bad, value, std::index_sequence_for<A...>()));
    };
    row.twin = [=](Arena& arena) {
      return callTwinWith(twin, ps, makeArguments<A...>(arena, ps, -1, -1, 0, std::index_sequence_for<A...>()));
    };
  }
  return row;
}

const std::vector<Row>& allRows() {
  static const std::vector<Row> rows = {
#define VEK_FUNCTION(NAME, RESULT, PARAMETERS) makeRow(#NAME, &NAME, &NAME##_Idx, PARAMETERS),
#include "functions.inc"
#undef VEK_FUNCTION
  };
  return rows;
}

bool releases(const Row& r) { return std::string(r.name).find("Free") != std::string::npos; }

// Pointers whose absence means something, or is found out later.
bool mayBeNull(const Row& r, const Parameter& p) {
  static const std::set<std::string> always = {"pDlyLine", "pWorkBuffer", "pInitBuffer"};
  const std::string name = r.name;
  const bool indexForm = name.find("Indx_") != std::string::npos && name.find("MinMax") == std::string::npos;
  return always.count(p.name) || (indexForm && p.name == "pIndx") ||
         (name == "veksRealToCplx_32f" && p.name.substr(0, 4) == "pSrc");
}

// Regions that hold addresses, which no two calls share.
std::set<size_t> holdingAddresses(const Row& r) {
  std::set<size_t> skip;
  bool makesState = false;
  for (const Parameter& p : r.parameters) makesState |= p.name.substr(0, 2) == "pp";
  for (size_t i = 0; i < r.parameters.size(); ++i)
    if (makesState && r.parameters[i].type.find("const") == std::string::npos) skip.insert(i);
  return skip;
}

TEST(EveryFunction, RefusesNullPointers) {
  inEverySlot([](int) {
    int refused = 0;
    for (const Row& r : allRows()) {
      if (!r.returnsStatus) continue;
      for (size_t i = 0; i < r.parameters.size(); ++i) {
        const Parameter& p = r.parameters[i];
        if (p.type.back() != '*' || mayBeNull(r, p)) continue;
        Arena arena(r.parameters.size());
        Arena before(r.parameters.size());
        for (size_t k = 0; k < r.parameters.size(); ++k)
          if (r.parameters[k].type.back() == '*' && !r.parameters[k].array) before.blank(k), arena.blank(k);
        if (releases(r)) arena.objects.live.clear();
        EXPECT_EQ(r.call(arena, int(i), -1, 0), vekStsNullPtrErr) << r.name << " without " << p.name;
        EXPECT_TRUE(arena.sameAs(before, {})) << r.name << " wrote although " << p.name << " was null";
        ++refused;
      }
    }
    EXPECT_GT(refused, 1000);
  });
}

TEST(EveryFunction, RefusesLengthsBelowOne) {
  static const std::set<std::string> lengths = {"len", "srcLen", "src1Len", "src2Len", "dstLen", "numIters"};
  inEverySlot([](int) {
    int refused = 0;
    for (const Row& r : allRows()) {
      if (!r.returnsStatus) continue;
      for (size_t i = 0; i < r.parameters.size(); ++i) {
        if (!lengths.count(r.parameters[i].name)) continue;
        for (int value : {0, -1, INT_MIN}) {
          Arena arena(r.parameters.size()), before(r.parameters.size());
          for (size_t k = 0; k < r.parameters.size(); ++k)
            if (r.parameters[k].type.back() == '*' && !r.parameters[k].array) before.blank(k), arena.blank(k);
          EXPECT_EQ(r.call(arena, -1, int(i), value), vekStsSizeErr)
              << r.name << " " << r.parameters[i].name << "=" << value;
          EXPECT_TRUE(arena.sameAs(before, {})) << r.name << " wrote although refused";
          ++refused;
        }
      }
    }
    EXPECT_GT(refused, 1300);
  });
}

TEST(EveryFunction, HasATwinThatDoesTheSame) {
  inEverySlot([](int) {
    for (const Row& r : allRows()) {
      if (!r.returnsStatus || releases(r)) continue;
      Arena a(r.parameters.size()), b(r.parameters.size());
      const VekStatus direct = r.call(a, -1, -1, 0), twin = r.twin(b);
      EXPECT_EQ(direct, twin) << r.name;
      EXPECT_GE(direct, 0) << r.name << " refused arguments that are meant to be good";
      EXPECT_TRUE(a.sameAs(b, holdingAddresses(r))) << r.name;
      releaseMade(r.name, a.regions[0].get());
      releaseMade(r.name, b.regions[0].get());
    }
  });
}

}  // namespace
}  // namespace vektest
