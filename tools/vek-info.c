/* SPDX-License-Identifier: Apache-2.0
 * vek-info: which library this is, which slot it chose and why, what it knows of the processor, and a digest of results
 * that has to be the same on every processor. With --json the same for programs. */
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

/* The rule that chose the slot. */
static const char* reason(const char* slot) {
#define VEK_SLOT_ROW(NAME, BELOW, FLAGS, NEEDS, ADDS, RECORD, MODELS, REASON) \
  if (!strcmp(slot, #NAME)) return REASON;
#include "core/slots.def"
  return "";
}

int main(int argc, char** argv) {
  const VekLibVersion* v = veksGetLibVersion();
  const int json = argc > 1 && !strcmp(argv[1], "--json");
  Vek64u mask = 0;
  int cache = 0, threads = 0;
  size_t i;
  if (argc > 1 && !json) {
    fprintf(stderr, "usage: vek-info [--json]\n");
    return 2;
  }
  vekGetCpuFeatures(&mask, NULL);
  vekGetMaxCacheSizeB(&cache);
  vekGetNumThreads(&threads);
  if (json) {
    printf("{\"name\": \"%s\", \"version\": \"%s\", \"built\": \"%s\", \"slot\": \"%.4s\", \"reason\": \"%s\", ",
           v->name, v->version, v->buildDate, v->cpuCode, reason(v->cpuCode));
    printf("\"cpu_type\": %d, \"features\": [", vekGetCpuType());
    for (i = 0; i < sizeof features / sizeof *features; ++i)
      if (mask & features[i].bit) printf("%s\"%s\"", i ? ", " : "", features[i].name);
    printf("], \"cores\": %d, \"max_cache_bytes\": %d, \"threads\": %d, \"digest\": \"%016" PRIx64 "\"}\n",
           vekGetNumCoresOnDie(), cache, threads, vekDigest(NULL));
    return 0;
  }
  printf("%s, version %s of %s\n", v->name, v->version, v->buildDate);
  printf("slot      %.4s: %s\n", v->cpuCode, reason(v->cpuCode));
  printf("features ");
  for (i = 0; i < sizeof features / sizeof *features; ++i)
    if (mask & features[i].bit) printf(" %s", features[i].name);
  printf("\ncpu type  %d, %d core(s) to a die\n", vekGetCpuType(), vekGetNumCoresOnDie());
  if (cache > 0) printf("cache     %d bytes\n", cache);
  printf("threads   %d\n", threads);
  printf("digest    %016" PRIx64 " (exact families; the same on every processor)\n", vekDigest(NULL));
  return 0;
}
