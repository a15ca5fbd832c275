// SPDX-License-Identifier: Apache-2.0
#include "tests/fuzz/rounded.h"

#include <complex>
#include <sstream>

namespace vektest {
namespace {

using Real = long double;
using Complex = std::complex<Real>;
constexpr Real kSingle = 0x1p-24L, kDouble = 0x1p-53L;

bool startsWith(const std::string& s, const std::string& prefix) { return s.compare(0, prefix.size(), prefix) == 0; }
bool contains(const std::string& s, const char* part) { return s.find(part) != std::string::npos; }

template <class T>
Real read(const char* p) {
  T x;
  memcpy(&x, p, sizeof x);
  return Real(x);
}

Real scalarAt(const Type& t, const char* p) {
  if (t.kind == 'f') return t.width == 4 ? read<float>(p) : read<double>(p);
  return t.width == 2 ? read<int16_t>(p) : read<int32_t>(p);
}

std::vector<Complex> numbers(const Type& t, const std::vector<char>& bytes) {
  std::vector<Complex> out;
  for (size_t at = 0; at + t.size() <= bytes.size(); at += t.size())
    out.emplace_back(scalarAt(t, &bytes[at]), t.parts == 2 ? scalarAt(t, &bytes[at + t.width]) : 0);
  return out;
}

bool finite(const std::vector<Complex>& v) {
  for (const Complex& x : v)
    if (!std::isfinite(x.real()) || !std::isfinite(x.imag())) return false;
  return true;
}

struct Bounded {
  Complex value;
  Real error;
};

struct Sum {
  Complex sum = 0;
  Real magnitudes = 0;
  void add(Complex term, Real magnitude) { sum += term, magnitudes += magnitude; }
  void add(Complex term) { add(term, std::abs(term)); }
};

// ---- one result ---------------------------------------------------------------------------------------------------

Bounded norm(const std::string& name, const std::vector<Complex>& x, const std::vector<Complex>& y) {
  const bool squares = contains(name, "L2_"), difference = !y.empty();
  const bool roundedTerms = contains(name, "32fc64f");
  Sum s;
  for (size_t i = 0; i < x.size(); ++i) {
    const Complex z = difference ? x[i] - y[i] : x[i];
    const Real m = std::abs(z),
               off = roundedTerms ? 2 * kSingle * (std::abs(x[i]) + (difference ? std::abs(y[i]) : 0)) : 0;
    s.add(squares ? m * m : m, squares ? 2 * m * off + off * off : off);
  }
  const Real total = s.sum.real(), e = s.magnitudes + Real(x.size() + 10) * kDouble * total;
  if (!squares) return {total, e};
  return {std::sqrt(total), std::max(std::sqrt(total + e) - std::sqrt(total),
                                     std::sqrt(total) - std::sqrt(std::max(total - e, Real(0))))};
}

Bounded deviation(const std::vector<Complex>& x, bool fast) {
  Sum s;
  for (const Complex& v : x) s.add(v);
  const Real n = Real(x.size()), mean = s.sum.real() / n;
  Real squares = 0, around = 0;
  for (const Complex& v : x) squares += std::norm(v), around += std::norm(v - mean);
  const Real variance = around / (n - 1), dev = std::sqrt(variance);
  const Real e = 8 * (n + 10) * kDouble * squares / (n - 1) + (fast ? 4e-6L * variance : 0);
  return {dev, std::max(std::sqrt(variance + e) - dev, dev - std::sqrt(std::max(variance - e, Real(0))))};
}

Bounded goertzel(const std::vector<Complex>& x, Real frequency) {
  Sum s;
  for (size_t n = 0; n < x.size(); ++n)
    s.add(x[n] * std::polar(Real(1), -2 * Real(M_PIl) * frequency * Real(n)), std::abs(x[n]));
  return {s.sum, s.magnitudes * 1e-9L};
}

Bounded sum(const std::string& name, const std::vector<Complex>& x, const std::vector<Complex>& y, int hint) {
  const bool product = startsWith(name, "DotProd"), mean = startsWith(name, "Mean");
  Sum s;
  for (size_t i = 0; i < x.size(); ++i) s.add(product ? x[i] * y[i] : x[i]);
  const bool single = product ? !contains(name, "64f") && !contains(name, "_Sfs") : hint == 1;
  Bounded b{s.sum, 2 * Real(x.size() + 10) * (single ? kSingle : kDouble) * s.magnitudes};
  if (mean) b.value /= Real(x.size()), b.error /= Real(x.size());
  return b;
}

// ---- lags ---------------------------------------------------------------------------------------------------------

// Result n of a correlation of x with y from the lag on, or of a convolution.
std::vector<Bounded> lags(const Operands& call, const std::vector<Complex>& x, const std::vector<Complex>& y,
                          size_t count) {
  const bool convolution = startsWith(call.name, "Conv"), biased = startsWith(call.name, "ConvBiased");
  const int64_t lag = biased ? call.ints.at("bias") : call.ints.count("lowLag") ? call.ints.at("lowLag") : 0;
  const int64_t nx = int64_t(x.size()), ny = int64_t(y.size());
  std::vector<Bounded> out;
  Real ex = 0, ey = 0;
  for (const Complex& v : x) ex += std::norm(v);
  for (const Complex& v : y) ey += std::norm(v);
  const bool mayTransform = std::max(nx, ny) >= 32 && nx + ny >= 150;
  for (int64_t n = 0; n < int64_t(count); ++n) {
    std::complex<double> sum = 0;
    double magnitudes = 0;
    const int64_t at = n + lag, from = std::max<int64_t>(0, convolution ? at - ny + 1 : -at);
    const int64_t to = std::min(nx, convolution ? at + 1 : ny - at);
    for (int64_t k = from; k < to; ++k) {
      const std::complex<double> a(x[size_t(k)]), b(y[size_t(convolution ? at - k : at + k)]);
      const std::complex<double> term = (convolution ? a : std::conj(a)) * b;
      sum += term, magnitudes += std::abs(a) * std::abs(b);
    }
    const Real terms = Real(std::max<int64_t>(0, to - from));
    Bounded b{Complex(sum), (terms + 4) * 1.5L * kSingle * Real(magnitudes)};
    if (mayTransform && to > from) b.error += 30 * kSingle * std::sqrt(ex * ey);
    const Real scale = contains(call.name, "NormA")             ? 1 / Real(nx)
                       : contains(call.name, "NormB") && n < nx ? 1 / Real(nx - n)
                                                                : 1;
    out.push_back({b.value * scale, b.error * scale});
  }
  return out;
}

std::vector<Bounded> scaled(Bounded b, int scaleFactor) {
  const int sf = std::clamp(scaleFactor, -31, 93);
  const auto saturate = [](Real v) { return std::clamp(v, Real(INT32_MIN), Real(INT32_MAX)); };
  const Real e = std::ldexp(b.error, -sf) + 0.5001L;
  const Real re = std::ldexp(b.value.real(), -sf), im = std::ldexp(b.value.imag(), -sf);
  return {{Complex(saturate(re), saturate(im)), e}};
}

// What each array or result of the call ought to be.
std::vector<Bounded> expected(const Operands& call, size_t which) {
  std::vector<std::vector<Complex>> in;
  std::vector<Real> frequencies;
  size_t results = 0;
  for (size_t i = 0; i < call.arrays.size(); ++i) {
    const Operand& a = call.arrays[i];
    if (!a.result && !a.written && a.before.size() >= a.type.size() && in.size() < 2 &&
        !startsWith(call.name, "GoertzTwo"))
      in.push_back(numbers(a.type, a.before));
    else if (startsWith(call.name, "GoertzTwo") && in.empty())
      in.push_back(numbers(a.type, a.before));
    if (a.type.kind == 'f' && a.type.parts == 1 && !a.written && i == call.arrays.size() - 1)
      for (const Complex& f : numbers(a.type, a.before)) frequencies.push_back(f.real());
    results += i < which && a.written;
  }
  const bool two = startsWith(call.name, "NormDiff") || startsWith(call.name, "DotProd");
  const std::vector<Complex> none, &x = in[0], &y = two ? in[1] : none;
  const int hint = call.ints.count("hint") ? call.ints.at("hint") : 0;
  if (startsWith(call.name, "Norm")) return {norm(call.name, x, y)};
  if (contains(call.name, "StdDev") && (startsWith(call.name, "StdDev") || results == 1))
    return {deviation(x, startsWith(call.name, "StdDev") && hint == 1 && x.size() >= 256)};
  if (startsWith(call.name, "Goertz")) {
    std::vector<Bounded> out;
    for (Real f : frequencies) out.push_back(goertzel(x, f));
    return out;
  }
  if (startsWith(call.name, "Conv") || contains(call.name, "Corr"))
    return lags(call, x, startsWith(call.name, "AutoCorr") ? x : in[1],
                call.arrays[which].after.size() / call.arrays[which].type.size());
  const Bounded b = sum(call.name, x, y, startsWith(call.name, "MeanStdDev") ? 0 : hint);
  return contains(call.name, "_Sfs") ? scaled(b, call.ints.at("scaleFactor")) : std::vector<Bounded>{b};
}

std::string sameClass(const std::vector<Complex>& got, const std::vector<Complex>& model) {
  const auto same = [](Real a, Real b) {
    return std::isnan(a) ? std::isnan(b) : std::isinf(a) ? a == b : std::isfinite(b);
  };
  for (size_t i = 0; i < got.size(); ++i)
    if (!same(got[i].real(), model[i].real()) || !same(got[i].imag(), model[i].imag())) {
      std::ostringstream out;
      out << "result " << got[i] << " where the model has " << model[i];
      return out.str();
    }
  return "";
}

}  // namespace

bool isReduction(const std::string& name) {
  for (const char* p : {"Sum_", "Mean_", "StdDev", "MeanStd", "Norm_", "NormDiff", "DotProd", "Goertz"})
    if (startsWith(name, p)) return true;
  return false;
}

bool isRounded(const std::string& name, int hint) {
  if (startsWith(name, "Sum_32f_") || name == "Sum_32f") return hint == 1;
  for (const char* p : {"StdDev", "MeanStd", "Norm_L1_32fc64f", "Norm_L2", "NormDiff_L", "DotProd", "Goertz", "Conv_",
                        "ConvBiased", "CrossCorr", "AutoCorr"})
    if (startsWith(name, p)) return true;
  return name == "Mean_32f";
}

std::string checkRounded(const Operands& call) {
  for (const Operand& a : call.arrays)
    if (!a.written && a.type.kind == 'f' && !finite(numbers(a.type, a.before))) {
      for (const Operand& r : call.arrays)
        if (r.written)
          if (const auto problem = sameClass(numbers(r.type, r.after), numbers(r.type, r.model)); !problem.empty())
            return problem;
      return "";
    }
  for (size_t i = 0; i < call.arrays.size(); ++i) {
    const Operand& a = call.arrays[i];
    if (!a.written || a.after.empty()) continue;
    const std::vector<Bounded> want = expected(call, i);
    const std::vector<Complex> got = numbers(a.type, a.after);
    for (size_t n = 0; n < want.size(); ++n) {
      const Real rounding =
          a.type.kind != 'f' ? 0 : (a.type.width == 4 ? kSingle : kDouble) * std::abs(want[n].value) * 1.01L;
      const Complex off = got[n] - want[n].value;
      if (std::max(std::fabs(off.real()), std::fabs(off.imag())) <= want[n].error + rounding + 1e-37L) continue;
      std::ostringstream out;
      out << "result " << n << ": got " << got[n] << ", want " << want[n].value << " within " << want[n].error;
      return out.str();
    }
  }
  return "";
}

}  // namespace vektest
