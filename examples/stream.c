/* SPDX-License-Identifier: Apache-2.0
 * Streaming without an allocation: a low-pass filter whose state lies in memory of the caller's, fed in pieces of
 * whatever size arrives, gives what one call over the whole signal gives. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include "vek.h"

enum { kLen = 20000, kTaps = 101 };

static Vek32f signal[kLen], whole[kLen], pieces[kLen];

static void must(VekStatus s) {
  if (s >= vekStsNoErr) return;
  fprintf(stderr, "%s\n", vekGetStatusString(s));
  exit(1);
}

int main(void) {
  Vek32f taps[kTaps], phase = 0, sum, off, size;
  unsigned seed = 7;
  VeksFIRState_32f *once, *stream;
  Vek8u* memory = malloc(vekFIRBufferSize_32f(kTaps));
  if (!memory) return 1;
  must(veksSet_32f(1, taps, kTaps));
  must(veksWinBlackmanStd_32f_I(taps, kTaps)); /* a window is itself a gentle low-pass filter */
  must(veksSum_32f(taps, kTaps, &sum, vekAlgHintNone));
  must(veksMulC_32f_I(1 / sum, taps, kTaps));
  must(veksTone_Direct_32f(signal, kLen, 1, 0.001f, &phase, vekAlgHintNone));
  must(veksRandUniform_Direct_32f(whole, kLen, -0.5f, 0.5f, &seed));
  must(veksAdd_32f_I(whole, signal, kLen));

  must(veksFIRInitAlloc_32f(&once, taps, kTaps, NULL));
  must(veksFIR_32f(signal, whole, kLen, once));
  must(veksFIRFree_32f(once));

  must(veksFIRInit_32f(&stream, taps, kTaps, NULL, memory)); /* lives in `memory`; nothing to free but that */
  for (int at = 0, len; at < kLen; at += len) {
    len = 1 + (at * 37 + 11) % 700;
    if (len > kLen - at) len = kLen - at;
    must(veksFIR_32f(signal + at, pieces + at, len, stream));
  }
  must(veksNormDiff_Inf_32f(whole, pieces, kLen, &off));
  must(veksNorm_Inf_32f(whole, kLen, &size));
  printf("%d samples in pieces, state of %zu bytes in caller memory\n", kLen, vekFIRBufferSize_32f(kTaps));
  printf("largest difference from one call: %.2g of %.2g\n", off, size);
  free(memory);
  return off <= 4e-6f * size ? 0 : 1;
}
