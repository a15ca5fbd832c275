// SPDX-License-Identifier: Apache-2.0
// What a spec of any length holds, and how it is made: the order of the passes, and the roots.
#ifndef VEK_TRANSFORM_DFT_PLAN_H
#define VEK_TRANSFORM_DFT_PLAN_H

#include "transform/dft.h"
#include "transform/dft_pass.h"

namespace vek::VEK_SLOT {
namespace {

// exp(-2 pi i k / n) for 0 <= k < n: products of two to four roots in long double, which are right to the last bit of
// a double whatever the C library's sine does with it.
class UnitRoots {
 public:
  explicit UnitRoots(int64_t n) {
    int bits = 1;
    while (int64_t(1) << bits < n) ++bits;
    levels_ = bits <= 14 ? 2 : bits <= 21 ? 3 : 4;
    bits_ = (bits + levels_ - 1) / levels_;
    const long double unit = 6.283185307179586476925286766559005768L / (long double)(n);
    for (int l = 0; l < levels_; ++l) {
      for (int64_t d = 0; d < int64_t(1) << bits_ && d << (bits_ * l) < n; ++d) {
        const long double angle = unit * (long double)(d << (bits_ * l));
        at_[l][d] = {cosl(angle), -sinl(angle)};
      }
    }
  }
  Root operator()(int64_t k) const {
    const int64_t mask = (int64_t(1) << bits_) - 1;
    Long r = at_[0][k & mask];
    for (int l = 1; l < levels_; ++l) {
      const int64_t d = k >> (bits_ * l) & mask;
      if (d == 0) continue;
      const Long w = at_[l][d];
      r = {r.re * w.re - r.im * w.im, r.re * w.im + r.im * w.re};
    }
    return {double(r.re), double(r.im)};
  }

