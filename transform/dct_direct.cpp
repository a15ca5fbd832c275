// SPDX-License-Identifier: Apache-2.0
// Cosine transforms by their sums: lengths up to 16 from constant matrices, other short ones from a table.
#include "core/simd/interleave.h"
#include "transform/dct.h"
#include "transform/fft_tables.h"

namespace vek::VEK_SLOT {
namespace {

// cos(2 pi j / 1024), any j >= 0.
constexpr double cos1024(int j) {
  const int k = j & 1023, q = k & 255;
  return k < 256   ? kQuarterSine.at[256 - q]
         : k < 512 ? -kQuarterSine.at[q]
         : k < 768 ? -kQuarterSine.at[256 - q]
                   : kQuarterSine.at[q];
}

constexpr double kSqrtHalf64 = 0.707106781186547524400844362104849;

// Row a holds what element a of the source contributes to each element of the result.
struct Matrix8 {
  alignas(32) float row[8][8];
};
// Entry (n, k) is scale * cos(2 pi (2n + 1) (k * across + first) * unit / 1024), half as much power at angle zero.
constexpr Matrix8 makeMatrix8(bool forward, double scale, int across, int first, int unit) {
  Matrix8 m{};
  for (int n = 0; n < 8; ++n) {
    for (int k = 0; k < 8; ++k) {
      const int turns = k * across + first;
      const double c = (turns == 0 ? scale * kSqrtHalf64 : scale) * cos1024((2 * n + 1) * turns * unit);
      (forward ? m.row[n][k] : m.row[k][n]) = float(c);
    }
  }
  return m;
}
constexpr Matrix8 kForward8 = makeMatrix8(true, 0.5, 1, 0, 32), kInverse8 = makeMatrix8(false, 0.5, 1, 0, 32);
// Sixteen points: the even coefficients come from the sums of mirrored samples, the odd ones from the differences.
constexpr double kScale16 = 0.5 * kSqrtHalf64;
constexpr Matrix8 kForwardEven = makeMatrix8(true, kScale16, 2, 0, 16),
                  kForwardOdd = makeMatrix8(true, kScale16, 2, 1, 16);
constexpr Matrix8 kInverseEven = makeMatrix8(false, kScale16, 2, 0, 16),
                  kInverseOdd = makeMatrix8(false, kScale16, 2, 1, 16);

// Elements 0, Stride, 2 Stride, ... of x times the matrix.
template <int Stride>
VEK_INLINE Pack<float> multiply8(const float* x, const Matrix8& m) {
  Pack<float> sum[4];
#pragma GCC unroll 4
  for (int i = 0; i < 4; ++i) sum[i] = broadcast(x[i * Stride]) * load(m.row[i]);
#pragma GCC unroll 4
  for (int i = 0; i < 4; ++i) sum[i] = fusedMulAdd(broadcast(x[(i + 4) * Stride]), load(m.row[i + 4]), sum[i]);
  return (sum[0] + sum[1]) + (sum[2] + sum[3]);
}

void forward16(const float* x, float* y) {
  const Pack<float> a = load(x), b = reverse(load(x + 8));
  const auto sums = lanesOf(a + b), differences = lanesOf(a - b);
  const Two<float> r = interleave(multiply8<1>(sums.x, kForwardEven), multiply8<1>(differences.x, kForwardOdd));
  store(y, r.a);
  store(y + 8, r.b);
}
void inverse16(const float* x, float* y) {
  const Pack<float> e = multiply8<2>(x, kInverseEven), o = multiply8<2>(x + 1, kInverseOdd);
  store(y, e + o);
  store(y + 8, reverse(e - o));
}

void forward4(const float* x, float* y) {
  constexpr float a = float(kSqrtHalf64 * cos1024(64)), b = float(kSqrtHalf64 * cos1024(192));
  const float s0 = x[0] + x[3], s1 = x[1] + x[2], d0 = x[0] - x[3], d1 = x[1] - x[2];
  y[0] = 0.5f * (s0 + s1);
  y[2] = 0.5f * (s0 - s1);
  y[1] = a * d0 + b * d1;
  y[3] = b * d0 - a * d1;
}
void inverse4(const float* x, float* y) {
  constexpr float a = float(kSqrtHalf64 * cos1024(64)), b = float(kSqrtHalf64 * cos1024(192));
  const float e0 = 0.5f * (x[0] + x[2]), e1 = 0.5f * (x[0] - x[2]);
  const float o0 = a * x[1] + b * x[3], o1 = b * x[1] - a * x[3];
  y[0] = e0 + o0, y[3] = e0 - o0, y[1] = e1 + o1, y[2] = e1 - o1;
}

// ---- any length below the direct limit ------------------------------------------------------------------------------

// A coefficient is a sum over evenly spaced angles, f[i] cos(phi + (i - c) delta) around the middle term c. Pairs of
// terms at equal distance j from it share cos and sin of j delta, which turn from step to step:
//   cos(phi) * sum of (f[c+j] + f[c-j]) cos(j delta)  -  sin(phi) * sum of (f[c+j] - f[c-j]) sin(j delta).
// With theta = pi / 2N, the forward transform sums over samples n (folded by parity of k) with delta = 2 k theta; the
// inverse over coefficients k of one parity, with delta = 2 (2n + 1) theta.

constexpr int L = Pack<float>::lanes;
constexpr int kChains = 3;  // packs that turn side by side: one alone would wait for its own results
constexpr int kMostTerms = (kDctDirectLimit + 1) / 2;

// The terms of one sum around its middle: f[c+j] + f[c-j] and f[c+j] - f[c-j] for j = 0 .. most.
struct Terms {
  float sum[kMostTerms], difference[kMostTerms];
  int count;
};
int middleOf(int count) { return (count - 1) / 2; }
VEK_INLINE void gatherTerms(Terms* t, const float* f, int stride, int count) {
  const int c = middleOf(count);
  t->count = count - c;
  t->sum[0] = f[c * stride];
  for (int j = 1; j < t->count; ++j) {
    const float up = f[(c + j) * stride], down = c >= j ? f[(c - j) * stride] : 0.0f;
    t->sum[j] = up + down;
    t->difference[j] = up - down;
  }
}

// The sums for kChains packs of lanes whose cos and sin of delta and of phi are given.
struct Sums {
  Pack<float> of[kChains];
};
VEK_NOINLINE void turningSums(Sums* out, const Terms* t, const float* cosDelta, const float* sinDelta,
                              const float* cosPhi, const float* sinPhi, int packs) {
  Pack<float> stepC[kChains], stepS[kChains], c[kChains], s[kChains], even[kChains], odd[kChains];
#pragma GCC unroll 3
  for (int i = 0; i < kChains; ++i) {
    const int at = i < packs ? i * L : 0;
    c[i] = stepC[i] = load(cosDelta + at);
    s[i] = stepS[i] = load(sinDelta + at);
    even[i] = broadcast(t->sum[0]);
    odd[i] = zeros<float>();
  }
  for (int j = 1; j < t->count; ++j) {
    const Pack<float> sum = broadcast(t->sum[j]), difference = broadcast(t->difference[j]);
#pragma GCC unroll 3
    for (int i = 0; i < kChains; ++i) {
      even[i] = fusedMulAdd(sum, c[i], even[i]);
      odd[i] = fusedMulAdd(difference, s[i], odd[i]);
      const Pack<float> next = fusedNegMulAdd(s[i], stepS[i], c[i] * stepC[i]);
      s[i] = fusedMulAdd(c[i], stepS[i], s[i] * stepC[i]);
      c[i] = next;
    }
  }
#pragma GCC unroll 3
  for (int i = 0; i < kChains; ++i) {
    const int at = i < packs ? i * L : 0;
    out->of[i] = fusedNegMulAdd(odd[i], load(sinPhi + at), even[i] * load(cosPhi + at));
  }
}

// The sums of all `lanes` lanes, stored one after the other; packs past the end compute on what lies there.
void allSums(float* out, const Terms* t, int lanes, const float* cosDelta, const float* sinDelta, const float* cosPhi,
             const float* sinPhi) {
  for (int from = 0; from < lanes; from += kChains * L) {
    const int packs = (lanes - from + L - 1) / L;
    Sums sums;
    turningSums(&sums, t, cosDelta + from, sinDelta + from, cosPhi + from, sinPhi + from, packs);
    for (int i = 0; i < kChains && i < packs; ++i) store(out + from + i * L, sums.of[i]);
  }
}

constexpr int kMostLanes = kMostTerms + L;

// Four tables of len entries, k = 0, 2, 4, ... before k = 1, 3, ...: cos and sin of delta, cos and sin of phi.
void forwardDirect(const float* x, float* y, const DctSpec* spec, float* folded) {
  const int len = spec->len, half = len / 2, more = len - half;
  for (int n = 0; n < half; ++n) {
    folded[n] = x[n] + x[len - 1 - n];
    folded[more + n] = x[n] - x[len - 1 - n];
  }
  if (len % 2 != 0) folded[half] = x[half];
  for (int parity = 0; parity < 2; ++parity) {
    const int count = parity == 0 ? more : half;
    const float* table = spec->table + (parity == 0 ? 0 : more);
    Terms terms;
    float sums[kMostLanes];
    gatherTerms(&terms, folded + (parity == 0 ? 0 : more), 1, count);
    allSums(sums, &terms, count, table, table + len, table + 2 * len, table + 3 * len);
    for (int i = 0; i < count; ++i) y[2 * i + parity] = sums[i] * spec->acScale;
    if (parity == 0) y[0] = sums[0] * spec->dcScale;
  }
}

// Six tables of (len+1)/2 entries by n: cos and sin of delta, of phi for even k, of phi for odd k.
void inverseDirect(const float* x, float* y, const DctSpec* spec, float* scaled) {
  const int len = spec->len, half = len / 2, more = len - half;
  scaled[0] = x[0] * spec->dcScale;
  for (int k = 1; k < len; ++k) scaled[k] = x[k] * spec->acScale;
  float sums[2][kMostLanes];
  for (int parity = 0; parity < 2; ++parity) {
    const float* phi = spec->table + (2 + 2 * parity) * more;
    Terms terms;
    gatherTerms(&terms, scaled + parity, 2, parity == 0 ? more : half);
    allSums(sums[parity], &terms, more, spec->table, spec->table + more, phi, phi + more);
  }
  for (int n = 0; n < more; ++n) {
    y[len - 1 - n] = sums[0][n] - sums[1][n];
    y[n] = sums[0][n] + sums[1][n];  // an odd length's middle is its own mirror image; its odd part is zero
  }
}

}  // namespace

void dctSmall(const float* x, float* y, int len, bool forward) {
  if (len == 16) {
    forward ? forward16(x, y) : inverse16(x, y);
  } else if (len == 8) {
    store(y, multiply8<1>(x, forward ? kForward8 : kInverse8));
  } else if (len == 4) {
    forward ? forward4(x, y) : inverse4(x, y);
  } else if (len == 2) {
    const float a = x[0], b = x[1];
    y[0] = float(kSqrtHalf64) * (a + b);
    y[1] = float(kSqrtHalf64) * (a - b);
  } else {
    y[0] = x[0];
  }
}

void dctDirect(const float* x, float* y, const DctSpec* spec, float* work, bool forward) {
  // Given a spec of the other direction, a table for this one is made for the call.
  struct {
    DctSpec spec;
    float table[4 * kDctDirectLimit + L];
  } other;
  if (bool(spec->forward) != forward) {
    other.spec = *spec;
    buildDirect(&other.spec, forward);
    spec = &other.spec;
  }
  forward ? forwardDirect(x, y, spec, work) : inverseDirect(x, y, spec, work);
}

void buildDirect(DctSpec* spec, bool forward) {
  float* table = spec->table = reinterpret_cast<float*>(spec + 1);
  const int len = spec->len, half = len / 2, more = len - half, period = 4 * len;
  __builtin_memset(table, 0, (4 * size_t(len) + L) * sizeof(float));  // what packs past the end of a table compute on
  const auto put = [&](float* cosine, int64_t m) {  // cos and sin of m theta, the sine one table further on
    const double angle = double(m % period) * (kTwoPi / period);
    cosine[0] = float(cos(angle));
    cosine[forward ? len : more] = float(sin(angle));
  };
  if (forward) {
    for (int i = 0; i < len; ++i) {
      const int64_t k = i < more ? 2 * i : 2 * (i - more) + 1;
      put(table + i, 2 * k);
      put(table + 2 * len + i, (2 * middleOf(i < more ? more : half) + 1) * k);
    }
    return;
  }
  for (int n = 0; n < more; ++n) {
    put(table + n, 2 * (2 * n + 1));
    put(table + 2 * more + n, int64_t(2 * n + 1) * 2 * middleOf(more));
    put(table + 4 * more + n, int64_t(2 * n + 1) * (2 * middleOf(half) + 1));
  }
}

}  // namespace vek::VEK_SLOT
