// SPDX-License-Identifier: Apache-2.0
// What the C++ objects of both libraries hold their states by.
#ifndef VEK_HANDLE_HPP
#define VEK_HANDLE_HPP

#include <memory>

#include "vek/result.hpp"

namespace vek::detail {

// A state made by an InitAlloc function, released by its Free function.
template <class State, VekStatus (*Free)(State*)>
class Handle {
 public:
  Handle() = default;
  template <class Make>
  Result reset(Make make) {
    State* state = nullptr;
    const Result made = make(&state);
    if (made) state_.reset(state);
    return made;
  }
  State* get() const noexcept { return state_.get(); }

 private:
  struct Release {
    void operator()(State* s) const noexcept { Free(s); }
  };
  std::unique_ptr<State, Release> state_;
};

}  // namespace vek::detail

#endif
