/* SPDX-License-Identifier: Apache-2.0
 * A digest of what the exact families compute from fixed data: one number that every slot, compiler and build has to
 * agree on. FNV-1a over statuses and results; a NaN counts as a NaN whatever its payload. One call or more for each
 * kernel, through the cases that its code tells apart. 0 if a call was refused. */
#ifndef VEK_TOOLS_DIGEST_H
#define VEK_TOOLS_DIGEST_H

#include <limits.h>
#include <stdint.h>
#include <string.h>

#include "vek.h"

enum { kDigestLen = 1003 };

/* The number. */
#define VEK_DIGEST UINT64_C(0xb8970a8fb9236480)

typedef union VekDigestData {
  Vek8u b[16 * kDigestLen];
  Vek8s c[16 * kDigestLen];
  Vek16s h[8 * kDigestLen];
  Vek16u hu[8 * kDigestLen];
  Vek32s w[4 * kDigestLen];
  Vek32u wu[4 * kDigestLen];
  Vek64s q[2 * kDigestLen];
  Vek64u qu[2 * kDigestLen];
  Vek32f f[4 * kDigestLen];
  Vek64f g[2 * kDigestLen];
  Vek32sc wc[2 * kDigestLen];
  Vek32fc fc[2 * kDigestLen];
} VekDigestData;

/* Told of every call: the function, its status and the digest so far. */
typedef void (*VekDigestNote)(const char* name, VekStatus status, uint64_t hash);

/* Sources: x and y any bits; u and v floats with special ones among them; s the same in double; p and r plain numbers,
 * none of them zero. Destinations: d and e. */
typedef struct VekDigestState {
  VekDigestNote note;
  VekDigestData x, y, u, v, p, r, s, d, e;
  uint64_t hash;
  int refused;
} VekDigestState;

static uint64_t vekDigestAdd(uint64_t h, const void* data, size_t bytes) {
  const unsigned char* p = (const unsigned char*)data;
  for (size_t i = 0; i < bytes; ++i) h = (h ^ p[i]) * UINT64_C(1099511628211);
  return h;
}

static void vekDigestFill(VekDigestState* t) {
  static const Vek32u special[] = {0,          0x80000000, 0x3F000000, 0xBFC00000, 0x40200000, 0x7F800000, 0xFF800000,
                                   0x7FC00000, 1,          0x807FFFFF, 0x7F7FFFFF, 0x00800000, 0x4F000000, 0xCF000000,
                                   0x46FFFF00, 0xC7000080, 0x437F8000, 0x4B7FFFFF, 0x477FF000, 0x33000000};
  uint32_t r = 12345;
  for (int i = 0; i < 4 * kDigestLen; ++i) {
    t->x.wu[i] = r = r * 1664525u + 1013904223u;
    t->y.wu[i] = r = r * 1664525u + 1013904223u;
    t->p.f[i] = (Vek32f)(Vek32s)t->x.wu[i] / 2000000.0f;
    t->r.f[i] = (Vek32f)(Vek32s)t->y.wu[i] / 30000000.0f;
    t->u.f[i] = t->p.f[i];
    t->v.f[i] = t->r.f[i];
    if (i % 3 == 1) t->u.wu[i] = special[r % 20];
    if (i % 5 == 2) t->v.wu[i] = special[r / 32 % 20];
  }
  for (int i = 0; i < 2 * kDigestLen; ++i) t->s.g[i] = t->u.f[i];
}

/* Makes NaNs alike: `width` 4 for floats, 8 for doubles, 0 for integers. */
static void vekDigestSettle(VekDigestData* d, int width) {
  if (width == 4)
    for (int i = 0; i < 4 * kDigestLen; ++i)
      if (d->f[i] != d->f[i]) d->wu[i] = 0x7FC00000;
  if (width == 8)
    for (int i = 0; i < 2 * kDigestLen; ++i)
      if (d->g[i] != d->g[i]) d->qu[i] = UINT64_C(0x7FF8000000000000);
}

