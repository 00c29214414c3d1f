#include "LoopLibrary/Public/LoopLibrary.h"

#include <stddef.h>

/* The header as a C host sees it: every offset, asked of the C compiler. 0 when all are right. */

int CheckBoundaryInC(void);

int CheckBoundaryInC(void) {
    int wrong = 0;
    wrong += sizeof(LOPHandle) != 8;
    wrong += sizeof(LOPResult) != 4;
    wrong += sizeof(LOPInfo) != 36;
    wrong += offsetof(LOPInfo, fSampleRate) != 4;
    wrong += offsetof(LOPInfo, fSliceCount) != 8;
    wrong += offsetof(LOPInfo, fStoredTempo) != 12;
    wrong += offsetof(LOPInfo, fLoopTempo) != 16;
    wrong += offsetof(LOPInfo, fPPQLength) != 20;
    wrong += offsetof(LOPInfo, fTimeSignatureNumerator) != 24;
    wrong += offsetof(LOPInfo, fTimeSignatureDenominator) != 28;
    wrong += offsetof(LOPInfo, fBitDepth) != 32;
    wrong += sizeof(LOPSliceInfo) != 8;
    wrong += offsetof(LOPSliceInfo, fFrameCount) != 4;
    wrong += sizeof(LOPCreatorInfo) != 1280;
    wrong += offsetof(LOPCreatorInfo, fText2) != 256;
    wrong += offsetof(LOPCreatorInfo, fText5) != 1024;
    wrong += sizeof(LOPRenderBuffers) != 2 * sizeof(float*);
    wrong += offsetof(LOPRenderBuffers, fRight) != sizeof(float*);
    wrong += !LOOPLIBRARY_VERSION_AT_LEAST(1, 0, 0);
    wrong += LOOPLIBRARY_VERSION_AT_LEAST(LOOPLIBRARY_VERSION_MAJOR + 1, 0, 0);
    wrong += LOPGetInfo(0, 0, NULL) != kLOPResult_NotInitialized;
    return wrong;
}
