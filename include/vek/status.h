// SPDX-License-Identifier: Apache-2.0
// Status codes.
#ifndef VEK_STATUS_H
#define VEK_STATUS_H

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup vek_status Status codes
 *
 * What the functions return.
 * @{
 */

/**
 * Result of nearly every function. Zero is success. A negative value is an error: the call was refused and its outputs
 * hold nothing to rely on. A positive value is a warning: the work is done, and something about it is worth knowing.
 * vekGetStatusString() gives the text of a code. The names with a comment are the ones that this library returns; the
 * others keep their values so that codes stay comparable between versions.
 */
typedef int VekStatus;

/** Values of #VekStatus. */
enum {
  vekStsNotSupportedModeErr = -9999,
  vekStsCpuNotSupportedErr = -9998, /**< the processor lacks what the call needs */
  vekStsInplaceModeNotSupportedErr = -9997,
  vekStsAlgTypeErr = -228,
  vekStsMisalignedOffsetErr = -227,
  vekStsQuadraticNonResidueErr = -226,
  vekStsBorderErr = -225,
  vekStsDitherTypeErr = -224,
  vekStsH264BufferFullErr = -223,
  vekStsWrongAffinitySettingErr = -222,
  vekStsLoadDynErr = -221,
  vekStsPointAtInfinity = -220,
  vekStsI18nUnsupportedErr = -219,
  vekStsI18nMsgCatalogOpenErr = -218,
  vekStsI18nMsgCatalogCloseErr = -217,
  vekStsUnknownStatusCodeErr = -216, /**< text of every code that has no row of its own */
  vekStsOFBSizeErr = -215,
  vekStsLzoBrokenStreamErr = -214,
  vekStsRoundModeNotSupportedErr = -213, /**< the rounding mode is not supported */
  vekStsDecimateFractionErr = -212,
  vekStsWeightErr = -211,
  vekStsQualityIndexErr = -210,
  vekStsIIRPassbandRippleErr = -209,
  vekStsFilterFrequencyErr = -208,
  vekStsFIRGenOrderErr = -207,
  vekStsIIRGenOrderErr = -206,
  vekStsConvergeErr = -205,
  vekStsSizeMatchMatrixErr = -204,
  vekStsCountMatrixErr = -203,
  vekStsRoiShiftMatrixErr = -202,
  vekStsResizeNoOperationErr = -201,
  vekStsSrcDataErr = -200,
  vekStsMaxLenHuffCodeErr = -199,
  vekStsCodeLenTableErr = -198,
  vekStsFreqTableErr = -197,
  vekStsIncompleteContextErr = -196,
  vekStsSingularErr = -195,
  vekStsSparseErr = -194,
  vekStsBitOffsetErr = -193,
  vekStsQPErr = -192,
  vekStsVLCErr = -191,
  vekStsRegExpOptionsErr = -190,
  vekStsRegExpErr = -189,
  vekStsRegExpMatchLimitErr = -188,
  vekStsRegExpQuantifierErr = -187,
  vekStsRegExpGroupingErr = -186,
  vekStsRegExpBackRefErr = -185,
  vekStsRegExpChClassErr = -184,
  vekStsRegExpMetaChErr = -183,
  vekStsStrideMatrixErr = -182,
  vekStsCTRSizeErr = -181,
  vekStsJPEG2KCodeBlockIsNotAttached = -180,
  vekStsNotPosDefErr = -179,
  vekStsEphemeralKeyErr = -178,
  vekStsMessageErr = -177,
  vekStsShareKeyErr = -176,
  vekStsIvalidPublicKey = -175,
  vekStsIvalidPrivateKey = -174,
  vekStsOutOfECErr = -173,
  vekStsECCInvalidFlagErr = -172,
  vekStsMP3FrameHeaderErr = -171,
  vekStsMP3SideInfoErr = -170,
  vekStsBlockStepErr = -169,
  vekStsMBStepErr = -168,
  vekStsAacPrgNumErr = -167,
  vekStsAacSectCbErr = -166,
  vekStsAacSfValErr = -164,
  vekStsAacCoefValErr = -163,
  vekStsAacMaxSfbErr = -162,
  vekStsAacPredSfbErr = -161,
  vekStsAacPlsDataErr = -160,
  vekStsAacGainCtrErr = -159,
  vekStsAacSectErr = -158,
  vekStsAacTnsNumFiltErr = -157,
  vekStsAacTnsLenErr = -156,
  vekStsAacTnsOrderErr = -155,
  vekStsAacTnsCoefResErr = -154,
  vekStsAacTnsCoefErr = -153,
  vekStsAacTnsDirectErr = -152,
  vekStsAacTnsProfileErr = -151,
  vekStsAacErr = -150,
  vekStsAacBitOffsetErr = -149,
  vekStsAacAdtsSyncWordErr = -148,
  vekStsAacSmplRateIdxErr = -147,
  vekStsAacWinLenErr = -146,
  vekStsAacWinGrpErr = -145,
  vekStsAacWinSeqErr = -144,
  vekStsAacComWinErr = -143,
  vekStsAacStereoMaskErr = -142,
  vekStsAacChanErr = -141,
  vekStsAacMonoStereoErr = -140,
  vekStsAacStereoLayerErr = -139,
  vekStsAacMonoLayerErr = -138,
  vekStsAacScalableErr = -137,
  vekStsAacObjTypeErr = -136,
  vekStsAacWinShapeErr = -135,
  vekStsAacPcmModeErr = -134,
  vekStsVLCUsrTblHeaderErr = -133,
  vekStsVLCUsrTblUnsupportedFmtErr = -132,
  vekStsVLCUsrTblEscAlgTypeErr = -131,
  vekStsVLCUsrTblEscCodeLengthErr = -130,
  vekStsVLCUsrTblCodeLengthErr = -129,
  vekStsVLCInternalTblErr = -128,
  vekStsVLCInputDataErr = -127,
  vekStsVLCAACEscCodeLengthErr = -126,
  vekStsNoiseRangeErr = -125,
  vekStsUnderRunErr = -124,
  vekStsPaddingErr = -123,
  vekStsCFBSizeErr = -122,
  vekStsPaddingSchemeErr = -121,
  vekStsInvalidCryptoKeyErr = -120,
  vekStsLengthErr = -119,
  vekStsBadModulusErr = -118,
  vekStsLPCCalcErr = -117,
  vekStsRCCalcErr = -116,
  vekStsIncorrectLSPErr = -115,
  vekStsNoRootFoundErr = -114,
  vekStsJPEG2KBadPassNumber = -113,
  vekStsJPEG2KDamagedCodeBlock = -112,
  vekStsH263CBPYCodeErr = -111,
  vekStsH263MCBPCInterCodeErr = -110,
  vekStsH263MCBPCIntraCodeErr = -109,
  vekStsNotEvenStepErr = -108,
  vekStsHistoNofLevelsErr = -107,
  vekStsLUTNofLevelsErr = -106,
  vekStsMP4BitOffsetErr = -105,
  vekStsMP4QPErr = -104,
  vekStsMP4BlockIdxErr = -103,
  vekStsMP4BlockTypeErr = -102,
  vekStsMP4MVCodeErr = -101,
  vekStsMP4VLCCodeErr = -100,
  vekStsMP4DCCodeErr = -99,
  vekStsMP4FcodeErr = -98,
  vekStsMP4AlignErr = -97,
  vekStsMP4TempDiffErr = -96,
  vekStsMP4BlockSizeErr = -95,
  vekStsMP4ZeroBABErr = -94,
  vekStsMP4PredDirErr = -93,
  vekStsMP4BitsPerPixelErr = -92,
  vekStsMP4VideoCompModeErr = -91,
  vekStsMP4LinearModeErr = -90,
  vekStsH263PredModeErr = -83,
  vekStsH263BlockStepErr = -82,
  vekStsH263MBStepErr = -81,
  vekStsH263FrameWidthErr = -80,
  vekStsH263FrameHeightErr = -79,
  vekStsH263ExpandPelsErr = -78,
  vekStsH263PlaneStepErr = -77,
  vekStsH263QuantErr = -76,
  vekStsH263MVCodeErr = -75,
  vekStsH263VLCCodeErr = -74,
  vekStsH263DCCodeErr = -73,
  vekStsH263ZigzagLenErr = -72,
  vekStsFBankFreqErr = -71,
  vekStsFBankFlagErr = -70,
  vekStsFBankErr = -69,
  vekStsNegOccErr = -67,
  vekStsCdbkFlagErr = -66,
  vekStsSVDCnvgErr = -65,
  vekStsJPEGHuffTableErr = -64,
  vekStsJPEGDCTRangeErr = -63,
  vekStsJPEGOutOfBufErr = -62,
  vekStsDrawTextErr = -61,
  vekStsChannelOrderErr = -60,
  vekStsZeroMaskValuesErr = -59,
  vekStsQuadErr = -58,
  vekStsRectErr = -57,
  vekStsCoeffErr = -56,
  vekStsNoiseValErr = -55,
  vekStsDitherLevelsErr = -54,
  vekStsNumChannelsErr = -53,
  vekStsCOIErr = -52,
  vekStsDivisorErr = -51,
  vekStsAlphaTypeErr = -50,
  vekStsGammaRangeErr = -49,
  vekStsGrayCoefSumErr = -48,
  vekStsChannelErr = -47,
  vekStsToneMagnErr = -46,   /**< tone magnitude not above zero */
  vekStsToneFreqErr = -45,   /**< tone frequency outside [0, 0.5) */
  vekStsTonePhaseErr = -44,  /**< tone phase outside [0, 2*pi) */
  vekStsTrnglMagnErr = -43,  /**< triangle magnitude not above zero */
  vekStsTrnglFreqErr = -42,  /**< triangle frequency outside [0, 0.5) */
  vekStsTrnglPhaseErr = -41, /**< triangle phase outside [0, 2*pi) */
  vekStsTrnglAsymErr = -40,  /**< triangle asymmetry outside [-pi, pi) */
  vekStsHugeWinErr = -39,    /**< Kaiser window: length times alpha too large */
  vekStsJaehneErr = -38,     /**< negative magnitude of the Jaehne signal */
  vekStsStrideErr = -37,     /**< stride or distance not valid */
  vekStsEpsValErr = -36,
  vekStsWtOffsetErr = -35,
  vekStsAnchorErr = -34,
  vekStsMaskSizeErr = -33,
  vekStsShiftErr = -32,        /**< shift count below zero */
  vekStsSampleFactorErr = -31, /**< sampling factor below 1 */
  vekStsSamplePhaseErr = -30,  /**< sampling phase outside [0, factor) */
  vekStsFIRMRFactorErr = -29,  /**< multi-rate factor below 1 */
  vekStsFIRMRPhaseErr = -28,   /**< multi-rate phase outside [0, factor) */
  vekStsRelFreqErr = -27,      /**< relative frequency out of range */
  vekStsFIRLenErr = -26,       /**< FIR filter without taps */
  vekStsIIROrderErr = -25,     /**< IIR filter order not valid */
  vekStsDlyLineIndexErr = -24,
  vekStsResizeFactorErr = -23,
  vekStsInterpolationErr = -22,
  vekStsMirrorFlipErr = -21,
  vekStsMoment00ZeroErr = -20,
  vekStsThreshNegLevelErr = -19, /**< negative threshold level */
  vekStsThresholdErr = -18,      /**< threshold bounds in the wrong order */
  vekStsContextMatchErr = -17,   /**< state object of another kind, or none */
  vekStsFftFlagErr = -16,        /**< transform flag not valid */
  vekStsFftOrderErr = -15,       /**< transform order not valid */
  vekStsStepErr = -14,
  vekStsScaleRangeErr = -13,
  vekStsDataTypeErr = -12,
  vekStsOutOfRangeErr = -11,
  vekStsDivByZeroErr = -10, /**< division by a zero constant */
  vekStsMemAllocErr = -9,   /**< memory could not be allocated */
  vekStsNullPtrErr = -8,    /**< a required pointer is null */
  vekStsRangeErr = -7,
  vekStsSizeErr = -6,   /**< length not valid, as a rule below 1 */
  vekStsBadArgErr = -5, /**< argument not valid */
  vekStsNoMemErr = -4,
  vekStsSAReservedErr3 = -3,
  vekStsErr = -2,
  vekStsSAReservedErr1 = -1,
  vekStsNoErr = 0,       /**< success */
  vekStsNoOperation = 1, /**< nothing to do */
  vekStsMisalignedBuf = 2,
  vekStsSqrtNegArg = 3,         /**< a negative element met the square root */
  vekStsInvZero = 4,            /**< a zero element met an inverse threshold at level zero */
  vekStsEvenMedianMaskSize = 5, /**< an even median mask was made odd */
  vekStsDivByZero = 6,          /**< a zero divisor was met */
  vekStsLnZeroArg = 7,
  vekStsLnNegArg = 8,
  vekStsNanArg = 9,
  vekStsJPEGMarker = 10,
  vekStsResFloor = 11,
  vekStsOverflow = 12,
  vekStsLSFLow = 13,
  vekStsLSFHigh = 14,
  vekStsLSFLowAndHigh = 15,
  vekStsZeroOcc = 16,
  vekStsUnderflow = 17,
  vekStsSingularity = 18,
  vekStsDomain = 19,
  vekStsNonOrvelCpu = 20,
  vekStsCpuMismatch = 21,
  vekStsNoVekFunctionFound = 22,
  vekStsDllNotFoundBestUsed = 23,
  vekStsNoOperationInDll = 24,
  vekStsInsufficientEntropy = 25,
  vekStsOvermuchStrings = 26,
  vekStsOverlongString = 27,
  vekStsAffineQuadChanged = 28,
  vekStsWrongIntersectROI = 29,
  vekStsWrongIntersectQuad = 30,
  vekStsSmallerCodebook = 31,
  vekStsSrcSizeLessExpected = 32,
  vekStsDstSizeLessExpected = 33,
  vekStsStreamEnd = 34,
  vekStsDoubleSize = 35,
  vekStsNotSupportedCpu = 36,  /**< processor information is not to be had here */
  vekStsUnknownCacheSize = 37, /**< the cache size is not known */
  vekStsSymKernelExpected = 38,
  vekStsEvenMedianWeight = 39,
  vekStsWrongIntersectVOI = 40,
  vekStsI18nMsgCatalogInvalid = 41,
  vekStsI18nGetMessageFail = 42,
  vekStsWaterfall = 43,
  vekStsPrevLibraryUsed = 44,
  vekStsLLADisabled = 45,
  vekStsNoAntialiasing = 46,
  vekStsRepetitiveSrcData = 47,
  vekStsSizeWrn = 48
};

/** @} */

#ifdef __cplusplus
}
#endif

#endif