 private:
  struct Long {
    long double re, im;
  };
  int levels_, bits_;
  Long at_[4][128];
};

// ---- passes ---------------------------------------------------------------------------------------------------------

constexpr int kMostPasses = 14;

struct Pass {
  int32_t radix;
  int32_t padding;
  int64_t done, left;  // m and s of the pass: points of what it joins, sequences that lie interleaved
  int64_t roots;       // offset from the tables in elements
};
struct PassPlan {
  int32_t count;
  int32_t padding;
  Pass at[kMostPasses];
};

// Time of a pass of a radix for a point, in some unit; 0: there is none.
constexpr int kPassCost[kMaxRadix + 1] = {0, 0, 18, 23, 23, 36, 38, 51, 33, 48, 0, 84, 0, 100, 0, 70};
// Products of several odd primes serve as last pass only, where they make rows that fill vectors.
constexpr bool isLastRadix(int r) { return kPassCost[r] != 0 && r >= 5 && r != 6; }
constexpr bool isOtherRadix(int r) { return kPassCost[r] != 0 && r != 15; }

// Which radices a length is made of: the cheapest set, by trying the larger ones first.
struct RadixSet {
  int cost = 1 << 30, count = 0;
  int8_t at[kMostPasses] = {};
};
inline void searchRadices(int64_t n, int largest, RadixSet& current, RadixSet& best) {
  if (n == 1) {
    if (current.cost < best.cost) best = current;
    return;
  }
  int bits = 0;  // none takes less time a bit than radix eight
  while (n >> bits > 1) ++bits;
  if (current.cost + bits * kPassCost[8] / 3 >= best.cost || current.count == kMostPasses) return;
  for (int r = largest; r >= 2; --r) {
    if (!isOtherRadix(r) || n % r != 0) continue;
    current.at[current.count++] = int8_t(r);
    current.cost += kPassCost[r];
    searchRadices(n / r, r, current, best);
    --current.count;
    current.cost -= kPassCost[r];
  }
}

// Cost of the set in an order: vectors that are not full cost as much as full ones. Negative if a pass has no such
// radix.
template <class T>
double costOfOrder(const int8_t* radices, int count) {
  double cost = 0;
  int64_t done = 1, left = 1;
  for (int i = 0; i < count; ++i) left *= radices[i];
  for (int i = 0; i < count; ++i) {
    const int r = radices[i];
    left /= r;
    const bool last = i + 1 == count;
    if (!(last ? isLastRadix(r) : isOtherRadix(r))) return -1;
    // Beside its arithmetic a pass fetches roots for every row of vectors, or collects columns.
    const double extra = i == 0 ? -10 : last ? 10 : 2 + 16.0 / double(vectorsOf<T>(left));
    const int64_t vectors = last ? vectorsOf<T>(done) : vectorsOf<T>(left) * done;
    cost += double(vectors * kLanes<T> * r) * (kPassCost[r] + extra);
    done *= r;
  }
  return cost;
}

// A length with prime factors to 13 only.
inline bool isSmooth(int64_t n) {
  constexpr int primes[] = {2, 3, 5, 7, 11, 13};
  for (const int p : primes) {
    while (n % p == 0) n /= p;
  }
  return n == 1;
}

// Elements that the roots of a pass take.
template <class T>
int64_t rootsOf(const Pass& p) {
  if (p.done == 1) return 0;
  const int64_t each = 2 * rootsOfRadix(p.radix);
  return p.left == 1 ? vectorsOf<T>(p.done) * kLanes<T> * each : p.done * each;
}
// Elements of a plane that holds the data between passes; vectors may read or write as many again as kOverrun behind
// them.
template <class T>
constexpr int64_t kOverrun = kMaxRadix* kLanes<T>;
template <class T>
int64_t planeSize(const PassPlan& plan, int64_t n) {
  int64_t most = n;
  for (int i = 0; i + 1 < plan.count; ++i) {
    const int64_t s = plan.at[i].left, size = n / s * pitchOf<T>(s);
    if (size > most) most = size;
  }
  return most;
}

// Tries every radix of the set, and every product of two of them, as the last one, and every other as the first.
template <class T>
void tryOrders(const RadixSet& set, double& least, RadixSet& best) {
  for (int f = 0; f < set.count; ++f) {
    for (int l = 0; l < set.count; ++l) {
      if (l == f) continue;
      RadixSet order;
      order.at[order.count++] = set.at[f];
      for (int i = set.count - 1; i >= 0; --i) {
        if (i != f && i != l) order.at[order.count++] = set.at[i];
      }
      order.at[order.count++] = set.at[l];
      const double cost = costOfOrder<T>(order.at, order.count);
      if (cost >= 0 && (least < 0 || cost < least)) least = cost, best = order;
    }
  }
}

// n > 16 without a prime factor above 13.
template <class T>
PassPlan planPasses(int64_t n) {
  RadixSet current, set, best;
  current.cost = 0;
  double least = -1;
  searchRadices(n, kMaxRadix, current, set);
  tryOrders<T>(set, least, best);
  // The last radix decides about the length of all rows, so it may be one that the cheapest set does not have.
  for (int last = kMaxRadix; last >= 5; --last) {
    if (n % last != 0 || !isLastRadix(last)) continue;
    RadixSet with;
    searchRadices(n / last, kMaxRadix, current, with);
    if (with.count == kMostPasses) continue;
    with.at[with.count++] = int8_t(last);
    tryOrders<T>(with, least, best);
  }
  PassPlan plan{};
  plan.count = best.count;
  int64_t done = 1, left = n, roots = 0;
  for (int i = 0; i < best.count; ++i) {
    Pass& p = plan.at[i];
    p.radix = best.at[i];
    left /= p.radix;
    p.done = done, p.left = left, p.roots = roots;
    done *= p.radix;
    roots += rootsOf<T>(p);
  }
  return plan;
}
template <class T>
int64_t tableSize(const PassPlan& plan) {
  int64_t size = 0;
  for (int i = 0; i < plan.count; ++i) size += rootsOf<T>(plan.at[i]);
  return size;
}

template <class T>
void fillRoots(T* table, const PassPlan& plan, int64_t n, const UnitRoots& roots) {
  constexpr int L = kLanes<T>;
  for (int i = 1; i < plan.count; ++i) {
    const Pass& pass = plan.at[i];
    const int each = rootsOfRadix(pass.radix);
    const auto root = [&](int64_t p, int k) {
      return roots(rootExponent(pass.radix, k, p, pass.done) * pass.left % n);
    };
    T* to = table + pass.roots;
    if (pass.left > 1) {
      for (int64_t p = 0; p < pass.done; ++p) {
        for (int k = 0; k < each; ++k, to += 2) {
          const Root w = root(p, k);
          to[0] = T(w.re), to[1] = T(w.im);
        }
      }
    } else {
      for (int64_t v = 0; v < vectorsOf<T>(pass.done); ++v) {
        const int64_t p = vectorStart<T>(v, pass.done);
        for (int k = 0; k < each; ++k, to += 2 * L) {
          for (int lane = 0; lane < L; ++lane) storeRoot(to, lane, root(p + kLaneOrder<T>[lane], k));
        }
      }
    }
  }
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
