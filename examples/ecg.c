/* SPDX-License-Identifier: Apache-2.0
 * Five minutes of a human electrocardiogram, from raw samples to beats, rate and a compressed copy: every step one or
 * two calls of the library. Prints what it found and draws ecg.svg.
 *
 *   ecg SAMPLES.s16le [OUT.svg]
 */
#define _POSIX_C_SOURCE 200809L
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <time.h>
#include <unistd.h>

#include "vek.h"

enum {
  kRate = 360, /* samples a second */
  kCountsPerMillivolt = 200,
  kBlock = 256, /* samples to a transform of the compressor */
  kMaxSamples = 1 << 20,
  kMaxBeats = 1 << 14
};

static int samples;
static Vek16s raw[kMaxSamples];
static Vek32f signal[kMaxSamples]; /* millivolts as recorded */
static Vek32f clean[kMaxSamples];  /* without baseline wander and mains hum */
static Vek32f energy[kMaxSamples]; /* of the steep part of each beat */
static Vek32f work[kMaxSamples];
static int beat[kMaxBeats], beats;

/* ---- progress and time ------------------------------------------------------------------------------------------- */

static double clockMs(void) {
  struct timespec t;
  clock_gettime(CLOCK_MONOTONIC, &t);
  return 1e3 * (double)t.tv_sec + 1e-6 * (double)t.tv_nsec;
}

static const char* stageName[16];
static double stageMs[16], stageStart;
static int stages;

static void stage(const char* name) {
  const double now = clockMs();
  if (stages > 0) stageMs[stages - 1] = now - stageStart;
  stageStart = now;
  if (!name) return;
  stageName[stages++] = name;
  if (isatty(2)) fprintf(stderr, "\r\033[K%s ...", name), fflush(stderr);
}

static void must(VekStatus status, const char* what) {
  if (status >= vekStsNoErr) return;
  fprintf(stderr, "%s: %s\n", what, vekGetStatusString(status));
  exit(1);
}

/* ---- steps ---------------------------------------------------------------------------------------------------------
 */

static void readSamples(const char* path) {
  FILE* f = fopen(path, "rb");
  if (!f) {
    perror(path);
    exit(1);
  }
  samples = (int)fread(raw, sizeof *raw, kMaxSamples, f);
  fclose(f);
  if (samples < 10 * kRate) {
    fprintf(stderr, "%s: less than ten seconds of samples\n", path);
    exit(1);
  }
}

/* Two running medians follow the baseline and nothing else: the first is wider than a QRS complex, the second than a
 * T wave. What they give is taken away. */
static void removeBaseline(void) {
  must(veksFilterMedian_32f(signal, work, samples, kRate / 5 | 1), "median");
  must(veksFilterMedian_32f_I(work, samples, kRate * 3 / 5 | 1), "median");
  must(veksSub_32f(work, signal, clean, samples), "subtract");
}

/* A second-order notch at the mains frequency, bandwidth 2 Hz. */
static void removeHum(void) {
  const double w = 2 * M_PI * 60 / kRate, r = 1 - M_PI * 2 / kRate,
               gain = (1 - 2 * r * cos(w) + r * r) / (2 - 2 * cos(w));
  const Vek32f section[6] = {(Vek32f)gain,   (Vek32f)(-2 * gain * cos(w)), (Vek32f)gain, 1, (Vek32f)(-2 * r * cos(w)),
                             (Vek32f)(r * r)};
  VeksIIRState_32f* notch = NULL;
  must(veksIIRInitAlloc_BiQuad_32f(&notch, section, 1, NULL), "notch");
  must(veksIIR_32f_I(clean, samples, notch), "notch");
  veksIIRFree_32f(notch);
}

static void fir(const Vek32f* taps, int tapsLen, const Vek32f* src, Vek32f* dst) {
  VeksFIRState_32f* state = NULL;
  must(veksFIRInitAlloc_32f(&state, taps, tapsLen, NULL), "FIR filter");
  must(veksFIR_32f(src, dst, samples, state), "FIR filter");
  veksFIRFree_32f(state);
}

/* Band-pass 5 to 18 Hz, slope, square, mean over 0.12 s: large just where a beat rises and falls (J. Pan and W. J.
 * Tompkins, IEEE Transactions on Biomedical Engineering 32(3):230-236, 1985). The result is delayed by `delay`. */
enum { kBandTaps = 181, kMeanTaps = kRate * 12 / 100 | 1 };
static const int delay = kBandTaps / 2 + 1 + kMeanTaps / 2;

static void findEnergy(void) {
  Vek32f band[kBandTaps], mean[kMeanTaps];
  const Vek32f slope[3] = {1, 0, -1};
  for (int i = 0; i < kBandTaps; ++i) {
    const double t = i - kBandTaps / 2;
    band[i] = (Vek32f)(t == 0 ? 2.0 * 13 / kRate
                              : (sin(2 * M_PI * 18 / kRate * t) - sin(2 * M_PI * 5 / kRate * t)) / (M_PI * t));
  }
  must(veksWinHamming_32f_I(band, kBandTaps), "window");
  must(veksSet_32f(1.0f / kMeanTaps, mean, kMeanTaps), "set");
  fir(band, kBandTaps, clean, energy);
  fir(slope, 3, energy, work);
  must(veksSqr_32f_I(work, samples), "square");
  fir(mean, kMeanTaps, work, energy);
}

