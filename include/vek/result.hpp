// SPDX-License-Identifier: Apache-2.0
// A status as a C++ value: tested, turned into an exception, or looked at.
#ifndef VEK_RESULT_HPP
#define VEK_RESULT_HPP

#include <stdexcept>

#include "vek/core.h"
#include "vek/status.h"

namespace vek {

/** What Result::orThrow throws: the text of the status, and the status itself. */
class Error : public std::runtime_error {
 public:
  /** An error with the text of the status. */
  explicit Error(VekStatus status) : std::runtime_error(vekGetStatusString(status)), status_(status) {}
  /** The status that the function returned. */
  VekStatus status() const noexcept { return status_; }

 private:
  VekStatus status_;
};

/** The outcome of a call. A warning counts as success: the work was done. */
class [[nodiscard]] Result {
 public:
  /** What a function of the C interface returned. */
  constexpr Result(VekStatus status) noexcept : status_(status) {}
  /** Whether the work was done. */
  constexpr explicit operator bool() const noexcept { return status_ >= vekStsNoErr; }
  /** Whether it was done with something worth knowing about it. */
  constexpr bool warns() const noexcept { return status_ > vekStsNoErr; }
  /** The status itself. */
  constexpr VekStatus status() const noexcept { return status_; }
  /** The text of the status. */
  const char* text() const noexcept { return vekGetStatusString(status_); }
  /** Throws Error for an error; returns the status of success or of a warning. */
  VekStatus orThrow() const {
    if (status_ < vekStsNoErr) throw Error(status_);
    return status_;
  }

 private:
  VekStatus status_;
};

}  // namespace vek

#endif
