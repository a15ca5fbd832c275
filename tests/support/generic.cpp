// SPDX-License-Identifier: Apache-2.0
#include "tests/support/generic.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <type_traits>

namespace vektest {

int lengthScale = 1;
int exactLength = 0;
int timedLength = 0;

// Room for a dozen elements of any type, or for any state that a small filter is built into.
size_t regionSize(const Parameter& p) {
  const bool buffer = p.name.find("Buffer") != std::string::npos;
  if (timedLength > 0) return size_t(timedLength) * (buffer ? 64 : 24) + (buffer ? 1 << 18 : 1024);
  if (buffer) return size_t(1) << (lengthScale > 50 ? 22 : lengthScale > 1 ? 20 : 18);
  return 1024 * size_t(lengthScale);
}

namespace {

// Of the harness itself; a program that only times has no test to fail.
[[noreturn]] void fail(const char* what, const char* why) {
  fprintf(stderr, "%s %s\n", what, why);
  abort();
}

std::vector<Parameter> parse(const std::string& text) {
  std::vector<Parameter> out;
  std::istringstream in(text);
  for (std::string one; std::getline(in, one, ';');) {
    const size_t from = one.find_first_not_of(' '), kind = one.find(' ', from), name = one.rfind(' ');
    out.push_back({one.compare(from, 5, "array") == 0, one.substr(kind + 1, name - kind - 1), one.substr(name + 1)});
  }
  return out;
}

int plainLength(const std::string& name, int dozen) {
  if (timedLength == 0) return dozen * lengthScale;
  return name == "src2Len" || name == "tapsLen" ? std::min(timedLength, 32) : timedLength;
}

// Plain arguments that every function accepts, by the name of the parameter.
int plainInt(const std::string& name) {
  static const std::map<std::string, int> values = {
      {"len", 12},         {"srcLen", 12},    {"src1Len", 9},     {"src2Len", 7}, {"dstLen", 8},
      {"numIters", 6},     {"tapsLen", 4},    {"order", 2},       {"numBq", 1},   {"factor", 2},
      {"upFactor", 2},     {"downFactor", 3}, {"scaleFactor", 1}, {"rndMode", 1}, {"srcBitOffset", 3},
      {"dstBitOffset", 5}, {"upPhase", 1},    {"downPhase", 1},   {"levelLT", 1}, {"levelGT", 2},
      {"val", 3},          {"lowerBound", 1}, {"upperBound", 99}, {"magn", 5},    {"level", 3},
      {"value", 4},        {"valueLT", 6},    {"valueGT", 7},     {"type", 2},    {"count", 2},
      {"stride", 1},       {"srcStride", 1},  {"dstStride", 1}};
  static const std::set<std::string> scaled = {"len", "srcLen", "src1Len", "src2Len", "dstLen", "numIters", "tapsLen"};
  // From one array to the next: room for the spectrum of as many real numbers as there are in each.
  if (name == "distance" || name == "srcDistance" || name == "dstDistance") return plainLength("len", 12) / 2 * 2 + 2;
  if (name == "maskSize") return timedLength > 0 ? 5 : 2 * lengthScale + 1;
  if (exactLength && scaled.count(name)) return exactLength;
  const auto it = values.find(name);
  return it == values.end() ? 0 : scaled.count(name) ? plainLength(name, it->second) : it->second;
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

template <class T>
constexpr bool kOpaque = false;

#include "tests/support/generic_states.inc"

// Where the array of a region begins, in its own elements: elsewhere in each, lest twins mix up their indices
// unnoticed.
size_t beginning(size_t region) { return timedLength > 0 ? 0 : 5 + 2 * region; }

template <class A>
Argument argument(Arena& arena, size_t region, const Parameter& p) {
  if constexpr (!std::is_pointer_v<A>) {
    return argumentOf(plainValue<A>(p.name));
  } else {
    using T = std::remove_cv_t<std::remove_pointer_t<A>>;
    char* const memory = arena.regions[region].get();
    if constexpr (kOpaque<T>) {
      return argumentOf(makeState<T>(arena.objects));
    } else if constexpr (std::is_void_v<T>) {
      return argumentOf(static_cast<void*>(nullptr));
    } else {
      if (p.array) return argumentOf(memory + beginning(region) * sizeof(T), sizeof(T));
      arena.blank(region);
      return argumentOf(memory);
    }
  }
}

template <class R, class... A, class... T>
void addRow(std::vector<Row>& all, const char* name, R (*f)(A...), R (*twin)(T...), const char* parameters) {
  Row row;
  row.name = name;
  row.function = reinterpret_cast<const void*>(f);
  row.twin = reinterpret_cast<const void*>(twin);
  row.parameters = parse(parameters);
  row.make = {&argument<A>...};
  row.returnsStatus = std::is_same_v<R, VekStatus>;
  size_t arrays = 0;
  for (const Parameter& p : row.parameters) arrays += p.array;
  if (sizeof...(T) != sizeof...(A) + arrays) fail(name, "has a twin of another shape");
  all.push_back(row);
}

}  // namespace

Arena::Arena(const std::vector<Parameter>& parameters) {
  for (size_t i = 0; i < parameters.size(); ++i) {
    sizes.push_back(regionSize(parameters[i]));
    regions.emplace_back(static_cast<char*>(aligned_alloc(64, sizes[i])), [](void* p) { free(p); });
    // Small positive numbers whatever type reads them: bytes that are finite as floats and doubles.
    constexpr size_t period = 100;
    char* const region = regions[i].get();
    for (size_t k = 0; k < period; ++k) region[k] = char(k % 4 == 3 ? 0x3F : (k * 7 + i) % period);
    for (size_t k = period; k < sizes[i]; k += period) memcpy(region + k, region, std::min(period, sizes[i] - k));
  }
}

void Arena::blank(size_t i) { memset(regions[i].get(), 0, sizes[i]); }

bool Arena::sameAs(const Arena& other, const std::set<size_t>& skip) const {
  for (size_t i = 0; i < regions.size(); ++i)
    if (!skip.count(i) && memcmp(regions[i].get(), other.regions[i].get(), sizes[i]) != 0) return false;
  return true;
}

std::set<size_t> Row::holdingAddresses() const {
  std::set<size_t> skip;
  bool makesState = false;
  for (const Parameter& p : parameters) makesState |= p.name.substr(0, 2) == "pp";
  for (size_t i = 0; i < parameters.size(); ++i)
    if (makesState && parameters[i].type.find("const") == std::string::npos) skip.insert(i);
  return skip;
}

std::vector<Argument> Row::arguments(Arena& arena) const {
  std::vector<Argument> out;
  for (size_t i = 0; i < parameters.size(); ++i) out.push_back(make[i](arena, i, parameters[i]));
  return out;
}

RawCall Row::raw(Arena& arena, int null) const {
  std::vector<Argument> all = arguments(arena);
  if (null >= 0) all[size_t(null)] = argumentOf(static_cast<void*>(nullptr));
  return rawCall(function, all);
}

VekStatus Row::call(Arena& arena, int null, int bad, int value) const {
  std::vector<Argument> all = arguments(arena);
  if (null >= 0) all[size_t(null)] = argumentOf(static_cast<void*>(nullptr));
  if (bad >= 0) all[size_t(bad)] = argumentOf(value);
  RawCall c = rawCall(function, all);
  vek_raw_call(&c);
  return VekStatus(c.result);
}

// Each argument as the function gets it, but behind an array its index, with the base moved back by as much.
RawCall Row::rawTwin(Arena& arena, int null) const {
  std::vector<Argument> all;
  const std::vector<Argument> direct = arguments(arena);
  for (size_t i = 0; i < direct.size(); ++i) {
    all.push_back(direct[i]);
    if (direct[i].element == 0) continue;
    char* base;
    memcpy(&base, direct[i].bytes, sizeof base);
    all.back() = argumentOf(null == int(i) ? nullptr : base - beginning(i) * direct[i].element);
    all.push_back(argumentOf(int(beginning(i))));
  }
  return rawCall(twin, all);
}

VekStatus Row::callTwin(Arena& arena, int null) const {
  RawCall c = rawTwin(arena, null);
  vek_raw_call(&c);
  return VekStatus(c.result);
}

const std::vector<Row>& allRows() {
  static const std::vector<Row> rows = [] {
    std::vector<Row> all;  // one by one: a list of them all takes compilers gigabytes
#define VEK_FUNCTION(NAME, RESULT, PARAMETERS) addRow(all, #NAME, &NAME, &NAME##_Idx, PARAMETERS);
#include "vek/functions.inc"
#include "vekx/functions.inc"
#undef VEK_FUNCTION
    return all;
  }();
  return rows;
}

void releaseMade(const std::string& name, void* stored) {
  void* state;
  memcpy(&state, stored, sizeof state);
#define VEK_RELEASE(PREFIX, SUFFIX, TYPE, FREE) \
  if (name == PREFIX #SUFFIX) FREE(static_cast<TYPE*>(state));
#define VEK_RELEASE_FILTERS(SUFFIX)                                                    \
  VEK_RELEASE("veksFIRInitAlloc", SUFFIX, VeksFIRState##SUFFIX, veksFIRFree##SUFFIX)   \
  VEK_RELEASE("veksFIRMRInitAlloc", SUFFIX, VeksFIRState##SUFFIX, veksFIRFree##SUFFIX) \
  VEK_RELEASE("veksIIRInitAlloc", SUFFIX, VeksIIRState##SUFFIX, veksIIRFree##SUFFIX)   \
  VEK_RELEASE("veksIIRInitAlloc_BiQuad", SUFFIX, VeksIIRState##SUFFIX, veksIIRFree##SUFFIX)
  VEK_RELEASE_FILTERS(_32f)
  VEK_RELEASE_FILTERS(_32fc)
  VEK_RELEASE_FILTERS(64f_32f)
  VEK_RELEASE_FILTERS(64fc_32fc)
  VEK_RELEASE("veksDCTFwdInitAlloc", _32f, VeksDCTFwdSpec_32f, veksDCTFwdFree_32f)
  VEK_RELEASE("veksDCTInvInitAlloc", _32f, VeksDCTInvSpec_32f, veksDCTInvFree_32f)
#define VEKX_RELEASE(FAMILY, KIND) \
  VEK_RELEASE("vekx" #FAMILY "InitAlloc_", KIND, Vekx##FAMILY##Spec_##KIND, vekx##FAMILY##Free_##KIND)
  VEKX_RELEASE(FFT, 32f)
  VEKX_RELEASE(FFT, 64f)
  VEKX_RELEASE(FFT, 32fc)
  VEKX_RELEASE(FFT, 64fc)
  VEKX_RELEASE(Trig, 32f)
  VEKX_RELEASE(Trig, 64f)
#undef VEKX_RELEASE
#undef VEK_RELEASE_FILTERS
#undef VEK_RELEASE
}

}  // namespace vektest
