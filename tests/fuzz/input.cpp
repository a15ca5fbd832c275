// SPDX-License-Identifier: Apache-2.0
#include "tests/fuzz/input.h"

#include "tests/support/generic.h"
#include "tests/support/slots.h"

namespace vektest {

Type typeOf(std::string name) {
  while (name.back() == '*' || name.back() == ' ') name.pop_back();
  if (name.compare(0, 6, "const ") == 0) name.erase(0, 6);
  if (name.compare(0, 3, "Vek") != 0 || !isdigit(name[3])) return {'s', 4, 1};  // int and the enumerations
  const bool complex = name.back() == 'c';
  const char kind = name[name.size() - 1 - complex];
  const size_t width = size_t(atoi(name.c_str() + 3)) / 8;
  return {width == 2 && kind == 'f' ? 'u' : kind, width, 1u + complex};
}

namespace {

template <class T>
T integer(Input& in, Flavour flavour) {
  static const std::vector<T> special = specialValues<T>();
  switch (flavour) {
    case Flavour::kSpecial:
    case Flavour::kHuge:
      return special[in.random() % special.size()];
    case Flavour::kSmall:
    case Flavour::kTiny:
      return T(int(in.random() % 9) - 4);
    case Flavour::kUniform:
    case Flavour::kQuarters:
      return T(int(in.uniform() * 1000));
    default:
      return T(in.random());
  }
}

template <class T>
T real(Input& in, Flavour flavour) {
  static const std::vector<T> special = specialValues<T>();
  using L = std::numeric_limits<T>;
  const double u = in.uniform();
  switch (flavour) {
    case Flavour::kSpecial:
      return in.random() % 3 == 0 ? special[in.random() % special.size()] : T(u * 1000);
    case Flavour::kBits: {
      const uint64_t bits = in.random();
      T x;
      memcpy(&x, &bits, sizeof x);
      return x;
    }
    case Flavour::kQuarters:
      return T(std::ldexp(std::floor(u * 1024), int(in.random() % 26) - 2));
    case Flavour::kTiny:
      return T(u * 8) * L::min();
    case Flavour::kHuge:
      return T(u) * L::max();
    case Flavour::kSmall:
      return T(std::floor(u * 4));
    default:
      return T(u * 1000);
  }
}

template <class T>
void fillAs(Input& in, Flavour flavour, void* to, size_t count) {
  T x{};
  for (size_t i = 0; i < count; ++i) {
    if (flavour != Flavour::kConstant || i == 0) {
      if constexpr (std::is_integral_v<T>) {
        x = integer<T>(in, flavour);
      } else {
        x = real<T>(in, flavour);
      }
    }
    memcpy(static_cast<char*>(to) + i * sizeof x, &x, sizeof x);
  }
}

}  // namespace

void fill(Input& in, const Type& type, Flavour flavour, void* to, size_t count) {
  static const struct {
    Type type;
    void (*fill)(Input&, Flavour, void*, size_t);
  } kinds[] = {{{'u', 1, 1}, fillAs<uint8_t>},  {{'s', 1, 1}, fillAs<int8_t>},   {{'u', 2, 1}, fillAs<uint16_t>},
               {{'s', 2, 1}, fillAs<int16_t>},  {{'u', 4, 1}, fillAs<uint32_t>}, {{'s', 4, 1}, fillAs<int32_t>},
               {{'u', 8, 1}, fillAs<uint64_t>}, {{'s', 8, 1}, fillAs<int64_t>},  {{'f', 4, 1}, fillAs<float>},
               {{'f', 8, 1}, fillAs<double>}};
  for (const auto& k : kinds)
    if (k.type.kind == type.kind && k.type.width == type.width) return k.fill(in, flavour, to, count * type.parts);
  ADD_FAILURE() << "no such type";
}

size_t fuzzTargets() { return allRows().size() + kStreams; }

std::string fuzz(const uint8_t* data, size_t size) {
  if (size < 2) return "";
  Input in(data, size);
  const size_t target = in.below(65536) % fuzzTargets();
  const std::string problem = target < kStreams ? fuzzStream(target, in) : fuzzCall(target - kStreams, in);
  vek::setSlotForTest(availableSlots().back());
  return problem;
}

}  // namespace vektest
