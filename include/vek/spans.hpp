// SPDX-License-Identifier: Apache-2.0
// Derived from the public prototypes by tools/derive.py; edits are lost.
//
// One overload a function on std::span: the arrays carry their own lengths, which have to agree, and the element types
// choose the function. Where two functions take the same types the type tokens stay in the name. Arrays that do not
// fit each other, empty ones and those of more than INT_MAX elements are refused, with vekStsSizeErr unless the
// function finds another fault first.
// clang-format off
#ifndef VEK_SPANS_HPP
#define VEK_SPANS_HPP

#include <span>

#include "vek/complex.hpp"
#include "vek/lengths.hpp"
#include "vek/result.hpp"
#include "vek.h"

namespace vek {

inline Result copy(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksCopy_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek16s> src, std::span<Vek16s> dst) { return veksCopy_16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek32s> src, std::span<Vek32s> dst) { return veksCopy_32s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksCopy_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek64s> src, std::span<Vek64s> dst) { return veksCopy_64s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek64f> src, std::span<Vek64f> dst) { return veksCopy_64f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek16sc> src, std::span<Vek16sc> dst) { return veksCopy_16sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek32sc> src, std::span<Vek32sc> dst) { return veksCopy_32sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksCopy_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(std::span<const Vek64sc> src, std::span<Vek64sc> dst) { return veksCopy_64sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result copy(ComplexSpan<const Vek64fc> src, ComplexSpan<Vek64fc> dst) { return veksCopy_64fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksMove_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek16s> src, std::span<Vek16s> dst) { return veksMove_16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek32s> src, std::span<Vek32s> dst) { return veksMove_32s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksMove_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek64s> src, std::span<Vek64s> dst) { return veksMove_64s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek64f> src, std::span<Vek64f> dst) { return veksMove_64f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek16sc> src, std::span<Vek16sc> dst) { return veksMove_16sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek32sc> src, std::span<Vek32sc> dst) { return veksMove_32sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksMove_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(std::span<const Vek64sc> src, std::span<Vek64sc> dst) { return veksMove_64sc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result move(ComplexSpan<const Vek64fc> src, ComplexSpan<Vek64fc> dst) { return veksMove_64fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result zero(std::span<Vek8u> dst) { return veksZero_8u(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek16s> dst) { return veksZero_16s(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek32s> dst) { return veksZero_32s(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek32f> dst) { return veksZero_32f(dst.data(), detail::len(dst)); }
inline Result zero(std::span<Vek32sc> dst) { return veksZero_32sc(dst.data(), detail::len(dst)); }
inline Result zero(ComplexSpan<Vek32fc> dst) { return veksZero_32fc(dst.data(), detail::len(dst)); }
inline Result set(Vek8u val, std::span<Vek8u> dst) { return veksSet_8u(val, dst.data(), detail::len(dst)); }
inline Result set(Vek16s val, std::span<Vek16s> dst) { return veksSet_16s(val, dst.data(), detail::len(dst)); }
inline Result set(Vek32s val, std::span<Vek32s> dst) { return veksSet_32s(val, dst.data(), detail::len(dst)); }
inline Result set(Vek32f val, std::span<Vek32f> dst) { return veksSet_32f(val, dst.data(), detail::len(dst)); }
inline Result set(Vek32sc val, std::span<Vek32sc> dst) { return veksSet_32sc(val, dst.data(), detail::len(dst)); }
inline Result set(Vek32fc val, ComplexSpan<Vek32fc> dst) { return veksSet_32fc(val, dst.data(), detail::len(dst)); }
inline Result flip(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksFlip_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result flip(std::span<Vek8u> srcDst) { return veksFlip_8u_I(srcDst.data(), detail::len(srcDst)); }
inline Result flip(std::span<const Vek16u> src, std::span<Vek16u> dst) { return veksFlip_16u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result flip(std::span<Vek16u> srcDst) { return veksFlip_16u_I(srcDst.data(), detail::len(srcDst)); }
inline Result flip(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksFlip_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result flip(std::span<Vek32f> srcDst) { return veksFlip_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result flip(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksFlip_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result flip(ComplexSpan<Vek32fc> srcDst) { return veksFlip_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result swapBytes(std::span<const Vek16u> src, std::span<Vek16u> dst) { return veksSwapBytes_16u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result swapBytes(std::span<Vek16u> srcDst) { return veksSwapBytes_16u_I(srcDst.data(), detail::len(srcDst)); }
inline Result swapBytes(std::span<const Vek24u> src, std::span<Vek24u> dst) { return veksSwapBytes_24u(detail::bytes(src.data()), detail::bytes(dst.data()), detail::len(src, dst)); }
inline Result swapBytes(std::span<Vek24u> srcDst) { return veksSwapBytes_24u_I(detail::bytes(srcDst.data()), detail::len(srcDst)); }
inline Result swapBytes(std::span<const Vek32u> src, std::span<Vek32u> dst) { return veksSwapBytes_32u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result swapBytes(std::span<Vek32u> srcDst) { return veksSwapBytes_32u_I(srcDst.data(), detail::len(srcDst)); }
inline Result swapBytes(std::span<const Vek64u> src, std::span<Vek64u> dst) { return veksSwapBytes_64u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result swapBytes(std::span<Vek64u> srcDst) { return veksSwapBytes_64u_I(srcDst.data(), detail::len(srcDst)); }
inline Result real(ComplexSpan<const Vek32fc> src, std::span<Vek32f> dstRe) { return veksReal_32fc(src.data(), dstRe.data(), detail::len(src, dstRe)); }
inline Result imag(ComplexSpan<const Vek32fc> src, std::span<Vek32f> dstIm) { return veksImag_32fc(src.data(), dstIm.data(), detail::len(src, dstIm)); }
inline Result cplxToReal(ComplexSpan<const Vek32fc> src, std::span<Vek32f> dstRe, std::span<Vek32f> dstIm) { return veksCplxToReal_32fc(src.data(), dstRe.data(), dstIm.data(), detail::len(src, dstRe, dstIm)); }
inline Result realToCplx(std::span<const Vek32f> srcRe, std::span<const Vek32f> srcIm, ComplexSpan<Vek32fc> dst) { return veksRealToCplx_32f(srcRe.data(), srcIm.data(), dst.data(), detail::len(srcRe, srcIm, dst)); }
inline Result conj(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksConj_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result conj(ComplexSpan<Vek32fc> srcDst) { return veksConj_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result conjFlip(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksConjFlip_32fc(src.data(), dst.data(), detail::len(src, dst)); }
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
inline Result add(std::span<const Vek8u> src1, std::span<const Vek8u> src2, std::span<Vek8u> dst, int scaleFactor) { return veksAdd_8u_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result add(std::span<const Vek8u> src, std::span<Vek8u> srcDst, int scaleFactor) { return veksAdd_8u_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result add(std::span<const Vek16s> src1, std::span<const Vek16s> src2, std::span<Vek16s> dst, int scaleFactor) { return veksAdd_16s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result add(std::span<const Vek16s> src, std::span<Vek16s> srcDst, int scaleFactor) { return veksAdd_16s_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result add(std::span<const Vek32s> src1, std::span<const Vek32s> src2, std::span<Vek32s> dst, int scaleFactor) { return veksAdd_32s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result add(std::span<const Vek32s> src, std::span<Vek32s> srcDst, int scaleFactor) { return veksAdd_32s_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result add(std::span<const Vek32sc> src1, std::span<const Vek32sc> src2, std::span<Vek32sc> dst, int scaleFactor) { return veksAdd_32sc_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result add(std::span<const Vek32sc> src, std::span<Vek32sc> srcDst, int scaleFactor) { return veksAdd_32sc_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result add(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> dst) { return veksAdd_32f(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result add(std::span<const Vek32f> src, std::span<Vek32f> srcDst) { return veksAdd_32f_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result add(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> dst) { return veksAdd_32fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result add(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> srcDst) { return veksAdd_32fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result sub(std::span<const Vek8u> src1, std::span<const Vek8u> src2, std::span<Vek8u> dst, int scaleFactor) { return veksSub_8u_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result sub(std::span<const Vek8u> src, std::span<Vek8u> srcDst, int scaleFactor) { return veksSub_8u_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result sub(std::span<const Vek16s> src1, std::span<const Vek16s> src2, std::span<Vek16s> dst, int scaleFactor) { return veksSub_16s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result sub(std::span<const Vek16s> src, std::span<Vek16s> srcDst, int scaleFactor) { return veksSub_16s_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result sub(std::span<const Vek32s> src1, std::span<const Vek32s> src2, std::span<Vek32s> dst, int scaleFactor) { return veksSub_32s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result sub(std::span<const Vek32s> src, std::span<Vek32s> srcDst, int scaleFactor) { return veksSub_32s_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result sub(std::span<const Vek32sc> src1, std::span<const Vek32sc> src2, std::span<Vek32sc> dst, int scaleFactor) { return veksSub_32sc_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result sub(std::span<const Vek32sc> src, std::span<Vek32sc> srcDst, int scaleFactor) { return veksSub_32sc_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result sub(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> dst) { return veksSub_32f(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result sub(std::span<const Vek32f> src, std::span<Vek32f> srcDst) { return veksSub_32f_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result sub(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> dst) { return veksSub_32fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result sub(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> srcDst) { return veksSub_32fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result mul(std::span<const Vek8u> src1, std::span<const Vek8u> src2, std::span<Vek8u> dst, int scaleFactor) { return veksMul_8u_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result mul(std::span<const Vek8u> src, std::span<Vek8u> srcDst, int scaleFactor) { return veksMul_8u_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result mul(std::span<const Vek16s> src1, std::span<const Vek16s> src2, std::span<Vek16s> dst, int scaleFactor) { return veksMul_16s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result mul(std::span<const Vek16s> src, std::span<Vek16s> srcDst, int scaleFactor) { return veksMul_16s_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result mul(std::span<const Vek32s> src1, std::span<const Vek32s> src2, std::span<Vek32s> dst, int scaleFactor) { return veksMul_32s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result mul(std::span<const Vek32s> src, std::span<Vek32s> srcDst, int scaleFactor) { return veksMul_32s_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result mul(std::span<const Vek32sc> src1, std::span<const Vek32sc> src2, std::span<Vek32sc> dst, int scaleFactor) { return veksMul_32sc_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result mul(std::span<const Vek32sc> src, std::span<Vek32sc> srcDst, int scaleFactor) { return veksMul_32sc_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result mul(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> dst) { return veksMul_32f(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result mul(std::span<const Vek32f> src, std::span<Vek32f> srcDst) { return veksMul_32f_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result mul(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> dst) { return veksMul_32fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result mul(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> srcDst) { return veksMul_32fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result mul(std::span<const Vek32f> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> dst) { return veksMul_32f32fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result mul(std::span<const Vek32f> src, ComplexSpan<Vek32fc> srcDst) { return veksMul_32f32fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result mul(std::span<const Vek32s> src1, std::span<const Vek32sc> src2, std::span<Vek32sc> dst, int scaleFactor) { return veksMul_32s32sc_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result mul(std::span<const Vek32s> src, std::span<Vek32sc> srcDst, int scaleFactor) { return veksMul_32s32sc_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result mulLow(std::span<const Vek32s> src1, std::span<const Vek32s> src2, std::span<Vek32s> dst, int scaleFactor) { return veksMul_Low_32s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result addC(std::span<const Vek8u> src, Vek8u val, std::span<Vek8u> dst, int scaleFactor) { return veksAddC_8u_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result addC(Vek8u val, std::span<Vek8u> srcDst, int scaleFactor) { return veksAddC_8u_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result addC(std::span<const Vek16s> src, Vek16s val, std::span<Vek16s> dst, int scaleFactor) { return veksAddC_16s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result addC(Vek16s val, std::span<Vek16s> srcDst, int scaleFactor) { return veksAddC_16s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result addC(std::span<const Vek32s> src, Vek32s val, std::span<Vek32s> dst, int scaleFactor) { return veksAddC_32s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result addC(Vek32s val, std::span<Vek32s> srcDst, int scaleFactor) { return veksAddC_32s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result addC(std::span<const Vek32sc> src, Vek32sc val, std::span<Vek32sc> dst, int scaleFactor) { return veksAddC_32sc_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result addC(Vek32sc val, std::span<Vek32sc> srcDst, int scaleFactor) { return veksAddC_32sc_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result addC(std::span<const Vek32f> src, Vek32f val, std::span<Vek32f> dst) { return veksAddC_32f(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result addC(Vek32f val, std::span<Vek32f> srcDst) { return veksAddC_32f_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result addC(ComplexSpan<const Vek32fc> src, Vek32fc val, ComplexSpan<Vek32fc> dst) { return veksAddC_32fc(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result addC(Vek32fc val, ComplexSpan<Vek32fc> srcDst) { return veksAddC_32fc_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result subC(std::span<const Vek8u> src, Vek8u val, std::span<Vek8u> dst, int scaleFactor) { return veksSubC_8u_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result subC(Vek8u val, std::span<Vek8u> srcDst, int scaleFactor) { return veksSubC_8u_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result subC(std::span<const Vek16s> src, Vek16s val, std::span<Vek16s> dst, int scaleFactor) { return veksSubC_16s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result subC(Vek16s val, std::span<Vek16s> srcDst, int scaleFactor) { return veksSubC_16s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result subC(std::span<const Vek32s> src, Vek32s val, std::span<Vek32s> dst, int scaleFactor) { return veksSubC_32s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result subC(Vek32s val, std::span<Vek32s> srcDst, int scaleFactor) { return veksSubC_32s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result subC(std::span<const Vek32sc> src, Vek32sc val, std::span<Vek32sc> dst, int scaleFactor) { return veksSubC_32sc_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result subC(Vek32sc val, std::span<Vek32sc> srcDst, int scaleFactor) { return veksSubC_32sc_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result subC(std::span<const Vek32f> src, Vek32f val, std::span<Vek32f> dst) { return veksSubC_32f(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result subC(Vek32f val, std::span<Vek32f> srcDst) { return veksSubC_32f_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result subC(ComplexSpan<const Vek32fc> src, Vek32fc val, ComplexSpan<Vek32fc> dst) { return veksSubC_32fc(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result subC(Vek32fc val, ComplexSpan<Vek32fc> srcDst) { return veksSubC_32fc_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result subCRev(std::span<const Vek8u> src, Vek8u val, std::span<Vek8u> dst, int scaleFactor) { return veksSubCRev_8u_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result subCRev(Vek8u val, std::span<Vek8u> srcDst, int scaleFactor) { return veksSubCRev_8u_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result subCRev(std::span<const Vek16s> src, Vek16s val, std::span<Vek16s> dst, int scaleFactor) { return veksSubCRev_16s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result subCRev(Vek16s val, std::span<Vek16s> srcDst, int scaleFactor) { return veksSubCRev_16s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result subCRev(std::span<const Vek32s> src, Vek32s val, std::span<Vek32s> dst, int scaleFactor) { return veksSubCRev_32s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result subCRev(Vek32s val, std::span<Vek32s> srcDst, int scaleFactor) { return veksSubCRev_32s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result subCRev(std::span<const Vek32sc> src, Vek32sc val, std::span<Vek32sc> dst, int scaleFactor) { return veksSubCRev_32sc_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result subCRev(Vek32sc val, std::span<Vek32sc> srcDst, int scaleFactor) { return veksSubCRev_32sc_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result subCRev(std::span<const Vek32f> src, Vek32f val, std::span<Vek32f> dst) { return veksSubCRev_32f(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result subCRev(Vek32f val, std::span<Vek32f> srcDst) { return veksSubCRev_32f_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result subCRev(ComplexSpan<const Vek32fc> src, Vek32fc val, ComplexSpan<Vek32fc> dst) { return veksSubCRev_32fc(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result subCRev(Vek32fc val, ComplexSpan<Vek32fc> srcDst) { return veksSubCRev_32fc_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result mulC(std::span<const Vek8u> src, Vek8u val, std::span<Vek8u> dst, int scaleFactor) { return veksMulC_8u_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result mulC(Vek8u val, std::span<Vek8u> srcDst, int scaleFactor) { return veksMulC_8u_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result mulC(std::span<const Vek16s> src, Vek16s val, std::span<Vek16s> dst, int scaleFactor) { return veksMulC_16s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result mulC(Vek16s val, std::span<Vek16s> srcDst, int scaleFactor) { return veksMulC_16s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result mulC(std::span<const Vek32s> src, Vek32s val, std::span<Vek32s> dst, int scaleFactor) { return veksMulC_32s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result mulC(Vek32s val, std::span<Vek32s> srcDst, int scaleFactor) { return veksMulC_32s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result mulC(std::span<const Vek32sc> src, Vek32sc val, std::span<Vek32sc> dst, int scaleFactor) { return veksMulC_32sc_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result mulC(Vek32sc val, std::span<Vek32sc> srcDst, int scaleFactor) { return veksMulC_32sc_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result mulC(std::span<const Vek32f> src, Vek32f val, std::span<Vek32f> dst) { return veksMulC_32f(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result mulC(Vek32f val, std::span<Vek32f> srcDst) { return veksMulC_32f_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result mulC(ComplexSpan<const Vek32fc> src, Vek32fc val, ComplexSpan<Vek32fc> dst) { return veksMulC_32fc(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result mulC(Vek32fc val, ComplexSpan<Vek32fc> srcDst) { return veksMulC_32fc_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result addProduct(std::span<const Vek32s> src1, std::span<const Vek32s> src2, std::span<Vek32s> srcDst, int scaleFactor) { return veksAddProduct_32s_Sfs(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst), scaleFactor); }
inline Result addProduct(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> srcDst) { return veksAddProduct_32f(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result addProduct(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> srcDst) { return veksAddProduct_32fc(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result addProductC(std::span<const Vek32f> src, Vek32f val, std::span<Vek32f> srcDst) { return veksAddProductC_32f(src.data(), val, srcDst.data(), detail::len(src, srcDst)); }
inline Result div(std::span<const Vek8u> src1, std::span<const Vek8u> src2, std::span<Vek8u> dst, int scaleFactor) { return veksDiv_8u_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result div(std::span<const Vek8u> src, std::span<Vek8u> srcDst, int scaleFactor) { return veksDiv_8u_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result div(std::span<const Vek16s> src1, std::span<const Vek16s> src2, std::span<Vek16s> dst, int scaleFactor) { return veksDiv_16s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result div(std::span<const Vek16s> src, std::span<Vek16s> srcDst, int scaleFactor) { return veksDiv_16s_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result div(std::span<const Vek32s> src1, std::span<const Vek32s> src2, std::span<Vek32s> dst, int scaleFactor) { return veksDiv_32s_Sfs(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst), scaleFactor); }
inline Result div(std::span<const Vek32s> src, std::span<Vek32s> srcDst, int scaleFactor) { return veksDiv_32s_ISfs(src.data(), srcDst.data(), detail::len(src, srcDst), scaleFactor); }
inline Result div(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> dst) { return veksDiv_32f(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result div(std::span<const Vek32f> src, std::span<Vek32f> srcDst) { return veksDiv_32f_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result div(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> dst) { return veksDiv_32fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result div(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> srcDst) { return veksDiv_32fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result divC(std::span<const Vek8u> src, Vek8u val, std::span<Vek8u> dst, int scaleFactor) { return veksDivC_8u_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result divC(Vek8u val, std::span<Vek8u> srcDst, int scaleFactor) { return veksDivC_8u_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result divC(std::span<const Vek16s> src, Vek16s val, std::span<Vek16s> dst, int scaleFactor) { return veksDivC_16s_Sfs(src.data(), val, dst.data(), detail::len(src, dst), scaleFactor); }
inline Result divC(Vek16s val, std::span<Vek16s> srcDst, int scaleFactor) { return veksDivC_16s_ISfs(val, srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result divC(std::span<const Vek32f> src, Vek32f val, std::span<Vek32f> dst) { return veksDivC_32f(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result divC(Vek32f val, std::span<Vek32f> srcDst) { return veksDivC_32f_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result divC(ComplexSpan<const Vek32fc> src, Vek32fc val, ComplexSpan<Vek32fc> dst) { return veksDivC_32fc(src.data(), val, dst.data(), detail::len(src, dst)); }
inline Result divC(Vek32fc val, ComplexSpan<Vek32fc> srcDst) { return veksDivC_32fc_I(val, srcDst.data(), detail::len(srcDst)); }
inline Result abs(std::span<const Vek16s> src, std::span<Vek16s> dst) { return veksAbs_16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result abs(std::span<Vek16s> srcDst) { return veksAbs_16s_I(srcDst.data(), detail::len(srcDst)); }
inline Result abs(std::span<const Vek32s> src, std::span<Vek32s> dst) { return veksAbs_32s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result abs(std::span<Vek32s> srcDst) { return veksAbs_32s_I(srcDst.data(), detail::len(srcDst)); }
inline Result abs(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksAbs_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result abs(std::span<Vek32f> srcDst) { return veksAbs_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result sqr(std::span<const Vek8u> src, std::span<Vek8u> dst, int scaleFactor) { return veksSqr_8u_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result sqr(std::span<Vek8u> srcDst, int scaleFactor) { return veksSqr_8u_ISfs(srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result sqr(std::span<const Vek16s> src, std::span<Vek16s> dst, int scaleFactor) { return veksSqr_16s_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result sqr(std::span<Vek16s> srcDst, int scaleFactor) { return veksSqr_16s_ISfs(srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result sqr(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksSqr_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result sqr(std::span<Vek32f> srcDst) { return veksSqr_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result sqr(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksSqr_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result sqr(ComplexSpan<Vek32fc> srcDst) { return veksSqr_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result sqrt(std::span<const Vek8u> src, std::span<Vek8u> dst, int scaleFactor) { return veksSqrt_8u_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result sqrt(std::span<Vek8u> srcDst, int scaleFactor) { return veksSqrt_8u_ISfs(srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result sqrt(std::span<const Vek16s> src, std::span<Vek16s> dst, int scaleFactor) { return veksSqrt_16s_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result sqrt(std::span<Vek16s> srcDst, int scaleFactor) { return veksSqrt_16s_ISfs(srcDst.data(), detail::len(srcDst), scaleFactor); }
inline Result sqrt(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksSqrt_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result sqrt(std::span<Vek32f> srcDst) { return veksSqrt_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result sqrt(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksSqrt_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result sqrt(ComplexSpan<Vek32fc> srcDst) { return veksSqrt_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result magnitude(std::span<const Vek32f> srcRe, std::span<const Vek32f> srcIm, std::span<Vek32f> dst) { return veksMagnitude_32f(srcRe.data(), srcIm.data(), dst.data(), detail::len(srcRe, srcIm, dst)); }
inline Result magnitude(ComplexSpan<const Vek32fc> src, std::span<Vek32f> dst) { return veksMagnitude_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result phase(std::span<const Vek32f> srcRe, std::span<const Vek32f> srcIm, std::span<Vek32f> dst) { return veksPhase_32f(srcRe.data(), srcIm.data(), dst.data(), detail::len(srcRe, srcIm, dst)); }
inline Result phase(ComplexSpan<const Vek32fc> src, std::span<Vek32f> dst) { return veksPhase_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result powerSpectrum(std::span<const Vek32f> srcRe, std::span<const Vek32f> srcIm, std::span<Vek32f> dst) { return veksPowerSpectrum_32f(srcRe.data(), srcIm.data(), dst.data(), detail::len(srcRe, srcIm, dst)); }
inline Result powerSpectrum(ComplexSpan<const Vek32fc> src, std::span<Vek32f> dst) { return veksPowerSpectrum_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result cartToPolar(std::span<const Vek32f> srcRe, std::span<const Vek32f> srcIm, std::span<Vek32f> dstMagn, std::span<Vek32f> dstPhase) { return veksCartToPolar_32f(srcRe.data(), srcIm.data(), dstMagn.data(), dstPhase.data(), detail::len(srcRe, srcIm, dstMagn, dstPhase)); }
inline Result cartToPolar(ComplexSpan<const Vek32fc> src, std::span<Vek32f> dstMagn, std::span<Vek32f> dstPhase) { return veksCartToPolar_32fc(src.data(), dstMagn.data(), dstPhase.data(), detail::len(src, dstMagn, dstPhase)); }
inline Result polarToCart(std::span<const Vek32f> srcMagn, std::span<const Vek32f> srcPhase, std::span<Vek32f> dstRe, std::span<Vek32f> dstIm) { return veksPolarToCart_32f(srcMagn.data(), srcPhase.data(), dstRe.data(), dstIm.data(), detail::len(srcMagn, srcPhase, dstRe, dstIm)); }
inline Result polarToCart(std::span<const Vek32f> srcMagn, std::span<const Vek32f> srcPhase, ComplexSpan<Vek32fc> dst) { return veksPolarToCart_32fc(srcMagn.data(), srcPhase.data(), dst.data(), detail::len(srcMagn, srcPhase, dst)); }
inline Result normalize(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f vSub, Vek32f vDiv) { return veksNormalize_32f(src.data(), dst.data(), detail::len(src, dst), vSub, vDiv); }
inline Result normalize(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32fc vSub, Vek32f vDiv) { return veksNormalize_32fc(src.data(), dst.data(), detail::len(src, dst), vSub, vDiv); }
inline Result convert(std::span<const Vek8s> src, std::span<Vek16s> dst) { return veksConvert_8s16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek16s> src, std::span<Vek32s> dst) { return veksConvert_16s32s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek24u> src, std::span<Vek32u> dst) { return veksConvert_24u32u(detail::bytes(src.data()), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek24s> src, std::span<Vek32s> dst) { return veksConvert_24s32s(detail::bytes(src.data()), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek32s> src, std::span<Vek16s> dst) { return veksConvert_32s16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek8u> src, std::span<Vek32f> dst) { return veksConvert_8u32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek8s> src, std::span<Vek32f> dst) { return veksConvert_8s32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert_16u32f(std::span<const Vek16u> src, std::span<Vek32f> dst) { return veksConvert_16u32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek16s> src, std::span<Vek32f> dst) { return veksConvert_16s32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek24u> src, std::span<Vek32f> dst) { return veksConvert_24u32f(detail::bytes(src.data()), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek24s> src, std::span<Vek32f> dst) { return veksConvert_24s32f(detail::bytes(src.data()), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek32s> src, std::span<Vek32f> dst) { return veksConvert_32s32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek32s> src, std::span<Vek64f> dst) { return veksConvert_32s64f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek64f> dst) { return veksConvert_32f64f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek64f> src, std::span<Vek32f> dst) { return veksConvert_64f32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek16s> src, std::span<Vek32f> dst, int scaleFactor) { return veksConvert_16s32f_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result convert(std::span<const Vek32s> src, std::span<Vek32f> dst, int scaleFactor) { return veksConvert_32s32f_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result convert(std::span<const Vek16s> src, std::span<Vek64f> dst, int scaleFactor) { return veksConvert_16s64f_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result convert(std::span<const Vek32s> src, std::span<Vek64f> dst, int scaleFactor) { return veksConvert_32s64f_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result convert(std::span<const Vek32s> src, std::span<Vek16s> dst, int scaleFactor) { return veksConvert_32s16s_Sfs(src.data(), dst.data(), detail::len(src, dst), scaleFactor); }
inline Result convert(std::span<const Vek32s> src, std::span<Vek24s> dst, int scaleFactor) { return veksConvert_32s24s_Sfs(src.data(), detail::bytes(dst.data()), detail::len(src, dst), scaleFactor); }
inline Result convert(std::span<const Vek32u> src, std::span<Vek24u> dst, int scaleFactor) { return veksConvert_32u24u_Sfs(src.data(), detail::bytes(dst.data()), detail::len(src, dst), scaleFactor); }
inline Result convert(std::span<const Vek64s> src, std::span<Vek32s> dst, VekRoundMode rndMode, int scaleFactor) { return veksConvert_64s32s_Sfs(src.data(), dst.data(), detail::len(src, dst), rndMode, scaleFactor); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek8s> dst, VekRoundMode rndMode, int scaleFactor) { return veksConvert_32f8s_Sfs(src.data(), dst.data(), detail::len(src, dst), rndMode, scaleFactor); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek8u> dst, VekRoundMode rndMode, int scaleFactor) { return veksConvert_32f8u_Sfs(src.data(), dst.data(), detail::len(src, dst), rndMode, scaleFactor); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek16s> dst, VekRoundMode rndMode, int scaleFactor) { return veksConvert_32f16s_Sfs(src.data(), dst.data(), detail::len(src, dst), rndMode, scaleFactor); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek16u> dst, VekRoundMode rndMode, int scaleFactor) { return veksConvert_32f16u_Sfs(src.data(), dst.data(), detail::len(src, dst), rndMode, scaleFactor); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek32s> dst, VekRoundMode rndMode, int scaleFactor) { return veksConvert_32f32s_Sfs(src.data(), dst.data(), detail::len(src, dst), rndMode, scaleFactor); }
inline Result convert(std::span<const Vek64f> src, std::span<Vek32s> dst, VekRoundMode rndMode, int scaleFactor) { return veksConvert_64f32s_Sfs(src.data(), dst.data(), detail::len(src, dst), rndMode, scaleFactor); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek24s> dst, int scaleFactor) { return veksConvert_32f24s_Sfs(src.data(), detail::bytes(dst.data()), detail::len(src, dst), scaleFactor); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek24u> dst, int scaleFactor) { return veksConvert_32f24u_Sfs(src.data(), detail::bytes(dst.data()), detail::len(src, dst), scaleFactor); }
inline Result convert_16f32f(std::span<const Vek16f> src, std::span<Vek32f> dst) { return veksConvert_16f32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result convert(std::span<const Vek16f> src, std::span<Vek16s> dst, VekRoundMode rndMode, int scaleFactor) { return veksConvert_16f16s_Sfs(src.data(), dst.data(), detail::len(src, dst), rndMode, scaleFactor); }
inline Result convert(std::span<const Vek32f> src, std::span<Vek16f> dst, VekRoundMode rndMode) { return veksConvert_32f16f(src.data(), dst.data(), detail::len(src, dst), rndMode); }
inline Result convert(std::span<const Vek16s> src, std::span<Vek16f> dst, VekRoundMode rndMode) { return veksConvert_16s16f(src.data(), dst.data(), detail::len(src, dst), rndMode); }
inline Result threshold(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f level, VekCompareOp relOp) { return veksThreshold_32f(src.data(), dst.data(), detail::len(src, dst), level, relOp); }
inline Result threshold(std::span<Vek32f> srcDst, Vek32f level, VekCompareOp relOp) { return veksThreshold_32f_I(srcDst.data(), detail::len(srcDst), level, relOp); }
inline Result threshold(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32f level, VekCompareOp relOp) { return veksThreshold_32fc(src.data(), dst.data(), detail::len(src, dst), level, relOp); }
inline Result threshold(ComplexSpan<Vek32fc> srcDst, Vek32f level, VekCompareOp relOp) { return veksThreshold_32fc_I(srcDst.data(), detail::len(srcDst), level, relOp); }
inline Result thresholdLT(std::span<const Vek16s> src, std::span<Vek16s> dst, Vek16s level) { return veksThreshold_LT_16s(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdLT(std::span<Vek16s> srcDst, Vek16s level) { return veksThreshold_LT_16s_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdLT(std::span<const Vek32s> src, std::span<Vek32s> dst, Vek32s level) { return veksThreshold_LT_32s(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdLT(std::span<Vek32s> srcDst, Vek32s level) { return veksThreshold_LT_32s_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdLT(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f level) { return veksThreshold_LT_32f(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdLT(std::span<Vek32f> srcDst, Vek32f level) { return veksThreshold_LT_32f_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdLT(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32f level) { return veksThreshold_LT_32fc(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdLT(ComplexSpan<Vek32fc> srcDst, Vek32f level) { return veksThreshold_LT_32fc_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdGT(std::span<const Vek16s> src, std::span<Vek16s> dst, Vek16s level) { return veksThreshold_GT_16s(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdGT(std::span<Vek16s> srcDst, Vek16s level) { return veksThreshold_GT_16s_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdGT(std::span<const Vek32s> src, std::span<Vek32s> dst, Vek32s level) { return veksThreshold_GT_32s(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdGT(std::span<Vek32s> srcDst, Vek32s level) { return veksThreshold_GT_32s_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdGT(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f level) { return veksThreshold_GT_32f(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdGT(std::span<Vek32f> srcDst, Vek32f level) { return veksThreshold_GT_32f_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdGT(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32f level) { return veksThreshold_GT_32fc(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdGT(ComplexSpan<Vek32fc> srcDst, Vek32f level) { return veksThreshold_GT_32fc_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdLTVal(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f level, Vek32f value) { return veksThreshold_LTVal_32f(src.data(), dst.data(), detail::len(src, dst), level, value); }
inline Result thresholdLTVal(std::span<Vek32f> srcDst, Vek32f level, Vek32f value) { return veksThreshold_LTVal_32f_I(srcDst.data(), detail::len(srcDst), level, value); }
inline Result thresholdLTVal(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32f level, Vek32fc value) { return veksThreshold_LTVal_32fc(src.data(), dst.data(), detail::len(src, dst), level, value); }
inline Result thresholdLTVal(ComplexSpan<Vek32fc> srcDst, Vek32f level, Vek32fc value) { return veksThreshold_LTVal_32fc_I(srcDst.data(), detail::len(srcDst), level, value); }
inline Result thresholdGTVal(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f level, Vek32f value) { return veksThreshold_GTVal_32f(src.data(), dst.data(), detail::len(src, dst), level, value); }
inline Result thresholdGTVal(std::span<Vek32f> srcDst, Vek32f level, Vek32f value) { return veksThreshold_GTVal_32f_I(srcDst.data(), detail::len(srcDst), level, value); }
inline Result thresholdGTVal(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32f level, Vek32fc value) { return veksThreshold_GTVal_32fc(src.data(), dst.data(), detail::len(src, dst), level, value); }
inline Result thresholdGTVal(ComplexSpan<Vek32fc> srcDst, Vek32f level, Vek32fc value) { return veksThreshold_GTVal_32fc_I(srcDst.data(), detail::len(srcDst), level, value); }
inline Result thresholdLTValGTVal(std::span<const Vek32s> src, std::span<Vek32s> dst, Vek32s levelLT, Vek32s valueLT, Vek32s levelGT, Vek32s valueGT) { return veksThreshold_LTValGTVal_32s(src.data(), dst.data(), detail::len(src, dst), levelLT, valueLT, levelGT, valueGT); }
inline Result thresholdLTValGTVal(std::span<Vek32s> srcDst, Vek32s levelLT, Vek32s valueLT, Vek32s levelGT, Vek32s valueGT) { return veksThreshold_LTValGTVal_32s_I(srcDst.data(), detail::len(srcDst), levelLT, valueLT, levelGT, valueGT); }
inline Result thresholdLTValGTVal(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f levelLT, Vek32f valueLT, Vek32f levelGT, Vek32f valueGT) { return veksThreshold_LTValGTVal_32f(src.data(), dst.data(), detail::len(src, dst), levelLT, valueLT, levelGT, valueGT); }
inline Result thresholdLTValGTVal(std::span<Vek32f> srcDst, Vek32f levelLT, Vek32f valueLT, Vek32f levelGT, Vek32f valueGT) { return veksThreshold_LTValGTVal_32f_I(srcDst.data(), detail::len(srcDst), levelLT, valueLT, levelGT, valueGT); }
inline Result thresholdLTAbs(std::span<const Vek32s> src, std::span<Vek32s> dst, Vek32s level) { return veksThreshold_LTAbs_32s(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdLTAbs(std::span<Vek32s> srcDst, Vek32s level) { return veksThreshold_LTAbs_32s_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdLTAbs(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f level) { return veksThreshold_LTAbs_32f(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdLTAbs(std::span<Vek32f> srcDst, Vek32f level) { return veksThreshold_LTAbs_32f_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdGTAbs(std::span<const Vek32s> src, std::span<Vek32s> dst, Vek32s level) { return veksThreshold_GTAbs_32s(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdGTAbs(std::span<Vek32s> srcDst, Vek32s level) { return veksThreshold_GTAbs_32s_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdGTAbs(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f level) { return veksThreshold_GTAbs_32f(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdGTAbs(std::span<Vek32f> srcDst, Vek32f level) { return veksThreshold_GTAbs_32f_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdLTInv(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f level) { return veksThreshold_LTInv_32f(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdLTInv(std::span<Vek32f> srcDst, Vek32f level) { return veksThreshold_LTInv_32f_I(srcDst.data(), detail::len(srcDst), level); }
inline Result thresholdLTInv(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32f level) { return veksThreshold_LTInv_32fc(src.data(), dst.data(), detail::len(src, dst), level); }
inline Result thresholdLTInv(ComplexSpan<Vek32fc> srcDst, Vek32f level) { return veksThreshold_LTInv_32fc_I(srcDst.data(), detail::len(srcDst), level); }
inline Result aLawToLin(std::span<const Vek8u> src, std::span<Vek16s> dst) { return veksALawToLin_8u16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result aLawToLin(std::span<const Vek8u> src, std::span<Vek32f> dst) { return veksALawToLin_8u32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result muLawToLin(std::span<const Vek8u> src, std::span<Vek16s> dst) { return veksMuLawToLin_8u16s(src.data(), dst.data(), detail::len(src, dst)); }
inline Result muLawToLin(std::span<const Vek8u> src, std::span<Vek32f> dst) { return veksMuLawToLin_8u32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result linToALaw(std::span<const Vek16s> src, std::span<Vek8u> dst) { return veksLinToALaw_16s8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result linToALaw(std::span<const Vek32f> src, std::span<Vek8u> dst) { return veksLinToALaw_32f8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result linToMuLaw(std::span<const Vek16s> src, std::span<Vek8u> dst) { return veksLinToMuLaw_16s8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result linToMuLaw(std::span<const Vek32f> src, std::span<Vek8u> dst) { return veksLinToMuLaw_32f8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result aLawToMuLaw(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksALawToMuLaw_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result muLawToALaw(std::span<const Vek8u> src, std::span<Vek8u> dst) { return veksMuLawToALaw_8u(src.data(), dst.data(), detail::len(src, dst)); }
inline Result sum(std::span<const Vek32f> src, Vek32f* pSum, VekHintAlgorithm hint) { return veksSum_32f(src.data(), detail::len(src), pSum, hint); }
inline Result sum(ComplexSpan<const Vek32fc> src, Vek32fc* pSum, VekHintAlgorithm hint) { return veksSum_32fc(src.data(), detail::len(src), pSum, hint); }
inline Result sum(std::span<const Vek16s> src, Vek32s* pSum, int scaleFactor) { return veksSum_16s32s_Sfs(src.data(), detail::len(src), pSum, scaleFactor); }
inline Result sum(std::span<const Vek32s> src, Vek32s* pSum, int scaleFactor) { return veksSum_32s_Sfs(src.data(), detail::len(src), pSum, scaleFactor); }
inline Result mean(std::span<const Vek32f> src, Vek32f* pMean, VekHintAlgorithm hint) { return veksMean_32f(src.data(), detail::len(src), pMean, hint); }
inline Result mean(ComplexSpan<const Vek32fc> src, Vek32fc* pMean, VekHintAlgorithm hint) { return veksMean_32fc(src.data(), detail::len(src), pMean, hint); }
inline Result mean(std::span<const Vek32s> src, Vek32s* pMean, int scaleFactor) { return veksMean_32s_Sfs(src.data(), detail::len(src), pMean, scaleFactor); }
inline Result stdDev(std::span<const Vek32f> src, Vek32f* pStdDev, VekHintAlgorithm hint) { return veksStdDev_32f(src.data(), detail::len(src), pStdDev, hint); }
inline Result meanStdDev(std::span<const Vek32f> src, Vek32f* pMean, Vek32f* pStdDev, VekHintAlgorithm hint) { return veksMeanStdDev_32f(src.data(), detail::len(src), pMean, pStdDev, hint); }
inline Result max(std::span<const Vek16s> src, Vek16s* pMax) { return veksMax_16s(src.data(), detail::len(src), pMax); }
inline Result max(std::span<const Vek32s> src, Vek32s* pMax) { return veksMax_32s(src.data(), detail::len(src), pMax); }
inline Result max(std::span<const Vek32f> src, Vek32f* pMax) { return veksMax_32f(src.data(), detail::len(src), pMax); }
inline Result min(std::span<const Vek16s> src, Vek16s* pMin) { return veksMin_16s(src.data(), detail::len(src), pMin); }
inline Result min(std::span<const Vek32s> src, Vek32s* pMin) { return veksMin_32s(src.data(), detail::len(src), pMin); }
inline Result min(std::span<const Vek32f> src, Vek32f* pMin) { return veksMin_32f(src.data(), detail::len(src), pMin); }
inline Result minMax(std::span<const Vek16s> src, Vek16s* pMin, Vek16s* pMax) { return veksMinMax_16s(src.data(), detail::len(src), pMin, pMax); }
inline Result minMax(std::span<const Vek32s> src, Vek32s* pMin, Vek32s* pMax) { return veksMinMax_32s(src.data(), detail::len(src), pMin, pMax); }
inline Result minMax(std::span<const Vek32f> src, Vek32f* pMin, Vek32f* pMax) { return veksMinMax_32f(src.data(), detail::len(src), pMin, pMax); }
inline Result maxIndx(std::span<const Vek16s> src, Vek16s* pMax, int* pIndx) { return veksMaxIndx_16s(src.data(), detail::len(src), pMax, pIndx); }
inline Result maxIndx(std::span<const Vek32s> src, Vek32s* pMax, int* pIndx) { return veksMaxIndx_32s(src.data(), detail::len(src), pMax, pIndx); }
inline Result maxIndx(std::span<const Vek32f> src, Vek32f* pMax, int* pIndx) { return veksMaxIndx_32f(src.data(), detail::len(src), pMax, pIndx); }
inline Result minIndx(std::span<const Vek16s> src, Vek16s* pMin, int* pIndx) { return veksMinIndx_16s(src.data(), detail::len(src), pMin, pIndx); }
inline Result minIndx(std::span<const Vek32s> src, Vek32s* pMin, int* pIndx) { return veksMinIndx_32s(src.data(), detail::len(src), pMin, pIndx); }
inline Result minIndx(std::span<const Vek32f> src, Vek32f* pMin, int* pIndx) { return veksMinIndx_32f(src.data(), detail::len(src), pMin, pIndx); }
inline Result minMaxIndx(std::span<const Vek16s> src, Vek16s* pMin, int* pMinIndx, Vek16s* pMax, int* pMaxIndx) { return veksMinMaxIndx_16s(src.data(), detail::len(src), pMin, pMinIndx, pMax, pMaxIndx); }
inline Result minMaxIndx(std::span<const Vek32s> src, Vek32s* pMin, int* pMinIndx, Vek32s* pMax, int* pMaxIndx) { return veksMinMaxIndx_32s(src.data(), detail::len(src), pMin, pMinIndx, pMax, pMaxIndx); }
inline Result minMaxIndx(std::span<const Vek32f> src, Vek32f* pMin, int* pMinIndx, Vek32f* pMax, int* pMaxIndx) { return veksMinMaxIndx_32f(src.data(), detail::len(src), pMin, pMinIndx, pMax, pMaxIndx); }
inline Result maxAbs(std::span<const Vek32s> src, Vek32s* pMaxAbs) { return veksMaxAbs_32s(src.data(), detail::len(src), pMaxAbs); }
inline Result minAbs(std::span<const Vek32s> src, Vek32s* pMinAbs) { return veksMinAbs_32s(src.data(), detail::len(src), pMinAbs); }
inline Result maxAbsIndx(std::span<const Vek32s> src, Vek32s* pMaxAbs, int* pIndx) { return veksMaxAbsIndx_32s(src.data(), detail::len(src), pMaxAbs, pIndx); }
inline Result minAbsIndx(std::span<const Vek32s> src, Vek32s* pMinAbs, int* pIndx) { return veksMinAbsIndx_32s(src.data(), detail::len(src), pMinAbs, pIndx); }
inline Result normInf(std::span<const Vek32f> src, Vek32f* pNorm) { return veksNorm_Inf_32f(src.data(), detail::len(src), pNorm); }
inline Result normInf(ComplexSpan<const Vek32fc> src, Vek32f* pNorm) { return veksNorm_Inf_32fc32f(src.data(), detail::len(src), pNorm); }
inline Result normL1(std::span<const Vek32f> src, Vek32f* pNorm) { return veksNorm_L1_32f(src.data(), detail::len(src), pNorm); }
inline Result normL1(ComplexSpan<const Vek32fc> src, Vek64f* pNorm) { return veksNorm_L1_32fc64f(src.data(), detail::len(src), pNorm); }
inline Result normL2(std::span<const Vek32f> src, Vek32f* pNorm) { return veksNorm_L2_32f(src.data(), detail::len(src), pNorm); }
inline Result normL2(ComplexSpan<const Vek32fc> src, Vek64f* pNorm) { return veksNorm_L2_32fc64f(src.data(), detail::len(src), pNorm); }
inline Result normDiffInf(std::span<const Vek32f> src1, std::span<const Vek32f> src2, Vek32f* pNorm) { return veksNormDiff_Inf_32f(src1.data(), src2.data(), detail::len(src1, src2), pNorm); }
inline Result normDiffInf(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, Vek32f* pNorm) { return veksNormDiff_Inf_32fc32f(src1.data(), src2.data(), detail::len(src1, src2), pNorm); }
inline Result normDiffL1(std::span<const Vek32f> src1, std::span<const Vek32f> src2, Vek32f* pNorm) { return veksNormDiff_L1_32f(src1.data(), src2.data(), detail::len(src1, src2), pNorm); }
inline Result normDiffL1(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, Vek64f* pNorm) { return veksNormDiff_L1_32fc64f(src1.data(), src2.data(), detail::len(src1, src2), pNorm); }
inline Result normDiffL2(std::span<const Vek32f> src1, std::span<const Vek32f> src2, Vek32f* pNorm) { return veksNormDiff_L2_32f(src1.data(), src2.data(), detail::len(src1, src2), pNorm); }
inline Result normDiffL2(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, Vek64f* pNorm) { return veksNormDiff_L2_32fc64f(src1.data(), src2.data(), detail::len(src1, src2), pNorm); }
inline Result countInRange(std::span<const Vek32s> src, int* pCounts, Vek32s lowerBound, Vek32s upperBound) { return veksCountInRange_32s(src.data(), detail::len(src), pCounts, lowerBound, upperBound); }
inline Result dotProd(std::span<const Vek32f> src1, std::span<const Vek32f> src2, Vek32f* pDp) { return veksDotProd_32f(src1.data(), src2.data(), detail::len(src1, src2), pDp); }
inline Result dotProd(std::span<const Vek32f> src1, std::span<const Vek32f> src2, Vek64f* pDp) { return veksDotProd_32f64f(src1.data(), src2.data(), detail::len(src1, src2), pDp); }
inline Result dotProd(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, Vek32fc* pDp) { return veksDotProd_32fc(src1.data(), src2.data(), detail::len(src1, src2), pDp); }
inline Result dotProd(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, Vek64fc* pDp) { return veksDotProd_32fc64fc(src1.data(), src2.data(), detail::len(src1, src2), pDp); }
inline Result dotProd(std::span<const Vek32f> src1, ComplexSpan<const Vek32fc> src2, Vek32fc* pDp) { return veksDotProd_32f32fc(src1.data(), src2.data(), detail::len(src1, src2), pDp); }
inline Result dotProd(std::span<const Vek32f> src1, ComplexSpan<const Vek32fc> src2, Vek64fc* pDp) { return veksDotProd_32f32fc64fc(src1.data(), src2.data(), detail::len(src1, src2), pDp); }
inline Result dotProd(std::span<const Vek32s> src1, std::span<const Vek32s> src2, Vek32s* pDp, int scaleFactor) { return veksDotProd_32s_Sfs(src1.data(), src2.data(), detail::len(src1, src2), pDp, scaleFactor); }
inline Result dotProd(std::span<const Vek32sc> src1, std::span<const Vek32sc> src2, Vek32sc* pDp, int scaleFactor) { return veksDotProd_32sc_Sfs(src1.data(), src2.data(), detail::len(src1, src2), pDp, scaleFactor); }
inline Result dotProd(std::span<const Vek32s> src1, std::span<const Vek32sc> src2, Vek32sc* pDp, int scaleFactor) { return veksDotProd_32s32sc_Sfs(src1.data(), src2.data(), detail::len(src1, src2), pDp, scaleFactor); }
inline Result sortAscend(std::span<Vek8u> srcDst) { return veksSortAscend_8u_I(srcDst.data(), detail::len(srcDst)); }
inline Result sortAscend(std::span<Vek16s> srcDst) { return veksSortAscend_16s_I(srcDst.data(), detail::len(srcDst)); }
inline Result sortAscend(std::span<Vek32s> srcDst) { return veksSortAscend_32s_I(srcDst.data(), detail::len(srcDst)); }
inline Result sortAscend(std::span<Vek32f> srcDst) { return veksSortAscend_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result sortDescend(std::span<Vek8u> srcDst) { return veksSortDescend_8u_I(srcDst.data(), detail::len(srcDst)); }
inline Result sortDescend(std::span<Vek16s> srcDst) { return veksSortDescend_16s_I(srcDst.data(), detail::len(srcDst)); }
inline Result sortDescend(std::span<Vek32s> srcDst) { return veksSortDescend_32s_I(srcDst.data(), detail::len(srcDst)); }
inline Result sortDescend(std::span<Vek32f> srcDst) { return veksSortDescend_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result sortIndexAscend(std::span<Vek8u> srcDst, std::span<int> dstIdx) { return veksSortIndexAscend_8u_I(srcDst.data(), dstIdx.data(), detail::len(srcDst, dstIdx)); }
inline Result sortIndexAscend(std::span<Vek16s> srcDst, std::span<int> dstIdx) { return veksSortIndexAscend_16s_I(srcDst.data(), dstIdx.data(), detail::len(srcDst, dstIdx)); }
inline Result sortIndexAscend(std::span<Vek32s> srcDst, std::span<int> dstIdx) { return veksSortIndexAscend_32s_I(srcDst.data(), dstIdx.data(), detail::len(srcDst, dstIdx)); }
inline Result sortIndexAscend(std::span<Vek32f> srcDst, std::span<int> dstIdx) { return veksSortIndexAscend_32f_I(srcDst.data(), dstIdx.data(), detail::len(srcDst, dstIdx)); }
inline Result sortIndexDescend(std::span<Vek8u> srcDst, std::span<int> dstIdx) { return veksSortIndexDescend_8u_I(srcDst.data(), dstIdx.data(), detail::len(srcDst, dstIdx)); }
inline Result sortIndexDescend(std::span<Vek16s> srcDst, std::span<int> dstIdx) { return veksSortIndexDescend_16s_I(srcDst.data(), dstIdx.data(), detail::len(srcDst, dstIdx)); }
inline Result sortIndexDescend(std::span<Vek32s> srcDst, std::span<int> dstIdx) { return veksSortIndexDescend_32s_I(srcDst.data(), dstIdx.data(), detail::len(srcDst, dstIdx)); }
inline Result sortIndexDescend(std::span<Vek32f> srcDst, std::span<int> dstIdx) { return veksSortIndexDescend_32f_I(srcDst.data(), dstIdx.data(), detail::len(srcDst, dstIdx)); }
inline Result toneDirect(std::span<Vek32f> dst, Vek32f magn, Vek32f rFreq, Vek32f* pPhase, VekHintAlgorithm hint) { return veksTone_Direct_32f(dst.data(), detail::len(dst), magn, rFreq, pPhase, hint); }
inline Result toneDirect(ComplexSpan<Vek32fc> dst, Vek32f magn, Vek32f rFreq, Vek32f* pPhase, VekHintAlgorithm hint) { return veksTone_Direct_32fc(dst.data(), detail::len(dst), magn, rFreq, pPhase, hint); }
inline Result triangleDirect(std::span<Vek32f> dst, Vek32f magn, Vek32f rFreq, Vek32f asym, Vek32f* pPhase) { return veksTriangle_Direct_32f(dst.data(), detail::len(dst), magn, rFreq, asym, pPhase); }
inline Result triangleDirect(ComplexSpan<Vek32fc> dst, Vek32f magn, Vek32f rFreq, Vek32f asym, Vek32f* pPhase) { return veksTriangle_Direct_32fc(dst.data(), detail::len(dst), magn, rFreq, asym, pPhase); }
inline Result vectorJaehne(std::span<Vek32f> dst, Vek32f magn) { return veksVectorJaehne_32f(dst.data(), detail::len(dst), magn); }
inline Result vectorJaehne(std::span<Vek32s> dst, Vek32s magn) { return veksVectorJaehne_32s(dst.data(), detail::len(dst), magn); }
inline Result vectorRamp(std::span<Vek32f> dst, Vek32f offset, Vek32f slope) { return veksVectorRamp_32f(dst.data(), detail::len(dst), offset, slope); }
inline Result vectorRamp(std::span<Vek32s> dst, Vek32f offset, Vek32f slope) { return veksVectorRamp_32s(dst.data(), detail::len(dst), offset, slope); }
inline Result vectorSlope(std::span<Vek8u> dst, Vek32f offset, Vek32f slope) { return veksVectorSlope_8u(dst.data(), detail::len(dst), offset, slope); }
inline Result vectorSlope(std::span<Vek16s> dst, Vek32f offset, Vek32f slope) { return veksVectorSlope_16s(dst.data(), detail::len(dst), offset, slope); }
inline Result vectorSlope(std::span<Vek32f> dst, Vek32f offset, Vek32f slope) { return veksVectorSlope_32f(dst.data(), detail::len(dst), offset, slope); }
inline Result vectorSlope(std::span<Vek32s> dst, Vek64f offset, Vek64f slope) { return veksVectorSlope_32s(dst.data(), detail::len(dst), offset, slope); }
inline Result randUniformDirect(std::span<Vek32f> dst, Vek32f low, Vek32f high, Vek32u* pSeed) { return veksRandUniform_Direct_32f(dst.data(), detail::len(dst), low, high, pSeed); }
inline Result randGaussDirect(std::span<Vek32f> dst, Vek32f mean, Vek32f stdDev, Vek32u* pSeed) { return veksRandGauss_Direct_32f(dst.data(), detail::len(dst), mean, stdDev, pSeed); }
inline Result winBartlett(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksWinBartlett_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winBartlett(std::span<Vek32f> srcDst) { return veksWinBartlett_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result winBartlett(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksWinBartlett_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winBartlett(ComplexSpan<Vek32fc> srcDst) { return veksWinBartlett_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result winHann(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksWinHann_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winHann(std::span<Vek32f> srcDst) { return veksWinHann_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result winHann(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksWinHann_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winHann(ComplexSpan<Vek32fc> srcDst) { return veksWinHann_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result winHamming(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksWinHamming_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winHamming(std::span<Vek32f> srcDst) { return veksWinHamming_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result winHamming(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksWinHamming_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winHamming(ComplexSpan<Vek32fc> srcDst) { return veksWinHamming_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result winBlackman(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f alpha) { return veksWinBlackman_32f(src.data(), dst.data(), detail::len(src, dst), alpha); }
inline Result winBlackman(std::span<Vek32f> srcDst, Vek32f alpha) { return veksWinBlackman_32f_I(srcDst.data(), detail::len(srcDst), alpha); }
inline Result winBlackman(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32f alpha) { return veksWinBlackman_32fc(src.data(), dst.data(), detail::len(src, dst), alpha); }
inline Result winBlackman(ComplexSpan<Vek32fc> srcDst, Vek32f alpha) { return veksWinBlackman_32fc_I(srcDst.data(), detail::len(srcDst), alpha); }
inline Result winBlackmanStd(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksWinBlackmanStd_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winBlackmanStd(std::span<Vek32f> srcDst) { return veksWinBlackmanStd_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result winBlackmanStd(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksWinBlackmanStd_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winBlackmanStd(ComplexSpan<Vek32fc> srcDst) { return veksWinBlackmanStd_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result winBlackmanOpt(std::span<const Vek32f> src, std::span<Vek32f> dst) { return veksWinBlackmanOpt_32f(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winBlackmanOpt(std::span<Vek32f> srcDst) { return veksWinBlackmanOpt_32f_I(srcDst.data(), detail::len(srcDst)); }
inline Result winBlackmanOpt(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst) { return veksWinBlackmanOpt_32fc(src.data(), dst.data(), detail::len(src, dst)); }
inline Result winBlackmanOpt(ComplexSpan<Vek32fc> srcDst) { return veksWinBlackmanOpt_32fc_I(srcDst.data(), detail::len(srcDst)); }
inline Result winKaiser(std::span<const Vek32f> src, std::span<Vek32f> dst, Vek32f alpha) { return veksWinKaiser_32f(src.data(), dst.data(), detail::len(src, dst), alpha); }
inline Result winKaiser(std::span<Vek32f> srcDst, Vek32f alpha) { return veksWinKaiser_32f_I(srcDst.data(), detail::len(srcDst), alpha); }
inline Result winKaiser(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, Vek32f alpha) { return veksWinKaiser_32fc(src.data(), dst.data(), detail::len(src, dst), alpha); }
inline Result winKaiser(ComplexSpan<Vek32fc> srcDst, Vek32f alpha) { return veksWinKaiser_32fc_I(srcDst.data(), detail::len(srcDst), alpha); }
inline Result iir(std::span<const Vek32f> src, std::span<Vek32f> dst, VeksIIRState_32f* pState) { return veksIIR_32f(src.data(), dst.data(), detail::len(src, dst), pState); }
inline Result iir(std::span<Vek32f> srcDst, VeksIIRState_32f* pState) { return veksIIR_32f_I(srcDst.data(), detail::len(srcDst), pState); }
inline Result iir(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, VeksIIRState_32fc* pState) { return veksIIR_32fc(src.data(), dst.data(), detail::len(src, dst), pState); }
inline Result iir(ComplexSpan<Vek32fc> srcDst, VeksIIRState_32fc* pState) { return veksIIR_32fc_I(srcDst.data(), detail::len(srcDst), pState); }
inline Result iir(std::span<const Vek32f> src, std::span<Vek32f> dst, VeksIIRState64f_32f* pState) { return veksIIR64f_32f(src.data(), dst.data(), detail::len(src, dst), pState); }
inline Result iir(std::span<Vek32f> srcDst, VeksIIRState64f_32f* pState) { return veksIIR64f_32f_I(srcDst.data(), detail::len(srcDst), pState); }
inline Result iir(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> dst, VeksIIRState64fc_32fc* pState) { return veksIIR64fc_32fc(src.data(), dst.data(), detail::len(src, dst), pState); }
inline Result iir(ComplexSpan<Vek32fc> srcDst, VeksIIRState64fc_32fc* pState) { return veksIIR64fc_32fc_I(srcDst.data(), detail::len(srcDst), pState); }
inline Result filterMedian(std::span<const Vek8u> src, std::span<Vek8u> dst, int maskSize) { return veksFilterMedian_8u(src.data(), dst.data(), detail::len(src, dst), maskSize); }
inline Result filterMedian(std::span<Vek8u> srcDst, int maskSize) { return veksFilterMedian_8u_I(srcDst.data(), detail::len(srcDst), maskSize); }
inline Result filterMedian(std::span<const Vek16s> src, std::span<Vek16s> dst, int maskSize) { return veksFilterMedian_16s(src.data(), dst.data(), detail::len(src, dst), maskSize); }
inline Result filterMedian(std::span<Vek16s> srcDst, int maskSize) { return veksFilterMedian_16s_I(srcDst.data(), detail::len(srcDst), maskSize); }
inline Result filterMedian(std::span<const Vek32s> src, std::span<Vek32s> dst, int maskSize) { return veksFilterMedian_32s(src.data(), dst.data(), detail::len(src, dst), maskSize); }
inline Result filterMedian(std::span<Vek32s> srcDst, int maskSize) { return veksFilterMedian_32s_I(srcDst.data(), detail::len(srcDst), maskSize); }
inline Result filterMedian(std::span<const Vek32f> src, std::span<Vek32f> dst, int maskSize) { return veksFilterMedian_32f(src.data(), dst.data(), detail::len(src, dst), maskSize); }
inline Result filterMedian(std::span<Vek32f> srcDst, int maskSize) { return veksFilterMedian_32f_I(srcDst.data(), detail::len(srcDst), maskSize); }
inline Result goertz(std::span<const Vek32f> src, Vek32fc* pVal, Vek32f rFreq) { return veksGoertz_32f(src.data(), detail::len(src), pVal, rFreq); }
inline Result goertz(ComplexSpan<const Vek32fc> src, Vek32fc* pVal, Vek32f rFreq) { return veksGoertz_32fc(src.data(), detail::len(src), pVal, rFreq); }
inline Result goertzTwo(std::span<const Vek32f> src, Vek32fc* pVal, const Vek32f* rFreq) { return veksGoertzTwo_32f(src.data(), detail::len(src), pVal, rFreq); }
inline Result goertzTwo(ComplexSpan<const Vek32fc> src, Vek32fc* pVal, const Vek32f* rFreq) { return veksGoertzTwo_32fc(src.data(), detail::len(src), pVal, rFreq); }
inline Result haarFwd(std::span<const Vek32f> src, std::span<Vek32f> dstLow, std::span<Vek32f> dstHigh) { return veksHaarFwd_32f(src.data(), dstLow.size() == (src.size() + 1) / 2 && dstHigh.size() == src.size() / 2 ? detail::len(src) : 0, dstLow.data(), dstHigh.data()); }
inline Result haarInv(std::span<const Vek32f> srcLow, std::span<const Vek32f> srcHigh, std::span<Vek32f> dst) { return veksHaarInv_32f(srcLow.data(), srcHigh.data(), dst.data(), srcLow.size() == (dst.size() + 1) / 2 && srcHigh.size() == dst.size() / 2 ? detail::len(dst) : 0); }

}  // namespace vek

#endif
