// SPDX-License-Identifier: Apache-2.0
// The shape of a multi-rate filter. Its taps fall into upFactor phases, tap k into phase k mod upFactor, as the zeros
// between the up-sampled inputs meet all others. The taps of a phase lie together: last first where outputs are made
// one by one; where the samples are split into downFactor streams, in one group for each stream, each last first.
#ifndef VEK_FILTER_FIRMR_PLAN_H
#define VEK_FILTER_FIRMR_PLAN_H

#include "filter/fir_state.h"

namespace vek::VEK_SLOT {
namespace {

// Beyond this many streams each would get too few taps.
constexpr int kFirMostStreams = 256;

// Equal shares of `total` things among `parts`, the first ones getting one more.
struct Shares {
  int64_t each, extra;
  VEK_INLINE Shares(int64_t total, int64_t parts) : each(total / parts), extra(total % parts) {}
  VEK_INLINE int64_t count(int64_t part) const { return each + (part < extra); }
  VEK_INLINE int64_t before(int64_t part) const { return part * each + smaller(part, extra); }
};

struct RatePlan {
  int64_t tapsLen, up, down;
  VEK_INLINE RatePlan(int64_t taps, int64_t upFactor, int64_t downFactor)
      : tapsLen(taps), up(upFactor), down(downFactor) {}
  VEK_INLINE explicit RatePlan(const FirState* s) : RatePlan(s->tapsLen, s->upFactor, s->downFactor) {}

  // Past inputs that an output may need.
  VEK_INLINE int64_t history() const { return (tapsLen + up - 1) / up; }
  // The same for one of the streams.
  VEK_INLINE int64_t streamHistory() const { return (history() + down - 1) / down; }
  // Iterations that are done together, and the room that their outputs and inputs take.
  VEK_INLINE int64_t iterations() const { return larger(1, kFirScratch / larger(up, down)); }
  VEK_INLINE int64_t scratch() const { return larger(kFirScratch, up); }
  VEK_INLINE int64_t window() const { return history() + kFirMostStreams + larger(kFirScratch, down); }
  VEK_INLINE int64_t stream() const { return streamHistory() + iterations(); }
};

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
