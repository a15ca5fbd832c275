/* SPDX-License-Identifier: Apache-2.0
 * A shim between a managed runtime and the library: the runtime hands over whole heap arrays and positions, the
 * index-offset twins take them as they are, and no interior pointer is ever formed. With VEK_HAS_JNI the entry that
 * Java calls; without, a C program that does what it does. */
#include <stdio.h>

#include "vek.h"

/* Moving average over x[from .. from+n), into y[to ..), with the state kept between calls. */
static VekStatus average(const Vek32f* x, int from, Vek32f* y, int to, int n, VeksFIRState_32f* state) {
  return veksFIR_32f_Idx(x, from, y, to, n, state);
}

#ifdef VEK_HAS_JNI
#include <jni.h>

JNIEXPORT jint JNICALL Java_Managed_smooth(JNIEnv* env, jclass self, jfloatArray x, jint from, jfloatArray y, jint to,
                                           jint n) {
  const Vek32f taps[4] = {0.25f, 0.25f, 0.25f, 0.25f};
  VeksFIRState_32f* state;
  VekStatus s = veksFIRInitAlloc_32f_Idx(&state, taps, 0, 4, NULL, 99); /* absent whatever its index */
  (void)self;
  if (s != vekStsNoErr) return s;
  Vek32f* px = (Vek32f*)(*env)->GetPrimitiveArrayCritical(env, x, NULL);
  Vek32f* py = (Vek32f*)(*env)->GetPrimitiveArrayCritical(env, y, NULL);
  s = px && py ? average(px, from, py, to, n, state) : vekStsMemAllocErr;
  if (py) (*env)->ReleasePrimitiveArrayCritical(env, y, py, 0);
  if (px) (*env)->ReleasePrimitiveArrayCritical(env, x, px, JNI_ABORT);
  veksFIRFree_32f_Idx(state);
  return s;
}
#else
int main(void) {
  const Vek32f taps[4] = {0.25f, 0.25f, 0.25f, 0.25f};
  Vek32f x[12], y[12] = {0};
  VeksFIRState_32f* state;
  for (int i = 0; i < 12; ++i) x[i] = (Vek32f)i;
  if (veksFIRInitAlloc_32f_Idx(&state, taps, 0, 4, NULL, 99) != vekStsNoErr) return 1;
  const VekStatus s = average(x, 2, y, 1, 8, state);
  veksFIRFree_32f_Idx(state);
  printf("y[4] = %g, y[8] = %g\n", y[4], y[8]);
  return s == vekStsNoErr && y[0] == 0 && y[4] == 3.5f && y[8] == 7.5f && y[9] == 0 ? 0 : 1;
}
#endif
