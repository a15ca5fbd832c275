/* SPDX-License-Identifier: Apache-2.0
 * The planted fault of the emulated runs: an instruction that the emulated processor does not have. */
int main(void) {
  __asm__ volatile("vpaddd %%ymm0, %%ymm0, %%ymm0\n\tvzeroupper" ::: "xmm0");
  return 0;
}
