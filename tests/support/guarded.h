// SPDX-License-Identifier: Apache-2.0
// Arrays that end flush against an inaccessible page, or begin right behind one: a read or write one byte outside
// them stops the test program at the fault.
#ifndef VEK_TESTS_GUARDED_H
#define VEK_TESTS_GUARDED_H

#include <stdint.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>
#include <vector>

namespace vektest {

enum class Flush { kBack, kFront };

// n elements of T; with Flush::kBack the last byte is the last before a guard page, moved forward by `shift` bytes'
// worth of room behind it (so that every alignment can be had); with Flush::kFront the first byte follows a guard page
// directly, or lies `shift` bytes behind it.
template <class T>
class Guarded {
 public:
  explicit Guarded(size_t n, Flush flush = Flush::kBack, size_t shift = 0) : n_(n) {
    const size_t page = size_t(sysconf(_SC_PAGESIZE));
    const size_t bytes = n * sizeof(T);
    const size_t room = (bytes + shift + page - 1) / page * page + page;
    size_ = room + 2 * page;
    base_ = static_cast<char*>(mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    if (base_ == MAP_FAILED) throw std::runtime_error("mmap");
    mprotect(base_, page, PROT_NONE);
    mprotect(base_ + size_ - page, page, PROT_NONE);
    inner_ = base_ + page;
    innerSize_ = room;
    memset(inner_, kCanary, room);
    data_ = flush == Flush::kBack ? base_ + size_ - page - bytes - shift : inner_ + shift;
  }
  Guarded(const std::vector<T>& values, Flush flush = Flush::kBack, size_t shift = 0)
      : Guarded(values.size(), flush, shift) {
    if (!values.empty()) memcpy(data_, values.data(), values.size() * sizeof(T));
  }
  Guarded(const Guarded&) = delete;
  Guarded& operator=(const Guarded&) = delete;
  ~Guarded() { munmap(base_, size_); }

  // May be misaligned for T when a shift was asked for: read it through values() or at().
  T* data() { return reinterpret_cast<T*>(data_); }
  operator T*() { return data(); }
  size_t size() const { return n_; }
  T at(size_t i) const {
    T x;
    memcpy(&x, data_ + i * sizeof(T), sizeof(T));
    return x;
  }
  std::vector<T> values() const {
    std::vector<T> v(n_);
    if (n_ != 0) memcpy(v.data(), data_, n_ * sizeof(T));
    return v;
  }
  void assign(const std::vector<T>& v) {
    if (!v.empty()) memcpy(data_, v.data(), v.size() * sizeof(T));
  }

  // True while no byte around the array (inside its pages) has changed.
  bool intact() const {
    const char* end = data_ + n_ * sizeof(T);
    for (const char* p = inner_; p < data_; ++p)
      if (*p != char(kCanary)) return false;
    for (const char* p = end; p < inner_ + innerSize_; ++p)
      if (*p != char(kCanary)) return false;
    return true;
  }
  // True while the array itself still holds nothing but canary bytes: a refused call must leave it so.
  bool untouched() const {
    for (size_t i = 0; i < n_ * sizeof(T); ++i)
      if (data_[i] != char(kCanary)) return false;
    return true;
  }

  static constexpr unsigned char kCanary = 0xA5;

 private:
  size_t n_, size_, innerSize_;
  char *base_, *inner_, *data_;
};

}  // namespace vektest

#endif
