/* SPDX-License-Identifier: Apache-2.0
 * vek-selftest: does the installed library compute on this machine what it should? In every slot that the processor
 * has: the digest of the exact families, and members of the rounded ones against sums in double. Ends with 0 or with a
 * list of what failed. */
#include <math.h>
#include <stdio.h>
#include <string.h>

#include "digest.h"
#include "vek.h"

static const struct {
  const char* name;
  Vek64u needs;
} slots[] = {
#define VEK_SLOT_ROW(NAME, BELOW, FLAGS, NEEDS, ...) {#NAME, NEEDS},
#include "core/slots.def"
};
enum { kSlots = sizeof slots / sizeof *slots, kLen = 1003, kTaps = 301, kOrder = 2 };

static const char* slot = "";
static int failures;

static void fail(const char* what, const char* how) {
  printf("slot %s: %s %s\n", slot, what, how);
  ++failures;
}

/* The variable that holds the slot in force. The library lets nobody change it, but each of its entries begins by
 * loading it, always with the same instruction: movslq offset(%rip), %rax. */
static volatile int32_t* slotInForce(void) {
  static const unsigned char mark[] = {0xF3, 0x0F, 0x1E, 0xFA}, load[] = {0x48, 0x63, 0x05};
  VekStatus (*const entry)(const Vek8u*, Vek8u*, int) = veksCopy_8u;
  const unsigned char* code;
  int32_t offset;
  memcpy(&code, &entry, sizeof code);
  if (memcmp(code, mark, sizeof mark) == 0) code += sizeof mark; /* endbr64 */
  if (memcmp(code, load, sizeof load) != 0) return NULL;
  memcpy(&offset, code + sizeof load, sizeof offset);
  return (volatile int32_t*)(code + sizeof load + sizeof offset + offset);
}

/* The running hash after each call, to name the first function that differs. */
enum { kMaxSteps = 4096 };
static struct {
  const char* name;
  uint64_t hash;
} wanted[kMaxSteps];
static int steps, recording;
static const char* culprit;

static void note(const char* name, VekStatus status, uint64_t hash) {
  (void)status;
  if (steps < kMaxSteps) {
    if (recording) {
      wanted[steps].name = name;
      wanted[steps].hash = hash;
    } else if (wanted[steps].hash != hash && !culprit) {
      culprit = name;
    }
  }
  ++steps;
}

static void checkExact(void) {
  steps = 0;
  culprit = NULL;
  const uint64_t digest = vekDigest(note);
  recording = 0;
  if (culprit)
    fail(culprit, "is the first exact function that differs from the lowest slot's");
  else if (digest != VEK_DIGEST)
    fail("the exact families", "do not have the digest that they have on every processor");
}

static Vek32f x[kLen], y[kLen], taps[kTaps], out[2 * kLen];
static double want[2 * kLen];

/* Results against `want`, as the norm of the difference over that of what is wanted. */
static void compare(const char* what, VekStatus status, const Vek32f* got, int len, double bound) {
  double wrong = 0, whole = 0;
  for (int i = 0; i < len; ++i) {
    wrong += (got[i] - want[i]) * (got[i] - want[i]);
    whole += want[i] * want[i];
  }
  if (status != vekStsNoErr)
    fail(what, vekGetStatusString(status));
  else if (!(wrong <= bound * bound * whole))
    fail(what, "is less precise than its bound");
}

