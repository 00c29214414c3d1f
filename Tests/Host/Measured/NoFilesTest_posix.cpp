#include "Tests/Host/HostLoop.h"
#include "Tests/Host/Measured/NextFunction.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>

// A loop's life touches no file system: no log, no dump, no folder, no debugger that would make
// one.

namespace {

std::atomic<int> gOpened{0};

} // namespace

// All roads to a file or folder that the library's code could take end up here first.
extern "C" int open(const char* path, int flags, ...) {
    static const auto next = NextFunction<int (*)(const char*, int, ...)>("open");
    va_list arguments;
    va_start(arguments, flags);
    const auto mode = va_arg(arguments, mode_t);
    va_end(arguments);
    ++gOpened;
    return next(path, flags, mode);
}

extern "C" int mkdir(const char* path, mode_t mode) {
    static const auto next = NextFunction<int (*)(const char*, mode_t)>("mkdir");
    ++gOpened;
    return next(path, mode);
}

extern "C" FILE* fopen(const char* path, const char* mode) {
    static const auto next = NextFunction<FILE* (*)(const char*, const char*)>("fopen");
    ++gOpened;
    return next(path, mode);
}

namespace {

TEST(Files, AreTouchedByNoExport) {
    const Bytes bytes = DrumLOP2();
    const Bytes broken(bytes.begin(), bytes.begin() + 100);
    ASSERT_EQ(fopen("/nonexistent", "r"), nullptr);
    ASSERT_EQ(gOpened, 1) << "the counter counts";
    ASSERT_EQ(LOPInitializeDLL(), kLOPResult_OK);
    {
        LOPHandle none = 0;
        EXPECT_EQ(CreateLoop(none, broken), kLOPResult_FileCorrupt);
        const CHostLoop loop(bytes);
        LOPSetOutputSampleRate(loop.Get(), 48000);
        LOPStartPreview(loop.Get());
        loop.RenderPreview(10000, 441);
        loop.RenderSlice(0);
    }
    LOPUninitializeDLL();
    EXPECT_EQ(gOpened, 1);
}

} // namespace
