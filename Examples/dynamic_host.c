/* Finds the library at run time, for a host that works without it too: names the slices of a loop
 * file. Nothing is linked; the header gives the types alone. */
#include <LoopLibrary.h>
#include <stdio.h>
#include <stdlib.h>

#ifdef _WIN32
#include <windows.h>
#define LIBRARY_NAME "LoopLibrary.dll"
static void* open_library(const char* name) {
    return (void*)LoadLibraryA(name);
}
static void* find(void* library, const char* name) {
    return (void*)(size_t)GetProcAddress((HMODULE)library, name);
}
#else
#include <dlfcn.h>
#define LIBRARY_NAME "libLoopLibrary.so.1"
static void* open_library(const char* name) {
    return dlopen(name, RTLD_NOW | RTLD_LOCAL);
}
static void* find(void* library, const char* name) {
    return dlsym(library, name);
}
#endif

/* One pointer for each function that the host calls. */
static struct {
    LOPResult (*initialize)(void);
    void (*uninitialize)(void);
    LOPResult (*create)(LOPHandle*, const void*, int32_t, LOPCreateCallback, void*);
    void (*destroy)(LOPHandle*);
    LOPResult (*get_info)(LOPHandle, int32_t, LOPInfo*);
    LOPResult (*get_slice_info)(LOPHandle, int32_t, int32_t, LOPSliceInfo*);
} lop;

/* 0 when a function is missing. A pointer is stored through its bytes, since C has no cast from an
 * object's address to a function's. */
static int bind_one(void* library, const char* name, void* target) {
    void* address = find(library, name);
    *(void**)target = address;
    return address != NULL;
}

static int bind_functions(const char* path) {
    void* library = open_library(path);
    return library != NULL && bind_one(library, "LOPInitializeDLL", &lop.initialize) &&
           bind_one(library, "LOPUninitializeDLL", &lop.uninitialize) &&
           bind_one(library, "LOPCreate", &lop.create) &&
           bind_one(library, "LOPDelete", &lop.destroy) &&
           bind_one(library, "LOPGetInfo", &lop.get_info) &&
           bind_one(library, "LOPGetSliceInfo", &lop.get_slice_info);
}

int main(int argc, char** argv) {
    static unsigned char bytes[64 * 1024 * 1024];
    FILE* file = argc >= 2 ? fopen(argv[1], "rb") : NULL;
    LOPHandle loop = 0;
    LOPInfo info;
    LOPResult result;
    int32_t size, i;
    if (file == NULL) {
        fprintf(stderr, "usage: dynamic_host LOOPFILE [LIBRARY]\n");
        return 1;
    }
    if (!bind_functions(argc >= 3 ? argv[2] : LIBRARY_NAME)) {
        fprintf(stderr, "%s cannot be loaded: loops stay silent\n", LIBRARY_NAME);
        fclose(file);
        return 3;
    }
    size = (int32_t)fread(bytes, 1, sizeof bytes, file);
    fclose(file);
    if ((result = lop.initialize()) == kLOPResult_OK) {
        result = lop.create(&loop, bytes, size, NULL, NULL);
    }
    if (result == kLOPResult_OK) {
        result = lop.get_info(loop, (int32_t)sizeof info, &info);
    }
    for (i = 0; result == kLOPResult_OK && i < info.fSliceCount; ++i) {
        LOPSliceInfo slice;
        result = lop.get_slice_info(loop, i, (int32_t)sizeof slice, &slice);
        printf("slice %d at quarter %.3f\n", (int)i, slice.fPPQPosition / (double)LOP_PPQ);
    }
    if (result != kLOPResult_OK) {
        fprintf(stderr, "%s: the library answered %d\n", argv[1], (int)result);
    }
    lop.destroy(&loop);
    lop.uninitialize();
    return result == kLOPResult_OK ? 0 : 2;
}
