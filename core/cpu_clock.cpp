// SPDX-License-Identifier: Apache-2.0
// The cycle counter, and the frequency measured with it against the wall clock.
#include <immintrin.h>
#include <time.h>

#include "core/cpu.h"

namespace vek {
namespace {

// File time: units of 100 ns since the start of 1601.
constexpr int64_t kUnitsPerSecond = 10000000;
constexpr int64_t kEpoch1970 = 116444736000000000;

}  // namespace

int32_t measureFreqMhz(const ClockSource& clock) {
  constexpr int64_t kLastSecond = 32535244799;  // later times are not told apart
  const auto seconds = [&clock] {
    const int64_t s = (clock.fileTime(clock.context) - kEpoch1970) / kUnitsPerSecond;
    return s > kLastSecond ? -1 : s;
  };
  // The first round only finds the start of a second; the two after it each span one.
  uint64_t spans[3];
  for (uint64_t& span : spans) {
    const uint64_t start = clock.cycles(clock.context);
    const int64_t second = seconds();
    while (seconds() == second) {
    }
    span = clock.cycles(clock.context) - start;
  }
  const float sum = static_cast<float>(spans[1]) + static_cast<float>(spans[2]);
  const double mhz = static_cast<double>(sum) / 1000000.0 * 0.5;
  return _mm_cvttsd_si32(_mm_set_sd(mhz));  // defined for every value, unlike a cast
}

namespace {

uint64_t nativeCycles(void*) { return __rdtsc(); }

int64_t nativeFileTime(void*) {
  timespec now;
  clock_gettime(CLOCK_REALTIME, &now);
  return kEpoch1970 + static_cast<int64_t>(now.tv_sec) * kUnitsPerSecond + now.tv_nsec / 100;
}

}  // namespace
}  // namespace vek

Vek64u vekGetCpuClocks() { return __rdtsc(); }

VekStatus vekGetCpuFreqMhz(int* pMhz) {
  if (!pMhz) return vekStsNullPtrErr;
  *pMhz = vek::measureFreqMhz({vek::nativeCycles, vek::nativeFileTime, nullptr});
  return vekStsNoErr;
}
