// SPDX-License-Identifier: Apache-2.0
// vek for C++20, header only: overloads on std::span (vek/spans.hpp), statuses as results or exceptions
// (vek/result.hpp), and filter and transform states that release themselves. Every call is the C call and nothing else.
#ifndef VEK_VEK_HPP
#define VEK_VEK_HPP

#include <span>
#include <type_traits>

#include "vek.h"
#include "vek/complex.hpp"
#include "vek/handle.hpp"
#include "vek/result.hpp"
#include "vek/spans.hpp"

namespace vek {

namespace detail {

template <class Tap, class Sample>
struct FirKind;
template <class Tap, class Sample>
struct IirKind;

#define VEK_FIR_KIND(TAP, SAMPLE, SUFFIX)                             \
  template <>                                                         \
  struct FirKind<TAP, SAMPLE> {                                       \
    using State = Handle<VeksFIRState##SUFFIX, veksFIRFree##SUFFIX>;  \
    static constexpr auto make = veksFIRInitAlloc##SUFFIX;            \
    static constexpr auto makeMultiRate = veksFIRMRInitAlloc##SUFFIX; \
    static constexpr auto run = veksFIR##SUFFIX;                      \
    static constexpr auto runInPlace = veksFIR##SUFFIX##_I;           \
    static constexpr auto one = veksFIROne##SUFFIX;                   \
  };
VEK_FIR_KIND(Vek32f, Vek32f, _32f)
VEK_FIR_KIND(Vek32fc, Vek32fc, _32fc)
VEK_FIR_KIND(Vek64f, Vek32f, 64f_32f)
VEK_FIR_KIND(Vek64fc, Vek32fc, 64fc_32fc)
#undef VEK_FIR_KIND

#define VEK_IIR_KIND(TAP, SAMPLE, SUFFIX)                            \
  template <>                                                        \
  struct IirKind<TAP, SAMPLE> {                                      \
    using State = Handle<VeksIIRState##SUFFIX, veksIIRFree##SUFFIX>; \
    static constexpr auto make = veksIIRInitAlloc##SUFFIX;           \
    static constexpr auto run = veksIIR##SUFFIX;                     \
    static constexpr auto runInPlace = veksIIR##SUFFIX##_I;          \
    static constexpr auto one = veksIIROne##SUFFIX;                  \
  };
VEK_IIR_KIND(Vek32f, Vek32f, _32f)
VEK_IIR_KIND(Vek32fc, Vek32fc, _32fc)
VEK_IIR_KIND(Vek64f, Vek32f, 64f_32f)
VEK_IIR_KIND(Vek64fc, Vek32fc, 64fc_32fc)
#undef VEK_IIR_KIND

// An initialiser's delay line: absent, or of just the length that it reads.
template <class T>
bool delayFits(std::span<const T> delay, size_t len) {
  return delay.empty() || delay.size() == len;
}
template <class T>
const T* delayOrNull(std::span<const T> delay) {
  return delay.empty() ? nullptr : delay.data();
}

// What both filters do with samples.
template <class Kind, class Sample>
class Filter {
 public:
  /** Filters a piece of the stream; the next call goes on where this one ended. */
  Result operator()(Span<const Sample> src, Span<Sample> dst) {
    return Kind::run(src.data(), dst.data(), len(src, dst), state_.get());
  }
  Result operator()(Span<Sample> srcDst) { return Kind::runInPlace(srcDst.data(), len(srcDst), state_.get()); }
  /** One sample. */
  Sample operator()(Sample src) {
    Sample dst{};
    Result(Kind::one(src, &dst, state_.get())).orThrow();
    return dst;
  }
  /** The state itself, for the C functions. */
  auto* get() const noexcept { return state_.get(); }

 protected:
  typename Kind::State state_;
};

}  // namespace detail

/** A streaming FIR filter. The constructor throws Error where the C initialiser refuses. */
template <class Tap, class Sample>
class Fir : public detail::Filter<detail::FirKind<Tap, Sample>, Sample> {
  using Kind = detail::FirKind<Tap, Sample>;

 public:
  /** delay, if given, holds taps.size() past samples, newest first. */
  explicit Fir(Span<const Tap> taps, Span<const Sample> delay = {}) {
    this->state_
        .reset([&](auto** state) -> VekStatus {
          if (!detail::delayFits(delay, taps.size())) return vekStsSizeErr;
          return Kind::make(state, taps.data(), detail::len(taps), detail::delayOrNull(delay));
        })
        .orThrow();
  }
};

/** A polyphase filter that turns downFactor samples into upFactor. */
template <class Tap, class Sample>
class MultiRateFir {
  using Kind = detail::FirKind<Tap, Sample>;

