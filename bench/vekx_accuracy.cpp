// SPDX-License-Identifier: Apache-2.0
// The errors of vekx's transforms and of FFTW's on the same random data, against FFTW in long double: relative in the
// 2-norm, and the largest of an element over the root mean square of the elements. Prints a table, or with a path
// replaces the one behind the line "<!-- errors -->" of that document.
#include <math.h>
#include <stdio.h>

#include <complex>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "bench/support/fftw.h"
#include "vekx/vekx.hpp"

namespace {

using vekbench::Fftw;
using Wide = long double;

struct Errors {
  double l2 = 0, most = 0;
};
template <class T>
Errors compare(const std::vector<T>& got, const std::vector<Wide>& want, size_t parts) {
  Wide error = 0, total = 0, most = 0;
  for (size_t i = 0; i < want.size(); i += parts) {
    Wide e = 0;
    for (size_t k = i; k < i + parts; ++k) {
      e += (got[k] - want[k]) * (got[k] - want[k]);
      total += want[k] * want[k];
    }
    error += e;
    if (e > most) most = e;
  }
  return {double(std::sqrt(error / total)), double(std::sqrt(most / (total / Wide(want.size() / parts))))};
}

// One transform by FFTW in any precision; every array is its parts.
enum class Kind { kComplex, kReal, kRealInverse, kCosine2, kCosine3, kCosine4, kSine2, kCosine1 };
template <class T>
std::vector<T> byFftw(Kind kind, int n, std::vector<T> x, size_t outputs) {
  using F = Fftw<T>;
  using C = typename F::Complex;
  std::vector<T> y(outputs);
  C *xc = reinterpret_cast<C*>(x.data()), *yc = reinterpret_cast<C*>(y.data());
  const auto trig = [&](fftw_r2r_kind type) { return F::trig(n, x.data(), y.data(), type, FFTW_ESTIMATE); };
  typename F::Plan plan = nullptr;
  switch (kind) {
    case Kind::kComplex:
      plan = F::complex(1, &n, 1, xc, nullptr, 1, n, yc, nullptr, 1, n, FFTW_FORWARD, FFTW_ESTIMATE);
      break;
    case Kind::kReal:
      plan = F::forward(1, &n, 1, x.data(), nullptr, 1, n, yc, nullptr, 1, n, FFTW_ESTIMATE);
      break;
    case Kind::kRealInverse:
      plan = F::inverse(1, &n, 1, xc, nullptr, 1, n, y.data(), nullptr, 1, n, FFTW_ESTIMATE | FFTW_PRESERVE_INPUT);
      break;
    case Kind::kCosine1:
      plan = trig(FFTW_REDFT00);
      break;
    case Kind::kCosine2:
      plan = trig(FFTW_REDFT10);
      break;
    case Kind::kCosine3:
      plan = trig(FFTW_REDFT01);
      break;
    case Kind::kCosine4:
      plan = trig(FFTW_REDFT11);
      break;
    case Kind::kSine2:
      plan = trig(FFTW_RODFT10);
  }
  F::execute(plan);
  F::destroy(plan);
  return y;
}

template <class T>
std::vector<T> byVekx(Kind kind, int n, const std::vector<T>& x, size_t outputs) {
  using C = std::complex<T>;
  std::vector<T> y(outputs);
  const C* xc = reinterpret_cast<const C*>(x.data());
  C* yc = reinterpret_cast<C*>(y.data());
  const size_t points = size_t(n), bins = points / 2 + 1;
  const auto trig = [&](VekxTrigType type) { vek::Trig<T>(n, type, vekxTrigPlain).forward(x, y).orThrow(); };
  switch (kind) {
    case Kind::kComplex:
      vek::Fft<C>(n, vekxScaleNone).forward(std::span(xc, points), std::span(yc, points)).orThrow();
      break;
    case Kind::kReal:
      vek::Fft<T>(n, vekxScaleNone).forward(x, std::span(yc, bins)).orThrow();
      break;
    case Kind::kRealInverse:
      vek::Fft<T>(n, vekxScaleNone).inverse(std::span(xc, bins), y).orThrow();
      break;
    case Kind::kCosine1:
      trig(vekxDCT1);
      break;
    case Kind::kCosine2:
      trig(vekxDCT2);
      break;
    case Kind::kCosine3:
      trig(vekxDCT3);
      break;
    case Kind::kCosine4:
      trig(vekxDCT4);
      break;
    case Kind::kSine2:
      trig(vekxDST2);
  }
  return y;
}

struct Row {
  const char* name;
  Kind kind;
};
constexpr Row kRows[] = {
    {"complex", Kind::kComplex}, {"real, forward", Kind::kReal}, {"real, inverse", Kind::kRealInverse},
    {"DCT-I", Kind::kCosine1},   {"DCT-II", Kind::kCosine2},     {"DCT-III", Kind::kCosine3},
    {"DCT-IV", Kind::kCosine4},  {"DST-II", Kind::kSine2}};

template <class T>
std::string cells(Kind kind, int n, double unit) {
  std::mt19937_64 engine{uint64_t(n)};
  std::normal_distribution<float> normal;
  const size_t points = size_t(n), bins = points / 2 + 1;
  std::vector<T> x(kind == Kind::kComplex ? 2 * points : kind == Kind::kRealInverse ? 2 * bins : points);
  for (T& v : x) v = T(normal(engine));
  if (kind == Kind::kRealInverse) {
    x[1] = 0;
    if (n % 2 == 0) x[points + 1] = 0;
  }
  const size_t outputs = kind == Kind::kComplex ? 2 * points : kind == Kind::kReal ? 2 * bins : points;
  const size_t parts = kind == Kind::kComplex || kind == Kind::kReal ? 2 : 1;
  const std::vector<Wide> want = byFftw(kind, n, std::vector<Wide>(x.begin(), x.end()), outputs);
  const Errors own = compare(byVekx(kind, n, x, outputs), want, parts);
  const Errors peer = compare(byFftw(kind, n, x, outputs), want, parts);
  char text[200];
  snprintf(text, sizeof text, " %.2f | %.2f | %.1f | %.1f |", own.l2 / unit, peer.l2 / unit, own.most / unit,
           peer.most / unit);
  return text;
}

std::string table() {
  std::ostringstream out;
  for (const Row& row : kRows) {
    out << "\n| " << row.name
        << " | float L2 | FFTW | float max | FFTW | double L2 | FFTW | double max | FFTW |\n"
           "|---|---|---|---|---|---|---|---|---|\n";
    for (int n : {8,    16,   64,    100,   127,   256,   360,   1000,   1009,    1024,   1155,
                  4096, 4800, 10007, 15015, 44100, 48000, 65536, 100003, 1000000, 1048576}) {
      const bool transform = row.kind <= Kind::kRealInverse;
      if (!transform && n > 65536) continue;
      out << "| " << n << " |" << cells<float>(row.kind, n, 1e-7) << cells<double>(row.kind, n, 1e-16) << "\n";
    }
  }
  return out.str();
}

}  // namespace

int main(int argc, char** argv) {
  const std::string errors = table();
  if (argc < 2) {
    printf("%s", errors.c_str());
    return 0;
  }
  std::ifstream in(argv[1]);
  std::string text{std::istreambuf_iterator<char>(in), {}};
  const std::string mark = "<!-- errors -->\n";
  const size_t at = text.find(mark);
  if (at == std::string::npos) {
    fprintf(stderr, "%s: no line %s", argv[1], mark.c_str());
    return 1;
  }
  std::ofstream(argv[1]) << text.substr(0, at + mark.size()) << errors;
  return 0;
}
