// SPDX-License-Identifier: Apache-2.0
// Every function and every kind of stream with random arguments in every slot; the same inputs in every run. What a
// failure prints reproduces it: VEK_FUZZ_INPUT=<its digits> runs that input alone, VEK_FUZZ_ROUNDS=<n> runs n inputs
// for each target. The libFuzzer program of the option VEK_FUZZ runs the same code for as long as one likes.
#include <signal.h>
#include <unistd.h>

#include "tests/fuzz/input.h"

namespace vektest {
namespace {

char digits[8192];

// A fault outside of an array ends the program; this says in which input.
void sayInput(int) {
  const char text[] = "\nVEK_FUZZ_INPUT=";
  if (write(2, text, sizeof text - 1) + write(2, digits, strlen(digits)) + write(2, "\n", 1) < 0) _exit(2);
}

std::string run(const std::vector<uint8_t>& input) {
  size_t n = 0;
  for (uint8_t b : input)
    for (int shift : {4, 0}) digits[n++] = "0123456789abcdef"[b >> shift & 15];
  digits[n] = 0;
  return fuzz(input.data(), input.size());
}

TEST(Fuzz, RandomCallsAgree) {
  struct sigaction action {};
  action.sa_handler = sayInput;
  action.sa_flags = int(SA_RESETHAND);  // once more, and it kills
  for (int signal : {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT}) sigaction(signal, &action, nullptr);
  if (const char* given = getenv("VEK_FUZZ_INPUT")) {
    std::vector<uint8_t> input;
    for (; given[0] && given[1] && input.size() < sizeof digits / 2 - 1; given += 2)
      input.push_back(uint8_t(std::stoi(std::string(given, 2), nullptr, 16)));
    EXPECT_EQ(run(input), "");
    return;
  }
  const char* wanted = getenv("VEK_FUZZ_ROUNDS");
  const int rounds = wanted ? atoi(wanted) : 80;
  int failures = 0;
  std::mt19937_64 seeds(20240607);
  const auto next = [&](size_t target) {
    std::vector<uint8_t> input = {uint8_t(target >> 8), uint8_t(target)};
    for (uint64_t seed = seeds(); input.size() < 10; seed >>= 8) input.push_back(uint8_t(seed));
    const std::string problem = run(input);
    failures += !problem.empty();
    EXPECT_EQ(problem, "") << "VEK_FUZZ_INPUT=" << digits;
  };
  for (int round = 0; round < rounds && failures < 20; ++round) {
    for (size_t target = 0; target < fuzzTargets(); ++target) next(target);
    for (size_t again = 0; again < 3 * kStreams; ++again) next(again % kStreams);
  }
}

}  // namespace
}  // namespace vektest
