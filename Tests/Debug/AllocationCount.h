#pragma once

#include <cstdint>

// How often the calling thread has allocated by operator new, which this program replaces.
uint64_t GetAllocationCount() noexcept;
