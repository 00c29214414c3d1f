/* The smallest host: loads a loop file and prints its tempo and slices. */
#include <LoopLibrary.h>
#include <stdio.h>
#include <stdlib.h>

static void* read_file(const char* path, int32_t* size) {
    FILE* file = fopen(path, "rb");
    void* bytes = NULL;
    long length = 0;
    if (file == NULL) {
        return NULL;
    }
    if (fseek(file, 0, SEEK_END) == 0 && (length = ftell(file)) > 0 && length <= INT32_MAX &&
        fseek(file, 0, SEEK_SET) == 0 && (bytes = malloc((size_t)length)) != NULL &&
        fread(bytes, 1, (size_t)length, file) != (size_t)length) {
        free(bytes);
        bytes = NULL;
    }
    fclose(file);
    *size = (int32_t)length;
    return bytes;
}

int main(int argc, char** argv) {
    int32_t size = 0;
    void* bytes = argc == 2 ? read_file(argv[1], &size) : NULL;
    LOPHandle loop = 0;
    LOPResult result;
    LOPInfo info;

    if (bytes == NULL) {
        fprintf(stderr, "usage: minihost LOOPFILE (a file that can be read)\n");
        return 1;
    }
    if ((result = LOPInitializeDLL()) == kLOPResult_OK) {
        result = LOPCreate(&loop, bytes, size, NULL, NULL);
    }
    free(bytes);
    if (result == kLOPResult_OK &&
        (result = LOPGetInfo(loop, (int32_t)sizeof info, &info)) == kLOPResult_OK) {
        int32_t i;
        printf("%.3f BPM, %d slices\n", info.fLoopTempo / 1000.0, (int)info.fSliceCount);
        for (i = 0; i < info.fSliceCount; ++i) {
            LOPSliceInfo slice;
            if (LOPGetSliceInfo(loop, i, (int32_t)sizeof slice, &slice) == kLOPResult_OK) {
                printf("slice %d at pulse %d: %d frames\n", (int)i, (int)slice.fPPQPosition,
                       (int)slice.fFrameCount);
            }
        }
    }
    if (result != kLOPResult_OK) {
        fprintf(stderr, "%s: the library answered %d\n", argv[1], (int)result);
    }
    LOPDelete(&loop);
    LOPUninitializeDLL();
    return result == kLOPResult_OK ? 0 : 2;
}
