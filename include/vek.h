// SPDX-License-Identifier: Apache-2.0
// vek: one-dimensional signal-processing primitives for 64-bit x86. The one header to include, from C99 or C++17 on.
#ifndef VEK_H
#define VEK_H

// clang-format off
#include "vek/types.h"
#include "vek/status.h"
#include "vek/core.h"

#include "vek/vector.h"      /* copy, set, reorder, logic, shifts */
#include "vek/arith.h"       /* scaled arithmetic, division */
#include "vek/math.h"        /* roots, magnitude and phase, normalisation */
#include "vek/convert.h"     /* conversion between element types */
#include "vek/threshold.h"   /* thresholds */
#include "vek/compand.h"     /* A-law and mu-law */
#include "vek/stats.h"       /* sums, means, extremes, norms, dot products */
#include "vek/sort.h"        /* sorting by value and by index */
#include "vek/gen.h"         /* tones, triangles, ramps, random numbers */
#include "vek/window.h"      /* tapering windows */
#include "vek/fir.h"         /* single- and multi-rate FIR filters */
#include "vek/iir.h"         /* IIR filters */
#include "vek/sampling.h"    /* median filter, resampling, Goertzel */
#include "vek/correlation.h" /* convolution and correlation */
#include "vek/transform.h"   /* cosine and Haar transforms */

#include "vek/idx.h" /* the index-offset twin of every function above */
// clang-format on

#endif
