// SPDX-License-Identifier: Apache-2.0
// Runs a function on a processor that seems to end at SSE4.2: the kernel can make CPUID fault, and the handler answers
// without AVX and what came later. A library that asks only once keeps the answer.
#ifndef VEK_BENCH_WITHOUT_AVX_H
#define VEK_BENCH_WITHOUT_AVX_H

#include <asm/prctl.h>
#include <cpuid.h>
#include <signal.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

namespace vekbench {

inline bool allowCpuid(bool allowed) { return syscall(SYS_arch_prctl, ARCH_SET_CPUID, allowed ? 1L : 0L) == 0; }

inline void answerCpuid(int, siginfo_t*, void* context) {
  auto* r = static_cast<ucontext_t*>(context)->uc_mcontext.gregs;
  const auto* code = reinterpret_cast<const unsigned char*>(r[REG_RIP]);
  if (code[0] != 0x0f || code[1] != 0xa2) {  // a fault of another kind
    signal(SIGSEGV, SIG_DFL);
    return;
  }
  const unsigned leaf = unsigned(r[REG_RAX]);
  unsigned a, b, c, d;
  allowCpuid(true);
  __cpuid_count(leaf, unsigned(r[REG_RCX]), a, b, c, d);
  if (leaf == 1) c &= ~(bit_AVX | bit_OSXSAVE | bit_FMA);
  if (leaf == 7) b = c = d = 0;
  r[REG_RAX] = a, r[REG_RBX] = b, r[REG_RCX] = c, r[REG_RDX] = d;
  r[REG_RIP] += 2;
  allowCpuid(false);
}

// False, and f is not called, where CPUID cannot be made to fault.
template <class F>
bool withoutAvx(F f) {
  struct sigaction handler = {}, before;
  handler.sa_sigaction = answerCpuid;
  handler.sa_flags = SA_SIGINFO;
  sigaction(SIGSEGV, &handler, &before);
  const bool possible = allowCpuid(false);
  if (possible) {
    f();
    allowCpuid(true);
  }
  sigaction(SIGSEGV, &before, nullptr);
  return possible;
}

}  // namespace vekbench

#endif
