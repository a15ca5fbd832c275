// SPDX-License-Identifier: Apache-2.0
// What the instruction level of the slot being compiled offers. Nothing else looks at the compiler's macros: pack
// operations choose with `if constexpr` on the constants below, and so do the few kernels that go another way at
// another level.
//
// Such a choice has to stand in a template, also where one element type alone makes sense and a static_assert says so:
// only there may the branch of another level, whose registers have another width, fail to compile.
#ifndef VEK_CORE_SIMD_LEVEL_H
#define VEK_CORE_SIMD_LEVEL_H

#include <immintrin.h>
#include <stddef.h>
#include <stdint.h>

// VEK_SLOT is the name of the slot, and of the namespace that its code lives in. Exported functions exist twice there:
// as ::veksAdd_32fc, the entry that jumps to the slot in use, and as the slot's own. A call from slot code says which
// it means, with `::` or with `VEK_SLOT::` in front. Bare, it is the slot's own as long as all arguments are of
// built-in types; Vek32fc and the other structures are declared outside all namespaces, so argument-dependent lookup
// finds the entry as well and the call is ambiguous.
#ifndef VEK_SLOT
#error "slot code is compiled with VEK_SLOT set to the suffix of its slot"
#endif

// Every helper is inlined: a 32-byte value in a signature would otherwise depend on the instruction level of the
// caller.
#define VEK_INLINE inline __attribute__((always_inline))
#define VEK_LAMBDA __attribute__((always_inline))
#define VEK_NOINLINE __attribute__((noinline, unused))

// Helpers live in an unnamed namespace inside the slot's own: none of them may become a symbol that the linker could
// pick for another slot.
namespace vek::VEK_SLOT {
namespace {

#if defined(__SSE3__)
constexpr bool kSse3 = true;
#else
constexpr bool kSse3 = false;
#endif
#if defined(__SSSE3__)
constexpr bool kSsse3 = true;
#else
constexpr bool kSsse3 = false;
#endif
#if defined(__SSE4_1__)
constexpr bool kSse41 = true;
#else
constexpr bool kSse41 = false;
#endif
#if defined(__AVX__)
constexpr bool kAvx = true;
#else
constexpr bool kAvx = false;
#endif
#if defined(__AVX2__)
constexpr bool kAvx2 = true;
#else
constexpr bool kAvx2 = false;
#endif
#if defined(__FMA__)
constexpr bool kFma = true;
#else
constexpr bool kFma = false;
#endif

// Where a slot above serves every processor of the last fifteen years, size counts before speed.
#if defined(VEK_SMALL_CODE)
constexpr bool kSmallCode = true;
#else
constexpr bool kSmallCode = false;
#endif

// Type arithmetic, enough for the packs; the standard templates would leave shared symbols in debug builds.
template <class A, class B>
constexpr bool kSame = false;
template <class A>
constexpr bool kSame<A, A> = true;
template <class T>
struct RemoveConstOf {
  using Type = T;
};
template <class T>
struct RemoveConstOf<const T&> {
  using Type = T;
};
template <class T>
using RemoveConst = typename RemoveConstOf<T>::Type;
template <class T>
constexpr bool kFloat = kSame<T, float> || kSame<T, double>;
template <class T>
constexpr bool kSigned = T(-1) < T(0);

template <int Bytes>
struct IntTypes;
template <>
struct IntTypes<1> {
  using Signed = int8_t;
  using Unsigned = uint8_t;
};
template <>
struct IntTypes<2> {
  using Signed = int16_t;
  using Unsigned = uint16_t;
};
template <>
struct IntTypes<4> {
  using Signed = int32_t;
  using Unsigned = uint32_t;
};
template <>
struct IntTypes<8> {
  using Signed = int64_t;
  using Unsigned = uint64_t;
};
template <class T>
using SignedOf = typename IntTypes<sizeof(T)>::Signed;
template <class T>
using UnsignedOf = typename IntTypes<sizeof(T)>::Unsigned;

}  // namespace
}  // namespace vek::VEK_SLOT

#endif
