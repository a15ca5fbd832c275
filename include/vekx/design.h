// SPDX-License-Identifier: Apache-2.0
// Design of windows and of finite and recursive filters, and their responses.
#ifndef VEKX_DESIGN_H
#define VEKX_DESIGN_H

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vekx_design Filter design
 *
 * What is done once for a filter, in double precision. Frequencies are fractions of the sampling rate, above 0 and
 * below 0.5. These functions are the same code on every processor; they keep nothing between calls and may be used by
 * any number of threads.
 *
 * Second-order sections are six numbers each, b0, b1, b2, a0 = 1, a1, a2, one section behind the other, as
 * veksIIRInit_BiQuad_64f_32f and its kin take them. Taps of a finite filter stand in the order of their delays.
 *
 * A refused call writes nothing.
 * @{
 */

/** What a filter lets pass. */
typedef int VekxBand;
/** Values of #VekxBand. */
enum {
  vekxLowPass = 0,  /**< below freq1 */
  vekxHighPass = 1, /**< above freq1 */
  vekxBandPass = 2, /**< from freq1 to freq2 */
  vekxBandStop = 3  /**< below freq1 and above freq2 */
};

/** What the edge of a Bessel filter is. */
typedef int VekxBesselNorm;
/** Values of #VekxBesselNorm. */
enum {
  vekxBesselPhase = 0,    /**< the phase at the edge is half of what it is far above */
  vekxBesselDelay = 1,    /**< the delay of the analogue low-pass is 1 over the edge's angular frequency */
  vekxBesselMagnitude = 2 /**< the magnitude at the edge is sqrt(1/2) */
};

/**
 * @name Recursive filters
 * Classic analogue low-pass filters, moved to the band and by the bilinear transformation to discrete time, edges
 * exactly where they were asked for. Order N gives (N+1)/2 sections for a low- or high-pass, N for a band, whose order
 * is 2N. Sections whose poles are nearest the unit circle have the zeros nearest to those and come last; the gain is in
 * the first.
 *
 * - Butterworth: flat, sqrt(1/2) at the edges
 * - Chebyshev1: `ripple` decibels in the pass-band, which ends at the edges
 * - Chebyshev2: `attenuation` decibels in the stop-band, which ends at the edges
 * - Elliptic: both; the edges are those of the pass-band (S. J. Orfanidis, "Lecture notes on elliptic filter design",
 *   2006)
 * - Bessel: near constant delay
 *
 * @param pSections   six numbers for each section
 * @param order       1 to 32
 * @param band        a #VekxBand
 * @param freq1,freq2 the edges, freq1 < freq2; freq2 is not looked at for a low- or high-pass
 * @param ripple      decibels, above 0, at most 400
 * @param attenuation decibels, above 0 and above ripple, at most 400
 * @return in this order: null #vekStsNullPtrErr, order #vekStsIIRGenOrderErr, no such band #vekStsBadArgErr, edges
 *         #vekStsFilterFrequencyErr, decibels #vekStsIIRPassbandRippleErr, no such norm #vekStsBadArgErr
 * @{
 */
VEK_API VekStatus vekxDesignButterworth(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2);
VEK_API VekStatus vekxDesignChebyshev1(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2,
                                       Vek64f ripple);
VEK_API VekStatus vekxDesignChebyshev2(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2,
                                       Vek64f attenuation);
VEK_API VekStatus vekxDesignElliptic(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2,
                                     Vek64f ripple, Vek64f attenuation);
VEK_API VekStatus vekxDesignBessel(Vek64f* pSections, int order, VekxBand band, Vek64f freq1, Vek64f freq2,
                                   VekxBesselNorm norm);
/** @} */

/** Single sections. */
typedef int VekxSection;
/** Values of #VekxSection. */
enum {
  vekxSectionLowPass = 0,   /**< second-order low-pass */
  vekxSectionHighPass = 1,  /**< second-order high-pass */
  vekxSectionBandPass = 2,  /**< band-pass, 1 at its centre */
  vekxSectionNotch = 3,     /**< 0 at its centre; at -3 decibels freq / quality wide */
  vekxSectionAllPass = 4,   /**< phase alone */
  vekxSectionPeaking = 5,   /**< gain around a centre, 1 elsewhere */
  vekxSectionLowShelf = 6,  /**< gain below, 1 above */
  vekxSectionHighShelf = 7, /**< gain above, 1 below */
  vekxSectionDcBlocker = 8, /**< 0 at frequency 0, sqrt(1/2) at freq, of first order */
  vekxSectionPeak = 9       /**< 1 at its centre, 0 far from it; at -3 decibels freq / quality wide */
};

/**
 * @name Single sections
 * The sections of equalisers, by the formulas of R. Bristow-Johnson, "Cookbook formulae for audio equalizer biquad
 * filter coefficients", where the bandwidth is what Q = quality says before the bilinear transformation. Notch and peak
 * have the width that they are asked for after it.
 *
 * @param pSection six numbers
 * @param kind     a #VekxSection
 * @param freq     centre or edge
 * @param quality  Q, above 0, for notch and peak above 2 * freq; not looked at by the blocker
 * @param gain     decibels, from -400 to 400, of peaking and shelves; not looked at by others
 * @return in this order: null #vekStsNullPtrErr, no such kind #vekStsBadArgErr, freq #vekStsFilterFrequencyErr, quality
 *         or gain #vekStsOutOfRangeErr
 * @{
 */
VEK_API VekStatus vekxDesignSection(Vek64f* pSection, VekxSection kind, Vek64f freq, Vek64f quality, Vek64f gain);
/** @} */

/** Tapering windows. */
typedef int VekxWindow;
/** Values of #VekxWindow. */
enum {
  vekxWindowRectangular = 0,    /**< ones */
  vekxWindowTriangular = 1,     /**< a triangle without zeros at its ends */
  vekxWindowBartlett = 2,       /**< a triangle with zeros at its ends */
  vekxWindowHann = 3,           /**< 0.5 - 0.5 cos */
  vekxWindowHamming = 4,        /**< 0.54 - 0.46 cos */
  vekxWindowBlackman = 5,       /**< 0.42 - 0.5 cos + 0.08 cos 2 */
  vekxWindowNuttall = 6,        /**< four terms, continuous: 0.3635819, 0.4891775, 0.1365995, 0.0106411 */
  vekxWindowBlackmanHarris = 7, /**< four terms: 0.35875, 0.48829, 0.14128, 0.01168 */
  vekxWindowFlatTop = 8,        /**< five terms: 0.21557895, 0.41663158, 0.277263158, 0.083578947, 0.006947368 */
  vekxWindowCosine = 9,         /**< half a sine */
  vekxWindowBohman = 10,        /**< the convolution of two half sines */
  vekxWindowParzen = 11,        /**< four triangles convolved */
  vekxWindowTukey = 12,         /**< flat, with tapers that take `parameter` of the length, 0 to 1 */
  vekxWindowGaussian = 13,      /**< `parameter` is the standard deviation in samples, above 0 */
  vekxWindowKaiser = 14,        /**< `parameter` is beta, from 0 to 700 */
  vekxWindowDpss = 15           /**< the first discrete prolate spheroidal sequence; `parameter` is the half bandwidth
                                     times the length, above 0 and below half the length */
};

/** How the ends of a window relate. */
typedef int VekxSymmetry;
/** Values of #VekxSymmetry. */
enum {
  vekxSymmetric = 0, /**< w[n] = w[N-1-n]: for filters */
  vekxPeriodic = 1   /**< one period of a symmetric window of N+1: for spectra */
};

/**
 * @name Windows
 * The largest value is 1 where the window has a middle element. A window of one element is 1.
 *
 * @param pWindow   len weights
 * @param len       1 or more
 * @param window    a #VekxWindow
 * @param parameter what the window needs, else not looked at
 * @param symmetry  a #VekxSymmetry
 * @return in this order: null #vekStsNullPtrErr, len #vekStsSizeErr, no such window or symmetry #vekStsBadArgErr,
 *         parameter #vekStsOutOfRangeErr, no memory (Dpss) #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxDesignWindow(Vek64f* pWindow, int len, VekxWindow window, Vek64f parameter,
                                   VekxSymmetry symmetry);
/** @} */

/**
 * @name Length and beta of a Kaiser window
 * For a filter by vekxDesignFirWindow() whose ripple in both bands is `attenuation` decibels down and whose transition
 * is `width` wide: J. F. Kaiser, "Nonrecursive digital filter design using the I0-sinh window function", 1974.
 *
 * @param attenuation decibels, from 8 to 400
 * @param width       of the transition, above 0 and below 0.5
 * @param pLen        where the number of taps is stored
 * @param pBeta       where beta is stored
 * @return in this order: a null pointer #vekStsNullPtrErr, attenuation #vekStsIIRPassbandRippleErr, width
 *         #vekStsFilterFrequencyErr, a length that no int holds #vekStsSizeErr
 * @{
 */
VEK_API VekStatus vekxDesignKaiser(Vek64f attenuation, Vek64f width, int* pLen, Vek64f* pBeta);
/** @} */

/**
 * @name Finite filters by windows
 * The ideal response, cut off by the window and scaled to 1 at frequency 0, for a high-pass at 0.5, for a band-pass at
 * the middle of the band.
 *
 * @param pTaps       tapsLen taps, symmetric
 * @param tapsLen     1 or more; odd for a high-pass or band-stop, which no symmetric filter of even length can be
 * @param band        a #VekxBand
 * @param freq1,freq2 the edges, freq1 < freq2; freq2 is not looked at for a low- or high-pass
 * @param pWindow     tapsLen weights; null for a Hamming window
 * @return in this order: null pTaps #vekStsNullPtrErr, no such band #vekStsBadArgErr, tapsLen #vekStsFIRGenOrderErr,
 *         edges #vekStsFilterFrequencyErr, a window that leaves nothing at the frequency to scale at #vekStsWeightErr
 * @{
 */
VEK_API VekStatus vekxDesignFirWindow(Vek64f* pTaps, int tapsLen, VekxBand band, Vek64f freq1, Vek64f freq2,
                                      const Vek64f* pWindow);
/** @} */

/** What an equiripple filter or one by least squares approximates. */
typedef int VekxFirKind;
/** Values of #VekxFirKind. */
enum {
  vekxFirBands = 0,          /**< gains of bands; symmetric taps */
  vekxFirDifferentiator = 1, /**< gains times the frequency, weights over it; antisymmetric taps */
  vekxFirHilbert = 2         /**< gains of bands; antisymmetric taps */
};

/**
 * @name Finite filters of least largest error
 * The taps whose weighted error over all bands is least at its largest: J. H. McClellan, T. W. Parks and L. R. Rabiner,
 * "A computer program for designing optimum FIR linear phase digital filters", 1973, on the grid of that program with
 * `density` points a coefficient.
 *
 * @param pTaps    tapsLen taps
 * @param tapsLen  2 or more
 * @param pEdges   2 * bands edges, increasing, from 0 to 0.5
 * @param pGains   bands gains (differentiator: gain at 1 over the sampling interval, times frequency)
 * @param pWeights bands weights, above 0; null for ones
 * @param bands    1 or more
 * @param kind     a #VekxFirKind
 * @param density  4 or more; 16 is usual
 * @return in this order: null pTaps, pEdges or pGains #vekStsNullPtrErr, bands below 1 #vekStsSizeErr, no such kind
 *         #vekStsBadArgErr, tapsLen #vekStsFIRGenOrderErr, edges #vekStsFilterFrequencyErr, weights #vekStsWeightErr,
 *         density #vekStsOutOfRangeErr, no memory #vekStsMemAllocErr, no convergence #vekStsConvergeErr
 * @{
 */
VEK_API VekStatus vekxDesignEquiripple(Vek64f* pTaps, int tapsLen, const Vek64f* pEdges, const Vek64f* pGains,
                                       const Vek64f* pWeights, int bands, VekxFirKind kind, int density);
/** @} */

/**
 * @name Finite filters of least squares
 * The symmetric taps whose weighted squared error over all bands is least; the gain runs straight from one edge of a
 * band to the other.
 *
 * @param pTaps    tapsLen taps
 * @param tapsLen  1 or more, odd
 * @param pEdges   2 * bands edges, increasing, from 0 to 0.5
 * @param pGains   2 * bands gains, at the edges
 * @param pWeights bands weights, above 0; null for ones
 * @param bands    1 or more
 * @return in this order: null pTaps, pEdges or pGains #vekStsNullPtrErr, bands below 1 #vekStsSizeErr, tapsLen
 *         #vekStsFIRGenOrderErr, edges #vekStsFilterFrequencyErr, weights #vekStsWeightErr, no memory
 *         #vekStsMemAllocErr, bands that leave the taps undetermined #vekStsConvergeErr
 * @{
 */
VEK_API VekStatus vekxDesignLeastSquares(Vek64f* pTaps, int tapsLen, const Vek64f* pEdges, const Vek64f* pGains,
                                         const Vek64f* pWeights, int bands);
/** @} */

/**
 * @name Smoothing and derivatives
 * The taps that give, of the polynomial of degree `order` nearest to tapsLen samples in the sense of least squares, the
 * value or the derivative at the middle one: A. Savitzky and M. J. E. Golay, "Smoothing and differentiation of data by
 * simplified least squares procedures", 1964. In the order of delays: the first belongs to the newest sample.
 *
 * @param pTaps      tapsLen taps
 * @param tapsLen    1 or more, odd
 * @param order      of the polynomial, 0 to tapsLen - 1, at most 30
 * @param derivative 0 for the value, up to order
 * @param step       distance of two samples, above 0
 * @return in this order: null #vekStsNullPtrErr, tapsLen or order #vekStsFIRGenOrderErr, derivative or step
 *         #vekStsOutOfRangeErr, no memory #vekStsMemAllocErr
 * @{
 */
VEK_API VekStatus vekxDesignSavitzkyGolay(Vek64f* pTaps, int tapsLen, int order, int derivative, Vek64f step);
/** @} */

/**
 * @name Responses
 * Of sections, one behind the other, and of a rational filter with pB over pA (pA null for a finite filter): values at
 * frequencies, and delays of the group in samples. At a zero on the unit circle the delay is that of the other roots.
 *
 * @param pSections   six numbers for each section
 * @param numSections 1 or more
 * @param pB,pA       coefficients in the order of delays
 * @param bLen,aLen   their numbers, 1 or more; aLen is not looked at where pA is null
 * @param pFreqs      numFreqs frequencies, any
 * @param pDst        numFreqs results
 * @param numFreqs    1 or more
 * @return in this order: a null pointer, pA excepted, #vekStsNullPtrErr, a number below 1 #vekStsSizeErr
 * @{
 */
VEK_API VekStatus vekxSectionsResponse(const Vek64f* pSections, int numSections, const Vek64f* pFreqs, Vek64fc* pDst,
                                       int numFreqs);
VEK_API VekStatus vekxSectionsDelay(const Vek64f* pSections, int numSections, const Vek64f* pFreqs, Vek64f* pDst,
                                    int numFreqs);
VEK_API VekStatus vekxFilterResponse(const Vek64f* pB, int bLen, const Vek64f* pA, int aLen, const Vek64f* pFreqs,
                                     Vek64fc* pDst, int numFreqs);
VEK_API VekStatus vekxFilterDelay(const Vek64f* pB, int bLen, const Vek64f* pA, int aLen, const Vek64f* pFreqs,
                                  Vek64f* pDst, int numFreqs);
/** @} */

/** @} */

#ifdef __cplusplus
}
#endif

#endif
