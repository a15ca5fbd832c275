// SPDX-License-Identifier: Apache-2.0
// One call of any function without a state, in every slot: against slot mx with its arrays apart and aligned, and,
// where a function works element by element, against calls for single elements.
#include <math.h>

#include <climits>
#include <map>
#include <sstream>

#include "tests/fuzz/rounded.h"
#include "tests/support/generic.h"
#include "tests/support/guarded.h"
#include "tests/support/slots.h"

namespace vektest {
namespace {

bool startsWith(const std::string& s, std::initializer_list<const char*> list) {
  for (const char* prefix : list)
    if (s.compare(0, strlen(prefix), prefix) == 0) return true;
  return false;
}

// ---- memory -------------------------------------------------------------------------------------------------------

// Room for one array between inaccessible pages.
class Slab {
 public:
  static constexpr size_t kSize = 1 << 18, kMargin = 64;
  Slab() : pages_(kSize) {}
  // The array at `shift` bytes from one of the ends, with a margin around it that put() marks and intact() looks at.
  char* put(const std::vector<char>& values, bool back, size_t shift) {
    at_ = back ? kSize - shift - values.size() : shift;
    size_ = values.size();
    char* const p = pages_.data() + at_;
    memset(p - before(), kMark, before());
    std::copy(values.begin(), values.end(), p);
    memset(p + size_, kMark, behind());
    return p;
  }
  std::vector<char> values() { return {pages_.data() + at_, pages_.data() + at_ + size_}; }
  bool intact() {
    const char* const p = pages_.data() + at_;
    for (size_t i = 1; i <= before(); ++i)
      if (p[-int64_t(i)] != kMark) return false;
    for (size_t i = 0; i < behind(); ++i)
      if (p[size_ + i] != kMark) return false;
    return true;
  }

 private:
  static constexpr char kMark = 0x5C;
  size_t before() const { return std::min(kMargin, at_); }
  size_t behind() const { return std::min(kMargin, kSize - at_ - size_); }
  Guarded<char> pages_;
  size_t at_ = 0, size_ = 0;
};
Slab* slabs() {
  static Slab all[8];
  return all;
}

// ---- arguments ----------------------------------------------------------------------------------------------------

bool isLength(const std::string& name) {
  return name == "len" || name == "numIters" || (name.size() > 3 && name.substr(name.size() - 3) == "Len");
}

int length(Input& in, bool quadratic) {
  switch (in.below(16)) {
    case 0:
      return in.between(1, quadratic && in.oneIn(2) ? 500 : 2500);
    case 1:
    case 2:
    case 3:
      return in.between(1, 300);
    default:
      return in.between(1, 40);
  }
}

int scale(Input& in) {
  switch (in.below(4)) {
    case 0:
      return in.between(-3, 4);
    case 1:
      return in.between(0, 20);
    case 2:
      return in.between(-140, 160);
    default:
      return in.any({0,  1,  -1,  15,  16,  31,   32,    33,      62,      63,          64,          65,
                     93, 94, -31, -32, -33, 1000, -1000, INT_MAX, INT_MIN, INT_MIN + 1, INT_MAX - 31});
  }
}

// An int that is not a length; factors stay small, since arrays grow with them.
int number(Input& in, const std::string& name) {
  if (name == "scaleFactor") return scale(in);
  if (name == "rndMode" || name == "hint") return in.any({0, 1, 2, 0, 1, 2, 3, -1});
  if (name == "relOp") return in.any({0, 4, 0, 4, 0, 4, 0, 4, 1, 7});
  if (name == "factor") return in.oneIn(20) ? in.any({0, -1, INT_MIN}) : in.between(1, 9);
  if (name == "maskSize")
    return in.oneIn(8)   ? in.any({0, -1, INT_MIN, INT_MAX, INT_MAX - 1, 5000})
           : in.oneIn(4) ? in.between(1, 300)
                         : in.between(1, 40);
  if (name == "val") return in.between(-2, 40);
  if (name.find("BitOffset") != std::string::npos)
    return in.oneIn(8) ? in.any({-1, 8, 13, INT_MAX, INT_MIN}) : in.between(0, 7);
  if (in.oneIn(16)) return in.any({INT_MIN, INT_MAX, INT_MIN + 1, INT_MAX - 500});
  return in.between(-300, 300);  // a lag or bias
}

// A floating-point argument in the range where it is mostly of use.
double usual(Input& in, const std::string& name) {
  const double u = fabs(in.uniform());
  if (name == "rFreq") return u / 2;
  if (name == "pPhase") return u * 2 * M_PI;
  if (name == "asym") return in.uniform() * M_PI;
  if (name == "alpha") return in.uniform() * 0.2;
  return u * 100;
}

struct Value {
  Type type;
  bool pointer, null, written;
  int whole;                 // of an int
  int alias;                 // the array that this one shares its memory with, or -1
  std::vector<char> before;  // what a pointer points to, or the argument itself
};

struct Case {
  const Row& row;
  std::string name;  // without its prefix
  std::vector<Value> values;
  std::map<std::string, int> ints;
  bool rounded = false, bad;  // several arguments wrong at once

