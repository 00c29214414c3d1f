#include "Debug/Log/VMISOBuffer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <thread>
#include <vector>

namespace NSDebugPackage {

static VMISOBufferEntry MakeEntry(uint32_t thread, int32_t number) {
    VMISOBufferEntry entry;
    entry.fThread = thread;
    entry.fNumber = number;
    std::snprintf(entry.fText, sizeof entry.fText, "%u:%d", thread, number);
    return entry;
}

TEST(VMISOBuffer, EightWritersAgainstOneReader) {
    constexpr uint32_t kWriters = 8;
    constexpr size_t kOffersPerWriter = 125000;
    VMISOBuffer buffer(150);
    std::vector<std::vector<char>> seen(kWriters, std::vector<char>(kOffersPerWriter));
    std::vector<std::vector<char>> taken = seen;
    std::atomic<uint32_t> writersLeft{kWriters};
    std::vector<std::thread> writers(kWriters);
    for (uint32_t writer = 0; writer < kWriters; ++writer) {
        writers[writer] = std::thread([&, writer] {
            for (size_t i = 0; i < kOffersPerWriter; ++i) {
                taken[writer][i] =
                    buffer.Offer(MakeEntry(writer, static_cast<int32_t>(i))) ? '\1' : '\0';
            }
            --writersLeft;
        });
    }
    for (bool isLast = false; !isLast;) {
        isLast = writersLeft == 0; // what they left behind is taken once more
        buffer.Drain([&](const VMISOBufferEntry& entry) {
            EXPECT_STREQ(entry.fText, MakeEntry(entry.fThread, entry.fNumber).fText);
            ++seen.at(entry.fThread).at(static_cast<size_t>(entry.fNumber));
        });
    }
    for (auto& writer : writers) {
        writer.join();
    }
    // Each accepted entry came out once and whole, and no other did.
    EXPECT_TRUE(seen == taken);
    EXPECT_EQ(buffer.GetCount(), 0U);
    for (uint32_t i = 0; i < buffer.GetCapacity(); ++i) {
        EXPECT_TRUE(buffer.Offer(MakeEntry(0, 0))) << "a slot is lost";
    }
    EXPECT_FALSE(buffer.Offer(MakeEntry(0, 0)));
}

} // namespace NSDebugPackage
