// SPDX-License-Identifier: Apache-2.0
// Derived from the public prototypes by tools/derive.py; edits are lost.
//
// One overload a function on std::span: the arrays carry their own lengths, which have to agree, and the element types
// choose the function. Where two functions take the same types the type tokens stay in the name. Arrays that do not
// fit each other, empty ones and those of more than INT_MAX elements are refused, with vekStsSizeErr unless the
// function finds another fault first.
// clang-format off
#ifndef VEKX_SPANS_HPP
#define VEKX_SPANS_HPP

#include <span>

#include "vek/complex.hpp"
#include "vek/lengths.hpp"
#include "vek/result.hpp"
#include "vekx.h"

namespace vek {

inline Result fftMul(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> dst) { return vekxFFTMul_32fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result fftMul(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> srcDst) { return vekxFFTMul_32fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result fftMulAdd(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> srcDst) { return vekxFFTMulAdd_32fc(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result fftMulConj(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> dst) { return vekxFFTMulConj_32fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result fftMulConj(ComplexSpan<const Vek32fc> src, ComplexSpan<Vek32fc> srcDst) { return vekxFFTMulConj_32fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result fftMulConjAdd(ComplexSpan<const Vek32fc> src1, ComplexSpan<const Vek32fc> src2, ComplexSpan<Vek32fc> srcDst) { return vekxFFTMulConjAdd_32fc(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result fftMul(ComplexSpan<const Vek64fc> src1, ComplexSpan<const Vek64fc> src2, ComplexSpan<Vek64fc> dst) { return vekxFFTMul_64fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result fftMul(ComplexSpan<const Vek64fc> src, ComplexSpan<Vek64fc> srcDst) { return vekxFFTMul_64fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result fftMulAdd(ComplexSpan<const Vek64fc> src1, ComplexSpan<const Vek64fc> src2, ComplexSpan<Vek64fc> srcDst) { return vekxFFTMulAdd_64fc(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result fftMulConj(ComplexSpan<const Vek64fc> src1, ComplexSpan<const Vek64fc> src2, ComplexSpan<Vek64fc> dst) { return vekxFFTMulConj_64fc(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result fftMulConj(ComplexSpan<const Vek64fc> src, ComplexSpan<Vek64fc> srcDst) { return vekxFFTMulConj_64fc_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result fftMulConjAdd(ComplexSpan<const Vek64fc> src1, ComplexSpan<const Vek64fc> src2, ComplexSpan<Vek64fc> srcDst) { return vekxFFTMulConjAdd_64fc(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result fftMulPack(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> dst) { return vekxFFTMulPack_32f(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result fftMulPack(std::span<const Vek32f> src, std::span<Vek32f> srcDst) { return vekxFFTMulPack_32f_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result fftMulAddPack(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> srcDst) { return vekxFFTMulAddPack_32f(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result fftMulConjPack(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> dst) { return vekxFFTMulConjPack_32f(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result fftMulConjPack(std::span<const Vek32f> src, std::span<Vek32f> srcDst) { return vekxFFTMulConjPack_32f_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result fftMulConjAddPack(std::span<const Vek32f> src1, std::span<const Vek32f> src2, std::span<Vek32f> srcDst) { return vekxFFTMulConjAddPack_32f(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result fftMulPack(std::span<const Vek64f> src1, std::span<const Vek64f> src2, std::span<Vek64f> dst) { return vekxFFTMulPack_64f(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result fftMulPack(std::span<const Vek64f> src, std::span<Vek64f> srcDst) { return vekxFFTMulPack_64f_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result fftMulAddPack(std::span<const Vek64f> src1, std::span<const Vek64f> src2, std::span<Vek64f> srcDst) { return vekxFFTMulAddPack_64f(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }
inline Result fftMulConjPack(std::span<const Vek64f> src1, std::span<const Vek64f> src2, std::span<Vek64f> dst) { return vekxFFTMulConjPack_64f(src1.data(), src2.data(), dst.data(), detail::len(src1, src2, dst)); }
inline Result fftMulConjPack(std::span<const Vek64f> src, std::span<Vek64f> srcDst) { return vekxFFTMulConjPack_64f_I(src.data(), srcDst.data(), detail::len(src, srcDst)); }
inline Result fftMulConjAddPack(std::span<const Vek64f> src1, std::span<const Vek64f> src2, std::span<Vek64f> srcDst) { return vekxFFTMulConjAddPack_64f(src1.data(), src2.data(), srcDst.data(), detail::len(src1, src2, srcDst)); }

}  // namespace vek

#endif
