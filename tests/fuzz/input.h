// SPDX-License-Identifier: Apache-2.0
// What a fuzzed call is made of, drawn from a string of bytes: choices come from the bytes while there are any, then,
// as all bulk data, from a generator that the whole string seeds. A short string is a whole test.
#ifndef VEK_TESTS_FUZZ_INPUT_H
#define VEK_TESTS_FUZZ_INPUT_H

#include <stdint.h>
#include <string.h>

#include <initializer_list>
#include <string>
#include <vector>

#include "tests/support/data.h"

namespace vektest {

class Input {
 public:
  Input(const uint8_t* data, size_t size) : at_(data), end_(data + size) {
    for (size_t i = 0; i < size; ++i) state_ = (state_ ^ data[i]) * 1099511628211u;
  }

  uint64_t random() {
    uint64_t z = state_ += 0x9E3779B97F4A7C15;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EB;
    return z ^ (z >> 31);
  }
  double uniform() { return double(int64_t(random())) * 0x1p-63; }  // in [-1, 1]

  uint32_t below(uint32_t n) {
    if (n < 2) return 0;
    if (at_ == end_) return uint32_t(random() % n);
    uint32_t x = *at_++;
    if (n > 256 && at_ != end_) x = x << 8 | *at_++;
    return x % n;
  }
  bool oneIn(uint32_t n) { return below(n) == n - 1; }
  int between(int low, int high) { return low + int(below(uint32_t(high - low) + 1)); }
  int any(std::initializer_list<int> list) { return list.begin()[below(uint32_t(list.size()))]; }

  // Takes all choices from the generator: bytes that count something would choose alike each time.
  void onlySeed() { at_ = end_; }

  // Where this is not 0, calls have this length and no wrong arguments.
  int fixedLength = 0;

 private:
  const uint8_t *at_, *end_;
  uint64_t state_ = 14695981039346656037u;
};

// An element type by its name, as prototypes spell it.
struct Type {
  char kind;  // 'u', 's' or 'f'
  size_t width, parts;
  size_t size() const { return width * parts; }
};
Type typeOf(std::string name);

// Kinds of data. Finite ones are for results with a bound.
enum class Flavour { kUniform, kBits, kSpecial, kQuarters, kTiny, kHuge, kSmall, kConstant, kCount };
void fill(Input& in, const Type& type, Flavour flavour, void* to, size_t count);

// What is wrong with the library for an input, nothing by good fortune. Each of fuzzTargets() targets is a function or
// a stream; the first two bytes choose it.
size_t fuzzTargets();
std::string fuzz(const uint8_t* data, size_t size);

// The two kinds of targets.
std::string fuzzCall(size_t row, Input& in);
// Of a call of this length, and of the in-place form of a function against the other.
std::string sweptCall(size_t row, int length);
constexpr size_t kStreams = 17;
std::string fuzzStream(size_t stream, Input& in);

}  // namespace vektest

#endif
