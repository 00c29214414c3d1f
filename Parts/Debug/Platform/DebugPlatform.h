// Small needs of the package that every platform answers in its own way.
#pragma once

#include <cstdint>

namespace NSDebugPackage {

/// The debugger's output window, or standard error.
void SendToDebugOutput(const char* text) noexcept;

/// Below 0xFFFFFFFE. Real-time safe.
uint32_t GetCurrentThreadNumber() noexcept;

/// Values of the calling thread. They start as 0 in each thread after every allocation.
constexpr int kThreadSlot_Level = 0;
constexpr int kThreadSlot_Depth = 2;
constexpr int kThreadSlotCount = 4;

/// Not to be called while threads use the slots, nor twice in a row. False when the platform has
/// none to give.
bool AllocateThreadSlots() noexcept;
void FreeThreadSlots() noexcept;
/// Without slots the value is 0, and setting does nothing. A thread's first setting may allocate
/// where the process has taken some thirty slots before.
intptr_t GetThreadSlot(int slot) noexcept;
void SetThreadSlot(int slot, intptr_t value) noexcept;

} // namespace NSDebugPackage
