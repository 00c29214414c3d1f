/* How an audio engine pulls a preview: a control thread sets it up, and the audio callback asks for
 * batches of whatever size the device wants, while the tempo follows a knob. Here the "device" is a
 * raw file of interleaved 32-bit floats. */
#include <LoopLibrary.h>
#include <stdio.h>
#include <stdlib.h>

enum { kBatch = 441, kBatches = 400 };

/* What a real host would run on its audio thread. Nothing here allocates or waits. */
static LOPResult audio_callback(LOPHandle loop, float* left, float* right, int32_t frames) {
    LOPRenderBuffers buffers;
    buffers.fLeft = left;
    buffers.fRight = right;
    return LOPRenderPreviewBatch(loop, frames, &buffers);
}

static LOPResult play(LOPHandle loop, FILE* device) {
    float left[kBatch], right[kBatch];
    LOPResult result = LOPSetPreviewTempo(loop, 100000);
    int batch, i;
    if (result == kLOPResult_OK) {
        result = LOPStartPreview(loop);
    }
    for (batch = 0; batch < kBatches && result == kLOPResult_OK; ++batch) {
        if (batch == kBatches / 2) {
            LOPSetPreviewTempo(loop, 140000); /* the knob is turned; it acts at the next block */
        }
        result = audio_callback(loop, left, right, kBatch);
        for (i = 0; i < kBatch; ++i) {
            fwrite(&left[i], sizeof left[i], 1, device);
            fwrite(&right[i], sizeof right[i], 1, device);
        }
    }
    LOPStopPreview(loop);
    return result;
}

int main(int argc, char** argv) {
    static unsigned char bytes[64 * 1024 * 1024];
    FILE* file = argc == 3 ? fopen(argv[1], "rb") : NULL;
    FILE* device = file != NULL ? fopen(argv[2], "wb") : NULL;
    LOPHandle loop = 0;
    LOPResult result;
    int32_t size;
    if (device == NULL) {
        fprintf(stderr, "usage: preview LOOPFILE OUT.f32\n");
        return 1;
    }
    size = (int32_t)fread(bytes, 1, sizeof bytes, file);
    fclose(file);
    LOPInitializeDLL();
    result = LOPCreate(&loop, bytes, size, NULL, NULL);
    if (result == kLOPResult_OK) {
        result = play(loop, device);
    }
    if (result != kLOPResult_OK) {
        fprintf(stderr, "%s: the library answered %d\n", argv[1], (int)result);
    }
    LOPDelete(&loop);
    LOPUninitializeDLL();
    fclose(device);
    return result == kLOPResult_OK ? 0 : 2;
}
