/* SPDX-License-Identifier: Apache-2.0
 * A digest of what the exact families compute from fixed data: one number that every slot, compiler and build has to
 * agree on. FNV-1a over the results. */
#ifndef VEK_TOOLS_DIGEST_H
#define VEK_TOOLS_DIGEST_H

#include <stdint.h>
#include <string.h>

#include "vek.h"

enum { kDigestLen = 1003 };

static uint64_t vekDigestAdd(uint64_t h, const void* data, size_t bytes) {
  const unsigned char* p = (const unsigned char*)data;
  for (size_t i = 0; i < bytes; ++i) h = (h ^ p[i]) * UINT64_C(1099511628211);
  return h;
}

static uint64_t vekDigest(void) {
  static union {
    Vek8u b[4 * kDigestLen];
    Vek16s h[2 * kDigestLen];
    Vek16u hu[2 * kDigestLen];
    Vek32s w[kDigestLen];
    Vek32u wu[kDigestLen];
    Vek32f f[kDigestLen];
  } x, y, d;
  uint64_t h = UINT64_C(14695981039346656037);
  uint32_t r = 12345;
  for (int i = 0; i < kDigestLen; ++i) {
    x.wu[i] = r = r * 1664525u + 1013904223u;
    y.wu[i] = r = r * 1664525u + 1013904223u;
  }
#define VEK_DIGEST(CALL)   \
  memset(&d, 0, sizeof d); \
  CALL;                    \
  h = vekDigestAdd(h, &d, sizeof d)
  VEK_DIGEST(veksFlip_8u(x.b, d.b, kDigestLen));
  VEK_DIGEST(veksSwapBytes_24u(x.b, d.b, kDigestLen));
  VEK_DIGEST(veksCopy_1u(x.b, 3, d.b, 5, 8 * kDigestLen));
  VEK_DIGEST(veksXor_32u(x.wu, y.wu, d.wu, kDigestLen));
  VEK_DIGEST(veksRShiftC_16s(x.h, 3, d.h, kDigestLen));
#undef VEK_DIGEST
  return h;
}

#endif
