// SPDX-License-Identifier: Apache-2.0
// vek: one-dimensional signal-processing primitives for 64-bit x86. The one header to include, from C99 or C++17 on.
#ifndef VEK_H
#define VEK_H

#include "vek/arith.h"   /* scaled arithmetic, division */
#include "vek/convert.h" /* conversion, thresholds, companding */
#include "vek/core.h"
#include "vek/correlation.h" /* convolution and correlation */
#include "vek/fir.h"         /* single- and multi-rate FIR filters */
#include "vek/gen.h"         /* tones, triangles, ramps, random numbers */
#include "vek/idx.h"         /* the index-offset twin of every function above */
#include "vek/iir.h"         /* IIR filters */
#include "vek/math.h"        /* roots, magnitude and phase, normalisation */
#include "vek/sampling.h"    /* median filter, resampling, Goertzel */
#include "vek/sort.h"        /* sorting by value and by index */
#include "vek/stats.h"       /* sums, means, extremes, norms, dot products */
#include "vek/status.h"
#include "vek/transform.h" /* cosine and Haar transforms */
#include "vek/types.h"
#include "vek/vector.h" /* copy, set, reorder, logic, shifts */
#include "vek/window.h" /* tapering windows */

#endif
