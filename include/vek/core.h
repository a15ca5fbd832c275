// SPDX-License-Identifier: Apache-2.0
// The library frame: status texts, processor information, run-time controls, memory and the version record.
#ifndef VEK_CORE_H
#define VEK_CORE_H

#include <stdint.h>

#include "vek/api.h"
#include "vek/status.h"
#include "vek/types.h"

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_core Library frame
 *
 * Once, when the library is loaded, it reads the processor's features and chooses one of seven variant slots: mx
 * (SSE2), m7 (SSE3), u8 (SSSE3), n8 (SSSE3 and MOVBE), y8 (SSE4.1), e9 (AVX) or l9 (AVX2, FMA, BMI1 and BMI2). Every
 * signal function then runs the implementation of that slot. The choice follows the features alone, whatever the
 * vendor, and never changes. There is nothing to initialise and nothing to configure; no call starts a thread, prints
 * or reads the environment.
 * @{
 */

/**
 * @name Features of the processor
 * The mask that vekGetCpuFeatures() stores. Bits without a name are zero.
 * @{
 */
#define VEK_FEATURE_MMX UINT64_C(0x1)           /**< MMX */
#define VEK_FEATURE_SSE UINT64_C(0x2)           /**< SSE */
#define VEK_FEATURE_SSE2 UINT64_C(0x4)          /**< SSE2 */
#define VEK_FEATURE_SSE3 UINT64_C(0x8)          /**< SSE3 */
#define VEK_FEATURE_SSSE3 UINT64_C(0x10)        /**< SSSE3 */
#define VEK_FEATURE_MOVBE UINT64_C(0x20)        /**< MOVBE */
#define VEK_FEATURE_SSE41 UINT64_C(0x40)        /**< SSE4.1 */
#define VEK_FEATURE_SSE42 UINT64_C(0x80)        /**< SSE4.2 */
#define VEK_FEATURE_AVX UINT64_C(0x100)         /**< the processor has AVX */
#define VEK_FEATURE_AVX_OS UINT64_C(0x200)      /**< it has AVX and the operating system saves the YMM registers */
#define VEK_FEATURE_AES UINT64_C(0x400)         /**< AES instructions */
#define VEK_FEATURE_CLMUL UINT64_C(0x800)       /**< carry-less multiplication */
#define VEK_FEATURE_COPROC_EXT UINT64_C(0x1000) /**< extension of the coprocessor family */
#define VEK_FEATURE_RDRAND UINT64_C(0x2000)     /**< RDRAND */
#define VEK_FEATURE_F16C UINT64_C(0x4000)       /**< half-precision conversion */
#define VEK_FEATURE_AVX2 UINT64_C(0x8000)       /**< AVX2, FMA, BMI1 and BMI2, all four */
#define VEK_FEATURE_ADX UINT64_C(0x10000)       /**< ADCX and ADOX */
#define VEK_FEATURE_RDSEED UINT64_C(0x20000)    /**< RDSEED */
#define VEK_FEATURE_PREFETCHW UINT64_C(0x40000) /**< PREFETCHW */
#define VEK_FEATURE_COPROC UINT64_C(0x80000000) /**< processor of the coprocessor family */
/** @} */

/** Type of the processor, from vekGetCpuType(). */
typedef int VekCpuType;
/** Values of #VekCpuType. */
enum {
  vekCpuUnknown = 0,        /**< none of the others */
  vekCpuSsse3Gen1 = 33,     /**< family 6 model 0x0F with SSSE3, fewer than three cores */
  vekCpuSsse3Gen1Quad = 34, /**< family 6 model 0x0F with SSSE3, three cores or more */
  vekCpuSse41Gen = 35,      /**< family 6 model 0x17 with SSE4.1 */
  vekCpuLumen = 36,         /**< family 6 model 0x1C with SSSE3 and MOVBE, the low-power in-order core */
  vekCpuSse42Gen = 37,      /**< family 6 model 0x1A with SSE4.2 */
  vekCpuSSE = 64,           /**< any processor with SSE */
  vekCpuSSE2 = 65,          /**< any processor with SSE2 */
  vekCpuSSE3 = 66,          /**< any processor with SSE3, and every family-15 processor of the checked vendor */
  vekCpuSSSE3 = 67,         /**< any processor with SSSE3 */
  vekCpuSSE41 = 68,         /**< any processor with SSE4.1 */
  vekCpuSSE42 = 69,         /**< any processor with SSE4.2 */
  vekCpuAVX = 70,           /**< any processor with AVX */
  vekCpuAVX2 = 74,          /**< family 6 model 0x3C with AVX2, FMA, BMI1 and BMI2 */
  vekCpuX8664 = 96          /**< 64-bit processor with none of the above */
};

/** Version record of one variant slot. Constant; never freed. */
typedef struct VekLibVersion {
  int major;             /**< 8 */
  int minor;             /**< 0 */
  int update;            /**< 1 */
  int revision;          /**< 40318 */
  char cpuCode[4];       /**< suffix of the slot, zero-padded: "mx", "m7", "u8", "n8", "y8", "e9" or "l9" */
  const char* name;      /**< name of the library with its slot, such as "vekSP AVX2 (l9)" */
  const char* version;   /**< "8.0.1 (r40318)" */
  const char* buildDate; /**< "Jul 11 2013" */
} VekLibVersion;

/**
 * Text of a status code: the code's name, a colon and a sentence.
 *
 * @param status any value; a code without a row gives the text of #vekStsUnknownStatusCodeErr
 * @return constant text, never null; not to be freed or written
 */
VEK_API const char* vekGetStatusString(VekStatus status);

/**
 * Type of the processor. On the checked vendor ("GenuineOrvel") some family-6 models and family 15 have codes of their
 * own; every other processor gets the highest of the generic codes 64 to 70 that its instruction sets reach.
 *
 * @return one of the vekCpu codes, #vekCpuUnknown when nothing matches. AVX counts here even if the operating system
 *         does not save the YMM registers.
 */
VEK_API VekCpuType vekGetCpuType(void);

/**
 * Features of the processor, and the registers of any CPUID leaf.
 *
 * Checks, in order: a processor that cannot be asked gives #vekStsNotSupportedCpu; `pFeaturesMask` null gives
 * #vekStsNullPtrErr.
 *
 * @param pFeaturesMask  receives the VEK_FEATURE mask of the processor (not restricted by the slot). The value found in
 *                       it beforehand selects the CPUID leaf: the eight ASCII bytes "getinfoa", read as the
 * little-endian number 0x616F666E69746567, ask for the leaf and sub-leaf given in elements 0 and 2 of `pCpuidInfoRegs`;
 * any other value asks for leaf 1, sub-leaf 0
 * @param pCpuidInfoRegs four words that receive EAX, EBX, ECX and EDX of that leaf; may be null
 */
VEK_API VekStatus vekGetCpuFeatures(Vek64u* pFeaturesMask, Vek32u* pCpuidInfoRegs);

/** The processor's time-stamp counter. */
VEK_API Vek64u vekGetCpuClocks(void);

/**
 * Measures the rate of the time-stamp counter against the wall clock. Takes two to three seconds of busy waiting;
 * setting the system's clock meanwhile spoils the result.
 *
 * @param pMhz receives the rate in MHz, truncated; null gives #vekStsNullPtrErr
 */
VEK_API VekStatus vekGetCpuFreqMhz(int* pMhz);

/**
 * Size of the processor's largest data or unified cache. Computed by the first call; later calls repeat its answer.
 *
 * @param pSizeByte receives the size in bytes, 0 whenever it cannot be told; null gives #vekStsNullPtrErr
 * @return #vekStsNoErr; #vekStsNotSupportedCpu on another vendor than the checked one ("GenuineOrvel") or without CPUID
 *         leaf 2; #vekStsUnknownCacheSize if the processor describes no cache that is known
 */
VEK_API VekStatus vekGetMaxCacheSizeB(int* pSizeByte);

/** Number of cores in the processor package; 1 whenever it cannot be told. */
VEK_API int vekGetNumCoresOnDie(void);

/**
 * Sets or clears denormals-are-zero (bit 6 of MXCSR) for the calling thread. All other bits stay, flush-to-zero
 * included. No other function of the library changes the mode.
 *
 * @param value non-zero sets the mode, zero clears it
 * @return #vekStsNoErr, or #vekStsCpuNotSupportedErr if the processor lacks the mode
 */
VEK_API VekStatus vekSetDenormAreZeros(int value);

/**
 * Number of threads that the library uses: always 1, the caller's own.
 *
 * @param pNumThr receives 1; null gives #vekStsNullPtrErr
 * @return #vekStsNoOperation, a warning that says there is no threading to control
 */
VEK_API VekStatus vekGetNumThreads(int* pNumThr);

/**
 * Has no effect, since the library never threads.
 *
 * @param numThr any value
 * @return #vekStsNoOperation
 */
VEK_API VekStatus vekSetNumThreads(int numThr);

/**
 * @name Memory
 * Room for `len` elements from the process heap, aligned to 64 bytes and not initialised, to be released with
 * veksFree(). Null when `len` is below 1, when the heap has no room, or when the size in bytes does not come out
 * positive.
 *
 * The size in bytes is a 32-bit product that wraps: it is taken modulo 2^32 and read as a signed number. From 2^29
 * elements of 4 bytes and from 2^28 elements of 8 bytes on, the block is therefore smaller than asked for, or null.
 * Ask for such lengths with another allocator; no function requires its arrays to come from here.
 *
 * Any thread may call these functions at any time.
 * @{
 */
VEK_API Vek32s* veksMalloc_32s(int len);
VEK_API Vek32f* veksMalloc_32f(int len);
VEK_API Vek32sc* veksMalloc_32sc(int len);
VEK_API Vek32fc* veksMalloc_32fc(int len);

/**
 * Releases a block obtained from veksMalloc. Null is harmless; any other pointer is undefined behaviour.
 *
 * @param ptr the block, or null
 */
VEK_API void veksFree(void* ptr);
/** @} */

/** Version record of the slot in force; it tells which implementation the processor was given. */
VEK_API const VekLibVersion* veksGetLibVersion(void);

/** @} */

#ifdef __cplusplus
}
#endif

#endif
