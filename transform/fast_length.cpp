// SPDX-License-Identifier: Apache-2.0
// The next length that goes through passes of the smallest radices alone.
#include <stdint.h>

#include "vekx/fft.h"

namespace {

constexpr int kLongest = 1 << 27;

}  // namespace

VekStatus vekxFFTGetFastLen(int len, int* pLen) {
  if (!pLen) return vekStsNullPtrErr;
  if (len < 1 || len > kLongest) return vekStsSizeErr;
  int64_t best = kLongest;
  for (int64_t sevens = 1; sevens < best; sevens *= 7)
    for (int64_t fives = sevens; fives < best; fives *= 5)
      for (int64_t n = fives; n < best; n *= 3) {
        int64_t filled = n;
        while (filled < len) filled *= 2;
        if (filled < best) best = filled;
      }
  *pLen = int(best);
  return vekStsNoErr;
}
