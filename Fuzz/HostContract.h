#pragma once

#include "Fuzz/CByteSource.h"

#include <cstdint>
#include <vector>

// Loads `file` through the exports and lets `decisions` choose calls, their order and arguments.
// Aborts when the library breaks a promise of its header.
void CheckHostContract(const std::vector<uint8_t>& file, CByteSource& decisions);
