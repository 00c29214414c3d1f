#include "Debug/Log/VMISOBuffer.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace NSDebugPackage {
namespace {

VMISOBufferEntry MakeEntry(uint32_t thread, int32_t number) {
    VMISOBufferEntry entry;
    entry.fThread = thread;
    entry.fNumber = number;
    std::snprintf(entry.fText, sizeof entry.fText, "%u:%d", thread, number);
    return entry;
}

TEST(VMISOBuffer, SlotsAreFreedOneByOne) {
    VMISOBuffer buffer(2);
    std::vector<int32_t> seen;
    const auto take = [&](const VMISOBufferEntry& entry) {
        seen.push_back(entry.fNumber);
        // The second entry finds the slot of the first one free, and then none.
        EXPECT_EQ(buffer.Offer(MakeEntry(0, 2)), entry.fNumber == 1);
    };
    buffer.Drain(take);
    EXPECT_TRUE(buffer.Offer(MakeEntry(0, 0)));
    EXPECT_TRUE(buffer.Offer(MakeEntry(0, 1)));
    EXPECT_FALSE(buffer.Offer(MakeEntry(0, 2)));
    EXPECT_EQ(buffer.GetCount(), 2U);
    buffer.Drain(take);
    EXPECT_EQ(buffer.GetCount(), 1U);
    buffer.Drain([&](const VMISOBufferEntry& entry) { seen.push_back(entry.fNumber); });
    EXPECT_EQ(seen, (std::vector<int32_t>{0, 1, 2}));
    EXPECT_EQ(buffer.GetCount(), 0U);
}

TEST(VMISOBuffer, EightWritersAgainstOneReader) {
    constexpr uint32_t kWriters = 8;
    constexpr int32_t kOffersPerWriter = 125000;
    VMISOBuffer buffer(150);
    std::vector<std::vector<char>> seen(kWriters, std::vector<char>(kOffersPerWriter));
    std::vector<std::vector<char>> taken = seen;
    std::atomic<uint32_t> writersLeft{kWriters};

    std::vector<std::thread> writers;
    writers.reserve(kWriters);
    for (uint32_t writer = 0; writer < kWriters; ++writer) {
        writers.emplace_back([&, writer] {
            for (int32_t i = 0; i < kOffersPerWriter; ++i) {
                const bool accepted = buffer.Offer(MakeEntry(writer, i));
                taken[writer][static_cast<size_t>(i)] = accepted ? 1 : 0;
            }
            --writersLeft;
        });
    }
    uint64_t broken = 0;
    const auto drain = [&] {
        buffer.Drain([&](const VMISOBufferEntry& entry) {
            broken += entry.fText != std::string(MakeEntry(entry.fThread, entry.fNumber).fText);
            ++seen.at(entry.fThread).at(static_cast<size_t>(entry.fNumber));
        });
    };
    while (writersLeft != 0) {
        drain();
    }
    for (auto& writer : writers) {
        writer.join();
    }
    drain();
    // Each accepted entry came out once and whole, and no other did.
    EXPECT_EQ(broken, 0U);
    EXPECT_TRUE(seen == taken);
    EXPECT_EQ(buffer.GetCount(), 0U);
    for (uint32_t i = 0; i < buffer.GetCapacity(); ++i) {
        EXPECT_TRUE(buffer.Offer(MakeEntry(0, 0))) << "a slot is lost";
    }
    EXPECT_FALSE(buffer.Offer(MakeEntry(0, 0)));
}

} // namespace
} // namespace NSDebugPackage
