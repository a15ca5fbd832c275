// SPDX-License-Identifier: Apache-2.0
// Derived from the public prototypes by tools/derive.py; edits are lost.
//
// One overload a function on std::span: the arrays carry their own lengths, which have to agree, and the element types
// choose the function. Where two functions take the same types the type tokens stay in the name.
// clang-format off
#ifndef VEK_SPANS_HPP
#define VEK_SPANS_HPP

#include <limits.h>

#include <span>

#include "vek.h"
#include "vek/result.hpp"

namespace vek {

namespace detail {

// The common length, or 0, which every function refuses with vekStsSizeErr.
template <class First, class... Rest>
constexpr int len(const First& first, const Rest&... rest) {
  return first.size() <= INT_MAX && ((rest.size() == first.size()) && ... && true) ? int(first.size()) : 0;
}
inline const Vek8u* bytes(const void* p) { return static_cast<const Vek8u*>(p); }
inline Vek8u* bytes(void* p) { return static_cast<Vek8u*>(p); }

}  // namespace detail

inline Result copy(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksCopy_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek16s> src, std::span<Vek16s> dst) { return veksCopy_16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek32s> src, std::span<Vek32s> dst) { return veksCopy_32s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksCopy_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek64s> src, std::span<Vek64s> dst) { return veksCopy_64s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek64f> src, std::span<Vek64f> dst) { return veksCopy_64f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek16sc> src, std::span<Vek16sc> dst) { return veksCopy_16sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek32sc> src, std::span<Vek32sc> dst) { return veksCopy_32sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek32fc> src, std::span<Vek32fc> dst) { return veksCopy_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek64sc> src, std::span<Vek64sc> dst) { return veksCopy_64sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek64fc> src, std::span<Vek64fc> dst) { return veksCopy_64fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek8u> src, int srcBitOffset, std::span<Vek8u> dst, int dstBitOffset) { return veksCopy_1u(src.data(), srcBitOffset, dst.data(), dstBitOffset, detail::len(src, dst)); }
inline Result move(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksMove_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek16s> src, std::span<Vek16s> dst) { return veksMove_16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek32s> src, std::span<Vek32s> dst) { return veksMove_32s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksMove_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek64s> src, std::span<Vek64s> dst) { return veksMove_64s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek64f> src, std::span<Vek64f> dst) { return veksMove_64f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek16sc> src, std::span<Vek16sc> dst) { return veksMove_16sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek32sc> src, std::span<Vek32sc> dst) { return veksMove_32sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek32fc> src, std::span<Vek32fc> dst) { return veksMove_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek64sc> src, std::span<Vek64sc> dst) { return veksMove_64sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek64fc> src, std::span<Vek64fc> dst) { return veksMove_64fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result zero(std::span<Vek8u> dst) { return veksZero_8u(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek16s> dst) { return veksZero_16s(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek32s> dst) { return veksZero_32s(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek32f> dst) { return veksZero_32f(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek32sc> dst) { return veksZero_32sc(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek32fc> dst) { return veksZero_32fc(dst.data(), detail::len(dst)); }
inline Result set(Vek8u val, std::span<Vek8u> dst) { return veksSet_8u(val, dst.data(), detail::len(dst)); }
inline Result set(Vek16s val, std::span<Vek16s> dst) { return veksSet_16s(val, dst.data(), detail::len(dst)); }
inline Result set(Vek32s val, std::span<Vek32s> dst) { return veksSet_32s(val, dst.data(), detail::len(dst)); }
inline Result set(Vek32f val, std::span<Vek32f> dst) { return veksSet_32f(val, dst.data(), detail::len(dst)); }
inline Result set(Vek32sc val, std::span<Vek32sc> dst) { return veksSet_32sc(val, dst.data(), detail::len(dst)); }
inline Result set(Vek32fc val, std::span<Vek32fc> dst) { return veksSet_32fc(val, dst.data(), detail::len(dst)); }
inline Result flip(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksFlip_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result flip(std::span<Vek8u> srcDst) { return veksFlip_8u_I(srcDst.data(), detail::len(srcDst)); }
inline Result flip(std::span<const Vek16u> src, std::span<Vek16u> dst) { return veksFlip_16u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result flip(std::span<Vek16u> srcDst) { return veksFlip_16u_I(srcDst.data(), detail::len(srcDst)); }
inline Result flip(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksFlip_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result flip(std::span<Vek32f> srcDst) { return veksFlip_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result flip(std::span<const Vek32fc> src, std::span<Vek32fc> dst) { return veksFlip_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result flip(std::span<Vek32fc> srcDst) { return veksFlip_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result swapBytes(std::span<const Vek16u> src, std::span<Vek16u> dst) { return veksSwapBytes_16u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result swapBytes(std::span<Vek16u> srcDst) { return veksSwapBytes_16u_I(srcDst.data(), detail::len(srcDst)); }
inline Result swapBytes(std::span<const Vek24u> src, std::span<Vek24u> dst) { return veksSwapBytes_24u(detail::bytes(src.data()), detail::bytes(dst.data()), detail::len(src, dst)); }
inline Result swapBytes(std::span<Vek24u> srcDst) { return veksSwapBytes_24u_I(detail::bytes(srcDst.data()), detail::len(srcDst)); }
inline Result swapBytes(std::span<const Vek32u> src, std::span<Vek32u> dst) { return veksSwapBytes_32u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result swapBytes(std::span<Vek32u> srcDst) { return veksSwapBytes_32u_I(srcDst.data(), detail::len(srcDst)); }
inline Result swapBytes(std::span<const Vek64u> src, std::span<Vek64u> dst) { return veksSwapBytes_64u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result swapBytes(std::span<Vek64u> srcDst) { return veksSwapBytes_64u_I(srcDst.data(), detail::len(srcDst)); }
inline Result real(std::span<const Vek32fc> src, std::span<Vek32f> dstRe) { return veksReal_32fc(src.data(), dstRe.data(), detail::len(src, dstRe)); }
inline Result imag(std::span<const Vek32fc> src, std::span<Vek32f> dstIm) { return veksImag_32fc(src.data(), dstIm.data(), detail::len(src, dstIm)); }
inline Result cplxToReal(std::span<const Vek32fc> src, std::span<Vek32f> dstRe, std::span<Vek32f> dstIm) { return veksCplxToReal_32fc(src.data(), dstRe.data(), dstIm.data(), detail::len(src, dstRe, dstIm)); }
inline Result realToCplx(std::span<const Vek32f> srcRe, std::span<const Vek32f> srcIm, std::span<Vek32fc> dst) { return veksRealToCplx_32f(srcRe.data(), srcIm.data(), dst.data(), detail::len(srcRe, srcIm, dst)); }
inline Result conj(std::span<const Vek32fc> src, std::span<Vek32fc> dst) { return veksConj_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result conj(std::span<Vek32fc> srcDst) { return veksConj_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result conjFlip(std::span<const Vek32fc> src, std::span<Vek32fc> dst) { return veksConjFlip_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result bitAnd(std::span<const Vek8u> src1, std::span<const Vek8u> src2, std::span<Vek8u> dst) { return veksAnd_8u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitAnd(std::span<const Vek8u> src, std::span<Vek8u> srcDst) { return veksAnd_8u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result bitAnd(std::span<const Vek16u> src1, std::span<const Vek16u> src2, std::span<Vek16u> dst) { return veksAnd_16u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitAnd(std::span<const Vek16u> src, std::span<Vek16u> srcDst) { return veksAnd_16u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result bitAnd(std::span<const Vek32u> src1, std::span<const Vek32u> src2, std::span<Vek32u> dst) { return veksAnd_32u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitAnd(std::span<const Vek32u> src, std::span<Vek32u> srcDst) { return veksAnd_32u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result bitOr(std::span<const Vek8u> src1, std::span<const Vek8u> src2, std::span<Vek8u> dst) { return veksOr_8u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitOr(std::span<const Vek8u> src, std::span<Vek8u> srcDst) { return veksOr_8u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result bitOr(std::span<const Vek16u> src1, std::span<const Vek16u> src2, std::span<Vek16u> dst) { return veksOr_16u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitOr(std::span<const Vek16u> src, std::span<Vek16u> srcDst) { return veksOr_16u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result bitOr(std::span<const Vek32u> src1, std::span<const Vek32u> src2, std::span<Vek32u> dst) { return veksOr_32u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitOr(std::span<const Vek32u> src, std::span<Vek32u> srcDst) { return veksOr_32u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result bitXor(std::span<const Vek8u> src1, std::span<const Vek8u> src2, std::span<Vek8u> dst) { return veksXor_8u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitXor(std::span<const Vek8u> src, std::span<Vek8u> srcDst) { return veksXor_8u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result bitXor(std::span<const Vek16u> src1, std::span<const Vek16u> src2, std::span<Vek16u> dst) { return veksXor_16u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitXor(std::span<const Vek16u> src, std::span<Vek16u> srcDst) { return veksXor_16u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result bitXor(std::span<const Vek32u> src1, std::span<const Vek32u> src2, std::span<Vek32u> dst) { return veksXor_32u(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result bitXor(std::span<const Vek32u> src, std::span<Vek32u> srcDst) { return veksXor_32u_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result andC(std::span<const Vek8u> src, Vek8u val, std::span<Vek8u> dst) { return veksAndC_8u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result andC(Vek8u val, std::span<Vek8u> srcDst) { return veksAndC_8u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result andC(std::span<const Vek16u> src, Vek16u val, std::span<Vek16u> dst) { return veksAndC_16u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result andC(Vek16u val, std::span<Vek16u> srcDst) { return veksAndC_16u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result andC(std::span<const Vek32u> src, Vek32u val, std::span<Vek32u> dst) { return veksAndC_32u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result andC(Vek32u val, std::span<Vek32u> srcDst) { return veksAndC_32u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result orC(std::span<const Vek8u> src, Vek8u val, std::span<Vek8u> dst) { return veksOrC_8u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result orC(Vek8u val, std::span<Vek8u> srcDst) { return veksOrC_8u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result orC(std::span<const Vek16u> src, Vek16u val, std::span<Vek16u> dst) { return veksOrC_16u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result orC(Vek16u val, std::span<Vek16u> srcDst) { return veksOrC_16u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result orC(std::span<const Vek32u> src, Vek32u val, std::span<Vek32u> dst) { return veksOrC_32u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result orC(Vek32u val, std::span<Vek32u> srcDst) { return veksOrC_32u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result xorC(std::span<const Vek8u> src, Vek8u val, std::span<Vek8u> dst) { return veksXorC_8u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result xorC(Vek8u val, std::span<Vek8u> srcDst) { return veksXorC_8u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result xorC(std::span<const Vek16u> src, Vek16u val, std::span<Vek16u> dst) { return veksXorC_16u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result xorC(Vek16u val, std::span<Vek16u> srcDst) { return veksXorC_16u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result xorC(std::span<const Vek32u> src, Vek32u val, std::span<Vek32u> dst) { return veksXorC_32u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result xorC(Vek32u val, std::span<Vek32u> srcDst) { return veksXorC_32u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result bitNot(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksNot_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result bitNot(std::span<Vek8u> srcDst) { return veksNot_8u_I(srcDst.data(), detail::len(srcDst)); }
inline Result bitNot(std::span<const Vek16u> src, std::span<Vek16u> dst) { return veksNot_16u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result bitNot(std::span<Vek16u> srcDst) { return veksNot_16u_I(srcDst.data(), detail::len(srcDst)); }
inline Result bitNot(std::span<const Vek32u> src, std::span<Vek32u> dst) { return veksNot_32u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result bitNot(std::span<Vek32u> srcDst) { return veksNot_32u_I(srcDst.data(), detail::len(srcDst)); }
inline Result lShiftC(std::span<const Vek8u> src, int val, std::span<Vek8u> dst) { return veksLShiftC_8u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result lShiftC(int val, std::span<Vek8u> srcDst) { return veksLShiftC_8u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result lShiftC(std::span<const Vek16s> src, int val, std::span<Vek16s> dst) { return veksLShiftC_16s(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result lShiftC(int val, std::span<Vek16s> srcDst) { return veksLShiftC_16s_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result lShiftC(std::span<const Vek32s> src, int val, std::span<Vek32s> dst) { return veksLShiftC_32s(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result lShiftC(int val, std::span<Vek32s> srcDst) { return veksLShiftC_32s_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result rShiftC(std::span<const Vek8u> src, int val, std::span<Vek8u> dst) { return veksRShiftC_8u(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result rShiftC(int val, std::span<Vek8u> srcDst) { return veksRShiftC_8u_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result rShiftC(std::span<const Vek16s> src, int val, std::span<Vek16s> dst) { return veksRShiftC_16s(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result rShiftC(int val, std::span<Vek16s> srcDst) { return veksRShiftC_16s_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result rShiftC(std::span<const Vek32s> src, int val, std::span<Vek32s> dst) { return veksRShiftC_32s(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result rShiftC(int val, std::span<Vek32s> srcDst) { return veksRShiftC_32s_I(val, srcDst.data(), detail::len(srcDst)); }

}  // namespace vek

#endif
