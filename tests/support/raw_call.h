// SPDX-License-Identifier: Apache-2.0
// A call made register by register, and everything that the calling convention has to say about what comes back.
#ifndef VEK_TESTS_RAW_CALL_H
#define VEK_TESTS_RAW_CALL_H

#include <stddef.h>
#include <stdint.h>
#include <string.h>

#include <type_traits>
#include <vector>

#include "vek/types.h"

namespace vektest {

// Laid out as raw_call.S has it.
struct RawCall {
  const void* function;
  uint64_t integer[6];
  unsigned char vector[8][16];
  uint64_t stack[10];
  uint32_t avx;  // bit 0: look at the upper halves of the vector registers; bit 1: ask the processor for them, too

  // Found after the call.
  uint32_t xinuse;       // state components in use
  uint64_t result;       // rax
  uint64_t saved[6];     // rbx, rbp, r12 to r15
  int64_t stackMoved;    // stack pointer against its place before the call
  uint64_t frameDamage;  // words of the caller's frame that changed
  uint64_t stackUsed;    // bytes below the caller's frame that were written, 40 KiB at most
  uint64_t flags;        // rflags
  uint32_t mxcsr;        // set before the call
  uint16_t fpuControl, fpuTags;
  unsigned char upper[16][32];  // ymm0 to ymm15
};
static_assert(offsetof(RawCall, avx) == 264 && offsetof(RawCall, upper) == 368);

// What the registers hold before the call.
constexpr uint64_t kRawPattern = 0xC0FFEE5EED5EED01;
constexpr uint32_t kRawMxcsr = 0x1FC0;  // denormals are zero: not what a library would set by itself
constexpr uint16_t kRawFpuControl = 0x027F;

extern "C" void vek_raw_call(RawCall*);

// One argument: the register class it travels in and its bits, at most eight bytes of them.
struct Argument {
  bool vector;
  unsigned char bytes[8];
  size_t size;     // how many of the bytes are the argument; the rest is junk
  size_t element;  // of an array: the size of its elements
};

template <class T>
Argument argumentOf(const T& value, size_t element = 0) {
  static_assert(sizeof(T) <= 8);
  Argument a{std::is_floating_point_v<T> || std::is_same_v<T, Vek32fc>, {}, sizeof(T), element};
  memset(a.bytes, 0xDB, sizeof a.bytes);
  if constexpr (std::is_integral_v<T> && sizeof(T) < 4) {
    const int promoted = value;  // the caller's duty
    memcpy(a.bytes, &promoted, sizeof promoted);
  } else {
    memcpy(a.bytes, &value, sizeof value);
  }
  return a;
}

// The arguments in their registers and on the stack, whatever is unused filled with junk.
inline RawCall rawCall(const void* function, const std::vector<Argument>& arguments) {
  RawCall call;
  memset(&call, 0xDB, sizeof call);
  call.function = function;
  call.avx = 0;
  call.mxcsr = kRawMxcsr;
  size_t integers = 0, vectors = 0, words = 0;
  for (const Argument& a : arguments) {
    void* at = a.vector && vectors < 8     ? static_cast<void*>(call.vector[vectors++])
               : !a.vector && integers < 6 ? &call.integer[integers++]
                                           : &call.stack[words++];
    memcpy(at, a.bytes, sizeof a.bytes);
  }
  return call;
}

}  // namespace vektest

#endif
