// SPDX-License-Identifier: Apache-2.0
// Conversion, thresholds and companding against the loops a user would write.
#include <immintrin.h>
#include <string.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "bench/support/rows.h"

namespace {

using namespace vekbench;

// A row from one array to another: the library's call and the plain loop, by element.
template <class S, class D, class Vek, class Plain>
void row(const char* name, double low, double high, Vek vek, Plain plain) {
  rows(name, [=](size_t n) {
    auto a = uniform<S>(n, low, high);
    auto d = Array<D>(n);
    return Contenders{{"vek", [=] { vek(a.data(), d.data(), int(n)); }}, {"plain", [=] {
                                                                            const S* __restrict s = a.data();
                                                                            D* __restrict t = d.data();
                                                                            for (size_t i = 0; i < n; ++i)
                                                                              t[i] = plain(s[i]);
                                                                            keep(d);
                                                                          }}};
  });
}

// The plain loops of packed 24-bit arrays work on bytes.
template <class S, class D, int SourceBytes, int DestinationBytes, class Vek, class Plain>
void rowOfBytes(const char* name, double low, double high, Vek vek, Plain plain) {
  rows(name, [=](size_t n) {
    auto a = uniform<S>(n * SourceBytes, low, high);
    auto d = Array<D>(n * DestinationBytes);
    return Contenders{{"vek", [=] { vek(a.data(), d.data(), int(n)); }}, {"plain", [=] {
                                                                            for (size_t i = 0; i < n; ++i)
                                                                              plain(&a[i * SourceBytes],
                                                                                    &d[i * DestinationBytes]);
                                                                            keep(d);
                                                                          }}};
  });
}

void copies() {
  row<Vek8s, Vek16s>("cvt_8s16s", -128, 127, veksConvert_8s16s, [](Vek8s x) { return Vek16s(x); });
  row<Vek16s, Vek32s>("cvt_16s32s", -32768, 32767, veksConvert_16s32s, [](Vek16s x) { return Vek32s(x); });
  row<Vek32s, Vek16s>("cvt_32s16s", -40000, 40000, veksConvert_32s16s,
                      [](Vek32s x) { return Vek16s(std::clamp(x, -32768, 32767)); });
  row<Vek8u, Vek32f>("cvt_8u32f", 0, 255, veksConvert_8u32f, [](Vek8u x) { return Vek32f(x); });
  row<Vek8s, Vek32f>("cvt_8s32f", -128, 127, veksConvert_8s32f, [](Vek8s x) { return Vek32f(x); });
  row<Vek16s, Vek32f>("cvt_16s32f", -32768, 32767, veksConvert_16s32f, [](Vek16s x) { return Vek32f(x); });
  row<Vek32s, Vek32f>("cvt_32s32f", -1e6, 1e6, veksConvert_32s32f, [](Vek32s x) { return Vek32f(x); });
  row<Vek32s, Vek64f>("cvt_32s64f", -1e6, 1e6, veksConvert_32s64f, [](Vek32s x) { return Vek64f(x); });
  row<Vek32f, Vek64f>("cvt_32f64f", -1e6, 1e6, veksConvert_32f64f, [](Vek32f x) { return Vek64f(x); });
  row<Vek64f, Vek32f>("cvt_64f32f", -1e6, 1e6, veksConvert_64f32f, [](Vek64f x) { return Vek32f(x); });
  row<Vek16s, Vek32f>(
      "cvt_16s32f_sf15", -32768, 32767, [](auto a, auto d, int n) { veksConvert_16s32f_Sfs(a, d, n, 15); },
      [](Vek16s x) { return float(x) / 32768; });
}

Vek32s signed24(const Vek8u* b) { return b[0] | b[1] << 8 | Vek32s(Vek8s(b[2])) * 65536; }
void store24(Vek8u* d, int64_t x) {
  x = std::clamp<int64_t>(x, -8388608, 8388607);
  d[0] = Vek8u(x), d[1] = Vek8u(x >> 8), d[2] = Vek8u(x >> 16);
}

void packed24() {
  rowOfBytes<Vek8u, Vek32f, 3, 1>("cvt_24s32f", 0, 255, veksConvert_24s32f,
                                  [](const Vek8u* s, Vek32f* d) { *d = float(signed24(s)); });
  rowOfBytes<Vek8u, Vek32s, 3, 1>("cvt_24s32s", 0, 255, veksConvert_24s32s,
                                  [](const Vek8u* s, Vek32s* d) { *d = signed24(s); });
  rowOfBytes<Vek32s, Vek8u, 1, 3>(
      "cvt_32s24s_sf4", -2e8, 2e8, [](auto a, auto d, int n) { veksConvert_32s24s_Sfs(a, d, n, 4); },
      [](const Vek32s* s, Vek8u* d) { store24(d, (int64_t(*s) + 7 + (*s >> 4 & 1)) >> 4); });
  rowOfBytes<Vek32f, Vek8u, 1, 3>(
      "cvt_32f24s_sf0", -9e6, 9e6, [](auto a, auto d, int n) { veksConvert_32f24s_Sfs(a, d, n, 0); },
      [](const Vek32f* s, Vek8u* d) {
        const double y = std::clamp(double(*s), -8388608.0, 8388607.0);
        store24(d, int64_t(y < 0 ? y - 0.5 : y + 0.5));
      });
}

template <class S, class D, int Mode>
D rounded(S x) {
  const S low = S(std::numeric_limits<D>::min()), high = S(std::numeric_limits<D>::max());
  const S y = x < low ? low : x > high ? high : x;
  if constexpr (Mode == 0) return D(y);
  if constexpr (Mode == 1) return D(std::nearbyint(y));
  if constexpr (Mode == 2) return D(y < 0 ? -((int64_t(-2 * y) + 1) >> 1) : (int64_t(2 * y) + 1) >> 1);
}

template <class S, class D, int Mode, class Convert>
void roundingRow(const char* name, double range, Convert convert) {
  row<S, D>(
      name, -range, range, [=](const S* a, D* d, int n) { convert(a, d, n, Mode, 0); },
      [](S x) { return rounded<S, D, Mode>(x); });
}

void rounding() {
  roundingRow<Vek32f, Vek8s, 1>("cvt_32f8s_near", 150, veksConvert_32f8s_Sfs);
  roundingRow<Vek32f, Vek8u, 1>("cvt_32f8u_near", 300, veksConvert_32f8u_Sfs);
  roundingRow<Vek32f, Vek16s, 1>("cvt_32f16s_near", 40000, veksConvert_32f16s_Sfs);
  roundingRow<Vek32f, Vek16s, 0>("cvt_32f16s_zero", 40000, veksConvert_32f16s_Sfs);
  roundingRow<Vek32f, Vek16s, 2>("cvt_32f16s_away", 40000, veksConvert_32f16s_Sfs);
  roundingRow<Vek32f, Vek32s, 1>("cvt_32f32s_near", 1e9, veksConvert_32f32s_Sfs);
  roundingRow<Vek64f, Vek32s, 1>("cvt_64f32s_near", 1e9, veksConvert_64f32s_Sfs);
}

// Half precision by integer arithmetic, and by the instructions that a user of this processor level has at hand.
float fromHalf(Vek16f h) {
  const uint32_t sign = uint32_t(h & 0x8000) << 16, exponent = h >> 10 & 31, fraction = h & 0x3FF;
  if (exponent == 0) return (sign ? -1.0f : 1.0f) * std::ldexp(float(fraction), -24);
  const uint32_t b = sign | (exponent == 31 ? 0x7F800000 : (exponent + 112) << 23) | fraction << 13;
  float x;
  memcpy(&x, &b, sizeof x);
  return x;
}
Vek16f toHalf(float x) {
  uint32_t b;
  memcpy(&b, &x, sizeof b);
  const uint32_t sign = b >> 16 & 0x8000, m = b & 0x7FFFFFFF;
  if (m > 0x7F800000) return Vek16f(sign | 0x7DFF);
  if (m >= 0x47800000) return Vek16f(sign | 0x7C00);
  if (m < 0x38800000) return Vek16f(sign | uint32_t(std::nearbyint(std::fabs(x) * 16777216.0f)));
  return Vek16f(sign | (m - 0x38000000 + 0xFFF + (m >> 13 & 1)) >> 13);
}

void halves() {
  rows("cvt_16f32f", [](size_t n) {
    auto a = Array<Vek16f>(n);
    auto d = Array<Vek32f>(n);
    for (size_t i = 0; i < n; ++i) a[i] = toHalf(float(i % 2048) - 1000.25f);
    return Contenders{{"vek", [=] { veksConvert_16f32f(a.data(), d.data(), int(n)); }},
                      {"plain",
                       [=] {
                         for (size_t i = 0; i < n; ++i) d[i] = fromHalf(a[i]);
                         keep(d);
                       }},
                      {"f16c-loop", [=] {
                         for (size_t i = 0; i < n; i += 8)
                           _mm256_storeu_ps(&d[i], _mm256_cvtph_ps(_mm_loadu_si128((const __m128i*)&a[i])));
                         keep(d);
                       }}};
  });
  rows("cvt_32f16f_near", [](size_t n) {
    auto a = uniform<Vek32f>(n, -1000, 1000);
    auto d = Array<Vek16f>(n);
    return Contenders{{"vek", [=] { veksConvert_32f16f(a.data(), d.data(), int(n), vekRoundNearestEven); }},
                      {"plain",
                       [=] {
                         for (size_t i = 0; i < n; ++i) d[i] = toHalf(a[i]);
                         keep(d);
                       }},
                      {"f16c-loop", [=] {
                         for (size_t i = 0; i < n; i += 8)
                           _mm_storeu_si128((__m128i*)&d[i], _mm256_cvtps_ph(_mm256_loadu_ps(&a[i]), 0));
                         keep(d);
                       }}};
  });
}

void thresholds() {
  const float level = 10, low = -25, high = 30;
  const auto with = [](auto f, auto... args) { return [=](const auto* a, auto* d, int n) { f(a, d, n, args...); }; };
  using F = Vek32f;
  row<F, F>("lt_32f", -100, 100, with(veksThreshold_LT_32f, level), [=](F x) { return x > level ? x : level; });
  row<F, F>("gt_32f", -100, 100, with(veksThreshold_GT_32f, level), [=](F x) { return x < level ? x : level; });
  row<F, F>("ltval_32f", -100, 100, with(veksThreshold_LTVal_32f, level, 7.0f),
            [=](F x) { return x >= level ? x : 7.0f; });
  row<F, F>("ltvalgtval_32f", -100, 100, with(veksThreshold_LTValGTVal_32f, low, -1.0f, high, 1.0f), [=](F x) {
    return x < low ? -1.0f : x <= high ? x : 1.0f;
  });
  row<F, F>("ltabs_32f", -100, 100, with(veksThreshold_LTAbs_32f, level),
            [=](F x) { return std::fabs(x) < level ? (x >= 0 ? level : -level) : x; });
  row<F, F>("gtabs_32f", -100, 100, with(veksThreshold_GTAbs_32f, level), [=](F x) {
    const F y = x < level ? x : level;
    return y > -level ? y : -level;
  });
  row<F, F>("ltinv_32f", -100, 100, with(veksThreshold_LTInv_32f, level), [=](F x) {
    return std::fabs(double(x)) > level ? 1 / x : x >= 0 ? 1 / level : -1 / level;
  });
  row<Vek16s, Vek16s>("lt_16s", -30000, 30000, with(veksThreshold_LT_16s, Vek16s(100)),
                      [](Vek16s x) { return x > 100 ? x : Vek16s(100); });
  row<Vek32s, Vek32s>("gt_32s", -1e9, 1e9, with(veksThreshold_GT_32s, 1000),
                      [](Vek32s x) { return x < 1000 ? x : 1000; });
  rows("gt_32fc", [=](size_t n) {
    auto parts = uniform<F>(2 * n, -20, 20);
    auto d = Array<Vek32fc>(n);
    const Vek32fc* a = reinterpret_cast<const Vek32fc*>(parts.data());
    const F square = level * level;
    return Contenders{{"vek", [=] { veksThreshold_GT_32fc(a, d.data(), int(n), level), keep(parts); }},
                      {"plain", [=] {
                         for (size_t i = 0; i < n; ++i) {
                           const F m = a[i].re * a[i].re + a[i].im * a[i].im;
                           const double f = m > square ? std::sqrt(double(square) / m) : 1;
                           d[i] = {F(a[i].re * f), F(a[i].im * f)};
                         }
                         keep(d), keep(parts);
                       }}};
  });
}

// Table loops, as G.711 is commonly written: 256 entries to decode, 65,536 or the segment rule to encode.
struct Tables {
  Vek16s mu[256], a[256];
  Vek8u aToMu[256];
  Tables() {
    Vek8u codes[256];
    for (int i = 0; i < 256; ++i) codes[i] = Vek8u(i);
    veksMuLawToLin_8u16s(codes, mu, 256);
    veksALawToLin_8u16s(codes, a, 256);
    veksALawToMuLaw_8u(codes, aToMu, 256);
  }
};

Vek8u muCode(int x) {
  const int m = std::min(((x < 0 ? ~x : x) >> 2) + 33, 8191);
  const int s = m < 64 ? 0 : 26 - __builtin_clz(unsigned(m));
  return Vek8u((s * 16 + (m >> (s + 1) & 15)) ^ (x < 0 ? 0x7F : 0xFF));
}
Vek8u aCode(int x) {
  const int v = (x < 0 ? ~x : x) >> 3;
  const int s = v < 32 ? 0 : 27 - __builtin_clz(unsigned(v));
  return Vek8u((s * 16 + ((s < 2 ? v >> 1 : v >> s) & 15)) ^ (x < 0 ? 0x55 : 0xD5));
}

void companding() {
  static const Tables t;
  row<Vek8u, Vek16s>("mulaw_dec_8u16s", 0, 255, veksMuLawToLin_8u16s, [](Vek8u c) { return t.mu[c]; });
  row<Vek8u, Vek32f>("mulaw_dec_8u32f", 0, 255, veksMuLawToLin_8u32f, [](Vek8u c) { return float(t.mu[c]) / 32768; });
  row<Vek8u, Vek16s>("alaw_dec_8u16s", 0, 255, veksALawToLin_8u16s, [](Vek8u c) { return t.a[c]; });
  row<Vek8u, Vek32f>("alaw_dec_8u32f", 0, 255, veksALawToLin_8u32f, [](Vek8u c) { return float(t.a[c]) / 32768; });
  row<Vek16s, Vek8u>("mulaw_enc_16s8u", -32768, 32767, veksLinToMuLaw_16s8u, [](Vek16s x) { return muCode(x); });
  row<Vek32f, Vek8u>("mulaw_enc_32f8u", -1.1, 1.1, veksLinToMuLaw_32f8u,
                     [](float x) { return muCode(rounded<float, Vek16s, 2>(x * 32768)); });
  row<Vek16s, Vek8u>("alaw_enc_16s8u", -32768, 32767, veksLinToALaw_16s8u, [](Vek16s x) { return aCode(x); });
  row<Vek8u, Vek8u>("alaw_to_mulaw_8u", 0, 255, veksALawToMuLaw_8u, [](Vek8u c) { return t.aToMu[c]; });
}

}  // namespace

int main(int argc, char** argv) {
  copies();
  packed24();
  rounding();
  halves();
  thresholds();
  companding();
  return vekbench::runAll(argc, argv);
}
