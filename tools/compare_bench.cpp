// SPDX-License-Identifier: Apache-2.0
// Compares the speed of two builds of libvek.so, or of libvekx.so: every dispatched function at several lengths, the
// two libraries in one process and in turn, so that what else the machine does slows both. Names the rows that moved.
//
//   compare_bench OLD NEW [--filter REGEX] [--len 1,16,64] [--slot l9] [--limit 5] [--floor 0.5] [--budget 30] [--json]
//
// The limit is in per cent, the floor in nanoseconds a call, the budget in milliseconds a row.
//
// A row is one function at one length. A sample is some ten microseconds of calls, a round one sample of each library.
// The figure of a library is a low quantile of its samples, with the interval that order statistics give it whatever
// the distribution: 99.9 %. A row has moved if the ratio is beyond the limit, the interval beyond half of it, and the
// difference more than the floor, two cycles. It is then measured twice again, in further copies of the libraries and
// with states and arrays elsewhere, and named if each measurement shows half the limit and all samples together show
// the whole: where code and data happen to lie costs a short call more than a tenth. Of code that the linker put
// elsewhere that is true in every copy; so where a function and what it calls consist of the same instructions in both
// libraries, the row says so.
//
// The exit status is 1 if rows are slower whose code is another, and 2 where nothing could be compared.
#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <link.h>
#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <xmmintrin.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "core/slots.h"
#include "tests/support/generic.h"

// The arguments and states of tests/support/generic.h come from functions of this program that have the library's
// names: each jumps to where it is bound, so a state is made by the library that will use it.
#define VEK_BOUND(NAME)           \
  extern "C" {                    \
  void* vek_bound_##NAME;         \
  }                               \
  asm(".pushsection .text\n"      \
      ".globl " #NAME             \
      "\n"                        \
      ".hidden " #NAME "\n" #NAME \
      ":\n"                       \
      "jmp *vek_bound_" #NAME     \
      "(%rip)\n"                  \
      ".popsection\n");
#define VEK_FUNCTION(NAME, RESULT, PARAMETERS) VEK_BOUND(NAME) VEK_BOUND(NAME##_Idx)
#include "vek/functions.inc"
#include "vekx/functions.inc"
#undef VEK_FUNCTION

namespace {

using vektest::Argument;
using vektest::Row;

[[noreturn]] void fail(const std::string& why) {
  fprintf(stderr, "compare_bench: %s\n", why.c_str());
  exit(2);
}

struct Entry {
  const char* chapter;
  void** bound;
};

// In the order of vektest::allRows().
const std::vector<Entry>& entries() {
  static const std::vector<Entry> all = [] {
    std::vector<Entry> list;
    const char* chapter = "";
#define VEK_CHAPTER(NAME) chapter = #NAME;
#define VEK_FUNCTION(NAME, RESULT, PARAMETERS) list.push_back({chapter, &vek_bound_##NAME});
#include "vek/functions.inc"
#include "vekx/functions.inc"
#undef VEK_FUNCTION
#undef VEK_CHAPTER
    return list;
  }();
  return all;
}

// ---- the libraries --------------------------------------------------------------------------------------------------

class Library {
 public:
  // From a copy of the file, which the loader takes for a library of its own even where both are the same file.
  explicit Library(const char* path) {
    const int from = open(path, O_RDONLY), copy = memfd_create("libvek", 0);
    struct stat info;
    if (from < 0 || fstat(from, &info) != 0 || copy < 0) fail(std::string("cannot read ") + path);
    file_.resize(size_t(info.st_size));
    if (read(from, file_.data(), file_.size()) != info.st_size ||
        write(copy, file_.data(), file_.size()) != info.st_size)
      fail(std::string("cannot copy ") + path);
    const std::string name = "/proc/self/fd/" + std::to_string(copy);
    handle_ = dlopen(name.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) fail(dlerror());
    for (const Row& r : vektest::allRows()) addresses_.push_back(dlsym(handle_, r.name));
    readSymbols();
  }

  void* address(size_t row) const { return addresses_[row]; }

  // Binds the functions of this program to the library's.
  void use() const {
    for (size_t i = 0; i < addresses_.size(); ++i) *entries()[i].bound = addresses_[i];
  }

  void putInForce(int slot) const {
    if (!slotInForce_) fail("--slot needs libraries that are not stripped");
    if (slot > *slotInForce_) fail(std::string("the processor is not up to slot ") + vek::kSlots[slot].name);
    *slotInForce_ = slot;
  }