static int byValue(const void* a, const void* b) {
  return (*(const Vek32f*)a > *(const Vek32f*)b) - (*(const Vek32f*)a < *(const Vek32f*)b);
}

/* Where the energy exceeds a fraction of its typical peak there is a beat; the beat itself is the largest deflection of
 * the clean signal in that stretch. A pause of 0.25 s follows every beat. */
static void findBeats(void) {
  Vek32f peaks[kMaxSamples / kRate], level;
  int n = 0;
  for (int i = 0; i + kRate <= samples; i += kRate) must(veksMax_32f(energy + i, kRate, &peaks[n++]), "maximum");
  qsort(peaks, (size_t)n, sizeof *peaks, byValue);
  level = 0.25f * peaks[n / 2];
  must(veksThreshold_LTVal_32f(energy, work, samples, level, 0), "threshold");
  for (int i = delay; i < samples && beats < kMaxBeats;) {
    if (work[i] == 0) {
      ++i;
      continue;
    }
    int end = i, at = 0, from, len;
    Vek32f peak;
    while (end < samples && work[end] > 0) ++end;
    from = i - delay < 0 ? 0 : i - delay - kMeanTaps / 2 > 0 ? i - delay - kMeanTaps / 2 : 0;
    len = end - i + kMeanTaps;
    if (from + len > samples) len = samples - from;
    must(veksAbs_32f(clean + from, signal + from, len), "magnitude"); /* the raw signal is not needed any more here */
    must(veksMaxIndx_32f(signal + from, len, &peak, &at), "maximum");
    if (beats == 0 || from + at - beat[beats - 1] > kRate / 4) beat[beats++] = from + at;
    i = end;
  }
}

struct Rhythm {
  Vek32f mean, median, deviation; /* of the intervals, seconds */
  double period, regularity;      /* lag and height of the autocorrelation's first peak */
};

static struct Rhythm measureRhythm(void) {
  static Vek32f interval[kMaxBeats], corr[2 * kRate];
  struct Rhythm r;
  Vek32f peak, level;
  int at;
  for (int i = 1; i < beats; ++i) interval[i - 1] = (Vek32f)(beat[i] - beat[i - 1]) / kRate;
  must(veksMeanStdDev_32f(interval, beats - 1, &r.mean, &r.deviation, vekAlgHintNone), "mean");
  must(veksSortAscend_32f_I(interval, beats - 1), "sort");
  r.median = interval[(beats - 1) / 2];
  must(veksMean_32f(energy, samples, &level, vekAlgHintNone), "mean");
  must(veksSubC_32f(energy, level, work, samples), "subtract");
  must(veksAutoCorr_32f(work, samples, corr, 2 * kRate), "autocorrelation");
  must(veksMaxIndx_32f(corr + kRate * 3 / 10, kRate * 15 / 10 - kRate * 3 / 10, &peak, &at), "maximum");
  r.period = (double)(at + kRate * 3 / 10) / kRate;
  r.regularity = peak / corr[0];
  return r;
}

/* Keeps the cosine coefficients at or above a level, and tells their number and the error that remains. */
static int compress(const Vek32f* coefficients, int n, Vek32f level, double* error) {
  Vek32f whole, lost;
  int kept = 0;
  must(veksThreshold_LTAbs_32f(coefficients, work, n, level), "threshold");
  for (int i = 0; i < n; ++i) {
    /* LTAbs lifts small coefficients to the level; those that it changed are the ones to drop. */
    if (work[i] != coefficients[i]) work[i] = 0;
    kept += work[i] != 0;
  }
  must(veksNormDiff_L2_32f(coefficients, work, n, &lost), "norm");
  must(veksNorm_L2_32f(coefficients, n, &whole), "norm");
  *error = lost / whole;
  return kept;
}

static double compressionRatio(double wanted, double* reached) {
  static Vek32f coefficients[kMaxSamples];
  const int n = samples / kBlock * kBlock;
  VeksDCTFwdSpec_32f* forward = NULL;
  VeksDCTInvSpec_32f* inverse = NULL;
  Vek32f low = 0, high, whole, lost;
  int kept;
  must(veksDCTFwdInitAlloc_32f(&forward, kBlock, vekAlgHintNone), "cosine transform");
  must(veksDCTInvInitAlloc_32f(&inverse, kBlock, vekAlgHintNone), "cosine transform");
  for (int i = 0; i < n; i += kBlock)
    must(veksDCTFwd_32f(clean + i, coefficients + i, forward, NULL), "cosine transform");
  must(veksNorm_Inf_32f(coefficients, n, &high), "norm");
  for (int step = 0; step < 24; ++step) { /* the level that just keeps the error, by halving */
    const Vek32f level = (low + high) / 2;
    compress(coefficients, n, level, reached);
    if (*reached > wanted)
      high = level;
    else
      low = level;
  }
  kept = compress(coefficients, n, low, reached);
  for (int i = 0; i < n; i += kBlock) must(veksDCTInv_32f_I(work + i, inverse, NULL), "cosine transform");
  must(veksNormDiff_L2_32f(clean, work, n, &lost), "norm"); /* the error as a listener would see it */
  must(veksNorm_L2_32f(clean, n, &whole), "norm");
  *reached = lost / whole;
  veksDCTFwdFree_32f(forward);
  veksDCTInvFree_32f(inverse);
  return (double)n / kept;
}

