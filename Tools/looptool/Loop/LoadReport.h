#pragma once

#include "LoopLibrary/Public/LoopLibrary.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace NSLoopTool {

/// Loads the loop file to the end by the insides, audio included, and asks for its texts. What a
/// host would be told, and why: the chunk, where one is to blame, and the library's own words.
struct SLoadReport {
    LOPResult fResult = kLOPResult_OK;
    std::string fDetail; // empty where there is nothing to add
};

/// `shouldStop` is asked now and then with a percentage.
SLoadReport ReportLoad(const std::vector<uint8_t>& bytes,
                       const std::function<bool(int64_t)>& shouldStop);

/// The meaning of a failed load, with the detail where there is one.
std::string LoadFaultText(const std::vector<uint8_t>& bytes, const SLoadReport& report);

/// Likewise for a load that failed with `result` at the public interface.
std::string FailedLoadText(const std::vector<uint8_t>& bytes, LOPResult result);

} // namespace NSLoopTool