  // Whether a function of the slot in force is made of the same instructions in the other library.
  bool sameCode(size_t row, const Library& other) const {
    const std::string table = std::string("vek_table_") + vektest::allRows()[row].name;
    const auto a = tables_.find(table), b = other.tables_.find(table);
    if (a == tables_.end() || b == other.tables_.end()) return false;
    std::set<const uint8_t*> seen;
    return sameCode(a->second[*slotInForce_], other, b->second[*other.slotInForce_], seen);
  }

 private:
  // What is not exported, only the full symbol table tells of.
  void readSymbols() {
    const auto* const header = reinterpret_cast<const ElfW(Ehdr)*>(file_.data());
    const auto* const sections = reinterpret_cast<const ElfW(Shdr)*>(file_.data() + header->e_shoff);
    link_map* map = nullptr;
    dlinfo(handle_, RTLD_DI_LINKMAP, &map);
    for (size_t s = 0; s < header->e_shnum; ++s) {
      if (sections[s].sh_type != SHT_SYMTAB) continue;
      const char* const names = file_.data() + sections[sections[s].sh_link].sh_offset;
      const auto* const symbols = reinterpret_cast<const ElfW(Sym)*>(file_.data() + sections[s].sh_offset);
      for (size_t i = 0; i < sections[s].sh_size / sizeof *symbols; ++i) {
        const std::string name = names + symbols[i].st_name;
        const auto at = map->l_addr + symbols[i].st_value;
        if (name == "vek_variant_index") slotInForce_ = reinterpret_cast<int32_t*>(at);
        if (name.compare(0, 10, "vek_table_") == 0) tables_[name] = reinterpret_cast<const uint8_t* const*>(at);
        if (ELF64_ST_TYPE(symbols[i].st_info) == STT_FUNC)
          functions_[reinterpret_cast<const uint8_t*>(at)] = symbols[i].st_size;
      }
    }
  }

  // Equal but for displacements, which are four bytes, and with functions behind calls and jumps that are so, too.
  bool sameCode(const uint8_t* a, const Library& other, const uint8_t* b, std::set<const uint8_t*>& seen) const {
    const auto f = functions_.find(a), g = other.functions_.find(b);
    if (f == functions_.end() || g == other.functions_.end() || f->second != g->second) return false;
    if (!seen.insert(a).second) return true;
    for (size_t i = 0; i < f->second; ++i) {
      if (a[i] == b[i]) continue;
      i += 4;
      if (i < f->second && a[i] != b[i]) return false;
    }
    for (size_t i = 1; i + 4 <= f->second; ++i) {
      if (a[i - 1] != 0xE8 && a[i - 1] != 0xE9 && (a[i - 1] & 0xF0) != 0x80) continue;
      int32_t x, y;
      memcpy(&x, a + i, sizeof x), memcpy(&y, b + i, sizeof y);
      const uint8_t *const to = a + i + 4 + x, *const otherTo = b + i + 4 + y;
      if (to != a && functions_.count(to) && !sameCode(to, other, otherTo, seen)) return false;
    }
    return true;
  }

  std::vector<char> file_;
  void* handle_;
  std::vector<void*> addresses_;
  int32_t* slotInForce_ = nullptr;
  std::map<std::string, const uint8_t* const*> tables_;
  std::map<const uint8_t*, size_t> functions_;
};

// ---- one row --------------------------------------------------------------------------------------------------------

// The arguments where the calling convention has them.
struct Call {
  void* function;
  uint64_t integer[6] = {};
  double vector[8] = {};
  uint64_t stack[4] = {};
  bool vectors = false, stacked = false;
  // Sorting is timed on data that are not sorted yet: they are copied before every call, in both libraries alike.
  void* refreshed = nullptr;
  const void* fresh = nullptr;
  size_t freshBytes = 0;

  Call(void* f, const std::vector<Argument>& arguments) : function(f) {
    size_t integers = 0, reals = 0, words = 0;
    for (const Argument& a : arguments) {
      void* const at = a.vector       ? static_cast<void*>(&vector[reals++])
                       : integers < 6 ? &integer[integers++]
                                      : &stack[words++];
      memcpy(at, a.bytes, sizeof a.bytes);
    }
    vectors = reals > 0, stacked = words > 0;
  }

  VekStatus once() const { return repeat<true, true>(1); }
  void times(int count) const {
    if (stacked) {
      repeat<true, true>(count);
    } else if (vectors) {
      repeat<true, false>(count);
    } else {
      repeat<false, false>(count);
    }
  }

