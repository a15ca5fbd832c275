// SPDX-License-Identifier: Apache-2.0
// vek_raw_call(RawCall*): the call, and functions that each break one rule of the calling convention, for the test of
// the test.

#define FUNCTION 0
#define INTEGER 8
#define VECTOR 56
#define STACK 184
#define AVX 264
#define XINUSE 268
#define RESULT 272
#define SAVED 280
#define STACK_MOVED 328
#define FRAME_DAMAGE 336
#define STACK_USED 344
#define FLAGS 352
#define MXCSR 360
#define FPU_CONTROL 364
#define FPU_TAGS 366
#define UPPER 368

// The frame: ten words of arguments, then what belongs to the caller alone. Below it room that is painted.
#define FRAME 344
#define OWN_WORDS 33
#define PAINTED 40960

	.bss
	.balign 16
current: .zero 8
home: .zero 8
environment: .zero 32
callers_mxcsr: .zero 4
callers_fpu: .zero 4

	.section .rodata
	.balign 8
pattern: .quad 0xC0FFEE5EED5EED01
fpu: .word 0x027F

	.text
	.globl vek_raw_call
	.type vek_raw_call, @function
vek_raw_call:
	pushq %rbx
	pushq %rbp
	pushq %r12
	pushq %r13
	pushq %r14
	pushq %r15
	subq $FRAME, %rsp
	movq %rdi, current(%rip)
	movq %rsp, home(%rip)
	movq %rdi, %r11
	movq pattern(%rip), %rax
	leaq 80(%rsp), %rdi
	movl $OWN_WORDS, %ecx
	rep stosq
	leaq -PAINTED(%rsp), %rdi
	movl $(PAINTED / 8), %ecx
	rep stosq
	leaq STACK(%r11), %rsi
	movq %rsp, %rdi
	movl $10, %ecx
	rep movsq
	stmxcsr callers_mxcsr(%rip)
	fnstcw callers_fpu(%rip)
	ldmxcsr MXCSR(%r11)
	fldcw fpu(%rip)
	.irp n, 0, 1, 2, 3, 4, 5, 6, 7
	movups (VECTOR + 16 * \n)(%r11), %xmm\n
	.endr
	movq INTEGER(%r11), %rdi
	movq (INTEGER + 8)(%r11), %rsi
	movq (INTEGER + 16)(%r11), %rdx
	movq (INTEGER + 24)(%r11), %rcx
	movq (INTEGER + 32)(%r11), %r8
	movq (INTEGER + 40)(%r11), %r9
	movq %rax, %rbx
	movq %rax, %rbp
	movq %rax, %r10
	movq %rax, %r12
	movq %rax, %r13
	movq %rax, %r14
	movq %rax, %r15
	call *FUNCTION(%r11)

	movq current(%rip), %r8
	movq %rax, RESULT(%r8)
	movq %rbx, SAVED(%r8)
	movq %rbp, (SAVED + 8)(%r8)
	movq %r12, (SAVED + 16)(%r8)
	movq %r13, (SAVED + 24)(%r8)
	movq %r14, (SAVED + 32)(%r8)
	movq %r15, (SAVED + 40)(%r8)
	movq %rsp, %rax
	movq home(%rip), %rsp
	subq %rsp, %rax
	movq %rax, STACK_MOVED(%r8)
	pushfq
	popq FLAGS(%r8)
	cld
	stmxcsr MXCSR(%r8)
	ldmxcsr callers_mxcsr(%rip)
	fnstcw FPU_CONTROL(%r8)
	fnstenv environment(%rip)
	movw (environment + 8)(%rip), %ax
	movw %ax, FPU_TAGS(%r8)
	fninit
	fldcw callers_fpu(%rip)

	testl $2, AVX(%r8)
	jz 1f
	movl $1, %ecx
	xgetbv
	movl %eax, XINUSE(%r8)
1:	testl $1, AVX(%r8)
	jz 2f
	.irp n, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15
	vmovups %ymm\n, (UPPER + 32 * \n)(%r8)
	.endr
	vzeroupper

2:	movq pattern(%rip), %rax
	xorl %edx, %edx
	movl $OWN_WORDS, %ecx
3:	cmpq %rax, 72(%rsp,%rcx,8)
	je 4f
	incl %edx
4:	loop 3b
	movq %rdx, FRAME_DAMAGE(%r8)
	leaq -PAINTED(%rsp), %rdi
	movl $(PAINTED / 8), %ecx
	repe scasq
	leaq 8(,%rcx,8), %rcx
	movq %rcx, STACK_USED(%r8)

	addq $FRAME, %rsp
	popq %r15
	popq %r14
	popq %r13
	popq %r12
	popq %rbp
	popq %rbx
	ret
	.size vek_raw_call, .-vek_raw_call

	.macro CULPRIT name
	.globl vek_culprit_\name
	.type vek_culprit_\name, @function
vek_culprit_\name:
	.endm

	CULPRIT register
	notq %r13
	ret
	CULPRIT stack_pointer
	ret $16
	CULPRIT frame
	incq 120(%rsp)
	ret
	CULPRIT direction
	std
	ret
	CULPRIT mxcsr
	movl $0x1F80, -8(%rsp)
	ldmxcsr -8(%rsp)
	ret
	CULPRIT fpu_control
	fninit
	ret
	CULPRIT fpu_tags
	fld1
	ret
	CULPRIT deep
	movq $0, -33000(%rsp)
	ret
	CULPRIT upper
	vcmpps $15, %ymm9, %ymm9, %ymm9
	ret
	CULPRIT argument	// takes a 32-bit argument for 64 bits
	leaq (%rdi,%rdi), %rax
	shrq $32, %rax
	ret

	.section .note.GNU-stack,"",@progbits
