/* SPDX-License-Identifier: Apache-2.0
 * 48 kHz to 44.1 kHz in two polyphase stages: 147/160 = 21/20 * 7/8. A 1 kHz tone goes in, and the 1 kHz tone of the
 * new rate should come out. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include "vek.h"

enum { kIn = 48000, kMid = kIn / 20 * 21, kOut = kMid / 8 * 7 };

static Vek32f in[kIn], mid[kMid], out[kOut];

static void must(VekStatus s) {
  if (s >= vekStsNoErr) return;
  fprintf(stderr, "%s\n", vekGetStatusString(s));
  exit(1);
}

/* A Kaiser-windowed low-pass filter for up/down, at the up-sampled rate, with the gain that zero insertion takes away.
 */
static VeksFIRState_32f* stage(int up, int down, int tapsPerPhase) {
  const int n = up * tapsPerPhase | 1, slower = up > down ? up : down;
  Vek32f* taps = veksMalloc_32f(n);
  VeksFIRState_32f* state;
  if (!taps) exit(1);
  for (int i = 0; i < n; ++i) {
    const double t = i - n / 2, w = 3.14159265358979 * 0.9 / slower;
    taps[i] = (Vek32f)(up * (t == 0 ? w / 3.14159265358979 : sin(w * t) / (3.14159265358979 * t)));
  }
  must(veksWinKaiser_32f_I(taps, n, 16.0f / (Vek32f)n)); /* beta 8 */
  must(veksFIRMRInitAlloc_32f(&state, taps, n, up, 0, down, 0, NULL));
  veksFree(taps);
  return state;
}

int main(void) {
  VeksFIRState_32f *first = stage(21, 20, 64), *second = stage(7, 8, 64);
  Vek32f phase = 0, whole;
  Vek32fc at, beside;
  must(veksTone_Direct_32f(in, kIn, 1, 1000.0f / 48000, &phase, vekAlgHintNone));
  must(veksFIR_32f(in, mid, kIn / 20, first)); /* 20 samples in, 21 out, each time */
  must(veksFIR_32f(mid, out, kMid / 8, second));
  must(veksFIRFree_32f(first));
  must(veksFIRFree_32f(second));

  const int skip = 4410, len = 35280; /* behind the filters' start; 800 periods of the tone */
  must(veksGoertz_32f(out + skip, len, &at, 1000.0f / 44100));
  must(veksGoertz_32f(out + skip, len, &beside, 7000.0f / 44100));
  must(veksNorm_L2_32f(out + skip, len, &whole));
  const double tone = hypot(at.re, at.im) * 2 / len, rms = whole / sqrt(len);
  printf("%d samples at 48 kHz, %d at 44.1 kHz\n", kIn, kOut);
  printf("amplitude at 1 kHz %.5f, at 7 kHz %.1e, rms %.5f\n", tone, hypot(beside.re, beside.im) * 2 / len, rms);
  return kOut == 44100 && fabs(tone - 1) < 1e-3 && fabs(rms - sqrt(0.5)) < 1e-3 ? 0 : 1;
}