 private:
  template <bool Vectors, bool Stack>
  __attribute__((noinline)) VekStatus repeat(int count) const {
    using U = uint64_t;
    using D = double;
    const auto [a, b, c, d, e, f] = integer;
    const auto [r, s, t, u, v, w, x, y] = vector;
    U result = 0;
    for (int i = 0; i < count; ++i) {
      if (refreshed) memcpy(refreshed, fresh, freshBytes);
      if constexpr (Stack) {
        result = reinterpret_cast<U (*)(U, U, U, U, U, U, D, D, D, D, D, D, D, D, U, U, U, U)>(function)(
            a, b, c, d, e, f, r, s, t, u, v, w, x, y, stack[0], stack[1], stack[2], stack[3]);
      } else if constexpr (Vectors) {
        result = reinterpret_cast<U (*)(U, U, U, U, U, U, D, D, D, D, D, D, D, D)>(function)(a, b, c, d, e, f, r, s, t,
                                                                                             u, v, w, x, y);
      } else {
        result = reinterpret_cast<U (*)(U, U, U, U, U, U)>(function)(a, b, c, d, e, f);
      }
    }
    return VekStatus(result);
  }
};

// Of one row: nanoseconds a call, of the old and of the new library.
struct Samples {
  std::vector<double> ns[2];
};

struct Figure {
  double ns[2], ratio, low, high;