 public:
  /** delay, if given, holds ceil(taps.size() / upFactor) past samples, newest first. */
  MultiRateFir(Span<const Tap> taps, int upFactor, int downFactor, int upPhase = 0, int downPhase = 0,
               Span<const Sample> delay = {})
      : up_(upFactor), down_(downFactor) {
    state_
        .reset([&](auto** state) -> VekStatus {
          const size_t up = upFactor < 1 ? 1 : size_t(upFactor);
          if (!detail::delayFits(delay, (taps.size() + up - 1) / up)) return vekStsSizeErr;
          return Kind::makeMultiRate(state, taps.data(), detail::len(taps), upFactor, upPhase, downFactor, downPhase,
                                     detail::delayOrNull(delay));
        })
        .orThrow();
  }
  /** src holds a multiple of downFactor samples, dst upFactor for every downFactor of them. */
  Result operator()(Span<const Sample> src, Span<Sample> dst) {
    const size_t n = src.size() / size_t(down_);
    if (n > INT_MAX || src.size() % size_t(down_) != 0 || dst.size() != n * size_t(up_)) return vekStsSizeErr;
    return Kind::run(src.data(), dst.data(), int(n), state_.get());
  }
  /** The state itself, for the C functions. */
  auto* get() const noexcept { return state_.get(); }

 private:
  int up_, down_;
  typename Kind::State state_;
};

/** A streaming IIR filter of order N from its polynomials: b0 .. bN, then a0 .. aN. */
template <class Tap, class Sample>
class Iir : public detail::Filter<detail::IirKind<Tap, Sample>, Sample> {
  using Kind = detail::IirKind<Tap, Sample>;

 public:
  /** delay, if given, holds d0 .. d(N-1). */
  explicit Iir(Span<const Tap> taps, Span<const Tap> delay = {}) {
    this->state_
        .reset([&](auto** state) -> VekStatus {
          if (taps.size() % 2 != 0) return vekStsIIROrderErr;
          if (!detail::delayFits(delay, taps.size() / 2 - 1)) return vekStsSizeErr;
          return Kind::make(state, taps.data(), detail::len(taps) / 2 - 1, detail::delayOrNull(delay));
        })
        .orThrow();
  }
};

/** A cascade of second-order sections, six taps each: b0 b1 b2 a0 a1 a2. */
template <class Sample>
class Biquads : public detail::Filter<detail::IirKind<Sample, Sample>, Sample> {
 public:
  /** delay, if given, holds d0 and d1 of every section. */
  explicit Biquads(Span<const Sample> sections, Span<const Sample> delay = {}) {
    this->state_
        .reset([&](auto** state) -> VekStatus {
          if (sections.size() % 6 != 0) return vekStsIIROrderErr;
          if (!detail::delayFits(delay, sections.size() / 3)) return vekStsSizeErr;
          const Sample* line = detail::delayOrNull(delay);
          const int n = detail::len(sections) / 6;
          if constexpr (std::is_same_v<Sample, Vek32f>) {
            return veksIIRInitAlloc_BiQuad_32f(state, sections.data(), n, line);
          } else {
            return veksIIRInitAlloc_BiQuad_32fc(state, sections.data(), n, line);
          }
        })
        .orThrow();
  }
};

/**
 * The orthonormal cosine transform of one length, both ways. Threads may share one. Lengths that need working memory
 * take it for the duration of the call; the C functions accept it from the caller.
 */
class Dct {
 public:
  /** The transforms of so many points. Throws Error where the C initialisers refuse. */
  explicit Dct(int points) : points_(size_t(points)) {
    forward_.reset([&](auto** s) { return veksDCTFwdInitAlloc_32f(s, points, vekAlgHintNone); }).orThrow();
    inverse_.reset([&](auto** s) { return veksDCTInvInitAlloc_32f(s, points, vekAlgHintNone); }).orThrow();
  }
  /** From samples to coefficients, points of each; in place if the two are the same. */
  Result forward(std::span<const Vek32f> src, std::span<Vek32f> dst) const {
    if (src.size() != points_ || dst.size() != points_) return vekStsSizeErr;
    return veksDCTFwd_32f(src.data(), dst.data(), forward_.get(), nullptr);
  }
  /** From coefficients to samples. */
  Result inverse(std::span<const Vek32f> src, std::span<Vek32f> dst) const {
    if (src.size() != points_ || dst.size() != points_) return vekStsSizeErr;
    return veksDCTInv_32f(src.data(), dst.data(), inverse_.get(), nullptr);
  }

 private:
  size_t points_;
  detail::Handle<VeksDCTFwdSpec_32f, veksDCTFwdFree_32f> forward_;
  detail::Handle<VeksDCTInvSpec_32f, veksDCTInvFree_32f> inverse_;
};

}  // namespace vek

#endif