  explicit Case(const Row& r, Input& in);
  Case(const Row& r, const Case& inPlace);
  std::string describe() const;

 private:
  void setInts(Input& in);
  void setValue(Input& in, size_t i);
  size_t count(const Parameter& p) const;
  void share(Input& in);
};

// Elements behind a pointer.
size_t Case::count(const Parameter& p) const {
  const auto is = [&](const char* what) { return name.find(what) != std::string::npos; };
  const auto get = [&](const char* what) { return ints.count(what) ? std::max(0, ints.at(what)) : 0; };
  const size_t len = size_t(get("len") + get("numIters"));
  if (!p.array) return startsWith(name, {"GoertzTwo"}) ? 2 : 1;
  const bool source = startsWith(p.name, {"pSrc"});
  if (is("Copy_1u")) return (size_t(get(source ? "srcBitOffset" : "dstBitOffset") & 7) + len + 7) / 8;
  if (is("SwapBytes_24") || (is("Convert_24") && source) ||
      (is("24") && is("Convert_") && !is("Convert_24") && !source))
    return 3 * len;
  if (p.name == "pSrc1" && ints.count("src1Len")) return size_t(get("src1Len"));
  if (p.name == "pSrc2" && ints.count("src2Len")) return size_t(get("src2Len"));
  if (is("Conv_")) return size_t(std::max(0, get("src1Len") + get("src2Len") - 1));
  if (!source && ints.count("dstLen")) return size_t(get("dstLen"));
  if (is("SampleUp") && !source) return size_t(get("srcLen") * get("factor"));
  if (is("SampleDown") && !source) {
    const int factor = std::max(1, get("factor")), phase = std::clamp(get("*pPhase"), 0, factor - 1);
    return size_t((get("srcLen") + factor - 1 - phase) / factor);
  }
  if (ints.count("srcLen")) return size_t(get("srcLen"));
  if (p.name.find("Low") != std::string::npos) return (len + 1) / 2;
  if (p.name.find("High") != std::string::npos) return len / 2;
  return len;
}

void Case::setInts(Input& in) {
  const bool quadratic =
      ints.empty() && startsWith(name, {"Conv", "CrossCorr", "AutoCorr"}) && name.find("Convert") == std::string::npos;
  for (const Parameter& p : row.parameters) {
    if (p.type.back() == '*' || typeOf(p.type).kind != 's' || p.type.compare(0, 3, "Vek") == 0) {
      if (p.type.find("Mode") == std::string::npos && p.type.find("Op") == std::string::npos &&
          p.type.find("Hint") == std::string::npos)
        continue;
    }
    ints[p.name] = !isLength(p.name)                           ? number(in, p.name)
                   : in.fixedLength && p.name != "src2Len"     ? in.fixedLength
                   : !in.fixedLength && in.oneIn(bad ? 3 : 50) ? in.any({0, -1, INT_MIN})
                                                               : length(in, quadratic);
  }
  if (ints.count("factor"))
    ints["*pPhase"] = in.oneIn(8) ? in.any({-1, 9, 10}) : int(in.below(uint32_t(std::max(1, ints["factor"]))));
}

void Case::setValue(Input& in, size_t i) {
  const Parameter& p = row.parameters[i];
  Value v{typeOf(p.type), p.type.back() == '*', false, false, 0, -1, {}};
  const auto whole = ints.find(p.name);
  if (!v.pointer && whole != ints.end()) {
    v.whole = whole->second;
  } else {
    v.written = v.pointer && p.type.find("const") == std::string::npos;
    v.null = v.pointer && !in.fixedLength && in.oneIn(bad ? 4 : 200);
    const size_t n = v.pointer ? count(p) : 1;
    v.before.resize(n * v.type.size());
    const bool bounded = rounded && v.type.kind == 'f';
    Flavour flavour = Flavour(in.below(uint32_t(Flavour::kCount)));
    if (bounded) flavour = in.oneIn(4) ? Flavour::kSmall : Flavour::kUniform;
    fill(in, v.type, flavour, v.before.data(), n);
    if (bounded && p.array && n > 0 && isReduction(name) && !startsWith(name, {"Goertz"}) && in.oneIn(6)) {
      const float odd[] = {INFINITY, -INFINITY, NAN};
      memcpy(v.before.data() + in.below(uint32_t(n)) * v.type.size(), &odd[in.below(3)], sizeof *odd);
    }
    if (v.type.kind == 'f' && v.type.width == 4 && !p.array)
      for (size_t k = 0; k < v.before.size(); k += 4) {
        if (in.oneIn(6)) continue;
        const float x = float(usual(in, p.name));
        memcpy(&v.before[k], &x, 4);
      }
    if (p.name == "pPhase" && ints.count("*pPhase")) memcpy(v.before.data(), &ints["*pPhase"], 4);
  }
  values.push_back(v);
}

// Lets a destination be one of the sources, where that is documented.
void Case::share(Input& in) {
  if (startsWith(name, {"Copy", "Haar", "Sample", "Conv_", "ConvBiased", "CrossCorr", "AutoCorr", "Real", "ConjFlip",
                        "ALawToLin", "MuLawToLin", "LinTo", "CplxToReal"}))
    return;
  size_t destination = values.size();
  for (size_t i = 0; i < values.size(); ++i)
    if (row.parameters[i].array && values[i].written && destination == values.size()) destination = i;
  if (destination == values.size() || !in.oneIn(3)) return;
  for (size_t i = 0; i < destination; ++i) {
    const Value &source = values[i], &to = values[destination];
    if (row.parameters[i].array && source.type.size() == to.type.size() && source.before.size() == to.before.size() &&
        !source.null && !to.null) {
      values[destination].alias = int(i);
      values[destination].before = source.before;
      if (in.oneIn(2)) return;
    }
  }
}

Case::Case(const Row& r, Input& in) : row(r), name(r.name + 4), bad(!in.fixedLength && in.oneIn(6)) {
  setInts(in);
  rounded = isRounded(name, ints.count("hint") ? ints["hint"] : 0);
  for (size_t i = 0; i < row.parameters.size(); ++i) setValue(in, i);
  share(in);
}

// The call of a function that means what a call of its in-place form does: pSrcDst is the last source.
Case::Case(const Row& r, const Case& inPlace)
    : row(r), name(r.name + 4), ints(inPlace.ints), rounded(inPlace.rounded), bad(inPlace.bad) {
  size_t sources = 0, seen = 0;
  for (const Parameter& p : r.parameters) sources += p.array && p.name != "pDst";
  for (const Parameter& p : r.parameters) {
    const bool shared = p.name == "pDst" || (p.array && ++seen == sources);
    size_t same = 0, arrays = 0;
    for (size_t i = 0; i < inPlace.values.size(); ++i) {
      const Parameter& q = inPlace.row.parameters[i];
      arrays += q.array;
      if (shared ? q.name == "pSrcDst" : p.array ? q.array && arrays == seen : q.name == p.name) {
        same = i;
        if (p.array) break;
      }
    }
    values.push_back(inPlace.values[same]);
    values.back().written = p.name == "pDst";
    values.back().alias = -1;
  }
}

std::string Case::describe() const {
  std::ostringstream out;
  out << row.name;
  for (const auto& i : ints) out << ' ' << i.first << '=' << i.second;
  for (size_t i = 0; i < values.size(); ++i) {
    const Value& v = values[i];
    if (v.null) out << ' ' << row.parameters[i].name << "=null";
    if (v.alias >= 0) out << ' ' << row.parameters[i].name << '=' << row.parameters[size_t(v.alias)].name;
    if (!v.pointer && v.type.kind == 'f' && v.type.width == 4) {
      float x;
      memcpy(&x, v.before.data(), 4);
      out << ' ' << row.parameters[i].name << '=' << x;
    }
  }
  return out.str();
}

// ---- calls --------------------------------------------------------------------------------------------------------

Argument scalar(const Value& v) {
  if (v.before.empty()) return argumentOf(v.whole);
  Argument a{v.type.kind == 'f', {}, v.type.size(), 0};
  memset(a.bytes, 0xDB, sizeof a.bytes);
  if (v.type.width < 4) {  // promoted by the caller
    Vek16s narrow = 0;
    memcpy(&narrow, v.before.data(), v.type.width);
    const int wide = v.type.kind == 's' ? narrow : v.type.width == 1 ? Vek8u(narrow) : Vek16u(narrow);
    memcpy(a.bytes, &wide, sizeof wide);
  } else {
    memcpy(a.bytes, v.before.data(), v.before.size());
  }
  return a;
}

struct Outcome {
  VekStatus status = 0;
  std::vector<std::vector<char>> after;  // of every pointer
  std::string problem;
};

// Makes the call with arrays anywhere (aligned and apart if `in` is null), through the function or its twin.
Outcome call(const Case& c, Input* in) {
  std::vector<char*> at(c.values.size(), nullptr);
  const bool twin = in && in->random() % 8 == 0;
  std::vector<Argument> all;
  for (size_t i = 0; i < c.values.size(); ++i) {
    const Value& v = c.values[i];
    const bool array = c.row.parameters[i].array;
    if (!v.pointer) {
      all.push_back(scalar(v));
      continue;
    }
    if (!v.null) {
      const size_t unit = !array || !in || in->random() % 2 ? 8 : 1;
      at[i] = in && v.alias >= 0 ? at[size_t(v.alias)]
                                 : slabs()[i].put(v.before, in && in->random() % 2, in ? in->random() % 8 * unit : 0);
    }
    const bool indexed = twin && array && !v.null;
    const int index = indexed ? int(in->random() % 2001) - 1000 : 0;
    // Addresses outside of the slab are formed as numbers, like a caller's in another language.
    all.push_back(argumentOf(uintptr_t(at[i]) - uintptr_t(int64_t(index) * int64_t(v.type.size()))));
    if (twin && array) all.push_back(argumentOf(index));
  }
  RawCall raw = rawCall(twin ? c.row.twin : c.row.function, all);
  raw.mxcsr = 0x1F80;  // denormals count
  vek_raw_call(&raw);
  Outcome o;
  o.status = VekStatus(raw.result);
  for (size_t i = 0; i < c.values.size(); ++i) {
    const Value& v = c.values[i];
    o.after.emplace_back();
    if (!at[i]) continue;
    Slab& slab = slabs()[in && v.alias >= 0 ? size_t(v.alias) : i];
    o.after[i] = slab.values();
    if (!slab.intact()) o.problem = "wrote beside " + c.row.parameters[i].name;
    bool shared = false;
    for (const Value& other : c.values) shared |= in && other.alias == int(i);
    if (!v.written && !shared && o.after[i] != v.before) o.problem = "changed " + c.row.parameters[i].name;
  }
  return o;
}

template <class T>
bool sameNumbers(const std::vector<char>& a, const std::vector<char>& b, bool zerosAlike) {
  for (size_t i = 0; i + sizeof(T) <= a.size(); i += sizeof(T)) {
    T x, y;
    memcpy(&x, &a[i], sizeof x);
    memcpy(&y, &b[i], sizeof y);
    if (!sameBits(x, y) && !(zerosAlike && x == y)) return false;
  }
  return true;
}

// Equal as results of the function are: moved data to the bit, NaNs otherwise whatever their payload.
bool alike(const Case& c, size_t i, const std::vector<char>& a, const std::vector<char>& b) {
  if (a == b) return true;
  const Type& t = c.values[i].type;
  if (a.size() != b.size() || t.kind != 'f') return false;
  if (startsWith(c.name,
                 {"Copy", "Move", "Set", "Flip", "Sample", "Real", "CplxToReal", "Imag", "Abs", "FilterMedian"}))
    return false;
  const bool sorts = startsWith(c.name, {"Sort"});
  return t.width == 4 ? sameNumbers<float>(a, b, sorts) : sameNumbers<double>(a, b, sorts);
}

// Among equal keys any order of the indices will do, but each has to stand for its key, once.
std::string checkSorted(const Case& c, const Outcome& o) {
  const size_t size = c.values[0].type.size(), n = c.values[0].before.size() / size;
  const auto key = [&](const std::vector<char>& v, size_t i) { return std::string(&v[i * size], size); };
  if (startsWith(c.name, {"SortIndex"})) {
    std::vector<bool> seen(n);
    for (size_t i = 0; i < n; ++i) {
      uint32_t from;
      memcpy(&from, &o.after[1][i * 4], 4);
      if (from >= n || seen[from] || key(c.values[0].before, from) != key(o.after[0], i))
        return "indices are not of the keys";
      seen[from] = true;
    }
  }
  std::multiset<std::string> before, after;
  for (size_t i = 0; i < n; ++i) before.insert(key(c.values[0].before, i)), after.insert(key(o.after[0], i));
  return before == after ? "" : "lost keys";
}

bool elementwise(const Case& c) {
  return !c.rounded && c.ints.count("len") && !isReduction(c.name) &&
         !startsWith(c.name, {"Flip",        "ConjFlip",   "Win",           "Sort",           "Filter",
                              "Tone",        "Triangle",   "Vector",        "Rand",           "Haar",
                              "Copy_1u",     "Max",        "Min",           "CountIn",        "FFTGetSize",
                              "TrigGetSize", "FFTMulPack", "FFTMulAddPack", "FFTMulConjPack", "FFTMulConjAddPack"});
}

// The call for element `i` alone gives what the whole call put there.
std::string checkElement(const Case& c, const Outcome& whole, size_t i) {
  const size_t len = size_t(c.ints.at("len"));
  Case one = c;
  for (size_t k = 0; k < one.values.size(); ++k) {
    Value& v = one.values[k];
    if (c.row.parameters[k].name == "len") v.whole = 1;
    if (!c.row.parameters[k].array || v.null) continue;
    const size_t size = v.before.size() / len;
    v.before = std::vector<char>(&v.before[i * size], &v.before[i * size] + size);
    v.alias = -1;
  }
  const Outcome o = call(one, nullptr);
  if (o.status < 0) return "refused a single element";
  for (size_t k = 0; k < one.values.size(); ++k) {
    if (!one.values[k].written || one.values[k].null) continue;
    const size_t size = o.after[k].size();
    const auto from = whole.after[k].begin() + int64_t(i * size);
    if (!alike(c, k, o.after[k], std::vector<char>(from, from + int64_t(size))))
      return "differs from the call for element " + std::to_string(i) + " alone";
  }
  return "";
}

Operands operands(const Case& c, const Outcome& model, const Outcome& o) {
  Operands out{c.name, c.ints, {}};
  for (size_t i = 0; i < c.values.size(); ++i)
    out.arrays.push_back({c.values[i].type, c.values[i].pointer && !c.row.parameters[i].array, c.values[i].written,
                          c.row.parameters[i].name == "pSrcDst", c.values[i].before, o.after[i], model.after[i]});
  return out;
}

std::string compare(const Case& c, const Outcome& model, const Outcome& o) {
  if (!o.problem.empty()) return o.problem;
  if (o.status != model.status)
    return "status " + std::to_string(o.status) + ", the model's is " + std::to_string(model.status);
  for (size_t i = 0; i < c.values.size(); ++i) {
    const Value& v = c.values[i];
    if (!v.written || v.null) continue;
    if (o.status < 0 && v.alias < 0 && c.name != "CountInRange_32s" && o.after[i] != v.before)
      return "refused, but wrote " + c.row.parameters[i].name;
    const bool anyOrder = i == 1 && startsWith(c.name, {"SortIndex"});
    if (o.status >= 0 && !c.rounded && !anyOrder && !alike(c, i, o.after[i], model.after[i])) {
      const auto first = std::mismatch(o.after[i].begin(), o.after[i].end(), model.after[i].begin()).first;
      return "other results in " + c.row.parameters[i].name + " from byte " +
             std::to_string(first - o.after[i].begin());
    }
  }
  if (o.status < 0) return "";
  if (startsWith(c.name, {"Sort"})) return checkSorted(c, o);
  if (c.rounded) return checkRounded(operands(c, model, o));
  return "";
}

// The form of a function that works in place has another, whose name lacks the I.
std::string checkSibling(const Case& c, const Outcome& model) {
  const std::string name = c.row.name;
  const size_t at = name.find("_ISfs") != std::string::npos ? name.find("_ISfs") + 1 : name.size() - 1;
  const std::string other = at + 1 < name.size() ? name.substr(0, at) + "Sfs" : name.substr(0, at - 1);
  if (name[at] != 'I' || name[at - 1] != '_') return "";
  for (const Row& r : allRows()) {
    if (r.name != other) continue;
    const Case apart(r, c);
    const Outcome o = call(apart, nullptr);
    if (o.status != model.status) return "status " + std::to_string(o.status) + " of the form that is not in place";
    for (size_t i = 0; i < c.values.size(); ++i)
      for (size_t k = 0; k < apart.values.size(); ++k)
        if (c.values[i].written && apart.values[k].written && !c.rounded && o.status >= 0 &&
            !alike(c, i, model.after[i], o.after[k]))
          return "other results than the form that is not in place";
  }
  return "";
}

bool hasState(const Row& r) {
  for (const Parameter& p : r.parameters)
    if (p.type.find("State") != std::string::npos || p.type.find("Spec") != std::string::npos) return true;
  return false;
}

}  // namespace

std::string sweptCall(size_t row, int length) {
  std::string problem;
  // Of reductions several: a value that is not finite hides all others.
  for (int turn = isReduction(allRows()[row].name + 4) ? 3 : 0; turn >= 0 && problem.empty(); --turn) {
    const uint8_t seed[] = {uint8_t(row), uint8_t(row >> 8), uint8_t(length), uint8_t(length >> 8), uint8_t(turn)};
    Input in(seed, sizeof seed);
    in.onlySeed();
    in.fixedLength = length;
    problem = fuzzCall(row, in);
  }
  return problem;
}

std::string fuzzCall(size_t row, Input& in) {
  const Row& r = allRows()[row];
  if (!r.returnsStatus || hasState(r)) return "";
  if (std::string(r.name).find("GetSize") != std::string::npos) return "";  // sizes are a slot's own
  const Case c(r, in);
  for (const Value& v : c.values)
    if (v.before.size() > Slab::kSize - 128) return "";
  vek::setSlotForTest(0);
  const Outcome model = call(c, nullptr);
  std::string problem = compare(c, model, model);
  if (problem.empty() && in.fixedLength) problem = checkSibling(c, model);
  if (problem.empty() && model.status >= 0 && elementwise(c)) problem = checkPlain(operands(c, model, model));
  if (problem.empty() && model.status >= 0 && elementwise(c))
    for (int k = 0; k < 4 && problem.empty(); ++k)
      problem = checkElement(c, model, k ? in.random() % size_t(c.ints.at("len")) : size_t(c.ints.at("len") - 1));
  if (!problem.empty()) return c.describe() + ": " + problem + " (slot mx, aligned)";
  for (int slot : availableSlots()) {
    vek::setSlotForTest(slot);
    problem = compare(c, model, call(c, &in));
    if (!problem.empty()) return c.describe() + ": " + problem + " (slot " + slotName(slot) + ")";
  }
  return "";
}

}  // namespace vektest
