// SPDX-License-Identifier: Apache-2.0
// Sequences of calls on one state, cut anywhere and refused in between, against the definition over the whole signal.
#include <climits>
#include <complex>

#include "tests/fuzz/input.h"
#include "tests/support/definitions.h"

namespace vektest {
namespace {

template <class T>
std::vector<T> signal(Input& in, size_t n) {
  std::vector<T> v(n);
  for (T& x : v) x = make<T>(in.uniform(), in.uniform());
  return v;
}

// f(slot) in every slot, until one returns what is wrong.
template <class F>
std::string everySlot(F f) {
  for (int slot : availableSlots()) {
    vek::setSlotForTest(slot);
    const std::string problem = f(slot);
    if (!problem.empty()) return problem + " (slot " + slotName(slot) + ")";
  }
  return "";
}

template <class T>
Guarded<T> placed(Input& in, const std::vector<T>& values) {
  return Guarded<T>(values, in.random() % 2 ? Flush::kBack : Flush::kFront, in.random() % 2 ? 0 : in.random() % 64);
}

// Filters x, `perIn` samples of it for `perOut` results, in pieces of any sizes, each between guard pages.
template <class Kind, class State, class Data>
std::string inPieces(Input& in, State* state, const std::vector<Data>& x, size_t perIn, size_t perOut,
                     std::vector<Data>& y) {
  const size_t iterations = x.size() / perIn;
  for (size_t at = 0, n; at < iterations; at += n) {
    n = 1 + in.below(uint32_t(std::min(iterations - at, in.oneIn(3) ? size_t(2000) : size_t(40))));
    std::vector<Data> part(&x[at * perIn], &x[at * perIn] + n * perIn);
    const bool inPlace = in.oneIn(3), one = n == 1 && perIn * perOut == 1 && in.oneIn(2);
    if (inPlace) part.resize(std::max(n * perIn, n * perOut));
    Guarded<Data> src = placed(in, part), dst = placed(in, std::vector<Data>(one ? 1 : n * perOut));
    if (in.oneIn(4) && (Kind::run(src, dst, in.any({0, -1, INT_MIN}), state) != vekStsSizeErr ||
                        Kind::runInPlace(nullptr, int(n), state) != vekStsNullPtrErr))
      return "another status where the call is refused";
    const bool whole = inPlace && !one;
    const VekStatus status = one       ? Kind::one(src.at(0), dst, state)
                             : inPlace ? Kind::runInPlace(src, int(n), state)
                                       : Kind::run(src, dst, int(n), state);
    if (status != vekStsNoErr) return "status " + std::to_string(status);
    if (!src.intact() || !dst.intact() || (!whole && !sameVectors(src.values(), part)))
      return "wrote beside the destination";
    const std::vector<Data> out = (whole ? src : dst).values();
    y.insert(y.end(), out.begin(), out.begin() + int64_t(n * perOut));
  }
  return "";
}

// ---- FIR ----------------------------------------------------------------------------------------------------------

// A state in one of the ways to make it; one inside a buffer keeps the buffer.
template <class Kind>
struct FirState {
  typename Kind::State* state = nullptr;
  std::unique_ptr<Guarded<Vek8u>> buffer;
  FirState(Input& in, const Rate& r, const typename Kind::Tap* taps, const typename Kind::Data* past) {
    const bool single = r.up == 1 && r.down == 1 && in.oneIn(2);
    if (in.oneIn(2)) {
      const size_t size = single ? Kind::bufferSize(r.taps) : Kind::rateBufferSize(r.taps, r.up, r.down);
      buffer = std::make_unique<Guarded<Vek8u>>(size, Flush::kBack, in.random() % 64);
      single ? Kind::init(&state, taps, r.taps, past, *buffer)
             : Kind::rateInit(&state, taps, r.taps, r.up, r.upPhase, r.down, r.downPhase, past, *buffer);
    } else {
      single ? Kind::initAlloc(&state, taps, r.taps, past)
             : Kind::rateInitAlloc(&state, taps, r.taps, r.up, r.upPhase, r.down, r.downPhase, past);
    }
  }
  FirState(const FirState&) = delete;
  FirState& operator=(const FirState&) = delete;
  ~FirState() { Kind::release(state); }
  bool intact() const { return !buffer || buffer->intact(); }
};

template <class Kind>
std::string fir(Input& in, bool multiRate) {
  using Data = typename Kind::Data;
  Rate r{in.between(1, in.oneIn(3) ? 140 : 24), 1, 0, 1, 0};
  if (multiRate)
    r.up = in.between(1, 6), r.upPhase = int(in.below(uint32_t(r.up))), r.down = in.between(1, 6),
    r.downPhase = int(in.below(uint32_t(r.down)));
  const size_t iterations = size_t(in.between(1, in.oneIn(4) ? 1500 : 200)),
               pastLen = size_t((r.taps + r.up - 1) / r.up);
  const bool past = in.oneIn(2);
  const Stream<Data> x{past ? signal<Data>(in, pastLen) : std::vector<Data>(),
                       signal<Data>(in, iterations * size_t(r.down))};
  const auto taps = signal<typename Kind::Tap>(in, size_t(r.taps));
  double blockError = 0;
  for (const auto& t : taps) blockError += 20 * std::abs(value(t));
  const auto want = filtered<Kind>(r, taps, x);
  // Past samples for a state that takes over at some point, newest first.
  const size_t split = in.below(uint32_t(iterations)) * size_t(r.down);
  std::vector<Data> later;
  for (size_t k = 1; k <= pastLen; ++k) {
    later.push_back(k <= split ? x.now[split - k] : k - split <= x.past.size() ? x.past[k - split - 1] : Data{});
  }
  return everySlot([&](int) -> std::string {
    std::vector<Data> y;
    for (const bool second : {false, true}) {
      const auto middle = x.now.begin() + int64_t(split);
      const std::vector<Data> part(second ? middle : x.now.begin(), second ? x.now.end() : middle);
      if (part.empty()) continue;
      FirState<Kind> filter(in, r, taps.data(), second ? later.data() : past ? x.past.data() : nullptr);
      if (!filter.state) return "no state";
      const std::string problem = inPieces<Kind>(in, filter.state, part, size_t(r.down), size_t(r.up), y);
      if (!problem.empty()) return problem;
      if (!filter.intact()) return "wrote beside the buffer of the state";
    }
    const auto same = closeTo<Kind>(y, want, r.taps, multiRate ? 0 : blockError);
    if (same) return "";
    return std::string(same.message()) + ", " + std::to_string(r.taps) + " taps, up " + std::to_string(r.up) +
           ", down " + std::to_string(r.down) + ", a new state at " + std::to_string(split);
  });
}

// ---- IIR ----------------------------------------------------------------------------------------------------------

// b and a of one section; a[0] is a power of two, so that normalising is exact.
template <class Tap>
void addSection(Input& in, int order, std::vector<Tap>& taps) {
  std::vector<Value> a = {std::ldexp(1.0, in.between(-2, 2))};
  const double radius = in.oneIn(4) ? 0.95 : 0.7;
  const auto times = [&](Value pole) {
    a.push_back(0);
    for (size_t k = a.size() - 1; k > 0; --k) a[k] -= pole * a[k - 1];
  };
  for (int k = order; k > 0;) {
    const Value pole = std::polar(radius, M_PI * in.uniform());
    if (std::is_floating_point_v<Tap> && k > 1) {
      times(pole), times(std::conj(pole)), k -= 2;
    } else {
      times(std::is_floating_point_v<Tap> ? Value(radius * in.uniform()) : pole), --k;
    }
  }
  for (int k = 0; k <= order; ++k) taps.push_back(make<Tap>(in.uniform() + (k == 0 ? 1.5 : 0), in.uniform()));
  for (const Value& v : a) taps.push_back(make<Tap>(v.real(), v.imag()));
}

// States that are none, filters that cannot be normalised or of no size, and memory that runs out.
template <class Kind, class Make>
bool refuses(Make make, typename Kind::State* state, const std::vector<typename Kind::Tap>& taps, bool biquads,
             int order) {
  typename Kind::State* none = nullptr;
  const int size = biquads ? int(taps.size()) / 6 : order;
  bool good = make(taps.data(), 0, &none) == vekStsIIROrderErr;
  for (size_t k = 0; k < taps.size(); k += size_t(order + 1)) {  // b[0], then a[0], of each section
    if (!biquads && k == 0) continue;
    auto zero = taps;
    zero[k] = {};
    good &= make(zero.data(), size, &none) == vekStsDivByZeroErr;
  }
  {
    const Heap nothing(0);
    good &= make(taps.data(), size, &none) == vekStsMemAllocErr;
  }
  uint32_t id;
  memcpy(&id, state, sizeof id);
  memset(static_cast<void*>(state), 0, sizeof id);
  typename Kind::Data x{};
  good &= Kind::run(&x, &x, 1, state) == vekStsContextMatchErr && Kind::one(x, &x, state) == vekStsContextMatchErr &&
          Kind::runInPlace(&x, 1, state) == vekStsContextMatchErr && Kind::release(state) == vekStsContextMatchErr;
  memcpy(static_cast<void*>(state), &id, sizeof id);
  return good && !none;
}

template <class Kind>
std::string iir(Input& in, bool biquads) {
  using Data = typename Kind::Data;
  using Tap = typename Kind::Tap;
  const int order = biquads ? 2 : in.between(1, in.oneIn(6) ? 40 : 6), sections = biquads ? in.between(1, 5) : 1;
  std::vector<Tap> taps;
  for (int q = 0; q < sections; ++q) addSection(in, order, taps);
  const std::vector<Data> x = signal<Data>(in, size_t(in.between(1, in.oneIn(4) ? 1500 : 200)));
  const bool fresh = in.oneIn(2);
  const auto delay = fresh ? std::vector<Tap>(size_t(order * sections)) : signal<Tap>(in, size_t(order * sections));
  const auto plain = recursion<PartOf<Tap>>(taps, delay, order, biquads, x);
  const auto truth = recursion<long double>(taps, delay, order, biquads, x);
  long double largest = 0, error = 0;
  for (size_t i = 0; i < x.size(); ++i) {
    largest = std::max(largest, std::abs(truth[i]));
    error = std::max(error, std::abs(truth[i] - std::complex<long double>(plain[i])));
  }
  if (!(error < 1e-5L * largest)) return "";  // too close to other filters for a bound to mean anything
  return everySlot([&](int slot) -> std::string {
    const Tap* const d = fresh ? nullptr : delay.data();
    const auto built = [&](const Tap* t, int n, typename Kind::State** s) {
      return allocateIir<Kind>(s, t, n, biquads, d);
    };
    typename Kind::State* state = nullptr;
    if (built(taps.data(), biquads ? sections : order, &state) != vekStsNoErr) return "no state";
    if (!refuses<Kind>(built, state, taps, biquads, order)) return "another status where the call is refused";
    std::vector<Data> y;
    std::string problem = inPieces<Kind>(in, state, x, 1, 1, y);
    Kind::release(state);
    for (size_t i = 0; i < y.size() && problem.empty(); ++i) {
      const bool exact = slot != 0 || sameBits(y[i], make<Data>(double(plain[i].real()), double(plain[i].imag())));
      const auto off = std::abs(truth[i] - std::complex<long double>(value(y[i])));
      if (!exact || off > 64 * error + 0x1p-22L * largest)
        problem = "output " + std::to_string(i) + " is off by " + std::to_string(off / largest * 1e6L) +
                  " millionths of the largest, the recursion by " + std::to_string(error / largest * 1e6L) +
                  ", order " + std::to_string(order);
    }
    return problem;
  });
}

// ---- cosine transforms --------------------------------------------------------------------------------------------

template <class Spec, class InitAlloc, class Init, class Run, class RunI, class Free>
std::string dct(Input& in, bool inverse, InitAlloc initAlloc, Init init, Run run, RunI runInPlace, Free release) {
  const size_t len = in.oneIn(3) ? size_t(1) << in.below(10) : size_t(in.between(1, in.oneIn(3) ? 400 : 90));
  const std::vector<Vek32f> x = signal<Vek32f>(in, len);
  const std::vector<double> want = cosines(x, inverse);
  return everySlot([&](int) -> std::string {
    const DctSizes sizes = dctSizes(len);
    Guarded<Vek8u> buffer(sizes.spec, Flush::kBack, in.random() % 64), work(sizes.work, Flush::kBack, in.random() % 64);
    Spec* spec = nullptr;
    const bool owned = in.oneIn(2), inPlace = in.oneIn(2);
    if (owned ? initAlloc(&spec, int(len), in.between(0, 2)) : init(&spec, int(len), 0, buffer, nullptr))
      return "no spec";
    for (int k = 0; k < 2; ++k) {  // a spec may be used again
      Guarded<Vek32f> src = placed(in, x), dst = placed(in, x);
      Vek8u* const memory = in.oneIn(2) ? work.data() : nullptr;
      if ((inPlace ? runInPlace(src, spec, memory) : run(src, dst, spec, memory)) != vekStsNoErr) return "refused";
      if (!src.intact() || !dst.intact() || !buffer.intact() || !work.intact()) return "wrote beside an array";
      const std::vector<Vek32f> y = (inPlace ? src : dst).values();
      double off = 0, size = 0;
      for (size_t i = 0; i < len; ++i) off += std::norm(double(y[i]) - want[i]), size += want[i] * want[i];
      if (std::sqrt(off) > dctError(len) * std::sqrt(size) + 1e-30)
        return "cosine transform of " + std::to_string(len) + " points, error " +
               std::to_string(std::sqrt(off / size) * 1e7) + "e-7";
    }
    return owned && release(spec) != vekStsNoErr ? "not released" : "";
  });
}

// ---- resampling ---------------------------------------------------------------------------------------------------

template <class T, class Up, class Down>
std::string resampled(Input& in, Up up, Down down) {
  const int factor = in.between(1, 9);
  const int start = int(in.below(uint32_t(factor)));
  const std::vector<T> x = signal<T>(in, size_t(in.between(1, 300)));
  return everySlot([&](int) -> std::string {
    std::vector<T> every, spread;
    int phase = start;
    for (size_t at = 0, n; at < x.size(); at += n) {
      n = 1 + in.below(uint32_t(std::min(x.size() - at, size_t(40))));
      Guarded<T> src = placed(in, std::vector<T>(&x[at], &x[at] + n));
      Guarded<T> dst = placed(in, std::vector<T>(size_t((int(n) + factor - 1 - phase) / factor)));
      Guarded<T> wide = placed(in, std::vector<T>(n * size_t(factor)));
      int few = -1, many = -1, fixed = start;
      if (down(src, int(n), dst, &few, factor, &phase) || up(src, int(n), wide, &many, factor, &fixed))
        return "refused";
      if (!src.intact() || !dst.intact() || !wide.intact()) return "wrote beside an array";
      if (size_t(few) != dst.size() || size_t(many) != wide.size() || fixed != start) return "another length or phase";
      for (const T& v : dst.values()) every.push_back(v);
      for (const T& v : wide.values()) spread.push_back(v);
    }
    for (size_t i = 0, k = 0; i < x.size(); ++i)
      if (i % size_t(factor) == size_t(start) && (k >= every.size() || !sameBits(every[k++], x[i])))
        return "other samples kept";
    for (size_t i = 0; i < spread.size(); ++i)
      if (!sameBits(spread[i], i % size_t(factor) == size_t(start) ? x[i / size_t(factor)] : T{}))
        return "other samples spread";
    return "";
  });
}

// ---- medians ------------------------------------------------------------------------------------------------------

template <class T, class Apart, class InPlace>
std::string median(Input& in, const char* type, Apart apart, InPlace inPlace) {
  const int len = in.between(1, 300), mask = in.between(1, in.oneIn(3) ? 400 : 40);
  std::vector<T> x(static_cast<size_t>(len));
  fill(in, typeOf(type), in.oneIn(2) ? Flavour::kSmall : Flavour::kUniform, x.data(), x.size());
  const std::vector<T> want = medians(x, mask);
  return everySlot([&](int) -> std::string {
    const bool same = in.random() % 2;
    Guarded<T> src = placed(in, x), dst = placed(in, x);
    const VekStatus status = same ? inPlace(src, len, mask) : apart(src, dst, len, mask);
    if (status != (mask % 2 ? vekStsNoErr : vekStsEvenMedianMaskSize)) return "status " + std::to_string(status);
    if (!src.intact() || !dst.intact()) return "wrote beside an array";
    const std::vector<T> y = (same ? src : dst).values();
    for (size_t i = 0; i < y.size(); ++i)
      if (y[i] != want[i])
        return "median of " + std::to_string(mask) + " at " + std::to_string(i) + " of " + std::to_string(len);
    return "";
  });
}

}  // namespace

std::string fuzzStream(size_t stream, Input& in) {
  using Kind = std::string (*)(Input&, bool);
  static const Kind filters[] = {fir<Kind32f>, fir<Kind32fc>, fir<Kind64f>, fir<Kind64fc>};
  static const Kind recursive[] = {iir<Iir32f>, iir<Iir32fc>, iir<Iir64f>, iir<Iir64fc>};
  if (stream < 8) return filters[stream % 4](in, stream >= 4);
  if (stream < 12) return recursive[stream % 4](in, false);
  if (stream < 14) return recursive[stream % 4](in, true);
  if (stream == 15)
    return in.oneIn(2) ? resampled<Vek32f>(in, veksSampleUp_32f, veksSampleDown_32f)
                       : resampled<Vek32fc>(in, veksSampleUp_32fc, veksSampleDown_32fc);
  if (stream == 16) {
    const uint32_t type = in.below(4);
    if (type == 0) return median<Vek8u>(in, "Vek8u", veksFilterMedian_8u, veksFilterMedian_8u_I);
    if (type == 1) return median<Vek16s>(in, "Vek16s", veksFilterMedian_16s, veksFilterMedian_16s_I);
    if (type == 2) return median<Vek32s>(in, "Vek32s", veksFilterMedian_32s, veksFilterMedian_32s_I);
    return median<Vek32f>(in, "Vek32f", veksFilterMedian_32f, veksFilterMedian_32f_I);
  }
  if (in.oneIn(2))
    return dct<VeksDCTFwdSpec_32f>(in, false, veksDCTFwdInitAlloc_32f, veksDCTFwdInit_32f, veksDCTFwd_32f,
                                   veksDCTFwd_32f_I, veksDCTFwdFree_32f);
  return dct<VeksDCTInvSpec_32f>(in, true, veksDCTInvInitAlloc_32f, veksDCTInvInit_32f, veksDCTInv_32f,
                                 veksDCTInv_32f_I, veksDCTInvFree_32f);
}

}  // namespace vektest
