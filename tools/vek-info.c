/* SPDX-License-Identifier: Apache-2.0
 * vek-info: which library this is, which slot it chose and why, what it knows of the processor, and a digest of results
 * that has to be the same on every processor. */
#include <inttypes.h>
#include <stdio.h>
#include <string.h>

#include "digest.h"
#include "vek.h"

static const struct {
  Vek64u bit;
  const char* name;
} features[] = {
    {VEK_FEATURE_MMX, "mmx"},       {VEK_FEATURE_SSE, "sse"},       {VEK_FEATURE_SSE2, "sse2"},
    {VEK_FEATURE_SSE3, "sse3"},     {VEK_FEATURE_SSSE3, "ssse3"},   {VEK_FEATURE_MOVBE, "movbe"},
    {VEK_FEATURE_SSE41, "sse4.1"},  {VEK_FEATURE_SSE42, "sse4.2"},  {VEK_FEATURE_AVX, "avx"},
    {VEK_FEATURE_AVX_OS, "avx-os"}, {VEK_FEATURE_AES, "aes"},       {VEK_FEATURE_CLMUL, "clmul"},
    {VEK_FEATURE_F16C, "f16c"},     {VEK_FEATURE_AVX2, "avx2"},     {VEK_FEATURE_RDRAND, "rdrand"},
    {VEK_FEATURE_ADX, "adx"},       {VEK_FEATURE_RDSEED, "rdseed"}, {VEK_FEATURE_PREFETCHW, "prefetchw"},
};

/* What the numbers of vekGetCpuType() stand for. */
static const struct {
  VekCpuType type;
  const char* name;
} types[] = {
    {vekCpuSsse3Gen1, "family 6 model 0x0F, SSSE3, fewer than three cores"},
    {vekCpuSsse3Gen1Quad, "family 6 model 0x0F, SSSE3, three cores or more"},
    {vekCpuSse41Gen, "family 6 model 0x17, SSE4.1"},
    {vekCpuLumen, "family 6 model 0x1C, SSSE3 and MOVBE, in-order core"},
    {vekCpuSse42Gen, "family 6 model 0x1A, SSE4.2"},
    {vekCpuAVX2, "family 6 model 0x3C, AVX2"},
    {vekCpuSSE, "any with SSE"},
    {vekCpuSSE2, "any with SSE2"},
    {vekCpuSSE3, "any with SSE3"},
    {vekCpuSSSE3, "any with SSSE3"},
    {vekCpuSSE41, "any with SSE4.1"},
    {vekCpuSSE42, "any with SSE4.2"},
    {vekCpuAVX, "any with AVX"},
    {vekCpuX8664, "any of 64 bits"},
};

static const char* typeName(VekCpuType type) {
  for (size_t i = 0; i < sizeof types / sizeof *types; ++i)
    if (types[i].type == type) return types[i].name;
  return "unknown";
}

static const struct {
  const char *name, *reason;
  Vek64u needs;
} slots[] = {
#define VEK_SLOT_ROW(NAME, BELOW, FLAGS, NEEDS, ADDS, RECORD, MODELS, REASON) {#NAME, REASON, NEEDS},
#include "core/slots.def"
};
enum { kSlots = sizeof slots / sizeof *slots };

/* Why the slot is in force: the rule that chose it, or that the library has only one. */
static const char* reason(const char* slot, Vek64u mask) {
  int chosen = 0, used = 0;
  for (int i = 0; i < kSlots; ++i) {
    if ((mask & slots[i].needs) == slots[i].needs) chosen = i;
    if (!strcmp(slots[i].name, slot)) used = i;
  }
  if (used == chosen) return slots[used].reason;
  return used < chosen ? "the only one of this build; the processor could do more"
                       : "the only one of this build; THE PROCESSOR LACKS WHAT IT NEEDS";
}

static void printFeatures(Vek64u mask, const char* separator, const char* quote) {
  const char* before = "";
  for (size_t i = 0; i < sizeof features / sizeof *features; ++i)
    if (mask & features[i].bit) {
      printf("%s%s%s%s", before, quote, features[i].name, quote);
      before = separator;
    }
}

static void printJson(const VekLibVersion* v, Vek64u mask, int cache, int threads) {
  printf("{\"name\": \"%s\", \"version\": \"%s\", \"built\": \"%s\", \"slot\": \"%.4s\", \"reason\": \"%s\", ", v->name,
         v->version, v->buildDate, v->cpuCode, reason(v->cpuCode, mask));
  printf("\"cpu_type\": %d, \"features\": [", vekGetCpuType());
  printFeatures(mask, ", ", "\"");
  printf("], \"cores\": %d, \"max_cache_bytes\": %d, \"threads\": %d, \"digest\": \"%016" PRIx64 "\"}\n",
         vekGetNumCoresOnDie(), cache, threads, vekDigest(NULL));
}

static void printText(const VekLibVersion* v, Vek64u mask, VekStatus cacheStatus, int cache, int threads) {
  printf("library   %s, version %s of %s\n", v->name, v->version, v->buildDate);
  printf("slot      %.4s: %s\n", v->cpuCode, reason(v->cpuCode, mask));
  printf("features  ");
  printFeatures(mask, " ", "");
  printf("\nprocessor type %d (%s), %d core(s) to a die\n", vekGetCpuType(), typeName(vekGetCpuType()),
         vekGetNumCoresOnDie());
  if (cacheStatus == vekStsNoErr)
    printf("cache     %d bytes, the largest\n", cache);
  else
    printf("cache     size not told: %s\n",
           cacheStatus == vekStsNotSupportedCpu
               ? "asked of one vendor's processors only, and of those with CPUID leaf 2"
               : "the processor describes none that is known");
  printf("threads   %d\n", threads);
  printf("digest    %016" PRIx64 " (exact families; the same on every processor)\n", vekDigest(NULL));
}

static void usage(FILE* out) {
  fprintf(out,
          "usage: vek-info [--json | --slot | --version | --help]\n"
          "Tells which instruction-level slot the vek library uses here, and why.\n"
          "  --json     everything, as one JSON object\n"
          "  --slot     the slot and nothing else\n"
          "  --version  version of the library\n");
}

int main(int argc, char** argv) {
  const VekLibVersion* v = veksGetLibVersion();
  const char* option = argc > 1 ? argv[1] : "";
  Vek64u mask = 0;
  int cache = 0, threads = 0;
  if (argc > 2 || (argc == 2 && strcmp(option, "--json") && strcmp(option, "--slot") && strcmp(option, "--version") &&
                   strcmp(option, "--help"))) {
    fprintf(stderr, "vek-info: unknown arguments\n");
    usage(stderr);
    return 2;
  }
  if (!strcmp(option, "--help")) return usage(stdout), 0;
  if (!strcmp(option, "--slot")) return printf("%.4s\n", v->cpuCode), 0;
  if (!strcmp(option, "--version")) return printf("vek-info, library %s\n", v->version), 0;
  vekGetCpuFeatures(&mask, NULL);
  vekGetNumThreads(&threads);
  const VekStatus cacheStatus = vekGetMaxCacheSizeB(&cache);
  if (!strcmp(option, "--json"))
    printJson(v, mask, cache, threads);
  else
    printText(v, mask, cacheStatus, cache, threads);
  return 0;
}
