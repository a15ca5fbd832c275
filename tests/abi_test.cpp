// SPDX-License-Identifier: Apache-2.0
// The calling convention, for every function in every slot: what belongs to the caller is as it was, junk in the unused
// parts of argument registers changes nothing, and the stack is used sparingly, which a thread with a small one proves.
#include <errno.h>
#include <pthread.h>

#include "tests/support/generic.h"
#include "tests/support/slots.h"

extern "C" {
void vek_culprit_register();
void vek_culprit_stack_pointer();
void vek_culprit_frame();
void vek_culprit_direction();
void vek_culprit_mxcsr();
void vek_culprit_fpu_control();
void vek_culprit_fpu_tags();
void vek_culprit_deep();
void vek_culprit_upper();
void vek_culprit_argument();
}

namespace vektest {
namespace {

constexpr uint64_t kStackBound = 32 << 10;

// Whether upper halves can be looked at, and whether XGETBV tells of them: it does if the bit follows the state.
uint32_t vectorChecks() {
  static const uint32_t checks = [] {
    Vek64u mask = 0;
    Vek32u registers[4] = {0xD, 0, 1, 0};
    vekGetCpuFeatures(&mask, nullptr);
    if (!(mask & VEK_FEATURE_AVX_OS)) return 0u;
    mask = UINT64_C(0x616F666E69746567);
    vekGetCpuFeatures(&mask, registers);
    if (!(registers[0] & 4)) return 1u;
    RawCall dirty = rawCall(reinterpret_cast<const void*>(&vek_culprit_upper), {});
    RawCall clean = rawCall(reinterpret_cast<const void*>(&vek_culprit_register), {});
    dirty.avx = clean.avx = 3;
    vek_raw_call(&dirty);
    vek_raw_call(&clean);
    return (dirty.xinuse & 4) && !(clean.xinuse & 4) ? 3u : 1u;
  }();
  return checks;
}

// The rules that the call broke; empty if none.
std::string broken(RawCall& call) {
  constexpr int kErrno = 77;
  call.avx = vectorChecks();
  errno = kErrno;
  vek_raw_call(&call);
  std::string rules;
  if (errno != kErrno) rules += " errno";
  for (const uint64_t word : call.saved)
    if (word != kRawPattern) rules += " register";
  if (call.stackMoved != 0) rules += " stack_pointer";
  if (call.frameDamage != 0) rules += " frame";
  if (call.flags & 0x400) rules += " direction";
  if ((call.mxcsr ^ kRawMxcsr) & 0xFFC0) rules += " mxcsr";
  if (call.fpuControl != kRawFpuControl) rules += " fpu_control";
  if (call.fpuTags != 0xFFFF) rules += " fpu_tags";
  if (call.stackUsed > kStackBound) rules += " deep";
  bool clean = !((call.avx & 2) && (call.xinuse & 4));
  if (call.avx & 1)
    for (const auto& ymm : call.upper)
      for (int i = 16; i < 32; ++i) clean &= ymm[i] == 0;
  if (!clean) rules += " upper";
  return rules;
}

TEST(CallingConvention, ItsTestCatchesEachCulprit) {
  const auto expect = [](const char* rule, void (*culprit)()) {
    RawCall call = rawCall(reinterpret_cast<const void*>(culprit), {});
    EXPECT_EQ(broken(call), std::string(" ") + rule);
  };
  expect("register", vek_culprit_register);
  expect("stack_pointer", vek_culprit_stack_pointer);
  expect("frame", vek_culprit_frame);
  expect("direction", vek_culprit_direction);
  expect("mxcsr", vek_culprit_mxcsr);
  expect("fpu_control", vek_culprit_fpu_control);
  expect("fpu_tags", vek_culprit_fpu_tags);
  expect("deep", vek_culprit_deep);
  expect("errno", [] { errno = ERANGE; });
  if (vectorChecks()) expect("upper", vek_culprit_upper);
  RawCall call = rawCall(reinterpret_cast<const void*>(&vek_culprit_argument), {argumentOf(3)});
  EXPECT_EQ(broken(call), "");
  EXPECT_NE(call.result, 0u) << "the junk does not reach the upper half of an argument";
}

struct Finding {
  std::string function, rules;
};
std::vector<Finding> findings;
RawCall deepest;
const char* deepestName;

// Findings are reported by the thread that has room for it.
void callEveryFunction() {
  for (const Row& r : allRows()) {
    Arena arena(r.parameters), other(r.parameters);
    RawCall call = r.raw(arena);
    std::string rules = broken(call);
    if (std::string(r.name).find("Malloc") != std::string::npos) veksFree(reinterpret_cast<void*>(call.result));
    if (r.releases()) arena.objects.abandon();
    if (r.returnsStatus && !r.releases()) {
      RawCall twin = r.rawTwin(other);
      if (const std::string broke = broken(twin); !broke.empty()) rules += " twin:" + broke;
      if (VekStatus(twin.result) != VekStatus(call.result)) rules += " status";
      if (!arena.sameAs(other, r.holdingAddresses())) rules += " results";
      releaseMade(r.name, arena.regions[0].get());
      releaseMade(r.name, other.regions[0].get());
    }
    if (!rules.empty()) findings.push_back({r.name, rules});
    if (call.stackUsed > deepest.stackUsed) deepest = call, deepestName = r.name;
  }
}

TEST(CallingConvention, EveryFunctionKeepsItOnASmallStack) {
  vectorChecks();
  allRows();
  inEverySlot([](int slot) {
    for (const int scale : {1, 50, 420}) {  // 12, 600 and 5,040 elements
      lengthScale = scale;
      pthread_t thread;
      pthread_attr_t small;
      pthread_attr_init(&small);
      ASSERT_EQ(pthread_attr_setstacksize(&small, 64 << 10), 0);
      const auto run = [](void*) -> void* { return callEveryFunction(), nullptr; };
      ASSERT_EQ(pthread_create(&thread, &small, run, nullptr), 0);
      pthread_join(thread, nullptr);
      pthread_attr_destroy(&small);
      for (const Finding& f : findings) ADD_FAILURE() << f.function << " at scale " << scale << ":" << f.rules;
      findings.clear();
    }
    lengthScale = 1;
    printf("slot %s: %llu bytes of stack at most, in %s\n", slotName(slot), (unsigned long long)deepest.stackUsed,
           deepestName);
    deepest.stackUsed = 0;
  });
}

}  // namespace
}  // namespace vektest
