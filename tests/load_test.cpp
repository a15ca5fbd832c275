// SPDX-License-Identifier: Apache-2.0
// The shared library as a program meets it: loaded and unloaded over and over, called from a forked child, and from
// eight threads that share one spec and the caches filled on first use.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cmath>
#include <thread>
#include <vector>

#include "vek.h"

namespace vektest {
namespace {

int openHandles() {
  int n = 0;
  for (int fd = 0; fd < 256; ++fd) n += dup2(fd, fd) == fd;
  return n;
}

TEST(Load, OpensAndClosesManyTimes) {
  const int handles = openHandles();
  for (int i = 0; i < 200; ++i) {
    void* library = dlopen(VEK_SHARED_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << dlerror();
    const auto add = reinterpret_cast<decltype(&veksAddC_32f_I)>(dlsym(library, "veksAddC_32f_I"));
    const auto version = reinterpret_cast<decltype(&veksGetLibVersion)>(dlsym(library, "veksGetLibVersion"));
    ASSERT_TRUE(add && version);
    Vek32f x[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
    ASSERT_EQ(add(1, x, 9), vekStsNoErr);
    ASSERT_EQ(x[8], 10);
    ASSERT_STREQ(version()->name, veksGetLibVersion()->name);  // chosen anew, and the same
    ASSERT_EQ(dlclose(library), 0);
    ASSERT_EQ(dlopen(VEK_SHARED_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr) << "something keeps it loaded";
  }
  EXPECT_EQ(openHandles(), handles);
}

constexpr int kLen = 600;

std::vector<Vek32f> ramp() {
  std::vector<Vek32f> x(kLen);
  for (int i = 0; i < kLen; ++i) x[size_t(i)] = float(i % 37) - 11;
  return x;
}

// One of everything that could be shared behind the caller's back: a spec, tables, answers kept.
std::vector<Vek32f> work(const VeksDCTFwdSpec_32f* spec) {
  std::vector<Vek32f> x = ramp(), out(4 * kLen);
  VekStatus s = veksDCTFwd_32f(x.data(), out.data(), spec, nullptr);
  s |= veksConv_32f(x.data(), kLen, x.data(), kLen, out.data() + kLen);
  s |= veksWinKaiser_32f(x.data(), out.data() + 3 * kLen, kLen, 0.02f);
  s |= veksFilterMedian_32f_I(out.data() + 3 * kLen, kLen, 31);
  Vek64u mask = 0;
  int cache = 0;
  vekGetCpuFeatures(&mask, nullptr);
  vekGetMaxCacheSizeB(&cache);
  out.push_back(float(cache));
  out.push_back(float(s));
  return out;
}

struct Spec {
  VeksDCTFwdSpec_32f* p = nullptr;
  Spec() { EXPECT_EQ(veksDCTFwdInitAlloc_32f(&p, kLen, vekAlgHintNone), vekStsNoErr); }
  ~Spec() { veksDCTFwdFree_32f(p); }
};

TEST(Load, EightThreadsShareOneSpec) {
  for (int round = 0; round < 5; ++round) {
    Spec spec;
    std::vector<std::vector<Vek32f>> results(8);
    std::vector<std::thread> threads;
    for (auto& r : results)
      threads.emplace_back([&] {
        for (int i = 0; i < 20; ++i) r = work(spec.p);
      });
    for (auto& t : threads) t.join();
    const std::vector<Vek32f> alone = work(spec.p);
    EXPECT_EQ(alone.back(), 0);
    for (const auto& r : results) EXPECT_EQ(r, alone);
  }
}

TEST(Load, WorksInAForkedChild) {
  Spec spec;
  const std::vector<Vek32f> here = work(spec.p);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) _exit(work(spec.p) == here ? 0 : 1);
  int status = -1;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
}

}  // namespace
}  // namespace vektest
