#include "Tests/Host/LibraryCopies.h"
#include "Tests/Host/Measured/CountingAllocator.h"

#include <cstdio>
#include <functional>
#include <future>
#include <memory>
#include <thread>

#include <dlfcn.h>
#include <sys/wait.h>
#include <unistd.h>

// A host whose process is full of modules with thread-local storage: the library loads, and the
// first batch of a thread that is older than the library allocates nothing.

namespace {

class ThreadStorageTest : public CLibraryCopies {
protected:
    // Whether one more of them loads.
    bool LoadNeighbour(const char* module) {
        const std::filesystem::path file =
            fFolder / (std::to_string(getpid()) + "-" + std::to_string(fCount++) + ".so");
        std::filesystem::copy_file(module, file);
        return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL) != nullptr;
    }

    // Loads the library into a process that the neighbours fill, and lets a thread from before that
    // pull its first batch. 0 when all went well.
    int Play(bool isStaticRoomTaken) {
        // Outlives a load that fails, since the thread waits for it still.
        static std::promise<std::function<int()>> work;
        std::promise<int> answer;
        std::thread([&answer] { answer.set_value(work.get_future().get()()); }).detach();
        for (int i = 0; i < 200; ++i) {
            if (!LoadNeighbour(LOOP_NEIGHBOUR_DYNAMIC)) {
                return 1;
            }
        }
        if (isStaticRoomTaken) {
            int loaded = 0;
            while (LoadNeighbour(LOOP_NEIGHBOUR_STATIC)) {
                if (++loaded > 5000) {
                    return 2;
                }
            }
        }
        // Never closed: the process ends with it.
        const auto* const library = new CLoadedLibrary(Copy("late.so"));
        LOPHandle handle = 0;
        if (library->InitializeDLL() != kLOPResult_OK ||
            CreateLoop(*library, handle, ShortLOP2()) != kLOPResult_OK ||
            library->StartPreview(handle) != kLOPResult_OK) {
            return 3;
        }
        work.set_value([library, handle] {
            static float left[1000];
            LOPRenderBuffers buffers{left, nullptr};
            FailAllocation(-1);
            const LOPResult result = library->RenderPreviewBatch(handle, 1000, &buffers);
            return result == kLOPResult_OK && CountedHeapCalls() == 0 ? 0 : 4;
        });
        return answer.get_future().get();
    }

private:
    int fCount = 0;
};

TEST_F(ThreadStorageTest, IsNeitherNeededToLoadNorTakenByAFirstBatch) {
    if (kSanitizerHasItsOwn) {
        GTEST_SKIP() << "the sanitizer makes such calls itself";
    }
    for (const bool isStaticRoomTaken : {false, true}) {
        // In a process of its own, which the neighbours leave unfit for other tests.
        const pid_t child = fork();
        if (child == 0) {
            int answer = 5;
            try {
                answer = Play(isStaticRoomTaken);
            } catch (const std::exception& failure) {
                std::fprintf(stderr, "%s\n", failure.what());
            }
            _exit(answer);
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status));
        EXPECT_EQ(WEXITSTATUS(status), 0) << "static room taken: " << isStaticRoomTaken;
    }
}

} // namespace
