#include "Tests/Host/LibraryCopies.h"

#include <future>
#include <thread>

// Hosts load and unload the library as they please, under several names, and from any thread.

namespace {

using ReloadTest = CLibraryCopies;

TEST_F(ReloadTest, AHundredLoadsAndUnloadsLeaveNothingBehind) {
    const std::filesystem::path file = Copy("again.dll");
    const Bytes whole = ShortLOP2();
    const Bytes broken = TruncatedLOP2();
    const auto loadAndUnload = [&] {
        const CLoadedLibrary library(file);
        EXPECT_EQ(library.InitializeDLL(), kLOPResult_OK);
        EXPECT_EQ(library.InitializeDLL(), kLOPResult_AlreadyInitialized);
        LOPHandle handle = 0;
        EXPECT_EQ(CreateLoop(library, handle, broken), kLOPResult_FileCorrupt);
        EXPECT_EQ(CreateLoop(library, handle, whole), kLOPResult_OK); // left to the end
        Hear(library, whole);
        library.UninitializeDLL();
        EXPECT_EQ(library.InitializeDLL(), kLOPResult_OK);
        library.UninitializeDLL();
    };
    // What the loader and the heap keep once for all.
    for (int round = 0; round < 20; ++round) {
        loadAndUnload();
        ASSERT_FALSE(IsLoaded(file));
    }
    const SProcessUse before = GetProcessUse();
    for (int round = 0; round < 100; ++round) {
        loadAndUnload();
    }
    const SProcessUse after = GetProcessUse();
    EXPECT_EQ(after.fHandles, before.fHandles);
    // One block more a round, the smallest there is, would break this.
    EXPECT_LT(after.fHeapBytes - before.fHeapBytes, 100 * kBytesKeptOfALoad + 1000);
    EXPECT_TRUE(std::filesystem::remove(file));
}

TEST_F(ReloadTest, TwoCopiesHaveAStateEach) {
    const CLoadedLibrary one(Copy("one.dll"));
    const CLoadedLibrary other(Copy("other.dll"));
    const Bytes bytes = ShortLOP2();
    LOPHandle handle = 0;
    EXPECT_EQ(one.InitializeDLL(), kLOPResult_OK);
    EXPECT_EQ(CreateLoop(other, handle, bytes), kLOPResult_NotInitialized);
    EXPECT_EQ(CreateLoop(handle, bytes), kLOPResult_NotInitialized) << "the linked one";
    EXPECT_EQ(other.InitializeDLL(), kLOPResult_OK);
    ASSERT_EQ(CreateLoop(one, handle, bytes), kLOPResult_OK);
    LOPInfo info{};
    EXPECT_EQ(one.GetInfo(handle, sizeof info, &info), kLOPResult_OK);
    EXPECT_EQ(other.GetInfo(handle, sizeof info, &info), kLOPResult_InvalidHandle);
    const std::vector<float> heard = Hear(one, bytes);
    std::vector<std::future<void>> threads;
    for (const CLoadedLibrary* library : {&one, &other, &one, &other}) {
        threads.push_back(std::async(std::launch::async, [&bytes, &heard, library] {
            for (int round = 0; round < 10; ++round) {
                EXPECT_EQ(Hear(*library, bytes), heard);
                LOPHandle none = 0;
                EXPECT_EQ(CreateLoop(*library, none, TruncatedLOP2()), kLOPResult_FileCorrupt);
            }
        }));
    }
    threads.clear(); // waits
    one.UninitializeDLL();
    EXPECT_EQ(one.GetInfo(handle, sizeof info, &info), kLOPResult_NotInitialized);
    EXPECT_EQ(other.InitializeDLL(), kLOPResult_AlreadyInitialized);
    EXPECT_EQ(Hear(other, bytes), heard);
    other.UninitializeDLL();
}

// Neither a thread that was there before the load nor one that ends after the unload runs into code
// that is gone.
TEST_F(ReloadTest, AThreadThatUsedTheLibraryOutlivesIt) {
    const std::filesystem::path file = Copy("shortlived.dll");
    const Bytes whole = ShortLOP2();
    const Bytes broken = TruncatedLOP2();
    std::promise<const CLoadedLibrary*> loaded;
    std::promise<void> used;
    std::promise<void> unloaded;
    std::thread thread([&] {
        const CLoadedLibrary& library = *loaded.get_future().get();
        LOPHandle handle = 0;
        EXPECT_EQ(CreateLoop(library, handle, broken), kLOPResult_FileCorrupt);
        Hear(library, whole);
        used.set_value();
        unloaded.get_future().wait();
    });
    {
        const CLoadedLibrary library(file);
        EXPECT_EQ(library.InitializeDLL(), kLOPResult_OK);
        loaded.set_value(&library);
        used.get_future().wait();
        library.UninitializeDLL();
    }
    EXPECT_FALSE(IsLoaded(file));
    unloaded.set_value();
    thread.join();
}

} // namespace
