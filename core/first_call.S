// SPDX-License-Identifier: Apache-2.0
// Where every table leads while no slot is in force: chooses it and goes on with the call, whose table is in r11 and
// whose arguments stay as they are, in registers and on the stack.
#include <cet.h>

	.text
	.hidden vek_choose_slot
	.hidden vek_variant_index
	.globl vek_first_call
	.hidden vek_first_call
	.type vek_first_call, @function
vek_first_call:
	.cfi_startproc
	_CET_ENDBR
.irp register, rdi, rsi, rdx, rcx, r8, r9, r11
	pushq %\register
	.cfi_adjust_cfa_offset 8
.endr
	subq $128, %rsp
	.cfi_adjust_cfa_offset 128
.irp number, 0, 1, 2, 3, 4, 5, 6, 7
	movups %xmm\number, 16*\number(%rsp)
.endr
	call vek_choose_slot
.irp number, 0, 1, 2, 3, 4, 5, 6, 7
	movups 16*\number(%rsp), %xmm\number
.endr
	addq $128, %rsp
	.cfi_adjust_cfa_offset -128
.irp register, r11, r9, r8, rcx, rdx, rsi, rdi
	popq %\register
	.cfi_adjust_cfa_offset -8
.endr
	movslq vek_variant_index(%rip), %rax
	jmpq *(%r11,%rax,8)
	.cfi_endproc
	.size vek_first_call, .-vek_first_call

	.section .note.GNU-stack,"",@progbits
