// SPDX-License-Identifier: Apache-2.0
// What the exported transforms of every length share: the life of their specs, work buffers, the places of many arrays.
#ifndef VEK_TRANSFORM_SPECTRAL_SPEC_H
#define VEK_TRANSFORM_SPECTRAL_SPEC_H

#include "core/memory.h"
#include "core/simd/level.h"
#include "transform/dft.h"
#include "vek/status.h"

namespace vek::VEK_SLOT {
namespace {

VEK_INLINE int64_t roundUp64(int64_t bytes) { return (bytes + 63) & ~int64_t(63); }
VEK_INLINE uint8_t* align64(uint8_t* p) { return p + (-reinterpret_cast<uintptr_t>(p) & 63); }

// The first words of a spec, which lies at the first 64-byte boundary of its buffer.
struct SpecHead {
  int32_t id;
  int32_t len;
  int64_t slot;       // whose code made it
  const void* owner;  // the spec itself where the heap holds it: a copy must not be released
};

// Specs by the type that callers see.
template <class P>
struct SpecOf;
template <class P>
using SpecBody = typename SpecOf<P>::Body;

template <class P>
VEK_INLINE const SpecBody<P>* bodyOf(const P* spec) {
  return reinterpret_cast<const SpecBody<P>*>(spec);
}
template <class P>
VEK_INLINE bool isSpec(const P* spec) {
  return bodyOf(spec)->head.id == SpecOf<P>::id;
}

// build(body) fills everything behind the head, in `bytes` bytes from the body on.
template <class P, class Build>
VekStatus makeSpec(P** ppSpec, int len, uint8_t* buffer, bool onHeap, Build build) {
  SpecBody<P>* body = reinterpret_cast<SpecBody<P>*>(align64(buffer));
  *body = {};
  build(body);
  body->head = {SpecOf<P>::id, len, VEK_SLOT_INDEX, onHeap ? body : nullptr};
  *ppSpec = reinterpret_cast<P*>(body);
  return vekStsNoErr;
}
template <class P, class Build>
VekStatus makeSpecOnHeap(P** ppSpec, int len, int64_t bytes, Build build) {
  uint8_t* block = static_cast<uint8_t*>(allocate(bytes));
  return block ? makeSpec(ppSpec, len, block, true, build) : vekStsMemAllocErr;
}

template <class P>
VekStatus freeSpec(P* spec) {
  if (!spec) return vekStsNullPtrErr;
  if (!isSpec(spec)) return vekStsContextMatchErr;
  if (bodyOf(spec)->head.owner == spec) {
    reinterpret_cast<SpecBody<P>*>(spec)->head = {};
    release(spec);
  }
  return vekStsNoErr;
}

// What every transform checks first.
template <class P>
VEK_INLINE VekStatus checkCall(const void* src, const void* dst, const P* spec) {
  if (!src || !dst || !spec) return vekStsNullPtrErr;
  return isSpec(spec) && bodyOf(spec)->head.slot == VEK_SLOT_INDEX ? vekStsNoErr : vekStsContextMatchErr;
}

// Calls f(work) with the caller's work buffer, or for its duration with one of the heap.
template <class F>
VEK_INLINE VekStatus withWork(int64_t bytes, uint8_t* given, F f) {
  uint8_t* own = nullptr;
  if (!given && bytes > 0) {
    own = static_cast<uint8_t*>(allocate(bytes));
    if (!own) return vekStsMemAllocErr;
  }
  f(given ? given : own);
  release(own);
  return vekStsNoErr;
}

// ---- many arrays ---------------------------------------------------------------------------------------------------

// Where the elements of one side lie.
struct Places {
  int64_t elements, stride, distance;
};

// Element numbers that an address can be formed with, whatever the element.
VEK_INLINE bool placesExist(int64_t count, Places p) {
  int64_t along, across, last;
  return p.stride >= 1 && p.distance >= 1 && !__builtin_mul_overflow(p.elements - 1, p.stride, &along) &&
         !__builtin_mul_overflow(count - 1, p.distance, &across) && !__builtin_add_overflow(along, across, &last) &&
         last < INT64_MAX / 32;
}
// No place twice: whole arrays behind each other, or interleaved as the columns of a matrix.
VEK_INLINE bool placesDiffer(int64_t count, Places p) {
  return p.distance > (p.elements - 1) * p.stride || p.stride > (count - 1) * p.distance;
}
// One array has to be the same on both sides, and a source may then no more hold a place twice than a destination.
template <class A, class B>
VEK_INLINE bool placesFitInPlace(int64_t count, Places src, Places dst) {
  const bool sameStride = sizeof(A) == sizeof(B) ? src.stride == dst.stride : src.stride == 1 && dst.stride == 1;
  return sameStride && src.distance * int64_t(sizeof(A)) == dst.distance * int64_t(sizeof(B)) &&
         placesDiffer(count, src);
}
template <class A, class B>
VEK_INLINE VekStatus checkPlaces(int64_t count, const A* pSrc, Places src, const B* pDst, Places dst) {
  if (count < 1) return vekStsSizeErr;
  if (!placesExist(count, src) || !placesExist(count, dst) || !placesDiffer(count, dst)) return vekStsStrideErr;
  const bool inPlace = static_cast<const void*>(pSrc) == static_cast<const void*>(pDst);
  return inPlace && !placesFitInPlace<A, B>(count, src, dst) ? vekStsStrideErr : vekStsNoErr;
}

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
