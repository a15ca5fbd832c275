// SPDX-License-Identifier: Apache-2.0
// Cosine transforms through complex Fourier transforms. The even samples in order and the odd ones from the end form a
// sequence v; with V its spectrum and c_k = a exp(-i pi k / 2N), a = sqrt(2/N), the coefficients are
// X[k] = Re(c_k V[k]) and X[N-k] = -Im(c_k V[k]). For even N = 2n, V comes from the spectrum Z of the n pairs of v:
// with S = Z[k] + conj Z[n-k], D = (Z[k] - conj Z[n-k]) / i, P = c_k S / 2, Q = c_k exp(-2 pi i k / N) D / 2,
//   c_k V[k] = P + Q,   c_(n-k) V[n-k] = exp(-i pi/4) conj(P - Q).
#include "transform/dct.h"
#include "transform/dct_order.h"
#include "transform/fft_small.h"

namespace vek::VEK_SLOT {
namespace {

constexpr int L = kLanes<float>;
constexpr float kRootHalf = 0.707106781186547524f;
constexpr float kCosEighth = 0.92387953251128675613f, kSinEighth = 0.38268343236508977173f;  // of pi/8

// ---- the roots that turn Z into coefficients -----------------------------------------------------------------------

// c_k / 2 and c_k exp(-2 pi i k / N) / 2 for k < n/2, block by block; or, for the longest powers of two, each as the
// product of one of 1,024 fine roots and a coarse one.
constexpr int64_t kTwoLevelLen = int64_t(1) << 19, kFine = 1024;

struct Turns {
  Complex<float> c, d;
};
struct TurnTable {
  const float* at;
  bool twoLevel;
  VEK_INLINE Turns block(int64_t k) const {
    if (!twoLevel) return {loadBlock(at + 4 * k), loadBlock(at + 4 * k + 2 * L)};
    const float *fine = at + 4 * (k % kFine), *coarse = at + 4 * kFine + 4 * (k / kFine);
    return {times(loadBlock(fine), {broadcastReg(coarse[0]), broadcastReg(coarse[1])}),
            times(loadBlock(fine + 2 * L), {broadcastReg(coarse[2]), broadcastReg(coarse[3])})};
  }
};
// The same for one k.
struct Turn {
  float cr, ci, dr, di;
};
Turn turnAt(TurnTable t, int64_t k) {
  alignas(32) float block[4 * L];
  const Turns all = t.block(k / L * L);
  storeBlock(block, all.c);
  storeBlock(block + 2 * L, all.d);
  int lane = 0;
  while (kLaneOrder<float>[lane] != k % L) ++lane;
  return {block[lane], block[lane + L], block[lane + 2 * L], block[lane + 3 * L]};
}

// Fills the table from root(j) = exp(-i pi j / 2N), for k < count rounded up to whole blocks.
template <class F>
void makeTurns(float* table, int64_t count, bool twoLevel, float a, F root) {
  const int64_t fine = twoLevel ? kFine : (count + L - 1) / L * L;
  for (int64_t k = 0; k < fine; ++k) {
    int lane = 0;
    while (kLaneOrder<float>[lane] != k % L) ++lane;
    float* block = table + 4 * (k / L * L) + lane;
    const Root c = root(k), d = root(5 * k);
    const double half = 0.5 * double(a);
    block[0] = float(half * c.re), block[L] = float(half * c.im);
    block[2 * L] = float(half * d.re), block[3 * L] = float(half * d.im);
  }
  if (!twoLevel) return;
  for (int64_t k = 0; k < count; k += kFine) {
    const Root c = root(k), d = root(5 * k);
    float* coarse = table + 4 * kFine + 4 * (k / kFine);
    coarse[0] = float(c.re), coarse[1] = float(c.im), coarse[2] = float(d.re), coarse[3] = float(d.im);
  }
}

// ---- between Z and the coefficients --------------------------------------------------------------------------------

VEK_INLINE void storeUp(float* p, Reg<float> x) { storeV(p, natural(x)); }
VEK_INLINE void storeDown(float* last, Reg<float> x) { storeV(last - (L - 1), reverseLanes(natural(x))); }
VEK_INLINE Reg<float> loadUp(const float* p) { return natural(loadV(p)); }
VEK_INLINE Reg<float> loadDown(const float* last) { return natural(reverseLanes(loadV(last - (L - 1)))); }

// The coefficients of one k: numbers k, N-k, n-k and n+k.
template <class R>
struct Four {
  R k, last, below, above;
};

// The arithmetic on any kind of number that has + - *.
template <class R>
VEK_INLINE Four<R> toCoefficients(R ar, R ai, R br, R bi, R cr, R ci, R dr, R di, R h) {
  const R sr = ar + br, si = ai - bi, tr = ai + bi, ti = br - ar;
  const R pr = sr * cr - si * ci, pi = sr * ci + si * cr, qr = tr * dr - ti * di, qi = tr * di + ti * dr;
  const R u = pr - qr, v = pi - qi;
  return {pr + qr, R{} - (pi + qi), (u - v) * h, (u + v) * h};
}
template <class R>
struct Pair {
  R ar, ai, br, bi;
};
template <class R>
VEK_INLINE Pair<R> fromCoefficients(Four<R> x, R cr, R ci, R dr, R di, R h) {
  const R u = (x.below + x.above) * h, v = (x.above - x.below) * h;
  const R sr = x.k + u, si = v - x.last, tr = x.k - u, ti = R{} - (x.last + v);
  const R er = sr * cr + si * ci, ei = si * cr - sr * ci, odr = tr * dr + ti * di, odi = ti * dr - tr * di;
  return {er - odi, ei + odr, er + odi, odr - ei};
}

// Where the coefficients lie: in their own order, or (in place of Z) with X[k] and X[N-k] as the parts of element k and
// X[n] as the second part of element 0.
enum Placing { kOwnOrder, kInPlace };

struct Places {
  int64_t n;
  Placing placing;
  VEK_INLINE int64_t of(int64_t k, bool mirrored) const {
    if (placing == kInPlace) return 2 * k + mirrored;
    return !mirrored ? k : k == 0 ? n : 2 * n - k;
  }
};

// The partners of the first block of k are elements n-1, n-2 ... of the last block, whose own first element belongs to
// a later k. Element 0 has no partner; what becomes of it here is replaced at the end.
template <class T>
VEK_INLINE Complex<T> mirror(Complex<T> x) {
  return {mirrorLanes<T>(x.re), mirrorLanes<T>(x.im)};
}
VEK_INLINE void replacePartners(float* lastBlock, Complex<float> x, bool inPlace) {
  Complex<float> y = mirror(x);
  if (inPlace) {
    const Complex<float> old = loadInterleaved(lastBlock);
    y = {withFirst(y.re, old.re, float()), withFirst(y.im, old.im, float())};
  }
  storeInterleaved(lastBlock, y);
}

// z holds n complex numbers, n >= 2L; y its 2n coefficients; y is z only with kInPlace.
template <Placing W>
VEK_NOINLINE void coefficients(const float* z, float* y, int64_t n, TurnTable table, float dc, float a) {
  const Places at{n, W};
  const float z0 = z[0], z1 = z[1], mr = z[n / 2 * 2], mi = z[n / 2 * 2 + 1];
  const auto one = [&](int64_t k) {
    const Turn t = turnAt(table, k);
    const float ar = z[2 * k], ai = z[2 * k + 1], br = z[2 * (n - k)], bi = z[2 * (n - k) + 1];
    const Four<float> x = toCoefficients(ar, ai, br, bi, t.cr, t.ci, t.dr, t.di, kRootHalf);
    y[at.of(k, false)] = x.k;
    y[at.of(k, true)] = x.last;
    y[at.of(n - k, false)] = x.below;
    y[at.of(n - k, true)] = x.above;
  };
  const int64_t pairs = (n + 1) / 2;  // k below this has a partner of its own
  const Reg<float> h = broadcastReg(kRootHalf);
  {
    const Complex<float> p = loadInterleaved(z), q = mirror(loadInterleaved(z + 2 * (n - L)));
    const Turns t = table.block(0);
    const Four<Reg<float>> x = toCoefficients(p.re, p.im, q.re, q.im, t.c.re, t.c.im, t.d.re, t.d.im, h);
    if constexpr (W == kOwnOrder) {
      storeUp(y, x.k);
      storeUp(y + 2 * n - L, mirrorLanes<float>(x.last));
      storeUp(y + n - L, mirrorLanes<float>(x.below));
      storeUp(y + n, x.above);
    } else {
      storeInterleaved<float>(y, {x.k, x.last});
      replacePartners(y + 2 * (n - L), {x.below, x.above}, true);
    }
  }
  int64_t k = L;
  for (; k + L <= pairs; k += L) {
    const Complex<float> p = loadInterleaved(z + 2 * k), q = loadReversed(z + 2 * (n - k));
    const Turns t = table.block(k);
    const Four<Reg<float>> x = toCoefficients(p.re, p.im, q.re, q.im, t.c.re, t.c.im, t.d.re, t.d.im, h);
    if constexpr (W == kOwnOrder) {
      storeUp(y + k, x.k);
      storeDown(y + 2 * n - k, x.last);
      storeDown(y + n - k, x.below);
      storeUp(y + n + k, x.above);
    } else {
      storeInterleaved<float>(y + 2 * k, {x.k, x.last});
      storeReversed<float>(y + 2 * (n - k), {x.below, x.above});
    }
  }
  for (; k < pairs; ++k) one(k);
  y[at.of(0, false)] = (z0 + z1) * dc;
  y[at.of(0, true)] = (z0 - z1) * dc;
  if (n % 2 == 0) {
    y[at.of(n / 2, false)] = (mr * kCosEighth - mi * kSinEighth) * a;
    y[at.of(n / 2, true)] = (mr * kSinEighth + mi * kCosEighth) * a;
  }
}

// The way back, over n: inverse transforms that are not scaled then give the sequence v.
template <Placing W>
VEK_NOINLINE void spectrum(const float* y, float* z, int64_t n, TurnTable table, float dc, float a) {
  const Places at{n, W};
  const float x0 = y[at.of(0, false)], xn = y[at.of(0, true)];
  const float xm = y[at.of(n / 2, false)], xl = y[at.of(n / 2, true)];
  const auto one = [&](int64_t k) {
    const Turn t = turnAt(table, k);
    const Four<float> x = {y[at.of(k, false)], y[at.of(k, true)], y[at.of(n - k, false)], y[at.of(n - k, true)]};
    const Pair<float> p = fromCoefficients(x, t.cr, t.ci, t.dr, t.di, kRootHalf);
    z[2 * k] = p.ar, z[2 * k + 1] = p.ai, z[2 * (n - k)] = p.br, z[2 * (n - k) + 1] = p.bi;
  };
  const int64_t pairs = (n + 1) / 2;
  const Reg<float> h = broadcastReg(kRootHalf);
  {
    Four<Reg<float>> x;
    if constexpr (W == kOwnOrder) {
      x = {loadUp(y), mirrorLanes<float>(loadUp(y + 2 * n - L)), mirrorLanes<float>(loadUp(y + n - L)), loadUp(y + n)};
    } else {
      const Complex<float> p = loadInterleaved(y), q = mirror(loadInterleaved(y + 2 * (n - L)));
      x = {p.re, p.im, q.re, q.im};
    }
    const Turns t = table.block(0);
    const Pair<Reg<float>> p = fromCoefficients(x, t.c.re, t.c.im, t.d.re, t.d.im, h);
    storeInterleaved<float>(z, {p.ar, p.ai});
    replacePartners(z + 2 * (n - L), {p.br, p.bi}, W == kInPlace);
  }
  int64_t k = L;
  for (; k + L <= pairs; k += L) {
    Four<Reg<float>> x;
    if constexpr (W == kOwnOrder) {
      x = {loadUp(y + k), loadDown(y + 2 * n - k), loadDown(y + n - k), loadUp(y + n + k)};
    } else {
      const Complex<float> p = loadInterleaved(y + 2 * k), q = loadReversed(y + 2 * (n - k));
      x = {p.re, p.im, q.re, q.im};
    }
    const Turns t = table.block(k);
    const Pair<Reg<float>> p = fromCoefficients(x, t.c.re, t.c.im, t.d.re, t.d.im, h);
    storeInterleaved<float>(z + 2 * k, {p.ar, p.ai});
    storeReversed<float>(z + 2 * (n - k), {p.br, p.bi});
  }
  for (; k < pairs; ++k) one(k);
  z[0] = (x0 + xn) * dc;
  z[1] = (x0 - xn) * dc;
  if (n % 2 == 0) {
    z[n] = (xm * kCosEighth + xl * kSinEighth) * a;
    z[n + 1] = (xl * kCosEighth - xm * kSinEighth) * a;
  }
}

// ---- powers of two -------------------------------------------------------------------------------------------------

constexpr int kOnStack = 4096;

void fourier(const float* in, float* out, const DctSpec* spec, Direction d) {
  const int m = __builtin_ctz(unsigned(spec->len)) - 1;
  if (m < 6) {
    withSmall(m, [&]<int M>() VEK_LAMBDA {
      d == kForward ? smallTransform<kForward, M>(in, out, 1.0f) : smallTransform<kInverse, M>(in, out, 1.0f);
    });
    return;
  }
  const auto* from = reinterpret_cast<const Vek32fc*>(in);
  auto* to = reinterpret_cast<Vek32fc*>(out);
  d == kForward ? fftForward(from, to, spec->fft, nullptr) : fftInverse(from, to, spec->fft, nullptr);
}

VEK_NOINLINE void shortPow2(const float* x, float* y, const DctSpec* spec, TurnTable table, bool forward) {
  alignas(64) float z[kOnStack];
  const int64_t len = spec->len, n = len / 2;
  // Out of place the first step can use the destination, which spares the Fourier transform from working in place.
  float* first = x == y ? z : y;
  if (forward) {
    splitParity(x, first, len);
    fourier(first, z, spec, kForward);
    coefficients<kOwnOrder>(z, y, n, table, spec->dcScale, spec->acScale);
  } else {
    spectrum<kOwnOrder>(x, first, n, table, spec->dcScale, spec->acScale);
    fourier(first, z, spec, kInverse);
    mergeParity(z, y, len);
  }
}

// Without scratch memory: coefficients change places with their spectrum and move to their own order at the end.
void longPow2(const float* x, float* y, const DctSpec* spec, TurnTable table, bool forward) {
  const int64_t len = spec->len, n = len / 2;
  if (forward) {
    if (x != y) {
      splitParity(x, y, len);
    } else {
      splitParityInPlace(y, len);
    }
    fourier(y, y, spec, kForward);
    coefficients<kInPlace>(y, y, n, table, spec->dcScale, spec->acScale);
    splitParityInPlace(y, len);
    const float middle = y[len - 1];
    __builtin_memmove(y + n + 1, y + n, size_t(n - 1) * sizeof(float));
    y[n] = middle;
  } else {
    if (x != y) {
      spectrum<kOwnOrder>(x, y, n, table, spec->dcScale, spec->acScale);
    } else {
      const float middle = y[n];
      __builtin_memmove(y + n, y + n + 1, size_t(n - 1) * sizeof(float));
      y[len - 1] = middle;
      mergeParityInPlace(y, len);
      spectrum<kInPlace>(y, y, n, table, spec->dcScale, spec->acScale);
    }
    fourier(y, y, spec, kInverse);
    mergeParityInPlace(y, len);
  }
}

// ---- other lengths: the transform as a convolution with a chirp ----------------------------------------------------

// out[j] = in[j] * chirp[j] for count complex numbers, either side conjugated if asked for.
void mulChirp(const float* in, const Vek32fc* chirp, float* out, int64_t count, bool conjugateIn, bool conjugateOut) {
  const float signIn = conjugateIn ? -1.0f : 1.0f, signOut = conjugateOut ? -1.0f : 1.0f;
  const Reg<float> flipIn = broadcastReg(signIn), flipOut = broadcastReg(signOut);
  int64_t j = 0;
  for (; j + L <= count; j += L) {
    const Complex<float> a = loadInterleaved(in + 2 * j);
    const Complex<float> r = times(Complex<float>{a.re, a.im * flipIn}, loadInterleaved(&chirp[j].re));
    storeInterleaved<float>(out + 2 * j, {r.re, r.im * flipOut});
  }
  for (; j < count; ++j) {
    const float re = in[2 * j], im = in[2 * j + 1] * signIn;
    const float outRe = re * chirp[j].re - im * chirp[j].im, outIm = re * chirp[j].im + im * chirp[j].re;
    out[2 * j] = outRe;
    out[2 * j + 1] = outIm * signOut;
  }
}

// The Fourier transform of m points, in work, whose first m elements hold the data times the chirp.
void convolve(Vek32fc* work, const DctSpec* spec, int64_t m, bool conjugate) {
  fftConvForward(work, m, work, spec->fft);
  fftConvMultiply(spec->response, work, spec->fft);
  fftConvInverse(work, work, spec->fft);
  mulChirp(&work->re, spec->chirp, &work->re, m, false, conjugate);
}

void forwardChirp(const float* x, float* y, const DctSpec* spec, Vek32fc* work) {
  const int64_t len = spec->len, p = int64_t(1) << spec->fft->order;
  float *z = &work->re, *v = z + 2 * p - len;  // behind everything that the first step writes
  splitParity(x, v, len);
  if (len % 2 == 0) {
    mulChirp(v, spec->chirp, z, len / 2, false, false);
    convolve(work, spec, len / 2, false);
    coefficients<kOwnOrder>(z, y, len / 2, {spec->table, false}, spec->dcScale, spec->acScale);
    return;
  }
  for (int64_t j = 0; j < len; ++j) {
    const float s = v[j];
    work[j] = {s * spec->chirp[j].re, s * spec->chirp[j].im};
  }
  convolve(work, spec, len, false);
  y[0] = z[0] * spec->dcScale;
  for (int64_t k = 1; k <= len / 2; ++k) {
    const float cr = 2 * spec->table[2 * k], ci = 2 * spec->table[2 * k + 1];
    y[k] = z[2 * k] * cr - z[2 * k + 1] * ci;
    y[len - k] = -(z[2 * k] * ci + z[2 * k + 1] * cr);
  }
}

void inverseChirp(const float* x, float* y, const DctSpec* spec, Vek32fc* work) {
  const int64_t len = spec->len;
  float* z = &work->re;
  if (len % 2 == 0) {
    spectrum<kOwnOrder>(x, z, len / 2, {spec->table, false}, spec->dcScale, spec->acScale);
    mulChirp(z, spec->chirp, z, len / 2, true, false);
    convolve(work, spec, len / 2, true);
    mergeParity(z, y, len);
    return;
  }
  z[0] = x[0] * spec->dcScale;
  z[1] = 0;
  for (int64_t k = 1; k <= len / 2; ++k) {
    const float cr = spec->table[2 * k], ci = spec->table[2 * k + 1], re = x[k], im = -x[len - k];
    const float vr = re * cr + im * ci, vi = im * cr - re * ci;
    z[2 * k] = vr, z[2 * k + 1] = vi, z[2 * (len - k)] = vr, z[2 * (len - k) + 1] = -vi;
  }
  mulChirp(z, spec->chirp, z, len, true, false);
  convolve(work, spec, len, true);
  for (int64_t j = 0; j < len; ++j) z[j] = z[2 * j];
  mergeParity(z, y, len);
}

// 4N roots; the table of roots ends at 2^28, the longest transform takes the last bit apart. Its own function, so that
// the roots leave the stack to the Fourier transform's.
VEK_NOINLINE void makePow2Turns(DctSpec* spec, int order) {
  const int bits = order + 2, extra = bits > 28 ? bits - 28 : 0;
  const double unit = kTwoPi / double(int64_t(1) << bits);
  const Roots roots(bits - extra);
  const Root halfStep = {cos(unit), -sin(unit)};
  makeTurns(spec->table, spec->len / 4, spec->len >= kTwoLevelLen, spec->acScale, [&](int64_t j) {
    const Root r = roots(j >> extra);
    return extra != 0 && (j & 1) ? r * halfStep : r;
  });
}

uint8_t* align64(uint8_t* p) { return p + (-reinterpret_cast<uintptr_t>(p) & 63); }

}  // namespace

void dctPow2(const float* x, float* y, const DctSpec* spec, bool forward) {
  const TurnTable table{spec->table, spec->len >= kTwoLevelLen};
  if (spec->len == 16) {
    dctSmall(x, y, 16, forward);
  } else if (spec->len <= kOnStack) {
    shortPow2(x, y, spec, table, forward);
  } else {
    longPow2(x, y, spec, table, forward);
  }
}

void dctChirp(const float* x, float* y, const DctSpec* spec, Vek32fc* work, bool forward) {
  if (forward) {
    forwardChirp(x, y, spec, work);
  } else {
    inverseChirp(x, y, spec, work);
  }
}

void buildPow2(DctSpec* spec) {
  const int order = __builtin_ctz(unsigned(spec->len));
  uint8_t* next = reinterpret_cast<uint8_t*>(spec + 1);
  if (order > 6) {
    spec->fft = fftPlace(kFftComplex32, order - 1, kFftNormNone, spec->hint, next);
    next = spec->fft->tableEnd;
  }
  spec->table = reinterpret_cast<float*>(align64(next));
  makePow2Turns(spec, order);
}

int64_t chirpPoints(int len) {
  const int64_t m = len % 2 != 0 ? len : len / 2;
  int64_t p = 1;
  while (p < 2 * m - 1) p *= 2;
  return p;
}

void buildChirp(DctSpec* spec) {
  const int64_t len = spec->len, m = len % 2 != 0 ? len : len / 2, p = chirpPoints(spec->len);
  spec->fft = fftPlace(kFftComplex32, __builtin_ctzll(uint64_t(p)), kFftNormNone, spec->hint,
                       reinterpret_cast<uint8_t*>(spec + 1));
  spec->response = reinterpret_cast<Vek32fc*>(align64(spec->fft->tableEnd));
  spec->chirp = spec->response + p;
  spec->table = reinterpret_cast<float*>(align64(reinterpret_cast<uint8_t*>(spec->chirp + m)));
  for (int64_t j = 0; j < p; ++j) spec->response[j] = {0, 0};
  int64_t square = 0;  // j^2 mod 2m
  for (int64_t j = 0; j < m; ++j) {
    const double angle = kTwoPi * double(square) / double(2 * m);
    spec->chirp[j] = {float(cos(angle)), float(-sin(angle))};
    const Vek32fc back = {float(cos(angle) / double(p)), float(sin(angle) / double(p))};
    spec->response[j] = back;
    if (j != 0) spec->response[p - j] = back;
    square = (square + 2 * j + 1) % (2 * m);
  }
  fftConvForward(spec->response, p, spec->response, spec->fft);
  const double unit = kTwoPi / (4 * double(len));
  const auto root = [=](int64_t j) { return Root{cos(unit * double(j)), -sin(unit * double(j))}; };
  if (len % 2 == 0) {
    makeTurns(spec->table, (m + 1) / 2, false, spec->acScale, root);
    return;
  }
  for (int64_t k = 0; k <= len / 2; ++k) {
    const Root c = root(k);
    spec->table[2 * k] = float(0.5 * double(spec->acScale) * c.re);
    spec->table[2 * k + 1] = float(0.5 * double(spec->acScale) * c.im);
  }
}

}  // namespace vek::VEK_SLOT
