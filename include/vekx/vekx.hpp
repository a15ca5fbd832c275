// SPDX-License-Identifier: Apache-2.0
// vekx for C++20, header only: overloads on spans (vekx/spans.hpp) and transforms that release themselves. Every call
// is the C call and nothing else; std::complex is taken without a copy wherever Vek32fc and Vek64fc are.
#ifndef VEKX_VEKX_HPP
#define VEKX_VEKX_HPP

#include <type_traits>
#include <vector>

#include "vek/complex.hpp"
#include "vek/handle.hpp"
#include "vek/lengths.hpp"
#include "vek/result.hpp"
#include "vekx.h"
#include "vekx/spans.hpp"

namespace vek {

/** Where the elements of many arrays lie: element e of array t at t * distance + e * stride. */
struct Layout {
  Vek64s stride;   /**< elements from one of an array to its next */
  Vek64s distance; /**< elements from the first of an array to the first of the next array */
};

namespace detail {

template <class T>
struct FftKind;
template <class T>
struct TrigKind;

#define VEKX_KIND(SAMPLE, BIN, KIND, FORWARD, INVERSE)           \
  template <>                                                    \
  struct FftKind<SAMPLE> {                                       \
    using Bin = BIN;                                             \
    using Spec = Handle<VekxFFTSpec##KIND, vekxFFTFree##KIND>;   \
    static constexpr auto sizes = vekxFFTGetSize##KIND;          \
    static constexpr auto make = vekxFFTInitAlloc##KIND;         \
    static constexpr auto forward = vekxFFTFwd##FORWARD;         \
    static constexpr auto inverse = vekxFFTInv##INVERSE;         \
    static constexpr auto forwardMany = vekxFFTFwdMany##FORWARD; \
    static constexpr auto inverseMany = vekxFFTInvMany##INVERSE; \
  };
VEKX_KIND(Vek32f, Vek32fc, _32f, _32f32fc, _32fc32f)
VEKX_KIND(Vek64f, Vek64fc, _64f, _64f64fc, _64fc64f)
VEKX_KIND(Vek32fc, Vek32fc, _32fc, _32fc, _32fc)
VEKX_KIND(Vek64fc, Vek64fc, _64fc, _64fc, _64fc)
#undef VEKX_KIND

#define VEKX_KIND(SAMPLE, KIND)                                  \
  template <>                                                    \
  struct TrigKind<SAMPLE> {                                      \
    using Bin = SAMPLE;                                          \
    using Spec = Handle<VekxTrigSpec##KIND, vekxTrigFree##KIND>; \
    static constexpr auto sizes = vekxTrigGetSize##KIND;         \
    static constexpr auto make = vekxTrigInitAlloc##KIND;        \
    static constexpr auto forward = vekxTrigFwd##KIND;           \
    static constexpr auto inverse = vekxTrigInv##KIND;           \
    static constexpr auto forwardMany = vekxTrigFwdMany##KIND;   \
    static constexpr auto inverseMany = vekxTrigInvMany##KIND;   \
  };
VEKX_KIND(Vek32f, _32f)
VEKX_KIND(Vek64f, _64f)
#undef VEKX_KIND

// Whether an array of `size` elements holds what a layout speaks of; strides that are none the library refuses.
constexpr bool holds(size_t size, size_t elements, Vek64s count, Layout l) {
  if (count < 1 || l.stride < 1 || l.distance < 1) return true;
  const size_t stride = size_t(l.stride), distance = size_t(l.distance), arrays = size_t(count);
  if (size == 0 || (elements - 1) > (size - 1) / stride) return false;
  return arrays - 1 <= (size - 1 - (elements - 1) * stride) / distance;
}

// What Fourier transforms and the others share: a spec, and a work buffer for calls that bring none.
template <class Kind, class Sample>
class Transform {
 public:
  using Bin = typename Kind::Bin; /**< an element of the spectrum */

  /** The number of points. */
  size_t points() const noexcept { return points_; }
  /** The number of elements in a spectrum. */
  size_t bins() const noexcept { return bins_; }
  /** Bytes of a caller's work buffer, for one transform and for many. */
  size_t workSize() const noexcept { return size_t(workSize_); }
  size_t manyWorkSize() const noexcept { return size_t(manyWorkSize_); }

