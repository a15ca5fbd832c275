// SPDX-License-Identifier: Apache-2.0
// What a spec of any length holds, and how it is made: the order of the passes, and the roots.
#ifndef VEK_TRANSFORM_DFT_PLAN_H
#define VEK_TRANSFORM_DFT_PLAN_H

#include "core/simd/double_double.h"
#include "transform/dft.h"
#include "transform/dft_pass.h"

namespace vek::VEK_SLOT {
namespace {

// exp(-2 pi i k / n) for 0 <= k < n: products of two to four roots of twice a double's precision, rounded once.
// For tables in single precision a double's products are right as well, and sooner.
template <class T>
class UnitRoots {
 public:
  explicit UnitRoots(int64_t n) {
    int bits = 1;
    while (int64_t(1) << bits < n) ++bits;
    levels_ = bits <= 14 ? 2 : bits <= 21 ? 3 : 4;
    bits_ = (bits + levels_ - 1) / levels_;
    for (int l = 0; l < levels_; ++l) {
      for (int64_t d = 0; d < int64_t(1) << bits_ && d << (bits_ * l) < n; ++d) {
        const auto w = sineCosine(turns(double(d << (bits_ * l)), double(n)));
        at_[l][d] = {w.cosine, -w.sine};
      }
    }
  }
  Root operator()(int64_t k) const {
    const int64_t mask = (int64_t(1) << bits_) - 1;
    Long r = at_[0][k & mask];
    for (int l = 1; l < levels_; ++l) {
      const int64_t d = k >> (bits_ * l) & mask;
      if (d == 0) continue;
      const Long& w = at_[l][d];
      if constexpr (sizeof(T) == 4) {
        const Root product = Root{r.re.hi, r.im.hi} * Root{w.re.hi, w.im.hi};
        r.re.hi = product.re, r.im.hi = product.im;
      } else {
        r = {r.re * w.re + -(r.im * w.im), r.re * w.im + r.im * w.re};
      }
    }
    return {r.re.hi, r.im.hi};
  }

 private:
  struct Long {
    DoubleDouble<double> re, im;
  };
  // 2 pi a / b for integers.
  static DoubleDouble<double> turns(double a, double b) {
    const double q = a / b;
    const DoubleDouble<double> p = productOf(q, b), part = sumOfOrdered(q, ((a - p.hi) - p.lo) / b);
    return DoubleDouble<double>{0x1.921FB54442D18p2, 0x1.1A62633145C07p-52} * part;
  }
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

// Measured time of a pass of a radix for a point, as the first pass, one of the others and the last one, in some unit;
// 0: there is none. Products of odd primes serve as last pass only, where they make rows that fill vectors.
constexpr int kFirstCost[kMaxRadix + 1] = {0, 0, 100, 116, 109, 148, 128, 231, 142, 219, 0, 342, 0, 401};
constexpr int kMiddleCost[kMaxRadix + 1] = {0, 0, 92, 110, 106, 174, 150, 245, 160, 242, 0, 356, 0, 398};
constexpr int kLastCost[kMaxRadix + 1] = {0, 0, 0, 0, 0, 271, 0, 318, 265, 404, 0, 448, 0, 495, 0, 450};
constexpr int kRowCost = 28;  // of a row of one vector, whose roots serve nothing else
// What a transform pays for a pass, and for rows that are shorter than a vector, whatever its length.
constexpr int kPassStart = 6000, kNarrowCost = 15000;
constexpr bool isLastRadix(int r) { return kLastCost[r] != 0; }
constexpr bool isOtherRadix(int r) { return kMiddleCost[r] != 0; }

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
  if (current.cost + bits * kMiddleCost[8] / 3 >= best.cost || current.count == kMostPasses) return;
  for (int r = largest; r >= 2; --r) {
    if (!isOtherRadix(r) || n % r != 0) continue;
    current.at[current.count++] = int8_t(r);
    current.cost += kMiddleCost[r];
    searchRadices(n / r, r, current, best);
    --current.count;
    current.cost -= kMiddleCost[r];
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
    const int64_t vectors = last ? vectorsOf<T>(done) : vectorsOf<T>(left) * done;
    const double time = i == 0 ? kFirstCost[r]
                        : last ? kLastCost[r]
                               : kMiddleCost[r] + double(kRowCost) / double(vectorsOf<T>(left));
    cost += double(vectors * kLanes<T> * r) * time + kPassStart;
    if (last ? done < kLanes<T> : left < kLanes<T>) cost += kNarrowCost;
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
// Rows of some pass, or what its lanes go over, are shorter than a vector.
template <class T>
bool isNarrow(const PassPlan& plan) {
  const Pass& last = plan.at[plan.count - 1];
  return plan.at[0].left < kLanes<T> || last.radix < kLanes<T> || last.done < kLanes<T>;
}
// Elements of a plane that holds the data between passes, and what vectors reach behind them.
template <class T>
int64_t planeSize(const PassPlan& plan, int64_t n) {
  int64_t most = n;
  for (int i = 0; i + 1 < plan.count; ++i) {
    const int64_t s = plan.at[i].left, size = n / s * pitchOf<T>(s);
    if (size > most) most = size;
  }
  return most + (kMaxRadix + 1) * kLanes<T>;
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
// For transforms side by side, one in each lane: any order will do, and every root is the same for all lanes.
inline PassPlan planColumns(int64_t n) {
  RadixSet current, set;
  current.cost = 0;
  searchRadices(n, kMaxRadix, current, set);
  PassPlan plan{};
  int64_t done = 1, left = n;
  for (int i = set.count - 1; i >= 0; --i) {
    Pass& p = plan.at[plan.count++];
    p.radix = set.at[i];
    left /= p.radix;
    p.done = done, p.left = left;
    done *= p.radix;
  }
  return plan;
}
// Places the roots of its passes behind `offset` elements of other tables, and returns where they end.
inline int64_t placeColumnRoots(PassPlan& plan, int64_t offset) {
  for (int i = 0; i < plan.count; ++i) {
    plan.at[i].roots = offset;
    offset += plan.at[i].done * 2 * rootsOfRadix(plan.at[i].radix);
  }
  return offset;
}

template <class T>
int64_t tableSize(const PassPlan& plan) {
  int64_t size = 0;
  for (int i = 0; i < plan.count; ++i) size += rootsOf<T>(plan.at[i]);
  return size;
}

enum RootLayout { kForRows, kForColumns };

template <RootLayout W, class T>
void fillRoots(T* table, const PassPlan& plan, int64_t n, const UnitRoots<T>& roots) {
  constexpr int L = kLanes<T>;
  for (int i = W == kForRows ? 1 : 0; i < plan.count; ++i) {
    const Pass& pass = plan.at[i];
    const int each = rootsOfRadix(pass.radix);
    const auto root = [&](int64_t p, int k) {
      return roots(rootExponent(pass.radix, k, p, pass.done) * pass.left % n);
    };
    T* to = table + pass.roots;
    if (W == kForColumns || pass.left > 1) {
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
