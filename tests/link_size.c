/* SPDX-License-Identifier: Apache-2.0 */
/* Programs that call a few functions of the static library, one for each PROGRAM: how much they take along is held to
 * bounds. */
#include <stdio.h>
#include <vek.h>

#define EMPTY 0
#define STATUS 1
#define ADD 2
#define SORT 3
#define FIR 4
#define DCT 5

int main(void) {
  static Vek32f x[1024], y[1024];
#if PROGRAM == STATUS
  puts(vekGetStatusString(vekStsNullPtrErr));
  return veksGetLibVersion()->major != 8;
#elif PROGRAM == ADD
  return veksAdd_32f(x, x, y, 1024);
#elif PROGRAM == SORT
  return veksSortAscend_32f_I(x, 1024);
#elif PROGRAM == FIR
  VeksFIRState_32f* state;
  const VekStatus status = veksFIRInitAlloc_32f(&state, y, 64, NULL);
  if (status != vekStsNoErr) return status;
  veksFIR_32f(x, y, 1024, state);
  return veksFIRFree_32f(state);
#elif PROGRAM == DCT
  VeksDCTFwdSpec_32f* spec;
  const VekStatus status = veksDCTFwdInitAlloc_32f(&spec, 1024, vekAlgHintNone);
  if (status != vekStsNoErr) return status;
  veksDCTFwd_32f(x, y, spec, NULL);
  return veksDCTFwdFree_32f(spec);
#else
  return x[0] != y[0];
#endif
}
