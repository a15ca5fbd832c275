// SPDX-License-Identifier: Apache-2.0
// vekx: what stands beside vek, in single and double precision. The one header to include, from C99 or C++17 on.
#ifndef VEKX_H
#define VEKX_H

// clang-format off
#include "vek/types.h"
#include "vek/status.h"

#include "vekx/core.h"   /* version, texts of statuses */
#include "vekx/design.h" /* windows, finite and recursive filters, responses */
#include "vekx/fft.h"    /* Fourier, cosine and sine transforms of every length */

#include "vekx/idx.h" /* the index-offset twin of every function above */
// clang-format on

#endif