/* ---- picture
 * --------------------------------------------------------------------------------------------------------- */

static void curve(FILE* f, const Vek32f* x, int from, int len, double top, double scale, const char* colour) {
  fprintf(f, "<polyline fill='none' stroke='%s' points='", colour);
  for (int i = 0; i < len; ++i) fprintf(f, "%.1f,%.1f ", 60 + 900.0 * i / len, top - scale * x[from + i]);
  fprintf(f, "'/>\n");
}

static void draw(const char* path, const Vek32f* recorded) {
  const int from = 20 * kRate, len = 10 * kRate;
  FILE* f = fopen(path, "w");
  if (!f) {
    perror(path);
    exit(1);
  }
  fprintf(f,
          "<svg xmlns='http://www.w3.org/2000/svg' width='1000' height='620' font-family='sans-serif' font-size='13'>\n"
          "<rect width='1000' height='620' fill='white'/>\n");
  fprintf(f, "<text x='60' y='24'>as recorded, seconds 20 to 30</text>\n");
  curve(f, recorded, from, len, 130, 40, "#999");
  fprintf(f, "<text x='60' y='224'>baseline and hum removed, beats marked</text>\n");
  curve(f, clean, from, len, 330, 40, "#14507a");
  for (int i = 0; i < beats; ++i)
    if (beat[i] >= from && beat[i] < from + len)
      fprintf(f, "<circle cx='%.1f' cy='%.1f' r='4' fill='#c33'/>\n", 60 + 900.0 * (beat[i] - from) / len,
              330 - 40 * clean[beat[i]]);
  fprintf(f, "<text x='60' y='424'>heart rate over the whole recording, beats a minute</text>\n");
  for (int bpm = 50; bpm <= 150; bpm += 50)
    fprintf(f, "<text x='20' y='%d'>%d</text><line x1='60' x2='960' y1='%d' y2='%d' stroke='#ddd'/>\n", 604 - bpm, bpm,
            600 - bpm, 600 - bpm);
  fprintf(f, "<polyline fill='none' stroke='#2a7' points='");
  for (int i = 1; i < beats; ++i) {
    const double bpm = 60.0 * kRate / (beat[i] - beat[i - 1]);
    fprintf(f, "%.1f,%.1f ", 60 + 900.0 * beat[i] / samples, 600 - (bpm > 180 ? 180 : bpm));
  }
  fprintf(f, "'/>\n</svg>\n");
  fclose(f);
}

int main(int argc, char** argv) {
  static Vek32f recorded[kMaxSamples];
  const char* svg = argc > 2 ? argv[2] : "ecg.svg";
  struct Rhythm rhythm;
  double ratio, error;
  if (argc < 2) {
    fprintf(stderr, "usage: ecg SAMPLES.s16le [OUT.svg]\n");
    return 2;
  }
  stage("read and convert");
  readSamples(argv[1]);
  must(veksConvert_16s32f(raw, signal, samples), "conversion");
  must(veksMulC_32f_I(1.0f / kCountsPerMillivolt, signal, samples), "scaling");
  must(veksCopy_32f(signal, recorded, samples), "copy");
  stage("remove baseline (median)");
  removeBaseline();
  stage("remove hum (biquad)");
  removeHum();
  stage("energy of the beats (FIR)");
  findEnergy();
  stage("find beats (threshold, extremes)");
  findBeats();
  if (beats < 3) {
    fprintf(stderr, "%s: no rhythm in it\n", argv[1]);
    return 1;
  }
  stage("rhythm (sort, autocorrelation)");
  rhythm = measureRhythm();
  stage("compress (cosine transform)");
  ratio = compressionRatio(0.05, &error);
  stage("draw");
  draw(svg, recorded);
  stage(NULL);
  if (isatty(2)) fprintf(stderr, "\r\033[K");

  printf("%s: %d samples, %.1f s, slot %.4s\n", argv[1], samples, (double)samples / kRate,
         veksGetLibVersion()->cpuCode);
  printf("beats found     %d\n", beats);
  printf("mean rate       %.1f beats a minute\n", 60 / rhythm.mean);
  printf("median rate     %.1f beats a minute\n", 60 / rhythm.median);
  printf("irregularity    %.0f ms standard deviation of the intervals\n", 1000 * rhythm.deviation);
  printf("autocorrelation first peak %.2f at %.2f s\n", rhythm.regularity, rhythm.period);
  printf("compression     %.1f : 1 at %.1f %% error\n", ratio, 100 * error);
  for (int i = 0; i < stages; ++i) printf("  %-34s %8.2f ms\n", stageName[i], stageMs[i]);
  printf("picture         %s\n", svg);
  return 0;
}
