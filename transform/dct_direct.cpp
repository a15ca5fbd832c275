// SPDX-License-Identifier: Apache-2.0
// Cosine transforms by their sums: lengths up to 8 from constant matrices, other short ones from a table.
#include "core/simd/pack.h"
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
constexpr Matrix8 makeMatrix8(bool forward) {
  Matrix8 m{};
  for (int n = 0; n < 8; ++n) {
    for (int k = 0; k < 8; ++k) {
      const double c = (k == 0 ? 0.5 * kSqrtHalf64 : 0.5) * cos1024((2 * n + 1) * k * 32);
      (forward ? m.row[n][k] : m.row[k][n]) = float(c);
    }
  }
  return m;
}
constexpr Matrix8 kForward8 = makeMatrix8(true), kInverse8 = makeMatrix8(false);

VEK_INLINE void multiply8(const float* x, float* y, const Matrix8& m) {
  Pack<float> sum[4];
#pragma GCC unroll 4
  for (int i = 0; i < 4; ++i) sum[i] = broadcast(x[i]) * load(m.row[i]);
#pragma GCC unroll 4
  for (int i = 0; i < 4; ++i) sum[i] = fusedMulAdd(broadcast(x[i + 4]), load(m.row[i + 4]), sum[i]);
  store(y, (sum[0] + sum[1]) + (sum[2] + sum[3]));
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

// ---- any length below the direct limit
// -------------------------------------------------------------------------------- cos and sin of (2n + 1) k theta,
// theta = pi / 2N, for a pack of k of one parity, turn from n to n + 1 by 2 k theta. The turning loses accuracy slowly
// and starts afresh from the table every few steps.

constexpr int L = Pack<float>::lanes;
constexpr int kFreshStart = 8;

constexpr int kChains = 3;  // packs that turn side by side: one alone would wait for its own results

struct Turning {
  Pack<float> c[kChains], s[kChains], stepC[kChains], stepS[kChains], sum[kChains];
  // Adds cosine times value, then turns.
  VEK_INLINE void step(float value) {
    const Pack<float> x = broadcast(value);
#pragma GCC unroll 4
    for (int i = 0; i < kChains; ++i) {
      sum[i] = fusedMulAdd(x, c[i], sum[i]);
      const Pack<float> next = fusedNegMulAdd(s[i], stepS[i], c[i] * stepC[i]);
      s[i] = fusedMulAdd(c[i], stepS[i], s[i] * stepC[i]);
      c[i] = next;
    }
  }
};

struct Cosines {
  const float* table;
  int len;
  // cos and sin of m * theta for the L values m = m0, m0 + stride, ...; sin x = cos(x - pi/2).
  VEK_INLINE void lookUp(int64_t m0, int64_t stride, Pack<float>* c, Pack<float>* s) const {
    alignas(32) float cosines[L], sines[L];
    const int period = 4 * len, jump = int(stride % period);
    int m = int(m0 % period);
    for (int i = 0; i < L; ++i) {
      cosines[i] = table[m];
      sines[i] = table[m >= len ? m - len : m + 3 * len];
      m += jump;
      m -= m >= period ? period : 0;
    }
    *c = load(cosines);
    *s = load(sines);
  }
};

// Copies the sums x[n] + x[N-1-n] and the differences to work; an odd length's middle counts once, as a sum.
void fold(const float* x, float* sums, float* differences, int len) {
  const int half = len / 2;
  if (len % 2 != 0) sums[half] = x[half];
  for (int n = 0; n < half; ++n) {
    const float a = x[n], b = x[len - 1 - n];
    sums[n] = a + b;
    differences[n] = a - b;
  }
}

// The sums over count terms x[0], x[stride], ... of cos((m0 + lane * across) * (first + term * along) * theta) for
// kChains packs of lanes.
VEK_INLINE Turning sumsOf(const float* x, int stride, int count, int64_t m0, int across, int64_t first, int along,
                          Cosines cosines) {
  Turning t;
  for (int i = 0; i < kChains; ++i) {
    const int64_t m = m0 + int64_t(across) * i * L;
    cosines.lookUp(m * along, across * along, &t.stepC[i], &t.stepS[i]);
    t.sum[i] = zeros<float>();
  }
  for (int from = 0; from < count; from += kFreshStart) {
    const int64_t factor = first + int64_t(from) * along;
    for (int i = 0; i < kChains; ++i) {
      cosines.lookUp((m0 + int64_t(across) * i * L) * factor, across * factor, &t.c[i], &t.s[i]);
    }
    const int to = from + kFreshStart < count ? from + kFreshStart : count;
    for (int n = from; n < to; ++n) t.step(x[n * stride]);
  }
  return t;
}

void forwardDirect(const float* x, float* y, const DctSpec* spec, float* work) {
  const int len = spec->len, half = len / 2, more = len - half;
  const Cosines cosines{spec->table, len};
  fold(x, work, work + more, len);
  for (int parity = 0; parity < 2; ++parity) {
    const float* folded = parity == 0 ? work : work + more;
    for (int k = parity; k < len; k += 2 * L * kChains) {
      const Turning t = sumsOf(folded, 1, parity == 0 ? more : half, k, 2, 1, 2, cosines);
      for (int i = 0; i < kChains * L && k + 2 * i < len; ++i) {
        y[k + 2 * i] = lanesOf(t.sum[i / L])[i % L] * (k + 2 * i == 0 ? spec->dcScale : spec->acScale);
      }
    }
  }
}

void inverseDirect(const float* x, float* y, const DctSpec* spec, float* work) {
  const int len = spec->len;
  const Cosines cosines{spec->table, len};
  work[0] = x[0] * spec->dcScale;
  for (int k = 1; k < len; ++k) work[k] = x[k] * spec->acScale;
  for (int n = 0; 2 * n < len; n += L * kChains) {
    const Turning even = sumsOf(work, 2, (len + 1) / 2, 2 * n + 1, 2, 0, 2, cosines);
    const Turning odd = sumsOf(work + 1, 2, len / 2, 2 * n + 1, 2, 1, 2, cosines);
    for (int i = 0; i < kChains * L && 2 * (n + i) < len; ++i) {
      const float a = lanesOf(even.sum[i / L])[i % L], b = lanesOf(odd.sum[i / L])[i % L];
      y[len - 1 - n - i] = a - b;
      y[n + i] = a + b;  // an odd length's middle is its own mirror image; its odd part is zero
    }
  }
}

}  // namespace

void dctSmall(const float* x, float* y, int len, bool forward) {
  if (len == 8) {
    multiply8(x, y, forward ? kForward8 : kInverse8);
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
  if (forward) {
    forwardDirect(x, y, spec, work);
  } else {
    inverseDirect(x, y, spec, work);
  }
}

void buildDirect(DctSpec* spec) {
  spec->table = reinterpret_cast<float*>(spec + 1);
  const int period = 4 * spec->len;
  for (int j = 0; j < period; ++j) spec->table[j] = float(cos(j * (kTwoPi / period)));
}

}  // namespace vek::VEK_SLOT
