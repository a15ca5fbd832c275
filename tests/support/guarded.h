// SPDX-License-Identifier: Apache-2.0
// Arrays that end flush against an inaccessible page, or begin right behind one: a read or write one byte outside
// them stops the test program at the fault.
#ifndef VEK_TESTS_GUARDED_H
#define VEK_TESTS_GUARDED_H

#include <stdint.h>
#include <string.h>
#include <sys/mman.h>
#include <unistd.h>

#include <map>
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
    const size_t page = size_t(sysconf(_SC_PAGESIZE)), bytes = n * sizeof(T);
    innerSize_ = (bytes + shift + page - 1) / page * page + page;
    std::vector<char*>& idle = idlePages(innerSize_);
    if (idle.empty()) {
      char* const base = static_cast<char*>(
          mmap(nullptr, innerSize_ + 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
      if (base == MAP_FAILED) throw std::runtime_error("mmap");
      mprotect(base, page, PROT_NONE);
      mprotect(base + page + innerSize_, page, PROT_NONE);
      idle.push_back(base + page);
    }
    inner_ = idle.back();
    idle.pop_back();
    memset(inner_, kCanary, innerSize_);
    data_ = flush == Flush::kBack ? inner_ + innerSize_ - bytes - shift : inner_ + shift;
  }
  Guarded(const std::vector<T>& values, Flush flush = Flush::kBack, size_t shift = 0)
      : Guarded(values.size(), flush, shift) {
    assign(values);
  }
  Guarded(Guarded&& other)
      : n_(other.n_), innerSize_(other.innerSize_), inner_(std::exchange(other.inner_, nullptr)), data_(other.data_) {}
  Guarded& operator=(const Guarded&) = delete;
  ~Guarded() {
    if (!inner_) return;
    const size_t page = size_t(sysconf(_SC_PAGESIZE));
    if (innerSize_ > 256 * page) {
      munmap(inner_ - page, innerSize_ + 2 * page);
    } else {
      idlePages(innerSize_).push_back(inner_);
    }
  }

  // May be misaligned for T when a shift was asked for: read it through values() or at().
  T* data() { return reinterpret_cast<T*>(data_); }
  operator T*() { return data(); }
  size_t size() const { return n_; }
  T at(size_t i) const {
    T x;
    memcpy(&x, data_ + i * sizeof(T), sizeof(T));
    return x;
  }
  // The bytes of the array as elements of another type, or of its own.
  template <class As = T>
  std::vector<As> values() const {
    std::vector<As> v(n_ * sizeof(T) / sizeof(As));
    if (!v.empty()) memcpy(static_cast<void*>(v.data()), data_, v.size() * sizeof(As));
    return v;
  }
  void assign(const std::vector<T>& v) {
    if (!v.empty()) memcpy(data_, v.data(), v.size() * sizeof(T));
  }

  // True while no byte around the array (inside its pages) has changed.
  bool intact() const {
    const char* const end = data_ + n_ * sizeof(T);
    return isCanary(inner_, size_t(data_ - inner_)) && isCanary(end, size_t(inner_ + innerSize_ - end));
  }
  // True while the array itself still holds nothing but canary bytes: a refused call must leave it so.
  bool untouched() const { return isCanary(data_, n_ * sizeof(T)); }

  static constexpr unsigned char kCanary = 0xA5;

 private:
  // Mapped pages that no array lives in, by their size: mapping takes longer than most calls.
  static std::vector<char*>& idlePages(size_t size) {
    static std::map<size_t, std::vector<char*>> idle;
    return idle[size];
  }
  static bool isCanary(const char* p, size_t n) {
    return n == 0 || (*p == char(kCanary) && memcmp(p, p + 1, n - 1) == 0);
  }

  size_t n_, innerSize_;
  char *inner_, *data_;
};

}  // namespace vektest

#endif
