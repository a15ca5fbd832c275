// SPDX-License-Identifier: Apache-2.0
// Arithmetic, conversion, logic and thresholds element by element, by their formulas: what slots that share a source
// file could have wrong together.
#include <cmath>
#include <functional>

#include "tests/fuzz/rounded.h"

namespace vektest {
namespace {

__extension__ typedef __int128 Int;
struct Number {  // an integer or a float, complex or not
  Int re = 0, im = 0;
  double fre = 0, fim = 0;
};
using Formula = std::function<Number(const Number&, const Number&, const Number&)>;

template <class T>
T at(const char* p) {
  T x;
  memcpy(&x, p, sizeof x);
  return x;
}
Int integerAt(const Type& t, const char* p) {
  uint64_t x = 0;
  memcpy(&x, p, t.width);
  const int unused = 64 - 8 * int(t.width);
  return t.kind == 's' ? Int(int64_t(x << unused) >> unused) : Int(x);
}
Number numberAt(const Type& t, const char* p) {
  Number n;
  const char* const second = t.parts == 2 ? p + t.width : nullptr;
  if (t.kind == 'f') {
    n.fre = t.width == 4 ? at<float>(p) : at<double>(p);
    if (second) n.fim = at<float>(second);
  } else {
    n.re = integerAt(t, p);
    if (second) n.im = integerAt(t, second);
  }
  return n;
}

// v * 2^-s to the nearest integer, ties to even.
Int scaled(Int v, int s) {
  if (s <= 0) return v * (Int(1) << std::min(-int64_t(s), int64_t(60)));
  if (s > 100) return 0;
  const Int floor = v >> s, rest = v - floor * (Int(1) << s), half = Int(1) << (s - 1);
  return floor + (rest > half || (rest == half && floor % 2 != 0));
}
Int clamped(Int v, const Type& t, int bits) {
  const Int high = (Int(1) << (t.kind == 's' ? bits - 1 : bits)) - 1, low = t.kind == 's' ? -high - 1 : 0;
  return std::clamp(v, low, high);
}

// In the precision of the source; a NaN gives 0, as 32-bit integer the least.
Int fromFloat(double x, bool single, int mode, int s, const Type& t, int bits) {
  const double y = single ? double(float(x) * std::ldexp(1.0f, -s)) : x * std::ldexp(1.0, -s);
  if (std::isnan(y)) return bits == 32 ? INT32_MIN : 0;
  const double bounded = std::clamp(y, -1e12, 1e12);
  return clamped(Int(mode == 0   ? std::trunc(bounded)
                     : mode == 1 ? std::nearbyint(bounded)
                                 : std::round(bounded)),
                 t, bits);
}

// Integer quotients are rounded once as floats of a precision, then to the nearest integer.
template <class F>
Int quotient(Int a, Int b, bool constant, int s, const Type& t) {
  const F m = std::ldexp(F(1), -s);
  if (!constant && a == 0) return b == 0 ? 0 : clamped(b > 0 ? INT32_MAX : INT32_MIN, t, int(8 * t.width));
  const F product = F(b) * m, factor = m / F(a), q = constant ? F(b) * factor : product / F(a);
  return clamped(Int(std::nearbyint(std::clamp(double(q), -1e12, 1e12))), t, int(8 * t.width));
}

// "Op_types_modifiers" in its parts.
struct Name {
  std::string op, types;
  bool in(std::initializer_list<const char*> ops) const { return std::find(ops.begin(), ops.end(), op) != ops.end(); }
};
Name parse(std::string name) {
  const bool threshold = name.compare(0, 12, "Threshold_LT") == 0 || name.compare(0, 12, "Threshold_GT") == 0;
  const size_t a = threshold ? name.find('_', 10) : name.find('_'), b = name.find('_', a + 1);
  return {name.substr(0, a), name.substr(a + 1, b - a - 1)};
}

// Exact integer results of two elements, or of one and a constant, before scaling.
Formula integers(const Name& n) {
  using N = const Number&;
  if (n.in({"Add", "AddC"})) return [](N a, N b, N) { return Number{a.re + b.re, a.im + b.im}; };
  if (n.in({"Sub"})) return [](N a, N b, N) { return Number{b.re - a.re, b.im - a.im}; };
  if (n.in({"SubC"})) return [](N x, N c, N) { return Number{x.re - c.re, x.im - c.im}; };
  if (n.in({"SubCRev"})) return [](N x, N c, N) { return Number{c.re - x.re, c.im - x.im}; };
  if (n.in({"Mul", "MulC"}))
    return [](N a, N b, N) { return Number{a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re}; };
  if (n.in({"Div", "DivC"})) return [](N a, N, N) { return a; };  // by quotient()
  if (n.in({"Sqr"})) return [](N a, N, N) { return Number{a.re * a.re}; };
  if (n.in({"And", "AndC"})) return [](N a, N b, N) { return Number{a.re & b.re}; };
  if (n.in({"Or", "OrC"})) return [](N a, N b, N) { return Number{a.re | b.re}; };
  if (n.in({"Xor", "XorC"})) return [](N a, N b, N) { return Number{a.re ^ b.re}; };
  if (n.in({"Not"})) return [](N a, N, N) { return Number{~a.re & 0xFFFFFFFF}; };
  if (n.in({"Abs"})) return [](N a, N, N) { return Number{a.re < 0 ? -a.re : a.re}; };
  if (n.in({"Threshold_LT"})) return [](N x, N level, N) { return Number{std::max(x.re, level.re)}; };
  if (n.in({"Threshold_GT"})) return [](N x, N level, N) { return Number{std::min(x.re, level.re)}; };
  return nullptr;
}

Number real(float re, float im = 0) { return {0, 0, re, im}; }
Formula floats(const Name& n) {
  using N = const Number&;
  const auto f = [](double x) { return float(x); };
  const bool complex = n.types != "32f";
  if (n.in({"Add", "AddC"})) return [=](N a, N b, N) { return real(f(a.fre) + f(b.fre), f(a.fim) + f(b.fim)); };
  if (n.in({"Sub"})) return [=](N a, N b, N) { return real(f(b.fre) - f(a.fre), f(b.fim) - f(a.fim)); };
  if (n.in({"SubC"})) return [=](N x, N c, N) { return real(f(x.fre) - f(c.fre), f(x.fim) - f(c.fim)); };
  if (n.in({"SubCRev"})) return [=](N x, N c, N) { return real(f(c.fre) - f(x.fre), f(c.fim) - f(x.fim)); };
  if (complex) return nullptr;
  if (n.in({"Mul", "MulC"})) return [=](N a, N b, N) { return real(f(a.fre) * f(b.fre)); };
  if (n.in({"Div"}))
    return [=](N a, N b, N) {
      return real(a.fre != 0 || std::isnan(a.fre) ? f(b.fre) / f(a.fre)
                                                  : f(b.fre > 0   ? INFINITY
                                                      : b.fre < 0 ? -INFINITY
                                                                  : NAN));
    };
  if (n.in({"DivC"}))
    return [=](N x, N c, N) {
      const float reciprocal = 1 / f(c.fre);
      return real(f(x.fre) * reciprocal);
    };
  if (n.in({"AddProduct"}))
    return [=](N a, N b, N sum) {
      const float product = f(a.fre) * f(b.fre);
      return real(f(sum.fre) + product);
    };
  if (n.in({"Threshold_LT"}))
    return [=](N x, N level, N) { return real(f(x.fre) > f(level.fre) ? f(x.fre) : f(level.fre)); };
  if (n.in({"Threshold_GT"}))
    return [=](N x, N level, N) { return real(f(x.fre) < f(level.fre) ? f(x.fre) : f(level.fre)); };
  return nullptr;
}

}  // namespace

std::string checkPlain(const Operands& call) {
  const Name name = parse(call.name);
  const auto get = [&](const char* what, int otherwise) {
    return call.ints.count(what) ? call.ints.at(what) : otherwise;
  };
  const int scale = get("scaleFactor", 0), mode = get("rndMode", 2);
  const size_t len = size_t(get("len", 0));
  const Operand* to = nullptr;
  std::vector<const Operand*> from, constants;
  for (const Operand& a : call.arrays) {
    if (a.before.empty() && a.after.empty()) continue;  // an int
    if (a.result) return "";
    const bool array =
        a.before.size() == len * a.type.size() * (call.name.find("24") == std::string::npos || !a.written ? 1 : 3);
    if (a.written) to = &a;
    if (a.after.empty()) {
      constants.push_back(&a);
    } else if (!array) {
      return "";
    } else if (!a.written || a.readToo) {
      from.push_back(&a);
    }
  }
  if (!to || from.empty() || from[0]->before.size() < len * from[0]->type.size()) return "";
  from.insert(from.end(), constants.begin(), constants.end());
  const bool conversion =
      name.op == "Convert" && name.types.compare(0, 2, "24") != 0 && name.types.find("16f") == std::string::npos;
  const bool twentyFour = name.types.find("24") != std::string::npos;
  const bool fromFloats = from[0]->type.kind == 'f', toFloats = to->type.kind == 'f';
  const Formula formula = fromFloats ? floats(name) : integers(name);
  if (toFloats ? conversion || !formula : !conversion && (!formula || fromFloats)) return "";
  if (((fromFloats && !toFloats) || name.in({"Div", "DivC"})) && std::abs(int64_t(scale)) > 100) return "";
  if (name.types == "Low") return "";
  if (name.types.compare(0, 3, "64s") == 0 && mode != 1) return "";
  for (size_t i = 0; i < len; ++i) {
    Number operands[3];
    for (size_t k = 0; k < from.size() && k < 3; ++k)
      operands[k] = numberAt(from[k]->type, &from[k]->before[from[k]->after.empty() ? 0 : i * from[k]->type.size()]);
    Number want = conversion ? operands[0] : formula(operands[0], operands[1], operands[2]);
    const Type& t = to->type;
    const size_t width = twentyFour ? 3 : t.width;
    const Type integer{twentyFour ? name.types.back() : t.kind, width, 1};
    for (size_t part = 0; part < t.parts; ++part) {
      const char* const got = &to->after[i * (twentyFour ? 3 : t.size()) + part * width];
      bool same;
      if (toFloats) {
        same = sameBits(at<float>(got), float(part ? want.fim : want.fre));
      } else {
        const int bits = int(8 * width);
        Int value = clamped(scaled(part ? want.im : want.re, scale), integer, bits);
        if (fromFloats)
          value = fromFloat(operands[0].fre, from[0]->type.width == 4, twentyFour ? 2 : mode, scale, integer, bits);
        if (name.op == "Not") value = want.re & ((Int(1) << bits) - 1);
        if (name.op == "Div" && width < 4)
          value = quotient<float>(operands[0].re, operands[1].re, false, scale, integer);
        if (name.op == "Div" && width == 4)
          value = quotient<double>(operands[0].re, operands[1].re, false, scale, integer);
        if (name.op == "DivC") value = quotient<float>(operands[1].re, operands[0].re, true, scale, integer);
        same = integerAt(integer, got) == value;
      }
      if (!same) return "element " + std::to_string(i) + " is not what the formula gives";
    }
  }
  return "";
}

}  // namespace vektest
