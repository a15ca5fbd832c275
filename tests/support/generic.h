// SPDX-License-Identifier: Apache-2.0
// Every dispatched function behind one interface, from the list derived from the prototypes: arguments that it accepts,
// the memory that they point into, and ways to call it.
#ifndef VEK_TESTS_GENERIC_H
#define VEK_TESTS_GENERIC_H

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "tests/support/raw_call.h"
#include "vek.h"
#include "vekx.h"

namespace vektest {

struct Parameter {
  bool array;
  std::string type, name;
};

// Lengths, of filters too, are this many times a dozen: 1 for the rules that hold at any length, more to get into the
// paths that long vectors take.
extern int lengthScale;
// If not 0, what every length is, in their place; up to 40.
extern int exactLength;
// For timing: if not 0, what every length is. Filters have at most 32 taps then, and arrays begin where their regions
// do.
extern int timedLength;

// States and specs, made for one call and released with it.
class Objects {
 public:
  Objects() = default;
  Objects(const Objects&) = delete;
  Objects& operator=(const Objects&) = delete;
  ~Objects() { release(); }
  void keep(std::function<void()> release) { releases_.push_back(std::move(release)); }
  void release() {
    for (const auto& one : releases_) one();
    abandon();
  }
  // For a call that releases them itself.
  void abandon() { releases_.clear(); }

 private:
  std::vector<std::function<void()>> releases_;
};

size_t regionSize(const Parameter& p);

// The memory of one call: a region for each parameter, arrays at an offset inside theirs.
struct Arena {
  std::vector<std::unique_ptr<char[], void (*)(void*)>> regions;
  std::vector<size_t> sizes;
  Objects objects;
  explicit Arena(const std::vector<Parameter>& parameters);
  void blank(size_t i);
  bool sameAs(const Arena& other, const std::set<size_t>& skip) const;
};

struct Row {
  const char* name;
  const void *function, *twin;
  std::vector<Parameter> parameters;
  std::vector<Argument (*)(Arena&, size_t region, const Parameter&)> make;  // one for each parameter
  bool returnsStatus;

  // A call with good arguments, but for the pointer parameter `null`, ready to be made.
  RawCall raw(Arena& arena, int null = -1) const;
  // Calls the function with the pointer parameter `null` set to null (none for -1), and the int parameter `bad` set to
  // `value` (none for -1).
  VekStatus call(Arena& arena, int null, int bad, int value) const;
  // The same through the twin; the array `null` (none for -1) is absent, though not its index.
  RawCall rawTwin(Arena& arena, int null = -1) const;
  VekStatus callTwin(Arena& arena, int null = -1) const;

  bool releases() const { return std::string(name).find("Free") != std::string::npos; }
  // Regions that hold addresses, which no two calls share.
  std::set<size_t> holdingAddresses() const;
  std::vector<Argument> arguments(Arena& arena) const;
};

const std::vector<Row>& allRows();

// Releases what an InitAlloc function left behind: the address of the state, at the start of the first region.
void releaseMade(const std::string& name, void* stored);

}  // namespace vektest

#endif