  /** points() samples to bins() bins, which may be the same array where their types are the same. */
  Result forward(Span<const Sample> src, Span<Bin> dst) { return forward(src, dst, held(workSize_)); }
  /** bins() bins to points() samples. */
  Result inverse(Span<const Bin> src, Span<Sample> dst) { return inverse(src, dst, held(workSize_)); }
  /** The same with a work buffer of the caller's: any number of threads may do this with one object. */
  Result forward(Span<const Sample> src, Span<Bin> dst, std::span<Vek8u> work) const {
    if (src.size() != points_ || dst.size() != bins_ || work.size() < workSize()) return vekStsSizeErr;
    return Kind::forward(src.data(), dst.data(), spec_.get(), work.data());
  }
  Result inverse(Span<const Bin> src, Span<Sample> dst, std::span<Vek8u> work) const {
    if (src.size() != bins_ || dst.size() != points_ || work.size() < workSize()) return vekStsSizeErr;
    return Kind::inverse(src.data(), dst.data(), spec_.get(), work.data());
  }

  /** Many transforms at once; the spans reach at least from the first to the last element spoken of. */
  Result forwardMany(Span<const Sample> src, Span<Bin> dst, Vek64s count, Layout from, Layout to) {
    if (!holds(src.size(), points_, count, from) || !holds(dst.size(), bins_, count, to)) return vekStsSizeErr;
    return Kind::forwardMany(src.data(), dst.data(), count, from.stride, from.distance, to.stride, to.distance,
                             spec_.get(), held(manyWorkSize_).data());
  }
  Result inverseMany(Span<const Bin> src, Span<Sample> dst, Vek64s count, Layout from, Layout to) {
    if (!holds(src.size(), bins_, count, from) || !holds(dst.size(), points_, count, to)) return vekStsSizeErr;
    return Kind::inverseMany(src.data(), dst.data(), count, from.stride, from.distance, to.stride, to.distance,
                             spec_.get(), held(manyWorkSize_).data());
  }
  /** Arrays one behind the other. */
  Result forwardMany(Span<const Sample> src, Span<Bin> dst, Vek64s count) {
    return forwardMany(src, dst, count, {1, Vek64s(points_)}, {1, Vek64s(bins_)});
  }
  Result inverseMany(Span<const Bin> src, Span<Sample> dst, Vek64s count) {
    return inverseMany(src, dst, count, {1, Vek64s(bins_)}, {1, Vek64s(points_)});
  }

  /** The spec itself, for the C functions. */
  auto* get() const noexcept { return spec_.get(); }

 protected:
  // A size of 0 still gives an address, so that no call allocates.
  std::span<Vek8u> held(Vek64s size) {
    if (work_.size() < size_t(size) + 1) work_.resize(size_t(size) + 1);
    return work_;
  }
  typename Kind::Spec spec_;
  size_t points_ = 0, bins_ = 0;
  Vek64s workSize_ = 0, manyWorkSize_ = 0;

 private:
  std::vector<Vek8u> work_;
};

}  // namespace detail

/**
 * The Fourier transform of one length, both ways. T is float, double or one of their complex types; real samples have
 * points/2 + 1 bins. The constructor throws Error where the C initialiser refuses.
 */
template <class T>
class Fft : public detail::Transform<detail::FftKind<detail::Own<T>>, detail::Own<T>> {
  using Kind = detail::FftKind<detail::Own<T>>;

 public:
  /** A spec for that many points, divided by them on the way that `scale` names. */
  explicit Fft(int points, VekxScale scale = vekxScaleInverse) {
    Vek64s specSize;
    Result(Kind::sizes(points, &specSize, &this->workSize_, &this->manyWorkSize_)).orThrow();
    this->spec_.reset([&](auto** spec) { return Kind::make(spec, points, scale); }).orThrow();
    this->points_ = size_t(points);
    this->bins_ = std::is_floating_point_v<T> ? this->points_ / 2 + 1 : this->points_;
    this->held(this->workSize_);
  }
};

/** A cosine or sine transform of one length and its inverse; T is float or double. */
template <class T>
class Trig : public detail::Transform<detail::TrigKind<T>, T> {
  using Kind = detail::TrigKind<T>;

 public:
  /** A spec for that many points of a transform of this type. */
  Trig(int points, VekxTrigType type, VekxTrigNorm norm = vekxTrigOrtho) {
    Vek64s specSize;
    Result(Kind::sizes(points, type, &specSize, &this->workSize_, &this->manyWorkSize_)).orThrow();
    this->spec_.reset([&](auto** spec) { return Kind::make(spec, points, type, norm); }).orThrow();
    this->points_ = this->bins_ = size_t(points);
    this->held(this->workSize_);
  }
};

/** The smallest length from `len` on whose transform is made of small passes alone. */
inline int fastLength(int len) {
  int found = 0;
  Result(vekxFFTGetFastLen(len, &found)).orThrow();
  return found;
}

}  // namespace vek

#endif
