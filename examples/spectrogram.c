/* SPDX-License-Identifier: Apache-2.0
 * Spectrograms as pictures: of a chirp that rises through the band, and of the bundled electrocardiogram. Ends with 0
 * only if the chirp is found where it is, and the spectrum holds the energy of the recording.
 *
 *   spectrogram SAMPLES.s16le [DIRECTORY]
 */
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "vek.h"
#include "vekx.h"

enum { kRate = 360, kPoints = 1440, kBins = kPoints / 2 + 1, kHop = 72, kShown = 240, kMaxSamples = 1 << 18 };
enum { kMaxFrames = kMaxSamples / kHop };

static Vek32f samples[kMaxSamples], window[kPoints], frames[kMaxFrames * kPoints], power[kMaxFrames * kBins];
static Vek32fc spectra[kMaxFrames * kBins];

static void must(VekStatus status, const char* what) {
  if (status >= vekStsNoErr) return;
  fprintf(stderr, "%s: %s\n", what, vekGetStatusString(status));
  exit(1);
}

/* Overlapping frames, each weighted and transformed; power[frame * kBins + bin] is what they hold. */
static int analyse(int len) {
  const int count = (len - kPoints) / kHop + 1;
  VekxFFTSpec_32f* spec = NULL;
  must(veksSet_32f(1, window, kPoints), "set");
  must(veksWinHann_32f_I(window, kPoints), "window");
  for (int t = 0; t < count; ++t)
    must(veksMul_32f(samples + t * kHop, window, frames + t * kPoints, kPoints), "multiply");
  must(vekxFFTInitAlloc_32f(&spec, kPoints, vekxScaleForward), "spec");
  must(vekxFFTFwdMany_32f32fc(frames, spectra, count, 1, kPoints, 1, kBins, spec, NULL), "transform");
  must(vekxFFTFree_32f(spec), "spec");
  must(veksPowerSpectrum_32fc(spectra, power, count * kBins), "power");
  return count;
}

/* Time to the right, frequency up to 60 Hz upwards, 70 dB from white to black. */
static void draw(const char* directory, const char* name, int count) {
  char path[4096];
  Vek32f top;
  FILE* f;
  snprintf(path, sizeof path, "%s/%s.pgm", directory, name);
  f = fopen(path, "wb");
  if (!f) {
    perror(path);
    exit(1);
  }
  must(veksMax_32f(power, count * kBins, &top), "maximum");
  fprintf(f, "P5\n%d %d\n255\n", count, kShown);
  for (int k = kShown; k > 0; --k)
    for (int t = 0; t < count; ++t) {
      const double decibels = 10 * log10(power[t * kBins + k] / top + 1e-7);
      putc(decibels > 0 ? 0 : (int)(-255 * decibels / 70 + 0.5), f);
    }
  if (fclose(f) != 0) {
    perror(path);
    exit(1);
  }
}

/* Five minutes from 5 to 55 Hz: the loudest bin of each frame is the one that the chirp passes in its middle. */
static int chirpIsRight(int count, double from, double slope) {
  for (int t = 0; t < count; ++t) {
    const double now = from + slope * (t * kHop + kPoints / 2) / kRate;
    Vek32f peak;
    int bin;
    must(veksMaxIndx_32f(power + t * kBins, kBins, &peak, &bin), "maximum");
    if (fabs(bin * (double)kRate / kPoints - now) > 1.0 * kRate / kPoints) return 0;
  }
  return 1;
}

/* What the bins hold over what the frames hold: the bins between the ends stand for two of the whole spectrum. */
static double energyKept(int count) {
  Vek64f all, before, ends = 0;
  for (int t = 0; t < count; ++t) ends += power[t * kBins] + power[t * kBins + kBins - 1];
  must(veksDotProd_32f64f(&spectra->re, &spectra->re, 2 * count * kBins, &all), "energy");
  must(veksDotProd_32f64f(frames, frames, count * kPoints, &before), "energy");
  return (2 * all - ends) * kPoints / before;
}

int main(int argc, char** argv) {
  static Vek16s raw[kMaxSamples];
  const char* directory = argc > 2 ? argv[2] : ".";
  const int seconds = 300, len = seconds * kRate;
  const double from = 5, slope = 50.0 / seconds;
  FILE* f = argc > 1 ? fopen(argv[1], "rb") : NULL;
  int count, read, chirp;
  double kept;
  if (!f) {
    fprintf(stderr, "usage: spectrogram SAMPLES.s16le [DIRECTORY]\n");
    return 2;
  }
  for (int n = 0; n < len; ++n) {
    const double t = (double)n / kRate;
    samples[n] = (Vek32f)sin(2 * 3.14159265358979 * (from + slope * t / 2) * t);
  }
  count = analyse(len);
  draw(directory, "chirp", count);
  chirp = chirpIsRight(count, from, slope);

  read = (int)fread(raw, sizeof *raw, kMaxSamples, f);
  fclose(f);
  if (read < kPoints) return 1;
  must(veksConvert_16s32f(raw, samples, read), "conversion");
  count = analyse(read);
  draw(directory, "ecg", count);
  kept = energyKept(count);
  printf("chirp %s, %d frames of the recording hold %.6f of its energy\n", chirp ? "found" : "lost", count, kept);
  return chirp && fabs(kept - 1) < 1e-5 ? 0 : 1;
}
