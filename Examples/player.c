/* Plays a loop through PortAudio by the preview. All that takes time is done before the stream
 * starts; the audio callback calls LOPRenderPreviewBatch and nothing else of the library. The tempo
 * comes from a control thread through an atomic (here: a sweep from one tempo to another).
 *
 * usage: player LOOPFILE SECONDS [BPM [LAST_BPM]] */
#include <LoopLibrary.h>
#include <portaudio.h>
#include <stdatomic.h>
#include <stdio.h>
#include <stdlib.h>

enum { kRate = 44100 };

static LOPHandle loop;
static atomic_int wanted_tempo; /* thousandths of a BPM; a knob may write it from any thread */
static atomic_int last_result;  /* what the audio thread has to report */

/* The audio thread. PortAudio's planar buffers are what the library fills. */
static int audio(const void* input, void* output, unsigned long frames,
                 const PaStreamCallbackTimeInfo* time, PaStreamCallbackFlags flags, void* data) {
    float** channels = (float**)output;
    LOPRenderBuffers buffers;
    LOPResult result;
    (void)input, (void)time, (void)flags, (void)data;
    buffers.fLeft = channels[0];
    buffers.fRight = channels[1];
    result = LOPRenderPreviewBatch(loop, (int32_t)frames, &buffers);
    if (result != kLOPResult_OK) {
        atomic_store_explicit(&last_result, result, memory_order_relaxed);
    }
    return paContinue;
}

/* The control thread: hands the tempo on some thirty times a second. Steps below 0.1 BPM between
 * two slices would be lost, so it hands on what has changed by more. */
static void control(int seconds, int first, int last) {
    int turns = seconds * 30, turn, set = 0;
    for (turn = 0; turn < turns; ++turn) {
        int wanted;
        atomic_store(&wanted_tempo, first + (int)((long long)(last - first) * turn / turns));
        wanted = atomic_load(&wanted_tempo);
        if (abs(wanted - set) >= 100) {
            LOPSetPreviewTempo(loop, wanted);
            set = wanted;
        }
        Pa_Sleep(1000 / 30);
    }
}

static LOPResult load(const char* path) {
    static unsigned char bytes[64 * 1024 * 1024];
    FILE* file = fopen(path, "rb");
    int32_t size;
    if (file == NULL) {
        return kLOPResult_FileCorrupt;
    }
    size = (int32_t)fread(bytes, 1, sizeof bytes, file);
    fclose(file);
    return LOPCreate(&loop, bytes, size, NULL, NULL);
}

int main(int argc, char** argv) {
    PaStream* stream = NULL;
    PaError error;
    LOPInfo info;
    LOPResult result;
    int tempo;
    if (argc < 3) {
        fprintf(stderr, "usage: player LOOPFILE SECONDS [BPM [LAST_BPM]]\n");
        return 1;
    }
    if ((result = LOPInitializeDLL()) != kLOPResult_OK ||
        (result = load(argv[1])) != kLOPResult_OK ||
        (result = LOPSetOutputSampleRate(loop, kRate)) != kLOPResult_OK ||
        (result = LOPGetInfo(loop, (int32_t)sizeof info, &info)) != kLOPResult_OK) {
        fprintf(stderr, "%s: the library answered %d\n", argv[1], (int)result);
        return 2;
    }
    tempo = argc > 3 ? (int)(atof(argv[3]) * 1000) : info.fStoredTempo;
    if ((error = Pa_Initialize()) == paNoError &&
        (error = Pa_OpenDefaultStream(&stream, 0, 2, paFloat32 | paNonInterleaved, kRate,
                                      paFramesPerBufferUnspecified, audio, NULL)) == paNoError) {
        LOPStartPreview(loop);
        error = Pa_StartStream(stream);
    }
    if (error == paNoError) {
        printf("playing at %.3f BPM\n", tempo / 1000.0);
        control(atoi(argv[2]), tempo, argc > 4 ? (int)(atof(argv[4]) * 1000) : tempo);
        Pa_StopStream(stream);
    } else {
        fprintf(stderr, "no sound: %s\n", Pa_GetErrorText(error));
    }
    Pa_Terminate();
    LOPStopPreview(loop);
    LOPDelete(&loop);
    LOPUninitializeDLL();
    return error != paNoError ? 3 : atomic_load(&last_result) != 0 ? 2 : 0;
}
