/* SPDX-License-Identifier: Apache-2.0
 * A telephone channel: speech-band noise through the two G.711 codes and back, at levels from full scale down, with the
 * signal-to-noise ratio that a listener gets. The ratio hardly falls over 40 dB: that is what companding is for. */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>

#include "vek.h"

enum { kLen = 80000 }; /* ten seconds at 8 kHz */

static Vek32f speech[kLen], sent[kLen], heard[kLen];
static Vek8u code[kLen];

static void must(VekStatus s) {
  if (s >= vekStsNoErr) return;
  fprintf(stderr, "%s\n", vekGetStatusString(s));
  exit(1);
}

/* Gaussian noise held to 300 to 3400 Hz. */
static void makeSpeech(void) {
  enum { kTaps = 129 };
  Vek32f taps[kTaps];
  unsigned seed = 1;
  VeksFIRState_32f* band;
  for (int i = 0; i < kTaps; ++i) {
    const double t = i - kTaps / 2, w = 2 * 3.14159265358979 / 8000 * t;
    taps[i] = (Vek32f)(t == 0 ? 2.0 * 3100 / 8000 : (sin(3400 * w) - sin(300 * w)) / (3.14159265358979 * t));
  }
  must(veksWinHann_32f_I(taps, kTaps));
  must(veksRandGauss_Direct_32f(speech, kLen, 0, 0.2f, &seed));
  must(veksFIRInitAlloc_32f(&band, taps, kTaps, NULL));
  must(veksFIR_32f_I(speech, kLen, band));
  must(veksFIRFree_32f(band));
}

static double ratioDb(const Vek32f* wanted, const Vek32f* got) {
  Vek32f signal, noise;
  must(veksNorm_L2_32f(wanted, kLen, &signal));
  must(veksNormDiff_L2_32f(wanted, got, kLen, &noise));
  return 20 * log10(signal / noise);
}

int main(void) {
  double worst = 1000;
  makeSpeech();
  printf("level dB   A-law dB   mu-law dB   A-law to mu-law dB\n");
  for (int level = 0; level >= -40; level -= 10) {
    double a, mu, both;
    must(veksMulC_32f(speech, (Vek32f)pow(10, level / 20.0), sent, kLen));
    must(veksLinToALaw_32f8u(sent, code, kLen));
    must(veksALawToLin_8u32f(code, heard, kLen));
    a = ratioDb(sent, heard);
    must(veksALawToMuLaw_8u(code, code, kLen)); /* as at the border between two networks */
    must(veksMuLawToLin_8u32f(code, heard, kLen));
    both = ratioDb(sent, heard);
    must(veksLinToMuLaw_32f8u(sent, code, kLen));
    must(veksMuLawToLin_8u32f(code, heard, kLen));
    mu = ratioDb(sent, heard);
    printf("%8d   %8.1f   %9.1f   %18.1f\n", level, a, mu, both);
    if (level >= -30 && mu < worst) worst = mu;
  }
  return worst > 30 ? 0 : 1;
}