static void vekDigestTake(VekDigestState* t, const char* name, VekStatus status, int width) {
  t->refused |= status < 0;
  vekDigestSettle(&t->d, width);
  vekDigestSettle(&t->e, width);
  t->hash = vekDigestAdd(t->hash, &status, sizeof status);
  t->hash = vekDigestAdd(t->hash, &t->d, sizeof t->d);
  t->hash = vekDigestAdd(t->hash, &t->e, sizeof t->e);
  memset(&t->d, 0, sizeof t->d);
  memset(&t->e, 0, sizeof t->e);
  if (t->note) t->note(name, status, t->hash);
}

/* Below, INTS, FLTS and DBLS take a call whose results are integers, floats and doubles; the INPLACE forms first fill d
 * with a source. */
#define INTS(NAME, ...) vekDigestTake(t, "veks" #NAME, veks##NAME(__VA_ARGS__), 0)
#define FLTS(NAME, ...) vekDigestTake(t, "veks" #NAME, veks##NAME(__VA_ARGS__), 4)
#define DBLS(NAME, ...) vekDigestTake(t, "veks" #NAME, veks##NAME(__VA_ARGS__), 8)
#define INTS_INPLACE(FROM, NAME, ...) (t->d = t->FROM, INTS(NAME, __VA_ARGS__))
#define FLTS_INPLACE(FROM, NAME, ...) (t->d = t->FROM, FLTS(NAME, __VA_ARGS__))

