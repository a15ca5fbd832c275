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
  explicit Error(VekStatus status) : std::runtime_error(vekGetStatusString(status)), status_(status) {}
  VekStatus status() const noexcept { return status_; }

 private:
  VekStatus status_;
};

/** The outcome of a call. A warning counts as success: the work was done. */
class [[nodiscard]] Result {
 public:
  constexpr Result(VekStatus status) noexcept : status_(status) {}
  constexpr explicit operator bool() const noexcept { return status_ >= vekStsNoErr; }
  constexpr bool warns() const noexcept { return status_ > vekStsNoErr; }
  constexpr VekStatus status() const noexcept { return status_; }
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
