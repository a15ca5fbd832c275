/* SPDX-License-Identifier: Apache-2.0 */
#include <stdio.h>
#include <vek.h>
#include <vekx.h>

int main(void) {
  Vek16u x[5] = {1, 2, 3, 4, 5};
  const VekStatus s = veksFlip_16u_Idx(x, 0, x, 0, 5);
  printf("%s %s %d\n", veksGetLibVersion()->version, vekGetStatusString(s), x[0]);
  printf("vekx %s in slot %s\n", vekxGetVersion()->version, vekxGetVersion()->slot);
  return x[0] == 5 && x[4] == 1 ? 0 : 1;
}