/* Integer arithmetic under one scale factor. */
static void vekDigestScaled(VekDigestState* t, int sf) {
  const int n = kDigestLen;
  const Vek32sc c = {-70000, 123456789};
#define EACH_TYPE(NAME)                                    \
  INTS(NAME##_8u_Sfs, t->x.b, t->y.b, t->d.b, n, sf);      \
  INTS(NAME##_16s_Sfs, t->x.h, t->y.h, t->d.h, n, sf);     \
  INTS(NAME##_32s_Sfs, t->x.w, t->y.w, t->d.w, n, sf);     \
  INTS_INPLACE(y, NAME##_16s_ISfs, t->x.h, t->d.h, n, sf); \
  INTS_INPLACE(y, NAME##_32s_ISfs, t->x.w, t->d.w, n, sf)
#define EACH_TYPE_BY_CONSTANT(NAME)                        \
  INTS(NAME##_8u_Sfs, t->x.b, 77, t->d.b, n, sf);          \
  INTS(NAME##_16s_Sfs, t->x.h, -1234, t->d.h, n, sf);      \
  INTS(NAME##_32s_Sfs, t->x.w, -123456789, t->d.w, n, sf); \
  INTS(NAME##_32sc_Sfs, t->x.wc, c, t->d.wc, n, sf)
  EACH_TYPE(Add);
  EACH_TYPE(Sub);
  EACH_TYPE(Mul);
  EACH_TYPE(Div);
  EACH_TYPE_BY_CONSTANT(AddC);
  EACH_TYPE_BY_CONSTANT(SubC);
  EACH_TYPE_BY_CONSTANT(SubCRev);
  EACH_TYPE_BY_CONSTANT(MulC);
#undef EACH_TYPE
#undef EACH_TYPE_BY_CONSTANT
  INTS(Add_32sc_Sfs, t->x.wc, t->y.wc, t->d.wc, n, sf);
  INTS(Sub_32sc_Sfs, t->x.wc, t->y.wc, t->d.wc, n, sf);
  INTS(Mul_32sc_Sfs, t->x.wc, t->y.wc, t->d.wc, n, sf);
  INTS(Mul_32s32sc_Sfs, t->x.w, t->y.wc, t->d.wc, n, sf);
  INTS(Mul_Low_32s_Sfs, t->x.w, t->y.w, t->d.w, n, sf);
  INTS(DivC_8u_Sfs, t->x.b, 7, t->d.b, n, sf);
  INTS(DivC_16s_Sfs, t->x.h, -7, t->d.h, n, sf);
  INTS_INPLACE(y, AddProduct_32s_Sfs, t->x.w, t->y.w, t->d.w, n, sf);
  INTS(Sqr_8u_Sfs, t->x.b, t->d.b, n, sf);
  INTS(Sqr_16s_Sfs, t->x.h, t->d.h, n, sf);
  INTS(Sqrt_8u_Sfs, t->x.b, t->d.b, n, sf);
  INTS(Sqrt_16s_Sfs, t->x.h, t->d.h, n, sf);
  INTS(Sum_16s32s_Sfs, t->x.h, n, t->d.w, sf);
  INTS(Sum_32s_Sfs, t->x.w, n, t->d.w, sf);
  INTS(Mean_32s_Sfs, t->x.w, n, t->d.w, sf);
  INTS(DotProd_32s_Sfs, t->x.w, t->y.w, n, t->d.w, sf);
  INTS(DotProd_32sc_Sfs, t->x.wc, t->y.wc, n, t->d.wc, sf);
  INTS(DotProd_32s32sc_Sfs, t->x.w, t->y.wc, n, t->d.wc, sf);
  FLTS(Convert_16s32f_Sfs, t->x.h, t->d.f, n, sf);
  FLTS(Convert_32s32f_Sfs, t->x.w, t->d.f, n, sf);
  DBLS(Convert_16s64f_Sfs, t->x.h, t->d.g, n, sf);
  DBLS(Convert_32s64f_Sfs, t->x.w, t->d.g, n, sf);
  INTS(Convert_32s16s_Sfs, t->x.w, t->d.h, n, sf);
  INTS(Convert_32s24s_Sfs, t->x.w, t->d.b, n, sf);
  INTS(Convert_32u24u_Sfs, t->x.wu, t->d.b, n, sf);
  INTS(Convert_32f24s_Sfs, t->u.f, t->d.b, n, sf);
  INTS(Convert_32f24u_Sfs, t->u.f, t->d.b, n, sf);
  for (int mode = vekRoundTowardZero; mode <= vekRoundHalfAway; ++mode) {
    INTS(Convert_64s32s_Sfs, t->x.q, t->d.w, n, mode, sf);
    INTS(Convert_32f8s_Sfs, t->u.f, t->d.c, n, mode, sf);
    INTS(Convert_32f8u_Sfs, t->u.f, t->d.b, n, mode, sf);
    INTS(Convert_32f16s_Sfs, t->u.f, t->d.h, n, mode, sf);
    INTS(Convert_32f16u_Sfs, t->u.f, t->d.hu, n, mode, sf);
    INTS(Convert_32f32s_Sfs, t->u.f, t->d.w, n, mode, sf);
    INTS(Convert_64f32s_Sfs, t->s.g, t->d.w, n, mode, sf);
    if (mode != vekRoundHalfAway) INTS(Convert_16f16s_Sfs, t->x.hu, t->d.h, n, mode, sf);
  }
}

static void vekDigestConversions(VekDigestState* t) {
  const int n = kDigestLen;
  INTS(Convert_8s16s, t->x.c, t->d.h, n);
  INTS(Convert_16s32s, t->x.h, t->d.w, n);
  INTS(Convert_24u32u, t->x.b, t->d.wu, n);
  INTS(Convert_24s32s, t->x.b, t->d.w, n);
  INTS(Convert_32s16s, t->x.w, t->d.h, n);
  FLTS(Convert_8u32f, t->x.b, t->d.f, n);
  FLTS(Convert_8s32f, t->x.c, t->d.f, n);
  FLTS(Convert_16u32f, t->x.hu, t->d.f, n);
  FLTS(Convert_16s32f, t->x.h, t->d.f, n);
  FLTS(Convert_24u32f, t->x.b, t->d.f, n);
  FLTS(Convert_24s32f, t->x.b, t->d.f, n);
  FLTS(Convert_32s32f, t->x.w, t->d.f, n);
  DBLS(Convert_32s64f, t->x.w, t->d.g, n);
  DBLS(Convert_32f64f, t->u.f, t->d.g, n);
  FLTS(Convert_64f32f, t->s.g, t->d.f, n);
  INTS(Convert_16f32f, t->x.hu, t->d.f, n);
  for (int mode = vekRoundTowardZero; mode <= vekRoundNearestEven; ++mode) {
    INTS(Convert_32f16f, t->u.f, t->d.hu, n, mode);
    INTS(Convert_16s16f, t->x.h, t->d.hu, n, mode);
  }
  INTS(ALawToLin_8u16s, t->x.b, t->d.h, n);
  FLTS(ALawToLin_8u32f, t->x.b, t->d.f, n);
  INTS(MuLawToLin_8u16s, t->x.b, t->d.h, n);
  FLTS(MuLawToLin_8u32f, t->x.b, t->d.f, n);
  INTS(LinToALaw_16s8u, t->x.h, t->d.b, n);
  INTS(LinToALaw_32f8u, t->u.f, t->d.b, n);
  INTS(LinToMuLaw_16s8u, t->x.h, t->d.b, n);
  INTS(LinToMuLaw_32f8u, t->u.f, t->d.b, n);
  INTS(ALawToMuLaw_8u, t->x.b, t->d.b, n);
  INTS(MuLawToALaw_8u, t->x.b, t->d.b, n);
}

static void vekDigestFloats(VekDigestState* t) {
  const int n = kDigestLen;
  const Vek32fc c = {-1.75f, 0.3f};
#define EACH_TYPE(NAME)                                \
  FLTS(NAME##_32f, t->u.f, t->v.f, t->d.f, n);         \
  FLTS(NAME##_32fc, t->u.fc, t->v.fc, t->d.fc, n);     \
  FLTS_INPLACE(v, NAME##_32f_I, t->u.f, t->d.f, n);    \
  FLTS_INPLACE(v, NAME##_32fc_I, t->u.fc, t->d.fc, n); \
  FLTS(NAME##C_32f, t->u.f, 0.3f, t->d.f, n);          \
  FLTS(NAME##C_32fc, t->u.fc, c, t->d.fc, n)
  EACH_TYPE(Add);
  EACH_TYPE(Sub);
  EACH_TYPE(Mul);
  EACH_TYPE(Div);
#undef EACH_TYPE
  FLTS(SubCRev_32f, t->u.f, 0.3f, t->d.f, n);
  FLTS(SubCRev_32fc, t->u.fc, c, t->d.fc, n);
  FLTS(Mul_32f32fc, t->u.f, t->v.fc, t->d.fc, n);
  FLTS_INPLACE(v, AddProduct_32f, t->p.f, t->r.f, t->d.f, n);
  FLTS_INPLACE(v, AddProduct_32fc, t->p.fc, t->r.fc, t->d.fc, n);
  FLTS_INPLACE(v, AddProductC_32f, t->p.f, 0.3f, t->d.f, n);
  INTS(Abs_16s, t->x.h, t->d.h, n);
  INTS(Abs_32s, t->x.w, t->d.w, n);
  INTS(Abs_32f, t->x.f, t->d.f, n);
  FLTS(Sqr_32f, t->u.f, t->d.f, n);
  FLTS(Sqr_32fc, t->u.fc, t->d.fc, n);
  FLTS(Sqrt_32f, t->u.f, t->d.f, n);
  FLTS(Sqrt_32fc, t->u.fc, t->d.fc, n);
  FLTS(Magnitude_32f, t->u.f, t->v.f, t->d.f, n);
  FLTS(Magnitude_32fc, t->u.fc, t->d.f, n);
  FLTS(Phase_32f, t->u.f, t->v.f, t->d.f, n);
  FLTS(Phase_32fc, t->u.fc, t->d.f, n);
  FLTS(PowerSpectrum_32f, t->u.f, t->v.f, t->d.f, n);
  FLTS(PowerSpectrum_32fc, t->u.fc, t->d.f, n);
  FLTS(CartToPolar_32f, t->u.f, t->v.f, t->d.f, t->e.f, n);
  FLTS(CartToPolar_32fc, t->u.fc, t->d.f, t->e.f, n);
  FLTS(PolarToCart_32f, t->u.f, t->v.f, t->d.f, t->e.f, n);
  FLTS(PolarToCart_32fc, t->v.f, t->u.f, t->d.fc, n);
  FLTS(Normalize_32f, t->u.f, t->d.f, n, 0.3f, 7.0f);
  FLTS(Normalize_32fc, t->u.fc, t->d.fc, n, c, 7.0f);
  FLTS(HaarFwd_32f, t->u.f, n, t->d.f, t->e.f);
  FLTS(HaarInv_32f, t->u.f, t->v.f, t->d.f, n);
}

static void vekDigestThresholds(VekDigestState* t) {
  const int n = kDigestLen;
  const Vek32fc c = {-1.75f, 0.3f};
#define EACH_SIDE(SIDE, OP)                                        \
  FLTS(Threshold_32f, t->u.f, t->d.f, n, 2.5f, OP);                \
  FLTS(Threshold_32fc, t->u.fc, t->d.fc, n, 99.5f, OP);            \
  INTS(Threshold_##SIDE##_16s, t->x.h, t->d.h, n, -300);           \
  INTS(Threshold_##SIDE##_32s, t->x.w, t->d.w, n, 123456);         \
  FLTS(Threshold_##SIDE##_32f, t->u.f, t->d.f, n, -0.0f);          \
  FLTS(Threshold_##SIDE##_32fc, t->u.fc, t->d.fc, n, 99.5f);       \
  FLTS(Threshold_##SIDE##Val_32f, t->u.f, t->d.f, n, 2.5f, -7.0f); \
  FLTS(Threshold_##SIDE##Val_32fc, t->u.fc, t->d.fc, n, 99.5f, c); \
  INTS(Threshold_##SIDE##Abs_32s, t->x.w, t->d.w, n, 1 << 30);     \
  FLTS(Threshold_##SIDE##Abs_32f, t->u.f, t->d.f, n, 99.5f)
  EACH_SIDE(LT, vekCompareLess);
  EACH_SIDE(GT, vekCompareGreater);
#undef EACH_SIDE
  INTS(Threshold_LTValGTVal_32s, t->x.w, t->d.w, n, -5000000, 1, 70000000, 2);
  FLTS(Threshold_LTValGTVal_32f, t->u.f, t->d.f, n, -2.5f, 1, 99.5f, 2);
  for (int level = 0; level <= 50; level += 50) {
    FLTS(Threshold_LTInv_32f, t->u.f, t->d.f, n, (Vek32f)level);
    FLTS(Threshold_LTInv_32fc, t->u.fc, t->d.fc, n, (Vek32f)level);
  }
}

static void vekDigestStatistics(VekDigestState* t) {
  const int n = kDigestLen;
  FLTS(Sum_32f, t->p.f, n, t->d.f, vekAlgHintNone);
  FLTS(Sum_32f, t->p.f, n, t->d.f, vekAlgHintAccurate);
  FLTS(Sum_32fc, t->p.fc, n, t->d.fc, vekAlgHintNone);
  INTS(MinMaxIndx_16s, t->x.h, n, t->d.h, t->d.w + 1, t->e.h, t->e.w + 1);
  INTS(MinMaxIndx_32s, t->x.w, n, t->d.w, t->d.w + 1, t->e.w, t->e.w + 1);
  FLTS(MinMaxIndx_32f, t->u.f, n, t->d.f, t->d.w + 1, t->e.f, t->e.w + 1);
  INTS(MaxIndx_32s, t->x.w, n, t->d.w, t->d.w + 1);
  FLTS(MaxIndx_32f, t->u.f, n, t->d.f, t->d.w + 1);
  INTS(MinIndx_16s, t->x.h, n, t->d.h, t->d.w + 1);
  FLTS(MinIndx_32f, t->p.f, n, t->d.f, t->d.w + 1);
  FLTS(MinMax_32f, t->u.f, n, t->d.f, t->e.f);
  INTS(MinMax_16s, t->x.h, n, t->d.h, t->e.h);
  INTS(MaxAbsIndx_32s, t->x.w, n, t->d.w, t->e.w);
  INTS(MinAbsIndx_32s, t->x.w, n, t->d.w, t->e.w);
  INTS(CountInRange_32s, t->x.w, n, t->d.w, -1000000000, 5);
  FLTS(Norm_Inf_32f, t->u.f, n, t->d.f);
  FLTS(NormDiff_Inf_32f, t->p.f, t->r.f, n, t->d.f);
  INTS_INPLACE(x, SortAscend_8u_I, t->d.b, n);
  INTS_INPLACE(x, SortDescend_16s_I, t->d.h, n);
  INTS_INPLACE(x, SortAscend_32s_I, t->d.w, n);
  INTS_INPLACE(p, SortDescend_32f_I, t->d.f, n);
  /* Keys that occur once: among equal keys the order of the indices is anybody's. */
  INTS_INPLACE(x, SortIndexDescend_32s_I, t->d.w, t->e.w, n);
  INTS_INPLACE(p, SortIndexAscend_32f_I, t->d.f, t->e.w, n);
  for (int mask = 3; mask <= 201; mask = mask * 2 - 1) {
    INTS(FilterMedian_8u, t->x.b, t->d.b, n, mask);
    INTS(FilterMedian_16s, t->x.h, t->d.h, n, mask);
    INTS(FilterMedian_32s, t->x.w, t->d.w, n, mask);
    FLTS(FilterMedian_32f, t->u.f, t->d.f, n, mask);
  }
}

static void vekDigestGenerators(VekDigestState* t) {
  const int n = kDigestLen;
  for (int hint = vekAlgHintNone; hint <= vekAlgHintAccurate; ++hint) {
    t->e.f[0] = 1.25f;
    FLTS(Tone_Direct_32f, t->d.f, n, 3.0f, 0.0713f, t->e.f, hint);
    t->e.f[0] = 1.25f;
    FLTS(Tone_Direct_32fc, t->d.fc, n, 3.0f, 0.213f, t->e.f, hint);
  }
  t->e.f[0] = 1.25f;
  FLTS(Triangle_Direct_32f, t->d.f, n, 3.0f, 0.0713f, 0.4f, t->e.f);
  t->e.f[0] = 1.25f;
  FLTS(Triangle_Direct_32fc, t->d.fc, n, 3.0f, 0.0713f, -0.4f, t->e.f);
  FLTS(VectorJaehne_32f, t->d.f, n, 100.5f);
  INTS(VectorJaehne_32s, t->d.w, n, 2000000000);
  FLTS(VectorRamp_32f, t->d.f, n, -3.7f, 0.123f);
  INTS(VectorRamp_32s, t->d.w, n, -3.7f, 1.5f);
  INTS(VectorSlope_8u, t->d.b, n, -30.5f, 0.5f);
  INTS(VectorSlope_16s, t->d.h, n, -3.7f, 77.7f);
  FLTS(VectorSlope_32f, t->d.f, n, -3.7f, 0.123f);
  INTS(VectorSlope_32s, t->d.w, n, -3.7, 3000000.25);
  t->e.wu[0] = 4711;
  FLTS(RandUniform_Direct_32f, t->d.f, n, -1.0f, 5.0f, t->e.wu);
  t->e.wu[0] = 4711;
  FLTS(RandGauss_Direct_32f, t->d.f, n, 1.5f, 3.0f, t->e.wu);
#define EACH_TYPE(NAME)                \
  FLTS(NAME##_32f, t->p.f, t->d.f, n); \
  FLTS(NAME##_32fc, t->p.fc, t->d.fc, n)
  EACH_TYPE(WinBartlett);
  EACH_TYPE(WinHann);
  EACH_TYPE(WinHamming);
  EACH_TYPE(WinBlackmanStd);
  EACH_TYPE(WinBlackmanOpt);
#undef EACH_TYPE
  FLTS(WinBlackman_32f, t->p.f, t->d.f, n, 0.3f);
  FLTS(WinKaiser_32f, t->p.f, t->d.f, n, 0.01f);
  FLTS(WinKaiser_32fc, t->p.fc, t->d.fc, n, 0.02f);
}

static void vekDigestMovement(VekDigestState* t) {
  const int n = kDigestLen;
  const Vek32fc c = {-1.75f, 0.3f};
  INTS(Copy_64fc, (const Vek64fc*)t->x.g, (Vek64fc*)t->d.g, n / 2);
  INTS(Copy_1u, t->x.b, 3, t->d.b, 5, 8 * n);
  INTS_INPLACE(x, Move_8u, t->d.b + 3, t->d.b + 10, n);
  INTS(Set_16s, -2, t->d.h, n);
  INTS(Set_32fc, c, t->d.fc, n);
  INTS(Zero_32fc, t->d.fc, n);
  INTS(Flip_8u, t->x.b, t->d.b, n);
  INTS_INPLACE(x, Flip_16u_I, t->d.hu, n);
  INTS(Flip_32f, t->x.f, t->d.f, n);
  INTS_INPLACE(x, Flip_32fc_I, t->d.fc, n);
  INTS(SwapBytes_16u, t->x.hu, t->d.hu, n);
  INTS(SwapBytes_24u, t->x.b, t->d.b, n);
  INTS(SwapBytes_32u, t->x.wu, t->d.wu, n);
  INTS(SwapBytes_64u, t->x.qu, t->d.qu, n);
  INTS(Real_32fc, t->x.fc, t->d.f, n);
  INTS(Imag_32fc, t->x.fc, t->d.f, n);
  INTS(CplxToReal_32fc, t->x.fc, t->d.f, t->e.f, n);
  INTS(RealToCplx_32f, t->x.f, t->y.f, t->d.fc, n);
  INTS(Conj_32fc, t->x.fc, t->d.fc, n);
  INTS(ConjFlip_32fc, t->x.fc, t->d.fc, n);
  INTS(And_8u, t->x.b, t->y.b, t->d.b, n);
  INTS(Or_16u, t->x.hu, t->y.hu, t->d.hu, n);
  INTS(Xor_32u, t->x.wu, t->y.wu, t->d.wu, n);
  INTS(AndC_16u, t->x.hu, 0x7531, t->d.hu, n);
  INTS(OrC_32u, t->x.wu, 0x13572468, t->d.wu, n);
  INTS(XorC_8u, t->x.b, 0x5A, t->d.b, n);
  INTS(Not_8u, t->x.b, t->d.b, n);
  for (int shift = 0; shift <= 40; shift += 5) {
    INTS(LShiftC_8u, t->x.b, shift, t->d.b, n);
    INTS(LShiftC_16s, t->x.h, shift, t->d.h, n);
    INTS(LShiftC_32s, t->x.w, shift, t->d.w, n);
    INTS(RShiftC_8u, t->x.b, shift, t->d.b, n);
    INTS(RShiftC_16s, t->x.h, shift, t->d.h, n);
    INTS(RShiftC_32s, t->x.w, shift, t->d.w, n);
  }
  for (int factor = 1; factor <= 4; ++factor) {
    t->e.w[0] = factor - 1;
    INTS(SampleDown_32f, t->x.f, n, t->d.f, t->e.w + 1, factor, t->e.w);
    t->e.w[0] = factor - 1;
    INTS(SampleUp_32fc, t->x.fc, n / factor, t->d.fc, t->e.w + 1, factor, t->e.w);
  }
}

#undef INTS
#undef FLTS
#undef DBLS
#undef INTS_INPLACE
#undef FLTS_INPLACE

static uint64_t vekDigest(VekDigestNote note) {
  static const int scales[] = {0,    1,       2,  7,  15,  16,  31,  33,    62,     64,
                               1000, INT_MAX, -1, -4, -15, -31, -33, -1000, INT_MIN};
  static VekDigestState state;
  VekDigestState* t = &state;
  memset(t, 0, sizeof *t);
  t->note = note;
  t->hash = UINT64_C(14695981039346656037);
  vekDigestFill(t);
  for (size_t i = 0; i < sizeof scales / sizeof *scales; ++i) vekDigestScaled(t, scales[i]);
  vekDigestConversions(t);
  vekDigestFloats(t);
  vekDigestThresholds(t);
  vekDigestStatistics(t);
  vekDigestGenerators(t);
  vekDigestMovement(t);
  return t->refused ? 0 : t->hash;
}

#endif
