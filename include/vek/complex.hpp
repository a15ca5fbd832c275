// SPDX-License-Identifier: Apache-2.0
// Spans of complex elements that arrays of std::complex are taken for as well, without a copy: both are two parts
// behind each other.
#ifndef VEK_COMPLEX_HPP
#define VEK_COMPLEX_HPP

#include <complex>
#include <span>
#include <type_traits>

#include "vek/types.h"

namespace vek {

namespace detail {

template <class T>
struct Complex {
  using Own = T;
};
template <>
struct Complex<Vek32fc> {
  using Own = Vek32fc;
  using Standard = std::complex<float>;
};
template <>
struct Complex<Vek64fc> {
  using Own = Vek64fc;
  using Standard = std::complex<double>;
};
template <>
struct Complex<std::complex<float>> : Complex<Vek32fc> {};
template <>
struct Complex<std::complex<double>> : Complex<Vek64fc> {};

// The library's type of the elements.
template <class T>
using Own = typename Complex<T>::Own;
template <class T>
struct StandardOf {
  using type = typename Complex<T>::Standard;
};
template <class T>
struct StandardOf<const T> {
  using type = const typename Complex<T>::Standard;
};
template <class T>
using Standard = typename StandardOf<T>::type;

}  // namespace detail

/** A span of Vek32fc or Vek64fc that is made from everything such a std::span is, and from std::complex alike. */
template <class T>
class ComplexSpan : public std::span<T> {
 public:
  using std::span<T>::span;
  /** A span as it is. */
  constexpr ComplexSpan(std::span<T> s) noexcept : std::span<T>(s) {}
  /** Elements of std::complex. */
  template <class Range>
  requires(!std::is_convertible_v<Range&&, std::span<T>> &&
           std::is_convertible_v<Range&&, std::span<detail::Standard<T>>>) ComplexSpan(Range&& range)
      : ComplexSpan(std::span<detail::Standard<T>>(range)) {}

 private:
  explicit ComplexSpan(std::span<detail::Standard<T>> s) : std::span<T>(reinterpret_cast<T*>(s.data()), s.size()) {}
};

namespace detail {

template <class T>
struct SpanFor {
  using type = std::span<T>;
};
template <class T>
requires requires { typename Complex<std::remove_const_t<T>>::Standard; }
struct SpanFor<T> {
  using type = ComplexSpan<T>;
};

}  // namespace detail

/** What an array of T is taken by: std::span, or for complex elements ComplexSpan. */
template <class T>
using Span = typename detail::SpanFor<T>::type;

}  // namespace vek

#endif