static void checkSums(void) {
  double sum = 0, squares = 0, products = 0, sizes = 0, spread = 0;
  Vek32f got;
  for (int i = 0; i < kLen; ++i) {
    sum += x[i];
    squares += (double)x[i] * x[i];
    products += (double)x[i] * y[i];
    sizes += fabs(x[i]);
  }
  for (int i = 0; i < kLen; ++i) spread += (x[i] - sum / kLen) * (x[i] - sum / kLen);
#define CHECK(NAME, WANT, ...)                        \
  do {                                                \
    const VekStatus status = veks##NAME(__VA_ARGS__); \
    want[0] = WANT;                                   \
    compare("veks" #NAME, status, &got, 1, 2e-6);     \
  } while (0)
  CHECK(Mean_32f, sum / kLen, x, kLen, &got, vekAlgHintFast);
  CHECK(Mean_32f, sum / kLen, x, kLen, &got, vekAlgHintAccurate);
  CHECK(StdDev_32f, sqrt(spread / (kLen - 1)), x, kLen, &got, vekAlgHintNone);
  CHECK(Norm_L1_32f, sizes, x, kLen, &got);
  CHECK(Norm_L2_32f, sqrt(squares), x, kLen, &got);
  CHECK(DotProd_32f, products, x, y, kLen, &got);
#undef CHECK
}

static void checkFilters(void) {
  static const Vek32f biquad[2 * (kOrder + 1)] = {0.2f, 0.4f, 0.2f, 1.0f, -0.5f, 0.3f};
  VeksFIRState_32f* fir = NULL;
  VeksIIRState_32f* iir = NULL;
  /* Few taps are summed, many go through the transform. */
  for (int count = 7; count <= kTaps; count += kTaps - 7) {
    VekStatus status = veksFIRInitAlloc_32f(&fir, taps, count, NULL);
    if (status == vekStsNoErr) status = veksFIR_32f(x, out, kLen, fir);
    veksFIRFree_32f(fir);
    for (int i = 0; i < kLen; ++i) {
      want[i] = 0;
      for (int k = 0; k < count && k <= i; ++k) want[i] += (double)taps[k] * x[i - k];
    }
    compare("veksFIR_32f", status, out, kLen, 2e-6);
  }
  VekStatus status = veksIIRInitAlloc_32f(&iir, biquad, kOrder, NULL);
  if (status == vekStsNoErr) status = veksIIR_32f(x, out, kLen, iir);
  veksIIRFree_32f(iir);
  for (int i = 0; i < kLen; ++i) {
    want[i] = 0;
    for (int k = 0; k <= kOrder && k <= i; ++k)
      want[i] += (double)biquad[k] * x[i - k] - (k ? biquad[kOrder + 1 + k] * want[i - k] : 0);
  }
  compare("veksIIR_32f", status, out, kLen, 2e-6);
}

static void checkProducts(void) {
  for (int i = 0; i < 2 * kLen - 1; ++i) {
    want[i] = 0;
    for (int k = i < kLen ? 0 : i - kLen + 1; k <= i && k < kLen; ++k) want[i] += (double)x[k] * y[i - k];
  }
  compare("veksConv_32f", veksConv_32f(x, kLen, y, kLen, out), out, 2 * kLen - 1, 2e-6);
  for (int i = 0; i < kLen; ++i) {
    want[i] = 0;
    for (int k = 0; k + i < kLen; ++k) want[i] += (double)x[k] * x[k + i];
  }
  compare("veksAutoCorr_32f", veksAutoCorr_32f(x, kLen, out, kLen), out, kLen, 2e-6);
}

static void checkTransforms(void) {
  const double turn = 6.283185307179586477;
  const Vek32f frequency = 0.1337f;
  Vek32fc line;
  want[0] = want[1] = 0;
  for (int i = 0; i < kLen; ++i) {
    want[0] += x[i] * cos(turn * frequency * i);
    want[1] -= x[i] * sin(turn * frequency * i);
  }
  const VekStatus goertzel = veksGoertz_32f(x, kLen, &line, frequency);
  out[0] = line.re;
  out[1] = line.im;
  compare("veksGoertz_32f", goertzel, out, 2, 2e-5);
  /* A power of two, and a length that goes round by convolution. */
  for (int len = 256; len <= 509; len += 253) {
    VeksDCTFwdSpec_32f* forward = NULL;
    VeksDCTInvSpec_32f* inverse = NULL;
    VekStatus status = veksDCTFwdInitAlloc_32f(&forward, len, vekAlgHintNone);
    if (status == vekStsNoErr) status = veksDCTFwd_32f(x, out, forward, NULL);
    veksDCTFwdFree_32f(forward);
    for (int k = 0; k < len; ++k) {
      want[k] = 0;
      for (int i = 0; i < len; ++i) want[k] += x[i] * cos(turn / 4 / len * ((2 * i + 1) * k % (4 * len)));
      want[k] *= sqrt((k ? 2.0 : 1.0) / len);
    }
    compare("veksDCTFwd_32f", status, out, len, 2e-6);
    status = veksDCTInvInitAlloc_32f(&inverse, len, vekAlgHintNone);
    if (status == vekStsNoErr) status = veksDCTInv_32f(out, out, inverse, NULL);
    veksDCTInvFree_32f(inverse);
    for (int i = 0; i < len; ++i) want[i] = x[i];
    compare("veksDCTInv_32f", status, out, len, 4e-6);
  }
}

int main(int argc, char** argv) {
  Vek64u mask = 0;
  Vek32u seed = 4711;
  int checked = 0;
  if (argc > 1) {
    const int help = !strcmp(argv[1], "--help");
    fprintf(help ? stdout : stderr,
            "usage: vek-selftest\n"
            "Checks what the vek library computes, in every slot of this processor. Ends with 0 or with a list.\n");
    return help ? 0 : 2;
  }
  vekGetCpuFeatures(&mask, NULL);
  veksRandUniform_Direct_32f(x, kLen, -1, 2, &seed);
  veksRandUniform_Direct_32f(y, kLen, -2, 1, &seed);
  veksRandUniform_Direct_32f(taps, kTaps, -1, 1, &seed);
  volatile int32_t* const index = slotInForce();
  if (!index) {
    printf("the library's entries are not as this program knows them\n");
    return 1;
  }
  const int32_t chosen = *index;
  recording = 1;
  for (int i = 0; i < kSlots; ++i) {
    if ((mask & slots[i].needs) != slots[i].needs) continue;
    *index = i;
    slot = slots[i].name;
    /* A build with one slot stays in it. */
    if (strncmp(veksGetLibVersion()->cpuCode, slot, 4) != 0) continue;
    checkExact();
    checkSums();
    checkFilters();
    checkProducts();
    checkTransforms();
    printf("slot %s checked\n", slot);
    ++checked;
  }
  *index = chosen;
  if (!checked) {
    slot = "";
    fail("the library", "has only a slot that this processor lacks");
  }
  if (failures) printf("%d failed\n", failures);
  return failures ? 1 : 0;
}