  explicit Figure(Samples samples) {
    double least[2], most[2];
    for (int k = 0; k < 2; ++k) {
      std::vector<double>& s = samples.ns[k];
      std::sort(s.begin(), s.end());
      const double n = double(s.size()), rank = n / 8, reach = 3.3 * sqrt(n * 7 / 64) + 1;
      ns[k] = s[size_t(rank)];
      least[k] = s[size_t(std::max(0.0, rank - reach))];
      most[k] = s[size_t(std::min(n - 1, rank + reach))];
    }
    ratio = ns[1] / ns[0], low = least[1] / most[0], high = most[1] / least[0];
  }
};

double seconds() { return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count(); }

// Adds samples to those of the row.
void sample(const Call (&calls)[2], void* data, size_t bytes, double budget, Samples& samples) {
  const std::vector<char> original(static_cast<char*>(data), static_cast<char*>(data) + bytes);
  const auto time = [&](int which, int count) {
    memcpy(data, original.data(), bytes);
    calls[which].times(1);
    const double start = seconds();
    calls[which].times(count);
    return (seconds() - start) / count;
  };
  int count = 1;
  double one = time(0, 1);
  while (one * count < 10e-6) {
    count *= 2;
    one = time(0, count);
  }
  time(1, count);
  const int rounds = int(std::clamp(budget / (2 * one * count), 16.0, 600.0));
  for (int i = 0; i < rounds; ++i)
    for (const int k : {i % 2, 1 - i % 2}) samples.ns[k].push_back(time(k, count) * 1e9);
}

constexpr int kRounds = 3;  // a row's first measurement and those that confirm it

// Arrays lie in one block, for both libraries in the same places.
class Memory {
 public:
  explicit Memory(size_t most) : most_(most) {
    const size_t size = 16 * (most + 8192);
    block_ = static_cast<char*>(mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    if (block_ == MAP_FAILED) fail("no memory");
    madvise(block_, size, MADV_HUGEPAGE);
    // Positive and finite whatever type reads them.
    uint32_t x = 1;
    for (size_t k = 0; k < most + 4096; ++k) {
      x = x * 1664525 + 1013904223;
      pool_.push_back(char(k % 4 == 3 ? 0x3F : (x >> 24) % 100));
    }
  }

  // Places never agree modulo 4096; `round` moves them all.
  void lay(vektest::Arena& arena, int round) {
    char* at = block_ + 192 * round;
    for (size_t i = 0; i < arena.regions.size(); ++i) {
      memcpy(at, &pool_[64 * i], std::min(arena.sizes[i], most_));
      arena.regions[i] = {at, [](void*) {}};
      at += (arena.sizes[i] + 4095) / 4096 * 4096 + 640;
    }
  }
  static void share(const vektest::Arena& from, vektest::Arena& to) {
    for (size_t i = 0; i < from.regions.size(); ++i) to.regions[i] = {from.regions[i].get(), [](void*) {}};
  }

 private:
  size_t most_;
  char* block_;
  std::vector<char> pool_;
};

bool has(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

bool dependsOnLength(const Row& r) {
  for (const vektest::Parameter& p : r.parameters)
    if (p.name == "len" || p.name == "numIters" || (has(p.name, "Len") && p.name != "tapsLen") || has(p.type, "Spec"))
      return true;
  return false;
}

class Comparison {
 public:
  // `libraries`: old and new ones in turn, a pair for each round.
  Comparison(const std::vector<Library>& libraries, Memory& memory) : libraries_(libraries), memory_(memory) {}

  // False where the function refuses the length.
  bool measure(size_t row, int length, int round, double budget, Samples& samples) {
    const Row& r = vektest::allRows()[row];
    const Library* const pair = &libraries_[2 * size_t(round)];
    vektest::timedLength = length;
    vektest::Arena first(r.parameters), second(r.parameters);
    memory_.lay(first, round);
    Memory::share(first, second);
    vektest::Arena* const arenas[2] = {&first, &second};
    std::vector<Argument> arguments[2];
    for (const int k : {round % 2, 1 - round % 2}) {
      pair[k].use();
      arguments[k] = r.arguments(*arenas[k]);
    }
    char none = 0;
    void* data = &none;
    size_t bytes = 0;
    for (size_t i = 0; i < r.parameters.size(); ++i)
      if (r.parameters[i].name == "pSrcDst") {
        data = first.regions[i].get();
        bytes = arguments[0][i].element * size_t(length);
      }
    const std::vector<char> unsorted(static_cast<char*>(data), static_cast<char*>(data) + bytes);
    Call calls[2] = {{pair[0].address(row), arguments[0]}, {pair[1].address(row), arguments[1]}};
    if (has(r.name, "Sort"))
      for (Call& c : calls) c.refreshed = data, c.fresh = unsorted.data(), c.freshBytes = bytes;
    bool accepted = true;
    if (r.returnsStatus) {
      const VekStatus status[2] = {calls[0].once(), calls[1].once()};
      if (status[0] != status[1]) fail(std::string(r.name) + " returns another status");
      accepted = status[0] >= 0;
    }
    if (accepted) sample(calls, data, bytes, budget, samples);
    for (int k = 0; k < 2; ++k) {
      pair[k].use();
      arenas[k]->objects.release();
    }
    return accepted;
  }

 private:
  const std::vector<Library>& libraries_;
  Memory& memory_;
};

// ---- the report -----------------------------------------------------------------------------------------------------

struct Result {
  const char *function, *chapter;
  int length;
  Figure figure;
  int moved;      // 1 slower, -1 faster
  bool sameCode;  // found out for rows that moved

  std::string verdict() const {
    return std::string(moved > 0 ? "slower" : moved < 0 ? "faster" : "") + (sameCode ? ", same code" : "");
  }
};

void print(const std::vector<Result>& results, const std::map<std::string, std::pair<double, int>>& families) {
  printf("%-32s %8s %12s %12s %8s %17s\n", "function", "length", "old ns", "new ns", "new/old", "99.9 %");
  for (const Result& r : results)
    if (r.moved)
      printf("%-32s %8d %12.2f %12.2f %8.3f  (%.3f to %.3f) %s\n", r.function, r.length, r.figure.ns[0], r.figure.ns[1],
             r.figure.ratio, r.figure.low, r.figure.high, r.verdict().c_str());
  printf("\n%-16s %6s %8s\n", "chapter", "rows", "new/old");
  for (const auto& [name, sum] : families)
    printf("%-16s %6d %8.3f\n", name.c_str(), sum.second, exp(sum.first / sum.second));
}

void printJson(const std::vector<Result>& results, const std::map<std::string, std::pair<double, int>>& families) {
  printf("{\"rows\": [\n");
  const char* comma = "";
  for (const Result& r : results) {
    printf(
        "%s  {\"function\": \"%s\", \"chapter\": \"%s\", \"length\": %d, \"old_ns\": %.3f, \"new_ns\": %.3f, "
        "\"ratio\": %.4f, \"low\": %.4f, \"high\": %.4f, \"moved\": \"%s\"}",
        comma, r.function, r.chapter, r.length, r.figure.ns[0], r.figure.ns[1], r.figure.ratio, r.figure.low,
        r.figure.high,
        r.moved > 0   ? "slower"
        : r.moved < 0 ? "faster"
                      : "");
    comma = ",\n";
  }
  printf("\n], \"chapters\": {");
  comma = "";
  for (const auto& [name, sum] : families) {
    printf("%s\"%s\": %.4f", comma, name.c_str(), exp(sum.first / sum.second));
    comma = ", ";
  }
  printf("}}\n");
}

}  // namespace

int main(int count, char** words) {
  std::vector<const char*> paths;
  std::vector<int> lengths = {1, 16, 64, 256, 1024, 16384};
  std::regex filter(".");
  int slot = -1;
  double limit = 0.05, floor = 0.5, budget = 0.030;
  bool json = false;
  for (int i = 1; i < count; ++i) {
    const std::string word = words[i];
    if (word == "--json") {
      json = true;
      continue;
    }
    if (word.compare(0, 2, "--") != 0) {
      paths.push_back(words[i]);
      continue;
    }
    if (++i == count) fail(word + " without a value");
    const char* const value = words[i];
    if (word == "--filter") {
      filter = std::regex(value);
    } else if (word == "--len") {
      lengths.clear();
      for (const char* p = value; *p; p += *p == ',') {
        char* end;
        lengths.push_back(int(strtol(p, &end, 10)));
        if (end == p || lengths.back() < 1) fail(std::string("no lengths: ") + value);
        p = end;
      }
    } else if (word == "--slot") {
      for (int s = 0; s < vek::kSlotCount; ++s)
        if (strcmp(vek::kSlots[s].name, value) == 0) slot = s;
      if (slot < 0) fail(std::string("no slot ") + value);
    } else if (word == "--limit") {
      limit = atof(value) / 100;
    } else if (word == "--floor") {
      floor = atof(value);
    } else if (word == "--budget") {
      budget = atof(value) / 1000;
    } else {
      fail("no option " + word);
    }
  }
  if (paths.size() != 2 || lengths.empty()) fail("OLD and NEW libraries are wanted; the file's head tells the rest");
  std::vector<Library> libraries;
  for (int round = 0; round < kRounds; ++round) {  // the loader goes down in even steps: neither gets all odd ones
    const bool newFirst = round % 2 != 0;
    for (const bool isNew : {newFirst, !newFirst}) libraries.emplace_back(paths[isNew]);
    if (newFirst) std::iter_swap(libraries.end() - 2, libraries.end() - 1);
  }
  if (slot >= 0)
    for (const Library& library : libraries) library.putInForce(slot);
  _mm_setcsr(_mm_getcsr() | 0x8040);  // in-place calls repeated on their results soon meet denormals

  vektest::timedLength = *std::max_element(lengths.begin(), lengths.end());
  Memory memory(vektest::regionSize({true, "", "pBuffer"}));
  Comparison comparison(libraries, memory);
  std::vector<Result> results;
  std::map<std::string, std::pair<double, int>> families;
  bool slower = false;
  for (size_t i = 0; i < vektest::allRows().size(); ++i) {
    const Row& r = vektest::allRows()[i];
    if (!std::regex_search(r.name, filter) || has(r.name, "lloc") || has(r.name, "Free")) continue;
    if (!libraries[0].address(i) || !libraries[1].address(i)) {
      if (libraries[0].address(i) || libraries[1].address(i)) fprintf(stderr, "%s: not in both\n", r.name);
      continue;
    }
    for (const int length : dependsOnLength(r) ? lengths : std::vector<int>{lengths[0]}) {
      Samples samples;
      if (!comparison.measure(i, length, 0, budget, samples)) continue;
      Figure figure(samples);
      const auto movement = [floor](const Figure& f, double limit) {
        if (fabs(f.ns[1] - f.ns[0]) < floor) return 0;
        if (f.ratio > 1 + limit && f.low > 1 + limit / 2) return 1;
        return f.ratio < 1 / (1 + limit) && f.high < 1 / (1 + limit / 2) ? -1 : 0;
      };
      int moved = movement(figure, limit);
      for (int round = 1; round < kRounds && moved != 0; ++round) {
        Samples more;
        comparison.measure(i, length, round, budget, more);
        const bool again = movement(Figure(more), limit / 2) == moved;
        for (int k = 0; k < 2; ++k) samples.ns[k].insert(samples.ns[k].end(), more.ns[k].begin(), more.ns[k].end());
        figure = Figure(samples);
        if (!again || movement(figure, limit) != moved) moved = 0;
      }
      const bool sameCode = moved != 0 && libraries[0].sameCode(i, libraries[1]);
      slower |= moved > 0 && !sameCode;
      results.push_back({r.name, entries()[i].chapter, length, figure, moved, sameCode});
      auto& [sum, rows] = families[entries()[i].chapter];
      sum += log(figure.ratio);
      ++rows;
    }
  }
  if (results.empty()) fail("nothing to compare");
  (json ? printJson : print)(results, families);
  return slower;
}
